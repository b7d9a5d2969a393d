// What `kalvex inventory` prints for a host that answers.
#include <algorithm>
#include <sstream>

#include "cli/command_test.h"

namespace clitest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class InventoryCommand : public CommandTest {
protected:
    static std::vector<std::string> KeysOf(const Json& object) {
        std::vector<std::string> keys;
        for (const auto& [key, value] : object.items()) {
            keys.push_back(key);
        }
        return keys;
    }

    /// The classes that the host was asked for, in order.
    std::vector<std::string> ClassesAsked() {
        std::vector<std::string> classes;
        for (const simhost::Request& request : Server().requests()) {
            classes.push_back(request.class_name);
        }
        return classes;
    }
};

TEST_F(InventoryCommand, JsonHoldsEveryFieldOfEverySection) {
    Serve();
    const Finished finished = Inventory({"--format", "json"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    const Json document = Json::parse(finished.out);
    EXPECT_THAT(KeysOf(document),
                ElementsAre("schema", "kalvex", "host", "port", "transport", "started_at",
                            "seconds", "status", "sections", "failures"));
    EXPECT_EQ(document.at("schema"), "kalvex/1");
    EXPECT_EQ(document.at("host"), "127.0.0.1");
    EXPECT_EQ(document.at("port"), Server().port());
    EXPECT_EQ(document.at("transport"), "http");
    EXPECT_EQ(document.at("status"), "ok");
    EXPECT_EQ(document.at("sections").dump(2) + '\n',
              ReadFile(TestData("small-host.sections.json")));
    EXPECT_EQ(document.at("failures"), Json::array());
    EXPECT_THAT(finished.out, HasSubstr("\\u009b")) << "drives terminals";
}

TEST_F(InventoryCommand, TextIsHeadedAlignedAndSafe) {
    Serve();
    const Finished finished = Inventory();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_EQ(WithoutSeconds(finished.out),
              "127.0.0.1:" + std::to_string(Server().port()) +
                  "  Contoso™ System x3550  VMware ESXi 6.7.0 build 14320388\n\n" +
                  ReadFile(TestData("small-host.text")));
}

TEST_F(InventoryCommand, TextHasTheColumnsThatAreAskedForAndNoColourInAPipe) {
    const auto longest = [](const std::string& columns) {
        const Finished finished =
            Run(Start{{"inventory", "--simulated"}, {{"COLUMNS", columns}}, {}, false});
        EXPECT_EQ(finished.status, 0) << finished.err;
        EXPECT_THAT(finished.out, testing::Not(HasSubstr("\x1B")));
        std::size_t most = 0;
        std::istringstream text(finished.out);
        for (std::string line; std::getline(text, line);) {
            const auto is_first = [](char c) {
                return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
            };
            most = std::max(most, static_cast<std::size_t>(std::ranges::count_if(line, is_first)));
        }
        return most;
    };
    EXPECT_EQ(longest("60"), 60U);
    EXPECT_EQ(longest("120"), 120U);
}

TEST_F(InventoryCommand, OverHttpsWithAnAccountIsTheSame) {
    Serve(WithAccount(Https()));
    const Finished finished = Run({ToHost("inventory", {"--user", kUser, "--format", "json"}),
                                   {{"KALVEX_PASSWORD", kPassword}}});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(Json::parse(finished.out).at("sections"),
              Json::parse(ReadFile(TestData("small-host.sections.json"))));
}

TEST_F(InventoryCommand, SectionsComeInTheirFixedOrderWithPciLast) {
    Serve();
    EXPECT_THAT(KeysOf(Sections({"pci", "ipv4", "system"})),
                ElementsAre("system", "ipv4", "pci_devices", "pci_bridges", "pci_slots"));
}

TEST_F(InventoryCommand, AllSectionsAreReadByDefault) {
    Serve();
    EXPECT_THAT(KeysOf(Sections()),
                ElementsAre("system", "os", "packages", "events", "privileges", "ports", "ipv4",
                            "ipv6", "pci_devices", "pci_bridges", "pci_slots"));
}

TEST_F(InventoryCommand, OnlyTheNamedSectionsAreAskedFor) {
    Serve();
    EXPECT_EQ(Inventory({"packages", "os"}).status, 0);
    EXPECT_THAT(ClassesAsked(), ElementsAre("VMware_HypervisorSoftwareIdentity",
                                            "VMware_ComponentSoftwareIdentity"));
}

TEST_F(InventoryCommand, AClassWithoutInstancesIsAnEmptyListAndNoFailure) {
    Serve();
    const Finished finished = Inventory({"ipv6"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.out, HasSubstr("IPv6 endpoints\n==============\nThe host has none.\n"));
}

TEST_F(InventoryCommand, HostMayBeGivenByName) {
    Serve();
    const Finished finished = Run({"inventory", "os", "--host", "localhost", "--transport", "http",
                                   "--port", std::to_string(Server().port())});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.out, testing::StartsWith("localhost:"));
}

TEST_F(InventoryCommand, SimulatedReadsTheBuiltInHostOverHttps) {
    const Finished finished = Run({"inventory", "--simulated", "--format", "json"});
    ASSERT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.err, "");
    const Json inventory = Json::parse(finished.out);
    EXPECT_EQ(inventory.at("host"), "127.0.0.1");
    EXPECT_GT(inventory.at("port"), 0);
    const Json& sections = inventory.at("sections");
    for (const auto& [name, section] : sections.items()) {
        EXPECT_EQ(section.at("status"), "ok") << name;
    }
    EXPECT_NE(sections.at("system").at("record").at("serial_number"), nullptr);
    EXPECT_NE(sections.at("os").at("record").at("build_number"), nullptr);
    EXPECT_THAT(sections.at("packages").at("records"), SizeIs(testing::Gt(100U)));
    EXPECT_THAT(sections.at("events").at("records"), SizeIs(300));
    EXPECT_THAT(sections.at("privileges").at("records"), SizeIs(12));
    EXPECT_THAT(sections.at("ports").at("records"), SizeIs(4));
    EXPECT_THAT(sections.at("ipv4").at("records"), SizeIs(2));
    EXPECT_THAT(sections.at("ipv6").at("records"), SizeIs(2));
    EXPECT_THAT(sections.at("pci_devices").at("records"), SizeIs(40));
    EXPECT_THAT(sections.at("pci_bridges").at("records"), SizeIs(16));
    EXPECT_THAT(sections.at("pci_slots").at("records"), SizeIs(8));
}

TEST_F(InventoryCommand, SimulatedTextShowsWideTextsAndCounts) {
    const Finished finished = Run({"inventory", "--simulated"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("\nIPMI event log (300)\n====================\n"));
    EXPECT_THAT(finished.out, HasSubstr("\nSystem slots (8)\n"));
}

TEST_F(InventoryCommand, SimulatedReadsADescribedHostByEitherTransport) {
    for (const char* transport : {"http", "https"}) {
        const Finished finished = Run({"inventory", "os", "--simulated",
                                       TestData("small-host.json"), "--transport", transport});
        EXPECT_EQ(finished.status, 0) << finished.err;
        EXPECT_THAT(finished.out, HasSubstr("  14320388\n"));
    }
}

TEST_F(InventoryCommand, ASectionMayFollowSimulated) {
    const Finished finished = Run({"inventory", "--simulated", "os", "--format", "json"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(KeysOf(Json::parse(finished.out).at("sections")), ElementsAre("os"));
}

TEST_F(InventoryCommand, NoSuchPropertyIsADash) {
    Json host = SmallHost();
    host["namespaces"]["root/cimv2"]["classes"]["OMC_Chassis"]["instances"][0].erase("Version");
    Serve(host);
    EXPECT_THAT(Inventory({"system"}).out, HasSubstr("Version        -\n"));
    EXPECT_EQ(Sections({"system"}).at("system").at("record").at("version"), nullptr);
}

TEST_F(InventoryCommand, AHugeValueAmongThousandsOfRowsIsShortenedAsTextAndWholeInJson) {
    const std::string huge(100'000, 'h');
    Json host = SmallHost();
    Json& rows =
        host["namespaces"]["root/cimv2"]["classes"]["VMware_ComponentSoftwareIdentity"]["rows"] =
            Json::array();
    for (int i = 0; i < 2000; ++i) {
        rows.push_back({std::to_string(i), "driver", "1.0", "text"});
    }
    rows.push_back({"huge", huge, huge, huge});
    Serve(host);
    const Finished text = Inventory({"packages"});
    EXPECT_EQ(text.status, 0) << text.err;
    const Finished json = Inventory({"packages", "--format", "json"});
    EXPECT_LT(text.out.size(), json.out.size());
    EXPECT_THAT(text.out, HasSubstr("hhh…"));
    EXPECT_TRUE(json.out.find('"' + huge + '"') != std::string::npos);
}

TEST_F(InventoryCommand, LogGoesToStandardErrorAtTheLevelAskedFor) {
    Serve();
    EXPECT_THAT(Inventory({"os", "--log-level", "3"}).err,
                testing::AllOf(HasSubstr(" [3] cimfunc.cpp:"), HasSubstr("build_number:14320388"),
                               testing::Not(HasSubstr(" [4] "))));
    EXPECT_EQ(Inventory({"os"}).err, "");
}

TEST_F(InventoryCommand, StandardOutputCarriesTheInventoryAloneHoweverMuchIsLogged) {
    Serve();
    const Finished loud = Inventory({"--log-level", "4"});
    EXPECT_EQ(loud.status, 0);
    EXPECT_NE(loud.err, "");
    EXPECT_EQ(WithoutSeconds(loud.out), WithoutSeconds(Inventory({"--log-level", "0"}).out));
    EXPECT_EQ(Sections({"--log-level", "4"}), Sections({"--log-level", "0"}));
}

TEST_F(InventoryCommand, LogGoesToAFileInstead) {
    Serve();
    const Finished finished =
        Inventory({"os", "--log-level", "4", "--log-file", PathOf("kalvex.log")});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    const std::string log = ReadFile(PathOf("kalvex.log"));
    EXPECT_THAT(log, HasSubstr(" [4] kalvex.cpp:"));
    EXPECT_THAT(log, HasSubstr("Calling Kalvex::GetOperationSystem\n"));
    EXPECT_THAT(log, HasSubstr("Calling destructor of Kalvex\n"));
}

TEST_F(InventoryCommand, NothingIsLoggedUnlessAskedForButFailuresAreExplained) {
    Serve();
    Server().InjectFault(simhost::Faults::CimErrorElement(1, "out of luck"));
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"os"}, {"os", "--log-level", "0"}}) {
        EXPECT_EQ(Inventory(arguments).err,
                  "kalvex: os: the host reported an error (out of luck); try again, and look into "
                  "the host's CIM service if it persists\n");
    }
}

TEST_F(InventoryCommand, ALogFileAloneIsWrittenAtLevelOne) {
    Serve();
    Server().InjectFault(simhost::Faults::CimErrorElement(1, "out of luck"));
    const Finished finished = Inventory({"os", "--log-file", PathOf("kalvex.log")});
    EXPECT_THAT(finished, testing::Field(&Finished::err, testing::StartsWith("kalvex: os: ")));
    EXPECT_THAT(ReadFile(PathOf("kalvex.log")),
                testing::AllOf(HasSubstr(" [1] "), testing::Not(HasSubstr(" [2] ")),
                               testing::Not(HasSubstr(" [3] "))));
}

TEST_F(InventoryCommand, FullDiskIsReported) {
    const Finished finished = RunProcess(
        "/bin/sh", {{"-c", "exec \"$0\" inventory os --simulated > /dev/full", KALVEX_COMMAND}});
    EXPECT_THAT(finished, Complains(1, "standard output could not be written"));
}

}  // namespace
}  // namespace clitest
