// Runs the command as a user does: as a process of its own.
#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

namespace clitest {

struct Finished {
    int status = -1;  ///< exit status, or minus the number of the signal that ended it
    std::string out;
    std::string err;
};

struct Start {
    std::vector<std::string> arguments;
    std::map<std::string, std::string> environment{};  ///< on top of the test's own
    std::string input{};                               ///< standard input, then its end
    bool terminal = false;                             ///< with a terminal of its own, else none
    bool errors_on_terminal = false;                   ///< standard error is that terminal
};

/// Killed on destruction if it still runs.
class ChildProcess {
public:
    ChildProcess(const std::string& program, Start start);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t id() const { return id_; }

    /// The next line of standard output, as soon as it is there.
    std::string ReadLine();
    /// Waits until it has begun to write standard output, or has ended.
    void AwaitOutput() const;
    /// Waits until it has ended, and reads nothing meanwhile.
    void AwaitEnd() const;
    /// Everything that the terminal has got and was not read yet; once the command has ended.
    std::string RestOfTerminal();
    /// Everything that the command has shown on its terminal, up to `end`.
    std::string ReadTerminalUntil(const std::string& end);
    void Type(const std::string& text);
    /// As its user does with Ctrl-S: the terminal takes nothing more.
    void StopTerminal();
    /// Whether its terminal echoes what is typed.
    bool Echoes() const;

    void Signal(int number);
    /// Reads both outputs to their ends and waits.
    Finished Wait();

private:
    pid_t id_ = -1;
    int out_ = -1;
    int err_ = -1;
    int terminal_ = -1;  ///< our end
    int slave_ = -1;     ///< its end, kept open so that what it showed can be read afterwards
};

Finished RunProcess(const std::string& program, Start start);

}  // namespace clitest
