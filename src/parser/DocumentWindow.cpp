#include "parser/DocumentWindow.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "markup/Text.h"

namespace caretwell {

bool TDocumentWindow::Open(IMLBufferProducer& producer, TNibEditPos caret) {
    *this = TDocumentWindow();
    FProducer = &producer;
    FCaretPos = caret;
    auto internal = QueryAs<IMLBufferProducerInternal>(&producer);
    INibEditView* view = internal ? internal->GetEditView() : nullptr;
    // A caret on line 0 has nothing before it; -1 equals no offset.
    if (caret.Line >= 1 && view) LocateCaretByView(*view, caret);
    FIsCaretKnown = caret.Line < 1 || view;
    return Fill();
}

// A view with lines longer than the position can say gives the exact place of its caret.
void TDocumentWindow::LocateCaretByView(INibEditView& view, TNibEditPos caret) {
    auto offsets = QueryAs<INibOffsetView>(&view);
    FCaretOffset = offsets && view.CaretPos() == caret ? offsets->CaretOffset()
                                                       : view.CharPosToOffset(view.EditPosToCharPos(caret));
}

void TDocumentWindow::LocateCaretByLine() {
    const char* p = FStart;
    while (FLines.GetLine() < FCaretPos.Line && p < FEnd) {
        auto* behind = static_cast<const char*>(std::find_if(p, FEnd, IsLineBreak));
        if (behind < FEnd) behind = SkipLineBreak(behind, FEnd);
        FLines.Advance(p, behind, OffsetOf(p));
        p = behind;
    }
    FCaretOffset = std::numeric_limits<int32_t>::max();
    if (FLines.GetLine() != FCaretPos.Line) return;
    int64_t wanted = int64_t{FLines.GetLineStart()} + FCaretPos.Col - 1;
    const char* lineEnd = std::find_if(p, FEnd, IsLineBreak);
    if (lineEnd < FEnd) wanted = std::min<int64_t>(wanted, OffsetOf(SkipLineBreak(lineEnd, FEnd)));
    else if (wanted > OffsetOf(FEnd)) return;  // further down the line, in a block to come
    FCaretOffset = static_cast<int32_t>(std::max<int64_t>(wanted, 0));
    FIsCaretKnown = true;
}

void TDocumentWindow::PlaceCaret() {
    if (!FIsCaretKnown) LocateCaretByLine();
    int64_t index = int64_t{FCaretOffset} - FOffset;
    int64_t size = FEnd - FStart;
    // While data flows, the zero byte lies before a caret that stands at that very place.
    int64_t endIsBefore = FHasEnded ? size + (index > size) : size + (index >= size);
    if (index >= size) index = endIsBefore;
    FCaret = FStart + std::max<int64_t>(index, -1);
}

void TDocumentWindow::SetBlock(const char* start, const char* end, int32_t offset) {
    FStart = start;
    FEnd = end;
    FOffset = offset;
    PlaceCaret();
}

bool TDocumentWindow::Fill() {
    if (FHasEnded || !FProducer->FillBuffer()) {
        FHasEnded = true;
        return false;
    }
    const char* start = FProducer->BufferAtOffset(0);
    // The producer tells the size of a block only by what lies inside it.
    int32_t low = 0, high = TMLBufferProducer::BlockSize + 1;
    while (high - low > 1) {
        int32_t middle = low + (high - low) / 2;
        (FProducer->BufferAtOffset(middle) ? low : high) = middle;
    }
    SetBlock(start, start + high, FProducer->BufferOffset(start));
    return true;
}

bool TDocumentWindow::Next() {
    KeepCapture(FEnd);
    bool hasMore = Fill();
    if (hasMore) FStitched.clear();
    else PlaceCaret();
    if (FCaptureFrom) FCaptureFrom = hasMore ? FStart : FEnd;
    return hasMore;
}

bool TDocumentWindow::Extend(const char* p) {
    if (!IsCutInToken(p)) return false;
    std::string kept(p, FEnd);
    int32_t offset = OffsetOf(p);
    std::string captured = FCaptureFrom ? std::string(FCaptureFrom, p) : std::string();
    if (!Fill()) {
        PlaceCaret();
        return false;
    }
    kept.append(FStart, FEnd);
    FStitched = std::move(kept);
    SetBlock(FStitched.data(), FStitched.data() + FStitched.size(), offset);
    FCaptured += captured;
    if (FCaptureFrom) FCaptureFrom = FStart;
    return true;
}

std::string TDocumentWindow::TakeCapture(const char* p) {
    KeepCapture(p);
    FCaptureFrom = nullptr;
    return std::exchange(FCaptured, {});
}

}  // namespace caretwell
