// Which CIM class and properties fill which record, for each list query of the worker.
#pragma once

#include "common/records/host_records.h"
#include "common/records/network_records.h"
#include "common/records/pci_records.h"
#include "module/exsi/table_query.h"

namespace Zentar::Agentless {

extern const TableQuery<ZentarAgentless::InstalledPackage> kInstalledPackages;
extern const TableQuery<ZentarAgentless::IPMIEVENT> kIpmiRecords;
extern const TableQuery<ZTEXSI::VMwarePrivilegeData> kPrivileges;
extern const TableQuery<ZentarAgentless::PhysicalPort> kEthernetPorts;
extern const TableQuery<ZTEXSI::IPProtocolData> kIPv4Endpoints;
extern const TableQuery<ZTEXSI::IPProtocolData> kIPv6Endpoints;
extern const TableQuery<Pciinventory::PCIDevice> kPciDevices;
extern const TableQuery<Pciinventory::PCIBridge> kPciBridges;
extern const TableQuery<Pciinventory::SystemSlot> kSystemSlots;

}  // namespace Zentar::Agentless
