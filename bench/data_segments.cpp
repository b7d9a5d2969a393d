#include "data_segments.h"

#include <linux/tcp.h>  // the C library's tcp_info ends before the counts of segments
#include <netinet/in.h>
#include <sys/socket.h>

namespace bench {

std::size_t DataSegmentsReceived(int socket) {
    tcp_info info{};
    socklen_t size = sizeof info;
    getsockopt(socket, IPPROTO_TCP, TCP_INFO, &info, &size);
    return info.tcpi_data_segs_in;
}

}  // namespace bench
