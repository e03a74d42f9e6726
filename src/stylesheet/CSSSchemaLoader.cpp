// The elements of css.xml. What they mean together is worked out in CSSSchemaResolve.cpp.
#include "stylesheet/CSSSchemaLoader.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <pugixml.hpp>
#include <string_view>

#include "host/Platform.h"
#include "markup/Text.h"

namespace caretwell {

/// The file while it is read.
class TCSSReader::TDocument {
public:
    TDocument(TCSSSymbolTable& table, const std::string& text) : FTable(table), FText(text) {}

    void Load();

private:
    void AddProperty(pugi::xml_node node);
    void AddType(pugi::xml_node node);
    void AddTypeValue(pugi::xml_node node, TCSSType& type);
    void LoadValues(pugi::xml_node node, TCSSProperty& property);
    void LoadValue(pugi::xml_node node, TCSSProperty& property);
    bool ReadBoolean(pugi::xml_node node, const char* name, bool otherwise) const;
    [[noreturn]] void Fail(const std::string& message, std::ptrdiff_t offset) const;

    TCSSSymbolTable& FTable;
    const std::string& FText;
    pugi::xml_document FXml;
};

namespace {

bool IsElement(pugi::xml_node node) { return node.type() == pugi::node_element; }

bool IsNamed(pugi::xml_node node, const char* name) { return std::strcmp(node.name(), name) == 0; }

bool IsGroup(pugi::xml_node value) { return value.attribute("optional") || value.attribute("sequence"); }

}  // namespace

void TCSSReader::LoadFromFile(const std::string& fileName) {
    if (!GetPlatform().FileExists(fileName)) return;
    std::ifstream file(fileName, std::ios::binary | std::ios::ate);
    std::string text(static_cast<size_t>(std::max<std::streamoff>(file.tellg(), 0)), ' ');
    file.seekg(0);
    if (!file.read(text.data(), static_cast<std::streamsize>(text.size())))
        throw ECSSSchemaError("The file cannot be read", 1);
    LoadFromText(text);
}

void TCSSReader::LoadFromText(const std::string& text) {
    TDocument(FTable, text).Load();
    Resolve();
}

void TCSSReader::TDocument::Load() {
    pugi::xml_parse_result result = FXml.load_buffer(FText.data(), FText.size());
    if (!result) Fail(result.description(), result.offset);
    pugi::xml_node root = FXml.document_element();
    if (!IsNamed(root, "css")) return;
    for (pugi::xml_node node : root.children()) {
        if (!IsElement(node)) continue;
        if (IsNamed(node, "property")) AddProperty(node);
        else if (IsNamed(node, "type")) AddType(node);
    }
}

void TCSSReader::TDocument::AddProperty(pugi::xml_node node) {
    pugi::xml_attribute name = node.attribute("name");
    if (!name) return;
    TCSSProperty& property = *FTable.NewProperty(name.value());
    property.FInherited = ReadBoolean(node, "inherited", property.FInherited);
    for (pugi::xml_node child : node.children()) {
        if (!IsElement(child)) continue;
        if (IsNamed(child, "media") && child.attribute("name"))
            property.FMedia.Add(child.attribute("name").value());
        else if (IsNamed(child, "value")) LoadValues(child, property);
    }
}

// Groups hold groups to any depth; the walk goes by the links of the tree, so that
// depth costs nothing.
void TCSSReader::TDocument::LoadValues(pugi::xml_node top, TCSSProperty& property) {
    for (pugi::xml_node node = top; node;) {
        bool isGroup = IsElement(node) && IsGroup(node);
        if (IsElement(node) && !isGroup) LoadValue(node, property);
        if (isGroup && node.first_child()) {
            node = node.first_child();
            continue;
        }
        while (node != top && !node.next_sibling()) node = node.parent();
        if (node == top) return;
        node = node.next_sibling();
    }
}

void TCSSReader::TDocument::LoadValue(pugi::xml_node node, TCSSProperty& property) {
    if (pugi::xml_attribute name = node.attribute("name")) {
        TCSSValue* value = FTable.NewValue(name.value());
        value->FKind = cssVkName;
        property.AddValue(value);
    } else if (pugi::xml_attribute type = node.attribute("type"))
        property.AddType(FTable.NewType(type.value()));
}

void TCSSReader::TDocument::AddType(pugi::xml_node node) {
    pugi::xml_attribute name = node.attribute("name");
    if (!name) return;
    TCSSType& type = *FTable.NewType(name.value());
    type.FEditable = ReadBoolean(node, "editable", type.FEditable);
    for (pugi::xml_node child : node.children())
        if (IsElement(child) && IsNamed(child, "value")) AddTypeValue(child, type);
}

void TCSSReader::TDocument::AddTypeValue(pugi::xml_node node, TCSSType& type) {
    if (pugi::xml_attribute name = node.attribute("name")) type.FValues.Add(name.value());
    else if (pugi::xml_attribute ref = node.attribute("ref")) type.FRefs.Add(ref.value());
    else if (pugi::xml_attribute unit = node.attribute("type")) {
        if (std::strcmp(unit.value(), "font") != 0) type.FIntrinsics.Add(unit.value());
        else type.FHasFonts = true;
    }
}

/// "true", "false" in any case, or a number, of which 0 is false.
bool TCSSReader::TDocument::ReadBoolean(pugi::xml_node node, const char* name, bool otherwise) const {
    pugi::xml_attribute attribute = node.attribute(name);
    if (!attribute) return otherwise;
    std::string_view text = attribute.value();
    if (SameText(text, "true")) return true;
    if (SameText(text, "false")) return false;
    std::string_view digits = text.substr(text.starts_with('-') ? 1 : 0);
    bool isNumber = !digits.empty() && digits.find_first_not_of("0123456789") == digits.npos;
    if (!isNumber) Fail("'" + std::string(text) + "' is not a valid boolean value", node.offset_debug());
    return digits.find_first_not_of('0') != digits.npos;
}

void TCSSReader::TDocument::Fail(const std::string& message, std::ptrdiff_t offset) const {
    auto end = static_cast<size_t>(std::max<std::ptrdiff_t>(offset, 0));
    std::string_view before = std::string_view(FText).substr(0, end);
    throw ECSSSchemaError(message, static_cast<int32_t>(std::count(before.begin(), before.end(), '\n')) + 1);
}

}  // namespace caretwell
