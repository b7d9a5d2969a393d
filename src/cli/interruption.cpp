#include "cli/interruption.h"

#include <unistd.h>

#include <exception>
#include <utility>

#include "cli/command_error.h"
#include "cli/progress.h"

namespace command {

namespace {

constexpr int kEndingSignals[] = {SIGINT, SIGTERM};

/// Wakes the watching thread at the end; whoever else sends it achieves nothing, as always.
constexpr int kWakingSignal = SIGURG;

bool IsIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

[[noreturn]] void EndAtOnce(int signal) {
    Progress::Erase();
    _exit(kExitSignal + signal);
}

}  // namespace

Interruption::Interruption(std::function<void()> stop) {
    sigemptyset(&watched_);
    sigaddset(&watched_, kWakingSignal);
    for (const int signal : kEndingSignals) {
        if (!IsIgnored(signal)) {
            sigaddset(&watched_, signal);
        }
    }
    pthread_sigmask(SIG_BLOCK, &watched_, &mask_before_);
    watching_ = std::thread([this, stop = std::move(stop)] { Watch(stop); });
}

Interruption::~Interruption() {
    is_over_ = true;
    pthread_kill(watching_.native_handle(), kWakingSignal);
    watching_.join();
    pthread_sigmask(SIG_SETMASK, &mask_before_, nullptr);
}

int Interruption::StatusOr(int status) const {
    const int number = signal_;
    return number == 0 ? status : kExitSignal + number;
}

void Interruption::Watch(const std::function<void()>& stop) {
    while (!is_over_) {
        int number = 0;
        if (sigwait(&watched_, &number) != 0 || number == kWakingSignal) {
            continue;
        }
        if (signal_ != 0) {
            EndAtOnce(number);
        }
        signal_ = number;
        try {
            stop();
        } catch (const std::exception&) {
            EndAtOnce(number);
        }
    }
}

}  // namespace command
