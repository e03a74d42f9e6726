// Declarations: what becomes of elements, attributes, entities and sections.
#include <gtest/gtest.h>

#include "tests/schema/DTDTestText.h"

namespace caretwell {
namespace {

struct TCase {
    const char* FText;
    const char* FElement;
    const char* FExpect;
    const char* FMessages = "";
};

void Check(const TCase& c) {
    TDTDRun run(c.FText);
    EXPECT_EQ(ShowElement(run.Element(c.FElement)), c.FExpect) << c.FText;
    EXPECT_EQ(run.AllMessages(), c.FMessages) << c.FText;
}

TEST(DTDParser, Elements) {
    constexpr TCase cases[] = {
        {"<!ELEMENT ul - - (li)+>", "ul", "ul -- [li+]"},
        {"<!ELEMENT ul - - (li)+>", "li", "li OO []"},  // mentioned only
        {"<!ELEMENT li - O (a|b)*>", "li", "li -O [a*|b]"},
        {"<!ELEMENT p O O (a?,b&c+)>", "p", "p OO [a?,b&c+]"},
        {"<!ELEMENT p o - (a)>", "p", "p -- [o] -a"},  // no mark: "O" has its case
        {"<!ELEMENT x (#PCDATA | a)*>", "x", "x -- [*|a]"},
        {"<!ELEMENT x ((a|b)?, (c, (d)+)*)>", "x", "x -- [(a|b)?,(c*,(d+))]"},
        {"<!ELEMENT x (a, (b), (c))>", "x", "x -- [a,(b),(c)]"},
        {"<!ELEMENT x (a, (b|c), d)>", "x", "x -- [a,(b|c),d]"},
        {"<!ELEMENT br - O EMPTY>", "br", "br -O [EMPTY]E"},
        {"<!ELEMENT br Empty>", "br", "br -- [Empty]E"},
        {"<!ELEMENT x ANY>", "x", "x -- [ANY]A"},
        {"<!ELEMENT (a|b) - O EMPTY>", "a", "a -O [EMPTY]E"},
        {"<!ELEMENT (a|b) - O EMPTY>", "b", "b -O [EMPTY]"},  // only the first of a group
        {"<!ELEMENT a - - (b|c) -(d|e) +(f)>", "a", "a -- [b|c] +f -d|e"},
        {"<!ELEMENT a - - (b) +(c) +(d)>", "a", "a -- [b] +d"},
        {"<!ELEMENT a - - (b) -- note -- >", "a", "a -- [b]"},
        {"<!ELEMENT a - - (b) -(c) -(d) -(e)>", "a", "a -- [b] -d",
         "1: Expected > but found -\n"
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found (\n1: Expected > but found (\n"
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found e\n1: Expected > but found e\n"
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found )\n1: Expected > but found )\n"
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found >"},
        {"<!ELEMENT a (b)>\n<!ELEMENT b (c)>", "b", "b -- [c]"},  // one symbol, completed
        {"<!ELEMENT a (b)><!ELEMENT a (c)>", "a", "a -- [b]"},
        {"<!ELEMENT a (b,>\n<!ELEMENT c (d)>", "c", "c -- [d]", "1: Expected ) but found >"},
        {"<!ELEMENT a (b|c", "a", "a -- [b|c]", "1: Expected ) but found c\n1: Expected > but found c"},
        {"<!ELEMENT", "a", "none", "1: Expected > but found <!ELEMENT"},
        {"junk <!ELEMENT a (b)>", "a", "a -- [b]",
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found junk\n1: Expected > but found junk"},
    };
    for (const auto& c : cases) Check(c);
}

TEST(DTDParser, Attributes) {
    constexpr TCase cases[] = {
        {"<!ELEMENT a (b)><!ATTLIST a x CDATA #IMPLIED y (l|r) #REQUIRED>", "a", "a -- [b] x:CDATA y:l|r!"},
        {"<!ATTLIST a x CDATA #implied><!ELEMENT a (b)>", "a", "a -- [b] x:CDATA"},  // either order
        {"<!ATTLIST a x CDATA #IMPLIED>", "a", "a OO [] x:CDATA"},
        {"<!ATTLIST (a|b) x NUMBER 1 y (p|q) p z CDATA 'v' w ID>", "b",
         "b OO [] x:NUMBER y:p|q z:CDATA w:ID"},
        {"<!ATTLIST a x CDATA #FIXED 'f' y CDATA #FIXED f z CDATA #IMPLIED>", "a",
         "a OO [] x:CDATA=f y:CDATA= z:CDATA"},
        {"<!ATTLIST a x CDATA #OTHER y CDATA>", "a", "a OO [] x:CDATA OTHER:y",
         "1: Expected IMPLIED, REQUIRED, FIXED, PCDATA but found OTHER"},
        {"<!ATTLIST a x CDATA #(", "a", "a OO [] x:CDATA",
         "1: Expected identifier but found (\n1: Expected > but found ("},
        {"<!ATTLIST (a|a) x CDATA #IMPLIED><!--ATTRIBUTEEDITORS a.x=e a.y=f-->", "a",
         "a OO [] x:CDATA@e x:CDATA@e"},
        {"<!ENTITY % g 'x CDATA #IMPLIED'><!ATTLIST a %g; y CDATA #IMPLIED %g;>", "a",
         "a OO [] x:CDATA y:CDATA x:CDATA"},
        // Editors: behind the declarations, exact in case, any blanks between them.
        {"<!ATTLIST a x CDATA #IMPLIED y CDATA #IMPLIED z CDATA #IMPLIED>\n"
         "<!--attributeeditors\r\n a.x=color\ta.y=uri - a.q=uri\nb.x=uri ab = . a=b.c "
         "a.Z=uri\n\xE9\na.z=uri-->",
         "a", "a OO [] x:CDATA@color y:CDATA@uri z:CDATA@uri"},
        {"<!--ATTRIBUTEEDITORS a.x=uri -->\n<!ATTLIST a x CDATA #IMPLIED>", "a", "a OO [] x:CDATA"},
        {"<!ATTLIST a x CDATA #IMPLIED><!-- ATTRIBUTEEDITORS a.x=uri -->", "a", "a OO [] x:CDATA"},
        {"<!ATTLIST a x CDATA #IMPLIED>\n<!--ATTRIBUTEEDITORS a.x=uri\n", "a", "a OO [] x:CDATA@uri",
         "3: Expected --> but found end of file"},
    };
    for (const auto& c : cases) Check(c);
}

TEST(DTDParser, ParameterEntitiesAndSections) {
    constexpr TCase cases[] = {
        {"<!ENTITY % a 'x'><!ENTITY % a 'y'><!ELEMENT z (%a;)>", "z", "z -- [x]"},  // the first binds
        {"<!ENTITY % inner 'x|y'><!ENTITY % outer '(%inner;)'><!ELEMENT z %outer;>", "z", "z -- [x|y]"},
        {"<!ENTITY % a SYSTEM 'f'><!ELEMENT z (a)>", "z", "z -- [a]",
         "1: Expected > but found SYSTEM\n1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found f\n"
         "1: Expected > but found f\n1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found >"},
        {"<![IGNORE[<!ELEMENT a (b)> <![INCLUDE[ ]]> ]]><!ELEMENT z (c)>", "z", "z -- [c]"},
        {"<![ignore [<!ELEMENT z (b)>]]><!ELEMENT y (c)>", "z", "none"},
        {"<!ENTITY % on 'INCLUDE'><![ %on; [<!ELEMENT z (b)>]]><!ELEMENT y (c)>", "z", "z -- [b]"},
        {"<!ENTITY % on 'INCLUDE'><![ %on; [<!ELEMENT z (b)>]]><!ELEMENT y (c)>", "y", "y -- [c]"},
        {"<![INCLUDE[<![INCLUDE[<!ELEMENT z (b)>]]><!ELEMENT y (c)>]]><!ELEMENT x (d)>", "x", "x -- [d]"},
        {"<![[<!ELEMENT z (b)>]]>", "z", "z -- [b]"},
        {"<!ELEMENT y (b)>]]><!ELEMENT z (b)>", "z", "none"},  // a stray end is the end
        {"<![INCLUDE <!ELEMENT z (b)>", "z", "none",
         "1: Expected [ but found <!ELEMENT\n1: Expected > but found <!ELEMENT\n"
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found z\n1: Expected > but found z\n"
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found (\n1: Expected > but found (\n"
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found b\n1: Expected > but found b\n"
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found )\n1: Expected > but found )\n"
         "1: Expected <!ELEMENT, <!ATTLIST, <!ENTITY but found >"},
        {"<![INCLUDE[<!ELEMENT z (b)>", "z", "z -- [b]", "1: Expected ]]> but found >"},
        {"<![IGNORE[<!ELEMENT z (b)>", "z", "none", "1: Expected ]]> but found >"},
    };
    for (const auto& c : cases) Check(c);
}

TEST(DTDParser, GeneralEntities) {
    const struct {
        const char* FText;
        std::vector<int32_t> FExpect;
    } cases[] = {
        {"<!ENTITY e CDATA '&#160;' -- blank -->", {160}},
        {"<!ENTITY e '&#xa0;'>", {160}},
        {"<!ENTITY e '&#XA0;'>", {160}},
        {"<!ENTITY e \"&#38;#60;\">", {38, 60}},
        {"<!ENTITY e '&#12ab;&#x;5'>", {12, 5}},
        {"<!ENTITY e '&#99999999999;'>", {INT32_MAX}},
        {"<!ENTITY e 'bad'>", {}},
        {"<!ENTITY e>", {}},
        {"<!ENTITY e PUBLIC 'p' 's' '1'><!ENTITY e '2'>", {1, 2}},
    };
    for (const auto& c : cases) {
        TDTDRun run(c.FText);
        auto* entity = SymbolAs<TDTDEntity>(run.Parser.LookupSymbol("e", dtEntity));
        ASSERT_TRUE(entity) << c.FText;
        EXPECT_EQ(entity->FValues, c.FExpect) << c.FText;
        EXPECT_EQ(run.AllMessages(), "") << c.FText;
        EXPECT_EQ(entity->GetValues(-1), -1);
        EXPECT_EQ(entity->GetValues(entity->GetValueCount()), -1);
    }
}

TEST(DTDParser, ElementsRememberTheEntitiesThatTheyCameFrom) {
    TDTDRun run(
        "<!ENTITY % font 'tt|i'><!ENTITY % inline '%font;|em'>"
        "<!ELEMENT (%inline;) - - (%inline;)*><!ELEMENT p - - (%font;|q)>");
    const struct {
        const char* FElement;
        std::vector<std::string_view> FExpect;
    } cases[] = {{"tt", {"inline", "font"}}, {"em", {"inline", "font"}}, {"p", {}}, {"q", {}}};
    for (const auto& c : cases) {
        auto names = run.Element(c.FElement)->GetEntity();
        EXPECT_EQ(std::vector<std::string_view>(names.begin(), names.end()), c.FExpect) << c.FElement;
    }
}

TEST(DTDParser, SymbolsGoFromTheNewestToTheOldest) {
    TDTDRun run("<!ENTITY x '1'><!ELEMENT a (b)><!ATTLIST a c CDATA #IMPLIED d CDATA #IMPLIED>");
    std::string names;
    for (int32_t i = 0; i < run.Parser.FSymbolCount; ++i)
        names += std::string(run.Parser.GetSymbol(i)->FName) + " ";
    EXPECT_EQ(names, "d CDATA c b a x ");
    EXPECT_EQ(run.Parser.LookupSymbol("c", dtAttribute), nullptr);
    EXPECT_EQ(run.Parser.LookupSymbol("A", dtElement), nullptr);
    TDTDExprList& list = run.Element("a")->GetExprList();
    EXPECT_EQ(list.GetExpr(-1), nullptr);
    EXPECT_EQ(list.GetExpr(list.GetCount()), nullptr);
    list.Assign(list);
    EXPECT_EQ(list.GetCount(), 6);

    TDTDExprNode* kept = run.Parser.FExprs;
    TDTDExprNode* removed = run.Parser.CreateExpr();
    run.Parser.RemoveExpr(removed);
    EXPECT_EQ(run.Parser.FExprs, kept);
    run.Parser.ClearTable();
    EXPECT_EQ(run.Parser.LookupSymbol("a", dtElement), nullptr);
}

}  // namespace
}  // namespace caretwell
