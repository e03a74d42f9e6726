#include "parser/TagStack.h"

#include <algorithm>

namespace caretwell {
namespace {

std::string Folded(std::string_view name) {
    std::string result(name);
    std::transform(result.begin(), result.end(), result.begin(), ToUpper<char>);
    return result;
}

}  // namespace

// ---- attributes

void TTagAttributeList::Add(TRef<INibMLTagAttribute> attribute, std::string_view value, char quoteOpen,
                            char quoteClose) {
    if (FCount == FItems.size()) FItems.emplace_back();
    TTagAttributeValue& item = FItems[FCount++];
    item.Attribute = std::move(attribute);
    item.Value.assign(value);
    item.QuoteOpen = quoteOpen;
    item.QuoteClose = quoteClose;
}

const TTagAttributeValue* TTagAttributeList::Find(std::u16string_view name) const {
    for (size_t i = 0; i < FCount; ++i)
        if (SameText(FItems[i].Attribute->GetName(), name)) return &FItems[i];
    return nullptr;
}

void TTagAttributeList::Clear() {
    constexpr size_t KeptItems = 16;
    constexpr size_t KeptValue = 256;
    for (size_t i = 0; i < FCount; ++i) {
        TTagAttributeValue& item = FItems[i];
        // For an unknown attribute this does nothing that anybody sees: it goes away here.
        item.Attribute->SetOffsetStart(0);
        item.Attribute->SetOffsetEnd(0);
        item.Attribute = nullptr;
        if (item.Value.capacity() > KeptValue) item.Value = std::string();
    }
    FCount = 0;
    if (FItems.size() > KeptItems) FItems.resize(KeptItems);
}

// ---- names

TNameSlot* TTagStacks::FindSlot(TTagBucket* bucket, std::string_view name) {
    if (bucket) return &bucket->Slot;
    if (FUnknownNames.empty()) return nullptr;
    auto row = FUnknownNames.find(Folded(name));
    return row == FUnknownNames.end() ? nullptr : &row->second;
}

TNameSlot& TTagStacks::NeedSlot(TTagBucket* bucket, std::string_view name) {
    if (bucket) return bucket->Slot;
    auto row = FUnknownNames.try_emplace(Folded(name)).first;
    row->second.UnknownName = &row->first;
    return row->second;
}

PTagEntry TTagStacks::GetInnermost(TStack stack, const TNameSlot* slot) const {
    return IsOpen(slot) ? slot->Top[stack] : nullptr;
}

void TTagStacks::NoteOpened(TNameSlot& slot) {
    if (slot.UnknownName || slot.OpenIndex >= 0) return;
    slot.OpenIndex = static_cast<int32_t>(FOpenNames.size());
    FOpenNames.push_back(&slot);
}

void TTagStacks::NoteClosed(TNameSlot& slot) {
    if (slot.UnknownName) {
        // The names of a document are held only while one of them is open.
        if (!slot.Top[tsOpen] && !slot.Top[tsDocument]) FUnknownNames.erase(std::string(*slot.UnknownName));
        return;
    }
    if (slot.Top[tsOpen] || slot.OpenIndex < 0) return;
    TNameSlot* last = FOpenNames.back();
    FOpenNames[static_cast<size_t>(slot.OpenIndex)] = last;
    last->OpenIndex = slot.OpenIndex;
    FOpenNames.pop_back();
    slot.OpenIndex = -1;
}

// ---- entries

PTagEntry TTagStacks::NewEntry() {
    PTagEntry entry = FFree;
    if (entry) FFree = entry->Next;
    else entry = FEntries.emplace_back(std::make_unique<TTagEntry>()).get();
    entry->Line = 0;
    entry->OffsetEnd = 0;
    entry->OffsetStart = 0;
    entry->Prev = entry->Next = nullptr;
    return entry;
}

PTagEntry TTagStacks::Push(TStack stack, TRef<INibMLTag> tag, TNameSlot& slot, int32_t nameOffset) {
    if (slot.Parse != FParse) {
        slot.Parse = FParse;
        slot.Top[tsOpen] = slot.Top[tsDocument] = nullptr;
        slot.OpenIndex = -1;
    }
    PTagEntry entry = NewEntry();
    entry->Tag = std::move(tag);
    entry->NameOffset = nameOffset;
    entry->Order = ++FOrder;
    entry->Next = FTop[stack];
    if (entry->Next) entry->Next->Prev = entry;
    FTop[stack] = entry;

    entry->Slot = &slot;
    entry->InnerSame = nullptr;
    entry->OuterSame = slot.Top[stack];
    if (entry->OuterSame) entry->OuterSame->InnerSame = entry;
    slot.Top[stack] = entry;
    if (stack == tsOpen) {
        NoteOpened(slot);
        if (slot.UnknownName) {
            entry->InnerUnknown = nullptr;
            entry->OuterUnknown = FTopUnknown;
            if (FTopUnknown) FTopUnknown->InnerUnknown = entry;
            FTopUnknown = entry;
        }
    }
    return entry;
}

void TTagStacks::Dispose(TStack stack, PTagEntry entry, bool clearAttributes) {
    if (entry->Prev) entry->Prev->Next = entry->Next;
    if (entry->Next) entry->Next->Prev = entry->Prev;
    if (FTop[stack] == entry) FTop[stack] = entry->Next;

    TNameSlot& slot = *entry->Slot;
    if (entry->InnerSame) entry->InnerSame->OuterSame = entry->OuterSame;
    if (entry->OuterSame) entry->OuterSame->InnerSame = entry->InnerSame;
    if (slot.Top[stack] == entry) slot.Top[stack] = entry->OuterSame;
    if (stack == tsOpen && slot.UnknownName) {
        if (entry->InnerUnknown) entry->InnerUnknown->OuterUnknown = entry->OuterUnknown;
        if (entry->OuterUnknown) entry->OuterUnknown->InnerUnknown = entry->InnerUnknown;
        if (FTopUnknown == entry) FTopUnknown = entry->OuterUnknown;
    }
    NoteClosed(slot);

    entry->Tag = nullptr;
    if (clearAttributes) entry->Attrs.Clear();
    else if (entry->Attrs.GetCount()) FUncleared.push_back(entry);
    entry->Prev = nullptr;
    entry->Next = FFree;
    FFree = entry;
}

void TTagStacks::Clear() {
    for (PTagEntry& top : FTop) {
        while (PTagEntry entry = top) {
            top = entry->Next;
            entry->Tag = nullptr;
            entry->Attrs.Clear();
            entry->Next = FFree;
            FFree = entry;
        }
    }
    for (PTagEntry entry : FUncleared) entry->Attrs.Clear();
    FUncleared.clear();
    // Slots of an earlier parse tell so by its number and are not looked at again: the
    // table that holds them may be gone.
    ++FParse;
    FOpenNames.clear();
    FUnknownNames.clear();
    FTopUnknown = nullptr;
    // One deeply nested document does not bind its memory for good.
    constexpr size_t KeptEntries = 4096;
    if (FEntries.size() > KeptEntries) {
        FEntries.clear();
        FFree = nullptr;
    }
}

}  // namespace caretwell
