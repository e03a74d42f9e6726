#include "symbols/SchemaSelection.h"

#include <algorithm>

#include "host/Paths.h"
#include "host/Platform.h"
#include "symbols/FileToSchemaMapper.h"
#include "symbols/MLSymbolManager.h"
#include "symbols/SchemaReaderCache.h"

namespace caretwell {
namespace {

constexpr std::u16string_view RootName = u"<!--root-->";
constexpr std::string_view InvalidFile = "Invalid schema file \"%s\"";

bool Exists(const std::string& path) { return GetPlatform().FileExists(path); }

bool IsDefinition(const std::string& path) {
    std::string extension = ExtensionOf(path);
    return (extension == ".dtd" || extension == ".xsd") && Exists(path);
}

}  // namespace

void TSchemaSelection::Begin(const std::string& fileName) {
    std::string extension = ExtensionOf(fileName);
    FKind = &GetDocumentKind(extension);
    auto mapper = GetFileToSchemaMapperService();
    bool isFree = FKind->Mode == kmHTML && mapper->HasSchema(fileName);
    FManager.SetKibitzMode(isFree ? kmXML : FKind->Mode);
    if (isFree) SelectFree(mapper->GetSchema(fileName));
    SetIsASPEnabled(FKind->IsServerPage);
}

bool TSchemaSelection::Follow(const TCaretState& state) {
    if (FManager.GetKibitzMode() == kmXML) return FollowNamespaces(state.FNamespaces);
    return Select(state.FSchemaFile, state.FXSLOutputSchema, state.FInDocType);
}

void TSchemaSelection::SetIsASPEnabled(bool value) {
    if (value != FIsASPEnabled) FASPChanged = true;
    FIsASPEnabled = value;
}

void TSchemaSelection::Forget() {
    FSchemaFile.clear();
    FXSLOutputFile.clear();
    FTableKey.clear();
    FTablePrefixes.clear();
}

// A table of which a part is missing is none: the host that failed while it was made may do
// better the next time.
template <class TLoad>
void TSchemaSelection::MakeTable(const std::string& key, TLoad load) {
    if (!FTableKey.empty()) FManager.PutTableAway(FTableKey);
    FTableKey.clear();
    FManager.ClearTags();
    FTablePrefixes.clear();
    FManager.GetCharList().Clear();
    FManager.SetHiddenRootNode(nullptr);
    try {
        if (FSchemaFile.empty()) return;
        if (key.empty() || !FManager.TakeTableBack(key)) {
            FManager.MakeRoot(RootName);
            load();
            ShowAllChildren();
        }
        FTableKey = key;
    } catch (...) {
        // Nor are readers kept that have read half a file.
        FreeDTDReaders();
        FreeXSDReaders();
        FManager.ClearTags();
        Forget();
        throw;
    }
}

// Whole lists from the start: the first list of a schema is the same as all later ones.
void TSchemaSelection::ShowAllChildren() {
    for (auto& tag : FManager.GetTagList()) {
        tag->SetShowAttributes(false);
        tag->AlphaSort();
    }
    // The root is in no list of tags, and a filter works on names in order.
    if (THTMLTag* root = FManager.GetHiddenRootNode()) root->AlphaSort();
    FManager.ResetLists();
}

void TSchemaSelection::ReportMissing(std::string_view format, const std::string& value) {
    // A name is said to be missing once, and no more names than a person could read.
    constexpr size_t MostNames = 100;
    if (FReported.size() >= MostNames || !FReported.insert(value).second) return;
    std::string message(format);
    message.replace(message.find("%s"), 2, value);
    FManager.Error({}, message, "Code Completion", 1, 1);
}

// ---- free XML documents

bool TSchemaSelection::SelectFree(const std::string& path) {
    if (path == FSchemaFile) return false;
    bool exists = Exists(path);
    if (!exists) ReportMissing("Unable to find schema file \"%s\"", path);
    if (!exists && FSchemaFile.empty()) return false;
    FSchemaFile = exists ? path : std::string();
    FNamespaces.Clear();
    MakeTable({}, [this] { LoadFree(); });
    return true;
}

void TSchemaSelection::LoadFree() {
    FManager.LoadXSDEx(*FManager.GetHiddenRootNode(), nullptr, std::string(FSchemaFile));
}

std::string TSchemaSelection::FollowNamespace(const std::string& nameSpace) {
    std::string prefix(FNamespaces.GetPrefix(nameSpace));
    FTablePrefixes.push_back({nameSpace, prefix});
    return prefix;
}

bool TSchemaSelection::FollowNamespaces(const TDocumentNamespaces& value) {
    if (value == FNamespaces) return false;
    FNamespaces = value;
    bool isFollowed = std::all_of(FTablePrefixes.begin(), FTablePrefixes.end(), [&](const TTablePrefix& row) {
        return row.Prefix == value.GetPrefix(row.Namespace);
    });
    if (isFollowed) return false;
    MakeTable({}, [this] { LoadFree(); });
    return true;
}

// ---- documents that may name their schema

bool TSchemaSelection::Select(const std::string& name, std::string_view outputLanguage, bool isBeingTyped) {
    TKibitzMode mode = FManager.GetKibitzMode();
    if (mode == kmXML) return SelectFree(name);
    std::string file = GetSchemaFileName(name, mode);
    // A name that is no file of the schema folder is never opened, wherever it leads: such a
    // document gets what it would have without a name.
    std::string missing;
    if (!IsDefinition(file)) {
        std::string standard = GetSchemaFileName({}, mode);
        missing = name.empty() ? standard : name;
        file = Exists(standard) ? standard : std::string();
    }
    bool outputChanged = mode == kmXSL && FXSLOutputFile != outputLanguage;
    bool controlsChanged = mode == kmHTML && FASPChanged;
    bool isNew = file != FSchemaFile || outputChanged || controlsChanged;
    if (isNew) {
        FASPChanged = false;
        FSchemaFile = file;
        FXSLOutputFile = mode == kmXSL ? outputLanguage : std::string_view();
        std::string key =
            file + '\n' + FXSLOutputFile + '\n' + std::to_string(mode) + (FIsASPEnabled ? "s" : "");
        MakeTable(key, [&] { LoadFile(outputLanguage); });
    }
    // After the load, which begins with an empty message view.
    if (!missing.empty() && !isBeingTyped) ReportMissing(InvalidFile, missing);
    return isNew;
}

void TSchemaSelection::LoadFile(std::string_view outputLanguage) {
    std::string file = FSchemaFile;
    THTMLTag& root = *FManager.GetHiddenRootNode();
    if (ExtensionOf(file) == ".dtd") {
        FManager.LoadDTD(root, file);
        if (FManager.GetKibitzMode() == kmXSL) LoadOutputLanguage(outputLanguage);
    } else if (ExtensionOf(file) == ".xsd") {
        FManager.LoadXSD(root, nullptr, file);
    }
    if (FIsASPEnabled) LoadServerControls();
}

// The elements of the output language become children of xsl:template.
void TSchemaSelection::LoadOutputLanguage(std::string_view output) {
    TTagBucket* bucket = FManager.FindBucket(u"xsl:template");
    auto* host = bucket ? dynamic_cast<THTMLTag*>(bucket->Tag.Get()) : nullptr;
    if (!host || output.empty()) return;
    std::string file = GetSchemaFileName(output, kmXSL);
    if (Exists(file)) FManager.LoadDTD(*host, file);
    else ReportMissing(InvalidFile, file);
}

void TSchemaSelection::LoadServerControls() {
    std::string folder = FolderOf(FSchemaFile) + "asp schemas/";
    for (const auto& file : GetPlatform().ListFolder(folder))
        if (ExtensionOf(file) == ".xsd")
            FManager.LoadXSD(*FManager.GetHiddenRootNode(), &TMLSymbolManager::GetASPParentTags(),
                             folder + file);
}

}  // namespace caretwell
