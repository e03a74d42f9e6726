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

TTagAttributeValue& TTagAttributeList::Add(TRef<INibMLTagAttribute> attribute, std::string_view value) {
    if (FCount == FItems.size()) FItems.emplace_back();
    TTagAttributeValue& item = FItems[FCount++];
    item.Attribute = std::move(attribute);
    item.Value.assign(value);
    return item;
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

void TTagAttributeList::DropLoose() {
    size_t kept = 0;
    for (size_t i = 0; i < FCount; ++i) {
        if (!FItems[i].IsLoose) {
            if (kept != i) std::swap(FItems[kept], FItems[i]);
            ++kept;
            continue;
        }
        FItems[i].Attribute->SetOffsetStart(0);
        FItems[i].Attribute->SetOffsetEnd(0);
        FItems[i].Attribute = nullptr;
    }
    FCount = kept;
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
    entry->AutoClose = -1;
    entry->Prev = entry->Next = entry->Twin = nullptr;
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

void TTagStacks::Pair(PTagEntry open, PTagEntry inDocument) {
    open->Twin = inDocument;
    inDocument->Twin = open;
}

void TTagStacks::Drop(PTagEntry open) {
    if (PTagEntry inDocument = open->Twin) Dispose(tsDocument, inDocument, false);
    Dispose(tsOpen, open, true);
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
    if (entry->Twin) entry->Twin->Twin = nullptr;
    entry->Twin = nullptr;

    entry->Tag = nullptr;
    entry->Prev = nullptr;
    if (clearAttributes) entry->Attrs.Clear();
    if (entry->Attrs.GetCount()) FUncleared.push_back(entry);
    else Free(entry);
}

void TTagStacks::Free(PTagEntry entry) {
    entry->Next = FFree;
    FFree = entry;
}

void TTagStacks::Clear() {
    for (PTagEntry& top : FTop) {
        while (PTagEntry entry = top) {
            top = entry->Next;
            entry->Tag = nullptr;
            entry->Attrs.Clear();
            Free(entry);
        }
    }
    for (PTagEntry entry : FUncleared) {
        entry->Attrs.Clear();
        Free(entry);
    }
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
