#include "cli/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <system_error>

namespace clitest {

namespace {

void Check(bool ok, const char* what) {
    if (!ok) {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

struct Pipe {
    Pipe() { Check(pipe2(ends.data(), O_CLOEXEC) == 0, "pipe"); }
    int ReadEnd() const { return ends[0]; }
    int WriteEnd() const { return ends[1]; }
    std::array<int, 2> ends{};
};

int OpenTerminal() {
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    Check(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0, "pseudo terminal");
    return master;
}

std::vector<std::string> EnvironmentWith(const std::map<std::string, std::string>& added) {
    std::vector<std::string> entries;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (std::string(*entry).rfind("KALVEX_", 0) != 0) {
            entries.emplace_back(*entry);
        }
    }
    for (const auto& [name, value] : added) {
        entries.push_back(name + "=" + value);
    }
    return entries;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// Appends what the descriptor has; false at its end.
bool ReadSome(int descriptor, std::string& text) {
    char buffer[65536];
    const ssize_t count = read(descriptor, buffer, sizeof buffer);
    text.append(buffer, static_cast<std::size_t>(count > 0 ? count : 0));
    return count > 0;
}

}  // namespace

ChildProcess::ChildProcess(const std::string& program, Start start) {
    Pipe in, out, err;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in.ReadEnd(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out.WriteEnd(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.WriteEnd(), STDERR_FILENO);
    if (start.terminal) {
        terminal_ = OpenTerminal();
        // The first terminal that a session's leader opens becomes its own.
        constexpr int kUnused = 100;
        posix_spawn_file_actions_addopen(&actions, kUnused, ptsname(terminal_), O_RDWR, 0);
        if (start.errors_on_terminal) {
            posix_spawn_file_actions_adddup2(&actions, kUnused, STDERR_FILENO);
        }
        posix_spawn_file_actions_addclose(&actions, kUnused);
        slave_ = open(ptsname(terminal_), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);

    start.arguments.insert(start.arguments.begin(), program);
    std::vector<std::string> environment = EnvironmentWith(start.environment);
    errno = posix_spawn(&id_, program.c_str(), &actions, &attributes,
                        Pointers(start.arguments).data(), Pointers(environment).data());
    Check(errno == 0, program.c_str());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);

    close(in.ReadEnd());
    close(out.WriteEnd());
    close(err.WriteEnd());
    out_ = out.ReadEnd();
    err_ = err.ReadEnd();
    const auto length = static_cast<ssize_t>(start.input.size());
    Check(write(in.WriteEnd(), start.input.data(), start.input.size()) == length, "write");
    close(in.WriteEnd());
}

ChildProcess::~ChildProcess() {
    if (id_ > 0) {
        kill(id_, SIGKILL);
        waitpid(id_, nullptr, 0);
    }
    for (const int descriptor : {out_, err_, terminal_, slave_}) {
        if (descriptor >= 0) {
            close(descriptor);
        }
    }
}

std::string ChildProcess::ReadLine() {
    std::string line;
    char c = 0;
    while (read(out_, &c, 1) == 1 && c != '\n') {
        line += c;
    }
    return line;
}

std::string ChildProcess::ReadTerminalUntil(const std::string& end) {
    std::string shown;
    while (shown.find(end) == std::string::npos && ReadSome(terminal_, shown)) {
    }
    return shown;
}

void ChildProcess::AwaitOutput() const {
    pollfd output{out_, POLLIN, 0};
    Check(poll(&output, 1, -1) > 0, "poll");
}

void ChildProcess::AwaitEnd() const {
    siginfo_t info{};
    Check(waitid(P_PID, static_cast<id_t>(id_), &info, WEXITED | WNOWAIT) == 0, "waitid");
}

std::string ChildProcess::RestOfTerminal() {
    const std::string end = "<end>";
    const auto length = static_cast<ssize_t>(end.size());
    Check(write(slave_, end.data(), end.size()) == length, "write to the terminal");
    std::string shown = ReadTerminalUntil(end);
    return shown.substr(0, shown.size() - end.size());
}

void ChildProcess::Type(const std::string& text) {
    const auto length = static_cast<ssize_t>(text.size());
    Check(write(terminal_, text.data(), text.size()) == length, "type");
}

void ChildProcess::StopTerminal() { Check(tcflow(slave_, TCOOFF) == 0, "tcflow"); }

bool ChildProcess::Echoes() const {
    termios settings{};
    Check(tcgetattr(slave_, &settings) == 0, "terminal settings");
    return (settings.c_lflag & ECHO) != 0;
}

void ChildProcess::Signal(int number) { Check(kill(id_, number) == 0, "kill"); }

Finished ChildProcess::Wait() {
    Finished finished;
    std::array<pollfd, 2> outputs{{{out_, POLLIN, 0}, {err_, POLLIN, 0}}};
    const std::array<std::string*, 2> texts{&finished.out, &finished.err};
    while (outputs[0].fd >= 0 || outputs[1].fd >= 0) {
        Check(poll(outputs.data(), outputs.size(), -1) > 0, "poll");
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            if (outputs[i].revents != 0 && !ReadSome(outputs[i].fd, *texts[i])) {
                outputs[i].fd = -1;
            }
        }
    }
    int status = 0;
    Check(waitpid(id_, &status, 0) == id_, "waitpid");
    id_ = -1;
    finished.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    return finished;
}

Finished RunProcess(const std::string& program, Start start) {
    return ChildProcess(program, std::move(start)).Wait();
}

}  // namespace clitest
