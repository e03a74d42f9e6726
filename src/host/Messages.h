// The one road of a message to the host's message view.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/Nibapi.h"

namespace caretwell {

/// Prefix is the message's kind ("Error", "Failure" ...); line and column count from 1, 0 for none.
/// Does nothing in a host without a message view.
inline void ShowMessage(std::string_view fileName, std::string_view text, std::string_view prefix,
                        int32_t line = 0, int32_t column = 0) {
    auto messages = GetService<INibMessageServices>();
    if (!messages) return;
    messages->ShowMessageView();
    messages->AddMessage(fileName, text, prefix, line, column);
}

}  // namespace caretwell
