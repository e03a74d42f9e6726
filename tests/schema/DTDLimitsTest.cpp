// Definitions that are made to hurt: each ends, soon, in a message.
#include <gtest/gtest.h>

#include "host/Platform.h"
#include "support/Cases.h"
#include "support/TemporaryFolder.h"
#include "tests/schema/DTDTestText.h"

namespace caretwell {
namespace {

/// Files of one test that are the schema folder.
class DTDFiles : public testing::Test {
protected:
    void SetUp() override { SetPlatform(FPlatform.get()); }
    void TearDown() override { SetPlatform(nullptr); }
    void Load(TDTDRun& run, const std::string& name) { run.Parser.LoadFromFile(FFolder.Path(name)); }

    TTemporaryFolder FFolder;
    std::unique_ptr<IPlatform> FPlatform = MakePlatform({.SchemaFolder = FFolder.Path()});
};

std::string Include(const std::string& file) {
    return "<!ENTITY % " + file + " PUBLIC 'p' 'http://x.org/" + file + "'>%" + file + ";\n";
}

TEST_F(DTDFiles, Includes) {
    FFolder.Write("main", "<!ENTITY % x 'from'>\n" + Include("part") + "~\n<!ELEMENT a (b)>");
    std::string filler = Repeat("<!-- longer than a block -->\n", 3000);
    FFolder.Write("part", "~\n" + filler + "<!ELEMENT c (%x;)>");
    TDTDRun run;
    Load(run, "main");
    EXPECT_EQ(ShowElement(run.Element("a")), "a -- [b]");
    EXPECT_EQ(ShowElement(run.Element("c")), "c -- [from]");
    EXPECT_TRUE(run.AllMessages().starts_with("part:1: Invalid character in input stream ~\n"));
    EXPECT_NE(run.AllMessages().find("\n3: Invalid character in input stream ~"), std::string::npos);
}

TEST_F(DTDFiles, WhatCannotBeReadThrows) {
    FFolder.Write("folder/x", "");
    FFolder.Write("long", "<!ELEMENT a (b)>\n" + std::string(20000, ' '));
    TDTDRun run;
    for (const char* name : {"nothing", "folder", "long"}) EXPECT_ANY_THROW(Load(run, name)) << name;
    EXPECT_EQ(ShowElement(run.Element("a")), "a -- [b]");  // what was read until then
    EXPECT_GT(run.Parser.FSymbolCount, 0);
    EXPECT_EQ(run.Parser.GetSymbol(0)->FName, "b");
}

TEST_F(DTDFiles, FilesThatIncludeEachOtherTwice) {
    for (int i = 0; i < 40; ++i) {
        std::string next = "f" + std::to_string(i + 1);
        FFolder.Write("f" + std::to_string(i), Include(next) + "%" + next + ";");
    }
    FFolder.Write("f40", "<!ELEMENT a (b)>");
    TDTDRun run;
    Load(run, "f0");
    EXPECT_TRUE(run.Messages.back().ends_with("Too much text in entities")) << run.Messages.back();
    EXPECT_EQ(ShowElement(run.Element("a")), "a -- [b]");
}

TEST(DTDLimits, EntitiesThatGrowByPowersOfTen) {
    std::string text =
        "<!ENTITY % e0 'x|'>\n" + Numbered("<!ENTITY % e$+ '" + Repeat("%e$;", 10) + "'>\n", 11);
    EXPECT_TRUE(TDTDRun(text + "<!ELEMENT a (%e11;)>").AllMessages().starts_with("!13: Schema too large"));
    EXPECT_TRUE(
        TDTDRun(text + "<![IGNORE[ %e11; ]]>").AllMessages().starts_with("!13: Too much text in entities"));
}

TEST(DTDLimits, DeepAndWide) {
    constexpr size_t Deep = 100'000;
    const std::string open = Repeat("(\n", Deep), close = Repeat(")\n", Deep), next = ">\n<!ELEMENT c (d)>";
    TDTDRun groups("<!ELEMENT a\n" + open + "b" + close + next);
    size_t depth = 0;
    TDTDExprWalk walk(groups.Element("a")->GetExprList().GetExpr(0));
    while (TDTDExprNode* node = walk.Next()) depth += node->Left != nullptr;
    EXPECT_EQ(depth, Deep - 1);
    const std::string texts[] = {
        "<!ELEMENT a\n" + open + "b" + close + next,
        Repeat("<![INCLUDE[\n", Deep) + "<!ELEMENT a (b)>" + Repeat("]]>\n", Deep - 1) + "]]" + next,
        "<![IGNORE[" + Repeat("<![\n", Deep) + Repeat("]]>\n", Deep) + "]]" + next,
    };
    for (const auto& text : texts) {
        TDTDRun run(text);
        EXPECT_EQ(run.AllMessages(), "") << text.substr(0, 20);
        EXPECT_EQ(ShowElement(run.Element("c")), "c -- [d]") << text.substr(0, 20);
    }
    TDTDRun names("<!ELEMENT " + open + "b" + close + " - O EMPTY>");
    EXPECT_EQ(ShowElement(names.Element("b")), "b -O [EMPTY]");

    const std::string many = Numbered("|\ne$", 1000), attributes = Numbered(" \na$ CDATA #IMPLIED", 1000);
    for (const auto& text :
         {"<!ATTLIST (x" + many + ")" + attributes + ">", "<!ELEMENT a (" + Repeat("b,\n", 600'000) + "c)>"})
        EXPECT_TRUE(TDTDRun(text).Messages.at(0).ends_with("Schema too large")) << text.substr(0, 20);
}

TEST(DTDLimits, RubbishSaysSoAThousandTimes) {
    std::string rubbish;
    for (uint32_t i = 0, x = 1; i < 200'000; ++i, x = x * 1664525 + 1013904223)
        rubbish += static_cast<char>(x >> 24);
    TDTDRun run(rubbish);
    EXPECT_EQ(run.Messages.size(), static_cast<size_t>(TDTDParser::MaxMessages) + 1);
    EXPECT_NE(run.Messages.back().find("Too many messages"), std::string::npos);
}

TEST(DTDLimits, EveryCutIsSurvived) {
    const std::string text =
        "<!ENTITY % x 'a|b'>\n<![INCLUDE[<!ELEMENT (%x;) - O ((c)+,#PCDATA) -(d) -- n -->\n]]>"
        "<!ATTLIST a k (l|m) #FIXED 'v'>\n<!--ATTRIBUTEEDITORS a.k=uri -->\n<!ENTITY e CDATA '&#38;#60;'>\n";
    for (size_t end = 0; end <= text.size(); ++end) {
        TDTDRun run(text.substr(0, end));
        for (const auto& message : run.Messages) EXPECT_NE(message.find(": "), message.npos);
        for (int32_t i = 0; i < run.Parser.FSymbolCount; ++i)
            EXPECT_FALSE(run.Parser.GetSymbol(i)->FName.empty());
    }
}

}  // namespace
}  // namespace caretwell
