#include "cli/sections.h"

#include <algorithm>
#include <iterator>

#include "cli/command_error.h"
#include "cli/record_fields.h"
#include "module/exsi/kalvex.h"

namespace command {

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
constexpr TableHead kDevices{"devices", "PCI devices", Shape::kList, "IBMSG_PCIDevice"};
constexpr TableHead kBridges{"bridges", "PCI bridges", Shape::kList, "IBMSG_PCIBridge"};
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
Table TableOf(const TableHead& head, std::span<const Record> records, int result) {
    Table table{head, {}, {}, result != 0, {}};
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
    return {result, {TableOf<Record>(head, std::span(&record, 1), result)}};
}

template <class Record, class... Parameters>
SectionContent ReadList(const TableHead& head, Kalvex* host,
                        int (Kalvex::*get)(std::vector<Record>&, Parameters...),
                        Parameters... parameters) {
    std::vector<Record> records;
    const int result = Ask(host, get, records, parameters...);
    return {result, {TableOf<Record>(head, records, result)}};
}

SectionContent ReadPci(Kalvex* host) {
    Pciinfo info;
    const int result = Ask(host, &Kalvex::GetPCIInfo, info);
    return {result,
            {TableOf<PCIDevice>(kDevices, info.devices_, result),
             TableOf<PCIBridge>(kBridges, info.bridges_, result),
             TableOf<SystemSlot>(kSlots, info.slots_, result)}};
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

bool IsSectionName(const std::string& name) {
    return std::ranges::any_of(kSections, [&](const Section& s) { return name == s.name; });
}

std::string SectionNames() {
    std::string names;
    for (const Section& section : kSections) {
        names += (names.empty() ? "" : ", ") + std::string(section.name);
    }
    return names;
}

std::vector<Section> ChosenSections(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        if (!IsSectionName(name)) {
            throw UsageError("unknown section \"" + name + "\"; choose among " + SectionNames());
        }
        if (std::ranges::count(names, name) > 1) {
            throw UsageError("section \"" + name + "\" is given twice; name each once, among " +
                             SectionNames());
        }
    }
    std::vector<Section> chosen;
    std::ranges::copy_if(kSections, std::back_inserter(chosen), [&](const Section& section) {
        return names.empty() || std::ranges::count(names, section.name) > 0;
    });
    return chosen;
}

}  // namespace command
