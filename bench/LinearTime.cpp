// Documents that nobody would write, at two sizes: what takes four times as long on four
// times the bytes is linear.
//
//     linear_time [--small BYTES] [SHAPE...]
//
// For each shape: opening the list with the caret in the middle and at the end, one letter
// typed into it and taken back, an item composed, ">" typed. Seconds at the two sizes, their
// ratio, and the peak memory so far.
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>

#include "support/Outcome.h"

using namespace caretwell;
using namespace caretwell::test;

namespace {

std::string Repeat(std::string_view part, size_t size) {
    std::string text;
    while (text.size() < size) text += part;
    return text;
}

struct TShape {
    const char* Name;
    std::function<std::string(size_t)> Make;
    const char* FileName = "page.html";
};

TShape Repeated(const char* name, std::string part, std::string head = {}) {
    return {name, [=](size_t size) { return head + Repeat(part, size); }};
}

std::vector<TShape> Shapes() {
    const std::string xml = "<?xml version='1.0'?>";
    std::vector<TShape> shapes = {
        Repeated("open div", "<div>\n"),
        Repeated("open p", "<p>"),
        Repeated("open unknown", "<blink>"),
        Repeated("less than", "<"),
        Repeated("quotes in text", "\""),
        Repeated("quotes in tag", "\"", "<a "),
        Repeated("quote pairs", "\"x' ", "<a "),
        Repeated("attributes", "a ", "<a "),
        Repeated("known attributes", "href=x target=\"_self\" ", "<a "),
        Repeated("unquoted value", "x", "<a href="),
        Repeated("quoted value", "x>\n", "<a href=\""),
        Repeated("server scripts", "<%"),
        Repeated("server comments", "<%--"),
        Repeated("comment", "x- -", "<!--"),
        Repeated("hyphens in comment", "-", "<!--"),
        Repeated("closing tags", "</a>"),
        Repeated("closing unknown", "</blink></x>"),
        Repeated("carriage returns", "\r"),
        Repeated("mixed breaks", "\r\n\n\r\r"),
        Repeated("one word", "x"),
        Repeated("words", "it's > a / text = "),
        Repeated("entities", "&a"),
        Repeated("percent", "%"),
        Repeated("slashes", "/"),
        Repeated("tags in tags", "<a "),
        Repeated("single tags", "<a/>"),
        Repeated("zero bytes", std::string(1, '\0')),
        Repeated("broken UTF-8", "\xC3\xFF\x80"),
        Repeated("accents", "\xC3\xA9"),
        Repeated("processing", "<?x '"),
        Repeated("directives", "<%@ Page x %>"),
        Repeated("open br in XML", "<br>", xml + "<p>"),
        Repeated("open br in XML, lines", "<br>\n", xml + "<p>"),
    };
    for (const char* name : {"a", "p", "blink"}) {
        std::string tag = name;
        auto make = [tag](size_t size) {
            std::string open = "<" + tag + ">";
            return Repeat(open, size / 3) + Repeat("<b>", size / 3) + Repeat("</" + tag + ">", size / 3);
        };
        shapes.push_back({tag == "a" ? "a b /a" : tag == "p" ? "p b /p" : "blink b /blink", make});
    }
    shapes.push_back({"b unknown /b", [](size_t size) {
                          return Repeat("<b>", size / 3) + Repeat("<x1><x2>", size / 3) +
                                 Repeat("</b>", size / 3);
                      }});
    shapes.push_back({"many names", [](size_t size) {
                          std::string text;
                          for (int i = 0; text.size() < size; ++i)
                              text += "<n" + std::to_string(i * 7919) + ">";
                          return text;
                      }});
    shapes.push_back({"many names, attributes", [](size_t size) {
                          std::string text = "<a ";
                          for (int i = 0; text.size() < size; ++i)
                              text += "n" + std::to_string(i * 7919) + " ";
                          return text;
                      }});
    shapes.push_back(
        {"xsl:template", [](size_t size) { return Repeat("<xsl:template>", size); }, "page.xsl"});
    shapes.push_back({"xsl:template words",
                      [](size_t size) { return "<xsl:template>" + Repeat("it is a text \"or\" ", size); },
                      "page.xsl"});
    shapes.push_back({"xsl:if and b",
                      [](size_t size) { return "<xsl:template>" + Repeat("<xsl:if><b>", size); },
                      "page.xsl"});
    return shapes;
}

using TClock = std::chrono::steady_clock;

struct TTimes {
    double Open = 0, Type = 0, Compose = 0, Undo = 0;
    double All() const { return Open + Type + Compose + Undo; }
};

TTimes Measure(const TShape& shape, size_t size) {
    TTimes times;
    auto timed = [](double& sum, auto action) {
        auto start = TClock::now();
        action();
        sum += std::chrono::duration<double>(TClock::now() - start).count();
    };
    TTestHost host{THostOptions()};
    std::string text = shape.Make(size);
    host.OpenBytes(text, shape.FileName);
    TEditorDriver& driver = host.Driver();
    driver.OpenList();  // the schema is read
    driver.Dismiss();
    for (auto caret : {static_cast<int32_t>(text.size() / 2), static_cast<int32_t>(text.size())}) {
        host.Document().View().SetCaretOffset(caret);
        timed(times.Open, [&] { driver.OpenList(); });
        timed(times.Compose, [&] {
            TNibEdit edit;
            host.Manager().ComposeChoice(driver.ItemCount() - 1, 0, edit);
            if (driver.ItemCount()) driver.Item(driver.ItemCount() - 1);
        });
        timed(times.Type, [&] {
            driver.TypeChar('p');
            driver.PressKey(ekBackspace);
            driver.TypeChar('>');
            driver.TypeChar('<');
            driver.TypeChar('/');
            driver.PressKey(ekEnter);
        });
        driver.Dismiss();
        timed(times.Undo, [&] {
            while (driver.Undo()) continue;
        });
        if (host.Document().Text().Text() != text) std::printf("%s: text after undo\n", shape.Name);
    }
    return times;
}

}  // namespace

int main(int argc, char** argv) {
    size_t small = 1 << 20;
    std::vector<std::string> wanted;
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--small" && i + 1 < argc)
            small = std::strtoul(argv[++i], nullptr, 10);
        else wanted.push_back(argv[i]);
    }
    std::printf("%-26s %9s %9s %6s   %9s %9s %9s %9s %9s\n", "shape", "small", "large", "ratio", "open",
                "type", "compose", "undo", "peak");
    for (const TShape& shape : Shapes()) {
        bool isWanted = wanted.empty();
        for (const auto& name : wanted) isWanted |= name == shape.Name;
        if (!isWanted) continue;
        TTimes few = Measure(shape, small), many = Measure(shape, small * 4);
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        std::printf("%-26s %7.3f s %7.3f s %6.1f   %7.3f s %7.3f s %7.3f s %7.3f s %6ld MB\n", shape.Name,
                    few.All(), many.All(), many.All() / few.All(), many.Open, many.Type, many.Compose,
                    many.Undo, usage.ru_maxrss / 1024);
        std::fflush(stdout);
    }
}
