// How a key is judged while a list is open, which files the manager takes, and where an
// item of the list leads.
#include <algorithm>
#include <array>

#include "host/Paths.h"
#include "host/Platform.h"
#include "host/Settings.h"
#include "insight/HTMLCodCmplt.h"
#include "parser/MLParser.h"
#include "symbols/FileToSchemaMapper.h"

namespace caretwell {
namespace {

constexpr char16_t KeyTab = 9, KeyEnter = 13, KeyEscape = 27;

bool IsOneOf(char16_t key, std::u16string_view keys) { return keys.find(key) != std::u16string_view::npos; }

constexpr std::array<std::string_view, 9> HandledExtensions = {".htm",  ".html", ".aspx", ".ascx", ".master",
                                                               ".resx", ".xsl",  ".xslt", ".wml"};

// Extensions that the user added, "shtml;htx".
bool IsInUserExtensions(std::string_view extension) {
    auto value = ReadSetting(HTMLFileSettings, "Extensions");
    if (!value) return false;
    if (!extension.empty()) extension.remove_prefix(1);
    std::string_view rest = *value;
    for (;;) {
        size_t end = rest.find_first_of(";\r\n");
        if (!rest.empty() && SameText(rest.substr(0, end), extension)) return true;
        if (end == std::string_view::npos) return false;
        rest.remove_prefix(end + 1);
    }
}

}  // namespace

void TMLKibitzManager::OnEditorKey(char16_t key, bool& closeViewer, bool& accept) {
    if (FInsertingBlank && (key == KeyTab || key == ' ')) return;
    accept = key == KeyEnter || IsOneOf(key, u"\t &;=>");
    if (IsOneOf(key, u"\t !%&<=>")) {
        FCompletionKey = key;
    } else {
        auto tag = FSymbols.GetCurrentTag();
        if (!tag || !tag->GetShowAttributes()) {
            FCompletionKey = 0;
        } else if (key == '"' || key == '\'') {
            FCompletionKey = key;
            accept = true;
        }
    }
    closeViewer = accept || key == KeyEscape || FCompletionKey != 0;
    if (closeViewer) FClosingKey = key;
}

std::u16string TMLKibitzManager::GetLongestItem() { return FEntityMode ? u"  " : u"Attribute Value  "; }

bool TMLKibitzManager::HandlesFile(std::string_view fileName) {
    return Guarded(false, [&] {
        std::string extension = ExtensionOf(fileName);
        return std::find(HandledExtensions.begin(), HandledExtensions.end(), extension) !=
                   HandledExtensions.end() ||
               GetFileToSchemaMapperService()->HasSchema(fileName) || IsInUserExtensions(extension);
    });
}

bool TMLKibitzManager::IsViewerBrowsable(int32_t index) {
    return Guarded(false, [&] {
        return !GetParser().FInTag && Supports<INibMLClosingTag>(FSymbols.GetMLTag(index)) &&
               GetPlatform().IsCtrlDown();
    });
}

// A closing tag leads back to its opening tag.
bool TMLKibitzManager::GotoDefinition(std::string& fileName, int32_t& line, int32_t index) {
    fileName.clear();
    return Guarded(false, [&] {
        if (index < 0) return false;
        fileName = FSymbols.GetFileName();
        line = FSymbols.GetLineNumber(index);
        return true;
    });
}

}  // namespace caretwell
