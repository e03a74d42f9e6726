// Values: terms side by side or with "/" and "," between them.
#include "stylesheet/CSSParserTools.h"

namespace caretwell {
namespace {

// Calls in calls beyond this are skipped by their parentheses: the answer at a caret
// in them is the same, and the stack stays small whatever the text.
constexpr int32_t DeepestFunction = 200;

bool ContinuesExpr(TStyleSheetToken token) {
    return token == '/' || token == ',' || token == toString || token == toIdent || token == toHash ||
           token == toAtKeyword || (token >= toEms && token <= toUnicodeRange);
}

}  // namespace

// "+" and "-" continue nothing: only a first term, or one behind an operator, has a sign.
TNodeOp* TStyleSheetParser::ParseExpr() {
    if (NoteCaret(kpExpr)) return nullptr;
    auto* expr = NewNode<TNodeOp>();
    expr->FLeft = ParseTerm();
    for (TNodeOp* last = expr; !NoteCaret(kpExpr) && ContinuesExpr(FToken);) {
        last->FOp = ParseOperator();
        if (NoteCaret(kpExpr)) break;
        auto* next = NewNode<TNodeOp>();
        last->FRight = next;
        last = next;
        last->FLeft = ParseTerm();
    }
    return expr;
}

TOp TStyleSheetParser::ParseOperator() {
    if (TakeToken('/')) return OpSlash;
    if (TakeToken(',')) return OpComma;
    NoteCaret(kpExpr);
    return OpNone;
}

TCSSNode* TStyleSheetParser::ParseTerm() {
    if (NoteCaret(kpExpr)) return nullptr;
    auto* value = NewNode<TCSSValueNode>();
    switch (FToken) {
        case toString: return TakeValue(*value, vkString);
        case toIdent: return TakeValue(*value, vkIdent);
        case toURI: return TakeValue(*value, vkURI);
        case toUnicodeRange: return TakeValue(*value, vkUnicodeRange);
        case toHash:
            value->FValueKind = vkHash;
            value->FValue = ParseHexColor();
            return NoteCaret(kpExpr) ? nullptr : value;
        default: break;
    }
    auto* term = NewNode<TNodeOp>();
    if (FToken == '-' || FToken == '+') term->FOp = ParseUnaryOperator();
    if (NoteCaret(kpExpr)) return nullptr;
    if (FToken >= toEms && FToken <= toNumber)
        TakeValue(*value, static_cast<TValueKind>(vkEms + (FToken - toEms)));
    else if (FToken == toFunction) term->FLeft = ParseFunction();
    else DropToken();
    if (!term->FLeft) term->FLeft = value;
    return term;
}

TCSSNode* TStyleSheetParser::TakeValue(TCSSValueNode& value, TValueKind kind) {
    value.FValueKind = kind;
    value.FValue = TakeText();
    return &value;
}

TOp TStyleSheetParser::ParseUnaryOperator() {
    if (TakeToken('-')) return OpMinus;
    TakeToken('+');
    return OpPlus;
}

std::string_view TStyleSheetParser::ParseHexColor() {
    if (FToken == toHash) return TakeText();
    if (!NoteCaret(kpExpr)) Expect(toHash, scBlock);
    return {};
}

// The "(" is the first term of the argument, dropped as any token that begins none.
TNodeOp* TStyleSheetParser::ParseFunction() {
    if (NoteCaret(kpExpr)) return nullptr;
    Expect(toFunction, scBlock);
    if (NoteCaret(kpExpr)) return nullptr;
    if (FFunctionDepth == DeepestFunction) {
        SkipArguments();
        return nullptr;
    }
    ++FFunctionDepth;
    TNodeOp* arguments = ParseExpr();
    --FFunctionDepth;
    if (!NoteCaret(kpExpr)) Expect(')', scBlock);
    return arguments;
}

void TStyleSheetParser::SkipArguments() {
    int32_t depth = 0;
    do {
        if (FToken == '(') ++depth;
        if (FToken == ')') --depth;
        GetToken();
    } while (depth > 0 && !(TokenClass[FToken] & (scBlock | scEnd)));
    NoteCaret(kpExpr);
}

}  // namespace caretwell
