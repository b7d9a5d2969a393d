#include "support/inventory_test.h"

namespace {

using support::ClosedPort;
using support::EnumerationCallLog;
using support::EnumerationLog;
using support::HostBuilder;
using support::Joined;
using support::kHardwareNamespace;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using Zentar::ZTEXSI::OperationSystem;

constexpr const char* kClass = "VMware_HypervisorSoftwareIdentity";
constexpr const char* kProperties =
    R"({"InstanceID": "string", "VersionString": "string", "Name": "string",
        "Manufacturer": "string", "LargeBuildNumber": "uint64", "LastStartTime": "datetime"})";

class HypervisorQuery : public support::InventoryTest {
protected:
    void ServeHypervisors(const std::string& instances) {
        HostBuilder host;
        Serve(host.Class("root/cimv2", kClass, kProperties, instances));
    }
};

TEST_F(HypervisorQuery, ReadsTheIdentityAndTracesIt) {
    ServeHypervisors(R"([{"InstanceID": "a", "VersionString": "6.7.0", "Name": "VMware ESXi",
        "Manufacturer": "VMware, Inc.", "LargeBuildNumber": 14320388,
        "LastStartTime": "20260312081530.000000+060"}])");
    OperationSystem record;
    EXPECT_EQ(Worker().GetOperationSystem(record), 0);
    EXPECT_EQ(record.version_string, "6.7.0");
    EXPECT_EQ(record.name, "VMware ESXi");
    EXPECT_EQ(record.manufacturer, "VMware, Inc.");
    EXPECT_EQ(record.build_number, "14320388");
    EXPECT_EQ(record.last_start_time, "20260312081530.000000+060");
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined(
                    {{"4 kalvex_cim.cpp Calling KalvexCim::GetOperationSystem"},
                     EnumerationLog(kClass, 1),
                     {"4 cimfunc.cpp Showing properties for VMware_HypervisorSoftwareIdentity."
                      "InstanceID=\"a\"",
                      "4 cimfunc.cpp LargeBuildNumber = 14320388 with raw data (14320388)",
                      "4 cimfunc.cpp LastStartTime = 20260312081530.000000+060 with raw data "
                      "(20260312081530.000000+060)",
                      "4 cimfunc.cpp Manufacturer = VMware, Inc. with raw data (VMware, Inc.)",
                      "4 cimfunc.cpp Name = VMware ESXi with raw data (VMware ESXi)",
                      "4 cimfunc.cpp VersionString = 6.7.0 with raw data (6.7.0)"}})));
}

TEST_F(HypervisorQuery, ReadsTheFirstOfTwoIdentities) {
    ServeHypervisors(R"([{"InstanceID": "a", "Name": "first"},
                         {"InstanceID": "b", "Name": "second", "VersionString": "7"}])");
    OperationSystem record;
    EXPECT_EQ(Worker().GetOperationSystem(record), 0);
    EXPECT_EQ(record.name, "first");
    EXPECT_EQ(record.version_string, "");
}

TEST_F(HypervisorQuery, ReportsAMissingBuildNumberAtLevelTwo) {
    ServeHypervisors(R"([{"InstanceID": "a", "VersionString": "6.7.0", "Name": "VMware ESXi",
        "Manufacturer": "VMware, Inc.", "LastStartTime": "20260312081530.000000+060"}])");
    OperationSystem record;
    record.build_number = "before";
    EXPECT_EQ(Worker().GetOperationSystem(record), 0);
    EXPECT_EQ(record.build_number, "");
    EXPECT_THAT(log.Texts(2), ElementsAre("Property LargeBuildNumber is not found!"));
}

TEST_F(HypervisorQuery, EmptiesAllFieldsWhenThereIsNoInstance) {
    ServeHypervisors("[]");
    OperationSystem record{"a", "b", "c", "d", "e"};
    EXPECT_EQ(Worker().GetOperationSystem(record), 0);
    EXPECT_EQ(record.version_string + record.name + record.manufacturer + record.build_number +
                  record.last_start_time,
              "");
}

TEST_F(HypervisorQuery, TakesNothingFromTheChassisReadBefore) {
    HostBuilder host;
    host.Class("root/cimv2", "OMC_Chassis", R"({"Tag": "string", "Manufacturer": "string"})",
               R"([{"Tag": "1", "Manufacturer": "Contoso"}])");
    for (const char* instances : {R"([{"InstanceID": "a", "Name": "VMware ESXi"}])", "[]"}) {
        HostBuilder with_hypervisor = host;
        Serve(with_hypervisor.Class("root/cimv2", kClass, kProperties, instances));
        Zentar::Agentless::KalvexCim worker(info);
        Zentar::ZentarAgentless::ComputerSystem system;
        EXPECT_EQ(worker.GetComputerSystem(system), 0);
        EXPECT_EQ(system.manufacturer_, "Contoso");
        OperationSystem record;
        EXPECT_EQ(worker.GetOperationSystem(record), 0);
        EXPECT_EQ(record.manufacturer, "");
    }
}

TEST_F(HypervisorQuery, LeavesTheRecordAloneWhenTheClassIsMissing) {
    Serve(HostBuilder());
    OperationSystem record{"a", "b", "c", "d", "e"};
    EXPECT_EQ(Worker().GetOperationSystem(record), 1);
    EXPECT_EQ(record.version_string, "a");
    EXPECT_EQ(record.last_start_time, "e");
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined(
                    {{"4 kalvex_cim.cpp Calling KalvexCim::GetOperationSystem"},
                     EnumerationCallLog(kClass),
                     {"1 cimfunc.cpp Enumerate instances failed with the reason: "
                      "CIM_ERR_INVALID_CLASS: VMware_HypervisorSoftwareIdentity"},
                     ConnectionLog(),
                     {"4 kalvex_cim.cpp EnumerateInstances VMware_HypervisorSoftwareIdentity "
                      "Failed!"}})));
}

class VersionGate : public support::InventoryTest {};

TEST_F(VersionGate, HoldsAHostWithoutTheHardwareNamespaceForUnsupported) {
    HostBuilder host;
    Serve(host.WithoutNamespace(kHardwareNamespace));
    EXPECT_TRUE(Worker().IsUnSpportedESXIVer());
    EXPECT_TRUE(Host().IsUnSpportedEXSIVersion());
    EXPECT_THAT(
        log.Messages(),
        ElementsAreArray(Joined({{"4 kalvex.cpp Calling Kalvex::IsUnSpportedEXSIVersion"},
                                 EnumerationCallLog("IBM_ComputerSystem", kHardwareNamespace),
                                 {"1 cimfunc.cpp Enumerate instances failed with the reason: "
                                  "CIM_ERR_INVALID_NAMESPACE: ibm/imm0/cimv2"},
                                 ConnectionLog()})));
}

TEST_F(VersionGate, HoldsAHostWithTheNamespaceForSupported) {
    HostBuilder host;
    Serve(host.Class(kHardwareNamespace, "IBM_ComputerSystem", R"({"Name": "string"})"));
    EXPECT_FALSE(Host().IsUnSpportedEXSIVersion());
    EXPECT_THAT(
        log.Messages(),
        ElementsAreArray(Joined({{"4 kalvex.cpp Calling Kalvex::IsUnSpportedEXSIVersion"},
                                 EnumerationLog("IBM_ComputerSystem", 0, kHardwareNamespace)})));
}

TEST_F(VersionGate, HoldsAHostForSupportedWhenOnlyTheClassIsMissing) {
    Serve(HostBuilder());
    EXPECT_FALSE(Worker().IsUnSpportedESXIVer());
}

TEST_F(VersionGate, HoldsAHostThatAnswersWithoutCimForSupported) {
    HostBuilder host;
    Serve(host.WithoutNamespace(kHardwareNamespace));
    Worker();
    Server().InjectFault(simhost::Faults::HttpStatus(503, "Service Unavailable"));
    EXPECT_FALSE(Worker().IsUnSpportedESXIVer());
}

TEST_F(VersionGate, HoldsAnUnreachableHostForSupported) {
    info.port = ClosedPort();
    EXPECT_FALSE(Worker().IsUnSpportedESXIVer());
}

}  // namespace
