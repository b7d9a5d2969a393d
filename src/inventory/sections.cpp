#include "inventory/sections.h"

#include <algorithm>
#include <iterator>

#include "inventory/record_fields.h"
#include "module/exsi/kalvex.h"

namespace inventory {

namespace {

using Zentar::Agentless::Kalvex;
using namespace Zentar::ZentarAgentless;
using namespace Zentar::ZTEXSI;
using namespace Zentar::Pciinventory;

constexpr TableHead kSystem{"record", "Computer system", Shape::kOneRecord};
constexpr TableHead kOs{"record", "Hypervisor", Shape::kOneRecord};
constexpr TableHead kPackages{"records", "Installed packages"};
constexpr TableHead kEvents{"records", "IPMI event log"};
constexpr TableHead kPrivileges{"records", "Privileges"};
constexpr TableHead kPorts{"records", "Ethernet ports"};
constexpr TableHead kIPv4{"records", "IPv4 endpoints"};
constexpr TableHead kIPv6{"records", "IPv6 endpoints"};
constexpr TableHead kDevices{"devices", "PCI devices", Shape::kList, "IBMSG_PCIDevice",
                             "slot_all_info_"};
constexpr TableHead kBridges{"bridges", "PCI bridges", Shape::kList, "IBMSG_PCIBridge",
                             "slot_all_info_"};
constexpr TableHead kSlots{"slots", "System slots", Shape::kList, "IBMSG_SystemSlot"};

template <class Record>
std::vector<Cell> RowOf(const Record& record) {
    std::vector<Cell> row;
    for (const Field<Record>& field : FieldsOf<Record>()) {
        row.push_back(std::visit([&](auto member) { return Cell(record.*member); }, field.member));
    }
    return row;
}

template <class Record>
Table TableOf(const TableHead& head, std::span<const Record> records) {
    Table table{head, {}, {}};
    for (const Field<Record>& field : FieldsOf<Record>()) {
        table.columns.push_back(field.column);
    }
    std::ranges::transform(records, std::back_inserter(table.rows), RowOf<Record>);
    return table;
}

/// The facade's operation, or its failure where no host is to be asked.
template <class... Parameters, class... Arguments>
int Ask(Kalvex* host, int (Kalvex::*get)(Parameters...), Arguments&&... arguments) {
    constexpr int kFailed = 1;
    return host == nullptr ? kFailed : (host->*get)(std::forward<Arguments>(arguments)...);
}

template <class Record>
SectionContent ReadRecord(const TableHead& head, Kalvex* host, int (Kalvex::*get)(Record&)) {
    Record record;
    const int result = Ask(host, get, record);
    return {result, {TableOf<Record>(head, std::span(&record, 1))}};
}

template <class Record, class... Parameters>
SectionContent ReadList(const TableHead& head, Kalvex* host,
                        int (Kalvex::*get)(std::vector<Record>&, Parameters...),
                        Parameters... parameters) {
    std::vector<Record> records;
    const int result = Ask(host, get, records, parameters...);
    return {result, {TableOf<Record>(head, records)}};
}

SectionContent ReadPci(Kalvex* host) {
    Pciinfo info;
    const int result = Ask(host, &Kalvex::GetPCIInfo, info);
    return {
        result,
        {TableOf<PCIDevice>(kDevices, info.devices_), TableOf<PCIBridge>(kBridges, info.bridges_),
         TableOf<SystemSlot>(kSlots, info.slots_)}};
}

constexpr int kIPv4Family = 0;
constexpr int kIPv6Family = 1;

constexpr Section kSections[] = {
    {"system", [](Kalvex* h) { return ReadRecord(kSystem, h, &Kalvex::GetComputerSystem); }},
    {"os", [](Kalvex* h) { return ReadRecord(kOs, h, &Kalvex::GetOperationSystem); }},
    {"packages", [](Kalvex* h) { return ReadList(kPackages, h, &Kalvex::GetInstalledPackages); }},
    {"events", [](Kalvex* h) { return ReadList(kEvents, h, &Kalvex::GetIpmiRecord); }},
    {"privileges", [](Kalvex* h) { return ReadList(kPrivileges, h, &Kalvex::GetVMwarePrivilege); }},
    {"ports", [](Kalvex* h) { return ReadList(kPorts, h, &Kalvex::GetEthernetPorts); }},
    {"ipv4", [](Kalvex* h) { return ReadList(kIPv4, h, &Kalvex::GetIPProtocolInfo, kIPv4Family); }},
    {"ipv6", [](Kalvex* h) { return ReadList(kIPv6, h, &Kalvex::GetIPProtocolInfo, kIPv6Family); }},
    {"pci", ReadPci},
};

}  // namespace

std::span<const Section> AllSections() { return kSections; }

const Section* FindSection(const std::string& name) {
    const auto* const found =
        std::ranges::find_if(kSections, [&](const Section& s) { return name == s.name; });
    return found == std::end(kSections) ? nullptr : found;
}

std::string SectionNames() {
    std::string names;
    for (const Section& section : kSections) {
        names += (names.empty() ? "" : ", ") + std::string(section.name);
    }
    return names;
}

}  // namespace inventory
