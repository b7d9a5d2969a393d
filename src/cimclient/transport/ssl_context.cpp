#include "Pegasus/Common/SSLContext.h"
#include "transport/tls_settings.h"

namespace Pegasus::kalvex {

String SSLCertificateInfo::toString() const {
    const std::string text = "Subject Name: " + std::string(fields_.subject_name.utf8()) +
                             "\nIssuer Name: " + std::string(fields_.issuer_name.utf8()) +
                             "\nError: " + std::string(fields_.error_string.utf8()) + "\n";
    return String::FromUtf8(text);
}

SSLContext::SSLContext(const String& trustStore, SSLCertificateVerifyFunction* verifyCert,
                       const String& randomFile)
    : SSLContext(trustStore, String(), String(), verifyCert, randomFile) {}

SSLContext::SSLContext(const String& trustStore, const String& certPath, const String& keyPath,
                       SSLCertificateVerifyFunction* verifyCert, const String& randomFile)
    : SSLContext(trustStore, certPath, keyPath, String(), verifyCert, randomFile) {}

SSLContext::SSLContext(const String& trustStore, const String& certPath, const String& keyPath,
                       const String& crlPath, SSLCertificateVerifyFunction* verifyCert,
                       const String&)
    : trust_store_(trustStore),
      cert_path_(certPath),
      key_path_(keyPath),
      crl_path_(crlPath),
      verify_(verifyCert) {
    cimclient::CheckTrustStore(std::string(trustStore.utf8()));
}

Boolean SSLContext::isPeerVerificationEnabled() const {
    return !trust_store_.utf8().empty() || verify_ != nullptr;
}

}  // namespace Pegasus::kalvex
