// The grammar of a document type definition.
#pragma once

#include "grammar/Grammar.h"
#include "markup/NameMap.h"

namespace caretwell {

class TDTDParser;
struct TDTDElement;
struct TDTDExprNode;

class TDTDGrammar final : public TGrammar {
public:
    /// The parser is not owned and outlives the grammar.
    explicit TDTDGrammar(const TDTDParser& parser);

    TName FindName(std::string_view written) const override;

private:
    /// A declaration for one place: the element's own, with the content of another.
    struct TSource {
        TDTDElement* Element = nullptr;
        TDTDElement* Content = nullptr;
    };
    void Compile(TElementId id, TElementModel& model) override;
    void CompileRoot(TElementModel& model);
    void ReadRules();
    void ReadRule(std::string_view place, std::string_view meaning);
    void AddNames(TNameSet& names, TDTDExprNode* expression) const;
    TTerm TermOf(TDTDExprNode* content, const TNameSet& none);
    TDTDExprNode* ContentOf(const TDTDElement& element) const;
    TName NameOf(const TDTDElement& element) const;

    const TDTDParser& FParser;
    std::vector<TDTDElement*> FDeclared;  // in the order of the names
    std::vector<TName> FNameOf;           // by the ordinal of the element
    std::vector<TSource> FSources;        // by declaration
    struct TMade {
        TTerm Term = TContentModels::Nothing;
        bool IsCoarse = false;
    };
    std::unordered_map<const TDTDExprNode*, TMade> FTerms;
    TNameMap<TName> FByName;
    std::vector<TNameSet> FNone;  // by declaration: names that its model has for others
};

}  // namespace caretwell
