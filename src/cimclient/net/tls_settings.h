// The TLS side of a connection: an OpenSSL context of the client's own, never the process's
// settings.
#pragma once

#include <openssl/ssl.h>

#include <boost/asio/ssl/context.hpp>
#include <memory>

#include "net/trust.h"

namespace cimclient {

struct SessionDeleter {
    void operator()(SSL_SESSION* session) const { SSL_SESSION_free(session); }
};

/// Lives as long as its channels and carries the last session from one to the next, so that
/// reconnecting resumes it.
struct TlsSettings {
    /// A CA file that cannot be used trusts nobody.
    explicit TlsSettings(const Trust& trust);

    std::shared_ptr<boost::asio::ssl::context> context;
    std::unique_ptr<SSL_SESSION, SessionDeleter> session;
    bool tests_host_name;
    std::vector<Fingerprint> fingerprints;
};

}  // namespace cimclient
