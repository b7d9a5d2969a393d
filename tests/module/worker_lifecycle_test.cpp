#include "support/inventory_test.h"

namespace {

using support::ClosedPort;
using support::HostBuilder;
using support::Joined;
using support::TakePauses;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Zentar::Agentless::KalvexCim;

class WorkerLifecycle : public support::InventoryTest {
protected:
    std::string CannotConnect() const {
        return "1 cimfunc.cpp Failed to connect remote cimserver with the reason: Cannot connect "
               "to 127.0.0.1:" +
               std::to_string(info.port) + ". Connection failed.";
    }
};

template <class Record>
int Query(KalvexCim& worker, int (KalvexCim::*query)(Record&)) {
    Record record;
    return (worker.*query)(record);
}

/// The results of all queries that report failure.
std::vector<int> QueryAll(KalvexCim& worker) {
    return {
        Query(worker, &KalvexCim::GetComputerSystem),
        Query(worker, &KalvexCim::GetOperationSystem),
        Query(worker, &KalvexCim::GetInstalledPackages),
        Query(worker, &KalvexCim::GetIpmiRecord),
        Query(worker, &KalvexCim::GetVMwarePrivilege),
        Query(worker, &KalvexCim::GetEthernetPorts),
        Query(worker, &KalvexCim::GetIPv4ProtocolInfo),
        Query(worker, &KalvexCim::GetIPv6ProtocolInfo),
        Query(worker, &KalvexCim::GetPCIDevice),
        Query(worker, &KalvexCim::GetPCIBridge),
        Query(worker, &KalvexCim::GetSystemSlot),
    };
}

TEST_F(WorkerLifecycle, ConnectsForBothNamespacesAtOnce) {
    Serve(HostBuilder());
    { const KalvexCim worker(info); }
    EXPECT_EQ(Server().counters().connections, 2U);
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined({{"4 kalvex_cim.cpp Calling constructor of KalvexCim"},
                                         ConnectionLog(),
                                         ConnectionLog(),
                                         {"4 kalvex_cim.cpp Calling destructor of KalvexCim"}})));
}

TEST_F(WorkerLifecycle, SurvivesAHostThatIsDown) {
    info.port = ClosedPort();
    const KalvexCim worker(info);
    EXPECT_THAT(TakePauses(), ElementsAre(10000, 10000, 10000, 10000, 10000, 10000));
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined({{"4 kalvex_cim.cpp Calling constructor of KalvexCim"},
                                         ConnectionAttemptLog(),
                                         {CannotConnect()},
                                         ConnectionAttemptLog(),
                                         {CannotConnect()}})));
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
    Serve(simhost::HostDescription::Builtin(), Http());
    for (const int connection_case : {1, 5}) {
        info.connection_case = connection_case;
        KalvexCim worker(info);
        EXPECT_THAT(QueryAll(worker), Each(1));
        EXPECT_FALSE(worker.IsUnSpportedESXIVer());
    }
    EXPECT_EQ(Server().counters().connections, 0U);
    EXPECT_THAT(TakePauses(), IsEmpty());
    EXPECT_THAT(log.Texts(1), IsEmpty());
}

TEST_F(WorkerLifecycle, CanBeDestroyedUnconnected) {
    info.port = ClosedPort();
    { const KalvexCim worker(info); }
    EXPECT_EQ(log.Messages().back(), "4 kalvex_cim.cpp Calling destructor of KalvexCim");
}

}  // namespace
