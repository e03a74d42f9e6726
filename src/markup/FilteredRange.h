// A list that the user sees is never a copy: it is a sorted list seen through two
// indexes that move while the user types.
//
//     aa ab b   filter "a" ->  [aa ab] b      filter "ab" ->  aa [ab] b
//
// The same range serves children, attributes, values, entities and style symbols.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "markup/Text.h"

namespace caretwell {

template <class C>
struct TFilteredRange {
    using TView = std::basic_string_view<C>;

    int32_t Start = 0;  ///< first visible index
    int32_t End = 0;    ///< last visible index; Start - 1 when nothing is visible
    std::basic_string<C> Filter;

    /// Never below 0, though a filter that does not go on from the last one may leave the
    /// two ends crossed.
    int32_t GetCount(int32_t listSize) const { return std::clamp(End - Start + 1, 0, listSize); }
    void ShowAll(int32_t last) {
        Start = 0;
        End = last;
    }

    /// Index in the range of the first entry up to `last` that begins with prefix, -1 if none. Of
    /// entries that differ by case only the one that is spelled so goes first.
    template <class TNameAt>
    int32_t Find(TView prefix, int32_t last, TNameAt nameAt) const {
        int32_t found = Start;
        while (found <= last && !StartsWithText(TView(nameAt(found)), prefix)) ++found;
        if (found > last) return -1;
        for (int32_t i = found; i <= last && SameText(TView(nameAt(i)), prefix); ++i)
            if (TView(nameAt(i)) == prefix) return i - Start;
        return found - Start;
    }

    /// Narrows the range to the names that begin with value. A value that goes on with the
    /// old filter goes on from the present range; any other starts over.
    template <class TNameAt>
    void SetFilter(TView value, int32_t last, TNameAt nameAt) {
        if (value.empty() || !StartsWithText(value, TView(Filter))) ShowAll(last);
        Filter = value;
        if (!Filter.empty()) Narrow(last, nameAt);
    }

    template <class TNameAt>
    void Narrow(int32_t last, TNameAt nameAt) {
        int32_t low = Start;
        while (low <= last && CompareText(TView(Filter), TView(nameAt(low))) > 0) ++low;
        if (low > last) {
            ShowAll(-1);
            return;
        }
        Start = low;
        // "z" goes up to "[", which sorts after every letter, only from capital "Z".
        if (Filter.back() == 'z') Filter.back() = 'Z';
        ++Filter.back();
        for (int32_t i = low; i <= last; ++i) {
            if (CompareText(TView(Filter), TView(nameAt(i))) > 0) continue;
            End = i - 1;
            break;
        }
        --Filter.back();
    }
};

}  // namespace caretwell
