// The fixture of the tests that run the command against a host.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/child_process.h"
#include "simhost/server.h"

namespace clitest {

using Json = nlohmann::ordered_json;

class CommandTest : public testing::Test {
protected:
    CommandTest();
    ~CommandTest() override;

    /// Puts a host on the network: the small one of data/small-host.json, by plain HTTP, unless
    /// told otherwise.
    void Serve(simhost::ServerOptions options = Http());
    void Serve(const Json& description, simhost::ServerOptions options = Http());
    static simhost::ServerOptions Http();
    static simhost::ServerOptions Https();
    /// With the account of kUser and kPassword.
    static simhost::ServerOptions WithAccount(simhost::ServerOptions options = Http());
    simhost::Server& Server() const { return *server_; }

    /// The small host's description, to be changed.
    static Json SmallHost();

    static constexpr const char* kUser = "root";
    static constexpr const char* kPassword = "pässwörd €";

    /// Runs `kalvex` with these arguments and no terminal, for text of 100 columns.
    static Finished Run(std::vector<std::string> arguments);
    static Finished Run(Start start);
    static std::unique_ptr<ChildProcess> Launch(Start start);

    /// Arguments of `command` that lead to the host on the network, and more.
    std::vector<std::string> ToHost(const std::string& command,
                                    const std::vector<std::string>& more = {}) const;
    /// `kalvex inventory` of the host on the network.
    Finished Inventory(const std::vector<std::string>& more = {}) const;
    /// The same in JSON; parses what it printed: all of it, or the sections alone.
    Json Document(const std::vector<std::string>& more = {}, int expected_status = 0) const;
    Json Sections(const std::vector<std::string>& more = {}, int expected_status = 0) const;

    /// What was printed as text, with "N s" for the time that reading took.
    static std::string WithoutSeconds(const std::string& text);

    /// The value that --fingerprint takes for the host on the network.
    std::string FingerprintOfHost() const;

    /// A new file in a folder of the test's own.
    std::string WriteFile(const std::string& name, const std::string& content) const;
    std::string PathOf(const std::string& name) const { return folder_ + "/" + name; }
    static std::string ReadFile(const std::string& path);

private:
    std::string folder_;
    std::unique_ptr<simhost::Server> server_;
    bool is_https_ = false;
};

std::string TestData(const std::string& name);

/// A port of this machine that refuses connections.
std::uint16_t ClosedPort();

/// The complaint: nothing on standard output, and one line on standard error that begins with the
/// program's name and holds `text`.
testing::Matcher<const Finished&> Complains(int status, const std::string& text);

/// For failing expectations.
void PrintTo(const Finished& finished, std::ostream* out);

}  // namespace clitest
