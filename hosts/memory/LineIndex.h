// Which line does an offset lie on, and where does a line begin? Answered without
// reading more of the text than the question needs, and without an entry for each
// line: a mark every few kilobytes, from which the rest is counted.
#pragma once

#include <cstdint>
#include <vector>

#include "memory/GapText.h"

namespace caretwell {

/// Lines count from 1. LF, CR, CR LF and LF CR are one break each; the index of a
/// text without breaks knows the one line 1, which begins at 0.
class TLineIndex {
public:
    struct TLine {
        int32_t Number = 1;
        size_t Start = 0;
    };

    explicit TLineIndex(const TGapText& text) : FText(text) {}

    /// The line of a place. A place between the two bytes of a break belongs to the line before it.
    TLine LineAt(size_t offset) const;
    /// The line of that number: the first if it is below 1, the last if there are not so many.
    TLine LineNumbered(int32_t number) const;
    /// Where the text of the line that holds offset ends, its break excluded.
    size_t LineEnd(size_t offset) const;
    /// Length of the break at offset: 0, 1 or 2.
    size_t BreakLength(size_t offset) const;

    /// The text changed from offset on.
    void Forget(size_t offset);

private:
    struct TScan;

    const TGapText& FText;
    // Lines in order, the first of the text in front; each more than MarkDistance after the last.
    mutable std::vector<TLine> FMarks{TLine{}};
    mutable size_t FScanned = 0;  // marks are complete up to here
    // Where the last question ended, so that the next one on the same line of
    // megabytes goes on there.
    mutable TLine FLastLine;
    mutable size_t FLastPlace = 0;
};

}  // namespace caretwell
