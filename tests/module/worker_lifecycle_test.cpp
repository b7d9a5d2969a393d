#include "support/inventory_test.h"

namespace {

using support::ClosedPort;
using support::HostBuilder;
using support::TakePauses;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Zentar::Agentless::KalvexCim;

class WorkerLifecycle : public support::InventoryTest {
protected:
    std::string CannotConnect() const {
        return "Failed to connect remote cimserver with the reason: Cannot connect to 127.0.0.1:" +
               std::to_string(info.port) + ". Connection failed.";
    }
};

TEST_F(WorkerLifecycle, ConnectsForBothNamespacesAtOnce) {
    Serve(HostBuilder());
    { const KalvexCim worker(info); }
    EXPECT_EQ(Server().counters().connections, 2U);
    const std::string connecting =
        "3 cimfunc.cpp Connecting to :**********@127.0.0.1:" + std::to_string(info.port);
    EXPECT_THAT(log.Messages(), ElementsAre("4 kalvex_cim.cpp Calling constructor of KalvexCim",
                                            connecting, "4 cimfunc.cpp connection case is 2",
                                            "3 cimfunc.cpp Cimserver connection succeeded ",
                                            connecting, "4 cimfunc.cpp connection case is 2",
                                            "3 cimfunc.cpp Cimserver connection succeeded ",
                                            "4 kalvex_cim.cpp Calling destructor of KalvexCim"));
}

TEST_F(WorkerLifecycle, SurvivesAHostThatIsDown) {
    info.port = ClosedPort();
    const KalvexCim worker(info);
    EXPECT_THAT(TakePauses(), ElementsAre(10000, 10000, 10000, 10000, 10000, 10000));
    EXPECT_THAT(log.Texts(1), ElementsAre(CannotConnect(), CannotConnect()));
}

TEST_F(WorkerLifecycle, RepairsItsConnectionOnceTheHostIsUp) {
    HostBuilder host;
    host.Class("root/cimv2", "VMware_Privilege", R"({"InstanceID": "string"})",
               R"([{"InstanceID": "p"}])");
    Serve(host);
    const auto port = info.port;
    StopServing();
    KalvexCim worker(info);
    // The host comes up again while the query pauses after its first attempt.
    support::DuringPauses([&] { Serve(host, port); });
    log.Clear();
    std::vector<Zentar::ZTEXSI::VMwarePrivilegeData> privileges;
    EXPECT_EQ(worker.GetVMwarePrivilege(privileges), 0);
    EXPECT_THAT(privileges, SizeIs(1));
    EXPECT_THAT(log.Texts(3),
                ElementsAre("Calling GetCIMArrayFromEnumerateInstances()",
                            "The value of class name is:VMware_Privilege",
                            "The value of cim namespace is:root/cimv2",
                            "The value of cim client is NULL,Now restart cimserver!",
                            "Connecting to :**********@127.0.0.1:" + std::to_string(port),
                            "Cimserver connection succeeded ",
                            "Restart cim server succeed,Now reconnect to cimserver!",
                            "The size of ei_array is:1"));
}

TEST_F(WorkerLifecycle, QueriesFailWhenTheConnectionCaseIsNotCim) {
    info.connection_case = 5;
    info.port = ClosedPort();
    KalvexCim worker(info);
    Zentar::ZentarAgentless::ComputerSystem system;
    std::vector<Zentar::ZentarAgentless::PhysicalPort> ports;
    EXPECT_EQ(worker.GetComputerSystem(system), 1);
    EXPECT_EQ(worker.GetEthernetPorts(ports), 1);
    EXPECT_THAT(TakePauses(), IsEmpty());
    EXPECT_THAT(log.Texts(1), IsEmpty());
}

TEST_F(WorkerLifecycle, CanBeDestroyedUnconnected) {
    info.port = ClosedPort();
    { const KalvexCim worker(info); }
    EXPECT_EQ(log.Messages().back(), "4 kalvex_cim.cpp Calling destructor of KalvexCim");
}

}  // namespace
