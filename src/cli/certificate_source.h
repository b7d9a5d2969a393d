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

/// The host's words as they came: of any characters.
struct ShownCertificate {
    std::string subject;
    std::string issuer;
    std::vector<std::string> names;
    std::string not_before;
    std::string not_after;
    std::string fingerprint;  ///< "AB:CD:..."
};

/// Connects, makes the TLS handshake with any host, and sends nothing else. Throws CommandError
/// when this build cannot do it.
std::variant<ShownCertificate, Zentar::Failure> FetchCertificate(
    const std::string& host, std::uint16_t port, std::chrono::milliseconds limit,
    Zentar::Cancellation& cancellation);

}  // namespace command
