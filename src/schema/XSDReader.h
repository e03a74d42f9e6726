// Reads one XML schema of the kind that describes server controls and ResX files.
//
// It takes a fixed subset of XML Schema by the literal names of the nodes, so a file
// writes xsd:element and not xs:element, and a few additions that say how an editor
// treats an element (vs:nonbrowseable, vs:builder ...). The prefix that a user types in
// front of an element comes from the file's name:
//
//     asp.xsd:  <xsd:element name="Button" form="qualified">     offered as   asp:Button
//
// What it reads becomes a small graph of TXSD objects. The reader owns all of them:
// every pointer below borrows and lives as long as the reader. Names are compared
// without regard to case, node names and parents exactly.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "markup/MLParserUtils.h"
#include "markup/NameMap.h"

namespace pugi {
class xml_node;
}

namespace caretwell {

class TXSDReader;

/// Base of all named schema objects.
class TXSDClass {
public:
    TXSDClass(std::u16string name, int32_t level) : FName(std::move(name)), FLevel(level) {}
    virtual ~TXSDClass() = default;
    std::u16string FName;
    int32_t FLevel;  ///< nesting depth; 0 is global
};

class TXSDTypedClass : public TXSDClass {
public:
    TXSDTypedClass(std::u16string name, std::u16string typeName, int32_t level)
        : TXSDClass(std::move(name), level), FTypeName(std::move(typeName)) {}
    std::u16string FTypeName;  ///< as written, not resolved
};

class TXSDElement final : public TXSDTypedClass {
public:
    using TXSDTypedClass::TXSDTypedClass;
    TXSDClass* FTypeDef = nullptr;  ///< an inline TXSDType or TXSDSimpleType, or null
    std::u16string FRef;
    bool FNonBrowseable = false;    ///< the children of its type are offered in its place
    bool FImplicitClosure = false;  ///< needs no closing tag
    bool FUnqualified = false;      ///< takes no namespace prefix
    std::u16string FParent;         ///< the complex type that holds it; empty for a global one
    bool FDirective = false;        ///< a directive of a server page
    bool FTopLevel = false;         ///< stands at the top of a document and in no element of the page
    /// Names of elements that are there before this schema, or "*" for all of them: they get
    /// the attributes of its type, and it is no element of a document itself.
    std::u16string FExtends;
};

/// A restriction and its enumerations, in document order, duplicates kept.
class TXSDRestriction final {
public:
    std::u16string FBase;
    std::vector<std::u16string> FEnumerations;

    int32_t GetEnumerationCount() const { return static_cast<int32_t>(FEnumerations.size()); }
    const std::u16string& GetEnumerations(int32_t index) const {
        return FEnumerations[static_cast<size_t>(index)];
    }
    void AddEnumeration(std::u16string text) { FEnumerations.push_back(std::move(text)); }
};

class TXSDSimpleType final : public TXSDClass {
public:
    using TXSDClass::TXSDClass;
    std::vector<TXSDRestriction*> FRestrictions;

    int32_t GetRestrictionCount() const { return static_cast<int32_t>(FRestrictions.size()); }
    TXSDRestriction* GetRestrictions(int32_t index) const {
        return FRestrictions[static_cast<size_t>(index)];
    }
    void AddRestriction(TXSDRestriction* restriction) { FRestrictions.push_back(restriction); }
};

class TXSDAttribute final : public TXSDTypedClass {
public:
    using TXSDTypedClass::TXSDTypedClass;
    std::vector<TXSDSimpleType*> FValues;  ///< its inline simple types
    std::u16string FBuilder;               ///< word of its value editor, empty if none

    int32_t GetCount() const { return static_cast<int32_t>(FValues.size()); }
    TXSDSimpleType* GetValue(int32_t index) const { return FValues[static_cast<size_t>(index)]; }
    void AddValue(TXSDSimpleType* type) { FValues.push_back(type); }
};

/// What holds attributes. After a load the attributes of the groups it names stand in
/// FAttributes too, shared with the groups.
class TXSDBaseType : public TXSDClass {
public:
    using TXSDClass::TXSDClass;
    std::vector<TXSDAttribute*> FAttributes;
    std::vector<std::u16string> FAttrGroups;  ///< names of groups referred to

    int32_t GetAttributeCount() const { return static_cast<int32_t>(FAttributes.size()); }
    TXSDAttribute* GetAttributes(int32_t index) const { return FAttributes[static_cast<size_t>(index)]; }
    int32_t GetGroupAttrCount() const { return static_cast<int32_t>(FAttrGroups.size()); }
    const std::u16string& GetAttrGroup(int32_t index) const {
        return FAttrGroups[static_cast<size_t>(index)];
    }
    void AddAttribute(TXSDAttribute* attribute) { FAttributes.push_back(attribute); }
    void AddAttributeGroup(std::u16string name) { FAttrGroups.push_back(std::move(name)); }
};

/// A complex type.
class TXSDType final : public TXSDBaseType {
public:
    using TXSDBaseType::TXSDBaseType;
    std::vector<TXSDElement*> FChildren;

    int32_t GetChildCount() const { return static_cast<int32_t>(FChildren.size()); }
    TXSDElement* GetChild(int32_t index) const { return FChildren[static_cast<size_t>(index)]; }
    /// Null is ignored.
    void AddChild(TXSDElement* child) {
        if (child) FChildren.push_back(child);
    }
};

class TXSDAttributeGroup final : public TXSDBaseType {
public:
    using TXSDBaseType::TXSDBaseType;
};

/// Files one object in the reader's tables.
struct TXSDClassEntry {
    TXSDClass* Item = nullptr;
    TXSDClassEntry* Next = nullptr;  ///< in the list of the object's kind
};

/// Receives each message of a load.
using TXSDParseErrorEvent =
    std::function<void(TXSDReader* sender, const std::string& fileName, const std::string& message)>;

class TXSDReader final {
public:
    /// Declarations that one file may hold; the rest is dropped with a message.
    static constexpr size_t MaxDeclarations = 100000;
    /// Attributes that its groups may spread over groups and types.
    static constexpr size_t MaxGroupSteps = 1000000;

    TXSDReader() = default;
    ~TXSDReader();
    TXSDReader(const TXSDReader&) = delete;
    TXSDReader& operator=(const TXSDReader&) = delete;

    /// Reads a file once. A missing file or another root than xsd:schema leaves the reader
    /// empty without a message; all else that is wrong goes to FOnError. Never raises.
    void LoadFromFile(const std::string& fileName);

    /// The newest element of that name whose parent fits (or any parent) and whose level
    /// fits (or level is -1); null if none.
    TXSDElement* LookupElement(std::u16string_view name, std::u16string_view parent, bool anyParent,
                               int32_t level) const;
    /// The newest of that name, or null.
    TXSDType* LookupType(std::u16string_view name) const;
    TXSDAttributeGroup* LookupAttrGroup(std::u16string_view name) const;
    /// The same; a name is tried with and without "xsd:" in front.
    TXSDSimpleType* LookupSimpleType(std::u16string_view name) const;

    /// Elements of every depth in document order; null when there are none left.
    const TXSDClassEntry* GetFirstElement() const { return FFirstElement; }
    static const TXSDClassEntry* GetNextElement(const TXSDClassEntry* entry) {
        return entry ? entry->Next : nullptr;
    }

    /// With its colon, or empty.
    std::u16string_view GetNamespacePrefix() const { return FNamespacePrefix; }
    static std::u16string_view GetSchemaNamespace() { return u"xsd:"; }
    /// The prefix, without a colon, that a file of this name gives.
    static std::u16string GetNamespacePrefixOfFile(std::string_view fileName);
    bool GetDefaultQualified() const { return FDefaultQualified; }
    void SetDefaultQualified(bool value) { FDefaultQualified = value; }
    /// Empty if the node has no such attribute.
    static std::u16string GetAttributeValue(const pugi::xml_node& node, const char* name);

    TXSDParseErrorEvent FOnError;
    /// The tags that were built from this reader; they belong to the symbol manager's
    /// loader, which keeps them here for the life of the process. Null before that.
    std::optional<std::vector<TRef<INibMLTag>>> FTags;

private:
    using TTable = TNameMap<TXSDClass*>;
    static constexpr size_t MaxMessages = 200;
    struct TFrame;
    class TFixup;

    void ReadSchema(const pugi::xml_node& root);
    void ReadDeclaration(const pugi::xml_node& node);
    // Elements hold types that hold elements; the frames stand in for that recursion, so
    // that depth in a file costs no depth on the stack.
    void ReadNested(std::vector<TFrame>& frames);
    void ReadElementChild(std::vector<TFrame>& frames, TXSDElement* element, const pugi::xml_node& child);
    void ReadTypeChild(std::vector<TFrame>& frames, TXSDType* type, const pugi::xml_node& child);

    TXSDElement* AddElement(const pugi::xml_node& node, const std::u16string& parent, bool topLevel);
    TXSDType* AddType(const pugi::xml_node& node);
    TXSDSimpleType* AddSimpleType(TXSDAttribute* attribute, const pugi::xml_node& node);
    void AddRestriction(TXSDRestriction& restriction, const pugi::xml_node& node);
    void AddAttribute(TXSDBaseType& owner, const pugi::xml_node& node);
    void AddAttributeGroup(const pugi::xml_node& node);
    void FixupReferences();
    void FixupElement(TXSDElement& element);

    template <class T, class... Args>
    T* Make(Args&&... args) {
        FObjects.push_back(std::make_unique<T>(std::forward<Args>(args)...));
        return static_cast<T*>(FObjects.back().get());
    }
    TXSDClassEntry* NewEntry(TXSDClass* item);
    void EnterList(TXSDClassEntry*& head, TXSDClass* item);
    void EnterElement(TXSDElement* element);
    bool HasRoom();
    void Error(const std::string& message);

    // Elements stand in their table three times: by name, with the parent, with the level too.
    TTable FElementTable, FTypeTable, FSimpleTypeTable, FAttrGroupTable;
    TXSDClassEntry* FLastElement = nullptr;
    TXSDClassEntry* FFirstElement = nullptr;
    TXSDClassEntry* FTypes = nullptr;
    TXSDClassEntry* FAttrGroups = nullptr;
    TXSDClassEntry* FSimpleTypes = nullptr;
    std::u16string FNamespacePrefix;
    int32_t FLevel = 0;
    bool FDefaultQualified = false;
    std::string FFileName;

    std::vector<std::unique_ptr<TXSDClass>> FObjects;
    std::vector<std::unique_ptr<TXSDRestriction>> FRestrictions;
    std::vector<std::unique_ptr<TXSDClassEntry>> FEntries;
    size_t FMessages = 0;
    bool FIsFull = false;
};

}  // namespace caretwell
