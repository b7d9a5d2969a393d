// The worker of Kalvex: every inventory query against one host.
#pragma once

#include <Pegasus/Client/CIMClient.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "common/kalvex_export.h"
#include "common/records/connection_info.h"
#include "common/records/connection_options.h"
#include "common/records/failure.h"
#include "common/records/host_records.h"
#include "common/records/network_records.h"
#include "common/records/pci_records.h"

namespace Zentar {
struct CimConnection;
class HostAccess;
}  // namespace Zentar

namespace Zentar::Agentless {

struct ListQuery;
class RowSink;

/// Holds two connections to the host and a scratch map of properties that all queries share, so an
/// object must not be used from two threads at once. Queries block for their network exchanges,
/// each bounded to 300 seconds or by the options, and return 0 on success and 1 on failure. Lists
/// are appended to, in the host's order, and never cleared; a failed query leaves them as they
/// were.
///
/// A failed allocation passes to the caller as std::bad_alloc. The object stays usable, and lists
/// keep the whole records that were appended before.
class KALVEX_EXPORT KalvexCim {
public:
    /// Connects for the namespaces "root/cimv2" and "ibm/imm0/cimv2". Never fails: a connection
    /// that could not be made is tried again by the first query that needs it.
    explicit KalvexCim(const ZentarConnection::ConnectionInfo& info);
    KalvexCim(const ZentarConnection::ConnectionInfo& info,
              const ZentarConnection::ConnectionOptions& options);
    ~KalvexCim();
    KalvexCim(const KalvexCim&) = delete;
    KalvexCim& operator=(const KalvexCim&) = delete;

    /// As those of Kalvex.
    void Cancel();
    FailureList TakeFailures();

    /// Fails only when neither OMC_Chassis nor IBM_ComputerSystem could be read; a field whose
    /// source is missing keeps what it held.
    int GetComputerSystem(ZentarAgentless::ComputerSystem& record);
    int GetOperationSystem(ZTEXSI::OperationSystem& record);
    /// True only when the host answers that it lacks the namespace "ibm/imm0/cimv2".
    bool IsUnSpportedESXIVer();

    int GetInstalledPackages(std::vector<ZentarAgentless::InstalledPackage>& packages);
    int GetIpmiRecord(std::vector<ZentarAgentless::IPMIEVENT>& events);
    int GetVMwarePrivilege(std::vector<ZTEXSI::VMwarePrivilegeData>& privileges);
    int GetEthernetPorts(std::vector<ZentarAgentless::PhysicalPort>& ports);
    int GetIPv4ProtocolInfo(std::vector<ZTEXSI::IPProtocolData>& endpoints);
    int GetIPv6ProtocolInfo(std::vector<ZTEXSI::IPProtocolData>& endpoints);
    /// Any list of "root/cimv2": gives the sink a row for each instance of its kind's class.
    int ReadList(const ListQuery& query, RowSink& sink);

    int GetPCIDevice(std::vector<Pciinventory::PCIDevice>& devices);
    int GetPCIBridge(std::vector<Pciinventory::PCIBridge>& bridges);
    int GetSystemSlot(std::vector<Pciinventory::SystemSlot>& slots);
    /// Replaces the "root/cimv2" connection by one for "root/ibmsd" for good, and reads devices,
    /// bridges and slots through it. A list that cannot be read stays as it was; the result is 1
    /// only when there was no connection to replace.
    int GetPCIInfo(Pciinventory::Pciinfo& info);

    /// Replaces a PCI base class in decimal by its word; other text stays.
    void ParseClassCode(std::string& code);
    /// Sets the text that says where the device or bridge sits: its first slot's, else its first
    /// system board's, else unchanged. Returns the result of the association query that failed, or
    /// 0.
    int RetrieveSlotAllInfo(Pegasus::CIMInstance& instance, std::string& slot_all_info);

private:
    /// Makes the whole object first, so that the destructor cleans up when connecting throws.
    explicit KalvexCim(std::shared_ptr<HostAccess> access);
    void Connect(const ZentarConnection::ConnectionInfo& info);

    /// Whether to leave the rest of a class's instances alone, which is then noted.
    bool MustStop(const char* class_name);

    void ReadChassis(const Pegasus::Array<Pegasus::CIMInstance>& chassis,
                     ZentarAgentless::ComputerSystem& record);
    void CopySlotAllInfo(const Pegasus::CIMObject& slot_or_board, std::string& slot_all_info);

    ZentarConnection::ConnectionInfo connection_info_;
    std::map<std::string, std::string> properties_;
    CimConnection* cimv2_connection_ = nullptr;
    CimConnection* hardware_connection_ = nullptr;
    std::shared_ptr<HostAccess> access_;
};

}  // namespace Zentar::Agentless
