// What the operating system is asked for on sockets.
#pragma once

namespace Zentar {

/// Has the system acknowledge what arrives next at once. Servers that leave Nagle's algorithm on
/// hold an answer back until what they sent before has been acknowledged, which a delayed
/// acknowledgement makes 40 ms. Holds for a short time, so it is asked for before every read. Does
/// nothing where the system offers no such thing.
void AcknowledgeAtOnce(int socket);

/// A TCP socket of the address family, which programs that the process starts do not inherit. -1,
/// with errno, when there is none.
int OpenTcpSocket(int family);

}  // namespace Zentar
