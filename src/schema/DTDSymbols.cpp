#include "schema/DTDSymbols.h"

namespace caretwell {

TDTDExprNode* TDTDExprWalk::Next() {
    if (FPending.empty()) return nullptr;
    TDTDExprNode* node = FPending.back();
    FPending.pop_back();
    Push(node->Right);
    Push(node->Left);
    return node;
}

TDTDExprNode* TDTDExprList::GetExpr(int32_t index) const {
    return index >= 0 && index < GetCount() ? FExprs[static_cast<size_t>(index)] : nullptr;
}

void TDTDExprList::Assign(const TDTDExprList& other) {
    size_t count = other.FExprs.size();
    FExprs.reserve(FExprs.size() + count);
    for (size_t i = 0; i < count; ++i) FExprs.push_back(other.FExprs[i]);
}

TDTDExprList& TDTDSymbol::GetExprList() {
    if (!FExprList) FExprList = std::make_unique<TDTDExprList>();
    return *FExprList;
}

void TDTDAttribute::SetAttr(std::string_view value, bool required, bool fixed) {
    // Nearly all attributes are one of these two, and a schema has thousands.
    static constexpr TAttrAttributes Plain[] = {{false, false, {}}, {false, true, {}}};
    if (value.empty() && !fixed) {
        FAttrs = &Plain[required];
        return;
    }
    FOwnAttrs = std::make_unique<TAttrAttributes>(TAttrAttributes{fixed, required, value});
    FAttrs = FOwnAttrs.get();
}

int32_t TDTDEntity::GetValues(int32_t index) const {
    return index >= 0 && index < GetValueCount() ? FValues[static_cast<size_t>(index)] : -1;
}

void TDTDElement::EnterSymbol(TDTDAttribute* attribute) {
    if (!FAttributes) FAttributes = std::make_unique<std::unordered_map<std::string_view, TDTDAttribute*>>();
    (*FAttributes)[attribute->FName] = attribute;
}

TDTDAttribute* TDTDElement::LookupSymbol(std::string_view name) {
    for (; FExprList && FEnteredCount < FExprList->GetCount(); ++FEnteredCount)
        if (auto* attribute = SymbolAs<TDTDAttribute>(FExprList->GetExpr(FEnteredCount)->Symbol))
            EnterSymbol(attribute);
    if (!FAttributes) return nullptr;
    auto found = FAttributes->find(name);
    return found != FAttributes->end() ? found->second : nullptr;
}

void TDTDElement::AddContent(TDTDExprNode* content) {
    TDTDExprList& list = GetExprList();
    bool isPlaceKept = list.GetCount() > 0 && !FIsDeclared;
    if (isPlaceKept) list.SetExpr(0, content);
    else list.AddExpr(content);
    FIsDeclared = true;
}

TDTDSymbol* TDTDSymbolTable::Lookup(std::string_view name) const {
    auto* found = FSymbols.Find(ExactHash(name), [name](const TDTDSymbol* s) { return s->FName == name; });
    return found ? *found : nullptr;
}

}  // namespace caretwell
