// Where the caret stands: text in, state out.
#include <gtest/gtest.h>

#include "support/TestHost.h"

namespace caretwell::test {
namespace {

std::string NameOf(const TRef<INibMLTag>& tag) { return tag ? ToUtf8(tag->GetName()) : "-"; }

/// "text ul", "name div in ul", "attributes a", "value href@9 of a", with what else holds.
std::string Where(std::string_view text, const char* fileName = "page.html") {
    TTestHost host(text, fileName);
    host.Parse();
    TMLParser& parser = host.Parser();
    std::string result;
    if (!parser.FInTag) result = (parser.FCaretInTagName ? "open in " : "text ") + NameOf(parser.FCurrentTag);
    else if (parser.FCaretInTagName)
        result = "name " + NameOf(parser.FCurrentTag) + " in " + NameOf(parser.FCaretParentTag);
    else if (parser.GetInAttribute())
        result = "value " + ToUtf8(parser.FCurrentAttribute->GetName()) + "@" +
                 std::to_string(parser.FValuePos.Col) + " of " + NameOf(parser.FCurrentTag);
    else result = "attributes " + NameOf(parser.FCurrentTag);
    if (parser.FInClosingTag) result += " closing";
    if (parser.FInScript) result += " script";
    if (parser.FInStyle) result += " style";
    if (parser.FInTextArea) result += " textarea";
    if (parser.GetInDocType()) result += " doctype";
    if (parser.FIsXML) result += " xml";
    if (parser.FUnterminatedTag) result += " unterminated";
    return result;
}

/// Tags open at the caret, innermost first, and the closing tags proposed with their lines.
std::string Open(std::string_view text) {
    TTestHost host(text);
    host.Parse();
    std::string result;
    for (PTagEntry entry = host.Parser().GetTagStack(); entry; entry = entry->Next)
        result += NameOf(entry->Tag) + std::to_string(entry->Line) + " ";
    result += "|";
    auto& manager = MLSymbolManager();
    for (int32_t i = 0; i < manager.GetClosedTagsCount(); ++i) {
        auto tag = manager.GetCloseTags(i);
        result += " " + NameOf(tag) + std::to_string(QueryAs<INibMLClosingTag>(tag)->GetLineNumber());
    }
    return result;
}

struct TCase {
    std::string FText, FExpect;
};

TEST(Caret, InTextAndTags) {
    const TCase cases[] = {
        {"", "text -"},
        {"^", "text -"},
        {"<p>a^b</p>", "text p"},
        {"<p>a</p>^<b>", "text -"},
        {"<div><^ ", "open in div"},
        {"<div><u^ ", "name u in -"},     // a name the schema does not know has no parent kept
        {"<div><ul^ ", "name ul in div"},
        {"<ul^ x", "name ul in <!--root-->"},
        {"<div><ul^", "attributes ul"},   // at the very end the name lies wholly before the caret
        {"<p ^>", "attributes p"},
        {"<p>^", "text p"},
        {"<p^>", "name p in <!--root-->"},
        {"</p^>", "name - in - closing"},
        {"<a href=\"x^y\">", "value href@10 of a"},
        {"<a href='^'>", "value href@10 of a"},
        {"<a href=^>", "value href@9 of a"},
        {"<a href=x^>", "value href@10 of a"},  // unquoted: the caret
        {"<a href=\"x\"^>", "value href@10 of a"},
        {"<a href=\"x\" ^>", "attributes a"},
        {"<a hr^ef=x>", "attributes a"},
        {"<a href^>", "attributes a"},
        {"\xC3\xA9<a href=\"x^\">", "value href@11 of a"},  // columns count characters
        {"<p title=\"\xC3\xA9\xC3\xA9^\">", "value title@11 of p"},
    };
    for (const auto& c : cases) EXPECT_EQ(Where(c.FText), c.FExpect) << c.FText;
}

TEST(Caret, Regions) {
    const TCase cases[] = {
        {"<script>a<b^</script>", "text script script"},
        {"<script></script>^", "text -"},
        {"<script></scr^ipt>", "name script in - closing script"},
        {"<STYLE>p {^}</style>", "text style style"},
        {"<textarea><p>^</textarea>", "text textarea textarea"},
        {"<!-- <p> ^ --><b>", "text -"},
        {"<p><!-- a -->^", "text p"},
        {"<!DOCTYPE ht^ml>", "text - doctype"},
        {"<!DOCTYPE html>^", "text -"},
        {"<?xml version=\"1.0\"?><p>^", "text p xml"},
        {"<?xmlish ?><p>^", "text p"},
        {"<% a = '<p>' ^ %>", "text - script"},
        {"<% a %>^", "text -"},
        {"<%-- <% a %> ^ --%>", "text - script"},
        {"<p <b>^", "text b unterminated"},
        {"<p>1 < 2 ^", "text p"},
        // What follows the caret's tag does not reach back into it.
        {"<p class=\"^\">it's</p>", "value class@11 of p"},
    };
    for (const auto& c : cases) EXPECT_EQ(Where(c.FText), c.FExpect) << c.FText;
    EXPECT_EQ(Where("<script><b>^", "page.xsl"), "text b");  // raw content is an HTML matter
}

TEST(Caret, OpenTags) {
    const TCase cases[] = {
        {"<div>\n<ul>\n<li>^", "li3 ul2 div1 | </li>3 </ul>2 </div>1"},
        {"<div>^</div>", "div1 |"},                        // closed further down
        {"<div>^\n<p>", "div1 | </div>1"},                 // a later line has no say
        {"<div>^<p>", "div1 | </p>1 </div>1"},             // the caret's line has
        {"<ul><li>a</ul>^", "| </li>1"},                   // an implied close leaves the document's record
        {"<div><b></div>^", "b1 | </b>1"},                 // b needs its own closing tag
        {"<b><ul></b>^", "| </ul>1"},                      // ul does not belong in b
        {"<?xml version='1.0'?><b><ul></b>^", "ul1 | </ul>1"},
        {"<p></b>^", "p1 | </p>1"},
        {"<p>a<br>b<img>^", "p1 | </p>1"},                 // empty elements close themselves
        {"<?xml version='1.0'?><p><br>^", "br1 p1 | </p>1"},
        {"<p/>^", "|"},
        {"<x><y></x>^", "| </y>1"},
        {"<X></x>^", "|"},
        {"a\r\nb\rc\n\rd<p>^", "p4 | </p>4"},              // four kinds of line break
    };
    for (const auto& c : cases) EXPECT_EQ(Open(c.FText), c.FExpect) << c.FText;
}

// A block ends wherever it likes: names, values and end marks go on in the next.
TEST(Caret, AcrossBlocks) {
    constexpr int32_t BlockSize = TMLBufferProducer::BlockSize;
    for (int32_t shift = -14; shift <= 14; ++shift) {
        std::string fill(static_cast<size_t>(BlockSize - 40 + shift), 'x');
        EXPECT_EQ(Where("<!--" + fill + "--><script></script><a href=\"v^\">"),
                  "value href@" + std::to_string(fill.size() + 34) + " of a") << shift;
        EXPECT_EQ(Open("<p>" + fill + "</p><b><blink></blink>^"), "b1 | </b>1") << shift;
        // The same with white space to cut at, and the line counted once.
        std::string lines(static_cast<size_t>(BlockSize - 40 + shift), '\n');
        EXPECT_EQ(Open(lines + "\r\n<p>\r\n\r\n<ul>^"),
                  "ul" + std::to_string(lines.size() + 4) + " p" + std::to_string(lines.size() + 2) + " | </ul>" +
                      std::to_string(lines.size() + 4) + " </p>" + std::to_string(lines.size() + 2)) << shift;
    }
    std::string value(40000, 'v');
    EXPECT_EQ(Where("<a title='" + value + "' href='^'>"), "value href@" + std::to_string(std::min<size_t>(40019, 32767)) + " of a");
}

// A caret beyond column 32,767 is known by its offset.
TEST(Caret, BeyondTheLastColumn) {
    std::string row;
    for (int i = 0; i < 9000; ++i) row += "<b>x</b>";
    EXPECT_EQ(Where(row + "<div><ul^ "), "name ul in div");
    EXPECT_EQ(Propose(row + "<a target=\"_s^\">" + row), "_self");
}

// Made-up attributes are bounded; those that the schema knows count behind them as well.
TEST(Caret, TagOfManyAttributes) {
    std::string names;
    for (int i = 0; i < 20000; ++i) names += "x ";
    TTestHost host("<a " + names + "href=x ^>");
    host.Parse();
    EXPECT_EQ(host.Parser().GetCurrentTagAttrCount(), 10001);
    EXPECT_EQ(host.Manager().GetHiddenAttrCount(), 1);
}

TEST(Caret, AnyBytes) {
    const TCase cases[] = {
        {std::string("<p>\0<b>^", 8), "text b"},          // a zero byte is a byte
        {std::string("<p cl\0ass=x ^>", 14), "attributes p"},
        {"\xEF\xBB\xBF<p>^", "text p"},                   // a byte order mark
        {"\xC3<p>^", "text p"},                           // a lead byte swallows nothing
        {"<p \xFF\xFE ^>", "attributes p"},
        {"<\xE6\x97\xA5\xE6\x9C\xAC^ ", "name \xE6\x97\xA5\xE6\x9C\xAC in -"},
    };
    for (const auto& c : cases) EXPECT_EQ(Where(c.FText), c.FExpect) << c.FText;
}

}  // namespace
}  // namespace caretwell::test
