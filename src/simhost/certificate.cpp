#include "simhost/certificate.h"

#include <openssl/rand.h>
#include <openssl/rsa.h>
#include <openssl/x509v3.h>

#include <cstdint>
#include <system_error>

namespace simhost {

namespace {

constexpr long kDay = 24L * 60 * 60;

void Require(bool success, const char* what) {
    if (!success) {
        throw std::system_error(std::make_error_code(std::errc::operation_not_permitted), what);
    }
}

/// The longest common name that certificates allow.
constexpr std::size_t kMaxName = 64;

void SetName(X509& certificate, const std::string& name) {
    X509_NAME* subject = X509_get_subject_name(&certificate);
    const auto* bytes = reinterpret_cast<const unsigned char*>(name.data());
    Require(X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_UTF8, bytes,
                                       static_cast<int>(name.size()), -1, 0) == 1 &&
                X509_set_issuer_name(&certificate, subject) == 1,
            "cannot name the simulated host's certificate");
}

void SetValidity(X509& certificate, bool expired) {
    X509_gmtime_adj(X509_getm_notBefore(&certificate), expired ? -30 * kDay : -kDay);
    X509_gmtime_adj(X509_getm_notAfter(&certificate), expired ? -kDay : 365 * kDay);
}

void SetSerialNumber(X509& certificate) {
    std::uint32_t number = 0;
    RAND_bytes(reinterpret_cast<unsigned char*>(&number), sizeof number);
    ASN1_INTEGER_set_uint64(X509_get_serialNumber(&certificate), number);
}

void AddAlternativeName(X509& certificate, const std::string& value) {
    X509_EXTENSION* extension =
        X509V3_EXT_conf_nid(nullptr, nullptr, NID_subject_alt_name, value.c_str());
    Require(extension != nullptr, "cannot write the simulated host's alternative name");
    X509_add_ext(&certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

}  // namespace

KeyPointer MakeKey(KeyType type) {
    KeyPointer key;
    switch (type) {
        case KeyType::kEcdsaP256:
            key.reset(EVP_EC_gen("P-256"));
            break;
        case KeyType::kRsa1024:
            key.reset(EVP_RSA_gen(1024));
            break;
        case KeyType::kRsa2048:
            key.reset(EVP_RSA_gen(2048));
            break;
    }
    Require(key != nullptr, "cannot make the simulated host's key");
    return key;
}

CertificatePointer MakeCertificate(EVP_PKEY& key, CertificateKind kind, const std::string& name,
                                   const std::string& address) {
    CertificatePointer certificate(X509_new());
    Require(certificate != nullptr, "cannot make the simulated host's certificate");
    X509_set_version(certificate.get(), X509_VERSION_3);
    SetSerialNumber(*certificate);
    SetValidity(*certificate, kind == CertificateKind::kExpired);
    if (kind == CertificateKind::kWrongName) {
        SetName(*certificate, "elsewhere.invalid");
        AddAlternativeName(*certificate, "DNS:elsewhere.invalid");
    } else {
        SetName(*certificate, name.empty() || name.size() > kMaxName ? "simulated host" : name);
        AddAlternativeName(*certificate, "IP:" + address);
    }
    X509_set_pubkey(certificate.get(), &key);
    const EVP_MD* digest = kind == CertificateKind::kSha1 ? EVP_sha1() : EVP_sha256();
    Require(X509_sign(certificate.get(), &key, digest) != 0,
            "cannot sign the simulated host's certificate");
    return certificate;
}

}  // namespace simhost
