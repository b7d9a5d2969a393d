// A client that knows HTTP framing and nothing more.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "simhost/server.h"

namespace simhost_test {

struct Reply {
    int status = 0;
    std::string head;       ///< status line and headers, the empty line included
    std::string body;       ///< without its framing
    std::string trailers;   ///< header lines after the last chunk
    std::string raw;        ///< all of it, as received
    bool complete = false;  ///< false: the connection ended first

    /// The header's value; empty when there is none.
    std::string Header(std::string_view name) const;
    bool HasHeader(std::string_view name) const;
};

struct PeerCertificate {
    std::string common_name;
    std::string signature;  ///< OpenSSL's name of its algorithm
    int key_bits = 0;
    bool expired = false;
};

enum class End { kNone, kClosed, kReset };

/// One connection.
class RawClient {
public:
    /// Connects; with TLS when the server speaks it.
    explicit RawClient(const simhost::Server& server);
    /// Without TLS.
    explicit RawClient(std::uint16_t port);
    static RawClient OverTls(std::uint16_t port);
    /// Only the TCP connection, whatever the server speaks.
    static RawClient WithoutTls(const simhost::Server& server);
    RawClient(RawClient&&) noexcept;
    ~RawClient();

    void Send(std::string_view bytes);
    /// The next reply, or as much of it as comes before the connection ends.
    Reply Receive();
    Reply Ask(std::string_view request);
    std::string ReceiveBytes(std::size_t size);
    /// Leaves the connection open for answers.
    void FinishSending();
    /// Everything up to the connection's end.
    std::string ReceiveAll();
    /// How the connection has ended, as far as has been read.
    End end() const;

    /// The negotiated protocol, such as "TLSv1.3".
    std::string TlsVersion() const;
    PeerCertificate Certificate() const;
    /// Another connection, which takes up this one's TLS session.
    RawClient ConnectAgain(const simhost::Server& server) const;

private:
    struct Impl;
    RawClient(std::uint16_t port, bool tls, const RawClient* earlier = nullptr);

    bool ReceiveMore();
    /// Takes a line and its end from what arrives; false at the connection's end.
    bool TakeLine(Reply& reply, std::string& line);
    bool TakeBytes(Reply& reply, std::size_t size, std::string& bytes);

    std::unique_ptr<Impl> impl_;
};

}  // namespace simhost_test
