#include "soak/operations.h"

#include <sstream>
#include <utility>

#include "schema/host_kinds.h"
#include "schema/network_kinds.h"
#include "schema/pci_kinds.h"

namespace soak {

namespace {

using Zentar::Agentless::Kalvex;

/// As the log says it.
template <class Record, std::size_t count>
std::string TextOf(const Record& record, const schema::KindOf<Record, count>& kind) {
    std::ostringstream text;
    kind.ForEachLogged(record, [&](const char* label, const auto& write) {
        text << label;
        write(text);
        text << '\n';
    });
    return text.str();
}

template <class Record, std::size_t count>
void AddRecords(const std::vector<Record>& records, const schema::KindOf<Record, count>& kind,
                Reading& reading) {
    for (const Record& record : records) {
        reading.statements.push_back(TextOf(record, kind));
    }
}

/// A field by itself: some may be filled although others could not be read.
template <class Record, std::size_t count>
void AddFields(const Record& record, const schema::KindOf<Record, count>& kind, Reading& reading) {
    kind.ForEachLogged(record, [&](const char* label, const auto& write) {
        std::ostringstream value;
        write(value);
        if (!value.str().empty()) {
            reading.statements.push_back(label + value.str());
        }
    });
}

/// A device and the place of the device by themselves: the place is asked for afterwards.
template <class Record, std::size_t count>
void AddPlaced(std::vector<Record> records, const schema::KindOf<Record, count>& kind,
               Reading& reading) {
    for (Record& record : records) {
        const std::string place = std::exchange(record.slot_all_info_, "");
        std::string text = TextOf(record, kind);
        reading.statements.push_back(text);
        if (!place.empty()) {
            text.append("is in ").append(place);
            reading.statements.push_back(std::move(text));
        }
    }
}

template <class Record, std::size_t count, class... Parameters>
auto ListOf(int (Kalvex::*get)(std::vector<Record>&, Parameters...),
            const schema::KindOf<Record, count>& kind, Parameters... parameters) {
    return [=, &kind](Kalvex& host) {
        std::vector<Record> records;
        Reading reading;
        reading.result = (host.*get)(records, parameters...);
        AddRecords(records, kind, reading);
        return reading;
    };
}

template <class Record, std::size_t count>
auto FieldsOf(int (Kalvex::*get)(Record&), const schema::KindOf<Record, count>& kind) {
    return [=, &kind](Kalvex& host) {
        Record record;
        Reading reading;
        reading.result = (host.*get)(record);
        AddFields(record, kind, reading);
        return reading;
    };
}

Reading ReadSupport(Kalvex& host) {
    return {0, {host.IsUnSpportedEXSIVersion() ? "unsupported" : "supported"}};
}

Reading ReadPci(Kalvex& host) {
    Zentar::Pciinventory::Pciinfo info;
    Reading reading;
    reading.result = host.GetPCIInfo(info);
    AddPlaced(info.devices_, schema::kPciDevices, reading);
    AddPlaced(info.bridges_, schema::kPciBridges, reading);
    AddRecords(info.slots_, schema::kPciSlots, reading);
    return reading;
}

const Operation kOperations[] = {
    {"support", ReadSupport},
    {"computer system", FieldsOf(&Kalvex::GetComputerSystem, schema::kSystem)},
    {"hypervisor", FieldsOf(&Kalvex::GetOperationSystem, schema::kOs)},
    {"packages", ListOf(&Kalvex::GetInstalledPackages, schema::kPackages)},
    {"event log", ListOf(&Kalvex::GetIpmiRecord, schema::kEvents)},
    {"privileges", ListOf(&Kalvex::GetVMwarePrivilege, schema::kPrivileges)},
    {"Ethernet ports", ListOf(&Kalvex::GetEthernetPorts, schema::kPorts)},
    {"IPv4 endpoints", ListOf(&Kalvex::GetIPProtocolInfo, schema::kIPv4Endpoints, 0)},
    {"IPv6 endpoints", ListOf(&Kalvex::GetIPProtocolInfo, schema::kIPv4Endpoints, 1)},
    {"PCI", ReadPci},
};

}  // namespace

std::span<const Operation> Operations() { return kOperations; }

}  // namespace soak
