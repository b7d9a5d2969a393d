#include "client/credentials.h"

#include <openssl/crypto.h>
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
    : user_bytes_(user.size()) {
    std::string plain;
    plain.reserve(user.size() + 1 + password.size());  // growing would leave copies
    plain.append(user).append(":").append(password);
    std::string encoded(4 * ((plain.size() + 2) / 3) + 1, '\0');
    EVP_EncodeBlock(reinterpret_cast<unsigned char*>(encoded.data()),
                    reinterpret_cast<const unsigned char*>(plain.data()),
                    static_cast<int>(plain.size()));
    encoded.pop_back();
    value_.reserve(kSchemeAndBlank.size() + encoded.size());
    value_.append(kSchemeAndBlank).append(encoded);
    Wipe(plain);
    Wipe(encoded);
}

Credentials::~Credentials() { Wipe(value_); }

Credentials& Credentials::operator=(Credentials&& other) noexcept {
    Wipe(value_);
    value_.swap(other.value_);
    user_bytes_ = other.user_bytes_;
    return *this;
}

void Credentials::RemoveFrom(std::string& text) const {
    if (value_.empty()) {
        return;
    }
    const std::string_view encoded = std::string_view(value_).substr(kSchemeAndBlank.size());
    Replace(text, encoded);
    std::string plain(encoded.size(), '\0');
    EVP_DecodeBlock(reinterpret_cast<unsigned char*>(plain.data()),
                    reinterpret_cast<const unsigned char*>(encoded.data()),
                    static_cast<int>(encoded.size()));
    // The decoder leaves zeros for the padding.
    const std::size_t padding = encoded.size() - std::min(encoded.find('='), encoded.size());
    plain.resize(encoded.size() / 4 * 3 - padding);
    const std::string_view password = std::string_view(plain).substr(user_bytes_ + 1);
    if (CharactersIn(password) >= kShortestPasswordRemoved) {
        Replace(text, password);
    }
    Wipe(plain);
}

void Wipe(std::string& text) {
    text.resize(text.capacity());
    OPENSSL_cleanse(text.data(), text.size());
    text.clear();
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
        if (!is_parameter && EqualNoCase(word, kScheme)) {
            return true;
        }
        challenge.remove_prefix(ItemLength(challenge));
    }
    return false;
}

}  // namespace cimclient
