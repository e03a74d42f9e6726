// The reader of server control schemas: text of a schema in, what was filed out.
#include <gtest/gtest.h>

#include "XSDTestFolder.h"
#include "schema/XSDReader.h"

namespace caretwell {
namespace {

struct TRun {
    TXSDTestFolder Folder;
    TXSDReader Reader;
    std::string Messages;

    explicit TRun(std::string_view text, const std::string& name = "asp.xsd") {
        Reader.FOnError = [this](TXSDReader* sender, const std::string& file, const std::string& message) {
            EXPECT_EQ(sender, &Reader);
            EXPECT_TRUE(file.starts_with(Folder.GetPath())) << file;
            Messages += (Messages.empty() ? "" : "; ") + message;
        };
        Reader.LoadFromFile(Folder.Write(name, text));
    }
};

std::string Schema(std::string_view body, std::string_view attributes = "") {
    return "<xsd:schema xmlns:xsd='x' xmlns:vs='v' " + std::string(attributes) + ">" + std::string(body) +
           "</xsd:schema>";
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

std::string ShowElements(const TXSDReader& reader) {
    std::string all;
    for (auto* entry = reader.GetFirstElement(); entry; entry = TXSDReader::GetNextElement(entry))
        all += (all.empty() ? "" : " ") + Show(*static_cast<TXSDElement*>(entry->Item));
    return all;
}

TEST(XSDReader, Elements) {
    const struct {
        const char *FBody, *FAttributes, *FElements, *FMessages;
    } cases[] = {
        {"<xsd:element name='a'/><xsd:element name='A'/>", "", "0:a", "Element A already exists"},
        {"<xs:element name='a'/><!-- --><xsd:annotation/>", "", "", ""},
        // qualified only if the schema is, whatever the element says
        {"<xsd:element name='a' form='qualified'/>", "", "0:a", ""},
        {"<xsd:element name='a'/><xsd:element name='b' form='UNQUALIFIED'/>",
         "elementFormDefault='Qualified'", "0:a/q 0:b", ""},
        {"<xsd:element name='a' vs:nonbrowseable='TRUE' impliedclose='true'/>"
         "<xsd:element name='b' macroelement='true' vs:implicitclosure='true'/>",
         "", "0:a/nc 0:b/nc", ""},
        {"<xsd:element name='Page' vs:htmlequivalent='%@'/><xsd:element name='Page'/>", "",
         "0:@ Page/cd 0:Page", ""},
        // children of anonymous types share an empty parent
        {"<xsd:element name='a'><xsd:complexType><xsd:choice><xsd:element "
         "name='x'/></xsd:choice></xsd:complexType>"
         "</xsd:element><xsd:element name='b'><xsd:complexType><xsd:choice><xsd:element "
         "name='x'/></xsd:choice>"
         "</xsd:complexType></xsd:element>",
         "", "0:a[] 1:x 0:b[]", "Element x already exists"},
        {"<xsd:complexType name='T'><xsd:sequence><xsd:element name='x'/></xsd:sequence></xsd:complexType>"
         "<xsd:complexType name='U'><xsd:sequence><xsd:element name='x'/></xsd:sequence></xsd:complexType>",
         "", "1T:x 1U:x", ""},
        // a comment or a choice in a choice is filed as an element without a name
        {"<xsd:complexType name='T'><xsd:choice><!-- --><xsd:choice><xsd:element name='x'/></xsd:choice>"
         "</xsd:choice></xsd:complexType>",
         "", "1T: 1T:", ""},
        {"<xsd:complexType name='T'/><xsd:complexType name='t'><xsd:choice><xsd:element "
         "name='x'/></xsd:choice>"
         "</xsd:complexType>",
         "", "", "Type t already exists"},
        // the last inline type wins, a duplicate leaves none
        {"<xsd:element name='a'><xsd:complexType "
         "name='T'/><xsd:simpleType><xsd:list/></xsd:simpleType></xsd:element>"
         "<xsd:element name='b'><xsd:complexType name='T'/></xsd:element>",
         "", "0:asimple 0:b", "Type T already exists"},
        // a reference takes name and type and finds elements without a parent only
        {"<xsd:element name='b' vs:nonbrowseable='true'><xsd:complexType><xsd:attribute "
         "name='i'/></xsd:complexType>"
         "</xsd:element><xsd:complexType name='T'><xsd:sequence><xsd:element ref='B'/><xsd:element name='z'/>"
         "<xsd:element ref='z'/></xsd:sequence></xsd:complexType>",
         "", "0:b/n[i] 1T:b[i] 1T:z 1T:", "Unknown reference to element z"},
    };
    for (const auto& c : cases) {
        TRun run(Schema(c.FBody, c.FAttributes));
        EXPECT_EQ(ShowElements(run.Reader), c.FElements) << c.FBody;
        EXPECT_EQ(run.Messages, c.FMessages) << c.FBody;
    }
}

TEST(XSDReader, AttributesAndGroups) {
    const std::string group = "<xsd:attributeGroup name='";
    const struct {
        std::string FBody;
        const char *FType, *FMessages;
    } cases[] = {
        {"<xsd:attribute name='a' type='xsd:anyURI'/><xsd:attribute name='b' vs:omtype='xsd:anyURI' "
         "vs:builder='q'/>"
         "<xsd:attribute name='c' editor='color'/><xsd:attribute name='d' type='xsd:anyuri'/>",
         "[a@uri b@q c@color d]", ""},
        {"<xsd:attribute name='a'><xsd:simpleType><xsd:restriction base='xsd:NMTOKEN'><xsd:enumeration "
         "value='x'/>"
         "<xsd:enumeration value='x'/></xsd:restriction></xsd:simpleType></xsd:attribute>",
         "[a=x=x]", ""},
        {"<xsd:attribute name='a'><xsd:simpleType><xsd:restriction base='xsd:token'><xsd:enumeration "
         "value='x'/>"
         "</xsd:restriction></xsd:simpleType></xsd:attribute>",
         "[a]", ""},
        // the oldest names later groups and gets the third twice, since the second was done before
        {"<xsd:attributeGroup ref='one'/></xsd:complexType>" + group +
             "one'><xsd:attributeGroup ref='two'/>"
             "</xsd:attributeGroup>" +
             group +
             "two'><xsd:attribute name='b'/><xsd:attributeGroup ref='three'/>"
             "</xsd:attributeGroup>" +
             group + "three'><xsd:attribute name='c'/></xsd:attributeGroup><xsd:complexType>",
         "[b c c]", ""},
        {"<xsd:attributeGroup ref='one'/><xsd:attributeGroup ref='none'/></xsd:complexType>" + group +
             "three'><xsd:attribute name='c'/></xsd:attributeGroup>" + group +
             "one'><xsd:attributeGroup ref='three'/>"
             "<xsd:attributeGroup ref='gone'/></xsd:attributeGroup>" +
             group + "ONE'/><xsd:complexType>",
         "[c]", "AttributeGroup ONE already exists; Couldn't find attribute group gone"},
        {"<xsd:attributeGroup ref='one'/></xsd:complexType>" + group +
             "one'><xsd:attribute name='a'/>"
             "<xsd:attributeGroup ref='two'/></xsd:attributeGroup>" +
             group +
             "two'><xsd:attribute name='b'/>"
             "<xsd:attributeGroup ref='one'/></xsd:attributeGroup><xsd:complexType>",
         "[a b a]", "Attribute group two contains itself; Attribute group one contains itself"},
    };
    for (const auto& c : cases) {
        TRun run(Schema("<xsd:complexType name='T'>" + c.FBody + "</xsd:complexType>"));
        ASSERT_TRUE(run.Reader.LookupType(u"t")) << c.FBody << run.Messages;
        EXPECT_EQ(Show(*run.Reader.LookupType(u"t")), c.FType) << c.FBody;
        EXPECT_EQ(run.Messages, c.FMessages) << c.FBody;
    }
}

TEST(XSDReader, LookUps) {
    TRun run(
        Schema("<xsd:simpleType name='Color'><xsd:list/><xsd:restriction base='b'/></xsd:simpleType>"
               "<xsd:simpleType name='xsd:bool'><xsd:list/></xsd:simpleType><xsd:simpleType name='none'/>"
               "<xsd:complexType name='T'><xsd:choice><xsd:element name='x'/></xsd:choice></xsd:complexType>"
               "<xsd:element name='x'/>"));
    const struct {
        const char16_t* FName;
        bool FFound;
    } types[] = {
        {u"COLOR", true}, {u"xsd:Color", true}, {u"bool", true}, {u"a:xsd:Color", false}, {u"none", false}};
    for (const auto& c : types)
        EXPECT_EQ(run.Reader.LookupSimpleType(c.FName) != nullptr, c.FFound) << ToUtf8(c.FName);
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
    const struct {
        std::string FText;
        const char* FMessages;
    } cases[] = {
        {"<xs:schema/>", ""},
        {"<xsd:schema>\n<xsd:element name='a'/>\n</b>", "Start-end tags mismatch (line 3)"},
        {"", "No document element found (line 1)"},
        {std::string("\x7F"
                     "ELF\0\1\2<",
                     8),
         "Could not determine tag type (line 1)"},
    };
    for (const auto& c : cases) {
        TRun run(c.FText);
        EXPECT_EQ(run.Messages, c.FMessages) << c.FText;
        EXPECT_EQ(ShowElements(run.Reader), "") << c.FText;
    }
    TXSDReader reader;
    reader.LoadFromFile("/no/such/file.xsd");  // no message, and nobody to hear one
    reader.LoadFromFile("/dev/zero");
    EXPECT_FALSE(reader.GetFirstElement());
}

// Each of these took minutes, gigabytes or the stack in a reader without care.
TEST(XSDReader, BoundsOfHostileFiles) {
    const std::string open = "<xsd:element name='a'><xsd:complexType><xsd:choice>";
    const std::string close = "</xsd:choice></xsd:complexType></xsd:element>";
    std::string twice = "<xsd:attributeGroup name='g0'><xsd:attribute name='x'/></xsd:attributeGroup>";
    for (int i = 1; i < 64; ++i) {  // every group names the one before it twice, the newest is done first
        std::string next = "<xsd:attributeGroup ref='g" + std::to_string(i - 1) + "'/>";
        twice +=
            "<xsd:attributeGroup name='g" + std::to_string(i) + "'>" + next + next + "</xsd:attributeGroup>";
    }
    const std::string crowd =
        "<xsd:complexType><xsd:choice><xsd:element name='a'/></xsd:choice></xsd:complexType>";
    const struct {
        std::string FBody, FMessage;
    } cases[] = {
        {Repeat(open, 100000) + Repeat(close, 100000), "Too many declarations"},
        {Repeat("<xsd:choice>", 100000) + Repeat("</xsd:choice>", 100000), ""},
        {twice, "Too many attributes in attribute groups"},
        {Repeat(crowd, 150000), "Element a already exists"},
        {Repeat("<xsd:element name='a'/>", 300000), "Further messages about this file are not shown"},
        {Repeat("<!-- a long comment that fills the file -->", 500000), "only its first 16 MB are used"},
    };
    for (const auto& c : cases) {
        TRun run(Schema(c.FBody));
        EXPECT_TRUE(c.FMessage.empty() ? run.Messages.empty()
                                       : run.Messages.find(c.FMessage) != std::string::npos)
            << c.FBody.substr(0, 60) << ": " << run.Messages.substr(0, 200);
    }
}

}  // namespace
}  // namespace caretwell
