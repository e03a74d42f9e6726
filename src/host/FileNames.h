// Parts of a path.
#pragma once

#include <string>
#include <string_view>

namespace caretwell {

/// Up to the last separator, with it; empty for a bare name. Documents and schemas write backslashes too.
inline std::string FolderOf(std::string_view path) {
    return std::string(path.substr(0, path.find_last_of("/\\") + 1));
}

}  // namespace caretwell
