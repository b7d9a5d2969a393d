// PCI devices, bridges and expansion slots.
#pragma once

#include "common/records/pci_records.h"
#include "schema/decoders/pci_tables.h"
#include "schema/kind.h"

namespace schema {

namespace internal {

using Zentar::Pciinventory::PCIBridge;
using Zentar::Pciinventory::PCIDevice;
using Zentar::Pciinventory::SystemSlot;

// The worker turns the class code into its word after the query.

inline constexpr Field kPciClass{.name = "class",
                                 .heading = "Class",
                                 .meaning = "PCI base class (PCI Code and ID Assignment).",
                                 .property = "ClassCode",
                                 .log_label = "class_code_:",
                                 .log_position = 1};

inline constexpr Field kPciDescription{.name = "description",
                                       .heading = "Description",
                                       .meaning = "What it is, in the provider's words.",
                                       .property = "Description",
                                       .log_label = "description_:",
                                       .log_position = 2};

constexpr Field SlotOrBoard(int log_position) {
    return {.name = "slot",
            .heading = "Slot or board",
            .meaning = "The slot that holds it, or else the system board.",
            .property = "SlotAllInfo",
            .source = Source::kAssociated,
            .class_name = "IBMSG_SystemSlot, IBMSG_SystemBoard",
            .log_label = "slot_all_info_:",
            .log_position = log_position};
}

inline constexpr Row<PCIDevice> kPciDeviceRows[] = {
    {&PCIDevice::class_code_, kPciClass},
    {&PCIDevice::description_, kPciDescription},
    {&PCIDevice::slot_all_info_, SlotOrBoard(6)},
    {&PCIDevice::pci_device_id_,
     {.name = "device_id",
      .heading = "Device ID",
      .meaning = "PCI device ID, as the provider writes it.",
      .property = "PciDeviceID",
      .log_label = "pci_device_id_:",
      .log_position = 3}},
    {&PCIDevice::vendor_id_,
     {.name = "vendor_id",
      .heading = "Vendor ID",
      .meaning = "PCI vendor ID, as the provider writes it.",
      .property = "VendorID",
      .log_label = "vendor_id_:",
      .log_position = 4}},
    {&PCIDevice::irq_,
     {.name = "irq",
      .heading = "IRQ",
      .type = Type::kInteger,
      .meaning = "Number of the interrupt that it uses.",
      .property = "IRQ",
      .log_label = "irq_:",
      .log_position = 5}},
    {&PCIDevice::io_address_,
     {.name = "io_address",
      .heading = "I/O address",
      .meaning = "Where its I/O registers begin.",
      .property = "IOAddress",
      .log_label = "io_address_:",
      .log_position = 7}},
};

inline constexpr Row<PCIBridge> kPciBridgeRows[] = {
    {&PCIBridge::class_code_, kPciClass},
    {&PCIBridge::description_, kPciDescription},
    {&PCIBridge::slot_all_info_, SlotOrBoard(3)},
    {&PCIBridge::pci_device_id_,
     {.name = "location",
      .heading = "Location",
      .identifies = true,
      .meaning = "Where the bridge sits on the bus.",
      .property = "Location",
      .log_label = "pci_device_id_:",
      .log_position = 4}},
};

inline constexpr Row<SystemSlot> kPciSlotRows[] = {
    {&SystemSlot::slot_designation_,
     {.name = "designation",
      .heading = "Designation",
      .identifies = true,
      .meaning = "What is printed beside the slot.",
      .property = "SlotDesignation",
      .log_label = "slot_designation_:",
      .log_position = 1}},
    {&SystemSlot::tag_,
     {.name = "tag",
      .heading = "Tag",
      .identifies = true,
      .meaning = "Identifier of the slot within the host.",
      .property = "Tag",
      .log_label = "tag_:",
      .log_position = 2}},
    {&SystemSlot::connector_type_,
     {.name = "connector",
      .heading = "Connector",
      .meaning = "Type of the slot (SMBIOS System Slots, Slot Type).",
      .property = "ConnectorType",
      .decode = DecodeConnectorType,
      .log_label = "connector_type_:",
      .log_position = 3}},
    {&SystemSlot::slot_length_,
     {.name = "length",
      .heading = "Length",
      .meaning = "Length of the cards that fit (SMBIOS System Slots, Slot Length).",
      .property = "SlotLength",
      .decode = DecodeSlotLength,
      .log_label = "slot_length_:",
      .log_position = 4}},
    {&SystemSlot::max_data_width_,
     {.name = "data_width",
      .heading = "Data width",
      .meaning = "Width of its data bus (SMBIOS System Slots, Slot Data Bus Width).",
      .property = "MaxDataWidth",
      .decode = DecodeMaxDataWidth,
      .log_label = "max_data_width_:",
      .log_position = 5}},
    {&SystemSlot::supports_hot_plug_,
     {.name = "hot_plug",
      .heading = "Hot plug",
      .type = Type::kBoolean,
      .meaning = "Whether cards may be changed while the host runs.",
      .property = "SupportsHotPlug",
      .log_label = "supports_hot_plug_:",
      .log_position = 6}},
    {&SystemSlot::current_usage_,
     {.name = "usage",
      .heading = "Usage",
      .meaning = "Whether it is in use (SMBIOS System Slots, Current Usage).",
      .property = "CurrentUsage",
      .decode = DecodeCurrentUsage,
      .log_label = "current_usage_:",
      .log_position = 7}},
    {&SystemSlot::operational_status_,
     {.name = "status",
      .heading = "Status",
      .meaning = "How it does (value map of CIM_ManagedSystemElement.OperationalStatus).",
      .property = "OperationalStatus",
      .decode = DecodeOperationalStatus,
      .log_label = "operational_status_:",
      .log_position = 8}},
    {&SystemSlot::vcc_mixed_voltage_support_,
     {.name = "voltage",
      .heading = "Voltage",
      .meaning = "Voltage that it gives (value map of CIM_Slot.VccMixedVoltageSupport).",
      .property = "VccMixedVoltageSupport",
      .decode = DecodeVccMixedVoltageSupport,
      .log_label = "vcc_mixed_voltage_support_:",
      .log_position = 9}},
};

}  // namespace internal

inline constexpr KindOf kPciDevices{{.name = "pci_devices",
                                     .title = "PCI devices",
                                     .name_space = "root/ibmsd",
                                     .class_name = "IBMSG_PCIDevice",
                                     .spares = 2},
                                    internal::kPciDeviceRows};

inline constexpr KindOf kPciBridges{{.name = "pci_bridges",
                                     .title = "PCI bridges",
                                     .name_space = "root/ibmsd",
                                     .class_name = "IBMSG_PCIBridge",
                                     .spares = 1},
                                    internal::kPciBridgeRows};

inline constexpr KindOf kPciSlots{{.name = "pci_slots",
                                   .title = "System slots",
                                   .name_space = "root/ibmsd",
                                   .class_name = "IBMSG_SystemSlot"},
                                  internal::kPciSlotRows};

}  // namespace schema
