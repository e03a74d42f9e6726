// What a choice is said to write is what it writes: the edit that is composed for an
// item, done by hand, gives the document that the choice gives.
#include <gtest/gtest.h>

#include <random>

#include "support/Invariants.h"

namespace caretwell::test {
namespace {

/// The bytes with their caret, or nothing for an edit that cannot be done by hand.
std::optional<std::string> DoneByHand(std::string text, const TChoiceEdit& edit, int32_t& caret) {
    if (edit.Way == TChoiceEdit::ceDialog) return {};
    if (edit.Way == TChoiceEdit::ceNothing) return text;
    text.replace(static_cast<size_t>(edit.Start), static_cast<size_t>(edit.End - edit.Start),
                 ToUtf8(edit.Text));
    if (edit.Way != TChoiceEdit::ceWrite) caret = edit.CaretOffset;
    return text;
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
                TChoiceEdit edit = host.Manager().ComposeChoice(driver.SelectedIndex());
                ASSERT_EQ(FaultOfEdit(edit, text.Size()), "") << page << " at " << start;
                ++kinds[static_cast<int>(host.Manager().GetListKind())];
                int32_t caret = host.Document().View().CaretOffset();
                driver.PressKey(ekEnter);
                auto expected = DoneByHand(before, edit, caret);
                if (expected) {
                    ASSERT_EQ(text.Text(), *expected) << "caret " << start << " in " << before;
                }
                if (expected && edit.Way != TChoiceEdit::ceWrite) {
                    ASSERT_EQ(host.Document().View().CaretOffset(), caret)
                        << "caret " << start << " in " << before;
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

}  // namespace
}  // namespace caretwell::test
