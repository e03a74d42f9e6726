// Style sheets of any size; see PageGenerator.h.
#include <array>
#include <stdexcept>

#include "bench/PageGenerator.h"
#include "bench/Words.h"

namespace caretwell::bench {
namespace {

constexpr size_t LongestRule = 900;

struct TPair {
    std::string_view Property, Value;
};
constexpr std::array<TPair, 18> PlainPairs = {{
    {"color", "#336699"},
    {"background", "#fff url(\"i/bg.png\") no-repeat 0 50%"},
    {"margin", "0 auto 1.5em"},
    {"padding", "4px 8px"},
    {"border", "1px solid #ccc"},
    {"font-family", "Georgia, \"Times New Roman\", serif"},
    {"font-size", "110%"},
    {"line-height", "1.4"},
    {"display", "block"},
    {"float", "left"},
    {"width", "33.3%"},
    {"text-decoration", "underline"},
    {"vertical-align", "middle"},
    {"position", "relative"},
    {"z-index", "10"},
    {"overflow", "hidden"},
    {"white-space", "nowrap"},
    {"list-style", "none outside"},
}};
constexpr std::array<TPair, 10> TodayPairs = {{
    {"--gap", "calc(1rem + 2vw)"},
    {"display", "grid"},
    {"grid-template-columns", "repeat(auto-fit, minmax(12rem, 1fr))"},
    {"color", "var(--ink, rgb(20 30 40 / 80%))"},
    {"transition", "opacity .2s cubic-bezier(.4, 0, .2, 1)"},
    {"-webkit-appearance", "none"},
    {"inset", "0 auto auto 0"},
    {"background-image", "linear-gradient(to right, #fff, transparent 60%)"},
    {"*zoom", "1"},
    {"transform", "translate(-50%, 0) rotate(3deg)"},
}};

class TSheetWriter {
public:
    explicit TSheetWriter(TSheetKind kind) : FKind(kind), FRandom(kind == skPlain ? 30 : 31) {}

    TPage Write(size_t bytes) {
        if (bytes < LongestRule + 100) throw std::invalid_argument("a style sheet has at least 1,000 bytes");
        FText = "@charset \"utf-8\";\n";
        while (FText.size() + LongestRule < bytes) WriteBlock();
        Pad(bytes);
        return {std::move(FText), 0};
    }

private:
    static constexpr std::string_view LastRule = "p.last {\n  color: red;\n}\n";

    void WriteBlock() {
        switch (FRandom.Below(FKind == skToday ? 24 : 20)) {
            case 0: FText += "/* " + MakeWords(FRandom, 8) + "; a { b: c } */\n"; return;
            case 1: return WriteGroup("@media print");
            case 2: FText += "@font-face { font-family: Own; src: url(own.ttf) }\n"; return;
            case 20: return WriteGroup("@media (min-width: 40em) and (orientation: landscape)");
            case 21: return WriteGroup("@supports (display: grid) and (not (float: none))");
            case 22: return WriteNested();
            case 23: return WriteGroup("@layer base");
            default: return WriteRule(FRandom.Between(2, 7));
        }
    }

    std::string Selector() {
        std::string name = ".c" + std::to_string(FRandom.Below(5000));
        switch (FRandom.Below(6)) {
            case 0: return "a" + name + ":hover";
            case 1: return name + " > li + li";
            case 2: return "#n" + std::to_string(FRandom.Below(900)) + " " + name;
            case 3: return "input[type=\"text\"]" + name;
            case 4: return "h1, h2, " + name;
            default: return name;
        }
    }

    void WriteDeclaration() {
        const TPair& pair =
            FKind == skToday && FRandom.OneIn(3) ? FRandom.Of(TodayPairs) : FRandom.Of(PlainPairs);
        FText += "  " + std::string(pair.Property) + ": " + std::string(pair.Value) +
                 (FRandom.OneIn(30) ? " !important;\n" : ";\n");
    }

    void WriteRule(uint32_t declarations) {
        FText += Selector() + " {\n";
        while (declarations-- > 0) WriteDeclaration();
        FText += "}\n";
    }

    void WriteGroup(std::string_view head) {
        FText += std::string(head) + " {\n";
        for (uint32_t rule = FRandom.Between(1, 2); rule > 0; --rule) WriteRule(3);
        FText += "}\n";
    }

    void WriteNested() {
        FText += Selector() + " {\n";
        WriteDeclaration();
        FText += "  &:hover {\n";
        WriteDeclaration();
        FText += "  }\n";
        WriteDeclaration();
        FText += "}\n";
    }

    // A caret in the last rule has the whole sheet before it.
    void Pad(size_t bytes) {
        constexpr std::string_view front = "/* ", behind = " */\n";
        size_t dots = bytes - FText.size() - front.size() - behind.size() - LastRule.size();
        FText += front;
        for (size_t i = 0; i < dots; ++i) FText += i % 100 == 99 ? '\n' : '.';
        FText += behind;
        FText += LastRule;
    }

    TSheetKind FKind;
    TRandom FRandom;
    std::string FText;
};

}  // namespace

TPage MakeSheet(TSheetKind kind, size_t bytes) { return TSheetWriter(kind).Write(bytes); }

}  // namespace caretwell::bench
