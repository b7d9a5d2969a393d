// TLS connections cut at a sample of their bytes: in the handshake, in the middle of a record, and
// between records.
#include "Pegasus/Client/CIMClient.h"
#include "fault/descriptors.h"
#include "support/client_view.h"
#include "support/cutting_proxy.h"
#include "support/inventory_test.h"

namespace {

using namespace Pegasus;
using support::CuttingProxy;
using support::OutcomeOf;

constexpr const char* kRecordedHost = KALVEX_TEST_DATA "/../simhost/data/recorded_host.json";

class TlsCut : public support::InventoryTest,
               public ::testing::WithParamInterface<CuttingProxy::How> {
protected:
    void SetUp() override {
        simhost::ServerOptions options;
        options.max_tls =
            simhost::TlsVersion::kTls1_2;  // its handshake ends with the server's word
        Serve(simhost::HostDescription::FromFile(kRecordedHost), options);
        proxy = std::make_unique<CuttingProxy>(Server().port());
    }

    void Connect(CIMClient& client) const {
        const SSLContext trusting("", nullptr, "");
        client.connect("127.0.0.1", proxy->port(), trusting, "root", "secret");
    }

    static std::string Ask(CIMClient& client) {
        return OutcomeOf([&] { return client.enumerateInstances("root/cimv2", "OMC_Chassis"); });
    }

    const std::size_t descriptors = fault::OpenDescriptors();  // before anything is served
    std::unique_ptr<CuttingProxy> proxy;
};

TEST_P(TlsCut, InTheHandshakeIsAFailureToConnect) {
    CIMClient first;
    Connect(first);
    const std::size_t handshake = proxy->bytes();
    first.disconnect();
    ASSERT_GT(handshake, 200U);
    constexpr std::size_t kSpread = 16;  // signatures differ in length
    for (std::size_t bytes = 0; bytes + kSpread < handshake; bytes += 17) {
        CIMClient client;
        proxy->CutAfter(bytes, GetParam());
        EXPECT_THROW(Connect(client), CannotConnectException) << bytes << " bytes";
        proxy->CutNothing();
        EXPECT_NO_THROW(Connect(client)) << bytes << " bytes";
        EXPECT_EQ(Ask(client), "1 objects");
    }
    proxy.reset();
    StopServing();
    EXPECT_EQ(fault::OpenDescriptors(), descriptors);
}

TEST_P(TlsCut, InAReplyIsAFailureOfThatRequestOnly) {
    CIMClient client;
    Connect(client);
    ASSERT_EQ(Ask(client), "1 objects");
    const std::size_t before = proxy->bytes();
    ASSERT_EQ(Ask(client), "1 objects");
    const std::size_t reply = proxy->bytes() - before;
    ASSERT_GT(reply, 1000U);
    for (std::size_t bytes = 1; bytes < reply; bytes += 29) {
        proxy->CutAfter(bytes, GetParam());
        const std::string outcome = Ask(client);
        proxy->CutNothing();
        // Before the first record is whole nothing has arrived, and the request is sent again.
        EXPECT_TRUE(outcome == "1 objects" || outcome.find("Exception") != std::string::npos);
        EXPECT_EQ(Ask(client), "1 objects") << "after a cut behind " << bytes << " bytes";
    }
}

INSTANTIATE_TEST_SUITE_P(By, TlsCut, ::testing::Values(CuttingProxy::kClose, CuttingProxy::kReset),
                         [](const auto& how) {
                             return how.param == CuttingProxy::kClose ? "Close" : "Reset";
                         });

}  // namespace
