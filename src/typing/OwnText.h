// What the engine has put around the caret and nobody has typed: closing tags, quotes, the
// slash of an empty element, a semicolon. Whoever types the same by hand types over it.
//
//     <ul><li>x^</li></ul>    + "</li>"   ->   <ul><li>x</li>^</ul>
//     color: red;^            + ";"       ->   color: red;^
//
// It is remembered while the caret stands at it and the text there is the same, and no longer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "caretwell/host/Nibapi.h"

namespace caretwell {

class TOwnText {
public:
    /// The text at a caret before the engine was asked to help.
    struct TBefore {
        int32_t Caret = 0;
        std::u16string Ahead;
    };
    static TBefore Look(INibEditView& view);
    /// What has been written since, by a typing aid.
    void NoteAid(INibEditView& view, const TBefore& before);
    /// A choice was written, and ends with a character that is not of its name. That
    /// character; 0 if there is none.
    char16_t NoteChoice(INibEditView& view, std::u16string_view name);

    /// Forgets what is no longer where it was. caret: where the last key left it.
    void Check(INibEditView& view, int32_t caret);
    /// The key goes into the text. Takes away quotes that it does not want around it.
    void DropQuotes(INibEditView& view, char32_t key);
    /// The key is there already: it is not to be typed. Moves the caret after it.
    bool TypeOver(INibEditView& view, char32_t key);
    /// The key has been typed. One that ends a closing tag takes the engine's own away.
    void KeyTyped(INibEditView& view, char32_t key);
    /// Text before the caret was deleted. With the opening quote goes the closing one, and
    /// with the ">" of an opening tag the closing tag.
    void TextDeleted(INibEditView& view);
    /// A value without quotes is being typed between the engine's.
    bool IsInPlainValue() const { return FQuotes == TQuotes::Plain; }
    /// Moves the caret after the closing quote.
    void LeaveQuotes(INibEditView& view);
    void Forget();
    bool HasClosingTag() const { return !FAhead.empty() && FAhead.front().IsClosingTag(); }

private:
    void NoteSlash(INibEditView& view, int32_t end, int32_t size);
    void TakeClosingTag(INibEditView& view, std::u16string_view name, int32_t start);
    size_t CountAidsInside(INibEditView& view, std::u16string_view name, int32_t start) const;
    void TakeAids(INibEditView& view, size_t count);
    void TakeQuotes(INibEditView& view);
    void TakeClosingQuote(INibEditView& view);
    bool TakeSlash(INibEditView& view, std::u16string_view name);

    struct TAid {
        std::u16string Text;
        int32_t Start = 0;  // byte offset of the caret when it was written; what it closes begins before
        bool IsClosingTag() const { return Text.size() > 1; }
    };
    std::vector<TAid> FAhead;  // from the caret on, the innermost first
    char16_t FBehind = 0;      // directly before the caret
    // The engine's pair of quotes around the caret, of which nobody has typed the first.
    enum class TQuotes { None, Empty, Plain };
    TQuotes FQuotes = TQuotes::None;
    // Slashes before the caret, in text that was typed without a pause since. What is typed
    // later may show that the element was not meant to be empty.
    struct TSlash {
        std::u16string Name;  // of the element
        int32_t End = 0;      // byte offset after the ">" that follows
        int32_t Size = 0;     // of the slash with its blank
    };
    std::vector<TSlash> FSlashes;
};

}  // namespace caretwell
