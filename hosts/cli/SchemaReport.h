// The tables that schemas have become, as JSON and as text for people.
#pragma once

#include <string>
#include <vector>

#include "cli/Json.h"
#include "memory/MessageView.h"
#include "symbols/MLSymbolManager.h"

namespace caretwell {

/// Elements and entities of the table, names as the schema spells them, sorted.
TJson DescribeMarkup(TMLSymbolManager& symbols, const std::vector<TMessage>& messages);
std::string MarkupText(const TJson& json);

/// Reads a css.xml by itself. What is wrong with it goes to messages.
TJson DescribeStyle(const std::string& file, std::vector<TMessage>& messages);
std::string StyleText(const TJson& json);

TJson JsonOf(const std::vector<TMessage>& messages);
/// Names on one line, a blank between.
std::string JoinNames(const TJson& names);

}  // namespace caretwell
