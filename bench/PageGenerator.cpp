#include "bench/PageGenerator.h"

#include <stdexcept>
#include <vector>

#include "bench/Words.h"

namespace caretwell::bench {
namespace {

// Room that is left for the rest of a block and for the tags that are still open.
constexpr size_t LongestBlock = 3000;
constexpr size_t LongestLine = 400;
constexpr size_t DeepestSection = 12;
constexpr size_t KeptOpen = 2;  // html and body

/// Writes blocks until the page is full, keeping count of what it opens.
class TPageWriter {
public:
    explicit TPageWriter(TPageKind kind) : FKind(kind), FRandom(kind == pkTagDense ? 20 : 21) {}

    TPage Write(size_t bytes) {
        if (bytes < LongestBlock + 1000) throw std::invalid_argument("a page has at least 4,000 bytes");
        FPage.Text.reserve(bytes);
        Line("<!DOCTYPE html PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">");
        Open("html", "lang=\"en\"");
        WriteHead();
        Open("body", "class=\"wide\"");
        while (FPage.Text.size() + LongestBlock < bytes) WriteBlock();
        while (FOpen.size() > KeptOpen) Close();
        while (FPage.Text.size() + LongestLine < bytes) WriteLine();
        while (!FOpen.empty()) Close();
        Pad(bytes);
        return std::move(FPage);
    }

private:
    // ---- tags

    void Indent() { FPage.Text.append(std::min<size_t>(FOpen.size(), 6), ' '); }
    void Line(std::string_view text) {
        Indent();
        Text(text);
        Text("\n");
    }
    void Text(std::string_view text) { FPage.Text += text; }
    void Tag(std::string_view inside) {
        FPage.Text += '<';
        FPage.Text += inside;
        FPage.Text += '>';
        ++FPage.Tags;
    }
    void Element(std::string_view name, std::string_view attributes, std::string_view content) {
        Tag(std::string(name) + (attributes.empty() ? "" : " ") + std::string(attributes));
        Text(content);
        Tag("/" + std::string(name));
    }
    void Open(std::string_view name, std::string_view attributes = {}) {
        Indent();
        Tag(std::string(name) + (attributes.empty() ? "" : " ") + std::string(attributes));
        Text("\n");
        FOpen.emplace_back(name);
    }
    void Close() {
        std::string name = std::move(FOpen.back());
        FOpen.pop_back();
        Indent();
        Tag("/" + name);
        Text("\n");
    }
    std::string Number(uint32_t below) { return std::to_string(FRandom.Below(below)); }
    std::string Some(uint32_t most) { return MakeWords(FRandom, FRandom.Between(1, most)); }
    std::string Class() {
        return "class=\"" + std::string(FRandom.Of({"note", "row odd", "item", "lead", "col-4"})) + "\"";
    }

    // ---- blocks

    void WriteHead() {
        Open("head");
        Element("title", "", "Page of " + Some(4));
        Text("\n");
        Tag("meta charset=\"utf-8\"");
        Tag("link rel=\"stylesheet\" href=\"site.css\"");
        Text("\n");
        Close();
    }

    void WriteBlock() {
        if (FKind == pkTextHeavy) return WriteLongParagraph();
        switch (FRandom.Below(16)) {
            case 0:
            case 1: return EnterSection();
            case 2:
            case 3: return LeaveSection();
            case 4: return Line("<!-- " + Some(6) + ": <b>not</b> a tag -->");
            case 5: return WriteForm();
            case 6:
            case 7:
            case 8: return WriteList(0);
            case 9:
            case 10: return WriteTable();
            default: return WriteParagraph();
        }
    }

    void EnterSection() {
        if (FOpen.size() > DeepestSection) return LeaveSection();
        Open(FRandom.Of({"div", "div", "div", "blockquote"}), "id=\"s" + Number(100000) + "\" " + Class());
        Element("h2", "", Some(4));
        Text("\n");
    }
    void LeaveSection() {
        if (FOpen.size() > KeptOpen) Close();
    }

    void WriteParagraph() {
        Open("p");
        for (uint32_t i = FRandom.Between(3, 9); i > 0; --i) {
            Text(Some(13) + " ");
            WriteInline();
            Text(FRandom.OneIn(4) ? " &amp; " : " ");
        }
        Text("\n");
        Close();
    }

    void WriteLine() {
        Indent();
        Element("p", FKind == pkTagDense ? Class() : std::string(),
                MakeWords(FRandom, FKind == pkTagDense ? 5 : 30));
        Text("\n");
    }

    void WriteInline() {
        switch (FRandom.Below(7)) {
            case 0:
                return Element("a", "href=\"/p/" + Number(9999) + ".html\" title='" + Number(99) + "'",
                               Some(2));
            case 1: return Element("em", "", Some(4));
            case 2: return Element("b", "", Some(3));
            case 3: return Tag("br");
            case 4: return Tag("img src=\"i" + Number(999) + ".png\" alt=\"\" width=" + Number(640));
            case 5: return Element("code", Class(), "&lt;" + Some(1) + "&gt;");
            default: return Element("span", Class(), Some(2));
        }
    }

    void WriteTable() {
        Open("table", "border=\"1\" " + Class());
        for (uint32_t row = FRandom.Between(3, 8); row > 0; --row) {
            Indent();
            Tag("tr");
            for (uint32_t cell = 4; cell > 0; --cell) {
                if (FRandom.OneIn(5)) Element("td", "align=\"right\" valign=top", Number(10000));
                else Element("td", "", FRandom.OneIn(2) ? Some(9) : Number(100000));
            }
            Tag("/tr");
            Text("\n");
        }
        Close();
    }

    void WriteList(uint32_t depth) {
        Open(FRandom.OneIn(4) ? "ol" : "ul");
        for (uint32_t item = FRandom.Between(2, 5); item > 0; --item) {
            Indent();
            Tag("li");
            WriteInline();
            Text(" " + Some(13));
            if (depth < 2 && FRandom.OneIn(6)) {
                Text("\n");
                WriteList(depth + 1);
            }
            Tag("/li");
            Text("\n");
        }
        Close();
    }

    void WriteForm() {
        Open("form", "action=\"/save\" method=\"post\"");
        for (uint32_t field = FRandom.Between(2, 4); field > 0; --field) {
            std::string name = Number(99);
            Element("label", "for=\"f" + name + "\"", Some(2));
            Tag("input type=\"text\" id=\"f" + name + "\" name=\"f" + name + "\" disabled");
            Text("\n");
        }
        Tag("select name=\"s\"");
        for (uint32_t option = 4; option > 0; --option) Element("option", "", Number(50));
        Tag("/select");
        Text("\n");
        Close();
    }

    // Lines of about ninety characters; a link or a stress every five or six lines.
    void WriteLongParagraph() {
        Open("p");
        for (uint32_t line = FRandom.Between(12, 24); line > 0; --line) {
            Text(MakeWords(FRandom, 15));
            if (FRandom.OneIn(6)) {
                Text(" ");
                if (FRandom.OneIn(2)) Element("a", "href=\"/p/" + Number(9999) + ".html\"", Some(3));
                else Element("em", "", Some(2));
            }
            Text(FRandom.OneIn(8) ? " &mdash;\n" : ".\n");
        }
        Close();
    }

    void Pad(size_t bytes) {
        constexpr std::string_view front = "<!-- ", behind = " -->";
        size_t dots = bytes - FPage.Text.size() - front.size() - behind.size();
        Text(front);
        for (size_t i = 0; i < dots; ++i) FPage.Text += i % 100 == 99 ? '\n' : '.';
        Text(behind);
    }

    TPageKind FKind;
    TRandom FRandom;
    TPage FPage;
    std::vector<std::string> FOpen;
};

}  // namespace

TPage MakePage(TPageKind kind, size_t bytes) { return TPageWriter(kind).Write(bytes); }

TPage MakeOpenTags(size_t count) {
    TPage page;
    page.Text = "<html><body>\n";
    for (size_t i = 0; i < count; ++i) page.Text += "<div class=\"d\">\n";
    page.Tags = count + 2;
    return page;
}

uint64_t Checksum(std::string_view text) {
    uint64_t sum = 0xCBF29CE484222325;
    for (char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    return sum;
}

}  // namespace caretwell::bench
