// Selectors. Every caret before the "{" of a rule ends up as kpRule, whatever is noted
// here on the way (see ParseRuleSet).
#include "stylesheet/CSSParserTools.h"

namespace caretwell {

void TStyleSheetParser::ParseSelector() {
    if (NoteCaret(kpProperty)) return;
    ParseSimpleSelector();
    while (!NoteCaret(kpProperty)) {
        ParseCombinator();
        if (NoteCaret(kpProperty)) break;
        bool isSelector = FToken == toIdent || FToken == '*' || FToken == toHash || FToken == '.' ||
                          FToken == '[' || FToken == ':';
        if (!isSelector) break;
        ParseSimpleSelector();
    }
}

void TStyleSheetParser::ParseCombinator() {
    if (!TakeToken('+') && !TakeToken('>')) NoteCaret(kpExpr);
}

void TStyleSheetParser::ParseSimpleSelector() {
    if (NoteCaret(kpProperty)) return;
    if (FToken == toIdent || FToken == '*') GetToken();
    while (FToken == '.' || FToken == ':' || FToken == '[' || FToken == toHash) {
        if (FToken == '.') ParseClass();
        else if (FToken == ':') ParsePseudo();
        else if (FToken == '[') ParseAttrib();
        else GetToken();
    }
}

void TStyleSheetParser::ParseClass() {
    if (NoteCaret(kpProperty)) return;
    Expect('.', scBlock);
    if (!TakeToken(toIdent) && !NoteCaret(kpProperty)) Expect(toIdent, scBlock);
}

void TStyleSheetParser::ParsePseudo() {
    if (NoteCaret(kpExpr)) return;
    Expect(':', scBlock);
    if (TakeToken(toIdent)) return;
    if (TakeToken(toFunction)) {
        TakeToken('(');
        Expect(toIdent, scBlock);
        if (!NoteCaret(kpExpr)) Expect(')', scBlock);
        return;
    }
    if (!NoteCaret(kpExpr)) Expect(toIdent, scBlock);
}

// A bracket that is never closed must not take the blocks of all later rules with it,
// so recovery stops at braces here as it does everywhere.
void TStyleSheetParser::ParseAttrib() {
    constexpr uint8_t stops = scStatement | scBlock;
    if (NoteCaret(kpProperty)) return;
    Expect('[', stops);
    if (NoteCaret(kpProperty)) return;
    Expect(toIdent, stops);
    if (!TakeToken('=') && !TakeToken(toIncludes)) TakeToken(toDashMatch);
    if (NoteCaret(kpProperty)) return;
    if (!TakeToken(toIdent)) TakeToken(toString);
    if (!NoteCaret(kpProperty)) Expect(']', stops);
}

}  // namespace caretwell
