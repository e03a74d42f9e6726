#include "tagmodel/HTMLTag.h"

#include <algorithm>
#include <utility>

namespace caretwell {
namespace {

template <class I>
bool IsInOrder(const std::vector<TRef<I>>& list) {
    std::u16string_view last;
    for (const auto& object : list) {
        std::u16string_view name = object->GetName();
        if (CompareText(name, last) < 0) return false;
        last = name;
    }
    return true;
}

// Lists are sorted again around every parse, mostly unchanged. Names are asked for once
// each: they lie far from the list and after the case of the moment.
template <class I>
void SortByName(std::vector<TRef<I>>& list) {
    if (IsInOrder(list)) return;
    std::vector<std::pair<std::u16string_view, size_t>> places;
    places.reserve(list.size());
    for (const auto& object : list) places.emplace_back(object->GetName(), places.size());
    std::sort(places.begin(), places.end(), [](const auto& a, const auto& b) {
        int order = CompareText(a.first, b.first);
        return order ? order < 0 : a.second < b.second;
    });
    std::vector<TRef<I>> sorted;
    sorted.reserve(list.size());
    for (const auto& [name, place] : places) sorted.push_back(std::move(list[place]));
    list.swap(sorted);
}

}  // namespace

THTMLTag::~THTMLTag() {
    ClearTags();
    ClearAttrs();
}

void THTMLTag::SetEntityName(const std::vector<std::string>& names) {
    FEntityNames.clear();
    for (const auto& name : names) FEntityNames.push_back(ToUtf16(name));
}

std::u16string_view THTMLTag::TagName(int32_t index) const {
    return FTags[static_cast<size_t>(index)]->GetName();
}
std::u16string_view THTMLTag::AttributeName(int32_t index) const {
    return FAttrs[static_cast<size_t>(index)]->GetName();
}

void THTMLTag::FillAttributes() {
    if (!FFiller) return;
    auto filler = std::exchange(FFiller, nullptr);
    filler(*this);
    SortByName(FAttrs);
}

void THTMLTag::AddAttributeFiller(TAttributeFiller filler) {
    if (!FFiller) return SetAttributeFiller(std::move(filler));
    FFiller = [first = std::move(FFiller), second = std::move(filler)](THTMLTag& tag) {
        first(tag);
        second(tag);
    };
}

// ---- reading

TRef<INibMLTag> THTMLTag::GetTags(int32_t index) {
    int64_t at = int64_t{index} + FRange.Start;
    return at >= 0 && at <= LastTag() ? FTags[static_cast<size_t>(at)] : nullptr;
}

TRef<INibMLTagAttribute> THTMLTag::GetAttribute(int32_t index) {
    FillAttributes();
    int64_t at = int64_t{index} + FRange.Start;
    bool inside = index >= 0 && index <= LastAttribute() && at >= 0 && at <= LastAttribute();
    return inside ? FAttrs[static_cast<size_t>(at)] : nullptr;
}

int32_t THTMLTag::GetAttributeCount() {
    FillAttributes();
    int32_t size = LastAttribute() + 1;
    return FShowAttributes ? FRange.GetCount(size) : size;
}

int32_t CountAllAttributes(INibMLTag& tag) {
    auto* element = dynamic_cast<THTMLTag*>(&tag);
    return element ? static_cast<int32_t>(element->GetAllAttributes().size()) : tag.GetAttributeCount();
}

std::u16string_view THTMLTag::GetEntityName(int32_t index) const {
    bool inside = index >= 0 && index < GetEntityCount();
    return inside ? std::u16string_view(FEntityNames[static_cast<size_t>(index)]) : std::u16string_view();
}

TRef<INibMLTagAttribute> THTMLTag::FindAttribute(std::u16string_view name) {
    FillAttributes();
    return FAttrHash.Find(name);
}

int32_t THTMLTag::FindSymbol(std::u16string_view prefix) {
    if (FShowAttributes) {
        if (GetAttributeCount() <= 0) return -1;
        return FRange.Find(prefix, std::min(FRange.End, LastAttribute()),
                           [this](int32_t i) { return AttributeName(i); });
    }
    if (GetTagCount() <= 0) return -1;
    return FRange.Find(prefix, std::min(FRange.End, LastTag()), [this](int32_t i) { return TagName(i); });
}

// ---- the range

void THTMLTag::SetShowAttributes(bool value) {
    if (FContext) FContext->NoteChanged(*this);
    if (value) FillAttributes();
    FShowAttributes = value;
    FRange.ShowAll(value ? LastAttribute() : LastTag());
}

void THTMLTag::NarrowTo(std::u16string_view value) {
    if (FShowAttributes) {
        FRange.SetFilter(value, LastAttribute(), [this](int32_t i) { return AttributeName(i); });
    } else {
        FRange.SetFilter(value, LastTag(), [this](int32_t i) { return TagName(i); });
    }
}

// Closing tags stand at the head of the range whatever the filter, so they are taken
// out while the sorted names are searched.
void THTMLTag::SetFilter(std::u16string_view value) {
    if (FContext) FContext->NoteChanged(*this);
    if (FShowAttributes) FillAttributes();
    bool hasClosingTags = FContext && !FShowAttributes;
    if (hasClosingTags) {
        int32_t removed = FContext->RemoveCustomElements(FTags, *this);
        FExtraTagCount -= removed;
        FRange.End -= removed;
    }
    NarrowTo(value);
    if (hasClosingTags) {
        int32_t inserted = FContext->InsertCustomElements(FTags, *this);
        FExtraTagCount += inserted;
        FRange.End += inserted;
    }
}

void THTMLTag::ResetRange() {
    std::erase_if(FTags, [](const TRef<INibMLTag>& tag) { return Supports<INibMLClosingTag>(tag); });
    FExtraTagCount = 0;
    FShowAttributes = false;
    FRange.Filter.clear();
    FRange.ShowAll(LastTag());
}

void THTMLTag::AlphaSort() {
    SortByName(FTags);
    SortByName(FAttrs);
}

// ---- the lists

INibMLTag* THTMLTag::FindChild(std::u16string_view name) const {
    if (!std::exchange(FIsIndexed, true))
        for (const auto& tag : FTags)
            if (!Supports<INibMLClosingTag>(tag)) FTagHash.Add(tag);
    return FTagHash.Find(name);
}

void THTMLTag::AppendTag(TRef<INibMLTag> tag) {
    if (FIsIndexed) FTagHash.Add(tag);
    FTags.push_back(std::move(tag));
}

void THTMLTag::AddTag(TRef<INibMLTag> tag) {
    if (!FindChild(tag->GetName())) AppendTag(std::move(tag));
}

bool THTMLTag::RemoveTag(INibMLTag* tag) {
    auto place = std::find(FTags.begin(), FTags.end(), tag);
    bool found = place != FTags.end();
    TRef<INibMLTag> keep = tag;
    if (found) FTags.erase(place);
    FTagHash.Remove(tag);
    return found;
}

void THTMLTag::AddAttribute(TRef<INibMLTagAttribute> attribute) {
    if (FAttrHash.Find(attribute->GetName())) return;
    FAttrs.push_back(attribute);
    FAttrHash.Add(std::move(attribute));
}

TRef<INibMLTagAttribute> THTMLTag::RemoveAttribute(std::u16string_view name) {
    FillAttributes();
    TRef<INibMLTagAttribute> attribute = FAttrHash.Find(name);
    if (!attribute) return nullptr;
    FAttrHash.Remove(attribute.Get());
    FAttrs.erase(std::find(FAttrs.begin(), FAttrs.end(), attribute.Get()));
    return attribute;
}

void THTMLTag::ClearTags() {
    FTagHash.Clear();
    FIsIndexed = false;
    // Releasing a child may come back here through a cycle, so the list is emptied first.
    auto tags = std::exchange(FTags, {});
}

void THTMLTag::ClearAttrs() {
    FFiller = nullptr;
    FAttrHash.Clear();
    FAttrs.clear();
}

}  // namespace caretwell
