#include "replay_server.h"

#include <array>
#include <atomic>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <cstdio>
#include <memory>
#include <string_view>
#include <thread>
#include <utility>

#include "data_segments.h"

namespace bench {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;

constexpr std::size_t kChunkBytes = 32UL * 1024;
constexpr std::string_view kEndOfRequest = "</CIM>\n";

void AppendChunk(std::string_view data, std::string& framed) {
    char size[24];
    std::snprintf(size, sizeof size, "%zx\r\n", data.size());
    framed.append(size).append(data).append("\r\n");
}

void AppendChunks(std::string_view data, std::string& framed) {
    for (; !data.empty(); data.remove_prefix(std::min(kChunkBytes, data.size()))) {
        AppendChunk(data.substr(0, kChunkBytes), framed);
    }
}

std::string_view MessageId(std::string_view request) {
    constexpr std::string_view before = "<MESSAGE ID=\"";
    const auto begin = request.find(before) + before.size();
    return request.substr(begin, request.find('"', begin) - begin);
}

class ReplayServer : public Service {
public:
    explicit ReplayServer(const ReplyText& reply) : before_id_(reply.before_id) {
        AppendChunks(reply.after_id, framed_rest_);
        framed_rest_ += "0\r\n\r\n";
        std::thread([this] { Accept(); }).detach();
    }

    std::uint16_t port() const override { return acceptor_.local_endpoint().port(); }

    Counts counts() const override {
        Counts counts;
        counts.connections = connections_;
        counts.requests = requests_;
        counts.segments = segments_;
        return counts;
    }

private:
    void Accept() {
        for (;;) {
            auto connection = std::make_shared<tcp::socket>(acceptor_.accept());
            ++connections_;
            std::thread([this, connection] { Converse(*connection); }).detach();
        }
    }

    void Converse(tcp::socket& connection) {
        connection.set_option(tcp::no_delay(true));
        std::size_t segments = 0;
        boost::system::error_code ended;
        for (std::string request;;) {
            const std::size_t size =
                asio::read_until(connection, asio::dynamic_buffer(request), kEndOfRequest, ended);
            if (ended) {
                return;
            }
            const std::size_t arrived = DataSegmentsReceived(connection.native_handle());
            segments_ += arrived - std::exchange(segments, arrived);
            ++requests_;
            Answer(connection, MessageId(request));
            request.erase(0, size);
        }
    }

    void Answer(tcp::socket& connection, std::string_view id) const {
        std::string start =
            "HTTP/1.1 200 OK\r\nContent-Type: application/xml; charset=utf-8\r\n"
            "Transfer-Encoding: chunked\r\nCIMOperation: MethodResponse\r\n\r\n";
        AppendChunk(before_id_ + std::string(id), start);
        boost::system::error_code ignored;
        asio::write(
            connection,
            std::array<asio::const_buffer, 2>{asio::buffer(start), asio::buffer(framed_rest_)},
            ignored);
    }

    const std::string before_id_;
    std::string framed_rest_;
    asio::io_context io_;
    tcp::acceptor acceptor_{io_, {asio::ip::address_v4::loopback(), 0}};
    std::atomic<std::size_t> connections_ = 0;
    std::atomic<std::size_t> requests_ = 0;
    std::atomic<std::size_t> segments_ = 0;
};

}  // namespace

std::unique_ptr<Service> MakeReplayServer(const ReplyText& reply) {
    return std::make_unique<ReplayServer>(reply);
}

ServerProcess PackagesServer(std::size_t packages) {
    return ServerProcess([=] { return MakeReplayServer(PackagesReply(packages)); });
}

}  // namespace bench
