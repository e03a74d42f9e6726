#include "parser/LineCounter.h"

#include <algorithm>
#include <cstring>

namespace caretwell {

// Without a CR in the stretch every LF is a break of its own, which vectorizes.
const char* TLineCounter::AdvanceOverLineFeeds(const char* from, const char* to, int32_t offset) {
    auto count = std::count(from, to, '\n');
    if (count == 0) return to;
    const char* last = to;
    while (last[-1] != '\n') --last;
    FLine += static_cast<int32_t>(count);
    FLineStart = offset + static_cast<int32_t>(last - from);
    return to;
}

void TLineCounter::Advance(const char* from, const char* to, int32_t offset) {
    if (from == to) return;
    const char* p = from;
    if (FOpenBreak && *p == (FOpenBreak == '\n' ? '\r' : '\n')) {
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
        if (*p != '\n' && *p != '\r') {
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
