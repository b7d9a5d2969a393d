// A certificate's contents as plain texts.
#pragma once

#include <string>
#include <vector>

#include "transport/fingerprint.h"

namespace cimclient {

/// The texts are the certificate's own, of at most 1,024 bytes each, and may hold any bytes.
struct Certificate {
    std::string subject;             ///< "CN = esx01, O = Contoso"
    std::string issuer;              ///< likewise
    std::vector<std::string> names;  ///< subjectAltName: "DNS:NAME", "IP:ADDRESS"; at most 256
    std::string not_before;          ///< "2026-01-31 13:05:00 UTC"; "unreadable" when it is no time
    std::string not_after;
    Fingerprint fingerprint{};
};

/// Null gives an empty one.
Certificate Describe(const x509_st* certificate);

}  // namespace cimclient
