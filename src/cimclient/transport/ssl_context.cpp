#include "Pegasus/Common/SSLContext.h"
#include "transport/tls_settings.h"

namespace Pegasus::kalvex {

SSLContext::SSLContext(const String& trustStore, std::nullptr_t, const String&)
    : trust_store_(trustStore) {
    cimclient::CheckTrustStore(std::string(trustStore.utf8()));
}

}  // namespace Pegasus::kalvex
