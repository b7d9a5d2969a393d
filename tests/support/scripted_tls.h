// The TLS side of a scripted server: a certificate made in memory, and what a handshake brought.
#pragma once

#include <openssl/ssl.h>

#include <cstdint>
#include <memory>
#include <string>

namespace support {

struct TlsOptions {
    int oldest_version = TLS1_VERSION;
    int newest_version = TLS1_3_VERSION;
    bool weak_key = false;  ///< RSA with 1024 bits, signed with SHA-1
    /// Of a Diffie-Hellman key exchange, the only one that it then knows, with RSA keys; null: all.
    const char* group = nullptr;
    /// TLS 1.3 with one cipher and without tickets, so that RecordSealer can go on in its place.
    bool seals_own_records = false;
    bool hangs_up_on_sessions = false;  ///< when a client offers one of TLS 1.3
    /// Where the certificate is also written to as PEM, when not empty.
    std::string certificate_file;
};

/// What a server saw of one handshake.
struct TlsSeen {
    std::string version;      ///< "TLSv1.2"; empty when the handshake failed
    std::string server_name;  ///< the name the client asked for, empty without SNI
    bool resumed = false;
};

/// The context of all connections of one server, with a self-signed certificate for another name.
class TlsServerContext {
public:
    explicit TlsServerContext(const TlsOptions& options);

    SSL_CTX* get() const { return context_.get(); }

private:
    struct Free {
        void operator()(SSL_CTX* context) const { SSL_CTX_free(context); }
    };
    std::unique_ptr<SSL_CTX, Free> context_;
};

TlsSeen SeenBy(SSL* tls);

/// A record of TLS 1.3 before it is sealed.
struct TlsRecord {
    static constexpr unsigned char kAlert = 21, kContent = 23;

    unsigned char type = kContent;
    std::string content;
    std::size_t padding = 0;
};

/// Seals records that OpenSSL would not send, such as empty ones. Nothing else may be sent on the
/// connection from its construction on, which is after the handshake.
class RecordSealer {
public:
    /// Of a connection of a context with `seals_own_records`.
    explicit RecordSealer(SSL* tls);

    std::string Seal(const TlsRecord& record);

private:
    std::string key_;
    std::string nonce_;
    std::uint64_t sealed_ = 0;
};

}  // namespace support
