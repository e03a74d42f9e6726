#include "symbols/XSDLoader.h"

#include <algorithm>

#include "host/Nibapi.h"
#include "host/Platform.h"
#include "symbols/MLSymbolManager.h"
#include "tagmodel/HTMLAttribute.h"

namespace caretwell {
namespace {

bool IsUrl(std::string_view text) {
    return StartsWithText(text, std::string_view("http://")) ||
           StartsWithText(text, std::string_view("https://"));
}

std::string GetTypeKey(std::string_view nameSpace, std::string_view name) {
    std::string key(name);
    if (!nameSpace.empty()) key.append(":").append(nameSpace);
    return key;
}

// Elements of a built-in type such as xs:string are left out unless the user wants them.
bool KeepsSimpleTyped() {
    auto services = GetService<INibServices>();
    ISettingsStore* settings = GetPlatform().Settings();
    std::string key = services ? services->BaseRegistryKey() + "\\Code Insight" : "";
    if (!settings || !services || !settings->OpenKey(key)) return false;
    auto value = settings->ReadString(key, "Simple Typed Elements");
    return value && SameText(std::string_view(*value), std::string_view("True"));
}

std::string_view PrefixOf(TXMLSchemaSeverity severity) {
    switch (severity) {
        case xsError: return "Error";
        case xsWarning: return "Warning";
        case xsHint: return "Hint";
    }
    return "";
}

}  // namespace

struct TXSDLoader::TSource {
    explicit TSource(TXMLSchemaMessageEvent onMessage) : Library(std::move(onMessage)) {}

    /// The type of a declaration, none if it names one that neither the schema nor its
    /// includes declare. A built-in type by name is such a one.
    TXMLType GetTypeDef(const TXMLDeclaration& declaration) const {
        if (declaration.HasRef() || !declaration.HasType()) return declaration.GetDataType();
        std::string_view text = declaration.GetTypeText();
        size_t colon = text.find(':');
        bool hasPrefix = colon != text.npos;
        auto nameSpace = hasPrefix ? declaration.FindNamespace(text.substr(0, colon))
                                   : declaration.GetSchema().GetTargetNamespace();
        auto found =
            Types.find(GetTypeKey(nameSpace.value_or(""), hasPrefix ? text.substr(colon + 1) : text));
        return found == Types.end() ? TXMLType() : found->second;
    }

    void FillAttributes(THTMLTag& tag, const TXMLType& type, TMLSymbolManager& manager) const {
        for (const auto& definition : type.GetAttributes()) AddAttributeDef(definition, tag, manager);
        for (const auto& group : type.GetAttributeGroups())
            for (const auto& definition : group.GetAttributes()) AddAttributeDef(definition, tag, manager);
    }

    void AddAttributeDef(const TXMLDeclaration& definition, THTMLTag& tag, TMLSymbolManager& manager) const {
        std::string_view name = definition.GetName();
        if (name.empty()) return;
        auto attribute = MakeRef<TXMLAttribute>(ToUtf16(name), -1);
        tag.AddAttribute(attribute);
        manager.RegisterAttributeEditor(attribute, manager.GetAttributeEditor("default"));
        for (std::string_view value : GetTypeDef(definition).GetEnumerations())
            if (!value.empty()) attribute->AddValue(ToUtf16(value));
    }

    TXMLSchemaLibrary Library;
    std::unordered_map<std::string, TXMLType> Types;
};

/// A tag, where it goes when its content is complete, and what is left of the content.
struct TXSDLoader::TFrame {
    THTMLTag* Tag;
    THTMLTag* Parent;
    std::vector<TXMLDeclaration> Elements;
    size_t Next = 0;
};

TXSDLoader::TXSDLoader(TMLSymbolManager& manager)
    : FSymbolManager(manager), FKeepsSimpleTyped(KeepsSimpleTyped()) {}
TXSDLoader::~TXSDLoader() = default;

void TXSDLoader::Report(std::string_view fileName, std::string_view text, std::string_view prefix,
                        int32_t line) {
    FSymbolManager.Error(fileName, text, prefix, line, 0);
}

void TXSDLoader::Load(const std::string& fileName, THTMLTag& root,
                      const std::vector<std::u16string>* parents) {
    FFileName = fileName;
    TMLSymbolManager& manager = FSymbolManager;
    FSource = std::make_shared<TSource>([&manager](const TXMLSchemaMessage& message) {
        manager.Error(message.FileName, message.Text, PrefixOf(message.Severity), message.Line, 0);
    });
    const TXMLSchema& schema = FSource->Library.Load(fileName, GetPlatform().SchemaFolder());
    std::unordered_set<std::string> visited;
    LoadSchema(schema, fileName, {&root, parents}, visited);
}

std::string TXSDLoader::ResolveLocation(const std::string& base, const std::string& location) {
    if (IsUrl(location)) return location;
    size_t slash = base.find_last_of("/\\");
    if (IsUrl(base) && slash != base.npos) return base.substr(0, slash + 1) + location;
    if (GetPlatform().FileExists(location)) return location;
    bool hasFolder = location.find_first_of("/\\") != location.npos;
    return hasFolder || slash == base.npos ? std::string() : base.substr(0, slash + 1) + location;
}

// As deep as files include each other, and a library reads a limited number of them.
void TXSDLoader::LoadSchema(const TXMLSchema& schema, const std::string& fileName, const TPlaces& places,
                            std::unordered_set<std::string>& visited) {
    if (!visited.insert(fileName).second) return;
    for (const TXMLSchemaInclude& include : schema.GetIncludes())
        if (include.Schema && !include.Location.empty())
            LoadSchema(*include.Schema, ResolveLocation(fileName, include.Location), places, visited);
    for (const TXMLType& type : schema.GetComplexTypes()) RegisterType(type);
    for (const TXMLType& type : schema.GetSimpleTypes()) RegisterType(type);
    for (const TXMLDeclaration& element : schema.GetElements()) AddElementDef(element, places);
}

void TXSDLoader::RegisterType(const TXMLType& type) {
    std::string_view nameSpace = type.GetSchema()->GetTargetNamespace().value_or("");
    FSource->Types.try_emplace(GetTypeKey(nameSpace, type.GetName()), type);
}

// Types hold elements whose types hold elements; the frames stand in for that recursion.
void TXSDLoader::AddElementDef(const TXMLDeclaration& element, const TPlaces& places) {
    std::vector<TFrame> frames;
    THTMLTag* global = EnterElement(element, frames);
    while (!frames.empty()) {
        TFrame& frame = frames.back();
        if (frame.Next < frame.Elements.size()) {
            THTMLTag* parent = frame.Tag;
            size_t depth = frames.size();
            THTMLTag* child = EnterElement(TXMLDeclaration(frame.Elements[frame.Next++]), frames);
            // A child joins its parent once its own content is there.
            if (frames.size() > depth) frames.back().Parent = parent;
            else if (child) parent->AddTag(child);
        } else {
            if (frame.Parent) frame.Parent->AddTag(frame.Tag);
            frames.pop_back();
        }
    }
    if (!global) return;
    places.Root->AddTag(global);
    if (!places.Parents) return;
    for (const std::u16string& name : *places.Parents)
        if (auto parent = FSymbolManager.GetTagFromHashList(name)) parent->AddTag(global);
}

THTMLTag* TXSDLoader::EnterElement(const TXMLDeclaration& element, std::vector<TFrame>& frames) {
    auto [met, isNew] = FMet[element.HasRef()].try_emplace(element.GetTarget(), nullptr);
    if (!isNew) return met->second;
    if (element.GetName().empty()) return nullptr;
    TXMLType type = GetElementType(element);
    // The place in the table is filled before the content is read, so a type that
    // contains itself ends.
    return met->second = type ? FindOrMakeTag(element, type, frames) : nullptr;
}

TXMLType TXSDLoader::GetElementType(const TXMLDeclaration& element) const {
    TXMLType type = FSource->GetTypeDef(element);
    if (type || !FKeepsSimpleTyped) return type;
    type = element.GetDataType();
    return type.IsBuiltIn() ? type : TXMLType();
}

THTMLTag* TXSDLoader::FindOrMakeTag(const TXMLDeclaration& element, const TXMLType& type,
                                    std::vector<TFrame>& frames) {
    std::string key =
        "E:" + std::string(element.GetName()) + (type.IsComplex() ? "-C:" : "-S:") + type.GetName();
    if (auto found = FElements.find(key); found != FElements.end()) return found->second.Get();
    THTMLTag* tag = MakeTag(key, element.GetName());
    if (!tag || !type.IsComplex()) return tag;
    tag->SetAttributeFiller([source = FSource, type, &manager = FSymbolManager](THTMLTag& owner) {
        source->FillAttributes(owner, type, manager);
    });
    frames.push_back({tag, nullptr, type.GetElements()});
    return tag;
}

THTMLTag* TXSDLoader::MakeTag(const std::string& key, std::string_view name) {
    if (FElements.size() >= MaxTags) {
        if (!FIsFull)
            Report(FFileName, "The schema declares too many elements; the rest is not used", "Error", 0);
        FIsFull = true;
        return nullptr;
    }
    TRef<THTMLTag> tag = MakeRef<TXMLElement>(ToUtf16(name), &FSymbolManager, -1);
    FElements[key] = tag;
    FSymbolManager.RegisterTag(tag);
    // Of two tags of one name the table holds the first; the other is a child all the same.
    if (!(FSymbolManager.GetTagFromHashList(tag->GetName()) == tag.Get())) FSymbolManager.KeepTag(tag);
    return tag.Get();
}

void TMLSymbolManager::LoadXSDEx(THTMLTag& root, const std::vector<std::u16string>* parents,
                                 const std::string& fileName) {
    TXSDLoader(*this).Load(fileName, root, parents);
}

}  // namespace caretwell
