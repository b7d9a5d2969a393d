// Plain records of the host's PCI inventory: devices, bridges and expansion slots.
//
// Every text is UTF-8; codes arrive as words (PCI base classes, SMBIOS system slot tables). A field
// whose property the host does not have stays empty. Field order is part of the interface.
#pragma once

#include <string>
#include <vector>

namespace Zentar::Pciinventory {

/// One PCI function, from IBMSG_PCIDevice.
struct PCIDevice {
    std::string class_code_;  ///< PCI base class
    std::string description_;
    std::string spare_1_;        ///< never filled
    std::string slot_all_info_;  ///< the slot or system board that holds it
    std::string pci_device_id_;
    std::string vendor_id_;
    std::string irq_;
    std::string io_address_;
    std::string spare_2_;  ///< never filled
};

/// One PCI bridge, from IBMSG_PCIBridge.
struct PCIBridge {
    std::string class_code_;  ///< PCI base class
    std::string description_;
    std::string spare_1_;        ///< never filled
    std::string slot_all_info_;  ///< the slot or system board that holds it
    std::string pci_device_id_;  ///< the bridge's location, in spite of the name
};

/// One expansion slot, from IBMSG_SystemSlot.
struct SystemSlot {
    std::string slot_designation_;
    std::string tag_;
    std::string connector_type_;
    std::string slot_length_;
    std::string max_data_width_;
    std::string supports_hot_plug_;
    std::string current_usage_;
    std::string operational_status_;
    std::string vcc_mixed_voltage_support_;
};

/// The whole PCI inventory, each list in the provider's order.
struct Pciinfo {
    std::vector<PCIDevice> devices_;
    std::vector<PCIBridge> bridges_;
    std::vector<SystemSlot> slots_;
};

}  // namespace Zentar::Pciinventory

namespace Pciinventory = Zentar::Pciinventory;
