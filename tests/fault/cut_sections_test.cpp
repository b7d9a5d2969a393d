// Each operation of the module, with its host's reply cut at every byte: the result tells, and what
// the caller holds stays.
#include <functional>

#include "support/inventory_test.h"

namespace {

using Zentar::Agentless::Kalvex;
namespace Ways = simhost::Misbehaviours;

/// What an operation came to: its result, and how many records it appended.
struct Outcome {
    int result;
    std::size_t records;
    bool operator==(const Outcome&) const = default;
};

template <class Record>
std::function<Outcome(Kalvex&)> ListOf(int (Kalvex::*operation)(std::vector<Record>&)) {
    return [operation](Kalvex& host) {
        std::vector<Record> records;
        const int result = (host.*operation)(records);
        return Outcome{result, records.size()};
    };
}

struct Section {
    const char* name;
    const char* class_name;
    const char* properties;
    const char* instance;
    std::function<Outcome(Kalvex&)> read;
};

const Section kSections[] = {
    {"Packages", "VMware_ComponentSoftwareIdentity",
     R"({"InstanceID": "string", "ElementName": "string", "VersionString": "string",
         "Description": "string", "InstallDate": "datetime"})",
     R"({"InstanceID": "a", "ElementName": "e", "VersionString": "1", "Description": "d"})",
     ListOf(&Kalvex::GetInstalledPackages)},
    {"Events", "OMC_IpmiLogRecord",
     R"({"RecordID": "string", "MessageTimestamp": "datetime", "ElementName": "string"})",
     R"({"RecordID": "1", "ElementName": "e"})", ListOf(&Kalvex::GetIpmiRecord)},
    {"Privileges", "VMware_Privilege",
     R"({"InstanceID": "string", "ElementName": "string", "Activities": "uint16[]"})",
     R"({"InstanceID": "a", "ElementName": "e", "Activities": [1, 2]})",
     ListOf(&Kalvex::GetVMwarePrivilege)},
    {"Ports", "VMware_EthernetPort",
     R"({"DeviceID": "string", "Name": "string", "NetworkAddresses": "string[]"})",
     R"({"DeviceID": "d", "Name": "vmnic0", "NetworkAddresses": ["00:50:56:01:00:00"]})",
     ListOf(&Kalvex::GetEthernetPorts)},
    {"Endpoints", "VMware_KernelIPv4ProtocolEndpoint",
     R"({"Name": "string", "IPv4Address": "string", "EnabledState": "uint16"})",
     R"({"Name": "vmk0", "IPv4Address": "192.0.2.1", "EnabledState": 2})",
     [](Kalvex& host) {
         std::vector<Zentar::ZTEXSI::IPProtocolData> endpoints;
         const int result = host.GetIPProtocolInfo(endpoints, 0);
         return Outcome{result, endpoints.size()};
     }},
    {"System", "VMware_HypervisorSoftwareIdentity",
     R"({"InstanceID": "string", "VersionString": "string", "Manufacturer": "string"})",
     R"({"InstanceID": "a", "VersionString": "6.7.0", "Manufacturer": "m"})",
     [](Kalvex& host) {
         Zentar::ZTEXSI::OperationSystem record;
         record.name = "before";
         const int result = host.GetOperationSystem(record);
         const bool kept = record.name == "before" && record.version_string.empty();
         return Outcome{result, kept ? std::size_t{0} : std::size_t{1}};
     }},
};

std::string NameOf(const ::testing::TestParamInfo<Section>& info) { return info.param.name; }

class CutSection : public support::InventoryTest, public ::testing::WithParamInterface<Section> {
protected:
    void SetUp() override {
        const Section& section = GetParam();
        support::HostBuilder host;
        Serve(host.Class("root/cimv2", section.class_name, section.properties,
                         std::string("[") + section.instance + "]"));
        sound = Read();
        ASSERT_EQ(sound.result, 0);
        ASSERT_EQ(sound.records, 1U);
    }

    Outcome Read() {
        const Outcome outcome = GetParam().read(Host());
        log.Clear();
        return outcome;
    }

    Outcome ReadCut(std::size_t bytes, bool reset) {
        Server().Misbehave(Ways::Truncate(bytes, reset));
        const Outcome outcome = Read();
        Server().Behave();
        Server().ForgetRequests();
        return outcome;
    }

    Outcome sound{};
};

TEST_P(CutSection, FailsWithoutATraceUntilItIsWhole) {
    const Outcome failed{1, 0};
    for (const bool reset : {false, true}) {
        int successes = 0;
        for (std::size_t bytes = 0; successes < 100; ++bytes) {
            const Outcome outcome = ReadCut(bytes, reset);
            successes += outcome == sound ? 1 : 0;
            ASSERT_EQ(outcome, successes > 0 ? sound : failed) << bytes << " bytes";
            ASSERT_EQ(Read(), sound) << "after a cut behind " << bytes << " bytes";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Each, CutSection, ::testing::ValuesIn(kSections), NameOf);

}  // namespace
