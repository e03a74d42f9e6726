#include "memory/FileText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace caretwell {
namespace {

class TFile {
public:
    explicit TFile(int handle) : FHandle(handle) {}
    ~TFile() { Close(); }
    TFile(const TFile&) = delete;
    TFile& operator=(const TFile&) = delete;

    int Handle() const { return FHandle; }
    bool IsOpen() const { return FHandle >= 0; }
    bool Close() {
        int handle = FHandle;
        FHandle = -1;
        return handle < 0 || close(handle) == 0;
    }

private:
    int FHandle;
};

std::string LastError() { return std::strerror(errno); }

std::string ResolveLinks(const std::string& fileName) {
    std::unique_ptr<char, decltype(&std::free)> path(realpath(fileName.c_str(), nullptr), std::free);
    return path ? path.get() : fileName;
}

bool WriteAll(int handle, std::string_view text) {
    while (!text.empty()) {
        ssize_t written = write(handle, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        text.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

mode_t ModeOf(const std::string& fileName, int handle) {
    struct stat info {};
    if (stat(fileName.c_str(), &info) != 0) {
        mode_t mask = umask(0);
        umask(mask);
        return 0666 & ~mask;
    }
    // Only a privileged user may give a file away; for others it stays their own.
    (void)!fchown(handle, info.st_uid, info.st_gid);
    return info.st_mode & 07777;
}

// The rename is safe on disk once the folder is.
void FlushFolder(const std::string& path) {
    TFile folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen()) fsync(folder.Handle());
}

}  // namespace

TFileText ReadFileText(const std::string& fileName, size_t most) {
    TFile file(open(fileName.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen()) return {{}, LastError()};
    struct stat info {};
    std::string text;
    if (fstat(file.Handle(), &info) == 0 && info.st_size > 0)
        text.reserve(std::min(static_cast<size_t>(info.st_size), most) + 1);
    char block[65536];
    while (true) {
        ssize_t got = read(file.Handle(), block, sizeof block);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return {{}, LastError()};
        if (got == 0) return {std::move(text), {}};
        if (text.size() + static_cast<size_t>(got) > most) return {{}, "File too large"};
        text.append(block, static_cast<size_t>(got));
    }
}

std::optional<std::string> WriteFileText(const std::string& fileName, std::string_view text) {
    std::string target = ResolveLinks(fileName);
    // A rename asks nothing of the file itself, so its own permission is asked here.
    if (access(target.c_str(), F_OK) == 0 && access(target.c_str(), W_OK) != 0) return LastError();
    size_t slash = target.rfind('/');
    std::string folder = slash == std::string::npos ? "." : target.substr(0, slash + 1);
    std::string temporary = folder + "/.caretwell-XXXXXX";
    TFile file(mkostemp(temporary.data(), O_CLOEXEC));
    if (!file.IsOpen()) return LastError();

    bool isWritten = WriteAll(file.Handle(), text) &&
                     fchmod(file.Handle(), ModeOf(target, file.Handle())) == 0 && fsync(file.Handle()) == 0 &&
                     file.Close() && std::rename(temporary.c_str(), target.c_str()) == 0;
    if (isWritten) {
        FlushFolder(folder);
        return std::nullopt;
    }
    std::string problem = LastError();
    unlink(temporary.c_str());
    return problem;
}

}  // namespace caretwell
