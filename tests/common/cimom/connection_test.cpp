#include "common/cimom/src/cimfunc.h"
#include "support/inventory_test.h"

namespace {

using support::ClosedPort;
using support::HostBuilder;
using support::TakePauses;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using Zentar::CimConnection;

class Connection : public support::InventoryTest {
protected:
    CimConnection Connect() { return CimConnection(Pegasus::CIMNamespaceName("root/cimv2"), info); }
    std::string Connecting() const {
        return "3 cimfunc.cpp Connecting to " + info.user + ":**********@" + info.host + ":" +
               std::to_string(info.port);
    }
};

TEST_F(Connection, WithoutHostNeverTouchesTheNetwork) {
    info.host = "";
    const CimConnection connection = Connect();
    EXPECT_EQ(connection.client, nullptr);
    EXPECT_THAT(log.Messages(),
                ElementsAre("1 cimfunc.cpp Failed to connect remote cimserver due to invalid "
                            "connection information. "));
    EXPECT_THAT(TakePauses(), IsEmpty());
}

TEST_F(Connection, IsMadeForTheCimCasesOnly) {
    Serve(HostBuilder());
    for (const int connection_case : {-1, 0, 1, 5, 6}) {
        log.Clear();
        info.connection_case = connection_case;
        const CimConnection connection = Connect();
        EXPECT_EQ(connection.client, nullptr);
        EXPECT_THAT(
            log.Messages(),
            ElementsAre(Connecting(),
                        "4 cimfunc.cpp connection case is " + std::to_string(connection_case),
                        "4 cimfunc.cpp Connection case is not CIM, do not try to connect "
                        "CIM server."));
    }
    EXPECT_EQ(Server().counters().connections, 0U);
    for (const int connection_case : {2, 3, 4}) {
        info.connection_case = connection_case;
        EXPECT_NE(Connect().client, nullptr) << connection_case;
    }
    EXPECT_EQ(Server().counters().connections, 3U);
}

TEST_F(Connection, OfAnInvalidTypeKeepsAnUnconnectedClient) {
    Serve(HostBuilder());
    info.connection_type = 2;
    CimConnection connection = Connect();
    EXPECT_NE(connection.client, nullptr);
    EXPECT_EQ(Zentar::ConnectCimServer(connection), Zentar::kCimOk);
    EXPECT_THAT(log.Texts(1),
                ElementsAre("Invalid connection type: 2", "Invalid connection type: 2"));
    EXPECT_EQ(Server().counters().connections, 0U);

    Pegasus::Array<Pegasus::CIMInstance> instances;
    EXPECT_EQ(Zentar::GetCIMArrayFromEnumerateInstances(Pegasus::CIMName("OMC_Chassis"), connection,
                                                        instances, 300000),
              Zentar::kCimFailed);
    EXPECT_EQ(log.Texts(1).back(), "Enumerate instances failed with the reason: not connected");
}

TEST_F(Connection, ToARefusingHostTakesThreeAttemptsAndThreePauses) {
    info.port = ClosedPort();
    info.user = "root";
    const CimConnection connection = Connect();
    EXPECT_EQ(connection.client, nullptr);
    EXPECT_THAT(TakePauses(), ElementsAre(10000, 10000, 10000));
    EXPECT_THAT(log.Messages(),
                ElementsAre(Connecting(), "4 cimfunc.cpp connection case is 2",
                            "1 cimfunc.cpp Failed to connect remote cimserver with the reason: "
                            "Cannot connect to 127.0.0.1:" +
                                std::to_string(info.port) + ". Connection failed."));
}

TEST_F(Connection, SucceedsOnALaterAttempt) {
    Serve(HostBuilder());
    const auto port = info.port;
    StopServing();
    support::DuringPauses([&] { Serve(HostBuilder(), port); });
    const CimConnection connection = Connect();
    EXPECT_NE(connection.client, nullptr);
    EXPECT_THAT(TakePauses(), ElementsAre(10000));
    EXPECT_THAT(log.Texts(1), IsEmpty());
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
        EXPECT_EQ(log.Messages().front(), Connecting());
        for (const std::string& message : log.Messages()) {
            EXPECT_THAT(message, Not(HasSubstr("very-long-password")));
        }
    }
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
