#include "common/platform/socket_habits.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace Zentar {

void AcknowledgeAtOnce([[maybe_unused]] int socket) {
#if defined(TCP_QUICKACK)
    const int on = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
#endif
}

int OpenTcpSocket(int family) {
#if defined(SOCK_CLOEXEC)
    return socket(family, SOCK_STREAM | SOCK_CLOEXEC, IPPROTO_TCP);
#else
    const int made = socket(family, SOCK_STREAM, IPPROTO_TCP);
    if (made >= 0) {
        fcntl(made, F_SETFD, FD_CLOEXEC);
    }
    return made;
#endif
}

}  // namespace Zentar
