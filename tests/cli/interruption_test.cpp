// Signals while a host is read, and the line of progress.
#include <signal.h>

#include <algorithm>
#include <thread>

#include "cli/command_test.h"

namespace clitest {
namespace {

namespace Faults = simhost::Faults;
using simhost::Fault;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// What is left on a terminal's screen after it was shown all this; without blank ends of lines.
std::vector<std::string> ScreenAfter(const std::string& shown) {
    std::vector<std::string> lines(1);
    std::size_t column = 0;
    for (const char c : shown) {
        if (c == '\n') {
            lines.emplace_back();
        } else if (c == '\r') {
            column = 0;
        } else {
            std::string& line = lines.back();
            line.resize(std::max(line.size(), column + 1), ' ');
            line[column++] = c;
        }
    }
    for (std::string& line : lines) {
        line.erase(line.find_last_not_of(' ') + 1);
    }
    return lines;
}

class Interruptions : public CommandTest {
protected:
    /// A host that answers so many requests and then no more.
    void ServeStallingAfter(std::size_t requests) {
        Serve();
        Fault stall = Faults::Stall();
        stall.after = requests;
        Server().InjectFault(stall);
    }
    void AwaitRequests(std::size_t count) const {
        while (Server().counters().requests < count) {
            std::this_thread::yield();
        }
    }
    std::unique_ptr<ChildProcess> Reading(const std::vector<std::string>& more = {},
                                          bool terminal = false) const {
        return Launch(
            {ToHost("inventory", more), {{"KALVEX_PASSWORD", "x"}}, {}, terminal, terminal});
    }
};

TEST_F(Interruptions, WhatWasReadIsPrintedAndTheRestMarked) {
    for (const int signal : {SIGINT, SIGTERM}) {
        ServeStallingAfter(3);
        auto kalvex = Reading();
        AwaitRequests(4);
        kalvex->Signal(signal);
        const Finished finished = kalvex->Wait();
        EXPECT_EQ(finished.status, 128 + signal);
        EXPECT_THAT(finished.out, HasSubstr("14320388"));
        EXPECT_THAT(finished.out, HasSubstr("Installed packages\n==================\nCould not be "
                                            "read: reading was interrupted.\n"));
        EXPECT_THAT(finished.out,
                    HasSubstr("System slots\n============\nNot asked for: reading was "
                              "interrupted.\n"));
        EXPECT_THAT(finished.out, HasSubstr("\nRead 2 of 11 sections in "));
        EXPECT_EQ(std::ranges::count(finished.err, '\n'), 1) << finished.err;
        EXPECT_EQ(Server().counters().requests, 4U);
    }
}

TEST_F(Interruptions, JsonIsWhole) {
    ServeStallingAfter(3);
    auto kalvex = Reading({"--format", "json"});
    AwaitRequests(4);
    kalvex->Signal(SIGINT);
    const Finished finished = kalvex->Wait();
    EXPECT_EQ(finished.status, 130);
    const Json document = Json::parse(finished.out);
    const Json& sections = document.at("sections");
    EXPECT_EQ(sections.size(), 11U);
    EXPECT_EQ(sections.at("os").at("status"), "ok");
    EXPECT_EQ(sections.at("packages").at("status"), "failed");
    EXPECT_EQ(sections.at("pci_slots").at("status"), "skipped");
    for (const Json& failure : document.at("failures")) {
        EXPECT_EQ(failure.at("kind"), "cancelled");
    }
}

TEST_F(Interruptions, AFileIsWhole) {
    ServeStallingAfter(3);
    auto kalvex = Reading({"--format", "json", "--output", PathOf("inventory.json")});
    AwaitRequests(4);
    kalvex->Signal(SIGINT);
    EXPECT_EQ(kalvex->Wait().status, 130);
    const Json document = Json::parse(ReadFile(PathOf("inventory.json")));
    EXPECT_EQ(document.at("sections").at("os").at("status"), "ok");
    EXPECT_EQ(document.at("sections").at("pci_slots").at("status"), "skipped");
}

TEST_F(Interruptions, ConnectingEndsToo) {
    Serve(Https());
    Server().InjectFault(Faults::StallOnConnect());
    for (const char* command : {"inventory", "supported", "fingerprint"}) {
        const std::size_t before = Server().counters().connections;
        auto kalvex = Launch({{command, "--host", "127.0.0.1", "--port",
                               std::to_string(Server().port()), "--connect-timeout", "600"}});
        while (Server().counters().connections == before) {
            std::this_thread::yield();
        }
        kalvex->Signal(SIGINT);
        EXPECT_THAT(kalvex->Wait(), Complains(130, "reading was interrupted"));
    }
}

TEST_F(Interruptions, TheSecondSignalEndsAtOnce) {
    // A command that cannot print any more: nobody reads its output, which fills the pipe.
    Serve();
    Fault stall = Faults::Stall();
    stall.only_class = "IBMSG_PCIDevice";
    Server().InjectFault(stall);
    Fault much = Faults::HugeReply(4UL * 1024 * 1024);
    much.only_class = "VMware_ComponentSoftwareIdentity";
    Server().InjectFault(much);
    auto kalvex = Reading({"packages", "pci", "--format", "json"});
    while (std::ranges::none_of(Server().requests(), [](const simhost::Request& request) {
        return request.class_name == "IBMSG_PCIDevice";
    })) {
        std::this_thread::yield();
    }
    kalvex->Signal(SIGINT);
    kalvex->AwaitOutput();
    kalvex->Signal(SIGINT);
    kalvex->AwaitEnd();
    const Finished finished = kalvex->Wait();
    EXPECT_EQ(finished.status, 130);
    EXPECT_FALSE(Json::accept(finished.out));
    EXPECT_EQ(finished.err, "");
}

TEST_F(Interruptions, TheSecondSignalEndsAtOnceOnAStoppedTerminalToo) {
    ServeStallingAfter(0);
    auto kalvex = Reading({"os"}, true);
    kalvex->ReadTerminalUntil("127.0.0.1: reading os (1 of 1), ");
    kalvex->StopTerminal();
    kalvex->Signal(SIGINT);
    kalvex->Signal(SIGTERM);
    kalvex->AwaitEnd();
    EXPECT_EQ(kalvex->Wait().status, 143);
}

TEST_F(Interruptions, AnIgnoredSignalStaysIgnored) {
    ServeStallingAfter(0);
    std::string call = "trap '' INT; exec \"$0\" \"$@\"";
    std::vector<std::string> arguments{"-c", call, KALVEX_COMMAND};
    const std::vector<std::string> to_host = ToHost("inventory", {"os"});
    arguments.insert(arguments.end(), to_host.begin(), to_host.end());
    ChildProcess kalvex("/bin/sh", {arguments});
    AwaitRequests(1);
    kalvex.Signal(SIGINT);
    kalvex.Signal(SIGTERM);
    EXPECT_EQ(kalvex.Wait().status, 143);
}

TEST_F(Interruptions, ProgressIsShownOnATerminalAndGoneAtTheEnd) {
    ServeStallingAfter(1);
    auto kalvex = Reading({"os", "packages"}, true);
    std::string shown = kalvex->ReadTerminalUntil("127.0.0.1: reading packages (2 of 2), ");
    shown += kalvex->ReadTerminalUntil("127.0.0.1: reading packages (2 of 2), ");
    kalvex->Signal(SIGINT);
    const Finished finished = kalvex->Wait();
    shown += kalvex->RestOfTerminal();
    EXPECT_EQ(finished.status, 130);
    EXPECT_THAT(finished.out, Not(HasSubstr("reading packages")));
    const std::vector<std::string> screen = ScreenAfter(shown);
    ASSERT_EQ(screen.size(), 2U) << shown;
    EXPECT_THAT(screen[0], testing::StartsWith("kalvex: packages: reading was interrupted"));
    EXPECT_EQ(screen[1], "");
}

TEST_F(Interruptions, ProgressStaysAwayFromALogOnTheTerminal) {
    Serve();
    auto kalvex = Reading({"--log-level", "3"}, true);
    EXPECT_EQ(kalvex->Wait().status, 0);
    EXPECT_THAT(kalvex->RestOfTerminal(), Not(HasSubstr("reading")));
}

TEST_F(Interruptions, ThereIsNoProgressWithoutATerminal) {
    ServeStallingAfter(1);
    auto kalvex = Reading({"os", "packages"});
    AwaitRequests(2);
    kalvex->Signal(SIGINT);
    EXPECT_THAT(kalvex->Wait().err, testing::StartsWith("kalvex: packages: "));
}

}  // namespace
}  // namespace clitest
