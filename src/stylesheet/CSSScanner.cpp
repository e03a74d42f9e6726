#include "stylesheet/CSSScanner.h"

#include <algorithm>
#include <array>
#include <limits>

#include "markup/Text.h"

namespace caretwell {
namespace {

enum TByteClass : uint8_t {
    bcDigit = 1,
    bcLetter = 2,
    bcHyphen = 4,
    bcBackslash = 8,
    bcHigh = 16,  // part of a character beyond ASCII

    bcAlphanumeric = bcDigit | bcLetter,
    bcNameStart = bcLetter | bcBackslash | bcHigh,
    bcPlainName = bcDigit | bcLetter | bcHyphen | bcHigh
};

// "_" belongs to no name here, and a form feed is no white space.
constexpr std::array<uint8_t, 256> ByteClasses = [] {
    std::array<uint8_t, 256> classes{};
    for (unsigned c = '0'; c <= '9'; ++c) classes[c] = bcDigit;
    for (unsigned c = 'a'; c <= 'z'; ++c) classes[c] = classes[c - 32] = bcLetter;
    for (unsigned c = 128; c <= 255; ++c) classes[c] = bcHigh;
    classes['-'] = bcHyphen;
    classes['\\'] = bcBackslash;
    return classes;
}();

constexpr size_t LongestCarried = 65536;

constexpr bool IsOf(uint8_t c, uint8_t classes) { return ByteClasses[c] & classes; }
constexpr bool IsEscapable(uint8_t c) { return c >= 32 && c <= 127; }
constexpr uint8_t Byte(const char* p) { return static_cast<uint8_t>(*p); }

const char* PlainNameEnd(const char* p) {
    while (IsOf(Byte(p), bcPlainName)) ++p;
    return p;
}

std::string_view TextBetween(const char* start, const char* end) {
    return {start, static_cast<size_t>(end - start)};
}

}  // namespace

// -------------------------------------------------------------------- blocks

void TStyleSheetScanner::SetBufferAndPoint(TRef<IMLBufferProducer> producer, int32_t caret) {
    FProducer = std::move(producer);
    FCurrent = FBlock = NoText;
    FLine = FLineStart = 0;
    FToken = toEOF;
    FTokenStr = {};
    FTextStart = nullptr;
    FCaret = caret;
    FIsAtEnd = false;
    FBlockOffset = 0;
    FillBuffer();
    FLineStart = 0;
}

void TStyleSheetScanner::ReleaseBuffer() {
    FProducer = nullptr;
    FCurrent = FBlock = NoText;
    FTokenStr = {};
    FTextStart = nullptr;
    FIsAtEnd = true;
    FLineStart = 0;
}

// A document may hold a zero byte of its own. It ends its block like any other, so the
// rest of that block goes unread and offsets stay right.
bool TStyleSheetScanner::FillBuffer() {
    if (FIsAtEnd) return false;
    KeepText();
    bool hasData = FProducer && FProducer->FillBuffer();
    if (!hasData) {
        FIsAtEnd = true;
        // Behind the last block there is one place only, the end of the text.
        int32_t end = FProducer ? FProducer->BufferOffset(FCurrent) : 0;
        FCaretIndex = end >= FCaret ? std::numeric_limits<std::ptrdiff_t>::min()
                                    : std::numeric_limits<std::ptrdiff_t>::max();
        return false;
    }
    FBlock = FCurrent = FProducer->BufferAtOffset(0);
    int32_t offset = FProducer->BufferOffset(FBlock);
    FLineStart -= offset - FBlockOffset;
    FBlockOffset = offset;
    FCaretIndex = std::ptrdiff_t{FCaret} - offset;
    if (FTextStart) FTextStart = FCurrent;
    return true;
}

inline uint8_t TStyleSheetScanner::Peek() {
    if (!*FCurrent) FillBuffer();
    return Byte(FCurrent);
}

inline void TStyleSheetScanner::BeginText() {
    FTextStart = FCurrent;
    FIsCarried = false;
}

inline size_t TStyleSheetScanner::TextLength() const {
    return (FIsCarried ? FCarry.size() : 0) + static_cast<size_t>(FCurrent - FTextStart);
}

inline void TStyleSheetScanner::EndText() {
    std::string_view text = TextBetween(FTextStart, FCurrent);
    FTokenStr = FIsCarried ? std::string_view(FCarry.append(text)) : text;
    FTextStart = nullptr;
}

// The block is about to go away, and with it what was read of a text.
void TStyleSheetScanner::KeepText() {
    if (!FTextStart) {
        if (FTokenStr.data() != FCarry.data()) FCarry = FTokenStr;
        FTokenStr = std::string_view(FCarry).substr(0, FTokenStr.size());
        return;
    }
    // Nobody reads a text that is so long; of one that is, the last part is left.
    if (!FIsCarried || FCarry.size() > LongestCarried) FCarry.clear();
    FIsCarried = true;
    FCarry.append(FTextStart, FCurrent);
    FTextStart = FCurrent;
}

// ------------------------------------------------------------ steps of a token

// CR and LF in either order, or one of them alone, is one line end.
void TStyleSheetScanner::SkipLineEnd() {
    char first = *FCurrent++;
    if (IsBreakPair(first, static_cast<char>(Peek()))) ++FCurrent;  // which may lie in the next block
    ++FLine;
    FLineStart = static_cast<int32_t>(FCurrent - FBlock);
}

void TStyleSheetScanner::SkipWhitespace() {
    for (;;) {
        const char* p = FCurrent;
        while (*p == ' ' || *p == '\t') ++p;
        FCurrent = p;
        if (IsLineBreak(*p)) SkipLineEnd();
        else if (*p || !FillBuffer()) return;
    }
}

void TStyleSheetScanner::SkipAlphanumerics() {
    while (IsOf(Peek(), bcAlphanumeric)) ++FCurrent;
}

void TStyleSheetScanner::SkipDigits() {
    while (IsOf(Peek(), bcDigit)) ++FCurrent;
}

// A hexadecimal escape takes the white space with it that closes it.
void TStyleSheetScanner::SkipEscape() {
    ++FCurrent;
    uint8_t c = Peek();
    if (IsOf(c, bcAlphanumeric)) {
        SkipAlphanumerics();
        SkipWhitespace();
    } else if (IsEscapable(c)) ++FCurrent;
}

void TStyleSheetScanner::SkipNameRest() {
    for (;;) {
        FCurrent = PlainNameEnd(FCurrent);
        if (*FCurrent == '\\') SkipEscape();
        else if (*FCurrent || !FillBuffer()) return;
    }
}

// The first byte is taken whatever it is.
void TStyleSheetScanner::SkipName() {
    uint8_t first = Peek();
    if (!first) return;
    if (first == '\\') SkipEscape();
    else ++FCurrent;
    SkipNameRest();
}

void TStyleSheetScanner::HandleComment() {
    for (bool isStar = false;;) {
        uint8_t c = Peek();
        if (!c) return;
        if (IsLineBreak(c)) SkipLineEnd();
        else ++FCurrent;
        if (isStar && c == '/') return;
        isStar = c == '*';
    }
}

void TStyleSheetScanner::HandleString(char quote) {
    ++FCurrent;
    for (;;) {
        uint8_t c = Byte(FCurrent);
        if (!c) {
            if (!FillBuffer()) return;
        } else if (IsLineBreak(c)) SkipLineEnd();
        else {
            ++FCurrent;
            if (c == static_cast<uint8_t>(quote)) return;
            if (c == '\\' && IsEscapable(Peek())) ++FCurrent;
        }
    }
}

void TStyleSheetScanner::HandleURI() {
    uint8_t c = Peek();
    if (c == '"' || c == '\'') HandleString(static_cast<char>(c));
    else
        for (; c && c != ')'; c = Peek()) {
            if (IsLineBreak(c)) SkipLineEnd();
            else ++FCurrent;
        }
    if (Peek() == ')') ++FCurrent;
}

// --------------------------------------------------------------------- tokens

TStyleSheetToken TStyleSheetScanner::GetToken() {
    for (;;) {
        if (Byte(FCurrent) <= ' ') SkipWhitespace();
        // Before all else, so that a caret at the very end is met and not the end.
        if (FCurrent - FBlock >= FCaretIndex) return FToken = toCaret;
        if (*FCurrent != '/') return FToken = ReadToken();
        ++FCurrent;
        if (Peek() != '*') {
            FTokenStr = "/";
            return FToken = '/';
        }
        ++FCurrent;
        HandleComment();
    }
}

TStyleSheetToken TStyleSheetScanner::ReadToken() {
    uint8_t first = Byte(FCurrent);
    if (IsOf(first, bcNameStart)) return first == 'U' ? ReadUnicodeRange() : ReadWord();
    if (IsOf(first, bcDigit)) return ReadNumber();
    switch (first) {
        case 0: return toEOF;
        case '"':
        case '\'': return ReadString();
        case '-': return ReadHyphens();
        case '<': return ReadLess();
        case '~': return ReadWithEquals(toIncludes);
        case '|': return ReadWithEquals(toDashMatch);
        case '.': return ReadPoint();
        case '#': return ReadMarkedName([](std::string_view) { return TStyleSheetToken{toHash}; });
        case '@': return ReadMarkedName(LookupAtKeywordToken);
        case '!': return ReadMarkedName(LookupImportantToken);
        default: return ReadChar();
    }
}

TStyleSheetToken TStyleSheetScanner::ReadChar() {
    FTokenStr = TextBetween(FCurrent, FCurrent + 1);
    uint8_t c = Byte(FCurrent++);
    // The byte 1 would pass for the caret: it becomes a control character that means
    // as little.
    return c == toCaret ? TStyleSheetToken{2} : c;
}

TStyleSheetToken TStyleSheetScanner::ReadString() {
    BeginText();
    HandleString(*FCurrent);
    EndText();
    return toString;
}

TStyleSheetToken TStyleSheetScanner::ReadHyphens() {
    TStyleSheetToken token = '-';
    BeginText();
    ++FCurrent;
    if (Peek() == '-') {
        ++FCurrent;
        if (Peek() == '>') {
            ++FCurrent;
            token = toCDC;
        }
    }
    EndText();
    return token;
}

TStyleSheetToken TStyleSheetScanner::ReadLess() {
    TStyleSheetToken token = toCDO;
    BeginText();
    ++FCurrent;
    for (char expected : {'!', '-', '-'}) {
        if (Peek() != static_cast<uint8_t>(expected)) {
            token = '<';
            break;
        }
        ++FCurrent;
    }
    EndText();
    return token;
}

TStyleSheetToken TStyleSheetScanner::ReadWithEquals(TStyleSheetToken joined) {
    BeginText();
    TStyleSheetToken token = Byte(FCurrent++);
    if (Peek() == '=') {
        ++FCurrent;
        token = joined;
    }
    EndText();
    return token;
}

TStyleSheetToken TStyleSheetScanner::ReadPoint() {
    BeginText();
    ++FCurrent;
    if (IsOf(Peek(), bcDigit)) {
        SkipDigits();
        return ReadUnit();
    }
    EndText();
    return '.';
}

TStyleSheetToken TStyleSheetScanner::ReadNumber() {
    BeginText();
    SkipDigits();
    if (Peek() == '.') {
        ++FCurrent;
        SkipDigits();
    }
    return ReadUnit();
}

TStyleSheetToken TStyleSheetScanner::ReadUnit() {
    if (Peek() == '%') {
        ++FCurrent;
        EndText();
        return toPercentage;
    }
    if (!IsOf(Peek(), bcNameStart)) {
        EndText();
        return toNumber;
    }
    size_t digits = TextLength();
    SkipName();
    EndText();
    return JoinParenthesis(LookupNumToken(FTokenStr.substr(std::min(digits, FTokenStr.size()))));
}

TStyleSheetToken TStyleSheetScanner::ReadWord() {
    // Most words hold no escape and end within the block.
    const char* end = PlainNameEnd(FCurrent);
    if (*end && *end != '\\') {
        FTokenStr = TextBetween(FCurrent, end);
        FCurrent = end;
        return JoinParenthesis(toIdent);
    }
    BeginText();
    SkipName();
    EndText();
    return JoinParenthesis(toIdent);
}

// "#", "@" or "!" and the name after it, which alone is the text. White space may
// stand between "!" and its word.
TStyleSheetToken TStyleSheetScanner::ReadMarkedName(TStyleSheetToken (*lookup)(std::string_view)) {
    if (*FCurrent++ == '!') SkipWhitespace();
    BeginText();
    SkipName();
    EndText();
    return JoinParenthesis(lookup(FTokenStr));
}

TStyleSheetToken TStyleSheetScanner::ReadUnicodeRange() {
    BeginText();
    ++FCurrent;
    if (Peek() != '+') {
        SkipNameRest();
        EndText();
        return JoinParenthesis(toIdent);
    }
    ++FCurrent;
    SkipAlphanumerics();
    if (Peek() == '-') {
        ++FCurrent;
        SkipAlphanumerics();
    }
    EndText();
    return toUnicodeRange;
}

TStyleSheetToken TStyleSheetScanner::JoinParenthesis(TStyleSheetToken token) {
    if (Peek() != '(') return token;
    token = LookupFunctionToken(FTokenStr);
    if (token == toURI) {
        ++FCurrent;
        SkipWhitespace();
        HandleURI();
    }
    return token;
}

// ---------------------------------------------------------------------- words

namespace {

struct TKeyword {
    std::string_view Text;
    TStyleSheetToken Token;
};

template <size_t N>
TStyleSheetToken Lookup(const TKeyword (&keywords)[N], std::string_view text, TStyleSheetToken other) {
    for (const TKeyword& keyword : keywords)
        if (SameText(keyword.Text, text)) return keyword.Token;
    return other;
}

constexpr TKeyword AtKeywords[] = {{"import", toImport},
                                   {"page", toPage},
                                   {"media", toMedia},
                                   {"font-face", toFontFace},
                                   {"charset", toCharset}};

constexpr TKeyword Units[] = {{"px", toLength}, {"em", toEms},       {"ex", toExs},       {"cm", toLength},
                              {"mm", toLength}, {"in", toLength},    {"pt", toLength},    {"pc", toLength},
                              {"deg", toAngle}, {"rad", toAngle},    {"grad", toAngle},   {"ms", toTime},
                              {"s", toTime},    {"hz", toFrequency}, {"khz", toFrequency}};

constexpr TKeyword TokenNames[] = {{"End of file", toEOF},
                                   {"\x01", toCaret},
                                   {"Open SGML Comment", toCDO},
                                   {"Close SGML Comment", toCDC},
                                   {"include", toIncludes},
                                   {"dash match", toDashMatch},
                                   {"string", toString},
                                   {"identifier", toIdent},
                                   {"hash", toHash},
                                   {"import", toImport},
                                   {"page", toPage},
                                   {"media", toMedia},
                                   {"font-face", toFontFace},
                                   {"charset", toCharset},
                                   {"atkeyword", toAtKeyword},
                                   {"important", toImportant},
                                   {"ems", toEms},
                                   {"exs", toExs},
                                   {"length", toLength},
                                   {"angle", toAngle},
                                   {"time", toTime},
                                   {"frequency", toFrequency},
                                   {"dimension", toDimension},
                                   {"percentage", toPercentage},
                                   {"number", toNumber},
                                   {"uri", toURI},
                                   {"function", toFunction},
                                   {"unicode range", toUnicodeRange}};

}  // namespace

TStyleSheetToken TStyleSheetScanner::LookupAtKeywordToken(std::string_view text) {
    return text.empty() ? TStyleSheetToken{'@'} : Lookup(AtKeywords, text, toAtKeyword);
}

TStyleSheetToken TStyleSheetScanner::LookupFunctionToken(std::string_view text) {
    return SameText(text, "url") ? toURI : toFunction;
}

TStyleSheetToken TStyleSheetScanner::LookupImportantToken(std::string_view text) {
    return SameText(text, "important") ? TStyleSheetToken{toImportant} : TStyleSheetToken{'!'};
}

TStyleSheetToken TStyleSheetScanner::LookupNumToken(std::string_view unit) {
    return Lookup(Units, unit, toDimension);
}

std::string TStyleSheetScanner::TokenToStr(TStyleSheetToken token) {
    for (const TKeyword& name : TokenNames)
        if (name.Token == token) return std::string(name.Text);
    return std::string(1, static_cast<char>(token));
}

}  // namespace caretwell
