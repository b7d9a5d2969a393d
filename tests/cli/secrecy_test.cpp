// That the command keeps the password to itself, whichever way it was given.
#include <algorithm>
#include <thread>

#include "cli/command_test.h"
#include "simhost/base64.h"

namespace clitest {
namespace {

using simhost::Fault;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;
namespace Faults = simhost::Faults;

class Secrecy : public CommandTest {
protected:
    static auto GivesAway(const std::string& password) {
        return AnyOf(HasSubstr(password), HasSubstr(simhost::Base64(password)),
                     HasSubstr(simhost::Base64(std::string(kUser) + ":" + password)));
    }

    std::vector<std::string> Arguments(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments = ToHost("inventory", {"--user", kUser});
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }

    /// The command, waiting for an answer to a request that bears the password.
    std::unique_ptr<ChildProcess> Waiting(Start start) {
        Serve(WithAccount(Https()));
        Server().InjectFault(Faults::Stall());
        start.arguments = Arguments(start.arguments);
        const bool is_asked = start.terminal;
        auto kalvex = Launch(std::move(start));
        if (is_asked) {
            kalvex->ReadTerminalUntil("Password for root@127.0.0.1: ");
            kalvex->Type(std::string(kPassword) + "\n");
        }
        while (std::ranges::none_of(Server().requests(), &simhost::Request::authorised)) {
            std::this_thread::yield();
        }
        return kalvex;
    }
};

TEST_F(Secrecy, EndsAtNoProcessList) {
    const std::string file = WriteFile("given", kPassword);
    const Start ways[] = {
        {{"--password-file", file}, {}, {}},
        {{"--password-file", "-"}, {}, kPassword},
        {{}, {{"KALVEX_PASSWORD", kPassword}}, {}},
        {{}, {}, {}, true},
    };
    for (const Start& way : ways) {
        const auto kalvex = Waiting(way);
        const std::string process = "/proc/" + std::to_string(kalvex->id());
        EXPECT_THAT(ReadFile(process + "/cmdline"), HasSubstr("inventory"));
        EXPECT_THAT(ReadFile(process + "/cmdline"), Not(GivesAway(kPassword)));
        EXPECT_THAT(ReadFile(process + "/environ"), HasSubstr("PATH="));
        EXPECT_THAT(ReadFile(process + "/environ"), Not(GivesAway(kPassword)));
    }
}

class SecrecyAtLevel : public Secrecy, public testing::WithParamInterface<int> {
protected:
    void ExpectSecret(const std::string& password) {
        const Finished finished = Run({Arguments({"--log-level", std::to_string(GetParam())}),
                                       {{"KALVEX_PASSWORD", password}}});
        EXPECT_THAT(finished.out + finished.err, Not(GivesAway(password)));
        EXPECT_EQ(finished.err.find("root:**********@127.0.0.1") != std::string::npos,
                  GetParam() >= 3);
    }
};

TEST_P(SecrecyAtLevel, EndsInNoOutput) {
    for (const simhost::ServerOptions& transport : {Http(), Https()}) {
        for (const std::vector<Fault>& way : {std::vector<Fault>{},
                                              {Faults::Close()},
                                              {Faults::Truncate(400)},
                                              {Faults::HttpStatus(401, "Unauthorized")}}) {
            Serve(WithAccount(transport));
            for (const Fault& fault : way) {
                Server().InjectFault(fault);
            }
            ExpectSecret(kPassword);
            ExpectSecret("wrong-secret");
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Log, SecrecyAtLevel, testing::Range(0, 5));

}  // namespace
}  // namespace clitest
