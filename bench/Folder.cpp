#include "bench/Folder.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace caretwell::bench {
namespace {

namespace fs = std::filesystem;

constexpr const char* DocBookFolder = "/usr/share/xml/docbook/schema/xsd/5.0";

struct TWorkFolder {
    std::string Path = (fs::temp_directory_path() / ("caretwell-bench-" + std::to_string(getpid()))).string();
    TWorkFolder() { fs::create_directories(Path); }
    ~TWorkFolder() {
        std::error_code ignored;
        fs::remove_all(Path, ignored);
    }
    TWorkFolder(const TWorkFolder&) = delete;
    TWorkFolder& operator=(const TWorkFolder&) = delete;
};

void LinkAll(const fs::path& from, const fs::path& to) {
    for (const auto& entry : fs::directory_iterator(from))
        fs::create_symlink(entry.path(), to / entry.path().filename());
}

}  // namespace

const std::string& WorkFolder() {
    static TWorkFolder folder;
    return folder.Path;
}

std::string WriteWorkFile(const std::string& name, std::string_view text) {
    std::string path = WorkFolder() + "/" + name;
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

std::string FolderWithDocBook() {
    if (!fs::exists(DocBookFolder)) return {};
    fs::path folder = fs::path(WorkFolder()) / "schemas";
    if (fs::create_directory(folder)) {
        LinkAll(CARETWELL_SOURCE_DIR "/schemas", folder);
        LinkAll(DocBookFolder, folder);
    }
    return folder.string() + "/";
}

}  // namespace caretwell::bench
