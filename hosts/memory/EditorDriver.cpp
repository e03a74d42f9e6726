#include "memory/EditorDriver.h"

#include <algorithm>

#include "caretwell/insight/MLCodeInsight.h"
#include "markup/MLBufferProducer.h"
#include "markup/Text.h"

namespace caretwell {
namespace {

enum : char32_t { KeyTab = 9, KeyLineFeed = 10, KeyEnter = 13, KeyEscape = 27 };

// Lists that ask for the next list without end must not hold the key for ever.
constexpr int32_t MostListsForKey = 8;

// The manager's keys have 16 bits; a character beyond them is no key that it knows.
constexpr char16_t KeyOf(char32_t c) { return c < 0x10000 ? static_cast<char16_t>(c) : u'\xFFFD'; }

}  // namespace

TEditorDriver::TEditorDriver(TRef<TEditView> view, TKibitzRegistry& registry, TRef<TMemoryServices> services,
                             TWarning warning)
    : FView(std::move(view)),
      FRegistry(registry),
      FServices(std::move(services)),
      FWarning(std::move(warning)) {
    FView->SetCompletion([this](int32_t style) {
        if (style != INibEditActions::CompleteAsUser) return;
        // A manager asks for the next list from inside Done, where it is not yet
        // through with this one. The request waits until it is.
        FIsRequested = true;
        if (!FIsBusy) ForKey(kkLook, [] {});
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
    FIsBusy = true;
    {
        TUndoStep step(Text());
        action();
        OpenRequested();
    }
    FIsBusy = false;
    Settle();
}

void TEditorDriver::TypeChar(char32_t c) {
    if (c == KeyLineFeed) c = KeyEnter;
    if (c == KeyEscape && !IsOpen()) return;
    TKeyKind kind = c == KeyEscape ? kkLook : kkWrite;
    if (IsOpen() && (c == KeyEnter || c == KeyTab)) kind = kkChoose;
    ForKey(kind, [&] {
        if (IsOpen()) TypeIntoList(c);
        else TypeIntoText(c);
    });
}

void TEditorDriver::PressKey(TEditorKey key) {
    switch (key) {
        case ekEnter: return TypeChar(KeyEnter);
        case ekTab: return TypeChar(KeyTab);
        case ekEscape: return TypeChar(KeyEscape);
        case ekCtrlSpace: OpenList(); return;
        case ekBackspace: return ForKey(kkWrite, [&] { DeletePrevious(); });
        case ekUp:
        case ekDown:
        case ekLeft:
        case ekRight: return ForKey(kkLook, [&] { MoveCaret(key); });
    }
}

bool TEditorDriver::Undo() {
    Dismiss();
    return FView->Undo();
}

bool TEditorDriver::Redo() {
    Dismiss();
    return FView->Redo();
}

bool TEditorDriver::OpenList() {
    ForKey(kkLook, [&] { FIsAskedFor = IsOpen() || AskForList(0); });
    return IsOpen();
}

bool TEditorDriver::OpenListFor(char16_t c) {
    ForKey(kkLook, [&] {
        if (!IsOpen()) AskForList(c);
    });
    return IsOpen();
}

// Whether the key may go on. A list whose ground has moved is dropped here; a key
// that would have chosen from it then does nothing, and any other counts as typed
// without a list.
bool TEditorDriver::CheckPlace(TKeyKind kind) {
    if (!FView->IsOpen() || FServices->CurrentView() != FView) return Refuse("its view is not the open one");
    if (kind != kkLook && Text().IsReadOnly()) return Refuse("it is read-only");
    if (!IsOpen() || (Text().Revision() == FRevision && FView->CaretOffset() == FCaret)) return true;
    if (kind == kkChoose) return Refuse("the text has changed under the list");
    Dismiss();
    return true;
}

// Lists that were asked for while a manager was at work.
void TEditorDriver::OpenRequested() {
    for (int32_t i = 0; FIsRequested && i < MostListsForKey; ++i) {
        FIsRequested = false;
        EndList(false);
        AskForList(0);
    }
    FIsRequested = false;
}

void TEditorDriver::Settle() {
    FRevision = Text().Revision();
    FCaret = FView->CaretOffset();
}

// ------------------------------------------------------------ without a list

void TEditorDriver::TypeIntoText(char32_t c) {
    InsertTyped(c);
    if (c != 0) AskForList(KeyOf(c));
}

void TEditorDriver::InsertTyped(char32_t c) {
    Text().Replace(FView->CaretOffset(), 0, c == KeyEnter ? Text().LineBreak() : ToUtf8(c));
}

bool TEditorDriver::IsBeforeCaret(char32_t c) {
    std::string text = ToUtf8(c);
    int32_t caret = FView->CaretOffset();
    return Text().Substring(caret - static_cast<int32_t>(text.size()), caret) == text;
}

TRef<INibCodeInsightManager> TEditorDriver::FindManager() {
    return FRegistry.Find(FLens.NameAt ? FLens.NameAt(*FView) : FView->Buffer()->FileName());
}

// A typed "&" is answered from the last parse, so that it costs nothing. That parse may
// be of another caret, or there was none yet; an editor that does not parse in between
// anyway does it here.
void TEditorDriver::ParseAhead() {
    auto markup = QueryAs<INibMLCodeInsightManager>(FManager);
    TRef<INibEditView> view = FView;
    if (markup) markup->Parse(view->CaretPos(), MakeRef<TMLBufferProducer>(view, 0), nullptr);
}

bool TEditorDriver::AskForList(char16_t c) {
    FManager = FindManager();
    if (!FManager) return false;
    bool isAllowed = true;
    FManager->AllowCodeInsight(isAllowed, c);
    if (!isAllowed) return false;
    if (c == u'&') ParseAhead();
    TNibCodeInsightType type = citNone;
    TNibInvokeType invokeType = itNone;
    FManager->GetCodeInsightType(c, FElement, type, invokeType);
    if (type != citList) return false;

    FServices->ShowInstead(FLens.Show ? FLens.Show(FView, *FManager) : nullptr);
    std::u16string token;
    bool isShown = FManager->InvokeCodeCompletion(invokeType, token);
    FTrigger = c;
    // Typing aids may already ask for another list in place of this one.
    if (isShown && !FIsRequested) ShowList();
    if (!IsOpen()) FServices->ShowInstead(nullptr);
    return IsOpen();
}

void TEditorDriver::ShowList() {
    FManager->GetSymbolList(FSymbols);
    if (!FSymbols) return;
    FList = MakeRef<TInsightList>();
    FServices->SetCurrentList(FList);
    FIsAskedFor = false;
    // A list without one entry is not worth showing. The manager is told that it ended.
    FSymbols->SetFilter({});
    if (FSymbols->GetCount() == 0) EndList(false);
    else Refilter();
}

// --------------------------------------------------------------- with a list

void TEditorDriver::TypeIntoList(char32_t c) {
    bool closeViewer = false, accept = false;
    FManager->OnEditorKey(KeyOf(c), closeViewer, accept);
    if (closeViewer) return CloseList(c, accept);
    bool beginsClosing = BeginsClosingForm(c);
    if (IsWordChar(c) || beginsClosing) {
        FIsClosingForm = FIsClosingForm || beginsClosing;
        InsertTyped(c);
        return Refilter();
    }
    // No letter of a word, and nothing to the manager: the word that the list was
    // about is over.
    EndList(false);
    TypeIntoText(c);
}

bool TEditorDriver::IsWordChar(char32_t c) const {
    return FManager->EditorTokenValidChars(false).Contains(static_cast<uint8_t>(ToUtf8(c).front()));
}

// "</" is still about the elements that "<" has opened the list for.
bool TEditorDriver::BeginsClosingForm(char32_t c) {
    return c == '/' && FTrigger == '<' && FWord.empty() && IsBeforeCaret('<');
}

// The token before the caret narrows the list. Its exact name is selected, otherwise
// the first that it begins; closing tags stay in the list whatever is typed.
void TEditorDriver::Refilter() {
    auto position = FView->Position();
    FWord = position->TakeText(FManager->EditorTokenValidChars(false), INibEditPosition::TakeBackwards);
    position->Save();
    position->MoveBy(0, -CountCharacters(std::u16string_view(FWord)));
    FWordStart = FView->CaretOffset();
    position->Restore();
    FServices->SetTokenStart(FWordStart);

    FSymbols->SetFilter(FWord);
    int32_t index = -1;
    FSymbols->FindSymIndex(FWord, index);
    if (!BeginsWithWord(index)) {
        index = 0;
        while (index < ItemCount() && !BeginsWithWord(index)) ++index;
    }
    SelectItem(index < ItemCount() ? index : 0);
    FIsChosen = !FWord.empty() && BeginsWithWord(SelectedIndex());
}

bool TEditorDriver::BeginsWithWord(int32_t index) const {
    return index >= 0 && index < ItemCount() && StartsWithText(std::u16string_view(NameOf(index)), FWord);
}

void TEditorDriver::SelectItem(int32_t index) {
    int32_t last = ItemCount() - 1;
    index = std::clamp(index, std::min(last, 0), last);
    FList->Select(index, index < 0 ? std::u16string() : NameOf(index));
}

bool TEditorDriver::Select(std::u16string_view name) {
    for (int32_t i = 0; i < ItemCount(); ++i) {
        if (NameOf(i) != name) continue;
        SelectItem(i);
        FIsChosen = true;
        return true;
    }
    return false;
}

TListItem TEditorDriver::Item(int32_t index) const {
    TListItem item;
    if (!FSymbols || index < 0 || index >= ItemCount()) return item;
    item.Text = FSymbols->GetSymbolText(index);
    item.Type = FSymbols->GetSymbolTypeText(index);
    item.Class = FSymbols->GetSymbolClassText(index);
    item.IsClosing = FSymbols->GetSymbolIsAbstract(index);
    item.Name = NameOf(index);
    return item;
}

// A value stands in the column of types, behind a blank.
std::u16string TEditorDriver::NameOf(int32_t index) const {
    std::u16string text = FSymbols->GetSymbolText(index);
    if (!text.empty()) return text;
    text = FSymbols->GetSymbolTypeText(index);
    return text.substr(text.starts_with(u' ') ? 1 : 0);
}

std::vector<TListItem> TEditorDriver::Items() const {
    std::vector<TListItem> items;
    for (int32_t i = 0; i < ItemCount(); ++i) items.push_back(Item(i));
    return items;
}

// ------------------------------------------------------------- closing a list

// Does the key take what is selected? Tab always means the list. Enter, when the list
// came by itself and nothing was typed for it, more likely means a new line; and any
// other key must not write an item that nobody looked for, nor complete a closing tag
// that was typed out.
bool TEditorDriver::TakesChoice(char32_t c) const {
    if (SelectedIndex() < 0) return false;
    if (c == KeyTab) return true;
    if (c == KeyEnter) return FIsChosen || FIsAskedFor;
    return FIsChosen && !FIsClosingForm;
}

void TEditorDriver::CloseList(char32_t key, bool accept) {
    bool isAccepted = accept && TakesChoice(key);
    bool isWordEmpty = FWord.empty();
    uint64_t before = Text().Revision();
    EndList(isAccepted);

    // What the manager does with a key it does in Done: a choice has its punctuation
    // then, and a key that stands for itself is in the text. A key that it left alone
    // with no choice made is a key typed by the user, and must not be lost.
    bool isTyped = !isAccepted && Text().Revision() == before && key != KeyEscape;
    if (isTyped) InsertTyped(key);
    if (FIsRequested || key < ' ' || Text().Revision() == before) return;

    // It is now a character before the caret like any other, and may open a list. The
    // blank on the way to the word (as in "color: red") leaves the user where they were.
    if (IsBeforeCaret(key) && AskForList(KeyOf(key))) return;
    FIsRequested = FIsRequested || (key == ' ' && isWordEmpty && !isAccepted);
}

// The end of every list. Done reads the selection from the current list.
void TEditorDriver::EndList(bool accepted) {
    if (!IsOpen()) return;
    if (!accepted) FList->Select(-1, {});
    bool displayParams = false;
    FManager->Done(accepted, displayParams);
    FServices->SetCurrentList(nullptr);
    FServices->SetTokenStart(std::nullopt);
    FServices->ShowInstead(nullptr);
    FSymbols = nullptr;
    FList = nullptr;
    FWord.clear();
    FIsAskedFor = FIsChosen = FIsClosingForm = false;
}

void TEditorDriver::Dismiss() {
    bool wasBusy = std::exchange(FIsBusy, true);
    EndList(false);
    FIsRequested = false;
    FIsBusy = wasBusy;
}

void TEditorDriver::Detach() {
    Dismiss();
    FManager = nullptr;
}

bool TEditorDriver::Refuse(std::string_view reason) {
    Dismiss();
    if (FWarning) FWarning(FView->Buffer()->FileName() + ": nothing written, since " + std::string(reason));
    return false;
}

// --------------------------------------------------------------- other keys

void TEditorDriver::MoveCaret(TEditorKey key) {
    bool isVertical = key == ekUp || key == ekDown;
    if (IsOpen() && isVertical) {
        SelectItem(SelectedIndex() + (key == ekDown ? 1 : -1));
        FIsChosen = true;
        return;
    }
    EndList(false);
    int32_t caret = FView->CaretOffset();
    if (isVertical) FView->Position()->MoveBy(key == ekDown ? 1 : -1, 0);
    else FView->SetCaretOffset(key == ekLeft ? Text().PreviousPlace(caret) : Text().NextPlace(caret));
}

void TEditorDriver::DeletePrevious() {
    int32_t caret = FView->CaretOffset();
    if (IsOpen() && caret <= FWordStart) EndList(false);
    int32_t start = Text().PreviousPlace(caret);
    Text().Replace(start, caret - start, {});
    if (IsOpen()) Refilter();
}

}  // namespace caretwell
