// Declarations of elements and attributes: what a reference means, and of which type it is.
#include "schema/XMLSchemaData.h"

namespace caretwell {
namespace {

using TData = TXMLSchema::TData;

// An element without a type of its own takes that of the element it may stand for.
TXMLType ReadElementType(const TXMLSchema* schema, pugi::xml_node element) {
    std::unordered_set<const void*> seen;
    while (seen.insert(element.internal_object()).second) {
        const TData& data = schema->GetData();
        for (pugi::xml_node child : element.children()) {
            TXMLKind kind = data.KindOf(child);
            if (kind == xkComplexType || kind == xkSimpleType) return {schema, child.internal_object()};
        }
        std::string_view type = AttributeText(element, "type");
        if (!type.empty()) return data.ResolveType(element, type);
        std::string_view heads = AttributeText(element, "substitutionGroup");
        const TXMLComponent* head = data.Resolve(element, TakeWord(heads), xnElement);
        if (!head || !data.Set->Spend()) break;
        schema = head->Schema;
        element = head->Node;
    }
    return TXMLType("anyType");
}

TXMLType ReadAttributeType(const TXMLSchema* schema, pugi::xml_node attribute) {
    const TData& data = schema->GetData();
    if (pugi::xml_node child = data.FindChild(attribute, xkSimpleType))
        return {schema, child.internal_object()};
    std::string_view type = AttributeText(attribute, "type");
    return type.empty() ? TXMLType("anySimpleType") : data.ResolveType(attribute, type);
}

}  // namespace

TXMLDeclaration MakeAttribute(const TXMLSchema* schema, pugi::xml_node node) {
    std::string_view name = AttributeText(node, "ref");
    if (name.empty()) return {schema, node.internal_object(), schema, node.internal_object()};
    const TData& data = schema->GetData();
    if (const TXMLComponent* target = data.Resolve(node, name, xnAttribute))
        return {schema, node.internal_object(), target->Schema, target->Node.internal_object()};
    // xml:lang and its like are known to everybody, with or without a schema of their own.
    if (!name.starts_with("xml:"))
        data.Report(node, xsWarning, "Unknown reference to attribute " + std::string(name));
    return {schema, node.internal_object(), nullptr, nullptr};
}

std::string_view TXMLDeclaration::GetName() const {
    pugi::xml_node site(FSite);
    bool isAttribute = FSchema->GetData().KindOf(site) == xkAttribute;
    return isAttribute && HasRef() ? AttributeText(site, "ref")
                                   : AttributeText(pugi::xml_node(FTarget), "name");
}

// Global elements always are in the target namespace, others as the schema has it.
std::string_view TXMLDeclaration::GetNamespace() const {
    if (!FTargetSchema) return {};
    const TData& data = FTargetSchema->GetData();
    pugi::xml_node target(FTarget);
    TXMLKind holder = data.KindOf(target.parent());
    bool isGlobal = holder == xkSchema || holder == xkRedefine;
    std::string_view form = AttributeText(target, "form");
    if (form.empty()) form = AttributeText(data.Root, "elementFormDefault");
    return isGlobal || form == "qualified" ? data.TargetNamespace.value_or("") : std::string_view();
}

bool TXMLDeclaration::HasRef() const { return !pugi::xml_node(FSite).attribute("ref").empty(); }
bool TXMLDeclaration::IsRequired() const { return AttributeText(pugi::xml_node(FSite), "use") == "required"; }
std::optional<std::string_view> TXMLDeclaration::GetFixed() const {
    for (pugi::xml_node node : {pugi::xml_node(FSite), pugi::xml_node(FTarget)})
        if (pugi::xml_attribute fixed = node.attribute("fixed")) return TrimBlanks(fixed.value());
    return std::nullopt;
}
bool TXMLDeclaration::HasType() const { return !pugi::xml_node(FSite).attribute("type").empty(); }

TXMLType TXMLDeclaration::GetDataType() const {
    pugi::xml_node target(FTarget);
    if (!target) return {};
    bool isElement = FTargetSchema->GetData().KindOf(target) == xkElement;
    return isElement ? ReadElementType(FTargetSchema, target) : ReadAttributeType(FTargetSchema, target);
}

std::vector<TXMLDeclaration> TXMLAttributeGroup::GetAttributes() const {
    std::vector<TXMLDeclaration> attributes;
    const TData& data = FSchema->GetData();
    for (pugi::xml_node node : pugi::xml_node(FNode).children()) {
        bool isOffered = data.KindOf(node) == xkAttribute && AttributeText(node, "use") != "prohibited";
        if (isOffered && data.Set->Spend()) attributes.push_back(MakeAttribute(FSchema, node));
    }
    return attributes;
}

}  // namespace caretwell
