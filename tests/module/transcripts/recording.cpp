#include "recording.h"

#include <memory>
#include <regex>

#include "support/host_builder.h"
#include "support/inventory_test.h"
#include "support/recorded_log.h"
#include "support/recorded_sleep.h"

namespace transcripts {

namespace {

using Zentar::Agentless::Kalvex;

constexpr const char* kAddress = "127.0.0.1";

std::string EscapedControl(unsigned char c) {
    static const char* const kDigits = "0123456789abcdef";
    switch (c) {
        case '\n':
            return "\\n";
        case '\t':
            return "\\t";
        default:
            return {'\\', 'x', kDigits[c / 16], kDigits[c % 16]};
    }
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f) {
            escaped += EscapedControl(byte);
        } else {
            escaped += c == '\\' ? "\\\\" : std::string(1, c);
        }
    }
    if (escaped.ends_with(' ')) {
        escaped.replace(escaped.size() - 1, 1, "\\x20");
    }
    return escaped;
}

/// The text without the numbers that change from run to run.
std::string Stable(const std::string& text, std::uint16_t port) {
    static const std::regex message_id("expected \"[0-9]+\"");
    const std::regex address(std::string(kAddress) + ":" + std::to_string(port) + "\\b");
    return std::regex_replace(std::regex_replace(text, address, std::string(kAddress) + ":PORT"),
                              message_id, "expected \"ID\"");
}

simhost::HostDescription HostOf(const Scenario& scenario) {
    support::HostBuilder empty;
    if (!scenario.has_namespaces) {
        return empty.WithoutNamespace("root/cimv2")
            .WithoutNamespace(support::kHardwareNamespace)
            .WithoutNamespace("root/ibmsd")
            .Build();
    }
    return scenario.has_classes ? simhost::HostDescription::Builtin() : empty.Build();
}

std::unique_ptr<simhost::Server> Serve(const Scenario& scenario) {
    simhost::ServerOptions options;
    options.transport = scenario.transport;
    options.user = kUser;
    options.password = kPassword;
    auto server = std::make_unique<simhost::Server>(HostOf(scenario), options);
    if (scenario.fault) {
        server->InjectFault(*scenario.fault);
    }
    return server;
}

/// The log of one call after the other.
class Recorder {
public:
    explicit Recorder(std::uint16_t port) : port_(port) {}

    template <class Call>
    void Add(const std::string& name, Call call) {
        log_.Clear();
        transcript_ += "> " + name + "\n";
        const std::string result = call();
        for (const std::string& message : log_.Messages()) {
            transcript_ += Escaped(Stable(message, port_)) + "\n";
        }
        transcript_ += "< " + result + "\n";
    }
    std::string Take() { return std::move(transcript_); }

private:
    std::uint16_t port_;
    support::RecordedLog log_;
    std::string transcript_;
};

}  // namespace

std::string Record(const Scenario& scenario, Construction construction) {
    const auto server = scenario.up ? Serve(scenario) : nullptr;
    ZentarConnection::ConnectionInfo info;
    info.host = kAddress;
    info.port = server ? server->port() : support::ClosedPort();
    info.user = kUser;
    info.password = scenario.right_password ? kPassword : "wrong";
    info.connection_type = scenario.transport == simhost::Transport::kHttps ? 1 : 0;
    info.connection_case = 2;

    Recorder recorder(info.port);
    std::unique_ptr<Kalvex> host;
    recorder.Add("Kalvex", [&] {
        host = construction == Construction::kWithOptions
                   ? std::make_unique<Kalvex>(info, ZentarConnection::ConnectionOptions())
                   : std::make_unique<Kalvex>(info);
        return "constructed";
    });
    for (const Operation& operation : scenario.operations) {
        recorder.Add(operation.call, [&] { return operation.run(*host); });
    }
    recorder.Add("~Kalvex", [&] {
        host.reset();
        return "destroyed";
    });
    support::TakePauses();
    return recorder.Take();
}

std::string FileOf(const Scenario& scenario, const std::string& folder) {
    return folder + "/" + scenario.name + ".txt";
}

}  // namespace transcripts
