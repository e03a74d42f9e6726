// Where the caret stands: text in, state out.
#include <gtest/gtest.h>

#include "support/Cases.h"
#include "support/ParseState.h"

namespace caretwell::test {
namespace {

/// "text ul", "name div in ul", "attributes a", "value href@9 of a", with what else holds.
std::string Where(const TParseState& state) {
    std::string result;
    if (!state.InTag) result = (state.InTagName ? "open in " : "text ") + state.Tag;
    else if (state.InTagName) result = "name " + state.Tag + " in " + state.Parent;
    else if (state.InAttribute)
        result = "value " + state.Attribute + "@" + std::to_string(state.ValueColumn) + " of " + state.Tag;
    else result = "attributes " + state.Tag;
    if (state.InClosingTag) result += " closing";
    if (state.InScript) result += " script";
    if (state.InStyle) result += " style";
    if (state.InTextArea) result += " textarea";
    if (state.InDocType) result += " doctype";
    if (state.IsXML) result += " xml";
    if (state.IsUnterminated) result += " unterminated";
    return result;
}

TParseState Parsed(std::string_view text, const char* fileName = "page.html") {
    TTestHost host(text, fileName);
    host.Parse();
    return StateOf(host);
}
std::string Where(std::string_view text, const char* fileName = "page.html") {
    TTestHost host(text, fileName);
    host.Parse();
    std::string where = Where(StateOf(host));
    // Without a view the caret is sought in the text itself, by its line and its column in bytes.
    host.ParseStream();
    bool isAscii = std::all_of(text.begin(), text.end(), [](char c) { return c > 0; });
    if (isAscii && text.size() < 32767) {
        EXPECT_EQ(Where(StateOf(host)), where) << "as a stream: " << text;
    }
    return where;
}

/// Tags open at the caret, innermost first, and the closing tags proposed with their lines.
std::string Open(std::string_view text, const char* fileName = "page.html") {
    TParseState state = Parsed(text, fileName);
    std::string result;
    for (const auto& tag : state.AtCaret) result += tag.Name + std::to_string(tag.Line) + " ";
    result += "|";
    for (const auto& tag : state.Closing) result += " " + tag.Name + std::to_string(tag.Line);
    return result;
}

struct TCase {
    std::string FText, FExpect;
};

TEST(Caret, Stands) {
    const TCase cases[] = {
        {"", "text -"},
        {"^", "text -"},
        {"<p>a^b</p>", "text p"},
        {"<p>a</p>^<b>", "text -"},
        {"<div><^ ", "open in div"},
        {"<div><u^ ", "name u in -"},  // a name the schema does not know has no parent kept
        {"<div><ul^ ", "name ul in div"},
        {"<ul^ x", "name ul in <!--root-->"},
        {"<div><ul^", "name ul in div"},  // the end of a document ends no name
        {"<div><^", "open in div"},
        {"<p align^", "attributes p"},
        {"<div></^", "open in div closing"},
        {"<p>a^<b></p> <i", "text p"},
        {"<p align=c^ id=x>", "value align@11 of p"},  // an unquoted word may go on
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
        // Regions.
        {"<script>a<b^</script>", "text script script"},
        {"<script></script>^", "text -"},
        {"<style></style>^", "text -"},
        {"<script/><p>^", "text p"},
        {"<body><script>a ^</script><p>a < b", "text script script"},
        {"<p><![CDATA[<b>^", "text p"},
        {"<?php // don't ?><p>^", "text p"},
        {"<?php echo '?> <b>' ?><p>^", "text p"},
        {"<!DOCTYPE a [ <!ENTITY b \"<p>\"> <!-- ' ] --> ]><p>^", "text p"},
        {"<!DOCTYPE a [ <!--> a-b ' ]> --> ]><p>^", "text p"},
        {"<!DOCTYPE ^", "text - doctype"},
        {"<p a[b ^ class=[x>", "attributes p"},
        {"<!DOC^", "text - doctype"},
        {"<!ELEMENT a><p>^", "text p"},
        {"<% a %>^", "text -"},
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
        {"<%-- <% a %> ^ --%>", "text - script"},
        {"<p <b>^", "text b unterminated"},
        {"<p>1 < 2 ^", "text p"},
        // What follows the caret's tag does not reach back into it.
        {"<p class=\"^\">it's</p>", "value class@11 of p"},
        // Any bytes.
        {std::string("<p>\0<b>^", 8), "text b"},  // a zero byte is a byte
        {std::string("<p cl\0ass=x ^>", 14), "attributes p"},
        {"\xEF\xBB\xBF<p>^", "text p"},  // a byte order mark
        {"\xC3<p>^", "text p"},          // a lead byte swallows nothing
        {"<p \xFF\xFE ^>", "attributes p"},
        {"<\xE6\x97\xA5\xE6\x9C\xAC^ ", "name \xE6\x97\xA5\xE6\x9C\xAC in -"},
    };
    for (const auto& c : cases) EXPECT_EQ(Where(c.FText), c.FExpect) << c.FText;
    EXPECT_EQ(Where("<script><b>^", "page.xsl"), "text b");  // raw content is an HTML matter
}

TEST(Caret, OpenTags) {
    const TCase cases[] = {
        {"<div>\n<ul>\n<li>^", "li3 ul2 div1 | </li>3 </ul>2 </div>1"},
        {"<div>^</div>", "div1 |"},             // closed further down
        {"<div>^\n<p>", "div1 | </div>1"},      // a later line has no say
        {"<div>^<p>", "div1 | </p>1 </div>1"},  // the caret's line has
        {"<ul><li>a</ul>^", "|"},               // an implied close is one
        {"<div><b></div>^", "b1 | </b>1"},      // b needs its own closing tag
        {"<b><ul></b>^", "|"},                  // ul does not belong in b
        {"<?xml version='1.0'?><b><ul></b>^", "ul1 | </ul>1"},
        {"<p></b>^", "p1 | </p>1"},
        {"<p>a<br>b<img>^", "p1 | </p>1"},  // empty elements close themselves
        {"<?xml version='1.0'?><p><br>^", "br1 p1 | </p>1"},
        {"<p/>^", "|"},
        {"<x><y></x>^", "|"},
        {"<div><div>a</div> > b ^", "div1 | </div>1"},  // ">" in text closes nothing
        {"<div>\n^<div>a</div> > b", "div1 | </div>1"},
        {"<p>^<span/><a href=x/>t</a>", "p1 | </p>1"},
        {"<![CDATA[<table>]]><p>^", "p1 | </p>1"},
        {"<X></x>^", "|"},
        {"<p>a/>b^", "p1 | </p>1"},
        {"<p><!DOCTYPE p/>^", "p1 | </p>1"},
        {"<p>^<a href=x />t", "p1 | </p>1"},
        {"a\r\nb\rc\n\rd<p>^", "p4 | </p>4"},  // four kinds of line break
        {"<p ^><br/><span/>", "p1 | </p>1"},   // what ends itself behind the caret's tag
    };
    for (const auto& c : cases) EXPECT_EQ(Open(c.FText), c.FExpect) << c.FText;
}

// Under many open tags a closing tag goes name by name, and drops what it would drop one by one.
TEST(Caret, ManyOpenTags) {
    for (size_t count : {10u, 100u}) {
        std::string open = Repeat("b1 ", count);
        EXPECT_EQ(Open("<a></a><div><x><p><ul>" + Repeat("<b>", count) + "</div>^"),
                  open + "ul1 |" + Repeat(" </b>1", count) + " </ul>1")
            << count;
        EXPECT_EQ(Open("<x>" + Repeat("<li>", count) + "<y></x>^"), "|");
    }
}

// Places of what is written on the tag; the last may be cut by the end of the document.
TEST(Caret, WrittenAttributes) {
    const TCase cases[] = {
        {"<a href='x y' title = \"z\" class=w target ^>",
         "href=x y@3-13 title=z@14-25 class=w@26-33 target=@34-0 "},
        {"<p class='a' x^><b>", "class=a@3-12 x=@13-0 "},
        {"<p class=a align='le^", "class=a@3-10 align=@11-19 "},
        {"<p class=a align=le^", "class=a@3-10 align=@11-18 "},
        {"<input checked ^>", "checked=true@7-15 "},
        {"<p><!DOCTYPE class^>", ""},
        {"<a 'x' href=y^ <p>", "href=y@7-13 "},
        // A tag that nobody has ended yet: the next one begins, and what is between is text.
        {"<div ^\n<p class=x>t</p></div>", ""},
        {"<div ^ some text <p id=x>", ""},
        {"<div class=a ^ id=b\nalign=c <p>", "class=a@5-12 id=b@14-18 "},
        {"<div ^\nalign=left>", "align=left@6-16 "},
        {"<xsl:if test='x'><b></xsl:if> select x <i ^>", ""},
    };
    for (const auto& c : cases) {
        std::string written;
        for (const auto& attribute : Parsed(c.FText).Written)
            written += attribute.Name + "=" + attribute.Value + "@" + std::to_string(attribute.Start) + "-" +
                       std::to_string(attribute.End) + " ";
        EXPECT_EQ(written, c.FExpect) << c.FText;
    }
}

// Where open tags begin and end, the regions that are open at the end and where the innermost
// began, and the empty elements that XML wants closed.
TEST(Caret, Places) {
    const TCase cases[] = {
        {"<div class=<p>^", "p@11-13 div@0-11 | 08 1 |"},
        {"<div class=a b='x'>t<p >^", "p@20-23 div@0-18 | 0 -1 |"},
        {"<script>a</script><style>b</style><textarea>c</textarea>^", "| 0 -1 |"},
        {"<p><script>a^", "script@3-10 p@0-2 | 03 11 |"},
        {"<!-- a ^", "| 01 4 |"},
        {"<? a ^", "| 04 2 |"},
        {"<p>^<% a", "p@0-2 | 05 5 |"},
        {"<%-- a ^", "| 07 4 |"},
        {"<a href='^", "a@0-3 | 068 8 |"},
        {"<p ^", "p@0-3 | 08 1 |"},
        {"<?xml version='1.0'?><br></br><img><br/>^", "img@30-34 | 0 -1 | 34"},
    };
    for (const auto& c : cases) {
        TParseState state = Parsed(c.FText);
        std::ostringstream seen;
        for (const auto& tag : state.AtCaret) seen << tag.Name << '@' << tag.Start << '-' << tag.End << ' ';
        seen << "| ";
        for (size_t i = 0; i < state.Regions.size(); ++i)
            if (state.Regions[i] == '1') seen << i;
        seen << ' ' << state.RegionStart << " |";
        for (int32_t offset : state.AutoClose) seen << ' ' << offset;
        EXPECT_EQ(seen.str(), c.FExpect) << c.FText;
    }
}

// Of a directive the schema knows "%>" is the end, of another the script's.
TEST(Caret, ServerDirectives) {
    const TCase cases[] = {
        {"<%@ Page ^", "attributes @ page"},      {"<%@ Page Language='^", "value Language@20 of @ page"},
        {"<%@ Page a %^>", "attributes @ page"},  {"<%@ Page % ^x %>", "attributes @ page"},
        {"<%@ Page Language='C#' %>^", "text -"}, {"<%@ Page %><p>^", "text p"},
        {"<p><%@ Page x=5% %>^", "text p"},       {"<%@ No x > %>^", "text -"},
    };
    for (const auto& c : cases) EXPECT_EQ(Where(c.FText, "page.aspx"), c.FExpect) << c.FText;
}

// What is longer than a block.
TEST(Caret, LongParts) {
    EXPECT_EQ(Where("<a href" + std::string(20000, ' ') + "= '^'>"), "value href@20011 of a");
    std::string value(40000, 'v');
    EXPECT_EQ(Where("<a title='" + value + "' href='^'>"),
              "value href@" + std::to_string(std::min<size_t>(40019, 32767)) + " of a");
}

// The state of a text behind so many bytes that tell nothing, as it were without them.
std::string Behind(TTestHost& host, size_t fill, char filler, const std::string& text) {
    host.OpenText("<!--" + std::string(fill, filler) + "-->" + text);
    host.Parse();
    TParseState state = StateOf(host);
    auto before = static_cast<int32_t>(fill);
    bool isLines = filler == '\n';
    state.ValueColumn -= isLines ? 0 : before;
    std::string result = Where(state) + " " + state.Regions + " " +
                         std::to_string(state.RegionStart - (state.RegionStart < 0 ? 0 : before));
    for (const auto& tag : state.AtCaret)
        result += " " + tag.Name + std::to_string(tag.Line - isLines * before) + "@" +
                  std::to_string(tag.Start - before) + "-" + std::to_string(tag.End - before);
    for (const auto& tag : state.Closing)
        result += " " + tag.Name + std::to_string(tag.Line - isLines * before);
    for (const auto& attribute : state.Written)
        result +=
            " " + attribute.Name + "=" + attribute.Value + "@" + std::to_string(attribute.Start - before);
    return result;
}

// Wherever the border falls, in a mark, a name, a string or a region, all is as without it.
TEST(Caret, RegionsAcrossBlocks) {
    const std::string texts[] = {
        "<!-- <p> -- a --><b>t^",
        "<b><!--a-b^",
        "<script>a<b'\n</script><p>^",
        "<style>p>b{}</style><p>t^",
        "<style>p>b{^}</style>",
        "<textarea><p></textarea><b>^",
        "<?pi <b 'x' ?><p>^",
        "<?pi \"<b> ^ ",
        "<?xml version='1.0'?><br><p>^",
        "<% a>b %><p>^</p>",
        "<%--<%a%>b--%><p>^",
        "<%@ no a %><p>^",
        "<!DOCTYPE html SYSTEM 'loose.dtd'><p>^",
        "<p class='x y'/><b id=\"^z\">",
        "<p/class='x'>t<b>^",  // the closing quote is the last byte of a block
        "<a target=_s^>t</a>",
        "<p class=x\r\nid='y' ^><b>",
        "<div\r\n<%= a %> class=x ^>",
        "<ul><li>\xC3\xA9 &amp; <br/></li></ul\n><b>^",
        "<script></script><a href=\"v^\">",
        "<b><blink></blink>^",
        "\r\n<p>\r\n\r\n<ul>^",
    };
    TTestHost host{THostOptions()};
    for (const auto& text : texts) {
        std::string first;
        Behind(host, 0, 'x', text);  // the schema is loaded
        for (char filler : {'x', '\n'}) {
            std::string expected = Behind(host, 10, filler, text);
            for (size_t border = 0; border < text.size() + 8; ++border) {
                std::string seen = Behind(host, TMLBufferProducer::BlockSize - border, filler, text);
                if (seen != expected && first.empty())
                    first = "border " + std::to_string(border) + filler + ": " + seen + "\ninstead of " +
                            expected;
            }
        }
        EXPECT_EQ(first, "") << text;
    }
}

// A caret beyond column 32,767 is known by its offset.
TEST(Caret, BeyondTheLastColumn) {
    std::string row = Repeat("<b>x</b>", 9000);
    EXPECT_EQ(Where(row + "<div><ul^ "), "name ul in div");
    EXPECT_EQ(Propose(row + "<a target=\"_s^\">" + row), "_self");
}

// Made-up attributes are bounded; those that the schema knows count behind them as well.
TEST(Caret, TagOfManyAttributes) {
    TTestHost host("<a " + Repeat("x ", 20000) + "href=x ^>");
    host.Parse();
    EXPECT_EQ(StateOf(host).Written.size(), 10001u);
    EXPECT_EQ(host.Manager().GetHiddenAttrCount(), 1);
}

}  // namespace
}  // namespace caretwell::test
