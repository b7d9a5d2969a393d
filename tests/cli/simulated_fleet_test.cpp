// `kalvex simulate --hosts`.
#include <signal.h>

#include <set>

#include "cli/command_test.h"

namespace clitest {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

class SimulatedFleet : public CommandTest {
protected:
    /// Starts it, by way of a shell where `limits` are to hold for it, and reads its list.
    void Simulate(const std::vector<std::string>& options, const std::string& limits = "true") {
        std::vector<std::string> arguments = {"-c", limits + " && exec \"$0\" simulate \"$@\"",
                                              KALVEX_COMMAND};
        arguments.insert(arguments.end(), options.begin(), options.end());
        simulate_ = std::make_unique<ChildProcess>("/bin/sh", Start{arguments});
        EXPECT_EQ(simulate_->ReadLine(), "host,port,transport");
    }
    ChildProcess& Process() const { return *simulate_; }
    /// The next host's line of the list.
    std::string Line() const { return simulate_->ReadLine(); }

    static Finished ReadHost(const std::string& line) {
        const std::size_t port = line.find(',') + 1;
        const std::size_t transport = line.find(',', port) + 1;
        return Run({"inventory", "system", "--host", "127.0.0.1", "--port",
                    line.substr(port, transport - port - 1), "--transport",
                    line.substr(transport)});
    }

private:
    std::unique_ptr<ChildProcess> simulate_;
};

TEST_F(SimulatedFleet, PrintsItsHostsServesEachAndEndsOnSignals) {
    for (const int signal : {SIGTERM, SIGINT}) {
        Simulate({"--hosts", "3"});
        std::set<std::string> inventories;
        for (int host = 0; host < 3; ++host) {
            const std::string line = Line();
            EXPECT_THAT(line, MatchesRegex("127\\.0\\.0\\.1,[0-9]+,https"));
            const Finished finished = ReadHost(line);
            EXPECT_EQ(finished.status, 0);
            EXPECT_THAT(finished.out, HasSubstr("Serial number"));
            inventories.insert(finished.out.substr(finished.out.find('\n')));
        }
        EXPECT_EQ(inventories.size(), 3U);
        Process().Signal(signal);
        const Finished finished = Process().Wait();
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.out, "");
        EXPECT_EQ(finished.err, "");
    }
}

TEST_F(SimulatedFleet, OtherOptionsHoldForEveryHost) {
    Simulate({"--hosts", "2", "--transport", "http", "--fault", "http-status=403"});
    for (int host = 0; host < 2; ++host) {
        EXPECT_THAT(ReadHost(Line()).err, HasSubstr("does not let this account"));
    }
}

TEST_F(SimulatedFleet, RaisesTheLimitOfDescriptors) {
    Simulate({"--hosts", "200"}, "ulimit -Sn 100");
    std::set<std::string> lines;
    for (int host = 0; host < 200; ++host) {
        lines.insert(Line());
    }
    EXPECT_EQ(lines.size(), 200U);
}

TEST_F(SimulatedFleet, DescriptorsThatDoNotSufficeAreReported) {
    const Finished finished = RunProcess(
        "/bin/sh", {{"-c", "ulimit -n 300; exec \"$0\" simulate --hosts 200", KALVEX_COMMAND}});
    EXPECT_THAT(finished, Complains(2, "raise the hard limit of open files (ulimit -Hn)"));
    EXPECT_THAT(finished.err, HasSubstr("200 hosts need 712 descriptors"));
}

TEST_F(SimulatedFleet, PortsThatDoNotSufficeAreReported) {
    EXPECT_THAT(Run({"simulate", "--hosts", "100", "--port", "65500"}),
                Complains(2, "there are only 36 ports for 100 hosts; choose a lower --port"));
}

TEST_F(SimulatedFleet, FaultsNeedHosts) {
    EXPECT_THAT(Run({"simulate", "--faults", "5"}), Complains(2, "--faults requires --hosts"));
    EXPECT_THAT(Run({"simulate", "--hosts", "5", "--faults", "101"}), Complains(2, "0 to 100"));
}

}  // namespace
}  // namespace clitest
