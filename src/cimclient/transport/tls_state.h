// What TlsSettings holds, for the transport's own files.
#pragma once

#include <openssl/ssl.h>

#include <boost/asio/ssl/context.hpp>
#include <memory>

#include "transport/tls_settings.h"

namespace cimclient {

struct SessionDeleter {
    void operator()(SSL_SESSION* session) const { SSL_SESSION_free(session); }
};

struct TlsSettings::State {
    std::shared_ptr<boost::asio::ssl::context> context;
    std::unique_ptr<SSL_SESSION, SessionDeleter> session;
    bool tests_host_name = false;
    std::vector<Fingerprint> fingerprints;
};

}  // namespace cimclient
