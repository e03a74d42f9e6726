// A folder of schema files that lives as long as a test.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace caretwell {

class TXSDTestFolder {
public:
    TXSDTestFolder() {
        std::string path = std::filesystem::temp_directory_path().string() + "/caretwell-XXXXXX";
        FPath = std::string(mkdtemp(path.data())) + "/";
    }
    ~TXSDTestFolder() { std::filesystem::remove_all(FPath); }
    TXSDTestFolder(const TXSDTestFolder&) = delete;
    TXSDTestFolder& operator=(const TXSDTestFolder&) = delete;

    const std::string& GetPath() const { return FPath; }
    /// Full name of the file, which is written as it comes.
    std::string Write(const std::string& name, std::string_view text) const {
        std::filesystem::create_directories(std::filesystem::path(FPath + name).parent_path());
        std::ofstream(FPath + name, std::ios::binary) << text;
        return FPath + name;
    }

private:
    std::string FPath;
};

inline std::string Repeat(std::string_view text, size_t count) {
    std::string all;
    for (size_t i = 0; i < count; ++i) all += text;
    return all;
}

}  // namespace caretwell
