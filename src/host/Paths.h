// Parts of a path. Documents and schemas write backslashes too.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>

#include "host/CharSet.h"

namespace caretwell {

/// Up to the last separator, with it; empty for a bare name.
inline std::string FolderOf(std::string_view path) {
    return std::string(path.substr(0, path.find_last_of("/\\") + 1));
}

/// From the last separator on, without it.
inline std::string_view FileNameOf(std::string_view path) {
    return path.substr(path.find_last_of("/\\") + 1);
}

/// From the file name's last point on, in lower case; empty if the name has none.
inline std::string ExtensionOf(std::string_view path) {
    std::string_view name = FileNameOf(path);
    std::string extension(name.substr(std::min(name.rfind('.'), name.size())));
    std::transform(extension.begin(), extension.end(), extension.begin(), ToLower<char>);
    return extension;
}

/// Without "." and inner "..", with "/" as the separator; empty for the folder that one stands in.
inline std::string NormalPath(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    path = std::filesystem::path(path).lexically_normal().generic_string();
    return path == "." || path == "./" ? std::string() : path;
}

/// Of two normal paths; the folder ends with its separator or is empty.
inline bool IsInFolder(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && !path.substr(folder.size()).starts_with("../") &&
           (!folder.empty() || !path.starts_with('/'));
}

}  // namespace caretwell
