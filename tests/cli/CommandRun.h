// Runs the built command as a shell would, in a folder of its own, with nobody's settings.
#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>
#include <vector>

#include "support/TemporaryFolder.h"

namespace caretwell::test {

struct TCommandResult {
    int Status = -1;  ///< 128 and the signal if it was killed
    std::string Out, Err;
};

/// The command runs in it.
class TCommandFolder : public TTemporaryFolder {
public:
    TCommandFolder() { Write("caretwell/settings.json", "{}"); }
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
        setenv("XDG_CONFIG_HOME", Path().c_str(), 1);
        if (chdir(Path().c_str()) != 0) _exit(126);
        std::vector<char*> arguments;
        for (auto& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
};

inline const std::string SmallSchemas = CARETWELL_SOURCE_DIR "/tests/data/schemas";

}  // namespace caretwell::test
