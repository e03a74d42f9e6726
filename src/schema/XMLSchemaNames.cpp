// Names in a schema: prefixes, namespaces, kinds of nodes, and what a reference means.
#include <algorithm>
#include <utility>

#include "schema/XMLSchemaData.h"

namespace caretwell {
namespace {

constexpr std::string_view XmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view LanguageUris[] = {"http://www.w3.org/2001/XMLSchema",
                                             "http://www.w3.org/2000/10/XMLSchema",
                                             "http://www.w3.org/1999/XMLSchema"};

// A binding further out than this is looked for at the root only.
constexpr int MaxScopeWalk = 64;

struct TKindName {
    std::string_view Name;
    TXMLKind Kind;
};
constexpr TKindName KindNames[] = {
    {"element", xkElement},
    {"attribute", xkAttribute},
    {"enumeration", xkEnumeration},
    {"sequence", xkSequence},
    {"choice", xkChoice},
    {"complexType", xkComplexType},
    {"simpleType", xkSimpleType},
    {"restriction", xkRestriction},
    {"extension", xkExtension},
    {"attributeGroup", xkAttributeGroup},
    {"group", xkGroup},
    {"all", xkAll},
    {"any", xkAny},
    {"complexContent", xkComplexContent},
    {"simpleContent", xkSimpleContent},
    {"list", xkList},
    {"union", xkUnion},
    {"include", xkInclude},
    {"import", xkImport},
    {"redefine", xkRedefine},
    {"override", xkRedefine},
    {"schema", xkSchema},
};

constexpr std::string_view BuiltIns[] = {
    "anyType",
    "anySimpleType",
    "anyAtomicType",
    "string",
    "normalizedString",
    "token",
    "language",
    "Name",
    "NCName",
    "ID",
    "IDREF",
    "IDREFS",
    "ENTITY",
    "ENTITIES",
    "NMTOKEN",
    "NMTOKENS",
    "NOTATION",
    "QName",
    "boolean",
    "decimal",
    "integer",
    "nonPositiveInteger",
    "negativeInteger",
    "nonNegativeInteger",
    "positiveInteger",
    "long",
    "int",
    "short",
    "byte",
    "unsignedLong",
    "unsignedInt",
    "unsignedShort",
    "unsignedByte",
    "float",
    "double",
    "anyURI",
    "base64Binary",
    "hexBinary",
    "duration",
    "dateTime",
    "time",
    "date",
    "gYear",
    "gYearMonth",
    "gMonth",
    "gMonthDay",
    "gDay",
    "dateTimeStamp",
    "dayTimeDuration",
    "yearMonthDuration",
};

// The prefix of a binding's attribute ("" for a default namespace), nothing for others.
std::optional<std::string_view> BoundPrefix(std::string_view attribute) {
    if (attribute == "xmlns") return std::string_view();
    if (attribute.starts_with("xmlns:")) return attribute.substr(6);
    return std::nullopt;
}

struct TSplitName {
    std::string_view Prefix, Local;
};
TSplitName Split(std::string_view name) {
    size_t colon = name.find(':');
    if (colon == name.npos) return {"", name};
    return {name.substr(0, colon), name.substr(colon + 1)};
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

}  // namespace

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view TakeWord(std::string_view& list) {
    list = TrimBlanks(list);
    size_t end = 0;
    while (end < list.size() && !IsBlank(list[end])) ++end;
    std::string_view word = list.substr(0, end);
    list.remove_prefix(end);
    return word;
}

std::string_view AttributeText(pugi::xml_node node, const char* name) {
    return TrimBlanks(node.attribute(name).value());
}

std::string_view FindBuiltIn(std::string_view name) {
    const auto* found = std::find(std::begin(BuiltIns), std::end(BuiltIns), name);
    return found == std::end(BuiltIns) ? std::string_view() : *found;
}

// ---- the set

TXMLSchemaSet::TXMLSchemaSet() {
    // In the order of the fixed numbers.
    NumberOf("");
    NumberOf(XmlUri);
    for (std::string_view uri : LanguageUris) NumberOf(uri);
}

TNamespaceId TXMLSchemaSet::NumberOf(std::string_view uri) {
    auto [row, isNew] = Namespaces.try_emplace(uri, static_cast<TNamespaceId>(NamespaceTexts.size()));
    if (isNew) NamespaceTexts.push_back(uri);
    return row->second;
}

TXMLComponent* TXMLSchemaSet::Find(TXMLSpace space, TNamespaceId name, std::string_view local) const {
    auto found = Components.find({space, name, local});
    return found == Components.end() ? nullptr : found->second;
}

bool TXMLSchemaSet::Spend() {
    if (StepsLeft && QuestionStepsLeft) {
        --StepsLeft;
        --QuestionStepsLeft;
        return true;
    }
    if (!std::exchange(IsSpent, true) && !Schemas.empty())
        Report(
            {xsError, Schemas.front()->GetFileName(), 0, "The schema is too large; not all of it is used"});
    return false;
}

void TXMLSchemaSet::Report(TXMLSchemaMessage message) {
    if (!OnMessage || Messages > TXMLSchemaLibrary::MaxMessages) return;
    if (Messages++ == TXMLSchemaLibrary::MaxMessages) message.Text = "Further messages are not shown";
    OnMessage(message);
}

// ---- one schema

void TXMLSchema::TData::Report(pugi::xml_node node, TXMLSchemaSeverity severity,
                               const std::string& text) const {
    if (!Set->OnMessage || Set->Messages > TXMLSchemaLibrary::MaxMessages) return;
    if (!Set->Reported.insert(node.internal_object()).second) return;
    Set->Report({severity, FileName, GetLineOfOffset(FileName, node.offset_debug()), text});
}

std::optional<TNamespaceId> TXMLSchema::TData::FindPrefix(pugi::xml_node node,
                                                          std::string_view prefix) const {
    if (prefix == "xml") return nsXml;
    int left = HasInnerNamespaces ? MaxScopeWalk : 0;
    for (; left && node && node != Root; --left, node = node.parent())
        for (pugi::xml_attribute attribute : node.attributes())
            if (BoundPrefix(attribute.name()) == prefix) return Set->NumberOf(attribute.value());
    for (const TXMLPrefix& row : Prefixes)
        if (row.Prefix == prefix) return row.Namespace;
    return std::nullopt;
}

TXMLKind TXMLSchema::TData::KindOf(pugi::xml_node node) const {
    if (node.type() != pugi::node_element) return xkNone;
    auto [prefix, local] = Split(node.name());
    const auto* kind = std::find_if(std::begin(KindNames), std::end(KindNames),
                                    [local = local](const TKindName& row) { return row.Name == local; });
    if (kind == std::end(KindNames)) return xkNone;
    bool isLanguage = HasInnerNamespaces ? IsLanguage(FindPrefix(node, prefix).value_or(nsNone))
                                         : std::find(LanguagePrefixes.begin(), LanguagePrefixes.end(),
                                                     prefix) != LanguagePrefixes.end();
    return isLanguage ? kind->Kind : xkNone;
}

pugi::xml_node TXMLSchema::TData::FindChild(pugi::xml_node node, TXMLKind kind) const {
    for (pugi::xml_node child : node.children())
        if (KindOf(child) == kind) return child;
    return {};
}

TXMLComponent* TXMLSchema::TData::Resolve(pugi::xml_node node, std::string_view name, TXMLSpace space) const {
    auto [prefix, local] = Split(TrimBlanks(name));
    if (auto bound = FindPrefix(node, prefix))
        if (TXMLComponent* found = Set->Find(space, *bound, local)) return found;
    // Authors leave the prefix out where the schema has no default namespace, and a
    // schema without a target namespace lives in that of its includer.
    if (!prefix.empty()) return nullptr;
    TXMLComponent* found = Set->Find(space, Target, local);
    return found ? found : Set->Find(space, nsNone, local);  // an import without a namespace
}

TXMLType TXMLSchema::TData::ResolveType(pugi::xml_node node, std::string_view name) const {
    if (const TXMLComponent* found = Resolve(node, name, xnType))
        return {found->Schema, found->Node.internal_object()};
    auto [prefix, local] = Split(TrimBlanks(name));
    bool isLanguage = IsLanguage(FindPrefix(node, prefix).value_or(nsNone));
    std::string_view builtIn = isLanguage ? FindBuiltIn(local) : std::string_view();
    if (!builtIn.empty()) return TXMLType(builtIn);
    Report(node, xsWarning, "Unknown type " + std::string(name));
    return {};
}

}  // namespace caretwell
