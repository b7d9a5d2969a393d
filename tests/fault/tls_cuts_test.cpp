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

class TlsCut : public support::InventoryTest,
               public ::testing::WithParamInterface<CuttingProxy::How> {
protected:
    void SetUp() override {
        simhost::ServerOptions options;
        options.max_tls =
            simhost::TlsVersion::kTls1_2;  // its handshake ends with the server's word
        Serve(simhost::HostDescription::Builtin(), options);
        proxy = std::make_unique<CuttingProxy>(Server().port());
    }

    void Connect(CIMClient& client) const {
        const SSLContext trusting("", nullptr, "");
        client.connect("127.0.0.1", proxy->port(), trusting, "root", "secret");
    }

    static std::string Ask(CIMClient& client) {
        return OutcomeOf([&] { return client.enumerateInstances("root/cimv2", "OMC_Chassis"); });
    }

    /// A list that takes several records.
    static std::string AskAtLength(CIMClient& client) {
        return OutcomeOf([&] {
            return client.enumerateInstances("root/cimv2", "VMware_ComponentSoftwareIdentity");
        });
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
    const std::string sound = AskAtLength(client);
    const std::size_t before = proxy->bytes();
    ASSERT_EQ(AskAtLength(client), sound);
    const std::size_t reply = proxy->bytes() - before;
    constexpr std::size_t kRecord = 17000;  // no less than the longest one on the wire
    ASSERT_GT(reply, 3 * kRecord);
    for (std::size_t bytes = 1; bytes < reply; bytes += 499) {
        proxy->CutAfter(bytes, GetParam());
        const std::string outcome = AskAtLength(client);
        proxy->CutNothing();
        // Before the first record is whole nothing has arrived, and the request is sent again.
        const bool failed = outcome.find("Exception") != std::string::npos;
        EXPECT_TRUE(failed || (outcome == sound && bytes < kRecord)) << bytes << " bytes";
        EXPECT_EQ(AskAtLength(client), sound) << "cut after " << bytes << " bytes";
    }
    client.disconnect();
    proxy.reset();
    StopServing();
    EXPECT_EQ(fault::OpenDescriptors(), descriptors);
}

INSTANTIATE_TEST_SUITE_P(By, TlsCut, ::testing::Values(CuttingProxy::kClose, CuttingProxy::kReset),
                         [](const auto& how) {
                             return how.param == CuttingProxy::kClose ? "Close" : "Reset";
                         });

}  // namespace
