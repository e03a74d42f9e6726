#include "stylesheet/CSSSymbols.h"

#include <algorithm>

#include "host/Platform.h"
#include "markup/FilteredRange.h"
#include "markup/Hash.h"
#include "stylesheet/CSSEditors.h"
#include "stylesheet/CSSParser.h"

namespace caretwell {
namespace {

constexpr size_t LongestChain = 16;  // on average

// Its lowest byte is Hash, the bits above it tell names of the same bucket apart.
uint32_t WideHash(std::string_view name) {
    uint32_t hash = 2166136261;
    for (char c : name) hash = (hash ^ static_cast<uint8_t>(ToUpper(c))) * 16777619;
    return hash << 8 | Hash(name);
}

template <class T>
T* AddSymbol(TSymbolBuckets& table, TCSSSymbolTable::TSymbols<T>& list, int32_t& count,
             std::unique_ptr<T> symbol) {
    T* added = symbol.get();
    list.push_back(std::move(symbol));
    table.Add(*added);
    ++count;
    return added;
}

template <class T>
T* ItemAt(const TCSSSymbolTable::TSymbols<T>& list, int32_t index) {
    return index >= 0 && static_cast<size_t>(index) < list.size() ? list[static_cast<size_t>(index)].get()
                                                                  : nullptr;
}

// A table holds no name twice, so the order of a sorted list is settled by the names.
template <class TItem>
bool IsBefore(const TItem& a, const TItem& b) {
    return CompareText(std::string_view(a->FName), std::string_view(b->FName)) < 0;
}

// From first to last, both included. The library's sort keeps its time and depth also
// for a list that was made to slow an exchange sort down.
template <class TItem>
void QuickSort(std::vector<TItem>& list, int32_t first, int32_t last) {
    if (first < last) std::sort(list.begin() + first, list.begin() + last + 1, IsBefore<TItem>);
}

}  // namespace

// -------------------------------------------------------------------- buckets

TCSSSymbol* TSymbolBuckets::Find(std::string_view name) const {
    uint32_t hash = WideHash(name);
    for (TCSSSymbol* symbol = FChains[hash & (FChains.size() - 1)]; symbol; symbol = symbol->FHashNext)
        if (symbol->FHash == hash && SameText(symbol->FName, name)) return symbol;
    return nullptr;
}

void TSymbolBuckets::Add(TCSSSymbol& symbol) {
    if (++FCount > LongestChain * FChains.size()) Grow();
    symbol.FHash = WideHash(symbol.FName);
    Link(symbol);
}

void TSymbolBuckets::Link(TCSSSymbol& symbol) {
    TCSSSymbol*& chain = FChains[symbol.FHash & (FChains.size() - 1)];
    symbol.FHashNext = chain;
    chain = &symbol;
}

void TSymbolBuckets::Grow() {
    std::vector<TCSSSymbol*> chains(FChains.size() * 16);
    chains.swap(FChains);
    std::vector<TCSSSymbol*> newestFirst;
    for (TCSSSymbol* chain : chains) {
        for (newestFirst.clear(); chain; chain = chain->FHashNext) newestFirst.push_back(chain);
        while (!newestFirst.empty()) {
            Link(*newestFirst.back());
            newestFirst.pop_back();
        }
    }
}

// ---------------------------------------------------------- types and properties

const TCSSStringList& TCSSType::GetValueList() {
    if (FHasFonts) {
        FHasFonts = false;
        for (const std::string& family : FTable->GetFonts()) FValues.Add(family);
    }
    return FValues;
}

const TDistinctList<TCSSValue>& TCSSProperty::GetValueList() {
    if (FHasFonts) {
        FHasFonts = false;
        for (const std::string& family : FTable->GetFonts()) {
            TCSSValue* value = FTable->NewValue(family);
            value->FKind = cssVkName;
            AddValue(value);
        }
        FSorted = false;
    }
    return FValues;
}

const TCSSValue* TCSSProperty::GetKibitzValue(int32_t index) const {
    if (index < 0 || index >= GetKibitzValueCount()) return nullptr;
    return FValues[static_cast<size_t>(FKibitzFirst) + static_cast<size_t>(index)];
}

void TCSSProperty::ResetKibitz() {
    FKibitzFirst = 0;
    FKibitzLast = static_cast<int32_t>(FValues.size()) - 1;
}

// ------------------------------------------------------------------------ table

TCSSSymbolTable::TCSSSymbolTable(const TStyleSheetParser* parser) : FParser(parser) {}
TCSSSymbolTable::~TCSSSymbolTable() = default;

TCSSProperty* TCSSSymbolTable::NewProperty(std::string_view name) {
    if (auto* known = LookupProperty(name)) return known;
    auto property = std::make_unique<TCSSProperty>(*this);
    property->FName = name;
    return AddSymbol(FPropertyTable, FProperties, FPropertyCount, std::move(property));
}

TCSSType* TCSSSymbolTable::NewType(std::string_view name) {
    if (auto* known = LookupType(name)) return known;
    auto type = std::make_unique<TCSSType>(*this);
    type->FName = name;
    return AddSymbol(FTypeTable, FTypes, FTypeCount, std::move(type));
}

TCSSValue* TCSSSymbolTable::NewValue(std::string_view name) {
    if (auto* known = LookupValue(name)) return known;
    auto value = std::make_unique<TCSSValue>();
    value->FName = name;
    return AddSymbol(FValueTable, FValues, FValueCount, std::move(value));
}

void TCSSSymbolTable::AddEditor(std::unique_ptr<TCSSEditor> editor) {
    AddSymbol(FEditorTable, FEditors, FEditorCount, std::move(editor));
}

TCSSProperty* TCSSSymbolTable::LookupProperty(std::string_view name) const {
    return static_cast<TCSSProperty*>(FPropertyTable.Find(name));
}
TCSSType* TCSSSymbolTable::LookupType(std::string_view name) const {
    return static_cast<TCSSType*>(FTypeTable.Find(name));
}
TCSSValue* TCSSSymbolTable::LookupValue(std::string_view name) const {
    return static_cast<TCSSValue*>(FValueTable.Find(name));
}
TCSSEditor* TCSSSymbolTable::LookupEditor(std::string_view name) const {
    return static_cast<TCSSEditor*>(FEditorTable.Find(name));
}

TCSSProperty* TCSSSymbolTable::GetProp(int32_t index) const { return ItemAt(FProperties, index); }
TCSSType* TCSSSymbolTable::GetType(int32_t index) const { return ItemAt(FTypes, index); }

void TCSSSymbolTable::AlphaSort() { QuickSort(FProperties, 0, FPropertyCount - 1); }

void TCSSSymbolTable::SortList(std::vector<TCSSValue*>& list, int32_t first, int32_t last) {
    QuickSort(list, first, last);
}

const std::vector<std::string>& TCSSSymbolTable::GetFonts() {
    if (!FFonts) FFonts = std::make_unique<std::vector<std::string>>(GetPlatform().FontFamilies());
    return *FFonts;
}

bool TCSSSymbolTable::IsFont(std::string_view name) const {
    return FFonts && std::find(FFonts->begin(), FFonts->end(), name) != FFonts->end();
}

// ------------------------------------------------------------------------- list

void TCSSSymbolTable::ResetKibitz() {
    if (FKibitzProperty) FKibitzProperty->ResetKibitz();
    SetKibitzProperty(nullptr);
    FKibitzFirst = 0;
    FKibitzLast = FPropertyCount - 1;
}

void TCSSSymbolTable::SetKibitzProperty(TCSSProperty* property) {
    FKibitzProperty = property;
    if (!property) return;
    property->GetValueList();  // with the fonts
    property->ResetKibitz();
    if (property->FSorted || property->FValues.size() == 0) return;
    SortList(property->FValues.Items(), 0, property->FKibitzLast);
    property->FSorted = true;
}

TCSSSymbolTable::TListKind TCSSSymbolTable::GetListKind() const {
    if (!FParser) return lkNone;
    if (FParser->FKibitzPos == kpProperty) return lkProperties;
    return FParser->FKibitzPos == kpExpr && FKibitzProperty ? lkValues : lkNone;
}

std::string_view TCSSSymbolTable::NameAt(TListKind kind, int32_t index) const {
    auto i = static_cast<size_t>(index);
    return kind == lkValues ? FKibitzProperty->FValues[i]->FName : FProperties[i]->FName;
}

void TCSSSymbolTable::ShowAll() {
    FKibitzFirst = 0;
    FKibitzLast = FPropertyCount - 1;
    if (FKibitzProperty) FKibitzProperty->ResetKibitz();
}

void TCSSSymbolTable::SetFilter(std::string_view text) {
    if (text.empty() || !StartsWithText(text, std::string_view(FFilter))) ShowAll();
    TListKind kind = GetListKind();
    if (kind == lkNone) {
        FFilter = text;
        return;
    }
    int32_t& first = kind == lkValues ? FKibitzProperty->FKibitzFirst : FKibitzFirst;
    int32_t& last = kind == lkValues ? FKibitzProperty->FKibitzLast : FKibitzLast;
    // One filter text serves both lists, and each search goes on in what is visible.
    TFilteredRange<char> range{first, last, std::string(text)};
    if (!text.empty())
        range.Narrow(
            last, [&](int32_t i) { return NameAt(kind, i); }, TBeyondLast::Empty);
    first = range.Start;
    last = range.End;
    FFilter = std::move(range.Filter);
}

int32_t TCSSSymbolTable::FindIdent(std::string_view text) const {
    TListKind kind = GetListKind();
    if (kind == lkNone) return -1;
    int32_t first = kind == lkValues ? FKibitzProperty->FKibitzFirst : FKibitzFirst;
    int32_t last = kind == lkValues ? FKibitzProperty->FKibitzLast : FKibitzLast;
    for (int32_t i = first; i <= last; ++i)
        if (CompareText(NameAt(kind, i), text) >= 0) return i - first;
    return -1;
}

std::string TCSSSymbolTable::GetKibitzProp(int32_t index) const {
    if (index < 0 || index >= GetKibitzPropCount()) return {};
    return std::string(NameAt(lkProperties, FKibitzFirst + index));
}

int32_t TCSSSymbolTable::GetKibitzValueCount() const {
    return FKibitzProperty ? FKibitzProperty->GetKibitzValueCount() : 0;
}

std::string TCSSSymbolTable::GetKibitzValue(int32_t index) const {
    const TCSSValue* value = FKibitzProperty ? FKibitzProperty->GetKibitzValue(index) : nullptr;
    if (!value) return {};
    return value->FKind == cssVkType ? value->FName + "..." : value->FName;
}

}  // namespace caretwell
