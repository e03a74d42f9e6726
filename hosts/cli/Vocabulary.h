// The engine's enumerations by the names that they have in its code, and what a
// document's language is.
#pragma once

#include <string_view>

#include "cli/Engine.h"
#include "cli/Json.h"
#include "parser/ParserContext.h"

namespace caretwell {

std::string_view NameOf(TKibitzMode mode);
std::string_view NameOf(TTagType type);
std::vector<std::string_view> NamesOf(TParserContext contexts);
std::vector<std::string_view> NamesOf(INibMLTagFlags flags);

/// Adds "mode" (of markup) and "schema", the schema file in force at the caret.
void AddLanguage(TJson& json, TEngine& engine, TDocument& document);

}  // namespace caretwell
