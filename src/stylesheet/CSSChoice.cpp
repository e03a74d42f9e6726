// What a choice in a style sheet writes.
//
//     a { co^              color      ->   a { color:^
//     a { color: r^        red        ->   a { color: red;^
//     a { color: var(r^)   red        ->   a { color: var(red^)
#include <algorithm>

#include "host/ViewHandles.h"
#include "stylesheet/CSSCodCmplt.h"

namespace caretwell {
namespace {

constexpr bool IsBlank(char16_t c) { return c == u' ' || c == u'\t'; }
constexpr bool IsLetter(char16_t c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c > 127; }
constexpr bool IsWordChar(char16_t c) {
    return IsLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '_';
}

/// A value may be ended by the engine where nothing of it follows: at the end of the line
/// or the block, of a style attribute or element.
bool EndsValue(std::u16string_view rest) {
    size_t next = std::min(rest.find_first_not_of(u" \t"), rest.size());
    if (next == rest.size() || rest[next] == u'}' || rest[next] == u'<') return true;
    std::u16string_view two = rest.substr(next, 2);
    if (two == u"/*" || two == u"?>" || two == u"%>") return true;
    // The quote of the attribute; one before a letter begins a string of the value.
    bool isQuote = two[0] == u'"' || two[0] == u'\'';
    return isQuote && (two.size() == 1 || std::u16string_view(u" \t/>?%").find(two[1]) != two.npos);
}

bool IsFunction(std::u16string_view item) { return item.ends_with(u"()"); }

/// The name of a font family is one or more identifiers, or else a string.
std::u16string QuoteIfNeeded(std::u16string text) {
    bool isWordStart = true, isString = false;
    for (char16_t c : text) {
        isString = isString || !(IsWordChar(c) || c == u' ') ||
                   (isWordStart && !IsLetter(c) && c != u'-' && c != u'_');
        isWordStart = c == u' ';
    }
    if (!isString) return text;
    for (size_t i = 0; (i = text.find_first_of(u"'\\", i)) != text.npos; i += 2) text.insert(i, 1, u'\\');
    return u"'" + text + u"'";
}

std::u16string UrlOf(std::u16string_view address) {
    std::u16string text(address);
    if (text.find_first_of(u" \t'\"()\\") != text.npos) {
        for (size_t i = 0; (i = text.find_first_of(u"'\\", i)) != text.npos; i += 2) text.insert(i, 1, u'\\');
        text = u"'" + text + u"'";
    }
    return u"url(" + text + u")";
}

// Such keys go on with the text; only the list's own keys open a dialog in its middle.
bool OpensDialog(char16_t key) { return key == 0 || key == u'\t' || key == u'\r'; }

}  // namespace

/// The editor that supplies the value of an item such as "length..."; null for an item
/// that is written as it stands.
TCSSEditor* TCSSKibitzManager::FindEditor(std::u16string_view item) const {
    return FKibitzPos == kpExpr ? FParser.FSymbolTable.LookupEditor(ToUtf8(item)) : nullptr;
}

bool TCSSKibitzManager::ComposeChoice(int32_t index, char16_t key, TNibEdit& edit) {
    edit = {};
    return Guarded(false, [&] {
        TChoice choice{{}, key, CurrentView()};
        if (!choice.View || index < 0 || index >= GetCount()) return false;
        choice.Text = ToUtf16(ItemText(index));
        TEdit composed = Compose(choice);
        edit = composed;
        return composed.IsWriting() || !composed.EditorId.empty();
    });
}

TEdit TCSSKibitzManager::Compose(const TChoice& choice) const {
    const TCSSEditor* editor = FindEditor(choice.Text);
    if (!editor) {
        TChoice plain = choice;
        if (FParser.FSymbolTable.IsFont(ToUtf8(choice.Text))) plain.Text = QuoteIfNeeded(choice.Text);
        return ComposeEdit(plain);
    }
    if (!OpensDialog(choice.Key)) return {};
    TEdit edit = ComposeEdit(choice);
    edit.Way = TEdit::TWay::None;
    edit.Text.clear();
    edit.Caret = edit.Start;
    edit.EditorId = editor->FName.substr(0, editor->FName.find("..."));
    return edit;
}

/// The word at the caret goes. Where the user asked for the list inside of it, its end goes
/// too. A value that a blank has chosen goes on; ";" and ":" are written where they are not
/// there and may stand.
TEdit TCSSKibitzManager::ComposeEdit(const TChoice& choice) const {
    INibEditView& view = *choice.View;
    std::u16string before = TakeBefore(view, CSSWordChars);
    std::u16string after =
        FIsInsideWord && !before.empty() ? TakeAfter(view, CSSWordChars) : std::u16string();
    std::u16string rest = ReadRestOfLine(view).substr(after.size());
    size_t next = std::min(rest.find_first_not_of(u" \t"), rest.size());
    char16_t follows = next < rest.size() ? rest[next] : u'\0';

    bool isFunction = IsFunction(choice.Text);
    std::u16string text = choice.Text, closer;
    if (isFunction && rest.starts_with(u'(')) text.resize(text.size() - 2);
    if (FKibitzPos == kpProperty) {
        if (follows != u':') closer = u":";
    } else if (choice.Key == u' ' && !isFunction) {
        if (!IsBlank(rest.empty() ? u'\0' : rest[0])) closer = u" ";
    } else if (follows != u';' && (choice.Key == u';' || (!FParser.FIsInFunction && EndsValue(rest)))) {
        closer = u";";
    }
    if (closer.empty() && !rest.empty() && IsWordChar(rest[0])) closer = u" ";
    TEdit edit = ComposeAtCaret(view, text + closer, {before, after});
    // Between the parentheses of a function, where its argument is to come.
    if (text.ends_with(u"()")) edit.Caret -= Utf8Length(closer) + 1;
    return edit;
}

void TCSSKibitzManager::Done(bool accepted, bool& displayParams) {
    displayParams = false;
    FKeyUse = TNibKeyUse::Unused;
    if (!accepted) return;
    Guarded([this] {
        auto services = GetService<INibCodeInsightServices>();
        if (services && WriteChoice(*services)) NoteListKey();
    });
}

/// True if there was a choice, whether or not its dialog gave a value.
bool TCSSKibitzManager::WriteChoice(INibCodeInsightServices& services) {
    auto list = services.CurrentList();
    TChoice choice{{}, FClosingKey, services.CurrentEditView()};
    if (!list || list->SelectedIndex() < 0 || !choice.View) return false;
    choice.Text = list->SelectedText();
    TEdit edit = Compose(choice);
    if (!edit.EditorId.empty()) {
        TCSSEditor* editor = FindEditor(choice.Text);
        // Without a value nothing is written, and the word typed stays.
        if (!editor->Execute()) return true;
        bool isUrl = dynamic_cast<TCSSURIEditor*>(editor) != nullptr;
        choice.Text = isUrl ? UrlOf(ToUtf16(editor->FResult)) : ToUtf16(editor->FResult);
        edit = ComposeEdit(choice);
    }
    Write(edit, *choice.View, false);
    return true;
}

}  // namespace caretwell
