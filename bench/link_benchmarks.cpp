#include <chrono>

#include "benchmarks.h"
#include "fresh_process.h"
#include "module_work.h"
#include "replay_server.h"
#include "simhost/server_habits.h"
#include "simulated_host.h"

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

/// Those of the two namespaces that every host is asked for, and that of the PCI devices.
constexpr std::size_t kNecessaryConnections = 3;

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The second inventory of a process, as an application reads host after host: the first also
/// starts OpenSSL and the allocator.
double SecondsOfInventory(std::uint16_t port) {
    return InFreshProcess([=] {
        ReadInventory(HostAt(port, Link::kHttps));
        const auto started = Clock::now();
        ReadInventory(HostAt(port, Link::kHttps));
        return SecondsSince(started);
    });
}

/// Round trips: one for each request, one for each TCP connection and one for its TLS handshake.
void InventoryOverSlowLink(benchmark::State& state, std::size_t round_trip_ms) {
    constexpr int kInventories = 2;
    for ([[maybe_unused]] auto _ : state) {
        const ServerProcess server([=] {
            simhost::ServerOptions options;
            options.round_trip_delay = std::chrono::milliseconds(round_trip_ms);
            return MakeSimulatedHost(simhost::HostDescription::Builtin(), options);
        });
        const double seconds = SecondsOfInventory(server.port());
        const Counts counts = server.counts();
        const auto requests = static_cast<double>(counts.requests) / kInventories;
        state.SetIterationTime(seconds);
        state.counters["requests"] = requests;
        state.counters["challenges"] = static_cast<double>(counts.challenges) / kInventories;
        state.counters["connections"] = static_cast<double>(counts.connections) / kInventories;
        state.counters["to_link"] = seconds / ((requests + 2 * kNecessaryConnections) *
                                               static_cast<double>(round_trip_ms) / 1e3);
    }
}

/// From a server that closes after ten requests, as those of hosts do, with or without Nagle's
/// algorithm.
void InventoryOfManyConnections(benchmark::State& state, std::size_t devices, bool no_delay) {
    const ServerProcess server([=] {
        simhost::ServerOptions options = simhost::RealServerHabits();
        options.no_delay = no_delay;
        return MakeSimulatedHost(HostOfDevices(devices), options);
    });
    TimeEach(state, [&] { return SecondsOfInventory(server.port()); });
}

void InventoryWithNagle(benchmark::State& state, std::size_t devices) {
    InventoryOfManyConnections(state, devices, false);
}

void InventoryWithoutNagle(benchmark::State& state, std::size_t devices) {
    InventoryOfManyConnections(state, devices, true);
}

/// Segments with data that arrived, to requests. With TCP_NODELAY each write leaves as a segment of
/// its own, and without it a second write at the latest when the first is acknowledged.
void WritesPerRequest(benchmark::State& state, std::size_t requests) {
    constexpr std::size_t kPackages = 1;
    const ServerProcess server = PackagesServer(kPackages);
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(InFreshProcess([&] {
            Zentar::Agentless::Kalvex host(HostAt(server.port(), Link::kHttp));
            const auto started = Clock::now();
            for (std::size_t i = 0; i < requests; ++i) {
                ReadPackages(host, kPackages);
            }
            return SecondsSince(started);
        }));
    }
    const Counts counts = server.counts();
    state.counters["writes"] =
        static_cast<double>(counts.segments) / static_cast<double>(counts.requests);
}

/// Handshakes beyond one for every ten requests, and reconnections that did not resume a session.
double ExtraHandshakes(std::size_t devices, bool announce_close) {
    constexpr std::size_t kRequestsPerConnection = 10;
    const ServerProcess server([=] {
        simhost::ServerOptions options;
        options.requests_per_connection = kRequestsPerConnection;
        options.announce_close = announce_close;
        return MakeSimulatedHost(HostOfDevices(devices), options);
    });
    InFreshProcess([&] {
        Zentar::Agentless::Kalvex host(HostAt(server.port(), Link::kHttps));
        Zentar::Pciinventory::Pciinfo pci;
        const bool read = host.GetPCIInfo(pci) == 0 && pci.devices_.size() == devices &&
                          pci.devices_.back().slot_all_info_ == "System board";
        return read ? 0 : throw std::runtime_error("could not read the PCI devices");
    });
    const Counts counts = server.counts();
    const std::size_t of_devices =
        (counts.requests + kRequestsPerConnection - 1) / kRequestsPerConnection;
    const std::size_t necessary = kNecessaryConnections - 1 + of_devices;
    const std::size_t resumable = counts.handshakes - kNecessaryConnections;
    return static_cast<double>(counts.handshakes - necessary) +
           static_cast<double>(resumable - counts.resumptions);
}

void Handshakes(benchmark::State& state, std::size_t devices) {
    for ([[maybe_unused]] auto _ : state) {
        const auto started = Clock::now();
        state.counters["extra_announced"] = ExtraHandshakes(devices, true);
        state.counters["extra_unannounced"] = ExtraHandshakes(devices, false);
        state.SetIterationTime(SecondsSince(started));
    }
}

}  // namespace

std::vector<Measurement> LinkMeasurements() {
    return {
        {"inventory/10", InventoryOverSlowLink, 10, 1, 30},
        {"nagle/100", InventoryWithNagle, 100, 1, 30},
        {"no_delay/100", InventoryWithoutNagle, 100, 1, 30},
        {"writes/100", WritesPerRequest, 100, 1, 3},
        {"handshakes/40", Handshakes, 40, 1, 3},
    };
}

}  // namespace bench
