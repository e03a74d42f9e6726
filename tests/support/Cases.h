// Rows that are whole files, out of tests/data/cases, where they need no escapes:
//
//   === what the row is about
//   its text
//   --- part.xsd
//   a file that belongs to it
//   ---
//   what comes of it
#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace caretwell {

struct TFileCase {
    std::string FTitle, FText, FExpect;                         ///< without the last line break
    std::vector<std::pair<std::string, std::string>> FFiles{};  ///< name and text
};

inline std::vector<TFileCase> ReadCases(const std::string& name) {
    std::ifstream file(CARETWELL_SOURCE_DIR "/tests/data/cases/" + name, std::ios::binary);
    std::vector<TFileCase> cases;
    std::string *part = nullptr, between;
    for (std::string line; std::getline(file, line);) {
        bool isTitle = line.starts_with("=== "), isFile = line.starts_with("--- ");
        if (isTitle) part = &cases.emplace_back(TFileCase{line.substr(4), {}, {}}).FText;
        else if (isFile) part = &cases.back().FFiles.emplace_back(line.substr(4), "").second;
        else if (line == "---") part = &cases.back().FExpect;
        else if (part) *part += std::exchange(between, "\n") + line;
        if (isTitle || isFile || line == "---") between.clear();
    }
    EXPECT_FALSE(cases.empty()) << name;
    return cases;
}

inline std::string Repeat(std::string_view text, size_t count) {
    std::string all;
    for (size_t i = 0; i < count; ++i) all += text;
    return all;
}

/// The text for 0, 1 and so on: "$" is the number, "$+" the next one.
inline std::string Numbered(std::string_view text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        for (size_t at = 0; at < text.size(); ++at) {
            bool isNext = text.substr(at, 2) == "$+";
            if (text[at] == '$') all += std::to_string(i + isNext);
            else all += text[at];
            at += isNext;
        }
    return all;
}

}  // namespace caretwell
