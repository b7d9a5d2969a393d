// The server's end of one connection: bytes in, bytes out, with TLS or without.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <string_view>

#include "simhost/tls_context.h"

namespace simhost {

/// The connection is over: the peer has gone, or the server is ending.
struct ConnectionEnded {};

/// A connected TCP socket, owned by whoever holds this.
struct NativeSocket {
    int handle = -1;
    bool ip_v6 = false;
};

/// Used by one thread, which blocks in its members; only Stop() is for others. Members throw
/// ConnectionEnded when nothing more can be done, Close() and Reset() never.
class Stream {
public:
    using Clock = std::chrono::steady_clock;
    using Duration = Clock::duration;

    /// Closes the socket when it throws, for lack of descriptors or memory.
    explicit Stream(NativeSocket accepted);
    ~Stream();
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    /// From here on reads and writes are encrypted. Gives whether the session was resumed.
    bool StartTls(TlsContext& context);

    /// At least one byte, valid until the next call. Nothing when the limit (zero: none) is over.
    std::string_view Read(Duration limit = Duration::zero());
    void Write(std::string_view bytes);
    /// One more message of TLS 1.3 that carries no data. False when that is not spoken.
    bool SendTicket();
    bool SendKeyUpdate();
    void Pause(Duration duration);
    void PauseUntil(Clock::time_point end);
    /// Discards what arrives until the peer closes.
    void AwaitPeersEnd();

    /// Ends the connection with TLS's close_notify, without it, or by a TCP reset.
    void CloseProperly();
    void Close();
    void Reset();

    /// Makes the blocked member, and each later one, throw. Any thread may call it.
    void Stop();

    class Impl;

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace simhost
