// What observers are told, in order, and their votes.
#include <gtest/gtest.h>

#include "support/TestHost.h"

namespace caretwell::test {
namespace {

constexpr const char* TypeNames[] = {"comment", "attribute", "open",    "close",     "single",     "script",
                                     "pi",      "text",      "doctype", "directive", "aspcomment", "entity"};

class TRecorder final : public TImplements<INibMLElementCallback> {
public:
    void ElementParsed(void*, INibMLMarkupPos* element, TTagType type, int32_t start, int32_t end,
                       bool& stop) override {
        if (start < FFrom) return;
        std::string name;
        if (auto tag = QueryAs<INibMLTag>(element)) name = ToUtf8(tag->GetName());
        if (auto attribute = QueryAs<INibMLTagAttribute>(element)) name = ToUtf8(attribute->GetName());
        if (auto node = QueryAs<INibMLTextNode>(element)) {
            name = ToUtf8(node->GetText());
            EXPECT_EQ(node->GetOffsetStart(), start);
            EXPECT_EQ(Supports<INibMLServerScript>(node),
                      type == ttServerScript || type == ttProcessingInstruction);
        }
        FSeen += std::string(TypeNames[type]) + "(" + name + ")" + std::to_string(start - FFrom) + "-" +
                 std::to_string(end - FFrom) + " ";
        stop = !FStopAt.empty() && name == FStopAt;
    }
    void Invalidate() override { FSeen += "invalid "; }
    std::string FSeen, FStopAt;
    int32_t FFrom = 0;  // what begins before is not told of, and offsets count from here
};

/// A first parse settles the schema, so that the second is told of alone.
std::string Events(std::string_view text, std::vector<TRef<TRecorder>> recorders,
                   const char* name = "page.html") {
    TTestHost host(text, name);
    host.Parse();
    for (auto& recorder : recorders) host.Parser().AddCallback(recorder.Get());
    host.Parse();
    for (auto& recorder : recorders) host.Parser().RemoveCallback(recorder.Get());
    return recorders[0]->FSeen;
}

TEST(Observers, AreToldWhatLiesBeforeTheCaret) {
    const char* const cases[][2] = {
        {"<p>a<br/>b</p>c^", "open(p)0-3 text(a)3-4 single(br)4-9 text(b)9-10 close(p)10-14 text(c)14-15 "},
        {"<a href=\"x\" title>^", "attribute(href)3-11 attribute(title)12-17 open(a)0-18 text()18-18 "},
        {"<!-- x --><? y ?><% z %><%-- w --%>^",
         "comment( x )0-10 pi( y )10-17 script( z )17-24 aspcomment( w --)24-35 text()35-35 "},
        {"<!DOCTYPE html SYSTEM \"loose.dtd\">^",
         "attribute(html)10-15 attribute(SYSTEM)15-22 attribute(\"loose.dtd\")23-32 doctype(doctype)0-34 "
         "text()34-34 "},
        {"<p>^<b>x</b>", "open(p)0-3 "},
        {"<a href='x^", ""},
        {"<div <%= a %> class='x'>t^", "script(= a )5-13 attribute(class)14-23 open(div)0-24 text(t)24-25 "},
        {"<![CDATA[<b>]]><p>^", "open(p)15-18 text()18-18 "},
        {"<%@ no x %>></!DOCTYPE>^",
         "script( x )0-11 text(>)11-12 text(!DOCTYPE>)14-23 "},  // nothing is told of what is no element
        {"<script>a<b</script>^", "open(script)0-8 text(a<b)8-11 close(script)11-20 text()20-20 "},
    };
    for (const auto& [text, expect] : cases) EXPECT_EQ(Events(text, {MakeRef<TRecorder>()}), expect) << text;
}

// Wherever a block ends, all of a text is told, and told once.
TEST(Observers, AcrossBlocks) {
    const char* const texts[] = {
        "<p/title=x>one<b>t</b>wo</p>^",
        "<!--a-b--><?pi?><%a%b%><%--<%c%>--%>^",
        "<?pi'a b'c?>^",  // the text of a string that is cut
        "<script>a<b</script><p>^",
        "<!DOCTYPE/html'loose.dtd'><br/>^",
        "<ul>\r\n<li class=x>\r\ntext\r\n</ul> ^",
    };
    for (std::string text : texts) {
        std::string expected, wrong;
        for (size_t border = 0; border <= text.size() + 8; ++border) {
            auto recorder = MakeRef<TRecorder>();
            size_t fill = border ? TMLBufferProducer::BlockSize - border : 10;
            recorder->FFrom = static_cast<int32_t>(fill) + 7;
            std::string seen = Events("<!--" + std::string(fill, 'x') + "-->" + text, {recorder});
            if (!border) expected = seen;
            if (seen != expected) wrong = std::to_string(border) + ": " + seen;
        }
        EXPECT_EQ(wrong, "") << text << "\ninstead of\n" << expected;
    }
}

TEST(Observers, StopOnlyTogether) {
    auto first = MakeRef<TRecorder>(), second = MakeRef<TRecorder>();
    first->FStopAt = "b";
    EXPECT_EQ(Events("<p><b><a>^", {first}), "open(p)0-3 open(b)3-6 ");
    first->FSeen.clear();
    EXPECT_EQ(Events("<p><b><a>^", {first, second}), "open(p)0-3 open(b)3-6 open(a)6-9 text()9-9 ");
}

TEST(Observers, AnUnknownSchemaInvalidates) {
    TTestHost host("<p>^");
    auto recorder = MakeRef<TRecorder>();
    host.Parser().AddCallback(recorder.Get());
    host.Parser().AddCallback(recorder.Get());  // once is enough
    host.Parse();
    EXPECT_EQ(recorder->FSeen, "open(p)0-3 text()3-3 invalid open(p)0-3 text()3-3 ");
}

}  // namespace
}  // namespace caretwell::test
