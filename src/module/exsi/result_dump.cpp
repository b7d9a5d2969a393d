#include "module/exsi/result_dump.h"

namespace Zentar::Agentless {

namespace {

using Pciinventory::PCIBridge;
using Pciinventory::PCIDevice;
using Pciinventory::SystemSlot;
using ZentarAgentless::ComputerSystem;
using ZentarAgentless::InstalledPackage;
using ZentarAgentless::IPMIEVENT;
using ZentarAgentless::PhysicalPort;
using ZTEXSI::IPProtocolData;
using ZTEXSI::OperationSystem;
using ZTEXSI::VMwarePrivilegeData;

template <auto Field, class Record>
void Write(std::ostream& stream, const Record& record) {
    stream << record.*Field;
}

constexpr LabelledField<ComputerSystem> kComputerSystem[] = {
    {"name:", Write<&ComputerSystem::name>},
    {"serial_number_:", Write<&ComputerSystem::serial_number_>},
    {"product_name_:", Write<&ComputerSystem::product_name_>},
    {"manufacturer_:", Write<&ComputerSystem::manufacturer_>},
    {"version_:", Write<&ComputerSystem::version_>},
};

constexpr LabelledField<OperationSystem> kOperationSystem[] = {
    {"version_string:", Write<&OperationSystem::version_string>},
    {"name:", Write<&OperationSystem::name>},
    {"manufacturer:", Write<&OperationSystem::manufacturer>},
    {"build_number:", Write<&OperationSystem::build_number>},
    {"last_start_time:", Write<&OperationSystem::last_start_time>},
};

constexpr LabelledField<InstalledPackage> kInstalledPackage[] = {
    {"product_name_:", Write<&InstalledPackage::product_name_>},
    {"product_version_:", Write<&InstalledPackage::product_version_>},
    {"summary_:", Write<&InstalledPackage::summary_>},
    {"product_install_date_:", Write<&InstalledPackage::product_install_date_>},
};

constexpr LabelledField<IPMIEVENT> kIpmiEvent[] = {
    {"record_id\t:", Write<&IPMIEVENT::record_id>},
    {"time_stamp\t:", Write<&IPMIEVENT::time_stamp>},
    {"message\t:", Write<&IPMIEVENT::message>},
    {"sev\t\t:", Write<&IPMIEVENT::sev>},
};

constexpr LabelledField<VMwarePrivilegeData> kPrivilege[] = {
    {"represents_authorization_rights:",
     Write<&VMwarePrivilegeData::represents_authorization_rights>},
    {"privilege_granted:", Write<&VMwarePrivilegeData::privilege_granted>},
    {"instance_id:", Write<&VMwarePrivilegeData::instance_id>},
    {"element_name:", Write<&VMwarePrivilegeData::element_name>},
    {"description:", Write<&VMwarePrivilegeData::description>},
    {"caption:", Write<&VMwarePrivilegeData::caption>},
    {"activities:", Write<&VMwarePrivilegeData::activities>},
    {"activityQualifiers:", Write<&VMwarePrivilegeData::activityQualifiers>},
    {"qualifier_formats:", Write<&VMwarePrivilegeData::qualifier_formats>},
};

constexpr LabelledField<PhysicalPort> kPhysicalPort[] = {
    {"name_:", Write<&PhysicalPort::name_>},
    {"network_addresses_:", Write<&PhysicalPort::network_addresses_>},
    {"speedduplex_:", Write<&PhysicalPort::speedduplex_>},
    {"speed_:", Write<&PhysicalPort::speed_>},
};

constexpr LabelledField<IPProtocolData> kIPProtocol[] = {
    {"name:", Write<&IPProtocolData::name>},
    {"transitionin_to_state:", Write<&IPProtocolData::transitionin_to_state>},
    {"sub_net_mask:", Write<&IPProtocolData::sub_net_mask>},
    {"requested_state:", Write<&IPProtocolData::requested_state>},
    {"protocol_if_type:", Write<&IPProtocolData::protocol_if_type>},
    {"enabled_state:", Write<&IPProtocolData::enabled_state>},
    {"IPv4_address:", Write<&IPProtocolData::IPv4_address>},
    {"IPv6_address:", Write<&IPProtocolData::IPv6_address>},
};

constexpr LabelledField<PCIDevice> kPciDevice[] = {
    {"class_code_:", Write<&PCIDevice::class_code_>},
    {"description_:", Write<&PCIDevice::description_>},
    {"pci_device_id_:", Write<&PCIDevice::pci_device_id_>},
    {"vendor_id_:", Write<&PCIDevice::vendor_id_>},
    {"irq_:", Write<&PCIDevice::irq_>},
    {"slot_all_info_:", Write<&PCIDevice::slot_all_info_>},
    {"io_address_:", Write<&PCIDevice::io_address_>},
};

constexpr LabelledField<PCIBridge> kPciBridge[] = {
    {"class_code_:", Write<&PCIBridge::class_code_>},
    {"description_:", Write<&PCIBridge::description_>},
    {"slot_all_info_:", Write<&PCIBridge::slot_all_info_>},
    {"pci_device_id_:", Write<&PCIBridge::pci_device_id_>},
};

constexpr LabelledField<SystemSlot> kSystemSlot[] = {
    {"slot_designation_:", Write<&SystemSlot::slot_designation_>},
    {"tag_:", Write<&SystemSlot::tag_>},
    {"connector_type_:", Write<&SystemSlot::connector_type_>},
    {"slot_length_:", Write<&SystemSlot::slot_length_>},
    {"max_data_width_:", Write<&SystemSlot::max_data_width_>},
    {"supports_hot_plug_:", Write<&SystemSlot::supports_hot_plug_>},
    {"current_usage_:", Write<&SystemSlot::current_usage_>},
    {"operational_status_:", Write<&SystemSlot::operational_status_>},
    {"vcc_mixed_voltage_support_:", Write<&SystemSlot::vcc_mixed_voltage_support_>},
};

}  // namespace

const RecordDump<ComputerSystem> kComputerSystemDump = kComputerSystem;
const RecordDump<OperationSystem> kOperationSystemDump = kOperationSystem;
const RecordDump<InstalledPackage> kInstalledPackageDump = kInstalledPackage;
const RecordDump<IPMIEVENT> kIpmiEventDump = kIpmiEvent;
const RecordDump<VMwarePrivilegeData> kPrivilegeDump = kPrivilege;
const RecordDump<PhysicalPort> kPhysicalPortDump = kPhysicalPort;
const RecordDump<IPProtocolData> kIPProtocolDump = kIPProtocol;
const RecordDump<PCIDevice> kPciDeviceDump = kPciDevice;
const RecordDump<PCIBridge> kPciBridgeDump = kPciBridge;
const RecordDump<SystemSlot> kSystemSlotDump = kSystemSlot;

}  // namespace Zentar::Agentless
