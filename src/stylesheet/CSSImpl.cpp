#include "stylesheet/CSSImpl.h"

#include <algorithm>
#include <functional>

namespace caretwell {
namespace {

constexpr int32_t FirstSize = 8;
constexpr int32_t LongestUnindexed = 16;

size_t HashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

}  // namespace

void TCSSStringList::Add(std::string_view text) {
    if (Find(text) >= 0) return;
    if (FCount == static_cast<int32_t>(FItems.size())) Grow();
    FItems[static_cast<size_t>(FCount++)] = text;
    if (!FSlots.empty()) Index(FCount - 1);
    else if (FCount > LongestUnindexed) IndexAll();
}

std::string_view TCSSStringList::GetItem(int32_t index) const {
    if (index < 0 || index >= FCount) return {};
    return FItems[static_cast<size_t>(index)];
}

void TCSSStringList::Remove(std::string_view text) {
    int32_t index = Find(text);
    if (index < 0) return;
    auto last = static_cast<size_t>(--FCount);
    if (static_cast<size_t>(index) != last) FItems[static_cast<size_t>(index)].swap(FItems[last]);
    FItems[last].clear();
    if (!FSlots.empty()) IndexAll();
}

void TCSSStringList::Grow() {
    FItems.resize(std::max<size_t>(FirstSize, FItems.size() * 2));
    if (!FSlots.empty()) IndexAll();
}

int32_t TCSSStringList::Find(std::string_view text) const {
    if (FSlots.empty()) {
        for (int32_t i = 0; i < FCount; ++i)
            if (FItems[static_cast<size_t>(i)] == text) return i;
        return -1;
    }
    for (size_t slot = HashOf(text);; ++slot) {
        int32_t item = FSlots[slot & (FSlots.size() - 1)] - 1;
        if (item < 0 || FItems[static_cast<size_t>(item)] == text) return item;
    }
}

// Twice as many slots as items fit, so that a free one always ends a search.
void TCSSStringList::IndexAll() {
    FSlots.assign(FItems.size() * 2, 0);
    for (int32_t i = 0; i < FCount; ++i) Index(i);
}

void TCSSStringList::Index(int32_t item) {
    size_t slot = HashOf(FItems[static_cast<size_t>(item)]);
    while (FSlots[slot & (FSlots.size() - 1)]) ++slot;
    FSlots[slot & (FSlots.size() - 1)] = item + 1;
}

}  // namespace caretwell
