// Whole files in and out: read without a change of a byte, written so that a crash
// leaves either the old file or the new one.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace caretwell {

struct TFileText {
    std::optional<std::string> Text;  ///< the bytes as they are, line ends and byte order mark too
    std::string Problem;              ///< why there is no text, such as "No such file or directory"
};

/// Files longer than most bytes are refused.
TFileText ReadFileText(const std::string& fileName, size_t most = INT32_MAX);

/// Replaces the file by text: a new file in the same folder is written, flushed to the
/// disk and renamed over it. The old file's mode and owner are kept; a link is
/// followed. Nothing on success, otherwise what went wrong; the file is then as it was.
std::optional<std::string> WriteFileText(const std::string& fileName, std::string_view text);

}  // namespace caretwell
