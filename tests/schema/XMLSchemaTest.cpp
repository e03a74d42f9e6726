// The object model: text of schemas in, what each global element may hold out.
#include <gtest/gtest.h>

#include "XSDTestFolder.h"
#include "schema/XMLSchema.h"

namespace caretwell {
namespace {

std::string Show(const TXMLDeclaration& attribute) {
    std::string text(attribute.GetName());
    for (std::string_view value : attribute.GetDataType().GetEnumerations()) text += "=" + std::string(value);
    return text;
}

// name(children)[attributes], the type's name instead of both if it is built in.
std::string ShowElement(const TXMLDeclaration& element) {
    std::string text(element.GetName());
    TXMLType type = element.GetDataType();
    if (!type) return text + ":?";
    if (type.IsBuiltIn()) return text + ":" + type.GetName();
    if (!type.IsComplex()) return text + ":simple";
    std::vector<std::string> children, attributes;
    for (const auto& child : type.GetElements()) children.emplace_back(child.GetName());
    for (const auto& attribute : type.GetAttributes()) attributes.push_back(Show(attribute));
    for (const auto& group : type.GetAttributeGroups())
        for (const auto& attribute : group.GetAttributes()) attributes.push_back(Show(attribute));
    auto join = [](const std::vector<std::string>& words) {
        std::string all;
        for (const auto& word : words) all += (all.empty() ? "" : " ") + word;
        return all;
    };
    text += "(" + join(children) + ")";
    return attributes.empty() ? text : text + "[" + join(attributes) + "]";
}

using TFiles = std::vector<std::pair<std::string, std::string>>;

struct TRun {
    TXSDTestFolder Folder;
    std::string Messages, Failure, Elements;
    TXMLSchemaLibrary Library{[this](const TXMLSchemaMessage& message) {
        std::string file = message.FileName.substr(Folder.GetPath().size());
        std::string place = (file == "main.xsd" ? "" : file + ":") + std::to_string(message.Line) + ": ";
        Messages += (Messages.empty() ? "" : "\n") + place + message.Text;
    }};

    // Files by name; the first of the list is loaded.
    explicit TRun(const TFiles& files) {
        for (const auto& [name, text] : files) Folder.Write(name, text);
        try {
            Show(Library.Load(Folder.GetPath() + files[0].first, Folder.GetPath()));
        } catch (const EXMLSchemaError& error) {
            Failure = std::to_string(error.FLine) + ": " + error.what();
        }
    }
    // A body for main.xsd, and further files.
    static TRun Of(std::string_view body, std::string_view attributes = "", TFiles files = {}) {
        files.insert(files.begin(), {"main.xsd", Schema(body, attributes)});
        return TRun(files);
    }
    static std::string Schema(std::string_view body, std::string_view attributes = "") {
        return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema' " + std::string(attributes) + ">" +
               std::string(body) + "</xs:schema>";
    }

private:
    void Show(const TXMLSchema& schema) {
        for (const auto& element : schema.GetElements())
            Elements += (Elements.empty() ? "" : " ") + ShowElement(element);
    }
};

std::string Complex(std::string_view name, std::string_view content) {
    return "<xs:complexType name='" + std::string(name) + "'>" + std::string(content) + "</xs:complexType>";
}
std::string Extend(std::string_view base, std::string_view content, std::string_view how = "extension") {
    std::string word(how);
    return "<xs:complexContent><xs:" + word + " base='" + std::string(base) + "'>" + std::string(content) +
           "</xs:" + word + "></xs:complexContent>";
}
std::string Sequence(std::string_view content) {
    return "<xs:sequence>" + std::string(content) + "</xs:sequence>";
}
std::string Enumerations(std::string_view base, std::string_view values) {
    std::string text = "<xs:restriction base='" + std::string(base) + "'>";
    for (char value : values) text += std::string("<xs:enumeration value='") + value + "'/>";
    return text + "</xs:restriction>";
}
std::string Simple(std::string_view name, std::string_view content) {
    return "<xs:simpleType name='" + std::string(name) + "'>" + std::string(content) + "</xs:simpleType>";
}

const std::string A = "<xs:element name='a'/>", B = "<xs:element name='b'/>", C = "<xs:element name='c'/>";
const std::string I = "<xs:attribute name='i'/>", J = "<xs:attribute name='j'/>";
const std::string Root = "<xs:element name='r' type='T'/>";

TEST(XMLSchema, ContentOfTypes) {
    const struct {
        std::string FBody;
        const char *FElements, *FMessages;
    } cases[] = {
        {"<xs:element name='r'/><xs:element name='s' type='xs:string'/>", "r:anyType s:string", ""},
        {"<xs:element name='r' type='xs:strange'/>", "r:?", "1: Unknown type xs:strange"},
        {Root +
             Complex("T", Sequence(A + "<xs:choice><xs:all>" + B + "</xs:all><xs:any/></xs:choice>" + C) + I),
         "r(a b c)[i]", ""},
        {Root + Complex("T", "<xs:group ref='G'/>") + "<xs:group name='G'><xs:choice>" + A +
             "<xs:group ref='H'/>" + C + "</xs:choice></xs:group><xs:group name='H'>" + Sequence(B) +
             "</xs:group>",
         "r(a b c)", ""},
        {Root + Complex("T", Sequence("<xs:element ref='a'/><xs:element ref='z'/>")) + A, "r(a) a:anyType",
         "1: Unknown reference to element z"},
        // inherited first, and only what a restriction states
        {Root + Complex("T", Extend("U", Sequence(B) + J)) + Complex("U", Sequence(A) + I), "r(a b)[j i]",
         ""},
        {Root +
             Complex("T",
                     Extend("U", Sequence(B) + "<xs:attribute name='i' use='prohibited'/>", "restriction")) +
             Complex("U", Sequence(A + B) + I + "<xs:attributeGroup ref='g'/>") +
             "<xs:attributeGroup name='g'>" + J + I + "</xs:attributeGroup>",
         "r(b)[j]", ""},
        {Root +
             Complex("T", Extend("U", Sequence("<xs:element ref='a' maxOccurs='0'/>" + B), "restriction")) +
             Complex("U", Sequence("<xs:element ref='a'/>" + B)) + A,
         "r(b) a:anyType", ""},
        {Root +
             Complex("T",
                     "<xs:simpleContent><xs:extension base='U'>" + J + "</xs:extension></xs:simpleContent>") +
             Complex("U", "<xs:simpleContent><xs:extension base='xs:string'>" + I +
                              "</xs:extension></xs:simpleContent>"),
         "r()[j i]", ""},
        // groups in groups, each once
        {Root + Complex("T", "<xs:attributeGroup ref='g'/><xs:attributeGroup ref='h'/>") +
             "<xs:attributeGroup name='g'>" + I +
             "<xs:attributeGroup ref='h'/></xs:attributeGroup><xs:attributeGroup name='h'>" + J +
             "</xs:attributeGroup>",
         "r()[i j]", ""},
        {Root + Complex("T", "<xs:attribute ref='xml:lang'/><xs:attribute ref='k'/>") +
             "<xs:attribute name='k' type='E'/>" + Simple("E", Enumerations("xs:token", "xy")),
         "r()[xml:lang k=x=y]", ""},
        // recursion in types
        {Root + Complex("T", Sequence("<xs:element ref='r'/><xs:element name='t' type='T'/>")), "r(r t)", ""},
        {Root + Complex("T", Sequence(A)) + Complex("T", Sequence(B)), "r(a)", "1: Type T already exists"},
    };
    for (const auto& c : cases) {
        TRun run = TRun::Of(c.FBody);
        EXPECT_EQ(run.Elements, c.FElements) << c.FBody;
        EXPECT_EQ(run.Messages, c.FMessages) << c.FBody;
    }
}

TEST(XMLSchema, SubstitutionGroups) {
    TRun run = TRun::Of(
        Root + Complex("T", Sequence("<xs:element ref='h'/>" + C)) +
        "<xs:element name='h' type='U' abstract='true'/>" + Complex("U", I) +
        "<xs:element name='m' substitutionGroup='h'/><xs:element name='n' substitutionGroup='m'/>"
        "<xs:element name='x' substitutionGroup='x'/><xs:element name='y' substitutionGroup='gone'/>");
    EXPECT_EQ(run.Elements, "r(m n c) m()[i] n()[i] x:anyType y:anyType");
    EXPECT_EQ(run.Messages, "1: Unknown reference to element gone");
}

TEST(XMLSchema, Enumerations) {
    const struct {
        std::string FTypes;
        const char* FValues;
    } cases[] = {
        {Simple("E", Enumerations("xs:string", "ab")), "i=a=b"},
        {Simple("E", Enumerations("F", "a")) + Simple("F", Enumerations("xs:string", "ab")), "i=a"},
        {Simple("E", "<xs:restriction base='F'><xs:pattern value='.'/></xs:restriction>") +
             Simple("F", Enumerations("xs:string", "ab")),
         "i=a=b"},
        {Simple("E", "<xs:list itemType='F'/>") + Simple("F", Enumerations("xs:string", "ab")), "i=a=b"},
        {Simple("E", "<xs:union memberTypes='F  G xs:int'><xs:simpleType>" + Enumerations("xs:string", "e") +
                         "</xs:simpleType></xs:union>") +
             Simple("F", Enumerations("xs:string", "ab")) + Simple("G", Enumerations("xs:string", "cd")),
         "i=c=d=a=b=e"},
        {Simple("E", "<xs:union memberTypes='E F'/>") + Simple("F", "<xs:restriction base='E'/>"),
         "i"},  // a ring
    };
    for (const auto& c : cases) {
        TRun run = TRun::Of(Root + Complex("T", "<xs:attribute name='i' type='E'/>") + c.FTypes);
        EXPECT_EQ(run.Elements, "r()[" + std::string(c.FValues) + "]") << c.FTypes;
    }
}

TEST(XMLSchema, Rings) {
    const struct {
        std::string FBody;
        const char *FElements, *FMessages;
    } cases[] = {
        {Root + Complex("T", "<xs:group ref='G'/>") + "<xs:group name='G'>" +
             Sequence(A + "<xs:group ref='H'/>") + "</xs:group><xs:group name='H'>" +
             Sequence(B + "\n<xs:group ref='G'/>") + "</xs:group>",
         "r(a b)", "2: Group G contains itself"},
        {Root + Complex("T", "<xs:attributeGroup ref='g'/>") + "<xs:attributeGroup name='g'>" + I +
             "<xs:attributeGroup ref='h'/></xs:attributeGroup><xs:attributeGroup name='h'>" + J +
             "\n<xs:attributeGroup ref='g'/></xs:attributeGroup>",
         "r()[i j]", "2: Attribute group g contains itself"},
        {Root + Complex("T", Extend("U", Sequence(A))) + "\n" + Complex("U", Extend("T", Sequence(B))),
         "r(b a)", "1: Type T is derived from itself"},
    };
    for (const auto& c : cases) {
        TRun run = TRun::Of(c.FBody);
        EXPECT_EQ(run.Elements, c.FElements) << c.FBody;
        EXPECT_EQ(run.Messages, c.FMessages) << c.FBody;
    }
}

TEST(XMLSchema, Namespaces) {
    const std::string body =
        "<s:element name='r' type='t:T' xmlns:t='urn:t'/><s:complexType name='T'><s:sequence>"
        "<s:element ref='k'/><s:element name='b'/></s:sequence></s:complexType>"
        "<element xmlns='http://www.w3.org/2001/XMLSchema' name='k'/><element name='no'/>";
    TRun bound(
        TFiles{{"main.xsd", "<s:schema xmlns:s='http://www.w3.org/2001/XMLSchema' targetNamespace='urn:t'>" +
                                body + "</s:schema>"}});
    EXPECT_EQ(bound.Elements, "r(k b) k:anyType");
    TRun byDefault(TFiles{{"main.xsd",
                           "<schema xmlns='http://www.w3.org/2001/XMLSchema' xmlns:t='urn:t' "
                           "targetNamespace='urn:t'><element name='r' type='t:T'/><complexType name='T'>"
                           "<attribute name='i' type='string'/></complexType></schema>"}});
    EXPECT_EQ(byDefault.Elements, "r()[i]");
    TRun utf16(TFiles{{"main.xsd", [] {
                           std::string wide = "\xFF\xFE";
                           for (char c : TRun::Schema("<xs:element name='w' type='xs:int'/>"))
                               wide += {c, '\0'};
                           return wide;
                       }()}});
    EXPECT_EQ(utf16.Elements, "w:int");
}

TEST(XMLSchema, Includes) {
    const std::string types = TRun::Schema(Complex("T", Sequence(A)));
    auto include = [](std::string_view location, std::string_view word = "include") {
        return "<xs:" + std::string(word) + " schemaLocation='" + std::string(location) + "'/>";
    };
    const struct {
        std::string FBody;
        TFiles FFiles;
        const char *FElements, *FMessages;
    } cases[] = {
        {include("sub/t.xsd") + Root,
         {{"sub/t.xsd", TRun::Schema(include("../u.xsd"))}, {"u.xsd", types}},
         "r(a)",
         ""},
        {include("t.xsd") + Root,
         {{"t.xsd", TRun::Schema(include("main.xsd") + Complex("T", Sequence(B)))}},
         "r(b)",
         ""},
        {include("main.xsd") + Root + Complex("T", I), {}, "r()[i]", ""},
        {include("gone.xsd") + "\n" + Root,
         {},
         "r:?",
         "1: Schema file gone.xsd cannot be found\n2: Unknown type T"},
        // nothing outside the folder, nothing from the network, wherever it may be
        {include("../../../../etc/t.xsd"),
         {},
         "",
         "1: Schema location ../../../../etc/t.xsd lies outside the schema folder"},
        {include("http://localhost/t.xsd", "import"),
         {{"t.xsd", types}},
         "",
         "1: Schema location http://localhost/t.xsd is not followed"},
        {include("/etc/passwd"), {}, "", "1: Schema location /etc/passwd is not followed"},
        {include("file:t.xsd"), {{"t.xsd", types}}, "", "1: Schema location file:t.xsd is not followed"},
        {include("t.xsd") + Root,
         {{"t.xsd", "<html/>"}},
         "r:?",
         "t.xsd:1: The document is no XML schema\n1: Unknown type T"},
        // what stood before the error is used
        {include("t.xsd") + Root,
         {{"t.xsd", types.substr(0, types.size() - 13) + "\n</x>"}},
         "r(a)",
         "t.xsd:2: Error parsing end element tag"},
        {"<xs:redefine schemaLocation='t.xsd'>" + Complex("T", Extend("T", Sequence(B))) + "</xs:redefine>" +
             Root,
         {{"t.xsd", types}},
         "r(a b)",
         ""},
        {"<xs:redefine schemaLocation='t.xsd'><xs:group name='G'>" + Sequence("<xs:group ref='G'/>" + C) +
             "</xs:group><xs:attributeGroup name='g'>" + J +
             "<xs:attributeGroup ref='g'/></xs:attributeGroup></xs:redefine>" + Root +
             Complex("T", "<xs:group ref='G'/><xs:attributeGroup ref='g'/>"),
         {{"t.xsd", TRun::Schema("<xs:group name='G'>" + Sequence(A) +
                                 "</xs:group><xs:attributeGroup name='g'>" + I + "</xs:attributeGroup>")}},
         "r(a c)[j i]",
         ""},
    };
    for (const auto& c : cases) {
        TRun run = TRun::Of(c.FBody, "", c.FFiles);
        EXPECT_EQ(run.Elements, c.FElements) << c.FBody;
        EXPECT_EQ(run.Messages, c.FMessages) << c.FBody;
    }
    {  // The folder of a bare file name is the one that the process stands in.
        TXSDTestFolder folder;
        folder.Write("t.xsd", types);
        folder.Write("sub/main.xsd", TRun::Schema(include("../t.xsd") + Root));
        auto before = std::filesystem::current_path();
        std::filesystem::current_path(folder.GetPath() + "sub");
        std::string message;
        TXMLSchemaLibrary library([&](const TXMLSchemaMessage& m) { message += m.Text; });
        library.Load("main.xsd", "");
        std::filesystem::current_path(before);
        EXPECT_TRUE(message.starts_with("Schema location ../t.xsd lies outside the schema folder"))
            << message;
    }
    // An included schema without a namespace takes that of its includer, an imported one does not.
    const std::string inTarget = "targetNamespace='urn:t' xmlns:t='urn:t'";
    EXPECT_EQ(TRun::Of(include("t.xsd") + "<xs:element name='r' type='t:T'/>", inTarget, {{"t.xsd", types}})
                  .Elements,
              "r(a)");
    EXPECT_EQ(TRun::Of(include("t.xsd", "import") + "<xs:element name='r' type='t:T'/>", inTarget,
                       {{"t.xsd", types}})
                  .Elements,
              "r:?");
    const std::string other = TRun::Schema("<xs:element name='o' type='u:U'/>" + Complex("U", I),
                                           "targetNamespace='urn:u' xmlns:u='urn:u'");
    EXPECT_EQ(TRun::Of(include("t.xsd", "import") + Root + Complex("T", Sequence("<xs:element ref='u:o'/>")),
                       "xmlns:u='urn:u'", {{"t.xsd", other}})
                  .Elements,
              "r(o)");
}

TEST(XMLSchema, FilesThatAreNoSchema) {
    const struct {
        std::string FText;
        const char* FFailure;
    } cases[] = {
        {"<a>\n<b></a>", "2: Start-end tags mismatch"},
        {"<a/>", "1: The document is no XML schema"},
        {"<xs:schema/>", "1: The document is no XML schema"},  // a prefix that is bound to nothing
        {"", "1: No document element found"},
        {std::string("\0\1\2\3\xFF<<<", 8), "1: Could not determine tag type"},
    };
    for (const auto& c : cases) EXPECT_EQ(TRun(TFiles{{"main.xsd", c.FText}}).Failure, c.FFailure) << c.FText;
    EXPECT_THROW(TXMLSchemaLibrary(nullptr).Load("/dev/zero", ""), EXMLSchemaError);
    EXPECT_THROW(TXMLSchemaLibrary(nullptr).Load("/no/such.xsd", ""), EXMLSchemaError);
}

// Each of these took minutes, gigabytes or the stack in a model without care.
TEST(XMLSchema, BoundsOfHostileFiles) {
    const size_t deep = 100000;
    std::string twice;  // every group names the next one twice
    for (int i = 0; i < 64; ++i) {
        std::string next = "<xs:group ref='g" + std::to_string(i + 1) + "'/>";
        twice += "<xs:group name='g" + std::to_string(i) + "'>" + Sequence(A + next + next) + "</xs:group>";
    }
    std::string chain;  // every type extends the next one
    for (size_t i = 0; i < 3000; ++i)
        chain += Root + Complex("T" + std::to_string(i), Extend("T" + std::to_string(i + 1), Sequence(A)));
    const std::string inner = "<xs:element name='q' xmlns:q='u' type='q:x'/>";
    const struct {
        std::string FBody;
        const char* FElements;
    } cases[] = {
        {Root + Complex("T", Repeat("<xs:sequence>", deep) + A + Repeat("</xs:sequence>", deep)), "r(a)"},
        {Root + Complex("T", Repeat("<xs:choice>" + inner, deep) + Repeat("</xs:choice>", deep)), nullptr},
        {Root + Complex("T", "<xs:group ref='g0'/>") + twice, nullptr},
        {Repeat("<xs:element name='r' type='T0'/>", 1) + chain, nullptr},
        {Root + Complex("T", Sequence(Repeat("<xs:element name='e'><xs:complexType><xs:sequence>", deep) +
                                      Repeat("</xs:sequence></xs:complexType></xs:element>", deep))),
         "r(e)"},
        {Repeat("<!-- a long comment that fills the file -->", 1200000), ""},
    };
    for (const auto& c : cases) {
        TRun run = TRun::Of(c.FBody);
        EXPECT_EQ(run.Failure, "") << c.FBody.substr(0, 80);
        if (c.FElements) {
            EXPECT_EQ(run.Elements, c.FElements) << c.FBody.substr(0, 80);
        }
    }
}

}  // namespace
}  // namespace caretwell
