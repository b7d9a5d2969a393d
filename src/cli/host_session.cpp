#include "cli/host_session.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "cli/command_error.h"
#include "cli/loopback.h"
#include "cli/password.h"
#include "cli/simulated_host.h"
#include "common/platform/secret.h"
#include "inventory/failure_meanings.h"
#include "module/exsi/kalvex.h"
#include "simhost/server.h"

namespace command {

namespace {

using Zentar::Failure;
using Zentar::ZentarConnection::ConnectionInfo;
using Zentar::ZentarConnection::ConnectionOptions;

/// Through the host's own CIM server.
constexpr std::int32_t kCimCase = 2;

ConnectionInfo InfoOf(const HostOptions& options, const std::string& password) {
    ConnectionInfo info;
    info.host = options.host;
    info.port = options.PortOrDefault();
    info.user = options.user;
    info.password = password;
    info.connection_type = options.transport == Transport::kHttps ? 1 : 0;
    info.connection_case = kCimCase;
    return info;
}

/// Somebody waits for the command: a host that does not answer is not tried again and again.
ConnectionOptions ConnectionOptionsOf(const HostOptions& options) {
    ConnectionOptions connection;
    connection.connect_attempts = 1;
    connection.pause_after_last_attempt = false;
    connection.connect_limit = Milliseconds(options.limits.connect);
    connection.request_limit = Milliseconds(options.limits.request);
    connection.deadline = Milliseconds(options.limits.host);
    connection.give_up = true;
    connection.ca_file = options.trust.ca_file;
    connection.fingerprints = options.trust.fingerprints;
    return connection;
}

/// A host that asks for credentials is also sent a password without a user name.
void WarnOfPlainCredentials(const HostOptions& options, const Zentar::Secret& password) {
    const bool has_credentials = !options.user.empty() || !password.text().empty();
    if (options.transport == Transport::kHttp && has_credentials && !options.simulated &&
        !IsLoopback(options.host)) {
        std::cerr << "kalvex: warning: --transport http lets everyone on the way read the user "
                     "name and password; use https"
                  << std::endl;
    }
}

}  // namespace

HostSession::HostSession(HostOptions options, const LogOptions& log)
    : options_(std::move(options)) {
    OpenLog(log);
    CheckHostOptions(options_);
    if (options_.simulated) {
        options_.host = options_.simulation.address;
    }
    Zentar::Secret password;
    if (!options_.simulated || !options_.user.empty()) {
        password = PasswordSource(options_).Take();
        WarnOfPlainCredentials(options_, password);
    }
    interruption_ = std::make_unique<Interruption>([cancel = cancel_] { cancel.Cancel(); });
    if (options_.simulated) {
        StartSimulatedHost();
    }
    Connect(password.text(), !log.GoesToStandardError());
}

HostSession::~HostSession() = default;

std::string HostSession::Connecting() const {
    return "connecting to " + name() + " port " + std::to_string(port());
}

const char* HostSession::transport() const {
    return options_.transport == Transport::kHttps ? "https" : "http";
}

void HostSession::StartSimulatedHost() {
    constexpr std::uint16_t kAnyPort = 0;
    server_ = command::StartSimulatedHost(options_.description_file, options_.transport, kAnyPort,
                                          options_.simulation);
    options_.port = server_->port();
}

void HostSession::Connect(const std::string& password, bool shows_progress) {
    progress_ = std::make_unique<Progress>(name(), shows_progress);
    progress_->Show("connecting");
    ConnectionInfo info = InfoOf(options_, password);
    ConnectionOptions connection = ConnectionOptionsOf(options_);
    connection.cancel = cancel_;
    begun_ = std::chrono::steady_clock::now();
    host_ = std::make_unique<Zentar::Agentless::Kalvex>(info, connection);
    Zentar::Wipe(info.password);
    progress_->Hide();
    connecting_failures_ = host_->TakeFailures();
    CheckConnectionInfo();
}

void HostSession::CheckConnectionInfo() const {
    const std::vector<Failure>& failures = connecting_failures_.failures;
    const auto wrong =
        std::ranges::find(failures, Zentar::FailureKind::kBadConnectionInfo, &Failure::kind);
    if (wrong != failures.end()) {
        throw UsageError(inventory::DescribeFailure(*wrong) + "; " +
                         inventory::MeaningOf(wrong->kind).advice);
    }
}

}  // namespace command
