// The TLS side of a connection: an OpenSSL context of the client's own, never the process's
// settings.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Pegasus/Common/SSLContext.h"
#include "transport/fingerprint.h"

namespace cimclient {

/// Whom to talk to. With either member nothing else than a TLS handshake is sent to a host whose
/// certificate does not fit; with both it must fit both.
struct Trust {
    /// CA certificates in PEM: the certificate must come from one of them and name the host.
    std::string ca_file;
    std::vector<Fingerprint> fingerprints;  ///< the certificate must have one of them
};

/// Why the CA file cannot be used, in words; empty when it can, or none is named.
std::string ProblemOf(const Trust& trust);

/// Made from an SSLContext, or from Trust in its place where that is not empty; lives as long as
/// its connections and carries the last session from one to the next, so that reconnecting resumes
/// it.
class TlsSettings {
public:
    /// A CA file that cannot be used trusts nobody.
    TlsSettings(const Pegasus::SSLContext& context, const Trust& trust);
    ~TlsSettings();
    TlsSettings(const TlsSettings&) = delete;
    TlsSettings& operator=(const TlsSettings&) = delete;

    struct State;
    State& state() { return *state_; }

private:
    std::unique_ptr<State> state_;
};

/// Throws SSLException when the file or folder is there but holds something else than certificates.
void CheckTrustStore(const std::string& path);

}  // namespace cimclient
