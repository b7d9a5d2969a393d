// The inventory of one VMware ESXi host, read over WBEM without installing anything on it.
#pragma once

#include <vector>

#include "common/kalvex_export.h"
#include "common/records/connection_info.h"
#include "common/records/connection_options.h"
#include "common/records/failure.h"
#include "common/records/host_records.h"
#include "common/records/network_records.h"
#include "common/records/pci_records.h"

namespace Zentar::Agentless {

class KalvexCim;

/// One host. Construct it, call any operations in any order, destroy it.
///
/// Every operation blocks for its network exchanges and returns 0 on success and 1 on failure, with
/// the reasons in TakeFailures and in the log. Lists are appended to and never cleared; what a
/// failed operation had read before it failed stays. An object must not be used from two threads at
/// once; separate objects are independent.
///
/// A failed allocation passes to the caller as std::bad_alloc, from the constructor too. The object
/// stays usable, lists keep the whole records that were appended before, and a single record may
/// be filled in part.
class KALVEX_EXPORT Kalvex {
public:
    /// Connects to the host. Never fails for the host's sake: one that does not answer costs three
    /// attempts with pauses of 10 seconds, for each of two connections, and is tried again by each
    /// operation.
    explicit Kalvex(const ZentarConnection::ConnectionInfo& info);
    /// The same within the given options, which say how long calls take at most. An empty options
    /// record does as none, but for threads: the host's name is resolved on a thread of its own.
    Kalvex(const ZentarConnection::ConnectionInfo& info,
           const ZentarConnection::ConnectionOptions& options);
    ~Kalvex();
    Kalvex(const Kalvex&) = delete;
    Kalvex& operator=(const Kalvex&) = delete;

    /// Ends what the object is doing, from any thread, and lets every later operation fail at once.
    /// What is under way ends within 100 ms; without options, only after the request or the pause
    /// that is under way. The object must live until it returns.
    void Cancel();

    /// The failures since the last call, in order, each once: also those of operations that
    /// returned 0, such as one device's slot that could not be asked for. On the thread of the
    /// operations.
    FailureList TakeFailures();

    /// Fails only when neither the chassis nor the management controller could be read; fields
    /// whose source is missing keep what they held.
    int GetComputerSystem(ZentarAgentless::ComputerSystem& record);
    int GetEthernetPorts(std::vector<ZentarAgentless::PhysicalPort>& ports);
    /// `family` 0 reads the IPv4 endpoints, 1 the IPv6 endpoints; with any other value nothing is
    /// read, `endpoints` is logged as it is, and the result is 0.
    int GetIPProtocolInfo(std::vector<ZTEXSI::IPProtocolData>& endpoints, int family);
    int GetInstalledPackages(std::vector<ZentarAgentless::InstalledPackage>& packages);
    int GetIpmiRecord(std::vector<ZentarAgentless::IPMIEVENT>& events);
    int GetOperationSystem(ZTEXSI::OperationSystem& record);
    /// Moves this object to the hardware provider's namespace for good: the other operations, but
    /// for the management controller's part of GetComputerSystem, then no longer find their
    /// classes. Call it last. Lists that could not be read stay as they were; the result is 0. When
    /// memory fails while it moves, the other operations find no connection any more.
    int GetPCIInfo(Pciinventory::Pciinfo& info);
    int GetVMwarePrivilege(std::vector<ZTEXSI::VMwarePrivilegeData>& privileges);
    /// True when the host answers and lacks the management controller's namespace. A host that
    /// cannot be asked counts as supported.
    bool IsUnSpportedEXSIVersion();

private:
    KalvexCim* worker_;
};

}  // namespace Zentar::Agentless
