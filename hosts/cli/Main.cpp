// The command caretwell: completion at a place of a file, from the shell.
#include <exception>

#include "cli/Commands.h"
#include "cli/Run.h"

namespace {

using namespace caretwell;

struct TCommand {
    const char* Name;
    TExitStatus (*Run)(const TArguments& arguments);
};
constexpr TCommand Commands[] = {
    {"complete", RunComplete}, {"choose", RunChoose}, {"type", RunType},
    {"explain", RunExplain},   {"events", RunEvents}, {"schema", RunSchema},
};

TExitStatus Run(int count, char** words) {
    TArguments arguments = ReadArguments(count, words);
    for (const TCommand& command : Commands)
        if (command.Name == arguments.Command) return command.Run(arguments);
    return esDone;  // help was asked for
}

}  // namespace

int main(int count, char** words) {
    try {
        return Run(count, words);
    } catch (const TFailure& failure) {
        // A failure without a line of its own was told by the engine's message.
        if (*failure.what()) WriteError("caretwell: " + std::string(failure.what()));
        return failure.Status;
    } catch (const std::exception& problem) {
        WriteError("caretwell: " + std::string(problem.what()));
        return esUnreadable;
    }
}
