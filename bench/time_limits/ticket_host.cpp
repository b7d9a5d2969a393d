#include "time_limits/ticket_host.h"

#include <openssl/ssl.h>
#include <poll.h>
#include <signal.h>

#include <memory>

namespace time_limits {

namespace {

/// OpenSSL writes to a socket whose client may have hung up.
void BlockSigpipe() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

/// OpenSSL does not say so while it sends tickets.
bool HasHungUp(int socket) {
    pollfd wait{socket, POLLRDHUP, 0};
    return poll(&wait, 1, 0) != 0;
}

}  // namespace

TicketHost::TicketHost()
    : context_(simhost::ServerOptions(), "host"),
      host_([this](int socket) { SendTickets(socket); }) {}

void TicketHost::SendTickets(int socket) {
    BlockSigpipe();
    const std::unique_ptr<SSL, void (*)(SSL*)> tls(SSL_new(context_.asio().native_handle()),
                                                   SSL_free);
    SSL_set_fd(tls.get(), socket);
    if (SSL_accept(tls.get()) != 1) {
        return;
    }
    while (!HasHungUp(socket) && SSL_new_session_ticket(tls.get()) == 1 &&
           SSL_do_handshake(tls.get()) == 1) {
    }
}

}  // namespace time_limits
