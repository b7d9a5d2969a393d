#include "net/fingerprint.h"

#include <openssl/crypto.h>
#include <openssl/x509.h>

#include "common/text/ascii.h"

namespace cimclient {

Fingerprint FingerprintOf(const X509* certificate) {
    Fingerprint fingerprint{};
    if (certificate != nullptr) {
        X509_digest(certificate, EVP_sha256(), fingerprint.data(), nullptr);
    }
    return fingerprint;
}

std::optional<Fingerprint> ParseFingerprint(std::string_view text) {
    Fingerprint fingerprint{};
    std::size_t count = 0;
    const bool is_hex = OPENSSL_hexstr2buf_ex(fingerprint.data(), fingerprint.size(), &count,
                                              std::string(text).c_str(), ':') == 1;
    if (!is_hex || count != fingerprint.size()) {
        return std::nullopt;
    }
    // OpenSSL takes colons wherever they stand.
    const bool has_form = text.size() == 2 * fingerprint.size() ||
                          Zentar::EqualNoCase(text, FingerprintText(fingerprint));
    return has_form ? std::optional(fingerprint) : std::nullopt;
}

std::string FingerprintText(const Fingerprint& fingerprint) {
    std::string text(3 * fingerprint.size(), '\0');
    OPENSSL_buf2hexstr_ex(text.data(), text.size(), nullptr, fingerprint.data(), fingerprint.size(),
                          ':');
    text.pop_back();  // the zero
    return text;
}

}  // namespace cimclient
