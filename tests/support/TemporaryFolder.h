// A folder of files that lives as long as a test.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace caretwell {

class TTemporaryFolder {
public:
    TTemporaryFolder() {
        std::string pattern = testing::TempDir() + "caretwell-XXXXXX";
        FPath = std::string(mkdtemp(pattern.data())) + "/";
    }
    ~TTemporaryFolder() { std::filesystem::remove_all(FPath); }
    TTemporaryFolder(const TTemporaryFolder&) = delete;
    TTemporaryFolder& operator=(const TTemporaryFolder&) = delete;

    /// Full name of a file; of the folder itself, with a slash at its end.
    std::string Path(const std::string& name = {}) const { return FPath + name; }
    /// The same of one that is written as it comes.
    std::string Write(const std::string& name, std::string_view text) const {
        std::filesystem::create_directories(std::filesystem::path(FPath + name).parent_path());
        std::ofstream(FPath + name, std::ios::binary) << text;
        return FPath + name;
    }

private:
    std::string FPath;
};

}  // namespace caretwell
