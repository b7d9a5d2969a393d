// How a server treats its connections when it has the habits of those on real hosts.
#include "simhost/server_habits.h"

#include <netinet/tcp.h>
#include <sys/socket.h>

#include <future>

#include "simhost/host_test.h"
#include "simhost/listener.h"

namespace simhost_test {

namespace {

using simhost::RealServerHabits;

class ServerHabits : public HostTest {
protected:
    static simhost::ServerOptions HabitsOverHttp() {
        simhost::ServerOptions options = RealServerHabits();
        options.transport = simhost::Transport::kHttp;
        return options;
    }
};

/// TCP_NODELAY of the first socket that a listener with these options hands out.
bool NoDelayOfAccepted(const simhost::ServerOptions& options) {
    std::promise<bool> no_delay;
    simhost::Listener listener(options);
    const auto port = listener.Listen(0, [&](simhost::NativeSocket accepted) {
        int value = -1;
        socklen_t size = sizeof value;
        EXPECT_EQ(getsockopt(accepted.handle, IPPROTO_TCP, TCP_NODELAY, &value, &size), 0);
        no_delay.set_value(value != 0);
        simhost::Stream(accepted).Close();
    });
    listener.Start();
    const RawClient client(port);
    return no_delay.get_future().get();
}

TEST_F(ServerHabits, SmallSegmentsAreHeldBackOnlyWithoutNoDelay) {
    EXPECT_TRUE(NoDelayOfAccepted(Http()));
    EXPECT_FALSE(NoDelayOfAccepted(HabitsOverHttp()));
}

TEST_F(ServerHabits, TheTenthAnswerOfAConnectionAnnouncesItsEnd) {
    Serve(HabitsOverHttp());
    RawClient client = Connect();
    for (int request = 1; request < 10; ++request) {
        EXPECT_FALSE(client.Ask(EnumerateCards()).HasHeader("Connection")) << request;
    }
    EXPECT_EQ(client.Ask(EnumerateCards()).Header("Connection"), "close");
    EXPECT_EQ(client.ReceiveAll(), "");
}

TEST_F(ServerHabits, IdleConnectionsEndAfterFifteenSeconds) {
    // That idle connections end when the limit says so, connection_test.cpp shows.
    EXPECT_EQ(RealServerHabits().idle_limit, std::chrono::seconds(15));
}

TEST_F(ServerHabits, Tls13SessionTicketsAreSent) {
    Serve(RealServerHabits());
    RawClient first = Connect();
    EXPECT_EQ(first.TlsVersion(), "TLSv1.3");
    EXPECT_EQ(first.Ask(EnumerateCards()).status, 200);
    RawClient second = first.ConnectAgain(Server());
    EXPECT_EQ(second.Ask(EnumerateCards()).status, 200);
    EXPECT_EQ(Server().counters().tls_resumptions, 1U);
}

}  // namespace

}  // namespace simhost_test
