// Ethernet ports and IP endpoints.
#pragma once

#include "common/records/network_records.h"
#include "schema/decoders/state_decoders.h"
#include "schema/kind.h"

namespace schema {

namespace internal {

using Zentar::ZentarAgentless::PhysicalPort;
using Zentar::ZTEXSI::IPProtocolData;

inline constexpr Row<PhysicalPort> kPortRows[] = {
    {&PhysicalPort::name_,
     {.name = "name",
      .heading = "Name",
      .identifies = true,
      .meaning = "Name of the port on the host.",
      .property = "Name",
      .log_label = "name_:",
      .log_position = 1}},
    {&PhysicalPort::network_addresses_,
     {.name = "mac_addresses",
      .heading = "MAC addresses",
      .type = Type::kTextList,
      .meaning = "Ethernet addresses that the port answers to.",
      .property = "NetworkAddresses",
      .log_label = "network_addresses_:",
      .log_position = 2}},
    {&PhysicalPort::speed_,
     {.name = "speed_bps",
      .heading = "Speed (bit/s)",
      .type = Type::kInteger,
      .unit = "bit/s",
      .meaning = "Speed of the link now.",
      .property = "Speed",
      .log_label = "speed_:",
      .log_position = 4}},
    {&PhysicalPort::speedduplex_,
     {.name = "full_duplex",
      .heading = "Full duplex",
      .type = Type::kBoolean,
      .meaning = "Whether the link sends and receives at the same time.",
      .property = "FullDuplex",
      .log_label = "speedduplex_:",
      .log_position = 3}},
};

// Both address families are asked for the same nine properties, and keep what is their own. The
// log's dump is the same for both.

inline constexpr Field kEndpointName{
    .name = "name",
    .heading = "Name",
    .identifies = true,
    .meaning = "Name of the endpoint, which is that of its network interface.",
    .property = "Name",
    .log_label = "name:",
    .log_position = 1};

inline constexpr Field kTransitioningTo{
    .name = "transitioning_to",
    .heading = "Transitioning to",
    .varies = true,
    .meaning = "State that the endpoint is changing to (CIM_EnabledLogicalElement).",
    .property = "TransitioningToState",
    .decode = GetTransitioningToState,
    .log_label = "transitionin_to_state:",
    .log_position = 2};

inline constexpr Field kSubnetMask{.name = "subnet_mask",
                                   .heading = "Subnet mask",
                                   .meaning = "Mask of the endpoint's subnet.",
                                   .property = "SubnetMask",
                                   .log_label = "sub_net_mask:",
                                   .log_position = 3};

inline constexpr Field kInterfaceType{
    .name = "interface_type",
    .heading = "Interface type",
    .meaning = "Address families of the endpoint (CIM_ProtocolEndpoint).",
    .property = "ProtocolIFType",
    .decode = GetProtocolIFType,
    .log_label = "protocol_if_type:",
    .log_position = 5};

inline constexpr Field kEnabledState{
    .name = "enabled_state",
    .heading = "State",
    .meaning = "State that the endpoint is in (CIM_EnabledLogicalElement).",
    .property = "EnabledState",
    .decode = GetEnabledState,
    .log_label = "enabled_state:",
    .log_position = 6};

inline constexpr Row<IPProtocolData> kIPv4Rows[] = {
    {&IPProtocolData::name, kEndpointName},
    {&IPProtocolData::IPv4_address,
     {.name = "address",
      .heading = "Address",
      .meaning = "IPv4 address in dotted decimal form.",
      .property = "IPv4Address",
      .log_label = "IPv4_address:",
      .log_position = 7}},
    {&IPProtocolData::sub_net_mask, kSubnetMask},
    {&IPProtocolData::protocol_if_type, kInterfaceType},
    {&IPProtocolData::enabled_state, kEnabledState},
    {&IPProtocolData::requested_state,
     {.name = "requested_state",
      .heading = "Requested state",
      .meaning = "State that was last asked for (CIM_EnabledLogicalElement).",
      .property = "RequestedState",
      .decode = GetRequestedState,
      .log_label = "requested_state:",
      .log_position = 4}},
    {&IPProtocolData::transitionin_to_state, kTransitioningTo},
    {&IPProtocolData::available_requested_states,
     {.property = "AvailableRequestedStates", .is_kept = false}},
    {&IPProtocolData::IPv6_address,
     {.property = "IPv6Address",
      .is_kept = false,
      .log_label = "IPv6_address:",
      .log_position = 8}},
};

inline constexpr Row<IPProtocolData> kIPv6Rows[] = {
    {&IPProtocolData::name, kEndpointName},
    {&IPProtocolData::IPv6_address,
     {.name = "address",
      .heading = "Address",
      .meaning = "IPv6 address, as the host writes it.",
      .property = "IPv6Address",
      .log_label = "IPv6_address:",
      .log_position = 8}},
    {&IPProtocolData::sub_net_mask, kSubnetMask},
    {&IPProtocolData::protocol_if_type, kInterfaceType},
    {&IPProtocolData::enabled_state, kEnabledState},
    {&IPProtocolData::available_requested_states,
     {.name = "available_requested_states",
      .heading = "Available states",
      .meaning = "First of the states that may be asked for (CIM_EnabledLogicalElement).",
      .property = "AvailableRequestedStates",
      .decode = GetAvailableRequestedStates}},
    {&IPProtocolData::transitionin_to_state, kTransitioningTo},
    {&IPProtocolData::requested_state,
     {.property = "RequestedState",
      .is_kept = false,
      .log_label = "requested_state:",
      .log_position = 4}},
    {&IPProtocolData::IPv4_address,
     {.property = "IPv4Address",
      .is_kept = false,
      .log_label = "IPv4_address:",
      .log_position = 7}},
};

}  // namespace internal

inline constexpr KindOf kPorts{{.name = "ports",
                                .title = "Ethernet ports",
                                .name_space = "root/cimv2",
                                .class_name = "VMware_EthernetPort",
                                .spares = 36},
                               internal::kPortRows};

inline constexpr KindOf kIPv4Endpoints{{.name = "ipv4",
                                        .title = "IPv4 endpoints",
                                        .name_space = "root/cimv2",
                                        .class_name = "VMware_KernelIPv4ProtocolEndpoint"},
                                       internal::kIPv4Rows};

inline constexpr KindOf kIPv6Endpoints{{.name = "ipv6",
                                        .title = "IPv6 endpoints",
                                        .name_space = "root/cimv2",
                                        .class_name = "VMware_KernelIPv6ProtocolEndpoint"},
                                       internal::kIPv6Rows};

}  // namespace schema
