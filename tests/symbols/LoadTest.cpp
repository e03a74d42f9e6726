// Schemas of all kinds as text in, the table that a load makes of them as text out.
#include "support/Cases.h"
#include "support/LoaderTest.h"
#include "symbols/XSDLoader.h"

namespace caretwell {
namespace {

/// Definitions, controls or the schema of a document, by what stands first.
enum class TKind { Definition, Controls, Document };
TKind KindOf(std::string_view text) {
    if (text.starts_with("<xsd:")) return TKind::Controls;
    return text.starts_with("<xs:") ? TKind::Document : TKind::Definition;
}

// A text that begins with a declaration is the body of a schema.
std::string Whole(const std::string& text) {
    if (text.starts_with("<xs:schema") || KindOf(text) == TKind::Definition) return text;
    std::string word = KindOf(text) == TKind::Controls ? "xsd" : "xs";
    std::string space = word == "xs" ? "http://www.w3.org/2001/XMLSchema" : "x";
    return "<" + word + ":schema xmlns:" + word + "='" + space +
           "' xmlns:vs='v' elementFormDefault='qualified'>" + text + "</" + word + ":schema>";
}

class Load : public TLoaderTest {
protected:
    /// A table with a definition or the schema of a document under its root.
    struct TTable : TLoaderTest::TTable {
        TTable() = default;
        explicit TTable(const std::string& file) { Load(file); }
        void Load(const std::string& file) {
            if (file.ends_with(".xsd")) Manager.LoadXSDEx(Root(), nullptr, file);
            else Manager.LoadDTD(Root(), file);
        }
    };
    /// "NAME > ", "NAME @ ", "NAME # " ask for children, attributes and flags.
    static std::string Answer(TTable& table, const std::string& line) {
        size_t at = std::min({line.find(" >", 1), line.find(" @ ", 1), line.find(" # ", 1)});
        std::string name = line.substr(0, at), answer;
        if (line[at + 1] == '>') answer = table.Children(name);
        else if (line[at + 1] == '@') answer = table.Attributes(name);
        else answer = Flags(*table.Tag(name));
        return line.substr(0, at + 2) + (answer.empty() ? "" : " ") + answer;
    }
    static std::string Flags(THTMLTag& tag) {
        std::string flags = tag.GetRequiresOpeningTag() ? "opening" : "optional";
        if (tag.GetRequiresClosingTag()) flags += " closing";
        if (tag.GetEmpty()) flags += " empty";
        if (tag.GetAny()) flags += " any";
        if (tag.GetFlags().Has(tfGlobal)) flags += " global";
        if (tag.GetFlags().Has(tfASPDirective)) flags += " directive";
        if (tag.GetIsChild()) flags += " child";
        if (tag.GetID() != -1) flags += " id";
        for (int32_t i = 0; i < tag.GetEntityCount(); ++i) flags += " %" + ToUtf8(tag.GetEntityName(i));
        return flags;
    }

    /// Loads a file into an empty table; controls stand under elements that are there.
    static void LoadInto(TTable& table, TKind kind, const std::string& file) {
        if (kind != TKind::Controls) return table.Load(file);
        static const std::vector<std::u16string> parents = {u"BODY", u"p", u"none"};
        for (const char16_t* name : {u"body", u"P", u"asp:deep"})
            table.Manager.RegisterTag(MakeRef<THTMLTag>(name, &table.Manager, -1));
        table.Manager.LoadXSD(table.Root(), &parents, file);
    }

    // A filter that comes before the first list works on what the load left.
    static bool IsInOrder(INibMLTag& tag) {
        const auto& children = static_cast<THTMLTag&>(tag).GetAllTags();
        return std::is_sorted(children.begin(), children.end(), [](const auto& a, const auto& b) {
            return CompareText(a->GetName(), b->GetName()) < 0;
        });
    }

    /// A table that is loaded again is as full as it was, and so is another one. Condition: "simple"
    /// for the setting, "xmlns:p=urn" for what the document binds.
    void Check(TKind kind, const std::string& file, const std::string& condition, const TFileCase& c,
               const std::string& expect) {
        FHost->FSetting = condition == "simple" ? "Simple Typed Elements" : "";
        TCaretState state;
        for (const auto& binding : Split(condition == "simple" ? "" : condition)) {
            size_t sign = binding.find('=');
            state.FNamespaces.AddAttribute(binding.substr(0, sign), binding.substr(sign + 1));
        }
        for (int fresh = 0; fresh < 2; ++fresh) {
            TTable table;
            if (condition.starts_with("xmlns")) {
                table.Manager.SetKibitzMode(kmXML);
                table.Manager.GetSelection().Follow(state);
            }
            for (int round = 0; round < 2; ++round) {
                LoadInto(table, kind, file);
                for (const auto& tag : table.Manager.GetTagList())
                    EXPECT_TRUE(kind != TKind::Document || IsInOrder(*tag)) << c.FTitle;
                for (const auto& line : Split(expect, '\n'))
                    EXPECT_EQ(Answer(table, line), line) << c.FTitle << ' ' << condition << round;
                table.Manager.ClearTags();
            }
        }
    }
};

TEST_F(Load, Tables) {
    int number = 0;
    for (const auto& c : ReadCases("loads.txt")) {
        TKind kind = KindOf(c.FText);
        std::string folder = std::to_string(number++) + "/", messages;
        const char* file = kind == TKind::Definition ? "d.dtd"
                           : kind == TKind::Document ? "d.xsd"
                                                     : "asp.xsd";
        if (c.FTitle.starts_with("directives")) file = "asp_directives.xsd";
        std::string path = Write(folder + file, Whole(c.FText));
        for (const auto& [name, text] : c.FFiles)
            if (name == "says") messages = text + "\n";
            else if (!name.starts_with("with ")) Write(folder + name, Whole(text));
        if (!c.FExpect.empty()) Check(kind, path, "", c, c.FExpect);
        for (const auto& [name, text] : c.FFiles)
            if (name.starts_with("with ")) Check(kind, path, name.substr(5), c, text);
        EXPECT_EQ(std::exchange(FHost->FText, ""), messages) << c.FTitle;
    }
}

TEST_F(Load, AFileIsReadOnce) {
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

TEST_F(Load, BrokenFilesGiveWhatCouldBeRead) {
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

TEST_F(Load, LargeModelsEndInAMessage) {
    const std::string names = "e0" + Numbered("|\ne$+", 1999), many = Numbered("|\nm$", 50'000);
    const std::string open = Repeat("(\n", 100'000), close = Repeat(")\n", 100'000);
    const std::string declarations = Numbered("<!ELEMENT m$ - - (a)>\n", 50'000);
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

// What one table has asked for costs the next one nothing.
TEST_F(Load, AttributesOfManyTables) {
    std::string file =
        Write("d.xsd", Whole("<xs:element name='r'><xs:complexType><xs:attribute name='a'/>" +
                             Repeat("<![CDATA[]]>", 49'000) + "</xs:complexType></xs:element>"));
    for (size_t spent = 0; spent < TXMLSchemaLibrary::MaxSteps + 200'000; spent += 98'000) {
        ASSERT_EQ(TTable(file).Attributes("r"), "a=@default") << spent;
    }
}

TEST_F(Load, BrokenSchemas) {
    TTable table;
    EXPECT_THROW(table.Load(Write("a.xsd", "<xs:schema>")), EXMLSchemaError);
    EXPECT_THROW(table.Load(Write("b.xsd", "<a/>")), EXMLSchemaError);
    EXPECT_EQ(table.Show("root"), "root: ");
    table.Load(Write("b.xsd", Whole("<xs:element name='r'/>")));  // a failure is not kept
    EXPECT_EQ(table.Show("root"), "root: r");
    table.Manager.LoadXSD(table.Root(), nullptr, Write("c.xsd", "<xsd:schema>\n<"));
    EXPECT_EQ(FHost->FText, "Failure c.xsd:0 Start-end tags mismatch (line 2)\n");
}

TEST_F(Load, LargeSchemas) {
    const std::string chain = Numbered(
        "<xs:complexType name='T$'><xs:sequence><xs:element name='e$' "
        "type='T$+'/></xs:sequence></xs:complexType>",
        25000);
    TTable table;
    table.Load(Write("chain.xsd", Whole("<xs:element name='r' type='T0'/>" + chain)));
    EXPECT_EQ(table.Show("r e0"), "r: e0; e0: e1");
    EXPECT_EQ(FHost->FText,
              "Error chain.xsd:0 The schema declares too many elements; not all of them are used\n");
    table.Manager.ClearTags();
}

}  // namespace
}  // namespace caretwell
