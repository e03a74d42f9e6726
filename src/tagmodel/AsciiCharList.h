// The character entities of the current schema: names and codes, sorted, seen
// through a range.     &a^   ->   aacute acirc acute ...
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "markup/FilteredRange.h"

namespace caretwell {

class TAsciiCharList {
public:
    /// Until AlphaSort has run an entry goes to the end and anything is accepted; from
    /// then on it goes to its place, and a name that is there in the same spelling is dropped.
    void AddEntity(std::u16string_view name, int32_t value);
    /// Sorts the list, and keeps all later additions sorted until Clear.
    void AlphaSort();
    /// As new, but for the font.
    void Clear();
    int32_t GetCount() const { return FRange.GetCount(Last() + 1); }
    /// Empty outside the list.
    std::u16string_view GetItem(int32_t index) const;
    /// The character's code, -1 if the entity has none; 0 outside the list.
    int32_t GetAsciiVal(int32_t index) const;
    /// The first name of the range that begins with name, one in the same spelling before all
    /// others; if there is none, where name would stand. -1 after the last.
    int32_t FindIndex(std::u16string_view name) const;
    void SetFilter(std::u16string_view value);
    std::u16string_view GetFilter() const { return FRange.Filter; }

    const std::string& GetFontName() const { return FFontName; }
    void SetFontName(std::string_view value) { FFontName = value; }

private:
    struct TEntity {
        std::u16string Name;
        int32_t Value;
    };
    int32_t Last() const { return static_cast<int32_t>(FList.size()) - 1; }
    const TEntity* At(int32_t index) const;

    std::vector<TEntity> FList;
    bool FIsSorted = false;
    TFilteredRange<char16_t> FRange;
    std::string FFontName = "Tahoma";
};

}  // namespace caretwell
