// How a TLS connection is made and its server's certificate judged.
#pragma once

#include <cstddef>

#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

/// With an empty trust store every certificate is accepted. There is no callback to judge it
/// instead, and the random file is not used.
class SSLContext {
public:
    /// Throws SSLException when the trust store is there but holds something else than
    /// certificates.
    SSLContext(const String& trustStore, std::nullptr_t verifyCert,
               const String& randomFile = String::EMPTY);
    SSLContext(const SSLContext& sslContext) = default;
    SSLContext& operator=(const SSLContext& sslContext) = delete;

    String getTrustStore() const { return trust_store_; }
    Boolean isPeerVerificationEnabled() const { return !trust_store_.utf8().empty(); }

private:
    String trust_store_;
};

PEGASUS_NAMESPACE_END
