// XML schemas as text in, the table that a load makes of them as text out.
#include "support/LoaderTest.h"
#include "symbols/XSDLoader.h"

namespace caretwell {
namespace {

const std::vector<std::u16string> Parents = {u"BODY", u"p", u"none"};

class XSDLoader : public TLoaderTest {
protected:
    struct TTable : TLoaderTest::TTable {
        // Both roads lead here.
        void Load(const std::string& file) {
            FFile = file;
            Manager.LoadXSDEx(Root(), nullptr, file);
            for (const auto& tag : Manager.GetTagList())
                EXPECT_TRUE(IsInOrder(*tag)) << ToUtf8(tag->GetName());
        }
        void LoadControls(const std::string& file, const std::vector<std::u16string>* parents = &Parents) {
            FFile = file;
            Manager.LoadXSD(Root(), parents, file);
        }
        void AddTag(const char16_t* name) { Manager.RegisterTag(MakeRef<THTMLTag>(name, &Manager, -1)); }
        // A filter that comes before the first list works on what the load left.
        static bool IsInOrder(INibMLTag& tag) {
            const auto& children = static_cast<THTMLTag&>(tag).GetAllTags();
            return std::is_sorted(children.begin(), children.end(), [](const auto& a, const auto& b) {
                return CompareText(a->GetName(), b->GetName()) < 0;
            });
        }
        // "root: a b; a: c" for the tags asked for.
        std::string Show(std::string_view names) {
            std::string text;
            while (!names.empty()) {
                std::string_view name = names.substr(0, names.find(' '));
                names.remove_prefix(std::min(names.size(), name.size() + 1));
                text += (text.empty() ? "" : "; ") + std::string(name) + ": " + Children(name);
            }
            return text;
        }

    private:
        std::string FFile;
    };

    static std::string Controls(std::string_view body,
                                std::string_view attributes = "elementFormDefault='qualified'") {
        return "<xsd:schema xmlns:xsd='x' xmlns:vs='v' " + std::string(attributes) + ">" + std::string(body) +
               "</xsd:schema>";
    }
    static std::string Schema(std::string_view body) {
        return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' elementFormDefault='qualified'>" +
               std::string(body) + "</xs:schema>";
    }
};

// ---- server controls

TEST_F(XSDLoader, ControlsStandUnderTheirParents) {
    std::string file = Write(
        "asp.xsd",
        Controls("<xsd:element name='Button' type='B'/><xsd:element name='Panel' form='unqualified' "
                 "vs:implicitclosure='true'>"
                 "<xsd:complexType><xsd:choice><xsd:element ref='Button'/><xsd:element name='Item' type='I'/>"
                 "<xsd:element name='Gone' ref='nowhere'/></xsd:choice></xsd:complexType></xsd:element>"
                 "<xsd:element name='ID'/><xsd:complexType name='B'/><xsd:complexType name='I'><xsd:sequence>"
                 "<xsd:element name='Deep'/></xsd:sequence></xsd:complexType>"));
    TTable table;
    table.AddTag(u"body");
    table.AddTag(u"P");
    table.AddTag(u"asp:deep");  // taken: the one of the table stays
    table.LoadControls(file);
    EXPECT_EQ(
        table.Show("root body p panel asp:item asp:deep"),
        "root: ; body: asp:button asp:id panel; p: asp:button asp:id panel; panel: asp:button asp:item; "
        "asp:item: asp:deep; asp:deep: ");
    EXPECT_TRUE(table.Tag("asp:button")->GetFlags().Has(tfGlobal));
    EXPECT_TRUE(table.Tag("asp:button")->GetRequiresClosingTag());
    EXPECT_TRUE(table.Tag("asp:button")->GetAny());
    EXPECT_FALSE(table.Tag("panel")->GetRequiresClosingTag());
    EXPECT_FALSE(table.Tag("asp:item")->GetFlags().Has(tfGlobal));
    EXPECT_EQ(table.Tag("asp:item")->GetID(), -1);
    EXPECT_EQ(FHost->FText, "Failure asp.xsd:0 Unknown reference to element nowhere\n");
}

TEST_F(XSDLoader, DirectivesStandUnderTheRoot) {
    TTable table;
    table.AddTag(u"body");
    table.LoadControls(
        Write("asp_directives.xsd",
              Controls("<xsd:element name='Page' vs:htmlequivalent='%@'/><xsd:element name='x'/>")));
    EXPECT_EQ(table.Show("root body"), "root: @ page; body: x");
    EXPECT_TRUE(table.Tag("@ page")->GetFlags().Has(tfASPDirective));
    EXPECT_FALSE(table.Tag("@ page")->GetRequiresClosingTag());
}

TEST_F(XSDLoader, ChildrenOfControls) {
    const std::string hidden = "<xsd:element name='H' vs:nonbrowseable='true' type='T'/>";
    const struct {
        std::string FBody, FShown;
    } cases[] = {
        // children of an element that is not offered, in its place; it has a tag all the same
        {"<xsd:element name='a' type='A'/>" + hidden +
             "<xsd:complexType name='A'><xsd:choice><xsd:element ref='H'/>"
             "</xsd:choice></xsd:complexType><xsd:complexType name='T'><xsd:choice><xsd:element "
             "name='t'/></xsd:choice>"
             "</xsd:complexType>",
         "c:a: c:t; c:H: c:t; body: c:a c:h"},
        // such elements may hold each other
        {"<xsd:element name='a' type='T'/>" + hidden +
             "<xsd:complexType name='T'><xsd:choice><xsd:element ref='H'/>"
             "<xsd:element name='t'/></xsd:choice></xsd:complexType>",
         "c:a: c:t; c:H: c:t; body: c:a c:h"},
        // the first of a name makes the tag, both give it children
        {"<xsd:element name='a' type='A'/><xsd:complexType name='B'><xsd:choice><xsd:element name='a' "
         "type='T'/>"
         "</xsd:choice></xsd:complexType><xsd:complexType name='A'><xsd:choice><xsd:element "
         "name='t'/></xsd:choice>"
         "</xsd:complexType><xsd:complexType name='T'><xsd:choice><xsd:element name='u'/></xsd:choice>"
         "</xsd:complexType>",
         "c:a: c:t c:u; c:H: none; body: c:a"},
    };
    int number = 0;
    for (const auto& c : cases) {
        TTable table;
        table.AddTag(u"body");
        table.LoadControls(Write(std::to_string(number++) + "/c.xsd", Controls(c.FBody)));
        EXPECT_EQ(table.Show("c:a c:H body"), c.FShown) << c.FBody;
        EXPECT_EQ(FHost->FText, "") << c.FBody;
    }
}

TEST_F(XSDLoader, AttributesOfControls) {
    const char* values =
        "<xsd:restriction base='xsd:string'><xsd:enumeration value='b'/><xsd:enumeration value='a'/>"
        "</xsd:restriction>";
    std::string file =
        Write("c.xsd",
              Controls("<xsd:element name='e'><xsd:complexType><xsd:attribute name='OnClick' type='Event'/>"
                       "<xsd:attribute name='Color' type='V' vs:builder='color'/><xsd:attribute name='Url' "
                       "type='xsd:anyURI'/>"
                       "<xsd:attribute name='Style' vs:builder='style'/><xsd:attribute name='Inline' "
                       "type='L'><xsd:simpleType>" +
                       std::string(values) +
                       "</xsd:simpleType></xsd:attribute></xsd:complexType></xsd:element>"
                       "<xsd:simpleType name='V'>" +
                       values +
                       "</xsd:simpleType><xsd:complexType name='T'><xsd:attribute name='x'>"
                       "<xsd:simpleType name='L'>" +
                       values + "</xsd:simpleType></xsd:attribute></xsd:complexType>"));
    TTable table;
    const std::string expect =
        "Color=a,b,color...@color Inline=a,b@default on OnClick=@default Style= Url=uri...@uri";
    // A table that is loaded again has full tags every time.
    for (int round = 0; round < 3; ++round) {
        table.LoadControls(file, nullptr);
        EXPECT_EQ(table.Attributes("c:e"), expect) << round;
        table.Manager.ClearTags();
    }
}

// ---- free XML documents

TEST_F(XSDLoader, ElementsOfADocument) {
    const struct {
        const char *FBody, *FShown, *FWithSimple;
    } cases[] = {
        {"<xs:element name='r' type='T'/><xs:complexType name='T'><xs:sequence><xs:element name='a' "
         "type='T'/>"
         "<xs:element name='s' type='xs:string'/><xs:element ref='q'/><xs:element name='n' type='nowhere'/>"
         "</xs:sequence></xs:complexType><xs:element name='q' type='xs:int'/>",
         "root: r; r: a q; a: a q; s: none", "root: q r; r: a q s; a: a q s; s: "},
        {"<xs:element name='r'/><xs:element name='a'><xs:simpleType><xs:list/></xs:simpleType></xs:element>",
         "root: a r; r: ; a: ; s: none", "root: a r; r: ; a: ; s: none"},
        // one name of two types: two tags, the first in the table, each a child where it was declared
        {"<xs:element name='r'><xs:complexType><xs:sequence><xs:element "
         "name='a'><xs:complexType><xs:sequence>"
         "<xs:element "
         "ref='s'/></xs:sequence></xs:complexType></xs:element></xs:sequence></xs:complexType></xs:element>"
         "<xs:element name='s'><xs:complexType><xs:sequence><xs:element "
         "name='a'><xs:complexType><xs:sequence>"
         "<xs:element name='a' "
         "type='T'/></xs:sequence></xs:complexType></xs:element></xs:sequence></xs:complexType>"
         "</xs:element><xs:complexType name='T'/>",
         "root: r s; r: a; a: s; s: a", "root: r s; r: a; a: s; s: a"},
    };
    int number = 0;
    for (const auto& c : cases) {
        std::string file = Write(std::to_string(number++) + "/d.xsd", Schema(c.FBody));
        for (const auto& [setting, expect] :
             {std::pair("", c.FShown), {"Simple Typed Elements", c.FWithSimple}}) {
            FHost->FSetting = setting;
            for (int round = 0; round < 2; ++round) {
                TTable table;
                table.Load(file);
                EXPECT_EQ(table.Show("root r a s"), expect) << c.FBody << round;
            }
        }
    }
}

TEST_F(XSDLoader, AttributesOfADocument) {
    std::string file = Write(
        "d.xsd",
        Schema(
            "<xs:element name='r'><xs:complexType><xs:attribute name='v' type='V' use='required'/>"
            "<xs:attribute name='x' type='xs:string'/><xs:attribute name='u' type='nowhere'/>"
            "<xs:attributeGroup ref='g'/></xs:complexType></xs:element><xs:attributeGroup name='g'>"
            "<xs:attribute ref='xml:lang'/></xs:attributeGroup><xs:simpleType name='V'><xs:union "
            "memberTypes='W'>"
            "<xs:simpleType><xs:restriction base='xs:int'><xs:enumeration value='1'/><xs:enumeration "
            "value=''/>"
            "</xs:restriction></xs:simpleType></xs:union></xs:simpleType><xs:simpleType name='W'>"
            "<xs:restriction base='xs:token'><xs:enumeration value='w'/></xs:restriction></xs:simpleType>"));
    for (int round = 0; round < 3; ++round) {
        TTable table;
        table.Load(file);
        EXPECT_EQ(table.Attributes("r"), "u=@default v=1,w@default x=@default xml:lang=@default") << round;
        EXPECT_TRUE(table.Tag("r")->GetAny());
        EXPECT_NE(table.Tag("r")->GetID(), -1);
    }
}

// What one table has asked for costs the next one nothing.
TEST_F(XSDLoader, AttributesOfManyTables) {
    std::string steps;
    for (int i = 0; i < 49'000; ++i) steps += "<![CDATA[]]>";
    std::string file = Write("d.xsd", Schema("<xs:element name='r'><xs:complexType><xs:attribute name='a'/>" +
                                             steps + "</xs:complexType></xs:element>"));
    for (size_t spent = 0; spent < TXMLSchemaLibrary::MaxSteps + 200'000; spent += 98'000) {
        TTable table;
        table.Load(file);
        ASSERT_EQ(table.Attributes("r"), "a=@default") << spent;
    }
}

TEST_F(XSDLoader, IncludesOfADocument) {
    std::string file = Write(
        "d.xsd", Schema("<xs:include schemaLocation='sub/a.xsd'/><xs:include schemaLocation='sub/b.xsd'/>"
                        "<xs:include schemaLocation='gone.xsd'/><xs:element name='r' type='A'/>"
                        "<xs:element name='s' type='B'/>"));
    Write("sub/a.xsd", Schema("<xs:include schemaLocation='../d.xsd'/><xs:complexType name='A'><xs:sequence>"
                              "<xs:element ref='c'/></xs:sequence></xs:complexType>"));
    // The element m of the includer stands for h, and its content is of the includer's types.
    TTable members;
    Write("h.xsd",
          Schema("<xs:element name='h' abstract='true'/><xs:element name='k'><xs:complexType><xs:sequence>"
                 "<xs:element ref='h'/></xs:sequence></xs:complexType></xs:element>"));
    members.Load(Write(
        "m.xsd", Schema("<xs:include schemaLocation='h.xsd'/><xs:element name='m' type='M' "
                        "substitutionGroup='h'/><xs:complexType name='M'><xs:sequence><xs:element "
                        "name='n' type='N'/></xs:sequence></xs:complexType><xs:complexType name='N'/>")));
    EXPECT_EQ(members.Show("root k m"), "root: k m; k: m; m: n");
    Write("sub/b.xsd", Schema("<xs:complexType name='B'/><xs:element name='c' type='B'/>"));
    TTable table;
    table.Load(file);
    EXPECT_EQ(table.Show("root r s"), "root: c r s; r: c; s: ");
    EXPECT_EQ(FHost->FText, "Warning d.xsd:1 Schema file gone.xsd cannot be found\n");
    const struct {
        const char *FBase, *FLocation, *FExpect;
    } cases[] = {{"/x/a.xsd", "HTTP://h/b.xsd", "HTTP://h/b.xsd"},
                 {"http://h/x/a.xsd", "y/b.xsd", "http://h/x/y/b.xsd"},
                 {"/x/a.xsd", "b.xsd", "/x/b.xsd"},
                 {"/x/a.xsd", "y/b.xsd", ""},
                 {"a.xsd", "b.xsd", ""},
                 {"/x/a.xsd", "", "/x/"}};
    for (const auto& c : cases)
        EXPECT_EQ(TXSDLoader::ResolveLocation(c.FBase, c.FLocation), c.FExpect)
            << c.FBase << " " << c.FLocation;
}

// Each name has the prefix of its own namespace. Names alike but for that are two in the
// table, each with its own content; without prefixes the first is the one that is known.
TEST_F(XSDLoader, NamespacesOfADocument) {
    const std::string head =
        "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' xmlns:b='urn:b' xmlns:a='urn:a' ";
    std::string file =
        Write("a.xsd", head +
                           "targetNamespace='urn:a' elementFormDefault='qualified'><xs:import "
                           "namespace='urn:b' schemaLocation='b.xsd'/><xs:include schemaLocation='c.xsd'/>"
                           "<xs:element name='r' type='a:T'/><xs:complexType name='T'><xs:sequence>"
                           "<xs:element ref='b:x'/><xs:element ref='a:c'/><xs:element name='x' type='a:T'/>"
                           "</xs:sequence></xs:complexType></xs:schema>");
    Write("b.xsd", head +
                       "targetNamespace='urn:b'><xs:element name='x' type='b:T'/><xs:complexType name='T'>"
                       "<xs:sequence><xs:element name='l'><xs:complexType/></xs:element></xs:sequence>"
                       "</xs:complexType></xs:schema>");
    // Without a namespace of its own it is in that of its includer; the form is its own all the same.
    Write("c.xsd",
          head +
              "><xs:element name='c'><xs:complexType><xs:sequence><xs:element name='m'>"
              "<xs:complexType/></xs:element></xs:sequence></xs:complexType></xs:element></xs:schema>");
    const struct {
        const char *FPrefixOfA, *FPrefixOfB, *FNames, *FExpect;
    } cases[] = {
        {"", "", "root r x c", "root: c r x; r: c x; x: l; c: m"},
        {":p", "", "root p:r p:x x p:c r",
         "root: p:c p:r x; p:r: p:c p:x x; p:x: p:c p:x x; x: l; p:c: m; r: none"},
        {"", ":q", "root r x q:x", "root: c q:x r; r: c q:x x; x: c q:x x; q:x: l"},
        {":p", ":q", "root p:r P:X q:x", "root: p:c p:r q:x; p:r: p:c p:x q:x; P:X: p:c p:x q:x; q:x: l"},
    };
    for (const auto& c : cases) {
        TDocumentNamespaces namespaces;
        namespaces.AddAttribute(std::string("xmlns") + c.FPrefixOfA, "urn:a");
        namespaces.AddAttribute(std::string("xmlns") + c.FPrefixOfB, "urn:b");
        TTable table;
        TCaretState state;
        state.FNamespaces = namespaces;
        table.Manager.SetKibitzMode(kmXML);
        table.Manager.GetSelection().Follow(state);
        table.Load(file);
        EXPECT_EQ(table.Show(c.FNames), c.FExpect) << c.FPrefixOfA << c.FPrefixOfB;
    }
}

TEST_F(XSDLoader, BrokenSchemas) {
    TTable table;
    EXPECT_THROW(table.Load(Write("a.xsd", "<xs:schema>")), EXMLSchemaError);
    EXPECT_THROW(table.Load(Write("b.xsd", "<a/>")), EXMLSchemaError);
    EXPECT_EQ(table.Show("root"), "root: ");
    table.Load(Write("b.xsd", Schema("<xs:element name='r'/>")));  // a failure is not kept
    EXPECT_EQ(table.Show("root"), "root: r");
    table.LoadControls(Write("c.xsd", "<xsd:schema>\n<"));
    EXPECT_EQ(FHost->FText, "Failure c.xsd:0 Start-end tags mismatch (line 2)\n");
}

TEST_F(XSDLoader, LargeSchemas) {
    std::string chain, crowd;
    for (int i = 0; i < 25000; ++i) {
        std::string number = std::to_string(i);
        chain += "<xs:complexType name='T" + number + "'><xs:sequence><xs:element name='e" + number +
                 "' type='T" + std::to_string(i + 1) + "'/></xs:sequence></xs:complexType>";
    }
    TTable table;
    table.Load(Write("chain.xsd", Schema("<xs:element name='r' type='T0'/>" + chain)));
    EXPECT_EQ(table.Show("r e0"), "r: e0; e0: e1");
    EXPECT_EQ(FHost->FText,
              "Error chain.xsd:0 The schema declares too many elements; not all of them are used\n");
    table.Manager.ClearTags();
}

}  // namespace
}  // namespace caretwell
