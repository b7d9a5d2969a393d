#include <boost/system/system_error.hpp>

#include "simhost/host_test.h"

namespace simhost_test {

namespace {

using simhost::CertificateKind;
using simhost::KeyType;
using simhost::ServerOptions;
using simhost::TlsVersion;

class Tls : public HostTest {};

TEST_F(Tls, CarriesTheSameAnswers) {
    const Reply plain = Ask(EnumerateCards());
    Serve(ServerOptions());
    EXPECT_EQ(Ask(EnumerateCards()).raw, plain.raw);
    EXPECT_EQ(Server().counters().tls_handshakes, 1U);
}

TEST_F(Tls, HandshakesAreCountedAsSoonAsTheClientHasFinishedThem) {
    Serve(ServerOptions());
    for (std::size_t i = 1; i <= 10; ++i) {
        const RawClient client = Connect();
        EXPECT_EQ(Server().counters().tls_handshakes, i);
    }
    EXPECT_EQ(Server().counters().tls_resumptions, 0U);
}

TEST_F(Tls, HandshakesThatFailAreNotCounted) {
    Serve(ServerOptions());
    RawClient client = RawClient::WithoutTls(Server());
    client.Send("POST /cimom HTTP/1.1\r\n\r\n");
    client.ReceiveAll();
    EXPECT_EQ(Server().counters().connections, 1U);
    EXPECT_EQ(Server().counters().tls_handshakes, 0U);
}

struct Version {
    TlsVersion version;
    const char* name;
};

class TlsVersions : public Tls, public ::testing::WithParamInterface<Version> {};

TEST_P(TlsVersions, CanBeTheOnlyOne) {
    ServerOptions options;
    options.min_tls = options.max_tls = GetParam().version;
    Serve(options);
    RawClient client = Connect();
    EXPECT_EQ(client.TlsVersion(), GetParam().name);
    EXPECT_EQ(client.Ask(EnumerateCards()).status, 200);
}

const Version kVersions[] = {{TlsVersion::kTls1_0, "TLSv1"},
                             {TlsVersion::kTls1_1, "TLSv1.1"},
                             {TlsVersion::kTls1_2, "TLSv1.2"},
                             {TlsVersion::kTls1_3, "TLSv1.3"}};

INSTANTIATE_TEST_SUITE_P(Each, TlsVersions, ::testing::ValuesIn(kVersions), [](const auto& test) {
    return "Tls1_" + std::to_string(static_cast<int>(test.param.version));
});

TEST_F(Tls, TheBestVersionOfBothIsTaken) {
    Serve(ServerOptions());
    EXPECT_EQ(Connect().TlsVersion(), "TLSv1.3");
    ServerOptions options;
    options.max_tls = TlsVersion::kTls1_1;
    Serve(options);
    EXPECT_EQ(Connect().TlsVersion(), "TLSv1.1");
}

struct Certificate {
    const char* name;
    KeyType key;
    CertificateKind kind;
    const char* algorithm;  ///< of the signature
    int bits;
    bool expired;
    const char* common_name;
};

class Certificates : public Tls, public ::testing::WithParamInterface<Certificate> {};

TEST_P(Certificates, AreAsConfigured) {
    ServerOptions options;
    options.key_type = GetParam().key;
    options.certificate = GetParam().kind;
    Serve(options);
    const PeerCertificate certificate = Connect().Certificate();
    EXPECT_EQ(certificate.signature, GetParam().algorithm);
    EXPECT_EQ(certificate.key_bits, GetParam().bits);
    EXPECT_EQ(certificate.expired, GetParam().expired);
    EXPECT_EQ(certificate.common_name, GetParam().common_name);
}

const Certificate kCertificates[] = {
    {"Default", KeyType::kEcdsaP256, CertificateKind::kSelfSigned, "ecdsa-with-SHA256", 256, false,
     "esx01"},
    {"Rsa1024", KeyType::kRsa1024, CertificateKind::kSelfSigned, "RSA-SHA256", 1024, false,
     "esx01"},
    {"Rsa2048", KeyType::kRsa2048, CertificateKind::kSelfSigned, "RSA-SHA256", 2048, false,
     "esx01"},
    {"Sha1", KeyType::kEcdsaP256, CertificateKind::kSha1, "ecdsa-with-SHA1", 256, false, "esx01"},
    {"Expired", KeyType::kEcdsaP256, CertificateKind::kExpired, "ecdsa-with-SHA256", 256, true,
     "esx01"},
    {"WrongName", KeyType::kEcdsaP256, CertificateKind::kWrongName, "ecdsa-with-SHA256", 256, false,
     "elsewhere.invalid"},
};

INSTANTIATE_TEST_SUITE_P(Each, Certificates, ::testing::ValuesIn(kCertificates),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(Tls, SessionsCanBeResumed) {
    ServerOptions options;
    options.max_tls = TlsVersion::kTls1_2;
    Serve(options);
    RawClient first = Connect();
    EXPECT_EQ(first.Ask(EnumerateCards()).status, 200);
    RawClient second = first.ConnectAgain(Server());
    EXPECT_EQ(second.Ask(EnumerateCards()).status, 200);
    EXPECT_EQ(Server().counters().tls_handshakes, 2U);
    EXPECT_EQ(Server().counters().tls_resumptions, 1U);
}

TEST_F(Tls, VersionsThatCrossAreRefused) {
    ServerOptions options;
    options.min_tls = TlsVersion::kTls1_3;
    options.max_tls = TlsVersion::kTls1_2;
    Serve(options);
    EXPECT_THROW(Connect(), boost::system::system_error);
}

}  // namespace

}  // namespace simhost_test
