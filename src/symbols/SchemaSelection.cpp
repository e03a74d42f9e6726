// Which schema the table follows: worked out at the start of a parse from the kind of
// document, at its end from what the doctype said. How the names of a schema are written
// follows the prefixes that a free XML document binds. On a document that stays on its
// schema both decisions are a comparison of names.
#include <algorithm>

#include "host/Paths.h"
#include "host/Platform.h"
#include "host/ValueScope.h"
#include "markup/MLBufferProducer.h"
#include "parser/MLParser.h"
#include "symbols/FileToSchemaMapper.h"
#include "symbols/MLSymbolManager.h"

namespace caretwell {
namespace {

constexpr std::u16string_view RootName = u"<!--root-->";

}  // namespace

void TMLSymbolManager::ReportMissingSchema(std::string_view format, const std::string& value) {
    FSchemaFile.clear();
    std::string message(format);
    message.replace(message.find("%s"), 2, value);
    Error(FSchemaFile, message, "Code Completion", 1, 1);
}

void TMLSymbolManager::SelectXMLSchema(const std::string& value) {
    if (value == FSchemaFile || FIsLoading) return;
    TValueScope<bool> loading(FIsLoading, true);
    FSchemaFile = value;
    FNamespaces.Clear();
    ClearTags();
    FCharList.Clear();
    if (GetPlatform().FileExists(value)) LoadXMLTable();
    else ReportMissingSchema("Unable to find schema file \"%s\"", value);
}

void TMLSymbolManager::LoadXMLTable() {
    SetHiddenRootNode(MakeRef<THTMLTag>(RootName, this, -1));
    LoadXSDEx(*GetHiddenRootNode(), nullptr, FSchemaFile);
    // The root is in no list of tags, and a filter works on names in order.
    GetHiddenRootNode()->AlphaSort();
}

std::string TMLSymbolManager::FollowNamespace(const std::string& nameSpace) {
    std::string prefix(FNamespaces.GetPrefix(nameSpace));
    FTablePrefixes.push_back({nameSpace, prefix});
    return prefix;
}

void TMLSymbolManager::SetNamespaces(const TDocumentNamespaces& value) {
    if (FIsReloading || FIsLoading || value == FNamespaces) return;
    FNamespaces = value;
    bool isFollowed = std::all_of(FTablePrefixes.begin(), FTablePrefixes.end(), [&](const TTablePrefix& row) {
        return row.Prefix == value.GetPrefix(row.Namespace);
    });
    if (isFollowed) return;
    {
        TValueScope<bool> loading(FIsLoading, true);
        ClearTags();
        LoadXMLTable();
    }
    CallbacksInvalidate();
    ParseAgain();
}

void TMLSymbolManager::SetSchemaFile(const std::string& name) {
    if (GetKibitzMode() == kmXML) {
        SelectXMLSchema(name);
        return;
    }
    std::string candidate = GetSchemaFileName(name, GetKibitzMode());
    bool exists = GetPlatform().FileExists(candidate);
    std::string value = exists ? candidate : name;
    bool outputChanged = GetKibitzMode() == kmXSL && FXSLOutputFile != FParser->FXSLOutputSchema;
    bool controlsChanged = GetKibitzMode() == kmHTML && FASPChanged;
    if (FIsReloading || FIsLoading) return;
    if (value == FSchemaFile && !outputChanged && !controlsChanged) return;

    FASPChanged = false;
    FSchemaFile = value;
    if (!LoadTable(value, exists)) return;
    CallbacksInvalidate();
    ShowAllChildren();
    ParseAgain();
    if (auto& tag = FParser->FCurrentTag) {
        tag->SetOffsetEnd(0);
        tag->SetOffsetStart(0);
    }
}

bool TMLSymbolManager::LoadTable(const std::string& file, bool exists) {
    TValueScope<bool> loading(FIsLoading, true);
    ClearTags();
    FCharList.Clear();
    if (!exists) {
        // A name that is no file of the schema folder is never opened, wherever it leads.
        ReportMissingSchema("Invalid schema file \"%s\"", file);
        return false;
    }
    SetHiddenRootNode(MakeRef<THTMLTag>(RootName, this, -1));
    LoadSchema(ExtensionOf(file));
    if (FIsASPEnabled) LoadServerControls();
    return true;
}

// Before the parse, so that its fix-ups see whole lists: the first list of a schema is
// the same as all later ones.
void TMLSymbolManager::ShowAllChildren() {
    for (auto& tag : FTagList) {
        tag->SetShowAttributes(false);
        tag->AlphaSort();
    }
    FFixups.ResetAll();
}

void TMLSymbolManager::LoadSchema(const std::string& extension) {
    std::string file = FSchemaFile;
    if (extension == ".dtd") {
        LoadDTD(*GetHiddenRootNode(), file);
        if (GetKibitzMode() == kmXSL) LoadOutputLanguage();
    } else if (extension == ".xsd") {
        LoadXSD(*GetHiddenRootNode(), nullptr, file);
    }
}

// The elements of the output language become children of xsl:template.
void TMLSymbolManager::LoadOutputLanguage() {
    TTagBucket* bucket = FindBucket(u"xsl:template");
    const std::string& output = FParser->FXSLOutputSchema;
    auto* host = bucket ? dynamic_cast<THTMLTag*>(bucket->Tag.Get()) : nullptr;
    if (!host || output.empty()) return;
    std::string file = GetSchemaFileName(output, kmXSL);
    if (!GetPlatform().FileExists(file)) {
        ReportMissingSchema("Invalid schema file \"%s\"", file);
        return;
    }
    LoadDTD(*host, file);
    FXSLOutputFile = output;
}

void TMLSymbolManager::LoadServerControls() {
    std::string folder = FolderOf(FSchemaFile) + "asp schemas/";
    for (const auto& file : GetPlatform().ListFolder(folder))
        if (ExtensionOf(file) == ".xsd") LoadXSD(*GetHiddenRootNode(), &GetASPParentTags(), folder + file);
}

// A new table takes effect within the same invocation: the state that the list is made
// from has to speak of it. The parse ends in the same decision again; with an output
// language that cannot be found it would load the same schema for ever.
void TMLSymbolManager::ParseAgain() {
    TValueScope<bool> reloading(FIsReloading, true);
    FReloadDepth = FParseDepth;
    auto services = GetService<INibCodeInsightServices>();
    auto view = services ? services->CurrentEditView() : nullptr;
    if (view) FParser->Parse(view->CaretPos(), MakeRef<TMLBufferProducer>(view, 0), nullptr);
}

void TMLSymbolManager::SetIsASPEnabled(bool value) {
    if (value != FIsASPEnabled) FASPChanged = true;
    FIsASPEnabled = value;
}

void TMLSymbolManager::InitParse(const std::string& fileName) {
    std::string extension = ExtensionOf(fileName);
    auto mapper = GetFileToSchemaMapperService();
    if (extension == ".xsl" || extension == ".xslt") {
        SetKibitzMode(kmXSL);
    } else if (extension == ".wml") {
        SetKibitzMode(kmWML);
    } else if (extension == ".resx") {
        SetKibitzMode(kmResX);
    } else if (mapper->HasSchema(fileName)) {
        SetKibitzMode(kmXML);
        std::string schema = mapper->GetSchema(fileName);
        if (schema != FSchemaFile) SetSchemaFile(schema);
    } else {
        SetKibitzMode(kmHTML);
    }
    FFileName = fileName;
    SetIsASPEnabled(extension == ".aspx" || extension == ".ascx" || extension == ".master");
}

void TMLSymbolManager::CallbacksInvalidate() { FParser->CallbacksInvalidate(); }

}  // namespace caretwell
