// Certificates as plain texts, also those whose names are made to deceive.
#include "cli/certificate_texts.h"

#include <gmock/gmock.h>
#include <openssl/x509v3.h>

#include <string_view>

#include "net/fingerprint.h"
#include "simhost/certificate.h"

namespace {

using command::Describe;
using command::ShownCertificate;
using simhost::CertificateKind;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;

class Certificates : public testing::Test {
protected:
    void AddSubject(std::string_view common_name) {
        X509_NAME_add_entry_by_txt(X509_get_subject_name(made.get()), "CN", MBSTRING_UTF8,
                                   reinterpret_cast<const unsigned char*>(common_name.data()),
                                   static_cast<int>(common_name.size()), -1, 0);
    }
    /// In place of the names that it has.
    void SetNames(const std::vector<std::pair<int, std::string>>& names) {
        GENERAL_NAMES* const all = GENERAL_NAMES_new();
        for (const auto& [type, bytes] : names) {
            GENERAL_NAME* const name = GENERAL_NAME_new();
            ASN1_STRING* const value =
                ASN1_STRING_type_new(type == GEN_IPADD ? V_ASN1_OCTET_STRING : V_ASN1_IA5STRING);
            ASN1_STRING_set(value, bytes.data(), static_cast<int>(bytes.size()));
            GENERAL_NAME_set0_value(name, type, value);
            sk_GENERAL_NAME_push(all, name);
        }
        X509_add1_ext_i2d(made.get(), NID_subject_alt_name, all, 0, X509V3_ADD_REPLACE);
        GENERAL_NAMES_free(all);
    }

    simhost::KeyPointer key = simhost::MakeKey(simhost::KeyType::kEcdsaP256);
    simhost::CertificatePointer made =
        simhost::MakeCertificate(*key, CertificateKind::kSelfSigned, "esx01", "127.0.0.1");
};

TEST_F(Certificates, HaveTheirNamesTimesAndFingerprint) {
    const ShownCertificate shown = Describe(made.get());
    EXPECT_EQ(shown.subject, "CN = esx01");
    EXPECT_EQ(shown.issuer, "CN = esx01");
    EXPECT_THAT(shown.names, ElementsAre("IP:127.0.0.1"));
    EXPECT_THAT(shown.not_before, MatchesRegex("20[0-9-]+ [0-9:]+ UTC"));
    EXPECT_LT(shown.not_before, shown.not_after);
    EXPECT_EQ(shown.fingerprint, cimclient::FingerprintText(cimclient::FingerprintOf(made.get())));
}

TEST_F(Certificates, AreEmptyWhenThereIsNone) {
    const ShownCertificate shown = Describe(nullptr);
    EXPECT_EQ(shown.subject, "");
    EXPECT_THAT(shown.names, IsEmpty());
}

TEST_F(Certificates, KeepLettersAndNoControlCharactersInTheSubject) {
    AddSubject("Nürnberg\n\x1B[2J");
    AddSubject(std::string_view("a\0b", 3));
    const ShownCertificate shown = Describe(made.get());
    EXPECT_THAT(shown.subject, HasSubstr("Nürnberg\\0A\\1B[2J"));
    EXPECT_THAT(shown.subject, HasSubstr("a\\00b"));
    EXPECT_EQ(shown.subject.find('\n'), std::string::npos);
}

TEST_F(Certificates, KeepEveryByteOfAlternativeNames) {
    SetNames({{GEN_DNS, std::string("good.example\0.evil", 18)},
              {GEN_DNS, "a\nSubject  forged"},
              {GEN_URI, "https://x"},
              {GEN_EMAIL, "a@b"},
              {GEN_IPADD, std::string(15, '\0') + '\1'},
              {GEN_IPADD, "123"}});
    EXPECT_THAT(Describe(made.get()).names,
                ElementsAre(std::string("DNS:good.example\0.evil", 22), "DNS:a\nSubject  forged",
                            "URI:https://x", "email:a@b", "IP:::1", "IP:unreadable"));
}

TEST_F(Certificates, AreBounded) {
    SetNames(std::vector<std::pair<int, std::string>>(1000, {GEN_DNS, std::string(5000, 'x')}));
    const ShownCertificate shown = Describe(made.get());
    EXPECT_EQ(shown.names.size(), 256U);
    EXPECT_EQ(shown.names.front().size(), 1024 + std::string_view("DNS:").size());
}

TEST_F(Certificates, SayWhenATimeIsNone) {
    ASN1_STRING_set(X509_getm_notAfter(made.get()), "never", 5);
    EXPECT_EQ(Describe(made.get()).not_after, "unreadable");
}

}  // namespace
