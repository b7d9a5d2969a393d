#include "replaying_host.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

namespace {

constexpr std::string_view kIdPlace = "ID=\"1000\"      ";
constexpr std::string_view kIdAttribute = "ID=\"";

/// The request's `ID="..."`, filled up with blanks to the place's length.
std::string IdOf(std::string_view request) {
    const std::size_t begin = std::min(request.find(kIdAttribute), request.size());
    const std::size_t end = request.find('"', begin + kIdAttribute.size());
    std::string id(request.substr(begin, end - begin));
    id += '"';
    id.resize(kIdPlace.size(), ' ');
    return id;
}

/// What the request's credentials are; empty when it has none.
std::string_view CredentialsOf(std::string_view request) {
    constexpr std::string_view kBasic = "Authorization: Basic ";
    const std::size_t begin = request.find(kBasic);
    if (begin == std::string_view::npos) {
        return {};
    }
    request.remove_prefix(begin + kBasic.size());
    return request.substr(0, request.find('\r'));
}

void SendAll(int socket, std::string_view text) {
    while (!text.empty()) {
        const ssize_t sent = ::send(socket, text.data(), text.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return;  // the client has heard enough
        }
        text.remove_prefix(static_cast<std::size_t>(sent));
    }
}

int Required(int result) {
    if (result < 0) {
        std::perror("replaying host");
        std::abort();
    }
    return result;
}

}  // namespace

std::vector<std::string> SplitReplies(std::string_view text) {
    std::vector<std::string> parts;
    while (true) {
        const std::size_t end = text.find(kReplySeparator);
        parts.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return parts;
        }
        text.remove_prefix(end + kReplySeparator.size());
    }
}

ReplayingHost::ReplayingHost()
    : listener_(Required(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))),
      stop_(Required(::eventfd(0, EFD_CLOEXEC))) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    Required(::bind(listener_, generic, size));
    Required(::listen(listener_, SOMAXCONN));
    Required(::getsockname(listener_, generic, &size));
    port_ = ntohs(address.sin_port);
    serving_ = std::thread([this] { Serve(); });
}

ReplayingHost::~ReplayingHost() {
    Required(::eventfd_write(stop_, 1));
    serving_.join();
    ::close(listener_);
    ::close(stop_);
}

void ReplayingHost::Answer(std::vector<std::string> replies) {
    const std::lock_guard lock(mutex_);
    replies_ = std::move(replies);
    answered_ = 0;
    sent_ = 0;
}

std::size_t ReplayingHost::Sent() const {
    const std::lock_guard lock(mutex_);
    return sent_;
}

std::string ReplayingHost::NextReply(std::string_view request) {
    const std::lock_guard lock(mutex_);
    if (replies_.empty()) {
        return {};
    }
    std::string reply = replies_[std::min(answered_++, replies_.size() - 1)];
    if (const std::size_t place = reply.find(kIdPlace); place != std::string::npos) {
        reply.replace(place, kIdPlace.size(), IdOf(request));
    }
    const std::string_view credentials = CredentialsOf(request);
    const std::size_t place = reply.find(kEchoPlace);
    if (place != std::string::npos && credentials.size() == kEchoPlace.size()) {
        reply.replace(place, kEchoPlace.size(), credentials);
    }
    sent_ += reply.size();
    return reply;
}

void ReplayingHost::Serve() {
    while (true) {
        std::vector<pollfd> watched = {{stop_, POLLIN, 0}, {listener_, POLLIN, 0}};
        for (const auto& [socket, request] : requests_) {
            watched.push_back({socket, POLLIN, 0});
        }
        if (::poll(watched.data(), watched.size(), -1) < 0) {
            Required(errno == EINTR ? 0 : -1);  // libFuzzer's clock
            continue;
        }
        if (watched[0].revents != 0) {
            break;
        }
        if (watched[1].revents != 0) {
            Accept();
        }
        for (std::size_t i = 2; i < watched.size(); ++i) {
            if (watched[i].revents != 0) {
                Hear(watched[i].fd);
            }
        }
    }
    for (const auto& [socket, request] : requests_) {
        ::close(socket);
    }
}

void ReplayingHost::Accept() {
    const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket >= 0) {  // or the client has gone already
        requests_[socket];
    }
}

/// Takes what has come, and answers when that ends a request.
void ReplayingHost::Hear(int socket) {
    char bytes[8192];
    const ssize_t count = ::recv(socket, bytes, sizeof bytes, 0);
    if (count <= 0) {
        ::close(socket);
        requests_.erase(socket);
        return;
    }
    std::string& request = requests_[socket];
    request.append(bytes, static_cast<std::size_t>(count));
    if (request.find("</CIM>") != std::string::npos) {
        SendAll(socket, NextReply(request));
        ::shutdown(socket, SHUT_WR);
        request.clear();
    }
}

}  // namespace fuzz
