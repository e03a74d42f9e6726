#include "insight/Choice.h"

#include "host/ViewHandles.h"
#include "markup/Text.h"

namespace caretwell {

TSavedPlace::TSavedPlace(INibEditView& view) : FPosition(PositionOf(view)), FBlock(BlockOf(view)) {
    FPosition->Save();
    FBlock->Save();
}

TSavedPlace::~TSavedPlace() {
    try {
        FBlock->Restore();
        FPosition->Restore();
    } catch (...) {
        // The caret of a host that fails here stays where it is.
    }
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

std::u16string ReadRestOfLine(INibEditView& view) {
    TSavedPlace place(view);
    place.Block().Start();
    place.Position().MoveToLineEnd();
    place.Block().Finish();
    return place.Block().Text();
}

void InvokeCompletion(INibEditView& view) {
    if (auto actions = QueryAs<INibEditActions>(&view))
        actions->InvokeCompletion(INibEditActions::CompleteAsUser);
}

namespace {

bool WriteToBuffer(const TChoiceEdit& edit, INibEditView& view, bool forceDelete) {
    auto buffer = view.Buffer();
    auto writer = buffer ? buffer->CreateWriter() : nullptr;
    if (!writer) return false;
    writer->CopyTo(edit.Start);
    if (forceDelete || edit.Start != edit.End) writer->DeleteTo(edit.End);
    writer->Insert(ToUtf8(edit.Text));
    return true;
}

}  // namespace

bool ApplyEdit(const TChoiceEdit& edit, INibEditView& view, bool forceDelete) {
    if (edit.Way == TChoiceEdit::ceWrite) {
        if (!WriteToBuffer(edit, view, forceDelete)) return false;
        view.Repaint();
        return true;
    }
    auto services = GetService<INibCodeInsightServices>();
    if (!services || edit.Way == TChoiceEdit::ceNothing || edit.Way == TChoiceEdit::ceDialog) return false;
    auto position = PositionOf(view);
    if (edit.DeleteBack > 0) position->DeleteBack(edit.DeleteBack);
    services->InsertText(edit.Text, edit.Way == TChoiceEdit::ceReplace);
    if (edit.MoveCaretBy) position->MoveBy(0, edit.MoveCaretBy);
    view.Repaint();
    return true;
}

}  // namespace caretwell
