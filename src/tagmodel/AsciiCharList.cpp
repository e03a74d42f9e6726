#include "tagmodel/AsciiCharList.h"

#include <algorithm>

namespace caretwell {

void TAsciiCharList::AddEntity(std::u16string_view name, int32_t value) {
    if (!FIsSorted) {
        FList.push_back({std::u16string(name), value});
        return;
    }
    auto place =
        std::lower_bound(FList.begin(), FList.end(), name, [](const TEntity& entity, std::u16string_view n) {
            return CompareText(std::u16string_view(entity.Name), n) < 0;
        });
    if (place != FList.end() && SameText(place->Name, name)) return;
    FList.insert(place, {std::u16string(name), value});
}

// Names that differ by case only ("Aacute", "aacute") keep the order of the schema.
void TAsciiCharList::AlphaSort() {
    if (FIsSorted) return;
    std::stable_sort(FList.begin(), FList.end(), [](const TEntity& a, const TEntity& b) {
        return CompareText(std::u16string_view(a.Name), std::u16string_view(b.Name)) < 0;
    });
    FIsSorted = true;
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
    for (int32_t i = FRange.Start; i <= std::min(FRange.End, Last()); ++i)
        if (CompareText(std::u16string_view(FList[static_cast<size_t>(i)].Name), name) >= 0)
            return i - FRange.Start;
    return -1;
}

void TAsciiCharList::SetFilter(std::u16string_view value) {
    FRange.SetFilter(
        value, Last(), [this](int32_t i) { return std::u16string_view(FList[static_cast<size_t>(i)].Name); },
        TBeyondLast::Empty);
}

}  // namespace caretwell
