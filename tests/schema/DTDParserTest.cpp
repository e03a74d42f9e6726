// Declarations: what becomes of elements, attributes, entities, sections and further files.
#include <gtest/gtest.h>

#include "host/Platform.h"
#include "support/Cases.h"
#include "support/Split.h"
#include "support/TemporaryFolder.h"
#include "tests/schema/DTDTestText.h"

namespace caretwell {
namespace {

/// "& e" with the values of an entity, or an element, by its name at the head of a line.
std::string ShowSymbol(TDTDRun& run, std::string_view line) {
    if (!line.starts_with("& ")) {
        std::string name(line.substr(0, line.find(' '))), shown = ShowElement(run.Element(name));
        return shown == "none" ? name + " none" : shown;
    }
    std::string text = "& e";
    auto* entity = SymbolAs<TDTDEntity>(run.Parser.LookupSymbol("e", dtEntity));
    if (!entity) return text + " none";
    for (int32_t value : entity->FValues) text += " " + std::to_string(value);
    EXPECT_EQ(entity->GetValues(-1) + entity->GetValues(entity->GetValueCount()), -2);
    return text;
}

TEST(DTDParser, Definitions) {
    for (const auto& c : ReadCases("definitions.txt")) {
        TTemporaryFolder folder;
        const std::string schemas = folder.Path("schemas/");
        for (const auto& [name, text] : c.FFiles) folder.Write("schemas/" + name, text);
        auto platform = MakePlatform({.SchemaFolder = schemas});
        SetPlatform(platform.get());
        TDTDRun run;
        run.Parser.FKibitzMode = kmXML;  // the one mode that lets a strange name through
        run.Parser.LoadFromFile(folder.Write("schemas/main", c.FText));
        SetPlatform(nullptr);
        std::string seen;
        for (const auto& line : Split(c.FExpect, '\n'))
            if (!isdigit(line[0]) && line.find(": ") == line.npos) seen += ShowSymbol(run, line) + "\n";
        seen += run.AllMessages();
        for (size_t at; (at = seen.find(schemas)) != seen.npos;) seen.replace(at, schemas.size(), "~/");
        while (seen.ends_with('\n')) seen.pop_back();
        EXPECT_EQ(seen, c.FExpect) << c.FTitle << ":\n" << c.FText;
    }
}

// Any blanks between editors, any bytes too; a name is exact in its case.
TEST(DTDParser, Editors) {
    TDTDRun run(
        "<!ATTLIST a x CDATA #IMPLIED y CDATA #IMPLIED z CDATA #IMPLIED>\n<!--attributeeditors\r\n "
        "a.x=color\t"
        "a.y=uri - a.q=uri\nb.x=uri ab = . a=b.c a.Z=uri\n\xE9\na.z=uri-->");
    EXPECT_EQ(ShowElement(run.Element("a")), "a OO [] x:CDATA@color y:CDATA@uri z:CDATA@uri");
    EXPECT_EQ(run.AllMessages(), "");
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
    run.Parser.RemoveExpr(run.Parser.CreateExpr());
    EXPECT_EQ(run.Parser.FExprs, kept);
    run.Parser.ClearTable();
    EXPECT_EQ(run.Parser.LookupSymbol("a", dtElement), nullptr);
}

}  // namespace
}  // namespace caretwell
