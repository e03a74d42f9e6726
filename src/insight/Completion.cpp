// From choice to text: what happens when the list closes.
#include "host/ValueScope.h"
#include "host/ViewHandles.h"
#include "insight/CompletionChoice.h"
#include "insight/Guard.h"
#include "insight/HTMLCodCmplt.h"
#include "parser/MLParser.h"

namespace caretwell {

TMLKibitzManager::TChoice TMLKibitzManager::GetChoice(char16_t key) {
    TChoice choice;
    choice.Key = key;
    auto services = GetService<INibCodeInsightServices>();
    if (!services) return choice;
    choice.View = services->CurrentEditView();
    if (auto list = services->CurrentList()) {
        choice.Index = list->SelectedIndex();
        if (choice.Index >= 0) choice.Selected = list->SelectedText();
    }
    return choice;
}

TChoiceEdit TMLKibitzManager::ComposeChoice(int32_t index, char16_t key) {
    TChoiceEdit edit;
    Guarded(FSymbols, [&] {
        TChoice choice;
        choice.Key = key;
        choice.Index = index >= 0 && index < GetCount() ? index : -1;
        if (choice.Index >= 0) choice.Selected = GetSymbolText(index);
        auto services = GetService<INibCodeInsightServices>();
        choice.View = services ? services->CurrentEditView() : nullptr;
        if (choice.View) edit = Compose(choice);
    });
    return edit;
}

void TMLKibitzManager::Done(bool accepted, bool& displayParams) {
    displayParams = false;
    Guarded(FSymbols, [&] {
        TChoice choice = GetChoice(FCompletionKey);
        if (!choice.View) return;
        // A list that was dismissed writes nothing, but the tail runs.
        bool isWritten = !IsCloser(choice.Key) || (accepted && choice.Index >= 0);
        if (isWritten) WriteChoice(choice);
        FinishChoice(choice.Key, choice.View.Get());
    });
}

void TMLKibitzManager::WriteChoice(const TChoice& choice) {
    TListKind kind = GetListKind();
    INibEditView& view = *choice.View;
    if (IsCloser(choice.Key) && kind == TListKind::Values) {
        auto tag = FSymbols.GetCurrentTag();
        ExecuteAttributeEditor(DescribeValue(view), choice.Index,
                               tag ? tag->GetName() : std::u16string_view());
        return;
    }
    if (IsCloser(choice.Key) && kind == TListKind::Attributes && ExecuteTagEditor(view)) return;
    if (IsCloser(choice.Key) && kind == TListKind::Elements && ExecuteElementEditor(view, choice.Index))
        return;
    ApplyEdit(Compose(choice), view, FForceDelete);
}

// The elements that the parse added for this list go, and a blank opens the next one:
// this is what chains the lists.
void TMLKibitzManager::FinishChoice(char16_t key, INibEditView* view) {
    FSymbols.RemoveFixupElements(FSymbols.GetCurrentTag().Get());
    if (key != u' ' && key != u'\t') return;
    auto position = PositionOf(*view);
    if (!position->TakeText(TCharSet(">"), INibEditPosition::TakeBackwards).empty()) return;
    const TMLParser& parser = GetParser();
    if (parser.FCaretInTagName || parser.FInTag) {
        TValueScope<bool> inserting(FInsertingBlank, true);
        position->InsertChar(key);
    }
    InvokeCompletion(*view);
}

// ---- editors

/// An editor for the whole tag, which replaces it.
bool TMLKibitzManager::ExecuteTagEditor(INibEditView& view) {
    auto tag = FSymbols.GetCurrentTag();
    auto editor = tag ? FSymbols.GetTagEditorFromHashList(tag->GetName()) : nullptr;
    if (!editor || !editor->Execute(tag.Get(), 0)) return false;
    TChoiceEdit edit;
    edit.Way = TChoiceEdit::ceWrite;
    edit.Start = tag->GetOffsetStart();
    edit.End = tag->GetOffsetEnd();
    edit.Text = editor->GetValue();
    ApplyEdit(edit, view, true);
    return true;
}

/// An editor for an element that is being added.
bool TMLKibitzManager::ExecuteElementEditor(INibEditView& view, int32_t index) {
    auto tag = FSymbols.GetCurrentTag();
    auto item = tag ? tag->GetTags(index) : nullptr;
    auto editor = item ? FSymbols.GetTagEditorFromHashList(item->GetName()) : nullptr;
    if (!editor || Supports<INibMLClosingTag>(item) || !editor->Execute(item.Get(), 0)) return false;
    TChoiceEdit edit;
    edit.Way = TChoiceEdit::ceInsert;
    edit.Text = editor->GetValue();
    edit.MoveCaretBy = editor->RelativeMoveCaretPos();
    ApplyEdit(edit, view, FForceDelete);
    if (editor->InvokeCodeCompletion()) InvokeCompletion(view);
    return true;
}

bool TMLKibitzManager::ExecuteAttributeEditor(const TAttributeEdit& request, int32_t index,
                                              std::u16string_view tagName) {
    bool isWritten = false;
    Guarded(FSymbols, [&] {
        TRef<INibMLTagAttribute> attribute;
        auto editor = FSymbols.GetAttributeEditorFromHashList(request.AttributeName, attribute, tagName);
        TValueScope<bool> quoting(FAutoQuote, true);
        if (!editor || !editor->Execute(attribute.Get(), index)) return;
        TAttributeEdit edit = request;
        edit.AttributeName = attribute->GetName();
        edit.NewValue = editor->GetValue();
        isWritten = ApplyAttributeValue(edit);
    });
    return isWritten;
}

bool TMLKibitzManager::ApplyAttributeValue(const TAttributeEdit& value) {
    bool isWritten = false;
    Guarded(FSymbols, [&] {
        if (!value.View) return;
        INibEditView& view = *value.View;
        TChoiceEdit edit = ComposeAttributeValue(value);
        isWritten = ApplyEdit(edit, view, FForceDelete);
        if (isWritten && value.MoveCaret && !value.NewValue.empty())
            view.SetCaretPos(view.CharPosToEditPos(view.OffsetToCharPos(edit.CaretOffset)));
    });
    return isWritten;
}

}  // namespace caretwell
