// The sheet, its at-rules and rules, and the blocks of declarations.
#include "stylesheet/CSSParserTools.h"

namespace caretwell {
namespace {

constexpr size_t LongestTree = 256 * 1024;  // stays in the cache of the processor

bool BeginsSelector(TStyleSheetToken token) {
    return token == toIdent || token == toHash || token == '.' || token == ':' || token == '[';
}

void AddMedium(TCSSStringList& list, std::string_view medium) {
    if (!medium.empty()) list.Add(medium);
}

}  // namespace

// ---------------------------------------------------------------------- sheet

void TStyleSheetParser::ParseStyleSheet() {
    GetToken();
    if (TakeToken(toCharset)) {
        if (NoteCaret(kpExpr)) return;
        FSheet.FCharset = KeepText();
        Expect(toString, scBlock);
        if (NoteCaret(kpExpr)) return;
        EndStatement();
    } else if (NoteCaret(kpExpr)) return;
    FSheet.AddRule(ParseSGMLComment());
    while (FToken == toImport) {
        FSheet.AddRule(ParseImport());
        EndStatement();
        FSheet.AddRule(ParseSGMLComment());
    }
    for (bool isRule = true; isRule;) {
        ForgetLongTree();
        isRule = ParseTopRule();
        FSheet.AddRule(ParseSGMLComment());
    }
}

/// False at a token that begins no rule: whatever lies behind is not read.
bool TStyleSheetParser::ParseTopRule() {
    if (BeginsSelector(FToken) || FToken == '*') FSheet.AddRule(ParseRuleSet());
    else if (FToken == toPage) FSheet.AddRule(ParsePage());
    else if (FToken == toMedia) FSheet.AddRule(ParseMedia());
    else if (FToken == toFontFace) FSheet.AddRule(ParseFontFace());
    else return false;
    return true;
}

/// Steps over the ";" of a statement. Where an error stands before it, that is the ";"
/// at which recovery stops, or the block of a rule whose head stands in its place.
void TStyleSheetParser::EndStatement() {
    if (NoteCaret(kpExpr) || Expect(';', scBlock) || TakeToken(';')) return;
    if (FToken == '{') FSheet.AddRule(ParseRuleSet());
}

// Of a sheet of a megabyte the tree would take ten, and filling them more time than the
// scan. Of finished rules only the newest declaration is ever read, so between two rules
// a tree that has grown large begins anew with just that.
void TStyleSheetParser::ForgetLongTree() {
    if (FToken == toCaret || FPool.GetSize() <= LongestTree) return;
    const TDeclaration* last = GetLastDeclaration();
    std::string property(last ? last->FProperty : std::string_view());
    std::string charset(FSheet.FCharset);
    FPool.Clear();
    FSheet = TStyleSheet();
    FSheet.FCharset = FPool.Keep(charset);
    FKibitzNode = &FSheet;
    if (last) NewNode<TDeclaration>()->FProperty = FPool.Keep(property);
}

TSGMLComment* TStyleSheetParser::ParseSGMLComment() {
    if (NoteCaret(kpComment) || FToken != toCDO) return nullptr;
    auto* comment = NewNode<TSGMLComment>();
    std::string text;
    for (;;) {
        GetToken();
        if (FToken == toCDC || FToken == toEOF || FToken == toCaret) break;
        text += TokenText();
    }
    NoteCaret(kpComment);
    TakeToken(toCDC);
    comment->FText = FPool.Keep(text);
    return comment;
}

// ------------------------------------------------------------------- at-rules

// Up to its ";" (see EndStatement).
TImport* TStyleSheetParser::ParseImport() {
    if (NoteCaret(kpRule)) return nullptr;
    auto* import = NewNode<TImport>();
    Expect(toImport, scStatement);
    if (NoteCaret(kpRule)) return import;
    if (FToken == toString || FToken == toURI) import->FURI = TakeText();
    if (NoteCaret(kpExpr)) return import;
    if (FToken == toIdent) ParseMediaList(import->FMediaList);
    return import;
}

TMedia* TStyleSheetParser::ParseMedia() {
    if (NoteCaret(kpExpr)) return nullptr;
    auto* media = NewNode<TMedia>();
    Expect(toMedia, scStatement);
    if (NoteCaret(kpExpr)) return media;
    ParseMediaList(media->FMediaList);
    if (NoteCaret(kpExpr)) return media;
    if (OpenBlock(kpExpr)) ParseMediaRules(*media);
    return media;
}

void TStyleSheetParser::ParseMediaList(TCSSStringList& list) {
    AddMedium(list, ParseMedium());
    while (TakeToken(',')) AddMedium(list, ParseMedium());
}

// A block whose head the grammar does not know (another at-rule, the universal
// selector) is read as that of a rule without a selector.
void TStyleSheetParser::ParseMediaRules(TMedia& media) {
    FIsInMedia = true;
    for (;;) {
        while (BeginsSelector(FToken)) media.AddRule(ParseRuleSet());
        if (NoteCaret(kpExpr) || Expect('}', scBlock) || TakeToken('}')) break;
        if (FToken == '{') media.AddRule(ParseRuleSet());
        else if (!TakeToken(';')) break;
    }
    FIsInMedia = false;
}

std::string_view TStyleSheetParser::ParseMedium() {
    if (FToken == toIdent) return TakeText();
    if (!NoteCaret(kpExpr)) Expect(toIdent, scBlock);
    return {};
}

TPage* TStyleSheetParser::ParsePage() {
    if (NoteCaret(kpRule)) return nullptr;
    auto* page = NewNode<TPage>();
    Expect(toPage, scStatement);
    if (NoteCaret(kpRule)) return page;
    if (FToken == toIdent) page->FPageName = TakeText();
    page->FPseudoPage = ParsePseudoPage();
    if (NoteCaret(kpRule)) return page;
    if (OpenBlock(kpProperty)) ParseDeclarations(page->FDecls, kpExpr);
    return page;
}

std::string_view TStyleSheetParser::ParsePseudoPage() {
    if (NoteCaret(kpRule)) return {};
    Expect(':', scBlock);
    if (FToken == toIdent) return TakeText();
    if (!NoteCaret(kpRule)) Expect(toIdent, scBlock);
    return {};
}

TFontFace* TStyleSheetParser::ParseFontFace() {
    if (NoteCaret(kpRule)) return nullptr;
    auto* face = NewNode<TFontFace>();
    Expect(toFontFace, scStatement);
    if (NoteCaret(kpRule)) return face;
    if (OpenBlock(kpProperty)) ParseDeclarations(face->FDecls, kpProperty);
    return face;
}

// ----------------------------------------------------------- rules and blocks

TRuleSet* TStyleSheetParser::ParseRuleSet() {
    if (NoteCaret(kpRule)) return nullptr;
    auto* rule = NewNode<TRuleSet>();
    rule->AddSelector(ParseSelector());
    while (TakeToken(',')) rule->AddSelector(ParseSelector());
    if (FToken == toCaret) {
        // Whatever the routines of the selector noted: before the "{" all is selector.
        FKibitzPos = kpRule;
        return rule;
    }
    if (OpenBlock(kpProperty)) ParseDeclarations(rule->FDecls, kpProperty);
    return rule;
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
void TStyleSheetParser::ParseDeclarations(TDeclarationList& declarations, TKibitzPos atCaret) {
    for (int32_t depth = 1; depth > 0;) {
        do declarations.Add(ParseDeclaration());
        while (TakeToken(';'));
        if (NoteCaret(atCaret)) return;
        if (Expect('}', scBlock) || TakeToken('}')) --depth;
        else if (TakeToken('{')) ++depth;
        else if (FToken != ';') return;
    }
}

TDeclaration* TStyleSheetParser::ParseDeclaration() {
    if (NoteCaret(kpProperty) || FToken != toIdent) return nullptr;
    auto* declaration = NewNode<TDeclaration>();
    declaration->FProperty = ParseProperty();
    // A word at the caret that has no colon yet is a property being typed.
    if (NoteCaret(kpProperty)) return declaration;
    bool hasColon = Expect(':', scBlock);
    if (NoteCaret(kpExpr)) return declaration;
    // Without a colon there is no value, and a term would drop the token at which the
    // recovery stopped.
    if (!hasColon) return declaration;
    declaration->FExpr = ParseExpr();
    if (FToken == toImportant) declaration->FPriority = ParsePrio();
    return declaration;
}

std::string_view TStyleSheetParser::ParseProperty() {
    if (FToken == toIdent) return TakeText();
    if (!NoteCaret(kpProperty)) Expect(toIdent, scBlock);
    return {};
}

TCSSPriority TStyleSheetParser::ParsePrio() {
    if (TakeToken(toImportant)) return cpImportant;
    if (!NoteCaret(kpExpr)) Expect(toImportant, scBlock);
    return cpNone;
}

}  // namespace caretwell
