// Ethernet ports and IP protocol endpoints.
#include "support/inventory_test.h"

namespace {

using support::HostBuilder;
using ::testing::ElementsAre;
using Zentar::ZentarAgentless::PhysicalPort;
using Zentar::ZTEXSI::IPProtocolData;

class EthernetPorts : public support::InventoryTest {
protected:
    void ServePorts(const std::string& instances) {
        HostBuilder host;
        Serve(host.Class("root/cimv2", "VMware_EthernetPort",
                         R"({"DeviceID": "string", "Name": "string",
                             "NetworkAddresses": "string[]", "FullDuplex": "boolean",
                             "Speed": "uint64"})",
                         instances));
    }
};

TEST_F(EthernetPorts, KeepTheHostsTexts) {
    ServePorts(R"([{"DeviceID": "vmnic0", "Name": "vmnic0",
        "NetworkAddresses": ["00:50:56:01:00:00", "00:50:56:01:00:01"], "FullDuplex": true,
        "Speed": 25000000000}])");
    std::vector<PhysicalPort> ports;
    EXPECT_EQ(Worker().GetEthernetPorts(ports), 0);
    ASSERT_EQ(ports.size(), 1U);
    EXPECT_EQ(ports[0].name_, "vmnic0");
    EXPECT_EQ(ports[0].network_addresses_, "00:50:56:01:00:00 00:50:56:01:00:01");
    EXPECT_EQ(ports[0].speedduplex_, "TRUE");
    EXPECT_EQ(ports[0].speed_, "25000000000");
    EXPECT_EQ(ports[0].device_id_, "");
}

TEST_F(EthernetPorts, ComeAfterWhatTheListHeld) {
    ServePorts(R"([{"DeviceID": "vmnic0", "Name": "vmnic0"}])");
    std::vector<PhysicalPort> ports(1);
    ports[0].name_ = "before";
    EXPECT_EQ(Worker().GetEthernetPorts(ports), 0);
    ASSERT_EQ(ports.size(), 2U);
    EXPECT_EQ(ports[0].name_, "before");
    EXPECT_EQ(ports[1].name_, "vmnic0");
}

TEST_F(EthernetPorts, WithoutSpeedAreStillListed) {
    ServePorts(
        R"([{"DeviceID": "d", "Name": "vmnic0", "NetworkAddresses": [], "FullDuplex": false}])");
    std::vector<PhysicalPort> ports;
    EXPECT_EQ(Worker().GetEthernetPorts(ports), 0);
    ASSERT_EQ(ports.size(), 1U);
    EXPECT_EQ(ports[0].speed_, "");
    EXPECT_EQ(ports[0].speedduplex_, "FALSE");
    EXPECT_THAT(log.Texts(2), ElementsAre("Property Speed is not found!"));
}

class IpEndpoints : public support::InventoryTest {
protected:
    static constexpr const char* kProperties =
        R"({"Name": "string", "TransitioningToState": "uint16", "SubnetMask": "string",
            "RequestedState": "uint16", "AvailableRequestedStates": "uint16[]",
            "ProtocolIFType": "uint16", "EnabledState": "uint16", "IPv4Address": "string",
            "IPv6Address": "string"})";

    IPProtocolData ReadOne(int family, const std::string& instance) {
        HostBuilder host;
        Serve(host.Class("root/cimv2", "VMware_KernelIPv4ProtocolEndpoint", kProperties,
                         family == 0 ? "[" + instance + "]" : "[]")
                  .Class("root/cimv2", "VMware_KernelIPv6ProtocolEndpoint", kProperties,
                         family == 1 ? "[" + instance + "]" : "[]"));
        std::vector<IPProtocolData> endpoints;
        EXPECT_EQ(Host().GetIPProtocolInfo(endpoints, family), 0);
        return endpoints.size() == 1 ? endpoints[0] : IPProtocolData();
    }
};

TEST_F(IpEndpoints, OfVersion4CarryDecodedStates) {
    const IPProtocolData endpoint = ReadOne(0, R"({"Name": "vmk0", "EnabledState": 2,
        "RequestedState": 12, "TransitioningToState": 12, "ProtocolIFType": 4096,
        "SubnetMask": "255.255.255.0", "IPv4Address": "192.0.2.10",
        "AvailableRequestedStates": [2], "IPv6Address": "2001:db8::1"})");
    EXPECT_EQ(endpoint.name, "vmk0");
    EXPECT_EQ(endpoint.enabled_state, "Enabled");
    EXPECT_EQ(endpoint.requested_state, "Not Applicable");
    EXPECT_EQ(endpoint.transitionin_to_state, "Not Applicable");
    EXPECT_EQ(endpoint.protocol_if_type, "IPv4");
    EXPECT_EQ(endpoint.sub_net_mask, "255.255.255.0");
    EXPECT_EQ(endpoint.IPv4_address, "192.0.2.10");
    EXPECT_EQ(endpoint.available_requested_states, "");
    EXPECT_EQ(endpoint.IPv6_address, "");
}

TEST_F(IpEndpoints, OfVersion6CarryTheFirstAvailableStateOnly) {
    const IPProtocolData endpoint = ReadOne(1, R"({"Name": "vmk0", "EnabledState": 3,
        "RequestedState": 12, "TransitioningToState": 8, "ProtocolIFType": 4097,
        "SubnetMask": "64", "IPv4Address": "192.0.2.10",
        "AvailableRequestedStates": [2, 3, 11], "IPv6Address": "2001:db8::1"})");
    EXPECT_EQ(endpoint.available_requested_states, "Enabled");
    EXPECT_EQ(endpoint.requested_state, "");
    EXPECT_EQ(endpoint.transitionin_to_state, "Defer");
    EXPECT_EQ(endpoint.protocol_if_type, "IPv6");
    EXPECT_EQ(endpoint.enabled_state, "Disabled");
    EXPECT_EQ(endpoint.sub_net_mask, "64");
    EXPECT_EQ(endpoint.IPv6_address, "2001:db8::1");
    EXPECT_EQ(endpoint.IPv4_address, "");
}

TEST_F(IpEndpoints, ReadStateOneAsReservedOrNothing) {
    const IPProtocolData endpoint = ReadOne(
        0,
        R"({"Name": "vmk0", "TransitioningToState": 1, "RequestedState": 1, "ProtocolIFType": 1})");
    EXPECT_EQ(endpoint.transitionin_to_state, "DMTF Reserved");
    EXPECT_EQ(endpoint.requested_state, "");
    EXPECT_EQ(endpoint.protocol_if_type, "");
}

TEST_F(IpEndpoints, DecodeMissingStatesAsUnknownAndReportEachMissingProperty) {
    const IPProtocolData endpoint = ReadOne(0, R"({"Name": "vmk0"})");
    EXPECT_EQ(endpoint.transitionin_to_state, "Unknown");
    EXPECT_EQ(endpoint.requested_state, "Unknown");
    EXPECT_EQ(endpoint.enabled_state, "Unknown");
    EXPECT_EQ(endpoint.protocol_if_type, "");
    EXPECT_THAT(
        log.Texts(2),
        ElementsAre("Property AvailableRequestedStates is not found!",
                    "Property EnabledState is not found!", "Property IPv4Address is not found!",
                    "Property IPv6Address is not found!", "Property ProtocolIFType is not found!",
                    "Property RequestedState is not found!", "Property SubnetMask is not found!",
                    "Property TransitioningToState is not found!"));
}

TEST_F(IpEndpoints, AreReadFromTheClassOfTheFamilyAskedFor) {
    Serve(HostBuilder());
    std::vector<IPProtocolData> endpoints;
    EXPECT_EQ(Host().GetIPProtocolInfo(endpoints, 0), 1);
    EXPECT_EQ(Host().GetIPProtocolInfo(endpoints, 1), 1);
    EXPECT_EQ(Host().GetIPProtocolInfo(endpoints, 2), 0);
    std::vector<std::string> classes;
    for (const auto& request : Server().requests()) {
        classes.push_back(request.class_name);
    }
    EXPECT_THAT(classes, ElementsAre("VMware_KernelIPv4ProtocolEndpoint",
                                     "VMware_KernelIPv6ProtocolEndpoint"));
}

}  // namespace
