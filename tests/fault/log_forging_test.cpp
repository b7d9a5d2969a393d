// Whatever texts a host sends, each line of the log is the module's own, or stands indented under
// it.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <regex>

#include "common/log/log_control.h"
#include "common/text/visible_text.h"
#include "module/transcripts/operations.h"
#include "support/inventory_test.h"

namespace {

using simhost::Transport;
using ::testing::Contains;
using ::testing::HasSubstr;
namespace Faults = simhost::Faults;

/// Ends lines and commands terminals in every way that there is, and then poses as a message. In
/// JSON's notation.
constexpr const char* kHostileJson =
    R"(a\n2026-11-21T05:47:31.123456Z [1] cimfunc.cpp:1 forged\r2026-11-21T05:47:31.123456Z [1] )"
    R"(forged\r\nforged\u001b[2K\u001b[1A)"
    R"(\u202e\u2066\u200b\u200d\u034f\u3164\ufeff\udb40\udc41\\u{202E}\\x1B)"
    R"(forged\u0000forged\u0008\u007f\u0085forged\u009b2K\u2028)"
    R"(2026-11-21T05:47:31.123456Z [1] cimfunc.cpp:1 forged\u2029forged\u000b\u000cforged)";

/// The same for places of which the host's description knows nothing.
constexpr const char* kHostile =
    "a\n2026-11-21T05:47:31.123456Z [1] cimfunc.cpp:1 forged\rforged\x1B[2K\xC2\x85\xC2\x9B"
    "2K\xE2\x80\xA8"
    "forged\xE2\x80\xA9\x7F\xFF\x9B\u202E\u2066\u200B\uFEFF\\u{202E}";

std::string ObjectOf(std::initializer_list<const char*> names, const std::string& text) {
    std::string object;
    for (const char* name : names) {
        object += (object.empty() ? "{\"" : ", \"") + std::string(name) + "\": \"" + text + '"';
    }
    return object + "}";
}

/// Adds a class of one instance, whose every property holds the hostile text.
void AddHostile(support::HostBuilder& host, const char* ns, const char* name,
                std::initializer_list<const char*> properties) {
    host.Class(ns, name, ObjectOf(properties, "string"),
               "[" + ObjectOf(properties, kHostileJson) + "]");
}

simhost::HostDescription HostileHost() {
    support::HostBuilder host;
    AddHostile(host, "root/cimv2", "OMC_Chassis", {"Tag", "Manufacturer", "Version"});
    AddHostile(host, "root/cimv2", "VMware_HypervisorSoftwareIdentity",
               {"InstanceID", "VersionString", "Name", "Manufacturer"});
    AddHostile(host, "root/cimv2", "VMware_ComponentSoftwareIdentity",
               {"InstanceID", "ElementName", "VersionString", "Description"});
    AddHostile(host, "root/cimv2", "OMC_IpmiLogRecord", {"RecordID", "ElementName"});
    AddHostile(host, "root/cimv2", "VMware_Privilege", {"InstanceID", "ElementName"});
    AddHostile(host, "root/cimv2", "VMware_EthernetPort", {"DeviceID", "Name", "Speed"});
    AddHostile(host, "root/cimv2", "VMware_KernelIPv4ProtocolEndpoint", {"Name", "IPv4Address"});
    AddHostile(host, support::kHardwareNamespace, "IBM_ComputerSystem", {"Name", "ElementName"});
    AddHostile(host, "root/ibmsd", "IBMSG_PCIBridge", {"DeviceID", "ClassCode"});
    AddHostile(host, "root/ibmsd", "IBMSG_SystemSlot", {"Tag", "SlotAllInfo"});
    host.Class("root/ibmsd", "IBMSG_PCIDevice",
               R"({"DeviceID": "string", "ClassCode": {"type": "string", "qualifiers": {)"
               R"("ValueMap": ["2", ")" +
                   std::string(kHostileJson) + R"("], "Values": ["x", ")" + kHostileJson +
                   R"("]}}})",
               R"([{"DeviceID": "d", "ClassCode": ")" + std::string(kHostileJson) + R"("}])");
    return host.Build();
}

/// Whether anything but a tab would be invisible, or drive what shows the line.
bool HasHidden(std::string_view line) {
    while (!line.empty()) {
        const Zentar::TextUnit unit = Zentar::FirstUnit(line);
        if (unit.code < 0 || (Zentar::IsHidden(unit.code) && unit.code != '\t')) {
            return true;
        }
        line.remove_prefix(unit.bytes.size());
    }
    return false;
}

class LogForging : public support::InventoryTest {
protected:
    LogForging() {
        Zentar::SetLogSink([this](const Zentar::LogMessage& message) {
            ++messages;
            Zentar::WriteLogMessage(message);
        });
        EXPECT_EQ(Zentar::LogToFile(file), "");
    }
    ~LogForging() override {
        Zentar::LogToStandardError();
        std::filesystem::remove(file);
    }

    void ReadWholeInventory() {
        Zentar::Agentless::Kalvex host(info);
        for (const transcripts::Operation& operation : transcripts::Operations()) {
            operation.run(host);
        }
        support::TakePauses();
    }

    std::vector<std::string> Lines() const {
        std::ifstream stream(file, std::ios::binary);
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    /// As many messages as the module wrote, nothing but indented lines between them, and no
    /// character that moves a cursor or ends a line for some viewer.
    void ExpectNothingForged() const {
        static const std::regex prefix(
            R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{6}Z \[[1-4]\] \w+\.cpp:\d+ .*)");
        std::size_t begun = 0;
        for (const std::string& line : Lines()) {
            const bool is_message = std::regex_match(line, prefix);
            EXPECT_TRUE(is_message || line.starts_with("    ")) << line;
            EXPECT_FALSE(HasHidden(line)) << line;
            begun += is_message ? 1U : 0U;
        }
        EXPECT_EQ(begun, messages);
    }

    const std::string file =
        ::testing::TempDir() + "/log_forging_test." + std::to_string(::getpid());
    std::size_t messages = 0;
};

TEST_F(LogForging, IsImpossibleWithValues) {
    Serve(HostileHost(), Http());
    ReadWholeInventory();
    ExpectNothingForged();
    EXPECT_GT(messages, 150U);
    EXPECT_THAT(Lines(), Contains("    2026-11-21T05:47:31.123456Z [1] cimfunc.cpp:1 "
                                  "forged\\r2026-11-21T05:47:31.123456Z [1] forged\\r"));
    EXPECT_THAT(Lines(), Contains(HasSubstr("\\u{FEFF}\\u{E0041}\\\\u{202E}\\\\x1B")));
}

TEST_F(LogForging, IsImpossibleWithReasonsOfFailures) {
    Serve(HostileHost(), Http());
    for (const simhost::Fault& way :
         {Faults::CimErrorElement(1, kHostile), Faults::CimErrorElement(4, kHostile),
          Faults::CimErrorTrailer(1, kHostile), Faults::HttpStatus(503, kHostile),
          Faults::HttpStatus(400, "Bad Request", kHostile), Faults::ContentType(kHostile),
          Faults::OperationHeader(kHostile), Faults::MessageId(kHostile), Faults::Raw(kHostile),
          Faults::Raw("HTTP/1.1 401 a\x1B[2K\r\n\r\n"),
          Faults::Raw("HTTP/1.1 200 OK\r\nContent-Type: application/xml\r\n\r\n<a>\x1B\r<b\n")}) {
        Server().ClearFaults();
        Server().InjectFault(way);
        const std::size_t before = messages;
        ReadWholeInventory();
        EXPECT_GT(messages, before);
    }
    ExpectNothingForged();
    EXPECT_THAT(Lines(), Contains(HasSubstr("\\x1B[2K")));
}

}  // namespace
