#pragma once

#include <Pegasus/Common/CIMDateTime.h>

namespace Pegasus {

class SSLCertificateInfo {
public:
    String getSubjectName() const;
    String getIssuerName() const;
    String getErrorString() const;
    String toString() const;
    CIMDateTime getNotBefore() const;
    CIMDateTime getNotAfter() const;
    Uint32 getVersionNumber() const;
    Uint32 getErrorDepth() const;
    Uint32 getErrorCode() const;
    Uint32 getResponseCode() const;
    long getSerialNumber() const;
    void setErrorCode(const int);
};

typedef Boolean(SSLCertificateVerifyFunction)(SSLCertificateInfo& certInfo);

class SSLContext {
public:
    SSLContext(const String& trustStore, SSLCertificateVerifyFunction* verifyCert,
               const String& randomFile = String::EMPTY);
    SSLContext(const SSLContext& sslContext);
    ~SSLContext();
    SSLContext(const String& trustStore, const String& certPath, const String& keyPath,
               SSLCertificateVerifyFunction* verifyCert, const String& randomFile);
    SSLContext(const String& trustStore, const String& certPath, const String& keyPath,
               const String& crlPath, SSLCertificateVerifyFunction* verifyCert,
               const String& randomFile);
    String getTrustStore() const;
    String getCertPath() const;
    String getKeyPath() const;
    String getCRLPath() const;
    Boolean isPeerVerificationEnabled() const;
    SSLCertificateVerifyFunction* getSSLCertificateVerifyFunction() const;

private:
    SSLContext();
    SSLContext& operator=(const SSLContext&);
};

}  // namespace Pegasus
