#include "time_limits/stalls.h"

#include <poll.h>
#include <sys/socket.h>

#include <stdexcept>
#include <string>

#include "module_work.h"
#include "simhost/server.h"
#include "stalling_host.h"
#include "time_limits/held_lookups.h"
#include "time_limits/ticket_host.h"

namespace time_limits {

namespace {

using bench::HostAt;
using bench::Link;
using bench::StallingHost;
using simhost::Fault;
using Zentar::FailurePhase;
using Zentar::Agentless::Kalvex;
namespace Faults = simhost::Faults;

constexpr int kDripMilliseconds = 20;

// What a host does with a connection.

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
const std::string kPartOfHead = kHead.substr(0, 40);
const std::string kPartOfBody = kHead + "400\r\n<?xml version=\"1.0\"?>\n<CIM ";
/// The beginning of a TLS record that announces more.
const std::string kPartOfRecord("\x16\x03\x03\x10\x00\x02", 6);

// Scenes with it.

template <class Host>
Scene SceneAt(std::shared_ptr<Host> host, Link link) {
    return {HostAt(host->port(), link), host, {}};
}

template <class Host>
auto Plain(Link link) {
    return [link](milliseconds) { return SceneAt(std::make_shared<Host>(), link); };
}

auto Acting(const StallingHost::Act& act, Link link) {
    return [=](milliseconds) { return SceneAt(std::make_shared<StallingHost>(act), link); };
}

using ServerPointer = std::shared_ptr<simhost::Server>;

ServerPointer Serve(Link link, simhost::ServerOptions options = {}) {
    options.transport =
        link == Link::kHttps ? simhost::Transport::kHttps : simhost::Transport::kHttp;
    return std::make_shared<simhost::Server>(simhost::HostDescription::Builtin(), options);
}

auto OverTls(const Fault& fault) {
    return [fault](milliseconds) {
        const ServerPointer server = Serve(Link::kHttps);
        server->InjectFault(fault);
        return SceneAt(server, Link::kHttps);
    };
}

void ReadOnce(Kalvex& host) {
    std::vector<Zentar::ZentarAgentless::InstalledPackage> packages;
    if (host.GetInstalledPackages(packages) != 0) {
        throw std::logic_error("a host stalls too early");
    }
}

/// Closes after each answer, so that the next request has to connect first.
simhost::ServerOptions OneRequestPerConnection() {
    simhost::ServerOptions options;
    options.requests_per_connection = 1;
    return options;
}

Scene NameIsNeverResolved(milliseconds) {
    const auto lookups = std::make_shared<HeldLookups>();
    lookups->HoldNext();
    Scene scene{HostAt(1, Link::kHttp), lookups, {}};
    scene.info.host = kOwnName;
    return scene;
}

Scene NameIsNotResolvedAgain(milliseconds) {
    struct Host {
        ServerPointer server = Serve(Link::kHttp, OneRequestPerConnection());
        HeldLookups lookups;
    };
    const auto host = std::make_shared<Host>();
    Scene scene{HostAt(host->server->port(), Link::kHttp), host, {}};
    scene.info.host = kOwnName;
    scene.prepare = [host](Kalvex& object) {
        ReadOnce(object);
        host->lookups.HoldNext();
    };
    return scene;
}

Scene HandshakeStallsLater(milliseconds) {
    const ServerPointer server = Serve(Link::kHttps, OneRequestPerConnection());
    Scene scene = SceneAt(server, Link::kHttps);
    scene.prepare = [server](Kalvex& object) {
        ReadOnce(object);
        Fault stall = Faults::StallOnConnect();
        stall.times = 1;
        server->InjectFault(stall);
    };
    return scene;
}

/// Credentials that are longer than what the sockets on the way hold.
Scene RequestIsNotTaken(milliseconds) {
    static const std::string long_name(4UL << 20, 'x');
    Scene scene = SceneAt(std::make_shared<StallingHost>(StallAfter(kChallenge)), Link::kHttp);
    scene.info.user = long_name;
    return scene;
}

/// Asks for credentials on each connection and closes it, `delay` after the request.
Scene HangsUpAfter(milliseconds delay) {
    simhost::ServerOptions options = OneRequestPerConnection();
    options.user = bench::kUser;
    options.password = bench::kPassword;
    options.round_trip_delay = delay;
    return SceneAt(Serve(Link::kHttp, options), Link::kHttp);
}

}  // namespace

const std::vector<Stall>& Stalls() {
    static const auto kDrip = Faults::SlowDrip(1, milliseconds(kDripMilliseconds));
    static const std::vector<Stall> stalls = {
        {FailurePhase::kResolving, "is never answered", Moment::kConnecting, NameIsNeverResolved},
        {FailurePhase::kResolving, "is never answered again", Moment::kAsking,
         NameIsNotResolvedAgain},
        {FailurePhase::kConnecting, "is never completed", Moment::kConnecting,
         Plain<bench::FullBacklog>(Link::kHttp)},
        {FailurePhase::kConnecting, "is never completed, for TLS", Moment::kConnecting,
         Plain<bench::FullBacklog>(Link::kHttps)},
        {FailurePhase::kTlsHandshake, "is never answered", Moment::kConnecting,
         Acting(AwaitHangUp, Link::kHttps)},
        {FailurePhase::kTlsHandshake, "is never answered again", Moment::kAsking,
         HandshakeStallsLater},
        {FailurePhase::kTlsHandshake, "stops within a record", Moment::kConnecting,
         Acting(StallAfter(kPartOfRecord), Link::kHttps)},
        {FailurePhase::kTlsHandshake, "drips within a record", Moment::kConnecting,
         Acting(DripAfter(kPartOfRecord), Link::kHttps)},
        {FailurePhase::kSending, "is not taken", Moment::kAsking, RequestIsNotTaken},
        {FailurePhase::kWaiting, "never begins", Moment::kAsking,
         Acting(StallAfter(""), Link::kHttp)},
        {FailurePhase::kWaiting, "never begins, over TLS", Moment::kAsking,
         OverTls(Faults::Stall())},
        {FailurePhase::kWaiting, "never begins after a challenge", Moment::kAsking,
         Acting(StallAfter(kChallenge), Link::kHttp)},
        {FailurePhase::kWaiting, "is session tickets without end", Moment::kAsking,
         Plain<TicketHost>(Link::kHttps)},
        {FailurePhase::kReceiving, "stops within the head", Moment::kAsking,
         Acting(StallAfter(kPartOfHead), Link::kHttp)},
        {FailurePhase::kReceiving, "stops within the body", Moment::kAsking,
         Acting(StallAfter(kPartOfBody), Link::kHttp)},
        {FailurePhase::kReceiving, "stops within the body, over TLS", Moment::kAsking,
         OverTls(Faults::WrongLength(1000))},
        {FailurePhase::kReceiving, "drips within the head", Moment::kAsking,
         Acting(DripAfter(kPartOfHead), Link::kHttp)},
        {FailurePhase::kReceiving, "drips within the body", Moment::kAsking,
         Acting(DripAfter(kPartOfBody), Link::kHttp)},
        {FailurePhase::kReceiving, "drips, over TLS", Moment::kAsking, OverTls(kDrip)},
        {FailurePhase::kNone, "host refuses, pause before the next", Moment::kPausing,
         Plain<bench::ClosedPort>(Link::kHttp)},
        // Three of the host's delays make a request.
        {FailurePhase::kNone, "host hangs up after each challenge", Moment::kAsking,
         [](milliseconds limit) { return HangsUpAfter(limit * 2 / 5); }},
        {FailurePhase::kNone, "the same at once, work never ends", Moment::kWorking,
         [](milliseconds) { return HangsUpAfter(milliseconds(0)); }},
    };
    return stalls;
}

}  // namespace time_limits
