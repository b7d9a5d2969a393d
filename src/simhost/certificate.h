// Keys and self-signed certificates, made in memory.
#pragma once

#include <openssl/evp.h>
#include <openssl/x509.h>

#include <memory>
#include <string>

#include "simhost/server.h"

namespace simhost {

struct OpensslDeleter {
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
    void operator()(X509* certificate) const { X509_free(certificate); }
};
using KeyPointer = std::unique_ptr<EVP_PKEY, OpensslDeleter>;
using CertificatePointer = std::unique_ptr<X509, OpensslDeleter>;

/// Both throw std::system_error when OpenSSL fails.
KeyPointer MakeKey(KeyType type);
/// For a host of this name that is reached at this address, but for the kind's one fault.
CertificatePointer MakeCertificate(EVP_PKEY& key, CertificateKind kind, const std::string& name,
                                   const std::string& address);

}  // namespace simhost
