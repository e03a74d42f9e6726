#include "lens/MarkupScan.h"

#include <algorithm>
#include <string>

#include "lens/StyleScan.h"

namespace caretwell {
namespace {

constexpr auto npos = std::string_view::npos;

// Elements whose content is text up to their own end tag.
constexpr std::string_view RawElements[] = {"script", "style",  "textarea", "title",
                                            "xmp",    "iframe", "noembed",  "noframes"};

constexpr bool EndsTagName(char c) { return IsStyleSpace(c) || c == '/' || c == '>'; }

class TMarkupScan {
public:
    TMarkupScan(std::string_view page, size_t caret) : FPage(page), FCaret(caret) {}

    std::optional<TStyleSpan> Run() {
        while (!FFound && FAt < FCaret) {
            const size_t tag = FPage.substr(0, FCaret).find('<', FAt);
            if (tag == npos) break;
            FAt = tag;
            ReadMark();
        }
        return FFound;
    }

private:
    bool Starts(std::string_view word) const { return FPage.substr(FAt, word.size()) == word; }
    char Here() const { return FAt < FPage.size() ? FPage[FAt] : '\0'; }
    bool Ended() const { return FAt >= FCaret; }

    // False, and at the caret, if the end does not come before it: the caret stands inside.
    bool SkipPast(std::string_view end, size_t from) {
        const size_t found = FPage.substr(0, FCaret).find(end, std::min(from, FCaret));
        FAt = found == npos ? FCaret : found + end.size();
        return found != npos;
    }

    void ReadMark() {
        if (Starts("<!--")) SkipPast("-->", FAt + 4);
        else if (Starts("<![CDATA[")) SkipPast("]]>", FAt + 9);
        else if (Starts("<%")) SkipPast("%>", FAt + 2);
        else if (Starts("<?")) SkipInstruction();
        else if (Starts("<!") || Starts("</")) SkipPast(">", FAt + 2);
        else if (++FAt; IsStyleLetter(Here())) ReadTag();
    }

    // "<?...?>", or up to ">" as pages take it. Looks for the long form's end until there is none.
    void SkipInstruction() {
        const size_t start = FAt;
        FInstructions = FInstructions && SkipPast("?>", start + 2);
        if (!FInstructions) SkipPast(">", start + 2);
    }

    void ReadTag() {
        const size_t start = FAt;
        while (!Ended() && !EndsTagName(Here())) ++FAt;
        const auto name = FPage.substr(start, FAt - start);
        bool closed = false;
        while (!Ended() && !FFound) {
            if (Here() == '>') {
                ++FAt;
                if (!closed) ReadContent(name);
                return;
            }
            if (Here() == '<' && !Starts("<%")) return;  // a tag that was not finished
            closed = Here() == '/';
            if (closed || IsStyleSpace(Here())) ++FAt;
            else if (Starts("<%")) SkipPast("%>", FAt + 2);
            else ReadAttribute();
        }
    }

    void ReadAttribute() {
        const size_t start = FAt;
        ++FAt;
        while (!Ended() && !EndsTagName(Here()) && Here() != '=' && Here() != '<') ++FAt;
        const bool style = SameWord(FPage.substr(start, FAt - start), "style");
        SkipSpace();
        if (Here() != '=' || Ended()) return;
        ++FAt;
        SkipSpace();
        if (Here() == '"' || Here() == '\'') ReadQuoted(style);
        else ReadUnquoted(style);
    }

    void SkipSpace() {
        while (!Ended() && IsStyleSpace(Here())) ++FAt;
    }

    void ReadQuoted(bool style) {
        if (Ended()) return;
        const char quote = Here();
        const size_t start = ++FAt;
        while (!Ended() && Here() != quote) {
            if (!Starts("<%")) ++FAt;
            else if (!SkipPast("%>", FAt + 2)) return;
        }
        if (Ended()) {
            // The value may end right at the caret; its rest is of no interest.
            if (style) Found(start, FPage.find(quote, FCaret), true);
        } else {
            ++FAt;
        }
    }

    void ReadUnquoted(bool style) {
        const size_t start = FAt;
        while (!Ended() && !IsStyleSpace(Here()) && Here() != '>') ++FAt;
        if (Ended() && style && FAt > start) Found(start, FPage.find_first_of(" \t\r\n>", FCaret), true);
    }

    void ReadContent(std::string_view name) {
        const auto raw = std::find_if(std::begin(RawElements), std::end(RawElements),
                                      [&](std::string_view element) { return SameWord(name, element); });
        if (raw == std::end(RawElements)) return;
        const size_t start = FAt;
        const size_t end = FindEndTag(*raw);
        FAt = std::min(end, FCaret);
        if (Ended() && *raw == "style" && !InServerCode(start)) Found(start, end, false);
    }

    bool InServerCode(size_t start) const {
        const auto before = FPage.substr(start, FCaret - start);
        const size_t open = before.rfind("<%");
        return open != npos && before.find("%>", open) == npos;
    }

    // The next "</name" from here on, or else the page's end.
    size_t FindEndTag(std::string_view name) const {
        for (size_t at = FPage.find("</", FAt); at != npos; at = FPage.find("</", at + 2)) {
            const auto tag = FPage.substr(at + 2, name.size() + 1);
            if (SameWord(tag.substr(0, name.size()), name) &&
                (tag.size() == name.size() || EndsTagName(tag.back())))
                return at;
        }
        return FPage.size();
    }

    void Found(size_t start, size_t end, bool attribute) {
        FFound = TStyleSpan{start, std::min(end, FPage.size()), attribute};
    }

    std::string_view FPage;
    size_t FCaret;
    size_t FAt = 0;
    bool FInstructions = true;  // there may be a "?>" ahead
    std::optional<TStyleSpan> FFound;
};

// The characters that references in attributes are used for; others count as a letter.
char ReferredCharacter(std::string_view name) {
    if (name == "quot" || name == "#34" || SameWord(name, "#x22")) return '"';
    if (name == "apos" || name == "#39" || SameWord(name, "#x27")) return '\'';
    if (name == "nbsp") return ' ';
    return 'x';
}

void Replace(std::string& text, size_t start, size_t end, char with) {
    for (size_t at = start; at < end; ++at) {
        if (text[at] != '\n' && text[at] != '\r') text[at] = ' ';
    }
    text[start] = with;
}

}  // namespace

std::optional<TStyleSpan> FindStyleText(std::string_view page, size_t caret) {
    return TMarkupScan(page, std::min(caret, page.size())).Run();
}

std::string PlainStyleText(std::string_view piece, bool attribute) {
    constexpr size_t longestReference = 10;
    std::string text(piece);
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '<' && text[at] != '&') continue;
        if (text.compare(at, 2, "<%") == 0) {
            const size_t end = text.find("%>", at + 2);
            Replace(text, at, end == npos ? text.size() : end + 2, 'x');
        } else if (text.compare(at, 9, "<![CDATA[") == 0) {
            Replace(text, at, at + 9, ' ');
        } else if (attribute && text[at] == '&') {
            const size_t end = text.find_first_not_of(
                "#abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789", at + 1);
            if (end != npos && text[end] == ';' && end - at <= longestReference)
                Replace(text, at, end + 1,
                        ReferredCharacter(std::string_view(text).substr(at + 1, end - at - 1)));
        }
    }
    return text;
}

}  // namespace caretwell
