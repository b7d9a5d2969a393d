#include <regex>

#include "common/cimom/src/cimfunc.h"
#include "support/inventory_test.h"

namespace {

using support::AssociationCallLog;
using support::AssociationLog;
using support::EnumerationCallLog;
using support::EnumerationLog;
using support::HostBuilder;
using support::Joined;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using Zentar::CimConnection;

class Queries : public support::InventoryTest {
protected:
    Queries() {
        host.Class("root/cimv2", "Device", R"({"Id": "string"})", R"([{"Id": "d"}])")
            .Class("root/cimv2", "Slot", R"({"Tag": "string"})", R"([{"Tag": "s"}])")
            .Class("root/cimv2", "Empty", R"({"Id": "string"})")
            .Association("root/cimv2", "DeviceInSlot", "Device.Id=\"d\"", "Slot.Tag=\"s\"");
        const Pegasus::CIMInstance before(Pegasus::CIMName("Before"));
        instances.append(before);
        objects.append(Pegasus::CIMObject(before));
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
    int Associate(CimConnection& connection, const char* association = "DeviceInSlot") {
        return Zentar::GetCIMArrayFromAssociators(Pegasus::CIMObjectPath(Pegasus::String(kDevice)),
                                                  Pegasus::CIMName(association),
                                                  Pegasus::CIMName("Slot"), connection, objects);
    }
    static std::string EnumerationFailure(const std::string& reason) {
        return "1 cimfunc.cpp Enumerate instances failed with the reason: " + reason;
    }
    static std::string AssociationFailure(const std::string& reason) {
        return "1 cimfunc.cpp Enumerate associators failed with the reason: " + reason;
    }
    /// All that was logged, in these parts.
    void ExpectLog(const std::vector<std::vector<std::string>>& parts) {
        EXPECT_THAT(log.Messages(), ElementsAreArray(Joined(parts)));
    }

    static constexpr const char* kDevice = "Device.Id=\"d\"";

    HostBuilder host;
    /// Both hold one element before any request.
    Pegasus::Array<Pegasus::CIMInstance> instances;
    Pegasus::Array<Pegasus::CIMObject> objects;

private:
    std::unique_ptr<CimConnection> connection_;
};

TEST_F(Queries, EnumerationLogsItsProgress) {
    Serve(host);
    EXPECT_EQ(Enumerate(ConnectTo("root/cimv2"), "Device"), 0);
    EXPECT_EQ(instances.size(), 1U);
    ExpectLog({EnumerationLog("Device", 1)});
}

/// The parameters that a request names; all others have their defaults.
std::vector<std::string> ParametersOf(const simhost::Request& request) {
    static const std::regex parameter("<IPARAMVALUE NAME=\"([^\"]*)\"");
    std::vector<std::string> names;
    for (std::sregex_iterator at(request.body.begin(), request.body.end(), parameter), end;
         at != end; ++at) {
        names.push_back((*at)[1]);
    }
    return names;
}

TEST_F(Queries, EnumerationAsksForAllPropertiesOfSubclassesTooWithoutQualifiers) {
    Serve(host);
    Enumerate(ConnectTo("root/cimv2"), "Device");
    ASSERT_EQ(Server().requests().size(), 1U);
    EXPECT_THAT(ParametersOf(Server().requests()[0]), ElementsAre("ClassName"));
}

TEST_F(Queries, AssociationAsksForQualifiersInAnyRole) {
    Serve(host);
    Associate(ConnectTo("root/cimv2"));
    ASSERT_EQ(Server().requests().size(), 1U);
    const simhost::Request request = Server().requests()[0];
    EXPECT_THAT(ParametersOf(request),
                ElementsAre("ObjectName", "AssocClass", "ResultClass", "IncludeQualifiers"));
    EXPECT_THAT(request.body,
                HasSubstr("<IPARAMVALUE NAME=\"IncludeQualifiers\">\n<VALUE>TRUE</VALUE>"));
}

TEST_F(Queries, HaveTheirOwnTimeLimits) {
    Serve(host);
    CimConnection& connection = ConnectTo("root/cimv2");
    EXPECT_EQ(connection.client->getTimeout(), 2400000U);
    Zentar::GetCIMArrayFromEnumerateInstances(Pegasus::CIMName("Device"), connection, instances,
                                              12345);
    EXPECT_EQ(connection.client->getTimeout(), 12345U);
    Associate(connection);
    EXPECT_EQ(connection.client->getTimeout(), 300000U);
}

TEST_F(Queries, AssociationLogsItsProgress) {
    Serve(host);
    EXPECT_EQ(Associate(ConnectTo("root/cimv2")), 0);
    EXPECT_EQ(objects.size(), 1U);
    ExpectLog({AssociationLog(kDevice, "DeviceInSlot", "Slot", 1)});
}

TEST_F(Queries, AnEmptyResultIsSuccess) {
    Serve(host);
    EXPECT_EQ(Enumerate(ConnectTo("root/cimv2"), "Empty"), 0);
    EXPECT_EQ(instances.size(), 0U);
    ExpectLog({EnumerationLog("Empty", 0)});
}

TEST_F(Queries, NoAssociatedObjectIsSuccess) {
    host.Class("root/cimv2", "DeviceOnBoard", R"({"Id": "string"})");
    Serve(host);
    EXPECT_EQ(Associate(ConnectTo("root/cimv2"), "DeviceOnBoard"), 0);
    EXPECT_EQ(objects.size(), 0U);
    ExpectLog({AssociationLog(kDevice, "DeviceOnBoard", "Slot", 0)});
}

TEST_F(Queries, AnUnknownNamespaceIsToldFromOtherFailuresAfterAReconnect) {
    Serve(host);
    EXPECT_EQ(Enumerate(ConnectTo("root/other"), "Device"), 6);
    EXPECT_EQ(instances.size(), 1U);
    EXPECT_EQ(Server().counters().connections, 2U);
    ExpectLog({EnumerationCallLog("Device", "root/other"),
               {EnumerationFailure("CIM_ERR_INVALID_NAMESPACE: root/other")},
               ConnectionLog()});
}

TEST_F(Queries, AnUnknownNamespaceIsReportedEvenWhenTheReconnectFails) {
    Serve(host);
    CimConnection& connection = ConnectTo("root/other");
    connection.info.port = support::ClosedPort();
    EXPECT_EQ(Enumerate(connection, "Device"), 6);
    EXPECT_EQ(connection.client, nullptr);
    EXPECT_EQ(instances.size(), 1U);
    EXPECT_THAT(support::TakePauses(), ElementsAre(10000, 10000, 10000));
}

TEST_F(Queries, AnUnknownClassFailsAfterAReconnect) {
    Serve(host);
    EXPECT_EQ(Enumerate(ConnectTo("root/cimv2"), "Nothing"), 1);
    EXPECT_EQ(instances.size(), 1U);
    EXPECT_EQ(Server().counters().connections, 2U);
    ExpectLog({EnumerationCallLog("Nothing"),
               {EnumerationFailure("CIM_ERR_INVALID_CLASS: Nothing")},
               ConnectionLog()});
}

TEST_F(Queries, AFailedAssociationNeverTellsOfTheNamespace) {
    Serve(host);
    EXPECT_EQ(Associate(ConnectTo("root/other")), 1);
    EXPECT_EQ(objects.size(), 1U);
    EXPECT_EQ(Server().counters().connections, 2U);
    ExpectLog({AssociationCallLog(kDevice, "DeviceInSlot", "Slot", "root/other"),
               {AssociationFailure("CIM_ERR_INVALID_NAMESPACE: root/other")},
               ConnectionLog()});
}

TEST_F(Queries, AnEnumerationThatFailsOutsideCimDoesNotReconnect) {
    Serve(host);
    CimConnection& connection = ConnectTo("root/cimv2");
    Server().InjectFault(simhost::Faults::HttpStatus(503, "Service Unavailable"));
    EXPECT_EQ(Enumerate(connection, "Device"), 1);
    EXPECT_EQ(instances.size(), 1U);
    EXPECT_EQ(Server().counters().connections, 1U);
    ExpectLog({EnumerationCallLog("Device"),
               {EnumerationFailure("HTTP Error (503 Service Unavailable).")}});
}

TEST_F(Queries, AnAssociationThatFailsOutsideCimReconnects) {
    Serve(host);
    CimConnection& connection = ConnectTo("root/cimv2");
    Server().InjectFault(simhost::Faults::HttpStatus(503, "Service Unavailable"));
    EXPECT_EQ(Associate(connection), 1);
    EXPECT_EQ(Server().counters().connections, 2U);
    ExpectLog({AssociationCallLog(kDevice, "DeviceInSlot", "Slot"),
               {AssociationFailure("HTTP Error (503 Service Unavailable).")},
               ConnectionLog()});
}

class QueriesWithoutClient : public Queries {
protected:
    QueriesWithoutClient() {
        Serve(host);
        StopServing();
        connection = &ConnectTo("root/cimv2");
        support::TakePauses();
    }
    /// What a query logs that finds no client and cannot connect either.
    std::vector<std::string> FailedRepairLog() const {
        return Joined({{"3 cimfunc.cpp The value of cim client is NULL,Now restart cimserver!"},
                       ConnectionAttemptLog(),
                       {"1 cimfunc.cpp Failed to connect remote cimserver with the reason: Cannot "
                        "connect to 127.0.0.1:" +
                        std::to_string(info.port) + ". Connection failed."}});
    }
    std::vector<std::string> RepairLog() const {
        return Joined({{"3 cimfunc.cpp The value of cim client is NULL,Now restart cimserver!"},
                       ConnectionLog(),
                       {"3 cimfunc.cpp Restart cim server succeed,Now reconnect to cimserver!"}});
    }

    CimConnection* connection = nullptr;
};

TEST_F(QueriesWithoutClient, FailWhileTheHostIsDownAndTryAgainEachTime) {
    EXPECT_EQ(Enumerate(*connection, "Device"), 1);
    EXPECT_EQ(Associate(*connection), 1);
    EXPECT_EQ(instances.size(), 1U);
    EXPECT_EQ(objects.size(), 1U);
    EXPECT_THAT(support::TakePauses(), ElementsAre(10000, 10000, 10000, 10000, 10000, 10000));
    ExpectLog({EnumerationCallLog("Device"), FailedRepairLog(),
               AssociationCallLog(kDevice, "DeviceInSlot", "Slot"), FailedRepairLog()});
}

TEST_F(QueriesWithoutClient, EnumerationRepairsTheConnectionOnceTheHostIsUp) {
    Serve(host, info.port);
    EXPECT_EQ(Enumerate(*connection, "Device"), 0);
    ExpectLog(
        {EnumerationCallLog("Device"), RepairLog(), {"3 cimfunc.cpp The size of ei_array is:1"}});
}

TEST_F(QueriesWithoutClient, AssociationRepairsTheConnectionOnceTheHostIsUp) {
    Serve(host, info.port);
    EXPECT_EQ(Associate(*connection), 0);
    ExpectLog({AssociationCallLog(kDevice, "DeviceInSlot", "Slot"),
               RepairLog(),
               {"3 cimfunc.cpp The size of associators_array is:1"}});
}

}  // namespace
