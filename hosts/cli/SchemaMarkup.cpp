// The table of elements that a DTD or an XSD has become.
#include <algorithm>

#include "cli/SchemaReport.h"
#include "cli/Text.h"
#include "cli/Vocabulary.h"

namespace caretwell {
namespace {

// As the lists are sorted; names that differ in case alone stand in one order too.
bool IsBefore(std::u16string_view a, std::u16string_view b) {
    int order = CompareText(a, b);
    return order ? order < 0 : a < b;
}

using TNames = std::vector<std::u16string>;

TJson SortedNames(TNames names) {
    std::sort(names.begin(), names.end(), IsBefore);
    TJson rows = TJson::array();
    for (const auto& name : names) rows.push_back(ToUtf8(name));
    return rows;
}

TJson ChildNames(INibMLTag* tag) {
    TNames names;
    if (tag) tag->SetFilter({});
    for (int32_t i = 0; tag && i < tag->GetTagCount(); ++i) {
        auto child = tag->GetTags(i);
        if (child && !Supports<INibMLClosingTag>(child)) names.emplace_back(child->GetName());
    }
    return SortedNames(std::move(names));
}

TJson DescribeAttribute(TMLSymbolManager& symbols, INibMLTag& tag, TRef<INibMLTagAttribute> attribute) {
    TJson row{{"name", JsonOf(attribute->GetName())},
              {"required", attribute->GetRequired()},
              {"fixed", attribute->GetFixed()}};
    if (attribute->GetFixed()) row["fixedValue"] = JsonOf(attribute->GetFixedValue());
    row["event"] = Supports<INibMLTagAttributeEvent>(attribute);
    row["values"] = TJson::array();
    for (int32_t i = 0; i < attribute->GetCount(); ++i)
        row["values"].push_back(JsonOf(attribute->GetValue(i)));
    auto editor = symbols.GetAttributeEditorFromHashList(attribute->GetName(), attribute, tag.GetName());
    if (editor) row["editor"] = editor->GetEditorId();
    return row;
}

TJson DescribeAttributes(TMLSymbolManager& symbols, INibMLTag& tag) {
    std::vector<TRef<INibMLTagAttribute>> attributes;
    tag.SetShowAttributes(true);
    for (int32_t i = 0; i < tag.GetAttributeCount(); ++i)
        if (auto attribute = tag.GetAttribute(i)) attributes.push_back(std::move(attribute));
    tag.SetShowAttributes(false);
    std::sort(attributes.begin(), attributes.end(),
              [](const auto& a, const auto& b) { return IsBefore(a->GetName(), b->GetName()); });
    TJson rows = TJson::array();
    for (auto& attribute : attributes) rows.push_back(DescribeAttribute(symbols, tag, std::move(attribute)));
    return rows;
}

TJson DescribeElement(TMLSymbolManager& symbols, INibMLTag& tag) {
    return {{"name", JsonOf(tag.GetName())},
            {"empty", tag.GetEmpty()},
            {"any", tag.GetAny()},
            {"requiresOpeningTag", tag.GetRequiresOpeningTag()},
            {"requiresClosingTag", tag.GetRequiresClosingTag()},
            {"isChild", tag.GetIsChild()},
            {"flags", NamesOf(tag.GetFlags())},
            {"children", ChildNames(&tag)},
            {"attributes", DescribeAttributes(symbols, tag)}};
}

TJson DescribeElements(TMLSymbolManager& symbols) {
    std::vector<TRef<INibMLTag>> tags;
    for (const auto& tag : symbols.GetTagList())
        if (!Supports<INibMLClosingTag>(tag)) tags.push_back(tag);
    std::stable_sort(tags.begin(), tags.end(),
                     [](const auto& a, const auto& b) { return IsBefore(a->GetName(), b->GetName()); });
    TJson rows = TJson::array();
    for (const auto& tag : tags) rows.push_back(DescribeElement(symbols, *tag));
    return rows;
}

TJson DescribeEntities(TAsciiCharList& list) {
    list.SetFilter({});
    TJson rows = TJson::array();
    for (int32_t i = 0; i < list.GetCount(); ++i) {
        TJson row{{"name", JsonOf(list.GetItem(i))}};
        if (list.GetAsciiVal(i) > 0) row["code"] = list.GetAsciiVal(i);
        rows.push_back(std::move(row));
    }
    return rows;
}

// ---- for people

std::string AttributeText(const TJson& attribute) {
    std::string text = attribute["name"].get<std::string>();
    if (attribute["required"].get<bool>()) text += " required";
    if (attribute.contains("fixedValue")) text += " fixed " + attribute["fixedValue"].get<std::string>();
    if (attribute["event"].get<bool>()) text += " event";
    const TJson& values = attribute["values"];
    return values.empty() ? text : text + "  " + JoinNames(values);
}

std::string ElementText(const TJson& element) {
    std::string text = element["name"].get<std::string>();
    if (element["empty"].get<bool>()) text += "  empty";
    if (element["any"].get<bool>()) text += "  any";
    if (!element["requiresOpeningTag"].get<bool>()) text += "  opening tag optional";
    if (!element["requiresClosingTag"].get<bool>()) text += "  closing tag optional";
    if (!element["flags"].empty()) text += "  " + JoinNames(element["flags"]);
    text += "\n";
    if (!element["children"].empty()) text += "  children: " + JoinNames(element["children"]) + "\n";
    for (const TJson& attribute : element["attributes"]) text += "  " + AttributeText(attribute) + "\n";
    return text;
}

}  // namespace

TJson DescribeMarkup(TMLSymbolManager& symbols, const std::vector<TMessage>& messages) {
    return {{"root", ChildNames(symbols.GetHiddenRootNode())},
            {"elements", DescribeElements(symbols)},
            {"entities", DescribeEntities(symbols.GetCharList())},
            {"messages", JsonOf(messages)}};
}

std::string MarkupText(const TJson& json) {
    TFacts facts;
    facts.Add("root", JoinNames(json["root"]));
    facts.Add("elements", std::to_string(json["elements"].size()));
    facts.Add("entities", std::to_string(json["entities"].size()));
    std::string text = facts.ToText();
    for (const TJson& element : json["elements"]) text += "\n" + ElementText(element);
    if (!json["entities"].empty()) text += "\n";
    TTable table;
    for (const TJson& entity : json["entities"]) {
        table.AddRow({entity["name"].get<std::string>()});
        if (!entity.contains("code")) continue;
        table.AddCell(ShowCharacter(entity["code"].get<int32_t>()));
        table.AddCell(CodePointName(entity["code"].get<int32_t>()));
    }
    return text + table.ToText();
}

TJson JsonOf(const std::vector<TMessage>& messages) {
    TJson rows = TJson::array();
    for (const TMessage& message : messages) {
        TJson row{{"severity", message.Prefix}, {"text", message.Text}};
        if (!message.FileName.empty()) row["file"] = message.FileName;
        if (message.Line > 0) row["line"] = message.Line;
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string JoinNames(const TJson& names) {
    std::string text;
    for (const TJson& name : names) text += (text.empty() ? "" : " ") + name.get<std::string>();
    return text;
}

}  // namespace caretwell
