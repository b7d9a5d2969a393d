// SHA-256 fingerprints of certificates.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

struct x509_st;

namespace cimclient {

using Fingerprint = std::array<unsigned char, 32>;

/// Of the certificate's DER form; all zero, which no certificate has, for null.
Fingerprint FingerprintOf(const x509_st* certificate);

/// Hexadecimal digits of either case, with or without colons between the bytes; nothing for other
/// texts.
std::optional<Fingerprint> ParseFingerprint(std::string_view text);

/// "AB:CD:..."
std::string FingerprintText(const Fingerprint& fingerprint);

}  // namespace cimclient
