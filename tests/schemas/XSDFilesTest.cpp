// The XSD files of the schema folder, asked for facts that people lean on.
//
// A question is "element@attribute" or "element>child". The answer to the first is the
// attribute's values, "event" or "[editor]" in front of them; "-" is no such thing.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "schema/XMLSchema.h"
#include "schema/XSDReader.h"

namespace caretwell {
namespace {

using std::string;
using std::string_view;

const string Folder = CARETWELL_SOURCE_DIR "/schemas/";

string Narrow(std::u16string_view text) { return {text.begin(), text.end()}; }  // names are ASCII

string Lower(string_view text) {
    string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](unsigned char c) { return static_cast<char>(tolower(c)); });
    return result;
}

// What a schema says of one element; both readers are turned into this.
struct TFacts {
    std::map<string, string> Attributes;
    std::set<string> Children;
};

struct TSchemaFacts {
    std::map<string, TFacts> Elements;  ///< the first of a name gives the attributes
    std::vector<string> Faults;         ///< messages, and what an edit should not leave behind
};

// ---- Files for the reader of server page schemas.

string ElementName(const TXSDReader& reader, const TXSDElement& element) {
    return (element.FUnqualified ? "" : Narrow(reader.GetNamespacePrefix())) + Narrow(element.FName);
}

const TXSDType* TypeOf(const TXSDReader& reader, const TXSDElement& element) {
    if (auto* type = dynamic_cast<const TXSDType*>(element.FTypeDef)) return type;
    return reader.LookupType(element.FTypeName);
}

string ValuesOf(const TXSDReader& reader, const TXSDAttribute& attribute) {
    if (attribute.FTypeName == u"event") return "event";
    string result = attribute.FBuilder.empty() ? "" : "[" + Narrow(attribute.FBuilder) + "]";
    std::vector<TXSDSimpleType*> types = attribute.FValues;
    if (auto* type = reader.LookupSimpleType(attribute.FTypeName)) types.push_back(type);
    for (auto* type : types)
        for (auto* restriction : type->FRestrictions)
            for (auto& value : restriction->FEnumerations)
                result += (result.empty() ? "" : " ") + Narrow(value);
    return result;
}

void AddChildren(const TXSDReader& reader, const TXSDType& type, std::set<string>& children) {
    for (auto* child : type.FChildren) {
        const TXSDType* inner = TypeOf(reader, *child);
        if (!child->FNonBrowseable) children.insert(ElementName(reader, *child));
        else if (inner) AddChildren(reader, *inner, children);
    }
}

void AddAttributes(const TXSDReader& reader, const string& name, const TXSDType& type, TSchemaFacts& facts) {
    std::set<string> seen;
    for (auto* attribute : type.FAttributes) {
        const string attributeName = Narrow(attribute->FName), typeName = Narrow(attribute->FTypeName);
        const string place = name + "@" + attributeName;
        if (!seen.insert(Lower(attributeName)).second) facts.Faults.push_back(place + " twice");
        const bool builtIn = typeName.rfind("xsd:", 0) == 0;
        if (builtIn == (reader.LookupSimpleType(attribute->FTypeName) != nullptr))
            facts.Faults.push_back(place + ": type " + typeName);
        facts.Elements[name].Attributes[attributeName] = ValuesOf(reader, *attribute);
    }
}

TSchemaFacts ReadServerSchema(const string& fileName) {
    TSchemaFacts facts;
    TXSDReader reader;
    reader.FOnError = [&](TXSDReader*, const string&, const string& message) {
        facts.Faults.push_back(message);
    };
    reader.LoadFromFile(Folder + fileName);
    for (auto* entry = reader.GetFirstElement(); entry; entry = TXSDReader::GetNextElement(entry)) {
        const auto& element = static_cast<const TXSDElement&>(*entry->Item);
        const string name = ElementName(reader, element);
        const TXSDType* type = TypeOf(reader, element);
        if (element.FName.empty()) facts.Faults.push_back("no name in " + Narrow(element.FParent));
        if (!type && !element.FTypeName.empty()) facts.Faults.push_back(name + " has no type");
        const bool first = facts.Elements.find(name) == facts.Elements.end();
        TFacts& known = facts.Elements[name];
        if (type && first) AddAttributes(reader, name, *type, facts);
        if (type) AddChildren(reader, *type, known.Children);
    }
    return facts;
}

// ---- Files for the object model.

struct TWalk {
    TSchemaFacts Facts;
    std::map<string, std::pair<string, TXMLType>> Types;  ///< by name without case: the engine's view

    void Visit(const TXMLDeclaration& element) {
        const string name(element.GetName());
        const TXMLType type = element.GetDataType();
        auto [known, isNew] = Types.try_emplace(Lower(name), name, type);
        if (!isNew && !(known->second == std::pair{name, type}))
            Facts.Faults.push_back(name + " has two types");
        if (!isNew) return;
        if (!type.IsComplex()) Facts.Faults.push_back(name + " is simple");
        for (auto& child : type.GetElements()) {
            Facts.Elements[name].Children.insert(string(child.GetName()));
            Visit(child);
        }
        AddAttributes(name, type.GetAttributes());
        for (auto& group : type.GetAttributeGroups()) AddAttributes(name, group.GetAttributes());
    }

    void AddAttributes(const string& name, const std::vector<TXMLDeclaration>& attributes) {
        for (auto& attribute : attributes) {
            string values;
            for (auto value : attribute.GetDataType().GetEnumerations())
                values += (values.empty() ? "" : " ") + string(value);
            if (!attribute.GetDataType()) Facts.Faults.push_back(name + "@" + string(attribute.GetName()));
            Facts.Elements[name].Attributes[string(attribute.GetName())] = values;
        }
    }
};

TSchemaFacts ReadXMLSchema(const string& fileName) {
    TWalk walk;
    TXMLSchemaLibrary library(
        [&](const TXMLSchemaMessage& message) { walk.Facts.Faults.push_back(message.Text); });
    for (auto& element : library.Load(Folder + fileName, Folder).GetElements()) walk.Visit(element);
    return walk.Facts;
}

// ---- Questions.

const TSchemaFacts& FactsOf(const string& fileName) {
    static std::map<string, TSchemaFacts> cache;
    auto known = cache.find(fileName);
    if (known != cache.end()) return known->second;
    const bool server = fileName.rfind("asp", 0) == 0 || fileName.find("_directives") != string::npos ||
                        fileName == "resxschema.xsd";
    return cache[fileName] = server ? ReadServerSchema(fileName) : ReadXMLSchema(fileName);
}

string Ask(const string& fileName, string_view question) {
    // A directive's name begins with "@" itself.
    const size_t at = question.find_first_of("@>", 1);
    const auto& elements = FactsOf(fileName).Elements;
    const auto element = elements.find(string(question.substr(0, at)));
    if (element == elements.end()) return "no element";
    const string part(question.substr(at + 1));
    if (question[at] == '>') return element->second.Children.count(part) ? "yes" : "-";
    const auto attribute = element->second.Attributes.find(part);
    return attribute == element->second.Attributes.end() ? "-" : attribute->second;
}

struct TFact {
    string_view FQuestion, FAnswer;
};

// The order of values is the reader's affair: lists are sorted where they are shown.
std::multiset<string> Words(string_view text) {
    std::istringstream words{string(text)};
    return {std::istream_iterator<string>(words), {}};
}

void Check(const string& fileName, std::initializer_list<TFact> facts) {
    for (auto& fact : facts)
        EXPECT_EQ(Words(Ask(fileName, fact.FQuestion)), Words(fact.FAnswer)) << fact.FQuestion;
}

TEST(XSDFiles, ReadWithoutFault) {
    for (const char* fileName :
         {"asp schemas/asp.xsd", "asp schemas/asp_directives.xsd", "page_directives.xsd",
          "control_directives.xsd", "master_directives.xsd", "asax_directives.xsd", "ashx_directives.xsd",
          "resxschema.xsd", "DotNetConfig.xsd", "SiteMapSchema.xsd"}) {
        const TSchemaFacts& facts = FactsOf(fileName);
        EXPECT_FALSE(facts.Elements.empty()) << fileName;
        for (auto& fault : facts.Faults) ADD_FAILURE() << fileName << ": " << fault;
    }
}

TEST(XSDFiles, ServerControls) {
    Check("asp schemas/asp.xsd",
          {{"asp:Button@OnClick", "event"},
           {"asp:Button@runat", "server"},
           {"asp:Button@CausesValidation", "true false"},
           {"asp:Button@PostBackUrl", "[uri]"},
           {"asp:Button@BackColor", "[color]"},
           {"asp:Button@Font-Bold", "true false"},
           {"asp:Button@Font-Size", "Smaller Larger XX-Small X-Small Small Medium Large X-Large XX-Large"},
           {"asp:Button@Columns", "-"},
           {"asp:Button>div", "-"},  // a button has text, not content
           {"asp:TextBox@TextMode",
            "SingleLine MultiLine Password Color Date DateTime DateTimeLocal Email Month Number Range Search "
            "Phone "
            "Time Url Week"},
           {"asp:TextBox@MaxLength", ""},
           {"asp:Image@Enabled", "-"},  // an image has no state and no font of its own
           {"asp:Image@Font-Bold", "-"},
           {"asp:ImageButton@Enabled", "true false"},
           {"asp:DropDownList@AutoPostBack", "true false"},
           {"asp:BulletedList@AutoPostBack", "-"},
           {"asp:DropDownList>asp:ListItem", "yes"},
           {"asp:DropDownList>Items", "yes"},
           {"Items>asp:MenuItem", "yes"},  // lists of one name hold what any of them holds
           {"asp:Panel>asp:GridView", "yes"},
           {"asp:Panel>table", "yes"},
           {"asp:Panel>PageContent", "-"},
           {"li>asp:HyperLink", "yes"},
           {"asp:Content>asp:Panel", "yes"},
           {"asp:GridView>Columns", "yes"},
           {"asp:GridView>EmptyDataTemplate", "yes"},
           {"asp:GridView@HeaderStyle-BackColor", "[color]"},
           {"asp:GridView@HeaderStyle-Font-Bold", "true false"},
           {"asp:GridView@PagerSettings-Mode", "NextPrevious Numeric NextPreviousFirstLast NumericFirstLast"},
           {"asp:GridView@OnRowDataBound", "event"},
           {"Columns>asp:BoundField", "yes"},
           {"Columns>asp:TemplateField", "yes"},
           {"Columns>asp:BoundColumn", "yes"},
           {"asp:TemplateField>ItemTemplate", "yes"},
           {"asp:TemplateField>HeaderStyle", "yes"},
           {"asp:TemplateField@ItemStyle-CssClass", ""},
           {"asp:CheckBoxField@DataFormatString", "-"},
           {"ItemTemplate>asp:LinkButton", "yes"},
           {"ItemTemplate>tr", "yes"},
           {"PagerStyle@Mode", "NextPrev NumericPages"},  // the data grid's, the richest of the name
           {"NodeStyle@NodeSpacing", ""},
           {"asp:SqlDataSource>SelectParameters", "yes"},
           {"asp:SqlDataSource@Visible", "-"},
           {"asp:SqlDataSource@CacheDuration", "Infinite"},
           {"asp:AccessDataSource@ConnectionString", "-"},
           {"SelectParameters>asp:ControlParameter", "yes"},
           {"asp:CompareValidator@Operator",
            "Equal NotEqual GreaterThan GreaterThanEqual LessThan LessThanEqual DataTypeCheck"},
           {"asp:Table>asp:TableRow", "yes"},
           {"asp:UpdatePanel>ContentTemplate", "yes"},
           {"Triggers>asp:PostBackTrigger", "yes"},
           {"asp:CreateUserWizard>WizardSteps", "yes"},
           {"asp:CreateUserWizard@StepStyle-Width", ""}});
}

TEST(XSDFiles, Directives) {
    Check("asp schemas/asp_directives.xsd", {{"@ Page@Language", "C# VB"},
                                             {"@ Page@CodeBehind", "[uri]"},
                                             {"@ Page@EnableSessionState", "true false ReadOnly"},
                                             {"@ Page@AutoEventWireup", "true false"},
                                             {"@ Control@MasterPageFile", "-"},
                                             {"@ Master@MasterPageFile", "[uri]"},
                                             {"@ Register@TagPrefix", ""},
                                             {"@ OutputCache@VaryByParam", "none *"},
                                             {"@ Application@Language", "no element"}});
    Check("asax_directives.xsd", {{"@ Application@Debug", "true false"}, {"@ Import@Namespace", ""}});
    Check("ashx_directives.xsd", {{"@ WebHandler@Class", ""}, {"@ Page@Class", "no element"}});
}

// The reader follows no include, so a directive stands in several files.
TEST(XSDFiles, DirectivesAgree) {
    const auto& common = FactsOf("asp schemas/asp_directives.xsd").Elements;
    for (const char* fileName : {"page_directives.xsd", "control_directives.xsd", "master_directives.xsd",
                                 "asax_directives.xsd", "ashx_directives.xsd"})
        for (auto& [name, facts] : FactsOf(fileName).Elements) {
            const auto known = common.find(name);
            if (name == "@ Application" || name == "@ WebHandler") continue;
            ASSERT_NE(known, common.end()) << fileName << " " << name;
            EXPECT_EQ(facts.Attributes, known->second.Attributes) << fileName << " " << name;
        }
}

TEST(XSDFiles, ResX) {
    Check("resxschema.xsd", {{"root>data", "yes"},
                             {"root>value", "-"},
                             {"data>value", "yes"},
                             {"data>comment", "yes"},
                             {"metadata>comment", "-"},
                             {"resheader@name", "resmimetype version reader writer"},
                             {"resheader@type", "-"},
                             {"data@name", ""},
                             {"data@xml:space", "preserve default"},
                             {"metadata@xml:space", "preserve default"},
                             {"assembly@alias", ""},
                             {"value@name", "-"}});
}

TEST(XSDFiles, Configuration) {
    Check("DotNetConfig.xsd",
          {{"configuration>appSettings", "yes"},
           {"configuration>configSections", "yes"},
           {"configuration>runtime", "yes"},
           {"configuration>system.web", "yes"},
           {"location>system.web", "yes"},
           {"location>runtime", "-"},
           {"location@path", ""},
           {"appSettings>add", "yes"},
           {"appSettings@file", ""},
           {"appSettings@configSource", ""},
           {"add@key", ""},
           {"add@connectionString", ""},
           {"add@resourceType", "Unspecified File Directory Either"},
           {"add@requireAccess", "None Read Write Script Execute"},
           {"add@maxLimit", "Infinite"},
           {"remove@name", ""},
           {"remove@connectionString", "-"},
           {"connectionStrings>clear", "yes"},
           {"system.web>compilation", "yes"},
           {"compilation@debug", "true false"},
           {"compilation>assemblies", "yes"},
           {"authentication@mode", "None Windows Passport Forms"},
           {"authentication>forms", "yes"},
           {"authentication>windowsAuthentication", "yes"},  // of the web server, by the same name
           {"forms@cookieSameSite", "None Lax Strict"},
           {"authorization>deny", "yes"},
           {"deny@users", ""},
           {"customErrors@mode", "RemoteOnly On Off"},
           {"sessionState@mode", "Off InProc StateServer SQLServer Custom"},
           {"sessionState@lockItem", "true false"},
           {"pages@enableSessionState", "true false ReadOnly"},
           {"pages>controls", "yes"},
           {"system.webServer>rewrite", "yes"},
           {"rule>conditions", "yes"},
           {"action@type", "None Rewrite Redirect CustomResponse AbortRequest"},
           {"httpErrors@errorMode", "DetailedLocalOnly Custom Detailed"},
           {"directoryBrowse@showFlags", "None Time Size Extension Date LongDate"},
           {"system.serviceModel>bindings", "yes"},
           {"basicHttpBinding>binding", "yes"},
           {"smtp@deliveryMethod", "Network SpecifiedPickupDirectory PickupDirectoryFromIis"},
           {"supportedRuntime@version", "v1.0.3705 v1.1.4322 v2.0.50727 v4.0"},
           {"dependentAssembly>bindingRedirect", "yes"},
           {"applicationSettings>setting", "yes"},
           {"setting>value", "yes"},
           {"sectionGroup>sectionGroup", "yes"}});
}

TEST(XSDFiles, SiteMap) {
    Check("SiteMapSchema.xsd", {{"siteMap>siteMapNode", "yes"},
                                {"siteMapNode>siteMapNode", "yes"},
                                {"siteMap@enableLocalization", "true false"},
                                {"siteMap@url", "-"},
                                {"siteMapNode@url", ""},
                                {"siteMapNode@roles", ""},
                                {"siteMapNode@securityTrimmingEnabled", "true false"}});
}

// The example of the manual: one of each means that XML Schema has.
TEST(XSDFiles, Recipes) {
    Check("recipes.xsd", {{"cookbook>recipe", "yes"},
                          {"cookbook>chapter", "yes"},
                          {"cookbook@language", "de en fr it"},
                          {"recipe>serves", "yes"},
                          {"recipe@id", ""},
                          {"recipe@diets", "vegan vegetarian gluten-free"},
                          {"group>ingredient", "yes"},  // by extension
                          {"ingredient@unit", "g kg ml l tbsp tsp piece pinch"},
                          {"method>prepare", "yes"},
                          {"method>step", "-"},  // abstract
                          {"cook@minutes", ""},
                          {"cook@heat", "low medium high"},
                          {"cook>warning", "yes"},
                          {"prepare@heat", "-"}});
}

}  // namespace
}  // namespace caretwell
