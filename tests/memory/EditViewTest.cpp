// What the engine asks of a view: positions in both forms, text next to the caret,
// blocks, readers and writers.
#include <gtest/gtest.h>

#include "markup/Text.h"
#include "memory/EditView.h"

namespace caretwell {
namespace {

TRef<TEditView> ViewOf(std::string text) {
    size_t caret = text.find('^');
    if (caret != text.npos) text.erase(caret, 1);
    auto view = MakeRef<TEditView>(MakeRef<TEditBuffer>(std::move(text), "a.html"));
    view->SetCaretOffset(caret == text.npos ? 0 : static_cast<int32_t>(caret));
    return view;
}

std::string TextOf(TEditView& view) {
    return view.Text().Text().insert(static_cast<size_t>(view.CaretOffset()), "^");
}

TEST(EditView, TakeText) {
    const TCharSet letters = TCharSet().WithRange('a', 'z').WithRange(192, 254);
    constexpr uint32_t Back = INibEditPosition::TakeBackwards, Visible = INibEditPosition::TakeVisible;
    struct TCase {
        std::string FText;
        TCharSet FChars;
        uint32_t FFlags;
        std::u16string FTaken;
    };
    const TCase cases[] = {
        {"<ab^cd>", letters, Back, u"ab"},
        {"<ab^cd>", letters, 0, u"cd"},
        {"^ab", letters, Back, u""},
        {"ab^", letters, 0, u""},
        {"a\xC3\xA9\xF0\x9F\x98\x80^x", letters, Back, u"a\u00E9\U0001F600"},
        {"a^\xE2\x82\xAC.", letters, 0, u"\u20AC"},
        {"a\x80^", letters, Back, u""},               // a stray byte is no letter
        {"a\xC3^", letters, Back, u"a\xFFFD"},        // half a character goes by its lead byte
        {"a\xC3\xA9^", TCharSet("\xA9"), Back, u""},  // never by its tail
        {"x = \"a b^", TCharSet(" \t"), Back | Visible, u"x = \"a b"},
        {"x\ny\tz^", TCharSet(" \t"), Back | Visible, u"y\tz"},
        {"x\ny^", TCharSet("\n").WithRange('a', 'z'), Back, u"x\ny"},
        {"x y^", TCharSet(), Back | 1, u""},  // half a flag adds nothing
    };
    for (const auto& c : cases) {
        auto view = ViewOf(c.FText);
        EXPECT_EQ(view->Position()->TakeText(c.FChars, c.FFlags), c.FTaken) << c.FText;
        EXPECT_EQ(TextOf(*view), c.FText);
    }
}

// Actions on the view's position, one letter each.
void Act(INibEditPosition& position, std::string_view actions) {
    for (char action : actions) switch (action) {
            case '<': position.MoveBy(0, -1); break;
            case '>': position.MoveBy(0, 1); break;
            case 'u': position.MoveBy(-1, 0); break;
            case 'd': position.MoveBy(1, 0); break;
            case 'B': position.MoveBy(INT32_MIN, INT32_MIN); break;
            case 'F': position.MoveBy(INT32_MAX, INT32_MAX); break;
            case 'e': position.MoveToLineEnd(); break;
            case 's': position.Save(); break;
            case 'r': position.Restore(); break;
            case '2': position.DeleteBack(2); break;
            case 'x': position.InsertChar('x'); break;
            case 'h': position.InsertChar(0xD83D); break;  // half a pair
        }
}

TEST(EditView, Position) {
    const char* const cases[][3] = {
        {"a\nbc^d\ne", "<", "a\nb^cd\ne"},
        {"a\nbc^d\ne", "<<<<", "a\n^bcd\ne"},
        {"a\nbc^d\ne", ">>>>", "a\nbcd^\ne"},
        {"a\nbc^d\ne", "u", "a^\nbcd\ne"},
        {"a\nbc^d\ne", "d", "a\nbcd\ne^"},
        {"a\nbc^d\ne", "B", "^a\nbcd\ne"},
        {"a\nbc^d\ne", "F", "a\nbcd\ne^"},
        {"a^\r\nb", "e", "a^\r\nb"},
        {"a\xF0\x9F\x98\x80^", "<", "a^\xF0\x9F\x98\x80"},
        {"a\xF0\x9F\x98\x80^", "<>", "a\xF0\x9F\x98\x80^"},
        {"ab\xF0\x9F\x98\x80^", "2", "a^"},
        {"abc^d", "2", "a^d"},
        {"a^b", "22", "^b"},
        {"ab^c", "s<xr", "axb^c"},     // saved places stay with their text
        {"ab^c", "s<s<xrr", "xab^c"},  // and nest
        {"ab^c", "r", "ab^c"},
        {"^", "xh", "x\xEF\xBF\xBD^"},
    };
    for (const auto& [before, actions, after] : cases) {
        auto view = ViewOf(before);
        Act(*view->Position(), actions);
        EXPECT_EQ(TextOf(*view), after) << before << " " << actions;
    }
}

TEST(EditView, BothFormsOfAPosition) {
    auto view = ViewOf(
        "\xC3\xA9\xFF"
        "b\r\nc^");
    EXPECT_EQ(view->CaretPos(), (TNibEditPos{2, 2}));
    EXPECT_EQ(view->EditPosToCharPos({3, 1}), (TNibCharPos{3, 1}));
    EXPECT_EQ(view->CharPosToEditPos({3, 1}), (TNibEditPos{3, 1}));
    EXPECT_EQ(view->CharPosToEditPos({1, 1}), (TNibEditPos{1, 1}));  // inside a character
    EXPECT_EQ(view->OffsetToCharPos(-3), (TNibCharPos{0, 1}));
    EXPECT_EQ(view->OffsetToCharPos(999), (TNibCharPos{1, 2}));
    EXPECT_EQ(view->CharPosToOffset({99, 1}), 4);
    EXPECT_EQ(view->CharPosToOffset({-1, -1}), 0);
    EXPECT_EQ(view->EditPosToCharPos({-1, 99}), (TNibCharPos{0, 2}));

    // Beyond 16 bits the two positions are cut, and the caret is where it was.
    view = ViewOf(std::string(100000, 'x'));
    auto exact = QueryAs<INibOffsetView>(static_cast<INibEditView*>(view.Get()));
    exact->SetCaretOffset(70000);
    EXPECT_EQ(view->CaretPos(), (TNibEditPos{32767, 1}));
    EXPECT_EQ(view->OffsetToCharPos(70000), (TNibCharPos{32767, 1}));
    EXPECT_EQ(view->Position()->Column(), 70001);
    view->Position()->MoveTo(1, 80000);
    EXPECT_EQ(exact->CaretOffset(), 79999);
}

TEST(EditView, Block) {
    auto view = ViewOf("ab^cd");
    auto position = view->Position();
    view->Block()->Save();
    position->Save();
    Act(*position, "<");
    view->Block()->Start();
    Act(*position, ">");
    view->Block()->Finish();
    EXPECT_EQ(view->Block()->Text(), u"b");
    Act(*position, "<<xe");
    EXPECT_EQ(view->Block()->Text(), u"b");  // survives an insertion before it
    view->Block()->Finish();
    EXPECT_EQ(view->Block()->Text(), u"bcd");
    view->Block()->Restore();
    position->Restore();
    EXPECT_EQ(view->Block()->Text(), u"");
    EXPECT_EQ(TextOf(*view), "xab^cd");
    view->Block()->Restore();
}

TEST(EditView, Writer) {
    auto view = ViewOf("abcdef^gh");
    view->Text().Replace(8, 0, "!");
    {
        auto writer = view->Buffer()->CreateWriter();
        writer->Insert("0");
        writer->CopyTo(2);
        writer->DeleteTo(4);
        writer->CopyTo(1);  // never back
        writer->DeleteTo(1);
        writer->Insert("XYZ");
        writer->CopyTo(999);
        writer->Insert("\xC3\xA9");
    }
    EXPECT_EQ(TextOf(*view), "0abXYZef^gh!\xC3\xA9");
    EXPECT_TRUE(view->Undo());
    EXPECT_EQ(view->Text().Text(), "abcdefgh!");
    EXPECT_TRUE(view->Redo());
    EXPECT_TRUE(view->Undo() && view->Undo());
    EXPECT_EQ(view->Text().Text(), "abcdefgh");

    // Somebody else's change takes the ground from under a writer.
    auto writer = view->Buffer()->CreateWriter();
    writer->CopyTo(2);
    view->Text().Replace(0, 1, "");
    writer->DeleteTo(4);
    writer->Insert("no");
    EXPECT_EQ(view->Text().Text(), "bcdefgh");
    view->Text().SetReadOnly(true);
    EXPECT_FALSE(view->Buffer()->CreateWriter());
}

TEST(EditView, SourceEditor) {
    auto buffer = MakeRef<TEditBuffer>("text", "a.html");
    auto editor = MakeRef<TSourceEditor>(buffer);
    EXPECT_EQ(editor->ViewCount(), 0);
    EXPECT_FALSE(editor->View(0));
    editor->AddView(TRef<INibEditView>(MakeRef<TEditView>(buffer)));
    EXPECT_EQ(editor->View(0)->Buffer()->FileName(), "a.html");
    char bytes[8];
    EXPECT_EQ(editor->CreateReader()->Read(1, bytes, 8), 3);
}

}  // namespace
}  // namespace caretwell
