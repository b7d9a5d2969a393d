#include "client/credentials.h"

#include <openssl/evp.h>

#include <algorithm>

#include "http/reply.h"

namespace cimclient {

namespace {

/// Up to the next comma outside of quotes.
std::size_t ItemLength(std::string_view text) {
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && quoted) {
            ++i;
        } else if (text[i] == '"') {
            quoted = !quoted;
        } else if (text[i] == ',' && !quoted) {
            return i;
        }
    }
    return text.size();
}

constexpr std::string_view kSchemeAndBlank = "Basic ";
constexpr std::size_t kShortestPasswordRemoved = 6;

unsigned char* Bytes(char* text) { return reinterpret_cast<unsigned char*>(text); }
const unsigned char* Bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

std::size_t CharactersIn(std::string_view utf8) {
    std::size_t count = 0;
    for (const char c : utf8) {
        count += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
    }
    return count;
}

void Replace(std::string& text, std::string_view secret) {
    constexpr std::string_view kAsterisks = "**********";
    for (std::size_t at = text.find(secret); at != std::string::npos;
         at = text.find(secret, at + kAsterisks.size())) {
        text.replace(at, secret.size(), kAsterisks);
    }
}

}  // namespace

Credentials::Credentials(std::string_view user, std::string_view password)
    : value_(kSchemeAndBlank), user_bytes_(user.size()) {
    Zentar::Secret plain{user, ":", password};
    const std::size_t encoded_bytes = 4 * ((plain.text().size() + 2) / 3);
    value_.Resize(kSchemeAndBlank.size() + encoded_bytes + 1);  // the encoder appends a zero
    EVP_EncodeBlock(Bytes(value_.data() + kSchemeAndBlank.size()), Bytes(plain.data()),
                    static_cast<int>(plain.text().size()));
    value_.Resize(kSchemeAndBlank.size() + encoded_bytes);
}

void Credentials::RemoveFrom(std::string& text) const {
    if (value_.text().empty()) {
        return;
    }
    const std::string_view encoded = std::string_view(value_.text()).substr(kSchemeAndBlank.size());
    Replace(text, encoded);
    Zentar::Secret plain;
    plain.Resize(encoded.size());
    EVP_DecodeBlock(Bytes(plain.data()), Bytes(encoded.data()), static_cast<int>(encoded.size()));
    // The decoder leaves zeros for the padding.
    const std::size_t padding = encoded.size() - std::min(encoded.find('='), encoded.size());
    plain.Resize(encoded.size() / 4 * 3 - padding);
    const std::string_view password = std::string_view(plain.text()).substr(user_bytes_ + 1);
    if (CharactersIn(password) >= kShortestPasswordRemoved) {
        Replace(text, password);
    }
}

bool OffersBasic(std::string_view challenge) {
    constexpr std::string_view kScheme = "basic";
    // A scheme stands at the start of the field or after a comma, where "basic=" would be a
    // parameter.
    while (!challenge.empty()) {
        challenge.remove_prefix(std::min(challenge.find_first_not_of(" \t,"), challenge.size()));
        const std::string_view word = challenge.substr(0, challenge.find_first_of(" \t,="));
        const std::size_t next = challenge.find_first_not_of(" \t", word.size());
        const bool is_parameter = next != std::string_view::npos && challenge[next] == '=';
        if (!is_parameter && Zentar::EqualNoCase(word, kScheme)) {
            return true;
        }
        challenge.remove_prefix(ItemLength(challenge));
    }
    return false;
}

}  // namespace cimclient
