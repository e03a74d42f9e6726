// The keys of a call:  "<ta{Enter} {Tab}{Esc}{Ctrl+Space}{{}"
#pragma once

#include <string_view>
#include <variant>
#include <vector>

#include "memory/EditorDriver.h"

namespace caretwell {

/// A key by name, or a character.
using TTypedKey = std::variant<TEditorKey, char32_t>;

/// Raises TFailure for a name that is no key.
std::vector<TTypedKey> ReadKeys(std::string_view keys);

/// enter, tab, space, escape or one character, as the character that the driver takes.
/// Raises TFailure for anything else.
char32_t ReadCloseKey(std::string_view word);

}  // namespace caretwell
