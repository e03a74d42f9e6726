// What is offered at a caret, on the small schema.
#include <gtest/gtest.h>

#include "support/TestHost.h"

namespace caretwell::test {
namespace {

TEST(Proposals, AtACaret) {
    const struct {
        const char *FText, *FExpect, *FName = "page.html";
    } cases[] = {
        {"^", "html"},
        {"<ul>^ ", "</ul> li"},
        {"<ul><^ ", "li"},
        {"<ul><l^ ", "li"},
        {"<ul><li><p>x ^ ", "</ul> </li> </p> a b br img span"},
        {"<ul><!-- x -->^ ", "</ul> li"},
        {"<?xml version='1.0'?><ul>^ ", "</ul> li"},
        {"<a ^>", "href target title"},
        {"<a t^>", "target title"},
        {"<a href='x' ^>", "target title"},  // not what is written already
        {"<a target=\"^\">", "_blank _parent _self _top"},
        {"<a target=\"_s^\">", "_self"},
        {"<input checked=^>", "false true"},
        {"<td bgcolor=\"^\">", "color..."},
        {"<a href=\"^\">", "uri..."},
        {"<a title=\"^\">", "-"},  // no values
        {"<a target=^", "_blank _parent _self _top"},
        {"<a target = _s^ title=x>", "_self"},
        {"<a target = ^x>", "href title"},  // the next name, the value being still to come
        {"<a target=\"x\"/^>", "href title"},
        {"<!--><!---><ul><^ ", "li"},
        {"<ul><zz^ ", "-"},
        {"<!DOCTYPE html SYSTEM 'css.xml'><ul><^ ", "li"},
        {"<nothing ^>", "-"},
        {"<input checked ^>", "type"},  // a bare name has no value to complete
        {"<a href ^", "target title"},
        {"<a hr^", "href"},
        {"<p>&a^ ", "aacute Aacute agrave amp"},
        {"<p>&ag^ ", "agrave"},
        // Nothing in raw content, but a text area is text like any other: what is open can be closed there.
        {"<script>a ^</script>", "-"},
        {"<style>^</style>", "-"},
        {"<!DOCTYPE ^>", "-"},
        {"<% x ^ %>", "-"},
        {"<p><!-- ^ -->", "-"},
        {"<p><!--^-->", "-"},
        {"<?xml ^?>", "-"},
        {"<p><?php echo '<b ^'; ?>", "-"},
        {"<%-- ^ --%>", "-"},
        {"<textarea>a ^ ", "</textarea>"},
        // A user control stands in a body, from the first list on.
        {"^ ", "a asp:button b br div form img p span table ul", "part.ascx"},
    };
    for (const auto& c : cases) EXPECT_EQ(Propose(c.FText, c.FName), c.FExpect) << c.FText;
}

// Nothing is inserted, so nothing moves the caret.
TEST(Proposals, ReadOnlyText) {
    TTestHost host("<?xml version='1.0'?><p><br>^ x");
    std::string before = host.Text();
    host.Document().Text().SetReadOnly(true);
    EXPECT_TRUE(host.Driver().OpenList());
    EXPECT_EQ(host.Text(), before);
}

}  // namespace
}  // namespace caretwell::test
