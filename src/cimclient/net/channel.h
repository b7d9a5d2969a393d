// One TCP connection, with or without TLS, used from the caller's thread within limits.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "net/limit.h"
#include "net/network_error.h"

struct x509_st;

namespace cimclient {

struct TlsSettings;

/// The limits of one connection all have the same cancellation, that of its construction.
class Channel {
public:
    /// Connects, with settings including the TLS handshake, to the first of the host's addresses
    /// that takes the connection. Throws NetworkError. The settings must outlive the connection.
    Channel(const std::string& host, unsigned port, TlsSettings* tls, const Limit& limit);
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// Writes all of it at once. False when the other side no longer takes it. Throws
    /// NetworkError at the limit.
    bool Write(std::string_view bytes, const Limit& limit);

    /// The next bytes that arrive, valid until the next call; empty at the end, whether the other
    /// side closed or broke the connection. Throws NetworkError at the limit.
    std::string_view Read(const Limit& limit);

    /// Why the connection ended; empty while it has not.
    const std::string& EndReason() const;

    /// False when nothing has arrived, no bytes and no end, since the last answer was read. A host
    /// that keeps sending records of TLS that carry nothing is stale too.
    bool IsStale();

    /// The certificate that the host showed; null without TLS.
    x509_st* Certificate() const;

private:
    class Stream;
    std::unique_ptr<Stream> stream_;
};

}  // namespace cimclient
