#include "cli/host_session.h"

#include <utility>

#include "cli/connection_probe.h"
#include "cli/password.h"
#include "cli/simulated_host.h"
#include "common/platform/wipe.h"
#include "module/exsi/kalvex.h"
#include "simhost/server.h"

namespace command {

namespace {

/// Through the host's own CIM server.
constexpr std::int32_t kCimCase = 2;

const LogOptions& Opened(const LogOptions& log) {
    OpenLog(log);
    return log;
}

}  // namespace

HostSession::HostSession(HostOptions options, const LogOptions& log)
    : options_(std::move(options)), failures_(Opened(log).level) {
    CheckHostOptions(options_);
    if (options_.simulated) {
        StartSimulatedHost();
    }
    if (options_.simulated && options_.user.empty()) {
        ProbeConnection(options_);
        Connect({});
        return;
    }
    PasswordSource password(options_);
    ProbeConnection(options_);
    Connect(password.Take().text());
}

HostSession::~HostSession() = default;

void HostSession::StartSimulatedHost() {
    constexpr std::uint16_t kAnyPort = 0;
    server_ = command::StartSimulatedHost(options_.description_file, options_.transport, kAnyPort,
                                          options_.simulation);
    options_.host = options_.simulation.address;
    options_.port = server_->port();
}

void HostSession::Connect(const std::string& password) {
    Zentar::ZentarConnection::ConnectionInfo info;
    info.host = options_.host;
    info.port = port();
    info.user = options_.user;
    info.password = password;
    info.connection_type = options_.transport == Transport::kHttps ? 1 : 0;
    info.connection_case = kCimCase;
    host_ = std::make_unique<Zentar::Agentless::Kalvex>(info);
    Zentar::Wipe(info.password);
}

}  // namespace command
