// A list of words written as one text.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace caretwell {

inline std::vector<std::string> Split(std::string_view text, char at = ' ') {
    std::vector<std::string> parts;
    for (bool goesOn = !text.empty(); goesOn;) {
        size_t end = std::min(text.find(at), text.size());
        parts.emplace_back(text.substr(0, end));
        goesOn = end < text.size();
        text.remove_prefix(end + goesOn);
    }
    return parts;
}

}  // namespace caretwell
