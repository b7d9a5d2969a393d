#include "net/tls_settings.h"

#include <string>

namespace cimclient {

namespace {

namespace ssl = boost::asio::ssl;

/// Old hosts know nothing newer than TLS 1.0 with weak keys. Their certificate is not tested by
/// default, so refusing them would protect nobody.
void AcceptOldHosts(SSL_CTX* context) {
    SSL_CTX_set_min_proto_version(context, TLS1_VERSION);
    SSL_CTX_set_max_proto_version(context, 0);
    SSL_CTX_set_security_level(context, 0);
    SSL_CTX_set_cipher_list(context, "ALL:!aNULL:!eNULL:@SECLEVEL=0");
    SSL_CTX_set_options(context, SSL_OP_LEGACY_SERVER_CONNECT | SSL_OP_IGNORE_UNEXPECTED_EOF);
}

/// The host chooses the group of a Diffie-Hellman key exchange. The largest would take a second of
/// computing, in which no limit is kept and nothing can be cancelled.
constexpr int kMostGroupBits = 4096;

using SecurityTest = int (*)(const SSL*, const SSL_CTX*, int, int, int, void*, void*);

SecurityTest UsualTest(const SSL_CTX* untouched) {
    static const SecurityTest test = SSL_CTX_get_security_callback(untouched);
    return test;
}

int TestGroupToo(const SSL* ssl, const SSL_CTX* context, int operation, int bits, int id,
                 void* other, void* extra) {
    if (operation == SSL_SECOP_TMP_DH && other != nullptr &&
        EVP_PKEY_bits(static_cast<EVP_PKEY*>(other)) > kMostGroupBits) {
        return 0;
    }
    return UsualTest(context)(ssl, context, operation, bits, id, other, extra);
}

void RefuseHugeGroups(SSL_CTX* context) {
    UsualTest(context);
    SSL_CTX_set_security_callback(context, TestGroupToo);
}

std::shared_ptr<ssl::context> NewContext(ssl::verify_mode mode) {
    auto context = std::make_shared<ssl::context>(ssl::context::tls_client);
    AcceptOldHosts(context->native_handle());
    RefuseHugeGroups(context->native_handle());
    context->set_verify_mode(mode);
    return context;
}

/// Making a context takes OpenSSL nearly as long as a handshake, and those that test no certificate
/// are all alike: the clients of a process share one. It is never destroyed, so that clients in
/// static objects find it to the end.
std::shared_ptr<ssl::context> UntestingContext() {
    static const auto& shared = *new std::shared_ptr<ssl::context>(NewContext(ssl::verify_none));
    return shared;
}

/// Certificates that are worth testing are not weaker than 80 bits, and TLS 1.2 comes with that.
std::shared_ptr<ssl::context> ContextTrusting(const std::string& ca_file) {
    auto context = NewContext(ssl::verify_peer);
    SSL_CTX_set_security_level(context->native_handle(), 1);
    SSL_CTX_set_cipher_list(context->native_handle(), "DEFAULT:@SECLEVEL=1");
    boost::system::error_code ignored;
    context->load_verify_file(ca_file, ignored);
    return context;
}

}  // namespace

TlsSettings::TlsSettings(const Trust& trust)
    : context(trust.ca_file.empty() ? UntestingContext() : ContextTrusting(trust.ca_file)),
      tests_host_name(!trust.ca_file.empty()),
      fingerprints(trust.fingerprints) {}

std::string ProblemOf(const Trust& trust) {
    boost::system::error_code error;
    if (!trust.ca_file.empty()) {
        ssl::context scratch(ssl::context::tls_client);
        scratch.load_verify_file(trust.ca_file, error);
    }
    return error ? "The CA file \"" + trust.ca_file + "\" cannot be used: " + error.message() + "."
                 : std::string();
}

}  // namespace cimclient
