// The tables of a reader: how objects are filed and found again.
#include <tuple>

#include "markup/Text.h"
#include "schema/XSDReader.h"

namespace caretwell {
namespace {

// The parent and the level tell elements of one name apart that would crowd in one chain.
uint32_t HashOfElement(std::u16string_view name, std::u16string_view parent) {
    return HashOfNumber(FoldedHash(name) ^ ExactHash(ToUtf8(parent)));
}
uint32_t HashOfElement(std::u16string_view name, std::u16string_view parent, int32_t level) {
    return HashOfNumber(HashOfElement(name, parent) + static_cast<uint32_t>(level));
}

template <class T>
T* Lookup(const TNameMap<TXSDClass*>& table, std::u16string_view name) {
    auto* found =
        table.Find(FoldedHash(name), [name](const TXSDClass* item) { return SameText(item->FName, name); });
    return found ? static_cast<T*>(*found) : nullptr;
}

}  // namespace

TXSDReader::~TXSDReader() = default;

TXSDClassEntry* TXSDReader::NewEntry(TXSDClass* item) {
    FEntries.push_back(std::make_unique<TXSDClassEntry>());
    FEntries.back()->Item = item;
    return FEntries.back().get();
}

void TXSDReader::EnterList(TXSDClassEntry*& head, TXSDClass* item) {
    TXSDClassEntry* entry = NewEntry(item);
    entry->Next = head;
    head = entry;
}

void TXSDReader::EnterElement(TXSDElement* element) {
    TXSDClassEntry* entry = NewEntry(element);
    (FLastElement ? FLastElement->Next : FFirstElement) = entry;
    FLastElement = entry;
    const auto& [name, parent] = std::tie(element->FName, element->FParent);
    if (name.empty()) return;
    for (uint32_t hash :
         {FoldedHash(name), HashOfElement(name, parent), HashOfElement(name, parent, element->FLevel)})
        FElementTable.Add(hash, element);
}

TXSDElement* TXSDReader::LookupElement(std::u16string_view name, std::u16string_view parent, bool anyParent,
                                       int32_t level) const {
    uint32_t hash = anyParent     ? FoldedHash(name)
                    : level == -1 ? HashOfElement(name, parent)
                                  : HashOfElement(name, parent, level);
    auto* found = FElementTable.Find(hash, [&](const TXSDClass* item) {
        const auto* element = static_cast<const TXSDElement*>(item);
        return SameText(element->FName, name) && (anyParent || element->FParent == parent) &&
               (level == -1 || element->FLevel == level);
    });
    return found ? static_cast<TXSDElement*>(*found) : nullptr;
}

TXSDType* TXSDReader::LookupType(std::u16string_view name) const {
    return Lookup<TXSDType>(FTypeTable, name);
}

TXSDAttributeGroup* TXSDReader::LookupAttrGroup(std::u16string_view name) const {
    return Lookup<TXSDAttributeGroup>(FAttrGroupTable, name);
}

TXSDSimpleType* TXSDReader::LookupSimpleType(std::u16string_view name) const {
    auto find = [&](std::u16string_view text) { return Lookup<TXSDSimpleType>(FSimpleTypeTable, text); };
    if (TXSDSimpleType* type = find(name)) return type;
    size_t at = name.find(GetSchemaNamespace());
    if (at == 0) return find(name.substr(GetSchemaNamespace().size()));
    if (at == name.npos) return find(std::u16string(GetSchemaNamespace()).append(name));
    return nullptr;
}

bool TXSDReader::HasRoom() {
    if (FObjects.size() < MaxDeclarations) return true;
    if (!FIsFull) Error("Too many declarations; the rest of the file is not used");
    FIsFull = true;
    return false;
}

void TXSDReader::Error(const std::string& message) {
    if (!FOnError || FMessages > MaxMessages) return;
    bool isLast = FMessages++ == MaxMessages;
    FOnError(this, FFileName, isLast ? "Further messages about this file are not shown" : message);
}

}  // namespace caretwell
