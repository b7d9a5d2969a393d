// A password stands in no log line and in no error text, whatever becomes of the exchanges it is
// for.
#include <tuple>

#include "Pegasus/Client/CIMClient.h"
#include "common/log/log_control.h"
#include "module/transcripts/operations.h"
#include "simhost/base64.h"
#include "support/client_view.h"
#include "support/inventory_test.h"

namespace {

using simhost::Fault;
using simhost::Transport;
using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
namespace Faults = simhost::Faults;

constexpr const char* kUser = "observer";
constexpr const char* kPassword = "Xk7-quite-distinctive-passw0rd";
constexpr const char* kOtherPassword = "another-one";

auto GivesAway(const std::string& password) {
    return AnyOf(HasSubstr(password), HasSubstr(simhost::Base64(password)),
                 HasSubstr(simhost::Base64(std::string(kUser) + ":" + password)));
}

/// The sound host first.
std::vector<std::vector<Fault>> AllWays() {
    return {{},
            {Faults::Close()},
            {Faults::Reset()},
            {Faults::Truncate(40)},
            {Faults::Truncate(400)},
            {Faults::Raw("SSH-2.0-OpenSSH_8.3\r\n")},
            {Faults::HttpStatus(401, "Unauthorized")},
            {Faults::HttpStatus(503, "Service Unavailable", "request-not-valid")},
            {Faults::CimErrorElement(1, "provider died")},
            {Faults::CimErrorTrailer(4, "out of memory")},
            {Faults::ContentType("text/html")},
            {Faults::MessageId("0")},
            {Faults::CloseEvery(2, false)},
            {Faults::CloseOnConnect()},
            {Faults::RawOnConnect("SSH-2.0-OpenSSH_8.3\r\n")}};
}

class SecretTexts : public support::InventoryTest {
protected:
    void ServeWith(Transport transport, const std::vector<Fault>& faults) {
        support::HostBuilder host;
        host.Class("root/cimv2", "OMC_Chassis", R"({"Tag": "string", "Version": "string"})",
                   R"([{"Tag": "1", "Version": "2"}])");
        simhost::ServerOptions options;
        options.transport = transport;
        options.user = kUser;
        options.password = kPassword;
        Serve(host.Build(), options);
        for (const Fault& fault : faults) {
            Server().InjectFault(fault);
        }
    }

    void ReadWholeInventory(const std::string& password) {
        info.password = password;
        Zentar::Agentless::Kalvex host(info);
        for (const transcripts::Operation& operation : transcripts::Operations()) {
            operation.run(host);
        }
        support::TakePauses();
    }
};

class SecretLog : public SecretTexts,
                  public ::testing::WithParamInterface<std::tuple<Transport, unsigned>> {};

TEST_P(SecretLog, NeverHoldsThePassword) {
    const auto [transport, level] = GetParam();
    Zentar::SetMinLogLevel(level);
    for (const auto& way : AllWays()) {
        ServeWith(transport, way);
        for (const char* password : {kPassword, kOtherPassword}) {
            log.Clear();
            ReadWholeInventory(password);
            EXPECT_THAT(log.Messages(), Not(Contains(GivesAway(password))));
            if (level >= 3) {
                EXPECT_THAT(log.Messages(),
                            Contains(HasSubstr("to observer:**********@127.0.0.1")));
            }
        }
        EXPECT_EQ(log.Messages().empty(), level == 0) << "the refusal is logged, unless nothing is";
    }
}

std::string NameOf(const ::testing::TestParamInfo<SecretLog::ParamType>& test) {
    const auto [transport, level] = test.param;
    return "Level" + std::to_string(level) +
           (transport == Transport::kHttps ? "OverHttps" : "OverHttp");
}

INSTANTIATE_TEST_SUITE_P(At, SecretLog,
                         ::testing::Combine(::testing::Values(Transport::kHttp, Transport::kHttps),
                                            ::testing::Range(0U, 6U)),
                         NameOf);

TEST_F(SecretTexts, OfFailuresDoNotHoldThePassword) {
    std::size_t failures = 0;
    for (const Transport transport : {Transport::kHttp, Transport::kHttps}) {
        for (const auto& way : AllWays()) {
            ServeWith(transport, way);
            for (const char* password : {kPassword, kOtherPassword}) {
                Pegasus::CIMClient client;
                const std::string text = support::FailureOf([&] {
                    if (transport == Transport::kHttps) {
                        client.connect("127.0.0.1", info.port, Pegasus::SSLContext("", nullptr),
                                       kUser, password);
                    } else {
                        client.connect("127.0.0.1", info.port, kUser, password);
                    }
                    client.enumerateInstances("root/cimv2", "OMC_Chassis");
                    client.enumerateInstances("root/cimv2", "OMC_Chassis");
                });
                EXPECT_THAT(text, Not(GivesAway(password)));
                failures += text == "nothing thrown" ? 0U : 1U;
            }
        }
    }
    EXPECT_GT(failures, 40U);
}

TEST_F(SecretTexts, DoNotRepeatAPasswordThatIsNotUtf8) {
    ServeWith(Transport::kHttp, {});
    ReadWholeInventory("geheim\xE9");
    EXPECT_THAT(log.Texts(1), Contains("Failed to connect remote cimserver with the reason: The "
                                       "password is not valid UTF-8."));
    EXPECT_THAT(log.Messages(), Not(Contains(HasSubstr("geheim"))));
    EXPECT_THAT(Server().requests(), IsEmpty());
}

}  // namespace
