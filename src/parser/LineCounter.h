// Lines of a document, counted only for those who ask, in whole stretches.
// LF, CR, LF CR and CR LF each are one break.
#pragma once

#include <cstdint>

namespace caretwell {

class TLineCounter {
public:
    int32_t GetLine() const { return FLine; }            ///< from 1
    int32_t GetLineStart() const { return FLineStart; }  ///< document offset

    /// Goes on over [from, to), whose first byte has the document offset given. Stretches
    /// follow one another without a gap; a break may lie across two of them.
    void Advance(const char* from, const char* to, int32_t offset);

private:
    const char* AdvanceOverLineFeeds(const char* from, const char* to, int32_t offset);

    int32_t FLine = 1;
    int32_t FLineStart = 0;
    char FOpenBreak = 0;  // a break byte that the next byte may belong to
};

}  // namespace caretwell
