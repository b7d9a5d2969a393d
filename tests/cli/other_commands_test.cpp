// `kalvex supported` and `kalvex simulate`.
#include <signal.h>

#include "cli/command_test.h"

namespace clitest {
namespace {

namespace Faults = simhost::Faults;
using testing::HasSubstr;
using testing::MatchesRegex;

class SupportedCommand : public CommandTest {
protected:
    Finished Supported(const std::vector<std::string>& more = {}) const {
        return Run(ToHost("supported", more));
    }
};

TEST_F(SupportedCommand, HostWithTheHardwareNamespaceIsSupported) {
    Serve(Https());
    const Finished finished = Supported();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, "supported\n");
    EXPECT_EQ(finished.err, "");
}

TEST_F(SupportedCommand, HostWithoutTheHardwareNamespaceIsUnsupported) {
    Json host = SmallHost();
    host["namespaces"].erase("ibm/imm0/cimv2");
    Serve(host);
    const Finished finished = Supported({"--log-level", "0"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.out, "unsupported\n");
    EXPECT_EQ(finished.err, "");
}

TEST_F(SupportedCommand, HostWithTheNamespaceButWithoutTheClassIsSupported) {
    Json host = SmallHost();
    host["namespaces"]["ibm/imm0/cimv2"]["classes"] = Json::object();
    Serve(host);
    EXPECT_EQ(Supported().out, "supported\n");
}

TEST_F(SupportedCommand, SimulatedHostIsSupported) {
    EXPECT_EQ(Run({"supported", "--simulated"}).out, "supported\n");
    EXPECT_EQ(Run({"supported", "--simulated", TestData("small-host.json")}).status, 0);
}

TEST_F(SupportedCommand, HostThatCannotBeAskedIsNeither) {
    Serve(WithAccount());
    const Finished refused = Supported(
        {"--log-level", "0", "--user", kUser, "--password-file", WriteFile("password", "wrong")});
    EXPECT_THAT(refused, Complains(3, "supported: the host refused the user name or password"));
    Serve();
    const std::pair<simhost::Fault, const char*> answers[] = {
        {Faults::Truncate(700), "cut off"},
        {Faults::ContentType("text/html"), "it is not a CIM server"},
        {Faults::Raw("SSH-2.0-OpenSSH_9.2p1\r\n"), "it is not a CIM server"},
    };
    for (const auto& [fault, meaning] : answers) {
        Server().ClearFaults();
        Server().InjectFault(fault);
        EXPECT_THAT(Supported({"--log-level", "0"}), Complains(3, meaning));
    }
}

TEST_F(SupportedCommand, ClosedPortIsReportedAtOnce) {
    EXPECT_THAT(Run({"supported", "--host", "127.0.0.1", "--port", std::to_string(ClosedPort())}),
                Complains(3, "Connection refused"));
}

TEST_F(SupportedCommand, ARefusalByTheCimServerIsAnAnswer) {
    Serve();
    for (const unsigned code : {1U, 2U, 5U, 6U, 7U}) {
        Server().ClearFaults();
        Server().InjectFault(Faults::CimErrorElement(code, "no"));
        EXPECT_EQ(Supported().out, "supported\n") << code;
    }
    Server().ClearFaults();
    Server().InjectFault(Faults::HttpStatus(403, "Forbidden"));
    EXPECT_THAT(Supported(), Complains(3, "does not let this account"));
}

class SimulateCommand : public CommandTest {
protected:
    /// Reads the simulated host at `url` with another process.
    static Finished ReadHostAt(const std::string& url) {
        const std::size_t scheme_end = url.find("://");
        const std::size_t port_begin = url.rfind(':') + 1;
        return Run({"inventory", "os", "--host", "127.0.0.1", "--transport",
                    url.substr(0, scheme_end), "--port", url.substr(port_begin)});
    }
};

TEST_F(SimulateCommand, PrintsItsAddressServesAndEndsOnSignals) {
    for (const int signal : {SIGTERM, SIGINT}) {
        auto simulate = Launch({{"simulate"}});
        const std::string url = simulate->ReadLine();
        EXPECT_THAT(url, MatchesRegex("https://127\\.0\\.0\\.1:[0-9]+"));
        EXPECT_THAT(ReadHostAt(url).out, HasSubstr("\nBuild  "));
        simulate->Signal(signal);
        const Finished finished = simulate->Wait();
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.err, "");
    }
}

TEST_F(SimulateCommand, ServesADescribedHostOverHttp) {
    auto simulate = Launch({{"simulate", TestData("small-host.json"), "--transport", "http"}});
    const std::string url = simulate->ReadLine();
    EXPECT_THAT(url, testing::StartsWith("http://"));
    EXPECT_THAT(ReadHostAt(url).out, HasSubstr("\nBuild         14320388\n"));
}

TEST_F(SimulateCommand, ListensOnThePortAskedFor) {
    std::string port;
    {
        auto simulate = Launch({{"simulate"}});
        const std::string url = simulate->ReadLine();
        port = url.substr(url.rfind(':') + 1);
        simulate->Signal(SIGTERM);
        simulate->Wait();
    }
    auto simulate = Launch({{"simulate", "--port", port}});
    EXPECT_EQ(simulate->ReadLine(), "https://127.0.0.1:" + port);
}

TEST_F(SimulateCommand, PortInUseIsReported) {
    Serve();
    EXPECT_THAT(Run({"simulate", "--port", std::to_string(Server().port())}),
                Complains(2, "choose another --port"));
}

}  // namespace
}  // namespace clitest
