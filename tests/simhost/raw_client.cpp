#include "simhost/raw_client.h"

#include <array>
#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl.hpp>
#include <boost/asio/write.hpp>
#include <optional>
#include <regex>

namespace simhost_test {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

struct RawClient::Impl {
    asio::io_context io;
    tcp::socket socket{io};
    asio::ssl::context context{asio::ssl::context::tls_client};
    std::optional<asio::ssl::stream<tcp::socket&>> tls;
    std::string arrived;
    End end = End::kNone;
};

std::string Reply::Header(std::string_view name) const {
    const std::regex header("\r\n" + std::string(name) + ": ?([^\r]*)\r\n", std::regex::icase);
    std::smatch match;
    return std::regex_search(head, match, header) ? match[1].str() : "";
}

bool Reply::HasHeader(std::string_view name) const {
    return std::regex_search(head, std::regex("\r\n" + std::string(name) + ":", std::regex::icase));
}

RawClient::RawClient(const simhost::Server& server)
    : RawClient(server.port(), server.Url().rfind("https:", 0) == 0) {}

RawClient::RawClient(std::uint16_t port) : RawClient(port, false) {}

RawClient::RawClient(std::uint16_t port, bool tls, const RawClient* earlier)
    : impl_(std::make_unique<Impl>()) {
    impl_->socket.connect({asio::ip::make_address("127.0.0.1"), port});
    if (tls) {
        SSL_CTX_set_security_level(impl_->context.native_handle(), 0);
        SSL_CTX_set_min_proto_version(impl_->context.native_handle(), TLS1_VERSION);
        impl_->context.clear_options(asio::ssl::context::no_tlsv1 | asio::ssl::context::no_tlsv1_1);
        impl_->tls.emplace(impl_->socket, impl_->context);
        if (earlier != nullptr) {
            SSL_set_session(impl_->tls->native_handle(),
                            SSL_get_session(earlier->impl_->tls->native_handle()));
        }
        impl_->tls->handshake(asio::ssl::stream_base::client);
    }
}

RawClient RawClient::OverTls(std::uint16_t port) { return {port, true}; }

RawClient RawClient::WithoutTls(const simhost::Server& server) { return RawClient(server.port()); }

RawClient::RawClient(RawClient&&) noexcept = default;

RawClient::~RawClient() = default;

void RawClient::Send(std::string_view bytes) {
    const auto buffer = asio::buffer(bytes.data(), bytes.size());
    impl_->tls ? asio::write(*impl_->tls, buffer) : asio::write(impl_->socket, buffer);
}

bool RawClient::ReceiveMore() {
    std::array<char, 65536> buffer;
    error_code error;
    const std::size_t size = impl_->tls ? impl_->tls->read_some(asio::buffer(buffer), error)
                                        : impl_->socket.read_some(asio::buffer(buffer), error);
    impl_->arrived.append(buffer.data(), size);
    if (error) {
        impl_->end = error == asio::error::connection_reset ? End::kReset : End::kClosed;
    }
    return !error;
}

bool RawClient::TakeBytes(Reply& reply, std::size_t size, std::string& bytes) {
    bool open = true;
    while (impl_->arrived.size() < size && open) {
        open = ReceiveMore();
    }
    const std::string taken = impl_->arrived.substr(0, size);
    impl_->arrived.erase(0, size);
    reply.raw += taken;
    bytes += taken;
    return taken.size() == size;
}

bool RawClient::TakeLine(Reply& reply, std::string& line) {
    std::size_t end = std::string::npos;
    bool open = true;
    while ((end = impl_->arrived.find("\r\n")) == std::string::npos && open) {
        open = ReceiveMore();
    }
    line.clear();
    const std::size_t size = end == std::string::npos ? impl_->arrived.size() : end + 2;
    return TakeBytes(reply, size, line) && end != std::string::npos;
}

Reply RawClient::Receive() {
    Reply reply;
    std::string line;
    do {
        if (!TakeLine(reply, line)) {
            return reply;
        }
        reply.head += line;
    } while (line != "\r\n");
    reply.status = std::stoi(reply.head.substr(9));
    if (reply.Header("Transfer-Encoding") != "chunked") {
        reply.complete = TakeBytes(reply, std::stoul(reply.Header("Content-Length")), reply.body);
        return reply;
    }
    for (;;) {
        std::string chunk_end;
        if (!TakeLine(reply, line)) {
            return reply;
        }
        const std::size_t size = std::stoul(line, nullptr, 16);
        if (size == 0) {
            break;
        }
        if (!TakeBytes(reply, size, reply.body) || !TakeLine(reply, chunk_end)) {
            return reply;
        }
    }
    while (TakeLine(reply, line)) {
        if (line == "\r\n") {
            reply.complete = true;
            break;
        }
        reply.trailers += line;
    }
    return reply;
}

Reply RawClient::Ask(std::string_view request) {
    Send(request);
    return Receive();
}

std::string RawClient::ReceiveBytes(std::size_t size) {
    Reply reply;
    TakeBytes(reply, size, reply.body);
    return reply.body;
}

void RawClient::FinishSending() {
    error_code reset_already;
    impl_->socket.shutdown(tcp::socket::shutdown_send, reset_already);
}

std::string RawClient::ReceiveAll() {
    while (ReceiveMore()) {
    }
    return std::exchange(impl_->arrived, "");
}

End RawClient::end() const { return impl_->end; }

std::string RawClient::TlsVersion() const { return SSL_get_version(impl_->tls->native_handle()); }

PeerCertificate RawClient::Certificate() const {
    const std::unique_ptr<X509, decltype(&X509_free)> certificate(
        SSL_get1_peer_certificate(impl_->tls->native_handle()), &X509_free);
    PeerCertificate result;
    char name[128] = "";
    X509_NAME_get_text_by_NID(X509_get_subject_name(certificate.get()), NID_commonName, name,
                              sizeof name);
    result.common_name = name;
    result.signature = OBJ_nid2sn(X509_get_signature_nid(certificate.get()));
    result.key_bits = EVP_PKEY_get_bits(X509_get0_pubkey(certificate.get()));
    result.expired = X509_cmp_current_time(X509_get0_notAfter(certificate.get())) < 0;
    return result;
}

RawClient RawClient::ConnectAgain(const simhost::Server& server) const {
    return {server.port(), true, this};
}

}  // namespace simhost_test
