// Whom to talk to.
#pragma once

#include <string>
#include <vector>

#include "net/fingerprint.h"

namespace cimclient {

/// With neither member any host is trusted. With either nothing else than a TLS handshake is sent
/// to a host whose certificate does not fit; with both it must fit both.
struct Trust {
    /// CA certificates in PEM: the certificate must come from one of them and name the host.
    std::string ca_file;
    std::vector<Fingerprint> fingerprints;  ///< the certificate must have one of them
};

/// Why the CA file cannot be used, in words; empty when it can, or none is named.
std::string ProblemOf(const Trust& trust);

}  // namespace cimclient
