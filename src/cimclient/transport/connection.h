// One TCP connection, with or without TLS, used from the caller's thread with time limits.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "transport/tls_settings.h"

namespace cimclient {

using Deadline = std::chrono::steady_clock::time_point;

/// The host's name cannot be resolved.
struct UnknownHost {};

/// The host cannot be reached, or the TLS handshake failed, in time or at all.
struct ConnectFailed {};

/// The time limit was reached while reading or writing. The connection is of no more use.
struct TimedOut {};

class Connection {
public:
    /// Connects, with settings including the TLS handshake. Throws UnknownHost or ConnectFailed.
    /// The settings must outlive the connection.
    Connection(const std::string& host, unsigned port, TlsSettings* tls, Deadline deadline);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Writes all of it at once. False when the other side no longer takes it. Throws TimedOut.
    bool Write(std::string_view bytes, Deadline deadline);

    /// The next bytes that arrive, valid until the next call; empty at the end, whether the other
    /// side closed or broke the connection. Throws TimedOut.
    std::string_view Read(Deadline deadline);

    /// True when something has arrived, bytes or an end, though nothing was asked for.
    bool IsStale();

private:
    class Stream;
    std::unique_ptr<Stream> stream_;
};

}  // namespace cimclient
