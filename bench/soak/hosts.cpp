#include "soak/hosts.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <thread>

#include "module_work.h"
#include "simhost/server.h"
#include "soak/marked_host.h"
#include "soak/round_plan.h"

namespace soak {

namespace {

using simhost::CertificateKind;
using simhost::KeyType;
using simhost::TlsVersion;

constexpr std::size_t kChunkSizes[] = {0, 16, 256, 4096};
constexpr TlsVersion kTlsVersions[] = {TlsVersion::kTls1_3, TlsVersion::kTls1_2,
                                       TlsVersion::kTls1_1, TlsVersion::kTls1_0};
constexpr KeyType kKeyTypes[] = {KeyType::kEcdsaP256, KeyType::kRsa2048, KeyType::kRsa1024};
constexpr CertificateKind kCertificates[] = {CertificateKind::kSelfSigned, CertificateKind::kSha1,
                                             CertificateKind::kExpired,
                                             CertificateKind::kWrongName};

template <class Choice, std::size_t count>
Choice Nth(const Choice (&choices)[count], std::size_t number) {
    return choices[number % count];
}

bool IsPlain(std::size_t host) { return host % 2 == 0; }

simhost::ServerOptions OptionsOf(std::size_t host) {
    const std::size_t number = host / 2;
    simhost::ServerOptions options;
    options.transport = IsPlain(host) ? simhost::Transport::kHttp : simhost::Transport::kHttps;
    options.user = bench::kUser;
    options.password = bench::kPassword;
    options.chunk_size = Nth(kChunkSizes, number);
    options.max_tls = Nth(kTlsVersions, number);
    options.key_type = Nth(kKeyTypes, number);
    options.certificate = Nth(kCertificates, number / 4);
    return options;
}

template <class Value>
bool Receive(int channel, Value& value) {
    return recv(channel, &value, sizeof value, MSG_WAITALL) == static_cast<ssize_t>(sizeof value);
}

template <class Value>
bool Send(int channel, const Value& value) {
    return send(channel, &value, sizeof value, MSG_NOSIGNAL) == static_cast<ssize_t>(sizeof value);
}

/// Serves until the other end hangs up.
void Serve(std::size_t host, std::uint64_t seed, int channel) {
    simhost::Server server(MarkedHost(" of host " + std::to_string(host)), OptionsOf(host));
    Send(channel, server.port());
    for (std::uint64_t round = 0; Receive(channel, round); Send(channel, round)) {
        server.ClearFaults();
        server.ForgetRequests();
        for (const auto& fault : PlanOf(seed, host, round).faults) {
            server.InjectFault(fault);
        }
    }
}

[[noreturn]] void RunChild(const std::vector<int>& channels, std::uint64_t seed) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::vector<std::jthread> hosts;
    for (std::size_t host = 0; host < channels.size(); ++host) {
        hosts.emplace_back([&, host] {
            try {
                Serve(host, seed, channels[host]);
            } catch (const std::exception& e) {
                std::fprintf(stderr, "host %zu: %s\n", host, e.what());
                _exit(1);
            }
        });
    }
    hosts.clear();
    _exit(0);
}

}  // namespace

Hosts::Hosts(std::size_t count, std::uint64_t seed) : links_(count) {
    std::vector<int> far_ends;
    for (Link& link : links_) {
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) {
            throw std::runtime_error("cannot make a socket pair");
        }
        link.channel = ends[0];
        far_ends.push_back(ends[1]);
    }
    child_ = fork();
    if (child_ == 0) {
        RunChild(far_ends, seed);
    }
    for (const int far_end : far_ends) {
        close(far_end);
    }
    for (Link& link : links_) {
        if (child_ < 0 || !Receive(link.channel, link.port)) {
            throw std::runtime_error("cannot start the hosts");
        }
    }
}

Hosts::~Hosts() {
    for (const Link& link : links_) {
        close(link.channel);
    }
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
}

void Hosts::Begin(std::size_t host, std::uint64_t round) const {
    const int channel = links_[host].channel;
    if (!Send(channel, round) || !Receive(channel, round)) {
        throw std::runtime_error("the hosts have ended");
    }
}

ZentarConnection::ConnectionInfo Hosts::ConnectionTo(std::size_t host) const {
    return bench::HostAt(links_[host].port,
                         IsPlain(host) ? bench::Link::kHttp : bench::Link::kHttps);
}

}  // namespace soak
