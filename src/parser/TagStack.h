// The open tags, as two stacks: those open at the caret, and those open at the scan
// position over the whole document. Entries are reused, and the innermost open tag of
// a name is found without a walk, so that a document of any shape costs linear time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "parser/ElementTable.h"

namespace caretwell {

/// One attribute as written in the document.
struct TTagAttributeValue {
    TRef<INibMLTagAttribute> Attribute;
    std::string Value;          ///< UTF-8, without quotes
    char QuoteOpen = 0;         ///< quote that opened the value, 0 if none
    char QuoteClose = 0;        ///< quote that closed it, 0 if none
    bool TouchesCaret = false;  ///< the caret stands in the name or directly at it
    /// After the caret, and bare or on a later line: text, if the tag turns out to have no end.
    bool IsLoose = false;
};

/// The attributes written on one tag, in order; one written twice stands twice.
class TTagAttributeList {
public:
    /// The new item, valid until the next one.
    TTagAttributeValue& Add(TRef<INibMLTagAttribute> attribute, std::string_view value);
    int32_t GetCount() const { return static_cast<int32_t>(FCount); }
    const TTagAttributeValue& Get(int32_t index) const { return FItems[static_cast<size_t>(index)]; }
    /// The first of that name without regard to case; null if none.
    const TTagAttributeValue* Find(std::u16string_view name) const;
    /// Empties the list; the places recorded on known attributes go back to 0.
    void Clear();
    /// Takes out what is text after all.
    void DropLoose();

private:
    std::vector<TTagAttributeValue> FItems;  // keeps its texts for reuse
    size_t FCount = 0;
};

/// An open tag.
struct TTagEntry {
    TRef<INibMLTag> Tag;
    int32_t Line = 0;  ///< of the tag's name, from 1; 0 until the block is resolved
    TTagAttributeList Attrs;
    int32_t OffsetEnd = 0;    ///< end of the tag's opening part, as far as seen
    int32_t OffsetStart = 0;  ///< of its "<"
    /// Of the second stack: place of the ">" of an empty element that must be written in the
    /// closed form unless its closing tag follows; -1 for others.
    int32_t AutoClose = -1;
    TTagEntry* Prev = nullptr;
    TTagEntry* Next = nullptr;  ///< the outer tag

    // How the entry is found.
    int32_t NameOffset = 0;
    uint64_t Order = 0;  ///< grows inwards
    TNameSlot* Slot = nullptr;
    TTagEntry* OuterSame = nullptr;
    TTagEntry* InnerSame = nullptr;
    TTagEntry* Twin =
        nullptr;  ///< of an entry of the first stack: the same tag on the second, while it is there
    TTagEntry* OuterUnknown = nullptr;  ///< tags that the schema does not know, linked among themselves
    TTagEntry* InnerUnknown = nullptr;
};
using PTagEntry = TTagEntry*;

class TTagStacks {
public:
    enum TStack { tsOpen, tsDocument };

    PTagEntry GetTop(TStack stack) const { return FTop[stack]; }

    /// The slot of a name; of a known element it is the bucket's.
    TNameSlot* FindSlot(TTagBucket* bucket, std::string_view name);
    /// The same, made if the name is an unknown one not open yet.
    TNameSlot& NeedSlot(TTagBucket* bucket, std::string_view name);
    /// The innermost open entry of a name; null if none.
    PTagEntry GetInnermost(TStack stack, const TNameSlot* slot) const;

    PTagEntry Push(TStack stack, TRef<INibMLTag> tag, TNameSlot& slot, int32_t nameOffset);
    /// Notes that the two entries stand for one tag.
    static void Pair(PTagEntry open, PTagEntry inDocument);
    void Dispose(TStack stack, PTagEntry entry, bool clearAttributes);
    /// Empties both stacks and forgets all names: the start of a parse.
    void Clear();

    /// Disposes every entry of the open stack that lies inside `outer` and for which drops() holds:
    /// the tag is closed, so it goes from the second stack too.
    template <class TDrops>
    void DropInside(PTagEntry outer, TDrops drops);

private:
    PTagEntry NewEntry();
    void Drop(PTagEntry open);
    void Free(PTagEntry entry);
    bool IsOpen(const TNameSlot* slot) const { return slot && slot->Parse == FParse; }
    void NoteOpened(TNameSlot& slot);
    void NoteClosed(TNameSlot& slot);
    template <class TDrops>
    void DropByName(PTagEntry outer, TDrops drops);

    PTagEntry FTop[2] = {nullptr, nullptr};
    PTagEntry FFree = nullptr;
    // Entries to be free whose attributes are still asked for: those of a tag that holds the
    // caret in its name and is closed after it.
    std::vector<PTagEntry> FUncleared;
    std::vector<std::unique_ptr<TTagEntry>> FEntries;
    uint64_t FParse = 0;
    uint64_t FOrder = 0;
    std::vector<TNameSlot*> FOpenNames;  // known names with an entry on the open stack
    PTagEntry FTopUnknown = nullptr;     // of the open stack
    std::unordered_map<std::string, TNameSlot> FUnknownNames;
};

// Entries that stay would be walked again by every closing tag to come, so a long
// stretch is taken name by name instead.
template <class TDrops>
void TTagStacks::DropInside(PTagEntry outer, TDrops drops) {
    constexpr int WalkLimit = 64;
    PTagEntry entry = FTop[tsOpen];
    for (int i = 0; entry != outer && i < WalkLimit; ++i) {
        PTagEntry next = entry->Next;
        if (drops(*entry)) Drop(entry);
        entry = next;
    }
    if (entry != outer) DropByName(outer, drops);
}

template <class TDrops>
void TTagStacks::DropByName(PTagEntry outer, TDrops drops) {
    while (FTopUnknown && FTopUnknown->Order > outer->Order && drops(*FTopUnknown)) Drop(FTopUnknown);
    for (size_t i = FOpenNames.size(); i-- > 0;) {
        TNameSlot* slot = FOpenNames[i];
        PTagEntry top = slot->Top[tsOpen];
        if (top->Order <= outer->Order || !drops(*top)) continue;
        while ((top = GetInnermost(tsOpen, slot)) && top->Order > outer->Order) Drop(top);
    }
}

}  // namespace caretwell
