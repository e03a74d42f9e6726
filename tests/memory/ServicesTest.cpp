// Settings, dialogs, option sets, messages, the registry and files.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "FakeManager.h"
#include "memory/FileText.h"
#include "memory/Services.h"
#include "support/Split.h"
#include "support/TemporaryFolder.h"

namespace caretwell {
namespace {

TEST(Settings, LongestSpellingWins) {
    const std::string key = "Software\\Tarnwell\\Code Insight", name = "Auto Code Completions";
    const std::string plain = R"("Auto Code Completions": "a")";
    const std::string longer = R"("Code Insight\\Auto Code Completions": "b")";
    const std::string longest = R"("Software\\Tarnwell\\Code Insight\\Auto Code Completions": "c")";
    const struct {
        std::string FJson, FValue;
        int FWarnings = 0;
        std::vector<std::string> FOverrides{};
    } cases[] = {
        {"{" + plain + "}", "a"},
        {R"({"auto code completions": "a"})", "a"},
        {"{" + longer + "," + plain + "}", "b"},
        {"{" + longer + "," + longest + "}", "c"},
        {R"({"Other Key\\Auto Code Completions": "a"})", "none"},
        {"{" + longer + "}", "y", 0, {"x", "y"}},
        {R"({"Auto Code Completions": ""})", ""},
        {"{" + plain, "none", 1},
        {"{" + plain + R"(, "x": 1})", "none", 1},
        {"[\"a\"]", "none", 1},
        {"", "none", 1},
        {std::string("\xFF\xFE\0", 3), "none", 1},
        {std::string(100000, '['), "none", 1},
        {std::string(2000000, ' ') + "{}", "none", 1},
    };
    for (const auto& c : cases) {
        int warnings = 0;
        TTemporaryFolder folder;
        TSettingsStore store(folder.Write("s.json", c.FJson), [&](std::string_view) { ++warnings; });
        for (const auto& value : c.FOverrides) store.Override(name, value);
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(store.ReadString(key, name).value_or("none"), c.FValue) << c.FJson.substr(0, 99);
        EXPECT_EQ(warnings, c.FWarnings) << c.FJson.substr(0, 99);
    }
    std::string line;
    TSettingsStore missing("/nonexistent/s.json", [&](std::string_view text) { line += text; });
    EXPECT_FALSE(missing.ReadString(key, name) || missing.ReadString(key, name));
    EXPECT_EQ(line, "");  // nobody needs settings
}

TEST(Settings, DefaultFile) {
    setenv("XDG_CONFIG_HOME", "/x", 1);
    EXPECT_EQ(DefaultSettingsFile(), "/x/caretwell/settings.json");
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", "/home/u", 1);
    EXPECT_EQ(DefaultSettingsFile(), "/home/u/.config/caretwell/settings.json");
}

TEST(Dialogs, Unit) {
    const char* const cases[][3] = {
        {"12px", "px em", "12 px"},   {"12EM", "px em", "12 em"}, {"-1.5em", "px em", "-1.5 em"},
        {"50%", "%", "50 %"},         {"12", "px em", "12 px"},   {"12rem", "px em", "cancelled"},
        {"px", "px em", "cancelled"}, {"", "px", "cancelled"},    {"12px", "", "12px "},
    };
    for (const auto& [answer, unitNames, expect] : cases) {
        TForm form;
        form.Purpose = "length";
        for (const char* name : {"OKBtn", "CancelBtn", "ValueEdit", "UnitCombo"}) {
            auto& control = form.Controls.emplace_back();
            control.Name = name;
            control.ModalResult = static_cast<int32_t>(form.Controls.size());
        }
        form.Controls[0].IsDefault = form.Controls[1].IsCancel = true;
        auto& units = form.Controls[3];
        units.Items = Split(unitNames);
        if (!units.Items.empty()) units.ItemIndex = 0;
        TDialogAnswers answers;
        TScriptedForms forms(answers);
        EXPECT_EQ(forms.ShowModal(form), 2);  // no answer
        answers.Set("length", answer);
        std::string result = "cancelled";
        bool isDone = forms.ShowModal(form) == 1;
        if (isDone) result = form.Find("ValueEdit")->Text + " ";
        if (isDone && units.ItemIndex >= 0) result += units.Items[static_cast<size_t>(units.ItemIndex)];
        EXPECT_EQ(result, expect) << answer;
    }
}

TEST(Services, Dialogs) {
    std::vector<std::string> asked;
    THostSession host({.SettingsFile = "",
                       .Answers = {{"color", "#ff0000"}},
                       .Ask = [&](std::string_view name) -> std::optional<std::string> {
                           asked.emplace_back(name);
                           if (asked.size() == 1) return "logo.png";
                           return std::nullopt;
                       }});
    host.Open("", "dir/a.html");
    auto dialogs = GetService<INibDialogServices>();
    auto color = dialogs->CreateWebColorDlg();
    EXPECT_TRUE(color->Execute());
    EXPECT_EQ(color->GetSelectedColor(), "#ff0000");
    auto url = dialogs->CreateSelectURLDialog();
    EXPECT_EQ(url->GetModuleFileName(), "dir/a.html");
    EXPECT_TRUE(url->Execute());
    EXPECT_EQ(url->GetPreviewURL(), "logo.png");
    EXPECT_FALSE(url->Execute());
    EXPECT_EQ(url->GetPreviewURL(), "");
    EXPECT_EQ(asked, (std::vector<std::string>{"uri", "uri"}));
}

TEST(Services, Messages) {
    std::string echoed;
    THostSession host({.SchemaFolder = "/usr/share/schemas/",
                       .SettingsFile = "",
                       .Echo = [&](const TMessage& m) { echoed += m.Prefix + " " + m.Text; }});
    EXPECT_EQ(GetService<INibServices>()->RootDirectory(), "/usr/share/");
    auto messages = GetService<INibMessageServices>();
    messages->AddMessage("a.dtd", "bad", "Error", 3, 4);
    EXPECT_EQ(echoed, "Error bad");
    EXPECT_EQ(host.Messages().Messages().at(0).Line, 3);
    for (size_t i = 0; i < TMessageView::MostKept; ++i) messages->AddMessage("", "", "", 0, 0);
    EXPECT_EQ(host.Messages().DroppedCount(), 1u);
    messages->ClearMessages();
    EXPECT_TRUE(host.Messages().Messages().empty());
}

// The engine's roots are those of the session, and go with it.
TEST(Services, RootsFollowTheSession) {
    for (int round = 0; round < 2; ++round) {
        THostSession host({.SettingsFile = ""});
        EXPECT_EQ(GlobalKibitzManager(), &host.Registry());
        EXPECT_TRUE(GetService<INibCodeInsightServices>());
    }
    EXPECT_FALSE(TarnwellIDEServices() || GlobalKibitzManager());
}

TEST(Services, InsertText) {
    THostSession host({.SettingsFile = ""});
    auto services = GetService<INibCodeInsightServices>();
    services->InsertText(u"nowhere", true);
    TDocument& page = host.Open("a bc d", "a.html");
    page.View().SetCaretOffset(4);
    services->InsertText(u"\u00E9", true);  // no list, so no token
    EXPECT_EQ(page.Text().Text(), "a bc\xC3\xA9 d");
    host.Services().SetTokenStart(2);
    services->InsertText(u"x", true);
    EXPECT_EQ(page.Text().Text(), "a x d");
    EXPECT_EQ(page.View().CaretOffset(), 3);
    page.Text().SetReadOnly(true);
    services->InsertText(u"y", false);
    EXPECT_EQ(page.Text().Text(), "a x d");
}

TEST(Registry, FindsTheManagerOfAFile) {
    THostSession host({.SettingsFile = ""});
    auto takesAll = MakeRef<TFakeManager>(), fake = MakeRef<TFakeManager>();
    takesAll->FExtension = "";
    auto& registry = host.Registry();
    EXPECT_EQ(GlobalKibitzManager()->Register(TRef<INibCodeInsightManager>(takesAll)), 0);
    EXPECT_EQ(registry.Register(TRef<INibCodeInsightManager>(fake)), 1);
    EXPECT_EQ(registry.Register(nullptr), -1);
    EXPECT_TRUE(registry.Find("a.fake") == takesAll.Get());
    fake->FExtension = ".css";
    fake->FOptionSet = "Tarnwell.EditOptions.StyleSheet";
    EXPECT_TRUE(registry.Find("a.css") == fake.Get());
    EXPECT_TRUE(registry.Find("a.txt") == takesAll.Get());
    for (int32_t index : {0, 0, -1, 9}) registry.Unregister(index);
    EXPECT_FALSE(registry.Find("a.txt"));
}

TEST(FileText, WritesWhole) {
    TTemporaryFolder folder;
    std::string file = folder.Write("file", "old");
    chmod(file.c_str(), 0640);
    const std::string text(
        "\xEF\xBB\xBF"
        "a\r\nb\rc\n\0",
        10);
    EXPECT_FALSE(WriteFileText(file, text));
    EXPECT_EQ(ReadFileText(file).Text, text);
    struct stat info {};
    stat(file.c_str(), &info);
    EXPECT_EQ(info.st_mode & 07777, 0640u);

    std::string link = file + ".link";
    ASSERT_EQ(symlink(file.c_str(), link.c_str()), 0);
    EXPECT_FALSE(WriteFileText(link, "new"));
    EXPECT_EQ(ReadFileText(file).Text, "new");
    lstat(link.c_str(), &info);
    EXPECT_TRUE(S_ISLNK(info.st_mode));
    EXPECT_EQ(ReadFileText(file, 2).Problem, "File too large");
    EXPECT_EQ(ReadFileText("/nonexistent").Problem, "No such file or directory");
    EXPECT_EQ(WriteFileText("/nonexistent/a", "x"), "No such file or directory");
    EXPECT_TRUE(WriteFileText("/proc/version", "x"));
    EXPECT_FALSE(ReadFileText("/").Text);
}

}  // namespace
}  // namespace caretwell
