// The two string widths, words of a schema and names of its files.
#include <gtest/gtest.h>

#include "markup/MLParserUtils.h"
#include "markup/Text.h"

namespace caretwell {
namespace {

TEST(Utf, BrokenBytesNeverLoseTheRest) {
    const struct {
        std::string FText;
        std::u16string FExpect;
        int32_t FCharacters;
    } cases[] = {
        {"a\xC3\xA9z", u"a\u00E9z", 3},
        {"\xF0\x9F\x98\x80!", u"\U0001F600!", 2},
        {"\xC3z", u"\uFFFDz", 2},          // a lead byte without its tail
        {"\xFF\x80", u"\uFFFD\uFFFD", 2},  // bytes that begin nothing
        {std::string("a\0b", 3), std::u16string(u"a\0b", 3), 3},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ToUtf16(c.FText), c.FExpect) << c.FText;
        EXPECT_EQ(CountCharacters(std::string_view(c.FText)), c.FCharacters) << c.FText;
        EXPECT_EQ(CountCharacters(std::u16string_view(c.FExpect)), c.FCharacters) << c.FText;
    }
    EXPECT_EQ(ToUtf8(u"\xD800z"), "\xEF\xBF\xBDz");  // half a pair
}

TEST(Words, TypesAndEditors) {
    const struct {
        const char* FWord;
        bool FNoType, FEditor;
    } cases[] = {{"CDATA", false, false},  {"cdata", true, false},     {"C", true, false},
                 {"", true, false},        {"NMTOKENS", false, false}, {"URI...", true, true},
                 {"color...", true, true}, {"uri", true, false}};
    for (const auto& c : cases) {
        EXPECT_EQ(IdentIsNotDTDType(std::string_view(c.FWord)), c.FNoType) << c.FWord;
        EXPECT_EQ(IdentIsAttributeEditor(std::string_view(c.FWord)), c.FEditor) << c.FWord;
    }
}

TEST(SchemaFileName, FindsTheLocalFile) {
    const struct {
        const char* FName;
        TKibitzMode FMode;
        const char* FFile;
    } cases[] = {
        {"", kmHTML, "loose.dtd"},
        {"", kmXML, ""},
        {"-//Nobody//DTD Nothing//EN", kmWML, "wml12.dtd"},
        {"-//w3c//DTD HTML 4.01//EN", kmHTML, "loose.dtd"},  // case counts
        {"-//W3C//DTD HTML 4.01//EN", kmHTML, "strict.dtd"},
        {"ISO 8879-1986//ENTITIES Added Latin 1//EN//HTML", kmHTML, "HTMLlat1.ent"},
        {"http://www.w3.org/TR/html4/strict.dtd", kmHTML, "strict.dtd"},
        {"..\\..\\etc\\passwd", kmHTML, "passwd"},
        {"a/b/", kmHTML, ""},
    };
    std::string folder = GetSchemaFileName("", kmXML);
    ASSERT_TRUE(folder.ends_with("schemas/")) << folder;
    for (const auto& c : cases) EXPECT_EQ(GetSchemaFileName(c.FName, c.FMode), folder + c.FFile) << c.FName;
    EXPECT_EQ(GetSchemaFileName("-//Nobody//EN", kmXML), "-//Nobody//EN");
}

}  // namespace
}  // namespace caretwell
