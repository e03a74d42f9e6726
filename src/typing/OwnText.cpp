#include "typing/OwnText.h"

#include <algorithm>

#include "host/ViewHandles.h"
#include "markup/Edit.h"
#include "markup/Text.h"

namespace caretwell {
namespace {

// No closing tag that anyone types over is longer.
constexpr int32_t LongestAid = 300;
constexpr size_t MostSlashes = 100;
constexpr int32_t LongestLookBack = 65536;
constexpr char32_t KeyEscape = 27;

constexpr bool IsQuote(char32_t c) { return c == '"' || c == '\''; }
/// Neither a blank, nor the end of the tag, nor a quote of one's own begin a value in quotes.
constexpr bool EndsEmptyValue(char32_t key) { return key <= ' ' || key == '>' || IsQuote(key); }

// The characters of the line next to the caret: so many after it, or before it if negative.
std::u16string ReadBeside(INibEditView& view, int32_t count) {
    auto position = PositionOf(view);
    auto block = BlockOf(view);
    position->Save();
    block->Save();
    if (count < 0) block->Finish();
    else block->Start();
    position->MoveBy(0, count);
    if (count < 0) block->Start();
    else block->Finish();
    std::u16string text = block->Text();
    block->Restore();
    position->Restore();
    return text;
}

void DeleteAhead(INibEditView& view, std::u16string_view text) {
    auto position = PositionOf(view);
    int32_t count = CountCharacters(text);
    position->MoveBy(0, count);
    position->DeleteBack(count);
}

/// Is an element of that name open at the end of the text?
bool LeavesOpen(std::string_view text, std::string_view name) {
    int32_t depth = 0;
    for (size_t at = 0; (at = text.find('<', at)) != text.npos;) {
        bool isClosing = text.substr(++at).starts_with('/');
        std::string_view rest = text.substr(at + isClosing);
        size_t end = std::min(rest.find_first_of(" \t\r\n/>"), rest.size());
        if (SameText(rest.substr(0, end), name)) depth = std::max(depth + (isClosing ? -1 : 1), 0);
    }
    return depth > 0;
}

/// Elements in which a closing tag of another closes nothing.
bool IsRawContent(std::u16string_view closingTag) {
    constexpr std::u16string_view Names[] = {u"</script>", u"</style>", u"</textarea>"};
    return std::any_of(std::begin(Names), std::end(Names),
                       [&](std::u16string_view name) { return SameText(closingTag, name); });
}

}  // namespace

TOwnText::TBefore TOwnText::Look(INibEditView& view) {
    return {CaretOffsetOf(view), ReadBeside(view, LongestAid)};
}

// Aids write next to the caret: a closing tag or a quote after it, a quote before it as
// well, a slash before the ">" that was typed.
void TOwnText::NoteAid(INibEditView& view, const TBefore& before) {
    int32_t caret = CaretOffsetOf(view), moved = caret - before.Caret;
    std::u16string ahead = ReadBeside(view, LongestAid);
    if (ahead == before.Ahead) {
        bool isSlash = (moved == 1 || moved == 2) && ReadBeside(view, -2) == u"/>";
        if (!isSlash) return;
        NoteSlash(view, caret, moved);
        return;
    }
    bool isQuote = !ahead.empty() && IsQuote(ahead[0]);
    size_t size = isQuote ? 1 : ahead.find(u'>') + 1;
    std::u16string_view rest = std::u16string_view(ahead).substr(size);
    if (size == 0 || !before.Ahead.starts_with(rest)) return;
    FAhead.insert(FAhead.begin(), {ahead.substr(0, size), caret});
    if (!isQuote || moved != 1) return;
    FBehind = ahead[0];
    FQuotes = TQuotes::Empty;
}

void TOwnText::NoteSlash(INibEditView& view, int32_t end, int32_t size) {
    std::u16string before = ReadBeside(view, -LongestAid);
    size_t start = before.rfind(u'<');
    if (start == before.npos) return;
    size_t nameEnd = before.find_first_of(u" \t/>", ++start);
    if (FSlashes.size() == MostSlashes) FSlashes.erase(FSlashes.begin());
    FSlashes.push_back({before.substr(start, nameEnd - start), end, size});
}

char16_t TOwnText::NoteChoice(INibEditView& view, std::u16string_view name) {
    std::u16string last = ReadBeside(view, -1);
    bool isOwn = last.size() == 1 &&
                 std::u16string_view(u":;=\"'").find(last[0]) != std::u16string_view::npos &&
                 !name.ends_with(last[0]);
    FBehind = isOwn ? last[0] : u'\0';
    bool isPair =
        isOwn && IsQuote(last[0]) && ReadBeside(view, 1) == last && ReadBeside(view, -2).starts_with(u'=');
    FQuotes = isPair ? TQuotes::Empty : TQuotes::None;
    if (isPair) FAhead.insert(FAhead.begin(), {last, CaretOffsetOf(view)});
    return FBehind;
}

void TOwnText::Check(INibEditView& view, int32_t caret) {
    if (CaretOffsetOf(view) != caret) return Forget();
    while (!FSlashes.empty() && FSlashes.back().End > caret) FSlashes.pop_back();
    if (FAhead.empty() || HasClosingTag()) FQuotes = TQuotes::None;
    if (FAhead.empty()) return;
    std::u16string text;
    for (const auto& aid : FAhead) text += aid.Text;
    if (ReadBeside(view, CountCharacters(std::u16string_view(text))) != text) FAhead.clear();
}

void TOwnText::DropQuotes(INibEditView& view, char32_t key) {
    if (FQuotes != TQuotes::Empty || key == KeyEscape || key == FBehind) return;
    FQuotes = TQuotes::Plain;
    if (EndsEmptyValue(key)) TakeQuotes(view);
}

bool TOwnText::TypeOver(INibEditView& view, char32_t key) {
    if (key == KeyEscape) return false;
    if (std::exchange(FBehind, u'\0') == key && key != 0) {
        FQuotes = TQuotes::None;
        return true;
    }
    bool isAhead = !FAhead.empty() && !HasClosingTag() && FAhead.front().Text[0] == key;
    if (isAhead) LeaveQuotes(view);
    return isAhead;
}

void TOwnText::LeaveQuotes(INibEditView& view) {
    FAhead.erase(FAhead.begin());
    FQuotes = TQuotes::None;
    PositionOf(view)->MoveBy(0, 1);
}

void TOwnText::TakeQuotes(INibEditView& view) {
    PositionOf(view)->DeleteBack(1);
    TakeClosingQuote(view);
}

void TOwnText::TakeClosingQuote(INibEditView& view) {
    TakeAids(view, 1);
    FQuotes = TQuotes::None;
}

void TOwnText::TakeAids(INibEditView& view, size_t count) {
    auto end = FAhead.begin() + static_cast<std::ptrdiff_t>(count);
    for (auto aid = FAhead.begin(); aid != end; ++aid) DeleteAhead(view, aid->Text);
    FAhead.erase(FAhead.begin(), end);
}

void TOwnText::TextDeleted(INibEditView& view) {
    FBehind = 0;
    bool isOpeningGone = FQuotes == TQuotes::Empty && ReadBeside(view, -1) == u"=" && !FAhead.empty() &&
                         ReadBeside(view, 1) == FAhead.front().Text;
    if (isOpeningGone) TakeClosingQuote(view);
    std::u16string before = ReadBeside(view, -2);
    bool isEmptied = FQuotes == TQuotes::Plain && before.starts_with(u'=') && IsQuote(before.back());
    if (isEmptied) FQuotes = TQuotes::Empty;
    // The tag is about to become another, and gets its closing tag with the next ">".
    auto isThere = [&](const std::u16string& text) {
        return ReadBeside(view, CountCharacters(std::u16string_view(text))) == text;
    };
    while (HasClosingTag() && CaretOffsetOf(view) < FAhead.front().Start && isThere(FAhead.front().Text))
        TakeAids(view, 1);
}

void TOwnText::KeyTyped(INibEditView& view, char32_t key) {
    if (key != '>' || (FAhead.empty() && FSlashes.empty())) return;
    std::u16string before = ReadBeside(view, -LongestAid);
    size_t start = before.rfind(u"</");
    if (!before.ends_with(u'>') || start == before.npos) return;
    std::u16string_view tag = std::u16string_view(before).substr(start);
    size_t end = tag.find_first_of(u" \t>");
    if (tag.find_first_not_of(u" \t", end) != tag.size() - 1) return;
    int32_t tagStart = CaretOffsetOf(view) - static_cast<int32_t>(ToUtf8(tag).size());
    if (!TakeSlash(view, tag.substr(2, end - 2))) TakeClosingTag(view, tag.substr(0, end), tagStart);
}

// With a tag go those of the elements that it ends as well: "</ul>" ends an open "li", also
// where the list was there before.
void TOwnText::TakeClosingTag(INibEditView& view, std::u16string_view name, int32_t start) {
    auto isExact = [&](const TAid& aid) {
        return aid.Text.size() == name.size() + 1 && aid.Text.starts_with(name);
    };
    auto isSame = [&](const TAid& aid) {
        return aid.Text.size() == name.size() + 1 && StartsWithText(std::u16string_view(aid.Text), name);
    };
    auto found = std::find_if(FAhead.begin(), FAhead.end(), isExact);
    if (found == FAhead.end()) found = std::find_if(FAhead.begin(), FAhead.end(), isSame);
    bool isOwn = found != FAhead.end();
    TakeAids(view,
             isOwn ? static_cast<size_t>(found - FAhead.begin()) + 1 : CountAidsInside(view, name, start));
}

// Closing tags of elements inside the one that the tag at start ends: those that were opened
// after it. None, if nothing of that name is open.
size_t TOwnText::CountAidsInside(INibEditView& view, std::u16string_view name, int32_t start) const {
    if (!HasClosingTag() || IsRawContent(FAhead.front().Text)) return 0;
    std::string word = ToUtf8(name.substr(2));
    size_t count = 0;
    for (; count < FAhead.size() && FAhead[count].IsClosingTag(); ++count)
        if (LeavesOpen(ReadBytes(view, FAhead[count].Start, start), word)) return count;
    if (count == 0) return 0;
    int32_t first = FAhead[count - 1].Start;
    return LeavesOpen(ReadBytes(view, std::max(first - LongestLookBack, 0), first), word) ? count : 0;
}

// "<link />" with a "</link>" later on was meant as "<link>".
bool TOwnText::TakeSlash(INibEditView& view, std::u16string_view name) {
    auto found =
        std::find_if(FSlashes.rbegin(), FSlashes.rend(), [&](auto& slash) { return slash.Name == name; });
    if (found == FSlashes.rend()) return false;
    TSlash slash = *found;
    FSlashes.erase(std::next(found).base());
    int32_t caret = CaretOffsetOf(view);
    MoveCaretTo(view, slash.End);
    bool isThere = ReadBeside(view, -2) == u"/>";
    if (isThere) {
        for (TAid& aid : FAhead)
            if (aid.Start >= slash.End) aid.Start -= slash.Size;
        auto position = PositionOf(view);
        position->MoveBy(0, -1);
        position->DeleteBack(slash.Size);
        caret -= slash.Size;
        for (TSlash& other : FSlashes)
            if (other.End > slash.End) other.End -= slash.Size;
    }
    MoveCaretTo(view, caret);
    return isThere;
}

void TOwnText::Forget() {
    FAhead.clear();
    FBehind = 0;
    FQuotes = TQuotes::None;
    FSlashes.clear();
}

}  // namespace caretwell
