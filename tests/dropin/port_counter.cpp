// What an application's plug-in does with the module.
#include <cstdint>
#include <vector>

#include "module/exsi/kalvex.h"

/// The number of the host's Ethernet ports, or -1 when they cannot be read.
extern "C" KALVEX_EXPORT int CountPorts(std::uint16_t port) {
    ZentarConnection::ConnectionInfo info;
    info.host = "127.0.0.1";
    info.port = port;
    info.connection_type = 1;
    info.connection_case = 2;
    Zentar::Agentless::Kalvex host(info);
    std::vector<Zentar::ZentarAgentless::PhysicalPort> ports;
    return host.GetEthernetPorts(ports) == 0 ? static_cast<int>(ports.size()) : -1;
}
