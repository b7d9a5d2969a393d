#include "cli/progress.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <new>
#include <string_view>

#include "outputs/text/display_text.h"

namespace command {

using outputs::DisplayText;
using outputs::DisplayWidth;

namespace {

constexpr auto kInterval = std::chrono::milliseconds(200);
constexpr std::size_t kUsualColumns = 80;

/// The terminal itself writes "^C" after the line.
constexpr std::size_t kEchoColumns = 2;

/// Columns to be made blank again.
std::atomic<std::size_t> shown_columns{0};

/// A terminal that takes nothing, such as one that is stopped, shows nothing: waiting for it would
/// keep a second signal from ending the process. Returns whether it took the text.
bool Write(std::string_view text) {
    constexpr int kPatienceMs = 100;
    pollfd terminal{STDERR_FILENO, POLLOUT, 0};
    return poll(&terminal, 1, kPatienceMs) == 1 &&
           write(STDERR_FILENO, text.data(), text.size()) >= 0;
}

std::size_t TerminalColumns() {
    winsize size{};
    const bool is_known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return is_known ? size.ws_col : kUsualColumns;
}

}  // namespace

Progress::Progress(const std::string& host, bool is_wanted) : host_(DisplayText(host)) {
    if (is_wanted && isatty(STDERR_FILENO) == 1) {
        drawing_ = std::thread([this] { Draw(); });
    }
}

Progress::~Progress() {
    Hide();
    if (drawing_.joinable()) {
        {
            const std::lock_guard lock(mutex_);
            is_over_ = true;
        }
        changed_.notify_one();
        drawing_.join();
    }
}

void Progress::Show(const std::string& what) {
    const std::lock_guard lock(mutex_);
    what_ = what;
    changed_.notify_one();
}

void Progress::Hide() {
    const std::lock_guard lock(mutex_);
    what_.clear();
    Erase();
}

void Progress::Erase() {
    // Blanks, because not every terminal knows a sequence for it.
    const std::size_t columns = shown_columns.exchange(0);
    if (columns > 0) {
        static constexpr std::string_view kBlanks = "                                ";
        bool is_taken = Write("\r");
        for (std::size_t left = columns; is_taken && left > 0;
             left -= std::min(left, kBlanks.size())) {
            is_taken = Write(kBlanks.substr(0, left));
        }
        if (is_taken) {
            Write("\r");
        }
    }
}

void Progress::Draw() {
    std::unique_lock lock(mutex_);
    while (!is_over_) {
        if (what_.empty()) {
            changed_.wait(lock);
            continue;
        }
        try {
            Redraw();
        } catch (const std::bad_alloc&) {
            // The next drawing may succeed.
        }
        changed_.wait_for(lock, kInterval);
    }
}

/// A line that does not fit would leave its first part on the terminal.
void Progress::Redraw() {
    const auto passed = std::chrono::steady_clock::now() - start_;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(passed).count();
    const std::string rest = what_ + ", " + std::to_string(seconds) + " s";
    std::string line = host_ + ": " + rest;
    const std::size_t columns = TerminalColumns();
    if (DisplayWidth(line) >= columns) {
        line = DisplayWidth(rest) < columns ? rest : "";
    }
    const std::size_t before = shown_columns;
    const std::size_t width = DisplayWidth(line);
    shown_columns = std::min(width + kEchoColumns, columns - 1);
    Write("\r" + line + std::string(before > width ? before - width : 0, ' '));
}

}  // namespace command
