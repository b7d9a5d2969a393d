// Failures as the facade hands them out.
#include <tuple>

#include "support/inventory_test.h"

namespace {

using namespace Zentar;
using simhost::Fault;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
namespace Faults = simhost::Faults;

class Failures : public support::InventoryTest {
protected:
    Failures() { info.user = "root"; }

    void ServeBuiltin(simhost::ServerOptions options = Http()) {
        Serve(simhost::HostDescription::Builtin(), std::move(options));
    }

    /// The failures of reading the packages of the host.
    std::vector<Failure> OfPackages() {
        std::vector<ZentarAgentless::InstalledPackage> packages;
        EXPECT_EQ(Host().GetInstalledPackages(packages), 1);
        return Host().TakeFailures().failures;
    }

    /// The one failure of reading them while the host has this fault.
    Failure OfPackagesWith(const Fault& fault) {
        ServeBuiltin();
        Server().InjectFault(fault);
        const auto failures = OfPackages();
        return failures.size() == 1 ? failures[0] : Failure();
    }
};

TEST_F(Failures, AreNoneWhenAllIsRead) {
    ServeBuiltin();
    std::vector<ZentarAgentless::InstalledPackage> packages;
    Pciinventory::Pciinfo pci;
    EXPECT_EQ(Host().GetInstalledPackages(packages), 0);
    EXPECT_EQ(Host().GetPCIInfo(pci), 0);
    EXPECT_THAT(Host().TakeFailures().failures, IsEmpty());
}

TEST_F(Failures, NameWhatWasAskedFor) {
    const Failure failure = OfPackagesWith(Faults::CimErrorElement(1, "provider died"));
    EXPECT_EQ(failure.kind, FailureKind::kCimError);
    EXPECT_EQ(failure.code, 1);
    EXPECT_EQ(failure.operation, "EnumerateInstances");
    EXPECT_EQ(failure.name_space, "root/cimv2");
    EXPECT_EQ(failure.class_name, "VMware_ComponentSoftwareIdentity");
    EXPECT_EQ(failure.association, "");
    EXPECT_EQ(failure.text, "provider died");
    EXPECT_TRUE(failure.was_asked);
}

TEST_F(Failures, NameAssociations) {
    ServeBuiltin();
    Fault fault = Faults::CimErrorElement(6, "gone");
    fault.only_operation = "Associators";
    fault.times = 1;
    Server().InjectFault(fault);
    Pciinventory::Pciinfo pci;
    EXPECT_EQ(Host().GetPCIInfo(pci), 0);
    const auto failures = Host().TakeFailures().failures;
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].kind, FailureKind::kCimError) << "6 of an association names no class";
    EXPECT_EQ(failures[0].operation, "Associators");
    EXPECT_EQ(failures[0].name_space, "root/ibmsd");
    EXPECT_EQ(failures[0].class_name, "IBMSG_SystemSlot");
    EXPECT_EQ(failures[0].association, "IBMSG_DeviceInSlot");
}

TEST_F(Failures, AreHandedOutOnce) {
    ServeBuiltin();
    Server().InjectFault(Faults::HttpStatus(503, "Busy"));
    EXPECT_EQ(OfPackages().size(), 1U);
    EXPECT_THAT(Host().TakeFailures().failures, IsEmpty());
}

TEST_F(Failures, OfOneObjectAreNotAnothers) {
    ServeBuiltin();
    Server().InjectFault(Faults::HttpStatus(503, "Busy"));
    Agentless::Kalvex other(info);
    EXPECT_EQ(OfPackages().size(), 1U);
    EXPECT_THAT(other.TakeFailures().failures, IsEmpty());
}

TEST_F(Failures, OfOneValueAreNoted) {
    // Two words are missing, and the values cannot be told.
    support::HostBuilder host;
    host.Class("root/ibmsd", "IBMSG_PCIDevice", R"({"Id": "string"})", R"([{"Id": "1"}])");
    host.Class("root/ibmsd", "IBMSG_SystemSlot",
               R"({"Id": "string", "SlotAllInfo": {"type": "uint16", "qualifiers":
                   {"ValueMap": ["1", "2"], "Values": ["one"]}}})",
               R"([{"Id": "1", "SlotAllInfo": 2}])");
    host.Class("root/ibmsd", "IBMSG_PCIBridge", R"({"Id": "string"})");
    host.Association("root/ibmsd", "IBMSG_DeviceInSlot", R"(IBMSG_PCIDevice.Id="1")",
                     R"(IBMSG_SystemSlot.Id="1")");
    Serve(host);
    Pciinventory::Pciinfo pci;
    EXPECT_EQ(Host().GetPCIInfo(pci), 0);
    const auto failures = Host().TakeFailures().failures;
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].kind, FailureKind::kValueUnreadable);
    EXPECT_EQ(failures[0].operation, "read property");
    EXPECT_EQ(failures[0].class_name, "IBMSG_SystemSlot");
    EXPECT_EQ(failures[0].text, "SlotAllInfo: index out of bounds");
}

TEST_F(Failures, OfAConnectionThatIsRefusedSaySo) {
    info.port = support::ClosedPort();
    Agentless::Kalvex host(info);
    const auto failures = host.TakeFailures().failures;
    ASSERT_EQ(failures.size(), 2U) << "one for each connection";
    EXPECT_EQ(failures[0].kind, FailureKind::kUnreachable);
    EXPECT_EQ(failures[0].phase, FailurePhase::kConnecting);
    EXPECT_EQ(failures[0].operation, "connect");
    EXPECT_EQ(failures[0].class_name, "");
    EXPECT_EQ(failures[0].text, "Connection refused");
    EXPECT_EQ(failures[1].name_space, "ibm/imm0/cimv2");
}

TEST_F(Failures, OfReconnectingNameTheClassThatWasAskedFor) {
    info.port = support::ClosedPort();
    const auto failures = OfPackages();
    EXPECT_EQ(failures.back().operation, "connect");
    EXPECT_EQ(failures.back().class_name, "VMware_ComponentSoftwareIdentity");
}

TEST_F(Failures, KnowAHostWithoutAddress) {
    for (const char* host : {"no-such-host.invalid", "256.1.1.1", "[::1]"}) {
        info.host = host;
        Agentless::Kalvex kalvex(info);
        const auto failures = kalvex.TakeFailures().failures;
        ASSERT_FALSE(failures.empty());
        EXPECT_EQ(failures[0].kind, FailureKind::kHostUnknown) << host;
    }
}

TEST_F(Failures, KnowConnectionsThatTheCallerCannotHave) {
    const auto kind_with = [this](auto change) {
        auto changed = info;
        change(changed);
        Agentless::Kalvex host(changed);
        std::vector<ZentarAgentless::InstalledPackage> packages;
        EXPECT_EQ(host.GetInstalledPackages(packages), 1);
        std::vector<FailureKind> kinds;
        for (const Failure& failure : host.TakeFailures().failures) {
            kinds.push_back(failure.kind);
        }
        return kinds;
    };
    const auto bad = ::testing::Each(FailureKind::kBadConnectionInfo);
    EXPECT_THAT(kind_with([](auto& c) { c.host = ""; }), bad);
    EXPECT_THAT(kind_with([](auto& c) { c.connection_case = 7; }), bad);
    EXPECT_THAT(kind_with([](auto& c) { c.connection_type = 2; }), bad);
    EXPECT_THAT(kind_with([](auto& c) { c.password = "\xff"; }), bad);
}

TEST_F(Failures, KnowTlsThatCannotBeSpoken) {
    ServeBuiltin(simhost::ServerOptions());
    Server().InjectFault(Faults::RawOnConnect("SSH-2.0-OpenSSH_9.2\r\n"));
    Agentless::Kalvex host(info);
    const auto failures = host.TakeFailures().failures;
    ASSERT_FALSE(failures.empty());
    EXPECT_EQ(failures[0].kind, FailureKind::kTlsFailed);
    EXPECT_EQ(failures[0].phase, FailurePhase::kTlsHandshake);
    EXPECT_NE(failures[0].text, "");
}

TEST_F(Failures, KnowRefusedCredentials) {
    simhost::ServerOptions options = Http();
    options.user = "root";
    options.password = "right";
    ServeBuiltin(options);
    info.password = "wrong";
    const auto failures = OfPackages();
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].kind, FailureKind::kCredentialsRefused);
    EXPECT_EQ(failures[0].code, 401);
}

TEST_F(Failures, KnowAHostThatHangsUp) {
    const Failure failure = OfPackagesWith(Faults::Reset());
    EXPECT_EQ(failure.kind, FailureKind::kUnreachable);
    EXPECT_EQ(failure.phase, FailurePhase::kWaiting);
    EXPECT_EQ(failure.text,
              "The host closed the connection without an answer: Connection reset by peer.");
}

struct Case {
    const char* name;
    Fault fault;
    FailureKind kind;
    std::int32_t code = 0;
};

class FailureOfFault : public Failures, public ::testing::WithParamInterface<Case> {};

TEST_P(FailureOfFault, IsKnown) {
    const Failure failure = OfPackagesWith(GetParam().fault);
    EXPECT_STREQ(WordOf(failure.kind), WordOf(GetParam().kind));
    EXPECT_EQ(failure.code, GetParam().code);
    EXPECT_EQ(failure.class_name, "VMware_ComponentSoftwareIdentity");
}

INSTANTIATE_TEST_SUITE_P(
    Of, FailureOfFault,
    ::testing::Values(
        Case{"Forbidden", Faults::HttpStatus(403, "Forbidden"), FailureKind::kNotPermitted, 403},
        Case{"Busy", Faults::HttpStatus(503, "Busy"), FailureKind::kBusy, 503},
        Case{"ServerError", Faults::HttpStatus(500, "Error"), FailureKind::kServiceFailed, 500},
        Case{"NotFound", Faults::HttpStatus(404, "Not Found"), FailureKind::kNotCimServer, 404},
        Case{"HtmlPage", Faults::ContentType("text/html"), FailureKind::kNotCimServer},
        Case{"SshServer", Faults::Raw("SSH-2.0-OpenSSH_9.2\r\n"), FailureKind::kNotCimServer},
        Case{"NoCimHeader", Faults::OperationHeader(""), FailureKind::kNotCimServer},
        Case{"CutReply", Faults::Truncate(400), FailureKind::kBadReply},
        Case{"OtherMessage", Faults::MessageId("0"), FailureKind::kBadReply},
        Case{"AccessDenied", Faults::CimErrorElement(2, "no"), FailureKind::kNotPermitted, 2},
        Case{"NoNamespace", Faults::CimErrorElement(3, "no"), FailureKind::kUnknownNamespace, 3},
        Case{"NoClass", Faults::CimErrorElement(5, "no"), FailureKind::kUnknownClass, 5},
        Case{"NotFoundClass", Faults::CimErrorElement(6, "no"), FailureKind::kUnknownClass, 6},
        Case{"NotSupported", Faults::CimErrorElement(7, "no"), FailureKind::kUnknownClass, 7},
        Case{"Trailer", Faults::CimErrorTrailer(1, "no"), FailureKind::kCimError, 1},
        Case{"Trap", Faults::CimErrorElement(1, "HTTP Error (401 Unauthorized)."),
             FailureKind::kCimError, 1}),
    [](const auto& test) { return std::string(test.param.name); });

}  // namespace
