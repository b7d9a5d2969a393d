#include "server_process.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

namespace bench {

namespace {

constexpr char kAskForCounts = 'c';

template <class Value>
bool Receive(int channel, Value& value) {
    return recv(channel, &value, sizeof value, MSG_WAITALL) == static_cast<ssize_t>(sizeof value);
}

template <class Value>
void Send(int channel, const Value& value) {
    if (send(channel, &value, sizeof value, MSG_NOSIGNAL) < 0) {
        throw std::runtime_error("the server's process has ended");
    }
}

/// Serves until the other end hangs up.
void Serve(const std::function<std::unique_ptr<Service>()>& make, int channel) {
    const std::unique_ptr<Service> service = make();
    Send(channel, service->port());
    for (char question = 0; Receive(channel, question);) {
        Send(channel, service->counts());
    }
}

[[noreturn]] void RunChild(const std::function<std::unique_ptr<Service>()>& make, int channel) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_TIMERSLACK, 1);  // a simulated link's delay is to be exact
    try {
        Serve(make, channel);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "server: %s\n", e.what());
        _exit(1);
    }
    _exit(0);
}

}  // namespace

ServerProcess::ServerProcess(const std::function<std::unique_ptr<Service>()>& make) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) {
        throw std::runtime_error("cannot make a socket pair");
    }
    child_ = fork();
    if (child_ == 0) {
        close(ends[0]);
        RunChild(make, ends[1]);
    }
    close(ends[1]);
    channel_ = ends[0];
    if (child_ < 0 || !Receive(channel_, port_)) {
        throw std::runtime_error("cannot start a server process");
    }
}

ServerProcess::~ServerProcess() {
    close(channel_);
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
}

void ServerProcess::Stop() const {
    kill(child_, SIGSTOP);
    int status = 0;
    waitpid(child_, &status, WUNTRACED);
}

void ServerProcess::GoOn() const { kill(child_, SIGCONT); }

Counts ServerProcess::counts() const {
    Counts counts;
    Send(channel_, kAskForCounts);
    if (!Receive(channel_, counts)) {
        throw std::runtime_error("the server's process has ended");
    }
    return counts;
}

}  // namespace bench
