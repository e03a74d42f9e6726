// Runs the built command as a shell would, in a folder of its own, with nobody's settings.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace caretwell::test {

struct TCommandResult {
    int Status = -1;  ///< 128 and the signal if it was killed
    std::string Out, Err;
};

/// A folder that is gone with the test; the command runs in it.
class TCommandFolder {
public:
    TCommandFolder() {
        std::string path = testing::TempDir() + "caretwell-XXXXXX";
        FPath = mkdtemp(path.data());
        Write("caretwell/settings.json", "{}");
    }
    ~TCommandFolder() { std::filesystem::remove_all(FPath); }
    TCommandFolder(const TCommandFolder&) = delete;
    TCommandFolder& operator=(const TCommandFolder&) = delete;

    std::string Path(const std::string& name) const { return FPath + "/" + name; }
    void Write(const std::string& name, std::string_view text) {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        std::ofstream(Path(name), std::ios::binary) << text;
    }
    std::string Read(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(Path(name), std::ios::binary).rdbuf();
        return text.str();
    }

    TCommandResult Run(std::vector<std::string> words, std::string_view input = {}) {
        Write("in", input);
        words.insert(words.begin(), CARETWELL_COMMAND);
        pid_t child = fork();
        if (child == 0) Become(words);
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), Read("out"), Read("err")};
    }

private:
    [[noreturn]] void Become(std::vector<std::string>& words) {
        auto redirect = [&](const char* name, int flags, int handle) {
            dup2(open(Path(name).c_str(), flags, 0600), handle);
        };
        redirect("in", O_RDONLY, STDIN_FILENO);
        redirect("out", O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO);
        redirect("err", O_WRONLY | O_CREAT | O_TRUNC, STDERR_FILENO);
        setenv("XDG_CONFIG_HOME", FPath.c_str(), 1);
        if (chdir(FPath.c_str()) != 0) _exit(126);
        std::vector<char*> arguments;
        for (auto& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        execv(arguments[0], arguments.data());
        _exit(127);
    }

    std::string FPath;
};

inline const std::string SmallSchemas = CARETWELL_SOURCE_DIR "/tests/data/schemas";

}  // namespace caretwell::test
