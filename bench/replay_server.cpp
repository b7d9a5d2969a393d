#include "replay_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace bench {

namespace {

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
        Listen();
        std::thread([this] { Accept(); }).detach();
    }

    std::uint16_t port() const override { return port_; }

    Counts counts() const override {
        Counts counts;
        counts.connections = connections_;
        counts.requests = requests_;
        counts.reads = reads_;
        return counts;
    }

private:
    void Listen() {
        listener_ = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* generic = reinterpret_cast<sockaddr*>(&address);
        if (bind(listener_, generic, size) != 0 || listen(listener_, SOMAXCONN) != 0 ||
            getsockname(listener_, generic, &size) != 0) {
            throw std::runtime_error("cannot listen");
        }
        port_ = ntohs(address.sin_port);
    }

    void Accept() {
        for (;;) {
            const int connection = accept(listener_, nullptr, nullptr);
            ++connections_;
            std::thread([this, connection] { Converse(connection); }).detach();
        }
    }

    void Converse(int connection) {
        const int on = 1;
        setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        for (std::string request; ReadRequest(connection, request); request.clear()) {
            ++requests_;
            Answer(connection, MessageId(request));
        }
        close(connection);
    }

    bool ReadRequest(int connection, std::string& request) {
        char buffer[8192];
        while (!request.ends_with(kEndOfRequest)) {
            const ssize_t count = read(connection, buffer, sizeof buffer);
            if (count <= 0) {
                return false;
            }
            ++reads_;
            request.append(buffer, static_cast<std::size_t>(count));
        }
        return true;
    }

    void Answer(int connection, std::string_view id) const {
        std::string start =
            "HTTP/1.1 200 OK\r\nContent-Type: application/xml; charset=utf-8\r\n"
            "Transfer-Encoding: chunked\r\nCIMOperation: MethodResponse\r\n\r\n";
        AppendChunk(before_id_ + std::string(id), start);
        SendAll(connection, start);
        SendAll(connection, framed_rest_);
    }

    static void SendAll(int connection, std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t sent = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent <= 0) {
                return;
            }
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
    }

    const std::string before_id_;
    std::string framed_rest_;
    int listener_ = -1;
    std::uint16_t port_ = 0;
    std::atomic<std::size_t> connections_ = 0;
    std::atomic<std::size_t> requests_ = 0;
    std::atomic<std::size_t> reads_ = 0;
};

}  // namespace

std::unique_ptr<Service> MakeReplayServer(const ReplyText& reply) {
    return std::make_unique<ReplayServer>(reply);
}

}  // namespace bench
