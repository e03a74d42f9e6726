// The files of the schema folder, loaded as for a document and asked for facts that people
// lean on. What is asked is the table of elements that lists are made of.
#include <map>
#include <set>
#include <sstream>

#include "schema/XSDReader.h"
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

    /// "tr"       its tags and content: "- O", "- O EMPTY", "O O"
    /// "tr>"      its children ("top>": what may stand at the top of a document)
    /// "input@type"    the values, "[uri]" for an editor, "event"; with "required" or "fixed"
    /// "&eacute"  the code of the character
    /// Whatever is not there is "-".
    string Ask(string_view question) {
        if (question.front() == '&') return Code(ToUtf16(question.substr(1)));
        size_t at = question.find_first_of("@>", 1);  // a directive's name begins with "@" itself
        THTMLTag* tag = question == "top>" ? &Root() : Find(ToUtf16(question.substr(0, at)));
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

const struct {
    const char *FName, *FRoots;
    size_t FElements;
    int32_t FEntities;
} Files[] = {
    {"loose.dtd", "html", 224, 2032},
    {"strict.dtd", "html", 77, 252},
    {"frameset.dtd", "html", 91, 252},
    {"xhtml1-strict.dtd", "html", 77, 253},
    {"xhtml1-transitional.dtd", "html", 89, 253},
    {"xhtml1-frameset.dtd", "html", 91, 253},
    {"HTML3.2.dtd", "html", 70, 100},
    {"HTML2.dtd", "html", 49, 100},
    {"HTML2-strict.dtd", "html", 45, 100},
    {"xsl.dtd", "xsl:stylesheet xsl:transform", 35, 5},
    {"wml12.dtd", "wml", 36, 7},
    {"resxschema.xsd", "root", 7, 0},
    {"DotNetConfig.xsd", "configuration", 389, 0},
    {"SiteMapSchema.xsd", "siteMap", 2, 0},
    {"recipes.xsd", "cookbook cook prepare rest", 14, 0},
    {"page_directives.xsd",
     "@ Page @ Assembly @ Implements @ Import @ MasterType @ OutputCache @ PreviousPageType @ Reference @ "
     "Register",
     9, 0},
    {"control_directives.xsd",
     "@ Control @ Assembly @ Implements @ Import @ OutputCache @ Reference @ Register", 7, 0},
    {"master_directives.xsd",
     "@ Master @ Assembly @ Implements @ Import @ MasterType @ OutputCache @ Reference @ Register", 8, 0},
    {"asax_directives.xsd", "@ Application @ Assembly @ Import", 3, 0},
    {"ashx_directives.xsd", "@ WebHandler @ Assembly", 2, 0},
    {"a.aspx",
     "html asp:Content @ Page @ Control @ Master @ Assembly @ Implements @ Import @ MasterType @ OutputCache "
     "@ PreviousPageType @ Reference @ Register",
     498, 2032},
};

TEST_F(Shipped, LoadWithoutMessageAndHaveTheirRoots) {
    for (const auto& file : Files) {
        TShipped& table = Table(file.FName);
        EXPECT_EQ(Words(table.Ask("top>")), Words(file.FRoots)) << file.FName;
        EXPECT_EQ(table.Manager().GetTagList().size(), file.FElements) << file.FName;
        EXPECT_EQ(table.Manager().GetCharList().GetCount(), file.FEntities) << file.FName;
        for (const auto& tag : table.Manager().GetTagList()) {
            auto& element = static_cast<THTMLTag&>(*tag);
            element.GetAttributeCount();  // has its messages
            for (const auto& child : element.GetAllTags())
                EXPECT_EQ(table.Manager().GetTagFromHashList(child->GetName()), child.Get())
                    << file.FName << ": two of a name, " << ToUtf8(child->GetName());
        }
        EXPECT_EQ(std::exchange(FHost->FText, ""), "") << file.FName;
    }
}

// What a person may forget when adding an attribute: its editor.
TEST_F(Shipped, AttributesHaveTheirEditors) {
    const std::map<string_view, string_view> editors = {
        {"action", "uri"},   {"alink", "color"},  {"background", "uri"}, {"bgcolor", "color"},
        {"cite", "uri"},     {"color", "color"},  {"fill", "color"},     {"formaction", "uri"},
        {"href", "uri"},     {"longdesc", "uri"}, {"poster", "uri"},     {"src", "uri"},
        {"stroke", "color"}, {"vlink", "color"},  {"xlink:href", "uri"},
    };
    for (const auto& file : Files) {
        if (!string_view(file.FName).ends_with(".dtd")) continue;
        for (const auto& tag : Table(file.FName).Manager().GetTagList())
            for (const auto& [name, editor] : editors) {
                string values = Table(file.FName).Values(static_cast<THTMLTag&>(*tag), ToUtf16(name));
                EXPECT_TRUE(values != "" && values != " required")
                    << file.FName << ": " << ToUtf8(tag->GetName()) << "@" << name;
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

// Of children some are named, "!p" is one that must not be there; of values, all.
const struct {
    const char *FFile, *FFacts;
} Facts[] = {
    {"loose.dtd", R"(
        html = O O; li = - O; tbody = O O; div = - -; br = - O EMPTY; wbr = - O EMPTY; iframe = - -;
        plaintext = - O; blink = -;
        input@type = hidden text search tel url email password date month week time datetime-local number
            range color checkbox radio file submit image reset button;
        button@type = submit reset button; form@method = get post dialog; a@target = _blank _self _parent _top;
        img@loading = lazy eager; video@preload = none metadata auto;
        track@kind = subtitles captions descriptions chapters metadata; th@scope = row col rowgroup colgroup;
        textarea@wrap = hard soft; script@type = module importmap speculationrules;
        script@crossorigin = anonymous use-credentials;
        p@enterkeyhint = enter done go next previous search send;
        p@inputmode = none text tel url email numeric decimal search; p@popover = auto manual hint;
        p@hidden = until-found hidden; p@contenteditable = true plaintext-only false;
        input@disabled = false true; video@controls = false true; p@itemscope = false true; p@itemtype = [uri];
        td@bgcolor = [color]; img@src = required [uri]; img@alt = required; bdo@dir = required ltr rtl;
        p@dir = ltr rtl auto; p@onclick = event; body@onhashchange = event; p@onhashchange = -;
        meta@onclick = -; link@onload = event; meta@aria-label = -;
        p@aria-sort = ascending descending none other; svg@viewBox =; path@stroke-linecap = butt round square;
        stop@stop-color = [color]; svg@xmlns = fixed; math@display = block inline; font@color = [color];
        &eacute = 233; &euro = 8364; &Afr = 120068; &NotEqualTilde = -; html> = head body title p !td !html;
        head> = title base link meta style script noscript template !p !div;
        body> = p div table ul form section svg math center font !li !td !option !style !area;
        ul> = li script template !p !ul; table> = caption colgroup col thead tbody tfoot tr !td !form;
        tr> = td th script template !tr !p; p> = em a img input script !p !div !ul;
        a> = div h1 img video !a !button !input !label; form> = input fieldset div !form;
        select> = option optgroup hr !p !input; video> = source track p !video !audio;
        picture> = source img !p; map> = area p; header> = h1 nav !header !footer !main; details> = summary p;
        dl> = dt dd div !p; iframe> = !p !a; svg> = g path linearGradient text foreignObject title !p;
        filter> = feGaussianBlur feMerge !path; foreignObject> = p div; math> = mrow mi mfrac msup !p;
    )"},
    {"strict.dtd", R"(
        p = - O; colgroup = - O; section = -; center = -; iframe = -; form@action = required [uri];
        base@href = required [uri]; a@target = -; p@align = -; img@name =; p@onclick = event; p@draggable = -;
        textarea@rows = required; optgroup@label = required; script@type = required; script@defer = false true;
        input@type = text password checkbox radio submit reset file hidden image button;
        td@valign = top middle bottom baseline; table@rules = none groups rows cols all;
        object@classid = [uri]; head@profile = [uri]; html@xmlns = -; body@bgcolor = -; br@onclick = -;
        area@onfocus = event; del@cite = [uri]; &nbsp = 160; &apos = -; &check = -;
        body> = p div script ins !a !em !center; pre> = em a !img !big !sub;
        button> = p em img !a !input !form; table> = tr tbody col !td;
    )"},
    {"frameset.dtd", R"(
        frame = - O EMPTY; a@target = _blank _self _parent _top; base@href = [uri];
        frame@noresize = false true; frameset@rows =; frameset@onload = event; frame@scrolling = yes no auto;
        frame@src = [uri]; body@bgcolor = [color]; br@clear = left all right none; font@size = 1 2 3 4 5 6 7;
        html> = head frameset !body; noframes> = body;
    )"},
    {"xhtml1-strict.dtd", R"(
        p = - -; html = - -; br = - O EMPTY; html@xmlns = fixed; map@id = required; img@name = -;
        a@xml:space = -; script@id =; script@event = -; pre@xml:space = fixed; input@checked = false true;
        form@target = -; &apos = 39; table> = tr tbody; body> = p !a;
    )"},
    {"xhtml1-transitional.dtd", R"(
        frameset = -; font@color = [color]; ul@type = disc square circle; iframe@frameborder = 1 0;
        applet@width = required; table@bgcolor = [color]; td@nowrap = false true; body> = p a center font;
        noframes> = p a !body;
    )"},
    {"HTML3.2.dtd", R"(
        span = -; p@align = left center right; p@class = -; body@background = [uri];
        table@align = left center right; td@valign = top middle bottom; applet@code = required; script@src = -;
        body> = p font center table !span; table> = caption tr !td !tbody; pre> = em a !img !font;
    )"},
    {"HTML2.dtd", R"(
        table = -; xmp = - -; input@type = text password checkbox radio submit reset image hidden;
        img@width = -; form@method = get post; dl@compact = false true; link@href = required [uri];
        textarea@cols = required; &euro = -; body> = p em hr; form> = input select p !form; a> = h1 em !a;
    )"},
    {"HTML2-strict.dtd", R"(
        xmp = -; body> = p img hr !em; a> = em !h1 !a;
    )"},
    {"xsl.dtd", R"(
        xsl:value-of = - O EMPTY; xsl:template@match =; xsl:if@test = required;
        xsl:output@method = xml html text; xsl:import@href = required [uri];
        xsl:stylesheet@version = required 1.0; xsl:for-each@select = required;
        xsl:sort@order = ascending descending; xsl:number@level = single multiple any; xsl:key@use = required;
        xsl:text@disable-output-escaping = yes no; xsl:stylesheet@xmlns:xsl = fixed;
        xsl:template> = xsl:param xsl:for-each xsl:element !xsl:sort !xsl:output;
        xsl:stylesheet> = xsl:template xsl:param xsl:output !xsl:if !xsl:sort;
        xsl:for-each> = xsl:sort xsl:if !xsl:param; xsl:call-template> = xsl:with-param !xsl:sort;
        xsl:choose> = xsl:when xsl:otherwise !xsl:if; xsl:attribute> = xsl:value-of !xsl:element;
    )"},
    {"wml12.dtd", R"(
        card = - -; do@type = required accept prev help reset options delete unknown; card@ontimer = event [uri];
        img@src = required [uri]; input@emptyok = true false; go@method = get post; table@columns = required;
        p@mode = wrap nowrap; setvar@value = required; option@onpick = event [uri]; pre@xml:space = fixed;
        tr@xml:lang = -; &shy = 173; card> = p do timer onevent !a; wml> = head template card !p;
        do> = go prev noop refresh !p; go> = postfield setvar; pre> = anchor do br !img;
        p> = a select input do !p;
    )"},
    {"xhtml1-frameset.dtd", R"(
        frame@noresize = false true; html@xmlns = fixed; html> = head frameset !body;
    )"},
    {"a.aspx", R"(
        body> = asp:Button !asp:Content; form@runat = server; svg@id =;
        section> = asp:Button asp:Label asp:Table; tr> = asp:Table !button !table; asp:Panel> = asp:Button
            button;
        asp:Button@OnClick = event; asp:Button@runat = server; asp:Button@CausesValidation = true false;
        asp:Button@PostBackUrl = [uri]; asp:Button@BackColor = [color]; asp:Button@Font-Bold = true false;
        asp:Button@Font-Size = Smaller Larger XX-Small X-Small Small Medium Large X-Large XX-Large;
        asp:Button@Columns = -; asp:Button> = !div;
        asp:TextBox@TextMode = SingleLine MultiLine Password Color Date DateTime DateTimeLocal Email Month
            Number Range Search Phone Time Url Week;
        asp:TextBox@MaxLength =; asp:Image@Enabled = -; asp:Image@Font-Bold = -;
        asp:ImageButton@Enabled = true false; asp:DropDownList@AutoPostBack = true false;
        asp:BulletedList@AutoPostBack = -; asp:DropDownList> = asp:ListItem Items; Items> = asp:MenuItem;
        asp:Panel> = asp:GridView table !PageContent; li> = asp:HyperLink; asp:Content> = asp:Panel;
        asp:GridView> = Columns EmptyDataTemplate; asp:GridView@HeaderStyle-BackColor = [color];
        asp:GridView@HeaderStyle-Font-Bold = true false;
        asp:GridView@PagerSettings-Mode = NextPrevious Numeric NextPreviousFirstLast NumericFirstLast;
        asp:GridView@OnRowDataBound = event; Columns> = asp:BoundField asp:TemplateField asp:BoundColumn;
        asp:TemplateField> = ItemTemplate HeaderStyle; asp:TemplateField@ItemStyle-CssClass =;
        asp:CheckBoxField@DataFormatString = -; ItemTemplate> = asp:LinkButton tr;
        PagerStyle@Mode = NextPrev NumericPages; NodeStyle@NodeSpacing =;
        asp:SqlDataSource> = SelectParameters; asp:SqlDataSource@Visible = -;
        asp:SqlDataSource@CacheDuration = Infinite; asp:AccessDataSource@ConnectionString = -;
        SelectParameters> = asp:ControlParameter;
        asp:CompareValidator@Operator = Equal NotEqual GreaterThan GreaterThanEqual LessThan LessThanEqual
            DataTypeCheck;
        asp:Table> = asp:TableRow; asp:UpdatePanel> = ContentTemplate; Triggers> = asp:PostBackTrigger;
        asp:CreateUserWizard> = WizardSteps; asp:CreateUserWizard@StepStyle-Width =; @ Page@Language = C# VB;
        @ Page@CodeBehind = [uri]; @ Page@EnableSessionState = true false ReadOnly;
        @ Page@AutoEventWireup = true false; @ Control@MasterPageFile = -; @ Master@MasterPageFile = [uri];
        @ Register@TagPrefix =; @ OutputCache@VaryByParam = none *; @ Application@Language = -;
    )"},
    {"asax_directives.xsd", R"(
        @ Application@Debug = true false; @ Import@Namespace =;
    )"},
    {"ashx_directives.xsd", R"(
        @ WebHandler@Class =; @ Page@Class = -;
    )"},
    {"resxschema.xsd", R"(
        root> = data !value; data> = value comment; metadata> = !comment;
        resheader@name = resmimetype version reader writer; resheader@type = -; data@name =;
        data@xml:space = preserve default; metadata@xml:space = preserve default; assembly@alias =;
        value@name = -;
    )"},
    {"DotNetConfig.xsd", R"(
        configuration> = appSettings configSections runtime system.web; location> = system.web !runtime;
        location@path =; appSettings> = add; appSettings@file =; appSettings@configSource =; add@key =;
        add@connectionString =; add@resourceType = Unspecified File Directory Either;
        add@requireAccess = None Read Write Script Execute; add@maxLimit = Infinite; remove@name =;
        remove@connectionString = -; connectionStrings> = clear; system.web> = compilation;
        compilation@debug = true false; compilation> = assemblies;
        authentication@mode = None Windows Passport Forms; authentication> = forms windowsAuthentication;
        forms@cookieSameSite = None Lax Strict; authorization> = deny; deny@users =;
        customErrors@mode = RemoteOnly On Off; sessionState@mode = Off InProc StateServer SQLServer Custom;
        sessionState@lockItem = true false; pages@enableSessionState = true false ReadOnly; pages> = controls;
        system.webServer> = rewrite; rule> = conditions;
        action@type = None Rewrite Redirect CustomResponse AbortRequest;
        httpErrors@errorMode = DetailedLocalOnly Custom Detailed;
        directoryBrowse@showFlags = None Time Size Extension Date LongDate; system.serviceModel> = bindings;
        basicHttpBinding> = binding;
        smtp@deliveryMethod = Network SpecifiedPickupDirectory PickupDirectoryFromIis;
        supportedRuntime@version = v1.0.3705 v1.1.4322 v2.0.50727 v4.0; dependentAssembly> = bindingRedirect;
        applicationSettings> = setting; setting> = value; sectionGroup> = sectionGroup;
    )"},
    {"SiteMapSchema.xsd", R"(
        siteMap> = siteMapNode; siteMapNode> = siteMapNode; siteMap@enableLocalization = true false;
        siteMap@url = -; siteMapNode@url =; siteMapNode@roles =;
        siteMapNode@securityTrimmingEnabled = true false;
    )"},
    {"recipes.xsd", R"(
        cookbook> = recipe chapter; cookbook@language = de en fr it; recipe> = serves; recipe@id =;
        recipe@diets = vegan vegetarian gluten-free; group> = ingredient;
        ingredient@unit = g kg ml l tbsp tsp piece pinch; method> = prepare !step; cook@minutes =;
        cook@heat = low medium high; cook> = warning; prepare@heat = -;
    )"},
};

TEST_F(Shipped, Facts) {
    for (const auto& [file, facts] : Facts) {
        std::istringstream text(facts);
        for (string fact; std::getline(text >> std::ws, fact, ';');) {
            size_t sign = fact.find(" =");
            string question = fact.substr(0, sign), expect = fact.substr(sign + 2);
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

// Pages reach their schema by what their doctype says last.
TEST_F(Shipped, EveryDoctypeHasItsFile) {
    for (const char* name :
         {"-//W3C//DTD HTML 4.01//EN", "http://www.w3.org/TR/html4/strict.dtd",
          "http://www.w3.org/TR/html4/loose.dtd", "http://www.w3.org/TR/html4/frameset.dtd",
          "http://www.w3.org/TR/xhtml1/DTD/xhtml1-strict.dtd",
          "http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd",
          "http://www.w3.org/TR/xhtml1/DTD/xhtml1-frameset.dtd", "-//W3C//DTD HTML 3.2 Final//EN",
          "-//IETF//DTD HTML//EN", "-//IETF//DTD HTML 2.0 Strict//EN"}) {
        string file = GetSchemaFileName(name, kmHTML);
        EXPECT_EQ(Table(file.substr(file.rfind('/') + 1)).Ask("top>"), "html ") << name;
    }
}

}  // namespace
}  // namespace caretwell
