// A host read on many threads at once, each with an object of its own.
#include <atomic>
#include <thread>

#include "support/inventory_test.h"

namespace {

using Zentar::Agentless::Kalvex;

constexpr int kThreads = 16;

class ManyThreads : public support::InventoryTest {
protected:
    /// Reads the host's records and lists, with an object made and destroyed on this thread.
    bool ReadsAll() const {
        Kalvex host(info);
        Zentar::ZentarAgentless::ComputerSystem system;
        Zentar::ZTEXSI::OperationSystem os;
        std::vector<Zentar::ZentarAgentless::InstalledPackage> packages;
        std::vector<Zentar::ZentarAgentless::IPMIEVENT> events;
        std::vector<Zentar::ZTEXSI::VMwarePrivilegeData> privileges;
        std::vector<Zentar::ZentarAgentless::PhysicalPort> ports;
        std::vector<Zentar::ZTEXSI::IPProtocolData> endpoints;
        Zentar::Pciinventory::Pciinfo pci;
        return host.GetComputerSystem(system) == 0 && host.GetOperationSystem(os) == 0 &&
               host.GetInstalledPackages(packages) == 0 && packages.size() > 100 &&
               host.GetIpmiRecord(events) == 0 && events.size() == 300 &&
               host.GetVMwarePrivilege(privileges) == 0 && !privileges.empty() &&
               host.GetEthernetPorts(ports) == 0 && !ports.empty() &&
               host.GetIPProtocolInfo(endpoints, 0) == 0 && !endpoints.empty() &&
               host.GetPCIInfo(pci) == 0 && !system.uuid_.empty() && !os.version_string.empty();
    }

    int CountOfThreadsThatReadAll() const {
        std::atomic<int> successes{0};
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&] { successes += ReadsAll() ? 1 : 0; });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return successes;
    }
};

TEST_F(ManyThreads, ReadOneHostOverTlsAtOnce) {
    Serve(simhost::HostDescription::Builtin(), simhost::ServerOptions());
    EXPECT_EQ(CountOfThreadsThatReadAll(), kThreads);
}

TEST_F(ManyThreads, ReadOneHostThatKeepsClosingConnections) {
    simhost::ServerOptions options = Http();
    options.requests_per_connection = 3;
    options.announce_close = false;
    Serve(simhost::HostDescription::Builtin(), options);
    EXPECT_EQ(CountOfThreadsThatReadAll(), kThreads);
}

}  // namespace
