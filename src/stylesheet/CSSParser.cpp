// The parse as a whole, its tokens, and how it gets over an error.
#include "stylesheet/CSSParser.h"

#include "stylesheet/CSSParserTools.h"

namespace caretwell {

std::string_view KibitzPosName(TKibitzPos position) {
    constexpr std::string_view Names[] = {"kpNone", "kpExpr", "kpProperty", "kpRule", "kpComment"};
    return Names[position];
}

void TStyleSheetParser::SetBufferAndPoint(TRef<IMLBufferProducer> producer, int32_t caret) {
    FScanner.SetBufferAndPoint(std::move(producer), caret);
}

void TStyleSheetParser::Parse() {
    FKibitzPos = kpNone;
    FLastDeclaration.clear();
    FSymbolTable.ResetKibitz();
    FIsHeld = FIsInMedia = FIsInFunction = false;
    FFunctionDepth = 0;
    ParseStyleSheet();
    FScanner.ReleaseBuffer();
    // The newest declaration is the one that the caret stands in, also when a routine
    // further out did the noting. It does not end with its rule.
    if (FKibitzPos == kpExpr || FKibitzPos == kpProperty)
        FSymbolTable.SetKibitzProperty(FSymbolTable.LookupProperty(FLastDeclaration));
}

// --------------------------------------------------------------------- tokens

// Nothing that structures a sheet is stepped over by a recovery: whoever stops at one
// of the three knows what it means where they stand.
constexpr std::array<uint8_t, 256> TStyleSheetParser::TokenClass = [] {
    std::array<uint8_t, 256> classes{};
    classes[toEOF] = classes[toCaret] = scEnd;
    classes[';'] = scStatement | scBlock;
    classes['{'] = classes['}'] = scBlock;
    return classes;
}();

void TStyleSheetParser::GetToken() {
    if (FIsHeld) {
        FIsHeld = false;
        FToken = FHeldToken;
        return;
    }
    TStyleSheetToken swallowed = SwallowedToken();
    FToken = FScanner.GetToken();
    if (swallowed) Regain(swallowed);
}

// A name takes its first byte whatever it is, so the brace in "! }" or "#{" is the
// whole text of a token. The token stays what it is, but the block must not lose its
// brace: it comes as a token of its own.
TStyleSheetToken TStyleSheetParser::SwallowedToken() const {
    bool isMarkedName = FToken == '!' || FToken == toHash || FToken == toAtKeyword || FToken == toFunction;
    std::string_view text = isMarkedName ? FScanner.GetTokenStr() : std::string_view();
    auto first = static_cast<TStyleSheetToken>(text.empty() ? 0 : text.front());
    return TokenClass[first] & scBlock ? first : TStyleSheetToken{0};
}

// Puts a token before the current one. Not at the caret: what stands there is still
// part of what was read last.
void TStyleSheetParser::Regain(TStyleSheetToken token) {
    if (FToken == toCaret) return;
    FHeldToken = FToken;
    FIsHeld = true;
    FToken = token;
}

// A term drops what it does not know, also a ";" or "}". With the caret directly
// after, the caret still stands in the value; with more text after, declaration and
// block have ended there all the same.
//     a { color: ; ^        still in the value of color
//     a { color: } b { ^    in the block of b
void TStyleSheetParser::DropToken() {
    TStyleSheetToken dropped = FToken;
    GetToken();
    if (TokenClass[dropped] & scBlock) Regain(dropped);
}

std::string_view TStyleSheetParser::TokenText() const {
    if (FIsHeld) return {reinterpret_cast<const char*>(&FToken), 1};
    return FScanner.GetTokenStr();
}

// --------------------------------------------------------------------- errors

/// True if the token was there, and it is stepped over then. Otherwise the current
/// token is the first one of the classes or of the end; it is not consumed.
bool TStyleSheetParser::Expect(TStyleSheetToken token, uint8_t classes) {
    if (TakeToken(token)) return true;
    if (FOnParseError) {
        std::string expected = TStyleSheetScanner::TokenToStr(token);
        std::string found =
            FToken == toIdent ? std::string(TokenText()) : TStyleSheetScanner::TokenToStr(FToken);
        ParseError(ekError, "Expected '%s' but found '%s'", {expected, found});
    }
    while (!(TokenClass[FToken] & (classes | scEnd))) GetToken();
    return false;
}

void TStyleSheetParser::ParseError(TErrorKind, std::string_view format,
                                   std::initializer_list<std::string_view> args) {
    if (!FOnParseError) return;
    std::string message;
    for (std::string_view arg : args) {
        size_t place = format.find("%s");
        message.append(format.substr(0, place)).append(arg);
        format.remove_prefix(place + 2);
    }
    FOnParseError(*this, message.append(format));
}

}  // namespace caretwell
