#include "module/exsi/kalvex_cim.h"

#include <exception>
#include <new>

#include "common/cimom/src/cimfunc.h"
#include "common/cimom/src/host_access.h"
#include "common/log/log_message.h"
#include "common/platform/secret.h"
#include "module/exsi/identifying_info.h"
#include "module/exsi/list_query.h"
#include "schema/host_kinds.h"
#include "schema/network_kinds.h"
#include "schema/pci_kinds.h"

namespace Zentar::Agentless {

namespace {

using Pegasus::Uint32;  // PEG_NOT_FOUND names it so

using Instances = Pegasus::Array<Pegasus::CIMInstance>;
using ZentarAgentless::ComputerSystem;

/// A host may send millions of rows, and reading them takes seconds. A list as long as real hosts
/// have it is read to its end.
constexpr Uint32 kRowsBetweenLooksAtTheClock = 1024;

constexpr ListQuery kPackages{"Calling KalvexCim::GetInstalledPackages",
                              "EnumerateInstances VMware_ComponentSoftwareIdentity Failed!"};
constexpr ListQuery kIpmiRecords{"Calling KalvexCim::GetIpmiRecord",
                                 "EnumerateInstances OMC_IpmiLogRecord Failed!"};
constexpr ListQuery kPrivileges{"Calling KalvexCim::GetVMwarePrivilege",
                                "EnumerateInstances VMwarePrivilegeCim Failed!"};
constexpr ListQuery kEthernetPorts{"Calling KalvexCim::GetEthernetPorts",
                                   "EnumerateInstances VMware_EthernetPort Failed!"};
constexpr ListQuery kIPv4Endpoints{"Calling KalvexCim::GetIPv4ProtocolInfo",
                                   "EnumerateInstances VMware_KernelIPv4ProtocolEndpoint Failed!"};
constexpr ListQuery kIPv6Endpoints{"Calling KalvexCim::GetIPv6ProtocolInfo",
                                   "EnumerateInstances VMware_KernelIPv6ProtocolEndpoint Failed!"};
constexpr ListQuery kPciDevices{"Calling KalvexCim::GetPCIDevice",
                                "EnumerateInstances IBMSG_PCIDevice Failed!"};
constexpr ListQuery kPciBridges{"Calling KalvexCim::GetPCIBridge",
                                "EnumerateInstances IBMSG_PCIBridge Failed!"};
constexpr ListQuery kSystemSlots{"Calling KalvexCim::GetSystemSlot",
                                 "EnumerateInstances IBMSG_SystemSlot Failed!"};

/// A connection is absent when memory ran out while it was being replaced.
int Enumerate(const char* class_name, CimConnection* connection, Instances& instances) {
    if (connection == nullptr) {
        return kCimFailed;
    }
    const auto limit = connection->access->Clipped(connection->access->options().request_limit);
    return GetCIMArrayFromEnumerateInstances(Pegasus::CIMName(class_name), *connection, instances,
                                             limit);
}

int Associate(const Pegasus::CIMObjectPath& source, const char* association, const char* result,
              CimConnection* connection, Pegasus::Array<Pegasus::CIMObject>& objects) {
    if (connection == nullptr) {
        return kCimFailed;
    }
    return GetCIMArrayFromAssociators(source, Pegasus::CIMName(association),
                                      Pegasus::CIMName(result), *connection, objects);
}

/// The rows' texts of one class, by the names of its properties.
class WantedTexts {
public:
    /// `texts` gets an entry for each row that is a property of the kind's own class.
    WantedTexts(std::span<const schema::Field> rows, PropertyMap& texts) {
        for (const schema::Field& row : rows) {
            const bool is_own = row.source == schema::Source::kProperty && *row.class_name == '\0';
            texts_.push_back(is_own ? &texts[row.property] : nullptr);
        }
    }

    void Clear() {
        for (std::string* text : texts_) {
            if (text != nullptr) {
                text->clear();
            }
        }
    }

    /// Null for a row that is none.
    std::span<std::string* const> texts() const { return texts_; }

private:
    std::vector<std::string*> texts_;
};

/// Fills the rows of the kind's own class from its first instance; empty texts where there is none.
template <class Record, std::size_t count>
void ReadFirst(const Instances& instances, const schema::KindOf<Record, count>& kind,
               Record& record, HostAccess& access) {
    PropertyMap properties;
    const WantedTexts wanted(kind.all_fields(), properties);
    if (instances.size() > 0) {
        GetPropertiesFromInstance(instances[0], properties, &access);
    }
    for (std::size_t row = 0; row < count; ++row) {
        if (std::string* const text = wanted.texts()[row]) {
            kind.Store(row, std::move(*text), record);
        }
    }
}

bool IsStringArray(const Pegasus::CIMInstance& instance, Pegasus::Uint32 position) {
    const Pegasus::CIMConstProperty property = instance.getProperty(position);
    return property.isArray() && property.getType() == Pegasus::CIMTYPE_STRING;
}

Pegasus::Array<Pegasus::String> StringsAt(const Pegasus::CIMInstance& instance,
                                          Pegasus::Uint32 position) {
    Pegasus::Array<Pegasus::String> strings;
    instance.getProperty(position).getValue().get(strings);
    return strings;
}

void StoreIdentifyingInfo(const std::string& description, const std::string& info,
                          ComputerSystem& record) {
    for (const IdentifyingRule& rule : IdentifyingRules()) {
        if (description != rule.description) {
            continue;
        }
        rule.store(record, info);
        for (const IdentifyingField& field : rule.fields) {
            ZENTAR_LOG(4) << field.label << record.*field.field;
        }
    }
}

void ReadIdentifyingInfo(const Pegasus::CIMInstance& system, ComputerSystem& record) {
    const Pegasus::Uint32 descriptions_at =
        system.findProperty(Pegasus::CIMName("IdentifyingDescriptions"));
    const Pegasus::Uint32 infos_at = system.findProperty(Pegasus::CIMName("OtherIdentifyingInfo"));
    if (descriptions_at == PEG_NOT_FOUND || infos_at == PEG_NOT_FOUND) {
        return;
    }
    ZENTAR_LOG(4)
        << "IBMComputerSystem Class IdentifyingDescriptions and OtherIdentifyingInfo found.";
    if (!IsStringArray(system, descriptions_at) || !IsStringArray(system, infos_at)) {
        return;
    }
    const auto descriptions = StringsAt(system, descriptions_at);
    const auto infos = StringsAt(system, infos_at);
    if (descriptions.size() == 0 || descriptions.size() != infos.size()) {
        ZENTAR_LOG(4) << "IBMComputerSystem Class IdentifyingDescriptions and "
                         "OtherIdentifyingInfo array size don't equal.";
        return;
    }
    for (Pegasus::Uint32 i = 0; i < descriptions.size(); ++i) {
        StoreIdentifyingInfo(std::string(descriptions[i].getCString()),
                             std::string(infos[i].getCString()), record);
    }
}

void Destroy(CimConnection*& connection) {
    delete connection;
    connection = nullptr;
}

}  // namespace

KalvexCim::KalvexCim(std::shared_ptr<HostAccess> access) : access_(std::move(access)) {}

KalvexCim::KalvexCim(const ZentarConnection::ConnectionInfo& info)
    : KalvexCim(std::make_shared<HostAccess>()) {
    Connect(info);
}

KalvexCim::KalvexCim(const ZentarConnection::ConnectionInfo& info,
                     const ZentarConnection::ConnectionOptions& options)
    : KalvexCim(std::make_shared<HostAccess>(options)) {
    Connect(info);
}

void KalvexCim::Connect(const ZentarConnection::ConnectionInfo& info) {
    ZENTAR_LOG(4) << "Calling constructor of KalvexCim";
    connection_info_ = info;
    cimv2_connection_ = new CimConnection(Pegasus::CIMNamespaceName("root/cimv2"), info, access_);
    hardware_connection_ =
        new CimConnection(Pegasus::CIMNamespaceName("ibm/imm0/cimv2"), info, access_);
}

KalvexCim::~KalvexCim() {
    ZENTAR_LOG(4) << "Calling destructor of KalvexCim";
    Destroy(cimv2_connection_);
    Destroy(hardware_connection_);
    Wipe(connection_info_.password);
}

void KalvexCim::Cancel() { access_->Cancel(); }

FailureList KalvexCim::TakeFailures() { return access_->TakeFailures(); }

int KalvexCim::GetComputerSystem(ComputerSystem& record) {
    ZENTAR_LOG(4) << "Calling KalvexCim::GetComputerSystem";
    Instances chassis;
    Instances systems;
    const int chassis_result = Enumerate("OMC_Chassis", cimv2_connection_, chassis);
    const int systems_result = Enumerate("IBM_ComputerSystem", hardware_connection_, systems);
    if (chassis_result != kCimOk && systems_result != kCimOk) {
        ZENTAR_LOG(4) << "EnumerateInstances OMC_Chassis and IBM_ComputerSystem Failed!";
        return kCimFailed;
    }
    if (chassis_result == kCimOk) {
        ReadChassis(chassis, record);
    }
    if (systems_result == kCimOk && systems.size() > 0) {
        ReadIdentifyingInfo(systems[0], record);
    }
    return kCimOk;
}

void KalvexCim::ReadChassis(const Instances& chassis, ComputerSystem& record) {
    ReadFirst(chassis, schema::kSystem, record, *access_);
    ZENTAR_LOG(4) << "==========Manufacturer is : ============" << record.manufacturer_;
    ZENTAR_LOG(4) << "==========Version is : ============" << record.version_;
}

int KalvexCim::GetOperationSystem(ZTEXSI::OperationSystem& record) {
    ZENTAR_LOG(4) << "Calling KalvexCim::GetOperationSystem";
    Instances hypervisors;
    if (Enumerate("VMware_HypervisorSoftwareIdentity", cimv2_connection_, hypervisors) != kCimOk) {
        ZENTAR_LOG(4) << "EnumerateInstances VMware_HypervisorSoftwareIdentity Failed!";
        return kCimFailed;
    }
    ReadFirst(hypervisors, schema::kOs, record, *access_);
    return kCimOk;
}

bool KalvexCim::IsUnSpportedESXIVer() {
    Instances ignored;
    return Enumerate("IBM_ComputerSystem", hardware_connection_, ignored) == kCimInvalidNamespace;
}

bool KalvexCim::MustStop(const char* class_name) {
    auto stop = access_->Stop();
    if (!stop) {
        return false;
    }
    ZENTAR_LOG(1) << "Enumerate instances failed with the reason: " << stop->text;
    stop->operation = "EnumerateInstances";
    stop->class_name = class_name;
    stop->name_space = std::string(cimv2_connection_->ns.getString().getCString());
    access_->Note(std::move(*stop));
    return true;
}

int KalvexCim::ReadList(const ListQuery& query, RowSink& sink) {
    ZENTAR_LOG(4) << query.trace;
    const char* const class_name = sink.kind().class_name;
    Instances instances;
    if (Enumerate(class_name, cimv2_connection_, instances) != kCimOk) {
        ZENTAR_LOG(4) << query.failure;
        return kCimFailed;
    }
    ZENTAR_LOG(4) << class_name << " instances :" << instances.size();
    PropertyMap properties;
    WantedTexts wanted(sink.rows(), properties);
    PropertyReader reader(properties, access_.get());
    sink.Expect(instances.size());
    for (Uint32 i = 0; i < instances.size(); ++i) {
        if (i > 0 && i % kRowsBetweenLooksAtTheClock == 0 && MustStop(class_name)) {
            ZENTAR_LOG(4) << query.failure;
            return kCimFailed;
        }
        wanted.Clear();
        reader.Read(instances[i]);
        sink.Add(wanted.texts(), instances[i]);
        instances[i] = Pegasus::CIMInstance();  // released while it is in the processor's caches
    }
    return kCimOk;
}

namespace {

template <class Record, std::size_t count, class Complete = NothingMore>
int Read(KalvexCim& worker, const ListQuery& query, const schema::KindOf<Record, count>& kind,
         std::vector<Record>& records, Complete complete = {}) {
    RecordSink sink(kind, records, complete);
    return worker.ReadList(query, sink);
}

}  // namespace

int KalvexCim::GetInstalledPackages(std::vector<ZentarAgentless::InstalledPackage>& packages) {
    return Read(*this, kPackages, schema::kPackages, packages);
}

int KalvexCim::GetIpmiRecord(std::vector<ZentarAgentless::IPMIEVENT>& events) {
    return Read(*this, kIpmiRecords, schema::kEvents, events);
}

int KalvexCim::GetVMwarePrivilege(std::vector<ZTEXSI::VMwarePrivilegeData>& privileges) {
    return Read(*this, kPrivileges, schema::kPrivileges, privileges);
}

int KalvexCim::GetEthernetPorts(std::vector<ZentarAgentless::PhysicalPort>& ports) {
    return Read(*this, kEthernetPorts, schema::kPorts, ports);
}

int KalvexCim::GetIPv4ProtocolInfo(std::vector<ZTEXSI::IPProtocolData>& endpoints) {
    return Read(*this, kIPv4Endpoints, schema::kIPv4Endpoints, endpoints);
}

int KalvexCim::GetIPv6ProtocolInfo(std::vector<ZTEXSI::IPProtocolData>& endpoints) {
    return Read(*this, kIPv6Endpoints, schema::kIPv6Endpoints, endpoints);
}

int KalvexCim::GetPCIDevice(std::vector<Pciinventory::PCIDevice>& devices) {
    return Read(*this, kPciDevices, schema::kPciDevices, devices,
                [this](auto& instance, auto& device) {
                    ParseClassCode(device.class_code_);
                    RetrieveSlotAllInfo(instance, device.slot_all_info_);
                });
}

int KalvexCim::GetPCIBridge(std::vector<Pciinventory::PCIBridge>& bridges) {
    return Read(*this, kPciBridges, schema::kPciBridges, bridges,
                [this](auto& instance, auto& bridge) {
                    ParseClassCode(bridge.class_code_);
                    RetrieveSlotAllInfo(instance, bridge.slot_all_info_);
                });
}

int KalvexCim::GetSystemSlot(std::vector<Pciinventory::SystemSlot>& slots) {
    return Read(*this, kSystemSlots, schema::kPciSlots, slots);
}

int KalvexCim::GetPCIInfo(Pciinventory::Pciinfo& info) {
    ZENTAR_LOG(4) << "Calling KalvexCim::GetPCIInfo";
    if (cimv2_connection_ == nullptr) {
        ZENTAR_LOG(4) << "Init CimClient with namespace root/ibmsd failed!";
        return kCimFailed;
    }
    Destroy(cimv2_connection_);
    cimv2_connection_ = new (std::nothrow)
        CimConnection(Pegasus::CIMNamespaceName("root/ibmsd"), connection_info_, access_);
    if (cimv2_connection_ != nullptr) {
        GetPCIDevice(info.devices_);
        GetPCIBridge(info.bridges_);
        GetSystemSlot(info.slots_);
    }
    return kCimOk;
}

void KalvexCim::ParseClassCode(std::string& code) {
    try {
        if (const auto word = schema::PciBaseClassWord(code)) {
            code = *word;
        }
    } catch (const std::exception& e) {
        ZENTAR_LOG(3) << "ParseClassCode Error:" << e.what();
    }
}

int KalvexCim::RetrieveSlotAllInfo(Pegasus::CIMInstance& instance, std::string& slot_all_info) {
    const Pegasus::CIMObjectPath& path = instance.getPath();
    Pegasus::Array<Pegasus::CIMObject> slots;
    const int slots_result =
        Associate(path, "IBMSG_DeviceInSlot", "IBMSG_SystemSlot", cimv2_connection_, slots);
    if (slots_result != kCimOk) {
        ZENTAR_LOG(4) << "IBMSG_PCIDevice associators IBMSG_DeviceInSlot failed!";
        return slots_result;
    }
    ZENTAR_LOG(4) << "IBMSG_PCIDevice associators IBMSG_DeviceInSlot instances:" << slots.size();
    if (slots.size() > 0) {
        CopySlotAllInfo(slots[0], slot_all_info);
        return kCimOk;
    }
    Pegasus::Array<Pegasus::CIMObject> boards;
    const int boards_result =
        Associate(path, "IBMSG_OnBoardDevice", "IBMSG_SystemBoard", cimv2_connection_, boards);
    if (boards_result != kCimOk) {
        ZENTAR_LOG(4) << "IBMSG_OnBoardDevice associators IBMSG_SystemBoard failed!";
        return boards_result;
    }
    ZENTAR_LOG(4) << "IBMSG_OnBoardDevice associators IBMSG_SystemBoard instances:"
                  << boards.size();
    if (boards.size() > 0) {
        CopySlotAllInfo(boards[0], slot_all_info);
    }
    return kCimOk;
}

void KalvexCim::CopySlotAllInfo(const Pegasus::CIMObject& slot_or_board,
                                std::string& slot_all_info) {
    properties_.clear();
    properties_["SlotAllInfo"] = "";
    GetPropertiesFromObject(slot_or_board, properties_, access_.get());
    slot_all_info = properties_["SlotAllInfo"];
}

}  // namespace Zentar::Agentless
