// The buffer against the plainest possible one: a string that is searched from its start.
#include <gtest/gtest.h>

#include <random>

#include "markup/Text.h"
#include "memory/TextBuffer.h"
#include "support/Split.h"

namespace caretwell {
namespace {

struct TPlainLine {
    size_t FStart, FEnd;
};

std::vector<TPlainLine> PlainLines(const std::string& text) {
    std::vector<TPlainLine> lines;
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\n' && text[i] != '\r') continue;
        lines.push_back({start, i});
        if (i + 1 < text.size() && text[i] + text[i + 1] == '\n' + '\r') ++i;
        start = i + 1;
    }
    lines.push_back({start, text.size()});
    return lines;
}

// Every answer about places, asked in an order of its own.
void CheckPlaces(const TTextBuffer& buffer, const std::string& text, std::mt19937& random, int count) {
    ASSERT_EQ(buffer.Text(), text);
    auto lines = PlainLines(text);
    for (int i = 0; i < count; ++i) {
        size_t place = random() % (text.size() + 1);
        size_t line = 0;
        while (line + 1 < lines.size() && lines[line + 1].FStart <= place) ++line;
        int32_t offset = static_cast<int32_t>(place);
        ASSERT_EQ(buffer.LineAt(offset), static_cast<int32_t>(line + 1)) << place;
        ASSERT_EQ(buffer.LineStartAt(offset), static_cast<int32_t>(lines[line].FStart));
        ASSERT_EQ(buffer.LineEndAt(offset), static_cast<int32_t>(lines[line].FEnd));
        ASSERT_EQ(buffer.LineStart(static_cast<int32_t>(line + 1)), static_cast<int32_t>(lines[line].FStart));
        if (place > lines[line].FEnd || buffer.CharacterStart(offset) != offset) continue;
        std::string_view before =
            std::string_view(text).substr(lines[line].FStart, place - lines[line].FStart);
        int32_t column = CountCharacters(before) + 1;
        ASSERT_EQ(buffer.ColumnAt(offset), column);
        ASSERT_EQ(buffer.OffsetOf(static_cast<int32_t>(line + 1), column), offset);
    }
}

TEST(TextBuffer, RandomChangesAgainstAString) {
    std::mt19937 random(11);
    auto below = [&](size_t n) { return random() % n; };
    auto pieces = Split(
        "\n \r \r\n \n\r \n\n\n abc \xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80 \xFF \xC0\x80 \xED\xA0\x80 \xC3 "
        "\x80 \t");
    pieces.emplace_back(1, '\0');
    for (int session = 0; session < 60; ++session) {
        std::string text;
        // Some texts reach over several marks of the line index, some are one long line.
        for (size_t i = below(session % 4 ? 30 : 6000); i > 0; --i)
            text += session % 8 == 4 ? std::string("abcdef") : pieces[below(pieces.size())];
        TTextBuffer buffer(text);
        const std::string original = text;
        for (int step = 0; step < 40; ++step) {
            {
                TUndoStep all(buffer);
                for (size_t part = below(3) + 1; part > 0; --part) {
                    size_t offset = below(text.size() + 1);
                    size_t count = std::min(text.size() - offset, below(4) ? below(4) : below(9000));
                    std::string inserted;
                    for (size_t i = below(5); i > 0; --i) inserted += pieces[below(pieces.size())];
                    text.replace(offset, count, inserted);
                    ASSERT_TRUE(
                        buffer.Replace(static_cast<int32_t>(offset), static_cast<int32_t>(count), inserted));
                    if (below(2)) CheckPlaces(buffer, text, random, 3);
                }
            }
            CheckPlaces(buffer, text, random, 20);
        }
        while (buffer.Undo()) CheckPlaces(buffer, buffer.Text(), random, 2);
        ASSERT_EQ(buffer.Text(), original);
        while (buffer.Redo()) continue;
        ASSERT_EQ(buffer.Text(), text);
    }
}

TEST(TextBuffer, Edges) {
    TTextBuffer empty("");
    EXPECT_EQ(empty.LineAt(5), 1);
    EXPECT_EQ(empty.ColumnAt(-5), 1);
    EXPECT_EQ(empty.OffsetOf(INT32_MAX, INT32_MAX), 0);
    EXPECT_EQ(empty.LineBreak(), "\n");
    EXPECT_FALSE(empty.Undo());
    EXPECT_EQ(empty.At(0), '\0');
    char bytes[4];
    EXPECT_EQ(empty.Read(0, bytes, 4), 0);

    TTextBuffer text(
        "\xEF\xBB\xBF"
        "ab\r\ncd");  // a byte order mark is text
    EXPECT_EQ(text.ColumnAt(4), 3);
    EXPECT_EQ(text.LineBreak(), "\r\n");
    EXPECT_EQ(text.OffsetOf(0, -3), 0);
    EXPECT_EQ(text.OffsetOf(9, 9), 9);
    EXPECT_EQ(text.Read(7, bytes, INT32_MAX), 2);
    EXPECT_EQ(text.Read(-1, bytes, 1), 0);
    text.SetReadOnly(true);
    EXPECT_FALSE(text.Replace(0, 1, ""));
    EXPECT_EQ(text.Size(), 9);
}

TEST(TextBuffer, Steps) {
    TTextBuffer buffer("");
    buffer.Replace(0, 0, "a");
    buffer.Replace(1, 0, "b");  // without a step each change is one of its own
    EXPECT_EQ(buffer.Undo(), 1);
    EXPECT_EQ(buffer.Text(), "a");
    buffer.Replace(1, 0, "c");
    EXPECT_FALSE(buffer.Redo());  // what was taken back is gone with the next change
    EXPECT_EQ(buffer.Text(), "ac");
    {
        TUndoStep outer(buffer);
        buffer.Replace(2, 0, "d");
        TUndoStep inner(buffer);
        buffer.Replace(0, 1, "");
    }
    EXPECT_EQ(buffer.Text(), "cd");
    EXPECT_EQ(buffer.Undo(), 2);
    EXPECT_EQ(buffer.Text(), "ac");
    EXPECT_EQ(buffer.Redo(), 0);
    EXPECT_EQ(buffer.Text(), "cd");
}

// A line that the index has marked ceases to begin where it did.
TEST(TextBuffer, BreaksJoinAtALine) {
    TTextBuffer buffer(std::string(5000, 'x') + "\r" + std::string(5000, 'y'));
    EXPECT_EQ(buffer.LineStartAt(buffer.Size()), 5001);
    buffer.Replace(5001, 0, "\n");
    EXPECT_EQ(buffer.LineStartAt(buffer.Size()), 5002);
    EXPECT_EQ(buffer.LineAt(buffer.Size()), 2);
}

TEST(TextBuffer, MarksStayAtTheirText) {
    struct TCase {
        int32_t FOffset, FCount;
        std::string_view FText;
        int32_t FBefore, FBehind;  // where marks at 4 of "abcdefgh" go, by their side
    };
    const TCase cases[] = {
        {0, 0, "xy", 6, 6},  {4, 0, "xy", 4, 6},  {5, 2, "", 4, 4},  {0, 2, "", 2, 2},  {2, 4, "", 2, 2},
        {2, 4, "xyz", 2, 5}, {2, 2, "xyz", 2, 5}, {4, 2, "x", 4, 5}, {0, 99, "", 0, 0},
    };
    for (const auto& c : cases) {
        TTextBuffer buffer("abcdefgh");
        TTextMark before(buffer, 4, TTextMark::msBefore), behind(buffer, 4, TTextMark::msBehind);
        buffer.Replace(c.FOffset, c.FCount, c.FText);
        EXPECT_EQ(before.Offset(), c.FBefore) << c.FOffset << " " << c.FText;
        EXPECT_EQ(behind.Offset(), c.FBehind) << c.FOffset << " " << c.FText;
    }
}

}  // namespace
}  // namespace caretwell
