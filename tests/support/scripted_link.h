// One connection of a scripted server, plain or TLS. Every wait ends when the server stops.
#pragma once

#include <openssl/ssl.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "support/scripted_tls.h"

namespace support {

class ScriptedLink {
public:
    /// Thrown by every wait when the server is to stop.
    struct Stopped {};

    /// Owns the socket; `stop` becomes readable when the server stops. TLS when there is a context.
    ScriptedLink(int socket, int stop, SSL_CTX* tls);
    ~ScriptedLink();
    ScriptedLink(const ScriptedLink&) = delete;
    ScriptedLink& operator=(const ScriptedLink&) = delete;

    /// False when the client hung up instead.
    bool Handshake();
    SSL* tls() const { return tls_.get(); }

    /// What has come, at most `most` bytes; empty when the client has hung up.
    std::string Receive(std::size_t most);
    /// False when the client has hung up.
    bool Send(std::string_view bytes);
    /// One more message of TLS 1.3 that carries no data. False when the client has hung up.
    bool SendTicket();
    bool SendKeyUpdate();
    /// The same that wants one in return.
    bool AskForKeyUpdate();
    /// Sealed by this link's own RecordSealer, made for the first.
    bool SendRecord(const TlsRecord& record);
    void AwaitDelivery();
    /// Waits for this long or until the client has hung up; returns whether it has.
    bool HangsUpWithin(int milliseconds);

    void Close();
    void Drop();
    void Reset();
    bool is_open() const { return socket_ >= 0; }

private:
    /// The result of an OpenSSL call, repeated until it no longer waits for the socket.
    template <class Call>
    int Driven(Call call);
    bool AwaitSocket(short events, int milliseconds = -1);
    bool SendPlain(std::string_view bytes);

    struct FreeTls {
        void operator()(SSL* tls) const { SSL_free(tls); }
    };
    int socket_;
    int stop_;
    std::unique_ptr<SSL, FreeTls> tls_;
    std::optional<RecordSealer> sealer_;
};

}  // namespace support
