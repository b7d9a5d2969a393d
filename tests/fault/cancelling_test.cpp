// A caller that wants to stop, in every phase of a reading. Limits here are far beyond the time
// that a test may take: only cancelling ends these calls.
#include <poll.h>
#include <sys/socket.h>

#include <atomic>
#include <fstream>
#include <sstream>
#include <thread>

#include "bench/stalling_host.h"
#include "client/client_settings.h"
#include "common/log/log_control.h"
#include "support/inventory_test.h"

namespace {

using namespace Zentar;
using support::TakePauses;
using ::testing::IsEmpty;
namespace Faults = simhost::Faults;
using namespace std::chrono_literals;

/// Whether this process is connecting to the port: as the kernel lists it, SYN sent.
bool IsConnectingTo(std::uint16_t port) {
    std::ostringstream wanted;
    wanted << "0100007F:" << std::hex << std::uppercase << port << " 02";
    std::ifstream table("/proc/self/net/tcp");
    std::stringstream text;
    text << table.rdbuf();
    return text.str().find(wanted.str()) != std::string::npos;
}

template <class Condition>
void Await(Condition condition) {
    while (!condition()) {
        std::this_thread::yield();
    }
}

/// Takes nothing of what the peer sends. Says when that has begun.
bench::StallingHost::Act TakeNothing(std::atomic<bool>& has_begun) {
    return [&has_begun](int socket) {
        pollfd data{socket, POLLIN, 0};
        poll(&data, 1, -1);
        has_begun = true;
        pollfd end{socket, POLLRDHUP, 0};
        poll(&end, 1, -1);
    };
}

class Cancelling : public support::InventoryTest {
protected:
    Cancelling() { options.cancel = CancelHandle::Make(); }

    /// Cancels as soon as the condition holds, on a thread of its own, which the destructor joins.
    template <class Condition>
    std::jthread CancelWhen(Condition condition) {
        return std::jthread([this, condition] {
            Await(condition);
            options.cancel.Cancel();
        });
    }

    int ReadPackages(Agentless::Kalvex& host) { return host.GetInstalledPackages(packages); }

    /// Reading the packages of a host with this fault ends when it is cancelled in the request.
    void ExpectEndOfRequest(const simhost::Fault& fault, simhost::ServerOptions server_options) {
        Serve(simhost::HostDescription::Builtin(), std::move(server_options));
        Agentless::Kalvex host(info, options);
        Server().InjectFault(fault);
        const auto canceller = CancelWhen([this] { return Server().counters().requests > 0; });
        EXPECT_EQ(ReadPackages(host), 1);
        ExpectCancelled(host);
    }

    void ExpectCancelled(Agentless::Kalvex& host) {
        const auto failures = host.TakeFailures().failures;
        ASSERT_FALSE(failures.empty());
        for (const Failure& failure : failures) {
            EXPECT_STREQ(WordOf(failure.kind), "cancelled");
        }
        EXPECT_EQ(ReadPackages(host), 1) << "nothing is asked any more";
        const auto later = host.TakeFailures().failures;
        ASSERT_EQ(later.size(), 1U);
        EXPECT_EQ(later[0].kind, FailureKind::kCancelled);
        EXPECT_FALSE(later[0].was_asked);
        EXPECT_THAT(packages, IsEmpty());
        EXPECT_THAT(TakePauses(), IsEmpty());
    }

    ZentarConnection::ConnectionOptions options;
    std::vector<ZentarAgentless::InstalledPackage> packages;
};

TEST_F(Cancelling, EndsConnecting) {
    const bench::FullBacklog backlog;
    info.port = backlog.port();
    const auto canceller = CancelWhen([&] { return IsConnectingTo(backlog.port()); });
    Agentless::Kalvex host(info, options);
    ExpectCancelled(host);
}

TEST_F(Cancelling, EndsTheHandshake) {
    std::atomic<bool> has_begun = false;
    const bench::StallingHost stalling(TakeNothing(has_begun));
    info.port = stalling.port();
    info.connection_type = 1;
    const auto canceller = CancelWhen([&] { return has_begun.load(); });
    Agentless::Kalvex host(info, options);
    ExpectCancelled(host);
}

TEST_F(Cancelling, EndsTheWaitForAnAnswer) { ExpectEndOfRequest(Faults::Stall(), Http()); }

TEST_F(Cancelling, EndsTheWaitForAnAnswerOverTls) {
    ExpectEndOfRequest(Faults::Stall(), simhost::ServerOptions());
}

TEST_F(Cancelling, EndsAnAnswerThatDrips) { ExpectEndOfRequest(Faults::SlowDrip(1, 1ms), Http()); }

TEST_F(Cancelling, EndsAnAnswerThatDripsOverTls) {
    ExpectEndOfRequest(Faults::SlowDrip(1, 1ms), simhost::ServerOptions());
}

TEST_F(Cancelling, EndsSending) {
    std::atomic<bool> has_begun = false;
    const bench::StallingHost stalling(TakeNothing(has_begun));
    const auto cancellation = options.cancel.state();
    Pegasus::CIMClient client;
    cimclient::Configure(client, {cancellation, {}});
    client.setTimeout(1'000'000);
    client.connect("127.0.0.1", stalling.port(), "", "");
    // More than the sockets on the way hold.
    const std::string name(8UL << 20, 'x');
    const Pegasus::CIMName class_name(name.c_str());
    const auto canceller = CancelWhen([&] { return has_begun.load(); });
    EXPECT_THROW(client.enumerateInstances("root/cimv2", class_name), Pegasus::Exception);
}

TEST_F(Cancelling, EndsThePauseBetweenAttempts) {
    info.port = support::ClosedPort();
    options.connect_pause = 1h;
    const auto canceller = CancelWhen([] { return true; });
    Agentless::Kalvex host(info, options);
    ExpectCancelled(host);
}

TEST_F(Cancelling, EndsObjectsThatAreYetToBeMade) {
    Serve(simhost::HostDescription::Builtin(), Http());
    options.cancel.Cancel();
    Agentless::Kalvex host(info, options);
    EXPECT_EQ(Server().counters().connections, 0U);
    ExpectCancelled(host);
}

TEST_F(Cancelling, EndsAllObjectsOfOneHandle) {
    Serve(simhost::HostDescription::Builtin(), Http());
    Agentless::Kalvex first(info, options);
    Agentless::Kalvex second(info, options);
    first.Cancel();
    EXPECT_EQ(ReadPackages(second), 1);
    EXPECT_EQ(ReadPackages(first), 1);
}

TEST_F(Cancelling, EndsTheReadingOfAnEndlessList) {
    std::string instances;
    for (int i = 0; i < 3000; ++i) {
        instances += (i == 0 ? "[" : ",") + (R"({"Id": ")" + std::to_string(i) + R"("})");
    }
    support::HostBuilder description;
    description.Class("root/cimv2", "VMware_ComponentSoftwareIdentity", R"({"Id": "string"})",
                      instances + "]");
    Serve(description);
    Agentless::Kalvex host(info, options);
    SetLogSink([this](const LogMessage& message) {
        if (message.text.starts_with("Showing properties for")) {
            options.cancel.Cancel();
        }
    });
    EXPECT_EQ(ReadPackages(host), 1);
    SetLogSink({});
    EXPECT_EQ(packages.size(), 1024U) << "what was read stays";
    const auto failures = host.TakeFailures().failures;
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_EQ(failures[0].kind, FailureKind::kCancelled);
    EXPECT_EQ(failures[0].class_name, "VMware_ComponentSoftwareIdentity");
    EXPECT_EQ(failures[0].name_space, "root/cimv2");
    EXPECT_TRUE(failures[0].was_asked);
}

TEST_F(Cancelling, NeedsNoHandle) {
    options.cancel = {};
    Serve(simhost::HostDescription::Builtin(), Http());
    Agentless::Kalvex host(info, options);
    Server().InjectFault(Faults::Stall());
    const std::jthread canceller([&] {
        Await([this] { return Server().counters().requests > 0; });
        host.Cancel();
    });
    EXPECT_EQ(ReadPackages(host), 1);
    ExpectCancelled(host);
}

TEST_F(Cancelling, OfAnObjectWithoutOptionsIsForTheNextRequest) {
    Serve(simhost::HostDescription::Builtin(), Http());
    Agentless::Kalvex host(info);
    host.Cancel();
    EXPECT_EQ(ReadPackages(host), 1);
    EXPECT_EQ(Server().counters().requests, 0U);
    ExpectCancelled(host);
}

}  // namespace
