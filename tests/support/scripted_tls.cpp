#include "support/scripted_tls.h"

#include <openssl/pem.h>
#include <sys/socket.h>

#include <cstdio>
#include <stdexcept>

#include "simhost/certificate.h"

namespace support {

namespace {

using simhost::CertificateKind;
using simhost::KeyType;

void Require(bool done, const std::string& what) {
    if (!done) {
        throw std::runtime_error("cannot make " + what);
    }
}

void WritePem(X509* certificate, const std::string& file_name) {
    std::FILE* file = std::fopen(file_name.c_str(), "w");
    Require(file != nullptr, file_name);
    const bool written = PEM_write_X509(file, certificate) == 1;
    Require(std::fclose(file) == 0 && written, file_name);
}

/// With TLS 1.2 alone: a client cannot choose the group then.
void UseGroup(SSL_CTX* context, const char* name) {
    const std::unique_ptr<EVP_PKEY_CTX, decltype(&EVP_PKEY_CTX_free)> maker(
        EVP_PKEY_CTX_new_from_name(nullptr, "DH", nullptr), EVP_PKEY_CTX_free);
    EVP_PKEY* group = nullptr;
    Require(EVP_PKEY_paramgen_init(maker.get()) == 1 &&
                EVP_PKEY_CTX_set_group_name(maker.get(), name) == 1 &&
                EVP_PKEY_paramgen(maker.get(), &group) == 1 &&
                SSL_CTX_set0_tmp_dh_pkey(context, group) == 1 &&
                SSL_CTX_set_max_proto_version(context, TLS1_2_VERSION) == 1 &&
                SSL_CTX_set_cipher_list(context, "DHE:@SECLEVEL=0") == 1,
            name);
}

int HangUpOnSessions(SSL* tls, int* /*alert*/, void* /*argument*/) {
    const unsigned char* session = nullptr;
    std::size_t size = 0;
    if (SSL_client_hello_get0_ext(tls, TLSEXT_TYPE_psk, &session, &size) == 0) {
        return SSL_CLIENT_HELLO_SUCCESS;
    }
    shutdown(SSL_get_fd(tls), SHUT_RDWR);
    return SSL_CLIENT_HELLO_ERROR;
}

}  // namespace

TlsServerContext::TlsServerContext(const TlsOptions& options)
    : context_(SSL_CTX_new(TLS_server_method())) {
    SSL_CTX* context = context_.get();
    SSL_CTX_set_security_level(context, 0);
    SSL_CTX_set_min_proto_version(context, options.oldest_version);
    SSL_CTX_set_max_proto_version(context, options.newest_version);
    SSL_CTX_set_cipher_list(context, "ALL:@SECLEVEL=0");
    constexpr unsigned char kSessions[] = "scripted";
    SSL_CTX_set_session_id_context(context, kSessions, sizeof kSessions - 1);

    const auto key = simhost::MakeKey(options.weak_key ? KeyType::kRsa1024 : KeyType::kEcdsaP256);
    const auto certificate = simhost::MakeCertificate(
        *key, options.weak_key ? CertificateKind::kSha1 : CertificateKind::kWrongName, "",
        "127.0.0.1");
    Require(SSL_CTX_use_certificate(context, certificate.get()) == 1 &&
                SSL_CTX_use_PrivateKey(context, key.get()) == 1,
            "a TLS context");
    if (options.group != nullptr) {
        UseGroup(context, options.group);
    }
    if (options.hangs_up_on_sessions) {
        SSL_CTX_set_client_hello_cb(context, HangUpOnSessions, nullptr);
    }
    if (!options.certificate_file.empty()) {
        WritePem(certificate.get(), options.certificate_file);
    }
}

TlsSeen SeenBy(SSL* tls) {
    const char* name = SSL_get_servername(tls, TLSEXT_NAMETYPE_host_name);
    return {SSL_get_version(tls), name != nullptr ? name : "", SSL_session_reused(tls) == 1};
}

}  // namespace support
