#include "module_work.h"

#include <stdexcept>

namespace bench {

namespace {

using Zentar::Agentless::Kalvex;

void Require(bool done, const char* what) {
    if (!done) {
        throw std::runtime_error(std::string("could not read the ") + what);
    }
}

template <class Record, class... Parameters>
void ReadList(Kalvex& host, const char* what,
              int (Kalvex::*get)(std::vector<Record>&, Parameters...), Parameters... parameters) {
    std::vector<Record> records;
    Require((host.*get)(records, parameters...) == 0 && !records.empty(), what);
}

template <class Record>
void ReadRecord(Kalvex& host, const char* what, int (Kalvex::*get)(Record&)) {
    Record record;
    Require((host.*get)(record) == 0, what);
}

}  // namespace

ZentarConnection::ConnectionInfo HostAt(std::uint16_t port, Link link) {
    constexpr int kThroughCimServer = 2;
    ZentarConnection::ConnectionInfo info;
    info.host = "127.0.0.1";
    info.port = port;
    info.user = kUser;
    info.password = kPassword;
    info.connection_type = link == Link::kHttps ? 1 : 0;
    info.connection_case = kThroughCimServer;
    return info;
}

void ReadPackages(Kalvex& host, std::size_t expected) {
    std::vector<Zentar::ZentarAgentless::InstalledPackage> packages;
    Require(host.GetInstalledPackages(packages) == 0 && packages.size() == expected &&
                !packages.back().summary_.empty(),
            "installed packages");
}

void ReadInventory(const ZentarConnection::ConnectionInfo& info) {
    Kalvex host(info);
    Require(!host.IsUnSpportedEXSIVersion(), "hardware namespace");
    ReadRecord(host, "computer system", &Kalvex::GetComputerSystem);
    ReadRecord(host, "hypervisor", &Kalvex::GetOperationSystem);
    ReadList(host, "installed packages", &Kalvex::GetInstalledPackages);
    ReadList(host, "event log", &Kalvex::GetIpmiRecord);
    ReadList(host, "privileges", &Kalvex::GetVMwarePrivilege);
    ReadList(host, "Ethernet ports", &Kalvex::GetEthernetPorts);
    ReadList(host, "IPv4 endpoints", &Kalvex::GetIPProtocolInfo, 0);
    ReadList(host, "IPv6 endpoints", &Kalvex::GetIPProtocolInfo, 1);
    Zentar::Pciinventory::Pciinfo pci;
    Require(host.GetPCIInfo(pci) == 0 && !pci.devices_.empty() && !pci.bridges_.empty() &&
                !pci.slots_.empty(),
            "PCI devices");
}

}  // namespace bench
