// One library with the module's log and one without it are made of this file.
#include <algorithm>

#include "module_work.h"
#include "process_use.h"

/// The least processor time that one of `requests` readings of the packages took, in seconds.
extern "C" __attribute__((visibility("default"))) double SecondsOfRequest(std::uint16_t port,
                                                                          std::size_t packages,
                                                                          int requests) {
    Zentar::Agentless::Kalvex host(bench::HostAt(port, bench::Link::kHttp));
    double least = 1e9;
    for (int i = 0; i < requests; ++i) {
        const double started = bench::ProcessorSeconds();
        bench::ReadPackages(host, packages);
        least = std::min(least, bench::ProcessorSeconds() - started);
    }
    return least;
}
