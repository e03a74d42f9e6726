// What a choice is said to write is what it writes: the edit that is composed for an
// item, done by hand, gives the document that the choice gives.
#include <gtest/gtest.h>

#include <random>

#include "support/Outcome.h"

namespace caretwell::test {
namespace {

std::string WithEdit(std::string text, const TNibEdit& edit) {
    return text.replace(static_cast<size_t>(edit.Start), static_cast<size_t>(edit.End - edit.Start),
                        ToUtf8(edit.Text));
}

const std::string Pages[] = {
    "<!DOCTYPE html><html><body bgcolor=\"\">\n<p class=a align=\"le\">it's <b>x</p><ul><li>a<li><a href=x "
    "target=\"_s\">"
    "y</ul><div><table><td bgcolor=\"\"><tr><td>&amp; &a <img src=\"a>b\" alt=''><br/><nothing "
    "at=1><p</nothing>\n"
    "<form action><input checked type=\"te\" type=\"\"><a target=_b></form>&ag;<sp\n",
    "<div>\xC3\xA9<a target=_\xC3\xA9l><a target='\xE6\x97\xA5'><\xC3<p>\xFF<\xFF\xFE<s\xC3\xA9 &\xC3\xA9<a "
    "\xC3<a t\xE9 ><a target=\xFF\xC3>",
    "<?xml version='1.0'?><p><br><img src='' ><br /><p align=>x<b></p>\r\n<a target=\"_t><p class=\"y\"><a "
    "target=\"",
    "<p align='c\"r' al ign = right><p align = l><input type=text/><input type=\"text\"/>< p></ p></p "
    "></u><a target=_t ",
};

class TCompose : public testing::TestWithParam<bool> {};

TEST_P(TCompose, IsWhatDoneWrites) {
    std::mt19937 random(11);
    int kinds[4] = {};
    for (const std::string& page : Pages) {
        THostOptions options;
        options.Answers = {{"color", "#ff0000"}};
        TTestHost host(std::move(options));
        host.OpenBytes(page, "page.html");
        host.Manager().SetAutoQuote(GetParam());
        TTextBuffer& text = host.Document().Text();
        for (int i = 0; i < 1500; ++i) {
            TEditorDriver& driver = host.Driver();
            host.Document().View().SetCaretOffset(static_cast<int32_t>(random() % (page.size() + 1)));
            auto start = host.Document().View().CaretOffset();
            if (driver.OpenList()) {
                // On the way a letter is typed, or one is taken back.
                if (random() % 3 == 0) driver.TypeChar(U"_tlsa"[random() % 5]);
                else if (random() % 4 == 0 && driver.FilterStart() < start) driver.PressKey(ekBackspace);
            }
            if (driver.ItemCount() > 0) {
                auto item = static_cast<int32_t>(random() % static_cast<uint32_t>(driver.ItemCount()));
                ASSERT_TRUE(driver.Select(driver.Item(item).Name));
                std::string before = text.Text();
                constexpr char16_t keys[] = {13, 13, 9, ' ', '>'};
                char16_t key = keys[random() % std::size(keys)];
                TNibEdit edit;
                bool isWriting = host.Manager().ComposeChoice(driver.SelectedIndex(), key, edit);
                ++kinds[static_cast<int>(host.Manager().GetListKind())];
                bool closes = false, accepts = false, displayParams = false;
                host.Manager().OnEditorKey(key, closes, accepts);
                host.Manager().Done(true, displayParams);
                if (edit.EditorId.empty()) {
                    ASSERT_EQ(text.Text(), isWriting ? WithEdit(before, edit) : before)
                        << "caret " << start << " in " << before;
                }
                if (isWriting && edit.EditorId.empty()) {
                    ASSERT_EQ(host.Document().View().CaretOffset(), edit.Caret)
                        << "caret " << start << " in " << before;
                    ASSERT_NE(host.Manager().GetKeyUse(), TNibKeyUse::Unused);
                }
            }
            driver.Dismiss();
            while (driver.Undo()) continue;
            ASSERT_EQ(text.Text(), page);
        }
    }
    for (int count : kinds) EXPECT_GT(count, 25);
}
INSTANTIATE_TEST_SUITE_P(AutoQuote, TCompose, testing::Bool());

/// Document and caret after an item of the user's list was chosen by a key, or the list dismissed
/// by it, and what became of the key.
std::string Chosen(const char* text, const char* item, char16_t key, bool autoQuote, bool accepts) {
    THostOptions options;
    options.Answers = {{"uri", "a b"}};
    TTestHost host(text, "page.html", std::move(options));
    host.Manager().SetAutoQuote(autoQuote);
    TEditorDriver& driver = host.Driver();
    if (!driver.OpenList() || !driver.Select(ToUtf16(item))) return "not offered";
    bool closes = false, isAccepting = false, displayParams = false;
    host.Manager().OnEditorKey(key, closes, isAccepting);
    host.Manager().Done(accepts, displayParams);
    constexpr const char* uses[] = {" unused", "", " written"};
    return host.Text() + uses[static_cast<int>(host.Manager().GetKeyUse())];
}

TEST(Choice, OfAnItem) {
    constexpr struct {
        const char *FText, *FItem;
        char16_t FKey;
        const char* FExpect;
        bool FAutoQuote = false, FAccepts = true;
    } cases[] = {
        // A list that is dismissed: the key alone, in a tag.
        {"<p ali^>\n", "align", ' ', "<p ali ^>\n written", false, false},
        {"<p ali^>\n", "align", 9, "<p ali\t^>\n written", false, false},
        {"<p>&am^\n", "amp", ' ', "<p>&am^\n unused", false, false},
        {"<p>^\n", "b", ' ', "<p>^\n unused", false, false},
        // The blank that chooses stays; a Tab is no tab character.
        {"<p>^\n", "b", ' ', "<p><b ^\n written"},
        {"<p>^\n", "b", 9, "<p><b ^\n"},
        {"<p>^\n", "img", ' ', "<p><img alt src=^\n"},
        {"<p>&am^\n", "amp", ' ', "<p>&amp; ^\n written"},
        {"<p>&am^\n", "amp", ';', "<p>&amp;^\n written"},
        // ">" means elements alone, and of the text before the caret only the word.
        {"<p>&am^\n", "amp", '>', "<p>&am>^\n written"},
        {"<div><p>^\n", "</p>", '>', "<div><p></p>^\n written"},
        {"<p>foo/b^\n", "b", '>', "<p>foo/<b>^\n written"},
        {"<p>x<sp^\n", "span", '>', "<p>x<span>^\n written"},
        // Inside a word the whole word goes.
        {"<p>&am^p;\n", "amp", 13, "<p>&amp^;\n"},
        {"<p><sp^i>\n", "span", 13, "<p><span^>\n"},
        {"<p ali^g=x>\n", "align", 13, "<p align^=x>\n"},
        {"<p ^id=x>\n", "class", 13, "<p class^ id=x>\n"},
        // The "=" that is there, no value to come, a value right before.
        {"<p ^=left>\n", "align", ' ', "<p align ^=left>\n written"},
        {"<p ^=left>\n", "align", 13, "<p align^=left>\n", true},
        {"<form><input ^>\n", "checked", ' ', "<form><input checked ^>\n written"},
        {"<form><input ^>\n", "checked", 13, "<form><input checked^>\n", true},
        {"<p class=\"x\"^ >\n", "align", ' ', "<p class=\"x\" align= ^ >\n written"},
        // Values.
        {"<p align=^>\n", "left", ' ', "<p align=\"left\" ^>\n written"},
        {"<p align=^center>\n", "left", 13, "<p align=\"left\"^>\n"},
        {"<p align=\"left^\">\n", "left", 13, "<p align=\"left\"^>\n"},
        // Of several names the one at the caret; a value that is no list of names goes whole.
        {"<p align=\"one l^x two\">\n", "left", 13, "<p align=\"one left two\"^>\n"},
        {"<p align=\"(one) l^\">\n", "left", 13, "<p align=\"left\"^>\n"},
        // An open quote before other attributes; one that stands after the caret.
        {"<p align=\"l^ class=\"y\">x\n", "left", 13, "<p align=\"left\"^ class=\"y\">x\n"},
        {"<p align=\"^ class='y'>x\n", "left", 13, "<p align=\"left\"^ class='y'>x\n"},
        {"<a href=\"x?y=^\">\n", "uri...", 13, "<a href=\"a b\"^>\n"},
        {"<p align=^\"noopener noreferrer\">\n", "left", 13, "<p align=\"left\"^>\n"},
        {"<p align=^ \"a b\" class=x>\n", "left", 13, "<p align= \"left\"^ class=x>\n"},
        {"<p align=\"\n^\n\">\n", "left", 13, "<p align=\"left\"^>\n"},
        {"<p align='^>x\n", "left", 13, "<p align='left'^>x\n"},
        // What follows is none of the value.
        {"<p align=^class=\"y\">\n", "left", 13, "<p align=\"left\"^ class=\"y\">\n"},
        {"<p align=^%>\n", "left", 13, "<p align=\"left\"^ %>\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Chosen(c.FText, c.FItem, c.FKey, c.FAutoQuote, c.FAccepts), c.FExpect)
            << c.FText << c.FItem;
}

/// The text after a key that stands before the caret was asked about; the same must come of
/// the edits that were composed for it.
std::string Helped(const std::string& text, char16_t key, bool autoQuote) {
    TTestHost host(text);
    host.Manager().SetAutoQuote(autoQuote);
    TNibCodeInsightType type = citNone;
    TNibInvokeType invokeType = itNone;
    host.Manager().GetCodeInsightType(key, 0, type, invokeType);
    std::vector<TNibEdit> edits;
    host.Manager().ComposeAids(edits);
    std::string byHand = host.Document().Text().Text();
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) byHand = WithEdit(byHand, *edit);
    int32_t caret = edits.empty() ? host.Document().View().CaretOffset() : edits[0].Caret;
    host.Driver().OpenListFor(key);
    EXPECT_EQ(host.Text(), byHand.insert(static_cast<size_t>(caret), "^"));
    return host.Text();
}

TEST(Choice, AidsWhileTyping) {
    const std::string xml = "<?xml version=\"1.0\"?>";
    const struct {
        std::string FText;
        char16_t FKey;
        std::string FExpect;
        bool FAutoQuote = false;
    } cases[] = {
        {"<div><ul>^\n", '>', "<div><ul>^</ul>\n"},
        {xml + "<p><br>x<b>^\n", '>', xml + "<p><br>x<b>^</b>\n"},
        {xml + "<p><br >x<br>^\n", '>', xml + "<p><br >x<br />^\n"},
        {"<p><a target=^>\n", '=', "<p><a target=\"^\">\n", true},
        {"<p><a target=^title=x>\n", '=', "<p><a target=^title=x>\n", true},
        {"<p><a target=x^>\n", 0, "<p><a target=x^>\n", true},
        {"<p><a target=\"x^\">\n", 0, "<p><a target=\"x^\">\n", true},
        // A ">" that ends no opening tag asks for nothing.
        {"<div><p>one <br>^\n", '>', "<div><p>one <br>^\n"},
        {"<div><p>one <b/>^\n", '>', "<div><p>one <b/>^\n"},
        {"<div><p>one </b>^\n", '>', "<div><p>one </b>^\n"},
        {"<div><p>x</p>^\n", '>', "<div><p>x</p>^\n"},
        {"<div><p>5 >^ 3\n", '>', "<div><p>5 >^ 3\n"},
        {"<div><p><!-- x -->^\n", '>', "<div><p><!-- x -->^\n"},
        {"<div><p><?php x ?>^\n", '>', "<div><p><?php x ?>^\n"},
        {"<div><p></>^\n", '>', "<div><p></>^\n"},
    };
    for (const auto& c : cases) EXPECT_EQ(Helped(c.FText, c.FKey, c.FAutoQuote), c.FExpect) << c.FText;
}

}  // namespace
}  // namespace caretwell::test
