#include "cli/connection_probe.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl.hpp>
#include <chrono>
#include <memory>
#include <sstream>

#include "cli/command_error.h"

namespace command {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;
using Clock = std::chrono::steady_clock;

constexpr const char* kCheckPort =
    "check --port (CIM servers listen on 5989 for https, 5988 for http) and that the host's CIM "
    "service runs";

std::string Seconds(double seconds) {
    std::ostringstream text;
    text << seconds << (seconds == 1 ? " second" : " seconds");
    return text.str();
}

/// Any version and key that OpenSSL still knows, for this connection alone: old hosts have no
/// better, and the certificate is not tested anyway.
asio::ssl::context LenientTls() {
    asio::ssl::context context(asio::ssl::context::tls_client);
    SSL_CTX* const native = context.native_handle();
    SSL_CTX_set_security_level(native, 0);
    SSL_CTX_set_min_proto_version(native, TLS1_VERSION);
    SSL_CTX_set_max_proto_version(native, 0);
    SSL_CTX_set_options(native, SSL_OP_LEGACY_SERVER_CONNECT);
    context.set_verify_mode(asio::ssl::verify_none);
    return context;
}

class Probe {
public:
    explicit Probe(const HostOptions& options)
        : options_(options),
          deadline_(Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                       std::chrono::duration<double>(options.connect_timeout))),
          socket_(*io_) {}

    void Run() {
        Connect(Resolve());
        if (options_.transport == Transport::kHttps) {
            MakeTlsHandshake();
        }
    }

private:
    /// Runs the operation that `start` begins; `cancel` ends it when the time is over.
    template <class Start, class Cancel>
    error_code Finish(Clock::time_point deadline, Start start, Cancel cancel) {
        error_code outcome = asio::error::timed_out;
        start([&outcome](const error_code& error, auto&&...) { outcome = error; });
        io_->restart();
        io_->run_until(deadline);
        if (!io_->stopped()) {
            cancel();
            return asio::error::timed_out;
        }
        return outcome;
    }

    tcp::resolver::results_type Resolve() {
        auto resolver = std::make_shared<tcp::resolver>(*io_);
        auto found = std::make_shared<tcp::resolver::results_type>();
        auto outcome = std::make_shared<error_code>(asio::error::timed_out);
        resolver->async_resolve(options_.host, std::to_string(options_.PortOrDefault()),
                                [resolver, found, outcome](const error_code& error, auto results) {
                                    *outcome = error;
                                    *found = results;
                                });
        io_->run_until(deadline_);
        if (*outcome == asio::error::timed_out && !io_->stopped()) {
            AbandonResolver();
            Fail("the name \"" + options_.host + "\" was not resolved within " +
                 Seconds(options_.connect_timeout) +
                 "; check the name server, or give the host's address");
        }
        if (*outcome) {
            Fail("cannot find the host \"" + options_.host + "\" (" + outcome->message() +
                 "); check the spelling of --host, or give its address");
        }
        return *found;
    }

    /// A name look-up under way cannot be stopped, and would be waited for on destruction.
    void AbandonResolver() { new std::shared_ptr<asio::io_context>(io_); }

    void Connect(const tcp::resolver::results_type& addresses) {
        error_code outcome;
        std::size_t left = addresses.size();
        for (const auto& address : addresses) {
            outcome = ConnectTo(address.endpoint(), left--);
            if (!outcome) {
                return;
            }
        }
        FailToConnect(outcome);
    }

    /// Each address gets its share of the time that is left.
    error_code ConnectTo(const tcp::endpoint& endpoint, std::size_t addresses_left) {
        const auto now = Clock::now();
        const auto share = (deadline_ - now) / static_cast<Clock::rep>(addresses_left);
        socket_ = tcp::socket(*io_);
        const auto start = [&](auto handler) { socket_.async_connect(endpoint, handler); };
        return Finish(now + share, start, [this] { Abort(); });
    }

    void FailToConnect(const error_code& error) {
        if (error == asio::error::timed_out) {
            Fail(Place() + " did not answer within " + Seconds(options_.connect_timeout) +
                 "; check the address and firewalls, or give a longer --connect-timeout");
        }
        if (error == asio::error::connection_refused) {
            Fail(Place() + " refused the connection; " + kCheckPort);
        }
        Fail(Place() + " cannot be reached (" + error.message() +
             "); check the address and the network");
    }

    void MakeTlsHandshake() {
        asio::ssl::context context = LenientTls();
        asio::ssl::stream<tcp::socket&> stream(socket_, context);
        error_code is_name;
        asio::ip::make_address(options_.host, is_name);
        if (is_name) {
            SSL_set_tlsext_host_name(stream.native_handle(), options_.host.c_str());
        }
        const auto start = [&](auto handler) {
            stream.async_handshake(asio::ssl::stream_base::client, handler);
        };
        const error_code outcome = Finish(deadline_, start, [this] { Abort(); });
        if (outcome) {
            FailTls(outcome);
        }
    }

    void FailTls(const error_code& error) {
        const std::string other = "; use --transport http if it speaks plain HTTP, else ";
        if (error == asio::error::timed_out) {
            Fail(Place() + " accepts connections, but made no TLS handshake within " +
                 Seconds(options_.connect_timeout) + other + kCheckPort);
        }
        if (error.category() == asio::error::get_ssl_category()) {
            Fail(Place() + " answers, but not with TLS (" + error.message() + ")" + other +
                 kCheckPort);
        }
        Fail(Place() + " closed the connection during the TLS handshake (" + error.message() + ")" +
             other + kCheckPort);
    }

    /// Ends what is under way, so that its handler runs before the objects it uses are gone.
    void Abort() {
        error_code ignored;
        socket_.close(ignored);
        io_->run();
    }

    std::string Place() const {
        return options_.host + " port " + std::to_string(options_.PortOrDefault());
    }

    [[noreturn]] static void Fail(const std::string& message) { throw UnreachableError(message); }

    const HostOptions& options_;
    Clock::time_point deadline_;
    std::shared_ptr<asio::io_context> io_ = std::make_shared<asio::io_context>();
    tcp::socket socket_;
};

}  // namespace

void ProbeConnection(const HostOptions& options) { Probe(options).Run(); }

}  // namespace command
