#include "cli/certificate_texts.h"

#include <arpa/inet.h>
#include <openssl/bio.h>
#include <openssl/x509.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <ctime>
#include <memory>

#include "net/fingerprint.h"

namespace command {

namespace {

constexpr std::size_t kMostBytes = 1024;
constexpr int kMostNames = 256;
constexpr int kIPv4Bytes = 4;
constexpr int kIPv6Bytes = 16;

struct Free {
    void operator()(BIO* bio) const { BIO_free(bio); }
    void operator()(GENERAL_NAMES* names) const { GENERAL_NAMES_free(names); }
};

std::string Bounded(const char* bytes, long size) {
    return std::string(bytes, std::min(static_cast<std::size_t>(size), kMostBytes));
}

std::string TextOf(const X509_NAME* name) {
    const std::unique_ptr<BIO, Free> text(BIO_new(BIO_s_mem()));
    // As UTF-8, with its control characters escaped by OpenSSL.
    constexpr unsigned long kFormat =
        XN_FLAG_ONELINE & ~static_cast<unsigned long>(ASN1_STRFLGS_ESC_MSB);
    char* bytes = nullptr;
    if (!text || X509_NAME_print_ex(text.get(), name, 0, kFormat) < 0) {
        return "unreadable";
    }
    const long size = BIO_get_mem_data(text.get(), &bytes);
    return Bounded(bytes, size);
}

std::string TextOf(const ASN1_STRING* text) {
    return Bounded(reinterpret_cast<const char*>(ASN1_STRING_get0_data(text)),
                   ASN1_STRING_length(text));
}

std::string AddressText(const ASN1_OCTET_STRING* address) {
    const int size = ASN1_STRING_length(address);
    char text[INET6_ADDRSTRLEN] = "unreadable";
    if (size == kIPv4Bytes || size == kIPv6Bytes) {
        inet_ntop(size == kIPv4Bytes ? AF_INET : AF_INET6, ASN1_STRING_get0_data(address), text,
                  sizeof text);
    }
    return text;
}

std::string TextOf(const GENERAL_NAME* name) {
    int type = 0;
    const void* const value = GENERAL_NAME_get0_value(name, &type);
    switch (type) {
        case GEN_DNS:
            return "DNS:" + TextOf(static_cast<const ASN1_STRING*>(value));
        case GEN_EMAIL:
            return "email:" + TextOf(static_cast<const ASN1_STRING*>(value));
        case GEN_URI:
            return "URI:" + TextOf(static_cast<const ASN1_STRING*>(value));
        case GEN_IPADD:
            return "IP:" + AddressText(static_cast<const ASN1_OCTET_STRING*>(value));
        case GEN_DIRNAME:
            return "directory:" + TextOf(static_cast<const X509_NAME*>(value));
        default:
            return "other";
    }
}

std::vector<std::string> NamesOf(const X509* certificate) {
    const std::unique_ptr<GENERAL_NAMES, Free> names(static_cast<GENERAL_NAMES*>(
        X509_get_ext_d2i(certificate, NID_subject_alt_name, nullptr, nullptr)));
    std::vector<std::string> texts;
    const int count = names ? std::min(sk_GENERAL_NAME_num(names.get()), kMostNames) : 0;
    texts.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        texts.push_back(TextOf(sk_GENERAL_NAME_value(names.get(), i)));
    }
    return texts;
}

std::string TimeText(const ASN1_TIME* time) {
    std::tm parts{};
    char text[64];
    if (time == nullptr || ASN1_TIME_to_tm(time, &parts) != 1 ||
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S UTC", &parts) == 0) {
        return "unreadable";
    }
    return text;
}

}  // namespace

ShownCertificate Describe(const X509* certificate) {
    if (certificate == nullptr) {
        return {};
    }
    return {TextOf(X509_get_subject_name(certificate)),
            TextOf(X509_get_issuer_name(certificate)),
            NamesOf(certificate),
            TimeText(X509_get0_notBefore(certificate)),
            TimeText(X509_get0_notAfter(certificate)),
            cimclient::FingerprintText(cimclient::FingerprintOf(certificate))};
}

}  // namespace command
