// The object model: text of schemas in, what each global element may hold out.
#include <gtest/gtest.h>

#include "schema/XMLSchema.h"
#include "support/Cases.h"
#include "support/TemporaryFolder.h"

namespace caretwell {
namespace {

std::string Show(const TXMLDeclaration& attribute) {
    std::string text(attribute.GetName());
    for (std::string_view value : attribute.GetDataType().GetEnumerations()) text += "=" + std::string(value);
    return text;
}

// name(children)[attributes], the type's name instead of both if it is built in.
std::string ShowElement(const TXMLDeclaration& element) {
    std::string text(element.GetName()), children, attributes;
    TXMLType type = element.GetDataType();
    if (!type) return text + ":?";
    if (type.IsBuiltIn()) return text + ":" + type.GetName();
    if (!type.IsComplex()) return text + ":simple";
    auto add = [](std::string& all, const std::string& word) { all += (all.empty() ? "" : " ") + word; };
    for (const auto& child : type.GetElements()) add(children, std::string(child.GetName()));
    for (const auto& attribute : type.GetAttributes()) add(attributes, Show(attribute));
    for (const auto& group : type.GetAttributeGroups())
        for (const auto& attribute : group.GetAttributes()) add(attributes, Show(attribute));
    return text + "(" + children + ")" + (attributes.empty() ? "" : "[" + attributes + "]");
}

// A text that begins with a declaration is the body of a schema.
std::string Schema(const std::string& text) {
    if (!text.starts_with("<xs:") || text.starts_with("<xs:schema")) return text;
    return "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>" + text + "</xs:schema>";
}

struct TRun {
    TTemporaryFolder Folder;
    std::string Elements, Messages;
    TXMLSchemaLibrary Library{[this](const TXMLSchemaMessage& message) {
        std::string file = message.FileName.substr(Folder.Path("schemas/").size());
        std::string place = (file == "main.xsd" ? "" : file + ":") + std::to_string(message.Line) + ": ";
        Messages += "\n" + place + message.Text;
    }};

    explicit TRun(const std::string& text, const decltype(TFileCase::FFiles)& files = {}) {
        for (const auto& [name, part] : files) Folder.Write("schemas/" + name, Schema(part));
        try {
            const auto& schema =
                Library.Load(Folder.Write("schemas/main.xsd", Schema(text)), Folder.Path("schemas/"));
            for (const auto& element : schema.GetElements())
                Elements += (Elements.empty() ? "" : " ") + ShowElement(element);
        } catch (const EXMLSchemaError& error) {
            Messages += "\nfailure " + std::to_string(error.FLine) + ": " + error.what();
        }
    }
};

TEST(XMLSchema, Schemas) {
    for (const auto& c : ReadCases("schemas.txt")) {
        TRun run(c.FText, c.FFiles);
        EXPECT_EQ(run.Elements + run.Messages, c.FExpect) << c.FTitle << ":\n" << c.FText;
    }
}

TEST(XMLSchema, AnyBytes) {
    std::string wide = "\xFF\xFE";
    for (char c : Schema("<xs:element name='w' type='xs:int'/>")) wide += {c, '\0'};
    EXPECT_EQ(TRun(wide).Elements, "w:int");
    EXPECT_EQ(TRun(std::string("\0\1\2\3\xFF<<<", 8)).Messages, "\nfailure 1: Could not determine tag type");
    for (const char* file : {"/dev/zero", "/no/such.xsd"})
        EXPECT_THROW(TXMLSchemaLibrary(nullptr).Load(file, ""), EXMLSchemaError) << file;
}

// The folder of a bare file name is the one that the process stands in.
TEST(XMLSchema, ABareFileName) {
    TTemporaryFolder folder;
    folder.Write("t.xsd", Schema("<xs:element name='a'/>"));
    folder.Write("sub/main.xsd", Schema("<xs:include schemaLocation='../t.xsd'/>"));
    auto before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path("sub"));
    std::string message;
    TXMLSchemaLibrary library([&](const TXMLSchemaMessage& m) { message += m.Text; });
    library.Load("main.xsd", "");
    std::filesystem::current_path(before);
    EXPECT_TRUE(message.starts_with("Schema location ../t.xsd lies outside the schema folder")) << message;
}

// Each of these took minutes, gigabytes or the stack in a model without care.
TEST(XMLSchema, BoundsOfHostileFiles) {
    constexpr size_t Deep = 100000;
    const std::string a = "<xs:element name='a'/>", end = "</xs:complexType>";
    const std::string root = "<xs:element name='r' type='T'/><xs:complexType name='T'>";
    const std::string next = Repeat("<xs:group ref='g$+'/>", 2);
    const std::string twice =
        Numbered("<xs:group name='g$'><xs:sequence>" + a + next + "</xs:sequence></xs:group>", 64);
    const std::string extended = "<xs:complexContent><xs:extension base='T$+'><xs:sequence>" + a +
                                 "</xs:sequence></xs:extension></xs:complexContent>";
    const std::string chain = Numbered("<xs:complexType name='T$'>" + extended + end, 3000);
    const std::string inner = "<xs:choice><xs:element name='q' xmlns:q='u' type='q:x'/>";
    const std::string nested = "<xs:sequence><xs:element name='e'><xs:complexType>";
    const struct {
        std::string FBody;
        const char* FElements;
    } cases[] = {
        {root + Repeat("<xs:sequence>", Deep) + a + Repeat("</xs:sequence>", Deep) + end, "r(a)"},
        {root + Repeat(inner, Deep) + Repeat("</xs:choice>", Deep) + end, nullptr},
        {root + "<xs:group ref='g0'/>" + end + twice, nullptr},
        {"<xs:element name='r' type='T0'/>" + root + end + chain, nullptr},
        {root + Repeat(nested, Deep) + Repeat("</xs:complexType></xs:element></xs:sequence>", Deep) + end,
         "r(e)"},
        {"<xs:annotation/>" + Repeat("<!-- a long comment that fills the file -->", 1200000), ""},
    };
    for (const auto& c : cases) {
        TRun run(c.FBody);
        EXPECT_EQ(run.Messages.find("failure"), std::string::npos) << c.FBody.substr(0, 80);
        EXPECT_EQ(run.Elements, c.FElements ? c.FElements : run.Elements) << c.FBody.substr(0, 80);
    }
}

}  // namespace
}  // namespace caretwell
