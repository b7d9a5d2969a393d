#include "cli/command_test.h"

#include <arpa/inet.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace clitest {

using testing::AllOf;
using testing::EndsWith;
using testing::Field;
using testing::HasSubstr;
using testing::ResultOf;
using testing::StartsWith;

CommandTest::CommandTest() {
    char name[] = "/tmp/kalvex-cli-XXXXXX";
    folder_ = mkdtemp(name);
}

CommandTest::~CommandTest() { std::filesystem::remove_all(folder_); }

void CommandTest::Serve(simhost::ServerOptions options) { Serve(SmallHost(), std::move(options)); }

void CommandTest::Serve(const Json& description, simhost::ServerOptions options) {
    is_https_ = options.transport == simhost::Transport::kHttps;
    server_ = std::make_unique<simhost::Server>(
        simhost::HostDescription::FromJson(description.dump(), "test host"), std::move(options));
}

simhost::ServerOptions CommandTest::Http() {
    simhost::ServerOptions options;
    options.transport = simhost::Transport::kHttp;
    return options;
}

simhost::ServerOptions CommandTest::Https() { return {}; }

simhost::ServerOptions CommandTest::WithAccount(simhost::ServerOptions options) {
    options.user = kUser;
    options.password = kPassword;
    return options;
}

Json CommandTest::SmallHost() { return Json::parse(ReadFile(TestData("small-host.json"))); }

Finished CommandTest::Run(std::vector<std::string> arguments) {
    return Run(Start{std::move(arguments), {}, {}, false});
}

Finished CommandTest::Run(Start start) { return Launch(std::move(start))->Wait(); }

std::unique_ptr<ChildProcess> CommandTest::Launch(Start start) {
    start.environment.insert({"COLUMNS", "100"});
    return std::make_unique<ChildProcess>(KALVEX_COMMAND, std::move(start));
}

std::vector<std::string> CommandTest::ToHost(const std::string& command,
                                             const std::vector<std::string>& more) const {
    std::vector<std::string> arguments{command,
                                       "--host",
                                       "127.0.0.1",
                                       "--transport",
                                       is_https_ ? "https" : "http",
                                       "--port",
                                       std::to_string(server_->port())};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

Finished CommandTest::Inventory(const std::vector<std::string>& more) const {
    return Run(ToHost("inventory", more));
}

Json CommandTest::Document(const std::vector<std::string>& more, int expected_status) const {
    std::vector<std::string> arguments = ToHost("inventory", {"--format", "json"});
    arguments.insert(arguments.end(), more.begin(), more.end());
    const Finished finished = Run(arguments);
    EXPECT_EQ(finished.status, expected_status) << finished.err;
    return Json::parse(finished.out);
}

Json CommandTest::Sections(const std::vector<std::string>& more, int expected_status) const {
    return Document(more, expected_status).at("sections");
}

std::string CommandTest::WithoutSeconds(const std::string& text) {
    return std::regex_replace(text, std::regex(" in [0-9.]+ m?s"), " in N s");
}

std::string CommandTest::FingerprintOfHost() const {
    const Finished finished =
        Run({"fingerprint", "--host", "127.0.0.1", "--port", std::to_string(server_->port())});
    const std::string heading = "fingerprint:\n";
    const std::size_t at = finished.out.find(heading);
    EXPECT_NE(at, std::string::npos) << finished.err;
    return finished.out.substr(at + heading.size(), finished.out.size() - at - heading.size() - 1);
}

std::string CommandTest::WriteFile(const std::string& name, const std::string& content) const {
    std::ofstream(PathOf(name), std::ios::binary) << content;
    return PathOf(name);
}

std::string CommandTest::ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

std::string TestData(const std::string& name) { return std::string(CLI_TEST_DATA "/") + name; }

std::uint16_t ClosedPort() {
    // Bound but not listening: nobody else gets the port while the test runs.
    static const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    static const int bound = bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address);
    EXPECT_EQ(bound, 0);
    socklen_t size = sizeof address;
    EXPECT_EQ(getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size), 0);
    return ntohs(address.sin_port);
}

testing::Matcher<const Finished&> Complains(int status, const std::string& text) {
    const auto lines = [](const std::string& err) {
        return std::count(err.begin(), err.end(), '\n');
    };
    return AllOf(Field("status", &Finished::status, status), Field("out", &Finished::out, ""),
                 Field("err", &Finished::err,
                       AllOf(StartsWith("kalvex: "), HasSubstr(text), EndsWith("\n"),
                             ResultOf("lines", lines, 1))));
}

void PrintTo(const Finished& finished, std::ostream* out) {
    *out << "status " << finished.status << "\n--- out\n"
         << finished.out << "--- err\n"
         << finished.err;
}

}  // namespace clitest
