// Whole sessions of typing: document, keys, document afterwards; and undo back to the
// first byte after each.
#include <gtest/gtest.h>

#include <random>

#include "support/KeyRules.h"
#include "support/TestHost.h"

namespace caretwell::test {
namespace {

/// Types keys: characters, and "{Enter}" and the like.
void Type(TEditorDriver& driver, std::string_view keys) {
    const struct {
        std::string_view FName;
        TEditorKey FKey;
    } named[] = {{"{Enter}", ekEnter}, {"{Tab}", ekTab},     {"{Esc}", ekEscape},
                 {"{Up}", ekUp},       {"{Down}", ekDown},   {"{Backspace}", ekBackspace},
                 {"{Left}", ekLeft},   {"{Right}", ekRight}, {"{Ctrl+Space}", ekCtrlSpace}};
    while (!keys.empty()) {
        auto key = std::find_if(std::begin(named), std::end(named),
                                [&](auto& k) { return keys.starts_with(k.FName); });
        if (key != std::end(named)) {
            driver.PressKey(key->FKey);
            keys.remove_prefix(key->FName.size());
        } else {
            driver.TypeChar(static_cast<unsigned char>(keys[0]));
            keys.remove_prefix(1);
        }
    }
}

std::string Typed(std::string_view text, std::string_view keys, bool autoQuote, const char* name) {
    THostOptions options;
    options.Answers = {{"color", "#ff0000"}, {"uri", "logo.png"}};
    TTestHost host(text, name, std::move(options));
    std::string before = host.Document().Text().Text();
    host.Manager().SetAutoQuote(autoQuote);
    Type(host.Driver(), keys);
    std::string result = host.Text() + (host.Driver().IsOpen() ? " [" + host.Items() + "]" : "");
    host.Driver().Dismiss();
    while (host.Driver().Undo()) continue;
    EXPECT_EQ(host.Document().Text().Text(), before) << keys;
    return result;
}

TEST(Typing, Sessions) {
    const std::string sheet = "<xsl:stylesheet xmlns:xsl=\"http://www.w3.org/1999/XSL/Transform\">",
                      broken = "<xsl:template match=\"/\"><xsl:if test=\"a\"</xsl:template>";
    const struct {
        std::string FText, FKeys, FExpect;
        bool FAutoQuote = false;
        const char* FName = "page.html";
    } cases[] = {
        {"<div>^\n", "<ul{Enter}", "<div><ul^\n"},
        {"<div>^\n", "<ul>", "<div><ul>^</ul>\n"},           // its closing tag comes along
        {"<div>^\n", "<u{Down}{Up}>", "<div><ul>^</ul>\n"},  // an element that was picked
        {"<div><di^\n", "{Ctrl+Space}{Enter}", "<div><div^\n"},
        {"<div>^\n", "{Ctrl+Space}{Down}{Enter}", "<div><a^\n"},  // the closing tag stands first
        {"<div>^\n", "{Ctrl+Space}{Enter}", "<div></div>^\n"},
        {"<div>^\n", "<im{Enter}", "<div><img^\n"},
        {"<div>^\n", "{Ctrl+Space}im{Enter}", "<div><img alt src=^\n"},  // required attributes come along
        {"<p>x</p^\n", "{Ctrl+Space}", "<p>x</p^\n [</p>]"},
        {"<div>^\n", "<u{Esc}", "<div><u^\n"},
        {"<div>^\n", "<xyz>", "<div><xyz>^</xyz>\n"},
        {"^", "<ht{Enter}>", "<html>^</html>"},
        {"<ul><li>x^\n", "</{Enter}", "<ul><li>x</li>^\n"},  // text before the tag is none of it
        {"<div><ul><li>x^\n", "</d{Enter}", "<div><ul><li>x</div>^\n"},
        {"<div><ul><li>x</^\n", "{Ctrl+Space}", "<div><ul><li>x</^\n [</div> </ul> </li>]"},
        {"<div><ul><li>x</^>\n", "{Ctrl+Space}u{Enter}", "<div><ul><li>x</ul>^\n"},
        {"<div><ul><li>x</l^\n", "{Ctrl+Space}{Enter}", "<div><ul><li>x</li>^\n"},
        {"<ul><li>x</table^\n", "{Ctrl+Space}{Down}{Enter}", "<ul><li>x</li>^\n"},
        {"<b>\xC3\xA9^\xC3\xA9</b>\n", "<sp{Enter}>", "<b>\xC3\xA9<span>^</span>\xC3\xA9</b>\n"},
        {"^\n", "<%@ pa{Enter}", "<%@ page^\n", false, "a.aspx"},  // directives open by themselves
        // Attributes.
        {"<p>\n<a^\n", " ", "<p>\n<a ^\n [href target title]"},  // a blank in a tag opens its list
        {"<p ^>\n", "class=\"a\" al{Enter}", "<p class=\"a\" align^>\n"},
        {"<p title=\"a^\">\n", " ", "<p title=\"a ^\">\n"},
        {"<p>a^\n", " ", "<p>a ^\n"},
        {"<p>\n^\n", "<a ", "<p>\n<a ^\n [href target title]"},
        {"<p><a hr^>x</a>\n", "{Ctrl+Space}{Enter}", "<p><a href^>x</a>\n"},
        {"<p><a hr^>x</a>\n", "{Ctrl+Space}{Tab}", "<p><a href=^>x</a>\n [uri...]"},
        {"<p><a ta^ = x>\n", "{Ctrl+Space}{Enter}", "<p><a target^ = x>\n"},
        {"<p><a href=x^>\n", "{Esc} ", "<p><a href=x ^>\n [target title]"},
        {"<p><a target=^>x\n", "{Ctrl+Space}{Enter}", "<p><a target=\"_blank\"^>x\n"},
        {"<p><a target=\"^\">x\n", "{Ctrl+Space}_s{Enter}", "<p><a target=\"_self\"^>x\n"},
        {"<p><a target=\"_p^\">it's\n", "{Ctrl+Space}{Enter}", "<p><a target=\"_parent\"^>it's\n"},
        // A quote that was never closed: the page behind it stays.
        {"<p><a target=\"^>x</a><p class=\"y\">\n", "{Ctrl+Space}{Enter}",
         "<p><a target=\"_blank\"^>x</a><p class=\"y\">\n"},
        {"<p><a target=\"_t^", "{Ctrl+Space}{Enter}", "<p><a target=\"_top\"^"},
        {"<table><td bgcolor=^>\n", "{Ctrl+Space}{Enter}", "<table><td bgcolor=\"#ff0000\"^>\n"},
        {"<p><img src=\"^\">\n", "{Ctrl+Space}{Enter}", "<p><img src=\"logo.png\"^>\n"},
        // A value without quotes: typed on, taken back, broken, before "/>", behind one of its name.
        {"<p><a target=_bl^>x", "{Ctrl+Space}{Backspace}{Backspace}s{Enter}", "<p><a target=\"_self\"^>x"},
        {"<p><a target=_t^", "{Ctrl+Space}{Enter}", "<p><a target=\"_top\"^"},
        {"<p><a target=\xFF^>x", "{Ctrl+Space}{Down}{Enter}", "<p><a target=\"_parent\"^>x"},
        {"<p><a target=_t^op>x", "{Ctrl+Space}{Enter}", "<p><a target=\"_top\"^>x"},
        {"<p><a target=^title=\"x\">", "{Ctrl+Space}{Enter}", "<p><a target=\"_blank\"^ title=\"x\">"},
        {"<p><a ^title=\"x\" rel='y'>", "target=\"_t{Enter}", "<p><a target=\"_top\"^ title=\"x\" rel='y'>"},
        {"<p><a target=_t^/>x", "{Ctrl+Space}{Enter}", "<p><a target=\"_top\"^/>x"},
        {"<p><a target=x target=_t^>", "{Ctrl+Space}{Enter}", "<p><a target=x target=\"_top\"^>"},
        {"<p><a target=_t^> <!-- x", "{Ctrl+Space}{Enter}", "<p><a target=\"_top\"^> <!-- x"},
        {"<p>some ^b x</p>\n", "<sp{Enter}", "<p>some <span^b x</p>\n"},  // before a word that is a name
        {"<p ^>\n", "&", "<p &^>\n [align class]"},
        {"<p ^>\n", "{Ctrl+Space}>", "<p >^</p>>\n"},
        {"<p ^>\n", "{Ctrl+Space}\"", "<p \"^>\n"},
        // Entities.
        {"<p>^\n", "&am{Enter}", "<p>&amp;^\n"},
        {"<p>^;\n", "&am{Enter}", "<p>&amp^;\n"},
        {"<p>&am^p;\n", "{Ctrl+Space}{Enter}", "<p>&amp^;\n"},
        // The word after the caret stays, where it began there when the list came.
        {"<p>^text</p>\n", "&am{Enter}", "<p>&amp;^text</p>\n"},
        {"<p>^text;</p>\n", "&am{Enter}", "<p>&amp;^text;</p>\n"},
        {"<p>&^text</p>\n", "{Ctrl+Space}am{Enter}", "<p>&amp;^text</p>\n"},
        {"<p ^class=\"y\">\n", "{Ctrl+Space}al{Enter}", "<p align^ class=\"y\">\n"},
        {"<p c^lass=\"y\">\n", "&al{Enter}", "<p c& align^ lass=\"y\">\n"},
        {"<p>^\n", "&am;", "<p>&am;^\n"},
        {"<p>^\n", "&am{Enter};", "<p>&amp;^\n"},
        {"<p>^\n", "&am{Esc}", "<p>&am^\n"},
        // With quotes by themselves.
        {"<p><a hr^>x</a>\n", "{Ctrl+Space}{Enter}", "<p><a href=\"^\">x</a>\n", true},
        {"<p><a ta^>x</a>\n", "{Ctrl+Space}{Enter}{Ctrl+Space}_t{Enter}", "<p><a target=\"_top\"^>x</a>\n",
         true},
        {"<p><a target^>x</a>\n", "=_t{Enter}", "<p><a target=\"_top\"^>x</a>\n", true},
        {"<p><a target^>x</a>\n", "=", "<p><a target=\"^\">x</a>\n [_blank _parent _self _top]", true},
        {"<div>^\n", "{Ctrl+Space}im{Enter}", "<div><img alt src=\"\"^\n", true},
        // The ">" of a closing tag, before which another tag was left without one.
        {sheet + "^", broken, sheet + broken + "^", false, "a.xsl"},
        // What the engine has put in is its own until the caret leaves it or the text there changes.
        {"^", "<div><p>x</p></div>", "<div><p>x</p></div>^"},
        {"^", "<div>{Left}{Right}</div>", "<div></div>^</div>"},
        {"^", "<div>x{Backspace}</div>", "<div></div>^"},
        {"^", "<div>\n</div>", "<div>\n</div>^"},
        // A closing tag by hand of an element that was there before, with two of the engine's inside.
        {"<div>\n^</div>\n", "<p>a<p>b</div>", "<div>\n<p>a<p>b</div>^</div>\n"},
        {"<div>\n^\n", "<p>a</q>", "<div>\n<p>a</q>^</p>\n"},
        {"<div>\n^\n", "<p><b></b>x", "<div>\n<p><b></b>x^</p>\n"},
        {"<p>^</p>\n", "<b>{Backspace}{Backspace}i>x</i>", "<p><i>x</i>^</p>\n"},
        {"<p><a target^>x</a>\n", "{Enter}", "<p><a target\n^>x</a>\n"},
        {"<p><a ^>x</a>\n", "target=\"_top\" c", "<p><a target=\"_top\" c^>x</a>\n", true},
        {"<p><a ^>x</a>\n", "target=_top\" c", "<p><a target=\"_top\" c^>x</a>\n", true},
        {"<p><a ^>x</a>\n", "target={Enter}\"", "<p><a target=\"_blank\"^>x</a>\n", true},
        {"<p><a ^>x</a>\n", "target= \"_top\"", "<p><a target= \"_top\"^>x</a>\n", true},
        {"<p><a ^>x</a>\n", "target='_top' c", "<p><a target='_top' c^>x</a>\n", true},
        {"<p><a ^>x</a>\n", "target={Esc}\"_top\"", "<p><a target=\"_top\"^>x</a>\n", true},
        {"<p><a ^>x</a>\n", "target=_top c", "<p><a target=\"_top\" c^>x</a>\n", true},
        {"<p>^</p>\n", "<a target=><a target=x>", "<p><a target=><a target=\"x\">^</a></a></p>\n", true},
        {"<p><a ^>x</a>\n", "target=_to{Backspace}{Backspace}{Backspace}{Backspace}",
         "<p><a target=^>x</a>\n", true},
        {"<p><a ^>x</a>\n", "{Ctrl+Space}ta{Tab}\"_top\"", "<p><a target=\"_top\"^>x</a>\n", true},
        {"<p><a ^>x</a>\n", "{Ctrl+Space}ta{Enter}{Backspace}", "<p><a target=^>x</a>\n", true},
        // XML.
        {"<?xml version=\"1.0\"?>\n<p><br^\n", ">", "<?xml version=\"1.0\"?>\n<p><br />^\n"},
        {"<?xml version=\"1.0\"?>\n<p><br><br><img^ x\n", ">",
         "<?xml version=\"1.0\"?>\n<p><br><br><img />^ x\n"},
        {"<?xml version=\"1.0\"?>\n<p><br >\n<br^\n", ">", "<?xml version=\"1.0\"?>\n<p><br >\n<br />^\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Typed(c.FText, c.FKeys, c.FAutoQuote, c.FName), c.FExpect) << c.FText << " + " << c.FKeys;
}

// What is typed by hand, nothing taken from a list, comes out as it was typed.
TEST(Typing, ByHand) {
    const struct {
        std::string FText, FTyped;
        bool IsXml = false;
    } cases[] = {
        {"<p>^</p>\n", "Q & a session"},
        {"<p>^</p>\n", "Tom & Jerry met a dog, M&M & AT&T is it"},
        {"<p>^</p>\n", "x < y is a test &copy a b &lt; &eacute; &Eacute;"},
        {"<ul><li>a</li>\n^</ul>\n", "<li>b</li>"},
        {"<p>a\n^</p>\n", "<p class=\"x\">b</p>"},
        {"<p><a href=\"x\">one^</a></p>\n", "<a href=\"y\">z</a>"},
        {"<div>^</div>\n", "<HEAD><text><app a b c d></app></text></HEAD>"},
        {"<p>^</p>\n",
         "<input type=te name=x><input disabled name=\"x\"><option selected value=\"1\"></option>"},
        {"<p>^</p>\n", "<p align = \"left\" dir =rtl title=\"a b\" lang='en'></p>"},
        {"<div>^</div>\n", "<div x-data\n y></div><zz\n>z</zz>"},
        {"^", "<html><head><title>Hi</title></head><body><ul><li>a<li>b</ul></body></html>"},
        {"<ul>\n^\n</ul>\n", "<li>b</li>"},
        {"<script>^</script>\n", "if (a < b && c > d) e('</p>');"},
        {"<p><!-- ^ --></p>\n", "<b class=\"x\"> a > b"},
        {"<p>^</p>\n", "</q></i >", true},
        {"<p>^</p>\n", "<br></br><br /><b></b><img src=\"x\">\n<b>y</b> <br /></img>", true},
    };
    THostOptions options;
    options.SchemaFolder = CARETWELL_SOURCE_DIR "/schemas";
    TTestHost host(std::move(options));
    for (const auto& c : cases) {
        std::string text = (c.IsXml ? "<?xml version=\"1.0\"?>\n" : "") + c.FText;
        size_t caret = text.find('^');
        text.erase(caret, 1);
        host.OpenBytes(text, "page.html");
        host.Document().View().SetCaretOffset(static_cast<int32_t>(caret));
        Type(host.Driver(), c.FTyped);
        text.insert(caret, c.FTyped + "^");
        EXPECT_EQ(host.Text(), text) << c.FText << " + " << c.FTyped;
    }
}

// Any keys anywhere: nothing but the words at the caret changes.
TEST(Typing, RandomSessions) {
    const std::string page =
        "<!DOCTYPE html>\n<div id=\"a b\"><p class=x>one <b>tw\xC3\xA9\xFF</b> &amp; <br> <a "
        "target=\"_top\">three</a>\n"
        "<ul><li>four <img src=\"\"><!-- < five --> six</ul><script>a < b</script> "
        "<table><td>x</table></div>\n";
    const std::u32string keys = U"pbadiv<>/ =\"'&;!tabletarget_\u00E9\U0001F600";
    std::mt19937 random(11);
    auto below = [&](size_t n) { return static_cast<size_t>(random()) % n; };
    for (int session = 0; session < 120; ++session) {
        std::string text = (session % 3 == 0 ? "<?xml version=\"1.0\"?>\n" : "") + page;
        TTestHost host(text);
        host.Manager().SetAutoQuote(session % 2);
        host.Document().View().SetCaretOffset(static_cast<int32_t>(below(text.size() + 1)));
        for (int i = 0; i < 50; ++i) {
            bool isNamed = below(4) == 0;
            size_t named = below(9);
            std::string fault = isNamed ? PressAndJudge(host.Document(), static_cast<TEditorKey>(named))
                                        : TypeAndJudge(host.Document(), keys[below(keys.size())]);
            ASSERT_EQ(fault, "") << session << ' ' << i << ": " << host.Text();
        }
        host.Driver().Dismiss();
        while (host.Driver().Undo()) continue;
        ASSERT_EQ(host.Document().Text().Text(), text);
    }
}

}  // namespace
}  // namespace caretwell::test
