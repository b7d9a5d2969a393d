// How the facade writes records into the log: for each record type the labels and their fields, in
// order.
#pragma once

#include <ostream>
#include <span>

#include "common/records/host_records.h"
#include "common/records/network_records.h"
#include "common/records/pci_records.h"

namespace Zentar::Agentless {

template <class Record>
struct LabelledField {
    const char* label;
    void (*write)(std::ostream& stream, const Record& record);
};

template <class Record>
using RecordDump = std::span<const LabelledField<Record>>;

extern const RecordDump<ZentarAgentless::ComputerSystem> kComputerSystemDump;
extern const RecordDump<ZTEXSI::OperationSystem> kOperationSystemDump;
extern const RecordDump<ZentarAgentless::InstalledPackage> kInstalledPackageDump;
extern const RecordDump<ZentarAgentless::IPMIEVENT> kIpmiEventDump;
extern const RecordDump<ZTEXSI::VMwarePrivilegeData> kPrivilegeDump;
extern const RecordDump<ZentarAgentless::PhysicalPort> kPhysicalPortDump;
extern const RecordDump<ZTEXSI::IPProtocolData> kIPProtocolDump;
extern const RecordDump<Pciinventory::PCIDevice> kPciDeviceDump;
extern const RecordDump<Pciinventory::PCIBridge> kPciBridgeDump;
extern const RecordDump<Pciinventory::SystemSlot> kSystemSlotDump;

}  // namespace Zentar::Agentless
