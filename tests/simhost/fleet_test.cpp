// Many hosts on the network, served by one process.
#include "simhost/fleet.h"

#include <algorithm>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>

#include "simhost/fleet_identity.h"
#include "simhost/host_test.h"

namespace simhost_test {
namespace {

using simhost::FleetFault;
using simhost::FleetHost;
using testing::HasSubstr;

class FleetTest : public HostTest {
protected:
    void ServeFleet(std::size_t count, unsigned fault_percent = 0,
                    const simhost::ServerOptions& options = Http()) {
        fleet_ = std::make_unique<simhost::Fleet>(simhost::HostDescription::Builtin(), options,
                                                  count, fault_percent);
    }
    void StopFleet() { fleet_.reset(); }
    simhost::Fleet& Fleet() const { return *fleet_; }

    static Reply AskForChassis(std::uint16_t port) {
        return RawClient(port).Ask(Enumerate("root/cimv2", "OMC_Chassis"));
    }
    /// The first host that fails in this way.
    FleetHost Failing(FleetFault fault) const {
        const auto hosts = fleet_->Hosts();
        const auto found = std::ranges::find(hosts, fault, &FleetHost::fault);
        EXPECT_NE(found, hosts.end()) << simhost::NameOf(fault);
        return found == hosts.end() ? FleetHost() : *found;
    }

private:
    std::unique_ptr<simhost::Fleet> fleet_;
};

TEST_F(FleetTest, ThreeHundredHostsAnswerEachForItself) {
    constexpr std::size_t kHosts = 300;
    ServeFleet(kHosts);
    std::set<std::uint16_t> ports;
    for (const FleetHost& host : Fleet().Hosts()) {
        ports.insert(host.port);
        EXPECT_THAT(AskForChassis(host.port).body,
                    HasSubstr("<VALUE>" + simhost::SerialNumberOf(host.number) + "</VALUE>"));
    }
    EXPECT_EQ(ports.size(), kHosts);
    EXPECT_EQ(Fleet().counters().connections, kHosts);
    EXPECT_EQ(Fleet().counters().requests, kHosts);
}

TEST_F(FleetTest, HostsHaveThePortsFromTheFirstOn) {
    // Another process may take the ports meanwhile.
    for (int attempt = 0; attempt < 100; ++attempt) {
        simhost::ServerOptions options = Http();
        ServeFleet(1);
        options.port = Fleet().Ports().front();
        StopFleet();
        try {
            ServeFleet(3, 0, options);
        } catch (const std::exception&) {
            continue;
        }
        EXPECT_THAT(Fleet().Ports(),
                    testing::ElementsAre(options.port, options.port + 1, options.port + 2));
        return;
    }
    FAIL() << "no three ports in a row are free";
}

TEST_F(FleetTest, HostsSpeakTls) {
    ServeFleet(3, 0, simhost::ServerOptions());
    for (const std::uint16_t port : Fleet().Ports()) {
        RawClient client = RawClient::OverTls(port);
        EXPECT_EQ(client.Certificate().common_name, "esx01");
        EXPECT_EQ(client.Ask(Enumerate("root/cimv2", "OMC_Chassis")).status, 200);
    }
    EXPECT_EQ(Fleet().counters().tls_handshakes, 3U);
}

TEST_F(FleetTest, DeadHostRefusesConnections) {
    ServeFleet(40, 50);
    EXPECT_THROW(RawClient(Failing(FleetFault::kDead).port), std::runtime_error);
}

TEST_F(FleetTest, RefusingHostRefusesTheRightCredentialsToo) {
    ServeFleet(40, 50);
    EXPECT_EQ(AskForChassis(Failing(FleetFault::kRefusing).port).status, 401);
    EXPECT_EQ(AskForChassis(Failing(FleetFault::kNone).port).status, 200);
    EXPECT_EQ(Fleet().counters().challenges, 1U);
}

TEST_F(FleetTest, BrokenHostCutsItsAnswersOff) {
    ServeFleet(40, 50);
    const Reply reply = AskForChassis(Failing(FleetFault::kBroken).port);
    EXPECT_EQ(reply.status, 200);
    EXPECT_FALSE(reply.complete);
}

TEST_F(FleetTest, TricklingHostStartsItsAnswer) {
    ServeFleet(40, 50);
    RawClient client(Failing(FleetFault::kTrickling).port);
    client.Send(Enumerate("root/cimv2", "OMC_Chassis"));
    EXPECT_EQ(client.ReceiveBytes(4), "HTTP");
}

TEST_F(FleetTest, FleetEndsWhileAHostStalls) {
    ServeFleet(40, 50);
    RawClient client(Failing(FleetFault::kStalling).port);
    client.Send(Enumerate("root/cimv2", "OMC_Chassis"));
    EXPECT_EQ(Fleet().counters().connections, 1U);
}

TEST_F(FleetTest, FaultOfAllHostsCountsForEachAlone) {
    ServeFleet(2);
    simhost::Fault once = simhost::Faults::HttpStatus(503, "Service Unavailable");
    once.times = 1;
    Fleet().InjectFault(once);
    for (const std::uint16_t port : Fleet().Ports()) {
        EXPECT_EQ(AskForChassis(port).status, 503);
        EXPECT_EQ(AskForChassis(port).status, 200);
    }
}

TEST_F(FleetTest, MoreHostsThanPortsAreRefused) {
    simhost::ServerOptions options = Http();
    options.port = 65535;
    EXPECT_THROW(ServeFleet(2, 0, options), std::invalid_argument);
}

}  // namespace
}  // namespace simhost_test
