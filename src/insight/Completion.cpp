// From choice to text: what happens when the list closes.
#include "host/ValueScope.h"
#include "host/ViewHandles.h"
#include "insight/HTMLCodCmplt.h"
#include "parser/MLParser.h"
#include "tagmodel/AttributeEditors.h"

namespace caretwell {

TMLKibitzManager::TChoice TMLKibitzManager::GetChoice(char16_t key) {
    TChoice choice;
    choice.Key = key;
    auto services = GetService<INibCodeInsightServices>();
    if (!services) return choice;
    choice.View = services->CurrentEditView();
    if (auto list = services->CurrentList()) {
        choice.Index = list->SelectedIndex();
        if (choice.IsMade()) choice.Selected = list->SelectedText();
    }
    return choice;
}

void TMLKibitzManager::Done(bool accepted, bool& displayParams) {
    displayParams = false;
    FKeyUse = TNibKeyUse::Unused;
    Guarded([&] {
        TChoice choice = GetChoice(std::exchange(FCompletionKey, u'\0'));  // it ends one list only
        // A list that was dismissed writes nothing but the key that did it.
        bool isDismissed = !accepted && (choice.Key == 0 || choice.Key == u' ' || choice.Key == u'\t');
        if (!choice.View) return;
        bool isWritten = !isDismissed && WriteChoice(choice);
        if (accepted && choice.IsMade()) NoteListKey();
        FinishChoice(choice, isWritten);
    });
}

bool TMLKibitzManager::WriteChoice(const TChoice& choice) {
    INibEditView& view = *choice.View;
    TEdit edit = Compose(choice);
    if (edit.EditorId.empty()) return Write(edit, view, FForceDelete);
    auto editor = GetEditorOf(choice);
    auto tag = FSymbols.GetCurrentTag();
    if (GetListKind() == TListKind::Values) {
        TRef<INibMLTagAttribute> attribute = GetParser().FCurrentAttribute;
        return editor->Execute(attribute.Get(), choice.Index) &&
               Write(ComposeValue(choice, editor->GetValue()), view, FForceDelete);
    }
    auto item = FSymbols.GetMLTag(choice.Index);
    bool isElement = GetListKind() == TListKind::Elements;
    bool isWritten = isElement ? ExecuteElementEditor(*editor, *item, view) : ExecuteTagEditor(*editor, view);
    if (isWritten) FKeyUse = TNibKeyUse::Used;
    return isWritten || Write(ComposePlain(choice), view, FForceDelete);
}

// The elements that the parse added for this list go, and a blank opens the next one:
// this is what chains the lists. In text only a chosen element has a next list; the words
// of a sentence do not.
void TMLKibitzManager::FinishChoice(const TChoice& choice, bool isWritten) {
    FSymbols.RemoveFixupElements(FSymbols.GetCurrentTag().Get());
    if (choice.Key != u' ' && choice.Key != u'\t') return;
    const TMLParser& parser = GetParser();
    bool isInTag = parser.FCaretInTagName || parser.FInTag;
    if (!isInTag && !(isWritten && GetListKind() == TListKind::Elements)) return;
    auto position = PositionOf(*choice.View);
    if (!position->TakeText(TCharSet(">"), INibEditPosition::TakeBackwards).empty()) return;
    if (!isWritten) {
        TValueScope<bool> inserting(FInsertingBlank, true);
        position->InsertChar(choice.Key);
        FKeyUse = TNibKeyUse::Written;
    }
    // A host that does not wait may end a list inside of this, which is another key's.
    TNibKeyUse use = FKeyUse;
    InvokeCompletion(*choice.View);
    FKeyUse = use;
}

// ---- editors

/// The editor that supplies what the choice writes; null if the item itself does.
TRef<INibMLEditor> TMLKibitzManager::GetEditorOf(const TChoice& choice) {
    auto tag = FSymbols.GetCurrentTag();
    switch (GetListKind()) {
        case TListKind::Entities: return nullptr;
        case TListKind::Attributes: return tag ? FSymbols.GetTagEditorFromHashList(tag->GetName()) : nullptr;
        case TListKind::Elements: {
            auto item = FSymbols.GetMLTag(choice.Index);
            bool isElement = item && !Supports<INibMLClosingTag>(item);
            return isElement ? FSymbols.GetTagEditorFromHashList(item->GetName()) : nullptr;
        }
        case TListKind::Values: break;
    }
    TRef<INibMLTagAttribute> attribute;
    auto editor = FSymbols.GetAttributeEditorFromHashList(GetParser().FCurrentAttribute->GetName(), attribute,
                                                          tag ? tag->GetName() : std::u16string_view());
    bool isOwn = editor && editor->GetEditorId() != TDefaultAttributeEditor::EDITOR_ID;
    return isOwn ? editor : nullptr;
}

/// An editor for the whole tag, which replaces it.
bool TMLKibitzManager::ExecuteTagEditor(INibMLEditor& editor, INibEditView& view) {
    auto tag = FSymbols.GetCurrentTag();
    if (!editor.Execute(tag.Get(), 0)) return false;
    TEdit edit;
    edit.Way = TEdit::TWay::Writer;
    edit.Start = tag->GetOffsetStart();
    edit.End = tag->GetOffsetEnd();
    edit.Text = editor.GetValue();
    Apply(edit, view, true);
    return true;
}

/// An editor for an element that is being added.
bool TMLKibitzManager::ExecuteElementEditor(INibMLEditor& editor, INibMLTag& item, INibEditView& view) {
    if (!editor.Execute(&item, 0)) return false;
    Apply(ComposeAtCaret(view, editor.GetValue()), view);
    PositionOf(view)->MoveBy(0, editor.RelativeMoveCaretPos());
    view.Repaint();
    if (editor.InvokeCodeCompletion()) InvokeCompletion(view);
    return true;
}

}  // namespace caretwell
