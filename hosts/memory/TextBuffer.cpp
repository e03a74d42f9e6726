#include "memory/TextBuffer.h"

#include <utf8.h>

#include <algorithm>
#include <bit>
#include <cstring>

#include "markup/Text.h"

namespace caretwell {
namespace {

constexpr bool IsContinuation(char c) { return (static_cast<uint8_t>(c) & 0xC0) == 0x80; }

// Length of the longest beginning of text that is ASCII throughout, eight bytes at a time.
size_t AsciiPrefix(std::string_view text) {
    size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        uint64_t word;
        std::memcpy(&word, text.data() + i, 8);
        word &= 0x8080808080808080u;
        if (!word) continue;
        if constexpr (std::endian::native == std::endian::little)
            return i + static_cast<size_t>(std::countr_zero(word)) / 8;
        break;
    }
    while (i < text.size() && static_cast<uint8_t>(text[i]) < 0x80) ++i;
    return i;
}

// Length of the first character of text; 1 for a byte that fits nowhere.
int32_t CharacterLengthOf(std::string_view text) {
    uint8_t lead = static_cast<uint8_t>(text[0]);
    int32_t length = UTF8CharLength(lead);
    if (length == 1 || text.size() < static_cast<size_t>(length)) return 1;
    // The common ones without a closer look: these leads allow any tail.
    if (lead >= 0xC2 && lead < 0xE0) return IsContinuation(text[1]) ? 2 : 1;
    if (lead > 0xE0 && lead < 0xED) return IsContinuation(text[1]) && IsContinuation(text[2]) ? 3 : 1;
    return utf8::is_valid(text.data(), text.data() + length) ? length : 1;
}

std::string CutToMaximum(std::string text) {
    if (text.size() > static_cast<size_t>(TTextBuffer::MaximumSize)) text.resize(TTextBuffer::MaximumSize);
    return text;
}

}  // namespace

TTextMark::TTextMark(TTextBuffer& buffer, int32_t offset, TSide side)
    : FBuffer(buffer), FOffset(static_cast<int32_t>(buffer.Clamp(offset))), FSide(side) {
    FBuffer.FMarks.push_back(this);
}

TTextMark::~TTextMark() { std::erase(FBuffer.FMarks, this); }

void TTextMark::MoveTo(int32_t offset) { FOffset = static_cast<int32_t>(FBuffer.Clamp(offset)); }

TTextBuffer::TTextBuffer(std::string text) : FText(CutToMaximum(std::move(text))) {}

size_t TTextBuffer::Clamp(int32_t offset) const { return static_cast<size_t>(std::clamp(offset, 0, Size())); }

std::string TTextBuffer::Substring(int32_t start, int32_t end) const {
    size_t from = Clamp(start), to = Clamp(end);
    return from < to ? FText.Substring(from, to - from) : std::string();
}

int32_t TTextBuffer::Read(int32_t offset, char* dest, int32_t count) const {
    if (offset < 0 || offset >= Size() || count <= 0) return 0;
    int32_t available = std::min(count, Size() - offset);
    FText.Copy(static_cast<size_t>(offset), static_cast<size_t>(available), dest);
    return available;
}

char TTextBuffer::At(int32_t offset) const {
    return offset >= 0 && offset < Size() ? FText.At(static_cast<size_t>(offset)) : '\0';
}

// ---------------------------------------------------------------- characters

// Bytes of the character at offset, which lies in the text; 1 for a byte that fits nowhere.
int32_t TTextBuffer::CharacterLength(int32_t offset) const {
    std::string_view run = FText.Run(static_cast<size_t>(offset));
    if (run.size() >= 4) return CharacterLengthOf(run);
    char bytes[4];
    int32_t got = Read(offset, bytes, 4);
    return CharacterLengthOf({bytes, static_cast<size_t>(got)});
}

int32_t TTextBuffer::NextCharacter(int32_t offset) const {
    if (offset < 0) return 0;
    return offset < Size() ? offset + CharacterLength(offset) : Size();
}

int32_t TTextBuffer::CharacterStart(int32_t offset) const {
    int32_t place = static_cast<int32_t>(Clamp(offset));
    if (place == Size() || !IsContinuation(At(place))) return place;
    for (int32_t start = place - 1; start >= 0 && place - start < 4; --start)
        if (!IsContinuation(At(start))) return start + CharacterLength(start) > place ? start : place;
    return place;
}

int32_t TTextBuffer::PreviousCharacter(int32_t offset) const {
    int32_t place = static_cast<int32_t>(Clamp(offset));
    return place == 0 ? 0 : CharacterStart(place - 1);
}

int32_t TTextBuffer::NextPlace(int32_t offset) const {
    int32_t place = static_cast<int32_t>(Clamp(offset));
    int32_t length = static_cast<int32_t>(FLines.BreakLength(static_cast<size_t>(place)));
    return length ? place + length : NextCharacter(place);
}

int32_t TTextBuffer::PreviousPlace(int32_t offset) const {
    int32_t place = static_cast<int32_t>(Clamp(offset));
    int32_t line = LineAt(place);
    bool isBehindBreak = line > 1 && LineStart(line) == place;
    return isBehindBreak ? LineEndAt(LineStart(line - 1)) : PreviousCharacter(place);
}

int32_t TTextBuffer::CountCharactersBetween(int32_t start, int32_t end) const {
    int32_t count = 0;
    while (start < end) {
        std::string_view run =
            FText.Run(static_cast<size_t>(start)).substr(0, static_cast<size_t>(end - start));
        size_t place = 0;
        while (true) {
            size_t ascii = AsciiPrefix(run.substr(place));
            place += ascii;
            count += static_cast<int32_t>(ascii);
            if (run.size() - place < 4) break;
            place += static_cast<size_t>(CharacterLengthOf(run.substr(place)));
            ++count;
        }
        start += static_cast<int32_t>(place);
        // A character may lie across the end of the run.
        if (start == end) break;
        start += CharacterLength(start);
        ++count;
    }
    return count;
}

// --------------------------------------------------------------------- lines

int32_t TTextBuffer::LineAt(int32_t offset) const { return FLines.LineAt(Clamp(offset)).Number; }

int32_t TTextBuffer::LineStart(int32_t line) const {
    return static_cast<int32_t>(FLines.LineNumbered(line).Start);
}

int32_t TTextBuffer::LineStartAt(int32_t offset) const {
    return static_cast<int32_t>(FLines.LineAt(Clamp(offset)).Start);
}

int32_t TTextBuffer::LineEndAt(int32_t offset) const {
    return static_cast<int32_t>(FLines.LineEnd(FLines.LineAt(Clamp(offset)).Start));
}

int32_t TTextBuffer::ColumnAt(int32_t offset) const {
    int32_t place = static_cast<int32_t>(Clamp(offset));
    return CountCharactersBetween(LineStartAt(place), CharacterStart(place)) + 1;
}

int32_t TTextBuffer::OffsetOf(int32_t line, int32_t column) const {
    int32_t place = LineStart(line);
    int32_t end = static_cast<int32_t>(FLines.LineEnd(static_cast<size_t>(place)));
    for (int32_t left = column - 1; left > 0 && place < end;) {
        size_t most = static_cast<size_t>(std::min(left, end - place));
        int32_t ascii =
            static_cast<int32_t>(AsciiPrefix(FText.Run(static_cast<size_t>(place)).substr(0, most)));
        place += ascii;
        left -= ascii;
        if (left == 0 || place >= end || static_cast<uint8_t>(At(place)) < 0x80) continue;
        place += CharacterLength(place);
        --left;
    }
    return place;
}

std::string TTextBuffer::LineBreak() const {
    size_t end = FLines.LineEnd(0);
    size_t length = FLines.BreakLength(end);
    return length ? FText.Substring(end, length) : "\n";
}

// ------------------------------------------------------------------- changes

bool TTextBuffer::Replace(int32_t offset, int32_t count, std::string_view text) {
    if (FIsReadOnly) return false;
    int32_t start = static_cast<int32_t>(Clamp(offset));
    int32_t removed = std::clamp(count, 0, Size() - start);
    if (text.size() > static_cast<size_t>(MaximumSize - (Size() - removed))) return false;
    if (removed == 0 && text.empty()) return true;

    TChange change{start, Substring(start, start + removed), std::string(text)};
    Apply(start, change.Removed, change.Inserted);
    bool isContinued = FOpenSteps > 0 && FStepHasChange;
    if (!isContinued) FUndo.emplace_back();
    FUndo.back().Changes.push_back(std::move(change));
    FStepHasChange = true;
    FRedo.clear();
    return true;
}

void TTextBuffer::Apply(int32_t offset, std::string_view removed, std::string_view inserted) {
    FText.Replace(static_cast<size_t>(offset), removed.size(), inserted);
    FLines.Forget(static_cast<size_t>(offset));
    MoveMarks(offset, static_cast<int32_t>(removed.size()), static_cast<int32_t>(inserted.size()));
    ++FRevision;
}

void TTextBuffer::MoveMarks(int32_t offset, int32_t removed, int32_t inserted) {
    for (TTextMark* mark : FMarks) {
        int32_t& place = mark->FOffset;
        if (place > offset + removed) place += inserted - removed;
        else if (place > offset) place = offset + (mark->FSide == TTextMark::msBehind ? inserted : 0);
        else if (place == offset && mark->FSide == TTextMark::msBehind) place += inserted;
    }
}

std::optional<int32_t> TTextBuffer::Undo() {
    if (FUndo.empty() || FIsReadOnly) return std::nullopt;
    TStep step = std::move(FUndo.back());
    FUndo.pop_back();
    const auto& changes = step.Changes;
    for (auto change = changes.rbegin(); change != changes.rend(); ++change)
        Apply(change->Offset, change->Inserted, change->Removed);
    FStepHasChange = false;
    const TChange& first = changes.front();
    int32_t place = step.CaretBefore.value_or(first.Offset + static_cast<int32_t>(first.Removed.size()));
    FRedo.push_back(std::move(step));
    return place;
}

std::optional<int32_t> TTextBuffer::Redo() {
    if (FRedo.empty() || FIsReadOnly) return std::nullopt;
    TStep step = std::move(FRedo.back());
    FRedo.pop_back();
    for (const TChange& change : step.Changes) Apply(change.Offset, change.Removed, change.Inserted);
    FStepHasChange = false;
    const TChange& last = step.Changes.back();
    int32_t place = step.CaretAfter.value_or(last.Offset + static_cast<int32_t>(last.Inserted.size()));
    FUndo.push_back(std::move(step));
    return place;
}

void TUndoStep::NoteCaret(int32_t before, int32_t after) {
    if (!FBuffer.FStepHasChange) return;
    FBuffer.FUndo.back().CaretBefore = before;
    FBuffer.FUndo.back().CaretAfter = after;
}

}  // namespace caretwell
