// The smaller operations: how a key is judged while a list is open, which files the
// manager takes, what a line of the list looks like.
#include <algorithm>
#include <array>

#include "host/Paths.h"
#include "host/Platform.h"
#include "insight/Guard.h"
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
    auto services = GetService<INibServices>();
    ISettingsStore* settings = GetPlatform().Settings();
    if (!services || !settings) return false;
    std::string key = services->BaseRegistryKey() + "\\Internet\\File Options\\HTML";
    if (!settings->OpenKey(key)) return false;
    auto value = settings->ReadString(key, "Extensions");
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
}

std::u16string TMLKibitzManager::GetLongestItem() { return FEntityMode ? u"  " : u"Attribute Value  "; }

bool TMLKibitzManager::HandlesFile(std::string_view fileName) {
    bool handles = false;
    Guarded(FSymbols, [&] {
        std::string extension = ExtensionOf(fileName);
        handles = std::find(HandledExtensions.begin(), HandledExtensions.end(), extension) !=
                      HandledExtensions.end() ||
                  GetFileToSchemaMapperService()->HasSchema(fileName) || IsInUserExtensions(extension);
    });
    return handles;
}

bool TMLKibitzManager::IsViewerBrowsable(int32_t index) {
    return !GetParser().FInTag && Supports<INibMLClosingTag>(FSymbols.GetMLTag(index)) &&
           GetPlatform().IsCtrlDown();
}

// A closing tag leads back to its opening tag.
bool TMLKibitzManager::GotoDefinition(std::string& fileName, int32_t& line, int32_t index) {
    fileName.clear();
    if (index < 0) return false;
    fileName = FSymbols.GetFileName();
    line = FSymbols.GetLineNumber(index);
    return true;
}

namespace {

constexpr uint32_t MeasureFlags = 0xC20;  // calculate the rectangle, single line, no prefix characters
constexpr uint32_t ClipToRect = 4;
constexpr uint32_t HighlightText = INibCanvas::SystemColor | 14;
constexpr uint32_t PlainText = INibCanvas::SystemColor | 8;
constexpr uint32_t Blue = 0xFF0000;  // in the order blue, green, red
constexpr int32_t NameColumn = 30;

void PutText(INibCanvas& canvas, TNibRect& rect, std::u16string_view text, bool keepColor, bool doDraw) {
    TNibRect place = rect;
    if (canvas.GetFontColor() != HighlightText && !keepColor) canvas.SetFontColor(PlainText);
    canvas.SetBold(true);
    canvas.Refresh();
    canvas.MeasureText(text, place, MeasureFlags);
    if (doDraw) canvas.TextOut(place.Left, place.Top, ClipToRect, place, text);
    canvas.SetBold(false);
    canvas.Refresh();
    rect.Left = place.Right;
    rect.Bottom = place.Bottom;
    rect.Right += place.Right - place.Left + 1;
}

/// Puts the canvas's font name and colour back at the end of the scope.
class TSavedFont {
public:
    explicit TSavedFont(INibCanvas& canvas)
        : FCanvas(canvas), FName(canvas.GetFontName()), FColor(canvas.GetFontColor()) {}
    ~TSavedFont() {
        FCanvas.SetFontName(FName);
        FCanvas.SetFontColor(FColor);
    }
    TSavedFont(const TSavedFont&) = delete;
    TSavedFont& operator=(const TSavedFont&) = delete;

private:
    INibCanvas& FCanvas;
    std::string FName;
    uint32_t FColor;
};

}  // namespace

void TMLKibitzManager::DrawItem(int32_t index, INibCanvas& canvas, TNibRect& rect, bool textOnly, bool doDraw,
                                bool& defaultDraw) {
    defaultDraw = !FEntityMode;
    if (defaultDraw) return;
    auto& entities = FSymbols.GetCharList();
    if (!textOnly) {
        {
            TSavedFont saved(canvas);
            canvas.SetFontName(entities.GetFontName());
            canvas.SetFontColor(Blue);
            int32_t code = entities.GetAsciiVal(index);
            if (code > 0) PutText(canvas, rect, ToUtf16(static_cast<char32_t>(code)), true, doDraw);
        }
        rect.Left = NameColumn;
    }
    if (entities.GetCount() > 0) PutText(canvas, rect, GetSymbolText(index), textOnly, doDraw);
}

}  // namespace caretwell
