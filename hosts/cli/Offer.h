// The list that is open, as the commands print it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/Engine.h"
#include "cli/Json.h"

namespace caretwell {

struct TOfferItem {
    TListItem Item;
    std::optional<int32_t> Code;  ///< of an entity's character
};

struct TOffer {
    bool IsOpen = false;
    std::string List = "none";  ///< elements, attributes, values, entities, properties
    std::optional<int32_t> Context;
    std::string Filter;  ///< the word before the caret
    std::vector<TOfferItem> Items;
};

/// The document's list as it stands; without one nothing but context and filter.
TOffer GetOffer(TEngine& engine, TDocument& document);

TJson JsonOf(const std::vector<TOfferItem>& items);
/// One item a line, with what helps to choose: the line of a closing tag, the character
/// of an entity.
std::string TextOf(const std::vector<TOfferItem>& items);

}  // namespace caretwell
