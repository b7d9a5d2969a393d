#include <pthread.h>

#include <system_error>
#include <thread>

#include "simhost/host_test.h"

namespace simhost_test {

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class Connections : public HostTest {};

/// While it lives, no thread can be started: there is no room for the stack that each would have.
class NoThreads {
public:
    NoThreads() {
        EXPECT_EQ(pthread_getattr_default_np(&before_), 0);
        pthread_attr_t attributes = before_;
        constexpr std::size_t kMoreThanThereIs = std::size_t{1} << 60U;
        EXPECT_EQ(pthread_attr_setstacksize(&attributes, kMoreThanThereIs), 0);
        EXPECT_EQ(pthread_setattr_default_np(&attributes), 0);
        EXPECT_THROW(std::thread([] {}).join(), std::system_error);
    }
    ~NoThreads() {
        EXPECT_EQ(pthread_setattr_default_np(&before_), 0);
        pthread_attr_destroy(&before_);
    }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;

private:
    pthread_attr_t before_{};
};

TEST_F(Connections, AreKeptAlive) {
    RawClient client = Connect();
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(client.Ask(EnumerateCards()).status, 200);
    }
    EXPECT_EQ(Server().counters().connections, 1U);
    EXPECT_EQ(Server().counters().requests, 20U);
}

TEST_F(Connections, AreCountedBeforeTheirFirstByte) {
    Server();
    const RawClient first = Connect();
    const RawClient second = Connect();
    EXPECT_EQ(Server().counters().connections, 2U);
    EXPECT_EQ(Server().counters().tls_handshakes, 0U);
}

TEST_F(Connections, AreServedSideBySide) {
    RawClient idle = Connect();
    std::vector<std::thread> threads;
    std::vector<int> statuses(8);
    for (int& status : statuses) {
        threads.emplace_back([&] {
            RawClient client = Connect();
            for (int i = 0; i < 10; ++i) {
                status = client.Ask(EnumerateCards()).status;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_THAT(statuses, ::testing::Each(200));
    EXPECT_EQ(Server().counters().requests, 80U);
    EXPECT_EQ(Server().counters().connections, 9U);
    EXPECT_EQ(idle.Ask(EnumerateCards()).status, 200);
}

TEST_F(Connections, EndAfterTheConfiguredRequestsWithAnAnnouncement) {
    simhost::ServerOptions options = Http();
    options.requests_per_connection = 2;
    Serve(options);
    RawClient client = Connect();
    EXPECT_FALSE(client.Ask(EnumerateCards()).HasHeader("Connection"));
    EXPECT_EQ(client.Ask(EnumerateCards()).Header("Connection"), "close");
    EXPECT_EQ(client.ReceiveAll(), "");
    EXPECT_EQ(client.end(), End::kClosed);
}

TEST_F(Connections, EndWithoutAnAnnouncementOnRequest) {
    simhost::ServerOptions options = Http();
    options.requests_per_connection = 1;
    options.announce_close = false;
    Serve(options);
    RawClient client = Connect();
    EXPECT_FALSE(client.Ask(EnumerateCards()).HasHeader("Connection"));
    EXPECT_EQ(client.ReceiveAll(), "");
}

TEST_F(Connections, EndWhenTheClientSaysSo) {
    RawClient client = Connect();
    EXPECT_EQ(client.Ask(EnumerateCards({"Connection: close\r\n", ""})).Header("Connection"),
              "close");
    EXPECT_EQ(client.ReceiveAll(), "");
}

TEST_F(Connections, OfOldClientsEndAfterOneAnswer) {
    std::string request = EnumerateCards();
    request.replace(request.find("HTTP/1.1"), 8, "HTTP/1.0");
    RawClient client = Connect();
    const Reply reply = client.Ask(request);
    EXPECT_TRUE(reply.complete);
    EXPECT_FALSE(reply.HasHeader("Transfer-Encoding"));
    EXPECT_EQ(client.ReceiveAll(), "");
}

TEST_F(Connections, EndWhenIdleForTooLong) {
    for (const auto transport : {simhost::Transport::kHttp, simhost::Transport::kHttps}) {
        simhost::ServerOptions options;
        options.transport = transport;
        options.idle_limit = std::chrono::milliseconds(20);
        Serve(options);
        RawClient client = Connect();
        EXPECT_EQ(client.Ask(EnumerateCards()).status, 200);
        EXPECT_EQ(client.ReceiveAll(), "");
        EXPECT_EQ(client.end(), End::kClosed);
    }
}

TEST_F(Connections, AreDelayedAsConfigured) {
    simhost::ServerOptions options = Http();
    options.round_trip_delay = std::chrono::hours(1);
    Serve(options);
    RawClient client = Connect();
    client.Send(EnumerateCards());
    EXPECT_EQ(Server().counters().connections, 1U);
    StopServing();
    EXPECT_EQ(client.ReceiveAll(), "");
}

TEST_F(Connections, WithoutAThreadForThemAreClosedAndTheNextAreServed) {
    Server();
    {
        const NoThreads no_threads;
        RawClient client = Connect();
        EXPECT_EQ(client.ReceiveAll(), "");
        EXPECT_NE(client.end(), End::kNone);
    }
    EXPECT_EQ(Ask(EnumerateCards()).status, 200);
    EXPECT_EQ(Server().counters().connections, 2U);
}

TEST_F(Connections, EndWithTheServer) {
    RawClient idle = Connect();
    RawClient busy = Connect();
    Server().InjectFault(simhost::Faults::Stall());
    busy.Send(EnumerateCards());
    EXPECT_EQ(Server().counters().connections, 2U);
    StopServing();
    EXPECT_EQ(idle.ReceiveAll(), "");
    EXPECT_NE(idle.end(), End::kNone);
    EXPECT_EQ(busy.ReceiveAll(), "");
    EXPECT_NE(busy.end(), End::kNone);
}

TEST_F(Connections, ToAPortInUseAreRefusedWithAClearText) {
    simhost::ServerOptions options = Http();
    options.port = Server().port();
    try {
        const simhost::Server second(SmallHost(), options);
        FAIL() << "two servers listen on one port";
    } catch (const std::system_error& error) {
        EXPECT_THAT(error.what(), StartsWith("cannot listen on 127.0.0.1 port " +
                                             std::to_string(options.port) + ": "));
        EXPECT_EQ(error.code(), std::errc::address_in_use);
    }
}

TEST_F(Connections, ToAnAddressThatIsNoneAreRefusedWithAClearText) {
    simhost::ServerOptions options = Http();
    options.address = "nowhere";
    try {
        const simhost::Server server(SmallHost(), options);
        FAIL() << "a server listens nowhere";
    } catch (const std::system_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("cannot listen on nowhere"));
    }
}

TEST_F(Connections, AreAddressedByUrl) {
    EXPECT_EQ(Server().Url(), "http://127.0.0.1:" + std::to_string(Server().port()));
    Serve(simhost::ServerOptions());
    EXPECT_EQ(Server().Url(), "https://127.0.0.1:" + std::to_string(Server().port()));
}

}  // namespace

}  // namespace simhost_test
