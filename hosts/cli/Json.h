// The shapes of --json. Keys stand in a fixed order; one that does not apply is absent.
// Strings are valid UTF-8 whatever the document holds.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "cli/Place.h"
#include "markup/Text.h"
#include "memory/EditorDriver.h"

namespace caretwell {

using TJson = nlohmann::ordered_json;

inline TJson JsonOf(std::u16string_view text) { return ToUtf8(text); }
TJson JsonOf(TLinePlace place);

/// As one line, with its line break. Bytes that are no UTF-8 become U+FFFD.
std::string JsonLine(const TJson& json);

}  // namespace caretwell
