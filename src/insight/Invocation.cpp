// From caret to list: what lies between a key and the moment at which the host shows a
// list.

#include "host/Paths.h"
#include "host/Settings.h"
#include "host/ViewHandles.h"
#include "insight/HTMLCodCmplt.h"
#include "insight/TokenChars.h"
#include "parser/MLParser.h"
#include "symbols/FileToSchemaMapper.h"

namespace caretwell {
namespace {

constexpr uint8_t ContextNone = 14;
constexpr uint8_t ContextTag = 15;
constexpr uint8_t ContextValue = 16;

// Syntax classes of the host in which no list opens, and the one in which triggers rest.
constexpr bool IsQuietElement(int32_t element) { return element == 1 || element == 5; }
constexpr int32_t TriggerlessElement = 22;

bool WantsTypingAids() {
    auto value = ReadSetting(InsightSettings, "Auto Code Completions");
    return !value || !SameText(std::string_view(*value), std::string_view("False"));
}

}  // namespace

TCharSet TMLKibitzManager::EditorTokenValidChars(bool preValidating) {
    return preValidating ? tokenchars::Token.With("<") : tokenchars::Token;
}

void TMLKibitzManager::GetCodeInsightType(char16_t c, int32_t element, TNibCodeInsightType& type,
                                          TNibInvokeType& invokeType) {
    FInvokeKey = 0;
    type = citNone;
    if (IsQuietElement(element)) return;
    invokeType = itUser;
    if (c == 0) type = citList;
    bool isTrigger = c == '&' || c == '<' || c == '=' || c == '>';
    if (!isTrigger || element == TriggerlessElement) return;
    FInvokeKey = c;
    type = citList;
    invokeType = itTrigger;
}

void TMLKibitzManager::Parse(TNibEditPos position, TRef<IMLBufferProducer> producer,
                             TRef<INibMLTag> contextTag) {
    if (!producer) return;
    Guarded([&] { GetParser().Parse(position, std::move(producer), std::move(contextTag)); });
}

void TMLKibitzManager::SetWatching(bool value) {
    Guarded([&] { FGrammars.SetWatching(value); });
}

bool TMLKibitzManager::GetAnswer(TGrammarAnswer& answer) {
    return Guarded(false, [&] { return FGrammars.GetAnswer(answer); });
}

bool TMLKibitzManager::InvokeCodeCompletion(TNibInvokeType howInvoked, std::u16string& text) {
    return Guarded(false, [&] { return OpenList(howInvoked, text); });
}

void TMLKibitzManager::ParseView(const TRef<INibEditView>& view, TRef<INibMLTag> context) {
    GetParser().Parse(view->CaretPos(), MakeRef<TMLBufferProducer>(view, 0), std::move(context));
}

bool TMLKibitzManager::OpenList(TNibInvokeType howInvoked, std::u16string& text) {
    FContext = ContextNone;
    FAutoCompletions = WantsTypingAids();
    FEntityMode = false;
    TRef<INibMLTag> context = std::exchange(FContextTag, nullptr);  // good for one invocation
    auto view = CurrentView();
    if (!view) return false;
    TMLParser& parser = GetParser();
    ParseView(view, context);
    FCompletionKey = FClosingKey = 0;
    if (FSymbols.GetSchemaFile().empty() || IsInsideKnownTag()) return false;
    HelpTyping(view, context);
    text = TakeBefore(*view, tokenchars::Token);
    FInitialFilter = text;
    if (parser.GetInAttribute()) FContext = ContextValue;
    else if (parser.FInTag || parser.FCaretInTagName) FContext = ContextTag;

    bool runTail = true;
    bool result = CanOfferAtCaret() && ChooseList(howInvoked, *view, runTail);
    if (runTail) SetListFilter(result, text);
    else ShowWhatCaretIsIn();
    return result;
}

/// A "<" typed inside a known tag opens nothing. Directly before a word it begins a tag, of
/// whatever name.
bool TMLKibitzManager::IsInsideKnownTag() const {
    const TMLParser& parser = GetParser();
    return FInvokeKey == '<' && parser.FInTag && !parser.FCaretInTagName &&
           !Supports<INibMLNamedTag>(parser.FCurrentTag);
}

/// False where the text is none of the engine's.
bool TMLKibitzManager::CanOfferAtCaret() const {
    const TMLParser& parser = GetParser();
    return !parser.FInScript && !parser.FInStyle && parser.FCaretRegion == pcNone && !parser.GetInDocType();
}

/// Picks the list. The result is that of the invocation so far; runTail says whether the
/// list's filter is to be set.
bool TMLKibitzManager::ChooseList(TNibInvokeType howInvoked, INibEditView& view, bool& runTail) {
    const TMLParser& parser = GetParser();
    auto token = TakeBefore(view, tokenchars::Token.With("&"));
    bool asksByToken = howInvoked == itUser && token.find(u'&') != std::u16string::npos;
    if (FInvokeKey == '&' || asksByToken) {
        runTail = !parser.FInTag && !parser.FCaretInTagName;
        FEntityMode = runTail;
        return true;
    }
    if (parser.GetInAttribute()) return true;
    FContext = ContextTag;
    return FInvokeKey != '=';
}

// The range of the current tag goes over its attributes when the caret stands among them.
void TMLKibitzManager::ShowWhatCaretIsIn() {
    const TMLParser& parser = GetParser();
    auto tag = FSymbols.GetCurrentTag();
    bool isRoot = tag == FSymbols.GetHiddenRootNode();
    if (tag && !isRoot && !Supports<INibMLNamedTag>(tag))
        tag->SetShowAttributes(parser.FInTag && !parser.FCaretInTagName);
}

void TMLKibitzManager::SetListFilter(bool& result, std::u16string_view text) {
    if (auto tag = FSymbols.GetCurrentTag()) {
        ShowWhatCaretIsIn();
        if (result) tag->SetFilter(text);
        // The list may be that of another tag, of an attribute, or the entities.
        if (result) SetFilter(text);
    }
    if (FInvokeKey == '>') result = false;
}

}  // namespace caretwell
