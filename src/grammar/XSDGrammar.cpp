#include "grammar/XSDGrammar.h"

#include <algorithm>

#include "parser/DocumentNamespaces.h"
#include "symbols/XSDPlan.h"

namespace caretwell {

TXSDGrammar::TXSDGrammar(std::shared_ptr<TXSDPlan> plan)
    : FPlan(std::move(plan)), FNamespaces(std::make_unique<TDocumentNamespaces>()) {
    FPlan->Library.BeginUse();
    AddElement(NoName);  // the root
    for (const TXMLDeclaration& element : ReadGlobals(*FPlan->Schema)) {
        TName name = NameOf(element);
        SetGlobal(name, DeclarationOf(element));
        FGlobals.push_back(name);
    }
}

TXSDGrammar::~TXSDGrammar() = default;

// ---- names

TName TXSDGrammar::NameOf(const TXMLDeclaration& element) {
    std::string key(element.GetNamespace());
    key.append(" ").append(element.GetName());
    auto [row, isNew] = FByKey.try_emplace(std::move(key), static_cast<TName>(FWritten.size()));
    if (!isNew) return row->second;
    FWritten.push_back({std::string(element.GetNamespace()), std::string(element.GetName()), {}, NoName});
    AddName(element.GetName());
    Enter(row->second);
    return row->second;
}

void TXSDGrammar::Enter(TName name) {
    TWritten& written = FWritten[name];
    std::string prefix(FNamespaces->GetPrefix(written.Namespace));
    written.Text = prefix.empty() ? written.Local : prefix + ":" + written.Local;
    auto [row, isNew] = FByText.try_emplace(written.Text, name);
    written.NextAlike = isNew ? NoName : std::exchange(row->second, name);
}

TName TXSDGrammar::FindName(std::string_view written) const {
    if (auto found = FByText.find(std::string(written)); found != FByText.end()) return found->second;
    // A document may bind several prefixes to one namespace, of which one is shown.
    size_t colon = written.find(':');
    std::string key(FNamespaces->GetNamespace(written.substr(0, colon)));
    if (colon == written.npos || key.empty()) return NoName;
    auto found = FByKey.find(key.append(" ").append(written.substr(colon + 1)));
    return found == FByKey.end() ? NoName : found->second;
}

void TXSDGrammar::SetNamespaces(const TDocumentNamespaces& namespaces) {
    *FNamespaces = namespaces;
    FByText.clear();
    for (TName name = 0; name < FWritten.size(); ++name) Enter(name);
}

bool TXSDGrammar::IsMatch(TName wildcard, TName name) const {
    const TXMLWildcard& row = FWildcards[wildcard - FirstWildcard];
    if (row.IsAny || name == NoName) return true;
    bool isListed = std::ranges::find(row.Namespaces, FWritten[name].Namespace) != row.Namespaces.end();
    return isListed != row.IsOther;
}

TNameSet TXSDGrammar::GetMatches(TName wildcard) const {
    TNameSet names;
    for (TName name : FGlobals)
        if (IsMatch(wildcard, name)) names.Add(name);
    return names;
}

// ---- declarations

TElementId TXSDGrammar::DeclarationOf(const TXMLDeclaration& element) {
    auto [row, isNew] = FByTarget.try_emplace(element.GetTarget());
    if (isNew) {
        row->second = AddElement(NameOf(element));
        FDeclarations.push_back(element);
    }
    return row->second;
}

void TXSDGrammar::Compile(TElementId id, TElementModel& model) {
    if (id == RootElement) return CompileRoot(model);
    FPlan->Library.BeginQuestion();
    TXMLType type = FDeclarations[id - 1].GetDataType();
    if (!type) {  // declared nowhere
        model.IsExact = false;
        model.HoldsAny = true;
        return;
    }
    if (type.IsBuiltIn() && type.IsComplex()) {  // xs:anyType
        TXMLWildcard any;
        any.IsAny = true;
        TTerm term = ReadWildcard(any, model);
        return SetContent(model, Models().Repeat(term, 0, TContentModels::Unbounded));
    }
    auto [row, isNew] = FByType.try_emplace(type.GetNode(), id);
    if (isNew || row->second == id) return ReadContentOf(type, model);
    TName name = model.Name;
    model = Get(row->second);
    model.Name = name;
}

void TXSDGrammar::ReadContentOf(const TXMLType& type, TElementModel& model) {
    TXMLContent content = ReadContent(type);
    if (content.IsCoarse) {
        std::vector<TTerm> names;
        for (const TXMLDeclaration& element : type.GetElements())
            names.push_back(ReadElement(element, model));
        Models().NoteCoarse();
        return SetContent(model, Models().Repeat(Models().Choice(names), 0, TContentModels::Unbounded));
    }
    SetContent(model, content.Particles.empty() ? TContentModels::Nothing : ReadParticle(content, 0, model));
}

void TXSDGrammar::CompileRoot(TElementModel& model) {
    std::vector<TTerm> roots;
    for (TName name : FGlobals) {
        model.Alphabet.Add(name);
        roots.push_back(Models().Element(name));
    }
    SetContent(model, Models().Choice(roots));
}

// ---- particles

TTerm TXSDGrammar::ReadElement(const TXMLDeclaration& element, TElementModel& model) {
    TElementId id = DeclarationOf(element);
    TName name = Edit(id).Name;
    model.Alphabet.Add(name);
    model.Children.emplace_back(name, id);
    return Models().Element(name);
}

TTerm TXSDGrammar::ReadWildcard(const TXMLWildcard& wildcard, TElementModel& model) {
    auto name = static_cast<TName>(FirstWildcard + FWildcards.size());
    FWildcards.push_back(wildcard);
    model.HoldsAny = true;
    model.Alphabet.AddAll(GetMatches(name));
    return Models().Element(name);
}

// As deep as content is nested, which has a bound.
TTerm TXSDGrammar::ReadParticle(const TXMLContent& content, size_t index, TElementModel& model) {
    const TXMLParticle& particle = content.Particles[index];
    if (particle.Kind == TXMLParticleKind::Element) return ReadElement(*particle.Element, model);
    TTerm term = TContentModels::Nothing;
    if (particle.Kind == TXMLParticleKind::Wildcard) {
        term = ReadWildcard(particle.Wildcard, model);
    } else {
        std::vector<TTerm> parts;
        for (size_t part = index + 1; part < particle.End; part = content.Particles[part].End)
            parts.push_back(ReadParticle(content, part, model));
        if (particle.Kind == TXMLParticleKind::Sequence) term = Models().Sequence(parts);
        else if (particle.Kind == TXMLParticleKind::Choice) term = Models().Choice(parts);
        else term = Models().All(parts);
    }
    return Models().Repeat(term, particle.Least, particle.Most);
}

}  // namespace caretwell
