// A wall clock that jumps by hours: every call of this process gets another time. Limits are kept
// all the same, and no call ends before them.
#include <sys/syscall.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

#include <atomic>

#include "support/inventory_test.h"

namespace {

/// Back and forth, and further each time.
long Jump() {
    static std::atomic<long> calls{0};
    constexpr long kHours = 3600;
    const long call = ++calls;
    return (call % 2 == 0 ? 1 : -1) * (5 * kHours + call);
}

bool IsWallClock(clockid_t clock) {
    return clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE || clock == CLOCK_TAI;
}

}  // namespace

// This program's own, which the libraries find before the system's.
extern "C" int clock_gettime(clockid_t clock, timespec* now) noexcept {
    const long result = syscall(SYS_clock_gettime, clock, now);
    if (IsWallClock(clock)) {
        now->tv_sec += Jump();
    }
    return static_cast<int>(result);
}

extern "C" int gettimeofday(timeval* now, void*) noexcept {
    timespec exact{};
    clock_gettime(CLOCK_REALTIME, &exact);
    now->tv_sec = exact.tv_sec;
    now->tv_usec = exact.tv_nsec / 1000;
    return 0;
}

extern "C" time_t time(time_t* now) noexcept {
    timespec exact{};
    clock_gettime(CLOCK_REALTIME, &exact);
    if (now != nullptr) {
        *now = exact.tv_sec;
    }
    return exact.tv_sec;
}

namespace {

using namespace Zentar;
using namespace std::chrono_literals;
using Steady = std::chrono::steady_clock;
namespace Faults = simhost::Faults;

class JumpingClock : public support::InventoryTest {
protected:
    JumpingClock() {
        options.connect_attempts = 1;
        options.pause_after_last_attempt = false;
        options.cancel = CancelHandle::Make();
    }

    void Stall(const simhost::Fault& fault, simhost::Transport transport) {
        simhost::ServerOptions server = Http();
        server.transport = transport;
        Serve(simhost::HostDescription::Builtin(), server);
        Server().InjectFault(fault);
        info.connection_type = transport == simhost::Transport::kHttps ? 1 : 0;
    }
    int ReadPackages() {
        Agentless::Kalvex host(info, options);
        std::vector<ZentarAgentless::InstalledPackage> packages;
        const int result = host.GetInstalledPackages(packages);
        failures = host.TakeFailures().failures;
        return result;
    }
    /// At its limit: for this reason, and not before.
    void ExpectEndAt(std::chrono::milliseconds limit, FailureKind kind) {
        const auto begin = Steady::now();
        EXPECT_EQ(ReadPackages(), 1);
        EXPECT_GE(Steady::now() - begin, limit);
        ASSERT_FALSE(failures.empty());
        EXPECT_EQ(failures.front().kind, kind);
    }

    ZentarConnection::ConnectionOptions options;
    std::vector<Failure> failures;
};

TEST_F(JumpingClock, JumpsForAllOfThisProcess) {
    const auto first = std::chrono::system_clock::now();
    const auto second = std::chrono::system_clock::now();
    EXPECT_GT(std::chrono::abs(second - first), 5h);
    EXPECT_GT(std::abs(time(nullptr) - time(nullptr)), 5 * 3600);
    const auto steady = Steady::now();
    EXPECT_LE(steady, Steady::now());
}

TEST_F(JumpingClock, LeavesTheConnectLimitAlone) {
    Stall(Faults::StallOnConnect(), simhost::Transport::kHttps);
    options.connect_limit = 200ms;
    ExpectEndAt(200ms, FailureKind::kTimedOut);
}

TEST_F(JumpingClock, LeavesTheRequestLimitAlone) {
    for (const auto transport : {simhost::Transport::kHttp, simhost::Transport::kHttps}) {
        Stall(Faults::Stall(), transport);
        options.request_limit = 200ms;
        ExpectEndAt(200ms, FailureKind::kTimedOut);
    }
}

TEST_F(JumpingClock, LeavesTheDeadlineAlone) {
    Stall(Faults::Stall(), simhost::Transport::kHttp);
    options.deadline = 200ms;
    ExpectEndAt(200ms, FailureKind::kDeadline);
}

TEST_F(JumpingClock, LeavesASlowAnswerItsTime) {
    for (const auto transport : {simhost::Transport::kHttp, simhost::Transport::kHttps}) {
        Stall(Faults::SlowDrip(4000, 1ms), transport);
        options.connect_limit = options.request_limit = 60s;
        options.deadline = 120s;
        EXPECT_EQ(ReadPackages(), 0);
    }
}

TEST_F(JumpingClock, LeavesPausesAlone) {
    Serve(support::HostBuilder());
    StopServing();
    options.connect_attempts = 2;
    options.connect_pause = 50ms;
    options.connect_limit = 200ms;
    const auto begin = Steady::now();
    EXPECT_EQ(ReadPackages(), 1);
    EXPECT_GE(Steady::now() - begin, 50ms);
}

}  // namespace
