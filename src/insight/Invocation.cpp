// From caret to list: what lies between a key and the moment at which the host shows a
// list, and the typing aids that belong to a keystroke.

#include "host/Paths.h"
#include "host/Platform.h"
#include "host/ValueScope.h"
#include "host/ViewHandles.h"
#include "insight/Guard.h"
#include "insight/HTMLCodCmplt.h"
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

void InsertText(std::u16string_view text) {
    if (auto services = GetService<INibCodeInsightServices>()) services->InsertText(text, false);
}

void MoveCaretTo(INibEditView& view, int32_t row, int32_t column) {
    constexpr int32_t LastColumn = 32767;
    if (column <= LastColumn) view.SetCaretPos({static_cast<int16_t>(column), row});
    else PositionOf(view)->MoveTo(row, column);
}

/// Moves the caret to a place in the document: exactly, where the view can.
void MoveCaretTo(INibEditView& view, int32_t offset, TNibCharPos position) {
    if (auto offsets = QueryAs<INibOffsetView>(&view)) offsets->SetCaretOffset(offset);
    else view.SetCaretPos(view.CharPosToEditPos(position));
}

/// Typing aids move the caret by what they insert, so they keep off a buffer that takes nothing.
bool CanWrite(INibEditView& view) {
    auto buffer = view.Buffer();
    return buffer && buffer->CreateWriter();
}

}  // namespace

TCharSet TMLKibitzManager::EditorTokenValidChars(bool preValidating) {
    return preValidating ? charsets::Token.With("<") : charsets::Token;
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

// A missing value means true.
void TMLKibitzManager::LoadOptions() {
    auto services = GetService<INibServices>();
    ISettingsStore* settings = GetPlatform().Settings();
    if (!services || !settings) {
        FAutoCompletions = true;
        return;
    }
    std::string key = services->BaseRegistryKey() + "\\Code Insight";
    if (!settings->OpenKey(key)) return;
    auto value = settings->ReadString(key, "Auto Code Completions");
    FAutoCompletions = !value || !SameText(std::string_view(*value), std::string_view("False"));
}

void TMLKibitzManager::Parse(TNibEditPos position, TRef<IMLBufferProducer> producer,
                             TRef<INibMLTag> contextTag) {
    if (!producer) return;
    Guarded(FSymbols, [&] { GetParser().Parse(position, std::move(producer), std::move(contextTag)); });
}

bool TMLKibitzManager::InvokeCodeCompletion(TNibInvokeType howInvoked, std::u16string& text) {
    bool result = false;
    Guarded(FSymbols, [&] { result = OpenList(howInvoked, text); });
    return result;
}

// A user control is parsed as if it stood in a body element. That of its schema is only
// known when the first parse has loaded it.
void TMLKibitzManager::ParseView(const TRef<INibEditView>& view) {
    auto parse = [&] {
        GetParser().Parse(view->CaretPos(), MakeRef<TMLBufferProducer>(view, 0), FContextTag);
    };
    auto buffer = view->Buffer();
    bool isControl = !FContextTag && buffer && ExtensionOf(buffer->FileName()) == ".ascx";
    if (isControl) FContextTag = FSymbols.GetTagFromHashList(u"body");
    parse();
    if (!isControl) return;
    auto body = FSymbols.GetTagFromHashList(u"body");
    if (body == FContextTag) return;
    FContextTag = body;
    parse();
}

bool TMLKibitzManager::OpenList(TNibInvokeType howInvoked, std::u16string& text) {
    FContext = ContextNone;
    LoadOptions();
    FEntityMode = false;
    auto services = GetService<INibCodeInsightServices>();
    auto view = services ? services->CurrentEditView() : nullptr;
    if (!view) return false;
    TMLParser& parser = GetParser();
    if (FInvokeKey != '&') ParseView(view);
    FCompletionKey = 0;
    if (FSymbols.GetSchemaFile().empty()) return false;
    if (FInvokeKey == '<' && parser.FInTag && !Supports<INibMLNamedTag>(parser.FCurrentTag)) return false;
    FContextTag = nullptr;
    text = PositionOf(*view)->TakeText(charsets::Token, INibEditPosition::TakeBackwards);
    FInitialFilter = text;
    if (parser.GetInAttribute()) FContext = ContextValue;
    else if (parser.FInTag || parser.FCaretInTagName) FContext = ContextTag;

    bool runTail = true;
    bool isQuiet = parser.FInScript || parser.FInStyle || parser.GetInDocType();
    bool result = !isQuiet && ChooseList(howInvoked, *view, runTail);
    if (runTail) SetListFilter(result, text);
    else ShowWhatCaretIsIn();
    return result;
}

/// Picks the list, and helps with what was typed. The result is that of the invocation
/// so far; runTail says whether the list's filter is to be set.
bool TMLKibitzManager::ChooseList(TNibInvokeType howInvoked, INibEditView& view, bool& runTail) {
    TMLParser& parser = GetParser();
    auto token = PositionOf(view)->TakeText(charsets::Token.With("&"), INibEditPosition::TakeBackwards);
    bool asksByToken = howInvoked == itUser && token.find(u'&') != std::u16string::npos;
    if (FInvokeKey == '&' || asksByToken) {
        runTail = !parser.FInTag && !parser.FCaretInTagName;
        FEntityMode = runTail;
        return true;
    }
    if (parser.GetInAttribute()) {
        bool isHelped = FAutoCompletions && FAutoQuote && parser.FCurrentAttribute->GetCount() != 0;
        if (isHelped && CanWrite(view)) InsertQuotes(view);
        return true;
    }
    FContext = ContextTag;
    if (FInvokeKey == '=') return false;
    bool isInText = !parser.FInTag && !parser.FCaretInTagName;
    if (FAutoCompletions && isInText && CanWrite(view)) HelpTyping(view);
    return true;
}

void TMLKibitzManager::HelpTyping(INibEditView& view) {
    if (!GetParser().GetAutoClosePositions().empty()) CloseEmptyElements(view);
    if (FInvokeKey == '>') InsertClosingTag(view);
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

// An "=" without a quote behind it gets a pair, and the caret goes between.
void TMLKibitzManager::InsertQuotes(INibEditView& view) {
    TMLParser& parser = GetParser();
    auto position = PositionOf(view);
    if (parser.FValueOffset >= 0)
        MoveCaretTo(view, parser.FValueOffset, view.OffsetToCharPos(parser.FValueOffset));
    else if (view.CaretPos().Col < 32767) position->MoveTo(parser.FValuePos.Line, parser.FValuePos.Col);
    auto before =
        position->TakeText(charsets::Blanks, INibEditPosition::TakeBackwards | INibEditPosition::TakeVisible);
    auto place = [](size_t index) {
        return index == std::u16string::npos ? -1 : static_cast<int64_t>(index);
    };
    if (place(before.find_last_of(u"\"'")) < place(before.rfind(u'='))) {
        InsertText(u"\"\"");
        position->MoveBy(0, -1);
    }
    view.Repaint();
}

// Goes from the last place in the document to the first, so that an insertion never
// moves a place yet to come.
void TMLKibitzManager::CloseEmptyElements(INibEditView& view) {
    TMLParser& parser = GetParser();
    auto position = PositionOf(view);
    struct TSavedCaret {
        INibEditView& View;
        int32_t Row, Column, Count = 0;
        ~TSavedCaret() {
            try {
                MoveCaretTo(View, Row, Column + Count);
            } catch (...) {
                // The caret of a host that fails here stays where it is.
            }
        }
    };
    std::u16string token;
    {
        TSavedCaret saved{view, position->Row(), position->Column()};
        auto places = parser.GetAutoClosePositions();
        for (auto place = places.rbegin(); place != places.rend(); ++place) {
            TNibCharPos charPos{place->Position.Col, place->Position.Line};
            MoveCaretTo(view, place->Offset, charPos);
            token = ReadCharacterBefore(view, 1);
            bool onCaretLine = charPos.Line == saved.Row;
            if (token.size() == 1 && token != u" " && token != u"\t") {
                TValueScope<bool> inserting(FInsertingBlank, true);
                InsertText(u" ");
                saved.Count += onCaretLine;
            }
            InsertText(u"/");
            saved.Count += onCaretLine;
        }
        parser.ClearAutoCloseTagPosStack();
    }
    if (FInvokeKey == '>' || token.starts_with(u'>')) InvokeCompletion(view);
    view.Repaint();
}

void TMLKibitzManager::InsertClosingTag(INibEditView& view) {
    auto tag = FSymbols.GetCurrentTag();
    if (!tag) return;
    bool isEmpty = !tag->GetRequiresClosingTag() && tag->GetEmpty();
    std::u16string name = u"</" + std::u16string(tag->GetName()) + u">";
    for (int32_t i = FSymbols.GetClosedTagsCount() - 1; i >= 0 && !isEmpty; --i) {
        if (!SameText(FSymbols.GetCloseTags(i)->GetName(), name)) continue;
        InsertText(name);
        PositionOf(view)->MoveBy(0, -CountCharacters(std::u16string_view(name)));
        FSymbols.DeleteClosedTag(i);
        break;
    }
    view.Repaint();
}

}  // namespace caretwell
