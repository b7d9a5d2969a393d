#include "simhost/server.h"

#include <list>
#include <utility>

#include "simhost/base64.h"
#include "simhost/connection.h"
#include "simhost/listener.h"

namespace simhost {

namespace {

/// Connections beyond are closed at once.
constexpr std::size_t kMaxConnections = 256;

/// How long a count waits for handshakes under way.
constexpr std::chrono::milliseconds kSettleLimit{1000};

std::unique_ptr<TlsContext> MakeTls(const ServerOptions& options, const Host& host) {
    return options.transport == Transport::kHttps ? std::make_unique<TlsContext>(options, host.name)
                                                  : nullptr;
}

std::string Authorization(const ServerOptions& options) {
    return options.user.empty() ? "" : Base64(options.user + ":" + options.password);
}

}  // namespace

class Server::Impl {
public:
    Impl(const HostDescription& description, const ServerOptions& options)
        : context{description,
                  options,
                  MakeTls(options, description.host()),
                  Authorization(options),
                  {},
                  {}},
          listener(options, [this](NativeSocket accepted) { TakeUp(accepted); }) {}

    void TakeUp(NativeSocket accepted) {
        connections.remove_if([](const Connection& connection) { return connection.finished(); });
        if (connections.size() >= kMaxConnections) {
            Stream(accepted).Close();
            return;
        }
        const std::size_t number = context.journal.Connected();
        try {
            connections.emplace_back(context, number, accepted);
        } catch (...) {
            context.journal.Settled();
            throw;
        }
    }

    ServerContext context;
    std::list<Connection> connections;
    // The last member is the first to go: nobody can connect while the connections are ending.
    Listener listener;
};

Server::Server(HostDescription host, ServerOptions options)
    : impl_(std::make_unique<Impl>(host, options)) {}

Server::~Server() = default;

std::uint16_t Server::port() const { return impl_->listener.port(); }

std::string Server::Url() const {
    const ServerOptions& options = impl_->context.options;
    const bool ip_v6 = options.address.find(':') != std::string::npos;
    return (options.transport == Transport::kHttps ? "https://" : "http://") +
           (ip_v6 ? "[" + options.address + "]" : options.address) + ":" + std::to_string(port());
}

Counters Server::counters() const {
    impl_->listener.AcceptPending();
    return impl_->context.journal.counters(kSettleLimit);
}

std::vector<Request> Server::requests() const { return impl_->context.journal.requests(); }

void Server::ForgetRequests() { impl_->context.journal.ForgetRequests(); }

void Server::InjectFault(Fault fault) { impl_->context.faults.Add(std::move(fault)); }

void Server::ClearFaults() { impl_->context.faults.Clear(); }

}  // namespace simhost
