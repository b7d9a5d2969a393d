// Where the password is taken from.
#include <signal.h>

#include "cli/command_test.h"

namespace clitest {
namespace {

using testing::HasSubstr;

class Password : public CommandTest {
protected:
    Password() { Serve(WithAccount()); }

    std::vector<std::string> Arguments(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments = ToHost("inventory", {"os", "--user", kUser});
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }
    Finished WithPasswordFile(const std::string& content) const {
        return Run(Arguments({"--password-file", WriteFile("password", content)}));
    }
    std::unique_ptr<ChildProcess> AskedOnTerminal() const {
        auto kalvex = Launch({Arguments(), {}, {}, true});
        const std::string prompt = "Password for root@127.0.0.1: ";
        EXPECT_THAT(kalvex->ReadTerminalUntil(prompt), HasSubstr(prompt));
        return kalvex;
    }
};

TEST_F(Password, IsReadFromAFileWithoutItsLineBreak) {
    const std::string password = kPassword;
    EXPECT_EQ(WithPasswordFile(password).status, 0);
    EXPECT_EQ(WithPasswordFile(password + "\n").status, 0);
    EXPECT_EQ(WithPasswordFile(password + "\r\n").status, 0);
}

TEST_F(Password, KeepsEverythingElseOfTheFile) {
    const std::string password = kPassword;
    EXPECT_EQ(WithPasswordFile(password + "\n\n").status, 3);
    EXPECT_EQ(WithPasswordFile(password + " \n").status, 3);
}

TEST_F(Password, IsReadFromStandardInput) {
    const Finished finished =
        Run({Arguments({"--password-file", "-"}), {}, std::string(kPassword) + "\n"});
    EXPECT_EQ(finished.status, 0) << finished.err;
}

TEST_F(Password, IsTakenFromTheEnvironment) {
    EXPECT_EQ(Run({Arguments(), {{"KALVEX_PASSWORD", kPassword}}}).status, 0);
}

TEST_F(Password, FileGoesBeforeEnvironment) {
    const std::string file = WriteFile("password", kPassword);
    EXPECT_EQ(Run({Arguments({"--password-file", file}), {{"KALVEX_PASSWORD", "not this"}}}).status,
              0);
}

TEST_F(Password, EnvironmentGoesBeforeTheTerminal) {
    auto kalvex = Launch({Arguments(), {{"KALVEX_PASSWORD", kPassword}}, {}, true});
    EXPECT_EQ(kalvex->Wait().status, 0);
}

TEST_F(Password, IsAskedOnTheTerminalWithoutEcho) {
    auto kalvex = AskedOnTerminal();
    EXPECT_FALSE(kalvex->Echoes());
    kalvex->Type(std::string(kPassword) + "\n");
    const Finished finished = kalvex->Wait();
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_TRUE(kalvex->Echoes());
    EXPECT_EQ(kalvex->ReadTerminalUntil("\n"), "\r\n");
    EXPECT_THAT(finished.out, testing::StartsWith("127.0.0.1:"));
}

TEST_F(Password, EndOfInputOnTheTerminalIsNoPassword) {
    auto kalvex = AskedOnTerminal();
    kalvex->Type("\x04");
    EXPECT_THAT(kalvex->Wait(), Complains(2, "no password was typed"));
    EXPECT_TRUE(kalvex->Echoes());
}

TEST_F(Password, ASignalWhileAskingRestoresTheEcho) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        auto kalvex = AskedOnTerminal();
        kalvex->Signal(signal);
        EXPECT_EQ(kalvex->Wait().status, -signal);
        EXPECT_TRUE(kalvex->Echoes());
    }
}

TEST_F(Password, IsMissingWithoutATerminal) {
    EXPECT_THAT(Run(Arguments()), Complains(2, "use --password-file FILE or set KALVEX_PASSWORD"));
}

TEST_F(Password, IsNotAskedForWithoutATerminalAndAUser) {
    Serve();
    const Finished finished = Inventory({"os"});
    EXPECT_EQ(finished.status, 0) << finished.err;
}

TEST_F(Password, IsWarnedOfWhenItGoesToAnotherMachineByPlainHttp) {
    const std::vector<std::string> elsewhere{
        "inventory",   "os",   "--user", kUser,
        "--transport", "http", "--host", "no-such-host.invalid"};
    EXPECT_THAT(Run({elsewhere, {{"KALVEX_PASSWORD", kPassword}}}).err,
                testing::AllOf(testing::StartsWith("kalvex: warning: --transport http lets"),
                               HasSubstr("\nkalvex: connecting to no-such-host.invalid")));
    EXPECT_EQ(Run({Arguments(), {{"KALVEX_PASSWORD", kPassword}}}).err, "");
}

TEST_F(Password, IsWarnedOfWithoutAUserNameToo) {
    const std::vector<std::string> elsewhere{"inventory", "os",     "--transport",
                                             "http",      "--host", "no-such-host.invalid"};
    EXPECT_THAT(Run({elsewhere, {{"KALVEX_PASSWORD", kPassword}}}).err,
                testing::StartsWith("kalvex: warning: --transport http lets"));
    EXPECT_THAT(Run({elsewhere}).err, testing::StartsWith("kalvex: connecting to"));
}

TEST_F(Password, FileThatCannotBeReadIsReported) {
    EXPECT_THAT(Run(Arguments({"--password-file", PathOf("missing")})),
                Complains(2, "missing: No such file or directory"));
    EXPECT_THAT(Run(Arguments({"--password-file", PathOf("")})), Complains(2, "Is a directory"));
    EXPECT_THAT(WithPasswordFile(std::string("a\0b", 3)), Complains(2, "NUL byte"));
    EXPECT_THAT(WithPasswordFile(""), Complains(2, "it is empty"));
    EXPECT_THAT(WithPasswordFile("\n"), Complains(2, "it is empty"));
}

}  // namespace
}  // namespace clitest
