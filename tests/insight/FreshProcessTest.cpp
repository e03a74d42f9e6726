// A caret's list does not depend on the carets before it: a host that has seen many says
// the same as a new one.
#include <gtest/gtest.h>

#include <random>

#include "support/Outcome.h"
#include "symbols/FileToSchemaMapper.h"

namespace caretwell::test {
namespace {

std::string OutcomeAt(TTestHost& host, int32_t caret) {
    host.Document().View().SetCaretOffset(caret);
    host.Driver().OpenList();
    return Outcome(host);
}

void CompareWithFresh(const std::string& text, int count, const char* name = "page.html") {
    auto open = [&] {
        auto host = std::make_unique<TTestHost>(THostOptions());
        host->OpenBytes(text, name);
        return host;
    };
    std::mt19937 random(7);
    std::vector<std::pair<int32_t, std::string>> expected;
    for (int i = 0; i < count; ++i) {
        auto caret = static_cast<int32_t>(random() % (text.size() + 1));
        expected.emplace_back(caret, OutcomeAt(*open(), caret));
    }
    auto host = open();
    for (const auto& [caret, outcome] : expected) {
        ASSERT_EQ(OutcomeAt(*host, caret), outcome) << name << " at " << caret;
        // What is done with a list leaves no trace either: a filter, a choice, a dismissal.
        switch (random() % 4) {
            case 0: host->Driver().TypeChar('t'); break;
            case 1:
                host->Driver().PressKey(ekDown);
                host->Driver().PressKey(ekEnter);
                break;
            case 2: host->Driver().TypeChar(' '); break;
            default: host->Driver().Dismiss();
        }
        while (host->Driver().Undo()) continue;
        ASSERT_EQ(host->Document().Text().Text(), text);
    }
}

const std::string Mixed =
    "<!DOCTYPE html><html><head><title>a &am</title><script>if (a < b) \"</p>\"</script></head>\n"
    "<body bgcolor=\"\" onload='x'>\r\n<p class=a align=\"left\">it's <b>x</p><ul><li>a<li><a href=x "
    "target=\"_s\">"
    "y</ul><div\n><table><td bgcolor><tr><td>&amp; &a <img src=\"a>b\" alt=''><br/><nothing "
    "at=1><p</nothing>\n"
    "<form action><input checked type=\"\"><textarea><p></textarea></form><!-- <p> --><% a %>\xC3\xA9<sp\n";

TEST(FreshProcess, SaysTheSame) {
    CompareWithFresh(Mixed, 1200);
    CompareWithFresh("<?xml version='1.0'?>" + Mixed, 300);
    CompareWithFresh("<p r /><p s/>", 30);  // attributes of a tag that is closed after the caret
    CompareWithFresh("<xsl:stylesheet><xsl:template match=\"\">" + Mixed + "<xsl:if test><p>", 500,
                     "page.xsl");
}

void RegisterSchemas() {
    auto mapper = GetFileToSchemaMapperService();
    for (const char* name : {"shelf", "crate", "none"})
        mapper->RegisterSchema("." + std::string(name), std::string(name) + ".xsd");
}

// One host, one document after the other, of every kind in every order: each is seen as
// the first of a process would be, and none of them hides what the next one shows.
TEST(FreshProcess, OneDocumentAfterTheOther) {
    const struct {
        const char *FName, *FText;
        std::string FExpect;
    } pages[] = {
        {"a.html", "<table><blink>^", "</table> </blink> tbody tr"},
        {"a.html", "<ul>^", "</ul> li"},
        {"a.html", "<div>t</div>^", "a b body br div form head html img p script span style table title ul"},
        {"a.html", "<p ^ <b>", "align class"},
        {"a.html", "<p><a target=\"_s^", "_self"},
        {"a.html", "<p>&ag^", "agrave"},
        {"a.html", "<p>&am^p", "amp"},
        {"a.html", "<p>&Aac^", "aacute Aacute"},
        {"a.html", "<!DOCTYPE a PUBLIC '-//W3C//DTD HTML 4.01//EN'><p>^", "</p> a b br img span"},
        {"a.html", "<?xml version='1.0'?><p>^", "</p> a b br img span"},
        {"a.shelf", "<s:shelf xmlns:s='urn:shelf'><^ ", "label s:book s:shelf"},
        {"a.shelf", "<shelf wood='x' ^", ""},
        {"a.crate", "<crate><bottle>^", "</crate> </bottle>"},
        {"a.none", "<a ^", "-"},
        {"a.xsl", "<xsl:stylesheet><xsl:template match=\"x\"><ul>^",
         "</xsl:stylesheet> </xsl:template> </ul> li xsl:if xsl:text"},
        {"a.xsl", "<xsl:stylesheet><xsl:template match=\"x\"><xsl:if test=\"y\"><^ ",
         "a b body br div form head html img p script span style table title ul xsl:if xsl:text"},
        {"a.xsl", "<xsl:stylesheet><xsl:template match=\"x\"><p><xsl:text><^ ", ""},
        {"a.xsl", "<ul xsl:version=\"1.0\"><^ ", "li xsl:if xsl:text"},
        {"a.xsl", "<xsl:stylesheet><^ ", "xsl:template"},
        {"a.aspx", "<%@ Page ^", "Language"},
        {"a.aspx", "<%@ Page %>\n<ta^ ", "table"},
        {"a.aspx", "<body><%@ P^ %>", "@ page"},
        {"a.aspx", "<body><asp:button t^", "Text"},
        {"a.ascx", "<^ ", "a asp:button b br div form img p span table ul"},
        {"a.resx", "<root><^ ", "data"},
        {"a.resx", "<root><data ^", "name"},
        {"a.wml", "<wml><card><^ ", "p"},
        {"a.wml", "<wml><card><p>&am^", ""},
        {"a.wml", "<wml><card><p mode='^'>", "nowrap wrap"},
    };
    std::vector<std::string> fresh, wrong;
    for (const auto& page : pages) {
        TTestHost host(page.FText, page.FName);
        RegisterSchemas();
        std::string items = host.Offer();
        wrong.push_back(items == page.FExpect ? "" : "at first: " + items);
        fresh.push_back(Outcome(host));
    }
    TTestHost host{THostOptions()};
    RegisterSchemas();
    for (size_t i = 0; i < fresh.size(); ++i) {
        for (const auto& before : pages) {
            host.OpenText(before.FText, before.FName);
            host.Offer();
            host.OpenText(pages[i].FText, pages[i].FName);
            std::string items = host.Offer(), outcome = Outcome(host);
            if (items != pages[i].FExpect || outcome != fresh[i])
                wrong[i] = "after " + std::string(before.FText) + ": " + items + "\n" + outcome +
                           "\ninstead of\n" + fresh[i];
        }
        EXPECT_EQ(wrong[i], "") << pages[i].FText;
    }
}

}  // namespace
}  // namespace caretwell::test
