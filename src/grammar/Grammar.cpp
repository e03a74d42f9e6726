#include "grammar/Grammar.h"

#include <algorithm>

namespace caretwell {

const TElementModel& TGrammar::Get(TElementId id) {
    TSlot& slot = FElements[id];
    if (!slot.IsCompiled) {
        slot.IsCompiled = true;
        Compile(id, slot.Model);
        std::ranges::sort(slot.Model.Children);
    }
    return slot.Model;
}

TElementId TGrammar::FindChild(TElementId parent, TName name) {
    if (parent != UnknownElement) {
        const auto& children = Get(parent).Children;
        auto found = std::ranges::lower_bound(children, name, {}, [](const auto& row) { return row.first; });
        if (found != children.end() && found->first == name) return found->second;
    }
    return name < FGlobals.size() ? FGlobals[name] : UnknownElement;
}

bool TGrammar::IsMatch(TName, TName) const { return false; }
TNameSet TGrammar::GetMatches(TName) const { return {}; }

TName TGrammar::AddName(std::string_view text) {
    FNames.emplace_back(text);
    FGlobals.push_back(UnknownElement);
    return static_cast<TName>(FNames.size()) - 1;
}

TElementId TGrammar::AddElement(TName name) {
    FElements.emplace_back().Model.Name = name;
    return static_cast<TElementId>(FElements.size()) - 1;
}

void TGrammar::SetGlobal(TName name, TElementId id) { FGlobals[name] = id; }

void TGrammar::SetContent(TElementModel& model, TTerm content) {
    model.IsExact &= !FModels.TakeCoarse();
    model.Start = FModels.StateOf(content);
}

}  // namespace caretwell
