// A simulated host's certificate and TLS settings.
#pragma once

#include <boost/asio/ssl/context.hpp>
#include <string>

#include "simhost/server.h"

namespace simhost {

/// A key and a self-signed certificate of their own, made in memory. Weak versions and keys are
/// allowed, since old hosts have them.
class TlsContext {
public:
    /// Throws std::system_error when OpenSSL refuses the options.
    TlsContext(const ServerOptions& options, const std::string& host_name);

    boost::asio::ssl::context& asio() { return context_; }

private:
    boost::asio::ssl::context context_;
};

}  // namespace simhost
