// Reads css.xml, the one description of style sheets, into a symbol table.
//
//     <css>
//       <type name="color" editable="true"><value name="red"/></type>
//       <type name="length" editable="true"><value type="px"/></type>
//       <property name="width" inherited="false">
//         <media name="visual"/> <value name="auto"/> <value type="length"/>
//       </property>
//     </css>
//
// From types, references and units it then works out the flat list of values of each
// property, and makes the value editors. Names may be used before the element that
// describes them.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "stylesheet/CSSSymbols.h"

namespace caretwell {

/// css.xml is no XML, or an attribute that must be a boolean is none. Line from 1.
class ECSSSchemaError : public std::runtime_error {
public:
    ECSSSchemaError(const std::string& message, int32_t line) : std::runtime_error(message), FLine(line) {}
    int32_t GetLine() const { return FLine; }

private:
    int32_t FLine;
};

class TCSSReader {
public:
    /// The table is not owned.
    explicit TCSSReader(TCSSSymbolTable& table) : FTable(table) {}

    /// A file that is missing leaves the table empty, without editors. A root of another
    /// name gives the editors alone. Throws ECSSSchemaError; what was read up to the
    /// error is in the table then, and Resolve makes it of use.
    void LoadFromFile(const std::string& fileName);
    /// The same for a text in memory.
    void LoadFromText(const std::string& text);

    /// Works out the values of what was read since the last call, and makes the editors.
    void Resolve();

private:
    class TDocument;

    void ResolveType(TCSSType& type);
    void ResolveProp(TCSSProperty& property);
    void TakeNames(TCSSProperty& property, TCSSType& type);
    void TakeEditor(TCSSProperty& property, const TCSSType& type);
    void TakeValues(TCSSProperty& property, TCSSProperty& other);
    const std::vector<TCSSValue*>& ValuesOf(const TCSSType& type);
    bool Spend(int64_t count);
    void AddEditors();

    TCSSSymbolTable& FTable;
    int64_t FSpent = 0;
    std::unordered_map<const TCSSType*, TDistinctList<TCSSValue>>
        FTypeValues;  // by name once, for all properties
};

}  // namespace caretwell
