// Behind XMLSchema.h: the documents of a library, its table of global components, and
// how a name in a schema is resolved. Seen by the XMLSchema*.cpp files only.
#pragma once

#include <deque>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "schema/XMLSchema.h"
#include "schema/XMLSchemaFile.h"

namespace caretwell {

/// Namespaces are numbered as they are met.
using TNamespaceId = uint32_t;
inline constexpr TNamespaceId nsNone = 0, nsXml = 1, nsFirstLanguage = 2, nsLastLanguage = 4;
/// The schema language; its drafts wrote most of it alike and count too.
constexpr bool IsLanguage(TNamespaceId id) { return id >= nsFirstLanguage && id <= nsLastLanguage; }

/// What an element of the schema language is; xkNone for all that says nothing here.
enum TXMLKind : uint8_t {
    xkNone,
    xkSchema,
    xkInclude,
    xkImport,
    xkRedefine,
    xkElement,
    xkAttribute,
    xkComplexType,
    xkSimpleType,
    xkGroup,
    xkAttributeGroup,
    xkSequence,
    xkChoice,
    xkAll,
    xkComplexContent,
    xkSimpleContent,
    xkExtension,
    xkRestriction,
    xkEnumeration,
    xkList,
    xkUnion,
    xkAny,
};

/// Names of these kinds do not clash with each other.
enum TXMLSpace : uint8_t { xnElement, xnAttribute, xnType, xnGroup, xnAttributeGroup };

/// A global declaration or definition.
struct TXMLComponent {
    pugi::xml_node Node;
    const TXMLSchema* Schema = nullptr;
    TXMLComponent* Original = nullptr;  ///< what a redefinition stands for
    bool IsReplaced = false;            ///< by a redefinition
};

struct TXMLComponentKey {
    TXMLSpace Space;
    TNamespaceId Namespace;
    std::string_view Name;
    friend bool operator==(const TXMLComponentKey&, const TXMLComponentKey&) = default;
};
struct TXMLComponentHash {
    size_t operator()(const TXMLComponentKey& key) const {
        return std::hash<std::string_view>()(key.Name) ^
               (key.Namespace * 31u + key.Space) * 0x9E3779B97F4A7C15u;
    }
};

/// A prefix that the root of a document binds; empty for the default namespace.
struct TXMLPrefix {
    std::string_view Prefix;
    TNamespaceId Namespace;
};

struct TXMLSchema::TData {
    TXMLSchemaSet* Set = nullptr;
    size_t Index = 0;  ///< in the set
    std::string FileName;
    std::shared_ptr<TXMLFile> File;
    pugi::xml_node Root;
    std::optional<std::string_view> TargetNamespace;
    TNamespaceId Target = nsNone;
    std::vector<TXMLPrefix> Prefixes;
    std::vector<std::string_view> LanguagePrefixes;  ///< those of the schema language
    bool HasInnerNamespaces = false;                 ///< bindings below the root
    std::vector<TXMLSchemaInclude> Includes;
    std::vector<TXMLComponent*> Components;

    TXMLKind KindOf(pugi::xml_node node) const;
    /// The namespace of a prefix in scope at a node.
    std::optional<TNamespaceId> FindPrefix(pugi::xml_node node, std::string_view prefix) const;
    /// The component that a name written at a node means; null if there is none.
    TXMLComponent* Resolve(pugi::xml_node node, std::string_view name, TXMLSpace space) const;
    /// The type that a name written at a node means, a built-in one included.
    TXMLType ResolveType(pugi::xml_node node, std::string_view name) const;
    /// The first child of a kind; null if there is none.
    pugi::xml_node FindChild(pugi::xml_node node, TXMLKind kind) const;

    void Report(pugi::xml_node node, TXMLSchemaSeverity severity, const std::string& text) const;
};

struct TXMLSchemaSet {
    TXMLSchemaMessageEvent OnMessage;
    std::string Folder;
    std::vector<std::unique_ptr<TXMLSchema>> Schemas;
    std::map<std::string, std::shared_ptr<TXMLFile>> Files;  ///< null for one that cannot be read
    size_t Bytes = 0;
    std::deque<TXMLComponent> Store;
    std::unordered_map<TXMLComponentKey, TXMLComponent*, TXMLComponentHash> Components;
    /// Elements that may stand in the place of another, by its node.
    std::unordered_map<const void*, std::vector<TXMLComponent*>> Members;
    std::vector<std::string_view> NamespaceTexts;
    std::unordered_map<std::string_view, TNamespaceId> Namespaces;
    std::unordered_set<const void*> Reported;  ///< nodes that a message was about
    size_t Messages = 0;
    size_t StepsLeft = TXMLSchemaLibrary::MaxSteps;
    size_t QuestionStepsLeft = TXMLSchemaLibrary::MaxSteps;
    bool IsSpent = false;  ///< once, since that is said once

    TXMLSchemaSet();
    TNamespaceId NumberOf(std::string_view uri);
    TXMLComponent* Find(TXMLSpace space, TNamespaceId name, std::string_view local) const;
    /// Counts one step of work; false when the load, or the question, has used up all of them.
    bool Spend();
    void Report(TXMLSchemaMessage message);
};

/// One type of a line of descent: where its own declarations stand.
struct TDerivation {
    const TXMLSchema* Schema;
    pugi::xml_node Content;  ///< extension, restriction, or the type itself
    bool IsRestriction;
    bool IsSimple;  ///< holds text, and no elements whatever its base
};

/// The type itself, its base, the base of that, and so on.
std::vector<TDerivation> ReadDescent(const TXMLSchema* schema, pugi::xml_node type);

/// Names and values may have blanks around them.
std::string_view TrimBlanks(std::string_view text);
/// The next word of a list of names; empty at the end.
std::string_view TakeWord(std::string_view& list);
std::string_view AttributeText(pugi::xml_node node, const char* name);
/// The name of a type of the language itself, empty if there is no such type.
std::string_view FindBuiltIn(std::string_view name);
/// The attribute that a node of a type or group declares or refers to.
TXMLDeclaration MakeAttribute(const TXMLSchema* schema, pugi::xml_node node);

}  // namespace caretwell
