// What a host asks of the manager beside the list: which files, how an item is drawn, where it
// leads, and the editors that write in its place.
#include <gtest/gtest.h>

#include "support/ParseState.h"
#include "symbols/FileToSchemaMapper.h"

namespace caretwell::test {
namespace {

TEST(Manager, HandlesFiles) {
    const struct {
        const char *FExtensions, *FName;
        bool FHandles;
    } cases[] = {
        {"", "a.html", true},        {"", "x/A.HTM", true},        {"", "a.wml", true},
        {"", "a.config", true},      {"", "a.shtml", false},       {"", "html", false},
        {"shtml", "a.SHTML", true},  {"x;shtml;y", "a.y", true},   {"x\r\nshtml\ny", "a.shtml", true},
        {"x\r\nshtml", "a.x", true}, {"x;shtml", "a.shtm", false}, {"x;shtml", "a.", false},
    };
    for (const auto& c : cases) {
        THostOptions options;
        options.Settings = {{"Internet\\File Options\\HTML\\Extensions", c.FExtensions}};
        TTestHost host("", "a.html", options);
        EXPECT_EQ(host.Manager().HandlesFile(c.FName), c.FHandles) << c.FName << " by " << c.FExtensions;
    }
}

// Where a prefix stands in the open list; -1 if nothing does, 0 in an empty one.
TEST(Manager, FindsItems) {
    const struct {
        const char* FText;
        const char16_t* FPrefix;
        bool FFound;
        int32_t FIndex;
        const char16_t* FLongest = u"Attribute Value  ";
    } cases[] = {
        {"<div><^ ", u"im", true, 5},
        {"<div><^ ", u"IMG", true, 5},
        {"<div><^ ", u"x", false, -1},
        {"<a ^>", u"ti", true, 2},
        {"<a target='^'>", u"_t", true, 3},
        {"<a target='^'>", u"x", false, -1},
        {"<a href title target ^>", u"x", false, 0},
        {"</p^>", u"x", false, 0},
        {"<p>&^", u"ag", true, 2, u"  "},
        {"<p>&^", u"z", false, -1, u"  "},
    };
    for (const auto& c : cases) {
        TTestHost host(c.FText);
        host.Offer();
        host.Manager().SetFilter({});
        int32_t index = -7;
        EXPECT_EQ(host.Manager().FindSymIndex(c.FPrefix, index), c.FFound) << c.FText;
        EXPECT_EQ(index, c.FIndex) << c.FText;
        EXPECT_EQ(host.Manager().FindIdent(c.FPrefix), c.FFound ? c.FIndex : -1) << c.FText;
        EXPECT_EQ(host.Manager().GetLongestItem(), c.FLongest) << c.FText;
    }
}

// Only a closing tag leads somewhere: to the line of its opening tag.
TEST(Manager, LeadsToTheOpeningTag) {
    const struct {
        const char* FText;
        int32_t FIndex;
        bool FIsCtrlDown, FBrowses;
        int32_t FLine;
    } cases[] = {
        {"<div>\n<b>^ ", 0, true, true, 1},   {"<div>\n<b>^ ", 1, true, true, 2},
        {"<div>\n<b>^ ", 1, false, false, 2}, {"<div>\n<b>^ ", 2, true, false, 0},
        {"<div>\n<b>^ ", 99, true, false, 0}, {"<div>\n<a ^>", 0, true, false, 0},
    };
    for (const auto& c : cases) {
        TTestHost host(c.FText, "dir/page.html");
        host.Offer();
        host.Session().Platform().SetCtrlDown(c.FIsCtrlDown);
        EXPECT_EQ(host.Manager().IsViewerBrowsable(c.FIndex), c.FBrowses) << c.FText << c.FIndex;
        std::string file = "x";
        int32_t line = -7;
        EXPECT_TRUE(host.Manager().GotoDefinition(file, line, c.FIndex));
        EXPECT_EQ(file + ":" + std::to_string(line), "dir/page.html:" + std::to_string(c.FLine)) << c.FText;
        EXPECT_FALSE(host.Manager().GotoDefinition(file, line, -1));
        EXPECT_EQ(file, "");
    }
}

/// Writes down what is drawn; a character is 10 wide and 20 high.
class TPaper final : public INibCanvas {
public:
    std::string GetFontName() const override { return FFont; }
    void SetFontName(std::string_view name) override {
        if (!name.empty()) FFont = name;
    }
    uint32_t GetFontColor() const override { return FColor; }
    void SetFontColor(uint32_t color) override {
        if (FIsTorn) throw std::runtime_error("torn");
        FColor = color;
    }
    void SetBold(bool bold) override { FIsBold = bold; }
    void Refresh() override {}
    void MeasureText(std::u16string_view text, TNibRect& rect, uint32_t) override {
        rect.Right = rect.Left + static_cast<int32_t>(text.size()) * 10;
        rect.Bottom = rect.Top + 20;
    }
    void TextOut(int32_t x, int32_t y, uint32_t, const TNibRect&, std::u16string_view text) override {
        std::ostringstream line;
        line << ToUtf8(text) << '@' << x << ',' << y << (FIsBold ? " bold " : " ") << std::hex << FColor
             << '|';
        FSeen += line.str();
    }
    std::string FSeen, FFont = "Sans";
    uint32_t FColor = INibCanvas::SystemColor | 14;
    bool FIsBold = false, FIsTorn = false;
};

TEST(Manager, DrawsEntities) {
    const struct {
        const char* FText;
        int32_t FIndex;
        bool FTextOnly, FDraws;
        uint32_t FColor;
        const char* FExpect;
    } cases[] = {
        {"<p>&^", 3, false, true, INibCanvas::SystemColor | 14,
         "&@5,7 bold ff0000|amp@30,7 bold ff00000e|47,27"},
        {"<p>&^", 3, false, true, 0, "&@5,7 bold ff0000|amp@30,7 bold ff000008|47,27"},
        {"<p>&^", 3, true, true, 0, "amp@5,7 bold 0|36,27"},
        {"<p>&^", 3, false, false, 0, "47,27"},
        {"<p>^ ", 0, false, true, 0, "by the host"},
    };
    for (const auto& c : cases) {
        TTestHost host(c.FText);
        host.Offer();
        TPaper paper;
        paper.FColor = c.FColor;
        TNibRect rect{5, 7, 5, 7};
        bool isDefault = false;
        host.Manager().DrawItem(c.FIndex, paper, rect, c.FTextOnly, c.FDraws, isDefault);
        std::string place = std::to_string(rect.Right) + "," + std::to_string(rect.Bottom);
        EXPECT_EQ(isDefault ? "by the host" : paper.FSeen + place, c.FExpect) << c.FText;
        EXPECT_EQ(paper.FFont, "Sans");
        paper.FIsTorn = true;
        size_t before = host.Session().Messages().Messages().size();
        host.Manager().DrawItem(c.FIndex, paper, rect, c.FTextOnly, c.FDraws, isDefault);
        size_t told = host.Session().Messages().Messages().size() - before;
        EXPECT_EQ(told, isDefault || c.FTextOnly ? 0 : 1) << "what the canvas says ends here";
    }
}

/// Writes what it was made for.
class TEditorOf final : public TImplements<INibMLEditor> {
public:
    explicit TEditorOf(std::u16string value) : FValue(std::move(value)) {}
    bool Execute(IRefCounted* context, int32_t) override {
        auto tag = QueryAs<INibMLTag>(context);
        FSeen += tag ? ToUtf8(tag->GetName()) : "?";
        return !FValue.empty();
    }
    int32_t RelativeMoveCaretPos() override { return -2; }
    bool InvokeCodeCompletion() override { return false; }
    std::u16string GetValue() override { return FValue; }
    std::string GetEditorId() override { return "test"; }
    std::string FSeen;

private:
    std::u16string FValue;
};

// An editor of a whole tag replaces the tag, one of an element that is chosen writes the element.
TEST(Manager, EditorsOfTags) {
    const struct {
        const char *FText, *FItem;
        const char16_t* FValue;
        const char *FExpect, *FSeen;
    } cases[] = {
        {"<p><img ^ >\n", "alt", u"<img src=x /", "<p><img src=x />\n", "img"},
        {"<p><img ^ >\n", "alt", u"", "<p><img alt >\n", "img"},
        {"<p><^\n", "img", u"img>x", "<p><img^>x\n", "img"},
        {"<p>^\n", "img", u"", "<p><img alt src=\n", "img"},
        {"<p>^\n", "</p>", u"x", "<p></p>\n", ""},
        {"<p>^\n", "b", u"x", "<p><b\n", ""},
    };
    for (const auto& c : cases) {
        TTestHost host(c.FText);
        host.Parse();
        auto editor = MakeRef<TEditorOf>(c.FValue);
        MLSymbolManager().RegisterEditor(MLSymbolManager().GetTagFromHashList(u"img"), editor);
        ASSERT_TRUE(host.Driver().OpenList() && host.Driver().Select(ToUtf16(c.FItem))) << c.FText;
        host.Driver().PressKey(ekEnter);
        bool hasCaret = std::string_view(c.FExpect).find('^') != std::string_view::npos;
        EXPECT_EQ(hasCaret ? host.Text() : host.Document().Text().Text(), c.FExpect) << c.FText;
        EXPECT_EQ(editor->FSeen, c.FSeen) << c.FText;
        MLSymbolManager().UnRegisterEditor(editor.Get());
    }
}

// An edit of an attribute that a host describes itself, as for a grid of properties.
TEST(Manager, AppliesAttributeValues) {
    const struct {
        const char *FText, *FNew, *FOld;
        int32_t FStart, FEnd, FTagEnd, FValueStart;
        char FOpen, FClose;
        TParserContexts FContext;
        const char* FExpect;
    } cases[] = {
        // Not written yet.
        {"<a^>", "x", "", 0, 0, 2, 0, 0, 0, pcNone, "<a t=\"x\">"},
        {"<a ^>", "x", "", 0, 0, 3, 0, 0, 0, pcNone, "<a t=\"x\">"},
        {"<a ^/>", "x", "", 0, 0, 3, 0, 0, 0, pcNone, "<a t=\"x\" />"},
        {"<a^>", "\"", "", 0, 0, 2, 0, 0, 0, pcNone, "<a t='\"'>"},
        // Written: quoted, with another quote, without, with a blank in it.
        {"<a t=\"o\"^>", "x", "o", 3, 8, 0, 0, '"', '"', pcNone, "<a t=\"x\">"},
        {"<a t='o'^>", "xy", "o", 3, 8, 0, 0, '\'', '\'', pcNone, "<a t='xy'>"},
        {"<a t=o^>", "x", "o", 3, 6, 0, 0, 0, 0, pcNone, "<a t=x>"},
        {"<a t=o^>", "x y", "o", 3, 6, 0, 0, 0, 0, pcNone, "<a t=\"x y\">"},
        {"<a t=\"o^", "x", "o", 3, 7, 0, 0, '"', 0, pcNone, "<a t=\"x\""},
        // Taken away, left alone, in a region that is open.
        {"<a t=o^ b>", "", "o", 3, 6, 0, 0, 0, 0, pcNone, "<a  b>"},
        {"<a t=o^>", "o", "o", 3, 6, 0, 0, 0, 0, pcNone, "-<a t=o>"},
        {"<a t=\"^ >", "x", "", 3, 6, 0, 5, '"', 0, pcString, "<a t=\"x\">"},
    };
    for (const auto& c : cases) {
        TTestHost host(c.FText);
        host.Parse();
        TAttributeEdit edit;
        edit.AttributeName = u"t";
        edit.NewValue = ToUtf16(c.FNew);
        edit.OldValue = ToUtf16(c.FOld);
        edit.AttributeStart = c.FStart;
        edit.AttributeEnd = c.FEnd;
        edit.TagEnd = c.FTagEnd;
        edit.ValueStart = c.FValueStart;
        edit.View = &host.Document().View();
        edit.OpenQuote = c.FOpen;
        edit.CloseQuote = c.FClose;
        edit.Context = c.FContext;
        bool isWritten = host.Manager().ApplyAttributeValue(edit);
        EXPECT_EQ((isWritten ? "" : "-") + host.Document().Text().Text(), c.FExpect) << c.FText << c.FNew;
    }
}

// A document may begin inside an element that it does not show.
TEST(Manager, ContextTag) {
    TTestHost host("^ ");
    EXPECT_EQ(host.Offer(), "html");
    host.Manager().SetContextTag(MLSymbolManager().GetTagFromHashList(u"ul"));
    EXPECT_EQ(host.Offer(), "li");
    EXPECT_FALSE(host.Manager().GetContextTag()) << "it holds for one list";
    host.OpenText("<x>^ ");
    host.Manager().SetContextTag(MLSymbolManager().GetTagFromHashList(u"ul"));
    EXPECT_EQ(host.Offer(), "</x> li");
    host.OpenText("^ ");
    EXPECT_EQ(host.Offer(), "html");
}

TEST(Manager, CaseOfNames) {
    const struct {
        TTagCase FCase;
        const char *FExpect, *FChosen;
    } cases[] = {{tcNormal, "Item", "<Order><Item^ "},
                 {tcLowerCase, "item", "<Order><item^ "},
                 {tcUpperCase, "ITEM", "<Order><ITEM^ "}};
    for (const auto& c : cases) {
        TTestHost host("<Order><^ ", "a.order");
        GetFileToSchemaMapperService()->RegisterSchema(".order", "order.xsd");
        MLSymbolManager().SetTagCase(c.FCase);
        EXPECT_EQ(host.Manager().GetTagCase(), c.FCase);
        EXPECT_EQ(host.Offer(), c.FExpect);
        ASSERT_TRUE(host.Driver().OpenList());
        host.Driver().PressKey(ekEnter);
        EXPECT_EQ(host.Text(), c.FChosen);
    }
}

// What a list has changed for its time is as before when it has ended.
TEST(Manager, LeavesNothingBehind) {
    TTestHost host("<a href=x ^>y");
    TEditView& view = host.Document().View();
    view.SetCaretOffset(11);
    view.Block()->Start();
    view.SetCaretOffset(12);
    view.Block()->Finish();
    view.SetCaretOffset(10);
    EXPECT_EQ(host.Offer(), "target title");
    EXPECT_EQ(view.Block()->Text(), u"y");
    bool displayParams = true;
    host.Manager().Done(false, displayParams);
    EXPECT_FALSE(displayParams);
    EXPECT_EQ(host.Manager().GetHiddenAttrCount(), 0);
    EXPECT_EQ(host.Offer(), "target title");
    ASSERT_TRUE(host.Driver().OpenList() && host.Driver().Select(u"title"));
    host.Driver().PressKey(ekEnter);
    EXPECT_EQ(view.Block()->Text(), u"y");

    host.OpenText("<a target='^'>");
    EXPECT_EQ(host.Offer(), "_blank _parent _self _top");
    host.Manager().SetFilter(u"_s");
    EXPECT_EQ(host.Manager().GetCount(), 1);
    host.Manager().SetFilter(u"_b");
    EXPECT_EQ(host.Manager().GetSymbolTypeText(0), u" _blank") << "no filter goes on from another one";
    host.Parse();
    EXPECT_EQ(host.Manager().GetCount(), 4);
}

// A document names no file outside of the schema folder, whatever its kind.
TEST(Manager, SchemasOfDocuments) {
    const char* const cases[][3] = {
        {"a.html", "<!DOCTYPE a SYSTEM 'http://x/wml12.dtd'><p>", "wml12.dtd"},
        {"a.crate", "<!DOCTYPE a SYSTEM 'http://x/shelf.xsd'>", "shelf.xsd"},
        {"a.crate", "<!DOCTYPE a PUBLIC '-//x' '/etc/passwd'>", ""},
        {"a.crate", "<a>", "crate.xsd"},
    };
    for (const auto& [name, text, schema] : cases) {
        TTestHost host(text, name);
        auto mapper = GetFileToSchemaMapperService();
        mapper->RegisterSchema(".crate", "crate.xsd");
        host.Parse();
        host.Parser().BootStrapDTD(
            MakeRef<TMLBufferProducer>(TRef<INibEditView>(&host.Document().View()), 0));
        std::string folder = *schema ? CARETWELL_SOURCE_DIR "/tests/data/schemas/" : "";
        EXPECT_EQ(MLSymbolManager().GetSchemaFile(), folder + schema) << text;
        std::string seen;
        for (const char* page : {"a.aspx", "a.ASCX", "a.master", "a.asax", "a.ashx"})
            seen += mapper->GetDirectiveSchema(page).substr(mapper->GetDirectiveSchema(page).rfind('/') + 1) +
                    " ";
        EXPECT_EQ(seen,
                  "page_directives.xsd control_directives.xsd master_directives.xsd asax_directives.xsd "
                  "ashx_directives.xsd ");
        EXPECT_FALSE(mapper->HasDirectiveSchema("a.html"));
    }
}

// A schema that is missing is told of once, in the words of its kind.
TEST(Manager, MissingSchemas) {
    const char* const cases[][3] = {
        {"a.gone", "<a ^",
         "Code Completion: Unable to find schema file \"" CARETWELL_SOURCE_DIR
         "/tests/data/schemas/gone.xsd\""},
        {"a.html", "<!DOCTYPE a SYSTEM 'gone.dtd'><a ^", "Code Completion: Invalid schema file \"gone.dtd\""},
    };
    for (const auto& [name, text, says] : cases) {
        TTestHost host(text, name);
        auto mapper = GetFileToSchemaMapperService();
        mapper->RegisterSchema(".gone", "gone.xsd");
        host.Offer();
        std::string seen;
        for (const auto& message : host.Session().Messages().Messages())
            seen += message.Prefix + ": " + message.Text;
        EXPECT_EQ(seen, says);
        // Without it a file of that kind is a page like any other.
        EXPECT_TRUE(mapper->RegisterSchema(".Gone", ""));
        EXPECT_FALSE(mapper->RegisterSchema(".gone", ""));
        EXPECT_FALSE(mapper->HasSchema("a.gone"));
    }
}

}  // namespace
}  // namespace caretwell::test
