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
        bool isFile = c.FTitle.starts_with("a file");
        std::ostringstream failure;
        try {
            TCSSReader(table).LoadFromText(isFile ? c.FText : "<css>" + c.FText + "</css>");
        } catch (const ECSSSchemaError& error) {
            failure << error.GetLine() << ": " << error.what() << ", ";
        }
        failure << table.FProperties.Count() << " properties, " << table.FEditors.Count() << " editors";
        std::string property = c.FExpect.substr(0, c.FExpect.find(": "));
        EXPECT_EQ(isFile ? failure.str() : property + ": " + Values(table, property), c.FExpect) << c.FTitle;
    }
    TCSSSymbolTable table(nullptr);
    TCSSReader(table).LoadFromFile("/nonexistent/css.xml");
    EXPECT_EQ(table.FEditors.Count(), 0);
}

// Chains and rings of a length that would break a recursion, or square the table.
TEST(Schema, LongChains) {
    constexpr int Length = 20'000;
    const std::string types = "<type name='t$'><value ref='t$+'/><value name='v$'/></type>";
    const std::string properties =
        "<property name='p$'><value type='p$+'/><value type='t$'/><value name='w$'/></property>";
    const std::string ring =
        "<type name='t20000'><value ref='t0'/></type><property name='p20000'><value type='p0'/></property>";
    const std::string text = "<css>" + Numbered(types + properties, Length) + ring +
                             Repeat("<property name='deep'><value sequence=''>", Length) +
                             Repeat("</value></property>", Length) + "</css>";
    TCSSSymbolTable table(nullptr);
    TCSSReader(table).LoadFromText(text);
    EXPECT_EQ(table.FProperties.Count(), Length + 2);
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
