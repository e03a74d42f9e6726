// The families of the fonts installed, through fontconfig.
#pragma once

#include <string>
#include <vector>

namespace caretwell {

/// Sorted, each once; empty on a machine without fonts or a build without fontconfig.
std::vector<std::string> ListFontFamilies();

}  // namespace caretwell
