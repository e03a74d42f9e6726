// What a choice would write, for the lists of elements, attributes and entities.
#include <algorithm>

#include "host/ViewHandles.h"
#include "insight/HTMLCodCmplt.h"
#include "insight/TokenChars.h"
#include "parser/MLParser.h"

namespace caretwell {
namespace {

/// Keys that close the list without going into the text as a typed key.
constexpr bool IsCloser(char16_t key) { return key == 0 || key == u'\t' || key == u' ' || key == u'/'; }
constexpr bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }
bool IsNameChar(char16_t c) { return Contains(tokenchars::Token, c); }

// An item that begins with "@" is a server directive.
std::u16string_view OpeningText(std::u16string_view item) { return item.starts_with(u'@') ? u"<%" : u"<"; }

/// What is typed of a tag before the caret, from its "<" on; empty without one. Text that
/// stands directly before the tag is none of it.
std::u16string TakeTagRun(INibEditView& view) {
    std::u16string run = TakeBefore(view, tokenchars::TagRun);
    size_t less = run.rfind(u'<');
    return less == std::u16string::npos ? std::u16string() : run.substr(less);
}

bool IsClosingForm(std::u16string_view run) { return run.size() >= 2 && run[1] == u'/'; }

/// An insertion in place of the token that the list was filtered on. Where the user asked
/// for a list inside a word, the whole word goes.
TEdit ReplaceToken(INibEditView& view, std::u16string text, std::u16string_view after) {
    std::u16string token = TakeBefore(view, tokenchars::Token);
    TEdit edit = ComposeAtCaret(view, std::move(text), {token, after});
    edit.Way = TEdit::TWay::ForToken;
    return edit;
}

}  // namespace

bool TMLKibitzManager::ComposeChoice(int32_t index, char16_t key, TNibEdit& edit) {
    edit = {};
    return Guarded(false, [&] {
        TChoice choice;
        choice.Key = key == u'\r' || key == u';' ? u'\0' : key;
        choice.Index = index >= 0 && index < GetCount() ? index : -1;
        if (choice.IsMade()) choice.Selected = GetSymbolText(index);
        choice.View = CurrentView();
        if (!choice.View) return false;
        TEdit composed = Compose(choice);
        edit = composed;
        return composed.IsWriting() || !composed.EditorId.empty();
    });
}

TEdit TMLKibitzManager::Compose(const TChoice& choice) {
    if (!IsCloser(choice.Key)) return ComposeTypedKey(choice);
    if (!choice.IsMade()) return {};
    TEdit plain = ComposePlain(choice);
    auto editor = GetEditorOf(choice);
    if (!editor) return plain;
    TEdit edit;
    edit.Start = plain.Start;
    edit.End = plain.End;
    edit.Caret = plain.Start;
    edit.EditorId = editor->GetEditorId();
    return edit;
}

/// The choice as its list's own kind writes it, editors or not.
TEdit TMLKibitzManager::ComposePlain(const TChoice& choice) {
    switch (GetListKind()) {
        case TListKind::Entities: return WithClosingKey(ComposeEntity(choice), choice);
        case TListKind::Attributes: return WithClosingKey(ComposeAttribute(choice), choice);
        case TListKind::Elements: return WithClosingKey(ComposeElement(choice), choice);
        case TListKind::Values:
            return ComposeValue(choice,
                                std::u16string(GetParser().FCurrentAttribute->GetValue(choice.Index)));
    }
    return {};
}

// A blank that chose an item parts it from what comes next; a Tab is one too, since no
// tab character was meant. In text it is not wanted before the ";" of an entity, nor after
// a ">" or an attribute that waits for its value, and never between quotes for one.
TEdit TMLKibitzManager::WithClosingKey(TEdit edit, const TChoice& choice) const {
    if (!IsBlank(choice.Key) || !edit.IsWriting()) return edit;
    const TMLParser& parser = GetParser();
    bool isInText = !parser.FInTag && !parser.FCaretInTagName;
    char16_t last = edit.Text.empty() ? u'\0' : edit.Text.back();
    bool isUnwanted = last == u'>' || edit.Text.ends_with(u"=\"\"") ||
                      (isInText && (last == u'=' || last == u'"')) || (FEntityMode && last != u';');
    if (!isUnwanted) AddAtCaret(edit, u" ");
    return edit;
}

// A key that ends the list and goes into the text itself. Only ">" takes the selected
// element along; a closing tag has its own.
TEdit TMLKibitzManager::ComposeTypedKey(const TChoice& choice) {
    std::u16string key(1, choice.Key);
    bool takesElement = choice.Key == u'>' && choice.IsMade() && GetListKind() == TListKind::Elements;
    TEdit edit = takesElement ? ComposeElement(choice) : TEdit();
    if (!edit.IsWriting()) return ComposeAtCaret(*choice.View, key);
    if (!edit.Text.ends_with(u'>')) AddAtCaret(edit, key);
    return edit;
}

TEdit TMLKibitzManager::ComposeEntity(const TChoice& choice) {
    std::u16string text(FSymbols.GetCharList().GetItem(choice.Index));
    std::u16string ahead = TakeAfter(*choice.View, tokenchars::EntityRun);
    std::u16string after = ahead.substr(0, ahead.find(u';'));
    // A "&" typed before a word begins no entity of that name.
    bool isInside = FInvokeKey == 0 && (after.size() < ahead.size() || !FInitialFilter.empty());
    if (!isInside) after.clear();
    if (after.size() == ahead.size() || ahead[after.size()] != u';') text += u';';
    return ReplaceToken(*choice.View, std::move(text), after);
}

/// An attribute of HTML that is true by being there takes no value there. Elsewhere (XML,
/// server controls and directives) it does.
bool TMLKibitzManager::TakesValue(const INibMLTag& tag, INibMLTagAttribute& attribute) const {
    bool isBoolean = attribute.GetCount() == 2 && attribute.FindSymbol(u"true") >= 0 &&
                     attribute.FindSymbol(u"false") >= 0;
    bool isHTML = FSymbols.GetKibitzMode() == kmHTML && !GetParser().FIsXML &&
                  tag.GetName().find_first_of(u":@") == std::u16string_view::npos;
    return attribute.GetCount() > 0 && !(isBoolean && isHTML);
}

// The "=" comes along unless it is there. What stands directly after the caret is the rest
// of the attribute's name if some of it stood before when the list came, and otherwise
// another attribute.
TEdit TMLKibitzManager::ComposeAttribute(const TChoice& choice) {
    auto tag = FSymbols.GetCurrentTag();
    auto attribute = tag ? tag->GetAttribute(choice.Index) : nullptr;
    if (!attribute) return {};
    std::u16string token = TakeBefore(*choice.View, tokenchars::Token);
    std::u16string before =
        ReadCharacterBefore(*choice.View, CountCharacters(std::u16string_view(token)) + 1);
    std::u16string rest = ReadRestOfLine(*choice.View);
    auto word = std::find_if_not(rest.begin(), rest.end(), IsNameChar);
    auto next = std::find_if_not(word, rest.end(), IsBlank);
    std::u16string after(rest.begin(), word);
    bool isOtherName = (token.empty() || FInitialFilter.empty()) && !after.empty();
    bool hasEquals = !isOtherName && next != rest.end() && *next == u'=';

    std::u16string text = choice.Selected;
    bool takesValue = TakesValue(*tag, *attribute) && !hasEquals;
    if (takesValue && FAutoQuote) text += u"=\"\"";
    else if (takesValue && IsBlank(choice.Key)) text += u"=";
    if (!before.empty() && !IsBlank(before[0])) text.insert(0, u" ");
    TEdit edit = ReplaceToken(*choice.View, text, isOtherName ? std::u16string_view() : after);
    if (isOtherName && !IsBlank(choice.Key)) edit.Text += u' ';
    if (takesValue && FAutoQuote) --edit.Caret;
    return edit;
}

TEdit TMLKibitzManager::ComposeElement(const TChoice& choice) {
    std::u16string run = TakeTagRun(*choice.View);
    auto item = FSymbols.GetMLTag(choice.Index);
    if (item && Supports<INibMLClosingTag>(item))
        return ComposeAtCaret(*choice.View, choice.Selected, {run, {}});
    auto tag = FSymbols.GetTagFromHashList(choice.Selected);
    if (!tag) return {};
    if (GetParser().FInDirective)
        return ReplaceToken(
            *choice.View, choice.Selected.substr(AsListed({}).size()),
            FInitialFilter.empty() ? std::u16string() : TakeAfter(*choice.View, tokenchars::Token));
    bool isClosing = IsClosingForm(run);
    bool needsPercent = choice.Selected.starts_with(u'@') && (run.size() < 2 || run[1] != u'%');
    std::u16string text(run.empty() ? OpeningText(choice.Selected) : needsPercent ? u"%" : u"");
    text += choice.Selected;
    bool isComplete = choice.Key == u'>' || GetParser().FCaretInTagName || isClosing;
    if (!isComplete) text += ComposeRequiredAttributes(*tag);
    if (isClosing) text.insert(0, u"/");
    if (!run.empty()) {
        // A "<" typed before a word begins no tag of that name.
        std::u16string after =
            FInvokeKey == 0 ? TakeAfter(*choice.View, tokenchars::Token) : std::u16string();
        return ComposeAtCaret(*choice.View, std::move(text), {std::u16string_view(run).substr(1), after});
    }
    std::u16string word = TakeBefore(*choice.View, tokenchars::Token);
    size_t typed = std::min(GetFilter().size(), word.size());
    return ComposeAtCaret(*choice.View, std::move(text),
                          {std::u16string_view(word).substr(word.size() - typed), {}});
}

std::u16string TMLKibitzManager::ComposeRequiredAttributes(INibMLTag& tag) {
    std::u16string text;
    // Read off the whole list: the range may be the one that the user looks at.
    auto* element = dynamic_cast<THTMLTag*>(&tag);
    if (!element) return text;
    for (const auto& attribute : element->GetAllAttributes()) {
        if (!attribute->GetRequired() || FSymbols.FindTagAttr(attribute.Get())) continue;
        text.append(u" ").append(attribute->GetName());
        if (TakesValue(tag, *attribute)) text += FAutoQuote ? u"=\"\"" : u"=";
    }
    return text;
}

}  // namespace caretwell
