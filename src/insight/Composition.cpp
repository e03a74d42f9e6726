// What a choice would write, for each of the four lists.
#include <algorithm>
#include <limits>

#include "host/ViewHandles.h"
#include "insight/CompletionChoice.h"
#include "insight/HTMLCodCmplt.h"
#include "parser/MLParser.h"

namespace caretwell {
namespace {

// An item that begins with "@" is a server directive.
std::u16string_view OpeningText(std::u16string_view item) { return item.starts_with(u'@') ? u"<%" : u"<"; }

std::u16string TakeBefore(INibEditView& view, const TCharSet& chars) {
    return PositionOf(view)->TakeText(chars, INibEditPosition::TakeBackwards);
}
std::u16string TakeBehind(INibEditView& view, const TCharSet& chars) {
    return PositionOf(view)->TakeText(chars, 0);
}

/// What is typed of a tag before the caret, from its "<" on where there is one: text
/// that stands directly before the tag is none of it.
std::u16string TakeTagRun(INibEditView& view) {
    std::u16string token = TakeBefore(view, charsets::TagRun);
    size_t less = token.rfind(u'<');
    return less == std::u16string::npos ? token : token.substr(less);
}

int32_t Utf8Length(std::u16string_view text) { return static_cast<int32_t>(ToUtf8(text).size()); }

bool IsClosingForm(std::u16string_view token) { return token.size() >= 2 && token[1] == u'/'; }

bool Contains(const TCharSet& set, char16_t c) { return c > 255 || set.Contains(static_cast<uint8_t>(c)); }

/// Byte offset of the place so many characters before the caret. Bytes that are no UTF-8
/// read as other text than they are, so that the length of a text does not tell it.
int32_t OffsetBefore(INibEditView& view, int32_t characters) {
    if (characters == 0) return CaretOffsetOf(view);
    TSavedPlace place(view);
    place.Position().MoveBy(0, -characters);
    return CaretOffsetOf(view);
}

/// An insertion at the caret, behind so many characters taken away.
TChoiceEdit InsertAtCaret(INibEditView& view, std::u16string text, std::u16string_view deleted) {
    TChoiceEdit edit;
    edit.Way = TChoiceEdit::ceInsert;
    edit.End = CaretOffsetOf(view);
    edit.DeleteBack = CountCharacters(deleted);
    edit.Start = OffsetBefore(view, edit.DeleteBack);
    edit.CaretOffset = edit.Start + Utf8Length(text);
    edit.Text = std::move(text);
    return edit;
}

/// An insertion in place of the token that the list was filtered on.
TChoiceEdit ReplaceToken(INibEditView& view, std::u16string text) {
    TChoiceEdit edit = InsertAtCaret(view, std::move(text), TakeBefore(view, charsets::Token));
    edit.Way = TChoiceEdit::ceReplace;
    edit.DeleteBack = 0;
    return edit;
}

std::u16string LastCharacters(std::u16string_view text, size_t count) {
    return std::u16string(text.substr(text.size() - std::min(count, text.size())));
}

/// True if the rest of the line already holds the "=" of an attribute.
bool HasEqualsAhead(std::u16string_view rest) {
    auto skip = [&](size_t i, auto belongs) {
        while (i < rest.size() && belongs(rest[i])) ++i;
        return i;
    };
    auto isBlank = [](char16_t c) { return c == u'\t' || c == u' '; };
    auto isName = [](char16_t c) { return Contains(charsets::NameRun, c); };
    size_t i = 0;
    if (isBlank(rest[0])) i = skip(0, isBlank);
    else if (isName(rest[0])) i = skip(skip(0, isName), isBlank);
    else return false;
    return i < rest.size() && rest[i] == u'=';
}

}  // namespace

TChoiceEdit TMLKibitzManager::Compose(const TChoice& choice) {
    if (!IsCloser(choice.Key)) return ComposeTypedKey(choice);
    if (choice.Index < 0) return {};
    switch (GetListKind()) {
        case TListKind::Entities: return ComposeEntity(choice);
        case TListKind::Values: return ComposeValue(choice);
        case TListKind::Attributes: return ComposeAttribute(choice);
        case TListKind::Elements: return ComposeElement(choice);
    }
    return {};
}

// A key that ends the list and goes into the text itself. Only ">" takes the selected
// element along.
TChoiceEdit TMLKibitzManager::ComposeTypedKey(const TChoice& choice) {
    std::u16string key(1, choice.Key);
    auto tag = FSymbols.GetCurrentTag();
    bool takesElement = choice.Key == u'>' && tag && !tag->GetShowAttributes() && choice.Index >= 0;
    if (!takesElement) return InsertAtCaret(*choice.View, key, {});
    std::u16string token = TakeTagRun(*choice.View);
    std::u16string text = choice.Selected;
    if (IsClosingForm(token)) text.insert(0, u"/");
    bool hasOpening = token.starts_with(u'<');
    if (!hasOpening) text.insert(0, OpeningText(choice.Selected));
    size_t behind = token.size() - hasOpening;
    return InsertAtCaret(*choice.View, text + key, LastCharacters(token, behind));
}

TChoiceEdit TMLKibitzManager::ComposeEntity(const TChoice& choice) {
    std::u16string text(FSymbols.GetCharList().GetItem(choice.Index));
    if (TakeBehind(*choice.View, charsets::EntityRun).find(u';') == std::u16string::npos) text += u';';
    return ReplaceToken(*choice.View, std::move(text));
}

TChoiceEdit TMLKibitzManager::ComposeAttribute(const TChoice& choice) {
    auto tag = FSymbols.GetCurrentTag();
    if (!tag) return {};
    bool isBlankKey = choice.Key == u' ' || choice.Key == u'\t';
    auto filterLength = CountCharacters(std::u16string_view(tag->GetFilter()));
    std::u16string before = ReadCharacterBefore(*choice.View, filterLength + 1);
    bool needsBlank = !before.empty() && before != u" " && before != u"\t";
    auto attribute = tag->GetAttribute(choice.Index);
    bool hasValues = attribute && attribute->GetCount() > 0;
    if (hasValues) {
        std::u16string rest = ReadRestOfLine(*choice.View);
        if (!rest.empty() && HasEqualsAhead(rest)) hasValues = false;
    }
    std::u16string text = choice.Selected;
    if (hasValues && FAutoQuote) text += u"=\"\"";
    else if (hasValues && isBlankKey) text += u"=";
    if (needsBlank && !isBlankKey) text.insert(0, u" ");
    TChoiceEdit edit = ReplaceToken(*choice.View, std::move(text));
    if (hasValues && FAutoQuote) {
        edit.MoveCaretBy = -1;
        --edit.CaretOffset;
    }
    return edit;
}

TChoiceEdit TMLKibitzManager::ComposeElement(const TChoice& choice) {
    auto item = FSymbols.GetMLTag(choice.Index);
    if (item && Supports<INibMLClosingTag>(item)) return InsertAtCaret(*choice.View, choice.Selected, {});
    std::u16string token = TakeTagRun(*choice.View);
    if (!token.starts_with(u'<')) token.clear();
    bool closing = IsClosingForm(token);
    std::u16string text = choice.Selected;
    if (token.empty()) text.insert(0, OpeningText(choice.Selected));
    else if (choice.Selected.starts_with(u'@') && (token.size() == 1 || token[1] != u'%'))
        text.insert(0, u"%");
    auto tag = FSymbols.GetTagFromHashList(choice.Selected);
    if (!tag) return {};
    if (!GetParser().FCaretInTagName && !closing) text += ComposeRequiredAttributes(*tag);
    if (closing) text.insert(0, u"/");
    std::u16string deleted =
        token.size() > 1 ? token.substr(1) : LastCharacters(GetFilter(), GetFilter().size());
    return InsertAtCaret(*choice.View, std::move(text), deleted);
}

std::u16string TMLKibitzManager::ComposeRequiredAttributes(INibMLTag& tag) {
    std::u16string text;
    // Read off the whole list: the range may be the one that the user looks at.
    auto* element = dynamic_cast<THTMLTag*>(&tag);
    if (!element) return text;
    for (const auto& attribute : element->GetAllAttributes()) {
        if (!attribute->GetRequired() || FSymbols.FindTagAttr(attribute.Get())) continue;
        text.append(u" ").append(attribute->GetName());
        if (attribute->GetCount() > 0) text += FAutoQuote ? u"=\"\"" : u"=";
    }
    return text;
}

// ---- values

namespace {

/// Bytes of a buffer from one offset to another.
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
        start = read < wanted ? end : start + read;
    }
    return bytes;
}

constexpr int32_t EndOfLookAhead(int32_t caret) {
    constexpr int32_t Longest = 4096;
    return caret + std::min(Longest, std::numeric_limits<int32_t>::max() - caret);
}

/// A value as it stands around the caret: from behind the "=" to the caret, and the text
/// that follows.
struct TWrittenValue {
    TWrittenValue(std::string typed, std::string_view following) {
        size_t first = typed.find_first_not_of(" \t\r\n");
        if (first != std::string::npos && (typed[first] == '"' || typed[first] == '\'')) {
            OpenQuote = typed[first];
            typed.erase(0, first + 1);
        }
        size_t stop = following.find_first_of(OpenQuote ? std::string("<>\r\n") + OpenQuote : "<> \t\r\n");
        IsClosed = OpenQuote && stop != std::string_view::npos && following[stop] == OpenQuote;
        // A slash before the end of the tag is part of that end.
        if (!OpenQuote && stop != std::string_view::npos && stop > 0 && following.substr(stop - 1, 2) == "/>")
            --stop;
        if (IsClosed || !OpenQuote) Ahead = static_cast<int32_t>(std::min(stop, following.size()));
        Text = typed.append(following.substr(0, static_cast<size_t>(Ahead)));
    }
    std::string Text;  // without quotes
    char OpenQuote = 0;
    bool IsClosed = false;
    int32_t Ahead = 0;  // bytes of it behind the caret
};

constexpr bool NeedsNoBlank(char c, char alsoFine) { return c == '\t' || c == ' ' || c == alsoFine; }

}  // namespace

/// The value at the caret as it stands in the buffer now.
///
/// The user has typed since the parse, and the engine may have put quotes in, so it is
/// read anew from behind the "=". A quoted value is closed if its quote follows on the
/// line before any angle bracket; otherwise the quote was never closed, and only what was
/// typed before the caret is the value: the text up to some later quote of the page is not
/// replaced. A value without quotes goes up to a blank or the end of the tag.
TAttributeEdit TMLKibitzManager::DescribeValue(INibEditView& view) {
    TMLParser& parser = GetParser();
    TAttributeEdit edit;
    TRef<INibMLTagAttribute> held = parser.FCurrentAttribute;
    auto& attribute = *held;
    edit.AttributeName = attribute.GetName();
    edit.AttributeStart = attribute.GetOffsetStart();
    edit.AttributeEnd = attribute.GetOffsetEnd();
    edit.ValueStart = attribute.GetAttributeValueStartOffset();
    edit.OldValue = parser.GetCurrentTagAttrValueByName(edit.AttributeName);
    edit.OpenQuote = parser.GetCurrentTagAttrStrType(edit.AttributeName);
    edit.CloseQuote = parser.GetCurrentTagAttrStrTypeEnd(edit.AttributeName);
    edit.Context = parser.FContexts;
    edit.View = &view;
    edit.ExtendByFilter = true;
    auto tag = FSymbols.GetCurrentTag();
    edit.TagEnd = tag ? tag->GetOffsetEnd() : 0;
    int32_t caret = CaretOffsetOf(view);
    if (parser.FAttributeValueStart < 0 || caret < parser.FAttributeValueStart) return edit;

    TWrittenValue written(ReadBytes(view, parser.FAttributeValueStart, caret),
                          ReadBytes(view, caret, EndOfLookAhead(caret)));
    edit.AttributeStart = parser.FAttributeStart;
    edit.ValueStart = parser.FAttributeValueStart;
    edit.OldValue = ToUtf16(written.Text);
    edit.OldLength = static_cast<int32_t>(written.Text.size());
    edit.OpenQuote = written.OpenQuote;
    edit.CloseQuote = written.IsClosed ? written.OpenQuote : '\0';
    edit.AttributeEnd = caret + written.Ahead + written.IsClosed;
    edit.ExtendByFilter = false;
    // What other strings of the document were left open does not concern this one.
    edit.Context = pcNone;
    return edit;
}

TChoiceEdit TMLKibitzManager::ComposeValue(const TChoice& choice) {
    TAttributeEdit value = DescribeValue(*choice.View);
    TRef<INibMLTagAttribute> attribute;
    auto tag = FSymbols.GetCurrentTag();
    auto editor = FSymbols.GetAttributeEditorFromHashList(value.AttributeName, attribute,
                                                          tag ? tag->GetName() : std::u16string_view());
    TChoiceEdit edit;
    if (!editor) return edit;
    if (editor->GetEditorId() != "default" &&
        IdentIsAttributeEditor(std::u16string_view(attribute->GetValue(choice.Index)))) {
        edit.Way = TChoiceEdit::ceDialog;
        edit.EditorId = editor->GetEditorId();
        return edit;
    }
    value.NewValue = attribute->GetValue(choice.Index);
    // Every value that comes by way of an editor is quoted.
    bool wasAutoQuote = std::exchange(FAutoQuote, true);
    edit = ComposeAttributeValue(value);
    FAutoQuote = wasAutoQuote;
    return edit;
}

namespace {

bool HoldsOpenRegion(TParserContext context) {
    for (int i = pcHTMLComment; i <= pcString; ++i)
        if (context.Has(static_cast<TParserContexts>(i))) return true;
    return !context.Has(pcNone);
}

std::u16string Quote(char quote) { return std::u16string(1, static_cast<char16_t>(quote ? quote : '"')); }

}  // namespace

TChoiceEdit TMLKibitzManager::ComposeAttributeValue(const TAttributeEdit& value) {
    TChoiceEdit edit;
    bool bothEmpty = value.NewValue.empty() && value.OldValue.empty();
    if (!value.View || (value.NewValue == value.OldValue && !bothEmpty)) return edit;
    std::u16string open = Quote(value.OpenQuote), close = Quote(value.CloseQuote);
    bool isInDocument = value.AttributeStart != value.AttributeEnd;
    if (value.NewValue.empty()) {
        edit.Start = value.AttributeStart;
        edit.End = value.AttributeEnd;
    } else if (HoldsOpenRegion(value.Context)) {
        edit.Start = value.ValueStart;
        edit.End =
            edit.Start + value.Context.Has(pcString) + (value.OpenQuote != 0) + (value.CloseQuote != 0);
        edit.CaretOffset = edit.Start + 1;
        edit.Text = open + value.NewValue + close;
    } else if (isInDocument) {
        auto grown = static_cast<int32_t>(GetFilter().size()) - static_cast<int32_t>(FInitialFilter.size());
        edit.End = value.AttributeEnd + (value.ExtendByFilter ? std::max(grown, 0) : 0);
        edit.Start =
            value.AttributeEnd - (value.OldLength >= 0 ? value.OldLength : Utf8Length(value.OldValue));
        if (value.OpenQuote) edit.Start -= value.CloseQuote ? 2 : 1;
        bool isQuoted = value.OpenQuote || value.CloseQuote || FAutoQuote ||
                        value.NewValue.find_first_of(u" \t") != std::u16string::npos;
        edit.CaretOffset = edit.Start + isQuoted;
        edit.Text = isQuoted ? open + value.NewValue + close : value.NewValue;
    } else {
        edit.Start = edit.End = value.TagEnd;
        bool holdsQuote = value.NewValue.find(u'"') != std::u16string::npos;
        std::u16string quote(1, holdsQuote ? u'\'' : u'"');
        edit.Text = value.AttributeName + u"=" + quote + value.NewValue;
        edit.CaretOffset = edit.Start + Utf8Length(edit.Text);
        edit.Text += quote;
    }
    if (edit.Start == edit.End) {
        // A pure insertion keeps apart from its neighbours.
        std::string before = ReadBytes(*value.View, edit.Start - 1, edit.Start);
        std::string behind = ReadBytes(*value.View, edit.End, edit.End + 1);
        if (before.empty() || !NeedsNoBlank(before[0], '=')) edit.Text.insert(0, u" ");
        if (behind.empty()) edit.Start = value.AttributeStart;
        else if (!NeedsNoBlank(behind[0], '>')) edit.Text += u' ';
    }
    // Nothing is written at the very start of a document.
    if (edit.Start > 0 && edit.End > 0) edit.Way = TChoiceEdit::ceWrite;
    return edit;
}

}  // namespace caretwell
