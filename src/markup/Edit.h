// Edits worked out apart from writing them, and the one way in which they are written.
//
//     <di^    with div chosen:   "di" goes, "div" comes, the caret after it
//
// What the user has typed at the caret is changed there, by deletion and InsertText, as
// an editor does for its own keys. What lies elsewhere is changed by a writer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/Nibapi.h"

namespace caretwell {

/// An edit and the way it goes.
struct TEdit : TNibEdit {
    enum class TWay {
        None,      ///< nothing is written, or a dialog comes first
        AtCaret,   ///< Start lies before the caret, End at it or after it on its line
        ForToken,  ///< the same, in the place of the token that the list is filtered on
        Writer,    ///< by a writer of the buffer
    };
    TWay Way = TWay::None;
    bool IsWriting() const { return Way != TWay::None; }
};

/// Characters of a text around the caret that an edit takes away.
struct TTaken {
    std::u16string_view Before, After;
};
/// Text comes at the caret, and stands before it afterwards.
TEdit ComposeAtCaret(INibEditView& view, std::u16string text, TTaken taken = {});
/// An edit that asks the editor of that name for what comes in the place of `taken`.
TEdit ComposeDialog(INibEditView& view, std::string editorId, TTaken taken = {});
/// Puts text into what the edit writes, at the caret, which moves after it.
void AddAtCaret(TNibEdit& edit, std::u16string_view text);

/// Writes the edit. The caret of a Writer's edit is left where the view takes it. With
/// forceDelete a writer is told of an empty deletion too. True if the view was written.
bool Apply(const TEdit& edit, INibEditView& view, bool forceDelete = false);
/// Writes edits that follow each other in one step, and moves the caret.
bool Apply(const std::vector<TNibEdit>& edits, INibEditView& view);

/// Exactly, where the view can.
void MoveCaretTo(INibEditView& view, int32_t offset);
/// Bytes of the view's buffer from one offset to another, as far as there are so many.
std::string ReadBytes(INibEditView& view, int32_t start, int32_t end);
/// From the caret to the end of its line.
std::u16string ReadRestOfLine(INibEditView& view);
/// The character that stands so many characters before the caret, from 1; empty at the
/// start of the line.
std::u16string ReadCharacterBefore(INibEditView& view, int32_t distance);
/// The run of characters of the set that ends or begins at the caret.
std::u16string TakeBefore(INibEditView& view, const TCharSet& chars);
std::u16string TakeAfter(INibEditView& view, const TCharSet& chars);
/// As a run of the caret counts it: characters beyond the set's 256 belong to every set.
bool Contains(const TCharSet& set, char16_t c);
int32_t Utf8Length(std::u16string_view text);

/// Opens the list as if the user asked, if the view can do that.
void InvokeCompletion(INibEditView& view);

}  // namespace caretwell
