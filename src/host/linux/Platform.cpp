// The platform layer on Linux.
#include "host/Platform.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>

#include "host/linux/Fonts.h"

namespace caretwell {
namespace {

bool IsFolder(const std::string& path) {
    struct stat info {};
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

class TLinuxPlatform final : public IPlatform {
public:
    explicit TLinuxPlatform(TPlatformOptions options) : FOptions(std::move(options)) {}

    // Asked at every call, and a thread stays what it is.
    bool IsMainThread() override {
        static thread_local const bool isMain = getpid() == gettid();
        return isMain;
    }
    // A terminal tells of no key state; hosts with a keyboard bring a platform of their own.
    bool IsCtrlDown() override { return false; }

    std::string ExecutablePath() override {
        std::array<char, 4096> path{};
        ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
        return length > 0 ? std::string(path.data(), static_cast<size_t>(length)) : std::string();
    }

    std::string SchemaFolder() override {
        if (FOptions.SchemaFolder.empty()) FOptions.SchemaFolder = FindSchemaFolder();
        if (FOptions.SchemaFolder.back() != '/') FOptions.SchemaFolder += '/';
        return FOptions.SchemaFolder;
    }

    bool FileExists(const std::string& path) override {
        struct stat info {};
        return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
    }

    std::vector<std::string> ListFolder(const std::string& folder) override {
        std::vector<std::string> names;
        DIR* directory = opendir(folder.c_str());
        if (!directory) return names;
        while (const dirent* entry = readdir(directory))
            if (FileExists(folder + "/" + entry->d_name)) names.emplace_back(entry->d_name);
        closedir(directory);
        std::sort(names.begin(), names.end());
        return names;
    }

    std::vector<std::string> FontFamilies() override { return ListFontFamilies(); }
    ISettingsStore* Settings() override { return FOptions.Settings; }
    IFormHost* Forms() override { return FOptions.Forms; }

private:
    // "schemas" beside the folder of the executable; an installed tree keeps its
    // data under share, so that is looked at when the first is not there.
    std::string FindSchemaFolder() {
        std::string path = ExecutablePath();
        std::string bin = path.substr(0, path.rfind('/') + 1);
        std::string beside = bin + "../schemas/";
        std::string shared = bin + "../share/caretwell/schemas/";
        return !IsFolder(beside) && IsFolder(shared) ? shared : beside;
    }

    TPlatformOptions FOptions;
};

IPlatform* Current = nullptr;

}  // namespace

std::unique_ptr<IPlatform> MakePlatform(TPlatformOptions options) {
    return std::make_unique<TLinuxPlatform>(std::move(options));
}

IPlatform& GetPlatform() {
    static TLinuxPlatform machine{TPlatformOptions{}};
    return Current ? *Current : machine;
}

void SetPlatform(IPlatform* platform) { Current = platform; }

}  // namespace caretwell
