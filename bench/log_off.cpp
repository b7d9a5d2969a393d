// One library with the module's log and one without it are made of this file.
#include "module_work.h"
#include "process_use.h"

/// The processor time that reading the packages takes, in seconds. Every call in a process reads
/// the same host.
extern "C" __attribute__((visibility("default"))) double SecondsOfRequest(std::uint16_t port,
                                                                          std::size_t packages) {
    static Zentar::Agentless::Kalvex host(bench::HostAt(port, bench::Link::kHttp));
    const double started = bench::ProcessorSeconds();
    bench::ReadPackages(host, packages);
    return bench::ProcessorSeconds() - started;
}
