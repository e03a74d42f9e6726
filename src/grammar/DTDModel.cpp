#include "grammar/DTDModel.h"

#include "schema/DTDSymbols.h"

namespace caretwell {
namespace {

constexpr int MaxNesting = 100;

class TReader {
public:
    TReader(TContentModels& models, const TNameOfElement& nameOf) : FModels(models), FNameOf(nameOf) {}

    TTerm ReadGroup(TDTDExprNode* first, int depth) {
        if (depth > MaxNesting) return ReadNames(first);
        std::vector<TTerm> parts;
        TExprOp connector = eoNull;
        const TDTDExprNode* previous = nullptr;
        for (TDTDExprNode* node = first; node; previous = node, node = node->Right) {
            if (node->FOp != eoNull && !(node == first && IsHead(*node))) connector = node->FOp;
            // A group hangs on the item before it, and the node after that carries its mark.
            if (previous && previous->Left) {
                TTerm group = ReadGroup(previous->Left, depth + 1);
                parts.push_back(Repeated(group, node->FItemAttr));
            } else if (auto* element = SymbolAs<TDTDElement>(node->Symbol)) {
                TName name = FNameOf(*element);
                if (name != NoName) parts.push_back(Repeated(FModels.Element(name), node->FItemAttr));
            } else if (!IsHead(*node)) {
                parts.push_back(TContentModels::Nothing);  // text
            }
        }
        return Repeated(Join(parts, connector), first ? first->FGroupAttr : eaNone);
    }

private:
    // The empty item that a group hangs on where it begins its chain.
    static bool IsHead(const TDTDExprNode& node) { return !node.Symbol && node.Left && node.FOp == eoNull; }

    TTerm Join(std::vector<TTerm>& parts, TExprOp connector) {
        switch (connector) {
            case eoSequence: return FModels.Sequence(parts);
            case eoLogicalAnd: return FModels.All(parts);
            case eoLogicalOr: return FModels.Choice(parts);
            case eoNull: break;
        }
        return FModels.Choice(parts);
    }

    TTerm ReadNames(TDTDExprNode* expression) {
        std::vector<TTerm> names;
        TDTDExprWalk walk(expression);
        while (TDTDExprNode* node = walk.Next())
            if (auto* element = SymbolAs<TDTDElement>(node->Symbol))
                if (TName name = FNameOf(*element); name != NoName) names.push_back(FModels.Element(name));
        FModels.NoteCoarse();
        return FModels.Repeat(FModels.Choice(names), 0, TContentModels::Unbounded);
    }

    TTerm Repeated(TTerm term, TExprAttributes mark) {
        switch (mark) {
            case eaZeroOrMore: return FModels.Repeat(term, 0, TContentModels::Unbounded);
            case eaOneOrMore: return FModels.Repeat(term, 1, TContentModels::Unbounded);
            case eaZeroOrOne: return FModels.Repeat(term, 0, 1);
            case eaNone: break;
        }
        return term;
    }

    TContentModels& FModels;
    const TNameOfElement& FNameOf;
};

}  // namespace

TTerm MakeTerm(TContentModels& models, TDTDExprNode* expression, const TNameOfElement& nameOf) {
    return TReader(models, nameOf).ReadGroup(expression, 0);
}

}  // namespace caretwell
