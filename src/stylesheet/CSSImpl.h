// The small set of strings that the symbol table keeps its lists in.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace caretwell {

/// A set of 8-bit strings, case included, that keeps the order of insertion.
class TCSSStringList {
public:
    /// Does nothing if an equal item is there.
    void Add(std::string_view text);
    /// Empty for an index out of range. The view lives until the next change.
    std::string_view GetItem(int32_t index) const;
    /// Puts the last item in the place of the one that is equal, so order is not kept.
    void Remove(std::string_view text);
    bool Contains(std::string_view text) const { return Find(text) >= 0; }

    int32_t FCount = 0;

private:
    void Grow();
    int32_t Find(std::string_view text) const;
    void IndexAll();
    void Index(int32_t item);

    std::vector<std::string> FItems;
    // Long lists find their items by hash: open addressing, index + 1, 0 for a free
    // slot. A list with few items has none.
    std::vector<int32_t> FSlots;
};

}  // namespace caretwell
