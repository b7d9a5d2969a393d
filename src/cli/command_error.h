// Why a command stops, and with which exit status.
#pragma once

#include <stdexcept>
#include <string>

namespace command {

enum ExitStatus : int {
    kExitDone = 0,
    kExitPartly = 1,    ///< some sections failed; for `supported`: the host is not
    kExitUsage = 2,     ///< the command line or a file it names is wrong
    kExitNothing = 3,   ///< nothing could be read
    kExitSignal = 128,  ///< plus the number of the signal that interrupted it
};

/// The whole line, for what catches std::bad_alloc.
inline constexpr const char* kTooLittleMemory =
    "kalvex: there is too little memory to read on; free some, or name fewer sections\n";

/// The text is for people: what happened, and what to try. It goes to standard error as one line,
/// with the control characters of names that it quotes made visible.
class CommandError : public std::runtime_error {
public:
    CommandError(ExitStatus status, const std::string& message)
        : std::runtime_error(message), status_(status) {}
    ExitStatus status() const { return status_; }

private:
    ExitStatus status_;
};

class UsageError : public CommandError {
public:
    explicit UsageError(const std::string& message) : CommandError(kExitUsage, message) {}
};

}  // namespace command
