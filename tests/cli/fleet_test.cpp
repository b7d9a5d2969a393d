// `kalvex fleet`: many hosts in one run.
#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

#include "cli/command_test.h"

namespace clitest {
namespace {

namespace Faults = simhost::Faults;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class FleetCommand : public CommandTest {
protected:
    simhost::Server& AddHost(simhost::ServerOptions options = Http()) {
        hosts_.push_back(std::make_unique<simhost::Server>(
            simhost::HostDescription::FromJson(SmallHost().dump(), "small host"), options));
        return *hosts_.back();
    }
    void AddHosts(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            AddHost();
        }
    }
    simhost::Server& Host(std::size_t place) { return *hosts_[place]; }
    std::string NameOf(std::size_t place) const {
        return "127.0.0.1:" + std::to_string(hosts_[place]->port());
    }

    /// A list of all hosts, and more.
    std::string List(const std::string& more = "") const {
        std::string text;
        for (std::size_t i = 0; i < hosts_.size(); ++i) {
            text += NameOf(i) + "\n";
        }
        return WriteFile("hosts", text + more);
    }

    static std::vector<std::string> Fleet(const std::string& list,
                                          const std::vector<std::string>& more = {}) {
        std::vector<std::string> arguments{"fleet", list, "--transport", "http"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }

    /// The status of each line's host; every line is a document.
    static std::map<std::string, std::string> StatusesIn(const std::string& ndjson) {
        std::map<std::string, std::string> statuses;
        std::istringstream lines(ndjson);
        for (std::string line; std::getline(lines, line);) {
            const Json document = Json::parse(line);
            const std::string host = document.at("host").get<std::string>() + ":" +
                                     std::to_string(document.at("port").get<int>());
            EXPECT_TRUE(statuses.emplace(host, document.at("status")).second) << host << " twice";
        }
        return statuses;
    }

    std::size_t RequestsOfAll() const {
        std::size_t requests = 0;
        for (const auto& host : hosts_) {
            requests += host->counters().requests;
        }
        return requests;
    }

    void AwaitRequests(std::size_t place, std::size_t count) {
        while (Host(place).counters().requests < count) {
            std::this_thread::yield();
        }
    }

private:
    std::vector<std::unique_ptr<simhost::Server>> hosts_;
};

TEST_F(FleetCommand, GivesEachHostsDocumentOnALine) {
    AddHosts(5);
    const Finished finished = Run(Fleet(List()));
    EXPECT_EQ(finished.status, 0) << finished.err;
    const auto statuses = StatusesIn(finished.out);
    EXPECT_THAT(statuses, SizeIs(5));
    for (const auto& [host, status] : statuses) {
        EXPECT_EQ(status, "ok");
    }
    EXPECT_THAT(finished.err, HasSubstr("5 hosts: 5 ok, 0 partial, 0 failed, 0 not read; "));
}

TEST_F(FleetCommand, DeadHostsSpoilNothing) {
    AddHosts(2);
    const std::string dead = "127.0.0.1:" + std::to_string(ClosedPort());
    const Finished finished = Run(Fleet(List(dead + "\n"), {"--summary", PathOf("summary")}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(StatusesIn(finished.out).at(dead), "failed");
    const Json summary = Json::parse(ReadFile(PathOf("summary")));
    EXPECT_EQ(summary.at("ok"), 2);
    EXPECT_THAT(summary.at("failures").at("unreachable"), ElementsAre(dead));
    EXPECT_EQ(Run(Fleet(WriteFile("dead", dead))).status, 3);
}

TEST_F(FleetCommand, ReportsEachBadLineBeforeAnythingIsRead) {
    AddHosts(1);
    const Finished finished = Run(Fleet(List("b:x\n\nhttps://c/\n")));
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, AllOf(HasSubstr("hosts line 2: \"x\" is not a port"),
                                    HasSubstr("hosts line 4: "), HasSubstr("2 lines of the list")));
    EXPECT_EQ(RequestsOfAll(), 0U);
}

TEST_F(FleetCommand, ReadsTheSectionsThatAreNamed) {
    AddHosts(1);
    const Finished finished = Run(Fleet(List(), {"os", "packages"}));
    const Json document = Json::parse(finished.out);
    EXPECT_THAT(document.at("sections"), SizeIs(2));
    EXPECT_EQ(RequestsOfAll(), 2U);
}

TEST_F(FleetCommand, ResumesWithWhatIsNotOk) {
    AddHosts(3);
    Host(1).InjectFault(Faults::HttpStatus(500, "Internal Server Error"));
    const std::string output = PathOf("fleet.ndjson");
    EXPECT_EQ(Run(Fleet(List(), {"--output", output})).status, 1);
    EXPECT_EQ(StatusesIn(ReadFile(output)).at(NameOf(1)), "failed");
    Host(1).ClearFaults();
    for (const auto place : {0, 1, 2}) {
        Host(static_cast<std::size_t>(place)).ForgetRequests();
    }
    const Finished finished = Run(Fleet(List(), {"--output", output, "--resume", output}));
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.err, HasSubstr("1 host: 1 ok"));
    EXPECT_THAT(Host(0).requests(), IsEmpty());
    const auto statuses = StatusesIn(ReadFile(output));
    EXPECT_THAT(statuses, SizeIs(3));
    EXPECT_EQ(statuses.at(NameOf(1)), "ok");
}

TEST_F(FleetCommand, ResumesAfterATornLine) {
    AddHosts(3);
    const std::string output = PathOf("fleet.ndjson");
    Run(Fleet(List(), {"--output", output}));
    const std::string whole = ReadFile(output);
    std::filesystem::resize_file(output, whole.size() - 100);
    EXPECT_EQ(Run(Fleet(List(), {"--output", output, "--resume", output})).status, 0);
    EXPECT_THAT(StatusesIn(ReadFile(output)), SizeIs(3));
}

TEST_F(FleetCommand, HasEveryHostOnceAfterItWasKilledAndResumed) {
    AddHosts(6);
    Host(3).InjectFault(Faults::Stall());
    const std::string output = PathOf("fleet.ndjson");
    auto killed = Launch({Fleet(List(), {"--jobs", "1", "--output", output})});
    AwaitRequests(3, 1);
    killed->Signal(SIGKILL);
    killed->Wait();
    EXPECT_THAT(StatusesIn(ReadFile(output)), SizeIs(3));
    Host(3).ClearFaults();
    EXPECT_EQ(Run(Fleet(List(), {"--output", output, "--resume", output})).status, 0);
    EXPECT_THAT(StatusesIn(ReadFile(output)), SizeIs(6));
}

TEST_F(FleetCommand, RefusesToResumeFromWhatIsNoOutput) {
    AddHosts(1);
    EXPECT_THAT(Run(Fleet(List(), {"--resume", WriteFile("x", "host\n")})),
                Complains(2, "is not a document of kalvex"));
    EXPECT_EQ(RequestsOfAll(), 0U);
}

TEST_F(FleetCommand, EndsOnASignalWithWhatWasReadAndTheRest) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const std::string output = PathOf("fleet.ndjson");
        const std::size_t first = signal == SIGINT ? 0 : 3;
        AddHosts(3);
        Host(first + 1).InjectFault(Faults::Stall());
        const std::string list =
            WriteFile("three", NameOf(first) + "\n" + NameOf(first + 1) + "\n" + NameOf(first + 2));
        auto kalvex = Launch({Fleet(list, {"--jobs", "1", "--output", output})});
        AwaitRequests(first + 1, 1);
        kalvex->Signal(signal);
        const Finished finished = kalvex->Wait();
        EXPECT_EQ(finished.status, 128 + signal);
        const auto statuses = StatusesIn(ReadFile(output));
        EXPECT_EQ(statuses.at(NameOf(first)), "ok");
        EXPECT_EQ(statuses.count(NameOf(first + 2)), 0U);
        EXPECT_EQ(ReadFile(output + ".rest"), NameOf(first + 1) + "\n" + NameOf(first + 2) + "\n");
    }
}

TEST_F(FleetCommand, EndsAtItsDeadline) {
    AddHosts(1);
    Host(0).InjectFault(Faults::Stall());
    const Finished finished = Run(Fleet(List(), {"--deadline", "0.3"}));
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.err, HasSubstr("# not read:\n" + NameOf(0) + "\n"));
}

TEST_F(FleetCommand, AStalePasswordIsOfferedToThreeHosts) {
    for (int i = 0; i < 8; ++i) {
        AddHost(WithAccount());
    }
    const Finished finished =
        Run({Fleet(List(), {"--user", kUser}), {{"KALVEX_PASSWORD", "stale"}}});
    EXPECT_EQ(finished.status, 3);
    std::size_t offers = 0;
    for (std::size_t i = 0; i < 8; ++i) {
        offers += static_cast<std::size_t>(
            std::ranges::count_if(Host(i).requests(), [](const simhost::Request& request) {
                return request.head.find("Authorization:") != std::string::npos;
            }));
    }
    EXPECT_EQ(offers, 3U);
    EXPECT_THAT(finished.out, HasSubstr("not tried, because the account was refused by "));
    EXPECT_THAT(finished.out + finished.err, Not(HasSubstr("stale")));
}

TEST_F(FleetCommand, ReadsEachHostWithItsOwnAccount) {
    AddHost(WithAccount());
    AddHosts(1);
    const std::string list =
        WriteFile("hosts.csv", "host,user,password_file\n" + NameOf(0) + "," + kUser + "," +
                                   WriteFile("password", kPassword) + "\n" + NameOf(1) + "\n");
    const Finished finished = Run(Fleet(list));
    EXPECT_EQ(finished.status, 0) << finished.err;
}

TEST_F(FleetCommand, DividesTheListAmongMachines) {
    AddHosts(5);
    std::map<std::string, std::string> all;
    for (const char* shard : {"1/2", "2/2"}) {
        all.merge(StatusesIn(Run(Fleet(List(), {"--shard", shard})).out));
    }
    EXPECT_THAT(all, SizeIs(5));
    for (const char* wrong : {"0/2", "3/2", "2", "a/b", "1/2x", "1/"}) {
        EXPECT_THAT(Run(Fleet(List(), {"--shard", wrong})), Complains(2, "--shard takes I/N"));
    }
}

TEST_F(FleetCommand, ShardsOfManyProcessesAreJoinedByConcatenation) {
    AddHosts(9);
    const Finished finished = RunProcess(
        "/bin/sh", {{"-c",
                     "cd \"$2\" && parallel \"$0\" fleet \"$1\" --transport http --shard {}/4 "
                     "--output shard-{} ::: 1 2 3 4 && cat shard-1 shard-2 shard-3 shard-4",
                     KALVEX_COMMAND, List(), PathOf("")}});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(StatusesIn(finished.out), SizeIs(9));
}

TEST_F(FleetCommand, LogNamesTheHostOfEachLine) {
    AddHosts(3);
    Run(Fleet(List(), {"--log-file", PathOf("log"), "--log-level", "3"}));
    std::istringstream lines(ReadFile(PathOf("log")));
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line);) {
        EXPECT_THAT(line, testing::AnyOf(HasSubstr("] 127.0.0.1:"), testing::StartsWith(" ")));
        ++count;
    }
    EXPECT_GT(count, 10U);
}

TEST_F(FleetCommand, LogIsAFileForEachHostIfWanted) {
    AddHosts(2);
    Run(Fleet(List(), {"--log-dir", PathOf("logs"), "--log-level", "3"}));
    for (const std::size_t place : {0U, 1U}) {
        const std::string log =
            ReadFile(PathOf("logs/127.0.0.1_" + std::to_string(Host(place).port()) + ".log"));
        EXPECT_THAT(log, HasSubstr(NameOf(place)));
        EXPECT_THAT(log, Not(HasSubstr(NameOf(1 - place))));
    }
}

TEST_F(FleetCommand, TableHasARowForEachHost) {
    AddHosts(2);
    const Finished finished = Run(Fleet(List(), {"--format", "text"}));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(std::ranges::count(finished.out, '\n'), 3);
    EXPECT_THAT(finished.out, HasSubstr(NameOf(0) + "  System x3550"));
}

TEST_F(FleetCommand, WritesACsvFileForEachList) {
    AddHosts(3);
    const Finished finished = Run(Fleet(List(), {"packages", "--output-dir", PathOf("csv")}));
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.out, "");
    const std::string packages = ReadFile(PathOf("csv/packages.csv"));
    EXPECT_EQ(std::ranges::count(packages, '\n'), 1 + 3 * 2);
    EXPECT_THAT(packages, testing::StartsWith("host,name,version,summary,installed_at\r\n"));
    EXPECT_THAT(ReadFile(PathOf("csv/failures.csv")), testing::StartsWith("host,section,kind"));
    EXPECT_THAT(Run(Fleet(List(), {"--format", "csv"})), Complains(2, "--output-dir"));
}

TEST_F(FleetCommand, ReadsSimulatedHostsWithoutAnyList) {
    const Finished finished =
        Run({"fleet", "--simulated", "12", "--transport", "http", "--jobs", "4"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(StatusesIn(finished.out), SizeIs(12));
    EXPECT_THAT(Run({"fleet"}), Complains(2, "no hosts to read"));
    EXPECT_THAT(Run({"fleet", "x", "--simulated", "2"}), Complains(2, "takes the place of HOSTS"));
}

TEST_F(FleetCommand, AFullDiskIsReportedAndEndsTheRun) {
    AddHosts(3);
    const Finished finished = Run(Fleet(List(), {"--output", "/dev/full"}));
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("could not be written to their end"));
}

}  // namespace
}  // namespace clitest
