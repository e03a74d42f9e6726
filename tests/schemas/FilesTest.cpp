// The files of the schema folder, loaded as for a document and asked for facts that people
// lean on. What is asked is the table of elements that lists are made of.
#include <map>
#include <set>
#include <sstream>

#include "schema/XSDReader.h"
#include "support/Cases.h"
#include "support/LoaderTest.h"

namespace caretwell {
namespace {

using std::string;
using std::string_view;

/// A file of the folder, loaded by the road that documents take to it. "a.aspx" is what a
/// server page has: HTML, and all controls.
class TShipped {
public:
    explicit TShipped(const string& file) {
        FManager.SetTagCase(tcNormal);
        FManager.SetHiddenRootNode(MakeRef<THTMLTag>(u"root", &FManager, -1));
        auto& parents = TMLSymbolManager::GetASPParentTags();
        bool isServerPage = file == "a.aspx", isDTD = file.ends_with(".dtd");
        if (isDTD || isServerPage) FManager.LoadDTD(Root(), Folder + (isDTD ? file : "loose.dtd"));
        else if (IsForReader(file)) FManager.LoadXSD(Root(), nullptr, Folder + file);
        else FManager.LoadXSDEx(Root(), nullptr, Folder + file);
        if (isServerPage)
            for (const char* controls : {"asp.xsd", "asp_directives.xsd"})
                FManager.LoadXSD(Root(), &parents, Folder + "asp schemas/" + controls);
        FManager.GetCharList().SetFilter({});
    }

    static bool IsForReader(string_view file) {
        return file.find("_directives") != file.npos || file == "resxschema.xsd" || file.starts_with("asp");
    }
    THTMLTag& Root() { return *FManager.GetHiddenRootNode(); }
    TMLSymbolManager& Manager() { return FManager; }

    /// "roots", "elements", "entities"   of the whole file
    /// "tr"       its tags and content: "- O", "- O EMPTY", "O O"
    /// "tr>"      its children
    /// "input@type"    the values, "[uri]" for an editor, "event"; with "required" or "fixed"
    /// "&eacute"  the code of the character
    /// Whatever is not there is "-".
    string Ask(string_view question) {
        if (question.front() == '&') return Code(ToUtf16(question.substr(1)));
        if (question == "roots") return Children(Root());
        if (question == "elements") return std::to_string(FManager.GetTagList().size());
        if (question == "entities") return std::to_string(FManager.GetCharList().GetCount());
        size_t at = question.find_first_of("@>", 1);  // a directive's name begins with "@" itself
        THTMLTag* tag = Find(ToUtf16(question.substr(0, at)));
        if (!tag) return "-";
        if (at == question.npos) return Tags(*tag);
        return question[at] == '>' ? Children(*tag) : Values(*tag, ToUtf16(question.substr(at + 1)));
    }

    string Values(THTMLTag& tag, std::u16string_view name) {
        TRef<INibMLTagAttribute> attribute = tag.FindAttribute(name);
        if (!attribute) return "-";
        string result = attribute->GetRequired() ? " required" : attribute->GetFixed() ? " fixed" : "";
        if (Supports<INibMLTagAttributeEvent>(attribute)) result += " event";
        for (int32_t i = 0; i < attribute->GetCount(); ++i) {
            string value = ToUtf8(attribute->GetValue(i));
            result += value.ends_with("...") ? " [" + value.substr(0, value.size() - 3) + "]" : " " + value;
        }
        return result;
    }

private:
    static inline const string Folder = CARETWELL_SOURCE_DIR "/schemas/";

    THTMLTag* Find(std::u16string_view name) {
        return static_cast<THTMLTag*>(FManager.GetTagFromHashList(name).Get());
    }
    string Code(std::u16string_view name) {
        auto& entities = FManager.GetCharList();
        int32_t index = entities.FindIndex(name);
        bool isThere = index >= 0 && entities.GetItem(index) == name;
        return isThere ? std::to_string(entities.GetAsciiVal(index)) : "-";
    }
    static string Tags(THTMLTag& tag) {
        string tags = tag.GetRequiresOpeningTag() ? "- " : "O ";
        return tags + (tag.GetRequiresClosingTag() ? "-" : "O") + (tag.GetEmpty() ? " EMPTY" : "");
    }
    static string Children(THTMLTag& tag) {
        string names;
        for (const auto& child : tag.GetAllTags()) names += ToUtf8(child->GetName()) + " ";
        return names;
    }

    TMLSymbolManager FManager;
};

class Shipped : public TLoaderTest {
protected:
    Shipped() { FFolder = CARETWELL_SOURCE_DIR "/schemas/"; }
    void SetUp() override {
        TLoaderTest::SetUp();
        FHost->FSetting = "Simple Typed Elements";
    }
    TShipped& Table(const string& file) {
        auto& table = FTables[file];
        if (!table) table = std::make_unique<TShipped>(file);
        return *table;
    }
    void TearDown() override {
        FTables.clear();
        TLoaderTest::TearDown();
    }
    std::map<string, std::unique_ptr<TShipped>> FTables;
};

std::multiset<string> Words(const string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<string>(words), {}};
}

// A file is a row of facts, one after the other: what is asked, and what is said.
const std::vector<TFileCase> Files = ReadCases("facts.txt");

TEST_F(Shipped, LoadWithoutMessage) {
    for (const auto& file : Files) {
        TShipped& table = Table(file.FTitle);
        for (const auto& tag : table.Manager().GetTagList()) {
            auto& element = static_cast<THTMLTag&>(*tag);
            element.GetAttributeCount();  // has its messages
            for (const auto& child : element.GetAllTags())
                EXPECT_EQ(table.Manager().GetTagFromHashList(child->GetName()), child.Get())
                    << file.FTitle << ": two of a name, " << ToUtf8(child->GetName());
        }
        EXPECT_EQ(std::exchange(FHost->FText, ""), "") << file.FTitle;
    }
}

// What a person may forget when adding an attribute: its editor.
TEST_F(Shipped, AttributesHaveTheirEditors) {
    constexpr std::u16string_view names[] = {u"action", u"alink", u"background", u"bgcolor", u"cite",
                                             u"color",  u"fill",  u"formaction", u"href",    u"longdesc",
                                             u"poster", u"src",   u"stroke",     u"vlink",   u"xlink:href"};
    for (const auto& file : Files) {
        if (!file.FTitle.ends_with(".dtd")) continue;
        for (const auto& tag : Table(file.FTitle).Manager().GetTagList())
            for (std::u16string_view name : names) {
                string values = Table(file.FTitle).Values(static_cast<THTMLTag&>(*tag), name);
                EXPECT_TRUE(values != "" && values != " required")
                    << file.FTitle << ": " << ToUtf8(tag->GetName()) << "@" << ToUtf8(name);
            }
    }
}

// What a misspelled type leaves behind: an attribute without its values, an element without content.
TEST_F(Shipped, TypesOfControlsAreThere) {
    for (const char* file : {"asp schemas/asp.xsd", "asp schemas/asp_directives.xsd", "page_directives.xsd",
                             "control_directives.xsd", "master_directives.xsd", "asax_directives.xsd",
                             "ashx_directives.xsd", "resxschema.xsd"}) {
        TXSDReader reader;
        reader.LoadFromFile(string(CARETWELL_SOURCE_DIR "/schemas/") + file);
        for (auto* entry = reader.GetFirstElement(); entry; entry = TXSDReader::GetNextElement(entry)) {
            const auto& element = static_cast<const TXSDElement&>(*entry->Item);
            string name = string(file) + ": " + ToUtf8(element.FName);
            EXPECT_NE(element.FName, u"") << name << " in " << ToUtf8(element.FParent);
            auto* type = dynamic_cast<TXSDType*>(element.FTypeDef);
            if (!type) type = reader.LookupType(element.FTypeName);
            EXPECT_TRUE(type || element.FTypeName.empty()) << name;
            if (!type) continue;
            std::set<string> seen;
            for (const TXSDAttribute* attribute : type->FAttributes) {
                bool isBuiltIn = attribute->FTypeName.starts_with(u"xsd:");
                EXPECT_NE(isBuiltIn, reader.LookupSimpleType(attribute->FTypeName) != nullptr)
                    << name << "@" << ToUtf8(attribute->FName);
                EXPECT_TRUE(seen.insert(ToUtf8(attribute->FName)).second) << name << "@" << *seen.rbegin();
            }
        }
    }
}

// Of children some are named, "!p" is one that must not be there; all else is said in full.
TEST_F(Shipped, Facts) {
    for (const auto& c : Files) {
        const string& file = c.FTitle;
        std::istringstream text(c.FText);
        for (string fact; std::getline(text >> std::ws, fact, ';');) {
            size_t sign = fact.find(" =");
            string question = fact.substr(0, sign), expect = fact.substr(sign + 2);
            if (question.starts_with("doctype ")) {
                EXPECT_EQ(GetSchemaFileName(question.substr(8), kmHTML), FFolder + file);
                continue;
            }
            auto answer = Words(Table(file).Ask(question));
            if (!question.ends_with('>')) {
                EXPECT_EQ(answer, Words(expect)) << file << ": " << question;
                continue;
            }
            for (const string& word : Words(expect)) {
                bool isBarred = word.front() == '!';
                EXPECT_EQ(answer.count(word.substr(isBarred)), isBarred ? 0u : 1u)
                    << file << ": " << question << " " << word;
            }
        }
    }
}

// A directive stands in several files, since their reader follows no include.
TEST_F(Shipped, DirectivesAgree) {
    TShipped& common = Table("a.aspx");
    for (const char* file : {"page_directives.xsd", "control_directives.xsd", "master_directives.xsd",
                             "asax_directives.xsd", "ashx_directives.xsd"})
        for (const auto& tag : Table(file).Manager().GetTagList()) {
            string name = ToUtf8(tag->GetName());
            if (name == "@ Application" || name == "@ WebHandler") continue;
            TRef<INibMLTag> known = common.Manager().GetTagFromHashList(tag->GetName());
            ASSERT_TRUE(known) << file << " " << name;
            EXPECT_EQ(tag->GetAttributeCount(), known->GetAttributeCount()) << file << " " << name;
            for (int32_t i = 0; i < tag->GetAttributeCount(); ++i) {
                string question = name + "@" + ToUtf8(tag->GetAttribute(i)->GetName());
                EXPECT_EQ(Table(file).Ask(question), common.Ask(question)) << file << " " << question;
            }
        }
}

}  // namespace
}  // namespace caretwell
