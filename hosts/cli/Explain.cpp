// explain: what the engine sees at a place.
#include "cli/Commands.h"
#include "cli/Run.h"
#include "cli/Text.h"
#include "cli/Vocabulary.h"
#include "parser/MLParser.h"
#include "stylesheet/CSSCodCmplt.h"

namespace caretwell {
namespace {

void AddQuote(TJson& json, const char* key, char quote) {
    if (quote) json[key] = std::string(1, quote);
}

TJson Describe(const TTagAttributeList& list) {
    TJson rows = TJson::array();
    for (int32_t i = 0; i < list.GetCount(); ++i) {
        const TTagAttributeValue& written = list.Get(i);
        TJson row{{"name", JsonOf(written.Attribute->GetName())}, {"value", written.Value}};
        AddQuote(row, "quoteOpen", written.QuoteOpen);
        AddQuote(row, "quoteClose", written.QuoteClose);
        row["known"] = !Supports<INibMLUnknownTagAttribute>(written.Attribute);
        rows.push_back(std::move(row));
    }
    return rows;
}

TJson DescribeTag(std::u16string_view name, int32_t line) { return {{"name", JsonOf(name)}, {"line", line}}; }

// Innermost first, as the stacks are read.
TJson DescribeOpenTags(const TMLParser& parser) {
    TJson rows = TJson::array();
    for (PTagEntry entry = parser.GetTagStack(); entry; entry = entry->Next) {
        TJson row = DescribeTag(entry->Tag->GetName(), entry->Line);
        row["start"] = entry->OffsetStart;
        row["end"] = entry->OffsetEnd;
        row["attributes"] = Describe(entry->Attrs);
        rows.push_back(std::move(row));
    }
    return rows;
}

TJson DescribeDocumentTags(const TMLParser& parser) {
    TJson rows = TJson::array();
    for (PTagEntry entry = parser.GetDocumentTags(); entry; entry = entry->Next)
        rows.push_back(DescribeTag(entry->Tag->GetName(), entry->Line));
    return rows;
}

TJson DescribeClosingTags(TMLSymbolManager& symbols) {
    TJson rows = TJson::array();
    for (int32_t i = 0; i < symbols.GetClosedTagsCount(); ++i) {
        auto tag = symbols.GetCloseTags(i);
        auto lined = QueryAs<INibMLCustomTag>(tag);
        rows.push_back(DescribeTag(tag->GetName(), lined ? lined->GetLineNumber() : 0));
    }
    return rows;
}

TJson DescribeAutoClose(const TMLParser& parser, const TTextBuffer& text) {
    TJson rows = TJson::array();
    for (int32_t place : parser.GetAutoClosePositions()) rows.push_back(JsonOf(LinePlaceAt(text, place)));
    return rows;
}

// Outside a quoted value it is the caret.
TLinePlace ValuePlace(const TMLParser& parser, TDocument& document) {
    int32_t offset = parser.FValueOffset >= 0 ? parser.FValueOffset : document.View().CaretOffset();
    return LinePlaceAt(document.Text(), offset);
}

void AddFlags(TJson& json, const TMLParser& parser) {
    json["inTag"] = parser.FInTag;
    json["inClosingTag"] = parser.FInClosingTag;
    json["caretInTagName"] = parser.FCaretInTagName;
    json["inScript"] = parser.FInScript;
    json["inStyle"] = parser.FInStyle;
    json["inTextArea"] = parser.FInTextArea;
    json["inDocType"] = parser.GetInDocType();
    json["isXML"] = parser.FIsXML;
    json["unterminatedTag"] = parser.FUnterminatedTag;
    json["contexts"] = NamesOf(parser.FContexts);
    json["contextPos"] = parser.GetContextPos();
}

void AddCaretTags(TJson& json, const TMLParser& parser) {
    if (const auto& tag = parser.FCurrentTag)
        json["currentTag"] = {{"name", JsonOf(tag->GetName())},
                              {"known", !Supports<INibMLNamedTag>(tag)},
                              {"start", tag->GetOffsetStart()},
                              {"end", tag->GetOffsetEnd()}};
    if (parser.FLastKnownTag) json["lastKnownTag"] = JsonOf(parser.FLastKnownTag->GetName());
    if (parser.FCaretParentTag) json["caretParentTag"] = JsonOf(parser.FCaretParentTag->GetName());
    if (parser.FCurrentAttribute) json["currentAttribute"] = JsonOf(parser.FCurrentAttribute->GetName());
}

// The line of an element is that of its tag, or of the tag before which that is left out.
void AddGrammar(TJson& json, INibGrammar& grammar, const TTextBuffer& text) {
    TGrammarAnswer answer;
    if (!grammar.GetAnswer(answer)) return;
    TJson closable = TJson::array();
    for (const TClosableElement& element : answer.Closable)
        closable.push_back({{"name", element.Name}, {"line", LinePlaceAt(text, element.Offset).Line}});
    json["grammar"] = {{"exact", answer.IsExact},
                       {"now", answer.Now},
                       {"required", answer.Required},
                       {"elsewhere", answer.Elsewhere},
                       {"closable", std::move(closable)}};
}

TJson ExplainMarkup(TEngine& engine, TDocument& document) {
    auto grammar = QueryAs<INibGrammar>(&engine.Markup());
    grammar->SetWatching(true);
    engine.Parse(document);
    TMLSymbolManager& symbols = engine.Symbols();
    const TMLParser& parser = symbols.GetParser();
    TJson json{{"mode", NameOf(symbols.GetKibitzMode())}};
    if (!symbols.GetSchemaFile().empty()) json["schema"] = symbols.GetSchemaFile();
    AddFlags(json, parser);
    AddCaretTags(json, parser);
    json["valuePos"] = JsonOf(ValuePlace(parser, document));
    json["tagStack"] = DescribeOpenTags(parser);
    json["documentTags"] = DescribeDocumentTags(parser);
    json["closingTags"] = DescribeClosingTags(symbols);
    json["autoClose"] = DescribeAutoClose(parser, document.Text());
    if (!parser.FSchemaFile.empty()) json["schemaFile"] = parser.FSchemaFile;
    AddGrammar(json, *grammar, document.Text());
    return json;
}

TJson ExplainStyle(TRun& run, TDocument& document) {
    run.OpenList(document);
    TCSSExplanation seen = CSSKibitzManager().Explain();
    TJson json{{"position", seen.Position}};
    if (!seen.Property.empty()) json["property"] = seen.Property;
    if (!seen.LastDeclaration.empty()) json["lastDeclaration"] = seen.LastDeclaration;
    return json;
}

// ---- for people

std::string PlaceText(const TJson& place) {
    return std::to_string(place["line"].get<int32_t>()) + ":" +
           std::to_string(place["column"].get<int32_t>());
}

// A value that stands on one line.
std::string ValueText(const TJson& value) {
    if (value.is_string()) return ShowText(value.get_ref<const std::string&>());
    if (value.is_object() && value.contains("line") && value.contains("column")) return PlaceText(value);
    return value.dump(-1, ' ', false, TJson::error_handler_t::replace);
}

std::string TagText(const TJson& tag) {
    std::string text = tag["name"].get<std::string>();
    if (tag.contains("line")) text += " (line " + tag["line"].dump() + ")";
    if (!tag.contains("attributes")) return text;
    for (const TJson& attribute : tag["attributes"])
        text += "  " + attribute["name"].get<std::string>() + "=" +
                ShowText(attribute["value"].get<std::string>());
    return text;
}

void AddRows(TFacts& facts, const std::string& key, const TJson& rows) {
    std::string_view shownKey = key;
    for (const TJson& row : rows) {
        bool isTag = row.is_object() && row.contains("name");
        facts.Add(shownKey, isTag ? TagText(row) : ValueText(row));
        shownKey = {};
    }
}

// Names of elements side by side: there may be a hundred.
void AddGrammarRows(TFacts& facts, const TJson& grammar) {
    facts.Add("grammar", grammar["exact"].get<bool>() ? "exact" : "not exact");
    for (const char* key : {"now", "required", "elsewhere", "closable"}) {
        std::string names;
        for (const TJson& row : grammar[key])
            names += (names.empty() ? "" : " ") + (row.is_object() ? row["name"] : row).get<std::string>();
        if (!names.empty()) facts.Add(std::string("  ") + key, names);
    }
}

std::string TextOf(const TJson& json) {
    TFacts facts;
    for (const auto& [key, value] : json.items()) {
        if (key == "grammar") AddGrammarRows(facts, value);
        else if (value.is_array()) AddRows(facts, key, value);
        else if (value.is_boolean()) facts.Add(key, value.get<bool>() ? "yes" : "no");
        else if (key == "currentTag")
            facts.Add(key,
                      value["name"].get<std::string>() + (value["known"].get<bool>() ? "" : " (unknown)"));
        else facts.Add(key, ValueText(value));
    }
    return facts.ToText();
}

}  // namespace

TExitStatus RunExplain(const TArguments& arguments) {
    TPlace place = ReadPlace(arguments);
    TRun run(arguments);
    TDocument& document = run.Open(std::move(place));
    bool isStyle = run.Engine().IsStyleSheet(document.FileName());
    if (!document.Driver().Manager()) throw run.ExplainNothing(document);
    TJson json = isStyle ? ExplainStyle(run, document) : ExplainMarkup(run.Engine(), document);
    WriteOutput(arguments.Json ? JsonLine(json) : TextOf(json));
    run.CheckSchema(document);
    return esDone;
}

}  // namespace caretwell
