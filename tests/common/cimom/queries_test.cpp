#include "common/cimom/src/cimfunc.h"
#include "support/inventory_test.h"

namespace {

using support::AssociationLog;
using support::EnumerationLog;
using support::HostBuilder;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using Zentar::CimConnection;

class Queries : public support::InventoryTest {
protected:
    Queries() {
        host.Class("root/cimv2", "Device", R"({"Id": "string"})", R"([{"Id": "d"}])")
            .Class("root/cimv2", "Slot", R"({"Tag": "string"})", R"([{"Tag": "s"}])")
            .Class("root/cimv2", "Empty", R"({"Id": "string"})")
            .Association("root/cimv2", "DeviceInSlot", "Device.Id=\"d\"", "Slot.Tag=\"s\"");
    }
    CimConnection& ConnectTo(const char* ns) {
        connection_ = std::make_unique<CimConnection>(Pegasus::CIMNamespaceName(ns), info);
        log.Clear();
        return *connection_;
    }
    int Enumerate(CimConnection& connection, const char* class_name) {
        return Zentar::GetCIMArrayFromEnumerateInstances(Pegasus::CIMName(class_name), connection,
                                                         instances, 300000);
    }
    int Associate(CimConnection& connection) {
        return Zentar::GetCIMArrayFromAssociators(
            Pegasus::CIMObjectPath(Pegasus::String("Device.Id=\"d\"")),
            Pegasus::CIMName("DeviceInSlot"), Pegasus::CIMName("Slot"), connection, objects);
    }

    HostBuilder host;
    /// Both hold one element before any request.
    Pegasus::Array<Pegasus::CIMInstance> instances{1};
    Pegasus::Array<Pegasus::CIMObject> objects{1};

private:
    std::unique_ptr<CimConnection> connection_;
};

TEST_F(Queries, EnumerationLogsItsProgress) {
    Serve(host);
    EXPECT_EQ(Enumerate(ConnectTo("root/cimv2"), "Device"), 0);
    EXPECT_EQ(instances.size(), 1U);
    EXPECT_THAT(log.Messages(), ElementsAreArray(EnumerationLog("Device", 1)));
}

TEST_F(Queries, EnumerationAsksForNoQualifiersAndAssociationForThem) {
    Serve(host);
    CimConnection& connection = ConnectTo("root/cimv2");
    Enumerate(connection, "Device");
    Associate(connection);
    const auto requests = Server().requests();
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].body.find("IncludeQualifiers"), std::string::npos);
    EXPECT_NE(
        requests[1].body.find("<IPARAMVALUE NAME=\"IncludeQualifiers\">\n<VALUE>TRUE</VALUE>"),
        std::string::npos);
}

TEST_F(Queries, AssociationLogsItsProgress) {
    Serve(host);
    EXPECT_EQ(Associate(ConnectTo("root/cimv2")), 0);
    ASSERT_EQ(objects.size(), 1U);
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(AssociationLog("Device.Id=\"d\"", "DeviceInSlot", "Slot", 1)));
}

TEST_F(Queries, AnEmptyResultIsSuccess) {
    Serve(host);
    EXPECT_EQ(Enumerate(ConnectTo("root/cimv2"), "Empty"), 0);
    EXPECT_EQ(instances.size(), 0U);
    EXPECT_EQ(log.Texts(3).back(), "The size of ei_array is:0");
}

TEST_F(Queries, AnUnknownNamespaceIsToldFromOtherFailuresAfterAReconnect) {
    Serve(host);
    EXPECT_EQ(Enumerate(ConnectTo("root/other"), "Device"), 6);
    EXPECT_EQ(instances.size(), 1U);
    EXPECT_EQ(Server().counters().connections, 2U);
    EXPECT_THAT(log.Texts(1), ElementsAre("Enumerate instances failed with the reason: "
                                          "CIM_ERR_INVALID_NAMESPACE: root/other"));
    EXPECT_EQ(log.Texts(3).back(), "Cimserver connection succeeded ");
}

TEST_F(Queries, AnUnknownClassFailsAfterAReconnect) {
    Serve(host);
    EXPECT_EQ(Enumerate(ConnectTo("root/cimv2"), "Nothing"), 1);
    EXPECT_EQ(instances.size(), 1U);
    EXPECT_EQ(Server().counters().connections, 2U);
}

TEST_F(Queries, AFailedAssociationNeverTellsOfTheNamespace) {
    Serve(host);
    EXPECT_EQ(Associate(ConnectTo("root/other")), 1);
    EXPECT_EQ(objects.size(), 1U);
    EXPECT_EQ(Server().counters().connections, 2U);
    EXPECT_THAT(log.Texts(1), ElementsAre("Enumerate associators failed with the reason: "
                                          "CIM_ERR_INVALID_NAMESPACE: root/other"));
}

TEST_F(Queries, AnEnumerationThatFailsOutsideCimDoesNotReconnect) {
    Serve(host);
    CimConnection& connection = ConnectTo("root/cimv2");
    Server().Misbehave(simhost::Misbehaviours::HttpStatus(503, "Service Unavailable"));
    EXPECT_EQ(Enumerate(connection, "Device"), 1);
    EXPECT_EQ(instances.size(), 1U);
    EXPECT_EQ(Server().counters().connections, 1U);
    EXPECT_THAT(log.Texts(1), ElementsAre("Enumerate instances failed with the reason: HTTP Error "
                                          "(503 Service Unavailable)."));
}

TEST_F(Queries, AnAssociationThatFailsOutsideCimReconnects) {
    Serve(host);
    CimConnection& connection = ConnectTo("root/cimv2");
    Server().Misbehave(simhost::Misbehaviours::HttpStatus(503, "Service Unavailable"));
    EXPECT_EQ(Associate(connection), 1);
    EXPECT_EQ(Server().counters().connections, 2U);
}

TEST_F(Queries, ALostClientIsRepairedByTheNextQuery) {
    Serve(host);
    const auto port = info.port;
    StopServing();
    CimConnection& connection = ConnectTo("root/cimv2");
    ASSERT_EQ(connection.client, nullptr);
    EXPECT_EQ(Enumerate(connection, "Device"), 1);
    EXPECT_EQ(log.Texts(3)[3], "The value of cim client is NULL,Now restart cimserver!");
    EXPECT_EQ(Associate(connection), 1);

    Serve(host, port);
    log.Clear();
    EXPECT_EQ(Associate(connection), 0);
    EXPECT_THAT(log.Texts(3), Contains("Restart cim server succeed,Now reconnect to cimserver!"));
    EXPECT_EQ(Enumerate(connection, "Device"), 0);
}

}  // namespace
