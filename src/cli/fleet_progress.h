// How far a fleet's run is, on standard error.
#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <string>

#include "fleet/run.h"

namespace command {

/// On a terminal one line that is drawn again and again, else a line every ten seconds. From any
/// thread.
class FleetProgress {
public:
    FleetProgress();
    ~FleetProgress();
    FleetProgress(const FleetProgress&) = delete;
    FleetProgress& operator=(const FleetProgress&) = delete;

    /// How often Show is to be called.
    std::chrono::milliseconds interval() const;
    void Show(const fleet::RunState& state);

    /// Calls what writes to the terminal, with the line out of its way.
    void Around(const std::function<void()>& write);

private:
    void Hide();

    const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    const bool is_terminal_;
    std::mutex mutex_;
    std::size_t shown_ = 0;  ///< columns of the line
};

}  // namespace command
