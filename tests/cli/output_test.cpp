// CSV, and outputs that go to files.
#include <filesystem>

#include "cli/command_test.h"

namespace clitest {
namespace {

namespace Faults = simhost::Faults;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAre;

class Output : public CommandTest {
protected:
    Output() { Serve(); }

    /// As text, the last line says how long it took.
    static std::string WithoutTime(const std::string& text) {
        return text.substr(0, text.find("\nRead "));
    }
    std::vector<std::string> NamesIn(const std::string& folder) const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(PathOf(folder))) {
            names.push_back(entry.path().filename());
        }
        return names;
    }
};

TEST_F(Output, CsvIsOneListWithItsHeader) {
    const Finished finished = Inventory({"os", "--format", "csv"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(
        finished.out,
        "host,name,version,build_number,manufacturer,last_start\r\n"
        "127.0.0.1,VMware ESXi,6.7.0,14320388,\"VMware, Inc.\",2024-01-02T03:04:05+00:00\r\n");
}

TEST_F(Output, CsvOfSeveralListsWantsAFolder) {
    for (const std::vector<std::string>& sections :
         {std::vector<std::string>{"pci"}, {"os", "system"}, {}}) {
        std::vector<std::string> arguments = sections;
        arguments.insert(arguments.end(), {"--format", "csv"});
        EXPECT_THAT(Inventory(arguments), Complains(2, "add --output-dir DIR for a file each"));
    }
    EXPECT_THAT(Server().requests(), IsEmpty());
}

TEST_F(Output, AFolderGetsAFileForEachListAndOneForFailures) {
    const Finished finished =
        Inventory({"os", "ports", "pci", "--format", "csv", "--output-dir", PathOf("new/folder")});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(NamesIn("new/folder"),
                UnorderedElementsAre("os.csv", "ports.csv", "pci_devices.csv", "pci_bridges.csv",
                                     "pci_slots.csv", "failures.csv"));
    EXPECT_EQ(ReadFile(PathOf("new/folder/os.csv")), Inventory({"os", "--format", "csv"}).out);
    EXPECT_EQ(ReadFile(PathOf("new/folder/failures.csv")),
              "host,section,kind,code,class,message\r\n");
}

TEST_F(Output, FailuresAreBesideTheLists) {
    Server().InjectFault(Faults::CimErrorElement(1, "out of luck"));
    EXPECT_EQ(Inventory({"os", "--format", "csv", "--output-dir", PathOf("folder")}).status, 3);
    EXPECT_EQ(ReadFile(PathOf("folder/os.csv")),
              "host,name,version,build_number,manufacturer,last_start\r\n");
    EXPECT_THAT(ReadFile(PathOf("folder/failures.csv")),
                HasSubstr("\r\n127.0.0.1,os,cim_error,1,VMware_HypervisorSoftwareIdentity,"));
}

TEST_F(Output, AFileHoldsWhatIsPrintedOtherwise) {
    for (const char* format : {"text", "csv"}) {
        const Finished finished =
            Inventory({"os", "--format", format, "--output", PathOf("inventory")});
        EXPECT_EQ(finished.status, 0) << finished.err;
        EXPECT_EQ(finished.out + finished.err, "");
        EXPECT_EQ(WithoutTime(ReadFile(PathOf("inventory"))),
                  WithoutTime(Inventory({"os", "--format", format}).out));
    }
    EXPECT_EQ(Inventory({"--format", "json", "--output", PathOf("inventory")}).status, 0);
    EXPECT_EQ(Json::parse(ReadFile(PathOf("inventory"))).at("sections"), Sections());
}

TEST_F(Output, ARunThatIsCutShortLeavesAWholeFile) {
    simhost::Fault stall = Faults::Stall();
    stall.after = 3;
    Server().InjectFault(stall);
    const Finished finished =
        Inventory({"--timeout", "1", "--format", "json", "--output", PathOf("inventory")});
    EXPECT_EQ(finished.status, 1);
    const Json document = Json::parse(ReadFile(PathOf("inventory")));
    EXPECT_EQ(document.at("status"), "partial");
    EXPECT_EQ(document.at("sections").at("pci_slots").at("status"), "skipped");
}

TEST_F(Output, AFileThatCannotBeWrittenIsReportedBeforeTheHostIsAsked) {
    EXPECT_THAT(Inventory({"os", "--output", PathOf("missing/file")}),
                Complains(2, "missing/file: No such file or directory"));
    EXPECT_THAT(Inventory({"os", "--output", PathOf("")}), Complains(2, "Is a directory"));
    EXPECT_THAT(Inventory({"os", "--format", "csv", "--output-dir", WriteFile("file", "")}),
                Complains(2, "cannot write into the folder"));
    EXPECT_THAT(Server().requests(), IsEmpty());
}

TEST_F(Output, AFullDiskIsOneLine) {
    for (const char* format : {"text", "json", "csv"}) {
        EXPECT_THAT(Inventory({"os", "--format", format, "--output", "/dev/full"}),
                    Complains(1, "/dev/full: No space left on device"));
    }
}

TEST_F(Output, OptionsThatContradictEachOtherAreRefused) {
    EXPECT_THAT(Inventory({"--output-dir", PathOf("folder")}), Complains(2, "add --format csv"));
    EXPECT_THAT(Inventory({"--format", "csv", "--output-dir", PathOf("folder"), "--output",
                           PathOf("file")}),
                Complains(2, "exclude each other"));
    EXPECT_FALSE(std::filesystem::exists(PathOf("folder")));
}

}  // namespace
}  // namespace clitest
