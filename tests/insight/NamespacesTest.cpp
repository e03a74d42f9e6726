// A free XML document and the prefixes that it binds: names are offered, known and written
// as the document spells them.
#include <gtest/gtest.h>

#include "support/Cases.h"
#include "support/TestHost.h"
#include "symbols/FileToSchemaMapper.h"

namespace caretwell::test {
namespace {

class TFreeHost : public TTestHost {
public:
    TFreeHost(std::string_view text, const std::string& fileName) : TTestHost(text, fileName.c_str()) {
        auto mapper = GetFileToSchemaMapperService();
        for (std::string name : {"shelf", "crate"}) mapper->RegisterSchema("." + name, name + ".xsd");
        MLSymbolManager().SetTagCase(tcNormal);
    }
    std::string Offer() { return Driver().OpenList() ? Items() : "-"; }
};

TEST(Namespaces, NamesAsTheDocumentSpellsThem) {
    const std::string longest(100, 'p'), s = " xmlns:s='urn:shelf'", many = Numbered(" xmlns:n$='x'", 64);
    const struct {
        const char* FFile;
        std::string FText, FExpect;
    } cases[] = {
        // Default namespace, bound prefix, both, neither, another one.
        {".shelf", "<shelf xmlns='urn:shelf'><^ ", "book label shelf"},
        {".shelf", "<s:shelf" + s + "><^ ", "label s:book s:shelf"},
        {".shelf", "<s:shelf" + s + ">^ ", "</s:shelf> label s:book s:shelf"},
        {".shelf", "<s:shelf" + s + "><s:b^ ", "s:book"},
        {".shelf", "<S:shelf xmlns:S=urn:shelf><^ ", "label S:book S:shelf"},
        {".shelf", "<shelf xmlns='urn:shelf'" + s + "><^ ", "book label shelf"},
        {".shelf", "<shelf" + s + " xmlns='urn:shelf'><^ ", "book label shelf"},
        {".shelf", "<shelf><^ ", "book label shelf"},
        {".shelf", "<s:shelf><^ ", "shelf"},
        {".shelf", "<s:shelf xmlns:s='urn:Shelf'><^ ", "shelf"},
        {".shelf", "<shelf xmlns:s='' xmlns:='urn:shelf' xmlns:a:b='urn:shelf'><^ ", "book label shelf"},
        // A prefix bound twice is the first; two prefixes are that of the tag, or the first.
        {".shelf", "<s:shelf xmlns:s='x'" + s + "><^ ", "shelf"},
        {".shelf", "<s:shelf" + s + " xmlns:s='x'><^ ", "label s:book s:shelf"},
        {".shelf", "<s:shelf xmlns:t='urn:shelf'" + s + "><^ ", "label s:book s:shelf"},
        {".shelf", "<t:x xmlns:u='urn:shelf'" + s + "><u:shelf><^ ", "label u:book u:shelf"},
        // The tag's own name and attributes, and what else stands in front of it.
        {".shelf", "<s:shelf" + s + " ^>", "wood"},
        {".shelf", "<s:shelf ^" + s + ">", "wood"},
        {".shelf", "<s:^" + s + ">", "s:shelf"},
        {".shelf", "<?xml version='1.0'?><!-- <a> --><!DOCTYPE a><s:shelf" + s + "><^ ",
         "label s:book s:shelf"},
        {".shelf", "<a><s:shelf" + s + "><^ ", "shelf"},
        {".shelf", "^\n<s:shelf" + s + ">", "shelf"},
        {".shelf", "<^ <s:shelf" + s + ">", "shelf"},
        {".shelf", "<s:shelf xmlns:s='urn:shelf^", "-"},
        // What would make every name of the table long, or the look for a prefix slow.
        {".shelf", "<shelf xmlns:" + longest + "='urn:shelf'><" + longest + ":shelf ^>", "wood"},
        {".shelf", "<shelf xmlns:p" + longest + "='urn:shelf'><p" + longest + ":shelf ^>", "-"},
        {".shelf", "<s:shelf" + many + s + "><^ ", "shelf"},
        // Only global elements, but for one that says otherwise.
        {".crate", "<crate><^ ", "bottle crate lid"},
        {".crate", "<c:crate xmlns:c='urn:crate'><^ ", "bottle c:crate c:lid crate"},
        {".crate", "<c:crate xmlns:c='urn:crate'><crate><^ ", "bottle c:crate c:lid crate"},
        {".crate", "<c:crate xmlns:c='urn:crate'></c:crate><^ ", "c:crate"},
    };
    for (const auto& c : cases) {
        TFreeHost host(c.FText, "a" + std::string(c.FFile));
        EXPECT_EQ(host.Offer(), c.FExpect) << c.FText;
        EXPECT_EQ(host.Offer(), c.FExpect) << "again " << c.FText;
    }
}

// One host, one document after the other.
TEST(Namespaces, FollowTheDocument) {
    const char* const cases[][3] = {
        {"a.shelf", "<s:shelf xmlns:s='urn:shelf'><^ ", "label s:book s:shelf"},
        {"a.shelf", "<t:shelf xmlns:t='urn:shelf'><^ ", "label t:book t:shelf"},
        {"b.shelf", "<shelf xmlns='urn:shelf'><^ ", "book label shelf"},
        {"a.shelf", "<t:shelf xmlns:t='urn:shelf'><^ ", "label t:book t:shelf"},
        {"a.shelf", "^\n<t:shelf xmlns:t='urn:shelf'>", "shelf"},
        {"a.shelf", "<t:shelf xmlns:t='urn:shelf'><^ ", "label t:book t:shelf"},
        {"a.crate", "<t:crate xmlns:t='urn:crate'><^ ", "bottle crate t:crate t:lid"},
        {"a.html", "<ul><^ ", "li"},
        {"a.html", "<ul xmlns:t='urn:crate'><^ ", "li"},
        {"a.crate", "<crate><^ ", "bottle crate lid"},
        {"a.shelf", "<shelf><^ ", "book label shelf"},
    };
    TFreeHost host("", "a.shelf");
    for (const auto& [file, text, expect] : cases) {
        host.OpenText(text, file);
        EXPECT_EQ(host.Offer(), expect) << text;
    }
}

class TWatcher final : public TImplements<INibMLElementCallback> {
public:
    void ElementParsed(void*, INibMLMarkupPos* element, TTagType type, int32_t, int32_t, bool&) override {
        auto tag = QueryAs<INibMLTag>(TRef<INibMLMarkupPos>(element));
        if (type == ttOpen && tag) FSeen += " " + ToUtf8(tag->GetName());
    }
    void Invalidate() override { FSeen = "!"; }
    std::string FSeen;
};

// The table is made anew only when its names change, and then observers hear it all again.
TEST(Namespaces, ADocumentThatStaysCostsNothing) {
    TFreeHost host("<s:shelf xmlns:s='urn:shelf' xmlns:x='y'><s:book></s:book><^ ", "a.shelf");
    auto watcher = MakeRef<TWatcher>();
    host.Parser().AddCallback(watcher.Get());
    host.Parse();
    EXPECT_EQ(watcher->FSeen, "! s:shelf s:book");
    TRef<INibMLTag> book = host.Parser().FindTag(u"s:book");
    ASSERT_TRUE(book);
    watcher->FSeen.clear();
    host.Parse();
    EXPECT_EQ(watcher->FSeen, " s:shelf s:book");
    host.OpenBytes("<s:shelf xmlns:s='urn:shelf' xmlns:other='z'> ", "b.shelf");
    host.Document().View().SetCaretOffset(45);
    host.Parse();
    EXPECT_TRUE(host.Parser().FindTag(u"s:book") == book);
    EXPECT_FALSE(host.Parser().FindTag(u"book"));
    host.Parser().RemoveCallback(watcher.Get());
}

TEST(Namespaces, Choices) {
    const char* const cases[][3] = {
        {"<s:shelf xmlns:s='urn:shelf'>\n<^\n", "s:book", "<s:shelf xmlns:s='urn:shelf'>\n<s:book^\n"},
        {"<s:shelf xmlns:s='urn:shelf'>\n<s:b^\n", "s:book", "<s:shelf xmlns:s='urn:shelf'>\n<s:book^\n"},
        {"<s:shelf xmlns:s='urn:shelf'>\n<^\n", "label", "<s:shelf xmlns:s='urn:shelf'>\n<label^\n"},
        {"<s:shelf xmlns:s='urn:shelf'>\n^\n", "</s:shelf>", "<s:shelf xmlns:s='urn:shelf'>\n</s:shelf>^\n"},
        {"<s:shelf ^ xmlns:s='urn:shelf'>\n", "wood", "<s:shelf wood^ xmlns:s='urn:shelf'>\n"},
    };
    for (const auto& [text, item, expect] : cases) {
        TFreeHost host(text, "a.shelf");
        ASSERT_TRUE(host.Driver().OpenList() && host.Driver().Select(ToUtf16(item))) << text;
        host.Driver().PressKey(ekEnter);
        EXPECT_EQ(host.Text(), expect) << text;
    }
}

}  // namespace
}  // namespace caretwell::test
