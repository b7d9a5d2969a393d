// What the worker asks of the access layer, and what it makes of the result codes.
#include <gmock/gmock.h>

#include <array>

#include "module/exsi/kalvex_cim.h"
#include "module/recorded_access.h"

namespace {

using recorded_access::answers;
using recorded_access::calls;
using ::testing::Each;
using ::testing::ElementsAre;
using Zentar::Agentless::KalvexCim;
using Zentar::Pciinventory::PCIDevice;

Pegasus::CIMInstance Instance(const char* class_name,
                              const std::map<std::string, std::string>& properties = {}) {
    Pegasus::CIMInstance instance{Pegasus::CIMName(class_name)};
    for (const auto& [name, text] : properties) {
        instance.addProperty(Pegasus::CIMProperty(
            Pegasus::CIMName(name.c_str()), Pegasus::CIMValue(Pegasus::String(text.c_str()))));
    }
    instance.setPath(Pegasus::CIMObjectPath(Pegasus::String(class_name)));
    return instance;
}

class WorkerRequests : public ::testing::Test {
protected:
    WorkerRequests() {
        recorded_access::Reset();
        worker = std::make_unique<KalvexCim>(Zentar::ZentarConnection::ConnectionInfo());
        calls.clear();
    }

    template <class Record>
    int Read(int (KalvexCim::*query)(Record&)) {
        Record record;
        return (worker.get()->*query)(record);
    }
    /// The results of all queries but the PCI inventory's and the version gate.
    std::vector<int> ReadAll() {
        return {Read(&KalvexCim::GetComputerSystem),    Read(&KalvexCim::GetOperationSystem),
                Read(&KalvexCim::GetInstalledPackages), Read(&KalvexCim::GetIpmiRecord),
                Read(&KalvexCim::GetVMwarePrivilege),   Read(&KalvexCim::GetEthernetPorts),
                Read(&KalvexCim::GetIPv4ProtocolInfo),  Read(&KalvexCim::GetIPv6ProtocolInfo),
                Read(&KalvexCim::GetPCIDevice),         Read(&KalvexCim::GetPCIBridge),
                Read(&KalvexCim::GetSystemSlot)};
    }

    std::unique_ptr<KalvexCim> worker;
};

TEST_F(WorkerRequests, OfEachQueryHaveAClassANamespaceAndFiveMinutes) {
    EXPECT_THAT(ReadAll(), Each(0));
    worker->IsUnSpportedESXIVer();
    EXPECT_THAT(calls, ElementsAre("enumerate root/cimv2 OMC_Chassis 300000",
                                   "enumerate ibm/imm0/cimv2 IBM_ComputerSystem 300000",
                                   "enumerate root/cimv2 VMware_HypervisorSoftwareIdentity 300000",
                                   "enumerate root/cimv2 VMware_ComponentSoftwareIdentity 300000",
                                   "enumerate root/cimv2 OMC_IpmiLogRecord 300000",
                                   "enumerate root/cimv2 VMware_Privilege 300000",
                                   "enumerate root/cimv2 VMware_EthernetPort 300000",
                                   "enumerate root/cimv2 VMware_KernelIPv4ProtocolEndpoint 300000",
                                   "enumerate root/cimv2 VMware_KernelIPv6ProtocolEndpoint 300000",
                                   "enumerate root/cimv2 IBMSG_PCIDevice 300000",
                                   "enumerate root/cimv2 IBMSG_PCIBridge 300000",
                                   "enumerate root/cimv2 IBMSG_SystemSlot 300000",
                                   "enumerate ibm/imm0/cimv2 IBM_ComputerSystem 300000"));
}

TEST_F(WorkerRequests, ForThePciInventoryFollowTheEndOfTheOldConnection) {
    answers["IBMSG_PCIDevice"].objects = {Instance("IBMSG_PCIDevice")};
    EXPECT_EQ(Read(&KalvexCim::GetPCIInfo), 0);
    EXPECT_THAT(
        calls,
        ElementsAre("disconnect root/cimv2", "connect root/ibmsd",
                    "enumerate root/ibmsd IBMSG_PCIDevice 300000",
                    "associate root/ibmsd IBMSG_PCIDevice IBMSG_DeviceInSlot IBMSG_SystemSlot",
                    "associate root/ibmsd IBMSG_PCIDevice IBMSG_OnBoardDevice IBMSG_SystemBoard",
                    "enumerate root/ibmsd IBMSG_PCIBridge 300000",
                    "enumerate root/ibmsd IBMSG_SystemSlot 300000"));
}

TEST_F(WorkerRequests, GoThroughTwoConnectionsMadeAndEndedInTheSameOrder) {
    worker.reset();
    EXPECT_THAT(calls, ElementsAre("disconnect root/cimv2", "disconnect ibm/imm0/cimv2"));
    calls.clear();
    worker = std::make_unique<KalvexCim>(Zentar::ZentarConnection::ConnectionInfo());
    EXPECT_THAT(calls, ElementsAre("connect root/cimv2", "connect ibm/imm0/cimv2"));
}

TEST_F(WorkerRequests, ThatFailWithAnyCodeFailTheQueryWithOne) {
    for (const int code : {1, 2, 6, -1}) {
        recorded_access::default_result = code;
        EXPECT_THAT(ReadAll(), Each(1)) << code;
    }
}

TEST_F(WorkerRequests, HoldAHostForUnsupportedWithTheCodeOfAnUnknownNamespaceOnly) {
    for (const int code : {0, 1, 2, 3, 5, 7, -1}) {
        answers["IBM_ComputerSystem"].result = code;
        EXPECT_FALSE(worker->IsUnSpportedESXIVer()) << code;
    }
    answers["IBM_ComputerSystem"].result = 6;
    EXPECT_TRUE(worker->IsUnSpportedESXIVer());
}

TEST_F(WorkerRequests, ForAPlaceFailWithTheCodeOfTheAssociation) {
    Pegasus::CIMInstance device = Instance("IBMSG_PCIDevice");
    std::string place = "before";
    answers["IBMSG_OnBoardDevice"].result = 7;
    EXPECT_EQ(worker->RetrieveSlotAllInfo(device, place), 7);
    answers["IBMSG_DeviceInSlot"].result = 5;
    EXPECT_EQ(worker->RetrieveSlotAllInfo(device, place), 5);
    EXPECT_EQ(place, "before");
}

TEST_F(WorkerRequests, ForAPlaceTakeNothingFromThePlaceBefore) {
    Pegasus::CIMInstance device = Instance("IBMSG_PCIDevice");
    std::string place;
    answers["IBMSG_DeviceInSlot"].objects = {Instance("IBMSG_SystemSlot", {{"SlotAllInfo", "1"}})};
    EXPECT_EQ(worker->RetrieveSlotAllInfo(device, place), 0);
    EXPECT_EQ(place, "1");
    answers["IBMSG_DeviceInSlot"].objects = {Instance("IBMSG_SystemSlot")};
    EXPECT_EQ(worker->RetrieveSlotAllInfo(device, place), 0);
    EXPECT_EQ(place, "");
}

}  // namespace
