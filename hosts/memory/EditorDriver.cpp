#include "memory/EditorDriver.h"

#include "markup/Text.h"

namespace caretwell {
namespace {

constexpr char32_t KeyLineFeed = 10;

}  // namespace

TEditorDriver::TEditorDriver(TRef<TEditView> view, TKibitzRegistry& registry, TRef<TMemoryServices> services,
                             TWarning warning)
    : FView(std::move(view)),
      FRegistry(registry),
      FServices(std::move(services)),
      FWarning(std::move(warning)) {
    FView->SetCompletion([this](int32_t style) {
        if (style == INibEditActions::CompleteAsUser) FSession.RequestList();
    });
}

TEditorDriver::~TEditorDriver() {
    Dismiss();
    FView->SetCompletion({});
}

// ---------------------------------------------------------------------- keys

template <class TAction>
void TEditorDriver::ForKey(TKeyKind kind, TAction action) {
    if (!CheckPlace(kind)) return;
    int32_t before = FView->CaretOffset();
    TUndoStep step(Text());
    action();
    step.NoteCaret(before, FView->CaretOffset());
}

void TEditorDriver::TypeChar(char32_t c) {
    if (c == KeyLineFeed) c = TTypingSession::KeyEnter;
    bool isEscape = c == TTypingSession::KeyEscape;
    if (isEscape && !IsOpen()) return;
    bool choosesKey = c == TTypingSession::KeyEnter || c == TTypingSession::KeyTab;
    auto kind = isEscape ? TKeyKind::Look : IsOpen() && choosesKey ? TKeyKind::Choose : TKeyKind::Write;
    ForKey(kind, [&] {
        if (FSession.KeyDown(c)) return;
        InsertTyped(c);
        FSession.KeyTyped(c);
    });
}

void TEditorDriver::PressKey(TEditorKey key) {
    switch (key) {
        case ekEnter: return TypeChar(TTypingSession::KeyEnter);
        case ekTab: return TypeChar(TTypingSession::KeyTab);
        case ekEscape: return TypeChar(TTypingSession::KeyEscape);
        case ekCtrlSpace: OpenList(); return;
        case ekBackspace: return ForKey(TKeyKind::Write, [&] { DeletePrevious(); });
        case ekUp:
        case ekDown:
        case ekLeft:
        case ekRight: return ForKey(TKeyKind::Look, [&] { MoveCaret(key); });
    }
}

bool TEditorDriver::Undo() {
    FSession.CaretMoved();
    return FView->Undo();
}

bool TEditorDriver::Redo() {
    FSession.CaretMoved();
    return FView->Redo();
}

bool TEditorDriver::OpenList() {
    ForKey(TKeyKind::Look, [&] { FSession.OpenList(); });
    return IsOpen();
}

bool TEditorDriver::OpenListFor(char16_t c) {
    ForKey(TKeyKind::Look, [&] { FSession.OpenListFor(c); });
    return IsOpen();
}

// Whether the key may go on. A list whose ground has moved is dropped here; a key
// that would have chosen from it then does nothing, and any other counts as typed
// without a list.
bool TEditorDriver::CheckPlace(TKeyKind kind) {
    if (!FView->IsOpen() || FServices->CurrentView() != FView) return Refuse("its view is not the open one");
    if (kind != TKeyKind::Look && Text().IsReadOnly()) return Refuse("it is read-only");
    if (!IsOpen() || FSession.IsInPlace()) return true;
    if (kind == TKeyKind::Choose) return Refuse("the text has changed under the list");
    FSession.CaretMoved();
    return true;
}

bool TEditorDriver::Refuse(std::string_view reason) {
    Dismiss();
    if (FWarning) FWarning(FView->Buffer()->FileName() + ": nothing written, since " + std::string(reason));
    return false;
}

void TEditorDriver::InsertTyped(char32_t c) {
    bool isBreak = c == TTypingSession::KeyEnter;
    Text().Replace(FView->CaretOffset(), 0, isBreak ? Text().LineBreak() : ToUtf8(c));
}

void TEditorDriver::MoveCaret(TEditorKey key) {
    bool isVertical = key == ekUp || key == ekDown;
    if (IsOpen() && isVertical) return FSession.Select(SelectedIndex() + (key == ekDown ? 1 : -1));
    FSession.CaretMoved();
    int32_t caret = FView->CaretOffset();
    if (isVertical) FView->Position()->MoveBy(key == ekDown ? 1 : -1, 0);
    else FView->SetCaretOffset(key == ekLeft ? Text().PreviousPlace(caret) : Text().NextPlace(caret));
}

void TEditorDriver::DeletePrevious() {
    int32_t caret = FView->CaretOffset(), start = Text().PreviousPlace(caret);
    Text().Replace(start, caret - start, {});
    FSession.TextDeleted();
}

// ------------------------------------------------------------------- the list

TRef<INibCodeInsightManager> TEditorDriver::FindManager() {
    return FRegistry.Find(FLens.NameAt ? FLens.NameAt(*FView) : FView->Buffer()->FileName());
}

void TEditorDriver::BeginList(INibCodeInsightManager& manager) {
    FServices->ShowInstead(FLens.Show ? FLens.Show(FView, manager) : nullptr);
}

void TEditorDriver::ShowList(TRef<INibInsightList> list, int32_t tokenStart) {
    FServices->SetTokenStart(list ? std::optional(tokenStart) : std::nullopt);
    FServices->SetCurrentList(std::move(list));
}

bool TEditorDriver::Select(std::u16string_view name) {
    for (int32_t i = 0; i < ItemCount(); ++i) {
        if (Item(i).Name != name) continue;
        FSession.Select(i);
        return true;
    }
    return false;
}

std::vector<TListItem> TEditorDriver::Items() const {
    std::vector<TListItem> items;
    items.reserve(static_cast<size_t>(ItemCount()));
    for (int32_t i = 0; i < ItemCount(); ++i) items.push_back(Item(i));
    return items;
}

void TEditorDriver::Dismiss() { FSession.Dismiss(); }

void TEditorDriver::Detach() { FSession.Detach(); }

}  // namespace caretwell
