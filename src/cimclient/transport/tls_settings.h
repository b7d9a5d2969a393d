// The TLS side of a connection: an OpenSSL context of the client's own, never the process's
// settings.
#pragma once

#include <memory>
#include <string>

#include "Pegasus/Common/SSLContext.h"

namespace cimclient {

/// Made from an SSLContext; lives as long as its connections and carries the last session from one
/// to the next, so that reconnecting resumes it.
class TlsSettings {
public:
    explicit TlsSettings(const Pegasus::SSLContext& context);
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
