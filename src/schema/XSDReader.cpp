// The reading of a schema: what each node of the accepted subset becomes.
#include "schema/XSDReader.h"

#include "host/Paths.h"
#include "host/Platform.h"
#include "schema/XMLSchemaFile.h"

namespace caretwell {
namespace {

constexpr std::string_view TypeUri = "xsd:anyURI";

bool Is(const pugi::xml_node& node, std::string_view name) { return node.name() == name; }
bool IsElementNode(const pugi::xml_node& node) { return node.type() == pugi::node_element; }
bool AttributeIs(const pugi::xml_node& node, const char* name, std::string_view value) {
    return SameText(std::string_view(node.attribute(name).value()), value);
}

}  // namespace

/// One node whose children are being read, and the object that they go to.
struct TXSDReader::TFrame {
    enum TKind { fkElement, fkType, fkParticle } Kind;
    pugi::xml_node Next;
    TXSDElement* Element = nullptr;
    TXSDType* Type = nullptr;
};

std::u16string TXSDReader::GetAttributeValue(const pugi::xml_node& node, const char* name) {
    return ToUtf16(node.attribute(name).value());
}

std::u16string TXSDReader::GetNamespacePrefixOfFile(std::string_view fileName) {
    std::string name(FileNameOf(fileName));
    if (size_t point = name.rfind('.'); point != name.npos) {
        std::string extension = name.substr(point);
        name.erase(name.find(extension), extension.size());
    }
    return SameText(name, std::string_view("asp_directives")) ? std::u16string() : ToUtf16(name);
}

void TXSDReader::LoadFromFile(const std::string& fileName) {
    FFileName.clear();
    if (!GetPlatform().FileExists(fileName)) return;
    try {
        FFileName = fileName;
        TXMLFile file;
        file.Load(fileName);
        if (file.IsCut()) Error("The file is too large; only its first 16 MB are used");
        std::u16string prefix = GetNamespacePrefixOfFile(fileName);
        if (Is(file.GetRoot(), "xsd:schema")) {
            if (!prefix.empty()) FNamespacePrefix = prefix + u":";
            ReadSchema(file.GetRoot());
        }
        FixupReferences();
    } catch (const EXMLFileError& error) {
        // The event has no place for a line, so the sentence carries it.
        std::string line = error.FLine ? " (line " + std::to_string(error.FLine) + ")" : "";
        Error(error.what() + line);
    } catch (const std::exception& error) {
        Error(error.what());
    }
}

void TXSDReader::ReadSchema(const pugi::xml_node& root) {
    FDefaultQualified = AttributeIs(root, "elementFormDefault", "qualified");
    for (pugi::xml_node child : root.children())
        if (IsElementNode(child)) ReadDeclaration(child);
}

void TXSDReader::ReadDeclaration(const pugi::xml_node& node) {
    std::vector<TFrame> frames;
    if (Is(node, "xsd:element")) {
        if (auto* element = AddElement(node, u"", true))
            frames.push_back({TFrame::fkElement, node.first_child(), element});
    } else if (Is(node, "xsd:simpleType")) {
        AddSimpleType(nullptr, node);
    } else if (Is(node, "xsd:complexType")) {
        if (auto* type = AddType(node)) frames.push_back({TFrame::fkType, node.first_child(), nullptr, type});
    } else if (Is(node, "xsd:attributeGroup")) {
        AddAttributeGroup(node);
    }
    ReadNested(frames);
}

void TXSDReader::ReadNested(std::vector<TFrame>& frames) {
    while (!frames.empty()) {
        TFrame& frame = frames.back();
        pugi::xml_node child = frame.Next;
        if (!child) {
            if (frame.Kind == TFrame::fkParticle) --FLevel;
            frames.pop_back();
            continue;
        }
        frame.Next = child.next_sibling();
        switch (frame.Kind) {
            case TFrame::fkElement: ReadElementChild(frames, frame.Element, child); break;
            case TFrame::fkType: ReadTypeChild(frames, frame.Type, child); break;
            case TFrame::fkParticle: {
                // Every node in a choice or sequence counts as an element, whatever its name.
                TXSDType* type = frame.Type;
                TXSDElement* element = AddElement(child, type->FName, false);
                type->AddChild(element);
                if (element) frames.push_back({TFrame::fkElement, child.first_child(), element});
                break;
            }
        }
    }
}

void TXSDReader::ReadElementChild(std::vector<TFrame>& frames, TXSDElement* element,
                                  const pugi::xml_node& child) {
    if (Is(child, "xsd:simpleType")) {
        element->FTypeDef = AddSimpleType(nullptr, child);
    } else if (Is(child, "xsd:complexType")) {
        TXSDType* type = AddType(child);
        element->FTypeDef = type;
        if (type) frames.push_back({TFrame::fkType, child.first_child(), nullptr, type});
    }
}

void TXSDReader::ReadTypeChild(std::vector<TFrame>& frames, TXSDType* type, const pugi::xml_node& child) {
    if (!IsElementNode(child)) return;
    ++FLevel;
    if (Is(child, "xsd:choice") || Is(child, "xsd:sequence")) {
        // Its frame goes back to the old level at its end.
        frames.push_back({TFrame::fkParticle, child.first_child(), nullptr, type});
        return;
    }
    if (Is(child, "xsd:attribute")) AddAttribute(*type, child);
    else if (Is(child, "xsd:attributeGroup")) type->AddAttributeGroup(GetAttributeValue(child, "ref"));
    --FLevel;
}

TXSDElement* TXSDReader::AddElement(const pugi::xml_node& node, const std::u16string& parent, bool topLevel) {
    std::u16string name = GetAttributeValue(node, "name");
    if (LookupElement(name, parent, false, FLevel)) {
        Error("Element " + ToUtf8(name) + " already exists");
        return nullptr;
    }
    if (!HasRoom()) return nullptr;
    bool isDirective = topLevel && AttributeIs(node, "vs:htmlequivalent", "%@");
    if (isDirective) name = u"@ " + name;
    auto* element = Make<TXSDElement>(name, GetAttributeValue(node, "type"), FLevel);
    element->FRef = GetAttributeValue(node, "ref");
    element->FNonBrowseable =
        AttributeIs(node, "vs:nonbrowseable", "true") || AttributeIs(node, "macroelement", "true");
    element->FImplicitClosure = isDirective || AttributeIs(node, "vs:implicitclosure", "true") ||
                                AttributeIs(node, "impliedclose", "true");
    // A form of "qualified" does not override an elementFormDefault that is not.
    element->FUnqualified = AttributeIs(node, "form", "unqualified") || !FDefaultQualified;
    element->FParent = parent;
    element->FDirective = isDirective;
    element->FTopLevel = AttributeIs(node, "vs:toplevel", "true");
    element->FExtends = GetAttributeValue(node, "vs:extends");
    EnterElement(element);
    return element;
}

TXSDType* TXSDReader::AddType(const pugi::xml_node& node) {
    std::u16string name = GetAttributeValue(node, "name");
    if (LookupType(name)) {
        Error("Type " + ToUtf8(name) + " already exists");
        return nullptr;
    }
    if (!HasRoom()) return nullptr;
    auto* type = Make<TXSDType>(name, FLevel);
    EnterList(FTypes, type);
    if (!name.empty()) FTypeTable.Add(FoldedHash(name), type);
    return type;
}

TXSDSimpleType* TXSDReader::AddSimpleType(TXSDAttribute* attribute, const pugi::xml_node& node) {
    TXSDSimpleType* last = nullptr;
    std::u16string name = GetAttributeValue(node, "name");
    // One object for each child, a comment included: a look-up finds the newest.
    for (pugi::xml_node child : node.children()) {
        if (!HasRoom()) break;
        last = Make<TXSDSimpleType>(name, FLevel);
        EnterList(FSimpleTypes, last);
        FSimpleTypeTable.Add(FoldedHash(name), last);
        if (attribute) attribute->AddValue(last);
        if (!Is(child, "xsd:restriction")) continue;
        FRestrictions.push_back(std::make_unique<TXSDRestriction>());
        last->AddRestriction(FRestrictions.back().get());
        AddRestriction(*FRestrictions.back(), child);
    }
    return last;
}

void TXSDReader::AddRestriction(TXSDRestriction& restriction, const pugi::xml_node& node) {
    restriction.FBase = GetAttributeValue(node, "base");
    if (restriction.FBase != u"xsd:string" && restriction.FBase != u"xsd:NMTOKEN") return;
    for (pugi::xml_node child : node.children())
        if (Is(child, "xsd:enumeration")) restriction.AddEnumeration(GetAttributeValue(child, "value"));
}

void TXSDReader::AddAttribute(TXSDBaseType& owner, const pugi::xml_node& node) {
    if (!HasRoom()) return;
    std::u16string typeName = GetAttributeValue(node, "type");
    if (typeName.empty()) typeName = GetAttributeValue(node, "vs:omtype");
    auto* attribute = Make<TXSDAttribute>(GetAttributeValue(node, "name"), typeName, FLevel);
    attribute->FBuilder = GetAttributeValue(node, "vs:builder");
    if (attribute->FBuilder.empty() && ToUtf8(typeName) == TypeUri) attribute->FBuilder = u"uri";
    if (attribute->FBuilder.empty()) attribute->FBuilder = GetAttributeValue(node, "editor");
    owner.AddAttribute(attribute);
    for (pugi::xml_node child : node.children())
        if (Is(child, "xsd:simpleType")) AddSimpleType(attribute, child);
}

void TXSDReader::AddAttributeGroup(const pugi::xml_node& node) {
    std::u16string name = GetAttributeValue(node, "name");
    if (LookupAttrGroup(name)) return Error("AttributeGroup " + ToUtf8(name) + " already exists");
    if (!HasRoom()) return;
    auto* group = Make<TXSDAttributeGroup>(name, FLevel);
    EnterList(FAttrGroups, group);
    FAttrGroupTable.Add(FoldedHash(name), group);
    for (pugi::xml_node child : node.children()) {
        if (!IsElementNode(child)) continue;
        if (Is(child, "xsd:attribute")) AddAttribute(*group, child);
        else if (Is(child, "xsd:attributeGroup")) group->AddAttributeGroup(GetAttributeValue(child, "ref"));
    }
}

}  // namespace caretwell
