// Selectors. Every caret before the "{" of a rule ends up as kpRule, whatever is noted
// here on the way (see ParseRuleSet).
#include "stylesheet/CSSParserTools.h"

namespace caretwell {

TSelector* TStyleSheetParser::ParseSelector() {
    if (NoteCaret(kpProperty)) return nullptr;
    auto* selector = NewNode<TSelector>();
    selector->FLeft = ParseSimpleSelector();
    for (TNodeOp* last = selector; !NoteCaret(kpProperty);) {
        last->FOp = ParseCombinator();
        if (NoteCaret(kpProperty)) break;
        auto* next = NewNode<TNodeOp>();
        last->FRight = next;
        last = next;
        bool isSelector = FToken == toIdent || FToken == '*' || FToken == toHash || FToken == '.' ||
                          FToken == '[' || FToken == ':';
        if (!isSelector) break;
        last->FLeft = ParseSimpleSelector();
    }
    return selector;
}

TOp TStyleSheetParser::ParseCombinator() {
    if (TakeToken('+')) return OpPlus;
    if (TakeToken('>')) return OpGreaterThan;
    NoteCaret(kpExpr);
    return OpNone;
}

TSimpleSelector* TStyleSheetParser::ParseSimpleSelector() {
    if (NoteCaret(kpProperty)) return nullptr;
    auto* selector = NewNode<TSimpleSelector>();
    if (FToken == toIdent || FToken == '*') selector->FElementName = ParseElementName();
    while (FToken == '.' || FToken == ':' || FToken == '[' || FToken == toHash) {
        auto* value = FPool.Make<TSimpleSelectorValue>();
        if (FToken == '.') value->SetClass(ParseClass());
        else if (FToken == ':') value->SetPseudo(ParsePseudo());
        else if (FToken == '[') value->SetAttrib(ParseAttrib());
        else value->SetHash(TakeText());
        selector->AddValue(value);
    }
    return selector;
}

std::string_view TStyleSheetParser::ParseElementName() { return TakeText(); }

std::string_view TStyleSheetParser::ParseClass() {
    if (NoteCaret(kpProperty)) return {};
    Expect('.', scBlock);
    if (FToken == toIdent) return TakeText();
    if (!NoteCaret(kpProperty)) Expect(toIdent, scBlock);
    return {};
}

std::string_view TStyleSheetParser::ParsePseudo() {
    if (NoteCaret(kpExpr)) return {};
    Expect(':', scBlock);
    if (FToken == toIdent) return TakeText();
    if (FToken == toFunction) {
        std::string_view text = TakeText();
        TakeToken('(');
        Expect(toIdent, scBlock);
        if (!NoteCaret(kpExpr)) Expect(')', scBlock);
        return text;
    }
    if (!NoteCaret(kpExpr)) Expect(toIdent, scBlock);
    return {};
}

// A bracket that is never closed must not take the blocks of all later rules with it,
// so recovery stops at braces here as it does everywhere.
TNodeOp* TStyleSheetParser::ParseAttrib() {
    constexpr uint8_t stops = scStatement | scBlock;
    if (NoteCaret(kpProperty)) return nullptr;
    auto* test = NewNode<TNodeOp>();
    auto* name = NewNode<TCSSValueNode>();
    Expect('[', stops);
    name->FValueKind = vkIdent;
    name->FValue = KeepText();
    test->FLeft = name;
    if (NoteCaret(kpProperty)) return test;
    Expect(toIdent, stops);
    if (TakeToken('=')) test->FOp = OpEquals;
    else if (TakeToken(toIncludes)) test->FOp = OpIncludes;
    else if (TakeToken(toDashMatch)) test->FOp = OpDashMatch;
    if (NoteCaret(kpProperty)) return test;
    if (FToken == toIdent || FToken == toString) {
        auto* value = NewNode<TCSSValueNode>();
        value->FValueKind = FToken == toIdent ? vkIdent : vkString;
        value->FValue = TakeText();
        test->FRight = value;
        if (NoteCaret(kpProperty)) return test;
    }
    if (!NoteCaret(kpProperty)) Expect(']', stops);
    return test;
}

}  // namespace caretwell
