#include "memory/GapText.h"

#include <algorithm>
#include <cstring>

namespace caretwell {

std::string_view TGapText::Run(size_t offset) const {
    if (offset < FGap) return {FBytes.data() + offset, FGap - offset};
    return {FBytes.data() + offset + FGapSize, Size() - offset};
}

void TGapText::Copy(size_t offset, size_t count, char* dest) const {
    size_t before = offset < FGap ? std::min(count, FGap - offset) : 0;
    if (before) std::memcpy(dest, FBytes.data() + offset, before);
    if (count > before)
        std::memcpy(dest + before, FBytes.data() + offset + before + FGapSize, count - before);
}

std::string TGapText::Substring(size_t offset, size_t count) const {
    std::string result(count, '\0');
    Copy(offset, count, result.data());
    return result;
}

void TGapText::Replace(size_t offset, size_t count, std::string_view text) {
    MoveGap(offset);
    FGapSize += count;
    if (text.size() > FGapSize) GrowGap(text.size());
    text.copy(FBytes.data() + FGap, text.size());
    FGap += text.size();
    FGapSize -= text.size();
}

void TGapText::MoveGap(size_t offset) {
    char* bytes = FBytes.data();
    if (offset < FGap) std::memmove(bytes + offset + FGapSize, bytes + offset, FGap - offset);
    else std::memmove(bytes + FGap, bytes + FGap + FGapSize, offset - FGap);
    FGap = offset;
}

// A hole in proportion to the text keeps the sum of all growing linear.
void TGapText::GrowGap(size_t needed) {
    size_t extra = needed - FGapSize + std::max<size_t>(256, Size() / 16);
    FBytes.insert(FGap + FGapSize, extra, '\0');
    FGapSize += extra;
}

}  // namespace caretwell
