// One TCP connection, with or without TLS, used from the caller's thread within limits.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "transport/limit.h"
#include "transport/tls_settings.h"
#include "transport/transport_error.h"

namespace cimclient {

/// The limits of one connection all have the same cancellation, that of its construction.
class Connection {
public:
    /// Connects, with settings including the TLS handshake, to the first of the host's addresses
    /// that takes the connection. Throws TransportError. The settings must outlive the connection.
    Connection(const std::string& host, unsigned port, TlsSettings* tls, const Limit& limit);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Writes all of it at once. False when the other side no longer takes it. Throws
    /// TransportError at the limit.
    bool Write(std::string_view bytes, const Limit& limit);

    /// The next bytes that arrive, valid until the next call; empty at the end, whether the other
    /// side closed or broke the connection. Throws TransportError at the limit.
    std::string_view Read(const Limit& limit);

    /// Why the connection ended; empty while it has not.
    const std::string& EndReason() const;

    /// False when nothing has arrived, no bytes and no end, since the last answer was read. A host
    /// that keeps sending records of TLS that carry nothing is stale too.
    bool IsStale();

    /// The certificate that the host showed; null without TLS.
    struct x509_st* Certificate() const;

private:
    class Stream;
    std::unique_ptr<Stream> stream_;
};

}  // namespace cimclient
