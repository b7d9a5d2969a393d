// Installed packages, the IPMI event log and privileges.
#include "support/inventory_test.h"

namespace {

using support::EnumerationLog;
using support::HostBuilder;
using support::Joined;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using Zentar::ZentarAgentless::InstalledPackage;
using Zentar::ZentarAgentless::IPMIEVENT;
using Zentar::ZTEXSI::VMwarePrivilegeData;

class InstalledPackages : public support::InventoryTest {
protected:
    std::vector<InstalledPackage> Read(const std::string& instances) {
        HostBuilder host;
        Serve(host.Class("root/cimv2", "VMware_ComponentSoftwareIdentity",
                         R"({"InstanceID": "string", "ElementName": "string",
                             "VersionString": "string", "Description": "string",
                             "InstallDate": "datetime"})",
                         instances));
        std::vector<InstalledPackage> packages;
        EXPECT_EQ(Worker().GetInstalledPackages(packages), 0);
        return packages;
    }
};

TEST_F(InstalledPackages, AreReadFieldByFieldAndTraced) {
    const auto packages = Read(R"([{"InstanceID": "p", "ElementName": "net-driver",
        "VersionString": "1.0.0-1OEM", "Description": "Treiber für <Netz> & Co.",
        "InstallDate": "20200102030405.000000+000"}])");
    ASSERT_EQ(packages.size(), 1U);
    EXPECT_EQ(packages[0].product_name_, "net-driver");
    EXPECT_EQ(packages[0].product_version_, "1.0.0-1OEM");
    EXPECT_EQ(packages[0].summary_, "Treiber für <Netz> & Co.");
    EXPECT_EQ(packages[0].product_install_date_, "20200102030405.000000+000");
    EXPECT_EQ(packages[0].spare_1_ + packages[0].spare_2_ + packages[0].spare_3_, "");
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined(
                    {{"4 kalvex_cim.cpp Calling KalvexCim::GetInstalledPackages"},
                     EnumerationLog("VMware_ComponentSoftwareIdentity", 1),
                     {"4 kalvex_cim.cpp VMware_ComponentSoftwareIdentity instances :1",
                      "4 cimfunc.cpp Showing properties for VMware_ComponentSoftwareIdentity."
                      "InstanceID=\"p\"",
                      "4 cimfunc.cpp Description = Treiber für <Netz> & Co. with raw data "
                      "(Treiber für <Netz> & Co.)",
                      "4 cimfunc.cpp ElementName = net-driver with raw data (net-driver)",
                      "4 cimfunc.cpp InstallDate = 20200102030405.000000+000 with raw data "
                      "(20200102030405.000000+000)",
                      "4 cimfunc.cpp VersionString = 1.0.0-1OEM with raw data (1.0.0-1OEM)"}})));
}

TEST_F(InstalledPackages, KeepTheOtherFieldsWhenTheInstallDateIsMissing) {
    const auto packages = Read(
        R"([{"InstanceID": "p", "ElementName": "a", "VersionString": "1", "Description": "d"}])");
    ASSERT_EQ(packages.size(), 1U);
    EXPECT_EQ(packages[0].product_install_date_, "");
    EXPECT_EQ(packages[0].product_name_, "a");
    EXPECT_EQ(packages[0].product_version_, "1");
    EXPECT_EQ(packages[0].summary_, "d");
    EXPECT_THAT(log.Texts(2), ElementsAre("Property InstallDate is not found!"));
}

TEST_F(InstalledPackages, StandInTheHostsOrder) {
    const auto packages = Read(R"([{"InstanceID": "2", "ElementName": "z"},
                                   {"InstanceID": "1", "ElementName": "a"}])");
    ASSERT_EQ(packages.size(), 2U);
    EXPECT_EQ(packages[0].product_name_, "z");
    EXPECT_EQ(packages[1].product_name_, "a");
}

class EventLog : public support::InventoryTest {
protected:
    std::vector<IPMIEVENT> Read(const std::string& instances,
                                const std::string& record_id_type = "string") {
        HostBuilder host;
        Serve(host.Class("root/cimv2", "OMC_IpmiLogRecord",
                         R"({"Key": "string", "RecordID": ")" + record_id_type +
                             R"(", "MessageTimestamp": "datetime", "Description": "string",
                             "PerceivedSeverity": "uint16"})",
                         instances));
        std::vector<IPMIEVENT> events;
        Zentar::Agentless::KalvexCim worker(info);
        EXPECT_EQ(worker.GetIpmiRecord(events), 0);
        return events;
    }
    std::uint64_t ReadRecordId(const std::string& text) {
        return Read(R"([{"Key": "k", "RecordID": ")" + text + R"("}])").at(0).record_id;
    }
};

TEST_F(EventLog, EntriesAreReadFieldByField) {
    const auto events = Read(R"([{"Key": "k", "RecordID": "42",
        "MessageTimestamp": "20100507123553.000000+000",
        "Description": "Assert + Power Supply 0 Presence detected", "PerceivedSeverity": 6}])");
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].record_id, 42U);
    EXPECT_EQ(events[0].time_stamp, "20100507123553.000000+000");
    EXPECT_EQ(events[0].message, "Assert + Power Supply 0 Presence detected");
    EXPECT_EQ(events[0].sev, 0);
    EXPECT_EQ(events[0].spare_1_ + events[0].spare_2_, "");
}

TEST_F(EventLog, RecordIdsAreReadUpToTheFirstOtherCharacter) {
    EXPECT_EQ(ReadRecordId("42"), 42U);
    EXPECT_EQ(ReadRecordId(" 7abc"), 7U);
    EXPECT_EQ(ReadRecordId("abc"), 0U);
    EXPECT_EQ(ReadRecordId("  "), 0U);
}

TEST_F(EventLog, RecordIdsBeyond32BitsAreClamped) {
    EXPECT_EQ(ReadRecordId("4294967296"), 2147483647U);
    EXPECT_EQ(ReadRecordId("-4294967296"), static_cast<std::uint64_t>(-2147483648LL));
}

TEST_F(EventLog, NegativeRecordIdsAreSignExtended) {
    EXPECT_EQ(Read(R"([{"Key": "k", "RecordID": -1}])", "sint32").at(0).record_id,
              18446744073709551615U);
}

TEST_F(EventLog, AMissingRecordIdIsZeroAndMissingTextsAreEmpty) {
    const auto events = Read(R"([{"Key": "k"}])");
    ASSERT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].record_id, 0U);
    EXPECT_EQ(events[0].time_stamp, "");
    EXPECT_EQ(events[0].message, "");
}

class Privileges : public support::InventoryTest {
protected:
    std::vector<VMwarePrivilegeData> Read(const std::string& instances) {
        HostBuilder host;
        Serve(host.Class("root/cimv2", "VMware_Privilege",
                         R"({"InstanceID": "string", "RepresentsAuthorizationRights": "boolean",
                             "PrivilegeGranted": "boolean", "ElementName": "string",
                             "Description": "string", "Caption": "string",
                             "Activities": "uint16[]", "ActivityQualifiers": "string[]",
                             "QualifierFormats": "uint16[]"})",
                         instances));
        std::vector<VMwarePrivilegeData> privileges;
        EXPECT_EQ(Worker().GetVMwarePrivilege(privileges), 0);
        return privileges;
    }
};

TEST_F(Privileges, AreReadFieldByField) {
    const auto privileges = Read(R"([{"InstanceID": "p", "RepresentsAuthorizationRights": false,
        "PrivilegeGranted": true, "ElementName": "e", "Description": "d", "Caption": "c",
        "Activities": [5, 6], "ActivityQualifiers": ["a", "b c"], "QualifierFormats": [4]}])");
    ASSERT_EQ(privileges.size(), 1U);
    EXPECT_EQ(privileges[0].represents_authorization_rights, "FALSE");
    EXPECT_EQ(privileges[0].privilege_granted, "TRUE");
    EXPECT_EQ(privileges[0].instance_id, "p");
    EXPECT_EQ(privileges[0].element_name, "e");
    EXPECT_EQ(privileges[0].description, "d");
    EXPECT_EQ(privileges[0].caption, "c");
    EXPECT_EQ(privileges[0].activities, "5 6");
    EXPECT_EQ(privileges[0].activityQualifiers, "a b c");
    EXPECT_EQ(privileges[0].qualifier_formats, "4");
}

TEST_F(Privileges, KeepTheOtherFieldsWhenQualifierFormatsIsMissing) {
    const auto privileges = Read(R"([{"InstanceID": "p", "PrivilegeGranted": true,
        "RepresentsAuthorizationRights": true, "ElementName": "e", "Description": "d",
        "Caption": "c", "Activities": [5], "ActivityQualifiers": ["a"]}])");
    ASSERT_EQ(privileges.size(), 1U);
    EXPECT_EQ(privileges[0].qualifier_formats, "");
    EXPECT_EQ(privileges[0].activities, "5");
    EXPECT_THAT(log.Texts(2), ElementsAre("Property QualifierFormats is not found!"));
}

}  // namespace
