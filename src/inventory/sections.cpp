#include "inventory/sections.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

#include "module/exsi/kalvex.h"
#include "schema/host_kinds.h"
#include "schema/network_kinds.h"
#include "schema/pci_kinds.h"

namespace inventory {

namespace {

using schema::RecordKind;
using Zentar::Agentless::Kalvex;
using Results = std::span<const SectionResult>;

/// The records of a result whose kind is known.
template <const auto& kind>
auto& RecordsOf(const SectionResult& result) {
    using Typed = typename std::remove_cvref_t<decltype(kind)>::TypedRecords;
    return static_cast<Typed&>(*result.records).records;
}

template <const auto& kind>
constexpr const RecordKind* kOnly[] = {&kind};

template <const auto& kind, auto get, auto... arguments>
constexpr Section ListSection() {
    return {kind.name, kOnly<kind>, [](Kalvex& host, Results results) {
                return (host.*get)(RecordsOf<kind>(results.front()), arguments...);
            }};
}

template <const auto& kind, auto get>
constexpr Section RecordSection() {
    return {kind.name, kOnly<kind>, [](Kalvex& host, Results results) {
                return (host.*get)(RecordsOf<kind>(results.front()).front());
            }};
}

constexpr const RecordKind* kPciKinds[] = {&schema::kPciDevices, &schema::kPciBridges,
                                           &schema::kPciSlots};

int ReadPci(Kalvex& host, Results results) {
    Zentar::Pciinventory::Pciinfo info;
    const int result = host.GetPCIInfo(info);
    RecordsOf<schema::kPciDevices>(results[0]) = std::move(info.devices_);
    RecordsOf<schema::kPciBridges>(results[1]) = std::move(info.bridges_);
    RecordsOf<schema::kPciSlots>(results[2]) = std::move(info.slots_);
    return result;
}

constexpr int kIPv4Family = 0;
constexpr int kIPv6Family = 1;

constexpr Section kSections[] = {
    RecordSection<schema::kSystem, &Kalvex::GetComputerSystem>(),
    RecordSection<schema::kOs, &Kalvex::GetOperationSystem>(),
    ListSection<schema::kPackages, &Kalvex::GetInstalledPackages>(),
    ListSection<schema::kEvents, &Kalvex::GetIpmiRecord>(),
    ListSection<schema::kPrivileges, &Kalvex::GetVMwarePrivilege>(),
    ListSection<schema::kPorts, &Kalvex::GetEthernetPorts>(),
    ListSection<schema::kIPv4Endpoints, &Kalvex::GetIPProtocolInfo, kIPv4Family>(),
    ListSection<schema::kIPv6Endpoints, &Kalvex::GetIPProtocolInfo, kIPv6Family>(),
    {"pci", kPciKinds, ReadPci},
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

std::vector<const RecordKind*> AllKinds() {
    std::vector<const RecordKind*> kinds;
    for (const Section& section : kSections) {
        kinds.insert(kinds.end(), section.kinds.begin(), section.kinds.end());
    }
    return kinds;
}

const RecordKind* FindKind(const std::string& name) {
    const auto kinds = AllKinds();
    const auto found =
        std::ranges::find_if(kinds, [&](const RecordKind* kind) { return name == kind->name; });
    return found == kinds.end() ? nullptr : *found;
}

}  // namespace inventory
