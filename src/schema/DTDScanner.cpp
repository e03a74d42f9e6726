// Tokens: what stands in the text, wherever the text comes from.
#include "schema/DTDScanner.h"

#include "markup/Text.h"
#include "schema/DTDParser.h"

namespace caretwell {
namespace {

constexpr std::string_view EditorsWord = "ATTRIBUTEEDITORS";
constexpr std::string_view ContentRulesWord = "CONTENTRULES";
constexpr std::string_view DeclarationsOrComment = "<!ELEMENT, <!ATTLIST, <!ENTITY, -";

enum TByteClass : uint8_t { bcLetter = 1, bcDigit = 2, bcName = 4, bcNameStart = 8, bcEditor = 16 };

constexpr std::array<uint8_t, 256> ClassifyBytes() {
    std::array<uint8_t, 256> classes{};
    for (size_t c = 0; c < 256; ++c) {
        bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        bool isDigit = c >= '0' && c <= '9';
        bool isName = isLetter || isDigit || c == '-' || c == '.' || c == ':' || c == '_';
        bool isHigh = c >= 0xC0 && c != 0xD7 && c != 0xF7;
        bool isStart = isLetter || c == ':' || c == '_' || isHigh;
        int bits = (isLetter ? bcLetter : 0) | (isDigit ? bcDigit : 0) | (isName ? bcName : 0) |
                   (isStart ? bcNameStart : 0) | (isName || c == '=' ? bcEditor : 0);
        classes[c] = static_cast<uint8_t>(bits);
    }
    return classes;
}
constexpr auto ByteClasses = ClassifyBytes();

constexpr bool Is(char c, TByteClass byteClass) {
    return (ByteClasses[static_cast<uint8_t>(c)] & byteClass) != 0;
}

// No class holds the zero byte, so a run never leaves its block.
const char* SkipRun(const char* position, TByteClass byteClass) {
    while (Is(*position, byteClass)) ++position;
    return position;
}

std::string_view View(const char* begin, const char* end) {
    return {begin, static_cast<size_t>(end - begin)};
}

}  // namespace

TDTDScanner::TDTDScanner(TDTDParser& parser) : FParser(parser) {
    EnterKeywordSymbol("<!ENTITY", tkEntity);
    EnterKeywordSymbol("<!ELEMENT", tkElement);
    EnterKeywordSymbol("<!ATTLIST", tkAttList);
}

void TDTDScanner::EnterKeywordSymbol(std::string_view name, TTokenKind kind) {
    FKeywords.emplace_back(name, kind);
}

TTokenKind TDTDScanner::LookupKeywordSymbol(std::string_view name) const {
    auto found = std::find_if(FKeywords.rbegin(), FKeywords.rend(),
                              [name](const TDTDKeywordSymbol& row) { return SameText(row.FName, name); });
    return found != FKeywords.rend() ? found->FTokenKind : tkIdentifier;
}

void TDTDScanner::ClearKeywordTable() { FKeywords.clear(); }

void TDTDScanner::ParseError(TParseError severity, std::string_view format,
                             std::initializer_list<std::string_view> arguments) const {
    FParser.ParseError(severity, format, arguments);
}

void TDTDScanner::GetToken() {
    while (!ReadToken()) {
    }
}

bool TDTDScanner::ReadToken() {
    if (FIsStopped) return ReadEnd();
    SkipWhiteSpace();
    FTokenStart = FPosition;
    char c = *FPosition;
    switch (c) {
        case 0: return ReadEnd();
        case '"':
        case '\'': return HandleString(c);
        case '!': return Take(tkBang, FPosition + 1);
        case '#': return Take(tkPound, FPosition + 1);
        case '%': return ReadPercent();
        case '&': return Take(tkLogicalAnd, FPosition + 1);
        case '(': return Take(tkLParen, FPosition + 1);
        case ')': return ReadRParen();
        case '*': return Take(tkAsterisk, FPosition + 1);
        case '+': return Take(tkPlus, FPosition + 1);
        case ',': return Take(tkComma, FPosition + 1);
        case '-': return ReadMinus();
        case '.': return Take(tkDot, FPosition + 1);
        case '/': return Take(tkFSlash, FPosition + 1);
        case ';': return Take(tkSemiColon, FPosition + 1);
        case '<': return ReadLessThan();
        case '>': return Take(tkGreaterThan, FPosition + 1);
        case '?': return Take(tkQuestionMark, FPosition + 1);
        case '[': return Take(tkLBracket, FPosition + 1);
        case ']': return ReadRBracket();
        case '|': return Take(tkLogicalOr, FPosition + 1);
        default: break;
    }
    if (Is(c, bcNameStart)) return ReadIdentifier();
    if (Is(c, bcDigit)) return ReadNumber();
    return ReadInvalid();
}

bool TDTDScanner::Take(TTokenKind kind, const char* end) {
    FToken = kind;
    FTokenText.assign(FTokenStart, end);
    FPosition = end;
    return true;
}

bool TDTDScanner::ReadEnd() {
    if (!EndOfStream()) return false;
    FToken = tkEof;
    return true;
}

bool TDTDScanner::ReadMinus() {
    if (Is(FPosition[1], bcDigit)) return Take(tkNumber, SkipRun(FPosition + 1, bcName));  // the value "-90"
    if (FPosition[1] != '-') return Take(tkMinus, FPosition + 1);
    FPosition += 2;
    HandleInlineComment();
    return false;
}

bool TDTDScanner::ReadRParen() {
    // Only what touches the parenthesis is its mark: after a blank, "+" begins the
    // inclusions of an element.
    if (FPosition[1] == '+') return Take(tkRParenPlus, FPosition + 2);
    return Take(tkRParen, FPosition + 1);
}

bool TDTDScanner::ReadRBracket() {
    if (FPosition[1] == ']' && FPosition[2] == '>') return Take(tkConditionalSectionEnd, FPosition + 3);
    ReportInvalid(']');
    return Take(tkRBracket, FPosition + 1);
}

// Values of attributes may be words that begin with a digit: "2x".
bool TDTDScanner::ReadNumber() { return Take(tkNumber, SkipRun(FPosition, bcName)); }

// A reference to an entity directly after a name goes on with it: modular definitions write
// "xmlns:%prefix;" in the values of their entities.
bool TDTDScanner::ReadIdentifier() {
    const char* end = SkipRun(FPosition + 1, bcName);
    Take(tkIdentifier, end);
    while (*FPosition == '%') {
        end = SkipRun(FPosition + 1, bcName);
        auto* entity = FindEntity(View(FPosition + 1, end));
        if (FInEntity) DropFinishedExpansions(FPosition);
        if (!entity || entity->FIsExpanding || !entity->FExternalID.empty()) break;
        FPosition = *end == ';' ? end + 1 : end;
        PushParameterizedEntity(*entity);
        end = SkipRun(FPosition, bcName);
        FTokenText.append(FPosition, end);
        FPosition = end;
    }
    return true;
}

TDTDParameterizedEntity* TDTDScanner::FindEntity(std::string_view name) const {
    return name.empty()
               ? nullptr
               : SymbolAs<TDTDParameterizedEntity>(FParser.LookupSymbol(name, dtParameterizedEntity));
}

bool TDTDScanner::ReadInvalid() {
    ReportInvalid(*FPosition);
    // The kind before stands again, so that rubbish within a declaration costs no more
    // than that declaration. With none before, it must not look like the end.
    TTokenKind kind = FToken;
    Take(kind, FPosition + 1);
    return kind != tkEof;
}

bool TDTDScanner::ReadLessThan() {
    if (FPosition[1] == '?') return SkipInstruction();
    if (FPosition[1] != '!') return Take(tkLessThan, FPosition + 1);
    char c = FPosition[2];
    if (c == '-' && FPosition[3] == '-') return ReadMarkedComment();
    if (c == '[') return Take(tkConditionalSectionStart, FPosition + 3);
    if (Is(c, bcLetter)) {
        const char* end = SkipRun(FPosition + 2, bcLetter);
        return Take(LookupKeywordSymbol(View(FPosition, end)), end);
    }
    Take(tkLessThan, FPosition + (c == '-' ? 3 : 2));
    FParser.ParseErrorExpected(DeclarationsOrComment, FTokenText);
    return true;
}

bool TDTDScanner::ReadMarkedComment() {
    FPosition += 4;
    const char* end = SkipRun(FPosition, bcLetter);
    std::string_view word = View(FPosition, end);
    TEntryReader read = SameText(word, EditorsWord)        ? &TDTDScanner::SetEditor
                        : SameText(word, ContentRulesWord) ? &TDTDScanner::AddContentRule
                                                           : nullptr;
    FPosition = end;
    if (read) HandleEntries(read);
    else HandleGlobalComment();
    return false;
}

bool TDTDScanner::ReadPercent() {
    const char* end = SkipRun(FPosition + 1, bcName);
    if (end == FPosition + 1) return Take(tkPercent, end);
    auto* entity = FindEntity(View(FPosition + 1, end));
    if (!entity) return Take(tkPercent, end);
    FPosition = *end == ';' ? end + 1 : end;
    if (!entity->FExternalID.empty()) PushIncludeFile(entity->FExternalID);
    else PushParameterizedEntity(*entity);
    return false;
}

bool TDTDScanner::HandleString(char quote) {
    ++FPosition;
    FTokenText.clear();
    for (;;) {
        const char* end = FPosition;
        while (*end && *end != quote && !IsLineBreak(*end)) ++end;
        FTokenText.append(FPosition, end);
        FPosition = end;
        if (*end == quote) {
            ++FPosition;
            break;
        }
        if (*end) SkipLineBreak();
        else if (EndOfStream()) break;
    }
    FToken = tkStringLiteral;
    return true;
}

// To the byte that the test stops at; false at the end of the input. The test is asked at every
// byte that is none of a line break.
template <class TTest>
bool TDTDScanner::SkipTo(TTest isEnd) {
    for (;;) {
        char c = *FPosition;
        if (c == 0) {
            if (EndOfStream()) return false;
        } else if (IsLineBreak(c)) {
            SkipLineBreak();
        } else if (isEnd(c)) {
            return true;
        } else {
            ++FPosition;
        }
    }
}

void TDTDScanner::HandleInlineComment() {
    if (!SkipTo([this](char c) { return c == '-' && FPosition[1] == '-'; })) return ReportCut("--");
    FPosition += 2;
}

// SGML lets blanks stand between the hyphens and the end.
void TDTDScanner::HandleGlobalComment() {
    bool isAfterTwo = false;
    const char* hyphen = nullptr;
    auto isEnd = [&](char c) {
        if (c == '>' && isAfterTwo) return true;
        bool isHyphen = c == '-';
        isAfterTwo = isHyphen ? hyphen && FPosition == hyphen + 1 : isAfterTwo && (c == ' ' || c == '\t');
        hyphen = isHyphen ? FPosition : nullptr;
        return false;
    };
    if (!SkipTo(isEnd)) return ReportCut("-->");
    ++FPosition;
}

// XML ends one by "?>" and SGML by ">": a declaration that follows ends both.
bool TDTDScanner::SkipInstruction() {
    FPosition += 2;
    bool isFound = SkipTo([this](char c) { return (c == '?' && FPosition[1] == '>') || Follows("<!"); });
    if (isFound && *FPosition == '?') FPosition += 2;
    return false;
}

void TDTDScanner::HandleEntries(TEntryReader read) {
    for (;;) {
        char c = *FPosition;
        if (c == 0) {
            if (EndOfStream()) return ReportCut("-->");
        } else if (IsLineBreak(c)) {
            SkipLineBreak();
        } else if (Follows("-->")) {
            FPosition += 3;
            return;
        } else if (c == '-' || !Is(c, bcEditor)) {
            ++FPosition;
        } else {
            const char* end = SkipRun(FPosition, bcEditor);
            // An entry may touch the end of the comment, whose hyphens are in its set.
            if (*end == '>' && View(FPosition, end).ends_with("--")) end -= 2;
            (this->*read)(View(FPosition, end));
            FPosition = end;
        }
    }
}

// element.attribute=editor; the declarations must have been read before.
void TDTDScanner::SetEditor(std::string_view entry) {
    size_t dot = entry.find('.');
    size_t equals = dot == entry.npos ? dot : entry.find('=', dot);
    if (equals == entry.npos) return;
    auto* element = SymbolAs<TDTDElement>(FParser.LookupSymbol(entry.substr(0, dot), dtElement));
    if (!element) return;
    TDTDAttribute* attribute = element->LookupSymbol(entry.substr(dot + 1, equals - dot - 1));
    if (attribute) attribute->FEditor = FParser.Intern(entry.substr(equals + 1));
}

// place=meaning; what it says is for whoever compiles the models.
void TDTDScanner::AddContentRule(std::string_view entry) {
    size_t equals = entry.find('=');
    if (equals == entry.npos || FParser.FContentRules.size() == TDTDParser::MaxContentRules) return;
    FParser.FContentRules.push_back(
        {FParser.Intern(entry.substr(0, equals)), FParser.Intern(entry.substr(equals + 1))});
}

void TDTDScanner::SkipWhiteSpace() {
    for (;; ++FPosition) {
        while (IsLineBreak(*FPosition)) SkipLineBreak();
        if (*FPosition != ' ' && *FPosition != '\t') return;
    }
}

void TDTDScanner::SkipLineBreak() {
    FPosition = ::caretwell::SkipLineBreak(FPosition, FPosition + 2);  // a zero byte ends the text
    if (!FInEntity) ++FLine;
}

bool TDTDScanner::Follows(std::string_view text) const {
    for (size_t i = 0; i < text.size(); ++i)  // up to the zero byte and no further
        if (FPosition[i] != text[i]) return false;
    return true;
}

void TDTDScanner::ReportInvalid(char c) const {
    ParseError(peError, "Invalid character in input stream %s", {std::string_view(&c, 1)});
}

void TDTDScanner::ReportCut(std::string_view expected) const {
    if (!FIsStopped) FParser.ParseErrorExpected(expected, "end of file");
}

void TDTDScanner::Ignore() {
    BeginIgnore();
    do {
        GetToken();
        if (FToken == tkConditionalSectionStart) BeginIgnore();
        else if (FToken == tkConditionalSectionEnd) EndIgnore();
    } while (FToken != tkEof && FIgnoreDepth > 0);
    FIgnoreDepth = 0;
}

}  // namespace caretwell
