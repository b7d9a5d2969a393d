// `kalvex schema`, and that every document of `kalvex inventory --format json` is as it says.
#include "cli/command_test.h"

namespace clitest {
namespace {

namespace Faults = simhost::Faults;
using testing::HasSubstr;
using testing::Not;

class SchemaCommand : public CommandTest {
protected:
    SchemaCommand() : schema_(WriteFile("schema.json", Run({"schema", "--format", "json"}).out)) {}

    /// What a validator that is not ours says of a document.
    Finished Validated(const std::string& document, std::vector<std::string> more = {}) const {
        std::vector<std::string> arguments{CLI_TEST_SCRIPTS "/validate.py", schema_,
                                           WriteFile("document.json", document)};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return RunProcess(KALVEX_PYTHON, {arguments});
    }
    void ExpectValid(const std::string& document) const {
        const Finished validated = Validated(document);
        EXPECT_EQ(validated.status, 0) << validated.out << validated.err << document;
    }
    void ExpectInventoryIsValid(std::vector<std::string> more, int expected_status) const {
        more.insert(more.end(), {"--format", "json"});
        const Finished finished = Inventory(more);
        EXPECT_EQ(finished.status, expected_status) << finished.err;
        ExpectValid(finished.out);
    }
    /// The class of the small host's description.
    static Json& ClassOf(Json& host, const std::string& name) {
        return host["namespaces"]["root/cimv2"]["classes"][name];
    }

    const std::string schema_;
};

TEST_F(SchemaCommand, DescribesTheBuiltInHost) {
    ExpectValid(Run({"inventory", "--simulated", "--format", "json"}).out);
}

TEST_F(SchemaCommand, DescribesChosenSections) {
    Serve();
    ExpectInventoryIsValid({"os", "pci"}, 0);
}

TEST_F(SchemaCommand, DescribesAHostThatCannotBeReached) {
    ExpectValid(Run({"inventory", "--host", "127.0.0.1", "--port", std::to_string(ClosedPort()),
                     "--format", "json"})
                    .out);
}

TEST_F(SchemaCommand, DescribesAHostThatIsReadInPart) {
    Serve();
    Server().InjectFault(Faults::CimErrorElement(1, "out of luck"));
    ExpectInventoryIsValid({}, 3);
    simhost::Fault stall = Faults::Stall();
    stall.after = 3;
    Server().ClearFaults();
    Server().InjectFault(stall);
    ExpectInventoryIsValid({"--request-timeout", "0.3"}, 1);
}

TEST_F(SchemaCommand, DescribesAHostWithoutNamespaces) {
    Json host = SmallHost();
    host["namespaces"].erase("root/ibmsd");
    Serve(host);
    ExpectInventoryIsValid({}, 0);
}

TEST_F(SchemaCommand, DescribesValuesThatDoNotFitTheirTypes) {
    Json host = SmallHost();
    Json& os = ClassOf(host, "VMware_HypervisorSoftwareIdentity");
    os["properties"]["LastStartTime"] = "string";
    os["instances"][0]["LastStartTime"] = "yesterday";
    Serve(host);
    EXPECT_EQ(Sections({"os"}).at("os").at("record").at("last_start"), "yesterday");
    ExpectInventoryIsValid({"os"}, 0);
}

TEST_F(SchemaCommand, RefusesOtherKeysAndMissingOnes) {
    Serve();
    Server().InjectFault(Faults::CimErrorElement(1, "out of luck"));
    const Finished failing = Inventory({"--format", "json"});
    EXPECT_EQ(Validated(failing.out, {"changes"}).out, "\n");
    Server().ClearFaults();
    EXPECT_EQ(Validated(Inventory({"--format", "json"}).out, {"changes"}).out, "\n");
}

TEST_F(SchemaCommand, RefusesValuesOfOtherTypes) {
    Serve();
    Json document = Document({"os"});
    document["sections"]["os"]["status"] = "fine";
    document["sections"]["os"]["record"]["name"] = 1;
    document["started_at"] = "today";
    const Finished validated = Validated(document.dump());
    EXPECT_EQ(validated.status, 1);
    for (const char* place :
         {"$.sections.os.status: ", "$.sections.os.record.name: ", "$.started_at: "}) {
        EXPECT_THAT(validated.out, HasSubstr(place));
    }
}

TEST_F(SchemaCommand, FieldsInTheDocumentsAreCurrent) {
    EXPECT_EQ(Run({"schema", "--format", "markdown"}).out, ReadFile(KALVEX_DOCS "/fields.md"))
        << "write it with: kalvex schema --format markdown > docs/fields.md";
}

TEST_F(SchemaCommand, TextNamesSectionsFieldsTypesAndMeanings) {
    const Finished text = Run({"schema"});
    EXPECT_EQ(text.status, 0) << text.err;
    EXPECT_THAT(text.out, HasSubstr("ports: Ethernet ports\n  root/cimv2, VMware_EthernetPort\n"));
    EXPECT_THAT(text.out, HasSubstr("pci_slots: System slots, read with pci\n"));
    EXPECT_THAT(text.out, HasSubstr("integer (bit/s)  Speed of the link now.\n"));
    EXPECT_THAT(text.out, HasSubstr("by the host's clock. [varies]\n"));
    EXPECT_THAT(text.out, Not(HasSubstr("log_")));
}

}  // namespace
}  // namespace clitest
