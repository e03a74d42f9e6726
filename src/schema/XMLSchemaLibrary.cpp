// Loads a schema and what it includes, and files its global components.
#include <charconv>

#include "host/Paths.h"
#include "host/Platform.h"
#include "schema/XMLSchemaData.h"

namespace caretwell {
namespace {

/// "%20" as the byte that it stands for.
std::string Unescape(std::string_view location) {
    std::string text;
    for (size_t i = 0; i < location.size(); ++i) {
        unsigned byte = 0;
        auto digits = location.substr(i + 1, 2);
        bool isEscape = location[i] == '%' && digits.size() == 2 &&
                        std::from_chars(digits.data(), digits.data() + 2, byte, 16).ptr == digits.data() + 2;
        text += isEscape ? static_cast<char>(byte) : location[i];
        if (isEscape) i += 2;
    }
    return text;
}

// A scheme, a drive or a root: nothing that can lie in the schema folder.
bool IsAbsolute(std::string_view location) {
    return location.starts_with('/') || location.starts_with('\\') ||
           location.substr(0, location.find_first_of("/\\")).find(':') != location.npos;
}

class TLoader {
public:
    explicit TLoader(TXMLSchemaSet& set) : FSet(set) {}

    const TXMLSchema& Load(const std::string& fileName) {
        auto file = std::make_shared<TXMLFile>();
        TXMLSchemaMessage problem{xsError, fileName, 1, "The document is no XML schema"};
        bool isWhole = true;
        try {
            file->Load(fileName);
        } catch (const EXMLFileError& error) {
            isWhole = false;
            problem.Text = error.what();
            problem.Line = error.FLine;
        }
        Keep(fileName, file);
        const TXMLSchema* root = file->GetRoot() ? AddSchema(fileName, file, std::nullopt) : nullptr;
        if (!root) throw EXMLSchemaError(problem.Text, fileName, problem.Line);
        if (!isWhole) FSet.Report(problem);  // what stood before the mistake is used
        // The list grows while it is walked.
        for (size_t next = 0; next < FSet.Schemas.size();) ReadIncludes(FSet.Schemas[next++]->GetData());
        for (const auto& schema : FSet.Schemas) AddComponents(*schema, schema->GetData().Root);
        // What is redefined may redefine in turn, so the innermost files come first.
        for (size_t i = FSet.Schemas.size(); i-- > 0;) AddRedefinitions(*FSet.Schemas[i]);
        AddSubstitutions();
        return *root;
    }

private:
    using TData = TXMLSchema::TData;

    void Keep(const std::string& fileName, const std::shared_ptr<TXMLFile>& file) {
        FSet.Files[fileName] = file;
        FSet.Bytes += file->GetSize();
        if (file->IsCut())
            FSet.Report({xsError, fileName, 0, "The file is too large; only its first 16 MB are used"});
    }

    // The schema of a file under a target namespace of its own, or else inherited.
    const TXMLSchema* AddSchema(const std::string& fileName, const std::shared_ptr<TXMLFile>& file,
                                std::optional<std::string_view> inherited) {
        auto data = std::make_unique<TData>();
        data->Set = &FSet;
        data->Index = FSet.Schemas.size();
        data->FileName = fileName;
        data->File = file;
        data->Root = file->GetRoot();
        ReadPrefixes(*data);
        if (data->KindOf(data->Root) != xkSchema) return nullptr;
        pugi::xml_attribute target = data->Root.attribute("targetNamespace");
        data->TargetNamespace = target ? TrimBlanks(target.value()) : inherited;
        if (data->TargetNamespace) data->Target = FSet.NumberOf(*data->TargetNamespace);
        for (const auto& known : FSet.Schemas)
            if (known->GetData().File == file && known->GetData().Target == data->Target) return known.get();
        FSet.Schemas.push_back(std::make_unique<TXMLSchema>(std::move(data)));
        return FSet.Schemas.back().get();
    }

    void ReadPrefixes(TData& data) {
        for (pugi::xml_attribute attribute : data.Root.attributes()) {
            std::string_view name = attribute.name();
            if (name != "xmlns" && !name.starts_with("xmlns:")) continue;
            std::string_view prefix = name.size() > 6 ? name.substr(6) : std::string_view();
            data.Prefixes.push_back({prefix, FSet.NumberOf(attribute.value())});
            if (IsLanguage(data.Prefixes.back().Namespace)) data.LanguagePrefixes.push_back(prefix);
        }
        data.HasInnerNamespaces = data.File->GetNamespaceWords() != data.Prefixes.size();
    }

    void ReadIncludes(TData& data) {
        for (pugi::xml_node node : data.Root.children()) {
            TXMLKind kind = data.KindOf(node);
            if (kind != xkInclude && kind != xkRedefine && kind != xkImport) continue;
            std::string_view location = AttributeText(node, "schemaLocation");
            if (location.empty()) continue;
            TXMLSchemaInclude include{std::string(location), nullptr};
            std::string fileName = FindFile(data, node, include.Location);
            if (!fileName.empty()) {
                include.Schema = ReadIncluded(data, node, fileName, kind != xkImport);
                if (include.Schema) include.Location = fileName;
            }
            data.Includes.push_back(std::move(include));
        }
    }

    // The file of a location; empty, with a message, if it must not or cannot be read.
    std::string FindFile(TData& data, pugi::xml_node node, const std::string& location) {
        if (IsAbsolute(location)) {
            // Nothing is fetched, but who has put the file into the folder means that one.
            std::string name(FileNameOf(Unescape(location)));
            for (const std::string& folder : {FolderOf(data.FileName), FSet.Folder})
                if (!name.empty() && GetPlatform().FileExists(folder + name)) return folder + name;
            data.Report(node, xsHint, "Schema location " + location + " is not followed");
            return {};
        }
        std::string fileName = NormalPath(FolderOf(data.FileName) + Unescape(location));
        if (!IsInFolder(fileName, FSet.Folder)) {
            data.Report(node, xsWarning, "Schema location " + location + " lies outside the schema folder");
            return {};
        }
        if (GetPlatform().FileExists(fileName)) return fileName;
        data.Report(node, xsWarning, "Schema file " + location + " cannot be found");
        return {};
    }

    const TXMLSchema* ReadIncluded(TData& data, pugi::xml_node node, const std::string& fileName,
                                   bool inheritsTarget) {
        std::shared_ptr<TXMLFile> file = ReadFile(data, node, fileName);
        if (!file) return nullptr;
        const TXMLSchema* schema =
            AddSchema(fileName, file, inheritsTarget ? data.TargetNamespace : std::nullopt);
        if (!schema) FSet.Report({xsError, fileName, 1, "The document is no XML schema"});
        return schema;
    }

    std::shared_ptr<TXMLFile> ReadFile(TData& data, pugi::xml_node node, const std::string& fileName) {
        if (auto known = FSet.Files.find(fileName); known != FSet.Files.end()) return known->second;
        if (FSet.Files.size() >= TXMLSchemaLibrary::MaxSchemas || FSet.Bytes > TXMLSchemaLibrary::MaxBytes) {
            data.Report(node, xsError, "Too many schema files; this one is not read");
            return nullptr;
        }
        auto file = std::make_shared<TXMLFile>();
        try {
            file->Load(fileName);
        } catch (const EXMLFileError& error) {
            FSet.Report({xsError, fileName, error.FLine, error.what()});
        }
        // Of a malformed file, what stood before the error is used.
        if (!file->GetRoot()) file = nullptr;
        if (file) Keep(fileName, file);
        else FSet.Files[fileName] = nullptr;
        return file;
    }

    struct TSpaceOfKind {
        TXMLKind Kind;
        TXMLSpace Space;
        const char* Word;
    };
    static const TSpaceOfKind* FindSpace(TXMLKind kind) {
        static constexpr TSpaceOfKind rows[] = {{xkElement, xnElement, "Element"},
                                                {xkComplexType, xnType, "Type"},
                                                {xkSimpleType, xnType, "Type"},
                                                {xkGroup, xnGroup, "Group"},
                                                {xkAttributeGroup, xnAttributeGroup, "Attribute group"},
                                                {xkAttribute, xnAttribute, "Attribute"}};
        const auto* row =
            std::find_if(std::begin(rows), std::end(rows), [kind](const auto& r) { return r.Kind == kind; });
        return row == std::end(rows) ? nullptr : row;
    }

    TXMLComponent& NewComponent(const TXMLSchema& schema, pugi::xml_node node) {
        TXMLComponent& component = FSet.Store.emplace_back();
        component.Node = node;
        component.Schema = &schema;
        schema.GetData().Components.push_back(&component);
        return component;
    }

    void AddComponents(const TXMLSchema& schema, pugi::xml_node parent) {
        const TData& data = schema.GetData();
        for (pugi::xml_node node : parent.children()) {
            const TSpaceOfKind* row = FindSpace(data.KindOf(node));
            std::string_view name = AttributeText(node, "name");
            if (!row || name.empty()) continue;
            auto [place, isNew] = FSet.Components.try_emplace({row->Space, data.Target, name});
            if (isNew) place->second = &NewComponent(schema, node);
            else
                data.Report(node, xsWarning,
                            std::string(row->Word) + " " + std::string(name) + " already exists");
        }
    }

    void AddRedefinitions(const TXMLSchema& schema) {
        const TData& data = schema.GetData();
        for (pugi::xml_node redefine : data.Root.children()) {
            if (data.KindOf(redefine) != xkRedefine) continue;
            for (pugi::xml_node node : redefine.children()) {
                const TSpaceOfKind* row = FindSpace(data.KindOf(node));
                std::string_view name = AttributeText(node, "name");
                if (!row || name.empty()) continue;
                TXMLComponent& component = NewComponent(schema, node);
                TXMLComponent*& place = FSet.Components[{row->Space, data.Target, name}];
                component.Original = place;
                if (place) place->IsReplaced = true;
                place = &component;
            }
        }
    }

    void AddSubstitutions() {
        for (TXMLComponent& component : FSet.Store) {
            const TData& data = component.Schema->GetData();
            if (component.IsReplaced || data.KindOf(component.Node) != xkElement) continue;
            std::string_view heads = AttributeText(component.Node, "substitutionGroup");
            for (std::string_view head = TakeWord(heads); !head.empty(); head = TakeWord(heads)) {
                const TXMLComponent* found = data.Resolve(component.Node, head, xnElement);
                if (found) FSet.Members[found->Node.internal_object()].push_back(&component);
                else
                    data.Report(component.Node, xsWarning,
                                "Unknown reference to element " + std::string(head));
            }
        }
    }

    TXMLSchemaSet& FSet;
};

}  // namespace

TXMLSchemaLibrary::TXMLSchemaLibrary(TXMLSchemaMessageEvent onMessage)
    : FSet(std::make_unique<TXMLSchemaSet>()) {
    FSet->OnMessage = std::move(onMessage);
}
TXMLSchemaLibrary::~TXMLSchemaLibrary() = default;

void TXMLSchemaLibrary::BeginUse() { FSet->StepsLeft = MaxSteps; }
void TXMLSchemaLibrary::BeginQuestion() { FSet->QuestionStepsLeft = MaxQuestionSteps; }

void TXMLSchemaLibrary::SetOnMessage(TXMLSchemaMessageEvent onMessage) {
    FSet->OnMessage = std::move(onMessage);
}

const TXMLSchema& TXMLSchemaLibrary::Load(const std::string& fileName, const std::string& folder) {
    std::string path = NormalPath(fileName);
    FSet->Folder = NormalPath(folder.empty() || folder.ends_with('/') ? folder : folder + "/");
    if (!IsInFolder(path, FSet->Folder)) FSet->Folder = FolderOf(path);
    return TLoader(*FSet).Load(path);
}

// ---- TXMLSchema

TXMLSchema::TXMLSchema(std::unique_ptr<TData> data) : FData(std::move(data)) {}
TXMLSchema::~TXMLSchema() = default;
const std::string& TXMLSchema::GetFileName() const { return FData->FileName; }
std::optional<std::string_view> TXMLSchema::GetTargetNamespace() const { return FData->TargetNamespace; }
const std::vector<TXMLSchemaInclude>& TXMLSchema::GetIncludes() const { return FData->Includes; }

std::vector<TXMLType> TXMLSchema::GetTypes(bool complex) const {
    std::vector<TXMLType> types;
    for (const TXMLComponent* component : FData->Components) {
        bool fits = FData->KindOf(component->Node) == (complex ? xkComplexType : xkSimpleType);
        if (fits && !component->IsReplaced) types.emplace_back(this, component->Node.internal_object());
    }
    return types;
}
std::vector<TXMLType> TXMLSchema::GetComplexTypes() const { return GetTypes(true); }
std::vector<TXMLType> TXMLSchema::GetSimpleTypes() const { return GetTypes(false); }

std::vector<TXMLDeclaration> TXMLSchema::GetElements() const {
    std::vector<TXMLDeclaration> elements;
    for (const TXMLComponent* component : FData->Components) {
        pugi::xml_node node = component->Node;
        if (FData->KindOf(node) != xkElement || component->IsReplaced || node.attribute("abstract").as_bool())
            continue;
        elements.emplace_back(this, node.internal_object(), this, node.internal_object());
    }
    return elements;
}

}  // namespace caretwell
