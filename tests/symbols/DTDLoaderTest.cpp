// Definitions as text in, the table that a load makes of them as text out.
#include "support/LoaderTest.h"

namespace caretwell {
namespace {

/// A table with one definition loaded under its root.
class DTDLoader : public TLoaderTest {
protected:
    struct TTable : TLoaderTest::TTable {
        explicit TTable(const std::string& file) { Manager.LoadDTD(Root(), file); }
    };
};

TEST_F(DTDLoader, Children) {
    const struct {
        const char* FText;
        const char* FParent;
        const char* FChildren;
        const char* FRoot;
    } cases[] = {
        {"<!ELEMENT A - - (B)><!ELEMENT B - - (#PCDATA)>", "a", "b", "a"},
        {"<!ELEMENT A - - (B)><!ELEMENT B O - (C)><!ELEMENT C - - (D)>", "a", "b c", "a"},
        {"<!ELEMENT A - - (B)><!ELEMENT B O - (C)><!ELEMENT C O - (D,A)>", "a", "a b c d", ""},
        {"<!ELEMENT A - - (B|C) -(C)><!ELEMENT C - - (#PCDATA)>", "a", "b", "a c"},
        {"<!ELEMENT A - - (B) -(X,(C))><!ELEMENT B O - (C|D)>", "a", "b d", "a x"},
        {"<!ELEMENT A - - (B) -(B)><!ELEMENT B O - (C)>", "a", "", "a b"},  // nor what stands in it
        {"<!ELEMENT A - - (B) +(C)>", "a", "b c", "a"},
        {"<!ELEMENT A - - (A)>", "a", "a", ""},
        {"<!ELEMENT A - - ((B,(C|(D)))?,#PCDATA)>", "a", "b c d", "a"},
        {"<!ELEMENT A - O EMPTY><!ATTLIST A x CDATA #IMPLIED>", "a", "", "a"},
        {"<!ELEMENT A ANY><!ELEMENT B (C)>", "a", "a b c", "a b"},
        {"<!ELEMENT A (NAME|name)>", "a", "name", "a"},         // a type word is no element
        {"<!ELEMENT a (b)><!ELEMENT A (c)>", "a", "c", "a b"},  // the newest symbol comes first
        {"<!ATTLIST A x CDATA #IMPLIED y CDATA #IMPLIED><!ELEMENT A (B)>", "a", "b", "a"},
    };
    int number = 0;
    for (const auto& c : cases) {
        TTable table(Write("children" + std::to_string(number++), c.FText));
        EXPECT_EQ(table.Children(c.FParent), c.FChildren) << c.FText;
        EXPECT_EQ(table.Children("root"), c.FRoot) << c.FText;
        EXPECT_EQ(FHost->FText, "") << c.FText;
    }
}

TEST_F(DTDLoader, Attributes) {
    const struct {
        const char* FText;
        const char* FExpect;
    } cases[] = {
        {"x CDATA #IMPLIED", "x="},
        {"align (left|right) #REQUIRED", "align=left,right@default!"},
        {"selected (selected) #IMPLIED", "selected=false,true@default"},
        {"a (a|b) #IMPLIED", "a=false,true@default"},
        {"a (b|a) #IMPLIED", "a=a,b@default"},
        {"CDATA CDATA #IMPLIED", "CDATA="},
        {"onclick CDATA #IMPLIED only CDATA #IMPLIED", "on onclick= on only="},
        {"onclick NMTOKEN #IMPLIED o CDATA #IMPLIED", "o= onclick="},
        {"v CDATA #FIXED '1.0'", "v=#1.0"},
        {"x CDATA #IMPLIED X (y) #IMPLIED", "x="},  // the first one stands
        {"x CDATA #IMPLIED><!--ATTRIBUTEEDITORS A.x=color --", "x=color...@color"},
        {"x (q) #IMPLIED><!--ATTRIBUTEEDITORS A.x=Color --", "x=Color...@color"},
        {"x CDATA #IMPLIED><!--ATTRIBUTEEDITORS A.x=uri --", "x=uri...@uri"},
        {"x CDATA #IMPLIED><!--ATTRIBUTEEDITORS A.x=URI --", "x=URI@default"},
        {"x CDATA #IMPLIED><!--ATTRIBUTEEDITORS A.x=script --", "x=script@default"},
    };
    int number = 0;
    for (const auto& c : cases) {
        std::string text = std::string("<!ELEMENT A - - (B)><!ATTLIST A ") + c.FText + ">";
        TTable table(Write("attributes" + std::to_string(number++), text));
        EXPECT_EQ(table.Attributes("a"), c.FExpect) << c.FText;
    }
}

TEST_F(DTDLoader, FlagsAndEntities) {
    TTable table(Write("flags",
                       "<!ENTITY % head 'h1|h2'><!ELEMENT (%head;) - O (b)><!ELEMENT b O - EMPTY>"
                       "<!ENTITY nbsp CDATA '&#160;'><!ENTITY amp '&#38;#38;'><!ENTITY none 'g'>"));
    THTMLTag* heading = table.Tag("h2");
    EXPECT_TRUE(heading->GetRequiresOpeningTag());
    EXPECT_FALSE(heading->GetRequiresClosingTag());
    ASSERT_EQ(heading->GetEntityCount(), 1);
    EXPECT_EQ(heading->GetEntityName(0), u"head");
    EXPECT_FALSE(heading->GetIsChild());
    EXPECT_TRUE(table.Tag("b")->GetEmpty());
    EXPECT_TRUE(table.Tag("b")->GetIsChild());
    TAsciiCharList& entities = table.Manager.GetCharList();
    entities.SetFilter(u"");
    std::string shown;
    for (int32_t i = 0; i < entities.GetCount(); ++i)
        shown += ToUtf8(entities.GetItem(i)) + " " + std::to_string(entities.GetAsciiVal(i)) + " ";
    EXPECT_EQ(shown, "amp 38 nbsp 160 none -1 ");
}

TEST_F(DTDLoader, AFileIsReadOnce) {
    std::string file = Write("once", "~<!ELEMENT A (B)><!ATTLIST A x (y) #IMPLIED>");
    TTable first(file);
    EXPECT_EQ(FHost->FText, "Error once:1 Invalid character in input stream ~\n");
    Write("once", "<!ELEMENT C (D)>");
    TTable second(file);
    EXPECT_EQ(FHost->FText, "Error once:1 Invalid character in input stream ~\n");
    EXPECT_EQ(second.Children("a"), first.Children("a"));
    EXPECT_EQ(second.Attributes("a"), "x=y@default");

    // A second definition below an element of the first leaves out what is there.
    THTMLTag* host = first.Tag("b");
    first.Manager.LoadDTD(*host, Write("more", "<!ELEMENT C (D|A)><!ELEMENT A (E)><!ELEMENT E EMPTY>"));
    EXPECT_EQ(first.Children("b"), "c e");
    EXPECT_EQ(first.Children("c"), "a d");
    EXPECT_EQ(first.Children("a"), "b");
    EXPECT_EQ(first.Children("root"), "a");
}

TEST_F(DTDLoader, BrokenFilesGiveWhatCouldBeRead) {
    const struct {
        std::string FText;
        const char* FMessage;
    } cases[] = {
        {"<!ELEMENT A (B)>\n" + std::string(20000, 'x'), "Failure broken:2 Line too long\n"},
        {"<!ELEMENT A (B)>\n\n<!ELEMENT", "Error broken:3 Expected > but found <!ELEMENT\n"},
    };
    for (const auto& c : cases) {
        FHost->FText.clear();
        FreeDTDReaders();
        TTable table(Write("broken", c.FText));
        EXPECT_EQ(FHost->FText, c.FMessage);
        EXPECT_EQ(table.Children("a"), "b");
    }
    FHost->FText.clear();
    TTable missing(FFolder + "missing");
    EXPECT_EQ(FHost->FText, "Failure missing:1 Invalid file " + FFolder + "missing\n");
    EXPECT_EQ(missing.Children("root"), "");
}

TEST_F(DTDLoader, LargeModelsEndInAMessage) {
    std::string names, open, close;
    for (int i = 0; i < 2000; ++i) names += (i ? "|\n" : "") + std::string("e") + std::to_string(i);
    for (int i = 0; i < 100'000; ++i) open += "(\n", close += ")\n";
    std::string many, declarations;
    for (int i = 0; i < 50'000; ++i) {
        many += "|\nm" + std::to_string(i);
        declarations += "<!ELEMENT m" + std::to_string(i) + " - - (a)>\n";
    }
    const struct {
        std::string FText;
        bool FIsWhole;
    } cases[] = {
        {"<!ELEMENT (" + names + ") - - (" + names + ")>", false},
        {"<!ELEMENT (" + names + ") O O (" + names + ")>", false},
        {"<!ELEMENT (" + names + ") - - (a) -(" + names + ") +(e7)>", true},
        {"<!ELEMENT e7 O O (a)><!ELEMENT a - - (b" + many + ")>" + declarations, true},
        {"<!ELEMENT a - - " + open + "e7" + close + " -(" + open + "e8" + close + ")>", true},
    };
    for (const auto& c : cases) {
        FHost->FText.clear();
        FreeDTDReaders();
        TTable table(Write("large", c.FText));
        EXPECT_EQ(FHost->FText.empty(), c.FIsWhole) << FHost->FText.substr(0, 200);
        EXPECT_TRUE(table.Tag("e7"));
    }
}

}  // namespace
}  // namespace caretwell
