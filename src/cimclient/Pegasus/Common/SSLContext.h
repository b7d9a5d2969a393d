// How a TLS connection is made and its server's certificate judged.
#pragma once

#include "Pegasus/Common/CIMDateTime.h"
#include "Pegasus/Common/String.h"

PEGASUS_NAMESPACE_BEGIN

/// One certificate, as a verification callback sees it.
class SSLCertificateInfo {
public:
    struct Fields {
        String subject_name;
        String issuer_name;
        String error_string;
        CIMDateTime not_before;
        CIMDateTime not_after;
        Uint32 version_number = 0;
        long serial_number = 0;
        Uint32 error_depth = 0;
        Uint32 error_code = 0;
        Uint32 response_code = 0;
    };
    explicit SSLCertificateInfo(const Fields& fields) : fields_(fields) {}

    String getSubjectName() const { return fields_.subject_name; }
    String getIssuerName() const { return fields_.issuer_name; }
    String getErrorString() const { return fields_.error_string; }
    CIMDateTime getNotBefore() const { return fields_.not_before; }
    CIMDateTime getNotAfter() const { return fields_.not_after; }
    Uint32 getVersionNumber() const { return fields_.version_number; }
    long getSerialNumber() const { return fields_.serial_number; }
    Uint32 getErrorDepth() const { return fields_.error_depth; }
    Uint32 getErrorCode() const { return fields_.error_code; }
    Uint32 getResponseCode() const { return fields_.response_code; }
    void setErrorCode(const int errorCode) { fields_.error_code = static_cast<Uint32>(errorCode); }
    String toString() const;

private:
    Fields fields_;
};

typedef Boolean(SSLCertificateVerifyFunction)(SSLCertificateInfo& certInfo);

/// With an empty trust store and no callback every certificate is accepted. The random file is not
/// used.
class SSLContext {
public:
    SSLContext(const String& trustStore, SSLCertificateVerifyFunction* verifyCert,
               const String& randomFile = String::EMPTY);
    SSLContext(const String& trustStore, const String& certPath, const String& keyPath,
               SSLCertificateVerifyFunction* verifyCert, const String& randomFile);
    SSLContext(const String& trustStore, const String& certPath, const String& keyPath,
               const String& crlPath, SSLCertificateVerifyFunction* verifyCert,
               const String& randomFile);
    SSLContext(const SSLContext& sslContext) = default;
    SSLContext& operator=(const SSLContext& sslContext) = delete;

    String getTrustStore() const { return trust_store_; }
    String getCertPath() const { return cert_path_; }
    String getKeyPath() const { return key_path_; }
    String getCRLPath() const { return crl_path_; }
    Boolean isPeerVerificationEnabled() const;
    SSLCertificateVerifyFunction* getSSLCertificateVerifyFunction() const { return verify_; }

private:
    String trust_store_;
    String cert_path_;
    String key_path_;
    String crl_path_;
    SSLCertificateVerifyFunction* verify_;
};

PEGASUS_NAMESPACE_END
