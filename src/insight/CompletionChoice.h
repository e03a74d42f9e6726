// The choice that closes a list, as composition and completion pass it on.
#pragma once

#include <string>

#include "insight/HTMLCodCmplt.h"

namespace caretwell {

struct TMLKibitzManager::TChoice {
    char16_t Key = 0;         ///< the key that closed the list, 0 for Enter
    int32_t Index = -1;       ///< below 0 if nothing is chosen
    std::u16string Selected;  ///< what the item puts into the text
    TRef<INibEditView> View;
};

/// Keys that close the list without going into the text as a typed key.
constexpr bool IsCloser(char16_t key) { return key == 0 || key == u'\t' || key == u' ' || key == u'/'; }

}  // namespace caretwell
