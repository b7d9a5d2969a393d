// Hosts that the caller trusts, and hosts that take their place.
#include <openssl/pem.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "net/channel.h"
#include "net/tls_settings.h"
#include "support/inventory_test.h"

namespace {

using namespace Zentar;
using simhost::CertificateKind;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Trust : public support::InventoryTest {
protected:
    ~Trust() override { std::filesystem::remove_all(folder_); }

    void ServeWith(CertificateKind kind, simhost::ServerOptions server = {}) {
        server.certificate = kind;
        server.user = "root";
        server.password = "secret";
        Serve(simhost::HostDescription::Builtin(), std::move(server));
    }

    /// The certificate of the host that is served: its PEM in a file, and its fingerprint.
    struct Shown {
        std::string file;
        std::string fingerprint;
    };
    Shown ShownCertificate() {
        cimclient::TlsSettings accepting(cimclient::Trust{});
        const cimclient::Channel connection(
            "127.0.0.1", info.port, &accepting,
            {std::chrono::steady_clock::now() + std::chrono::minutes(1)});
        std::filesystem::create_directories(folder_);
        const std::string path = folder_ / (std::to_string(info.port) + ".pem");
        std::FILE* const file = std::fopen(path.c_str(), "w");
        PEM_write_X509(file, connection.Certificate());
        std::fclose(file);
        return {path,
                cimclient::FingerprintText(cimclient::FingerprintOf(connection.Certificate()))};
    }

    void ExpectRead() {
        Agentless::Kalvex host(info, options);
        std::vector<ZentarAgentless::InstalledPackage> packages;
        EXPECT_EQ(host.GetInstalledPackages(packages), 0);
        EXPECT_THAT(host.TakeFailures().failures, IsEmpty());
    }

    /// Nothing is asked of the host. The text of the failure.
    std::string ExpectRefused(FailureKind kind) {
        const auto requests = Server().counters().requests;
        Agentless::Kalvex host(info, options);
        std::vector<ZentarAgentless::InstalledPackage> packages;
        EXPECT_EQ(host.GetInstalledPackages(packages), 1);
        EXPECT_EQ(Server().counters().requests, requests);
        const auto failures = host.TakeFailures().failures;
        for (const Failure& failure : failures) {
            EXPECT_STREQ(WordOf(failure.kind), WordOf(kind));
        }
        support::TakePauses();
        return failures.empty() ? "" : failures.front().text;
    }

    ZentarConnection::ConnectionOptions options;

private:
    const std::filesystem::path folder_ =
        std::filesystem::path(::testing::TempDir()) / ("trust_test." + std::to_string(getpid()));
};

TEST_F(Trust, AcceptsEveryHostUnlessAsked) {
    for (const auto kind : {CertificateKind::kWrongName, CertificateKind::kExpired}) {
        ServeWith(kind);
        ExpectRead();
    }
}

TEST_F(Trust, InAnAuthorityAcceptsItsHost) {
    ServeWith(CertificateKind::kSelfSigned);
    options.ca_file = ShownCertificate().file;
    ExpectRead();
}

TEST_F(Trust, InAnAuthorityRefusesAnothersHost) {
    ServeWith(CertificateKind::kSelfSigned);
    options.ca_file = ShownCertificate().file;
    ServeWith(CertificateKind::kSelfSigned);
    EXPECT_THAT(ExpectRefused(FailureKind::kUntrusted), HasSubstr("self-signed certificate"));
}

TEST_F(Trust, InAnAuthorityRefusesAHostOfAnotherName) {
    ServeWith(CertificateKind::kWrongName);
    options.ca_file = ShownCertificate().file;
    EXPECT_EQ(ExpectRefused(FailureKind::kUntrusted), "IP address mismatch");
    info.host = "localhost";
    EXPECT_EQ(ExpectRefused(FailureKind::kUntrusted), "hostname mismatch");
}

TEST_F(Trust, InAnAuthorityRefusesAnExpiredCertificate) {
    ServeWith(CertificateKind::kExpired);
    options.ca_file = ShownCertificate().file;
    EXPECT_EQ(ExpectRefused(FailureKind::kUntrusted), "certificate has expired");
}

TEST_F(Trust, InAnAuthorityRefusesWeakSignatures) {
    ServeWith(CertificateKind::kSelfSigned, [] {
        simhost::ServerOptions weak;
        weak.key_type = simhost::KeyType::kRsa1024;
        weak.max_tls = simhost::TlsVersion::kTls1_1;
        return weak;
    }());
    options.ca_file = ShownCertificate().file;
    EXPECT_NE(ExpectRefused(FailureKind::kTlsFailed), "");
}

TEST_F(Trust, InAFingerprintAcceptsItInAllItsForms) {
    ServeWith(CertificateKind::kWrongName);
    std::string text = ShownCertificate().fingerprint;
    options.fingerprints = {std::string(64, '0'), text};
    ExpectRead();
    text.erase(std::remove(text.begin(), text.end(), ':'), text.end());
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    options.fingerprints = {text};
    ExpectRead();
}

TEST_F(Trust, InAFingerprintRefusesOtherHosts) {
    ServeWith(CertificateKind::kSelfSigned);
    options.fingerprints = {ShownCertificate().fingerprint};
    ServeWith(CertificateKind::kSelfSigned);
    EXPECT_EQ(ExpectRefused(FailureKind::kUntrusted),
              "The certificate's SHA-256 fingerprint is " + ShownCertificate().fingerprint + ".");
}

TEST_F(Trust, InBothIsInBoth) {
    ServeWith(CertificateKind::kSelfSigned);
    options.ca_file = ShownCertificate().file;
    options.fingerprints = {std::string(64, '0')};
    ExpectRefused(FailureKind::kUntrusted);
    options.fingerprints = {ShownCertificate().fingerprint};
    ExpectRead();
}

TEST_F(Trust, HoldsForEveryConnection) {
    simhost::ServerOptions server;
    server.requests_per_connection = 1;
    ServeWith(CertificateKind::kSelfSigned, server);
    const Shown shown = ShownCertificate();
    options.ca_file = shown.file;
    options.fingerprints = {shown.fingerprint};
    ExpectRead();
    EXPECT_GT(Server().counters().tls_resumptions, 0U);
}

TEST_F(Trust, CannotBeKeptOverHttp) {
    Serve(simhost::HostDescription::Builtin(), Http());
    options.fingerprints = {std::string(64, '0')};
    EXPECT_THAT(ExpectRefused(FailureKind::kBadConnectionInfo),
                HasSubstr("only be kept with HTTPS"));
    EXPECT_EQ(Server().counters().connections, 0U);
}

TEST_F(Trust, InWhatCannotBeReadIsRefused) {
    ServeWith(CertificateKind::kSelfSigned);
    for (const std::string& text : {std::string("AB:CD"), std::string(64, 'g'),
                                    std::string(63, '0'), std::string(95, '0'), std::string()}) {
        options.fingerprints = {text};
        EXPECT_THAT(ExpectRefused(FailureKind::kBadConnectionInfo), HasSubstr("32 bytes")) << text;
    }
    options.fingerprints.clear();
    options.ca_file = "/nowhere/ca.pem";
    EXPECT_THAT(ExpectRefused(FailureKind::kBadConnectionInfo),
                HasSubstr("The CA file \"/nowhere/ca.pem\" cannot be used"));
    EXPECT_EQ(Server().counters().connections, 0U);
}

}  // namespace
