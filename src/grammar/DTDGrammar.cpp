#include "grammar/DTDGrammar.h"

#include <algorithm>

#include "grammar/DTDModel.h"
#include "markup/Text.h"
#include "schema/DTDParser.h"

namespace caretwell {
namespace {

bool IsWord(const TDTDExprNode* content, std::string_view word) {
    return content && content->Symbol && SameText(content->Symbol->FName, word);
}

/// Words of a model that are no elements: text, and those for nothing and everything.
bool IsElementName(const TDTDElement& element) {
    bool isContentWord = SameText(element.FName, std::string_view("EMPTY")) ||
                         SameText(element.FName, std::string_view("ANY"));
    return IdentIsNotDTDType(element.FName) && (element.FIsDeclared || !isContentWord);
}

}  // namespace

TDTDGrammar::TDTDGrammar(const TDTDParser& parser)
    : FParser(parser), FNameOf(static_cast<size_t>(parser.GetElementCount()), NoName) {
    AddElement(NoName);  // the root
    FSources.emplace_back();
    for (int32_t i = parser.FSymbolCount; i-- > 0;) {
        auto* element = SymbolAs<TDTDElement>(parser.GetSymbol(i));
        if (!element || !IsElementName(*element)) continue;
        TName name = AddName(element->FName);
        FNameOf[static_cast<size_t>(element->FOrdinal)] = name;
        FDeclared.push_back(element);
        FByName.Add(FoldedHash(element->FName), name);
        SetGlobal(name, AddElement(name));
        FSources.push_back({element, element});
    }
    FNone.resize(FSources.size());
    ReadRules();
}

TName TDTDGrammar::FindName(std::string_view written) const {
    uint32_t hash = FoldedHash(written);
    const TName* found = FByName.Find(hash, [&](TName name) { return FDeclared[name]->FName == written; });
    if (!found)
        found = FByName.Find(hash, [&](TName name) { return SameText(FDeclared[name]->FName, written); });
    return found ? *found : NoName;
}

TName TDTDGrammar::NameOf(const TDTDElement& element) const {
    return FNameOf[static_cast<size_t>(element.FOrdinal)];
}

TDTDExprNode* TDTDGrammar::ContentOf(const TDTDElement& element) const {
    return element.FIsDeclared && element.FExprList ? element.FExprList->GetExpr(0) : nullptr;
}

// ---- what a comment says

void TDTDGrammar::ReadRules() {
    for (const TDTDContentRule& rule : FParser.FContentRules) ReadRule(rule.Place, rule.Meaning);
}

void TDTDGrammar::ReadRule(std::string_view place, std::string_view meaning) {
    size_t dot = place.find('.');
    TName name = FindName(place.substr(0, dot));
    if (name == NoName) return;
    TElementId id = FindChild(UnknownElement, name);
    TElementModel& model = Edit(id);
    if (dot == place.npos) {
        model.IsTransparent |= meaning == "around";
        return;
    }
    bool isDeep = place.substr(dot + 1).starts_with('.');
    TName child = FindName(place.substr(dot + (isDeep ? 2 : 1)));
    TName other = FindName(meaning);
    if (child == NoName) return;
    if (isDeep) {
        if (other != NoName) model.Likenesses.push_back({child, other});
    } else if (meaning == "own") {
        model.Own.Add(child);
    } else if (meaning == "none") {
        FNone[id].Add(child);
    } else if (other != NoName) {
        model.Children.emplace_back(child, AddElement(child));
        FSources.push_back({FDeclared[child], FDeclared[other]});
        FNone.emplace_back().Add(child);
    }
}

// ---- declarations

void TDTDGrammar::AddNames(TNameSet& names, TDTDExprNode* expression) const {
    TDTDExprWalk walk(expression);
    while (TDTDExprNode* node = walk.Next())
        if (auto* element = SymbolAs<TDTDElement>(node->Symbol))
            if (TName name = NameOf(*element); name != NoName) names.Add(name);
}

void TDTDGrammar::Compile(TElementId id, TElementModel& model) {
    if (id == RootElement) return CompileRoot(model);
    const auto& [element, source] = FSources[id];
    TDTDExprNode* content = ContentOf(*source);
    model.MayOmitStart = element->FIsDeclared && !element->FRequiresStartTag;
    model.MayOmitEnd = element->FIsDeclared && !element->FRequiresEndTag;
    model.IsEmpty = IsWord(content, "EMPTY");
    model.HoldsAny = IsWord(content, "ANY") || !element->FIsDeclared;
    model.IsExact = element->FIsDeclared;
    for (const TDTDElement* owner : {element, source}) {
        AddNames(model.Inclusions, owner->FInclusions);
        AddNames(model.Exclusions, owner->FExclusions);
        model.HasExceptions |= owner->FInclusions || owner->FExclusions;
    }
    model.HasExceptions |= !model.Likenesses.empty();
    const TNameSet& none = FNone[id];
    if (model.HoldsAny) {
        for (TName name = 0; name < FDeclared.size(); ++name) model.Alphabet.Add(name);
    } else {
        AddNames(model.Alphabet, content);
    }
    model.Alphabet.RemoveAll(none);
    if (model.HoldsAny) {
        std::vector<TTerm> names;
        model.Alphabet.ForEach([&](TName name) { names.push_back(Models().Element(name)); });
        return SetContent(model, Models().Repeat(Models().Choice(names), 0, TContentModels::Unbounded));
    }
    SetContent(model, TermOf(content, none));
}

/// The members of a name group share one expression.
TTerm TDTDGrammar::TermOf(TDTDExprNode* content, const TNameSet& none) {
    auto make = [&] {
        return MakeTerm(Models(), content, [&](const TDTDElement& word) {
            TName name = NameOf(word);
            return none.Has(name) ? NoName : name;
        });
    };
    if (!none.IsEmpty()) return make();
    auto [row, isNew] = FTerms.try_emplace(content);
    if (isNew) {
        row->second.Term = make();
        row->second.IsCoarse = Models().TakeCoarse();
    }
    if (row->second.IsCoarse) Models().NoteCoarse();
    return row->second.Term;
}

// The outermost element of a document is one that stands in no other.
void TDTDGrammar::CompileRoot(TElementModel& model) {
    TNameSet held;
    std::vector<const TDTDExprNode*> seen;
    for (const TDTDElement* element : FDeclared) {
        TDTDExprNode* content = ContentOf(*element);
        if (!seen.empty() && seen.back() == content) continue;
        seen.push_back(content);
        TNameSet names;
        AddNames(names, content);
        AddNames(names, element->FInclusions);
        // One that holds itself and stands nowhere else begins documents all the same.
        if (TName name = NameOf(*element); !held.Has(name)) names.Remove(name);
        held.AddAll(names);
    }
    for (TName name = 0; name < FDeclared.size(); ++name)
        if (FDeclared[name]->FIsDeclared && !held.Has(name)) model.Alphabet.Add(name);
    if (model.Alphabet.IsEmpty()) model.Alphabet = held;
    std::vector<TTerm> roots;
    model.Alphabet.ForEach([&](TName name) { roots.push_back(Models().Element(name)); });
    SetContent(model, Models().Choice(roots));
}

}  // namespace caretwell
