// Simulated hosts as services.
#pragma once

#include "server_process.h"
#include "simhost/server.h"

namespace bench {

/// Asks for the credentials of module_work.h. Its counts are the simulated host's own.
std::unique_ptr<Service> MakeSimulatedHost(const simhost::HostDescription& description,
                                           simhost::ServerOptions options);

/// The built-in host with `devices` PCI devices in place of its own, each on the system board and
/// in no slot, so that finding its place takes two associator requests.
simhost::HostDescription HostOfDevices(std::size_t devices);

}  // namespace bench
