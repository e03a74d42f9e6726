#include "tagmodel/HTMLAttribute.h"

#include <algorithm>

namespace caretwell {

template <class I>
std::u16string_view TAttributeBase<I>::GetValue(int32_t index) {
    int64_t at = int64_t{index} + FRange.Start;
    return at >= 0 && at <= Last() ? std::u16string_view(FValues[static_cast<size_t>(at)])
                                   : std::u16string_view();
}

// The list is not sorted again: the only caller marks value 0 as a pseudo value, and
// it stands alone.
template <class I>
void TAttributeBase<I>::SetValue(int32_t index, std::u16string_view value) {
    if (index >= 0 && index <= Last()) FValues[static_cast<size_t>(index)] = value;
}

template <class I>
void TAttributeBase<I>::AddValue(std::u16string_view value) {
    auto place = std::lower_bound(FValues.begin(), FValues.end(), value, ComesBefore);
    if (place != FValues.end() && *place == value) return;
    FValues.insert(place, std::u16string(value));
    ++FRange.End;
}

// A list that holds only the word of a schema type or an editor's pseudo value is
// offered whatever the user typed.
template <class I>
bool TAttributeBase<I>::IsLeftAlone() const {
    if (FValues.size() != 1) return false;
    const auto& value = FValues.front();
    return !IdentIsNotDTDType(std::u16string_view(value)) ||
           IdentIsAttributeEditor(std::u16string_view(value));
}

template <class I>
void TAttributeBase<I>::SetFilter(std::u16string_view value) {
    if (FValues.empty() || IsLeftAlone()) return;
    FRange.SetFilter(value, Last(),
                     [this](int32_t i) { return std::u16string_view(FValues[static_cast<size_t>(i)]); });
}

// Looks past the end of the range too.
template <class I>
int32_t TAttributeBase<I>::FindSymbol(std::u16string_view prefix) {
    if (GetCount() <= 0) return -1;
    return FRange.Find(prefix, Last(),
                       [this](int32_t i) { return std::u16string_view(FValues[static_cast<size_t>(i)]); });
}

template class TAttributeBase<INibMLTagAttribute>;
template class TAttributeBase<INibMLTagAttributeEvent>;
template class TAttributeBase<INibMLUnknownTagAttribute>;

}  // namespace caretwell
