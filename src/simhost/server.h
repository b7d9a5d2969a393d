// A simulated host on the network.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "simhost/fault.h"
#include "simhost/host_description.h"

namespace simhost {

enum class Transport { kHttp, kHttps };
enum class TlsVersion { kTls1_0, kTls1_1, kTls1_2, kTls1_3 };
enum class KeyType { kEcdsaP256, kRsa1024, kRsa2048 };
enum class CertificateKind { kSelfSigned, kSha1, kExpired, kWrongName };

struct ServerOptions {
    Transport transport = Transport::kHttps;
    std::string address = "127.0.0.1";  ///< a numeric address of this machine
    std::uint16_t port = 0;             ///< 0: any free one

    std::string user;  ///< empty: no authentication
    std::string password;
    std::string challenge = "Basic realm=\"cimom\"";  ///< empty: a 401 without WWW-Authenticate

    /// Sends small segments at once (TCP_NODELAY). Otherwise Nagle's algorithm keeps one back until
    /// the client has acknowledged all that went before it.
    bool no_delay = true;
    /// Closes a connection after so long without a request; zero: never.
    std::chrono::milliseconds idle_limit{0};
    /// Closes a connection after so many requests; 0: never.
    std::size_t requests_per_connection = 0;
    /// Says so with `Connection: close` in the last answer.
    bool announce_close = true;
    /// The delay of a link: waits so long before it takes up a connection or a TLS handshake, and
    /// sends an answer so long after the request, in which time it is made.
    std::chrono::milliseconds round_trip_delay{0};
    /// Splits chunked answers into chunks of this size; 0: one chunk.
    std::size_t chunk_size = 0;

    TlsVersion min_tls = TlsVersion::kTls1_0;
    TlsVersion max_tls = TlsVersion::kTls1_3;
    KeyType key_type = KeyType::kEcdsaP256;
    CertificateKind certificate = CertificateKind::kSelfSigned;
};

/// What has arrived since the server started.
struct Counters {
    std::size_t connections = 0;
    std::size_t tls_handshakes = 0;  ///< completed ones, resumptions included
    std::size_t tls_resumptions = 0;
    std::size_t requests = 0;    ///< all, challenged ones included
    std::size_t challenges = 0;  ///< requests answered 401 for lack of credentials
};

/// One request as it arrived. The fields from its body are empty when that could not be read.
struct Request {
    std::string operation;
    std::string name_space;
    std::string class_name;         ///< the enumerated class, or the source object's
    std::string source_path;        ///< Associators: "Class.Key=\"value\""
    std::string association_class;  ///< Associators: the filters, empty when there are none
    std::string result_class;
    bool authorised = false;
    std::size_t connection = 0;  ///< 1 is the first connection to this server
    std::string head;            ///< request line and headers, as received
    std::string body;
};

/// Serves one host from construction to destruction, on its own threads. All members may be called
/// from any thread.
class Server {
public:
    /// Listens when it returns. Throws std::system_error with a clear text when it cannot.
    Server(HostDescription host, ServerOptions options);
    /// Ends all connections at once, stalled ones too.
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    std::uint16_t port() const;
    /// Such as "https://127.0.0.1:41234".
    std::string Url() const;

    /// Includes every connection that a client has completed before the call.
    Counters counters() const;
    std::vector<Request> requests() const;
    void ForgetRequests();

    /// From the next request on. Several may be set: the first that fits a request applies.
    void InjectFault(Fault fault);
    void ClearFaults();

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace simhost
