// A name service that is slow, or dead, or has much to say. The resolver of this program is the
// test's own.
#include "net/name_resolution.h"

#include <arpa/inet.h>
#include <netdb.h>

#include <condition_variable>
#include <cstring>
#include <map>
#include <mutex>
#include <thread>

#include "bench/stalling_host.h"
#include "support/inventory_test.h"

namespace {

/// What the resolver has been told to do, and what it was asked.
struct Resolver {
    std::mutex mutex;
    std::condition_variable changed;
    bool is_stuck = false;
    int asked = 0;
    int answered = 0;
    std::map<std::string, std::vector<std::string>> addresses;
    std::thread::id last_thread;

    void Release() {
        const std::lock_guard lock(mutex);
        is_stuck = false;
        changed.notify_all();
    }
    /// Waits until so many questions have been answered, or asked.
    void AwaitAnswers(int count) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return answered >= count; });
    }
    void AwaitQuestions(int count) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return asked >= count; });
    }

    static Resolver& OfProcess() {
        static Resolver& resolver = *new Resolver;
        return resolver;
    }
};

addrinfo* EntryFor(const std::string& address, addrinfo* next) {
    struct Entry {
        addrinfo info;
        sockaddr_in address;
    };
    auto* const entry = new Entry{};
    entry->address.sin_family = AF_INET;
    inet_pton(AF_INET, address.c_str(), &entry->address.sin_addr);
    entry->info.ai_family = AF_INET;
    entry->info.ai_socktype = SOCK_STREAM;
    entry->info.ai_addr = reinterpret_cast<sockaddr*>(&entry->address);
    entry->info.ai_addrlen = sizeof entry->address;
    entry->info.ai_next = next;
    return &entry->info;
}

}  // namespace

extern "C" int getaddrinfo(const char* name, const char*, const addrinfo*, addrinfo** result) {
    Resolver& resolver = Resolver::OfProcess();
    std::unique_lock lock(resolver.mutex);
    ++resolver.asked;
    resolver.last_thread = std::this_thread::get_id();
    resolver.changed.notify_all();
    resolver.changed.wait(lock, [&] { return !resolver.is_stuck; });
    ++resolver.answered;
    resolver.changed.notify_all();
    *result = nullptr;
    const auto known = resolver.addresses.find(name);
    if (known == resolver.addresses.end()) {
        return EAI_NONAME;
    }
    for (auto it = known->second.rbegin(); it != known->second.rend(); ++it) {
        *result = EntryFor(*it, *result);
    }
    return 0;
}

extern "C" void freeaddrinfo(addrinfo* first) {
    while (first != nullptr) {
        addrinfo* const next = first->ai_next;
        ::operator delete(first);
        first = next;
    }
}

namespace {

using namespace Zentar;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

class NameResolution : public support::InventoryTest {
protected:
    NameResolution() {
        info.host = "esx01.example.com";
        resolver.addresses["esx01.example.com"] = {"127.0.0.1"};
        options.cancel = CancelHandle::Make();
        options.connect_attempts = 1;
        options.pause_after_last_attempt = false;
        options.give_up = true;
        questions_before_ = resolver.asked;
    }
    ~NameResolution() override {
        resolver.Release();
        resolver.AwaitAnswers(resolver.asked);
        resolver.addresses.clear();
    }

    void ServeBuiltin() {
        Serve(simhost::HostDescription::Builtin(), Http());
        info.host = "esx01.example.com";
    }
    int Questions() const { return resolver.asked - questions_before_; }
    int QuestionsBefore() const { return questions_before_; }

    Failure OnlyFailure(Agentless::Kalvex& host) {
        const auto failures = host.TakeFailures().failures;
        return failures.empty() ? Failure() : failures.front();
    }

    int ReadPackages(Agentless::Kalvex& host) {
        std::vector<ZentarAgentless::InstalledPackage> packages;
        return host.GetInstalledPackages(packages);
    }

    Resolver& resolver = Resolver::OfProcess();
    ZentarConnection::ConnectionOptions options;

private:
    int questions_before_ = 0;
};

TEST_F(NameResolution, AsksTheSystem) {
    ServeBuiltin();
    Agentless::Kalvex host(info, options);
    EXPECT_EQ(ReadPackages(host), 0);
    EXPECT_EQ(Questions(), 2) << "once for each connection";
    EXPECT_NE(resolver.last_thread, std::this_thread::get_id());
}

TEST_F(NameResolution, StartsNoThreadWithoutOptions) {
    ServeBuiltin();
    Agentless::Kalvex host(info);
    EXPECT_EQ(ReadPackages(host), 0);
    EXPECT_EQ(resolver.last_thread, std::this_thread::get_id());
}

TEST_F(NameResolution, AsksNobodyForAnAddress) {
    Serve(simhost::HostDescription::Builtin(), Http());
    info.host = "127.0.0.1";
    Agentless::Kalvex host(info, options);
    EXPECT_EQ(ReadPackages(host), 0);
    EXPECT_EQ(Questions(), 0);
}

TEST_F(NameResolution, ReportsANameThatNobodyKnows) {
    info.host = "esx02.example.com";
    Agentless::Kalvex host(info, options);
    const Failure failure = OnlyFailure(host);
    EXPECT_EQ(failure.kind, FailureKind::kHostUnknown);
    EXPECT_EQ(failure.phase, FailurePhase::kResolving);
    EXPECT_EQ(failure.text, "Name or service not known");
}

TEST_F(NameResolution, KeepsTheConnectLimit) {
    resolver.is_stuck = true;
    options.connect_limit = 50ms;
    Agentless::Kalvex host(info, options);
    const Failure failure = OnlyFailure(host);
    EXPECT_EQ(failure.kind, FailureKind::kTimedOut);
    EXPECT_EQ(failure.phase, FailurePhase::kResolving);
}

TEST_F(NameResolution, EndsWhenItIsCancelled) {
    resolver.is_stuck = true;
    const std::jthread canceller([this] {
        resolver.AwaitQuestions(QuestionsBefore() + 1);
        options.cancel.Cancel();
    });
    Agentless::Kalvex host(info, options);
    EXPECT_EQ(OnlyFailure(host).kind, FailureKind::kCancelled);
}

TEST_F(NameResolution, LeavesNothingOfAnObjectToALateAnswer) {
    resolver.is_stuck = true;
    options.connect_limit = 10ms;
    { Agentless::Kalvex host(info, options); }
    resolver.Release();
    resolver.AwaitAnswers(QuestionsBefore() + 1);
}

TEST_F(NameResolution, LeavesABoundedNumberOfThreads) {
    resolver.is_stuck = true;
    options.connect_limit = 1ms;
    for (int i = 0; i < cimclient::kMostResolverThreads + 10; ++i) {
        Agentless::Kalvex host(info, options);
        EXPECT_EQ(OnlyFailure(host).kind, FailureKind::kTimedOut);
    }
    EXPECT_LE(Questions(), cimclient::kMostResolverThreads);
    resolver.Release();
    resolver.AwaitAnswers(resolver.asked);
    ServeBuiltin();
    options.connect_limit = 10s;
    Agentless::Kalvex host(info, options);
    EXPECT_EQ(ReadPackages(host), 0) << "there is place again";
}

TEST_F(NameResolution, GoesOnToTheNextAddress) {
    ServeBuiltin();
    resolver.addresses["esx01.example.com"] = {"127.0.0.9", "127.0.0.1"};  // the first refuses
    Agentless::Kalvex host(info, options);
    EXPECT_THAT(host.TakeFailures().failures, IsEmpty());
    EXPECT_EQ(ReadPackages(host), 0);
}

TEST_F(NameResolution, DoesNotSpendAllItsTimeOnTheFirstAddress) {
    const bench::FullBacklog silent("127.0.0.2");
    simhost::ServerOptions server = Http();
    server.port = silent.port();
    Serve(simhost::HostDescription::Builtin(), server);
    info.host = "esx01.example.com";
    resolver.addresses["esx01.example.com"] = {"127.0.0.2", "127.0.0.1"};
    options.connect_limit = 1s;
    Agentless::Kalvex host(info, options);
    EXPECT_THAT(host.TakeFailures().failures, IsEmpty());
    EXPECT_EQ(ReadPackages(host), 0);
}

TEST_F(NameResolution, EndsAtTheLimitHoweverManyAddressesThereAre) {
    const bench::FullBacklog silent;
    info.port = silent.port();
    resolver.addresses["esx01.example.com"].assign(500, "127.0.0.1");
    options.connect_limit = 600ms;
    Agentless::Kalvex host(info, options);
    const Failure failure = OnlyFailure(host);
    EXPECT_EQ(failure.kind, FailureKind::kTimedOut);
    EXPECT_EQ(failure.phase, FailurePhase::kConnecting);
}

}  // namespace
