// Reads a style sheet from its top to the caret and says what may stand there.
//
//     a { co^              kpProperty
//     a { color: re^       kpExpr, of the property color
//     a, b.c^              kpRule
//
// A routine for each rule of the grammar. The scanner stops at the caret with a token
// of its own; every routine looks out for it and notes the position that belongs to
// its place. The first note wins, so the innermost routine answers.
//
// Nothing is validated. What the grammar does not know costs as little as it can: no
// recovery steps over a ";", "{" or "}", so an error in a rule never changes the answer
// in a later one, and one in a declaration only that of its own.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

#include "stylesheet/CSSEditors.h"
#include "stylesheet/CSSImpl.h"
#include "stylesheet/CSSNodePool.h"
#include "stylesheet/CSSScanner.h"
#include "stylesheet/CSSSymbols.h"

namespace caretwell {

/// What is expected at the caret.
enum TKibitzPos : uint8_t {
    kpNone,      ///< nothing known, or nothing to offer
    kpExpr,      ///< in a value
    kpProperty,  ///< where a property name goes
    kpRule,      ///< in a selector or the head of an at-rule
    kpComment    ///< between rules, or in an SGML comment
};
/// "kpExpr" for kpExpr.
std::string_view KibitzPosName(TKibitzPos position);

enum TErrorKind { ekError, ekWarning };

class TStyleSheetParser {
public:
    using TOnParseErrorEvent = std::function<void(TStyleSheetParser& parser, const std::string& message)>;

    TStyleSheetParser() : FSymbolTable(this) {}
    TStyleSheetParser(const TStyleSheetParser&) = delete;
    TStyleSheetParser& operator=(const TStyleSheetParser&) = delete;

    /// The text for the next Parse and the byte offset of the caret in it.
    void SetBufferAndPoint(TRef<IMLBufferProducer> producer, int32_t caret);
    /// Sets FKibitzPos and the table's current property. Any text will do. The tree lives
    /// until the next parse, but of a long sheet only its last rules (see ForgetLongTree);
    /// the producer is let go.
    TStyleSheet* Parse();

    /// Newest node of the last parse; the chain of all goes on through FNext.
    const TCSSNode* GetKibitzNode() const { return FKibitzNode; }
    /// Newest declaration of the last parse; null if there is none.
    const TDeclaration* GetLastDeclaration() const;
    const TStyleSheetScanner& GetScanner() const { return FScanner; }

    TOnParseErrorEvent FOnParseError;  ///< may be empty: syntax errors are silent then
    TKibitzPos FKibitzPos = kpNone;    ///< the answer of the last parse
    bool FIsInFunction = false;        ///< the caret stands between the parentheses of a function
    TCSSSymbolTable FSymbolTable;

private:
    // Classes of tokens at which a failed Expect stops; it never consumes one.
    static constexpr uint8_t scStatement = 1;  // ";"
    static constexpr uint8_t scBlock = 2;      // what blocks are made of
    static constexpr uint8_t scEnd = 4;        // stops every recovery
    static const std::array<uint8_t, 256> TokenClass;

    // Tokens.
    void GetToken();
    void DropToken();
    void Regain(TStyleSheetToken token);
    TStyleSheetToken SwallowedToken() const;
    std::string_view TokenText() const;
    std::string_view KeepText() { return FPool.Keep(TokenText()); }
    std::string_view TakeText();
    bool TakeToken(TStyleSheetToken token);
    bool Expect(TStyleSheetToken token, uint8_t classes);
    void ParseError(TErrorKind kind, std::string_view format, std::initializer_list<std::string_view> args);

    void Note(TKibitzPos position);
    bool NoteCaret(TKibitzPos position);
    template <class T>
    T* NewNode();

    // The sheet and its at-rules.
    void ParseStyleSheet();
    bool ParseTopRule();
    void EndStatement();
    void ForgetLongTree();
    TSGMLComment* ParseSGMLComment();
    TImport* ParseImport();
    TMedia* ParseMedia();
    void ParseMediaList(TCSSStringList& list);
    void ParseMediaRules(TMedia& media);
    std::string_view ParseMedium();
    TPage* ParsePage();
    std::string_view ParsePseudoPage();
    TFontFace* ParseFontFace();

    // Rules and blocks.
    TRuleSet* ParseRuleSet();
    bool OpenBlock(TKibitzPos atCaret);
    void ParseDeclarations(TDeclarationList& declarations, TKibitzPos atCaret);
    TDeclaration* ParseDeclaration();
    std::string_view ParseProperty();
    TCSSPriority ParsePrio();

    // Selectors.
    TSelector* ParseSelector();
    TOp ParseCombinator();
    TSimpleSelector* ParseSimpleSelector();
    bool ParseSelectorValue(TSimpleSelectorValue& value);
    std::string_view ParseElementName();
    std::string_view ParseClass();
    TNodeOp* ParseAttrib();
    std::string_view ParsePseudo();

    // Values.
    TNodeOp* ParseExpr();
    TOp ParseOperator();
    TCSSNode* ParseTerm();
    TCSSNode* TakeValue(TCSSValueNode& value, TValueKind kind);
    TOp ParseUnaryOperator();
    std::string_view ParseHexColor();
    TNodeOp* ParseFunction();
    void SkipArguments();

    TStyleSheetScanner FScanner;
    TStyleSheet FSheet;
    TCSSNode* FKibitzNode = nullptr;
    TNodePool FPool;
    TStyleSheetToken FToken = toEOF;
    TStyleSheetToken FHeldToken = toEOF;  // comes next, if FIsHeld
    bool FIsHeld = false;
    bool FIsInMedia = false;
    int32_t FFunctionDepth = 0;
};

}  // namespace caretwell
