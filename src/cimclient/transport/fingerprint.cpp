#include "transport/fingerprint.h"

#include <openssl/x509.h>

#include <charconv>

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
    const std::size_t step = text.size() == 2 * fingerprint.size() ? 2 : 3;
    if (text.size() != step * fingerprint.size() - (step - 2)) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < fingerprint.size(); ++i) {
        const char* const digits = text.data() + step * i;
        const auto [end, error] = std::from_chars(digits, digits + 2, fingerprint[i], 16);
        const bool has_colon = step == 2 || i + 1 == fingerprint.size() || digits[2] == ':';
        if (error != std::errc() || end != digits + 2 || !has_colon) {
            return std::nullopt;
        }
    }
    return fingerprint;
}

std::string FingerprintText(const Fingerprint& fingerprint) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const unsigned char byte : fingerprint) {
        text += text.empty() ? "" : ":";
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 0xFU];
    }
    return text;
}

}  // namespace cimclient
