#include "cli/fleet_progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <iostream>

#include "fleet/progress_text.h"
#include "outputs/text/display_text.h"

namespace command {

namespace {

constexpr std::size_t kUsualColumns = 80;
constexpr std::size_t kPlainColumns = 1000;

std::size_t TerminalColumns() {
    winsize size{};
    const bool is_known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    return is_known ? size.ws_col : kUsualColumns;
}

}  // namespace

FleetProgress::FleetProgress() : is_terminal_(isatty(STDERR_FILENO) == 1) {}

FleetProgress::~FleetProgress() {
    const std::lock_guard lock(mutex_);
    Hide();
}

std::chrono::milliseconds FleetProgress::interval() const {
    using namespace std::chrono_literals;
    return is_terminal_ ? 200ms : 10s;
}

void FleetProgress::Show(const fleet::RunState& state) {
    const std::lock_guard lock(mutex_);
    const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - start_);
    if (!is_terminal_) {
        std::cerr << "kalvex: " << fleet::ProgressText(state, elapsed, kPlainColumns) << std::endl;
        return;
    }
    Hide();
    const std::string line = fleet::ProgressText(state, elapsed, TerminalColumns() - 1);
    shown_ = outputs::DisplayWidth(line);
    std::cerr << line << std::flush;
}

void FleetProgress::Around(const std::function<void()>& write) {
    const std::lock_guard lock(mutex_);
    Hide();
    write();
}

void FleetProgress::Hide() {
    if (shown_ > 0) {
        std::cerr << '\r' << std::string(shown_, ' ') << '\r' << std::flush;
        shown_ = 0;
    }
}

}  // namespace command
