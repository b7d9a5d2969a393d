#include "common/log/log_control.h"
#include "support/failing_memory.h"
#include "support/inventory_test.h"

namespace {

using support::HostBuilder;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using Zentar::Agentless::Kalvex;
using Zentar::ZTEXSI::IPProtocolData;

class Facade : public support::InventoryTest {
protected:
    /// What the facade itself has logged: "LEVEL TEXT".
    std::vector<std::string> FacadeLog() const {
        std::vector<std::string> lines;
        for (const std::string& message : log.Messages()) {
            if (const auto at = message.find(" kalvex.cpp "); at == 1) {
                lines.push_back(message.substr(0, 2) + message.substr(13));
            }
        }
        return lines;
    }
    void ServeBuiltin() { Serve(simhost::HostDescription::Builtin(), Http()); }
};

TEST_F(Facade, TracesItsLife) {
    Serve(HostBuilder());
    { const Kalvex host(info); }
    EXPECT_THAT(FacadeLog(),
                ElementsAre("4 Calling constructor of Kalvex", "4 Calling destructor of Kalvex"));
    EXPECT_EQ(log.Messages().front(), "4 kalvex.cpp Calling constructor of Kalvex");
}

TEST_F(Facade, LogsTheCountAndEachFieldOfAList) {
    HostBuilder host;
    Serve(host.Class("root/cimv2", "VMware_EthernetPort",
                     R"({"DeviceID": "string", "Name": "string", "NetworkAddresses": "string[]",
                         "FullDuplex": "boolean", "Speed": "uint64"})",
                     R"([{"DeviceID": "a", "Name": "vmnic0", "NetworkAddresses": ["02:00"],
                          "FullDuplex": true, "Speed": 1000}, {"DeviceID": "b"}])"));
    std::vector<Zentar::ZentarAgentless::PhysicalPort> ports;
    EXPECT_EQ(Host().GetEthernetPorts(ports), 0);
    EXPECT_THAT(FacadeLog(),
                ElementsAre("3 The size of VMware_EthernetPort log is:2", "3 name_:vmnic0",
                            "3 network_addresses_:02:00", "3 speedduplex_:TRUE", "3 speed_:1000",
                            "3 name_:", "3 network_addresses_:", "3 speedduplex_:", "3 speed_:"));
}

TEST_F(Facade, LogsOnlyTheCountOfAnEmptyList) {
    HostBuilder host;
    Serve(host.Class("root/cimv2", "VMware_EthernetPort", R"({"DeviceID": "string"})"));
    std::vector<Zentar::ZentarAgentless::PhysicalPort> ports;
    EXPECT_EQ(Host().GetEthernetPorts(ports), 0);
    EXPECT_THAT(FacadeLog(), ElementsAre("3 The size of VMware_EthernetPort log is:0"));
}

TEST_F(Facade, LogsEarlierRecordsOfTheListToo) {
    HostBuilder host;
    Serve(host.Class("root/cimv2", "OMC_IpmiLogRecord",
                     R"({"RecordID": "sint32", "Description": "string"})",
                     R"([{"RecordID": -1, "Description": "new"}])"));
    std::vector<Zentar::ZentarAgentless::IPMIEVENT> events(1);
    events[0].message = "old";
    EXPECT_EQ(Host().GetIpmiRecord(events), 0);
    EXPECT_THAT(FacadeLog(), ElementsAre("3 The size of OMC_IpmiLogRecord log is:2",
                                         "3 record_id\t:0", "3 time_stamp\t:", "3 message\t:old",
                                         "3 sev\t\t:0", "3 record_id\t:18446744073709551615",
                                         "3 time_stamp\t:", "3 message\t:new", "3 sev\t\t:0"));
}

TEST_F(Facade, ReadsNothingForAnUnknownAddressFamily) {
    Serve(HostBuilder());
    std::vector<std::string> expected{"3 kalvex.cpp The size of IPProtocol log is:3"};
    std::vector<IPProtocolData> endpoints;
    for (const std::string name : {"vmk0", "vmk1", "vmk2"}) {
        endpoints.push_back({name, "a", "b", "c", "not logged", "d", "e", "f", "g"});
        for (const char* field :
             {"name:", "transitionin_to_state:a", "sub_net_mask:b", "requested_state:c",
              "protocol_if_type:d", "enabled_state:e", "IPv4_address:f", "IPv6_address:g"}) {
            const bool is_name = field == std::string("name:");
            expected.push_back("3 kalvex.cpp " + std::string(field) + (is_name ? name : ""));
        }
    }
    for (const int family : {2, -1}) {
        Host();
        log.Clear();
        EXPECT_EQ(Host().GetIPProtocolInfo(endpoints, family), 0);
        EXPECT_EQ(endpoints.size(), 3U);
        EXPECT_THAT(log.Messages(), ElementsAreArray(expected));
    }
    EXPECT_THAT(Server().requests(), IsEmpty());
}

TEST_F(Facade, LogsAllThreePciListsEvenWhenEmpty) {
    Serve(HostBuilder());
    Zentar::Pciinventory::Pciinfo pci;
    EXPECT_EQ(Host().GetPCIInfo(pci), 0);
    EXPECT_THAT(FacadeLog(), ElementsAre("3 The size of PCIDevice is:0",
                                         "3 The size of Bridge is:0", "3 The size of Slot is:0"));
}

TEST_F(Facade, LogsSingleRecordsFieldByField) {
    ServeBuiltin();
    Zentar::ZentarAgentless::ComputerSystem system;
    Zentar::ZTEXSI::OperationSystem os;
    EXPECT_EQ(Host().GetComputerSystem(system), 0);
    EXPECT_EQ(Host().GetOperationSystem(os), 0);
    EXPECT_THAT(
        FacadeLog(),
        ElementsAre("4 Calling Kalvex::GetComputerSystem",
                    "3 name:", "3 serial_number_:" + system.serial_number_,
                    "3 product_name_:" + system.product_name_,
                    "3 manufacturer_:" + system.manufacturer_, "3 version_:" + system.version_,
                    "4 Calling Kalvex::GetOperationSystem", "3 version_string:" + os.version_string,
                    "3 name:" + os.name, "3 manufacturer:" + os.manufacturer,
                    "3 build_number:" + os.build_number,
                    "3 last_start_time:" + os.last_start_time));
    EXPECT_NE(system.serial_number_, "");
    EXPECT_NE(os.build_number, "");
}

/// Each operation on a host that has none of the classes.
std::vector<int> RunAll(Kalvex& host) {
    Zentar::ZentarAgentless::ComputerSystem system;
    Zentar::ZTEXSI::OperationSystem os;
    std::vector<Zentar::ZentarAgentless::InstalledPackage> packages;
    std::vector<Zentar::ZentarAgentless::IPMIEVENT> events;
    std::vector<Zentar::ZTEXSI::VMwarePrivilegeData> privileges;
    std::vector<Zentar::ZentarAgentless::PhysicalPort> ports;
    std::vector<IPProtocolData> endpoints;
    return {host.GetComputerSystem(system),       host.GetOperationSystem(os),
            host.GetInstalledPackages(packages),  host.GetIpmiRecord(events),
            host.GetVMwarePrivilege(privileges),  host.GetEthernetPorts(ports),
            host.GetIPProtocolInfo(endpoints, 0), host.GetIPProtocolInfo(endpoints, 1)};
}

TEST_F(Facade, ReportsEachFailureInItsOwnWords) {
    Serve(HostBuilder());
    Host();
    Zentar::SetMinLogLevel(1);
    EXPECT_THAT(RunAll(Host()), ::testing::Each(1));
    EXPECT_THAT(FacadeLog(),
                ElementsAre("1 EnumerateInstances OMC_Chassis Failed!",
                            "1 EnumerateInstances VMware_HypervisorSoftwareIdentity Failed!",
                            "1 EnumerateInstances InstalledPackages Failed!",
                            "1 EnumerateInstances OMC_IpmiLogRecord Failed!",
                            "1 EnumerateInstances VMware_Privilege Failed!",
                            "1 EnumerateInstances VMware_EthernetPort Failed!",
                            "1 EnumerateInstances IPProtocol Failed!",
                            "1 EnumerateInstances IPProtocol Failed!"));
}

TEST_F(Facade, FailsSilentlyAtLevelZero) {
    Serve(HostBuilder());
    Host();
    Zentar::SetMinLogLevel(0);
    EXPECT_THAT(RunAll(Host()), ::testing::Each(1));
    EXPECT_THAT(log.Messages(), IsEmpty());
}

TEST_F(Facade, BuildsNoResultLinesBelowLevelThree) {
    ServeBuiltin();
    Host();
    Zentar::SetMinLogLevel(2);
    EXPECT_THAT(RunAll(Host()), ::testing::Each(0));
    EXPECT_THAT(FacadeLog(), IsEmpty());
    EXPECT_THAT(log.Texts(3), IsEmpty());
}

TEST_F(Facade, AsksForTheLevelAgainBeforeEachField) {
    HostBuilder host;
    Serve(host.Class("root/cimv2", "VMware_EthernetPort",
                     R"({"DeviceID": "string", "Name": "string", "NetworkAddresses": "string[]"})",
                     R"([{"DeviceID": "a", "Name": "vmnic0", "NetworkAddresses": ["02:00"]},
                         {"DeviceID": "b", "Name": "vmnic1"}])"));
    Host();
    std::vector<std::string> texts;
    Zentar::SetLogSink([&](const Zentar::LogMessage& message) {
        if (message.file == "kalvex.cpp") {
            texts.push_back(message.text);
        }
        if (message.text == "network_addresses_:02:00") {
            Zentar::SetMinLogLevel(2);
        }
    });
    std::vector<Zentar::ZentarAgentless::PhysicalPort> ports;
    EXPECT_EQ(Host().GetEthernetPorts(ports), 0);
    EXPECT_THAT(texts, ElementsAre("The size of VMware_EthernetPort log is:2", "name_:vmnic0",
                                   "network_addresses_:02:00"));
}

TEST_F(Facade, FailsWhenTheConnectionToReplaceIsGone) {
    Serve(HostBuilder());
    Zentar::Pciinventory::Pciinfo pci;
    Host();
    support::FailNextNothrowNew();
    EXPECT_EQ(Host().GetPCIInfo(pci), 0);
    log.Clear();
    EXPECT_EQ(Host().GetPCIInfo(pci), 1);
    EXPECT_THAT(FacadeLog(), ElementsAre("1 EnumerateInstances Failed!"));
}

TEST_F(Facade, ReadsTwoHostsIndependently) {
    ServeBuiltin();
    const simhost::Server other(HostBuilder().Build(), Http());
    auto other_info = info;
    other_info.port = other.port();
    Kalvex other_host(other_info);
    std::vector<Zentar::ZentarAgentless::PhysicalPort> ports;
    EXPECT_EQ(other_host.GetEthernetPorts(ports), 1);
    EXPECT_EQ(Host().GetEthernetPorts(ports), 0);
    EXPECT_EQ(ports.size(), 4U);
}

}  // namespace
