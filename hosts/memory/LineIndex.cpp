#include "memory/LineIndex.h"

#include <algorithm>

#include "markup/Text.h"

namespace caretwell {
namespace {

constexpr size_t MarkDistance = 4096;

struct TBreakCount {
    size_t Count = 0;
    size_t BehindLast = 0;  // place after the last break; 0 if there was none
};

TBreakCount CountByByte(std::string_view piece) {
    TBreakCount result;
    for (size_t i = 0; i < piece.size(); ++i) {
        if (!IsLineBreak(piece[i])) continue;
        if (i + 1 < piece.size() && IsBreakPair(piece[i], piece[i + 1])) ++i;
        ++result.Count;
        result.BehindLast = i + 1;
    }
    return result;
}

// Counts the places below size that isHit says yes to. A byte-wide sum, emptied
// before it can run over, lets the compiler look at sixteen places at a time.
template <class THit>
size_t CountPlaces(size_t size, THit isHit) {
    size_t count = 0;
    for (size_t start = 0; start < size; start += 255) {
        uint8_t hits = 0;
        size_t end = std::min(size, start + 255);
        for (size_t i = start; i < end; ++i) hits = static_cast<uint8_t>(hits + isHit(i));
        count += hits;
    }
    return count;
}

// Nearly every text has one kind of break throughout, which is counted without a
// look at single breaks.
TBreakCount CountBreaks(std::string_view piece) {
    const char* bytes = piece.data();
    auto countOf = [&](char c) { return CountPlaces(piece.size(), [=](size_t i) { return bytes[i] == c; }); };
    size_t lineFeeds = countOf('\n');
    if (piece.find('\r') == std::string_view::npos) return {lineFeeds, lineFeeds ? piece.rfind('\n') + 1 : 0};
    size_t returns = countOf('\r');
    if (lineFeeds == 0) return {returns, piece.rfind('\r') + 1};
    size_t pairs = CountPlaces(piece.size() - 1, [=](size_t i) {
        return static_cast<uint8_t>(bytes[i] == '\r') & static_cast<uint8_t>(bytes[i + 1] == '\n');
    });
    if (lineFeeds == returns && pairs == returns) return {pairs, piece.rfind('\n') + 1};
    return CountByByte(piece);
}

}  // namespace

// Walks forward from a line's start. Its place is never inside a break.
struct TLineIndex::TScan {
    const TLineIndex& Index;
    size_t Place;
    TLine Line;

    TScan(const TLineIndex& index, TLine from) : Index(index), Place(from.Start), Line(from) {}

    // One step towards limit, at most MarkDistance long. False if none is possible.
    bool Step(size_t limit) {
        if (Place >= limit) return false;
        std::string_view piece = Index.FText.Run(Place).substr(0, std::min(limit - Place, MarkDistance));
        while (!piece.empty() && MaySplitPair(piece)) piece.remove_suffix(1);
        if (piece.empty()) return StepOverBreaks(limit);
        TBreakCount breaks = CountBreaks(piece);
        if (breaks.Count) {
            Line.Number += static_cast<int32_t>(breaks.Count);
            Line.Start = Place + breaks.BehindLast;
        }
        Place += piece.size();
        return true;
    }

    // Two breaks of one kind side by side are never a pair.
    bool MaySplitPair(std::string_view piece) const {
        size_t end = Place + piece.size();
        if (!IsLineBreak(piece.back()) || end >= Index.FText.Size()) return false;
        return IsBreakPair(piece.back(), Index.FText.At(end));
    }

    bool StepOverBreaks(size_t limit) {
        size_t from = Place;
        while (size_t length = Index.BreakLength(Place)) {
            if (Place + length > limit || Place - from > MarkDistance) break;
            Place += length;
            Line = {Line.Number + 1, Place};
        }
        return Place > from;
    }
};

size_t TLineIndex::BreakLength(size_t offset) const {
    size_t size = FText.Size();
    if (offset >= size || !IsLineBreak(FText.At(offset))) return 0;
    return offset + 1 < size && IsBreakPair(FText.At(offset), FText.At(offset + 1)) ? 2 : 1;
}

TLineIndex::TLine TLineIndex::LineAt(size_t offset) const {
    // Going back on one line.
    if (offset >= FLastLine.Start && offset <= FLastPlace) return FLastLine;
    auto behind = std::upper_bound(FMarks.begin(), FMarks.end(), offset,
                                   [](size_t place, const TLine& mark) { return place < mark.Start; });
    bool isGrowing = behind == FMarks.end();
    TScan scan(*this, *std::prev(behind));
    if (FLastPlace <= offset && FLastLine.Start >= scan.Line.Start) {
        scan.Line = FLastLine;
        scan.Place = FLastPlace;
    }
    while (scan.Step(offset))
        if (isGrowing && scan.Line.Start > FMarks.back().Start + MarkDistance) FMarks.push_back(scan.Line);
    FScanned = std::max(FScanned, scan.Place);
    FLastLine = scan.Line;
    FLastPlace = scan.Place;
    return scan.Line;
}

TLineIndex::TLine TLineIndex::LineNumbered(int32_t number) const {
    size_t size = FText.Size();
    while (FMarks.back().Number < number && FScanned < size)
        LineAt(std::min(size, FScanned + std::max(FScanned, MarkDistance)));
    auto behind = std::upper_bound(FMarks.begin(), FMarks.end(), number,
                                   [](int32_t n, const TLine& mark) { return n < mark.Number; });
    TLine line = behind == FMarks.begin() ? FMarks.front() : *std::prev(behind);
    while (line.Number < number) {
        size_t end = LineEnd(line.Start);
        size_t length = BreakLength(end);
        if (!length) break;
        line = {line.Number + 1, end + length};
    }
    return line;
}

// In pieces: one kind of break may be missing from the whole of the text.
size_t TLineIndex::LineEnd(size_t offset) const {
    while (true) {
        std::string_view piece = FText.Run(offset).substr(0, MarkDistance);
        if (piece.empty()) return offset;
        size_t lineFeed = std::min(piece.find('\n'), piece.size());
        size_t found = std::min(piece.substr(0, lineFeed).find('\r'), lineFeed);
        if (found < piece.size()) return offset + found;
        offset += piece.size();
    }
}

void TLineIndex::Forget(size_t offset) {
    // A line's start depends on the byte at it as well: a CR there may join an LF before it.
    while (FMarks.size() > 1 && FMarks.back().Start >= offset) FMarks.pop_back();
    FScanned = std::min(FScanned, offset);
    if (FLastPlace < offset) return;
    // The byte before the change is as good a place to go on from, if it is of the
    // same line and surely not inside a break.
    if (FLastLine.Start + 2 < offset && !IsLineBreak(FText.At(offset - 2))) {
        FLastPlace = offset - 1;
    } else {
        FLastLine = TLine{};
        FLastPlace = 0;
    }
}

}  // namespace caretwell
