#include <openssl/ssl.h>
#include <signal.h>

#include "cimclient/wire/wire_test.h"

namespace {

using namespace Pegasus;
using namespace support;
using ::testing::StartsWith;

class Tls : public wire::WireTest {
protected:
    void ServeTls(std::vector<Conversation> conversations, const TlsOptions& options = {}) {
        server = std::make_unique<ScriptedServer>(std::move(conversations), options);
    }
    std::string ConnectTrustingAll(const char* host = "127.0.0.1") {
        return FailureOf([&] {
            client.connect(host, server->port(), SSLContext("", nullptr), "root", "secret");
        });
    }
    std::string CannotConnect() const {
        return "CannotConnectException [Cannot connect to 127.0.0.1:" +
               std::to_string(server->port()) + ". Connection failed.]";
    }
};

constexpr const char* kConnected = "nothing thrown";

TEST_F(Tls, ShakesHandsInConnect) {
    ServeTls({Replies({AnswerOf(1)})});
    EXPECT_EQ(ConnectTrustingAll(), kConnected);
    const TlsSeen seen = server->AwaitHandshakes(1).front();
    EXPECT_EQ(seen.version, "TLSv1.3");
    EXPECT_TRUE(server->requests().empty());
    EXPECT_EQ(Enumerate(), "1 objects");
}

struct Version {
    int number;
    const char* name;
};

TEST_F(Tls, SpeaksEveryVersionSince10) {
    for (const Version& version :
         {Version{TLS1_VERSION, "TLSv1"}, Version{TLS1_1_VERSION, "TLSv1.1"},
          Version{TLS1_2_VERSION, "TLSv1.2"}, Version{TLS1_3_VERSION, "TLSv1.3"}}) {
        client.disconnect();
        TlsOptions options;
        options.oldest_version = options.newest_version = version.number;
        ServeTls({Replies({AnswerOf(1)})}, options);
        EXPECT_EQ(ConnectTrustingAll(), kConnected) << version.name;
        EXPECT_EQ(server->AwaitHandshakes(1).front().version, version.name);
        EXPECT_EQ(Enumerate(), "1 objects") << version.name;
    }
}

TEST_F(Tls, AcceptsNoGroupThatTakesLongToComputeWith) {
    TlsOptions options;
    options.weak_key = true;
    options.group = "ffdhe4096";
    ServeTls({Conversation{}}, options);
    EXPECT_EQ(ConnectTrustingAll(), kConnected);
    client.disconnect();
    options.group = "ffdhe6144";
    ServeTls({Conversation{}}, options);
    EXPECT_EQ(ConnectTrustingAll(), CannotConnect());
}

TEST_F(Tls, AcceptsWeakKeysAndOldSignatures) {
    TlsOptions options;
    options.newest_version = TLS1_VERSION;
    options.weak_key = true;
    ServeTls({Replies({AnswerOf(1)})}, options);
    EXPECT_EQ(ConnectTrustingAll(), kConnected);
    EXPECT_EQ(Enumerate(), "1 objects");
}

TEST_F(Tls, NamesTheHostUnlessItIsAnAddress) {
    ServeTls({{}, {}});
    EXPECT_EQ(ConnectTrustingAll("localhost"), kConnected);
    client.disconnect();
    EXPECT_EQ(ConnectTrustingAll(), kConnected);
    const auto seen = server->AwaitHandshakes(2);
    EXPECT_EQ(seen[0].server_name, "localhost");
    EXPECT_EQ(seen[1].server_name, "");
}

TEST_F(Tls, ResumesTheSessionWhenItReconnects) {
    for (const Version& version :
         {Version{TLS1_2_VERSION, "TLSv1.2"}, Version{TLS1_3_VERSION, "TLSv1.3"}}) {
        client.disconnect();
        TlsOptions options;
        options.oldest_version = options.newest_version = version.number;
        const std::string closing = AnswerOf(1, {"Connection: close"});
        ServeTls({Replies({closing}), Replies({AnswerOf(1)}) + Conversation{Close()},
                  Replies({AnswerOf(1)}) + Conversation{Drop()},
                  Replies({AnswerOf(1)}) + Conversation{Reset()}, Replies({AnswerOf(2)})},
                 options);
        EXPECT_EQ(ConnectTrustingAll(), kConnected);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(Enumerate(), "1 objects");
            server->AwaitHangUp(i);
        }
        EXPECT_EQ(Enumerate(), "2 objects");
        const auto seen = server->AwaitHandshakes(5);
        EXPECT_FALSE(seen[0].resumed);
        for (std::size_t i = 1; i < 5; ++i) {
            EXPECT_TRUE(seen[i].resumed) << version.name << " connection " << i;
        }
    }
}

TEST_F(Tls, ForgetsASessionThatTheHostHangsUpOn) {
    TlsOptions options;
    options.hangs_up_on_sessions = true;
    ServeTls({Replies({AnswerOf(1, {"Connection: close"})}), {}, Replies({AnswerOf(2)})}, options);
    EXPECT_EQ(ConnectTrustingAll(), kConnected);
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Enumerate(), CannotConnect());
    EXPECT_EQ(Enumerate(), "2 objects");
    EXPECT_EQ(server->AwaitHandshakes(3)[1].version, "");
}

TEST_F(Tls, CarriesLargeMessagesBothWays) {
    std::string instances;
    for (int i = 0; i < 5000; ++i) {
        instances += NamedInstance(std::to_string(i));
    }
    ServeTls({Replies({ChunkedAnswer(BodyReturning(instances))})});
    EXPECT_EQ(ConnectTrustingAll(), kConnected);
    EXPECT_EQ(
        OutcomeOf([&] { return client.enumerateInstances("root/cimv2", LongName(1UL << 20)); }),
        "5000 objects");
}

TEST_F(Tls, ReconnectsSilentlyWhenTheServerClosesWithoutAWord) {
    ServeTls({Replies({AnswerOf(1)}) + Conversation{Drop()}, Replies({AnswerOf(2)})});
    EXPECT_EQ(ConnectTrustingAll(), kConnected);
    EXPECT_EQ(Enumerate(), "1 objects");
    server->AwaitHangUp(0);
    EXPECT_EQ(Enumerate(), "2 objects");
}

TEST_F(Tls, TakesABodyThatEndsWithTheConnection) {
    for (const Step& end : {Close(), Drop()}) {
        client.disconnect();
        ServeTls({Replies({AnswerHead() + BodyReturning("")}) + Conversation{end}});
        EXPECT_EQ(ConnectTrustingAll(), kConnected);
        EXPECT_EQ(Enumerate(), "0 objects");
    }
}

TEST_F(Tls, FollowsAChallengeAsPlainHttpDoes) {
    ServeTls({Replies({Challenge(), AnswerOf(1)})});
    EXPECT_EQ(ConnectTrustingAll(), kConnected);
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(server->connections(), 1U);
}

TEST_F(Tls, NeedsATlsServer) {
    client.setTimeout(wire::kShortTimeout);
    Serve({{}});
    EXPECT_EQ(ConnectTrustingAll(), CannotConnect()) << "a silent one runs into the timeout";
    Serve({Conversation{Send("HTTP/1.1 400 Bad Request\r\n\r\n")}});
    EXPECT_EQ(ConnectTrustingAll(), CannotConnect());
    Serve({Conversation{AwaitByte(), Close()}});
    EXPECT_EQ(ConnectTrustingAll(), CannotConnect());
    EXPECT_EQ(Enumerate(), "NotConnectedException [not connected]");
}

TEST_F(Tls, IsNeededByATlsServer) {
    ServeTls({{}});
    Connect();
    EXPECT_THAT(Enumerate(), StartsWith("CIMClientMalformedHTTPException ["));
}

TEST_F(Tls, RefusesATrustStoreThatItWouldNotKeepTo) {
    EXPECT_EQ(FailureOf([] { SSLContext("store.pem", nullptr); }),
              "SSLException [SSL Exception: There are no trust stores.]");
}

TEST_F(Tls, LeavesTheProcesssSettingsAlone) {
    struct sigaction before = {};
    sigaction(SIGPIPE, nullptr, &before);
    ServeTls({Replies({AnswerOf(1)}) + Conversation{Reset()}, Replies({AnswerOf(2)})});
    EXPECT_EQ(ConnectTrustingAll(), kConnected);
    EXPECT_EQ(Enumerate(), "1 objects");
    EXPECT_EQ(Enumerate(), "2 objects");
    struct sigaction after = {};
    sigaction(SIGPIPE, nullptr, &after);
    EXPECT_EQ(after.sa_handler, before.sa_handler);
    SSL_CTX* context = SSL_CTX_new(TLS_client_method());
    EXPECT_GE(SSL_CTX_get_security_level(context), 1) << "other users of TLS keep their level";
    SSL_CTX_free(context);
}

}  // namespace
