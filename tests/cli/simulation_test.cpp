// The simulated host's account, delay, address and faults, as the commands offer them.
#include "cli/command_test.h"

namespace clitest {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

using Arguments = std::vector<std::string>;

Arguments operator+(Arguments first, const Arguments& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// `kalvex simulate` in one process, read by `kalvex inventory` in another.
class Simulation : public CommandTest {
protected:
    void Simulate(const Arguments& options) {
        simulate_ = Launch({Arguments{"simulate", "--transport", "http"} + options});
        url_ = simulate_->ReadLine();
    }
    const std::string& url() const { return url_; }

    Finished Read(const std::string& section, const Arguments& more = {},
                  const std::string& host = "127.0.0.1") const {
        return Run(Arguments{"inventory", section, "--transport", "http", "--log-level", "0",
                             "--host", host, "--port", url_.substr(url_.rfind(':') + 1)} +
                   more);
    }
    Arguments Account(const std::string& prefix = "--") const {
        return {prefix + "account", kUser, prefix + "account-password-file",
                WriteFile("simulated", std::string(kPassword) + "\n")};
    }
    Arguments LogOn(const std::string& password) const {
        return {"--user", kUser, "--password-file", WriteFile("password", password)};
    }

private:
    std::unique_ptr<ChildProcess> simulate_;
    std::string url_;
};

TEST_F(Simulation, AccountIsAskedFor) {
    Simulate(Account());
    EXPECT_EQ(Read("os", LogOn(kPassword)).status, 0);
    for (const Arguments& wrong : {LogOn("wrong"), Arguments()}) {
        const Finished refused = Read("os", wrong);
        EXPECT_EQ(refused.status, 3);
        EXPECT_THAT(refused.err, HasSubstr("the host refused the user name or password"));
    }
}

TEST_F(Simulation, AccountsPasswordMayComeFromStandardInput) {
    const Finished finished =
        Run({Arguments{"inventory", "os", "--simulated"} +
                 Arguments{"--simulated-account", kUser, "--simulated-account-password-file", "-"} +
                 LogOn(kPassword),
             {},
             std::string(kPassword) + "\n"});
    EXPECT_EQ(finished.status, 0) << finished.err;
}

TEST_F(Simulation, AddressMayBeOfIpV6) {
    Simulate({"--address", "::1"});
    EXPECT_THAT(url(), MatchesRegex("http://\\[::1\\]:[0-9]+"));
    EXPECT_THAT(Read("os", {}, "::1").out, StartsWith("[::1]:"));
}

TEST_F(Simulation, FaultsApplyToTheClassNamed) {
    Simulate({"--fault", "cim-error-element@VMware_KernelIPv4ProtocolEndpoint=1,out of luck"});
    EXPECT_EQ(Read("os").status, 0);
    const Finished failed = Read("ipv4");
    EXPECT_EQ(failed.status, 3);
    EXPECT_THAT(failed.err, HasSubstr("out of luck"));
}

TEST_F(Simulation, SeveralFaultsApplyInTheirOrder) {
    Simulate({"--fault", "http-status@times:1=503", "--fault", "html-page@times:1"});
    EXPECT_THAT(Read("os").err, HasSubstr("503"));
    EXPECT_EQ(Read("os").status, 3);
    EXPECT_EQ(Read("os").status, 0);
}

TEST_F(Simulation, DescriptionMayFollowAFault) {
    Simulate({"--fault", "http-status@times:1=503", TestData("small-host.json")});
    EXPECT_EQ(Read("ipv6").status, 3);
    EXPECT_THAT(Read("ipv6").out, HasSubstr("The host has none."));
}

TEST_F(Simulation, HelpNamesEveryFault) {
    const std::string help = Run({"simulate", "--help"}).out;
    for (const auto& [name, value, meaning] : simhost::Faults::Names()) {
        EXPECT_THAT(help, HasSubstr("\n  " + name + value + " "));
        EXPECT_THAT(help, HasSubstr(" " + meaning + "\n"));
    }
}

/// The same on one command line.
class Simulated : public Simulation {
protected:
    static Finished ReadSimulated(const Arguments& more) {
        return Run(Arguments{"inventory", "os", "--simulated", "--log-level", "0"} + more);
    }
};

TEST_F(Simulated, HostRefusesAWrongPassword) {
    const Arguments account = Account("--simulated-");
    EXPECT_EQ(ReadSimulated(account + LogOn(kPassword)).status, 0);
    for (const Arguments& wrong : {LogOn("wrong"), Arguments()}) {
        const Finished refused = ReadSimulated(account + wrong);
        EXPECT_EQ(refused.status, 3);
        EXPECT_THAT(refused.err, AllOf(HasSubstr("the host refused the user name or password"),
                                       Not(HasSubstr("wrong"))));
    }
}

TEST_F(Simulated, HostMayBeAtAnIpV6Address) {
    EXPECT_THAT(ReadSimulated({"--simulated-address", "::1"}).out, StartsWith("[::1]:"));
}

TEST_F(Simulated, HostFailsAsNamed) {
    const Finished failed = ReadSimulated({"--simulated-fault", "cim-error-element=1,out of luck"});
    EXPECT_EQ(failed.status, 3);
    EXPECT_THAT(failed.err, HasSubstr("out of luck"));
}

TEST_F(Simulated, HostThatIsUnreachableIsReportedAtOnce) {
    EXPECT_THAT(ReadSimulated({"--simulated-fault", "ssh-banner"}),
                Complains(3, "the TLS handshake failed"));
    EXPECT_THAT(ReadSimulated({"--simulated-delay", "60000", "--connect-timeout", "0.05"}),
                Complains(3, "did not answer in time (while making the TLS"));
}

TEST_F(Simulated, HostMayBeAskedForItsSupport) {
    EXPECT_THAT(Run({"supported", "--simulated", "--simulated-fault", "http-status=503",
                     "--log-level", "0"}),
                Complains(3, "overloaded or starting"));
}

struct WrongSimulation {
    std::string name;
    Arguments arguments;
    std::string complaint;
};

void PrintTo(const WrongSimulation& mistake, std::ostream* out) { *out << mistake.name; }

class SimulationMistake : public CommandTest,
                          public testing::WithParamInterface<WrongSimulation> {};

TEST_P(SimulationMistake, IsAnsweredWithWhatToWriteInstead) {
    const Finished finished = Run(GetParam().arguments);
    EXPECT_THAT(finished, Complains(2, GetParam().complaint));
    EXPECT_THAT(finished.err, Not(HasSubstr("geheim")));
}

const WrongSimulation kWrongSimulations[] = {
    {"UnknownFault",
     {"simulate", "--fault", "explode"},
     "--fault: unknown fault \"explode\": write one of close, reset, stall, "},
    {"UnknownSimulatedFault",
     {"inventory", "--simulated", "--simulated-fault", "explode"},
     "--simulated-fault: unknown fault \"explode\": write one of close, "},
    {"FaultsValue", {"simulate", "--fault", "truncate=x"}, "write truncate=NUMBER"},
    {"FaultsLimit", {"simulate", "--fault", "stall@times:x"}, "times:COUNT for a LIMIT"},
    {"FaultMissing", {"simulate", "--fault"}, "--fault needs a value"},
    {"AccountAlone", {"simulate", "--account", "x"}, "--account-password-file FILE"},
    {"PasswordFileAlone", {"simulate", "--account-password-file", "x"}, "name it with --account"},
    {"PasswordFileMissing",
     {"simulate", "--account", "x", "--account-password-file", "/no/such"},
     "give --account-password-file a file that holds the password alone"},
    {"PasswordArgument",
     {"simulate", "--account", "x", "--account-password", "geheim"},
     "use --account-password-file FILE"},
    {"SimulatedPasswordArgument",
     {"inventory", "--simulated", "--simulated-account-password=geheim"},
     "use --simulated-account-password-file FILE"},
    {"DelayTooLong", {"simulate", "--delay", "60001"}, "0 to 60000"},
    {"DelayNegative", {"simulate", "--delay", "-1"}, "0 to 60000"},
    {"AddressOfNobody",
     {"simulate", "--address", "192.0.2.1"},
     "give --address a numeric address of this machine"},
    {"AddressIsName", {"simulate", "--address", "localhost"}, "such as 127.0.0.1 or ::1"},
    {"NotSimulated",
     {"inventory", "--host", "x", "--simulated-delay", "0"},
     "--simulated-delay is about the simulated host; add --simulated"},
    {"UserWithoutAccount",
     {"inventory", "--simulated", "--user", "x", "--simulated-delay", "1"},
     "--simulated-account; add that"},
    {"BothPasswordsOnInput",
     {"inventory", "--simulated", "--simulated-account", "x", "--simulated-account-password-file",
      "-", "--user", "x", "--password-file", "-"},
     "give a file for the other"},
};

INSTANTIATE_TEST_SUITE_P(, SimulationMistake, testing::ValuesIn(kWrongSimulations),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace clitest
