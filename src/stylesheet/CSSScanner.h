// Bytes of a style sheet to tokens, up to the caret.
//
//     a{col^or: red   ->   toIdent "a", "{", toIdent "color", toCaret, toCaret, ...
//
// The scanner knows the caret: no token begins at or after it, and from there on only
// toCaret comes. So the parser stops just there, in whatever rule it happens to be, and
// every loop in it ends. A token that has begun before the caret is read to its end.
//
// Text is 8-bit, as the buffer gives it. Every byte sequence gives some token.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "markup/MLBufferProducer.h"

namespace caretwell {

/// A code below 128 is the character itself, but for toEOF and toCaret.
using TStyleSheetToken = uint8_t;
enum : TStyleSheetToken {
    toEOF = 0,
    toCaret = 1,
    toCDO = 128,         ///< <!--
    toCDC = 129,         ///< -->
    toIncludes = 130,    ///< ~=
    toDashMatch = 131,   ///< |=
    toString = 132,      ///< with its quotes
    toIdent = 133,       ///<
    toHash = 134,        ///< "#" and a name; the text is the name
    toImport = 135,      ///< at-keywords; the text is the word without the "@"
    toPage = 136,        ///<
    toMedia = 137,       ///<
    toFontFace = 138,    ///<
    toCharset = 139,     ///<
    toAtKeyword = 140,   ///< any other
    toImportant = 141,   ///< "!" and the word
    toEms = 142,         ///< numbers; the text holds number and unit
    toExs = 143,         ///<
    toLength = 144,      ///<
    toAngle = 145,       ///<
    toTime = 146,        ///<
    toFrequency = 147,   ///<
    toDimension = 148,   ///< any other unit
    toPercentage = 149,  ///<
    toNumber = 150,      ///<
    toURI = 151,         ///< url with its argument; the text is "url"
    toFunction = 152,    ///< a name with "(" after it, which stays the next token
    toUnicodeRange = 153
};

class TStyleSheetScanner {
public:
    /// Begins a new text. The caret is a byte offset. Without a producer the text is empty.
    void SetBufferAndPoint(TRef<IMLBufferProducer> producer, int32_t caret);
    /// Lets go of the producer; only toCaret or toEOF come afterwards.
    void ReleaseBuffer();

    /// Advances to the next token.
    TStyleSheetToken GetToken();
    /// Text of the current token; toCaret and toEOF leave the last one. Of a text
    /// beyond 64 KB only the last part is there. Lives until the next GetToken.
    std::string_view GetTokenStr() const { return FTokenStr; }
    /// What messages call a token.
    static std::string TokenToStr(TStyleSheetToken token);

    int32_t GetLine() const { return FLine; }  ///< lines passed, from 0
    /// Bytes between the start of the line and the place of reading.
    int32_t GetCharIndex() const { return static_cast<int32_t>(FCurrent - FBlock) - FLineStart; }

private:
    bool FillBuffer();
    uint8_t Peek();

    // The text of the token that is being read; it may run over the end of a block.
    void BeginText();
    void EndText();
    void KeepText();
    size_t TextLength() const;

    void SkipWhitespace();
    void SkipLineEnd();
    void SkipEscape();
    void SkipNameRest();
    void SkipName();
    void SkipAlphanumerics();
    void SkipDigits();
    void HandleComment();
    void HandleString(char quote);
    void HandleURI();

    TStyleSheetToken ReadToken();
    TStyleSheetToken ReadChar();
    TStyleSheetToken ReadString();
    TStyleSheetToken ReadHyphens();
    TStyleSheetToken ReadLess();
    TStyleSheetToken ReadWithEquals(TStyleSheetToken joined);
    TStyleSheetToken ReadPoint();
    TStyleSheetToken ReadNumber();
    TStyleSheetToken ReadUnit();
    TStyleSheetToken ReadWord();
    TStyleSheetToken ReadMarkedName(TStyleSheetToken (*lookup)(std::string_view));
    TStyleSheetToken ReadUnicodeRange();
    TStyleSheetToken JoinParenthesis(TStyleSheetToken token);

    static TStyleSheetToken LookupAtKeywordToken(std::string_view text);
    static TStyleSheetToken LookupFunctionToken(std::string_view text);
    static TStyleSheetToken LookupImportantToken(std::string_view text);
    static TStyleSheetToken LookupNumToken(std::string_view unit);

    // A text without blocks is one zero byte.
    static constexpr char NoText[1] = {};

    const char* FCurrent = NoText;
    int32_t FLineStart = 0;  // index in the block; below 0 if the line began in an earlier one
    std::string_view FTokenStr;
    TRef<IMLBufferProducer> FProducer;
    int32_t FLine = 0;
    TStyleSheetToken FToken = toEOF;
    int32_t FCaret = 0;

    const char* FBlock = NoText;
    int32_t FBlockOffset = 0;
    std::ptrdiff_t FCaretIndex = 0;  // FCaret seen from the start of the block
    bool FIsAtEnd = true;
    const char* FTextStart = nullptr;  // null between tokens
    bool FIsCarried = false;           // FCarry holds the beginning of the text
    std::string FCarry;
};

}  // namespace caretwell
