// Content models and value lists: "a", "(a|b)*", "((a, b)?, (#PCDATA))".
//
// Groups nest as deep as a file likes, so the chains that are still open stand in a
// list of their own and not on the call stack.
#include "schema/DTDParser.h"

namespace caretwell {

TDTDExprNode* TDTDParser::ParseExpr() {
    switch (Token()) {
        case tkNumber:
        case tkIdentifier:
        case tkPound: return ParseExprBody();
        case tkLParen: {
            NextToken();
            TDTDExprNode* group = ParseExprBody();
            CloseGroup(group);
            // Inside a group the node after it takes this mark.
            if (Token() == tkQuestionMark) {
                group->FGroupAttr = eaZeroOrOne;
                NextToken();
            }
            return group;
        }
        default: return CreateExpr();
    }
}

void TDTDParser::CloseGroup(TDTDExprNode* group) {
    if (Token() == tkRParenPlus) {
        group->FAttr = group->FGroupAttr = eaOneOrMore;
        NextToken();
    } else if (Token() == tkRParen) {
        NextToken();
        if (Token() != tkAsterisk) return;
        group->FAttr = group->FGroupAttr = eaZeroOrMore;
        NextToken();
    } else {
        Expected(")");
    }
}

TDTDParser::TChain TDTDParser::StartChain() {
    TDTDExprNode* node = CreateExpr();
    return {node, nullptr, node};
}

TDTDExprNode* TDTDParser::ParseExprBody() {
    FChains.clear();
    FChains.push_back(StartChain());
    for (;;) {
        if (Token() == tkLParen) {
            NextToken();
            FChains.push_back(StartChain());
            continue;
        }
        ParseItem(FChains.back().Current);
        while (!ParseConnector(FChains.back())) {
            TDTDExprNode* first = FChains.back().First;
            FChains.pop_back();
            if (FChains.empty()) return first;
            CloseGroup(first);
            AttachGroup(FChains.back(), first);
        }
    }
}

void TDTDParser::ParseItem(TDTDExprNode* node) {
    switch (Token()) {
        case tkNumber:
        case tkIdentifier: {
            const std::string& name = FScanner->FTokenText;
            node->Symbol = LookupSymbol(name, FDeclType);
            if (!node->Symbol) node->Symbol = EnterSymbol(name, FDeclType);
            NextToken();
            break;
        }
        case tkPound: ParseAttribute(nullptr); break;
        default: break;
    }
}

/// Reads the mark and the connector after an item. Without a connector the chain ends.
bool TDTDParser::ParseConnector(TChain& chain) {
    switch (Token()) {
        case tkPlus:
            chain.Current->FAttr = chain.Current->FItemAttr = eaOneOrMore;
            NextToken();
            break;
        case tkQuestionMark:
            chain.Current->FAttr = chain.Current->FItemAttr = eaZeroOrOne;
            NextToken();
            break;
        case tkAsterisk:
            chain.Current->FAttr = chain.Current->FItemAttr = eaZeroOrMore;
            NextToken();
            break;
        default: break;
    }
    switch (Token()) {
        case tkLogicalOr: chain.Current->FOp = eoLogicalOr; break;
        case tkComma: chain.Current->FOp = eoSequence; break;
        case tkLogicalAnd: chain.Current->FOp = eoLogicalAnd; break;
        default: return false;
    }
    NextToken();
    chain.Previous = chain.Current;
    chain.Current = CreateExpr();
    chain.Previous->Right = chain.Current;
    return true;
}

/// A group hangs on the item before it, which is none but an empty one if the group
/// begins its chain. The node after carries the group's mark and connector.
void TDTDParser::AttachGroup(TChain& chain, TDTDExprNode* group) {
    if (!chain.Previous) {
        chain.Previous = chain.Current;
        chain.Current = CreateExpr();
        chain.Previous->Right = chain.Current;
    }
    chain.Previous->Left = group;
}

}  // namespace caretwell
