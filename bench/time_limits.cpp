// Measures how exactly the client keeps its time limits with hosts that stall.
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "Pegasus/Client/CIMClient.h"
#include "simhost/server.h"
#include "stalling_host.h"

namespace bench {

namespace {

using namespace Pegasus;
using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr unsigned kLimits[] = {200, 500, 1000};
constexpr int kRepetitions = 3;
constexpr int kDripMilliseconds = 20;

// What hosts do.

void AwaitHangUp(int socket) {
    pollfd wait{socket, POLLRDHUP, 0};
    poll(&wait, 1, -1);
}

/// False when the client has hung up.
bool SendTo(int socket, const std::string& bytes) {
    return send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) > 0;
}

/// Requests come in one piece.
void TakeRequest(int socket) {
    char bytes[65536];
    (void)!recv(socket, bytes, sizeof bytes, 0);
}

StallingHost::Act StallAfter(const std::string& answer) {
    return [answer](int socket) {
        TakeRequest(socket);
        SendTo(socket, answer);
        AwaitHangUp(socket);
    };
}

/// Goes on with the answer's last byte forever.
StallingHost::Act DripAfter(const std::string& answer) {
    return [answer](int socket) {
        TakeRequest(socket);
        SendTo(socket, answer);
        pollfd wait{socket, POLLRDHUP, 0};
        while (poll(&wait, 1, kDripMilliseconds) == 0 &&
               SendTo(socket, answer.substr(answer.size() - 1))) {
        }
    };
}

const std::string kChallenge =
    "HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm=\"cimom\"\r\nContent-Length: "
    "0\r\n\r\n";
const std::string kHead =
    "HTTP/1.1 200 OK\r\nContent-Type: application/xml; charset=utf-8\r\n"
    "CIMOperation: MethodResponse\r\nTransfer-Encoding: chunked\r\n\r\n";
const std::string kBody = kHead + "400\r\n<?xml version=\"1.0\"?>\n<CIM ";
/// The beginning of a TLS record that announces more.
const std::string kTlsRecord("\x16\x03\x03\x10\x00\x02", 6);

simhost::ServerOptions Https() {
    simhost::ServerOptions options;
    options.transport = simhost::Transport::kHttps;
    return options;
}

class FaultyHost {
public:
    explicit FaultyHost(const simhost::Fault& fault)
        : server_(simhost::HostDescription::Builtin(), Https()) {
        server_.InjectFault(fault);
    }
    std::uint16_t port() const { return server_.port(); }

private:
    simhost::Server server_;
};

// What clients do.

void Connect(CIMClient& client, std::uint16_t port, bool tls) {
    if (tls) {
        client.connect("127.0.0.1", port, SSLContext("", nullptr), "user", "password");
    } else {
        client.connect("127.0.0.1", port, "user", "password");
    }
}

void Ask(CIMClient& client) { client.enumerateInstances("root/cimv2", "OMC_Chassis"); }

/// More than the sockets on the way hold. Made beforehand: it is the sending that is measured.
const CIMPropertyList& LongList() {
    static const std::string name(3UL << 20, 'x');
    static const CIMPropertyList list = [] {
        Array<CIMName> names;
        names.append(CIMName(name.c_str()));
        return CIMPropertyList(names);
    }();
    return list;
}

void AskAtLength(CIMClient& client) {
    client.enumerateInstances("root/cimv2", "OMC_Chassis", true, true, false, false, LongList());
}

// What is measured.

struct Stall {
    const char* phase;
    const char* how;
    /// The time that the client took to fail.
    std::function<Milliseconds(unsigned limit)> measure;
};

template <class Call>
Milliseconds TimeToFail(Call call) {
    const auto begin = Clock::now();
    try {
        call();
    } catch (const CannotConnectException&) {
        return Clock::now() - begin;
    } catch (const ConnectionTimeoutException&) {
        return Clock::now() - begin;
    }
    throw std::logic_error("a host did not stall");
}

template <class Host>
Milliseconds TimeToConnect(const Host& host, unsigned limit, bool tls) {
    CIMClient client;
    client.setTimeout(limit);
    return TimeToFail([&] { Connect(client, host.port(), tls); });
}

template <class Host>
Milliseconds TimeToAsk(const Host& host, unsigned limit, bool tls, void (*ask)(CIMClient&)) {
    CIMClient client;
    Connect(client, host.port(), tls);
    client.setTimeout(limit);
    return TimeToFail([&] { ask(client); });
}

Stall Handshake(const char* how, const StallingHost::Act& act) {
    return {"handshake", how,
            [act](unsigned limit) { return TimeToConnect(StallingHost(act), limit, true); }};
}

Stall Reply(const char* how, const StallingHost::Act& act) {
    return {"reply", how,
            [act](unsigned limit) { return TimeToAsk(StallingHost(act), limit, false, Ask); }};
}

Stall TlsReply(const char* how, const simhost::Fault& way) {
    return {"reply", how,
            [way](unsigned limit) { return TimeToAsk(FaultyHost(way), limit, true, Ask); }};
}

std::vector<Stall> Stalls() {
    namespace Faults = simhost::Faults;
    return {
        {"connect", "is never completed",
         [](unsigned limit) { return TimeToConnect(FullBacklog(), limit, false); }},
        {"connect", "is never completed, for TLS",
         [](unsigned limit) { return TimeToConnect(FullBacklog(), limit, true); }},
        Handshake("is never answered", AwaitHangUp),
        Handshake("stops within a record", StallAfter(kTlsRecord)),
        Handshake("drips within a record", DripAfter(kTlsRecord)),
        {"request", "is not taken",
         [](unsigned limit) {
             LongList();
             return TimeToAsk(StallingHost(AwaitHangUp), limit, false, AskAtLength);
         }},
        Reply("never begins", StallAfter("")),
        Reply("never begins behind a challenge", StallAfter(kChallenge)),
        Reply("stops within the head", StallAfter(kHead.substr(0, 40))),
        Reply("stops within the body", StallAfter(kBody)),
        Reply("drips within the head", DripAfter(kHead.substr(0, 40))),
        Reply("drips within the body", DripAfter(kBody)),
        TlsReply("never begins, over TLS", Faults::Stall()),
        TlsReply("drips, over TLS",
                 Faults::SlowDrip(1, std::chrono::milliseconds(kDripMilliseconds))),
    };
}

double Allowed(unsigned limit) { return 0.02 * limit + 50; }

/// Whether the stall ended within what is allowed, at each limit.
bool Report(const Stall& stall) {
    bool all_kept = true;
    for (const unsigned limit : kLimits) {
        double measured = 0;
        for (int i = 0; i < kRepetitions; ++i) {
            const double taken = stall.measure(limit).count();
            // The one furthest from the limit, on either side.
            if (i == 0 || std::abs(taken - limit) > std::abs(measured - limit)) {
                measured = taken;
            }
        }
        const double excess = measured - limit;
        const bool is_kept = std::abs(excess) <= Allowed(limit);
        all_kept = all_kept && is_kept;
        std::printf("%-10s %-34s %6u %10.1f %8.1f %8.0f %s\n", stall.phase, stall.how, limit,
                    measured, excess, Allowed(limit), is_kept ? "" : "!");
        std::fflush(stdout);
    }
    return all_kept;
}

}  // namespace

}  // namespace bench

int main() {
    std::printf("%-10s %-34s %6s %10s %8s %8s   (milliseconds)\n", "phase", "stall", "limit",
                "measured", "excess", "allowed");
    bool all_kept = true;
    for (const bench::Stall& stall : bench::Stalls()) {
        all_kept = bench::Report(stall) && all_kept;
    }
    return all_kept ? 0 : 1;
}
