// Hosts and files that are not as they should be: one clear line, the right exit status, and
// whatever was read before.
#include <algorithm>

#include "cli/command_test.h"

namespace clitest {
namespace {

namespace Faults = simhost::Faults;
using simhost::Fault;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

using Words = std::vector<std::string>;

constexpr const char* kSshBanner = "SSH-2.0-OpenSSH_9.2p1\r\n";

class BadInput : public CommandTest {
protected:
    /// The lines of the command itself, without those of the log.
    static std::vector<std::string> Explanations(const Finished& finished) {
        std::vector<std::string> lines;
        std::istringstream err(finished.err);
        for (std::string line; std::getline(err, line);) {
            if (line.rfind("kalvex: ", 0) == 0) {
                lines.push_back(line);
            }
        }
        return lines;
    }

    /// Nothing was read, for the reason that one line with these parts gives.
    void ExpectNothingRead(const std::vector<std::string>& section, const std::string& meaning,
                           const std::string& remedy) {
        const Finished finished = Inventory(section);
        EXPECT_EQ(finished.status, 3);
        EXPECT_THAT(finished.out, HasSubstr("Could not be read: "));
        const auto lines = Explanations(finished);
        ASSERT_THAT(lines, SizeIs(1)) << finished.err;
        EXPECT_THAT(lines[0], AllOf(HasSubstr(meaning), HasSubstr(remedy)));
    }

    /// All was read but the ports, for the reason that one line with these parts gives.
    void ExpectAllButPortsRead(int status, const std::string& meaning, const std::string& remedy) {
        const Finished finished = Inventory();
        EXPECT_EQ(finished.status, status);
        EXPECT_THAT(
            finished.out,
            AllOf(HasSubstr("Installed packages (2)"),
                  HasSubstr("Ethernet ports\n==============\nCould not be read: " + meaning),
                  HasSubstr("System slots (1)")));
        const auto lines = Explanations(finished);
        ASSERT_THAT(lines, SizeIs(1)) << finished.err;
        EXPECT_THAT(lines[0],
                    AllOf(testing::StartsWith("kalvex: ports: " + meaning), HasSubstr(remedy)));
    }

    static Json WithoutClass(const std::string& ns, const std::string& class_name) {
        Json host = SmallHost();
        host["namespaces"][ns]["classes"].erase(class_name);
        host["namespaces"][ns]["associations"] = Json::array();
        return host;
    }
};

// Hosts that cannot be connected to: one attempt, no pause, one line.

TEST_F(BadInput, ClosedPortIsReportedAtOnceForEveryAddressOfAName) {
    const Finished finished = Run({"supported", "--host", "localhost", "--transport", "http",
                                   "--port", std::to_string(ClosedPort())});
    EXPECT_THAT(finished, Complains(3, "connecting to localhost port "));
}

TEST_F(BadInput, SilentPortIsReportedAfterTheConnectTimeout) {
    Serve(Https());
    Server().InjectFault(Faults::StallOnConnect());
    EXPECT_THAT(Inventory({"--connect-timeout", "0.2"}),
                Complains(3, "did not answer in time (while making the TLS connection"));
}

TEST_F(BadInput, PlainHttpInPlaceOfTlsPointsToTheTransport) {
    Serve(Http());
    for (const char* command : {"inventory", "supported"}) {
        const Finished finished = Run({command, "--host", "127.0.0.1", "--connect-timeout", "0.2",
                                       "--port", std::to_string(Server().port())});
        EXPECT_THAT(finished, Complains(3, "--transport"));
    }
}

TEST_F(BadInput, ConnectionClosedDuringTlsIsReportedAtOnce) {
    Serve(Https());
    Server().InjectFault(Faults::CloseOnConnect());
    EXPECT_THAT(Inventory(), Complains(3, "while making the TLS connection"));
}

// While the module reads.

TEST_F(BadInput, WrongPasswordIsExplainedOnceForAllSections) {
    Serve(WithAccount());
    const Finished finished =
        Run({ToHost("inventory", {"--user", kUser}), {{"KALVEX_PASSWORD", "wrong-secret"}}});
    EXPECT_EQ(finished.status, 3);
    const auto lines = Explanations(finished);
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0],
              "kalvex: system, os, packages, events, privileges, ports, ipv4, ipv6, pci_devices, "
              "pci_bridges, pci_slots: the host "
              "refused the user name or password, or the account lacks the CIM permission (HTTP "
              "Error (401 Unauthorized).); check --user and the password");
    EXPECT_THAT(finished.out + finished.err, Not(HasSubstr("wrong-secret")));
}

TEST_F(BadInput, WrongPasswordLeavesNothingReadWhicheverSectionIsAskedFor) {
    Serve(WithAccount(Https()));
    for (const char* section :
         {"system", "os", "packages", "events", "privileges", "ports", "ipv4", "ipv6", "pci"}) {
        const Finished finished = Run({ToHost("inventory", {section, "--user", kUser}),
                                       {{"KALVEX_PASSWORD", "wrong-secret"}}});
        EXPECT_EQ(finished.status, 3) << section;
        const auto lines = Explanations(finished);
        ASSERT_THAT(lines, SizeIs(1)) << finished.err;
        EXPECT_THAT(lines[0], AllOf(testing::StartsWith("kalvex: " + std::string(section)),
                                    HasSubstr(": the host refused the user name or password")));
    }
}

TEST_F(BadInput, MissingAccountIsRefusedLikeAWrongPassword) {
    Serve(WithAccount());
    ExpectNothingRead({"os"}, "refused the user name or password", "check --user");
}

TEST_F(BadInput, WrongPasswordIsOfferedOnce) {
    Serve(WithAccount());
    Run({ToHost("inventory", {"--user", kUser}), {{"KALVEX_PASSWORD", "wrong-secret"}}});
    EXPECT_EQ(std::ranges::count_if(Server().requests(),
                                    [](const simhost::Request& request) {
                                        return request.head.find("Authorization:") !=
                                               std::string::npos;
                                    }),
              1);
}

TEST_F(BadInput, WrongPasswordStillGivesACompleteJsonObject) {
    Serve(WithAccount());
    const Json sections =
        Sections({"--user", kUser, "--password-file", WriteFile("pw", "no\n")}, 3);
    EXPECT_THAT(sections, SizeIs(11));
    EXPECT_EQ(sections.at("system").at("status"), "failed");
    EXPECT_EQ(sections.at("packages"), Json::parse(R"({"status": "skipped", "records": []})"));
    EXPECT_EQ(sections.at("pci_slots"), Json::parse(R"({"status": "skipped", "records": []})"));
}

TEST_F(BadInput, HtmlPageIsNotACimServer) {
    Serve();
    Server().InjectFault(Faults::Raw(
        "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 6\r\n\r\n<html>"));
    ExpectNothingRead({"os"}, "it is not a CIM server", "check --host, --port and --transport");
}

TEST_F(BadInput, WebServerThatDoesNotKnowThePathIsNotACimServer) {
    Serve();
    Server().InjectFault(Faults::HttpStatus(404, "Not Found"));
    ExpectNothingRead({"os"}, "it is not a CIM server", "HTTP Error (404 Not Found).");
}

TEST_F(BadInput, SshBannerInPlaceOfHttpIsNotACimServer) {
    Serve();
    Server().InjectFault(Faults::Raw(kSshBanner));
    ExpectNothingRead({"os"}, "it is not a CIM server", "check --host, --port and --transport");
}

TEST_F(BadInput, PlainHttpToATlsPortPointsToTheTransport) {
    Serve(Https());
    const Words by_http{"--host",      "127.0.0.1", "--port", std::to_string(Server().port()),
                        "--transport", "http"};
    for (Words arguments : {Words{"inventory", "os"}, Words{"supported"}}) {
        arguments.insert(arguments.end(), by_http.begin(), by_http.end());
        const Finished finished = Run(arguments);
        EXPECT_EQ(finished.status, 3);
        const auto lines = Explanations(finished);
        ASSERT_THAT(lines, SizeIs(1)) << finished.err;
        EXPECT_THAT(lines[0], HasSubstr("closed the connection unanswered"));
    }
}

TEST_F(BadInput, TlsAlertInPlaceOfHttpPointsToTheTransport) {
    Serve();
    Server().InjectFault(Faults::Raw({"\x15\x03\x01\0\x02\x02\x16", 7}));
    ExpectNothingRead({"os"}, "it is not a CIM server", "--transport");
}

TEST_F(BadInput, ReplyCutInHalfIsExplainedWhereverItIsCut) {
    Serve();
    for (const std::size_t bytes : {200U, 400U, 700U, 701U, 705U, 720U}) {
        Server().ClearFaults();
        Server().InjectFault(Faults::Truncate(bytes));
        ExpectNothingRead({"os"}, "reply is damaged", "try again");
    }
}

TEST_F(BadInput, ConnectionClosedWithoutAnAnswerIsExplained) {
    Serve();
    Server().InjectFault(Faults::Close());
    ExpectNothingRead({"os"}, "closed the connection", "--transport");
}

TEST_F(BadInput, OverloadedHostIsExplained) {
    Serve();
    Server().InjectFault(Faults::HttpStatus(503, "Service Unavailable"));
    ExpectNothingRead({"os"}, "overloaded", "try again");
}

TEST_F(BadInput, WhatIsReadBesideAMissingClassIsPrinted) {
    Serve(WithoutClass("root/cimv2", "VMware_EthernetPort"));
    ExpectAllButPortsRead(0, "the host does not have this kind of inventory: the class is unknown",
                          "install the CIM provider");
}

TEST_F(BadInput, WhatIsReadBesideAReplyCutInHalfIsPrinted) {
    Serve();
    Fault cut = Faults::Truncate(700);
    cut.only_class = "VMware_EthernetPort";
    Server().InjectFault(cut);
    ExpectAllButPortsRead(1, "the host's reply is damaged", "try again");
}

TEST_F(BadInput, WhatTheHostDoesNotHaveIsMarkedAndIsAFailureOnlyWhenStrict) {
    Serve(WithoutClass("root/cimv2", "VMware_EthernetPort"));
    const Json document = Document({});
    EXPECT_EQ(document.at("status"), "ok");
    const Json& sections = document.at("sections");
    EXPECT_EQ(sections.at("ports"), Json::parse(R"({"status": "unavailable", "records": []})"));
    EXPECT_EQ(sections.at("ipv6"), Json::parse(R"({"status": "ok", "records": []})"));
    EXPECT_EQ(document.at("failures").at(0).at("section"), "ports");
    EXPECT_EQ(Document({"--strict"}, 1).at("status"), "partial");
}

TEST_F(BadInput, APciListThatFailedDoesNotLookLikeAnEmptyOne) {
    Serve(WithoutClass("root/ibmsd", "IBMSG_SystemSlot"));
    const Finished finished = Inventory({"pci"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.out, AllOf(HasSubstr("PCI devices (1)"),
                                    HasSubstr("System slots\n============\nCould not be read: ")));
    EXPECT_EQ(Sections({"pci"}).at("pci_slots").at("status"), "unavailable");
}

TEST_F(BadInput, HostWithoutTheHardwareNamespaceIsReadInPart) {
    Json host = SmallHost();
    host["namespaces"].erase("ibm/imm0/cimv2");
    Serve(host);
    const Finished finished = Inventory({"system"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.out, AllOf(HasSubstr("Manufacturer   Contoso"),
                                    HasSubstr("Read in part: the host does not have")));
    const auto lines = Explanations(finished);
    ASSERT_THAT(lines, SizeIs(1)) << finished.err;
    EXPECT_THAT(lines[0], HasSubstr("namespace is unknown"));
}

TEST_F(BadInput, AReasonFromTheHostCannotForgeALine) {
    Serve();
    Server().InjectFault(Faults::CimErrorElement(1, "x\nkalvex: forged\x1B[2J"));
    const Finished finished = Inventory({"os"});
    EXPECT_THAT(Explanations(finished), SizeIs(1)) << finished.err;
    EXPECT_EQ(finished.err.find('\x1B'), std::string::npos);
    EXPECT_EQ(finished.out.find('\x1B'), std::string::npos);
}

// Files.

TEST_F(BadInput, BrokenHostDescriptionIsReportedWithItsMessage) {
    const std::string file = WriteFile("broken.json", "{\"name\": ");
    EXPECT_THAT(Run({"inventory", "--simulated", file}), Complains(2, "broken.json"));
    EXPECT_THAT(Run({"simulate", file}), Complains(2, "broken.json"));
}

TEST_F(BadInput, MissingHostDescriptionIsReported) {
    EXPECT_THAT(Run({"inventory", "--simulated", PathOf("missing.json")}),
                Complains(2, "missing.json"));
}

TEST_F(BadInput, UnwritableLogFileIsReported) {
    const std::string file = PathOf("no/such/folder/log");
    EXPECT_THAT(Run({"inventory", "--simulated", "--log-file", file}),
                Complains(2, "cannot write the log file: " + file + ": No such file"));
    EXPECT_THAT(Run({"inventory", "--simulated", "--log-file", PathOf("")}),
                Complains(2, "Is a directory"));
}

}  // namespace
}  // namespace clitest
