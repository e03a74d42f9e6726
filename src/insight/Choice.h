// What a choice writes, worked out apart from writing it, so that it can be shown,
// tested and asked for without an editor.
//
//     <di^    with div chosen:   "di" goes, "div" comes, the caret behind it
#pragma once

#include <cstdint>
#include <string>

#include "host/Nibapi.h"
#include "markup/Text.h"

namespace caretwell {

struct TChoiceEdit {
    enum TWay {
        ceNothing,  ///< nothing is written
        ceInsert,   ///< InsertText at the caret, behind DeleteBack characters taken away
        ceReplace,  ///< InsertText in place of the token before the caret
        ceWrite,    ///< by a writer of the buffer; the caret is left to the host
        ceDialog,   ///< an editor has to be asked first
    };
    TWay Way = ceNothing;
    std::u16string Text;
    int32_t DeleteBack = 0;   ///< characters before the caret that go (ceInsert)
    int32_t MoveCaretBy = 0;  ///< characters, after the insertion
    int32_t Start = 0;        ///< byte offsets of what is replaced
    int32_t End = 0;
    int32_t CaretOffset = 0;  ///< byte offset of the caret afterwards; for ceWrite, of the value
    std::string EditorId;     ///< of the editor to ask (ceDialog), such as "color"
};

/// Writes the edit. True if the buffer was written.
bool ApplyEdit(const TChoiceEdit& edit, INibEditView& view, bool forceDelete);

/// Sets of characters by which the text around the caret is read.
namespace charsets {
inline constexpr TCharSet Token = NameChars;
inline constexpr TCharSet Blanks = TCharSet("\t ");
inline constexpr TCharSet TagRun =
    TCharSet("#%-./:<_").WithRange('0', '9').WithRange('@', 'Z').WithRange('a', 'z').WithRange(192, 254);
inline constexpr TCharSet EntityRun = Token.With(";");
inline constexpr TCharSet NameRun = Token;
}  // namespace charsets

/// The place of a view's caret and its block, put back at the end of the scope.
class TSavedPlace {
public:
    explicit TSavedPlace(INibEditView& view);
    ~TSavedPlace();
    TSavedPlace(const TSavedPlace&) = delete;
    TSavedPlace& operator=(const TSavedPlace&) = delete;
    INibEditPosition& Position() { return *FPosition; }
    INibEditBlock& Block() { return *FBlock; }

private:
    TRef<INibEditPosition> FPosition;
    TRef<INibEditBlock> FBlock;
};

/// The character that stands so many characters before the caret, from 1; empty at the
/// start of the line.
std::u16string ReadCharacterBefore(INibEditView& view, int32_t distance);
/// From the caret to the end of its line.
std::u16string ReadRestOfLine(INibEditView& view);

/// Opens the list as if the user asked, if the view can do that.
void InvokeCompletion(INibEditView& view);

}  // namespace caretwell
