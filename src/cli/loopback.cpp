#include "cli/loopback.h"

#include <arpa/inet.h>
#include <strings.h>

namespace command {

bool IsLoopback(const std::string& host) {
    in_addr v4{};
    if (inet_pton(AF_INET, host.c_str(), &v4) == 1) {
        constexpr unsigned kLoopbackNet = 127;
        return ntohl(v4.s_addr) >> 24U == kLoopbackNet;
    }
    in6_addr v6{};
    if (inet_pton(AF_INET6, host.c_str(), &v6) == 1) {
        return IN6_IS_ADDR_LOOPBACK(&v6);
    }
    return strcasecmp(host.c_str(), "localhost") == 0;
}

}  // namespace command
