// The certificate that a host shows, however this build can get at it.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "common/cancel/cancellation.h"
#include "common/records/failure.h"

namespace command {

/// The host's words as they came: of any bytes, at most 1,024 each.
struct ShownCertificate {
    std::string subject;             ///< "CN = esx01, O = Contoso"
    std::string issuer;              ///< likewise
    std::vector<std::string> names;  ///< subjectAltName: "DNS:NAME", "IP:ADDRESS"; at most 256
    std::string not_before;          ///< "2026-01-31 13:05:00 UTC"; "unreadable" when it is no time
    std::string not_after;
    std::string fingerprint;  ///< "AB:CD:..."
};

/// Connects, makes the TLS handshake with any host, and sends nothing else. Throws CommandError
/// when this build cannot do it.
std::variant<ShownCertificate, Zentar::Failure> FetchCertificate(
    const std::string& host, std::uint16_t port, std::chrono::milliseconds limit,
    Zentar::Cancellation& cancellation);

}  // namespace command
