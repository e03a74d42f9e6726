#include "cli/Offer.h"

#include "cli/Text.h"

namespace caretwell {
namespace {

// The class column tells the kind of a list; entities have none.
std::string ListName(std::u16string_view classText) {
    if (classText.starts_with(u"Element")) return "elements";
    if (classText.starts_with(u"Attribute Value") || classText == u"value") return "values";
    if (classText.starts_with(u"Attribute")) return "attributes";
    if (classText == u"property") return "properties";
    return "entities";
}

void AddItems(TEngine& engine, TEditorDriver& driver, TOffer& offer) {
    TRef<INibCodeInsightSymbolList> symbols;
    driver.Manager()->GetSymbolList(symbols);
    offer.List = ListName(symbols->GetSymbolClassText(0));
    bool isEntities = offer.List == "entities";
    for (TListItem& item : driver.Items()) {
        TOfferItem row{std::move(item), std::nullopt};
        if (isEntities) {
            int32_t code =
                engine.Symbols().GetCharList().GetAsciiVal(static_cast<int32_t>(offer.Items.size()));
            if (code > 0) row.Code = code;
        }
        offer.Items.push_back(std::move(row));
    }
}

}  // namespace

TOffer GetOffer(TEngine& engine, TDocument& document) {
    TOffer offer;
    TEditorDriver& driver = document.Driver();
    auto manager = driver.Manager();
    if (!manager) return offer;
    if (auto context = QueryAs<INibInsightContext>(manager)) offer.Context = context->GetContext();
    offer.IsOpen = driver.IsOpen();
    offer.Filter =
        ToUtf8(offer.IsOpen ? driver.Filter()
                            : document.View().Position()->TakeText(manager->EditorTokenValidChars(false),
                                                                   INibEditPosition::TakeBackwards));
    if (offer.IsOpen) AddItems(engine, driver, offer);
    return offer;
}

TJson JsonOf(const std::vector<TOfferItem>& items) {
    TJson rows = TJson::array();
    for (const auto& [item, code] : items) {
        TJson row{{"name", ToUtf8(item.Name)},
                  {"text", ToUtf8(item.Text)},
                  {"type", ToUtf8(item.Type)},
                  {"class", ToUtf8(item.Class)},
                  {"closing", item.IsClosing}};
        if (code) row["code"] = *code;
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string TextOf(const std::vector<TOfferItem>& items) {
    TTable table;
    for (const auto& [item, code] : items) {
        table.AddRow({ToUtf8(item.Name)});
        if (item.IsClosing) table.AddCell(ToUtf8(item.Type), TTable::csQuiet);
        if (code) table.AddCell(ShowCharacter(*code)), table.AddCell(CodePointName(*code), TTable::csQuiet);
    }
    return table.ToText();
}

}  // namespace caretwell
