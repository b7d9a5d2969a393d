// A password leaves this process's memory with the client, or the module's object, that it was
// given to. The hosts run in processes of their own, where it stays.
#include <gmock/gmock.h>
#include <string.h>

#include "bench/server_process.h"
#include "client/client_settings.h"
#include "common/platform/secret.h"
#include "fault/process_memory.h"
#include "module/transcripts/operations.h"
#include "support/cim_replies.h"
#include "support/client_view.h"
#include "support/host_builder.h"
#include "support/inventory_test.h"
#include "support/recorded_log.h"
#include "support/scripted_server.h"

namespace {

using namespace Pegasus;
using fault::MaskedText;
using fault::PlacesInMemory;
using simhost::Transport;
using support::OutcomeOf;
using ::testing::IsEmpty;
using ::testing::Not;
namespace Faults = simhost::Faults;

struct Account {
    MaskedText user;
    MaskedText password;
    MaskedText encoded;  ///< Base64 of "user:password"
};

constexpr Account kAccount{MaskedText("observer"), MaskedText("Xk7-quite-distinctive-passw0rd"),
                           MaskedText("b2JzZXJ2ZXI6WGs3LXF1aXRlLWRpc3RpbmN0aXZlLXBhc3N3MHJk")};

/// So short that texts with it need no memory of their own.
constexpr Account kShortAccount{MaskedText("u"), MaskedText("k7Qz"), MaskedText("dTprN1F6")};

std::string TextOf(const MaskedText& masked) {
    std::string text;
    text.reserve(MaskedText::kCapacity);
    for (std::size_t i = 0; i < masked.size(); ++i) {
        text.push_back(masked[i]);
    }
    return text;
}

class Host : public bench::Service {
public:
    Host(const simhost::HostDescription& host, const simhost::ServerOptions& options)
        : server(host, options) {}
    std::uint16_t port() const override { return server.port(); }
    bench::Counts counts() const override { return {}; }

    simhost::Server server;
};

class Script : public bench::Service {
public:
    explicit Script(const std::vector<support::Conversation>& conversations)
        : server(conversations) {}
    std::uint16_t port() const override { return server.port(); }
    bench::Counts counts() const override { return {}; }

    support::ScriptedServer server;
};

simhost::HostDescription SmallHost() {
    support::HostBuilder host;
    host.Class("root/cimv2", "OMC_Chassis", R"({"Tag": "string", "Manufacturer": "string"})",
               R"([{"Tag": "1", "Manufacturer": "Contoso"}])");
    host.Class("root/cimv2", "VMware_ComponentSoftwareIdentity",
               R"({"InstanceID": "string", "ElementName": "string"})",
               R"([{"InstanceID": "a", "ElementName": "e"}])");
    return host.Build();
}

class SecretMemory : public ::testing::TestWithParam<Transport> {
protected:
    ~SecretMemory() override { support::TakePauses(); }

    /// In the child process.
    static std::unique_ptr<bench::Service> MakeHost(Transport transport, const Account& account,
                                                    const simhost::Fault* fault) {
        simhost::ServerOptions options;
        options.transport = transport;
        options.user = TextOf(account.user);
        options.password = TextOf(account.password);
        auto host = std::make_unique<Host>(SmallHost(), options);
        if (fault != nullptr) {
            host->server.InjectFault(*fault);
        }
        return host;
    }

    void Serve(const Account& account = kAccount, const simhost::Fault* fault = nullptr) {
        process = std::make_unique<bench::ServerProcess>(
            [&] { return MakeHost(GetParam(), account, fault); });
    }

    void Serve(const std::vector<support::Conversation>& conversations) {
        process = std::make_unique<bench::ServerProcess>(
            [&] { return std::make_unique<Script>(conversations); });
    }

    void Connect(CIMClient& client, const Account& account = kAccount) const {
        ConnectTo(client, process->port(), account);
    }

    static void ConnectTo(CIMClient& client, std::uint16_t port, const Account& account) {
        const std::string user = TextOf(account.user);
        std::string password = TextOf(account.password);
        try {
            cimclient::Connect(
                client, {"127.0.0.1", port, GetParam() == Transport::kHttps, user, password});
        } catch (const CannotConnectException&) {
        }
        Zentar::Wipe(password);  // what the test itself has given is its own to forget
    }

    static std::string Ask(CIMClient& client) {
        return OutcomeOf([&] { return client.enumerateInstances("root/cimv2", "OMC_Chassis"); });
    }

    static void ExpectForgotten(const Account& account = kAccount) {
        EXPECT_THAT(PlacesInMemory(account.encoded), IsEmpty());
        if (account.password.size() >= 12) {  // shorter ones may stand somewhere by chance
            EXPECT_THAT(PlacesInMemory(account.password), IsEmpty());
        }
    }

    /// A module's object for the host, and this test's own copy of the password forgotten.
    std::unique_ptr<Zentar::Agentless::Kalvex> Module() const {
        ZentarConnection::ConnectionInfo info;
        info.host = "127.0.0.1";
        info.port = process->port();
        info.user = TextOf(kAccount.user);
        info.password = TextOf(kAccount.password);
        info.connection_type = GetParam() == Transport::kHttps ? 1 : 0;
        info.connection_case = 2;
        auto module = std::make_unique<Zentar::Agentless::Kalvex>(info);
        Zentar::Wipe(info.password);
        return module;
    }

    std::unique_ptr<bench::ServerProcess> process;
    support::RecordedLog log;
};

TEST_P(SecretMemory, HoldsCredentialsWhileAClientIsConnectedAndNotLonger) {
    Serve();
    {
        CIMClient client;
        Connect(client);
        EXPECT_EQ(Ask(client), "1 objects");
        EXPECT_THAT(PlacesInMemory(kAccount.encoded), Not(IsEmpty()));
        EXPECT_THAT(PlacesInMemory(kAccount.password), IsEmpty());
    }
    ExpectForgotten();
}

TEST_P(SecretMemory, LosesCredentialsOnDisconnection) {
    Serve();
    CIMClient client;
    Connect(client);
    EXPECT_EQ(Ask(client), "1 objects");
    client.disconnect();
    ExpectForgotten();
}

TEST_P(SecretMemory, LosesShortCredentials) {
    Serve(kShortAccount);
    CIMClient client;
    Connect(client, kShortAccount);
    EXPECT_EQ(Ask(client), "1 objects");
    EXPECT_THAT(PlacesInMemory(kShortAccount.encoded), Not(IsEmpty()));
    client.disconnect();
    ExpectForgotten(kShortAccount);
}

TEST_P(SecretMemory, KeepsNoCredentialsOfAConnectionThatFailed) {
    CIMClient client;
    ConnectTo(client, support::ClosedPort(), kAccount);
    EXPECT_EQ(Ask(client), "NotConnectedException [not connected]");
    ExpectForgotten();
}

TEST_P(SecretMemory, LosesCredentialsThatTheHostRefused) {
    Serve(kShortAccount);
    CIMClient client;
    Connect(client);
    EXPECT_THAT(Ask(client), ::testing::StartsWith("CIMClientHTTPErrorException 401"));
    client.disconnect();
    ExpectForgotten();
}

TEST_P(SecretMemory, LosesCredentialsThatWereSentToABrokenHost) {
    for (const simhost::Fault& way :
         {Faults::Close(), Faults::Reset(), Faults::Stall(), Faults::Truncate(100),
          Faults::Raw("SSH-2.0\r\n"), Faults::HttpStatus(503, "Service Unavailable"),
          Faults::CimErrorElement(1, "died"), Faults::CloseEvery(1, false)}) {
        Serve(kAccount, &way);
        CIMClient client;
        client.setTimeout(300);
        Connect(client);
        for (int i = 0; i < 3; ++i) {
            Ask(client);
        }
        EXPECT_THAT(PlacesInMemory(kAccount.encoded), Not(IsEmpty()));
        client.disconnect();
        ExpectForgotten();
    }
}

TEST_P(SecretMemory, HoldsAModulesPasswordWhileItIsUsedAndNotLonger) {
    Serve();
    auto module = Module();
    for (const transcripts::Operation& operation : transcripts::Operations()) {
        operation.run(*module);
    }
    EXPECT_THAT(PlacesInMemory(kAccount.password), Not(IsEmpty()));
    EXPECT_THAT(PlacesInMemory(kAccount.encoded), Not(IsEmpty()));
    module.reset();
    ExpectForgotten();
}

TEST_P(SecretMemory, LosesAModulesPasswordThatTheHostRefused) {
    Serve(kShortAccount);
    auto module = Module();
    for (const transcripts::Operation& operation : transcripts::Operations()) {
        operation.run(*module);
    }
    module.reset();
    ExpectForgotten();
}

INSTANTIATE_TEST_SUITE_P(Over, SecretMemory, ::testing::Values(Transport::kHttp, Transport::kHttps),
                         [](const auto& test) {
                             return test.param == Transport::kHttps ? "Https" : "Http";
                         });

class SecretRequest : public SecretMemory {};

TEST_P(SecretRequest, ThatIsNotTakenInTimeIsForgotten) {
    using namespace support;
    Serve({{AwaitRequest(), Send(Challenge()), AwaitByte(), AwaitCue()}});
    CIMClient client;
    client.setTimeout(500);
    Connect(client);
    const CIMName name(std::string(20UL << 20, 'x').c_str());  // more than the sockets hold
    EXPECT_THAT(OutcomeOf([&] { return client.enumerateInstances("root/cimv2", name); }),
                ::testing::StartsWith("ConnectionTimeoutException"));
    client.disconnect();
    ExpectForgotten();
}

INSTANTIATE_TEST_SUITE_P(Over, SecretRequest, ::testing::Values(Transport::kHttp),
                         [](const auto&) { return "Http"; });

}  // namespace
