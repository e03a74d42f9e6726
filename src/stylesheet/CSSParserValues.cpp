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

// "+" and "-" continue nothing: only a first term, or one after an operator, has a sign.
void TStyleSheetParser::ParseExpr() {
    if (NoteCaret(kpExpr)) return;
    ParseTerm();
    while (!NoteCaret(kpExpr) && ContinuesExpr(FToken)) {
        if (!TakeToken('/')) TakeToken(',');
        if (NoteCaret(kpExpr)) break;
        ParseTerm();
    }
}

void TStyleSheetParser::ParseTerm() {
    if (NoteCaret(kpExpr)) return;
    switch (FToken) {
        case toString:
        case toIdent:
        case toURI:
        case toUnicodeRange: return GetToken();
        case toHash:
            GetToken();
            NoteCaret(kpExpr);
            return;
        default: break;
    }
    if (!TakeToken('-')) TakeToken('+');
    if (NoteCaret(kpExpr)) return;
    if (FToken >= toEms && FToken <= toNumber) GetToken();
    else if (FToken == toFunction) ParseFunction();
    else DropToken();
}

// The "(" is the first term of the argument, dropped as any token that begins none.
void TStyleSheetParser::ParseFunction() {
    if (NoteCaret(kpExpr)) return;
    Expect(toFunction, scBlock);
    if (NoteCaret(kpExpr)) return;
    if (FFunctionDepth == DeepestFunction) return SkipArguments();
    ++FFunctionDepth;
    ParseExpr();
    --FFunctionDepth;
    if (!NoteCaret(kpExpr)) Expect(')', scBlock);
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
