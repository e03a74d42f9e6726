#include "tagmodel/AsciiCharList.h"

#include <algorithm>

namespace caretwell {

void TAsciiCharList::AddEntity(std::u16string_view name, int32_t value) {
    auto place =
        FIsSorted
            ? std::lower_bound(FList.begin(), FList.end(), name,
                               [](const TEntity& a, std::u16string_view b) { return ComesBefore(a.Name, b); })
            : FList.end();
    if (place != FList.end() && place->Name == name) return;
    FList.insert(place, {std::u16string(name), value});
}

void TAsciiCharList::AlphaSort() {
    if (FIsSorted) return;
    std::stable_sort(FList.begin(), FList.end(),
                     [](const TEntity& a, const TEntity& b) { return ComesBefore(a.Name, b.Name); });
    FIsSorted = true;
}

void TAsciiCharList::Clear() {
    FList.clear();
    FIsSorted = false;
    FRange = {};
}

const TAsciiCharList::TEntity* TAsciiCharList::At(int32_t index) const {
    int64_t at = int64_t{index} + FRange.Start;
    return at >= 0 && at <= Last() ? &FList[static_cast<size_t>(at)] : nullptr;
}

std::u16string_view TAsciiCharList::GetItem(int32_t index) const {
    const TEntity* entity = At(index);
    return entity ? std::u16string_view(entity->Name) : std::u16string_view();
}

int32_t TAsciiCharList::GetAsciiVal(int32_t index) const {
    const TEntity* entity = At(index);
    return entity ? entity->Value : 0;
}

int32_t TAsciiCharList::FindIndex(std::u16string_view name) const {
    int32_t last = std::min(FRange.End, Last());
    auto nameAt = [this](int32_t i) { return std::u16string_view(FList[static_cast<size_t>(i)].Name); };
    int32_t place = FRange.Start;
    while (place <= last && CompareText(nameAt(place), name) < 0) ++place;
    if (place > last) return -1;
    for (int32_t i = place; i <= last && StartsWithText(nameAt(i), name); ++i)
        if (nameAt(i).starts_with(name)) return i - FRange.Start;
    return place - FRange.Start;
}

void TAsciiCharList::SetFilter(std::u16string_view value) {
    FRange.SetFilter(value, Last(),
                     [this](int32_t i) { return std::u16string_view(FList[static_cast<size_t>(i)].Name); });
}

}  // namespace caretwell
