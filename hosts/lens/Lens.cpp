#include "lens/Lens.h"

#include <algorithm>
#include <initializer_list>

#include "host/CharSet.h"
#include "lens/MarkupScan.h"
#include "lens/OlderNames.h"
#include "lens/StyleScan.h"

namespace caretwell {
namespace {

constexpr auto npos = std::string_view::npos;

std::string Blanked(std::string_view document) {
    std::string text(document.size(), ' ');
    const char* from = document.data();
    char* to = text.data();
    for (size_t i = 0, count = text.size(); i < count; ++i) {
        const char c = from[i];
        to[i] = static_cast<char>(IsLineBreak(c) ? c : ' ');
    }
    return text;
}

struct TRange {
    size_t FStart = 0, FEnd = 0;
    size_t Size() const { return FEnd - FStart; }
};

constexpr bool IsWordStart(char c) { return IsStyleLetter(c) || IsStyleDigit(c); }

// What the grammar reads as one expression up to its end, whatever stands after it:
// names, numbers with their units and colours side by side.
bool IsPlainValue(std::string_view value) {
    enum { Between, InNumber, InName } state = Between;
    for (size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        if (IsStyleLetter(c)) {
            state = InName;
        } else if (IsStyleDigit(c)) {
            if (state == Between) state = InNumber;
        } else if (c == '#') {
            if (i + 1 == value.size() || !IsWordStart(value[i + 1])) return false;
            state = InName;
        } else if (c == '%' ? state != InNumber : c != '-' && !IsStyleSpace(c)) {
            return false;
        } else if (c == '-') {
            if (state != InName) return false;
        } else {
            state = Between;
        }
    }
    return true;
}

bool IsPlainName(std::string_view name) {
    return !name.empty() && IsStyleLetter(name[0]) && std::all_of(name.begin(), name.end(), IsStyleWord);
}

// Puts the text of one style block together inside the blanked document.
class TLensComposer {
public:
    // style is the style text in readable form, start its place in the document.
    TLensComposer(std::string& text, std::string_view style, size_t start, size_t caret)
        : FText(text), FStyle(style), FStart(start), FCaret(caret) {}

    void Compose(const TStyleCaret& place) {
        switch (place.FPlace) {
            case lpOutside: Precede(FCaret, {'}', '{', 'a'}); break;
            case lpHead: Precede(FCaret, {'a'}); break;
            case lpName: ComposeName(place); break;
            case lpValue: ComposeValue(place); break;
            case lpNone: break;
        }
    }

private:
    void ComposeName(const TStyleCaret& place) {
        KeepBlock(place, place.FStatement);
        size_t start = place.FStatement, end = FCaret;
        while (end > start && !IsStyleWord(FStyle[end - 1])) --end;
        const size_t name = KnownPart({start, WordEnd(end)});
        if (name < FCaret) Write(name, FStyle.substr(name, WordEnd(end) - name));
    }

    void ComposeValue(const TStyleCaret& place) {
        const size_t end = std::min(FStyle.find_first_of(" \t\r\n\f\v/", place.FStatement), place.FColon);
        // What every property takes: "var()" among it.
        const auto name = place.FIsWordless ? "all" : ReadableName({place.FStatement, end});
        KeepBlock(place, end - name.size());
        Write(end - name.size(), name);
        Write(place.FColon, ":");
        KeepValue(place.FColon + 1);
    }

    // The value up to the caret as it stands, or else its last word alone.
    void KeepValue(size_t start) {
        size_t word = FCaret;
        while (word > start && IsStyleWord(FStyle[word - 1])) --word;
        while (word < FCaret && FStyle[word] == '-') ++word;
        const size_t end = word < FCaret ? WordEnd(FCaret) : FCaret;
        if (IsPlainValue(FStyle.substr(start, end - start))) word = start;
        else if (!IsPlainValue(FStyle.substr(word, end - word))) return;
        Write(word, FStyle.substr(word, end - word));
    }

    size_t WordEnd(size_t at) const {
        while (at < FStyle.size() && IsStyleWord(FStyle[at])) ++at;
        return at;
    }

    // The block's brace, a selector for it, and its declarations in front of the caret's.
    // Where there is no room for that, the rule begins right in front of the declaration.
    void KeepBlock(const TStyleCaret& place, size_t declaration) {
        if (Precede(place.FBlock, {'{', 'a'})) KeepDeclarations(place.FBlock, place.FStatement);
        else Precede(declaration, {'{', 'a'});
    }

    void KeepDeclarations(size_t at, size_t end) {
        size_t statement = at, colon = npos, depth = 0;
        while (at < end) {
            const auto step = StepOver(FStyle, at);
            if (step.FInside == lpNone && step.FEnd == at + 1) {
                const char c = FStyle[at];
                if (c == '{') ++depth;
                else if (c == '}' && depth > 0) --depth;
                else if (c == ':' && depth == 0 && colon == npos) colon = at;
                else if (c == ';' && depth == 0 && colon != npos) KeepDeclaration({statement, at}, colon);
                if (depth == 0 && (c == ';' || c == '}')) {
                    statement = at + 1;
                    colon = npos;
                }
            }
            at = step.FEnd;
        }
    }

    // Only what the grammar knows; of a value that it does not, a word in its place.
    void KeepDeclaration(TRange range, size_t colon) {
        const size_t start = SkipBlank(FStyle, range.FStart, colon);
        const size_t end = WordEnd(start);
        const auto name = FStyle.substr(start, end - start);
        const size_t value = SkipBlank(FStyle, colon + 1, range.FEnd);
        if (value >= range.FEnd || !IsPlainName(name) || SkipBlank(FStyle, end, colon) < colon) return;
        const auto text = FStyle.substr(value, range.FEnd - value);
        Write(start, name);
        Write(colon, ":");
        Write(value, IsPlainValue(text) ? text : std::string_view("x"));
        Write(range.FEnd, ";");
    }

    // Where the part of a property's name begins that the grammar can read; npos if there is none.
    //   *color -> color     -webkit-box-shadow -> box-shadow
    size_t KnownPart(TRange range) const {
        const auto name = FStyle.substr(range.FStart, range.Size());
        if (name.substr(0, 2) == "--") return npos;
        size_t start = !name.empty() && (name[0] == '*' || name[0] == '_') ? 1 : 0;
        if (start < name.size() && name[start] == '-') start = name.find('-', start + 1);
        if (start == npos || start >= name.size()) return npos;
        if (name[start] == '-') ++start;
        return IsPlainName(name.substr(start)) ? range.FStart + start : npos;
    }

    // A property's name that the grammar can read and that takes what this one does.
    // Custom properties and variables take what "all" takes; "z" takes nothing. Never
    // longer than the name itself.
    std::string_view ReadableName(TRange range) const {
        const auto name = FStyle.substr(range.FStart, range.Size());
        const size_t known = KnownPart(range);
        if (known != npos) {
            const auto part = FStyle.substr(known, range.FEnd - known);
            const auto today = name[0] == '-' ? TodaysName(part) : part;
            return today.size() <= name.size() ? today : part;
        }
        const bool variable = name[0] == '$' || name[0] == '@' || name.substr(0, 2) == "--";
        return variable && name.size() >= 3 ? "all" : "z";
    }

    // Offsets of the style text from here on.
    void Write(size_t at, std::string_view text) {
        for (size_t i = 0; i < text.size(); ++i) {
            char& place = FText[FStart + at + i];
            if (!IsLineBreak(place) && !IsStyleSpace(text[i])) place = text[i];
        }
    }

    // The characters in front of a place, the last one first, wherever no line break stands.
    bool Precede(size_t place, std::initializer_list<char> characters) {
        size_t at = FStart + place;
        size_t spots[3];
        size_t count = 0;
        while (at > 0 && count < characters.size()) {
            if (!IsLineBreak(FText[--at])) spots[count++] = at;
        }
        if (count < characters.size()) return false;
        count = 0;
        for (char c : characters) FText[spots[count++]] = c;
        return true;
    }

    std::string& FText;
    std::string_view FStyle;
    size_t FStart;
    size_t FCaret;
};

}  // namespace

TLensText LookThrough(std::string_view document, TLensKind kind, size_t caret) {
    caret = std::min(caret, document.size());
    TLensText result{Blanked(document), lpNone};
    TStyleSpan span{0, document.size(), false};
    std::string plain;
    std::string_view style = document;
    if (kind == lkMarkup) {
        const auto found = FindStyleText(document, caret);
        if (!found) return result;
        span = *found;
        plain = PlainStyleText(document.substr(span.FStart, span.FEnd - span.FStart), span.FAttribute);
        style = plain;
    }
    const size_t place = caret - span.FStart;
    const auto found = ScanStyle(style, place, span.FAttribute);
    TLensComposer(result.FText, style, span.FStart, place).Compose(found);
    result.FPlace = found.FPlace;
    return result;
}

}  // namespace caretwell
