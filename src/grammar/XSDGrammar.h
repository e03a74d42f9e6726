// The grammar of an XML schema: of two elements of one name each place has its own.
#pragma once

#include "grammar/Grammar.h"
#include "schema/XMLContent.h"

namespace caretwell {

struct TXSDPlan;

class TXSDGrammar final : public TGrammar {
public:
    explicit TXSDGrammar(std::shared_ptr<TXSDPlan> plan);
    ~TXSDGrammar() override;

    TName FindName(std::string_view written) const override;
    TName NextAlike(TName name) const override { return FWritten[name].NextAlike; }
    std::string GetText(TName name) const override { return FWritten[name].Text; }
    void SetNamespaces(const TDocumentNamespaces& namespaces) override;
    bool IsMatch(TName wildcard, TName name) const override;
    TNameSet GetMatches(TName wildcard) const override;

private:
    struct TWritten {
        std::string Namespace, Local;
        std::string Text;  // with its prefix
        TName NextAlike = NoName;
    };
    void Compile(TElementId id, TElementModel& model) override;
    void CompileRoot(TElementModel& model);
    void ReadContentOf(const TXMLType& type, TElementModel& model);
    TName NameOf(const TXMLDeclaration& element);
    TElementId DeclarationOf(const TXMLDeclaration& element);
    void Enter(TName name);
    TTerm ReadParticle(const TXMLContent& content, size_t index, TElementModel& model);
    TTerm ReadElement(const TXMLDeclaration& element, TElementModel& model);
    TTerm ReadWildcard(const TXMLWildcard& wildcard, TElementModel& model);

    std::shared_ptr<TXSDPlan> FPlan;
    std::vector<TXMLDeclaration> FDeclarations;  // by element, less the root
    std::unordered_map<const void*, TElementId> FByTarget;
    std::unordered_map<const void*, TElementId> FByType;  // an element of the type that is compiled
    std::vector<TWritten> FWritten;                       // by name
    std::unordered_map<std::string, TName> FByKey, FByText;
    std::vector<TXMLWildcard> FWildcards;
    std::vector<TName> FGlobals;
    std::unique_ptr<TDocumentNamespaces> FNamespaces;
};

}  // namespace caretwell
