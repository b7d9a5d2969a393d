// Whether the host is the one that the caller trusts.
#pragma once

#include <openssl/ssl.h>

#include <boost/system/error_code.hpp>
#include <string>
#include <vector>

#include "net/fingerprint.h"

namespace cimclient {

/// Before the handshake: names the host to the server (SNI, for names only), and has its
/// certificate tested for that name or address.
void ExpectHost(SSL* ssl, const std::string& host, bool tests_host_name);

/// After it: throws NetworkError when it failed, or when fingerprints are given and the host's
/// certificate has none of them.
void CheckHandshake(SSL* ssl, const boost::system::error_code& error,
                    const std::vector<Fingerprint>& fingerprints);

}  // namespace cimclient
