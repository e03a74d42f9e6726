// The table of properties and types that a css.xml has become.

#include "cli/SchemaReport.h"
#include "stylesheet/CSSEditors.h"
#include "stylesheet/CSSSchemaLoader.h"

namespace caretwell {
namespace {

TJson NamesIn(const TCSSStringList& list) {
    TJson rows = TJson::array();
    for (int32_t i = 0; i < list.FCount; ++i) rows.push_back(std::string(list.GetItem(i)));
    return rows;
}

TJson DescribeValues(TCSSProperty& property) {
    std::vector<TCSSValue*> values(property.GetValueList().begin(), property.GetValueList().end());
    TCSSSymbolTable::SortList(values, 0, static_cast<int32_t>(values.size()) - 1);
    TJson rows = TJson::array();
    for (const TCSSValue* value : values)
        rows.push_back({{"name", value->FName}, {"kind", value->FKind == cssVkType ? "type" : "name"}});
    return rows;
}

TJson DescribeProperties(TCSSSymbolTable& table) {
    TJson rows = TJson::array();
    for (const auto& property : table.FProperties)
        rows.push_back({{"name", property->FName},
                        {"inherited", property->FInherited},
                        {"media", NamesIn(property->GetMedia())},
                        {"values", DescribeValues(*property)}});
    return rows;
}

TJson DescribeTypes(TCSSSymbolTable& table) {
    TJson rows = TJson::array();
    for (const auto& type : table.FTypes)
        rows.push_back({{"name", type->FName},
                        {"editable", type->FEditable},
                        {"values", NamesIn(type->GetValueList())},
                        {"refs", NamesIn(type->GetRefList())},
                        {"intrinsics", NamesIn(type->GetIntrinsicTypeList())}});
    return rows;
}

// ---- for people

std::string ValuesText(const TJson& values) {
    std::string text;
    for (const TJson& value : values) {
        text += (text.empty() ? "" : " ") + value["name"].get<std::string>();
        if (value["kind"] == "type") text += "...";
    }
    return text;
}

std::string LineOf(const char* title, const std::string& names) {
    return names.empty() ? std::string() : std::string("  ") + title + ": " + names + "\n";
}

}  // namespace

TJson DescribeStyle(const std::string& file, std::vector<TMessage>& messages) {
    TCSSSymbolTable table(nullptr);
    TCSSReader reader(table);
    try {
        reader.LoadFromFile(file);
    } catch (const ECSSSchemaError& error) {
        messages.push_back({file, error.what(), "Error", error.GetLine(), 1});
        reader.Resolve();
    }
    table.AlphaSort();
    TJson editors = TJson::array();
    for (const auto& editor : table.FEditors) editors.push_back(editor->FName);
    return {{"properties", DescribeProperties(table)},
            {"types", DescribeTypes(table)},
            {"editors", std::move(editors)},
            {"messages", JsonOf(messages)}};
}

std::string StyleText(const TJson& json) {
    std::string text = "properties  " + std::to_string(json["properties"].size()) + "\ntypes       " +
                       std::to_string(json["types"].size()) + "\neditors     " + JoinNames(json["editors"]) +
                       "\n";
    for (const TJson& property : json["properties"])
        text += "\n" + property["name"].get<std::string>() +
                (property["inherited"].get<bool>() ? "  inherited" : "") + "\n" +
                LineOf("media", JoinNames(property["media"])) +
                LineOf("values", ValuesText(property["values"]));
    for (const TJson& type : json["types"])
        text += "\ntype " + type["name"].get<std::string>() +
                (type["editable"].get<bool>() ? "  editable" : "") + "\n" +
                LineOf("values", JoinNames(type["values"])) + LineOf("refs", JoinNames(type["refs"])) +
                LineOf("units", JoinNames(type["intrinsics"]));
    return text;
}

}  // namespace caretwell
