// What a keystroke brings along beside a list: the closing tag after a ">", the slash of
// empty elements in documents that need it, and quotes for a value.
//
//     <div><ul>^  ">" typed   ->   <div><ul>^</ul>
//     <a href=^   "=" typed   ->   <a href="^"          (with Auto Quote)
#include <algorithm>

#include "host/ValueScope.h"
#include "host/ViewHandles.h"
#include "insight/HTMLCodCmplt.h"
#include "insight/TokenChars.h"
#include "parser/MLParser.h"

namespace caretwell {
namespace {

/// Aids keep off a buffer that takes nothing.
bool CanWrite(INibEditView& view) {
    auto buffer = view.Buffer();
    return buffer && buffer->CreateWriter();
}

constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }

/// True if quotes may stand in front of the text: no value begins there.
bool CanQuoteBefore(std::string_view following) {
    return following.empty() || std::string_view(" \t\r\n></?%").find(following[0]) != std::string_view::npos;
}

/// A "</" outside of quotes: the ">" that comes after it is not that of the tag it stands in.
bool HoldsClosingTag(std::string_view tag) {
    char quote = 0;
    for (size_t i = 0; i + 1 < tag.size(); ++i) {
        if (quote) quote = tag[i] == quote ? '\0' : quote;
        else if (tag[i] == '"' || tag[i] == '\'') quote = tag[i];
        else if (tag[i] == '<' && tag[i + 1] == '/') return true;
    }
    return false;
}

/// An "=" without anything after it gets a pair of quotes, and the caret goes between.
std::vector<TNibEdit> ComposeQuotes(INibEditView& view) {
    int32_t caret = CaretOffsetOf(view);
    std::string before = ReadBytes(view, std::max(caret - 64, 0), caret);
    while (!before.empty() && IsBlank(before.back())) before.pop_back();
    if (!before.ends_with('=') || !CanQuoteBefore(ReadBytes(view, caret, caret + 1))) return {};
    return {{.Start = caret, .End = caret, .Text = u"\"\"", .Caret = caret + 1, .EditorId = {}}};
}

}  // namespace

void TMLKibitzManager::ComposeAids(std::vector<TNibEdit>& edits) {
    edits.clear();
    Guarded([&] {
        auto view = CurrentView();
        if (!view) return;
        ParseView(view, FContextTag);
        if (!FSymbols.GetSchemaFile().empty() && !IsInsideKnownTag()) edits = AidsAt(*view);
    });
}

std::vector<TNibEdit> TMLKibitzManager::AidsAt(INibEditView& view) const {
    const TMLParser& parser = GetParser();
    bool asksForEntity =
        FInvokeKey == '&' ||
        (FInvokeKey == 0 && TakeBefore(view, tokenchars::Token.With("&")).find(u'&') != std::u16string::npos);
    if (!FAutoCompletions || asksForEntity || !CanOfferAtCaret()) return {};
    if (parser.GetInAttribute()) {
        bool hasValues = parser.FCurrentAttribute->GetCount() != 0;
        return FAutoQuote && hasValues ? ComposeQuotes(view) : std::vector<TNibEdit>();
    }
    bool isInText = !parser.FInTag && !parser.FCaretInTagName;
    return isInText && FInvokeKey != '=' ? AidsInText(view) : std::vector<TNibEdit>();
}

std::vector<TNibEdit> TMLKibitzManager::AidsInText(INibEditView& view) const {
    std::vector<TNibEdit> edits;
    int32_t caret = CaretOffsetOf(view), moved = caret;
    for (int32_t place : GetParser().GetAutoClosePositions()) {
        if (place != caret - 1) continue;  // what stands elsewhere was written by somebody
        std::string before = ReadBytes(view, place - 1, place);
        bool needsBlank = !before.empty() && !IsBlank(before[0]);
        edits.push_back(
            {.Start = place, .End = place, .Text = needsBlank ? u" /" : u"/", .Caret = 0, .EditorId = {}});
        moved += 1 + needsBlank;
    }
    if (auto closing = FInvokeKey == '>' ? ComposeClosingTag(view, caret) : std::nullopt)
        edits.push_back(std::move(*closing));
    for (TNibEdit& edit : edits) edit.Caret = moved;
    return edits;
}

/// For a ">" that has just ended the opening tag of an element that nothing closes.
std::optional<TNibEdit> TMLKibitzManager::ComposeClosingTag(INibEditView& view, int32_t caret) const {
    auto tag = FSymbols.GetCurrentTag();
    auto* entry = GetParser().GetTagStack();
    if (!tag || !entry || entry->OffsetEnd != caret - 1 || !SameText(entry->Tag->GetName(), tag->GetName()))
        return std::nullopt;
    if (!tag->GetRequiresClosingTag() && tag->GetEmpty()) return std::nullopt;
    if (HoldsClosingTag(ReadBytes(view, entry->OffsetStart, caret))) return std::nullopt;
    std::u16string name = u"</" + std::u16string(tag->GetName()) + u">";
    for (int32_t i = FSymbols.GetClosedTagsCount() - 1; i >= 0; --i)
        if (SameText(FSymbols.GetCloseTags(i)->GetName(), name))
            return TNibEdit{
                .Start = caret, .End = caret, .Text = std::move(name), .Caret = caret, .EditorId = {}};
    return std::nullopt;
}

// What was written is parsed again, so that the list is that of the text as it is now.
void TMLKibitzManager::HelpTyping(const TRef<INibEditView>& view, const TRef<INibMLTag>& context) {
    auto edits = AidsAt(*view);
    if (edits.empty() || !CanWrite(*view)) return;
    TValueScope<bool> inserting(FInsertingBlank, true);
    if (Apply(edits, *view)) ParseView(view, context);
}

}  // namespace caretwell
