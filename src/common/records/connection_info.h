// How to reach one host's CIM server.
#pragma once

#include <cstdint>
#include <string>

namespace Zentar::ZentarConnection {

/// Connection parameters, owned and filled by the caller; the module keeps copies. The password is
/// never written to the log, and the module's copies of it are overwritten when they are no longer
/// needed.
struct ConnectionInfo {
    std::string host;            ///< host name or address, without brackets or port
    std::uint16_t port = 0;      ///< TCP port; 5989 is customary for HTTPS, 5988 for HTTP
    std::string user;
    std::string password;
    std::uint16_t reserved_1 = 0;      ///< not read by this module
    std::uint16_t reserved_2 = 3;      ///< not read by this module
    std::int32_t connection_type = 0;  ///< 0: HTTP, 1: HTTPS; anything else is invalid
    std::int32_t connection_case = 0;  ///< 2, 3 and 4 go through a CIM server; anything else does not
    std::int32_t reserved_3 = 0;       ///< not read by this module
};

}  // namespace Zentar::ZentarConnection

namespace ZentarConnection = Zentar::ZentarConnection;
