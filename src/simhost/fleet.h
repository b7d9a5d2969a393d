// Many simulated hosts on the network, in one process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "simhost/fault.h"
#include "simhost/fleet_fault.h"
#include "simhost/host_description.h"
#include "simhost/server.h"

namespace simhost {

struct FleetHost {
    std::uint32_t number = 0;  ///< from 1
    std::string name;
    std::uint16_t port = 0;
    FleetFault fault = FleetFault::kNone;
};

/// Serves hosts 1 to N on a port each, from construction to destruction. One thread accepts for all
/// of them, and all show one certificate; a connection has a thread of its own. An idle host takes
/// a listening socket and less than 2 KiB. All members may be called from any thread.
class Fleet {
public:
    /// Every host is the described one with names, numbers, addresses and versions of its own, as
    /// its number says. The first has the options' port, the others those that follow; with port 0
    /// each has any free one. `fault_percent` of the hosts fail: see fleet_fault.h.
    ///
    /// All ports are open when it returns. May raise this process's limit of descriptors. Throws
    /// std::system_error with a clear text when it cannot listen or the descriptors do not suffice,
    /// std::invalid_argument when there are more hosts than ports.
    Fleet(const HostDescription& description, const ServerOptions& options, std::size_t count,
          unsigned fault_percent = 0);
    /// Ends all connections at once.
    ~Fleet();
    Fleet(const Fleet&) = delete;
    Fleet& operator=(const Fleet&) = delete;

    /// In the order of their numbers.
    std::vector<FleetHost> Hosts() const;
    std::vector<std::uint16_t> Ports() const;

    /// Of all hosts together. Includes every connection that a client has completed before the
    /// call.
    Counters counters() const;

    /// At every host that has no such fault of its own, from the next request on; limits count for
    /// each host alone.
    void InjectFault(const Fault& fault);

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace simhost
