#include "stylesheet/CSSSymbols.h"

#include <algorithm>

#include "host/Platform.h"
#include "stylesheet/CSSEditors.h"
#include "stylesheet/CSSParser.h"

namespace caretwell {
namespace {

// A table holds no name twice, so the order of a sorted list is settled by the names.
template <class TItem>
bool IsBefore(const TItem& a, const TItem& b) {
    return CompareText(std::string_view(a->FName), std::string_view(b->FName)) < 0;
}

}  // namespace

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
    return FValues[static_cast<size_t>(FKibitz.Start) + static_cast<size_t>(index)];
}

void TCSSProperty::ResetKibitz() { FKibitz = {0, static_cast<int32_t>(FValues.size()) - 1, {}}; }

// ------------------------------------------------------------------------ table

TCSSSymbolTable::TCSSSymbolTable(const TStyleSheetParser* parser) : FParser(parser) {}
TCSSSymbolTable::~TCSSSymbolTable() = default;

TCSSProperty* TCSSSymbolTable::NewProperty(std::string_view name) {
    if (auto* known = LookupProperty(name)) return known;
    auto property = std::make_unique<TCSSProperty>(*this);
    property->FName = name;
    return FProperties.Add(std::move(property));
}

TCSSType* TCSSSymbolTable::NewType(std::string_view name) {
    if (auto* known = LookupType(name)) return known;
    auto type = std::make_unique<TCSSType>(*this);
    type->FName = name;
    return FTypes.Add(std::move(type));
}

TCSSValue* TCSSSymbolTable::NewValue(std::string_view name) {
    if (auto* known = LookupValue(name)) return known;
    auto value = std::make_unique<TCSSValue>();
    value->FName = name;
    return FValues.Add(std::move(value));
}

void TCSSSymbolTable::AddEditor(std::unique_ptr<TCSSEditor> editor) { FEditors.Add(std::move(editor)); }

TCSSProperty* TCSSSymbolTable::LookupProperty(std::string_view name) const { return FProperties.Find(name); }
TCSSType* TCSSSymbolTable::LookupType(std::string_view name) const { return FTypes.Find(name); }
TCSSValue* TCSSSymbolTable::LookupValue(std::string_view name) const { return FValues.Find(name); }
TCSSEditor* TCSSSymbolTable::LookupEditor(std::string_view name) const { return FEditors.Find(name); }

TCSSProperty* TCSSSymbolTable::GetProp(int32_t index) const { return FProperties.At(index); }
TCSSType* TCSSSymbolTable::GetType(int32_t index) const { return FTypes.At(index); }

void TCSSSymbolTable::AlphaSort() {
    std::sort(FProperties.begin(), FProperties.end(), IsBefore<std::unique_ptr<TCSSProperty>>);
}

void TCSSSymbolTable::SortList(std::vector<TCSSValue*>& list, int32_t first, int32_t last) {
    if (first < last) std::sort(list.begin() + first, list.begin() + last + 1, IsBefore<TCSSValue*>);
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
    FKibitz = {0, FProperties.Count() - 1, {}};
}

void TCSSSymbolTable::SetKibitzProperty(TCSSProperty* property) {
    FKibitzProperty = property;
    if (!property) return;
    property->GetValueList();  // with the fonts
    property->ResetKibitz();
    if (property->FSorted || property->FValues.size() == 0) return;
    SortList(property->FValues.Items(), 0, property->FKibitz.End);
    property->FSorted = true;
}

TCSSSymbolTable::TListKind TCSSSymbolTable::GetListKind() const {
    if (!FParser) return lkNone;
    if (FParser->FKibitzPos == kpProperty) return lkProperties;
    return FParser->FKibitzPos == kpExpr && FKibitzProperty ? lkValues : lkNone;
}

std::string_view TCSSSymbolTable::NameAt(TListKind kind, int32_t index) const {
    auto i = static_cast<size_t>(index);
    return kind == lkValues ? FKibitzProperty->FValues[i]->FName : FProperties.At(index)->FName;
}

int32_t TCSSSymbolTable::CountOf(TListKind kind) const {
    return kind == lkValues ? static_cast<int32_t>(FKibitzProperty->FValues.size()) : FProperties.Count();
}

TFilteredRange<char>& TCSSSymbolTable::RangeOf(TListKind kind) const {
    return kind == lkValues ? FKibitzProperty->FKibitz : FKibitz;
}

void TCSSSymbolTable::SetFilter(std::string_view text) {
    TListKind kind = GetListKind();
    if (kind == lkNone) return;
    RangeOf(kind).SetFilter(text, CountOf(kind) - 1, [&](int32_t i) { return NameAt(kind, i); });
}

int32_t TCSSSymbolTable::FindIdent(std::string_view text) const {
    TListKind kind = GetListKind();
    if (kind == lkNone) return -1;
    const TFilteredRange<char>& range = RangeOf(kind);
    for (int32_t i = range.Start; i <= range.End; ++i)
        if (CompareText(NameAt(kind, i), text) >= 0) return i - range.Start;
    return -1;
}

std::string TCSSSymbolTable::GetKibitzProp(int32_t index) const {
    if (index < 0 || index >= GetKibitzPropCount()) return {};
    return std::string(NameAt(lkProperties, FKibitz.Start + index));
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
