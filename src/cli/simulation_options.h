// The options that say how the simulated host behaves, shared by the commands that start one.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI
namespace simhost {
struct Fault;
struct ServerOptions;
}  // namespace simhost

namespace command {

struct SimulationOptions {
    std::string account;  ///< empty: requests need no account
    std::string account_password_file;
    unsigned delay = 0;  ///< of a round trip, in milliseconds
    std::string address = "127.0.0.1";
    std::vector<std::string> faults;

    std::string prefix;  ///< of the options' names
    std::vector<const CLI::Option*> added;

    /// The first option that was given; empty when none was.
    std::string FirstGiven() const;
};

/// Adds the options to a command. Their names begin with `prefix`: "--", or "--simulated-" beside
/// the options of a real host. The structure has to outlive the parsing.
void AddSimulationOptions(CLI::App& app, const std::string& prefix, SimulationOptions& options);

/// The faults that can be named, a line each, for a command's help.
std::string FaultHelp();

/// Sets address, delay and account; reads the password file. Throws UsageError when the address
/// is not numeric, the account is incomplete or the file cannot be read.
void ApplyTo(simhost::ServerOptions& server, const SimulationOptions& options);

/// The ways to fail that the options name. Throws UsageError when there is no such fault.
std::vector<simhost::Fault> FaultsOf(const SimulationOptions& options);

}  // namespace command
