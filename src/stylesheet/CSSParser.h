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
    /// Sets FKibitzPos and the table's current property. Any text will do. The producer is
    /// let go.
    void Parse();

    /// Property of the newest declaration of the last parse, as written; empty without one.
    const std::string& GetLastDeclaration() const { return FLastDeclaration; }

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
    bool TakeToken(TStyleSheetToken token);
    bool Expect(TStyleSheetToken token, uint8_t classes);
    void ParseError(TErrorKind kind, std::string_view format, std::initializer_list<std::string_view> args);

    void Note(TKibitzPos position);
    bool NoteCaret(TKibitzPos position);

    // The sheet and its at-rules.
    void ParseStyleSheet();
    bool ParseTopRule();
    void EndStatement();
    void ParseSGMLComment();
    void ParseImport();
    void ParseMedia();
    void ParseMediaList();
    void ParseMediaRules();
    void ParseMedium();
    void ParsePage();
    void ParsePseudoPage();
    void ParseFontFace();

    // Rules and blocks.
    void ParseRuleSet();
    bool OpenBlock(TKibitzPos atCaret);
    void ParseDeclarations(TKibitzPos atCaret);
    void ParseDeclaration();

    // Selectors.
    void ParseSelector();
    void ParseCombinator();
    void ParseSimpleSelector();
    void ParseClass();
    void ParseAttrib();
    void ParsePseudo();

    // Values.
    void ParseExpr();
    void ParseTerm();
    void ParseFunction();
    void SkipArguments();

    TStyleSheetScanner FScanner;
    std::string FLastDeclaration;
    TStyleSheetToken FToken = toEOF;
    TStyleSheetToken FHeldToken = toEOF;  // comes next, if FIsHeld
    bool FIsHeld = false;
    bool FIsInMedia = false;
    int32_t FFunctionDepth = 0;
};

}  // namespace caretwell
