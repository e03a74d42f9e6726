// The tables of a reader: how objects are filed and found again.
#include "markup/Hash.h"
#include "schema/XSDReader.h"

namespace caretwell {
namespace {

// A number for one question to the tables. Different questions may share a number;
// the answer is then checked against the question and the bucket walked.
class TQuestion {
public:
    explicit TQuestion(uint64_t kind) { Mix(kind); }
    TQuestion& AddName(std::u16string_view name) {
        for (char16_t c : name) Mix(ToUpper(c));
        return *this;
    }
    TQuestion& AddParent(std::u16string_view parent) {
        Mix(0x10000);
        for (char16_t c : parent) Mix(c);
        return *this;
    }
    TQuestion& AddLevel(int32_t level) {
        Mix(0x20000);
        Mix(static_cast<uint32_t>(level));
        return *this;
    }
    uint64_t Get() const { return FValue; }

private:
    void Mix(uint64_t value) { FValue = (FValue ^ value) * 1099511628211u; }
    uint64_t FValue = 14695981039346656037u;
};

bool FitsElement(const TXSDClassEntry* entry, std::u16string_view name, std::u16string_view parent,
                 bool anyParent, int32_t level) {
    const auto* element = static_cast<const TXSDElement*>(entry->Item);
    return SameText(element->FName, name) && (anyParent || element->FParent == parent) &&
           (level == -1 || element->FLevel == level);
}

}  // namespace

TXSDReader::~TXSDReader() = default;

TXSDClassEntry* TXSDReader::NewEntry(TXSDClass* item) {
    FEntries.push_back(std::make_unique<TXSDClassEntry>());
    FEntries.back()->Item = item;
    return FEntries.back().get();
}

TXSDClassEntry* TXSDReader::EnterList(TXSDClassEntry*& head, TXSDClass* item) {
    TXSDClassEntry* entry = NewEntry(item);
    entry->Next = head;
    head = entry;
    return entry;
}

void TXSDReader::EnterBucket(TTable& table, TTableKind kind, TXSDClassEntry* entry) {
    TXSDClassEntry*& head = table[Hash(entry->Item->FName)];
    entry->HashNext = head;
    head = entry;
    FNewest[TQuestion(kind).AddName(entry->Item->FName).Get()] = entry;
}

void TXSDReader::EnterElement(TXSDElement* element) {
    TXSDClassEntry* entry = NewEntry(element);
    (FLastElement ? FLastElement->Next : FFirstElement) = entry;
    FLastElement = entry;
    if (element->FName.empty()) return;
    EnterBucket(FElementTable, tkElement, entry);
    TQuestion question = TQuestion(tkElement).AddName(element->FName).AddParent(element->FParent);
    FNewest[question.Get()] = entry;
    FNewest[question.AddLevel(element->FLevel).Get()] = entry;
}

TXSDElement* TXSDReader::LookupElement(std::u16string_view name, std::u16string_view parent, bool anyParent,
                                       int32_t level) const {
    TQuestion question = TQuestion(tkElement).AddName(name);
    if (!anyParent) question.AddParent(parent);
    if (!anyParent && level != -1) question.AddLevel(level);
    auto newest = FNewest.find(question.Get());
    if (newest == FNewest.end()) return nullptr;
    TXSDClassEntry* entry = newest->second;
    if (!FitsElement(entry, name, parent, anyParent, level)) {
        entry = FElementTable[Hash(name)];
        while (entry && !FitsElement(entry, name, parent, anyParent, level)) entry = entry->HashNext;
    }
    return entry ? static_cast<TXSDElement*>(entry->Item) : nullptr;
}

TXSDClass* TXSDReader::Lookup(const TTable& table, TTableKind kind, std::u16string_view name) const {
    auto newest = FNewest.find(TQuestion(kind).AddName(name).Get());
    if (newest == FNewest.end()) return nullptr;
    TXSDClassEntry* entry = newest->second;
    if (!SameText(entry->Item->FName, name)) {
        entry = table[Hash(name)];
        while (entry && !SameText(entry->Item->FName, name)) entry = entry->HashNext;
    }
    return entry ? entry->Item : nullptr;
}

TXSDType* TXSDReader::LookupType(std::u16string_view name) const {
    return static_cast<TXSDType*>(Lookup(FTypeTable, tkType, name));
}

TXSDAttributeGroup* TXSDReader::LookupAttrGroup(std::u16string_view name) const {
    return static_cast<TXSDAttributeGroup*>(Lookup(FAttrGroupTable, tkAttrGroup, name));
}

TXSDSimpleType* TXSDReader::LookupSimpleType(std::u16string_view name) const {
    auto find = [&](std::u16string_view text) {
        return static_cast<TXSDSimpleType*>(Lookup(FSimpleTypeTable, tkSimpleType, text));
    };
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
