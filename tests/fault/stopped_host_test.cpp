// A host whose process stands still: the kernel still takes its connections, and nobody answers.
#include "bench/server_process.h"
#include "support/inventory_test.h"

namespace {

using namespace Zentar;
using namespace std::chrono_literals;

class Host : public bench::Service {
public:
    explicit Host(const simhost::ServerOptions& options)
        : server_(simhost::HostDescription::Builtin(), options) {}
    std::uint16_t port() const override { return server_.port(); }
    bench::Counts counts() const override { return {}; }

private:
    simhost::Server server_;
};

class StoppedHost : public ::testing::TestWithParam<simhost::Transport> {
protected:
    StoppedHost()
        : process_([] {
              simhost::ServerOptions served;
              served.transport = GetParam();
              return std::make_unique<Host>(served);
          }) {
        info.host = "127.0.0.1";
        info.port = process_.port();
        info.connection_type = GetParam() == simhost::Transport::kHttps ? 1 : 0;
        info.connection_case = 2;
        options.connect_attempts = 1;
        options.pause_after_last_attempt = false;
    }

    int ReadPackages(Agentless::Kalvex& host) {
        std::vector<ZentarAgentless::InstalledPackage> packages;
        const int result = host.GetInstalledPackages(packages);
        failures = host.TakeFailures().failures;
        return result;
    }
    void ExpectKind(FailureKind kind) const {
        ASSERT_FALSE(failures.empty());
        EXPECT_EQ(failures.front().kind, kind);
    }

    ZentarConnection::ConnectionInfo info;
    ZentarConnection::ConnectionOptions options;
    std::vector<Failure> failures;

    support::RecordedLog log_;
    const bench::ServerProcess process_;
};

TEST_P(StoppedHost, EndsARequestAtItsLimitAndIsReadWhenItGoesOn) {
    options.connect_limit = options.request_limit = 300ms;
    Agentless::Kalvex host(info, options);
    EXPECT_EQ(ReadPackages(host), 0);
    process_.Stop();
    EXPECT_EQ(ReadPackages(host), 1);
    ExpectKind(FailureKind::kTimedOut);
    EXPECT_EQ(ReadPackages(host), 1) << "connecting again ends at a limit, too";
    process_.GoOn();
    for (int attempt = 0; attempt < 100 && ReadPackages(host) != 0; ++attempt) {
    }
    EXPECT_EQ(ReadPackages(host), 0);
}

TEST_P(StoppedHost, EndsAllAtTheDeadline) {
    process_.Stop();
    options.deadline = 300ms;
    Agentless::Kalvex host(info, options);
    EXPECT_EQ(ReadPackages(host), 1);
    ExpectKind(FailureKind::kDeadline);
}

INSTANTIATE_TEST_SUITE_P(Over, StoppedHost,
                         ::testing::Values(simhost::Transport::kHttp, simhost::Transport::kHttps),
                         [](const auto& test) {
                             return test.param == simhost::Transport::kHttp ? "Http" : "Https";
                         });

}  // namespace
