// The sheet, its at-rules and rules, and the blocks of declarations.
#include "stylesheet/CSSParserTools.h"

namespace caretwell {
namespace {

bool BeginsSelector(TStyleSheetToken token) {
    return token == toIdent || token == toHash || token == '.' || token == ':' || token == '[';
}

}  // namespace

// ---------------------------------------------------------------------- sheet

void TStyleSheetParser::ParseStyleSheet() {
    GetToken();
    if (TakeToken(toCharset)) {
        if (NoteCaret(kpExpr)) return;
        Expect(toString, scBlock);
        if (NoteCaret(kpExpr)) return;
        EndStatement();
    } else if (NoteCaret(kpExpr)) return;
    ParseSGMLComment();
    while (FToken == toImport) {
        ParseImport();
        EndStatement();
        ParseSGMLComment();
    }
    for (bool isRule = true; isRule;) {
        isRule = ParseTopRule();
        ParseSGMLComment();
    }
}

/// False at a token that begins no rule: whatever lies after is not read.
bool TStyleSheetParser::ParseTopRule() {
    if (BeginsSelector(FToken) || FToken == '*') ParseRuleSet();
    else if (FToken == toPage) ParsePage();
    else if (FToken == toMedia) ParseMedia();
    else if (FToken == toFontFace) ParseFontFace();
    else return false;
    return true;
}

/// Steps over the ";" of a statement. Where an error stands before it, that is the ";"
/// at which recovery stops, or the block of a rule whose head stands in its place.
void TStyleSheetParser::EndStatement() {
    if (NoteCaret(kpExpr) || Expect(';', scBlock) || TakeToken(';')) return;
    if (FToken == '{') ParseRuleSet();
}

void TStyleSheetParser::ParseSGMLComment() {
    if (NoteCaret(kpComment) || FToken != toCDO) return;
    while (FToken != toCDC && FToken != toEOF && FToken != toCaret) GetToken();
    NoteCaret(kpComment);
    TakeToken(toCDC);
}

// ------------------------------------------------------------------- at-rules

// Up to its ";" (see EndStatement).
void TStyleSheetParser::ParseImport() {
    if (NoteCaret(kpRule)) return;
    Expect(toImport, scStatement);
    if (NoteCaret(kpRule)) return;
    if (FToken == toString || FToken == toURI) GetToken();
    if (NoteCaret(kpExpr)) return;
    if (FToken == toIdent) ParseMediaList();
}

void TStyleSheetParser::ParseMedia() {
    if (NoteCaret(kpExpr)) return;
    Expect(toMedia, scStatement);
    if (NoteCaret(kpExpr)) return;
    ParseMediaList();
    if (NoteCaret(kpExpr)) return;
    if (OpenBlock(kpExpr)) ParseMediaRules();
}

void TStyleSheetParser::ParseMediaList() {
    do ParseMedium();
    while (TakeToken(','));
}

// A block whose head the grammar does not know (another at-rule, the universal
// selector) is read as that of a rule without a selector.
void TStyleSheetParser::ParseMediaRules() {
    FIsInMedia = true;
    for (;;) {
        while (BeginsSelector(FToken)) ParseRuleSet();
        if (NoteCaret(kpExpr) || Expect('}', scBlock) || TakeToken('}')) break;
        if (FToken == '{') ParseRuleSet();
        else if (!TakeToken(';')) break;
    }
    FIsInMedia = false;
}

void TStyleSheetParser::ParseMedium() {
    if (!TakeToken(toIdent) && !NoteCaret(kpExpr)) Expect(toIdent, scBlock);
}

void TStyleSheetParser::ParsePage() {
    if (NoteCaret(kpRule)) return;
    Expect(toPage, scStatement);
    if (NoteCaret(kpRule)) return;
    TakeToken(toIdent);
    ParsePseudoPage();
    if (NoteCaret(kpRule)) return;
    if (OpenBlock(kpProperty)) ParseDeclarations(kpExpr);
}

void TStyleSheetParser::ParsePseudoPage() {
    if (NoteCaret(kpRule)) return;
    Expect(':', scBlock);
    if (!TakeToken(toIdent) && !NoteCaret(kpRule)) Expect(toIdent, scBlock);
}

void TStyleSheetParser::ParseFontFace() {
    if (NoteCaret(kpRule)) return;
    Expect(toFontFace, scStatement);
    if (NoteCaret(kpRule)) return;
    if (OpenBlock(kpProperty)) ParseDeclarations(kpProperty);
}

// ----------------------------------------------------------- rules and blocks

void TStyleSheetParser::ParseRuleSet() {
    if (NoteCaret(kpRule)) return;
    do ParseSelector();
    while (TakeToken(','));
    // Whatever the routines of the selector noted: before the "{" all is selector.
    if (FToken == toCaret) FKibitzPos = kpRule;
    else if (OpenBlock(kpProperty)) ParseDeclarations(kpProperty);
}

/// Steps over the "{" of a block, and over what stands before it and is in error.
/// False if the rule ended without a block; a "}" is then left to the @media around it.
bool TStyleSheetParser::OpenBlock(TKibitzPos atCaret) {
    if (Expect('{', scBlock) || TakeToken('{')) return true;
    if (FToken == '}') {
        if (!FIsInMedia) GetToken();
        return false;
    }
    TakeToken(';');
    NoteCaret(atCaret);
    return false;
}

// Up to the end of the block. Blocks that open inside (nested rules, for one, which
// the grammar does not know) are counted and read like the block itself, without
// recursion; so their declarations are understood and the block ends at its own "}".
void TStyleSheetParser::ParseDeclarations(TKibitzPos atCaret) {
    for (int32_t depth = 1; depth > 0;) {
        do ParseDeclaration();
        while (TakeToken(';'));
        if (NoteCaret(atCaret)) return;
        if (Expect('}', scBlock) || TakeToken('}')) --depth;
        else if (TakeToken('{')) ++depth;
        else if (FToken != ';') return;
    }
}

void TStyleSheetParser::ParseDeclaration() {
    if (NoteCaret(kpProperty) || FToken != toIdent) return;
    FLastDeclaration = TokenText();
    GetToken();
    // A word at the caret that has no colon yet is a property being typed.
    if (NoteCaret(kpProperty)) return;
    bool hasColon = Expect(':', scBlock);
    // Without a colon there is no value, and a term would drop the token at which the
    // recovery stopped.
    if (NoteCaret(kpExpr) || !hasColon) return;
    ParseExpr();
    TakeToken(toImportant);
}

}  // namespace caretwell
