#include "common/cimom/src/cimfunc.h"
#include "common/log/log_control.h"
#include "support/client_sockets.h"
#include "support/inventory_test.h"

namespace {

using support::ClosedPort;
using support::HostBuilder;
using support::Joined;
using support::TakePauses;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Zentar::CimConnection;

class Connection : public support::InventoryTest {
protected:
    CimConnection Connect() { return CimConnection(Pegasus::CIMNamespaceName("root/cimv2"), info); }
    /// The message after the third attempt that ended so.
    static std::string Failure(const std::string& reason) {
        return "1 cimfunc.cpp Failed to connect remote cimserver with the reason: " + reason;
    }
    std::string CannotConnect() const {
        return "Cannot connect to 127.0.0.1:" + std::to_string(info.port) + ". Connection failed.";
    }
};

TEST_F(Connection, WithoutHostNeverTouchesTheNetwork) {
    info.host = "";
    CimConnection connection = Connect();
    EXPECT_EQ(connection.client, nullptr);
    EXPECT_THAT(log.Messages(),
                ElementsAre("1 cimfunc.cpp Failed to connect remote cimserver due to invalid "
                            "connection information. "));
    EXPECT_EQ(Zentar::ReconnectCimServer(connection), Zentar::kCimFailed);
    EXPECT_EQ(connection.client, nullptr);
    EXPECT_THAT(TakePauses(), IsEmpty());
}

TEST_F(Connection, IsMadeForTheCimCasesOnly) {
    Serve(HostBuilder());
    for (const int connection_case : {-1, 0, 1, 5, 6}) {
        log.Clear();
        info.connection_case = connection_case;
        CimConnection connection = Connect();
        EXPECT_EQ(connection.client, nullptr);
        EXPECT_THAT(
            log.Messages(),
            ElementsAreArray(Joined({ConnectionAttemptLog(),
                                     {"4 cimfunc.cpp Connection case is not CIM, do not try to "
                                      "connect CIM server."}})));
        EXPECT_EQ(Zentar::ReconnectCimServer(connection), Zentar::kCimFailed);
    }
    EXPECT_EQ(Server().counters().connections, 0U);
    for (const int connection_case : {2, 3, 4}) {
        log.Clear();
        info.connection_case = connection_case;
        EXPECT_NE(Connect().client, nullptr) << connection_case;
        EXPECT_THAT(log.Messages(), ElementsAreArray(ConnectionLog()));
    }
    EXPECT_EQ(Server().counters().connections, 3U);
}

/// Neither HTTP nor HTTPS.
class ConnectionOfAnInvalidType : public Connection, public ::testing::WithParamInterface<int> {
protected:
    ConnectionOfAnInvalidType() {
        info.port = ClosedPort();
        info.connection_type = GetParam();
    }
    /// An attempt would have failed and been followed by a pause.
    ~ConnectionOfAnInvalidType() override { EXPECT_THAT(TakePauses(), IsEmpty()); }
    /// What each attempt to connect logs.
    std::vector<std::string> InvalidTypeLog() const {
        return Joined({ConnectionAttemptLog(),
                       {"1 cimfunc.cpp Invalid connection type: " + std::to_string(GetParam())}});
    }
};

TEST_P(ConnectionOfAnInvalidType, SucceedsAndKeepsAnUnconnectedClient) {
    CimConnection connection = Connect();
    ASSERT_NE(connection.client, nullptr);
    EXPECT_EQ(connection.client->getTimeout(), 2400000U);
    EXPECT_THAT(log.Messages(), ElementsAreArray(InvalidTypeLog()));
    for (const auto connect : {Zentar::ConnectCimServer, Zentar::ReconnectCimServer}) {
        log.Clear();
        EXPECT_EQ(connect(connection), Zentar::kCimOk);
        EXPECT_NE(connection.client, nullptr);
        EXPECT_THAT(log.Messages(), ElementsAreArray(InvalidTypeLog()));
    }
}

TEST_P(ConnectionOfAnInvalidType, FailsAtEachEnumerationAndKeepsItsClient) {
    CimConnection connection = Connect();
    const Pegasus::CIMClient* const client = connection.client;
    Pegasus::Array<Pegasus::CIMInstance> instances;
    for (int request = 0; request < 2; ++request) {
        log.Clear();
        EXPECT_EQ(Zentar::GetCIMArrayFromEnumerateInstances(Pegasus::CIMName("OMC_Chassis"),
                                                            connection, instances, 300000),
                  Zentar::kCimFailed);
        EXPECT_THAT(log.Texts(1),
                    ElementsAre("Enumerate instances failed with the reason: not connected"));
        EXPECT_EQ(connection.client, client);
    }
}

TEST_P(ConnectionOfAnInvalidType, FailsAtEachAssociationAndMakesAnotherClient) {
    CimConnection connection = Connect();
    Pegasus::Array<Pegasus::CIMObject> objects;
    log.Clear();
    EXPECT_EQ(Zentar::GetCIMArrayFromAssociators(
                  Pegasus::CIMObjectPath(Pegasus::String("Device.Id=\"d\"")),
                  Pegasus::CIMName("DeviceInSlot"), Pegasus::CIMName("Slot"), connection, objects),
              Zentar::kCimFailed);
    EXPECT_THAT(log.Texts(1),
                ElementsAre("Enumerate associators failed with the reason: not connected",
                            "Invalid connection type: " + std::to_string(GetParam())));
    EXPECT_NE(connection.client, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Type, ConnectionOfAnInvalidType, ::testing::Values(2, -1));

TEST_F(Connection, ToARefusingHostTakesThreeAttemptsAndThreePauses) {
    info.port = ClosedPort();
    info.user = "root";
    const CimConnection connection = Connect();
    EXPECT_EQ(connection.client, nullptr);
    EXPECT_THAT(TakePauses(), ElementsAre(10000, 10000, 10000));
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined({ConnectionAttemptLog(), {Failure(CannotConnect())}})));
}

TEST_F(Connection, ReportsItsFailureOnceBeforeTheLastPause) {
    info.port = ClosedPort();
    std::vector<std::size_t> failures_at_pauses;
    support::DuringPauses([&] { failures_at_pauses.push_back(log.Texts(1).size()); });
    Connect();
    EXPECT_THAT(failures_at_pauses, ElementsAre(0, 0, 1));
}

TEST_F(Connection, IsTriedThreeTimesWithAHostThatHangsUp) {
    Serve(HostBuilder().Build(), simhost::ServerOptions());
    Server().InjectFault(simhost::Faults::CloseOnConnect());
    EXPECT_EQ(Connect().client, nullptr);
    EXPECT_EQ(Server().counters().connections, 3U);
    EXPECT_THAT(TakePauses(), ElementsAre(10000, 10000, 10000));
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined({ConnectionAttemptLog(), {Failure(CannotConnect())}})));
}

TEST_F(Connection, SucceedsOnALaterAttempt) {
    Serve(HostBuilder());
    const auto port = info.port;
    StopServing();
    support::DuringPauses([&] { Serve(HostBuilder(), port); });
    const CimConnection connection = Connect();
    EXPECT_NE(connection.client, nullptr);
    EXPECT_THAT(TakePauses(), ElementsAre(10000));
    EXPECT_THAT(log.Messages(), ElementsAreArray(ConnectionLog()));
}

TEST_F(Connection, IsMadeOverHttps) {
    Serve(HostBuilder().Build(), simhost::ServerOptions());
    EXPECT_NE(Connect().client, nullptr);
    EXPECT_EQ(Server().counters().tls_handshakes, 1U);
}

TEST_F(Connection, NeverLogsThePassword) {
    Serve(HostBuilder());
    info.user = "root";
    for (const char* password : {"", "x", "a-very-long-password-of-more-than-ten-characters"}) {
        log.Clear();
        info.password = password;
        const CimConnection connection = Connect();
        EXPECT_THAT(log.Messages(), ElementsAreArray(ConnectionLog()));
        for (const std::string& message : log.Messages()) {
            EXPECT_THAT(message, Not(HasSubstr("very-long-password")));
        }
    }
}

TEST_F(Connection, EndsBeforeAReconnectBegins) {
    Serve(HostBuilder());
    std::vector<std::size_t> sockets_before_connecting;
    Zentar::SetLogSink([&](const Zentar::LogMessage& message) {
        if (message.text.starts_with("Connecting to ")) {
            sockets_before_connecting.push_back(support::SocketsConnectedTo(info.port));
        }
    });
    CimConnection connection = Connect();
    EXPECT_EQ(support::SocketsConnectedTo(info.port), 1U);
    EXPECT_EQ(Zentar::ReconnectCimServer(connection), Zentar::kCimOk);
    EXPECT_EQ(support::SocketsConnectedTo(info.port), 1U);
    EXPECT_THAT(sockets_before_connecting, ElementsAre(0, 0));
}

TEST_F(Connection, IsReplacedByAReconnect) {
    Serve(HostBuilder());
    CimConnection connection = Connect();
    EXPECT_EQ(Zentar::ReconnectCimServer(connection), Zentar::kCimOk);
    EXPECT_NE(connection.client, nullptr);
    EXPECT_EQ(Server().counters().connections, 2U);
    StopServing();
    EXPECT_EQ(Zentar::ReconnectCimServer(connection), Zentar::kCimFailed);
    EXPECT_EQ(connection.client, nullptr);
}

}  // namespace
