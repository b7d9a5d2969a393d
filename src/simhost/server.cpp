#include "simhost/server.h"

#include <utility>

#include "simhost/connections.h"
#include "simhost/listener.h"

namespace simhost {

namespace {

/// Connections beyond are closed at once.
constexpr std::size_t kMaxConnections = 256;

/// How long a count waits for handshakes under way.
constexpr std::chrono::milliseconds kSettleLimit{1000};

}  // namespace

class Server::Impl {
public:
    Impl(HostDescription description, const ServerOptions& options)
        : host(std::move(description)),
          context(options, host.description.host().name, Journal::Keeps::kRequests),
          connections(context, kMaxConnections),
          listener(options),
          port(listener.Listen(options.port, [this](NativeSocket accepted) {
              connections.TakeUp(host, accepted);
          })) {
        listener.Start();
    }

    ServedHost host;
    ServerContext context;
    Connections connections;
    // The last to be made is the first to go: nobody can connect while the connections are ending.
    Listener listener;
    const std::uint16_t port;
};

Server::Server(HostDescription host, ServerOptions options)
    : impl_(std::make_unique<Impl>(std::move(host), options)) {}

Server::~Server() = default;

std::uint16_t Server::port() const { return impl_->port; }

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

void Server::InjectFault(Fault fault) { impl_->host.faults.Add(std::move(fault)); }

void Server::ClearFaults() { impl_->host.faults.Clear(); }

}  // namespace simhost
