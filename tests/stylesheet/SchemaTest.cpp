// css.xml to lists, and the range of a list that a filter leaves.
#include <gtest/gtest.h>

#include "Sheets.h"
#include "host/Platform.h"
#include "support/Cases.h"

namespace caretwell {
namespace {

/// Values of a property as the list shows them.
std::string Values(TCSSSymbolTable& table, std::string_view propertyName) {
    TCSSProperty* property = table.LookupProperty(propertyName);
    if (!property) return "none";
    table.SetKibitzProperty(property);
    std::string names;
    for (int32_t i = 0; i < table.GetKibitzValueCount(); ++i)
        names += (i ? " " : "") + table.GetKibitzValue(i);
    return names;
}

TEST(Schema, Values) {
    for (const auto& c : ReadCases("styles.txt")) {
        TCSSSymbolTable table(nullptr);
        TCSSReader(table).LoadFromText("<css>" + c.FText + "</css>");
        std::string property = c.FExpect.substr(0, c.FExpect.find(':')), values = Values(table, property);
        EXPECT_EQ(property + ":" + (values.empty() ? "" : " ") + values, c.FExpect) << c.FTitle;
    }
}

TEST(Schema, BrokenFiles) {
    struct TBroken {
        const char *FText, *FMessage;
        int32_t FLine, FProperties, FEditors;
    };
    constexpr TBroken Broken[] = {
        {"<css/>", "", 0, 0, 8},
        {"<other><property name='p'/></other>", "", 0, 0, 8},
        {"<css>\n<property name='p'>\n<a></css>", "Start-end tags mismatch", 3, 0, 0},
        {"", "No document element found", 1, 0, 0},
        {"<css><property name='p'/>\n\n<type name='t' editable='maybe'/></css>",
         "'maybe' is not a valid boolean value", 3, 1, 0},
        {"<css><property name='p' inherited=''/></css>", "'' is not a valid boolean value", 1, 1, 0},
    };
    for (const TBroken& c : Broken) {
        TCSSSymbolTable table(nullptr);
        std::string message;
        int32_t line = 0;
        try {
            TCSSReader(table).LoadFromText(c.FText);
        } catch (const ECSSSchemaError& error) {
            message = error.what();
            line = error.GetLine();
        }
        EXPECT_EQ(message, c.FMessage) << c.FText;
        EXPECT_EQ(line, c.FLine) << c.FText;
        EXPECT_EQ(table.FProperties.Count(), c.FProperties) << c.FText;
        EXPECT_EQ(table.FEditors.Count(), c.FEditors) << c.FText;
    }
    TCSSSymbolTable table(nullptr);
    TCSSReader(table).LoadFromFile("/nonexistent/css.xml");
    EXPECT_EQ(table.FEditors.Count(), 0);
}

// Chains and rings of a length that would break a recursion, or square the table.
TEST(Schema, LongChains) {
    constexpr int Length = 20'000;
    std::string text = "<css>";
    for (int i = 0; i < Length; ++i) {
        std::string name = std::to_string(i), next = std::to_string((i + 1) % Length);
        text += "<type name='t" + name + "'><value ref='t" + next + "'/><value name='v" + name + "'/></type>";
        text += "<property name='p" + name + "'><value type='p" + next + "'/><value type='t" + name +
                "'/><value name='w" + name + "'/></property>";
    }
    for (int i = 0; i < Length; ++i) text += "<property name='deep'><value sequence=''>";
    for (int i = 0; i < Length; ++i) text += "</value></property>";
    text += "</css>";
    TCSSSymbolTable table(nullptr);
    TCSSReader(table).LoadFromText(text);
    EXPECT_EQ(table.FProperties.Count(), Length + 1);
}

class TFontPlatform final : public IPlatform {
public:
    TFontPlatform() { SetPlatform(this); }
    ~TFontPlatform() override { SetPlatform(nullptr); }
    bool IsMainThread() override { return true; }
    bool IsCtrlDown() override { return false; }
    std::string ExecutablePath() override { return {}; }
    std::string SchemaFolder() override { return "/"; }
    bool FileExists(const std::string&) override { return false; }
    std::vector<std::string> ListFolder(const std::string&) override { return {}; }
    std::vector<std::string> FontFamilies() override {
        return ++FAsked, std::vector<std::string>{"Arial", "serif"};
    }
    ISettingsStore* Settings() override { return nullptr; }
    IFormHost* Forms() override { return nullptr; }
    int FAsked = 0;
};

// Asking the machine takes long, so it is asked when a list needs it, and once.
TEST(Schema, FontsComeWithTheFirstListThatHasThem) {
    TFontPlatform platform;
    TCSSSymbolTable table(nullptr);
    TCSSReader(table).LoadFromText(
        "<css><type name='face'><value name='serif'/><value type='font'/></type>"
        "<type name='outer'><value ref='face'/></type>"
        "<property name='copy'><value type='font-face'/><value name='z'/></property>"
        "<property name='font-face'><value type='outer'/><value name='b'/></property>"
        "<property name='other'><value name='b'/></property></css>");
    EXPECT_EQ(Values(table, "other"), "b");
    EXPECT_EQ(platform.FAsked, 0);
    EXPECT_EQ(Values(table, "font-face"), "Arial b serif");
    EXPECT_EQ(Values(table, "copy"), "Arial b serif z");
    EXPECT_EQ(table.LookupType("outer")->GetValueCount(), 2);
    EXPECT_EQ(platform.FAsked, 1);
}

TEST(Schema, Units) {
    TSheetParser parser;
    auto units = [&](const char* name) {
        auto* editor = dynamic_cast<TCSSUnitEditor*>(parser.FSymbolTable.LookupEditor(name));
        std::string list;
        for (int32_t i = 0; editor && i < editor->GetUnitList().FCount; ++i)
            list.append(editor->GetUnitList().GetItem(i)).append(" ");
        return list;
    };
    EXPECT_EQ(units("length..."), "px em ");
    EXPECT_EQ(units("percentage..."), "% ");
    EXPECT_EQ(units("angle..."), "");
}

TEST(Symbols, Filter) {
    struct TStep {
        const char *FFilter, *FShown;
    };
    // One after the other: a filter as long as the last one, or longer, goes on from there.
    constexpr TStep Steps[] = {
        {"b", "border border-top bottom"},
        {"bo", "border border-top bottom"},
        {"bor", "border border-top"},
        {"box", ""},
        {"bo", "border border-top bottom"},
        {"bx", ""},
        {"", "border border-top bottom color cz CZ-a d"},
        {"border-", "border-top"},
        {"c", "color cz CZ-a"},
        {"cZ", "cz CZ-a"},
        {"", "border border-top bottom color cz CZ-a d"},
        {"z", ""},
    };
    TStyleSheetParser parser;
    for (const char* name : {"color", "d", "bottom", "CZ-a", "border", "cz", "border-top"})
        parser.FSymbolTable.NewProperty(name);
    parser.FSymbolTable.AlphaSort();
    parser.FKibitzPos = kpProperty;
    parser.FSymbolTable.ResetKibitz();
    for (const TStep& step : Steps) {
        parser.FSymbolTable.SetFilter(step.FFilter);
        std::string shown;
        for (int32_t i = 0; i < parser.FSymbolTable.GetKibitzPropCount(); ++i)
            shown += (i ? " " : "") + parser.FSymbolTable.GetKibitzProp(i);
        EXPECT_EQ(shown, step.FShown) << step.FFilter;
    }
    parser.FSymbolTable.SetFilter("");
    parser.FSymbolTable.SetFilter("bo");
    EXPECT_EQ(parser.FSymbolTable.FindIdent("bottom"), 2);
    EXPECT_EQ(parser.FSymbolTable.FindIdent("BORDER-S"), 1);
    EXPECT_EQ(parser.FSymbolTable.FindIdent("d"), -1);
    EXPECT_NE(parser.FSymbolTable.LookupProperty("COLOR"), nullptr);
    EXPECT_EQ(parser.FSymbolTable.GetKibitzProp(-1) + parser.FSymbolTable.GetKibitzProp(9), "");
}

TEST(Symbols, StringList) {
    for (int32_t size : {3, 8, 9, 16, 17, 200}) {
        TCSSStringList list;
        for (int32_t i = 0; i < size; ++i) {
            list.Add("v" + std::to_string(i));
            list.Add("v" + std::to_string(i / 2));
        }
        EXPECT_EQ(list.FCount, size);
        list.Remove("none");
        list.Remove("v1");
        EXPECT_EQ(list.GetItem(1), "v" + std::to_string(size - 1));
        EXPECT_FALSE(list.Contains("v1"));
        EXPECT_EQ(list.GetItem(list.FCount), "");
        list.Add("V1");
        EXPECT_EQ(list.GetItem(size - 1), "V1");
        EXPECT_TRUE(list.Contains("v2") && list.Contains("V1"));
    }
}

}  // namespace
}  // namespace caretwell
