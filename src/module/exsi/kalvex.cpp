#include "module/exsi/kalvex.h"

#include "common/log/log_message.h"
#include "module/exsi/kalvex_cim.h"
#include "module/exsi/list_query.h"
#include "schema/host_kinds.h"
#include "schema/network_kinds.h"
#include "schema/pci_kinds.h"

namespace Zentar::Agentless {

namespace {

enum Result : int { kOk = 0, kFailed = 1 };

int Fail(const char* message) {
    ZENTAR_LOG(1) << message;
    return kFailed;
}

/// One message per field, each tested against the level on its own.
template <class Record, std::size_t count>
void LogRecord(const schema::KindOf<Record, count>& kind, const Record& record) {
    kind.ForEachLogged(record, [](const char* label, const auto& write_value) {
        constexpr unsigned kLevel = 3;
        if (Log::GetMinLogLevel() >= kLevel) {
            Log message(kLevel, __FILE__, __LINE__);
            message.Stream() << label;
            write_value(message.Stream());
        }
    });
}

template <class Record, std::size_t count>
void LogRecords(const char* count_label, const schema::KindOf<Record, count>& kind,
                const std::vector<Record>& records) {
    ZENTAR_LOG(3) << count_label << records.size();
    for (const Record& record : records) {
        LogRecord(kind, record);
    }
}

}  // namespace

Kalvex::Kalvex(const ZentarConnection::ConnectionInfo& info) : worker_(nullptr) {
    ZENTAR_LOG(4) << "Calling constructor of Kalvex";
    worker_ = new KalvexCim(info);
}

Kalvex::Kalvex(const ZentarConnection::ConnectionInfo& info,
               const ZentarConnection::ConnectionOptions& options)
    : worker_(nullptr) {
    ZENTAR_LOG(4) << "Calling constructor of Kalvex";
    worker_ = new KalvexCim(info, options);
}

Kalvex::~Kalvex() {
    ZENTAR_LOG(4) << "Calling destructor of Kalvex";
    delete worker_;
    worker_ = nullptr;
}

void Kalvex::Cancel() { worker_->Cancel(); }

FailureList Kalvex::TakeFailures() { return worker_->TakeFailures(); }

int Kalvex::GetComputerSystem(ZentarAgentless::ComputerSystem& record) {
    ZENTAR_LOG(4) << "Calling Kalvex::GetComputerSystem";
    if (worker_->GetComputerSystem(record) != kOk) {
        return Fail("EnumerateInstances OMC_Chassis Failed!");
    }
    LogRecord(schema::kSystem, record);
    return kOk;
}

int Kalvex::GetEthernetPorts(std::vector<ZentarAgentless::PhysicalPort>& ports) {
    if (worker_->GetEthernetPorts(ports) != kOk) {
        return Fail("EnumerateInstances VMware_EthernetPort Failed!");
    }
    LogRecords("The size of VMware_EthernetPort log is:", schema::kPorts, ports);
    return kOk;
}

int Kalvex::GetIPProtocolInfo(std::vector<ZTEXSI::IPProtocolData>& endpoints, int family) {
    const auto read = [&]() -> int {
        if (family == 0) {
            return worker_->GetIPv4ProtocolInfo(endpoints);
        }
        return family == 1 ? worker_->GetIPv6ProtocolInfo(endpoints) : kOk;
    };
    if (read() != kOk) {
        return Fail("EnumerateInstances IPProtocol Failed!");
    }
    LogRecords("The size of IPProtocol log is:", schema::kIPv4Endpoints, endpoints);
    return kOk;
}

int Kalvex::GetInstalledPackages(std::vector<ZentarAgentless::InstalledPackage>& packages) {
    if (worker_->GetInstalledPackages(packages) != kOk) {
        return Fail("EnumerateInstances InstalledPackages Failed!");
    }
    LogRecords("The size of InstalledPackages log is:", schema::kPackages, packages);
    return kOk;
}

int Kalvex::GetIpmiRecord(std::vector<ZentarAgentless::IPMIEVENT>& events) {
    if (worker_->GetIpmiRecord(events) != kOk) {
        return Fail("EnumerateInstances OMC_IpmiLogRecord Failed!");
    }
    LogRecords("The size of OMC_IpmiLogRecord log is:", schema::kEvents, events);
    return kOk;
}

int Kalvex::GetOperationSystem(ZTEXSI::OperationSystem& record) {
    ZENTAR_LOG(4) << "Calling Kalvex::GetOperationSystem";
    if (worker_->GetOperationSystem(record) != kOk) {
        return Fail("EnumerateInstances VMware_HypervisorSoftwareIdentity Failed!");
    }
    LogRecord(schema::kOs, record);
    return kOk;
}

int Kalvex::GetPCIInfo(Pciinventory::Pciinfo& info) {
    if (worker_->GetPCIInfo(info) != kOk) {
        return Fail("EnumerateInstances Failed!");
    }
    LogRecords("The size of PCIDevice is:", schema::kPciDevices, info.devices_);
    LogRecords("The size of Bridge is:", schema::kPciBridges, info.bridges_);
    LogRecords("The size of Slot is:", schema::kPciSlots, info.slots_);
    return kOk;
}

int Kalvex::GetVMwarePrivilege(std::vector<ZTEXSI::VMwarePrivilegeData>& privileges) {
    if (worker_->GetVMwarePrivilege(privileges) != kOk) {
        return Fail("EnumerateInstances VMware_Privilege Failed!");
    }
    LogRecords("The size of VMwarePrivilege log is:", schema::kPrivileges, privileges);
    return kOk;
}

bool Kalvex::IsUnSpportedEXSIVersion() {
    ZENTAR_LOG(4) << "Calling Kalvex::IsUnSpportedEXSIVersion";
    return worker_->IsUnSpportedESXIVer();
}

}  // namespace Zentar::Agentless
