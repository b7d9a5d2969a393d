// A TLS server that never stops sending session tickets.
#pragma once

#include "simhost/tls_context.h"
#include "stalling_host.h"

namespace time_limits {

/// Completes handshakes, then sends tickets without a pause and reads nothing.
class TicketHost {
public:
    TicketHost();
    std::uint16_t port() const { return host_.port(); }

private:
    void SendTickets(int socket);

    simhost::TlsContext context_;
    bench::StallingHost host_;
};

}  // namespace time_limits
