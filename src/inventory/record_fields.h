// The fields of each record type that the command shows, as data: name, heading, place. Spare
// fields, and those that belong to other collectors, are not listed.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>

#include "common/records/host_records.h"
#include "common/records/network_records.h"
#include "common/records/pci_records.h"
#include "inventory/table.h"

namespace inventory {

template <class Record>
struct Field {
    Column column;
    std::variant<std::string Record::*, std::uint64_t Record::*, std::int32_t Record::*> member;
};

/// In the record's declaration order.
template <class Record>
std::span<const Field<Record>> FieldsOf();

template <>
std::span<const Field<Zentar::ZentarAgentless::ComputerSystem>> FieldsOf();
template <>
std::span<const Field<Zentar::ZTEXSI::OperationSystem>> FieldsOf();
template <>
std::span<const Field<Zentar::ZentarAgentless::InstalledPackage>> FieldsOf();
template <>
std::span<const Field<Zentar::ZentarAgentless::IPMIEVENT>> FieldsOf();
template <>
std::span<const Field<Zentar::ZTEXSI::VMwarePrivilegeData>> FieldsOf();
template <>
std::span<const Field<Zentar::ZentarAgentless::PhysicalPort>> FieldsOf();
template <>
std::span<const Field<Zentar::ZTEXSI::IPProtocolData>> FieldsOf();
template <>
std::span<const Field<Zentar::Pciinventory::PCIDevice>> FieldsOf();
template <>
std::span<const Field<Zentar::Pciinventory::PCIBridge>> FieldsOf();
template <>
std::span<const Field<Zentar::Pciinventory::SystemSlot>> FieldsOf();

}  // namespace inventory
