// The whole inventory of the built-in host, over HTTPS with authentication.
#include "support/inventory_test.h"

namespace {

using Zentar::Agentless::Kalvex;

class BuiltinHost : public support::InventoryTest {
protected:
    BuiltinHost() {
        simhost::ServerOptions options;
        options.user = "root";
        options.password = "pässwörd €";
        Serve(simhost::HostDescription::Builtin(), options);
    }
    void ReadAll() {
        Kalvex& host = Host();
        EXPECT_EQ(host.GetComputerSystem(system), 0);
        EXPECT_EQ(host.GetOperationSystem(os), 0);
        EXPECT_EQ(host.GetInstalledPackages(packages), 0);
        EXPECT_EQ(host.GetIpmiRecord(events), 0);
        EXPECT_EQ(host.GetVMwarePrivilege(privileges), 0);
        EXPECT_EQ(host.GetEthernetPorts(ports), 0);
        EXPECT_EQ(host.GetIPProtocolInfo(ipv4, 0), 0);
        EXPECT_EQ(host.GetIPProtocolInfo(ipv6, 1), 0);
        EXPECT_EQ(host.GetPCIInfo(pci), 0);
    }

    Zentar::ZentarAgentless::ComputerSystem system;
    Zentar::ZTEXSI::OperationSystem os;
    std::vector<Zentar::ZentarAgentless::InstalledPackage> packages;
    std::vector<Zentar::ZentarAgentless::IPMIEVENT> events;
    std::vector<Zentar::ZTEXSI::VMwarePrivilegeData> privileges;
    std::vector<Zentar::ZentarAgentless::PhysicalPort> ports;
    std::vector<Zentar::ZTEXSI::IPProtocolData> ipv4, ipv6;
    Zentar::Pciinventory::Pciinfo pci;
};

TEST_F(BuiltinHost, IsReadWhole) {
    ReadAll();
    EXPECT_NE(system.manufacturer_, "");
    EXPECT_NE(system.uuid_, "");
    EXPECT_NE(os.version_string, "");
    EXPECT_GE(packages.size(), 110U);
    EXPECT_EQ(events.size(), 300U);
    EXPECT_EQ(privileges.size(), 12U);
    EXPECT_EQ(ports.size(), 4U);
    EXPECT_EQ(ipv4.size(), 2U);
    EXPECT_EQ(ipv6.size(), 2U);
    EXPECT_EQ(pci.devices_.size(), 40U);
    EXPECT_EQ(pci.bridges_.size(), 16U);
    EXPECT_EQ(pci.slots_.size(), 8U);
    EXPECT_EQ(system.name + system.spare_1_, "");
    for (const auto& package : packages) {
        EXPECT_EQ(package.spare_1_ + package.spare_2_ + package.spare_3_, "");
    }
    for (const auto& event : events) {
        EXPECT_EQ(event.sev, 0);
        EXPECT_EQ(event.spare_1_ + event.spare_2_, "");
    }
}

TEST_F(BuiltinHost, CostsThePrescribedRequestsOnThreeConnections) {
    ReadAll();
    // Eight enumerations of root/cimv2, one of the management controller, three of the provider,
    // and for each device and bridge one association or, where there is no slot, two.
    std::size_t expected = 8 + 1 + 3;
    for (const auto& device : pci.devices_) {
        expected += device.slot_all_info_.find("Slot") == 0 ? 1 : 2;
    }
    for (const auto& bridge : pci.bridges_) {
        expected += bridge.slot_all_info_.find("Slot") == 0 ? 1 : 2;
    }
    const auto counters = Server().counters();
    EXPECT_EQ(counters.requests - counters.challenges, expected);
    EXPECT_EQ(counters.challenges, 3U);
    EXPECT_EQ(counters.connections, 3U);
}

}  // namespace
