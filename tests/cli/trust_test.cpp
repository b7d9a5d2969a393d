// `kalvex fingerprint`, and which hosts are trusted.
#include <openssl/pem.h>
#include <openssl/ssl.h>

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "cli/command_test.h"
#include "simhost/certificate.h"

namespace clitest {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;

class FingerprintCommand : public CommandTest {
protected:
    Finished Fingerprint(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"fingerprint", "--host", "127.0.0.1", "--port",
                                           std::to_string(Server().port())};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Run(arguments);
    }
};

TEST_F(FingerprintCommand, PrintsTheCertificateAndSendsNoRequest) {
    Serve(WithAccount(Https()));
    const Finished finished = Fingerprint();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "");
    EXPECT_THAT(finished.out,
                MatchesRegex("Subject     CN = .+\nIssuer      CN = .+\n"
                             "Names       IP:127\\.0\\.0\\.1\n"
                             "Valid from  [0-9-]+ [0-9:]+ UTC\nValid to    [0-9-]+ [0-9:]+ UTC\n\n"
                             "SHA-256 fingerprint:\n([0-9A-F][0-9A-F]:?)+\n"));
    EXPECT_EQ(Server().counters().requests, 0U);
}

TEST_F(FingerprintCommand, FailsAsOtherCommandsDo) {
    Serve();
    EXPECT_THAT(Fingerprint({"--connect-timeout", "0.2"}), Complains(3, "did not answer in time"));
    EXPECT_THAT(Run({"fingerprint", "--host", "127.0.0.1", "--port", std::to_string(ClosedPort())}),
                Complains(3, "Connection refused"));
    EXPECT_THAT(Run({"fingerprint", "--host", "no-such-host.invalid"}),
                Complains(3, "could not be resolved"));
    EXPECT_THAT(Run({"fingerprint"}), Complains(2, "--host HOST"));
}

class Trust : public CommandTest {
protected:
    std::string CaFile(X509* certificate) const {
        std::FILE* const file = std::fopen(PathOf("ca.pem").c_str(), "w");
        EXPECT_EQ(PEM_write_X509(file, certificate), 1);
        std::fclose(file);
        return PathOf("ca.pem");
    }
    /// A certificate that the host's own does not come from.
    std::string OtherCaFile() const {
        const auto key = simhost::MakeKey(simhost::KeyType::kEcdsaP256);
        return CaFile(simhost::MakeCertificate(*key, simhost::CertificateKind::kSelfSigned, "other",
                                               "127.0.0.1")
                          .get());
    }
    /// The one that the host shows, which comes from itself.
    std::string OwnCaFile() const {
        SSL_CTX* const context = SSL_CTX_new(TLS_client_method());
        BIO* const connection = BIO_new_ssl_connect(context);
        const std::string place = "127.0.0.1:" + std::to_string(Server().port());
        BIO_set_conn_hostname(connection, place.c_str());
        EXPECT_EQ(BIO_do_handshake(connection), 1);
        SSL* ssl = nullptr;
        BIO_get_ssl(connection, &ssl);
        const std::string file = CaFile(SSL_get0_peer_certificate(ssl));
        BIO_free_all(connection);
        SSL_CTX_free(context);
        return file;
    }
    static void ExpectUntrusted(const Json& document) {
        ASSERT_FALSE(document.at("failures").empty());
        for (const Json& failure : document.at("failures")) {
            EXPECT_EQ(failure.at("kind"), "untrusted");
        }
    }
};

TEST_F(Trust, AnotherFingerprintIsUntrustedAndNoRequestArrives) {
    Serve(WithAccount(Https()));
    const std::vector<std::string> arguments{"os",
                                             "--user",
                                             kUser,
                                             "--password-file",
                                             WriteFile("password", kPassword),
                                             "--fingerprint",
                                             std::string(64, 'a')};
    const Json document = Document(arguments, 3);
    ExpectUntrusted(document);
    EXPECT_THAT(document.at("failures").at(0).at("message").get<std::string>(),
                HasSubstr(FingerprintOfHost()));
    EXPECT_EQ(Server().counters().requests, 0U);
}

TEST_F(Trust, AnotherCaIsUntrustedAndNoRequestArrives) {
    Serve(Https());
    ExpectUntrusted(Document({"os", "--ca-file", OtherCaFile()}, 3));
    EXPECT_EQ(Server().counters().requests, 0U);
}

TEST_F(Trust, TheHostsOwnCaIsTrusted) {
    Serve(Https());
    EXPECT_THAT(Document({"os", "--ca-file", OwnCaFile()}).at("failures"), IsEmpty());
}

TEST_F(Trust, TheHostsOwnFingerprintIsTrustedInEitherFormAmongOthers) {
    Serve(Https());
    const std::string printed = FingerprintOfHost();
    std::string plain = printed;
    std::erase(plain, ':');
    std::ranges::transform(plain, plain.begin(), [](unsigned char c) { return std::tolower(c); });
    for (const std::string& own : {printed, plain}) {
        const Json document =
            Document({"--fingerprint", std::string(64, '0'), "--fingerprint", own, "os"});
        EXPECT_THAT(document.at("failures"), IsEmpty());
    }
}

}  // namespace
}  // namespace clitest
