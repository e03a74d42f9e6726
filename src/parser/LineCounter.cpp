#include "parser/LineCounter.h"

#include <algorithm>
#include <cstring>

#include "markup/Text.h"

namespace caretwell {

namespace {

/// Counts in bytes first, which compilers turn into wide instructions.
int32_t CountLineFeeds(const char* from, const char* to) {
    constexpr std::ptrdiff_t Stretch = 240;  // a byte counts no further than 255
    int32_t count = 0;
    for (; to - from >= Stretch; from += Stretch) {
        uint8_t inStretch = 0;
        for (std::ptrdiff_t i = 0; i < Stretch; ++i)
            inStretch = static_cast<uint8_t>(inStretch + (from[i] == '\n'));
        count += inStretch;
    }
    return count + static_cast<int32_t>(std::count(from, to, '\n'));
}

}  // namespace

// Without a CR in the stretch every LF is a break of its own, which vectorizes.
const char* TLineCounter::AdvanceOverLineFeeds(const char* from, const char* to, int32_t offset) {
    int32_t count = CountLineFeeds(from, to);
    if (count == 0) return to;
    const char* last = to;
    while (last[-1] != '\n') --last;
    FLine += count;
    FLineStart = offset + static_cast<int32_t>(last - from);
    return to;
}

void TLineCounter::Advance(const char* from, const char* to, int32_t offset) {
    if (from == to) return;
    const char* p = from;
    if (FOpenBreak && IsBreakPair(FOpenBreak, *p)) {
        ++p;
        ++FLineStart;
    }
    bool wasOpen = p != from;
    if (!std::memchr(p, '\r', static_cast<size_t>(to - p))) {
        AdvanceOverLineFeeds(p, to, offset + static_cast<int32_t>(p - from));
        FOpenBreak = p < to && to[-1] == '\n' ? '\n' : 0;
        if (p == to && wasOpen) FOpenBreak = 0;
        return;
    }
    FOpenBreak = 0;
    while (p < to) {
        if (!IsLineBreak(*p)) {
            ++p;
            continue;
        }
        const char* behind = SkipLineBreak(p, to);
        if (behind == to && behind - p == 1) FOpenBreak = *p;
        p = behind;
        ++FLine;
        FLineStart = offset + static_cast<int32_t>(p - from);
    }
}

}  // namespace caretwell
