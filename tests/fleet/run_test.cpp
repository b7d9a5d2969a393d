// Many hosts at a time, some of them bad.
#include "fleet/run.h"

#include <gmock/gmock.h>

#include <map>

#include "simhost/server.h"

namespace {

using namespace fleet;
using namespace std::chrono_literals;
using inventory::Document;
using inventory::Status;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
namespace Faults = simhost::Faults;

/// Keeps what came of each host.
class Documents : public DocumentSink {
public:
    void Take(const HostEntry& entry, const Document& document) override {
        ++times[entry.line];
        statuses[entry.line] = document.status;
        failures[entry.line] = document.failures;
    }

    std::map<std::size_t, int> times;  ///< by line
    std::map<std::size_t, Status> statuses;
    std::map<std::size_t, std::vector<inventory::DocumentFailure>> failures;
};

class Runs : public testing::Test {
protected:
    Runs() {
        options.reading.sections = {*inventory::FindSection("os")};
        options.reading.cancel = Zentar::CancelHandle::Make();
        options.jobs = 8;
    }

    simhost::Server& Serve(const std::string& password = "") {
        simhost::ServerOptions server;
        server.transport = simhost::Transport::kHttp;
        server.user = password.empty() ? "" : "root";
        server.password = password;
        servers.push_back(
            std::make_unique<simhost::Server>(simhost::HostDescription::Builtin(), server));
        Add(servers.back()->port());
        return *servers.back();
    }

    void Add(std::uint16_t port) {
        HostEntry entry;
        entry.host = "127.0.0.1";
        entry.port = port;
        entry.has_tls = false;
        entry.line = tasks.size() + 1;
        tasks.push_back({entry, account});
    }

    /// A port that refuses connections.
    void AddDead() {
        auto& server = Serve();
        static_cast<void>(server);
        servers.pop_back();
    }

    void Read() {
        fleet::Run run(tasks, options, documents);
        run.Start();
        while (!run.WaitFor(1h)) {
        }
        rest = run.Finish();
    }

    std::size_t Attempts() const {
        std::size_t offers = 0;
        for (const auto& server : servers) {
            offers += static_cast<std::size_t>(
                std::ranges::count_if(server->requests(), [](const simhost::Request& request) {
                    return request.head.find("Authorization:") != std::string::npos;
                }));
        }
        return offers;
    }

    std::shared_ptr<Account> account = std::make_shared<Account>("root", Zentar::Secret("secret"));
    std::vector<std::unique_ptr<simhost::Server>> servers;
    std::vector<Task> tasks;
    RunOptions options;
    Documents documents;
    std::vector<HostEntry> rest;
};

TEST_F(Runs, ReadEachHostOnceAndTheDeadBesideTheGood) {
    for (int i = 0; i < 5; ++i) {
        Serve();
        AddDead();
    }
    Read();
    ASSERT_THAT(documents.times, SizeIs(10));
    for (const auto& [line, times] : documents.times) {
        EXPECT_EQ(times, 1);
        EXPECT_EQ(documents.statuses[line], line % 2 == 1 ? Status::kOk : Status::kFailed);
    }
    EXPECT_THAT(rest, IsEmpty());
}

TEST_F(Runs, EndOnAHostThatStallsAtItsLimit) {
    options.reading.host_limit = 300ms;
    Serve().InjectFault(Faults::Stall());
    Serve();
    Read();
    EXPECT_EQ(documents.statuses[1], Status::kFailed);
    EXPECT_EQ(documents.failures[1][0].kind, Zentar::FailureKind::kDeadline);
    EXPECT_EQ(documents.statuses[2], Status::kOk);
}

TEST_F(Runs, TryAHostAgainThatFailedForAPassingReason) {
    simhost::Fault busy = Faults::HttpStatus(503, "Service Unavailable");
    busy.times = 2;
    Serve().InjectFault(busy);
    options.retries = 2;
    Read();
    EXPECT_EQ(documents.times[1], 1) << "only what came of it in the end";
    EXPECT_EQ(documents.statuses[1], Status::kOk);
}

TEST_F(Runs, TryNoMoreThanAskedForAndNotForReasonsThatStay) {
    options.retries = 1;
    AddDead();
    Serve().InjectFault(Faults::HttpStatus(404, "Not Found"));
    Read();
    EXPECT_EQ(documents.times[1], 1);
    EXPECT_EQ(documents.statuses[1], Status::kFailed);
    EXPECT_EQ(servers[0]->counters().requests, 1U);
}

TEST_F(Runs, StopOfferingAnAccountThatHostsRefuse) {
    for (int i = 0; i < 20; ++i) {
        Serve("another");
    }
    Read();
    EXPECT_EQ(Attempts(), 3U);
    EXPECT_THAT(documents.times, SizeIs(20));
    std::size_t untried = 0;
    for (const auto& [line, failures] : documents.failures) {
        ASSERT_FALSE(failures.empty());
        EXPECT_EQ(failures[0].kind, Zentar::FailureKind::kCredentialsRefused);
        untried += failures[0].message.find("not tried") != std::string::npos ? 1 : 0;
    }
    EXPECT_EQ(untried, 17U);
}

TEST_F(Runs, GoOnWithAnAccountThatAHostAccepts) {
    options.jobs = 1;
    Serve("secret");
    for (int i = 0; i < 5; ++i) {
        Serve("another");
    }
    Read();
    EXPECT_EQ(documents.statuses[1], Status::kOk);
    for (std::size_t line = 2; line <= 6; ++line) {
        EXPECT_THAT(documents.failures[line][0].message, testing::Not(HasSubstr("not tried")));
    }
}

TEST_F(Runs, TryAnAccountAtThreeHostsAtATimeUntilOneAccepts) {
    for (int i = 0; i < 8; ++i) {
        Serve("secret").InjectFault(Faults::Stall());
    }
    fleet::Run run(tasks, options, documents);
    run.Start();
    while (run.State().under_way < 3) {
        run.WaitFor(1ms);
    }
    run.WaitFor(100ms);
    EXPECT_EQ(run.State().under_way, 3U);
    run.Cancel();
    EXPECT_THAT(run.Finish(), SizeIs(8));
}

TEST_F(Runs, GiveWhatWasReadAndTheRestWhenCancelled) {
    options.jobs = 2;
    Serve();
    Serve().InjectFault(Faults::Stall());
    Serve().InjectFault(Faults::Stall());
    Serve();
    fleet::Run run(tasks, options, documents);
    run.Start();
    while (run.State().done < 1 || run.State().under_way < 2) {
        run.WaitFor(1ms);
    }
    run.Cancel();
    rest = run.Finish();
    EXPECT_EQ(documents.statuses[1], Status::kOk);
    std::vector<std::size_t> lines;
    for (const HostEntry& entry : rest) {
        lines.push_back(entry.line);
    }
    EXPECT_THAT(lines, ElementsAre(2, 3, 4));
    EXPECT_THAT(documents.times, SizeIs(3)) << "the last was not begun";
}

TEST_F(Runs, ForgetThePasswordWithItsLastHost) {
    Serve("secret");
    Read();
    EXPECT_EQ(account->password().text(), "");
}

}  // namespace
