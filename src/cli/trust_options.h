// The options about which hosts are trusted.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace command {

/// The host's certificate is tested for what is not empty.
struct TrustOptions {
    std::string ca_file;
    std::vector<std::string> fingerprints;
};

void AddTrustOptions(CLI::App& app, TrustOptions& trust);

/// Throws UsageError for what no host can fit. The module tests the values themselves, but only
/// once the password is known.
void CheckTrustOptions(const TrustOptions& trust, bool has_tls);

}  // namespace command
