// The DTD files of the schema folder, asked for facts that people lean on.
//
//     "tr"           its tags and content: "- O", "- O EMPTY", "O O"
//     "tr>"          what it may hold; the answer lists some of it, "!p" what it must not
//     "input@type"   the values; "false true" for a boolean, "[uri]" for an editor,
//                    "event"; with "required" or "fixed" in front; "-" for no attribute
//     "&eacute;"     the code of the character
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "markup/MLParserUtils.h"
#include "schema/DTDParser.h"

namespace caretwell {
namespace {

using std::string;
using std::string_view;

class TSchema {
public:
    explicit TSchema(const string& file) {
        FParser.OnError = [this](TDTDParser*, TParseError, const string& message, int32_t line,
                                 const string& name) {
            Messages += name + ":" + std::to_string(line) + ": " + message + "\n";
        };
        FParser.LoadFromFile(GetSchemaFileName(file, kmHTML));
        for (int32_t i = 0; i < FParser.FSymbolCount; ++i) {
            auto* element = SymbolAs<TDTDElement>(FParser.GetSymbol(i));
            if (element && IdentIsNotDTDType(element->FName) && element->FName != "ANY")
                Elements.push_back(element);
            if (SymbolAs<TDTDEntity>(FParser.GetSymbol(i))) ++EntityCount;
        }
    }

    TDTDElement* Find(string_view name) const {
        return SymbolAs<TDTDElement>(FParser.LookupSymbol(name, dtElement));
    }

    string Ask(const string& question) const {
        if (question.front() == '&') {
            auto name = question.substr(1, question.size() - 2);
            auto* entity = SymbolAs<TDTDEntity>(FParser.LookupSymbol(name, dtEntity));
            return entity ? std::to_string(entity->GetValues(0)) : "-";
        }
        auto at = question.find('@');
        auto* element = Find(question.substr(0, at));
        if (!element) return "-";
        return at == string::npos ? Tags(*element) : Values(*element, question.substr(at + 1));
    }

    /// What the element holds, and what it holds by way of an element whose start tag
    /// may be left out.
    std::set<string> Children(const TDTDElement& element) const {
        std::set<string> result;
        AddChildren(element, element, result);
        return result;
    }

    string Messages;
    std::vector<TDTDElement*> Elements;
    int32_t EntityCount = 0;

private:
    static string Tags(const TDTDElement& element) {
        string result = element.FRequiresStartTag ? "- " : "O ";
        result += element.FRequiresEndTag ? "-" : "O";
        return element.FEmpty ? result + " EMPTY" : result;
    }

    static string Values(TDTDElement& element, string_view name) {
        TDTDExprList& list = element.GetExprList();
        for (int32_t i = 1; i < list.GetCount(); ++i) {
            auto* attribute = SymbolAs<TDTDAttribute>(list.GetExpr(i)->Symbol);
            // Of two declarations the first one stands.
            if (attribute && attribute->FName == name) return Values(*attribute, list.GetExpr(i)->Right);
        }
        return "-";
    }

    static string Values(const TDTDAttribute& attribute, TDTDExprNode* type) {
        string result = attribute.FAttrs->Required ? "required" : attribute.FAttrs->Fixed ? "fixed" : "";
        auto add = [&](string_view word) { result += (result.empty() ? "" : " ") + string(word); };
        if (!attribute.FEditor.empty()) {
            add("[" + string(attribute.FEditor) + "]");
            return result;
        }
        if (type->Symbol->FName == attribute.FName) {
            add("false true");
            return result;
        }
        if (type->Symbol->FName == "CDATA" && attribute.FName.starts_with("on")) add("event");
        TDTDExprWalk walk(type);
        while (auto* node = walk.Next())
            if (node->Symbol && IdentIsNotDTDType(node->Symbol->FName)) add(node->Symbol->FName);
        return result;
    }

    void AddChildren(const TDTDElement& parent, const TDTDElement& content, std::set<string>& result) const {
        if (content.FEmpty || !content.FExprList) return;
        std::set<string_view> excluded;
        TDTDExprWalk exclusions(parent.FExclusions);
        while (auto* node = exclusions.Next())
            if (node->Symbol) excluded.insert(node->Symbol->FName);
        TDTDExprWalk walk(content.FExprList->GetExpr(0));
        while (auto* node = walk.Next()) {
            auto* child = SymbolAs<TDTDElement>(node->Symbol);
            if (!child || excluded.count(child->FName) || !IdentIsNotDTDType(child->FName)) continue;
            if (result.insert(string(child->FName)).second && !child->FRequiresStartTag)
                AddChildren(parent, *child, result);
        }
    }

    TDTDParser FParser;
};

const TSchema& Schema(const string& file) {
    static std::map<string, std::unique_ptr<TSchema>> schemas;
    auto& schema = schemas[file];
    if (!schema) schema = std::make_unique<TSchema>(file);
    return *schema;
}

struct TFile {
    const char *FName, *FRoots;
    int32_t FElements, FEntities;
};
constexpr TFile Files[] = {
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
};

string RootsOf(const TSchema& schema) {
    std::set<string> roots;
    for (auto* element : schema.Elements) roots.insert(string(element->FName));
    for (auto* element : schema.Elements)
        for (auto& child : schema.Children(*element)) roots.erase(child);
    string result;
    for (auto& root : roots) result += (result.empty() ? "" : " ") + root;
    return result;
}

TEST(DTDFiles, LoadWithoutMessageAndHaveTheirRoots) {
    for (auto& file : Files) {
        auto& schema = Schema(file.FName);
        EXPECT_EQ(schema.Messages, "") << file.FName;
        EXPECT_EQ(RootsOf(schema), file.FRoots) << file.FName;
        EXPECT_EQ(schema.Elements.size(), static_cast<size_t>(file.FElements)) << file.FName;
        EXPECT_EQ(schema.EntityCount, file.FEntities) << file.FName;
        for (auto* element : schema.Elements)
            EXPECT_TRUE(element->FIsDeclared) << file.FName << " names " << element->FName;
    }
}

// What a person may forget when adding an attribute: its editor, or that a value list
// which begins with the attribute's name passes for a boolean.
TEST(DTDFiles, AttributesAreWhatTheyLookLike) {
    const std::map<string_view, string_view> editors = {
        {"action", "uri"},   {"alink", "color"},  {"background", "uri"}, {"bgcolor", "color"},
        {"cite", "uri"},     {"color", "color"},  {"fill", "color"},     {"formaction", "uri"},
        {"href", "uri"},     {"longdesc", "uri"}, {"poster", "uri"},     {"src", "uri"},
        {"stroke", "color"}, {"vlink", "color"},  {"xlink:href", "uri"},
    };
    for (auto& file : Files) {
        for (auto* element : Schema(file.FName).Elements) {
            TDTDExprList& list = element->GetExprList();
            for (int32_t i = 1; i < list.GetCount(); ++i) {
                auto& attribute = *SymbolAs<TDTDAttribute>(list.GetExpr(i)->Symbol);
                TDTDExprNode* type = list.GetExpr(i)->Right;
                string place =
                    string(file.FName) + ": " + string(element->FName) + "@" + string(attribute.FName);
                auto editor = editors.find(attribute.FName);
                bool isText = type->Symbol->FName == "CDATA";
                if (editor != editors.end() && isText) {
                    EXPECT_EQ(attribute.FEditor, editor->second) << place;
                }
                if (type->Symbol->FName == attribute.FName) {
                    EXPECT_EQ(type->Right, nullptr) << place;
                }
            }
        }
    }
}

struct TFact {
    const char *FFile, *FQuestion, *FAnswer;
};
constexpr TFact Facts[] = {
    // Tags.
    {"loose.dtd", "html", "O O"},
    {"loose.dtd", "li", "- O"},
    {"loose.dtd", "tbody", "O O"},
    {"loose.dtd", "div", "- -"},
    {"loose.dtd", "br", "- O EMPTY"},
    {"loose.dtd", "wbr", "- O EMPTY"},
    {"loose.dtd", "iframe", "- -"},
    {"loose.dtd", "plaintext", "- O"},
    {"loose.dtd", "blink", "-"},
    {"strict.dtd", "p", "- O"},
    {"strict.dtd", "colgroup", "- O"},
    {"strict.dtd", "section", "-"},
    {"strict.dtd", "center", "-"},
    {"strict.dtd", "iframe", "-"},
    {"frameset.dtd", "frame", "- O EMPTY"},
    {"xhtml1-strict.dtd", "p", "- -"},
    {"xhtml1-strict.dtd", "html", "- -"},
    {"xhtml1-strict.dtd", "br", "- O EMPTY"},
    {"xhtml1-transitional.dtd", "frameset", "-"},
    {"HTML3.2.dtd", "span", "-"},
    {"HTML2.dtd", "table", "-"},
    {"HTML2.dtd", "xmp", "- -"},
    {"HTML2-strict.dtd", "xmp", "-"},
    {"xsl.dtd", "xsl:value-of", "- O EMPTY"},
    {"wml12.dtd", "card", "- -"},

    // Attributes of today's HTML.
    {"loose.dtd", "input@type",
     "hidden text search tel url email password date month week time datetime-local number range color "
     "checkbox radio file submit image reset button"},
    {"loose.dtd", "button@type", "submit reset button"},
    {"loose.dtd", "form@method", "get post dialog"},
    {"loose.dtd", "a@target", "_blank _self _parent _top"},
    {"loose.dtd", "img@loading", "lazy eager"},
    {"loose.dtd", "video@preload", "none metadata auto"},
    {"loose.dtd", "track@kind", "subtitles captions descriptions chapters metadata"},
    {"loose.dtd", "th@scope", "row col rowgroup colgroup"},
    {"loose.dtd", "textarea@wrap", "hard soft"},
    {"loose.dtd", "script@type", "module importmap speculationrules"},
    {"loose.dtd", "script@crossorigin", "anonymous use-credentials"},
    {"loose.dtd", "p@enterkeyhint", "enter done go next previous search send"},
    {"loose.dtd", "p@inputmode", "none text tel url email numeric decimal search"},
    {"loose.dtd", "p@popover", "auto manual hint"},
    {"loose.dtd", "p@hidden", "until-found hidden"},
    {"loose.dtd", "p@contenteditable", "true plaintext-only false"},
    {"loose.dtd", "input@disabled", "false true"},
    {"loose.dtd", "video@controls", "false true"},
    {"loose.dtd", "p@itemscope", "false true"},
    {"loose.dtd", "p@itemtype", "[uri]"},
    {"loose.dtd", "td@bgcolor", "[color]"},
    {"loose.dtd", "img@src", "required [uri]"},
    {"loose.dtd", "img@alt", "required"},
    {"loose.dtd", "bdo@dir", "required ltr rtl"},
    {"loose.dtd", "p@dir", "ltr rtl auto"},
    {"loose.dtd", "p@onclick", "event"},
    {"loose.dtd", "body@onhashchange", "event"},
    {"loose.dtd", "p@onhashchange", "-"},
    {"loose.dtd", "meta@onclick", "-"},
    {"loose.dtd", "link@onload", "event"},
    {"loose.dtd", "meta@aria-label", "-"},
    {"loose.dtd", "p@aria-sort", "ascending descending none other"},
    {"loose.dtd", "svg@viewBox", ""},
    {"loose.dtd", "path@stroke-linecap", "butt round square"},
    {"loose.dtd", "stop@stop-color", "[color]"},
    {"loose.dtd", "svg@xmlns", "fixed"},
    {"loose.dtd", "math@display", "block inline"},
    {"loose.dtd", "font@color", "[color]"},

    // Attributes of the others.
    {"strict.dtd", "form@action", "required [uri]"},
    {"strict.dtd", "base@href", "required [uri]"},
    {"strict.dtd", "a@target", "-"},
    {"strict.dtd", "p@align", "-"},
    {"strict.dtd", "img@name", ""},
    {"strict.dtd", "p@onclick", "event"},
    {"strict.dtd", "p@draggable", "-"},
    {"frameset.dtd", "a@target", "_blank _self _parent _top"},
    {"frameset.dtd", "base@href", "[uri]"},
    {"frameset.dtd", "frame@noresize", "false true"},
    {"xhtml1-strict.dtd", "html@xmlns", "fixed"},
    {"xhtml1-strict.dtd", "map@id", "required"},
    {"xhtml1-strict.dtd", "img@name", "-"},
    {"xhtml1-transitional.dtd", "font@color", "[color]"},
    {"HTML3.2.dtd", "p@align", "left center right"},
    {"HTML3.2.dtd", "p@class", "-"},
    {"HTML2.dtd", "input@type", "text password checkbox radio submit reset image hidden"},
    {"HTML2.dtd", "img@width", "-"},
    {"xsl.dtd", "xsl:template@match", ""},
    {"xsl.dtd", "xsl:if@test", "required"},
    {"xsl.dtd", "xsl:output@method", "xml html text"},
    {"xsl.dtd", "xsl:import@href", "required [uri]"},
    {"xsl.dtd", "xsl:stylesheet@version", "required 1.0"},
    {"wml12.dtd", "do@type", "required accept prev help reset options delete unknown"},
    {"wml12.dtd", "card@ontimer", "[uri]"},
    {"wml12.dtd", "img@src", "required [uri]"},
    {"wml12.dtd", "input@emptyok", "true false"},

    {"strict.dtd", "textarea@rows", "required"},
    {"strict.dtd", "optgroup@label", "required"},
    {"strict.dtd", "script@type", "required"},
    {"strict.dtd", "script@defer", "false true"},
    {"strict.dtd", "input@type", "text password checkbox radio submit reset file hidden image button"},
    {"strict.dtd", "td@valign", "top middle bottom baseline"},
    {"strict.dtd", "table@rules", "none groups rows cols all"},
    {"strict.dtd", "object@classid", "[uri]"},
    {"strict.dtd", "head@profile", "[uri]"},
    {"strict.dtd", "html@xmlns", "-"},
    {"strict.dtd", "body@bgcolor", "-"},
    {"strict.dtd", "br@onclick", "-"},
    {"strict.dtd", "area@onfocus", "event"},
    {"strict.dtd", "del@cite", "[uri]"},
    {"frameset.dtd", "frameset@rows", ""},
    {"frameset.dtd", "frameset@onload", "event"},
    {"frameset.dtd", "frame@scrolling", "yes no auto"},
    {"frameset.dtd", "frame@src", "[uri]"},
    {"frameset.dtd", "body@bgcolor", "[color]"},
    {"frameset.dtd", "br@clear", "left all right none"},
    {"frameset.dtd", "font@size", "1 2 3 4 5 6 7"},
    {"xhtml1-strict.dtd", "a@xml:space", "-"},
    {"xhtml1-strict.dtd", "script@id", ""},
    {"xhtml1-strict.dtd", "script@event", "-"},
    {"xhtml1-strict.dtd", "pre@xml:space", "fixed"},
    {"xhtml1-strict.dtd", "input@checked", "false true"},
    {"xhtml1-strict.dtd", "form@target", "-"},
    {"xhtml1-transitional.dtd", "ul@type", "disc square circle"},
    {"xhtml1-transitional.dtd", "iframe@frameborder", "1 0"},
    {"xhtml1-transitional.dtd", "applet@width", "required"},
    {"xhtml1-transitional.dtd", "table@bgcolor", "[color]"},
    {"xhtml1-transitional.dtd", "td@nowrap", "false true"},
    {"xhtml1-frameset.dtd", "frame@noresize", "false true"},
    {"xhtml1-frameset.dtd", "html@xmlns", "fixed"},
    {"HTML3.2.dtd", "body@background", "[uri]"},
    {"HTML3.2.dtd", "table@align", "left center right"},
    {"HTML3.2.dtd", "td@valign", "top middle bottom"},
    {"HTML3.2.dtd", "applet@code", "required"},
    {"HTML3.2.dtd", "script@src", "-"},
    {"HTML2.dtd", "form@method", "get post"},
    {"HTML2.dtd", "dl@compact", "false true"},
    {"HTML2.dtd", "link@href", "required [uri]"},
    {"HTML2.dtd", "textarea@cols", "required"},
    {"xsl.dtd", "xsl:for-each@select", "required"},
    {"xsl.dtd", "xsl:sort@order", "ascending descending"},
    {"xsl.dtd", "xsl:number@level", "single multiple any"},
    {"xsl.dtd", "xsl:key@use", "required"},
    {"xsl.dtd", "xsl:text@disable-output-escaping", "yes no"},
    {"xsl.dtd", "xsl:stylesheet@xmlns:xsl", "fixed"},
    {"wml12.dtd", "go@method", "get post"},
    {"wml12.dtd", "table@columns", "required"},
    {"wml12.dtd", "p@mode", "wrap nowrap"},
    {"wml12.dtd", "setvar@value", "required"},
    {"wml12.dtd", "option@onpick", "[uri]"},
    {"wml12.dtd", "pre@xml:space", "fixed"},
    {"wml12.dtd", "tr@xml:lang", "-"},

    // Characters.
    {"loose.dtd", "&eacute;", "233"},
    {"loose.dtd", "&euro;", "8364"},
    {"loose.dtd", "&Afr;", "120068"},
    {"loose.dtd", "&NotEqualTilde;", "-"},
    {"strict.dtd", "&nbsp;", "160"},
    {"strict.dtd", "&apos;", "-"},
    {"strict.dtd", "&check;", "-"},
    {"xhtml1-strict.dtd", "&apos;", "39"},
    {"HTML2.dtd", "&euro;", "-"},
    {"wml12.dtd", "&shy;", "173"},
};

TEST(DTDFiles, Facts) {
    for (auto& fact : Facts)
        EXPECT_EQ(Schema(fact.FFile).Ask(fact.FQuestion), fact.FAnswer)
            << fact.FFile << " " << fact.FQuestion;
}

constexpr TFact Models[] = {
    {"loose.dtd", "html", "head body title p !td !html"},
    {"loose.dtd", "head", "title base link meta style script noscript template !p !div"},
    {"loose.dtd", "body", "p div table ul form section svg math center font !li !td !option !style !area"},
    {"loose.dtd", "ul", "li script template !p !ul"},
    {"loose.dtd", "table", "caption colgroup col thead tbody tfoot tr !td !form"},
    {"loose.dtd", "tr", "td th script template !tr !p"},
    {"loose.dtd", "p", "em a img input script !p !div !ul"},
    {"loose.dtd", "a", "div h1 img video !a !button !input !label"},
    {"loose.dtd", "form", "input fieldset div !form"},
    {"loose.dtd", "select", "option optgroup hr !p !input"},
    {"loose.dtd", "video", "source track p !video !audio"},
    {"loose.dtd", "picture", "source img !p"},
    {"loose.dtd", "map", "area p"},
    {"loose.dtd", "header", "h1 nav !header !footer !main"},
    {"loose.dtd", "details", "summary p"},
    {"loose.dtd", "dl", "dt dd div !p"},
    {"loose.dtd", "iframe", "!p !a"},
    {"loose.dtd", "svg", "g path linearGradient text foreignObject title !p"},
    {"loose.dtd", "filter", "feGaussianBlur feMerge !path"},
    {"loose.dtd", "foreignObject", "p div"},
    {"loose.dtd", "math", "mrow mi mfrac msup !p"},
    {"strict.dtd", "body", "p div script ins !a !em !center"},
    {"strict.dtd", "pre", "em a !img !big !sub"},
    {"strict.dtd", "button", "p em img !a !input !form"},
    {"strict.dtd", "table", "tr tbody col !td"},
    {"frameset.dtd", "html", "head frameset !body"},
    {"frameset.dtd", "noframes", "body"},
    {"xhtml1-strict.dtd", "table", "tr tbody"},
    {"xhtml1-strict.dtd", "body", "p !a"},
    {"xhtml1-transitional.dtd", "body", "p a center font"},
    {"HTML3.2.dtd", "body", "p font center table !span"},
    {"HTML2.dtd", "body", "p em hr"},
    {"HTML2-strict.dtd", "body", "p img hr !em"},
    {"xsl.dtd", "xsl:template", "xsl:param xsl:for-each xsl:element !xsl:sort !xsl:output"},
    {"HTML3.2.dtd", "table", "caption tr !td !tbody"},
    {"HTML3.2.dtd", "pre", "em a !img !font"},
    {"HTML2.dtd", "form", "input select p !form"},
    {"HTML2.dtd", "a", "h1 em !a"},
    {"HTML2-strict.dtd", "a", "em !h1 !a"},
    {"xhtml1-frameset.dtd", "html", "head frameset !body"},
    {"xhtml1-transitional.dtd", "noframes", "p a !body"},
    {"xsl.dtd", "xsl:stylesheet", "xsl:template xsl:param xsl:output !xsl:if !xsl:sort"},
    {"xsl.dtd", "xsl:for-each", "xsl:sort xsl:if !xsl:param"},
    {"xsl.dtd", "xsl:call-template", "xsl:with-param !xsl:sort"},
    {"xsl.dtd", "xsl:choose", "xsl:when xsl:otherwise !xsl:if"},
    {"xsl.dtd", "xsl:attribute", "xsl:value-of !xsl:element"},
    {"wml12.dtd", "card", "p do timer onevent !a"},
    {"wml12.dtd", "wml", "head template card !p"},
    {"wml12.dtd", "do", "go prev noop refresh !p"},
    {"wml12.dtd", "go", "postfield setvar"},
    {"wml12.dtd", "pre", "anchor do br !img"},
    {"wml12.dtd", "p", "a select input do !p"},
};

TEST(DTDFiles, Models) {
    for (auto& [file, name, answer] : Models) {
        auto* element = Schema(file).Find(name);
        ASSERT_TRUE(element) << file << " " << name;
        auto children = Schema(file).Children(*element);
        std::istringstream words(answer);
        for (string word; words >> word;) {
            bool isBarred = word.front() == '!';
            EXPECT_EQ(children.count(word.substr(isBarred)), isBarred ? 0u : 1u)
                << file << " " << name << ": " << word;
        }
    }
}

// Pages reach their schema by what their doctype says last.
TEST(DTDFiles, EveryDoctypeHasItsFile) {
    constexpr const char* Names[] = {
        "-//W3C//DTD HTML 4.01//EN",
        "http://www.w3.org/TR/html4/strict.dtd",
        "http://www.w3.org/TR/html4/loose.dtd",
        "http://www.w3.org/TR/html4/frameset.dtd",
        "http://www.w3.org/TR/xhtml1/DTD/xhtml1-strict.dtd",
        "http://www.w3.org/TR/xhtml1/DTD/xhtml1-transitional.dtd",
        "http://www.w3.org/TR/xhtml1/DTD/xhtml1-frameset.dtd",
        "-//W3C//DTD HTML 3.2 Final//EN",
        "-//IETF//DTD HTML//EN",
        "-//IETF//DTD HTML 2.0 Strict//EN",
    };
    for (auto* name : Names) {
        TDTDParser parser;
        EXPECT_NO_THROW(parser.LoadFromFile(GetSchemaFileName(name, kmHTML))) << name;
        EXPECT_NE(parser.LookupSymbol("html", dtElement), nullptr) << name;
    }
}

}  // namespace
}  // namespace caretwell
