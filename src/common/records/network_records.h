// Plain records of the host's network: physical ports and IP endpoints.
//
// Every text is UTF-8; a field whose property the host does not have stays empty. Field order is
// part of the interface.
#pragma once

#include <string>

namespace Zentar::ZentarAgentless {

/// One physical Ethernet port, from VMware_EthernetPort. Only `name_`, `network_addresses_`,
/// `speed_` and `speedduplex_` are filled here; the other fields belong to other collectors that
/// share the record, and stay empty.
struct PhysicalPort {
    std::string device_id_;
    std::string name_;
    std::string element_name_;
    std::string description_;
    std::string permanent_address_;
    std::string network_addresses_;  ///< all addresses, a blank after each
    std::string caption_;
    std::string system_name_;
    std::string status_;
    std::string health_state_;
    std::string operational_status_;
    std::string enabled_state_;
    std::string requested_state_;
    std::string link_technology_;
    std::string port_type_;
    std::string port_number_;
    std::string max_speed_;
    std::string speed_;  ///< bits per second, as the host gives it
    std::string requested_speed_;
    std::string auto_sense_;
    std::string mtu_;
    std::string active_mtu_;
    std::string vendor_;
    std::string model_;
    std::string driver_name_;
    std::string driver_version_;
    std::string speedduplex_;  ///< "TRUE" for full duplex
    std::string firmware_version_;
    std::string bus_info_;
    std::string slot_;
    std::string vlan_id_;
    std::string wake_on_lan_;
    std::string link_state_;
    std::string media_type_;
    std::string capabilities_;
    std::string enabled_capabilities_;
    std::string received_bytes_;
    std::string transmitted_bytes_;
    std::string received_errors_;
    std::string transmitted_errors_;
};

}  // namespace Zentar::ZentarAgentless

namespace Zentar::ZTEXSI {

/// One kernel IP endpoint, from VMware_KernelIPv4ProtocolEndpoint or
/// VMware_KernelIPv6ProtocolEndpoint. States are words of the DMTF value maps.
struct IPProtocolData {
    std::string name;
    std::string transitionin_to_state;
    std::string sub_net_mask;
    std::string requested_state;             ///< IPv4 endpoints only
    std::string available_requested_states;  ///< IPv6 endpoints only: the first of the states
    std::string protocol_if_type;
    std::string enabled_state;
    std::string IPv4_address;
    std::string IPv6_address;
};

}  // namespace Zentar::ZTEXSI

namespace ZentarAgentless = Zentar::ZentarAgentless;
namespace ZTEXSI = Zentar::ZTEXSI;
