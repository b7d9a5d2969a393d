// What the options of the facade change, and what they leave as it is.
#include "support/inventory_test.h"

namespace {

using namespace Zentar;
using simhost::Fault;
using support::ClosedPort;
using support::TakePauses;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace Faults = simhost::Faults;
using namespace std::chrono_literals;

class Options : public support::InventoryTest {
protected:
    Agentless::Kalvex Construct() { return Agentless::Kalvex(info, options); }

    static int ReadPackages(Agentless::Kalvex& host) {
        std::vector<ZentarAgentless::InstalledPackage> packages;
        return host.GetInstalledPackages(packages);
    }
    static int ReadEvents(Agentless::Kalvex& host) {
        std::vector<ZentarAgentless::IPMIEVENT> events;
        return host.GetIpmiRecord(events);
    }

    ZentarConnection::ConnectionOptions options;
};

TEST_F(Options, AreTodaysNumbersByDefault) {
    EXPECT_EQ(options.connect_attempts, 3U);
    EXPECT_EQ(options.connect_pause, 10s);
    EXPECT_TRUE(options.pause_after_last_attempt);
    EXPECT_EQ(options.connect_limit, 40min);
    EXPECT_EQ(options.request_limit, 5min);
    EXPECT_FALSE(options.deadline);
    EXPECT_FALSE(options.give_up);
    EXPECT_EQ(options.max_reply_bytes, 64U * 1024 * 1024);
    EXPECT_FALSE(options.cancel);
}

TEST_F(Options, SetTheAttemptsAndThePauses) {
    info.port = ClosedPort();
    options.connect_attempts = 2;
    options.connect_pause = 70ms;
    { const auto host = Construct(); }
    EXPECT_THAT(TakePauses(), ElementsAre(70, 70, 70, 70)) << "two connections of two attempts";
    options.pause_after_last_attempt = false;
    { const auto host = Construct(); }
    EXPECT_THAT(TakePauses(), ElementsAre(70, 70));
    options.connect_attempts = 0;
    { const auto host = Construct(); }
    EXPECT_THAT(TakePauses(), IsEmpty()) << "none counts as one";
}

TEST_F(Options, LimitTheReply) {
    Serve(simhost::HostDescription::Builtin(), Http());
    options.max_reply_bytes = 500;
    auto host = Construct();
    host.TakeFailures();
    EXPECT_NE(ReadPackages(host), 0);
    const auto failures = host.TakeFailures().failures;
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].kind, FailureKind::kBadReply);
    EXPECT_EQ(failures[0].text, "The reply is larger than 500 bytes.");
    options.max_reply_bytes = 1'000'000;
    auto other = Construct();
    EXPECT_EQ(ReadPackages(other), 0);
    EXPECT_TRUE(other.TakeFailures().failures.empty());
}

TEST_F(Options, LeaveOneLineAboutAConnectionThatFailed) {
    info.port = ClosedPort();
    options.connect_attempts = 2;
    { const auto host = Construct(); }
    const auto messages = log.Messages();
    EXPECT_EQ(std::count(messages.begin(), messages.end(),
                         "1 cimfunc.cpp Failed to connect remote cimserver with the reason: Cannot "
                         "connect to 127.0.0.1:" +
                             std::to_string(info.port) + ". Connection failed."),
              2);
}

TEST_F(Options, BoundARequest) {
    Serve(simhost::HostDescription::Builtin(), Http());
    options.request_limit = 50ms;
    auto host = Construct();
    Server().InjectFault(Faults::Stall());
    EXPECT_EQ(ReadPackages(host), 1);
    const auto failures = host.TakeFailures().failures;
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].kind, FailureKind::kTimedOut);
    EXPECT_EQ(failures[0].phase, FailurePhase::kWaiting);
}

TEST_F(Options, BoundAnAnswerThatDrips) {
    Serve(simhost::HostDescription::Builtin(), Http());
    options.request_limit = 50ms;
    auto host = Construct();
    Server().InjectFault(Faults::SlowDrip(1, 5ms));
    EXPECT_EQ(ReadPackages(host), 1);
    const auto failures = host.TakeFailures().failures;
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].kind, FailureKind::kTimedOut);
    EXPECT_EQ(failures[0].phase, FailurePhase::kReceiving);
}

TEST_F(Options, BoundTheHandshake) {
    Serve(simhost::HostDescription::Builtin(), simhost::ServerOptions());
    Server().InjectFault(Faults::StallOnConnect());
    options.connect_attempts = 1;
    options.connect_limit = 50ms;
    auto host = Construct();
    const auto failures = host.TakeFailures().failures;
    ASSERT_FALSE(failures.empty());
    EXPECT_EQ(failures[0].kind, FailureKind::kTimedOut);
    EXPECT_EQ(failures[0].phase, FailurePhase::kTlsHandshake);
}

TEST_F(Options, BoundTheWholeObject) {
    Serve(simhost::HostDescription::Builtin(), Http());
    options.deadline = 200ms;
    auto host = Construct();
    Server().InjectFault(Faults::Stall());
    EXPECT_EQ(ReadPackages(host), 1);
    const auto requests = Server().counters().requests;
    EXPECT_EQ(ReadEvents(host), 1);
    EXPECT_EQ(Server().counters().requests, requests) << "nothing is asked after the deadline";
    const auto failures = host.TakeFailures().failures;
    ASSERT_EQ(failures.size(), 2U);
    EXPECT_EQ(failures[0].kind, FailureKind::kDeadline);
    EXPECT_TRUE(failures[0].was_asked);
    EXPECT_EQ(failures[1].kind, FailureKind::kDeadline);
    EXPECT_FALSE(failures[1].was_asked);
    EXPECT_EQ(failures[1].class_name, "OMC_IpmiLogRecord");
}

TEST_F(Options, GiveUpAHostThatDiesAfterItsDevices) {
    Serve(simhost::HostDescription::Builtin(), simhost::ServerOptions());
    options.give_up = true;
    options.connect_attempts = 2;
    auto host = Construct();
    // The first question for a device's slot is the last that is answered.
    Fault dies = Faults::CimErrorElement(1, "dying");
    dies.only_operation = "Associators";
    Server().InjectFault(dies);
    Fault gone = Faults::CloseOnConnect();
    gone.after = 1;  // the connection of the PCI inventory
    EXPECT_EQ(Server().counters().connections, 2U);
    Server().InjectFault(gone);
    Pciinventory::Pciinfo pci;
    EXPECT_EQ(host.GetPCIInfo(pci), 0);
    EXPECT_EQ(pci.devices_.size(), 40U);
    EXPECT_THAT(pci.bridges_, IsEmpty());
    EXPECT_THAT(TakePauses(), ElementsAre(10000, 10000)) << "for the first device alone";
    const auto failures = host.TakeFailures().failures;
    ASSERT_EQ(failures.size(), 2U + 39 + 2) << "the rest of the devices, bridges and slots";
    EXPECT_EQ(failures[0].kind, FailureKind::kCimError);
    EXPECT_EQ(failures[1].kind, FailureKind::kTlsFailed);
    EXPECT_TRUE(failures[1].was_asked);
    EXPECT_EQ(failures[2].kind, FailureKind::kTlsFailed);
    EXPECT_FALSE(failures[2].was_asked);
}

TEST_F(Options, OfferRefusedCredentialsOnce) {
    simhost::ServerOptions account = Http();
    account.user = "root";
    account.password = "right";
    Serve(simhost::HostDescription::Builtin(), account);
    info.password = "wrong";
    options.give_up = true;
    auto host = Construct();
    EXPECT_EQ(ReadPackages(host), 1);
    EXPECT_EQ(ReadEvents(host), 1);
    ZentarAgentless::ComputerSystem system;
    EXPECT_EQ(host.GetComputerSystem(system), 1);
    Pciinventory::Pciinfo pci;
    EXPECT_EQ(host.GetPCIInfo(pci), 0);
    std::size_t with_credentials = 0;
    for (const simhost::Request& request : Server().requests()) {
        with_credentials += request.head.find("Authorization:") != std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(with_credentials, 1U);
    EXPECT_EQ(Server().counters().requests, 2U) << "the challenged one and the refused one";
    for (const Failure& failure : host.TakeFailures().failures) {
        EXPECT_EQ(failure.kind, FailureKind::kCredentialsRefused);
    }
}

TEST_F(Options, OfferThemToEachQueryOtherwise) {
    simhost::ServerOptions account = Http();
    account.user = "root";
    account.password = "right";
    Serve(simhost::HostDescription::Builtin(), account);
    info.password = "wrong";
    auto host = Construct();
    EXPECT_EQ(ReadPackages(host), 1);
    EXPECT_EQ(ReadEvents(host), 1);
    EXPECT_EQ(Server().counters().requests, 3U);
}

TEST_F(Options, GiveUpAfterTwoRequestsThatTimedOut) {
    Serve(simhost::HostDescription::Builtin(), Http());
    options.give_up = true;
    options.request_limit = 50ms;
    auto host = Construct();
    Server().InjectFault(Faults::Stall());
    EXPECT_EQ(ReadPackages(host), 1);
    EXPECT_EQ(ReadPackages(host), 1);
    EXPECT_EQ(ReadPackages(host), 1);
    EXPECT_EQ(Server().counters().requests, 2U);
    const auto failures = host.TakeFailures().failures;
    ASSERT_EQ(failures.size(), 3U);
    EXPECT_EQ(failures[2].kind, FailureKind::kTimedOut);
    EXPECT_FALSE(failures[2].was_asked);
}

}  // namespace
