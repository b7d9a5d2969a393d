// How a TLS connection is made.
#pragma once

#include <cstddef>

#include "Pegasus/Common/Exception.h"

PEGASUS_NAMESPACE_BEGIN

/// Every certificate is accepted. There is no callback to judge it, and the random file is not
/// used.
class SSLContext {
public:
    /// Throws SSLException for a trust store, which this client would not keep to.
    SSLContext(const String& trustStore, std::nullptr_t, const String& = String::EMPTY) {
        if (!trustStore.utf8().empty()) {
            throw SSLException("There are no trust stores.");
        }
    }
    SSLContext(const SSLContext& sslContext) = default;
    SSLContext& operator=(const SSLContext& sslContext) = delete;
};

PEGASUS_NAMESPACE_END
