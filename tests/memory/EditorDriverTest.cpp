// Whole keys: what is in the text and in the list after each, and undo in whole keys.
#include <gtest/gtest.h>

#include "FakeManager.h"
#include "memory/EditorDriver.h"

namespace caretwell {
namespace {

using TSetUp = void (*)(TFakeManager&);

// A document whose text holds the caret as '^'.
struct TPage {
    explicit TPage(std::string text, TSetUp setUp = nullptr)
        : FHost(
              {.SettingsFile = "", .Warn = [this](std::string_view line) { FWarnings.emplace_back(line); }}) {
        if (setUp) setUp(*FManager);
        FHost.Registry().Register(FManager);
        size_t caret = text.find('^');
        if (caret != text.npos) text.erase(caret, 1);
        FDocument = &FHost.Open(std::move(text), "a.fake");
        FDocument->View().SetCaretOffset(static_cast<int32_t>(caret));
    }

    TEditorDriver& Driver() { return FDocument->Driver(); }

    // {E} Enter, {T} Tab, {X} Escape, {U} {D} {L} {R} the arrows, {B} Backspace, {S} Ctrl and space.
    void Press(std::string_view keys) {
        constexpr std::string_view Names = "ETXUDBLRS";
        for (; !keys.empty(); keys.remove_prefix(1)) {
            if (keys[0] == '{') {
                Driver().PressKey(static_cast<TEditorKey>(Names.find(keys[1])));
                keys.remove_prefix(2);
            } else {
                Driver().TypeChar(static_cast<uint8_t>(keys[0]));
            }
        }
    }

    std::string Text() {
        std::string text = FDocument->Text().Text();
        return text.insert(static_cast<size_t>(FDocument->View().CaretOffset()), "^");
    }
    // The open list, the selected item in brackets.
    std::string List() {
        std::string result;
        auto items = Driver().Items();
        for (size_t i = 0; i < items.size(); ++i) {
            bool isSelected = static_cast<int32_t>(i) == Driver().SelectedIndex();
            std::string name = ToUtf8(items[i].Name);
            result += (i ? " " : "") + (isSelected ? "[" + name + "]" : name);
        }
        return Driver().IsOpen() && result.empty() ? "(empty)" : result;
    }

    std::vector<std::string> FWarnings;
    TRef<TFakeManager> FManager = MakeRef<TFakeManager>();
    THostSession FHost;
    TDocument* FDocument = nullptr;
};

struct TCase {
    const char *FText, *FKeys, *FResult, *FList;
    TSetUp FSetUp = nullptr;
};

void Style(TFakeManager& m) {
    m.FCloser = u";";
    m.FOptionSet = "Tarnwell.EditOptions.StyleSheet";
    m.FRecorded = u"";
}
void Values(TFakeManager& m) { m.FIsValueList = true; }
void Chain(TFakeManager& m) { m.FIsChained = true; }
void Aid(TFakeManager& m) { m.FBeforeInvoke = u"!"; }
void Again(TFakeManager& m) { m.FRequestsWithin = true; }
void Hidden(TFakeManager& m) { m.FIsShown = false; }
void Kept(TFakeManager& m) { m.FKept = u"</p>"; }
void Nothing(TFakeManager& m) { m.FWords.clear(); }

const TCase Cases[] = {
    {"^", "x", "x^", ""},
    {"^", "<", "<^", "[body] break div dl p"},
    {"^", "<", "<^", "[body] break div dl p", Values},
    {"^", "<", "<^", "", Hidden},
    {"^", "<", "<^", "", Nothing},
    {"^", "<d", "<d^", "[div] dl"},
    {"^", "<dl", "<dl^", "[dl]"},
    {"^", "<x", "<x^", ""},
    {"^", "<x", "<x^", "[</p>]", Kept},
    {"^", "<d", "<d^", "</p> [div] dl", Kept},
    {"^", "<x ", "<x ^", "", Kept},  // what stays whatever is typed was not looked for
    {"^", "<x{T}", "<x\t^", "", Kept},
    {"^", "<x{D}{T}", "<</p>^", "", Kept},
    {"^", "<{S}{E}", "<body^", ""},
    {"^", "<dx{B}", "<d^", ""},  // a list without a line has ended
    {"^", "<dl{B}", "<d^", "[div] dl"},
    {"^", "<d{B}{B}", "^", ""},  // the token's start is passed
    {"d^", "{S}", "d^", "[div] dl"},
    {"^", "<d{D}", "<d^", "div [dl]"},
    {"^", "<d{D}{D}{D}{U}", "<d^", "[div] dl"},
    {"^", "<{X}", "<^", ""},
    {"^", "<{L}", "^<", ""},
    // a choice
    {"^", "<d{E}", "<div^", ""},
    {"^", "<d{D}{E}", "<dl^", ""},
    {"^", "<d{T}", "<div^", ""},
    {"^", "<d{D}>", "<dl>^", ""},
    {"^ x", "<d{D} ", "<dl ^ x", ""},
    {"^", "<d{E}", "<div^", "", Values},
    {"^", ":d{D};", ":dl;^", "", Style},
    {"^", ":d{D} ", ":dl; ^", "", Style},  // and another value
    {"^", ":d{E};", ":div;^", "", Style},  // typed over
    {"^", ":d{E}x;", ":div;x;^", "", Style},
    {"^", "<{T}", "<body^", ""},
    {"^", "{S}{E}", "body^", ""},
    {"^", "<{D}{E}", "<break^", ""},
    // what is typed in full or in part stays, whatever it begins
    {"^", "<d>", "<d>^", ""},
    {"^", "<div>", "<div>^", ""},
    {"^ x", "<d ", "<d ^ x", ""},
    {"^", ":d;", ":d;^", "", Style},
    // keys that close without a choice are not lost
    {"^", "<{E}", "<\n^", ""},
    {"a\r\n^", "<{E}", "a\r\n<\r\n^", ""},
    {"^", "<x{E}", "<x\n^", ""},
    {"^", "<>", "<>^", ""},
    {"^", "<x>", "<x>^", ""},
    {"^", "<\"", "<\"^", ""},
    {"^", "<x;", "<x;^", "", Style},
    {"^", "<x ", "<x ^", ""},
    {"^", ": ", ": ^", "[body] break div dl p", Style},  // still on the way to the word
    {"^", ": d{E}", ": div;^", "", Style},
    // neither a word nor the manager's business
    {"^", "<d.", "<d.^", ""},
    {"^", "<d:", "<d:^", "[body] break div dl p"},
    {"^", "</", "</^", ""},
    {"^", "</", "</^", "[</p>]", Kept},
    {"^", "</p{E}", "</p>^", "", Kept},
    {"^", "</{E}", "</p>^", "", Kept},
    {"^", "</d{E}", "</d\n^", "", Kept},
    {"^", "</p>", "</p>^", "", Kept},
    {"^", "<d/", "<d/^", ""},
    {"^", ":/", ":/^", ""},
    // the next list
    {"^", "<d{D} ", "<dl ^", "[body] break div dl p", Chain},
    {"^", "<d p ", "<d p ^", "[body] break div dl p", Chain},
    {"^", "<d {E}", "<d \n^", "", Chain},
    {"^", "<", "<^", "[body] break div dl p", Again},
    {"^", "<d>", "<!d>^", "", Aid},
    // without a list
    {"a\r\n^b", "{B}", "a^b", ""},
    {"a\r^\nb", "{B}", "a^\nb", ""},
    {"\xC3\xA9^", "{B}", "^", ""},
    {"a^\r\nb", "{R}{R}", "a\r\nb^", ""},
    {"ab\nc^d", "{U}{R}{D}", "ab\ncd^", ""},
    {"^", "{B}{L}{U}{T}", "\t^", ""},
};

TEST(EditorDriver, Keys) {
    for (const auto& c : Cases) {
        TPage page(c.FText, c.FSetUp);
        std::string before = page.FDocument->Text().Text();
        page.Press(c.FKeys);
        EXPECT_EQ(page.Text(), c.FResult) << c.FText << " + " << c.FKeys;
        EXPECT_EQ(page.List(), c.FList) << c.FText << " + " << c.FKeys;
        EXPECT_TRUE(page.FWarnings.empty());
        while (page.Driver().Undo()) continue;
        EXPECT_EQ(page.FDocument->Text().Text(), before) << c.FKeys;
        EXPECT_FALSE(page.Driver().IsOpen());
    }
}

TEST(EditorDriver, OneKeyIsOneStep) {
    TPage page("^", Chain);
    page.Press("<d{D} ");  // the choice, its blank and the next list
    EXPECT_TRUE(page.Driver().Undo());
    EXPECT_EQ(page.Text(), "<d^");
    EXPECT_TRUE(page.Driver().Undo());
    EXPECT_EQ(page.Text(), "<^");
    EXPECT_TRUE(page.Driver().Redo());
    EXPECT_TRUE(page.Driver().Redo());
    EXPECT_EQ(page.Text(), "<dl ^");
    EXPECT_FALSE(page.Driver().Redo());
}

TEST(EditorDriver, SingleSteps) {
    TPage page("<^");
    EXPECT_FALSE(page.Driver().Select(u"dl"));
    EXPECT_TRUE(page.Driver().OpenListFor('<'));
    EXPECT_FALSE(page.Driver().Select(u"nobody"));
    EXPECT_TRUE(page.Driver().Select(u"dl"));
    page.Driver().TypeChar('>');
    EXPECT_EQ(page.Text(), "<dl>^");
    EXPECT_FALSE(page.Driver().OpenListFor('x'));
    page.Driver().SetElement(1);  // a comment, say
    EXPECT_FALSE(page.Driver().OpenList());
}

// A list whose ground has moved: nothing is written, one line says why.
TEST(EditorDriver, GroundMovesUnderTheList) {
    struct TMove {
        const char* FName;
        void (*FAct)(TPage&);
        const char *FKeys, *FResult;
        size_t FWarnings;
    };
    const TMove moves[] = {
        {"text changed", [](TPage& p) { p.FDocument->Text().Replace(0, 0, "y"); }, "{E}", "y<d^", 1},
        {"text changed, a letter typed", [](TPage& p) { p.FDocument->Text().Replace(0, 0, "y"); }, "i",
         "y<di^", 0},
        {"caret moved", [](TPage& p) { p.FDocument->View().SetCaretOffset(0); }, "{T}", "^<d", 1},
        {"read-only", [](TPage& p) { p.FDocument->Text().SetReadOnly(true); }, "{E}", "<d^", 1},
        {"read-only, a letter typed", [](TPage& p) { p.FDocument->Text().SetReadOnly(true); }, "i", "<d^", 1},
        {"view closed", [](TPage& p) { p.FDocument->View().Close(); }, "{E}", "<d^", 1},
        {"another document", [](TPage& p) { p.FHost.Open("", "b.fake"); }, "{E}", "<d^", 1},
        {"nothing", [](TPage&) {}, "{E}", "<div^", 0},
    };
    for (const auto& move : moves) {
        TPage page("^");
        page.Press("<d");
        ASSERT_TRUE(page.Driver().IsOpen());
        move.FAct(page);
        page.Press(move.FKeys);
        EXPECT_EQ(page.Text(), move.FResult) << move.FName;
        EXPECT_FALSE(page.Driver().IsOpen()) << move.FName;
        EXPECT_EQ(page.FManager->FDoneCount, 1) << move.FName;
        EXPECT_EQ(page.FWarnings.size(), move.FWarnings) << move.FName;
        for (const auto& line : page.FWarnings) EXPECT_EQ(line.find('\n'), line.npos);
    }
}

TEST(EditorDriver, LetsGoOfAManagerThatLeaves) {
    TPage page("^");
    page.Press("<");
    page.FHost.Registry().Unregister(0);
    EXPECT_FALSE(page.Driver().IsOpen());
    EXPECT_EQ(page.FManager->FDoneCount, 1);
    page.Press("d");
    EXPECT_EQ(page.Text(), "<d^");
    EXPECT_FALSE(page.Driver().Manager());
}

// Between document and manager a lens: another language, and another view of the text.
TEST(EditorDriver, Lens) {
    TPage page("^");
    page.FManager->FExtension = ".style";
    auto shown = MakeRef<TEditView>(MakeRef<TEditBuffer>("shown", "x.style"));
    page.Press(":");
    EXPECT_FALSE(page.Driver().IsOpen());
    page.Driver().SetLens({.NameAt = [](TEditView&) { return "x.style"; },
                           .Show = [&](TRef<TEditView>, INibCodeInsightManager&) -> TRef<INibEditView> {
                               return TRef<INibEditView>(shown);
                           }});
    page.Press(":");
    auto services = GetService<INibCodeInsightServices>();
    EXPECT_TRUE(services->CurrentEditView() == static_cast<INibEditView*>(shown.Get()));
    page.Press("d{E}");
    EXPECT_EQ(page.Text(), "::div^");
    EXPECT_TRUE(services->CurrentEditView() == static_cast<INibEditView*>(&page.FDocument->View()));
}

}  // namespace
}  // namespace caretwell
