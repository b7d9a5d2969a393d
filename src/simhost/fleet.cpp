#include "simhost/fleet.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "simhost/connections.h"
#include "simhost/descriptor_limit.h"
#include "simhost/fleet_identity.h"
#include "simhost/listener.h"

namespace simhost {

namespace {

/// Connections beyond are closed at once. Where descriptors are scarce there may be fewer.
constexpr std::size_t kMaxFleetConnections = 512;
constexpr std::size_t kLeastFleetConnections = 64;

/// A connection's socket, and what its thread waits with.
constexpr std::size_t kDescriptorsOfConnection = 4;

/// For the rest of the process, which may be a client of the fleet.
constexpr std::size_t kOtherDescriptors = 256;

constexpr std::chrono::milliseconds kFleetSettleLimit{1000};

void RequirePorts(std::size_t first, std::size_t count) {
    constexpr std::size_t kPorts = std::numeric_limits<std::uint16_t>::max();
    const std::size_t available = first == 0 ? kPorts : kPorts - first + 1;
    if (count > available) {
        throw std::invalid_argument("there are only " + std::to_string(available) + " ports for " +
                                    std::to_string(count) + " hosts");
    }
}

/// How many connections the limit of descriptors allows besides so many listening sockets.
std::size_t MostConnections(std::size_t hosts) {
    const std::size_t idle = hosts + kOtherDescriptors;
    const std::size_t least = idle + kLeastFleetConnections * kDescriptorsOfConnection;
    const std::size_t allowed =
        RaiseDescriptorLimit(idle + kMaxFleetConnections * kDescriptorsOfConnection);
    if (allowed < least) {
        throw std::system_error(std::make_error_code(std::errc::too_many_files_open),
                                std::to_string(hosts) + " hosts need " + std::to_string(least) +
                                    " descriptors, and this process may have " +
                                    std::to_string(allowed));
    }
    return std::min(kMaxFleetConnections, (allowed - idle) / kDescriptorsOfConnection);
}

}  // namespace

class Fleet::Impl {
public:
    Impl(const HostDescription& description, const ServerOptions& options, std::size_t count,
         unsigned fault_percent)
        : context(options, description.host().name, Journal::Keeps::kCountersOnly),
          connections(context, MostConnections(count)),
          listener(options) {
        RequirePorts(options.port, count);
        for (std::size_t i = 0; i < count; ++i) {
            const auto number = static_cast<std::uint32_t>(i + 1);
            const auto port = static_cast<std::uint16_t>(options.port == 0 ? 0 : options.port + i);
            Add(description, number, port, FleetFaultOf(number, fault_percent));
        }
        listener.Start();
    }

    struct Member {
        Member(const HostDescription& description, std::uint32_t number, FleetFault its_fault)
            : host(description, number), fault(its_fault) {}

        ServedHost host;
        const FleetFault fault;
        std::uint16_t port = 0;
    };

    void Add(const HostDescription& description, std::uint32_t number, std::uint16_t port,
             FleetFault fault) {
        Member& member = members.emplace_back(description, number, fault);
        member.host.refuses_everyone = fault == FleetFault::kRefusing;
        if (auto server_fault = ServerFaultOf(fault)) {
            member.host.faults.Add(*std::move(server_fault));
        }
        member.port = fault == FleetFault::kDead
                          ? listener.Refuse(port)
                          : listener.Listen(port, [this, &member](NativeSocket accepted) {
                                connections.TakeUp(member.host, accepted);
                            });
    }

    ServerContext context;
    std::deque<Member> members;
    Connections connections;
    // The last member is the first to go: nobody can connect while the connections are ending.
    Listener listener;
};

Fleet::Fleet(const HostDescription& description, const ServerOptions& options, std::size_t count,
             unsigned fault_percent)
    : impl_(std::make_unique<Impl>(description, options, count, fault_percent)) {}

Fleet::~Fleet() = default;

std::vector<FleetHost> Fleet::Hosts() const {
    std::vector<FleetHost> hosts;
    hosts.reserve(impl_->members.size());
    for (const Impl::Member& member : impl_->members) {
        const ServedHost& host = member.host;
        hosts.push_back({host.number, NumberedName(host.description.host().name, host.number),
                         member.port, member.fault});
    }
    return hosts;
}

std::vector<std::uint16_t> Fleet::Ports() const {
    std::vector<std::uint16_t> ports;
    ports.reserve(impl_->members.size());
    for (const Impl::Member& member : impl_->members) {
        ports.push_back(member.port);
    }
    return ports;
}

Counters Fleet::counters() const {
    impl_->listener.AcceptPending();
    return impl_->context.journal.counters(kFleetSettleLimit);
}

void Fleet::InjectFault(const Fault& fault) {
    for (Impl::Member& member : impl_->members) {
        member.host.faults.Add(fault);
    }
}

}  // namespace simhost
