// Definitions that are made to hurt: each ends, soon, in a message.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "host/Platform.h"
#include "tests/schema/DTDTestText.h"

namespace caretwell {
namespace {

/// A schema folder with the files of one test.
class DTDFiles : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = testing::TempDir() + "dtdXXXXXX";
        FFolder = mkdtemp(pattern.data());
        std::filesystem::create_directory(FFolder + "/schemas");
        FPlatform = MakePlatform({.SchemaFolder = FFolder + "/schemas/"});
        SetPlatform(FPlatform.get());
    }
    void TearDown() override {
        SetPlatform(nullptr);
        std::filesystem::remove_all(FFolder);
    }
    void Write(const std::string& name, const std::string& text) {
        std::ofstream(FFolder + "/schemas/" + name, std::ios::binary) << text;
    }
    void Load(TDTDRun& run, const std::string& name) {
        run.Parser.LoadFromFile(FFolder + "/schemas/" + name);
    }

    std::string FFolder;
    std::unique_ptr<IPlatform> FPlatform;
};

std::string Include(const std::string& file) {
    return "<!ENTITY % " + file + " PUBLIC 'p' 'http://x.org/" + file + "'>%" + file + ";\n";
}

TEST_F(DTDFiles, Includes) {
    Write("main", "<!ENTITY % x 'from'>\n" + Include("part") + "~\n<!ELEMENT a (b)>");
    std::string filler;
    for (int i = 0; i < 3000; ++i) filler += "<!-- longer than a block -->\n";
    Write("part", "~\n" + filler + "<!ELEMENT c (%x;)>");
    TDTDRun run;
    Load(run, "main");
    EXPECT_EQ(ShowElement(run.Element("a")), "a -- [b]");
    EXPECT_EQ(ShowElement(run.Element("c")), "c -- [from]");
    EXPECT_EQ(run.Messages[0], "part:1: Invalid character in input stream ~");
    bool isBackAtItsLine = false;
    for (const auto& message : run.Messages)
        isBackAtItsLine |= message == "main:3: Invalid character in input stream ~";
    EXPECT_TRUE(isBackAtItsLine) << run.AllMessages();
}

TEST_F(DTDFiles, TheFirstOfANameBinds) {
    Write("one", "<!ELEMENT a (b)>");
    Write("two", "<!ELEMENT a (c)>");
    Write("main", "<!ENTITY % x PUBLIC 'p' 'one'><!ENTITY % x PUBLIC 'p' 'two'>%x;");
    TDTDRun run;
    Load(run, "main");
    EXPECT_EQ(ShowElement(run.Element("a")), "a -- [b]");
}

TEST_F(DTDFiles, IncludeOutOfAnExpansionThatGoesOn) {
    Write("main",
          "<!ENTITY % x 'p|q'><!ENTITY % f PUBLIC 'p' 'part'><!ENTITY % all 'k,%f;,z'>\n"
          "<!ELEMENT a (%all;)><!ELEMENT c (d)>");
    Write("part", "(%x;)\n");
    TDTDRun run;
    Load(run, "main");
    EXPECT_EQ(run.AllMessages(), "");
    EXPECT_EQ(ShowElement(run.Element("a")), "a -- [k,(p|q),z]");
    EXPECT_EQ(ShowElement(run.Element("c")), "c -- [d]");
}

TEST_F(DTDFiles, EachEndsInAMessage) {
    std::ofstream(FFolder + "/secret", std::ios::binary) << "<!ELEMENT secret (x)>";
    std::filesystem::create_directory(FFolder + "/schemas/folder");
    Write("self", "\n" + Include("self") + "<!ELEMENT a (b)>");
    Write("ring1", Include("ring2") + "<!ELEMENT a (b)>");
    Write("ring2", Include("ring3"));
    Write("ring3", "\n\n" + Include("ring1"));
    Write("long", "<!ELEMENT a (b)>\n" + std::string(20000, ' '));
    std::string schemas = FFolder + "/schemas/";
    auto outside = [](const char* name) {
        return "<!ENTITY % x PUBLIC '" + std::string(name) + "'>%x;\n<!ELEMENT a (b)>";
    };
    const struct {
        std::string FFile, FText, FMessage;
    } cases[] = {
        {"self", "", "!self:2: File " + schemas + "self includes itself"},
        {"ring1", "", "!ring3:3: File " + schemas + "ring1 includes itself"},
        {"missing", outside("gone"), "!missing:1: Invalid file " + schemas + "gone"},
        {"parent", outside("../secret"), "!parent:1: Invalid file " + schemas + "secret"},
        {"absolute", outside("/etc/passwd"), "!absolute:1: Invalid file " + schemas + "passwd"},
        {"dots", outside(".."), "!dots:1: Invalid file " + schemas + ".."},
        {"isFolder", outside("folder"), "!isFolder:1: Invalid file " + schemas + "folder"},
        {"hyphen", outside("-/../secret"), "!hyphen:1: Invalid file -/../secret"},
    };
    for (const auto& c : cases) {
        if (!c.FText.empty()) Write(c.FFile, c.FText);
        TDTDRun run;
        run.Parser.FKibitzMode = kmXML;  // the one mode that lets a strange name through
        Load(run, c.FFile);
        EXPECT_EQ(run.AllMessages(), c.FMessage);
        EXPECT_EQ(ShowElement(run.Element("a")), "a -- [b]") << c.FFile;
        EXPECT_FALSE(run.Element("secret"));
    }
    TDTDRun run;
    EXPECT_THROW(Load(run, "nothing"), EDTDParserError);
    EXPECT_THROW(Load(run, "folder"), std::exception);
    EXPECT_THROW(Load(run, "long"), EDTDParserError);
    EXPECT_EQ(ShowElement(run.Element("a")), "a -- [b]");  // what was read until then
    EXPECT_GT(run.Parser.FSymbolCount, 0);
    EXPECT_EQ(run.Parser.GetSymbol(0)->FName, "b");
}

TEST_F(DTDFiles, FilesThatIncludeEachOtherTwice) {
    for (int i = 0; i < 40; ++i) {
        std::string next = "f" + std::to_string(i + 1);
        Write("f" + std::to_string(i), Include(next) + "%" + next + ";");
    }
    Write("f40", "<!ELEMENT a (b)>");
    TDTDRun run;
    Load(run, "f0");
    EXPECT_TRUE(run.Messages.back().ends_with("Too much text in entities")) << run.Messages.back();
    EXPECT_EQ(ShowElement(run.Element("a")), "a -- [b]");
}

TEST(DTDLimits, EntitiesThatGrowByPowersOfTen) {
    std::string text = "<!ENTITY % e0 'x|'>\n";
    for (int i = 1; i < 12; ++i) {
        std::string reference = "%e" + std::to_string(i - 1) + ";";
        text += "<!ENTITY % e" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j) text += reference;
        text += "'>\n";
    }
    TDTDRun run(text + "<!ELEMENT a (%e11;)>");
    ASSERT_FALSE(run.Messages.empty());
    EXPECT_EQ(run.Messages[0], "!13: Schema too large");
    TDTDRun ignored(text + "<![IGNORE[ %e11; ]]>");
    EXPECT_EQ(ignored.Messages[0], "!13: Too much text in entities");
}

TEST(DTDLimits, DeepAndWide) {
    auto repeat = [](size_t count, const std::string& text) {
        std::string all;
        for (size_t i = 0; i < count; ++i) all += text;
        return all;
    };
    constexpr size_t Deep = 100'000;
    TDTDRun groups("<!ELEMENT a\n" + repeat(Deep, "(\n") + "b" + repeat(Deep, ")\n") + ">\n<!ELEMENT c (d)>");
    EXPECT_EQ(groups.AllMessages(), "");
    EXPECT_EQ(ShowElement(groups.Element("c")), "c -- [d]");
    size_t depth = 0;
    TDTDExprWalk walk(groups.Element("a")->GetExprList().GetExpr(0));
    while (TDTDExprNode* node = walk.Next()) depth += node->Left != nullptr;
    EXPECT_EQ(depth, Deep - 1);

    TDTDRun names("<!ELEMENT " + repeat(Deep, "(\n") + "b" + repeat(Deep, ")\n") + " - O EMPTY>");
    EXPECT_EQ(ShowElement(names.Element("b")), "b -O [EMPTY]");
    TDTDRun sections(repeat(Deep, "<![INCLUDE[\n") + "<!ELEMENT a (b)>" + repeat(Deep, "]]>\n") +
                     "<!ELEMENT c (d)>");
    EXPECT_EQ(sections.AllMessages(), "");
    EXPECT_EQ(ShowElement(sections.Element("c")), "c -- [d]");
    TDTDRun ignored("<![IGNORE[" + repeat(Deep, "<![\n") + repeat(Deep, "]]>\n") + "]]><!ELEMENT c (d)>");
    EXPECT_EQ(ShowElement(ignored.Element("c")), "c -- [d]");

    std::string many, attributes;
    for (int i = 0; i < 1000; ++i) many += "|\ne" + std::to_string(i);
    for (int i = 0; i < 1000; ++i) attributes += " \na" + std::to_string(i) + " CDATA #IMPLIED";
    TDTDRun product("<!ATTLIST (x" + many + ")" + attributes + ">");
    EXPECT_TRUE(product.Messages[0].ends_with("Schema too large")) << product.AllMessages();
    TDTDRun wide("<!ELEMENT a (" + repeat(600'000, "b,\n") + "c)>");
    EXPECT_TRUE(wide.Messages[0].ends_with("Schema too large"));
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
