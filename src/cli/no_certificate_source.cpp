// An installed OpenPegasus shows no certificates.
#include "cli/certificate_source.h"
#include "cli/command_error.h"

namespace command {

std::variant<ShownCertificate, Zentar::Failure> FetchCertificate(const std::string&, std::uint16_t,
                                                                 std::chrono::milliseconds,
                                                                 Zentar::Cancellation&) {
    throw UsageError(
        "this build uses an installed OpenPegasus, which does not show certificates; use openssl "
        "s_client");
}

}  // namespace command
