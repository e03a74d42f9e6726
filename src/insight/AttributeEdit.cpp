// What putting a value into a tag writes: a value chosen from a list, the answer of an
// editor, or what another package of the host asks for.
//
//     <p align=l^ef>      left   ->   <p align="left"^>
//     <p align='^'>       left   ->   <p align='left'^>
#include <algorithm>
#include <limits>

#include "host/ValueScope.h"
#include "host/ViewHandles.h"
#include "insight/HTMLCodCmplt.h"
#include "parser/MLParser.h"

namespace caretwell {
namespace {

constexpr std::string_view BlankBytes = " \t\r\n";

constexpr bool IsBlankByte(char c) { return BlankBytes.find(c) != std::string_view::npos; }
constexpr bool IsQuote(char c) { return c == '"' || c == '\''; }
constexpr bool IsNameByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == ':' || c == '_' || c == '.';
}

constexpr bool BeginsName(std::string_view text) { return !text.empty() && IsNameByte(text[0]); }

constexpr int32_t EndOfLookAhead(int32_t caret) {
    constexpr int32_t Longest = 4096;
    return caret + std::min(Longest, std::numeric_limits<int32_t>::max() - caret);
}

/// Length of a name and its "=" at the start of text; 0 if none stands there.
size_t NameAndEquals(std::string_view text) {
    size_t i = 0;
    while (i < text.size() && IsNameByte(text[i])) ++i;
    return i > 0 && i < text.size() && text[i] == '=' ? i + 1 : 0;
}

/// A quote that stands after the "=" of a further attribute opens that one's value. The
/// quotes up to the end of the tag tell: those of whole values come in pairs. The name may
/// begin at the caret, where a value was typed directly before it.
bool OpensNextValue(std::string_view text, size_t quote) {
    size_t name = quote;
    if (name == 0 || text[--name] != '=') return false;
    while (name > 0 && IsNameByte(text[name - 1])) --name;
    if ((name > 0 && !IsBlankByte(text[name - 1])) || text[name] == '=') return false;
    size_t end = std::min(text.find_first_of("<>\r\n", quote), text.size());
    return std::count(text.begin() + static_cast<std::ptrdiff_t>(quote) + 1,
                      text.begin() + static_cast<std::ptrdiff_t>(end), text[quote]) %
               2 !=
           0;
}

/// A value as it stands around the caret: what was typed of it between the "=" and the
/// caret, and what of the text that follows belongs to it.
///
/// A quoted value is closed if its quote follows on the line before any angle bracket, or
/// with nothing but white space before it; otherwise the quote was never closed, and only
/// what was typed before the caret is the value: the text up to some later quote of the
/// page is not replaced. A value without quotes goes up to a blank, the end of the tag or
/// of the server directive, or to the name of the next attribute.
class TWrittenValue {
public:
    TWrittenValue(std::string typed, std::string_view following) : Text(std::move(typed)) {
        size_t first = Text.find_first_not_of(BlankBytes);
        if (first == std::string::npos) {
            ReadAhead(following);
            return;
        }
        OpenQuote = IsQuote(Text[first]) ? Text[first] : '\0';
        Text.erase(0, first + (OpenQuote ? 1 : 0));
        if (OpenQuote) ReadQuoted(following);
        else ReadPlain(following);
    }
    std::string Text;  // without quotes
    char OpenQuote = 0;
    bool IsClosed = false;
    int32_t Ahead = 0;  // bytes after the caret up to the end of Text

private:
    /// Nothing was typed yet: the value, quote and all, may stand after the caret.
    void ReadAhead(std::string_view following) {
        Text.clear();
        size_t blanks = std::min(following.find_first_not_of(" \t"), following.size());
        if (blanks == following.size() || !IsQuote(following[blanks])) {
            if (NameAndEquals(following) == 0) ReadPlain(following);
            return;
        }
        OpenQuote = following[blanks];
        ReadQuoted(following.substr(blanks + 1));
        Ahead += static_cast<int32_t>(blanks) + 1;
    }
    void ReadQuoted(std::string_view following) {
        size_t white = std::min(following.find_first_not_of(BlankBytes), following.size());
        bool closesBelow = white < following.size() && following[white] == OpenQuote;
        size_t stop = closesBelow ? white : following.find_first_of(std::string("<>\r\n") + OpenQuote);
        IsClosed =
            stop < following.size() && following[stop] == OpenQuote && !OpensNextValue(following, stop);
        if (IsClosed) Take(following, stop);
    }
    void ReadPlain(std::string_view following) {
        size_t stop = std::min(following.find_first_of("<> \t\r\n"), following.size());
        // A mark before the ">" is part of the end of a tag.
        bool endsTag = stop > 0 && stop < following.size() && following[stop] == '>';
        if (endsTag && std::string_view("/%?").find(following[stop - 1]) != std::string_view::npos) --stop;
        size_t name = NameAndEquals(following);
        bool isNext = name > 0 && name < following.size() && IsQuote(following[name]);
        if (!isNext) Take(following, stop);
    }
    void Take(std::string_view following, size_t count) {
        Ahead = static_cast<int32_t>(count);
        Text.append(following.substr(0, count));
    }
};

/// The quote that a value is written in, and the value as it stands between.
char QuoteFor(std::u16string& value, char wanted) {
    char other = wanted == '"' ? '\'' : '"';
    auto holds = [&](char quote) { return value.find(static_cast<char16_t>(quote)) != std::u16string::npos; };
    if (!holds(wanted)) return wanted;
    if (!holds(other)) return other;
    for (size_t i = 0; (i = value.find(u'"', i)) != std::u16string::npos;) value.replace(i, 1, u"&quot;");
    return '"';
}

bool HoldsOpenRegion(TParserContext context) {
    for (int i = pcHTMLComment; i <= pcString; ++i)
        if (context.Has(static_cast<TParserContexts>(i))) return true;
    return !context.Has(pcNone);
}

}  // namespace

/// The value at the caret as it stands in the buffer now. The user has typed since the
/// parse, and the engine may have put quotes in, so it is read anew from after the "=".
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

namespace {

/// In a value of several names, as rel and sandbox have them, an item takes the place of the one at
/// the caret, and the others stay.
std::u16string InItsPlace(const TAttributeEdit& value, int32_t caret, std::u16string item) {
    std::string text = ToUtf8(value.OldValue);
    int32_t at = caret - (value.AttributeEnd - (value.CloseQuote != 0) - value.OldLength);
    bool isKnown = value.OldLength >= 0 && value.OpenQuote && at >= 0 && at <= value.OldLength;
    if (!isKnown || item.find(u' ') != item.npos) return item;
    std::string_view whole = text;
    std::string_view before = whole.substr(0, static_cast<size_t>(at));
    before = before.substr(0, before.find_last_of(BlankBytes) + 1);
    std::string_view after =
        whole.substr(std::min(whole.find_first_of(BlankBytes, static_cast<size_t>(at)), whole.size()));
    std::string others(before);
    others += after;
    bool areNames = std::ranges::any_of(others, IsNameByte) &&
                    std::ranges::all_of(others, [](char c) { return IsNameByte(c) || IsBlankByte(c); });
    return areNames ? ToUtf16(before) + item + ToUtf16(after) : item;
}

}  // namespace

/// Every value that comes by way of a list is quoted.
TEdit TMLKibitzManager::ComposeValue(const TChoice& choice, std::u16string text) {
    TAttributeEdit value = DescribeValue(*choice.View);
    value.NewValue = InItsPlace(value, CaretOffsetOf(*choice.View), std::move(text));
    TValueScope<bool> quoting(FAutoQuote, true);
    return WithClosingKey(ComposeAttributeValue(value), choice);
}

/// For an attribute that stands in the document.
TMLKibitzManager::TValueEdit TMLKibitzManager::ReplaceValue(const TAttributeEdit& value) const {
    TValueEdit edit;
    auto grown = static_cast<int32_t>(GetFilter().size()) - static_cast<int32_t>(FInitialFilter.size());
    edit.End = value.AttributeEnd + (value.ExtendByFilter ? std::max(grown, 0) : 0);
    edit.Start = value.AttributeEnd - (value.OldLength >= 0 ? value.OldLength : Utf8Length(value.OldValue));
    if (value.OpenQuote) edit.Start -= value.CloseQuote ? 2 : 1;
    bool isQuoted = value.OpenQuote || value.CloseQuote || FAutoQuote ||
                    value.NewValue.find_first_of(u" \t") != std::u16string::npos;
    edit.ValueOffset = edit.Start + isQuoted;
    edit.Text = value.NewValue;
    if (!isQuoted) return edit;
    std::u16string quote(1,
                         static_cast<char16_t>(QuoteFor(edit.Text, value.OpenQuote ? value.OpenQuote : '"')));
    edit.Text = quote + edit.Text + quote;
    return edit;
}

namespace {

/// A string or an embedded region was left open at the end of the document.
TNibEdit FillOpenRegion(const TAttributeEdit& value) {
    auto quote = [](char c) { return std::u16string(1, static_cast<char16_t>(c ? c : '"')); };
    TNibEdit edit;
    edit.Start = value.ValueStart;
    edit.End = edit.Start + value.Context.Has(pcString) + (value.OpenQuote != 0) + (value.CloseQuote != 0);
    edit.Text = quote(value.OpenQuote) + value.NewValue + quote(value.CloseQuote);
    return edit;
}

/// For an attribute that the tag does not have yet.
TNibEdit AddAttribute(const TAttributeEdit& value) {
    TNibEdit edit;
    std::u16string text = value.NewValue;
    std::u16string quote(1, static_cast<char16_t>(QuoteFor(text, '"')));
    edit.Start = edit.End = value.TagEnd;
    edit.Text = value.AttributeName + u"=" + quote + text + quote;
    return edit;
}

/// A pure insertion keeps apart from its neighbours. The result is what was added after.
std::u16string KeepApart(TNibEdit& edit, INibEditView& view) {
    std::string before = ReadBytes(view, edit.Start - 1, edit.Start);
    std::string after = ReadBytes(view, edit.End, edit.End + 1);
    if (before.empty() || (!IsBlankByte(before[0]) && before[0] != '=')) edit.Text.insert(0, u" ");
    return after.empty() || IsBlankByte(after[0]) || after[0] == '>' ? u"" : u" ";
}

}  // namespace

TMLKibitzManager::TValueEdit TMLKibitzManager::ComposeAttributeValue(const TAttributeEdit& value) const {
    TValueEdit edit;
    bool isInDocument = value.AttributeStart != value.AttributeEnd;
    if (value.NewValue.empty()) {
        edit.Start = value.AttributeStart;
        edit.End = value.AttributeEnd;
    } else if (HoldsOpenRegion(value.Context)) {
        static_cast<TNibEdit&>(edit) = FillOpenRegion(value);
        edit.ValueOffset = edit.Start + 1;
    } else if (isInDocument) {
        edit = ReplaceValue(value);
    } else {
        static_cast<TNibEdit&>(edit) = AddAttribute(value);
        edit.ValueOffset = edit.Start + Utf8Length(edit.Text) - 1;
    }
    std::u16string blank;
    if (edit.Start == edit.End) blank = KeepApart(edit, *value.View);
    else if (BeginsName(ReadBytes(*value.View, edit.End, edit.End + 1))) blank = u" ";
    edit.Caret = edit.Start + Utf8Length(edit.Text);
    edit.Text += blank;
    // Nothing is written at the very start of a document.
    if (edit.Start > 0 && edit.End > 0) edit.Way = TEdit::TWay::Writer;
    return edit;
}

bool TMLKibitzManager::ExecuteAttributeEditor(const TAttributeEdit& request, int32_t index,
                                              std::u16string_view tagName) {
    return Guarded(false, [&] {
        TRef<INibMLTagAttribute> attribute;
        auto editor = FSymbols.GetAttributeEditorFromHashList(request.AttributeName, attribute, tagName);
        TValueScope<bool> quoting(FAutoQuote, true);
        if (!editor || !editor->Execute(attribute.Get(), index)) return false;
        TAttributeEdit edit = request;
        edit.AttributeName = attribute->GetName();
        edit.NewValue = editor->GetValue();
        return ApplyAttributeValue(edit);
    });
}

bool TMLKibitzManager::ApplyAttributeValue(const TAttributeEdit& value) {
    return Guarded(false, [&] {
        bool bothEmpty = value.NewValue.empty() && value.OldValue.empty();
        if (!value.View || (value.NewValue == value.OldValue && !bothEmpty)) return false;
        TValueEdit edit = ComposeAttributeValue(value);
        bool isWritten = Apply(edit, *value.View, FForceDelete);
        if (isWritten && value.MoveCaret && !value.NewValue.empty())
            MoveCaretTo(*value.View, edit.ValueOffset);
        return isWritten;
    });
}

}  // namespace caretwell
