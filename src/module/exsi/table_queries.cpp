#include "module/exsi/table_queries.h"

#include "module/exsi/leading_number.h"
#include "module/exsi/pci_tables.h"
#include "module/exsi/state_decoders.h"

namespace Zentar::Agentless {

namespace {

using Pciinventory::PCIBridge;
using Pciinventory::PCIDevice;
using Pciinventory::SystemSlot;
using ZentarAgentless::InstalledPackage;
using ZentarAgentless::IPMIEVENT;
using ZentarAgentless::PhysicalPort;
using ZTEXSI::IPProtocolData;
using ZTEXSI::VMwarePrivilegeData;

/// Hosts number their log records as signed 32-bit integers.
void StoreRecordId(IPMIEVENT& event, std::string&& text) {
    event.record_id = static_cast<std::uint64_t>(std::int64_t{LeadingNumber(text).value_or(0)});
}

constexpr Column<InstalledPackage> kPackageColumns[] = {
    {"ElementName", Verbatim<&InstalledPackage::product_name_>},
    {"VersionString", Verbatim<&InstalledPackage::product_version_>},
    {"Description", Verbatim<&InstalledPackage::summary_>},
    {"InstallDate", Verbatim<&InstalledPackage::product_install_date_>},
};

constexpr Column<IPMIEVENT> kIpmiColumns[] = {
    {"RecordID", StoreRecordId},
    {"MessageTimestamp", Verbatim<&IPMIEVENT::time_stamp>},
    {"Description", Verbatim<&IPMIEVENT::message>},
};

constexpr Column<VMwarePrivilegeData> kPrivilegeColumns[] = {
    {"RepresentsAuthorizationRights",
     Verbatim<&VMwarePrivilegeData::represents_authorization_rights>},
    {"PrivilegeGranted", Verbatim<&VMwarePrivilegeData::privilege_granted>},
    {"InstanceID", Verbatim<&VMwarePrivilegeData::instance_id>},
    {"ElementName", Verbatim<&VMwarePrivilegeData::element_name>},
    {"Description", Verbatim<&VMwarePrivilegeData::description>},
    {"Caption", Verbatim<&VMwarePrivilegeData::caption>},
    {"Activities", Verbatim<&VMwarePrivilegeData::activities>},
    {"ActivityQualifiers", Verbatim<&VMwarePrivilegeData::activityQualifiers>},
    {"QualifierFormats", Verbatim<&VMwarePrivilegeData::qualifier_formats>},
};

constexpr Column<PhysicalPort> kPortColumns[] = {
    {"Name", Verbatim<&PhysicalPort::name_>},
    {"NetworkAddresses", Verbatim<&PhysicalPort::network_addresses_>},
    {"FullDuplex", Verbatim<&PhysicalPort::speedduplex_>},
    {"Speed", Verbatim<&PhysicalPort::speed_>},
};

// Both address families are asked for the same nine properties, and keep what is their own.
constexpr Column<IPProtocolData> kIPv4Columns[] = {
    {"Name", Verbatim<&IPProtocolData::name>},
    {"TransitioningToState",
     Decoded<&IPProtocolData::transitionin_to_state, GetTransitioningToState>},
    {"SubnetMask", Verbatim<&IPProtocolData::sub_net_mask>},
    {"RequestedState", Decoded<&IPProtocolData::requested_state, GetRequestedState>},
    {"AvailableRequestedStates"},
    {"ProtocolIFType", Decoded<&IPProtocolData::protocol_if_type, GetProtocolIFType>},
    {"EnabledState", Decoded<&IPProtocolData::enabled_state, GetEnabledState>},
    {"IPv4Address", Verbatim<&IPProtocolData::IPv4_address>},
    {"IPv6Address"},
};

constexpr Column<IPProtocolData> kIPv6Columns[] = {
    {"Name", Verbatim<&IPProtocolData::name>},
    {"TransitioningToState",
     Decoded<&IPProtocolData::transitionin_to_state, GetTransitioningToState>},
    {"SubnetMask", Verbatim<&IPProtocolData::sub_net_mask>},
    {"RequestedState"},
    {"AvailableRequestedStates",
     Decoded<&IPProtocolData::available_requested_states, GetAvailableRequestedStates>},
    {"ProtocolIFType", Decoded<&IPProtocolData::protocol_if_type, GetProtocolIFType>},
    {"EnabledState", Decoded<&IPProtocolData::enabled_state, GetEnabledState>},
    {"IPv4Address"},
    {"IPv6Address", Verbatim<&IPProtocolData::IPv6_address>},
};

// The worker turns the class code into its word afterwards.
constexpr Column<PCIDevice> kDeviceColumns[] = {
    {"ClassCode", Verbatim<&PCIDevice::class_code_>},
    {"Description", Verbatim<&PCIDevice::description_>},
    {"PciDeviceID", Verbatim<&PCIDevice::pci_device_id_>},
    {"VendorID", Verbatim<&PCIDevice::vendor_id_>},
    {"IRQ", Verbatim<&PCIDevice::irq_>},
    {"IOAddress", Verbatim<&PCIDevice::io_address_>},
};

constexpr Column<PCIBridge> kBridgeColumns[] = {
    {"ClassCode", Verbatim<&PCIBridge::class_code_>},
    {"Description", Verbatim<&PCIBridge::description_>},
    {"Location", Verbatim<&PCIBridge::pci_device_id_>},
};

constexpr Column<SystemSlot> kSlotColumns[] = {
    {"SlotDesignation", Verbatim<&SystemSlot::slot_designation_>},
    {"Tag", Verbatim<&SystemSlot::tag_>},
    {"ConnectorType", Decoded<&SystemSlot::connector_type_, DecodeConnectorType>},
    {"SlotLength", Decoded<&SystemSlot::slot_length_, DecodeSlotLength>},
    {"MaxDataWidth", Decoded<&SystemSlot::max_data_width_, DecodeMaxDataWidth>},
    {"SupportsHotPlug", Verbatim<&SystemSlot::supports_hot_plug_>},
    {"CurrentUsage", Decoded<&SystemSlot::current_usage_, DecodeCurrentUsage>},
    {"OperationalStatus", Decoded<&SystemSlot::operational_status_, DecodeOperationalStatus>},
    {"VccMixedVoltageSupport",
     Decoded<&SystemSlot::vcc_mixed_voltage_support_, DecodeVccMixedVoltageSupport>},
};

}  // namespace

const TableQuery<InstalledPackage> kInstalledPackages = {
    "VMware_ComponentSoftwareIdentity", "Calling KalvexCim::GetInstalledPackages",
    "EnumerateInstances VMware_ComponentSoftwareIdentity Failed!", kPackageColumns};

const TableQuery<IPMIEVENT> kIpmiRecords = {"OMC_IpmiLogRecord", "Calling KalvexCim::GetIpmiRecord",
                                            "EnumerateInstances OMC_IpmiLogRecord Failed!",
                                            kIpmiColumns};

const TableQuery<VMwarePrivilegeData> kPrivileges = {
    "VMware_Privilege", "Calling KalvexCim::GetVMwarePrivilege",
    "EnumerateInstances VMwarePrivilegeCim Failed!", kPrivilegeColumns};

const TableQuery<PhysicalPort> kEthernetPorts = {
    "VMware_EthernetPort", "Calling KalvexCim::GetEthernetPorts",
    "EnumerateInstances VMware_EthernetPort Failed!", kPortColumns};

const TableQuery<IPProtocolData> kIPv4Endpoints = {
    "VMware_KernelIPv4ProtocolEndpoint", "Calling KalvexCim::GetIPv4ProtocolInfo",
    "EnumerateInstances VMware_KernelIPv4ProtocolEndpoint Failed!", kIPv4Columns};

const TableQuery<IPProtocolData> kIPv6Endpoints = {
    "VMware_KernelIPv6ProtocolEndpoint", "Calling KalvexCim::GetIPv6ProtocolInfo",
    "EnumerateInstances VMware_KernelIPv6ProtocolEndpoint Failed!", kIPv6Columns};

const TableQuery<PCIDevice> kPciDevices = {"IBMSG_PCIDevice", "Calling KalvexCim::GetPCIDevice",
                                           "EnumerateInstances IBMSG_PCIDevice Failed!",
                                           kDeviceColumns};

const TableQuery<PCIBridge> kPciBridges = {"IBMSG_PCIBridge", "Calling KalvexCim::GetPCIBridge",
                                           "EnumerateInstances IBMSG_PCIBridge Failed!",
                                           kBridgeColumns};

const TableQuery<SystemSlot> kSystemSlots = {"IBMSG_SystemSlot", "Calling KalvexCim::GetSystemSlot",
                                             "EnumerateInstances IBMSG_SystemSlot Failed!",
                                             kSlotColumns};

}  // namespace Zentar::Agentless
