#include "inventory/record_fields.h"

namespace inventory {

using Zentar::Pciinventory::PCIBridge;
using Zentar::Pciinventory::PCIDevice;
using Zentar::Pciinventory::SystemSlot;
using Zentar::ZentarAgentless::ComputerSystem;
using Zentar::ZentarAgentless::InstalledPackage;
using Zentar::ZentarAgentless::IPMIEVENT;
using Zentar::ZentarAgentless::PhysicalPort;
using Zentar::ZTEXSI::IPProtocolData;
using Zentar::ZTEXSI::OperationSystem;
using Zentar::ZTEXSI::VMwarePrivilegeData;

namespace {

constexpr Field<ComputerSystem> kComputerSystem[] = {
    {{"product_name_", "Product name"}, &ComputerSystem::product_name_},
    {{"version_", "Version"}, &ComputerSystem::version_},
    {{"manufacturer_", "Manufacturer"}, &ComputerSystem::manufacturer_},
    {{"name", "Name"}, &ComputerSystem::name},
    {{"serial_number_", "Serial number"}, &ComputerSystem::serial_number_},
    {{"model_", "Model"}, &ComputerSystem::model_},
    {{"uuid_", "UUID"}, &ComputerSystem::uuid_},
};

constexpr Field<OperationSystem> kOperationSystem[] = {
    {{"version_string", "Version"}, &OperationSystem::version_string},
    {{"name", "Name"}, &OperationSystem::name},
    {{"manufacturer", "Manufacturer"}, &OperationSystem::manufacturer},
    {{"build_number", "Build number"}, &OperationSystem::build_number},
    {{"last_start_time", "Last start"}, &OperationSystem::last_start_time},
};

constexpr Field<InstalledPackage> kInstalledPackage[] = {
    {{"product_name_", "Name"}, &InstalledPackage::product_name_},
    {{"product_version_", "Version"}, &InstalledPackage::product_version_},
    {{"summary_", "Summary"}, &InstalledPackage::summary_},
    {{"product_install_date_", "Installed"}, &InstalledPackage::product_install_date_},
};

constexpr Field<IPMIEVENT> kEvent[] = {
    {{"record_id", "Record"}, &IPMIEVENT::record_id},
    {{"time_stamp", "Time"}, &IPMIEVENT::time_stamp},
    {{"message", "Message"}, &IPMIEVENT::message},
    {{"sev", "Severity"}, &IPMIEVENT::sev},
};

constexpr Field<VMwarePrivilegeData> kPrivilege[] = {
    {{"represents_authorization_rights", "Represents rights"},
     &VMwarePrivilegeData::represents_authorization_rights},
    {{"privilege_granted", "Granted"}, &VMwarePrivilegeData::privilege_granted},
    {{"instance_id", "Instance"}, &VMwarePrivilegeData::instance_id},
    {{"element_name", "Element"}, &VMwarePrivilegeData::element_name},
    {{"description", "Description"}, &VMwarePrivilegeData::description},
    {{"caption", "Caption"}, &VMwarePrivilegeData::caption},
    {{"activities", "Activities"}, &VMwarePrivilegeData::activities},
    {{"activityQualifiers", "Activity qualifiers"}, &VMwarePrivilegeData::activityQualifiers},
    {{"qualifier_formats", "Qualifier formats"}, &VMwarePrivilegeData::qualifier_formats},
};

constexpr Field<PhysicalPort> kPort[] = {
    {{"name_", "Name"}, &PhysicalPort::name_},
    {{"network_addresses_", "Network addresses"}, &PhysicalPort::network_addresses_},
    {{"speed_", "Speed (bit/s)"}, &PhysicalPort::speed_},
    {{"speedduplex_", "Full duplex"}, &PhysicalPort::speedduplex_},
};

constexpr Field<IPProtocolData> kEndpoint[] = {
    {{"name", "Name"}, &IPProtocolData::name},
    {{"transitionin_to_state", "Transitioning to"}, &IPProtocolData::transitionin_to_state},
    {{"sub_net_mask", "Subnet mask"}, &IPProtocolData::sub_net_mask},
    {{"requested_state", "Requested state"}, &IPProtocolData::requested_state},
    {{"available_requested_states", "Available states"},
     &IPProtocolData::available_requested_states},
    {{"protocol_if_type", "Interface type"}, &IPProtocolData::protocol_if_type},
    {{"enabled_state", "Enabled state"}, &IPProtocolData::enabled_state},
    {{"IPv4_address", "IPv4 address"}, &IPProtocolData::IPv4_address},
    {{"IPv6_address", "IPv6 address"}, &IPProtocolData::IPv6_address},
};

constexpr Field<PCIDevice> kDevice[] = {
    {{"class_code_", "Class"}, &PCIDevice::class_code_},
    {{"description_", "Description"}, &PCIDevice::description_},
    {{"slot_all_info_", "Slot or board"}, &PCIDevice::slot_all_info_},
    {{"pci_device_id_", "Device ID"}, &PCIDevice::pci_device_id_},
    {{"vendor_id_", "Vendor ID"}, &PCIDevice::vendor_id_},
    {{"irq_", "IRQ"}, &PCIDevice::irq_},
    {{"io_address_", "I/O address"}, &PCIDevice::io_address_},
};

constexpr Field<PCIBridge> kBridge[] = {
    {{"class_code_", "Class"}, &PCIBridge::class_code_},
    {{"description_", "Description"}, &PCIBridge::description_},
    {{"slot_all_info_", "Slot or board"}, &PCIBridge::slot_all_info_},
    {{"pci_device_id_", "Location"}, &PCIBridge::pci_device_id_},
};

constexpr Field<SystemSlot> kSlot[] = {
    {{"slot_designation_", "Designation"}, &SystemSlot::slot_designation_},
    {{"tag_", "Tag"}, &SystemSlot::tag_},
    {{"connector_type_", "Connector"}, &SystemSlot::connector_type_},
    {{"slot_length_", "Length"}, &SystemSlot::slot_length_},
    {{"max_data_width_", "Data width"}, &SystemSlot::max_data_width_},
    {{"supports_hot_plug_", "Hot plug"}, &SystemSlot::supports_hot_plug_},
    {{"current_usage_", "Usage"}, &SystemSlot::current_usage_},
    {{"operational_status_", "Status"}, &SystemSlot::operational_status_},
    {{"vcc_mixed_voltage_support_", "Voltage"}, &SystemSlot::vcc_mixed_voltage_support_},
};

}  // namespace

template <>
std::span<const Field<ComputerSystem>> FieldsOf() {
    return kComputerSystem;
}

template <>
std::span<const Field<OperationSystem>> FieldsOf() {
    return kOperationSystem;
}

template <>
std::span<const Field<InstalledPackage>> FieldsOf() {
    return kInstalledPackage;
}

template <>
std::span<const Field<IPMIEVENT>> FieldsOf() {
    return kEvent;
}

template <>
std::span<const Field<VMwarePrivilegeData>> FieldsOf() {
    return kPrivilege;
}

template <>
std::span<const Field<PhysicalPort>> FieldsOf() {
    return kPort;
}

template <>
std::span<const Field<IPProtocolData>> FieldsOf() {
    return kEndpoint;
}

template <>
std::span<const Field<PCIDevice>> FieldsOf() {
    return kDevice;
}

template <>
std::span<const Field<PCIBridge>> FieldsOf() {
    return kBridge;
}

template <>
std::span<const Field<SystemSlot>> FieldsOf() {
    return kSlot;
}

}  // namespace inventory
