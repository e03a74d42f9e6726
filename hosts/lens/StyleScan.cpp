#include "lens/StyleScan.h"

#include <algorithm>
#include <array>
#include <vector>

namespace caretwell {
namespace {

constexpr auto npos = std::string_view::npos;

// At-rules that hold rules as long as no rule is around them.
constexpr std::string_view Grouping[] = {"container", "document", "font-feature-values", "keyframes", "layer",
                                         "media",     "scope",    "starting-style",      "supports"};

// At-rules that hold descriptors, none of which is a property.
constexpr std::string_view Describing[] = {"color-profile", "counter-style", "font-palette-values",
                                           "property", "view-transition"};

// Functions that take numbers, lengths, angles or names of the author, and no word of a property.
constexpr std::string_view Wordless[] = {
    "attr",        "blur",       "brightness", "contrast",  "counter", "cubic-bezier", "grayscale",
    "hue-rotate",  "invert",     "matrix",     "matrix3d",  "opacity", "rotate",       "rotate3d",
    "rotatex",     "rotatey",    "rotatez",    "saturate",  "scale",   "scale3d",      "scalex",
    "scaley",      "scalez",     "sepia",      "skew",      "skewx",   "skewy",        "translate",
    "translate3d", "translatex", "translatey", "translatez"};

template <size_t N>
bool IsOneOf(std::string_view word, const std::string_view (&words)[N]) {
    return std::any_of(std::begin(words), std::end(words), [&](auto known) { return SameWord(word, known); });
}

// Bytes at which the scan must look closer; it runs over all others.
constexpr auto Stops = [] {
    std::array<bool, 256> stops{};
    for (char c : {'"', '\'', '\\', '/', '{', '}', ';', '(', '<', '>'})
        stops[static_cast<unsigned char>(c)] = true;
    return stops;
}();

char At(std::string_view text, size_t at) { return at < text.size() ? text[at] : '\0'; }

bool StartsAt(std::string_view text, size_t at, std::string_view word) {
    return text.substr(std::min(at, text.size()), word.size()) == word;
}

TStyleStep StepOverComment(std::string_view text, size_t at) {
    const size_t end = text.find("*/", at + 2);
    if (end == npos) return {text.size(), lpOutside, true};
    return {end + 2, lpOutside};
}

TStyleStep StepOverLine(std::string_view text, size_t at) {
    return {std::min(text.find_first_of("\r\n", at), text.size()), lpOutside, true};
}

// A string ends with its line, so that a quote left open spoils that line only.
TStyleStep StepOverString(std::string_view text, size_t at) {
    const char quote = text[at];
    for (size_t i = at + 1; i < text.size(); ++i) {
        if (text[i] == quote) return {i + 1, lpHead};
        if (text[i] == '\n' || text[i] == '\r') return {i, lpHead, true};
        if (text[i] == '\\') i += StartsAt(text, i + 1, "\r\n") ? 2 : 1;
    }
    return {text.size(), lpHead, true};
}

// The argument of url( without quotes may hold ";", "{" and "//".
TStyleStep StepOverParenthesis(std::string_view text, size_t at) {
    if (at < 3 || !SameWord(text.substr(at - 3, 3), "url")) return {at + 1, lpNone};
    const size_t argument = std::min(text.find_first_not_of(" \t\r\n", at + 1), text.size());
    if (At(text, argument) == '"' || At(text, argument) == '\'') return {at + 1, lpNone};
    const size_t end = text.find_first_of(")\r\n", argument);
    if (end == npos) return {text.size(), lpHead, true};
    return text[end] == ')' ? TStyleStep{end + 1, lpHead} : TStyleStep{end, lpHead, true};
}

// Longer ones are taken for blocks, so that a row of open ones stays cheap.
constexpr size_t MaxInterpolation = 100;

// "#{...}" and "@{...}" put text together and open no block.
size_t InterpolationEnd(std::string_view text, size_t brace) {
    if (brace == 0 || (text[brace - 1] != '#' && text[brace - 1] != '@')) return npos;
    const size_t end = text.substr(brace, MaxInterpolation).find_first_of("}\r\n");
    return end != npos && text[brace + end] == '}' ? brace + end + 1 : npos;
}

struct TLevel {
    size_t FContent = 0;     // first byte of the block's content
    bool FDeclares = false;  // declarations may stand in it
};

class TStyleScan {
public:
    TStyleScan(std::string_view text, size_t caret, bool inBlock)
        : FText(text), FCaret(caret), FLevel{0, inBlock} {}

    TStyleCaret Run() {
        while (FAt < FCaret) {
            while (FAt < FCaret && !Stops[static_cast<unsigned char>(FText[FAt])]) ++FAt;
            if (FAt < FCaret && !Step()) return Place(FInside);
        }
        return JudgeStatement();
    }

private:
    // A block this deep is the work of no author: deeper ones are only counted.
    static constexpr size_t MaxDepth = 256;

    // False if the caret stands inside what the step goes over.
    bool Step() {
        switch (FText[FAt]) {
            case ';': return Begin(FAt + 1);
            case '}': return Close();
            case '<': return StartsAt(FText, FAt, "<!--") ? Begin(FAt + 4) : Begin(FAt + 1, false);
            case '>':
                return FAt >= 2 && StartsAt(FText, FAt - 2, "-->") ? Begin(FAt + 1) : Begin(FAt + 1, false);
            case '{':
                if (InterpolationEnd(FText, FAt) == npos) return Open();
                [[fallthrough]];
            default: return StepWhole();
        }
    }

    bool Begin(size_t at, bool statement = true) {
        FAt = std::min(at, FCaret);
        if (statement) FStatement = FAt;
        return true;
    }

    bool StepWhole() {
        const auto step = StepOver(FText, FAt);
        if (step.FInside != lpNone && (FCaret < step.FEnd || (FCaret == step.FEnd && step.FUnclosed))) {
            FInside = step.FInside;
            return false;
        }
        FAt = std::min(step.FEnd, FCaret);
        return true;
    }

    bool Open() {
        const bool declares = HeadDeclares();
        if (FOuter.size() < MaxDepth) FOuter.push_back(FLevel);
        else ++FDeeper;
        FLevel = {FAt + 1, declares};
        return Begin(FAt + 1);
    }

    bool Close() {
        if (FDeeper > 0) {
            --FDeeper;
            FLevel = {FAt + 1, true};
        } else if (!FOuter.empty()) {
            FLevel = FOuter.back();
            FOuter.pop_back();
        }
        return Begin(FAt + 1);
    }

    // Does the block that opens here hold declarations, by the head in front of it?
    bool HeadDeclares() const {
        const size_t head = SkipBlank(FText, FStatement, FAt);
        if (head >= FAt || FText[head] != '@') return true;
        const auto name = AtWord(head);
        if (IsOneOf(name, Describing)) return false;
        return !IsOneOf(name, Grouping) || (FLevel.FDeclares && !SameWord(name, "keyframes"));
    }

    // The word after an "@", without a vendor's prefix.
    std::string_view AtWord(size_t at) const {
        size_t end = at + 1;
        while (IsStyleWord(At(FText, end))) ++end;
        auto word = FText.substr(at + 1, end - at - 1);
        if (word.empty() || word[0] != '-') return word;
        return word.substr(std::min(word.find('-', 1), word.size() - 1) + 1);
    }

    TStyleCaret Place(TLensPlace place, size_t statement = 0, size_t colon = npos) const {
        return {place, FLevel.FContent, statement, colon};
    }

    TStyleCaret JudgeStatement() const {
        const size_t start = SkipBlank(FText, FStatement, FCaret);
        if (start >= FCaret) return Place(FLevel.FDeclares ? lpName : lpOutside, FCaret);
        const bool variable = IsVariable(start);
        if (!variable && !FLevel.FDeclares) return Place(lpHead);
        const size_t colon = FindInStatement(':', start, FCaret);
        if (!variable && !LooksLikeName(start, std::min(colon, FCaret))) return Place(lpHead);
        if (colon == npos) {
            const bool head = FText[start] == '$' || FText[start] == '@' || OpensBlock();
            return Place(head ? lpHead : lpName, start);
        }
        // "a:hover {" is a nested rule's head; "color: red" keeps its distance.
        if (!variable && !IsStyleSpace(At(FText, colon + 1)) && OpensBlock()) return Place(lpHead);
        // Behind "!" stands no value.
        if (FindInStatement('!', colon, FCaret) != npos) return Place(lpHead);
        if (IsInHash(colon)) return Place(lpHead);
        TStyleCaret value = Place(lpValue, start, colon);
        value.FIsWordless = IsOneOf(FunctionAt(colon + 1), Wordless);
        return value;
    }

    // "#f" is a colour already, and none of the names.
    bool IsInHash(size_t colon) const {
        size_t word = FCaret;
        while (word > colon && IsStyleWord(FText[word - 1])) --word;
        return FText[word - 1] == '#';
    }

    // The name of the innermost function whose parentheses are open at the caret.
    std::string_view FunctionAt(size_t at) const {
        std::vector<size_t> open;
        for (; at < FCaret; at = StepOver(FText, at).FEnd) {
            if (FText[at] == '(') open.push_back(at);
            else if (FText[at] == ')' && !open.empty()) open.pop_back();
        }
        if (open.empty()) return {};
        size_t start = open.back();
        while (start > 0 && IsStyleWord(FText[start - 1])) --start;
        return FText.substr(start, open.back() - start);
    }

    // Custom properties, and the variables of SCSS and LESS, which stand outside rules too.
    bool IsVariable(size_t start) const {
        if (FText[start] == '$') return true;
        if (StartsAt(FText, start, "--")) return FLevel.FDeclares;
        if (FText[start] != '@') return false;
        size_t end = start + 1;
        while (IsStyleWord(At(FText, end)) || At(FText, end) == '_') ++end;
        const bool page = SameWord(FText.substr(start + 1, end - start - 1), "page");
        return end > start + 1 && At(FText, end) == ':' && end < FCaret && !page;
    }

    size_t FindInStatement(char wanted, size_t at, size_t end) const {
        while (at < end) {
            if (FText[at] == wanted) return at;
            at = StepOver(FText, at).FEnd;
        }
        return npos;
    }

    // A name, maybe after the hacks "*" and "_", maybe with white space after it.
    bool LooksLikeName(size_t at, size_t end) const {
        if ((FText[at] == '*' || FText[at] == '_') && at + 1 < end) ++at;
        const size_t start = at;
        while (at < end && !IsStyleSpace(FText[at]) && FText[at] != '/') {
            const size_t interpolation = FText[at] == '{' ? InterpolationEnd(FText, at) : npos;
            const bool part =
                IsStyleWord(FText[at]) || FText[at] == '_' || FText[at] == '\\' ||
                static_cast<unsigned char>(FText[at]) >= 0x80 ||
                ((FText[at] == '#' || FText[at] == '@') && InterpolationEnd(FText, at + 1) != npos);
            if (!part && interpolation == npos) return false;
            at = interpolation == npos ? at + 1 : interpolation;
        }
        if (at == start || IsStyleDigit(FText[start])) return false;
        return SkipBlank(FText, at, end) >= end;
    }

    // Does the statement at the caret go on to a block of its own on this line?
    bool OpensBlock() const {
        for (size_t at = FCaret; at < FText.size(); at = StepOver(FText, at).FEnd) {
            const char c = FText[at];
            if (c == '{' && InterpolationEnd(FText, at) == npos) return true;
            if (c == ';' || c == '}' || c == '\n' || c == '\r') return false;
        }
        return false;
    }

    std::string_view FText;
    size_t FCaret;
    size_t FAt = 0;
    size_t FStatement = 0;
    TLevel FLevel;
    std::vector<TLevel> FOuter;
    size_t FDeeper = 0;
    TLensPlace FInside = lpHead;
};

}  // namespace

bool SameWord(std::string_view text, std::string_view lower) {
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
    });
}

TStyleStep StepOver(std::string_view text, size_t at) {
    switch (text[at]) {
        case '"':
        case '\'': return StepOverString(text, at);
        case '\\': return {std::min(at + 2, text.size()), lpNone};
        case '(': return StepOverParenthesis(text, at);
        case '{': {
            const size_t end = InterpolationEnd(text, at);
            if (end != npos) return {end, lpHead};
            break;
        }
        case '/':
            if (At(text, at + 1) == '*') return StepOverComment(text, at);
            // "http://" is no comment.
            if (At(text, at + 1) == '/' && (at == 0 || text[at - 1] != ':')) return StepOverLine(text, at);
            break;
        default: break;
    }
    return {at + 1, lpNone};
}

size_t SkipBlank(std::string_view text, size_t at, size_t end) {
    while (at < end) {
        if (IsStyleSpace(text[at])) {
            ++at;
            continue;
        }
        if (text[at] != '/') break;
        const auto step = StepOver(text, at);
        if (step.FInside != lpOutside) break;
        at = step.FEnd;
    }
    return std::min(at, end);
}

TStyleCaret ScanStyle(std::string_view text, size_t caret, bool inBlock) {
    return TStyleScan(text, caret, inBlock).Run();
}

}  // namespace caretwell
