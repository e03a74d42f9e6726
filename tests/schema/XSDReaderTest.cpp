// The reader of server control schemas: text of a schema in, what was filed out.
#include <gtest/gtest.h>

#include "schema/XSDReader.h"
#include "support/Cases.h"
#include "support/TemporaryFolder.h"

namespace caretwell {
namespace {

struct TRun {
    TTemporaryFolder Folder;
    TXSDReader Reader;
    std::string Messages;

    explicit TRun(std::string_view text, const std::string& name = "asp.xsd") {
        Reader.FOnError = [this](TXSDReader* sender, const std::string& file, const std::string& message) {
            EXPECT_EQ(sender, &Reader);
            EXPECT_TRUE(file.starts_with(Folder.Path())) << file;
            Messages += (Messages.empty() ? "" : "; ") + message;
        };
        Reader.LoadFromFile(Folder.Write(name, text));
    }
};

std::string Schema(const std::string& body) {
    return "<xsd:schema xmlns:xsd='x' xmlns:vs='v' >" + body + "</xsd:schema>";
}

std::string Show(const TXSDAttribute& attribute) {
    std::string text = ToUtf8(attribute.FName);
    for (const auto* type : attribute.FValues)
        for (const auto* restriction : type->FRestrictions)
            for (const auto& value : restriction->FEnumerations) text += "=" + ToUtf8(value);
    return text + (attribute.FBuilder.empty() ? "" : "@" + ToUtf8(attribute.FBuilder));
}

std::string Show(const TXSDBaseType& type) {
    std::string text = "[";
    for (const auto* attribute : type.FAttributes) text += (text == "[" ? "" : " ") + Show(*attribute);
    return text + "]";
}

// Level and parent, then marks: n nonbrowseable, c closes itself, q qualified, d directive.
std::string Show(const TXSDElement& element) {
    std::string text = std::to_string(element.FLevel) + ToUtf8(element.FParent) + ":" + ToUtf8(element.FName);
    std::string marks = std::string(element.FNonBrowseable ? "n" : "") +
                        (element.FImplicitClosure ? "c" : "") + (element.FUnqualified ? "" : "q") +
                        (element.FDirective ? "d" : "");
    if (!marks.empty()) text += "/" + marks;
    if (auto* type = dynamic_cast<TXSDType*>(element.FTypeDef)) text += Show(*type);
    if (dynamic_cast<TXSDSimpleType*>(element.FTypeDef)) text += "simple";
    return text;
}

/// All elements, the type T if it has attributes, and what was said.
std::string Show(const TRun& run) {
    std::string all;
    for (auto* entry = run.Reader.GetFirstElement(); entry; entry = TXSDReader::GetNextElement(entry))
        all += (all.empty() ? "" : " ") + Show(*static_cast<TXSDElement*>(entry->Item));
    const auto* type = run.Reader.LookupType(u"t");
    if (type && !type->FAttributes.empty()) all += Show(*type);
    return run.Messages.empty() ? all : all + "\n" + run.Messages;
}

TEST(XSDReader, Schemas) {
    for (const auto& c : ReadCases("controls.txt")) {
        bool isWhole = !c.FText.starts_with("<xsd:") || c.FText.starts_with("<xsd:schema");
        EXPECT_EQ(Show(TRun(isWhole ? c.FText : Schema(c.FText))), c.FExpect) << c.FTitle;
    }
}

TEST(XSDReader, LookUps) {
    TRun run(
        Schema("<xsd:simpleType name='Color'><xsd:list/><xsd:restriction base='b'/></xsd:simpleType>"
               "<xsd:simpleType name='xsd:bool'><xsd:list/></xsd:simpleType><xsd:simpleType name='none'/>"
               "<xsd:complexType name='T'><xsd:choice><xsd:element name='x'/></xsd:choice></xsd:complexType>"
               "<xsd:element name='x'/>"));
    for (const char16_t* name : {u"COLOR", u"xsd:Color", u"bool"})
        EXPECT_TRUE(run.Reader.LookupSimpleType(name)) << ToUtf8(name);
    for (const char16_t* name : {u"a:xsd:Color", u"none"})
        EXPECT_FALSE(run.Reader.LookupSimpleType(name)) << ToUtf8(name);
    EXPECT_EQ(run.Reader.LookupSimpleType(u"color")->FRestrictions.size(), 1u);  // the newest of two
    const struct {
        const char16_t* FParent;
        bool FAny;
        int32_t FLevel;
        int FFound;
    } elements[] = {{u"", true, -1, 0}, {u"", true, 1, 1},    {u"T", false, -1, 1}, {u"t", false, -1, -1},
                    {u"", false, 0, 0}, {u"T", false, 0, -1}, {u"", false, 1, -1}};
    for (const auto& c : elements) {
        const auto* element = run.Reader.LookupElement(u"X", c.FParent, c.FAny, c.FLevel);
        EXPECT_EQ(element ? element->FLevel : -1, c.FFound) << ToUtf8(c.FParent) << c.FAny << c.FLevel;
    }
}

TEST(XSDReader, PrefixOfFile) {
    const struct {
        const char* FFile;
        const char16_t* FPrefix;
    } cases[] = {{"/x/asp.xsd", u"asp"}, {"C:\\x\\ASP.xsd", u"ASP"}, {"Asp_Directives.XSD", u""},
                 {"plain", u"plain"},    {"a.xsd.xsd", u"a.xsd"},    {"", u""}};
    for (const auto& c : cases)
        EXPECT_EQ(TXSDReader::GetNamespacePrefixOfFile(c.FFile), c.FPrefix) << c.FFile;
    EXPECT_EQ(TRun(Schema("")).Reader.GetNamespacePrefix(), u"asp:");
    EXPECT_EQ(TRun(Schema(""), "asp_directives.xsd").Reader.GetNamespacePrefix(), u"");
    EXPECT_EQ(TRun("<schema/>").Reader.GetNamespacePrefix(), u"");
}

TEST(XSDReader, FilesThatAreNoSchema) {
    EXPECT_EQ(Show(TRun(std::string("\x7F"
                                    "ELF\0\1\2<",
                                    8))),
              "\nCould not determine tag type (line 1)");
    TXSDReader reader;
    reader.LoadFromFile("/no/such/file.xsd");  // no message, and nobody to hear one
    reader.LoadFromFile("/dev/zero");
    EXPECT_FALSE(reader.GetFirstElement());
}

// Each of these took minutes, gigabytes or the stack in a reader without care.
TEST(XSDReader, BoundsOfHostileFiles) {
    const std::string open = "<xsd:element name='a'><xsd:complexType><xsd:choice>";
    const std::string close = "</xsd:choice></xsd:complexType></xsd:element>";
    // Every group names the one before it twice; the newest is done first.
    const std::string next = Repeat("<xsd:attributeGroup ref='g$'/>", 2), end = "</xsd:attributeGroup>";
    const std::string twice = "<xsd:attributeGroup name='g0'><xsd:attribute name='x'/>" + end +
                              Numbered("<xsd:attributeGroup name='g$+'>" + next + end, 63);
    const std::string crowd =
        "<xsd:complexType><xsd:choice><xsd:element name='a'/></xsd:choice></xsd:complexType>";
    const std::string cases[][2] = {
        {Repeat(open, 100000) + Repeat(close, 100000), "Too many declarations"},
        {Repeat("<xsd:choice>", 100000) + Repeat("</xsd:choice>", 100000), ""},
        {twice, "Too many attributes in attribute groups"},
        {Repeat(crowd, 150000), "Element a already exists"},
        {Repeat("<xsd:element name='a'/>", 300000), "Further messages about this file are not shown"},
        {Repeat("<!-- a long comment that fills the file -->", 500000), "only its first 16 MB are used"},
    };
    for (const auto& [body, message] : cases) {
        TRun run(Schema(body));
        bool isAsExpected =
            message.empty() ? run.Messages.empty() : run.Messages.find(message) != std::string::npos;
        EXPECT_TRUE(isAsExpected) << body.substr(0, 60) << ": " << run.Messages.substr(0, 200);
    }
}

}  // namespace
}  // namespace caretwell
