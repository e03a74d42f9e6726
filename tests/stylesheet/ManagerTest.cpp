// From a caret to a list and from a choice to a text, as an editor goes.
#include "Sheets.h"
#include "markup/Text.h"
#include "memory/HostSession.h"
#include "stylesheet/CSSCodCmplt.h"
#include "stylesheet/CSSUnitEditor.h"
#include "support/TemporaryFolder.h"

namespace caretwell {
namespace {

/// A host whose schema folder holds a css.xml of our own, with the manager registered.
class TStyleHost {
public:
    explicit TStyleHost(const char* schema = SmallSchema, std::map<std::string, std::string> answers = {}) {
        if (schema) FFolder.Write("css.xml", schema);
        FSession.emplace(THostOptions{
            .SchemaFolder = FFolder.Path(), .SettingsFile = "/nonexistent", .Answers = std::move(answers)});
        FIndex = FSession->Registry().Register(CSSLanguageManager());
    }
    ~TStyleHost() {
        FSession->Registry().Unregister(FIndex);
        ReleaseCSSLanguageManager();
    }
    /// In the place of the sheet before.
    TDocument& Open(std::string_view marked) {
        if (auto* last = FSession->Current()) FSession->CloseDocument(*last);
        TSheet sheet(marked);
        TDocument& document = FSession->Open(sheet.FText, "a.css");
        document.View().SetCaretOffset(sheet.FCaret);
        return document;
    }
    std::string Text() {
        std::string text = FSession->Current()->Text().Text();
        return text.insert(static_cast<size_t>(FSession->Current()->View().CaretOffset()), "^");
    }
    /// What is offered at the caret of a sheet.
    std::string Offer(std::string_view marked) {
        Open(marked).Driver().OpenList();
        return Items();
    }
    std::string Items() {
        std::string names;
        for (const TListItem& item : FSession->Current()->Driver().Items())
            names += (names.empty() ? "" : " ") + ToUtf8(item.Text);
        return names;
    }
    THostSession& Session() { return *FSession; }

private:
    TTemporaryFolder FFolder;
    std::optional<THostSession> FSession;
    int32_t FIndex = -1;
};

TEST(Manager, Lists) {
    constexpr const char* Cases[][2] = {
        {"a { ^", "color columns margin width"},
        {"a { co^", "color columns"},
        {"a { co^lor", "color columns"},
        {"a { margin: 0; c^", "color columns"},
        {"a { color: ^", "color... inherit rebeccapurple red"},
        {"a { color: RE^", "rebeccapurple red"},
        {"a { color: c^", "color..."},
        {"a { color: red ^", "color... inherit rebeccapurple red"},
        {"a { columns: ^", ""},
        {"a { unknown: ^", ""},
        {"a^", ""},
        {"a { } ^", ""},
        {"\xC3\xA9 { content: '\xE2\x82\xAC'; co^", "color columns"},
    };
    TStyleHost host;
    for (const auto& [text, items] : Cases) EXPECT_EQ(host.Offer(text), items) << text;
}

TEST(Manager, Choices) {
    constexpr const char* Cases[][3] = {
        {"a { co^", "color", "a { color:^"},
        {"a { color^ : red }", "color", "a { color^ : red }"},
        {"a { co^l: red }", "color", "a { color^: red }"},
        {"a { color: r^", "red", "a { color: red;^"},
        // No ";" inside of parentheses, nor before more of the value; the whole word goes.
        {"a { color: var(r^) }", "red", "a { color: var(red^) }"},
        {"a { color: var(x, r^", "red", "a { color: var(x, red^"},
        {"a { color: r^, blue }", "red", "a { color: red^, blue }"},
        {"a { color: r^ solid }", "red", "a { color: red^ solid }"},
        {"a { color: r^ !important }", "red", "a { color: red^ !important }"},
        {"a { color: r^ /* x */ }", "red", "a { color: red;^ /* x */ }"},
        {"a { color: re^d; }", "rebeccapurple", "a { color: rebeccapurple^; }"},
        {"a { color: ^red }", "red", "a { color: red ^red }"},
        {"a { color: r^;", "red", "a { color: red^;"},
        {"a { color: r^ \t; }", "red", "a { color: red^ \t; }"},
        {"a { color: r^\n; }", "red", "a { color: red;^\n; }"},
        {"a { color: ^", "color...", "a { color: #ff0000;^"},
        {"a { color: c^ }", "color...", "a { color: #ff0000;^ }"},
        {"a { width: ^", "length...", "a { width: 12em;^"},
        {"\xC3\xA9 { co^", "color", "\xC3\xA9 { color:^"},
        {"a { color: c^ }", "color...", "a { color: c^ }"},  // a dialog that is cancelled
        {"a { width: l^ }", "length...", "a { width: l^ }"},
        {"/* \xF0\x9F\x98\x80 */ a { color: r^", "red", "/* \xF0\x9F\x98\x80 */ a { color: red;^"},
    };
    std::map<std::string, std::string> answers = {{"color", "#ff0000"}, {"length", "12em"}};
    for (const auto& [text, item, result] : Cases) {
        bool isCancelled = std::string_view(text) == result;
        TStyleHost host(SmallSchema, isCancelled ? decltype(answers)() : answers);
        TDocument& document = host.Open(text);
        document.Driver().OpenList();
        ASSERT_TRUE(document.Driver().Select(ToUtf16(item))) << text;
        // What was composed beforehand is what is written.
        TNibEdit edit;
        std::string before = document.Text().Text();
        ASSERT_TRUE(CSSKibitzManager().ComposeChoice(document.Driver().SelectedIndex(), 13, edit)) << text;
        if (TNibEdit byBlank; !edit.EditorId.empty()) {
            int32_t index = document.Driver().SelectedIndex();
            EXPECT_FALSE(CSSKibitzManager().ComposeChoice(index, ' ', byBlank)) << "no dialog by a blank";
        }
        document.Driver().TypeChar(13);
        EXPECT_EQ(host.Text(), result) << text;
        if (!edit.EditorId.empty()) {
            EXPECT_EQ(edit.EditorId + "...", item);
        } else {
            EXPECT_EQ(before.replace(static_cast<size_t>(edit.Start),
                                     static_cast<size_t>(edit.End - edit.Start), ToUtf8(edit.Text)),
                      document.Text().Text());
            EXPECT_EQ(edit.Caret, document.View().CaretOffset()) << text;
        }
    }
}

TEST(Manager, Typing) {
    struct TCase {
        const char *FText, *FKeys, *FExpect, *FItems;
        bool FAsks = false;
    };
    constexpr TCase Cases[] = {
        {"a {^}", "wi\t", "a {width:^}", "auto length...", true},  // values follow a property
        {"a {^}", "wi\n au\n", "a {width: auto;^}", "", true},
        {"a {^}", "wi\n:au\n;", "a {width:auto;^}", "", true},  // typed over
        // the word after the caret stays, where it began there when the list came
        {"a {width: ^1px}", "au\n", "a {width: auto ^1px}", "", true},
        // by hand
        {"a {^}", "width: au;", "a {width: au;^}", "color columns margin width"},
        {"a {^}", "width: auto 0;", "a {width: auto 0;^}", "color columns margin width"},
        {"a {^}", "width: auto !important;", "a {width: auto !important;^}", "color columns margin width"},
        {"a {^}", "width: l;", "a {width: l;^}", "color columns margin width"},  // no dialog
        {"a {^}", "width:\nauto\n", "a {width:\nauto\n^}", ""},
    };
    for (const TCase& c : Cases) {
        TStyleHost host;
        TDocument& document = host.Open(c.FText);
        if (c.FAsks) document.Driver().OpenList();
        for (char key : std::string(c.FKeys)) document.Driver().TypeChar(static_cast<char32_t>(key));
        EXPECT_EQ(host.Text(), c.FExpect) << c.FKeys;
        EXPECT_EQ(host.Items(), c.FItems) << c.FKeys;
    }
}

// A key closes the list, and accepts what is selected.
TEST(Manager, Keys) {
    TStyleHost host;
    std::string seen;
    for (char16_t key : std::u16string(u"\t \r\x1B") + u"a:;") {
        bool closes = false, accepts = false;
        CSSLanguageManager()->OnEditorKey(key, closes, accepts);
        seen += std::string(closes ? "c" : "") + (accepts ? "a " : " ");
    }
    EXPECT_EQ(seen, "ca ca ca c   ca ");
    struct TOpening {
        char16_t FChar;
        int32_t FElement, FType, FInvoke;
    };
    constexpr TOpening Openings[] = {{0, 0, 1, 1},   {':', 0, 1, 2}, {';', 2, 1, 2},
                                     {'a', 0, 0, 1}, {':', 1, 0, 7}, {0, 5, 0, 7}};
    for (const TOpening& c : Openings) {
        TNibCodeInsightType type = citList;
        auto invoke = static_cast<TNibInvokeType>(7);
        CSSLanguageManager()->GetCodeInsightType(c.FChar, c.FElement, type, invoke);
        EXPECT_EQ(type, c.FType) << int{c.FChar};
        EXPECT_EQ(invoke, c.FInvoke) << int{c.FChar};
    }
}

TEST(Manager, Answers) {
    TStyleHost host;
    auto manager = CSSLanguageManager();
    void* older = nullptr;
    ASSERT_TRUE(manager->Query(INibCodeInsightManager::OlderId, &older));
    EXPECT_TRUE(TRef<INibCodeInsightManager>::Attach(static_cast<INibCodeInsightManager*>(older)) == manager);
    for (const char* name : {"a.css", "x/A.CSS"}) EXPECT_TRUE(manager->HandlesFile(name)) << name;
    for (const char* name : {"a.html", "css", "a.css/b", "a.scss", "a."})
        EXPECT_FALSE(manager->HandlesFile(name)) << name;
    struct TCase {
        const char *FText, *FClass;
        int FContext, FFound;
    };
    constexpr TCase Cases[] = {
        {"a { } ^", "comment", 0, -1},     {"a^", "rule", 14, -1}, {"a { ^", "property", 15, 3},
        {"a { color: ^", "value", 16, -1}, {"}^", "none", 0, -1},
    };
    auto list = QueryAs<INibCodeInsightSymbolList>(manager);
    for (const TCase& c : Cases) {
        host.Open(c.FText);
        std::u16string word;
        EXPECT_TRUE(manager->InvokeCodeCompletion(itUser, word));
        EXPECT_EQ(ToUtf8(list->GetSymbolClassText(0)), c.FClass);
        EXPECT_EQ(int{QueryAs<INibInsightContext>(manager)->GetContext()}, c.FContext);
        int32_t index = -7;
        EXPECT_EQ(list->FindSymIndex(u"w", index), c.FFound >= 0);
        EXPECT_EQ(index, c.FFound >= 0 ? c.FFound : -7);
    }
    std::u16string word;
    host.Open("a { \xF0\x9F\x98\x80^");
    EXPECT_TRUE(manager->InvokeCodeCompletion(itUser, word));
    TNibEdit edit;
    EXPECT_TRUE(CSSKibitzManager().ComposeChoice(0, 13, edit));
    EXPECT_EQ(edit.End - edit.Start, 4) << "the bytes of one character";
    host.Session().CloseDocument(*host.Session().Current());
    EXPECT_FALSE(manager->InvokeCodeCompletion(itUser, word)) << "without a view";
    EXPECT_EQ(list->GetCount(), 0);
}

// No exception of a schema reaches the host: it hears of it in its message view.
TEST(Manager, BrokenSchemas) {
    struct TCase {
        const char *FSchema, *FMessage, *FItems;
    };
    constexpr TCase Cases[] = {
        {nullptr, "", ""},
        {"<x/>", "", ""},
        {"<css><property name='p'", "Error Error parsing start element tag", ""},
        {"<css><property name='p'><value name='v'/></property>\n<type name='t' editable='x'/></css>",
         "Error 'x' is not a valid boolean value", "p"},
    };
    for (const TCase& c : Cases) {
        TStyleHost host(c.FSchema);
        std::string messages;
        for (const TMessage& message : host.Session().Messages().Messages())
            messages += message.Prefix + " " + message.Text;
        EXPECT_EQ(messages, c.FMessage);
        EXPECT_EQ(host.Offer("a { ^"), c.FItems);
    }
}

TEST(UnitEditor, Form) {
    TUnitEditorForm form("length");
    EXPECT_EQ(form.GetText(), "0");
    form.AddUnit("px");
    form.AddUnit("em");
    EXPECT_EQ(form.GetText(), "0px");
    std::ostringstream places;
    for (const TFormControl& c : form.FForm.Controls)
        places << c.Name << ' ' << c.Left << ' ' << c.Top << ' ' << c.Width << ' ' << c.Height << "; ";
    EXPECT_EQ(
        places.str(),
        "Bevel1 8 8 265 57; Label1 24 16 30 13; Label2 114 16 27 13; OKBtn 115 77 75 25; "
        "CancelBtn 197 77 75 25; UpDown1 81 32 16 21; ValueEdit 24 32 57 21; UnitCombo 112 32 145 21; ");
}

}  // namespace
}  // namespace caretwell
