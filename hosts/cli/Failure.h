// How a command ends, and the one line that says why.
#pragma once

#include <stdexcept>
#include <string>

namespace caretwell {

enum TExitStatus {
    esDone = 0,
    esNothing = 1,     ///< nothing to offer, or the schema gave an error
    esWords = 2,       ///< the words of the call are off
    esUnreadable = 3,  ///< a file or the schema folder cannot be read or written
};

/// Ends a command from anywhere inside of it. Caught in main alone.
class TFailure : public std::runtime_error {
public:
    TFailure(TExitStatus status, const std::string& line) : std::runtime_error(line), Status(status) {}
    TExitStatus Status;
};

}  // namespace caretwell
