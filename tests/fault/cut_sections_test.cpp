// Each record and list of the module, with its enumeration cut at every byte: the result
// says so, and what the caller holds stays.
#include <functional>
#include <initializer_list>
#include <ostream>
#include <sstream>

#include "schema/host_kinds.h"
#include "schema/network_kinds.h"
#include "schema/pci_kinds.h"
#include "support/inventory_test.h"

namespace {

using namespace Zentar::Agentless;
using namespace Zentar::ZentarAgentless;
using namespace Zentar::ZTEXSI;
using namespace Zentar::Pciinventory;
namespace Faults = simhost::Faults;

/// What an operation came to: its result, and the records that the caller then holds.
struct Outcome {
    int result = 0;
    std::vector<std::string> held;
    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
    stream << outcome.result;
    for (const std::string& record : outcome.held) {
        stream << " [" << record << "]";
    }
    return stream;
}

template <class Record, std::size_t count>
std::string TextOf(const Record& record, const schema::KindOf<Record, count>& kind) {
    std::ostringstream text;
    kind.ForEachLogged(record, [&](const char* label, const auto& write) {
        text << label;
        write(text);
        text << ' ';
    });
    return text.str();
}

/// A record in which the caller holds something already.
template <class Record>
Record Filled(std::initializer_list<std::string Record::*> fields) {
    Record record;
    for (const auto field : fields) {
        record.*field = "before";
    }
    return record;
}

/// Reading with records in hand, and their texts before it.
struct Reading {
    std::function<Outcome(Kalvex&)> read;
    std::vector<std::string> before;
};

template <class Record, std::size_t count>
Reading ListOf(std::function<int(Kalvex&, std::vector<Record>&)> operation,
               const schema::KindOf<Record, count>& kind,
               std::initializer_list<std::string Record::*> fields) {
    const Record before = Filled<Record>(fields);
    return {[=, &kind](Kalvex& host) {
                std::vector<Record> records = {before};
                Outcome outcome;
                outcome.result = operation(host, records);
                for (const Record& record : records) {
                    outcome.held.push_back(TextOf(record, kind));
                }
                return outcome;
            },
            {TextOf(before, kind)}};
}

Reading Endpoints(int family) {
    return ListOf<IPProtocolData>(
        [=](Kalvex& host, auto& endpoints) { return host.GetIPProtocolInfo(endpoints, family); },
        schema::kIPv4Endpoints,
        {&IPProtocolData::name, &IPProtocolData::enabled_state, &IPProtocolData::IPv4_address,
         &IPProtocolData::IPv6_address});
}

/// One of the lists of the PCI inventory.
template <class Record, std::size_t count>
Reading PciListOf(std::vector<Record> Pciinfo::*list, const schema::KindOf<Record, count>& kind,
                  std::initializer_list<std::string Record::*> fields) {
    return ListOf<Record>(
        [=](Kalvex& host, std::vector<Record>& records) {
            Pciinfo info;
            std::swap(info.*list, records);
            const int result = host.GetPCIInfo(info);
            std::swap(info.*list, records);
            return result;
        },
        kind, fields);
}

Reading Hypervisor() {
    const auto before = Filled<OperationSystem>(
        {&OperationSystem::version_string, &OperationSystem::name, &OperationSystem::manufacturer,
         &OperationSystem::build_number, &OperationSystem::last_start_time});
    return {[=](Kalvex& host) {
                OperationSystem record = before;
                const int result = host.GetOperationSystem(record);
                return Outcome{result, {TextOf(record, schema::kOs)}};
            },
            {TextOf(before, schema::kOs)}};
}

Reading System() {
    const auto before = Filled<ComputerSystem>(
        {&ComputerSystem::manufacturer_, &ComputerSystem::version_, &ComputerSystem::uuid_});
    return {[=](Kalvex& host) {
                ComputerSystem record = before;
                const int result = host.GetComputerSystem(record);
                return Outcome{result, {TextOf(record, schema::kSystem)}};
            },
            {TextOf(before, schema::kSystem)}};
}

struct Section {
    const char* name;
    const char* name_space;
    const char* class_name;
    const char* properties;
    const char* instance;
    int result_of_failure;
    std::size_t records;  ///< that the caller holds when all went well
    Reading reading;
};

const Section kSections[] = {
    {"Chassis", "root/cimv2", "OMC_Chassis",
     R"({"Tag": "string", "Manufacturer": "string", "Version": "string"})",
     R"({"Tag": "c", "Manufacturer": "m", "Version": "1"})", 1, 1, System()},
    {"Packages", "root/cimv2", "VMware_ComponentSoftwareIdentity",
     R"({"InstanceID": "string", "ElementName": "string", "VersionString": "string",
         "Description": "string", "InstallDate": "datetime"})",
     R"({"InstanceID": "a", "ElementName": "e", "VersionString": "1", "Description": "d"})", 1, 2,
     ListOf<InstalledPackage>(
         std::mem_fn(&Kalvex::GetInstalledPackages), schema::kPackages,
         {&InstalledPackage::product_name_, &InstalledPackage::product_version_,
          &InstalledPackage::summary_, &InstalledPackage::product_install_date_})},
    {"Events", "root/cimv2", "OMC_IpmiLogRecord",
     R"({"RecordID": "string", "MessageTimestamp": "datetime", "ElementName": "string"})",
     R"({"RecordID": "1", "ElementName": "e"})", 1, 2,
     ListOf<IPMIEVENT>(std::mem_fn(&Kalvex::GetIpmiRecord), schema::kEvents,
                       {&IPMIEVENT::time_stamp, &IPMIEVENT::message})},
    {"Privileges", "root/cimv2", "VMware_Privilege",
     R"({"InstanceID": "string", "ElementName": "string", "Activities": "uint16[]"})",
     R"({"InstanceID": "a", "ElementName": "e", "Activities": [1, 2]})", 1, 2,
     ListOf<VMwarePrivilegeData>(
         std::mem_fn(&Kalvex::GetVMwarePrivilege), schema::kPrivileges,
         {&VMwarePrivilegeData::instance_id, &VMwarePrivilegeData::element_name,
          &VMwarePrivilegeData::activities})},
    {"Ports", "root/cimv2", "VMware_EthernetPort",
     R"({"DeviceID": "string", "Name": "string", "NetworkAddresses": "string[]"})",
     R"({"DeviceID": "d", "Name": "vmnic0", "NetworkAddresses": ["00:50:56:01:00:00"]})", 1, 2,
     ListOf<PhysicalPort>(std::mem_fn(&Kalvex::GetEthernetPorts), schema::kPorts,
                          {&PhysicalPort::name_, &PhysicalPort::network_addresses_,
                           &PhysicalPort::speed_, &PhysicalPort::speedduplex_})},
    {"IPv4Endpoints", "root/cimv2", "VMware_KernelIPv4ProtocolEndpoint",
     R"({"Name": "string", "IPv4Address": "string", "EnabledState": "uint16"})",
     R"({"Name": "vmk0", "IPv4Address": "192.0.2.1", "EnabledState": 2})", 1, 2, Endpoints(0)},
    {"IPv6Endpoints", "root/cimv2", "VMware_KernelIPv6ProtocolEndpoint",
     R"({"Name": "string", "IPv6Address": "string", "EnabledState": "uint16"})",
     R"({"Name": "vmk0", "IPv6Address": "2001:db8::1", "EnabledState": 2})", 1, 2, Endpoints(1)},
    {"PciDevices", "root/ibmsd", "IBMSG_PCIDevice",
     R"({"DeviceID": "string", "ClassCode": "uint8"})", R"({"DeviceID": "p", "ClassCode": 2})", 0,
     2,
     PciListOf(&Pciinfo::devices_, schema::kPciDevices,
               {&PCIDevice::class_code_, &PCIDevice::description_, &PCIDevice::slot_all_info_})},
    {"PciBridges", "root/ibmsd", "IBMSG_PCIBridge",
     R"({"DeviceID": "string", "ClassCode": "uint8"})", R"({"DeviceID": "b", "ClassCode": 6})", 0,
     2,
     PciListOf(&Pciinfo::bridges_, schema::kPciBridges,
               {&PCIBridge::class_code_, &PCIBridge::description_, &PCIBridge::slot_all_info_})},
    {"PciSlots", "root/ibmsd", "IBMSG_SystemSlot",
     R"({"Tag": "string", "SlotDesignation": "string"})",
     R"({"Tag": "s", "SlotDesignation": "Slot 1"})", 0, 2,
     PciListOf(&Pciinfo::slots_, schema::kPciSlots,
               {&SystemSlot::slot_designation_, &SystemSlot::tag_})},
    {"Hypervisor", "root/cimv2", "VMware_HypervisorSoftwareIdentity",
     R"({"InstanceID": "string", "VersionString": "string", "Manufacturer": "string"})",
     R"({"InstanceID": "a", "VersionString": "6.7.0", "Manufacturer": "m"})", 1, 1, Hypervisor()},
};

std::string SectionName(const ::testing::TestParamInfo<Section>& info) { return info.param.name; }

/// One instance of the section's class; what else is asked for is there, and empty.
support::HostBuilder HostWith(const Section& section) {
    support::HostBuilder host;
    for (const std::string other : {"IBMSG_PCIDevice", "IBMSG_PCIBridge", "IBMSG_SystemSlot"}) {
        if (other != section.class_name) {
            host.Class("root/ibmsd", other, R"({"Key": "string"})");
        }
    }
    return host.Class(section.name_space, section.class_name, section.properties,
                      std::string("[") + section.instance + "]");
}

class CutSection : public support::InventoryTest, public ::testing::WithParamInterface<Section> {
protected:
    void SetUp() override {
        const Section& section = GetParam();
        Serve(HostWith(section));
        sound = Read();
        ASSERT_EQ(sound.result, 0);
        ASSERT_EQ(sound.held.size(), section.records);
        ASSERT_NE(sound.held, section.reading.before);
    }

    Outcome Read() {
        Outcome outcome = GetParam().reading.read(Host());
        log.Clear();
        return outcome;
    }

    Outcome ReadCut(std::size_t bytes, bool reset) {
        simhost::Fault cut = Faults::Truncate(bytes, reset);
        cut.only_class = GetParam().class_name;
        cut.only_operation = "EnumerateInstances";
        Server().InjectFault(cut);
        Outcome outcome = Read();
        Server().ClearFaults();
        Server().ForgetRequests();
        return outcome;
    }

    const Outcome failed{GetParam().result_of_failure, GetParam().reading.before};
    Outcome sound;
};

TEST_P(CutSection, FailsWithoutATraceUntilItIsWhole) {
    for (const bool reset : {false, true}) {
        int successes = 0;
        for (std::size_t bytes = 0; successes < 100; ++bytes) {
            const Outcome outcome = ReadCut(bytes, reset);
            successes += outcome == sound ? 1 : 0;
            ASSERT_EQ(outcome, successes > 0 ? sound : failed) << bytes << " bytes";
            ASSERT_EQ(Read(), sound) << "cut after " << bytes << " bytes";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Each, CutSection, ::testing::ValuesIn(kSections), SectionName);

}  // namespace
