// What css.xml says of style sheets: properties, types of values, value names and
// value editors; and the part of it that the list shows.
//
//     properties  border bottom color      filter "bo" -> [border bottom] color
//
// The list is two numbers over a sorted array, for the properties here and for the
// values in the property; a copy of it is never made. Symbols belong to the table and
// live as long as it does; references to them are plain pointers.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "markup/FilteredRange.h"
#include "markup/NameMap.h"
#include "markup/Text.h"
#include "stylesheet/CSSImpl.h"

namespace caretwell {

class TCSSEditor;
class TCSSSymbolTable;
class TStyleSheetParser;

enum TCSSValueKind : uint8_t {
    cssVKNone,
    cssVkName,  ///< a word, written as it stands
    cssVkType   ///< stands for a type whose value an editor supplies
};

/// Base of what the table holds. Names are found without regard to case.
struct TCSSSymbol {
    std::string FName;
};

/// Symbols of one sort: in the order in which they were made, or sorted, and by name.
template <class T>
class TCSSSymbols {
public:
    /// The newest of the name, null if there is none.
    T* Find(std::string_view name) const {
        auto* found = FByName.Find(FoldedHash(name), [name](const T* symbol) {
            return SameText(std::string_view(symbol->FName), name);
        });
        return found ? *found : nullptr;
    }
    T* Add(std::unique_ptr<T> symbol) {
        FByName.Add(FoldedHash<char>(symbol->FName), symbol.get());
        return FSymbols.emplace_back(std::move(symbol)).get();
    }
    /// Null for an index out of range.
    T* At(int32_t index) const {
        return index >= 0 && index < Count() ? FSymbols[static_cast<size_t>(index)].get() : nullptr;
    }
    int32_t Count() const { return static_cast<int32_t>(FSymbols.size()); }
    auto begin() const { return FSymbols.begin(); }
    auto end() const { return FSymbols.end(); }
    auto begin() { return FSymbols.begin(); }
    auto end() { return FSymbols.end(); }

private:
    std::vector<std::unique_ptr<T>> FSymbols;
    TNameMap<T*> FByName;
};

/// One for each name, shared by all properties that offer it.
struct TCSSValue : TCSSSymbol {
    TCSSValueKind FKind = cssVKNone;  ///< as the last writer left it
};

/// Objects in order, none twice.
template <class T>
class TDistinctList {
public:
    /// Does nothing if the very same object is there.
    void Add(T* item) {
        if (FItems.size() < LongestUnindexed) {
            if (!IsAmong(item, FItems.size())) FItems.push_back(item);
            return;
        }
        if (FIndex.empty()) FIndex.insert(FItems.begin(), FItems.end());
        if (FIndex.insert(item).second) FItems.push_back(item);
    }
    /// Objects of which none stands there twice: they need no comparison with each other.
    void AddAll(const std::vector<T*>& distinct) {
        size_t before = FItems.size();
        bool isLong = before + distinct.size() > LongestUnindexed;
        for (T* item : distinct) {
            if (isLong) Add(item);
            else if (!IsAmong(item, before)) FItems.push_back(item);
        }
    }
    size_t size() const { return FItems.size(); }
    T* operator[](size_t index) const { return FItems[index]; }
    auto begin() const { return FItems.begin(); }
    auto end() const { return FItems.end(); }
    std::vector<T*>& Items() { return FItems; }
    const std::vector<T*>& Items() const { return FItems; }

private:
    static constexpr size_t LongestUnindexed = 512;
    bool IsAmong(const T* item, size_t count) const {
        return std::find(FItems.begin(), FItems.begin() + static_cast<std::ptrdiff_t>(count), item) !=
               FItems.begin() + static_cast<std::ptrdiff_t>(count);
    }

    std::vector<T*> FItems;
    std::unordered_set<T*> FIndex;
};

/// A type of values. Asking for its lists fetches the fonts of the machine if they are
/// among its values.
class TCSSType : public TCSSSymbol {
public:
    explicit TCSSType(TCSSSymbolTable& table) : FTable(&table) {}
    const TCSSStringList& GetValueList();
    int32_t GetValueCount() { return GetValueList().FCount; }
    const TCSSStringList& GetRefList() const { return FRefs; }
    int32_t GetRefCount() const { return FRefs.FCount; }
    const TCSSStringList& GetIntrinsicTypeList() const { return FIntrinsics; }
    int32_t GetIntrinsicCount() const { return FIntrinsics.FCount; }

    TCSSStringList FValues;      ///< value names
    TCSSStringList FRefs;        ///< types whose values belong here
    TCSSStringList FIntrinsics;  ///< names that are no values: units
    bool FResolved = false;      ///< the references were followed
    bool FEditable = false;      ///< the user gets an editor
    bool FHasFonts = false;      ///< the machine's fonts belong to FValues and are not there yet

private:
    TCSSSymbolTable* FTable;
};

/// A property with the values offered for it.
class TCSSProperty : public TCSSSymbol {
public:
    explicit TCSSProperty(TCSSSymbolTable& table) : FTable(&table) {}
    void AddValue(TCSSValue* value) { FValues.Add(value); }
    /// Values of which none is there twice.
    void AddValues(const std::vector<TCSSValue*>& values) { FValues.AddAll(values); }
    void AddType(TCSSType* type) { FTypes.Add(type); }
    const TDistinctList<TCSSValue>& GetValueList();
    int32_t GetValueCount() { return static_cast<int32_t>(GetValueList().size()); }
    const TDistinctList<TCSSType>& GetTypeList() const { return FTypes; }
    int32_t GetTypeCount() const { return static_cast<int32_t>(FTypes.size()); }
    const TCSSStringList& GetMedia() const { return FMedia; }
    int32_t GetMediaCount() const { return FMedia.FCount; }

    /// The visible value at an index; null if there is none.
    const TCSSValue* GetKibitzValue(int32_t index) const;
    int32_t GetKibitzValueCount() const { return FKibitz.GetCount(static_cast<int32_t>(FValues.size())); }
    /// Makes all values visible.
    void ResetKibitz();

    bool FInherited = false;  ///< as read; for those who show the schema
    TCSSStringList FMedia;    ///< as read; for those who show the schema
    TDistinctList<TCSSValue> FValues;
    TDistinctList<TCSSType> FTypes;
    TFilteredRange<char> FKibitz{0, -1, {}};
    bool FResolved = false;  ///< FValues was worked out
    bool FSorted = false;    ///< FValues is sorted
    bool FHasFonts = false;  ///< the machine's fonts belong to FValues and are not there yet

private:
    TCSSSymbolTable* FTable;
};

class TCSSSymbolTable {
public:
    /// The parser tells which list is meant; null means none. Not owned.
    explicit TCSSSymbolTable(const TStyleSheetParser* parser);
    ~TCSSSymbolTable();
    TCSSSymbolTable(const TCSSSymbolTable&) = delete;
    TCSSSymbolTable& operator=(const TCSSSymbolTable&) = delete;

    // The symbol of that name, made if there is none: a type can be named before it is described.
    TCSSProperty* NewProperty(std::string_view name);
    TCSSType* NewType(std::string_view name);
    TCSSValue* NewValue(std::string_view name);
    // Null if there is none.
    TCSSProperty* LookupProperty(std::string_view name) const;
    TCSSType* LookupType(std::string_view name) const;
    TCSSValue* LookupValue(std::string_view name) const;
    TCSSEditor* LookupEditor(std::string_view name) const;
    /// A second editor of the same name hides the first.
    void AddEditor(std::unique_ptr<TCSSEditor> editor);
    /// In order of creation, or sorted; null for an index out of range.
    TCSSProperty* GetProp(int32_t index) const;
    TCSSType* GetType(int32_t index) const;

    /// Sorts the properties; called once when all of them are there.
    void AlphaSort();
    /// Sorts the values at these indexes, both included, by name.
    static void SortList(std::vector<TCSSValue*>& list, int32_t first, int32_t last);

    // The list. Its kind follows FKibitzPos of the parser.
    void ResetKibitz();
    /// Null for none. Sorts the property's values at the first time.
    void SetKibitzProperty(TCSSProperty* property);
    TCSSProperty* GetKibitzProperty() const { return FKibitzProperty; }
    /// Leaves the names that begin with text, of all names unless text goes on with the
    /// last one.
    void SetFilter(std::string_view text);
    /// Index in the visible part of the first name that does not sort before text; -1 if none.
    int32_t FindIdent(std::string_view text) const;
    int32_t GetKibitzPropCount() const { return FKibitz.GetCount(FProperties.Count()); }
    /// Empty for an index out of range.
    std::string GetKibitzProp(int32_t index) const;
    int32_t GetKibitzValueCount() const;
    /// A type shows with three points after its name, which is the name of its editor
    /// too. Empty for an index out of range.
    std::string GetKibitzValue(int32_t index) const;

    /// Fonts of the machine, asked for once: the first question may take long.
    const std::vector<std::string>& GetFonts();
    /// True for one of those, if they were asked for.
    bool IsFont(std::string_view name) const;

    TCSSSymbols<TCSSProperty> FProperties;
    TCSSSymbols<TCSSType> FTypes;
    TCSSSymbols<TCSSValue> FValues;
    TCSSSymbols<TCSSEditor> FEditors;

private:
    enum TListKind { lkNone, lkValues, lkProperties };
    TListKind GetListKind() const;
    int32_t CountOf(TListKind kind) const;
    TFilteredRange<char>& RangeOf(TListKind kind) const;
    std::string_view NameAt(TListKind kind, int32_t index) const;

    const TStyleSheetParser* FParser;
    TCSSProperty* FKibitzProperty = nullptr;
    mutable TFilteredRange<char> FKibitz{0, -1, {}};  // over the properties
    std::unique_ptr<std::vector<std::string>> FFonts;
};

}  // namespace caretwell
