#include "memory/EditPosition.h"

#include <algorithm>

#include "markup/Text.h"

namespace caretwell {
namespace {

// All that leaves ink on the page; the bytes from 128 on stand for whole characters.
constexpr TCharSet VisibleChars = TCharSet().WithRange('!', '~').WithRange(128, 255);

constexpr TCharSet WithVisible(const TCharSet& chars) {
    TCharSet result = chars;
    for (unsigned c = 0; c < 256; ++c)
        if (VisibleChars.Contains(static_cast<uint8_t>(c))) result.Add(static_cast<uint8_t>(c));
    return result;
}

}  // namespace

int32_t TEditPosition::Row() { return Text().LineAt(Caret()); }

int32_t TEditPosition::Column() { return Text().ColumnAt(Caret()); }

void TEditPosition::MoveTo(int32_t row, int32_t column) {
    FView->SetCaretOffset(Text().OffsetOf(row, column));
}

int32_t TEditPosition::StepBack(int32_t from, int32_t count, int32_t stop) {
    for (; count > 0 && from > stop; --count) from = std::max(Text().PreviousCharacter(from), stop);
    return from;
}

int32_t TEditPosition::StepAhead(int32_t from, int32_t count, int32_t stop) {
    for (; count > 0 && from < stop; --count) from = std::min(Text().NextCharacter(from), stop);
    return from;
}

void TEditPosition::MoveBy(int32_t rows, int32_t columns) {
    if (rows != 0) {
        int64_t row = std::clamp<int64_t>(int64_t{Row()} + rows, 1, INT32_MAX);
        MoveTo(static_cast<int32_t>(row), Column());
    }
    int32_t place = Caret();
    if (columns < 0)
        place = StepBack(place, columns == INT32_MIN ? INT32_MAX : -columns, Text().LineStartAt(place));
    else place = StepAhead(place, columns, Text().LineEndAt(place));
    FView->SetCaretOffset(place);
}

void TEditPosition::MoveToLineEnd() { FView->SetCaretOffset(Text().LineEndAt(Caret())); }

void TEditPosition::Save() {
    FView->FSavedCarets.push_back(std::make_unique<TTextMark>(Text(), Caret(), TTextMark::msBehind));
}

void TEditPosition::Restore() {
    auto& saved = FView->FSavedCarets;
    if (saved.empty()) return;
    FView->SetCaretOffset(saved.back()->Offset());
    saved.pop_back();
}

void TEditPosition::DeleteBack(int32_t count) {
    int32_t end = Caret();
    int32_t start = StepBack(end, count, 0);
    Text().Replace(start, end - start, {});
}

void TEditPosition::InsertChar(char16_t c) { Text().Replace(Caret(), 0, ToUtf8(std::u16string_view(&c, 1))); }

std::u16string TEditPosition::TakeText(const TCharSet& chars, uint32_t flags) {
    const TCharSet taken = (flags & TakeVisible) == TakeVisible ? WithVisible(chars) : chars;
    auto isTaken = [&](int32_t offset) { return taken.Contains(static_cast<uint8_t>(Text().At(offset))); };
    int32_t start = Caret(), end = start;
    if (flags & TakeBackwards) {
        for (int32_t next = start; start > 0; start = next) {
            next = Text().PreviousCharacter(start);
            if (!isTaken(next)) break;
        }
    } else {
        while (end < Text().Size() && isTaken(end)) end = Text().NextCharacter(end);
    }
    return ToUtf16(Text().Substring(start, end));
}

void TEditBlock::Save() {
    const auto& block = FView->FBlock;
    FView->FSavedBlocks.push_back(
        std::make_unique<TEditView::TBlockMarks>(FView->Text(), block.Start.Offset(), block.End.Offset()));
}

void TEditBlock::Restore() {
    auto& saved = FView->FSavedBlocks;
    if (saved.empty()) return;
    FView->FBlock.Start.MoveTo(saved.back()->Start.Offset());
    FView->FBlock.End.MoveTo(saved.back()->End.Offset());
    saved.pop_back();
}

void TEditBlock::Start() { FView->FBlock.Start.MoveTo(FView->CaretOffset()); }

void TEditBlock::Finish() { FView->FBlock.End.MoveTo(FView->CaretOffset()); }

std::u16string TEditBlock::Text() {
    auto [start, end] = std::minmax({FView->FBlock.Start.Offset(), FView->FBlock.End.Offset()});
    return ToUtf16(FView->Text().Substring(start, end));
}

}  // namespace caretwell
