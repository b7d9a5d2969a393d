#include "simhost/tls_context.h"

#include <openssl/ssl.h>

#include <system_error>

#include "simhost/certificate.h"

namespace simhost {

namespace {

int ProtocolVersion(TlsVersion version) {
    switch (version) {
        case TlsVersion::kTls1_0:
            return TLS1_VERSION;
        case TlsVersion::kTls1_1:
            return TLS1_1_VERSION;
        case TlsVersion::kTls1_2:
            return TLS1_2_VERSION;
        case TlsVersion::kTls1_3:
            break;
    }
    return TLS1_3_VERSION;
}

void Require(bool success, const char* what) {
    if (!success) {
        throw std::system_error(std::make_error_code(std::errc::invalid_argument), what);
    }
}

}  // namespace

TlsContext::TlsContext(const ServerOptions& options, const std::string& host_name)
    : context_(boost::asio::ssl::context::tls_server) {
    SSL_CTX* context = context_.native_handle();
    SSL_CTX_set_security_level(context, 0);
    SSL_CTX_clear_options(
        context, SSL_OP_NO_TLSv1 | SSL_OP_NO_TLSv1_1 | SSL_OP_NO_TLSv1_2 | SSL_OP_NO_TLSv1_3);
    Require(SSL_CTX_set_cipher_list(context, "ALL:!aNULL:!eNULL:@SECLEVEL=0") == 1 &&
                SSL_CTX_set_min_proto_version(context, ProtocolVersion(options.min_tls)) == 1 &&
                SSL_CTX_set_max_proto_version(context, ProtocolVersion(options.max_tls)) == 1,
            "cannot set the simulated host's TLS versions");
    const KeyPointer key = MakeKey(options.key_type);
    const CertificatePointer certificate =
        MakeCertificate(*key, options.certificate, host_name, options.address);
    Require(SSL_CTX_use_certificate(context, certificate.get()) == 1 &&
                SSL_CTX_use_PrivateKey(context, key.get()) == 1,
            "cannot use the simulated host's certificate");
    SSL_CTX_set_session_id_context(context, reinterpret_cast<const unsigned char*>("simhost"), 7);
}

}  // namespace simhost
