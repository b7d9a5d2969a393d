// Hosts of every age are read over TLS, and the application's own use of TLS stays as strict as it
// was.
#include <openssl/err.h>
#include <openssl/provider.h>
#include <openssl/ssl.h>

#include <memory>
#include <tuple>

#include "support/inventory_test.h"

namespace {

using simhost::CertificateKind;
using simhost::KeyType;
using simhost::TlsVersion;

class TlsHost : public support::InventoryTest {
protected:
    void ServeOverTls(TlsVersion version, KeyType key, CertificateKind certificate) {
        support::HostBuilder host;
        host.Class("root/cimv2", "OMC_Chassis", R"({"Tag": "string", "Manufacturer": "string"})",
                   R"([{"Tag": "1", "Manufacturer": "Contoso"}])");
        host.Class(support::kHardwareNamespace, "IBM_ComputerSystem", R"({"Name": "string"})");
        simhost::ServerOptions options;
        options.min_tls = options.max_tls = version;
        options.key_type = key;
        options.certificate = certificate;
        Serve(host.Build(), options);
    }

    /// The manufacturer of the chassis, read by an object that lives no longer.
    std::string ReadManufacturer() const {
        Zentar::ZentarAgentless::ComputerSystem system;
        return Zentar::Agentless::Kalvex(info).GetComputerSystem(system) == 0 ? system.manufacturer_
                                                                              : "not read";
    }
};

class AnyTlsHost
    : public TlsHost,
      public ::testing::WithParamInterface<std::tuple<TlsVersion, KeyType, CertificateKind>> {};

TEST_P(AnyTlsHost, IsRead) {
    const auto [version, key, certificate] = GetParam();
    ServeOverTls(version, key, certificate);
    EXPECT_EQ(ReadManufacturer(), "Contoso");
    EXPECT_EQ(Server().counters().tls_handshakes, 2U);
}

std::string NameOf(const ::testing::TestParamInfo<AnyTlsHost::ParamType>& test) {
    static const char* const kVersions[] = {"Tls10", "Tls11", "Tls12", "Tls13"};
    static const char* const kKeys[] = {"EcdsaP256", "Rsa1024", "Rsa2048"};
    static const char* const kCertificates[] = {"SelfSigned", "Sha1", "Expired", "WrongName"};
    const auto [version, key, certificate] = test.param;
    return std::string(kVersions[static_cast<int>(version)]) + kKeys[static_cast<int>(key)] +
           kCertificates[static_cast<int>(certificate)];
}

INSTANTIATE_TEST_SUITE_P(
    With, AnyTlsHost,
    ::testing::Combine(::testing::Values(TlsVersion::kTls1_0, TlsVersion::kTls1_1,
                                         TlsVersion::kTls1_2, TlsVersion::kTls1_3),
                       ::testing::Values(KeyType::kEcdsaP256, KeyType::kRsa1024, KeyType::kRsa2048),
                       ::testing::Values(CertificateKind::kSelfSigned, CertificateKind::kSha1,
                                         CertificateKind::kExpired, CertificateKind::kWrongName)),
    NameOf);

struct FreeContext {
    void operator()(SSL_CTX* context) const { SSL_CTX_free(context); }
};
using Context = std::unique_ptr<SSL_CTX, FreeContext>;

/// For applications that know their self-signed certificates by other means.
int AcceptSelfSigned(int is_valid, X509_STORE_CTX* at) {
    return X509_STORE_CTX_get_error(at) == X509_V_ERR_DEPTH_ZERO_SELF_SIGNED_CERT ? 1 : is_valid;
}

/// As an application makes one that means to be safe.
Context StrictContext(SSL_verify_cb verify = nullptr) {
    Context context(SSL_CTX_new(TLS_client_method()));
    SSL_CTX_set_security_level(context.get(), 2);
    SSL_CTX_set_min_proto_version(context.get(), TLS1_2_VERSION);
    SSL_CTX_set_verify(context.get(), SSL_VERIFY_PEER, verify);
    return context;
}

/// "connected", or why not.
std::string HandshakeOutcome(SSL_CTX& context, std::uint16_t port) {
    ERR_clear_error();
    const std::unique_ptr<BIO, decltype(&BIO_free_all)> link(BIO_new_ssl_connect(&context),
                                                             BIO_free_all);
    BIO_set_conn_hostname(link.get(), ("127.0.0.1:" + std::to_string(port)).c_str());
    if (BIO_do_handshake(link.get()) == 1) {
        return "connected";
    }
    SSL* tls = nullptr;
    BIO_get_ssl(link.get(), &tls);
    const long verdict = SSL_get_verify_result(tls);
    const char* const reason = ERR_reason_error_string(ERR_peek_last_error());
    ERR_clear_error();
    return verdict != X509_V_OK ? X509_verify_cert_error_string(verdict) : reason;
}

struct WeakHost {
    TlsVersion version;
    KeyType key;
    CertificateKind certificate;
    SSL_verify_cb verify;
    const char* refusal;
};

const WeakHost kWeakHosts[] = {
    {TlsVersion::kTls1_0, KeyType::kRsa2048, CertificateKind::kSelfSigned, AcceptSelfSigned,
     "tlsv1 alert protocol version"},
    {TlsVersion::kTls1_1, KeyType::kEcdsaP256, CertificateKind::kSelfSigned, AcceptSelfSigned,
     "tlsv1 alert protocol version"},
    {TlsVersion::kTls1_2, KeyType::kRsa1024, CertificateKind::kSelfSigned, AcceptSelfSigned,
     "EE certificate key too weak"},
    {TlsVersion::kTls1_2, KeyType::kRsa2048, CertificateKind::kSha1, nullptr,
     "self-signed certificate"},
    {TlsVersion::kTls1_3, KeyType::kEcdsaP256, CertificateKind::kExpired, AcceptSelfSigned,
     "certificate has expired"},
};

class StrictApplication : public TlsHost {};

TEST_F(StrictApplication, StillRefusesTheWeakHostsThatTheModuleReads) {
    for (const WeakHost& host : kWeakHosts) {
        const Context before = StrictContext(host.verify);
        ServeOverTls(host.version, host.key, host.certificate);
        EXPECT_EQ(HandshakeOutcome(*before, info.port), host.refusal);
        EXPECT_EQ(ReadManufacturer(), "Contoso");
        EXPECT_EQ(HandshakeOutcome(*before, info.port), host.refusal);
        EXPECT_EQ(HandshakeOutcome(*StrictContext(host.verify), info.port), host.refusal);
        const Zentar::Agentless::Kalvex living(info);
        EXPECT_EQ(HandshakeOutcome(*before, info.port), host.refusal);
        EXPECT_EQ(HandshakeOutcome(*StrictContext(host.verify), info.port), host.refusal);
    }
}

TEST_F(StrictApplication, StillConnectsToWhatItAccepts) {
    ServeOverTls(TlsVersion::kTls1_2, KeyType::kRsa2048, CertificateKind::kSelfSigned);
    EXPECT_EQ(ReadManufacturer(), "Contoso");
    EXPECT_EQ(HandshakeOutcome(*StrictContext(AcceptSelfSigned), info.port), "connected");
}

/// What a context has without being told.
std::string Defaults() {
    const Context context(SSL_CTX_new(TLS_method()));
    std::string text = "level " + std::to_string(SSL_CTX_get_security_level(context.get())) +
                       ", options " + std::to_string(SSL_CTX_get_options(context.get())) +
                       ", versions " +
                       std::to_string(SSL_CTX_get_min_proto_version(context.get())) + " to " +
                       std::to_string(SSL_CTX_get_max_proto_version(context.get())) + ", verify " +
                       std::to_string(SSL_CTX_get_verify_mode(context.get())) + ", ciphers";
    const STACK_OF(SSL_CIPHER)* const ciphers = SSL_CTX_get_ciphers(context.get());
    for (int i = 0; i < sk_SSL_CIPHER_num(ciphers); ++i) {
        text += std::string(" ") + SSL_CIPHER_get_name(sk_SSL_CIPHER_value(ciphers, i));
    }
    text += ", providers";
    OSSL_PROVIDER_do_all(
        nullptr,
        [](OSSL_PROVIDER* provider, void* names) {
            *static_cast<std::string*>(names) +=
                std::string(" ") + OSSL_PROVIDER_get0_name(provider);
            return 1;
        },
        &text);
    return text;
}

TEST_F(StrictApplication, KeepsOpenSslsDefaults) {
    const std::string before = Defaults();
    ServeOverTls(TlsVersion::kTls1_0, KeyType::kRsa1024, CertificateKind::kSha1);
    {
        const Zentar::Agentless::Kalvex living(info);
        EXPECT_EQ(Defaults(), before);
    }
    EXPECT_EQ(ReadManufacturer(), "Contoso");
    EXPECT_EQ(Defaults(), before);
}

TEST_F(StrictApplication, FindsNoErrorsThatAreNotItsOwn) {
    ERR_clear_error();
    ServeOverTls(TlsVersion::kTls1_2, KeyType::kRsa2048, CertificateKind::kSelfSigned);
    EXPECT_EQ(ReadManufacturer(), "Contoso");
    EXPECT_EQ(ERR_peek_error(), 0U);
    Server().InjectFault(simhost::Faults::RawOnConnect("SSH-2.0-OpenSSH_8.3\r\n"));
    EXPECT_EQ(ReadManufacturer(), "not read");
    EXPECT_EQ(ERR_peek_error(), 0U);
}

}  // namespace
