// The ways in which hosts stall, as data.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "module/exsi/kalvex.h"

namespace time_limits {

using std::chrono::milliseconds;

/// A host that stalls, as long as it lives.
struct Scene {
    ZentarConnection::ConnectionInfo info;
    std::shared_ptr<void> host;
    /// What has to be done with a connected object before the host stalls; may be empty.
    std::function<void(Zentar::Agentless::Kalvex&)> prepare;
};

/// What the module is about when the host stalls.
enum class Moment {
    kConnecting,  ///< the object is constructed, by one long attempt to connect
    kPausing,     ///< the same, between two attempts
    kAsking,      ///< one request is under way
    kWorking,     ///< no request is long, but there are always more
};

struct Stall {
    Zentar::FailurePhase phase;  ///< kNone: any
    const char* how;
    Moment moment;
    /// A fresh host, for a limit of so long.
    std::function<Scene(milliseconds limit)> make;
};

const std::vector<Stall>& Stalls();

}  // namespace time_limits
