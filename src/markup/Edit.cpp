#include "markup/Edit.h"

#include <algorithm>

#include "host/ViewHandles.h"
#include "markup/Text.h"

namespace caretwell {
namespace {

/// The place of a view's caret and its block, put back at the end of the scope.
class TSavedPlace {
public:
    explicit TSavedPlace(INibEditView& view) : FPosition(PositionOf(view)), FBlock(BlockOf(view)) {
        FPosition->Save();
        FBlock->Save();
    }
    ~TSavedPlace() {
        try {
            FBlock->Restore();
            FPosition->Restore();
        } catch (...) {
            // The caret of a host that fails here stays where it is.
        }
    }
    TSavedPlace(const TSavedPlace&) = delete;
    TSavedPlace& operator=(const TSavedPlace&) = delete;
    INibEditPosition& Position() { return *FPosition; }
    INibEditBlock& Block() { return *FBlock; }

private:
    TRef<INibEditPosition> FPosition;
    TRef<INibEditBlock> FBlock;
};

/// Byte offset of the place so many characters from the caret. Bytes that are no UTF-8
/// read as other text than they are, so that the length of a text does not tell it.
int32_t OffsetAt(INibEditView& view, int32_t characters) {
    if (characters == 0) return CaretOffsetOf(view);
    TSavedPlace place(view);
    place.Position().MoveBy(0, characters);
    return CaretOffsetOf(view);
}

int32_t CountCharactersIn(INibEditView& view, int32_t start, int32_t end) {
    TSavedPlace place(view);
    int32_t count = 0;
    // By the view's own steps, for the reason above.
    MoveCaretTo(view, end);
    for (int32_t at = end; at > start; ++count) {
        place.Position().MoveBy(0, -1);
        int32_t next = CaretOffsetOf(view);
        if (next >= at) break;
        at = next;
    }
    return count;
}

bool WriteAtCaret(const TEdit& edit, INibEditView& view) {
    auto services = GetService<INibCodeInsightServices>();
    if (!services) return false;
    auto position = PositionOf(view);
    int32_t caret = CaretOffsetOf(view);
    bool isWholeWord = edit.End > caret;
    if (isWholeWord) position->MoveBy(0, CountCharactersIn(view, caret, edit.End));
    bool replaces = edit.Way == TEdit::TWay::ForToken && !isWholeWord;
    if (!replaces && edit.Start < edit.End)
        position->DeleteBack(CountCharactersIn(view, edit.Start, edit.End));
    services->InsertText(edit.Text, replaces);
    std::string ahead = ToUtf8(edit.Text).substr(static_cast<size_t>(edit.Caret - edit.Start));
    if (!ahead.empty()) position->MoveBy(0, -CountCharacters(std::u16string_view(ToUtf16(ahead))));
    view.Repaint();
    return true;
}

bool WriteToBuffer(const TNibEdit* first, size_t count, INibEditView& view, bool forceDelete) {
    auto buffer = view.Buffer();
    auto writer = buffer ? buffer->CreateWriter() : nullptr;
    if (!writer) return false;
    for (const TNibEdit* edit = first; edit != first + count; ++edit) {
        writer->CopyTo(edit->Start);
        if (forceDelete || edit->Start != edit->End) writer->DeleteTo(edit->End);
        writer->Insert(ToUtf8(edit->Text));
    }
    return true;
}

TNibEdit AroundCaret(INibEditView& view, TTaken taken) {
    TNibEdit edit;
    edit.Start = OffsetAt(view, -CountCharacters(taken.Before));
    edit.End = OffsetAt(view, CountCharacters(taken.After));
    edit.Caret = edit.Start;
    return edit;
}

}  // namespace

TEdit ComposeAtCaret(INibEditView& view, std::u16string text, TTaken taken) {
    TEdit edit{AroundCaret(view, taken), TEdit::TWay::AtCaret};
    edit.Text = std::move(text);
    edit.Caret += Utf8Length(edit.Text);
    return edit;
}

TEdit ComposeDialog(INibEditView& view, std::string editorId, TTaken taken) {
    TEdit edit{AroundCaret(view, taken)};
    edit.EditorId = std::move(editorId);
    return edit;
}

void AddAtCaret(TNibEdit& edit, std::u16string_view text) {
    std::string whole = ToUtf8(edit.Text), added = ToUtf8(text);
    whole.insert(static_cast<size_t>(edit.Caret - edit.Start), added);
    edit.Text = ToUtf16(whole);
    edit.Caret += static_cast<int32_t>(added.size());
}

bool Apply(const TEdit& edit, INibEditView& view, bool forceDelete) {
    if (edit.Way == TEdit::TWay::None) return false;
    if (edit.Way != TEdit::TWay::Writer) return WriteAtCaret(edit, view);
    if (!WriteToBuffer(&edit, 1, view, forceDelete)) return false;
    view.Repaint();
    return true;
}

bool Apply(const std::vector<TNibEdit>& edits, INibEditView& view) {
    if (edits.empty()) return false;
    bool isAtCaret = edits.size() == 1 && edits[0].Start == CaretOffsetOf(view);
    if (isAtCaret) return WriteAtCaret(TEdit{edits[0], TEdit::TWay::AtCaret}, view);
    if (!WriteToBuffer(edits.data(), edits.size(), view, false)) return false;
    MoveCaretTo(view, edits.back().Caret);
    view.Repaint();
    return true;
}

void MoveCaretTo(INibEditView& view, int32_t offset) {
    if (auto offsets = QueryAs<INibOffsetView>(&view)) offsets->SetCaretOffset(offset);
    else view.SetCaretPos(view.CharPosToEditPos(view.OffsetToCharPos(offset)));
}

std::string ReadBytes(INibEditView& view, int32_t start, int32_t end) {
    auto buffer = view.Buffer();
    auto reader = buffer && start < end ? buffer->CreateReader() : nullptr;
    if (!reader || start < 0) return {};
    constexpr int32_t ChunkSize = 65536;  // the place may be wrong, and then holds no such text
    std::string bytes;
    while (start < end) {
        int32_t wanted = std::min(end - start, ChunkSize);
        size_t had = bytes.size();
        bytes.resize(had + static_cast<size_t>(wanted));
        int32_t read = std::clamp(reader->Read(start, bytes.data() + had, wanted), 0, wanted);
        bytes.resize(had + static_cast<size_t>(read));
        start = read == 0 ? end : start + read;
    }
    return bytes;
}

std::u16string ReadRestOfLine(INibEditView& view) {
    TSavedPlace place(view);
    place.Block().Start();
    place.Position().MoveToLineEnd();
    place.Block().Finish();
    return place.Block().Text();
}

std::u16string ReadCharacterBefore(INibEditView& view, int32_t distance) {
    TSavedPlace place(view);
    // Not asked by its column, which costs the whole line before it.
    place.Block().Start();
    place.Position().MoveBy(0, -distance);
    place.Block().Finish();
    std::u16string text = place.Block().Text();
    if (CountCharacters(std::u16string_view(text)) < distance) return {};
    return text.empty() ? text : text.substr(0, FirstLength(text));
}

std::u16string TakeBefore(INibEditView& view, const TCharSet& chars) {
    return PositionOf(view)->TakeText(chars, INibEditPosition::TakeBackwards);
}
std::u16string TakeAfter(INibEditView& view, const TCharSet& chars) {
    return PositionOf(view)->TakeText(chars, 0);
}

bool Contains(const TCharSet& set, char16_t c) { return c > 255 || set.Contains(static_cast<uint8_t>(c)); }

int32_t Utf8Length(std::u16string_view text) { return static_cast<int32_t>(ToUtf8(text).size()); }

void InvokeCompletion(INibEditView& view) {
    if (auto actions = QueryAs<INibEditActions>(&view))
        actions->InvokeCompletion(INibEditActions::CompleteAsUser);
}

}  // namespace caretwell
