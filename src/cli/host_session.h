// A host that is ready to be read: the named one, or a simulated one that lives as long as this.
#pragma once

#include <memory>
#include <string>

#include "cli/failure_log.h"
#include "cli/host_options.h"
#include "cli/log_options.h"

namespace Zentar::Agentless {
class Kalvex;
}
namespace simhost {
class Server;
}

namespace command {

class HostSession {
public:
    /// Opens the log, finds the password, sees whether the host can be connected to, and connects.
    /// Throws CommandError when something is missing or wrong, or the host does not answer.
    HostSession(HostOptions options, const LogOptions& log);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    Zentar::Agentless::Kalvex& host() { return *host_; }
    FailureLog& failures() { return failures_; }

    /// Where the host is, the simulated one too.
    const std::string& name() const { return options_.host; }
    std::uint16_t port() const { return options_.PortOrDefault(); }

private:
    void StartSimulatedHost();
    void Connect(const std::string& password);

    HostOptions options_;
    FailureLog failures_;
    std::unique_ptr<simhost::Server> server_;
    std::unique_ptr<Zentar::Agentless::Kalvex> host_;
};

}  // namespace command
