// Documents in, what may stand at their caret out.
#include <gtest/gtest.h>

#include "grammar/WalkText.h"
#include "grammar/XSDGrammar.h"
#include "support/Cases.h"
#include "support/LoaderTest.h"
#include "symbols/XSDLoader.h"
#include "symbols/XSDPlan.h"

namespace caretwell {
namespace {

constexpr const char* Page = R"(
<!ELEMENT html O O (head, body)>
<!ELEMENT head O O (title? & base?)>
<!ELEMENT title - - (#PCDATA)>
<!ELEMENT (base | br | area) - O EMPTY>
<!ELEMENT body O O (p | div | ul | dl | table | map)* +(ins)>
<!ELEMENT p - O (a | b | br | ins | map)*>
<!ELEMENT b - - (a | b | br)*>
<!ELEMENT a - - (a | b | br | p | div)* -(a)>
<!ELEMENT div - - (p | div | ul | a | b | dt | dd)*>
<!ELEMENT ul - - (li)+>
<!ELEMENT li - O (p | b | ul)*>
<!ELEMENT dl - - ((dt+, dd+)* | div*)>
<!ELEMENT (dt | dd) - O (b)*>
<!ELEMENT table - - (caption?, thead?, tbody+)>
<!ELEMENT (caption | td) - O (b)*>
<!ELEMENT thead - O (tr)+>
<!ELEMENT tbody O O (tr)+>
<!ELEMENT tr - O (td)+>
<!ELEMENT ins - - (p | b | ul)*>
<!ELEMENT map - - (area | p | a | b | br)*>
<!--CONTENTRULES
a=around
ins=around
map=around
map.area=own
map..area=br
dl.div=dl
div.dt=none
div.dd=none
-->)";

TEST(Walk, Documents) {
    const struct {
        const char *Document, *Answer;
    } cases[] = {
        // Tags that are left out.
        {"", "html! base body div dl head ins map p table title ul | |"},
        {"<html>", "head! base body div dl ins map p table title ul | |"},
        {"<title></title>", "base body div dl ins map p table ul | title | head"},
        {"<P>", "a b br div dl ins map p table ul | | p body html"},
        {"<ul>", "li! ins | |"},
        {"<ul><li><b></b>", "b ins li p ul | | li ul"},
        {"<table>", "tbody! caption ins thead tr | |"},
        {"<table><caption>", "b ins tbody thead tr | | caption"},
        {"<table><tr>", "td! ins | |"},
        {"<table><tr><td>", "b ins tbody td tr | | td tr tbody table"},
        {"<table><thead><tr><td></table>^", "div dl ins map p table ul | | body html"},
        {"<dl><dt>", "b dd dt ins | | dt"},
        {"<dl><dt></dt>", "dd! dt ins | div |"},
        // What elements around say.
        {"<p><a><b>", "b br ins | | b"},
        {"<p><a>", "b br ins | | a"},
        {"<div><a>", "b div ins p | | a"},
        {"<p><map><a>", "area b br ins | | a"},
        {"<p><b>", "a b br ins | | b"},
        {"<div>", "a b div ins p ul | | div"},
        {"<dl><div><dt></dt>", "dd! dt ins | |"},
        {"<dl><div><dt></dt><dd>", "b dd dt ins | | dd div"},
        // Errors cost what they are about.
        {"<ul><li><b><li>", "b ins li p ul | | li ul"},
        {"<p><b><div></b>", "a b div ins p ul | | div"},
        {"<ul><xx></xx><li></li>", "ins li | | ul"},
        {"</ul><ul><li></b></p>", "b ins li p ul | | li ul"},
        {"<table><tbody><tr><td></td></tr></tbody><caption></caption>",
         "ins tbody tr | caption thead | table"},
        {"<p><xx>", "~a b br ins map | | xx"},
        // What stands after the caret comes after what fits before it.
        {"<table>^<thead></thead></table>", "tbody! caption ins tr thead | |"},
        {"<table><caption/>^<thead></thead></table>", "tbody! ins tr thead | caption |"},
    };
    TDTDText page(Page);
    for (const auto& c : cases) EXPECT_EQ(page.At(c.Document), c.Answer) << c.Document;
}

TEST(Walk, Xml) {
    const struct {
        const char *Document, *Answer;
    } cases[] = {
        {"", "html! | |"},
        {"<html><head/>", "body! | head |"},
        {"<html><head/><body><ul><li>", "b ins p ul | | li"},
        {"<html><head/><body><ul><li><br>", "| | br"},
        {"<html><head/><body><table><tbody><tr><td></tr>", "ins tr | | tbody"},
        {"<html><head/><body></html>", "| html |"},
    };
    TDTDText page(Page);
    for (const auto& c : cases) EXPECT_EQ(page.At(c.Document, true), c.Answer) << c.Document;
}

// Where everything may be left out everywhere, no tag and no caret takes for ever.
TEST(Walk, ManyOmissibleTags) {
    std::string names = "a0";
    for (int i = 1; i < 300; ++i) names += "|a" + std::to_string(i);
    for (const char* exception : {"", " -(a9)"}) {
        TDTDText page("<!ELEMENT (html|" + names + ") O O (" + names + ")*" + exception +
                      "><!ELEMENT lost - - (#PCDATA)>");
        std::string answer = page.At("<html><a1>" + Repeat("<lost></lost>", 20) + "<a2>");
        EXPECT_TRUE(answer.starts_with("~a0 a1 ")) << answer.substr(0, 99);
        EXPECT_TRUE(answer.ends_with("| | a2 a1 html")) << answer.substr(answer.size() - 99);
    }
}

constexpr const char* Order = R"(
<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' elementFormDefault='qualified'>
<xs:element name='order' type='Order'/>
<xs:element name='note' abstract='true' type='Note'/>
<xs:element name='memo' substitutionGroup='note'/>
<xs:element name='hint' substitutionGroup='memo'/>
<xs:complexType name='Base'><xs:sequence>
  <xs:element name='id' type='xs:string'/><xs:element name='item' minOccurs='2' maxOccurs='3' type='Item'/>
</xs:sequence></xs:complexType>
<xs:complexType name='Order'><xs:complexContent><xs:extension base='Base'><xs:sequence>
  <xs:group ref='Ends' minOccurs='0'/><xs:element ref='note' maxOccurs='unbounded'/><xs:element name='raw' minOccurs='0'>
    <xs:complexType><xs:sequence><xs:any minOccurs='0' maxOccurs='unbounded' processContents='lax'/></xs:sequence>
  </xs:complexType></xs:element>
</xs:sequence></xs:extension></xs:complexContent></xs:complexType>
<xs:complexType name='Item'><xs:all><xs:element name='size' type='xs:string'/>
  <xs:element name='item' type='xs:string' minOccurs='0'/></xs:all></xs:complexType>
<xs:complexType name='Note' mixed='true'><xs:choice minOccurs='0' maxOccurs='unbounded'>
  <xs:element name='b'/></xs:choice></xs:complexType>
<xs:group name='Ends'><xs:choice><xs:element name='paid'/><xs:element name='open'/></xs:choice></xs:group>
</xs:schema>)";

class SchemaWalk : public TLoaderTest {};

TEST_F(SchemaWalk, Documents) {
    const struct {
        const char *Document, *Answer;
    } cases[] = {
        {"", "hint! memo! order! | |"},
        // The base comes before what extends it; counts have both ends.
        {"<order>", "id! | hint item memo open paid raw |"},
        {"<order><id/>", "item! | hint id memo open paid raw |"},
        {"<order><id/><item/>", "item! | hint id memo open paid raw |"},
        {"<order><id/><item/><item/>", "hint! memo! item open paid | id raw |"},
        {"<order><id/><item/><item/><item/>", "hint! memo! open paid | id item raw |"},
        {"<order><id/><item/><item/><paid/>", "hint! memo! | id item open paid raw |"},
        // Who stands for an abstract element, one for another.
        {"<order><id/><item/><item/><hint/>", "hint memo raw | id item open paid | order"},
        {"<order><id/><item/><item/><memo>", "b | | memo"},
        // One name, and each place has its own declaration: parts in any order, a text.
        {"<order><id/><item>", "size! item | |"},
        {"<order><id/><item><item/>", "size! | item |"},
        {"<order><id/><item><size/>", "item | size | item"},
        {"<order><id/><item><item>", "| | item"},
        // A wildcard lets in what the schema has at its top.
        {"<order><id/><item/><item/><memo/><raw>", "hint memo order | | raw"},
        // Errors cost what they are about.
        {"<order><xx><b></xx><id/>", "item! | hint id memo open paid raw |"},
        {"<order><item/>", "item! | hint id memo open paid raw |"},
    };
    TTable table;
    TXSDGrammar grammar(TXSDLoader(table.Manager).GetPlan(Write("order.xsd", Order)));
    for (const auto& c : cases) EXPECT_EQ(AnswerOf(grammar, c.Document, true), c.Answer) << c.Document;
}

}  // namespace
}  // namespace caretwell
