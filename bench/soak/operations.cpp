#include "soak/operations.h"

#include <sstream>
#include <utility>

#include "module/exsi/result_dump.h"

namespace soak {

namespace {

using Zentar::Agentless::Kalvex;
using Zentar::Agentless::RecordDump;
using namespace Zentar::Agentless;

template <class Record>
std::string TextOf(const Record& record, const RecordDump<Record>& dump) {
    std::ostringstream text;
    for (const auto& field : dump) {
        text << field.label;
        field.write(text, record);
        text << '\n';
    }
    return text.str();
}

template <class Record>
void AddRecords(const std::vector<Record>& records, const RecordDump<Record>& dump,
                Reading& reading) {
    for (const Record& record : records) {
        reading.statements.push_back(TextOf(record, dump));
    }
}

/// A field by itself: some may be filled although others could not be read.
template <class Record>
void AddFields(const Record& record, const RecordDump<Record>& dump, Reading& reading) {
    for (const auto& field : dump) {
        std::ostringstream value;
        field.write(value, record);
        if (!value.str().empty()) {
            reading.statements.push_back(field.label + value.str());
        }
    }
}

/// A device and the place of the device by themselves: the place is asked for afterwards.
template <class Record>
void AddPlaced(std::vector<Record> records, const RecordDump<Record>& dump, Reading& reading) {
    for (Record& record : records) {
        const std::string place = std::exchange(record.slot_all_info_, "");
        std::string text = TextOf(record, dump);
        reading.statements.push_back(text);
        if (!place.empty()) {
            text.append("is in ").append(place);
            reading.statements.push_back(std::move(text));
        }
    }
}

template <class Record, class... Parameters>
auto ListOf(int (Kalvex::*get)(std::vector<Record>&, Parameters...), const RecordDump<Record>& dump,
            Parameters... parameters) {
    return [=, &dump](Kalvex& host) {
        std::vector<Record> records;
        Reading reading;
        reading.result = (host.*get)(records, parameters...);
        AddRecords(records, dump, reading);
        return reading;
    };
}

template <class Record>
auto FieldsOf(int (Kalvex::*get)(Record&), const RecordDump<Record>& dump) {
    return [=, &dump](Kalvex& host) {
        Record record;
        Reading reading;
        reading.result = (host.*get)(record);
        AddFields(record, dump, reading);
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
    AddPlaced(info.devices_, kPciDeviceDump, reading);
    AddPlaced(info.bridges_, kPciBridgeDump, reading);
    AddRecords(info.slots_, kSystemSlotDump, reading);
    return reading;
}

const Operation kOperations[] = {
    {"support", ReadSupport},
    {"computer system", FieldsOf(&Kalvex::GetComputerSystem, kComputerSystemDump)},
    {"hypervisor", FieldsOf(&Kalvex::GetOperationSystem, kOperationSystemDump)},
    {"packages", ListOf(&Kalvex::GetInstalledPackages, kInstalledPackageDump)},
    {"event log", ListOf(&Kalvex::GetIpmiRecord, kIpmiEventDump)},
    {"privileges", ListOf(&Kalvex::GetVMwarePrivilege, kPrivilegeDump)},
    {"Ethernet ports", ListOf(&Kalvex::GetEthernetPorts, kPhysicalPortDump)},
    {"IPv4 endpoints", ListOf(&Kalvex::GetIPProtocolInfo, kIPProtocolDump, 0)},
    {"IPv6 endpoints", ListOf(&Kalvex::GetIPProtocolInfo, kIPProtocolDump, 1)},
    {"PCI", ReadPci},
};

}  // namespace

std::span<const Operation> Operations() { return kOperations; }

}  // namespace soak
