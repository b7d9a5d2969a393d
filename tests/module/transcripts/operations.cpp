#include "operations.h"

namespace transcripts {

namespace {

using Zentar::Agentless::Kalvex;

template <class Record, int (Kalvex::*operation)(Record&)>
std::string Run(Kalvex& host) {
    Record record;
    return std::to_string((host.*operation)(record));
}

template <int family>
std::string RunForFamily(Kalvex& host) {
    std::vector<Zentar::ZTEXSI::IPProtocolData> endpoints;
    return std::to_string(host.GetIPProtocolInfo(endpoints, family));
}

std::string RunIsUnsupported(Kalvex& host) {
    return host.IsUnSpportedEXSIVersion() ? "true" : "false";
}

}  // namespace

const std::vector<Operation>& Operations() {
    using namespace Zentar;
    using ZentarAgentless::InstalledPackage, ZentarAgentless::IPMIEVENT,
        ZentarAgentless::PhysicalPort, ZTEXSI::VMwarePrivilegeData;
    static const std::vector<Operation> operations = {
        {"supported", "IsUnSpportedEXSIVersion", RunIsUnsupported},
        {"system", "GetComputerSystem",
         Run<ZentarAgentless::ComputerSystem, &Kalvex::GetComputerSystem>},
        {"hypervisor", "GetOperationSystem",
         Run<ZTEXSI::OperationSystem, &Kalvex::GetOperationSystem>},
        {"packages", "GetInstalledPackages",
         Run<std::vector<InstalledPackage>, &Kalvex::GetInstalledPackages>},
        {"events", "GetIpmiRecord", Run<std::vector<IPMIEVENT>, &Kalvex::GetIpmiRecord>},
        {"privileges", "GetVMwarePrivilege",
         Run<std::vector<VMwarePrivilegeData>, &Kalvex::GetVMwarePrivilege>},
        {"ports", "GetEthernetPorts", Run<std::vector<PhysicalPort>, &Kalvex::GetEthernetPorts>},
        {"ipv4", "GetIPProtocolInfo of IPv4", RunForFamily<0>},
        {"ipv6", "GetIPProtocolInfo of IPv6", RunForFamily<1>},
        {"pci", "GetPCIInfo", Run<Pciinventory::Pciinfo, &Kalvex::GetPCIInfo>},
    };
    return operations;
}

}  // namespace transcripts
