#include "support/scripted_link.h"

#include <fcntl.h>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace support {

ScriptedLink::ScriptedLink(int socket, int stop, SSL_CTX* tls) : socket_(socket), stop_(stop) {
    fcntl(socket_, F_SETFL, O_NONBLOCK);
    // Bytes that wait for an acknowledgement would be dropped by a reset.
    const int no_delay = 1;
    setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &no_delay, sizeof no_delay);
    if (tls != nullptr) {
        tls_.reset(SSL_new(tls));
        SSL_set_fd(tls_.get(), socket_);
    }
}

ScriptedLink::~ScriptedLink() { Drop(); }

bool ScriptedLink::Handshake() {
    return !tls_ || Driven([this] { return SSL_accept(tls_.get()); }) == 1;
}

std::string ScriptedLink::Receive(std::size_t most) {
    std::string bytes(most, '\0');
    const int size = static_cast<int>(most);
    long got = 0;
    if (tls_) {
        got = Driven([&] { return SSL_read(tls_.get(), bytes.data(), size); });
    } else {
        AwaitSocket(POLLIN);
        got = recv(socket_, bytes.data(), most, 0);
    }
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return bytes;
}

bool ScriptedLink::Send(std::string_view bytes) {
    if (!tls_) {
        return SendPlain(bytes);
    }
    while (!bytes.empty()) {
        const int size = static_cast<int>(bytes.size());
        const int sent = Driven([&] { return SSL_write(tls_.get(), bytes.data(), size); });
        if (sent <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

bool ScriptedLink::SendPlain(std::string_view bytes) {
    while (!bytes.empty()) {
        AwaitSocket(POLLOUT);
        const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return true;
}

bool ScriptedLink::SendRecord(const TlsRecord& record) {
    if (!sealer_) {
        sealer_.emplace(tls_.get());
    }
    return SendPlain(sealer_->Seal(record));
}

bool ScriptedLink::SendTicket() {
    return SSL_new_session_ticket(tls_.get()) == 1 &&
           Driven([this] { return SSL_do_handshake(tls_.get()); }) == 1;
}

bool ScriptedLink::SendKeyUpdate() {
    return SSL_key_update(tls_.get(), SSL_KEY_UPDATE_NOT_REQUESTED) == 1 &&
           Driven([this] { return SSL_do_handshake(tls_.get()); }) == 1;
}

bool ScriptedLink::AskForKeyUpdate() {
    return SSL_key_update(tls_.get(), SSL_KEY_UPDATE_REQUESTED) == 1 &&
           Driven([this] { return SSL_do_handshake(tls_.get()); }) == 1;
}

void ScriptedLink::AwaitDelivery() {
    int unacknowledged = 1;
    while (unacknowledged != 0 && ioctl(socket_, SIOCOUTQ, &unacknowledged) == 0) {
        HangsUpWithin(1);
    }
}

bool ScriptedLink::HangsUpWithin(int milliseconds) { return AwaitSocket(POLLRDHUP, milliseconds); }

void ScriptedLink::Close() {
    if (tls_ && is_open()) {
        SSL_shutdown(tls_.get());
    }
    Drop();
}

void ScriptedLink::Drop() {
    if (is_open()) {
        // Bytes left unread would turn the close into a reset.
        char unread[4096];
        while (recv(socket_, unread, sizeof unread, 0) > 0) {
        }
        close(socket_);
        socket_ = -1;
    }
}

void ScriptedLink::Reset() {
    const linger at_once = {1, 0};
    setsockopt(socket_, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
    close(socket_);
    socket_ = -1;
}

template <class Call>
int ScriptedLink::Driven(Call call) {
    while (true) {
        const int result = call();
        switch (SSL_get_error(tls_.get(), result)) {
            case SSL_ERROR_WANT_READ:
                AwaitSocket(POLLIN);
                break;
            case SSL_ERROR_WANT_WRITE:
                AwaitSocket(POLLOUT);
                break;
            default:
                return result;
        }
    }
}

bool ScriptedLink::AwaitSocket(short events, int milliseconds) {
    pollfd waits[] = {{socket_, events, 0}, {stop_, POLLIN, 0}};
    poll(waits, 2, milliseconds);
    if (waits[1].revents != 0) {
        throw Stopped();
    }
    return waits[0].revents != 0;
}

}  // namespace support
