#include "cli/terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <utility>

#include "cli/command_error.h"
#include "cli/secret_input.h"

namespace command {

namespace {

constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};

volatile sig_atomic_t caught_signal = 0;

void NoteSignal(int number) { caught_signal = number; }

class Descriptor {
public:
    Descriptor() : number_(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC)) {}
    ~Descriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int number() const { return number_; }

private:
    int number_;
};

void Write(int terminal, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(terminal, text.data(), text.size());
        if (count < 0 && errno != EINTR) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(count > 0 ? count : 0));
    }
}

/// No echo while it lives.
class SilentTerminal {
public:
    explicit SilentTerminal(int terminal) : terminal_(terminal) {
        is_terminal_ = tcgetattr(terminal_, &before_) == 0;
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        silent.c_lflag |= ECHONL;
        if (is_terminal_) {
            tcsetattr(terminal_, TCSAFLUSH, &silent);
        }
    }
    ~SilentTerminal() {
        if (is_terminal_) {
            tcsetattr(terminal_, TCSANOW, &before_);
        }
    }
    SilentTerminal(const SilentTerminal&) = delete;
    SilentTerminal& operator=(const SilentTerminal&) = delete;

private:
    int terminal_;
    termios before_{};
    bool is_terminal_ = false;
};

/// Holds the ending signals back while it lives; they arrive only inside WaitForInput, which they
/// interrupt.
class HeldSignals {
public:
    HeldSignals() {
        sigset_t held;
        sigemptyset(&held);
        for (const int signal : kEndingSignals) {
            sigaddset(&held, signal);
        }
        // First: one that were noted before it is held would interrupt nothing.
        pthread_sigmask(SIG_BLOCK, &held, &mask_before_);
        for (std::size_t i = 0; i < std::size(kEndingSignals); ++i) {
            struct sigaction note {};
            note.sa_handler = NoteSignal;
            sigaction(kEndingSignals[i], nullptr, &before_[i]);
            // What the parent chose to ignore stays ignored.
            if (before_[i].sa_handler != SIG_IGN) {
                sigaction(kEndingSignals[i], &note, nullptr);
            }
        }
    }
    ~HeldSignals() {
        for (std::size_t i = 0; i < std::size(kEndingSignals); ++i) {
            sigaction(kEndingSignals[i], &before_[i], nullptr);
        }
        pthread_sigmask(SIG_SETMASK, &mask_before_, nullptr);
    }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    /// False when a signal came first.
    bool WaitForInput(int terminal) {
        pollfd input{terminal, POLLIN, 0};
        while (ppoll(&input, 1, nullptr, &mask_before_) < 0 && caught_signal == 0) {
        }
        return caught_signal == 0;
    }

private:
    struct sigaction before_[std::size(kEndingSignals)]{};
    sigset_t mask_before_{};
};

/// Returns the signal that came before the line, or 0.
int ReadSilently(int terminal, const std::string& prompt, Zentar::Secret& line, bool& was_read) {
    caught_signal = 0;
    HeldSignals signals;
    const SilentTerminal silent(terminal);
    Write(terminal, prompt);
    if (signals.WaitForInput(terminal)) {
        was_read = ReadSecret(terminal, true, line);
    } else {
        Write(terminal, "\n");
    }
    return caught_signal;
}

}  // namespace

bool HasTerminal() { return Descriptor().number() >= 0; }

Zentar::Secret AskOnTerminal(const std::string& prompt) {
    const Descriptor terminal;
    Zentar::Secret line;
    bool was_read = false;
    // A signal takes effect once the terminal is as it was; after a stop the question comes again.
    while (const int signal = ReadSilently(terminal.number(), prompt, line, was_read)) {
        raise(signal);
    }
    if (!was_read || line.text().empty()) {
        throw UsageError(
            "no password was typed; type one, or give --password-file or KALVEX_PASSWORD");
    }
    DropLineBreak(line);
    return line;
}

}  // namespace command
