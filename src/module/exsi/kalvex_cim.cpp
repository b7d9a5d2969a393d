#include "module/exsi/kalvex_cim.h"

#include <exception>
#include <new>

#include "common/cimom/src/cimfunc.h"
#include "common/cimom/src/host_access.h"
#include "common/log/log_message.h"
#include "common/platform/wipe.h"
#include "module/exsi/identifying_info.h"
#include "module/exsi/pci_tables.h"
#include "module/exsi/table_queries.h"

namespace Zentar::Agentless {

namespace {

using Pegasus::Uint32;  // PEG_NOT_FOUND names it so

using Instances = Pegasus::Array<Pegasus::CIMInstance>;
using ZentarAgentless::ComputerSystem;

/// A host may send millions of rows, and reading them takes seconds. A list as long as real hosts
/// have it is read to its end.
constexpr Uint32 kRowsBetweenLooksAtTheClock = 1024;

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

/// The first instance's properties of the given names; empty texts where there is none.
template <std::size_t count>
void ReadFirst(const Instances& instances, const char* const (&names)[count],
               PropertyMap& properties, HostAccess& access) {
    properties.clear();
    for (const char* name : names) {
        properties[name] = "";
    }
    if (instances.size() > 0) {
        GetPropertiesFromInstance(instances[0], properties, &access);
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
    ReadFirst(chassis, {"Manufacturer", "Version"}, properties_, *access_);
    record.manufacturer_ = properties_["Manufacturer"];
    record.version_ = properties_["Version"];
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
    ReadFirst(hypervisors,
              {"VersionString", "Name", "Manufacturer", "LargeBuildNumber", "LastStartTime"},
              properties_, *access_);
    record.version_string = properties_["VersionString"];
    record.name = properties_["Name"];
    record.manufacturer = properties_["Manufacturer"];
    record.build_number = properties_["LargeBuildNumber"];
    record.last_start_time = properties_["LastStartTime"];
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

/// Appends one record per instance; `complete` finishes each record before it is appended.
template <class Record, class Complete>
int KalvexCim::ReadTable(const TableQuery<Record>& query, std::vector<Record>& records,
                         Complete complete) {
    ZENTAR_LOG(4) << query.trace;
    Instances instances;
    if (Enumerate(query.class_name, cimv2_connection_, instances) != kCimOk) {
        ZENTAR_LOG(4) << query.failure;
        return kCimFailed;
    }
    ZENTAR_LOG(4) << query.class_name << " instances :" << instances.size();
    PropertyMap properties;
    std::vector<std::string*> texts;  // of the columns, in `properties`
    for (const Column<Record>& column : query.columns) {
        texts.push_back(&properties[column.property]);
    }
    PropertyReader reader(properties, access_.get());
    records.reserve(records.size() + instances.size());
    for (Uint32 i = 0; i < instances.size(); ++i) {
        if (i > 0 && i % kRowsBetweenLooksAtTheClock == 0 && MustStop(query.class_name)) {
            ZENTAR_LOG(4) << query.failure;
            return kCimFailed;
        }
        for (std::string* text : texts) {
            text->clear();
        }
        reader.Read(instances[i]);
        Record record;
        for (std::size_t c = 0; c < texts.size(); ++c) {
            if (query.columns[c].store != nullptr) {
                query.columns[c].store(record, std::move(*texts[c]));
            }
        }
        complete(instances[i], record);
        records.push_back(std::move(record));
        instances[i] = Pegasus::CIMInstance();  // released while it is in the processor's caches
    }
    return kCimOk;
}

template <class Record>
int KalvexCim::ReadTable(const TableQuery<Record>& query, std::vector<Record>& records) {
    return ReadTable(query, records, [](const Pegasus::CIMInstance&, Record&) {});
}

int KalvexCim::GetInstalledPackages(std::vector<ZentarAgentless::InstalledPackage>& packages) {
    return ReadTable(kInstalledPackages, packages);
}

int KalvexCim::GetIpmiRecord(std::vector<ZentarAgentless::IPMIEVENT>& events) {
    return ReadTable(kIpmiRecords, events);
}

int KalvexCim::GetVMwarePrivilege(std::vector<ZTEXSI::VMwarePrivilegeData>& privileges) {
    return ReadTable(kPrivileges, privileges);
}

int KalvexCim::GetEthernetPorts(std::vector<ZentarAgentless::PhysicalPort>& ports) {
    return ReadTable(kEthernetPorts, ports);
}

int KalvexCim::GetIPv4ProtocolInfo(std::vector<ZTEXSI::IPProtocolData>& endpoints) {
    return ReadTable(kIPv4Endpoints, endpoints);
}

int KalvexCim::GetIPv6ProtocolInfo(std::vector<ZTEXSI::IPProtocolData>& endpoints) {
    return ReadTable(kIPv6Endpoints, endpoints);
}

int KalvexCim::GetPCIDevice(std::vector<Pciinventory::PCIDevice>& devices) {
    return ReadTable(kPciDevices, devices, [this](auto& instance, Pciinventory::PCIDevice& device) {
        ParseClassCode(device.class_code_);
        RetrieveSlotAllInfo(instance, device.slot_all_info_);
    });
}

int KalvexCim::GetPCIBridge(std::vector<Pciinventory::PCIBridge>& bridges) {
    return ReadTable(kPciBridges, bridges, [this](auto& instance, Pciinventory::PCIBridge& bridge) {
        ParseClassCode(bridge.class_code_);
        RetrieveSlotAllInfo(instance, bridge.slot_all_info_);
    });
}

int KalvexCim::GetSystemSlot(std::vector<Pciinventory::SystemSlot>& slots) {
    return ReadTable(kSystemSlots, slots);
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
        if (const auto word = PciBaseClassWord(code)) {
            code = *word;
        }
    } catch (const std::exception& e) {
        ZENTAR_LOG(3) << "ParseClassCode Error:" << e.what();
    }
}

int KalvexCim::RetrieveSlotAllInfo(Pegasus::CIMInstance& instance, std::string& slot_all_info) {
    const Pegasus::CIMObjectPath path = instance.getPath();
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
