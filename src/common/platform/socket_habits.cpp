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

void CloseOnExec(int descriptor) { fcntl(descriptor, F_SETFD, FD_CLOEXEC); }

}  // namespace Zentar
