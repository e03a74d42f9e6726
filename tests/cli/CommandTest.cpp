// The command from outside: words and text in; text, JSON and exit status out.
#include <sys/stat.h>

#include <nlohmann/json.hpp>

#include "cli/CommandRun.h"
#include "support/Cases.h"

namespace caretwell::test {
namespace {

using std::string;
using TWords = std::vector<string>;
using TJson = nlohmann::ordered_json;

class Command : public testing::Test {
protected:
    /// A word for each blank; "~" is a blank inside a word, and alone an empty word.
    static TWords Words(std::string_view line) {
        TWords words;
        for (std::istringstream in{string(line)}; in >> words.emplace_back();)
            std::replace(words.back().begin(), words.back().end(), '~', ' ');
        words.pop_back();
        std::replace(words.begin(), words.end(), string(" "), string());
        return words;
    }
    /// Runs a command on a text with the caret at "^", by the small schemas.
    TCommandResult RunAt(const char* command, const char* name, std::string_view text,
                         const string& more = {}) {
        TWords words{command, "-", "--name", name, "--mark", "^", "--schemas", SmallSchemas};
        for (auto& word : Words(more)) words.push_back(std::move(word));
        return FFolder.Run(words, text);
    }
    TJson JsonAt(const char* command, const char* name, std::string_view text, const string& more = {}) {
        auto result = RunAt(command, name, text, more + " --json");
        EXPECT_TRUE(result.Out.ends_with("\n")) << text;
        return TJson::parse(result.Out, nullptr, false);
    }
    static string Names(const TJson& items) {
        string names;
        for (const auto& item : items) names += (names.empty() ? "" : " ") + item["name"].get<string>();
        return names;
    }

    TCommandFolder FFolder;
};

TEST_F(Command, Complete) {
    struct TCase {
        const char *Name, *Text, *More, *List, *Items;
    };
    const char* orders = "--map .order=order.xsd";
    const TCase cases[] = {
        {"a.html", "<ul><^", "", "elements", "li"},
        {"a.html", "<ul>^", "", "elements", "</ul> li"},
        {"a.html", "<p al^>", "", "attributes", "align"},
        {"a.html", "<td bgcolor=^>", "", "values", "color..."},
        {"a.html", "<p>&am^", "--key &", "entities", "amp"},
        {"a.html", "<p ^>", "--key <", "none", ""},  // a key that opens nothing here
        {"a.HTML", "<UL><^", "", "elements", "li"},
        // Style text, in a sheet and on a page.
        {"a.css", "a { co^", "", "properties", "color column-count"},
        {"a.css", "a { color:^", "--key :", "values", "color... green red"},
        {"a.css", "@layer a { .b { &:hover { color: r^ } } }", "", "values", "red"},
        {"a.css", ".b { --x: {}; width: all .3s cubic-bezier(0, -1, 0, 1), ^", "", "values",
         "auto length..."},
        {"a.css", ".b { *color: 1px; -webkit-width: 0 0 1px -1px ^", "", "values", "auto length..."},
        {"a.css", ".b { color: red; .c { top: 0 } wid^", "", "properties", "width"},
        {"a.css", "@supports (--x: 1) and (not (y: 2)) { .b^ { } }", "", "none", ""},
        {"a.css", ".b { } /* ^ */", "", "none", ""},
        {"a.css", ".b { content: '^' }", "", "none", ""},
        {"a.html", "<style>a { w^ }</style>", "", "properties", "width"},
        {"a.html", "<style>\n.b { width: ^ }\n</style>", "", "values", "auto length..."},
        {"a.html", "<p style='width: 1px; ^'>", "", "properties", "color column-count width"},
        {"a.html", "<p style=\"width: &quot;A&quot;, ^\">", "", "values", "auto length..."},
        {"a.html", "<p style='width: ^'>", "--plain", "none", ""},
        {"a.css", "a^ { }", "", "none", ""},
        // A schema of one's own; names keep their case.
        {"a.order", "<^", orders, "elements", "Order"},
        {"a.order", "<Order><^", orders, "elements", "Item Note"},
        {"a.order", "<Order><^", "--map .order=order.xsd --setting Simple~Typed~Elements=False", "elements",
         "Item"},
        {"a.order", "<Order state='^'>", orders, "values", "open sent"},
    };
    for (const TCase& c : cases) {
        TJson json = JsonAt("complete", c.Name, c.Text, c.More);
        EXPECT_EQ(json["list"], c.List) << c.Text;
        EXPECT_EQ(Names(json["items"]), c.Items) << c.Text;
        EXPECT_EQ(RunAt("complete", c.Name, c.Text, c.More).Status, *c.Items ? 0 : 1) << c.Text;
    }
}

// Keys, their order and which are absent are what other programs rely on; the same for people.
// A row's title is the command, "~" stands for the folder of the schemas, "." for that of the files.
TEST_F(Command, Shapes) {
    for (const auto& c : ReadCases("cli.txt")) {
        for (const auto& [name, text] : c.FFiles) FFolder.Write(name, text);
        auto result = FFolder.Run(Words(c.FTitle + " --schemas " + SmallSchemas), c.FText);
        for (const auto& [path, sign] : {std::pair(SmallSchemas, "~"), {FFolder.Path(), "./"}})
            for (size_t at; (at = result.Out.find(path)) != string::npos;)
                result.Out.replace(at, path.size(), sign);
        EXPECT_EQ(result.Out, c.FExpect + "\n") << c.FTitle << result.Err;
        EXPECT_EQ(result.Status, c.FTitle.starts_with("schema bad") ? 1 : 0) << c.FTitle;
    }
}

TEST_F(Command, Editing) {
    struct TCase {
        const char *Command, *Name, *Text, *More, *Expect;
    };
    const TCase cases[] = {
        {"choose", "a.html", "<p al^>", "--item align --close space", "<p align= ^>"},
        {"choose", "a.html", "<p al^>", "--item align --setting Auto~Quote=true", "<p align=\"^\">"},
        {"choose", "a.html", "<ul><^", "--item li --close >", "<ul><li>^</li>"},
        {"choose", "a.html", "<ul><^", "--item li --close escape", "<ul><^"},
        {"choose", "a.html", "<td bgcolor=''^>", "--item class", nullptr},
        {"choose", "a.html", "<td bgcolor='^'>", "--item color... --answer color=#123",
         "<td bgcolor='#123'^>"},
        {"choose", "a.html", "<td bgcolor='^'>", "--item color...", "<td bgcolor='^'>"},
        {"choose", "a.css", "a { width: ^", "--item length... --answer length=12em", "a { width: 12em;^"},
        {"choose", "a.html", "<p style='wi^'>\xC3\xA9", "--item width", "<p style='width:^'>\xC3\xA9"},
        {"choose", "a.css", ".a { &:hover { /* \xC3\xA9 */ col^ } }", "--item color",
         ".a { &:hover { /* \xC3\xA9 */ color:^ } }"},
        {"choose", "a.html", "<style>a { color: ^; }</style>", "--item red",
         "<style>a { color: red^; }</style>"},
        {"type", "a.html", "<body>^</body>", "--keys <ul><li>a&amp{Enter}b",
         "<body><ul><li>a&amp;b^</li></ul></body>"},
        {"type", "a.html", "<body>^", "--keys <{Down}{Down}{Up}{Enter}", "<body><b^"},
        {"type", "a.html", "^", "--keys xy{Left}{Backspace}ä{{}}😀{Right}{Esc}{Tab}", "ä{}😀y\t^"},
        {"type", "a.html", "a\r\n^", "--keys b{Enter}", "a\r\nb\r\n^"},  // line ends stay as they are
        {"type", "a.css", "a {^}", "--keys ~co{Ctrl+Space}{Enter}~r{Ctrl+Space}{Enter}", "a { color: red;^}"},
    };
    for (const TCase& c : cases) {
        auto result = RunAt(c.Command, c.Name, c.Text, c.More);
        EXPECT_EQ(result.Out, c.Expect ? c.Expect : "") << c.Text << result.Err;
        EXPECT_EQ(result.Status, c.Expect ? 0 : 1) << c.Text;
    }
}

TEST_F(Command, InPlace) {
    FFolder.Write("a:1.html", "\xEF\xBB\xBF<ul>\r\n<l>");
    chmod(FFolder.Path("a:1.html").c_str(), 0640);
    auto result =
        FFolder.Run({"choose", "a:1.html:2:3", "--item", "li", "--in-place", "--schemas", SmallSchemas});
    EXPECT_EQ(result.Status, 0) << result.Err;
    EXPECT_EQ(result.Out, "");
    EXPECT_EQ(FFolder.Read("a:1.html"), "\xEF\xBB\xBF<ul>\r\n<li>");
    struct stat info {};
    stat(FFolder.Path("a:1.html").c_str(), &info);
    EXPECT_EQ(info.st_mode & 0777, 0640u);
    // Nothing is written unless the call says so, nor when the choice cannot be made.
    FFolder.Run({"type", "a:1.html:1:1", "--keys", "x"});
    FFolder.Run({"choose", "a:1.html:2:1", "--item", "nope", "--in-place"});
    EXPECT_EQ(FFolder.Read("a:1.html"), "\xEF\xBB\xBF<ul>\r\n<li>");
}

// Each failure is one line that says what and where, and nothing else is printed.
TEST_F(Command, Failures) {
    FFolder.Write("a.html", "<p>\n^^");
    FFolder.Write("a.txt", "<p>");
    FFolder.Write("empty/x", "");
    struct TCase {
        const char* Words;
        int Status;
        const char* Line;
    };
    const TCase cases[] = {
        {"", 2, "subcommand is required"},
        {"frob", 2, "frob: no such command"},
        {"complete", 2, "place is required"},
        {"complete a.html", 2, "a.html: FILE:LINE:COLUMN"},
        {"complete a.html:0:1", 2, "a.html:0:1"},
        {"complete a.html:1:99999999999", 2, "a.html:1:99999999999"},
        {"complete a.html:3:1", 2, "a.html:3: the text ends in line 2"},
        {"complete a.html:1:5", 2, "a.html:1:5: the line ends at column 4"},
        {"complete a.html --mark #", 2, "\"#\" is not in the text"},
        {"complete a.html --mark ^", 2, "more than once"},
        {"complete a.html --mark ~", 2, "--mark"},
        {"complete a.html:1:1 --key ab", 2, "--key ab"},
        {"complete a.html:1:1 --map x=y.xsd", 2, "--map x=y.xsd"},
        {"complete a.html:1:1 --map .config=y.xsd", 2, "has a schema already"},
        {"complete a.html:1:1 --setting x", 2, "--setting x"},
        {"complete a.html:1:1 --item x", 2, "--item"},
        {"choose a.html:1:1", 2, "--item is required"},
        {"choose a.html:1:1 --item x --close xx", 2, "--close xx"},
        {"type a.html:1:1 --keys {Home}", 2, "{Home} is no key"},
        {"type a.html:1:1 --keys {Tab", 2, "no closing brace"},
        {"type -:1:1 --keys x --in-place", 2, "--in-place"},
        {"schema a.txt", 2, "a.txt: a .dtd"},
        {"complete none.html:1:1", 3, "none.html: No such file"},
        {"complete .:1:1", 3, ".: Is a directory"},
        {"complete a.html:1:1 --schemas none", 3, "none/: No such file"},
        {"complete a.html:1:1 --schemas empty", 3, "Invalid schema file \"empty/loose.dtd\""},
        {"complete -:1:1 --name a.css --schemas empty", 3, "empty/css.xml: No such file"},
        {"complete -:1:1 --name a.o --map .o=no.xsd", 3, "no.xsd"},
        {"schema none.dtd", 3, "none.dtd: No such file"},
        {"complete a.txt:1:1", 1, "a.txt: no schema"},
        {"choose a.html:1:4 --item nope", 1, "\"nope\" is not in the list"},
        {"events - --name a.css", 1, "a.css"},
    };
    for (const TCase& c : cases) {
        auto result = FFolder.Run(Words(c.Words));
        EXPECT_EQ(result.Status, c.Status) << c.Words << result.Err;
        EXPECT_EQ(result.Out, "") << c.Words;
        EXPECT_NE(result.Err.find(c.Line), string::npos) << c.Words << result.Err;
        EXPECT_EQ(std::count(result.Err.begin(), result.Err.end(), '\n'), 1) << c.Words << result.Err;
    }
}

// Any bytes are a document, and what is printed of them is valid.
TEST_F(Command, BadBytes) {
    string everything;
    for (int i = 0; i < 256; ++i) everything += static_cast<char>(i);
    const string texts[] = {
        "",
        everything,
        everything + "<" + everything + "=\"" + everything,
        string(1000, '\0'),
        string("<p \xC3") + string(300000, '<'),
        "\xEF\xBB\xBF",
        "<a \xF0\x9F href='\xE4",
    };
    for (const string& text : texts)
        for (const char* name : {"a.html", "a.css", "a.xsl"}) {
            const string mark = "\x01^\x02";
            for (const char* command : {"complete", "explain", "type"}) {
                TWords words{command, "-",      "--name",    name,        "--mark",
                             mark,    "--json", "--schemas", SmallSchemas};
                if (command == string("type")) words.insert(words.end(), {"--keys", "<a b='c&{Enter}>"});
                auto result = FFolder.Run(words, text + mark);
                EXPECT_LE(result.Status, 1) << name << command << text.size() << result.Err;
                EXPECT_FALSE(TJson::parse(result.Out, nullptr, false).is_discarded()) << name << command;
            }
        }
}

// A caret beyond what 16 bits of column can say.
TEST_F(Command, LongLine) {
    string line = "<ul>" + string(70000, ' ') + "<";
    FFolder.Write("long.html", line + "\n");
    auto result = FFolder.Run(
        {"complete", "long.html:1:" + std::to_string(line.size() + 1), "--schemas", SmallSchemas});
    EXPECT_EQ(result.Out, "li\n");
}

}  // namespace
}  // namespace caretwell::test
