#include "typing/TypingSession.h"

#include <algorithm>

#include "host/ValueScope.h"
#include "host/ViewHandles.h"
#include "markup/Edit.h"
#include "markup/Text.h"

namespace caretwell {
namespace {

// Lists that ask for the next list without end must not hold the key for ever.
constexpr int32_t MostListsForKey = 8;
constexpr uint8_t ValueContext = 16;
// Bytes before a blank that are searched for the "<" of its tag.
constexpr int32_t LongestTag = 4096;
constexpr std::string_view StyleSheetOptions = "Tarnwell.EditOptions.StyleSheet";

// The manager's keys have 16 bits; a character beyond them is no key that it knows.
constexpr char16_t KeyOf(char32_t c) { return c < 0x10000 ? static_cast<char16_t>(c) : u'\xFFFD'; }

constexpr bool IsQuote(char32_t c) { return c == '"' || c == '\''; }

bool EndsWith(INibEditView& view, std::u16string_view text) {
    TCharSet chars;
    for (char16_t c : text) chars.Add(static_cast<uint8_t>(c));
    return PositionOf(view)->TakeText(chars, INibEditPosition::TakeBackwards).ends_with(text);
}

bool IsBeforeCaret(INibEditView& view, char32_t key) {
    return key >= ' ' && key < 128 && EndsWith(view, std::u16string(1, static_cast<char16_t>(key)));
}

}  // namespace

TTypingSession::TTypingSession(ITypingHost& host) : FHost(host) {}

TTypingSession::~TTypingSession() { Dismiss(); }

// ---------------------------------------------------------------------- keys

bool TTypingSession::KeyDown(char32_t key) {
    auto view = FHost.View();
    if (!view) return Dismiss(), false;
    TValueScope<bool> working(FIsBusy, true);
    FNext = TNext::ByKey;
    // A list whose ground has moved writes nothing any more.
    if (IsOpen() && !IsInPlace()) {
        bool wouldChoose = key == KeyEnter || key == KeyTab || key == KeyEscape;
        Dismiss();
        FOwn.Forget();
        if (wouldChoose) return true;
    }
    FOwn.Check(*view, FCaret);
    if (key == ';' || key == '{' || key == '}' || key == KeyEnter) FIsInValue = false;
    if (!IsOpen() || !Takes(key)) {
        FOwn.DropQuotes(*view, key);
        if (FOwn.IsInPlainValue() && EndsPlainValue(key)) FOwn.LeaveQuotes(*view);
    }
    if (FOwn.TypeOver(*view, key)) {
        if (CaretOffsetOf(*view) != FCaret) EndList(false);
        Settle();
        return true;
    }
    if (!IsOpen() || !PressInList(key)) return false;
    OpenRequested();
    return true;
}

void TTypingSession::KeyTyped(char32_t key) {
    auto view = FHost.View();
    if (!view) return;
    TValueScope<bool> working(FIsBusy, true);
    if (IsOpen()) Refilter();
    else AskAfter(key);
    OpenRequested();
}

void TTypingSession::TextDeleted() {
    auto view = FHost.View();
    if (!view) return;
    TValueScope<bool> working(FIsBusy, true);
    FOwn.TextDeleted(*view);
    if (IsOpen() && CaretOffsetOf(*view) < FTokenStart) EndList(false);
    if (IsOpen()) Refilter();
    Settle();
}

void TTypingSession::CaretMoved() {
    Dismiss();
    FOwn.Forget();
    FIsInValue = false;
}

bool TTypingSession::OpenList() {
    TValueScope<bool> working(FIsBusy, true);
    if (auto view = FHost.View()) FOwn.Check(*view, FCaret);
    FIsAskedFor = IsOpen() || AskForList(0) || AskForClosingTags();
    OpenRequested();
    return IsOpen();
}

bool TTypingSession::OpenListFor(char16_t c) {
    TValueScope<bool> working(FIsBusy, true);
    if (!IsOpen()) AskForList(c);
    OpenRequested();
    return IsOpen();
}

void TTypingSession::RequestList() {
    // A manager asks for the next list from inside Done, where it is not yet through with
    // this one. The request waits until it is.
    FIsRequested = true;
    if (FIsBusy) return;
    TValueScope<bool> working(FIsBusy, true);
    OpenRequested();
}

void TTypingSession::OpenRequested() {
    for (int32_t i = 0; FIsRequested && i < MostListsForKey; ++i) {
        FIsRequested = false;
        // A blank on the way to the word leaves the user where they were.
        char16_t trigger = FNext == TNext::List ? FTrigger : u'\0';
        EndList(false);
        AskForList(0);
        FTrigger = trigger;
    }
    FIsRequested = false;
    Settle();
}

void TTypingSession::Settle() {
    FRevision = FHost.Revision();
    if (auto view = FHost.View()) FCaret = CaretOffsetOf(*view);
}

bool TTypingSession::IsInPlace() {
    auto view = FHost.View();
    return view && FHost.Revision() == FRevision && CaretOffsetOf(*view) == FCaret;
}

// ------------------------------------------------------------ without a list

// The key stands before the caret, and no list is open.
void TTypingSession::AskAfter(char32_t key) {
    auto view = FHost.View();
    if (!view) return;
    FOwn.KeyTyped(*view, key);
    if (FIsRequested || (key != 0 && AskForList(KeyOf(key)))) return;
    if (key == ' ' && FIsInValue && FNext == TNext::ByKey) FNext = TNext::Values;
    // The name of a server directive.
    if (key == ' ' && EndsWith(*view, u"<%@ ")) FNext = TNext::List;
    if (key == ' ' && FNext == TNext::ByKey && MayStandInTag(*view)) FNext = TNext::Attributes;
    if (FNext == TNext::ByKey) return;
    // What the engine closes itself needs no offer.
    if (FNext == TNext::ClosingTags && !FOwn.HasClosingTag()) AskForClosingTags();
    if (FNext == TNext::ClosingTags) return;
    bool wantsValues = FNext == TNext::Values, wantsAttributes = FNext == TNext::Attributes;
    if (!AskForList(0)) return;
    if (wantsAttributes && !IsAttributeList()) return EndList(false);
    if (wantsValues && !IsValueList()) return EndList(false);
    if (wantsValues) FTrigger = KeyOf(key);
}

// After "</", and in the name there, no list opens of itself. What may be closed is offered
// before it, and there the list is asked for.
bool TTypingSession::AskForClosingTags() {
    auto view = FHost.View();
    if (!view || !FManager || IsStyleSheet()) return false;
    TCharSet chars = FManager->EditorTokenValidChars(false);
    chars.Add('<');
    chars.Add('/');
    auto position = PositionOf(*view);
    std::u16string run = position->TakeText(chars, INibEditPosition::TakeBackwards);
    size_t start = run.rfind(u'<');
    if (start == run.npos || run.find(u'/', start) != start + 1 || run.rfind(u'/') != start + 1) return false;
    int32_t count = CountCharacters(std::u16string_view(run).substr(start));
    position->MoveBy(0, -count);
    AskForList(0);
    PositionOf(*view)->MoveBy(0, count);
    if (!IsOpen()) return false;
    FIsClosingTag = true;
    Refilter();
    return IsOpen();
}

bool TTypingSession::Opens(char16_t key, TNibInvokeType& invokeType) {
    TNibCodeInsightType type = citNone;
    FManager->GetCodeInsightType(key, FHost.Element(), type, invokeType);
    return type == citList;
}

bool TTypingSession::AskForList(char16_t key) {
    auto view = FHost.View();
    FManager = view ? FHost.FindManager() : nullptr;
    if (!FManager) return false;
    bool isAllowed = true;
    FManager->AllowCodeInsight(isAllowed, key);
    TNibInvokeType invokeType = itNone;
    if (!isAllowed || !Opens(key, invokeType)) return false;

    FHost.BeginList(*FManager);
    auto before = TOwnText::Look(*view);
    std::u16string token;
    bool isShown = FManager->InvokeCodeCompletion(invokeType, token);
    FOwn.NoteAid(*view, before);
    // An aid asks for another list in place of this one; a key that was typed asks by itself.
    if (key != 0) FIsRequested = false;
    FTrigger = key;
    if (isShown && !FIsRequested) ShowList();
    if (!IsOpen()) FHost.EndList();
    return IsOpen();
}

void TTypingSession::ShowList() {
    FManager->GetSymbolList(FSymbols);
    if (!FSymbols) return;
    FList = MakeRef<TSelection>();
    FIsAskedFor = FIsPicked = FIsClosingTag = false;
    FIsInValue = IsStyleSheet() && IsValueList();
    FSymbols->SetFilter({});
    // A list without one line is not worth showing. The manager is told that it ended.
    Refilter();
}

// --------------------------------------------------------------- with a list

bool TTypingSession::IsWordChar(char32_t key) const {
    return FManager->EditorTokenValidChars(false).Contains(static_cast<uint8_t>(ToUtf8(key).front()));
}

bool TTypingSession::IsStyleSheet() const { return FManager->GetOptionSetName() == StyleSheetOptions; }

bool TTypingSession::IsValueList() const {
    auto context = QueryAs<INibInsightContext>(FManager);
    return context && context->GetContext() == ValueContext;
}

// In a style sheet, and in the value of an attribute, a blank is something else.
bool TTypingSession::MayStandInTag(INibEditView& view) const {
    if (!FManager || IsStyleSheet()) return false;
    int32_t caret = CaretOffsetOf(view);
    std::string before = ReadBytes(view, std::max(caret - LongestTag, 0), caret);
    size_t start = before.find_last_of("<>"), last = before.find_last_not_of(" \t\r\n");
    if (start == before.npos || before[start] != '<' || last == start || before[last] == '=') return false;
    char first = before[start + 1];
    return first == '%' || first == '_' || (first >= 'a' && first <= 'z') || (first >= 'A' && first <= 'Z') ||
           static_cast<unsigned char>(first) >= 128;
}

bool TTypingSession::IsAttributeList() const {
    constexpr int32_t AttributeFlags = 3;
    return !IsValueList() && ItemCount() > 0 && FSymbols->GetViewerSymbolFlags(0) == AttributeFlags;
}

// The token before the caret narrows the list, until there is nothing left to narrow.
void TTypingSession::Refilter() {
    auto view = FHost.View();
    if (!view) return EndList(false);
    auto position = PositionOf(*view);
    FToken = position->TakeText(FManager->EditorTokenValidChars(false), INibEditPosition::TakeBackwards);
    position->Save();
    position->MoveBy(0, -CountCharacters(std::u16string_view(FToken)));
    FTokenStart = CaretOffsetOf(*view);
    position->Restore();

    FSymbols->SetFilter(FToken);
    if (ItemCount() == 0) return EndList(false);
    Pick(BestIndex());
    FIsPicked = false;
    FHost.ShowList(FList, FTokenStart);
}

// The item that the token is, otherwise the first that it begins; as it is written before
// in any case, since entities differ by that. Closing tags come from the outside in, and the
// innermost is meant.
int32_t TTypingSession::BestIndex() const {
    int32_t best = 0, bestRank = 0;
    for (int32_t i = 0; i < ItemCount(); ++i) {
        std::u16string text = WordOf(i);
        if (!StartsWithText(std::u16string_view(text), FToken)) continue;
        int32_t rank = 1 + text.starts_with(FToken) + 2 * (text.size() == FToken.size());
        if (rank > bestRank || (FIsClosingTag && rank == bestRank)) best = i, bestRank = rank;
    }
    return best;
}

bool TTypingSession::BeginsWithToken(int32_t index) const {
    if (index < 0 || index >= ItemCount()) return false;
    return StartsWithText(std::u16string_view(WordOf(index)), FToken);
}

void TTypingSession::Pick(int32_t index) {
    int32_t last = ItemCount() - 1;
    index = std::clamp(index, std::min(last, 0), std::max(last, 0));
    FList->Select(last < 0 ? -1 : index, last < 0 ? std::u16string() : NameOf(index));
}

void TTypingSession::Select(int32_t index) {
    if (!IsOpen()) return;
    Pick(index);
    FIsPicked = true;
}

// In a closing tag only the closing tags count, which stand at the head of the list.
int32_t TTypingSession::ItemCount() const {
    if (!FSymbols) return 0;
    int32_t count = FSymbols->GetCount();
    if (!FIsClosingTag) return count;
    int32_t closing = 0;
    while (closing < count && FSymbols->GetSymbolIsAbstract(closing)) ++closing;
    return closing;
}

TListItem TTypingSession::Item(int32_t index) const {
    TListItem item;
    if (index < 0 || index >= ItemCount()) return item;
    item.Text = FSymbols->GetSymbolText(index);
    item.Type = FSymbols->GetSymbolTypeText(index);
    item.Class = FSymbols->GetSymbolClassText(index);
    item.IsClosing = FSymbols->GetSymbolIsAbstract(index);
    item.Name = NameOf(index);
    return item;
}

// A value stands in the column of types, after a blank.
std::u16string TTypingSession::NameOf(int32_t index) const {
    std::u16string text = FSymbols->GetSymbolText(index);
    if (!text.empty()) return text;
    text = FSymbols->GetSymbolTypeText(index);
    return text.substr(text.starts_with(u' ') ? 1 : 0);
}

// The part of a name that is typed as a word: "p" of "</p>", "Page" of "@ Page".
std::u16string TTypingSession::WordOf(int32_t index) const {
    std::u16string name = NameOf(index);
    if (FIsClosingTag && name.size() > 3) return name.substr(2, name.size() - 3);
    return name.starts_with(u"@ ") ? name.substr(2) : name;
}

// ------------------------------------------------------------- closing a list

// Does the key take what is selected? Enter and Tab take an item that was picked, or that
// the token begins. With no token Tab means the list, and Enter too where the user has asked
// for it or nothing else can be meant; otherwise it is a new line. Any other key stands for
// itself, and takes only what the user has picked; it never opens a dialog.
bool TTypingSession::Takes(char32_t key) const {
    int32_t index = SelectedIndex();
    if (index < 0) return false;
    if (key == KeyTab || key == KeyEnter) {
        if (FIsPicked) return true;
        if (!FToken.empty()) return BeginsWithToken(index);
        return key == KeyTab || FIsAskedFor || FIsClosingTag || FTrigger == '=' || IsQuote(FTrigger);
    }
    return FIsPicked && !IsWordChar(key) && !NameOf(index).ends_with(u"...");
}

bool TTypingSession::PressInList(char32_t key) {
    bool takes = Takes(key);
    if (takes && FIsClosingTag) return CloseTag(), true;
    bool closes = false, accepts = false;
    FManager->OnEditorKey(KeyOf(key), closes, accepts);
    if (closes) return takes && accepts ? TakeChoice(key) : CloseWithout(key);
    if (IsWordChar(key)) return false;
    // The word that the list was about is over.
    if (key == '/' && FTrigger == '<' && FToken.empty()) FNext = TNext::ClosingTags;
    EndList(false);
    return false;
}

// A ">" does, and a blank after one of the values, unless another goes on with it.
bool TTypingSession::EndsPlainValue(char32_t key) const {
    if (key == '>') return true;
    if (key != ' ' || SelectedIndex() < 0 || NameOf(SelectedIndex()) != FToken) return false;
    for (int32_t i = 0; i < ItemCount(); ++i)
        if (NameOf(i).starts_with(FToken + u' ')) return false;
    return true;
}

bool TTypingSession::TakeChoice(char32_t key) {
    auto view = FHost.View();
    int32_t caret = view ? CaretOffsetOf(*view) : 0;
    std::u16string name = NameOf(SelectedIndex());
    EndList(true);
    view = FHost.View();
    if (!view) return true;
    TNibKeyUse use = FindKeyUse(*view, key, caret);
    // The value is to follow its "=" without a blank.
    if (key == KeyTab && EndsWith(*view, u"= ")) PositionOf(*view)->DeleteBack(1);
    char16_t own = FOwn.NoteChoice(*view, name);
    if (key < ' ') {
        if (!FIsRequested && own == ':') AskForList(own);
        return true;
    }
    if (!FOwn.TypeOver(*view, key) && use == TNibKeyUse::Unused) return false;
    // A blank that stands after the caret belongs to what follows.
    if (key == ' ' && FIsInValue && !IsBeforeCaret(*view, key)) return false;
    AskAfter(key);
    return true;
}

// The list ends, and the key goes into the text: the manager writes some keys itself.
bool TTypingSession::CloseWithout(char32_t key) {
    auto view = FHost.View();
    int32_t caret = view ? CaretOffsetOf(*view) : 0;
    bool isEmpty = FToken.empty();
    if (key == ' ' && isEmpty && IsStyleSheet()) FNext = TNext::List;
    if (key == ' ' && isEmpty && FTrigger == '=') FNext = TNext::List;
    if (IsQuote(key) && isEmpty && FTrigger == '=') FNext = TNext::Values;
    EndList(false);
    view = FHost.View();
    if (key == KeyEscape || !view) return true;
    bool isWritten = FindKeyUse(*view, key, caret) == TNibKeyUse::Written;
    // Where no choice was made, a list follows only in a tag: there the manager writes the blank.
    FIsRequested = FIsRequested && isWritten;
    if (isWritten) AskAfter(key);
    return isWritten;
}

// What Done did with the key. A manager that does not tell is judged by what stands before the caret.
TNibKeyUse TTypingSession::FindKeyUse(INibEditView& view, char32_t key, int32_t caret) const {
    if (auto composer = QueryAs<INibEditComposer>(FManager)) return composer->GetKeyUse();
    bool isWritten = CaretOffsetOf(view) != caret && IsBeforeCaret(view, key);
    return isWritten ? TNibKeyUse::Written : TNibKeyUse::Unused;
}

// The letters that are missing from a closing tag. Of one that the user asked about the end
// may be there: it goes.
void TTypingSession::CloseTag() {
    bool isBegun = BeginsWithToken(SelectedIndex());
    std::u16string token = isBegun ? std::u16string() : FToken;  // of another name
    std::u16string rest = NameOf(SelectedIndex()).substr(2 + (isBegun ? FToken.size() : 0));
    TCharSet chars = FManager->EditorTokenValidChars(false);
    chars.Add('>');
    bool isAskedFor = FIsAskedFor;
    EndList(false);
    auto services = GetService<INibCodeInsightServices>();
    auto view = FHost.View();
    if (!services || !view) return;
    auto position = PositionOf(*view);
    std::u16string ahead = position->TakeText(chars, 0);
    size_t end = ahead.find(u'>');
    if (isAskedFor && end != ahead.npos) {
        auto count = static_cast<int32_t>(end) + 1;
        position->MoveBy(0, count);
        position->DeleteBack(count);
    }
    if (!token.empty()) position->DeleteBack(CountCharacters(std::u16string_view(token)));
    services->InsertText(rest, false);
    FOwn.KeyTyped(*view, '>');
}

// The end of every list. Done reads the selection from the current list.
void TTypingSession::EndList(bool accepted) {
    if (!IsOpen()) return;
    if (!accepted) FList->Select(-1, {});
    bool displayParams = false;
    FManager->Done(accepted, displayParams);
    FHost.ShowList(nullptr, 0);
    FHost.EndList();
    FSymbols = nullptr;
    FList = nullptr;
    FToken.clear();
    FIsAskedFor = FIsPicked = FIsClosingTag = false;
}

void TTypingSession::Dismiss() {
    TValueScope<bool> working(FIsBusy, true);
    EndList(false);
    FIsRequested = false;
}

void TTypingSession::Detach() {
    Dismiss();
    FManager = nullptr;
}

}  // namespace caretwell
