#include "cli/certificate_source.h"
#include "cli/certificate_texts.h"
#include "net/channel.h"
#include "net/tls_settings.h"

namespace command {

std::variant<ShownCertificate, Zentar::Failure> FetchCertificate(
    const std::string& host, std::uint16_t port, std::chrono::milliseconds limit,
    Zentar::Cancellation& cancellation) {
    cimclient::TlsSettings any_host(cimclient::Trust{});
    const auto deadline = std::chrono::steady_clock::now() + limit;
    try {
        const cimclient::Channel channel(host, port, &any_host, {deadline, &cancellation});
        return Describe(channel.Certificate());
    } catch (const cimclient::NetworkError& error) {
        Zentar::Failure failure;
        failure.kind = error.kind;
        failure.phase = error.phase;
        failure.operation = "connect";
        failure.text = error.reason;
        return failure;
    }
}

}  // namespace command
