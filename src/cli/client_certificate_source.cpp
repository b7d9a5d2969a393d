#include "cli/certificate_source.h"
#include "transport/certificate.h"
#include "transport/connection.h"

namespace command {

std::variant<ShownCertificate, Zentar::Failure> FetchCertificate(
    const std::string& host, std::uint16_t port, std::chrono::milliseconds limit,
    Zentar::Cancellation& cancellation) {
    cimclient::TlsSettings any_host(Pegasus::SSLContext("", nullptr, Pegasus::String::EMPTY), {});
    const auto deadline = std::chrono::steady_clock::now() + limit;
    try {
        const cimclient::Connection connection(host, port, &any_host, {deadline, &cancellation});
        cimclient::Certificate shown = cimclient::Describe(connection.Certificate());
        return ShownCertificate{
            std::move(shown.subject),   std::move(shown.issuer),
            std::move(shown.names),     std::move(shown.not_before),
            std::move(shown.not_after), cimclient::FingerprintText(shown.fingerprint)};
    } catch (const cimclient::TransportError& error) {
        Zentar::Failure failure;
        failure.kind = error.kind;
        failure.phase = error.phase;
        failure.operation = "connect";
        failure.text = error.reason;
        return failure;
    }
}

}  // namespace command
