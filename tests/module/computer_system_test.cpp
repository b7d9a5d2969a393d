#include "support/inventory_test.h"

namespace {

using support::EnumerationCallLog;
using support::EnumerationLog;
using support::HostBuilder;
using support::Joined;
using support::kHardwareNamespace;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using Zentar::ZentarAgentless::ComputerSystem;

constexpr const char* kChassisProperties =
    R"({"Tag": "string", "Manufacturer": "string", "Version": "string"})";
constexpr const char* kSystemProperties =
    R"({"Name": "string", "IdentifyingDescriptions": "string[]",
        "OtherIdentifyingInfo": "string[]"})";

class ComputerSystemQuery : public support::InventoryTest {
protected:
    static HostBuilder& AddChassis(HostBuilder& host, const std::string& instances) {
        return host.Class("root/cimv2", "OMC_Chassis", kChassisProperties, instances);
    }
    static HostBuilder& AddSystem(HostBuilder& host, const std::string& descriptions,
                                  const std::string& infos) {
        return host.Class(kHardwareNamespace, "IBM_ComputerSystem", kSystemProperties,
                          R"([{"Name": "imm", "IdentifyingDescriptions": )" + descriptions +
                              R"(, "OtherIdentifyingInfo": )" + infos + "}]");
    }
    /// The record read from a host whose chassis is plain and whose system identifies itself so.
    ComputerSystem ReadSystem(const std::string& descriptions, const std::string& infos) {
        HostBuilder host;
        Serve(AddSystem(AddChassis(host, kContoso), descriptions, infos));
        ComputerSystem record;
        EXPECT_EQ(Worker().GetComputerSystem(record), 0);
        return record;
    }

    static constexpr const char* kContoso =
        R"([{"Tag": "1", "Manufacturer": "Contoso", "Version": "07"}])";
};

TEST_F(ComputerSystemQuery, ReadsChassisAndIdentifyingInfoAndTracesThem) {
    const ComputerSystem record =
        ReadSystem(R"(["CIM:GUID", "CIM:Model:SerialNumber", "CIM:ProductName"])",
                   R"(["0011-AABB", "ABC:1234", "Server X:Y"])");
    EXPECT_EQ(record.manufacturer_, "Contoso");
    EXPECT_EQ(record.version_, "07");
    EXPECT_EQ(record.uuid_, "0011-AABB");
    EXPECT_EQ(record.model_, "ABC");
    EXPECT_EQ(record.serial_number_, "1234");
    EXPECT_EQ(record.product_name_, "Server X");
    EXPECT_EQ(record.name, "");
    EXPECT_EQ(record.spare_1_, "");
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined(
                    {{"4 kalvex_cim.cpp Calling KalvexCim::GetComputerSystem"},
                     EnumerationLog("OMC_Chassis", 1),
                     EnumerationLog("IBM_ComputerSystem", 1, kHardwareNamespace),
                     {"4 cimfunc.cpp Showing properties for OMC_Chassis.Tag=\"1\"",
                      "4 cimfunc.cpp Manufacturer = Contoso with raw data (Contoso)",
                      "4 cimfunc.cpp Version = 07 with raw data (07)",
                      "4 kalvex_cim.cpp ==========Manufacturer is : ============Contoso",
                      "4 kalvex_cim.cpp ==========Version is : ============07",
                      "4 kalvex_cim.cpp IBMComputerSystem Class IdentifyingDescriptions and "
                      "OtherIdentifyingInfo found.",
                      "4 kalvex_cim.cpp ==========System UUID is : ============0011-AABB",
                      "4 kalvex_cim.cpp ==========Model is : ============ABC",
                      "4 kalvex_cim.cpp ==========Serial Number is : ============1234",
                      "4 kalvex_cim.cpp ==========Product Name is : ============Server X"}})));
}

TEST_F(ComputerSystemQuery, FailsOnlyWhenBothClassesFail) {
    Serve(HostBuilder());
    ComputerSystem record;
    record.model_ = "kept";
    EXPECT_EQ(Worker().GetComputerSystem(record), 1);
    EXPECT_EQ(record.model_, "kept");
    const std::string failure =
        "1 cimfunc.cpp Enumerate instances failed with the reason: CIM_ERR_INVALID_CLASS: ";
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined(
                    {{"4 kalvex_cim.cpp Calling KalvexCim::GetComputerSystem"},
                     EnumerationCallLog("OMC_Chassis"),
                     {failure + "OMC_Chassis"},
                     ConnectionLog(),
                     EnumerationCallLog("IBM_ComputerSystem", kHardwareNamespace),
                     {failure + "IBM_ComputerSystem"},
                     ConnectionLog(),
                     {"4 kalvex_cim.cpp EnumerateInstances OMC_Chassis and IBM_ComputerSystem "
                      "Failed!"}})));
}

TEST_F(ComputerSystemQuery, KeepsManufacturerAndVersionWhenTheChassisFails) {
    HostBuilder host;
    Serve(AddSystem(host, R"(["CIM:GUID", "CIM:Model:SerialNumber", "CIM:ProductName"])",
                    R"(["0011", "ABC:1234", "Server X"])"));
    ComputerSystem record;
    record.manufacturer_ = "before";
    record.version_ = "before";
    EXPECT_EQ(Worker().GetComputerSystem(record), 0);
    EXPECT_EQ(record.manufacturer_, "before");
    EXPECT_EQ(record.version_, "before");
    EXPECT_EQ(record.uuid_, "0011");
    EXPECT_EQ(record.model_, "ABC");
    EXPECT_EQ(record.serial_number_, "1234");
    EXPECT_EQ(record.product_name_, "Server X");
}

TEST_F(ComputerSystemQuery, AsksTheSecondClassEvenWhenTheFirstFailed) {
    Serve(HostBuilder());
    ComputerSystem record;
    Worker().GetComputerSystem(record);
    std::vector<std::string> classes;
    for (const auto& request : Server().requests()) {
        classes.push_back(request.class_name);
    }
    EXPECT_THAT(classes, ElementsAre("OMC_Chassis", "IBM_ComputerSystem"));
}

TEST_F(ComputerSystemQuery, ClearsManufacturerAndVersionWhenThereIsNoChassis) {
    HostBuilder host;
    Serve(AddChassis(host, "[]"));
    ComputerSystem record;
    record.manufacturer_ = "before";
    record.version_ = "before";
    EXPECT_EQ(Worker().GetComputerSystem(record), 0);
    EXPECT_EQ(record.manufacturer_, "");
    EXPECT_EQ(record.version_, "");
    const auto traces = log.Texts(4);
    ASSERT_GE(traces.size(), 2U);
    EXPECT_EQ(traces[traces.size() - 2], "==========Manufacturer is : ============");
    EXPECT_EQ(traces.back(), "==========Version is : ============");
}

TEST_F(ComputerSystemQuery, ReadsTheFirstChassisOnly) {
    HostBuilder host;
    Serve(AddChassis(host, R"([{"Tag": "1", "Manufacturer": "First"},
                               {"Tag": "2", "Manufacturer": "Second", "Version": "2"}])"));
    ComputerSystem record;
    EXPECT_EQ(Worker().GetComputerSystem(record), 0);
    EXPECT_EQ(record.manufacturer_, "First");
    EXPECT_EQ(record.version_, "");
}

TEST_F(ComputerSystemQuery, TakesAModelWithoutColonWhole) {
    const ComputerSystem record = ReadSystem(R"(["CIM:Model:SerialNumber"])", R"(["ABC"])");
    EXPECT_EQ(record.model_, "ABC");
    EXPECT_EQ(record.serial_number_, "");
}

TEST_F(ComputerSystemQuery, SplitsModelAndSerialNumberAtTheFirstColon) {
    const ComputerSystem record = ReadSystem(R"(["CIM:Model:SerialNumber"])", R"(["A:B:C"])");
    EXPECT_EQ(record.model_, "A");
    EXPECT_EQ(record.serial_number_, "B:C");
}

TEST_F(ComputerSystemQuery, CutsAProductNameAtItsFirstColon) {
    EXPECT_EQ(ReadSystem(R"(["CIM:ProductName"])", R"(["Server X:Y:Z"])").product_name_,
              "Server X");
}

TEST_F(ComputerSystemQuery, TakesAProductNameWithoutColonWhole) {
    EXPECT_EQ(ReadSystem(R"(["CIM:ProductName"])", R"(["Server X"])").product_name_, "Server X");
}

TEST_F(ComputerSystemQuery, TakesAUuidWithColonsWhole) {
    EXPECT_EQ(ReadSystem(R"(["CIM:GUID"])", R"(["0011:AABB:22"])").uuid_, "0011:AABB:22");
}

TEST_F(ComputerSystemQuery, ReadsTheFirstSystemOnly) {
    HostBuilder host;
    Serve(host.Class(kHardwareNamespace, "IBM_ComputerSystem", kSystemProperties,
                     R"([{"Name": "a", "IdentifyingDescriptions": ["CIM:GUID"],
                          "OtherIdentifyingInfo": ["first"]},
                         {"Name": "b", "IdentifyingDescriptions": ["CIM:GUID", "CIM:ProductName"],
                          "OtherIdentifyingInfo": ["second", "Server X"]}])"));
    ComputerSystem record;
    EXPECT_EQ(Worker().GetComputerSystem(record), 0);
    EXPECT_EQ(record.uuid_, "first");
    EXPECT_EQ(record.product_name_, "");
}

TEST_F(ComputerSystemQuery, SucceedsWithoutAnySystem) {
    for (const bool has_chassis : {true, false}) {
        HostBuilder host;
        if (has_chassis) {
            AddChassis(host, kContoso);
        }
        Serve(host.Class(kHardwareNamespace, "IBM_ComputerSystem", kSystemProperties));
        ComputerSystem record;
        record.uuid_ = "before";
        Zentar::Agentless::KalvexCim worker(info);
        EXPECT_EQ(worker.GetComputerSystem(record), 0);
        EXPECT_EQ(record.manufacturer_, has_chassis ? "Contoso" : "");
        EXPECT_EQ(record.uuid_, "before");
    }
}

TEST_F(ComputerSystemQuery, LetsALaterDescriptionOverwriteAnEarlierOne) {
    const ComputerSystem record =
        ReadSystem(R"(["CIM:GUID", "CIM:GUID"])", R"(["first", "second"])");
    EXPECT_EQ(record.uuid_, "second");
}

TEST_F(ComputerSystemQuery, MatchesDescriptionsExactly) {
    const ComputerSystem record =
        ReadSystem(R"(["CIM:GUID ", "cim:guid", "CIM:Tag"])", R"(["a", "b", "c"])");
    EXPECT_EQ(record.uuid_, "");
}

/// Pairs of arrays that give nothing: of different length, empty, or NULL.
class UnequalIdentifyingInfo
    : public ComputerSystemQuery,
      public ::testing::WithParamInterface<std::pair<const char*, const char*>> {};

TEST_P(UnequalIdentifyingInfo, GivesNothingAndIsTraced) {
    const ComputerSystem record = ReadSystem(GetParam().first, GetParam().second);
    EXPECT_EQ(record.product_name_ + record.uuid_ + record.model_ + record.serial_number_, "");
    EXPECT_EQ(log.Texts(4).back(),
              "IBMComputerSystem Class IdentifyingDescriptions and OtherIdentifyingInfo array "
              "size don't equal.");
    EXPECT_THAT(log.Texts(1), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    ComputerSystemQuery, UnequalIdentifyingInfo,
    ::testing::Values(std::pair(R"(["CIM:GUID", "CIM:ProductName", "CIM:Model:SerialNumber"])",
                                R"(["0011", "Server X", "ABC:1234", "d"])"),
                      std::pair(R"(["CIM:GUID", "CIM:ProductName"])", R"(["0011"])"),
                      std::pair("[]", "[]"), std::pair("[]", R"(["0011"])"),
                      std::pair(R"(["CIM:GUID"])", "[]"), std::pair("null", "null"),
                      std::pair("null", R"(["0011"])"), std::pair(R"(["CIM:GUID"])", "null")));

/// The types and values of IdentifyingDescriptions and OtherIdentifyingInfo.
struct OddIdentifyingInfo {
    const char* description_type;
    const char* descriptions;
    const char* info_type;
    const char* infos;
    const char* last_trace;
};

constexpr const char* kLastOfChassis = "==========Version is : ============07";
constexpr const char* kFound =
    "IBMComputerSystem Class IdentifyingDescriptions and OtherIdentifyingInfo found.";

TEST_F(ComputerSystemQuery, PassesSilentlyOverIdentifyingInfoThatIsMissingOrNoStringArray) {
    const OddIdentifyingInfo cases[] = {
        {"string[]", R"(["CIM:GUID"])", nullptr, nullptr, kLastOfChassis},
        {nullptr, nullptr, "string[]", R"(["a"])", kLastOfChassis},
        {"string", R"("CIM:GUID")", "string[]", R"(["a"])", kFound},
        {"uint16[]", "[1]", "string[]", R"(["a"])", kFound},
        {"string[]", R"(["CIM:GUID"])", "string", R"("a")", kFound},
        {"string[]", R"(["CIM:GUID"])", "uint16[]", "[1]", kFound},
        {"string", R"("CIM:GUID")", "string", R"("a")", kFound},
    };
    for (const OddIdentifyingInfo& odd : cases) {
        std::string types = R"({"Name": "string")";
        std::string instance = R"([{"Name": "imm")";
        const auto add = [&](const std::string& name, const char* type, const char* value) {
            if (type != nullptr) {
                types += ", \"" + name + "\": \"" + type + "\"";
                instance += ", \"" + name + "\": " + value;
            }
        };
        add("IdentifyingDescriptions", odd.description_type, odd.descriptions);
        add("OtherIdentifyingInfo", odd.info_type, odd.infos);
        SCOPED_TRACE(instance);
        HostBuilder host;
        Serve(AddChassis(host, kContoso)
                  .Class(kHardwareNamespace, "IBM_ComputerSystem", types + "}", instance + "}]"));
        ComputerSystem record;
        Zentar::Agentless::KalvexCim worker(info);
        EXPECT_EQ(worker.GetComputerSystem(record), 0);
        EXPECT_EQ(record.uuid_, "");
        EXPECT_EQ(log.Texts(4).back(), odd.last_trace);
        EXPECT_THAT(log.Texts(1), IsEmpty());
    }
}

}  // namespace
