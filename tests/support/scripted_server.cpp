#include "support/scripted_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "support/scripted_link.h"

namespace support {

namespace {

constexpr std::size_t kReadSize = 64 * 1024;
constexpr int kDripMilliseconds = 10;
constexpr std::chrono::seconds kPatience(30);

std::string Between(const std::string& text, const std::string& before, const std::string& after) {
    const std::size_t begin = text.find(before);
    if (begin == std::string::npos) {
        return {};
    }
    const std::size_t from = begin + before.size();
    return text.substr(from, text.find(after, from) - from);
}

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
        text.replace(at, what.size(), by);
    }
    return text;
}

/// False when the client hung up before the request was whole.
bool Receive(ScriptedLink& link, RecordedRequest& request) {
    std::string bytes;
    std::size_t head_end = std::string::npos;
    std::size_t length = 0;
    while (head_end == std::string::npos || bytes.size() < head_end + length) {
        const std::string more = link.Receive(kReadSize);
        if (more.empty()) {
            return false;
        }
        bytes += more;
        if (head_end == std::string::npos && bytes.find("\r\n\r\n") != std::string::npos) {
            head_end = bytes.find("\r\n\r\n") + 4;
            length = std::stoul("0" + Between(bytes, "\r\ncontent-length: ", "\r\n"));
        }
    }
    request.head = bytes.substr(0, head_end);
    request.body = bytes.substr(head_end);
    return true;
}

void SendInRecords(ScriptedLink& link, std::string_view text, std::size_t size) {
    for (; !text.empty(); text.remove_prefix(std::min(size, text.size()))) {
        link.SendRecord({TlsRecord::kContent, std::string(text.substr(0, size))});
    }
}

/// A write to a connection that the client has closed must not end the test program, and the
/// process's own setting must stay as the client's user would have it.
void BlockSigpipe() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace

std::string RecordedRequest::Header(const std::string& name) const {
    return Between(head, "\r\n" + name + ": ", "\r\n");
}

std::string RecordedRequest::MessageId() const { return Between(body, "<MESSAGE ID=\"", "\""); }

Step AwaitRequest() { return {Step::kAwaitRequest, {}}; }
Step AwaitByte() { return {Step::kAwaitByte, {}}; }
Step Send(std::string text) { return {Step::kSend, std::move(text)}; }
Step Drip(std::string text) { return {Step::kDrip, std::move(text)}; }
Step Flood(std::string text) { return {Step::kFlood, std::move(text)}; }
Step SendTickets(int count) { return {Step::kSendTickets, {}, count}; }
Step SendKeyUpdates(int count) { return {Step::kSendKeyUpdates, {}, count}; }
Step AskForKeyUpdates(int count) { return {Step::kAskForKeyUpdates, {}, count}; }
Step SendRecords(TlsRecord record, int count) {
    return {Step::kSendRecords, {}, count, std::move(record)};
}
Step SendInRecords(std::string text, int size) {
    return {Step::kSendInRecords, std::move(text), size};
}
Step AwaitDelivery() { return {Step::kAwaitDelivery, {}}; }
Step AwaitCue() { return {Step::kAwaitCue, {}}; }
Step Close() { return {Step::kClose, {}}; }
Step Drop() { return {Step::kDrop, {}}; }
Step Reset() { return {Step::kReset, {}}; }

Conversation Replies(const std::vector<std::string>& replies) {
    Conversation conversation;
    for (const std::string& reply : replies) {
        conversation.push_back(AwaitRequest());
        conversation.push_back(Send(reply));
    }
    return conversation;
}

Conversation operator+(Conversation first, const Conversation& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

ScriptedServer::ScriptedServer(std::vector<Conversation> conversations)
    : conversations_(std::move(conversations)) {
    Listen();
}

ScriptedServer::ScriptedServer(std::vector<Conversation> conversations, const TlsOptions& tls)
    : conversations_(std::move(conversations)), tls_(std::make_shared<TlsServerContext>(tls)) {
    Listen();
}

void ScriptedServer::Listen() {
    listener_ = socket(AF_INET, SOCK_STREAM, 0);
    stop_ = eventfd(0, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(listener_, generic, size) != 0 || listen(listener_, SOMAXCONN) != 0 ||
        getsockname(listener_, generic, &size) != 0) {
        throw std::runtime_error("a scripted server cannot listen");
    }
    port_ = ntohs(address.sin_port);
    accepting_ = std::thread([this] { Accept(); });
}

ScriptedServer::~ScriptedServer() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    eventfd_write(stop_, 1);
    accepting_.join();
    for (std::thread& conversing : conversing_) {
        conversing.join();
    }
    close(listener_);
    close(stop_);
}

std::vector<RecordedRequest> ScriptedServer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::size_t ScriptedServer::connections() const {
    const std::lock_guard lock(mutex_);
    return connections_;
}

std::vector<TlsSeen> ScriptedServer::AwaitHandshakes(std::size_t count) const {
    AwaitOrFail([&] { return handshakes_.size() >= count; });
    const std::lock_guard lock(mutex_);
    std::vector<TlsSeen> seen;
    for (std::size_t connection = 0; connection < count; ++connection) {
        seen.push_back(handshakes_.at(connection));
    }
    return seen;
}

void ScriptedServer::Cue() {
    const std::lock_guard lock(mutex_);
    ++cues_;
    changed_.notify_all();
}

void ScriptedServer::AwaitEndOf(std::size_t connection) const {
    AwaitOrFail([&] { return ended_.count(connection) != 0; });
}

void ScriptedServer::AwaitHangUp(std::size_t connection) const {
    AwaitOrFail([&] { return hung_up_.count(connection) != 0; });
}

void ScriptedServer::AwaitOrFail(const std::function<bool()>& condition) const {
    std::unique_lock lock(mutex_);
    if (!changed_.wait_for(lock, kPatience, condition)) {
        throw std::runtime_error("a scripted server waited in vain");
    }
}

void ScriptedServer::Accept() {
    BlockSigpipe();
    while (true) {
        pollfd waits[] = {{listener_, POLLIN, 0}, {stop_, POLLIN, 0}};
        poll(waits, 2, -1);
        if (waits[1].revents != 0) {
            return;
        }
        const int socket = accept(listener_, nullptr, nullptr);
        const std::lock_guard lock(mutex_);
        const std::size_t connection = connections_++;
        if (connection >= conversations_.size()) {
            close(socket);
            continue;
        }
        conversing_.emplace_back([this, socket, connection] { Converse(socket, connection); });
    }
}

void ScriptedServer::Converse(int socket, std::size_t connection) {
    ScriptedLink link(socket, stop_, tls_ ? tls_->get() : nullptr);
    RecordedRequest last;
    last.connection = connection;
    try {
        const bool shaken = link.Handshake();
        if (tls_) {
            const std::lock_guard lock(mutex_);
            handshakes_[connection] = shaken ? SeenBy(link.tls()) : TlsSeen();
            changed_.notify_all();
        }
        for (const Step& step : conversations_[connection]) {
            if (!shaken || !link.is_open()) {
                break;
            }
            Perform(link, step, last);
        }
        Count(ended_, connection);
        while (link.is_open() && shaken && !link.Receive(kReadSize).empty()) {
        }
        Count(hung_up_, connection);
    } catch (const ScriptedLink::Stopped&) {
        return;
    }
}

void ScriptedServer::Perform(ScriptedLink& link, const Step& step, RecordedRequest& last) {
    switch (step.kind) {
        case Step::kAwaitRequest:
            if (Receive(link, last)) {
                const std::lock_guard lock(mutex_);
                requests_.push_back(last);
            }
            break;
        case Step::kAwaitByte:
            link.Receive(1);
            break;
        case Step::kSend:
            link.Send(Replaced(step.text, "@ID@", last.MessageId()));
            break;
        case Step::kDrip:
            link.Send(step.text);
            while (!link.HangsUpWithin(kDripMilliseconds)) {
                link.Send(step.text.substr(step.text.size() - 1));
            }
            break;
        case Step::kFlood:
            while (link.Send(step.text)) {
            }
            break;
        case Step::kSendTickets:
            for (int i = 0; i < step.count && !link.HangsUpWithin(0) && link.SendTicket(); ++i) {
            }
            break;
        case Step::kSendKeyUpdates:
            for (int i = 0; i < step.count && !link.HangsUpWithin(0) && link.SendKeyUpdate(); ++i) {
            }
            break;
        case Step::kAskForKeyUpdates:
            for (int i = 0; i < step.count && !link.HangsUpWithin(0) && link.AskForKeyUpdate();
                 ++i) {
            }
            break;
        case Step::kSendRecords:
            for (int i = 0; i < step.count && link.SendRecord(step.record); ++i) {
            }
            break;
        case Step::kSendInRecords:
            SendInRecords(link, Replaced(step.text, "@ID@", last.MessageId()),
                          static_cast<std::size_t>(step.count));
            break;
        case Step::kAwaitDelivery:
            link.AwaitDelivery();
            break;
        case Step::kAwaitCue:
            PassCue();
            break;
        case Step::kClose:
            link.Close();
            break;
        case Step::kDrop:
            link.Drop();
            break;
        case Step::kReset:
            link.Reset();
            break;
    }
}

void ScriptedServer::PassCue() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return cues_ > 0 || stopping_; });
    if (stopping_) {
        throw ScriptedLink::Stopped();
    }
    --cues_;
}

void ScriptedServer::Count(std::map<std::size_t, bool>& done, std::size_t connection) {
    const std::lock_guard lock(mutex_);
    done[connection] = true;
    changed_.notify_all();
}

}  // namespace support
