// A host that is ready to be read: the named one, or a simulated one that lives as long as this.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "cli/host_options.h"
#include "cli/interruption.h"
#include "cli/log_options.h"
#include "cli/progress.h"
#include "common/cancel/cancel_handle.h"
#include "common/records/failure.h"

namespace Zentar::Agentless {
class Kalvex;
}
namespace simhost {
class Server;
}

namespace command {

class HostSession {
public:
    /// Opens the log, finds the password, and connects, from when on SIGINT and SIGTERM cancel.
    /// Throws CommandError when something is missing or wrong. A host that does not answer is in
    /// the failures of connecting.
    HostSession(HostOptions options, const LogOptions& log);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    Zentar::Agentless::Kalvex& host() { return *host_; }
    Progress& progress() { return *progress_; }
    const Interruption& interruption() const { return *interruption_; }
    /// What connecting met; its consequences come up again in what is read.
    const Zentar::FailureList& connecting_failures() const { return connecting_failures_; }

    /// Where the host is, the simulated one too.
    const std::string& name() const { return options_.host; }
    std::uint16_t port() const { return options_.PortOrDefault(); }
    /// "http" or "https".
    const char* transport() const;
    /// When connecting began.
    std::chrono::steady_clock::time_point begun() const { return begun_; }
    /// "connecting to HOST port N", as failures name it.
    std::string Connecting() const;

private:
    void StartSimulatedHost();
    void Connect(const std::string& password, bool shows_progress);
    void CheckConnectionInfo() const;

    HostOptions options_;
    Zentar::CancelHandle cancel_ = Zentar::CancelHandle::Make();
    std::unique_ptr<Interruption> interruption_;
    std::unique_ptr<simhost::Server> server_;
    std::unique_ptr<Progress> progress_;
    std::chrono::steady_clock::time_point begun_{};
    std::unique_ptr<Zentar::Agentless::Kalvex> host_;
    Zentar::FailureList connecting_failures_;
};

}  // namespace command
