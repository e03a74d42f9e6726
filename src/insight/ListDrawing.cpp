// What a line of the list looks like, where it is more than its text: an entity shows the
// character that it stands for.
#include "insight/HTMLCodCmplt.h"

namespace caretwell {
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
        try {
            FCanvas.SetFontName(FName);
            FCanvas.SetFontColor(FColor);
        } catch (...) {
            // The font of a canvas that fails here stays as it is.
        }
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
    if (!defaultDraw) Guarded([&] { DrawEntity(index, canvas, rect, textOnly, doDraw); });
}

void TMLKibitzManager::DrawEntity(int32_t index, INibCanvas& canvas, TNibRect& rect, bool textOnly,
                                  bool doDraw) {
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
