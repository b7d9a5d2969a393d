#include "support/failing_memory.h"
#include "support/inventory_test.h"

namespace {

using support::AssociationCallLog;
using support::AssociationLog;
using support::EnumerationLog;
using support::HostBuilder;
using support::Joined;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using Zentar::Pciinventory::PCIBridge;
using Zentar::Pciinventory::PCIDevice;
using Zentar::Pciinventory::Pciinfo;
using Zentar::Pciinventory::SystemSlot;

constexpr const char* kNs = "root/ibmsd";
constexpr const char* kDevicePath = "IBMSG_PCIDevice.DeviceID=\"pci0\"";
constexpr const char* kSlot1Path = "IBMSG_SystemSlot.Tag=\"slot1\"";
constexpr const char* kSlot2Path = "IBMSG_SystemSlot.Tag=\"slot2\"";
constexpr const char* kBoardPath = "IBMSG_SystemBoard.Tag=\"board\"";
constexpr const char* kRiserPath = "IBMSG_SystemBoard.Tag=\"riser\"";
constexpr const char* kBridgePath = "IBMSG_PCIBridge.DeviceID=\"br0\"";

/// The provider's classes, filled with one device, one bridge, two slots and two boards.
class PciInventory : public support::InventoryTest {
protected:
    PciInventory() {
        host.Class(kNs, "IBMSG_PCIDevice",
                   R"({"DeviceID": "string", "ClassCode": "uint8", "Description": "string",
                       "PciDeviceID": "uint16", "VendorID": "uint16", "IRQ": "uint8",
                       "IOAddress": "string"})",
                   R"([{"DeviceID": "pci0", "ClassCode": 1, "Description": "Controller",
                        "PciDeviceID": 4096, "VendorID": 32902, "IRQ": 11,
                        "IOAddress": "0x3000"}])")
            .Class(kNs, "IBMSG_PCIBridge",
                   R"({"DeviceID": "string", "ClassCode": "uint8", "Description": "string",
                       "Location": "string"})",
                   R"([{"DeviceID": "br0", "ClassCode": 6, "Description": "Root port",
                        "Location": "Bus 0 Dev 1"}])")
            .Class(kNs, "IBMSG_SystemBoard", R"({"Tag": "string", "SlotAllInfo": "string"})",
                   R"([{"Tag": "board", "SlotAllInfo": "On System Board"},
                       {"Tag": "riser", "SlotAllInfo": "On Riser Board"}])");
    }

    void AddSlots() {
        host.Class(kNs, "IBMSG_SystemSlot", R"({"Tag": "string", "SlotAllInfo": "string"})",
                   R"([{"Tag": "slot1", "SlotAllInfo": "Slot 1"},
                       {"Tag": "slot2", "SlotAllInfo": "Slot 2"}])");
    }
    void Associate(const char* association, const char* to, const char* from = kDevicePath) {
        host.Association(kNs, association, from, to);
    }
    Pciinfo ReadAll() {
        Serve(host);
        Pciinfo pci;
        EXPECT_EQ(Worker().GetPCIInfo(pci), 0);
        return pci;
    }
    /// Serves the host to a worker that is in the provider's namespace already.
    void ServeProvider() {
        ReadAll();
        log.Clear();
    }
    /// Where the first device sits, for a caller who has put `place` down so far.
    std::string Retrieve(std::string place, int expected_result = 0) {
        Pegasus::CIMInstance device(Pegasus::CIMName("IBMSG_PCIDevice"));
        device.setPath(Pegasus::CIMObjectPath(Pegasus::String(kDevicePath)));
        EXPECT_EQ(Worker().RetrieveSlotAllInfo(device, place), expected_result);
        return place;
    }
    static std::string SlotCount(int count) {
        return "4 kalvex_cim.cpp IBMSG_PCIDevice associators IBMSG_DeviceInSlot instances:" +
               std::to_string(count);
    }
    static std::string BoardCount(int count) {
        return "4 kalvex_cim.cpp IBMSG_OnBoardDevice associators IBMSG_SystemBoard instances:" +
               std::to_string(count);
    }
    /// Fails the `number`-th of the associations that follow.
    void FailAssociation(std::size_t number) {
        auto failure = simhost::Faults::CimErrorElement(1, "provider died");
        failure.only_operation = "Associators";
        failure.after = number - 1;
        failure.times = 1;
        Server().InjectFault(failure);
    }

    HostBuilder host;
};

TEST_F(PciInventory, DevicesAreReadFieldByField) {
    AddSlots();
    const Pciinfo pci = ReadAll();
    ASSERT_EQ(pci.devices_.size(), 1U);
    const PCIDevice& device = pci.devices_[0];
    EXPECT_EQ(device.class_code_, "Mass Storage");
    EXPECT_EQ(device.description_, "Controller");
    EXPECT_EQ(device.pci_device_id_, "4096");
    EXPECT_EQ(device.vendor_id_, "32902");
    EXPECT_EQ(device.irq_, "11");
    EXPECT_EQ(device.io_address_, "0x3000");
    EXPECT_EQ(device.spare_1_ + device.spare_2_, "");
}

TEST_F(PciInventory, ADeviceInASlotTakesTheSlotsTextAndTheBoardIsNotAsked) {
    AddSlots();
    Associate("IBMSG_DeviceInSlot", kSlot1Path);
    Associate("IBMSG_OnBoardDevice", kBoardPath);
    EXPECT_EQ(ReadAll().devices_.at(0).slot_all_info_, "Slot 1");
    for (const auto& request : Server().requests()) {
        if (request.source_path == kDevicePath) {
            EXPECT_EQ(request.association_class, "IBMSG_DeviceInSlot");
        }
    }
}

TEST_F(PciInventory, ADeviceInTwoSlotsTakesTheFirst) {
    AddSlots();
    Associate("IBMSG_DeviceInSlot", kSlot1Path);
    Associate("IBMSG_DeviceInSlot", kSlot2Path);
    EXPECT_EQ(ReadAll().devices_.at(0).slot_all_info_, "Slot 1");
}

TEST_F(PciInventory, ADeviceOnBoardTakesTheBoardsText) {
    AddSlots();
    Associate("IBMSG_OnBoardDevice", kBoardPath);
    EXPECT_EQ(ReadAll().devices_.at(0).slot_all_info_, "On System Board");
}

TEST_F(PciInventory, ADeviceOnTwoBoardsTakesTheFirst) {
    AddSlots();
    Associate("IBMSG_OnBoardDevice", kBoardPath);
    Associate("IBMSG_OnBoardDevice", kRiserPath);
    EXPECT_EQ(ReadAll().devices_.at(0).slot_all_info_, "On System Board");
}

TEST_F(PciInventory, ASlotWithoutTextTakesNothingFromTheOneBefore) {
    host.Class(kNs, "IBMSG_SystemSlot", R"({"Tag": "string", "SlotAllInfo": "string"})",
               R"([{"Tag": "slot1", "SlotAllInfo": "Slot 1"}, {"Tag": "slot2"}])");
    Associate("IBMSG_DeviceInSlot", kSlot1Path);
    Associate("IBMSG_DeviceInSlot", kSlot2Path, kBridgePath);
    const Pciinfo pci = ReadAll();
    EXPECT_EQ(pci.devices_.at(0).slot_all_info_, "Slot 1");
    EXPECT_EQ(pci.bridges_.at(0).slot_all_info_, "");
}

TEST_F(PciInventory, ADeviceWithoutAssociationHasNoPlace) {
    AddSlots();
    ServeProvider();
    std::vector<PCIDevice> devices;
    EXPECT_EQ(Worker().GetPCIDevice(devices), 0);
    EXPECT_EQ(devices.at(0).slot_all_info_, "");
    EXPECT_THAT(
        log.Messages(),
        ElementsAreArray(
            Joined({{"4 kalvex_cim.cpp Calling KalvexCim::GetPCIDevice"},
                    EnumerationLog("IBMSG_PCIDevice", 1, kNs),
                    {"4 kalvex_cim.cpp IBMSG_PCIDevice instances :1",
                     "4 cimfunc.cpp Showing properties for IBMSG_PCIDevice.DeviceID=\"pci0\"",
                     "4 cimfunc.cpp ClassCode = 1 with raw data (1)",
                     "4 cimfunc.cpp Description = Controller with raw data (Controller)",
                     "4 cimfunc.cpp IOAddress = 0x3000 with raw data (0x3000)",
                     "4 cimfunc.cpp IRQ = 11 with raw data (11)",
                     "4 cimfunc.cpp PciDeviceID = 4096 with raw data (4096)",
                     "4 cimfunc.cpp VendorID = 32902 with raw data (32902)"},
                    AssociationLog(kDevicePath, "IBMSG_DeviceInSlot", "IBMSG_SystemSlot", 0, kNs),
                    {SlotCount(0)},
                    AssociationLog(kDevicePath, "IBMSG_OnBoardDevice", "IBMSG_SystemBoard", 0, kNs),
                    {BoardCount(0)}})));
}

TEST_F(PciInventory, APlaceThatIsNotFoundStaysAsTheCallerHadIt) {
    AddSlots();
    ServeProvider();
    EXPECT_EQ(Retrieve("before"), "before");
}

TEST_F(PciInventory, ASlotWithoutTextGivesAnEmptyPlace) {
    host.Class(kNs, "IBMSG_SystemSlot", R"({"Tag": "string"})", R"([{"Tag": "slot1"}])");
    Associate("IBMSG_DeviceInSlot", kSlot1Path);
    ServeProvider();
    EXPECT_EQ(Retrieve("before"), "");
    EXPECT_THAT(log.Texts(2), ElementsAre("Property SlotAllInfo is not found!"));
}

TEST_F(PciInventory, TheBoardsTextIsTraced) {
    AddSlots();
    Associate("IBMSG_OnBoardDevice", kBoardPath);
    ServeProvider();
    EXPECT_EQ(Retrieve(""), "On System Board");
    EXPECT_THAT(
        log.Messages(),
        ElementsAreArray(Joined(
            {AssociationLog(kDevicePath, "IBMSG_DeviceInSlot", "IBMSG_SystemSlot", 0, kNs),
             {SlotCount(0)},
             AssociationLog(kDevicePath, "IBMSG_OnBoardDevice", "IBMSG_SystemBoard", 1, kNs),
             {BoardCount(1),
              "4 cimfunc.cpp Showing properties for "
              "//esx01/root/ibmsd:IBMSG_SystemBoard.Tag=\"board\"",
              "4 cimfunc.cpp SlotAllInfo = On System Board with raw data (On System Board)"}})));
}

TEST_F(PciInventory, AFailedQuestionForTheSlotIsReportedAndTheBoardIsNotAsked) {
    AddSlots();
    Associate("IBMSG_OnBoardDevice", kBoardPath);
    ServeProvider();
    FailAssociation(1);
    EXPECT_EQ(Retrieve("before", 1), "before");
    EXPECT_THAT(
        log.Messages(),
        ElementsAreArray(
            Joined({AssociationCallLog(kDevicePath, "IBMSG_DeviceInSlot", "IBMSG_SystemSlot", kNs),
                    {"1 cimfunc.cpp Enumerate associators failed with the reason: provider died"},
                    ConnectionLog(),
                    {"4 kalvex_cim.cpp IBMSG_PCIDevice associators IBMSG_DeviceInSlot failed!"}})));
}

TEST_F(PciInventory, AFailedQuestionForTheBoardIsReported) {
    AddSlots();
    ServeProvider();
    FailAssociation(2);
    EXPECT_EQ(Retrieve("before", 1), "before");
    EXPECT_THAT(
        log.Messages(),
        ElementsAreArray(Joined(
            {AssociationLog(kDevicePath, "IBMSG_DeviceInSlot", "IBMSG_SystemSlot", 0, kNs),
             {SlotCount(0)},
             AssociationCallLog(kDevicePath, "IBMSG_OnBoardDevice", "IBMSG_SystemBoard", kNs),
             {"1 cimfunc.cpp Enumerate associators failed with the reason: provider died"},
             ConnectionLog(),
             {"4 kalvex_cim.cpp IBMSG_OnBoardDevice associators IBMSG_SystemBoard failed!"}})));
}

TEST_F(PciInventory, PlacesAreTracedInTheNameOfThePciDeviceForBridgesToo) {
    AddSlots();
    Associate("IBMSG_DeviceInSlot", kSlot2Path, "IBMSG_PCIBridge.DeviceID=\"br0\"");
    ServeProvider();
    std::vector<PCIBridge> bridges;
    EXPECT_EQ(Worker().GetPCIBridge(bridges), 0);
    EXPECT_THAT(log.Messages(),
                ElementsAreArray(Joined(
                    {{"4 kalvex_cim.cpp Calling KalvexCim::GetPCIBridge"},
                     EnumerationLog("IBMSG_PCIBridge", 1, kNs),
                     {"4 kalvex_cim.cpp IBMSG_PCIBridge instances :1",
                      "4 cimfunc.cpp Showing properties for IBMSG_PCIBridge.DeviceID=\"br0\"",
                      "4 cimfunc.cpp ClassCode = 6 with raw data (6)",
                      "4 cimfunc.cpp Description = Root port with raw data (Root port)",
                      "4 cimfunc.cpp Location = Bus 0 Dev 1 with raw data (Bus 0 Dev 1)"},
                     AssociationLog("IBMSG_PCIBridge.DeviceID=\"br0\"", "IBMSG_DeviceInSlot",
                                    "IBMSG_SystemSlot", 1, kNs),
                     {SlotCount(1),
                      "4 cimfunc.cpp Showing properties for "
                      "//esx01/root/ibmsd:IBMSG_SystemSlot.Tag=\"slot2\"",
                      "4 cimfunc.cpp SlotAllInfo = Slot 2 with raw data (Slot 2)"}})));
}

TEST_F(PciInventory, BridgesAreReadFieldByField) {
    AddSlots();
    const Pciinfo pci = ReadAll();
    ASSERT_EQ(pci.bridges_.size(), 1U);
    EXPECT_EQ(pci.bridges_[0].class_code_, "Bridge");
    EXPECT_EQ(pci.bridges_[0].description_, "Root port");
    EXPECT_EQ(pci.bridges_[0].pci_device_id_, "Bus 0 Dev 1");
    EXPECT_EQ(pci.bridges_[0].spare_1_, "");
}

TEST_F(PciInventory, ABridgeWithoutLocationHasNone) {
    HostBuilder bare;
    Serve(bare.Class("root/cimv2", "IBMSG_PCIBridge", R"({"DeviceID": "string"})",
                     R"([{"DeviceID": "br0"}])"));
    std::vector<PCIBridge> bridges;
    EXPECT_EQ(Worker().GetPCIBridge(bridges), 0);
    ASSERT_EQ(bridges.size(), 1U);
    EXPECT_EQ(bridges[0].pci_device_id_, "");
}

TEST_F(PciInventory, ADeviceWhosePlaceCannotBeAskedIsStillListed) {
    AddSlots();
    Serve(host);
    simhost::Fault failure = simhost::Faults::CimErrorElement(1, "provider died");
    failure.only_operation = "Associators";
    Server().InjectFault(failure);
    Pciinfo pci;
    EXPECT_EQ(Worker().GetPCIInfo(pci), 0);
    ASSERT_EQ(pci.devices_.size(), 1U);
    EXPECT_EQ(pci.devices_[0].slot_all_info_, "");
    EXPECT_EQ(pci.bridges_.size(), 1U);
    EXPECT_THAT(log.Texts(4), Contains("IBMSG_PCIDevice associators IBMSG_DeviceInSlot failed!"));
    EXPECT_THAT(log.Texts(1),
                Contains("Enumerate associators failed with the reason: provider died"));
}

TEST_F(PciInventory, AMissingSlotClassLeavesDevicesAndBridges) {
    const Pciinfo pci = ReadAll();
    EXPECT_EQ(pci.devices_.size(), 1U);
    EXPECT_EQ(pci.bridges_.size(), 1U);
    EXPECT_THAT(pci.slots_, IsEmpty());
    EXPECT_THAT(log.Texts(4), Contains("EnumerateInstances IBMSG_SystemSlot Failed!"));
}

TEST_F(PciInventory, TwoCallsDoubleEachListAndConnectTwice) {
    AddSlots();
    Pciinfo pci = ReadAll();
    const auto connections = Server().counters().connections;
    EXPECT_EQ(Worker().GetPCIInfo(pci), 0);
    EXPECT_EQ(pci.devices_.size(), 2U);
    EXPECT_EQ(pci.bridges_.size(), 2U);
    EXPECT_EQ(pci.slots_.size(), 4U);
    EXPECT_EQ(Server().counters().connections, connections + 1);
}

TEST_F(PciInventory, MovesTheWorkerToTheProvidersNamespaceForGood) {
    AddSlots();
    host.Class("root/cimv2", "VMware_Privilege", R"({"InstanceID": "string"})",
               R"([{"InstanceID": "p"}])");
    ReadAll();
    std::vector<Zentar::ZTEXSI::VMwarePrivilegeData> privileges;
    EXPECT_EQ(Worker().GetVMwarePrivilege(privileges), 1);
    EXPECT_EQ(Server().requests().back().name_space, kNs);
}

TEST_F(PciInventory, IsReadFromTheFirstNamespaceWhenAskedForOnItsOwn) {
    AddSlots();
    Serve(host);
    std::vector<PCIDevice> devices;
    EXPECT_EQ(Worker().GetPCIDevice(devices), 1);
    EXPECT_EQ(Server().requests().back().name_space, "root/cimv2");
}

TEST_F(PciInventory, LeavesTheListsAloneWhenTheProviderCannotBeReached) {
    AddSlots();
    Serve(host);
    Worker();
    info.port = support::ClosedPort();
    Zentar::Agentless::KalvexCim unreachable(info);
    support::TakePauses();
    Pciinfo pci;
    EXPECT_EQ(unreachable.GetPCIInfo(pci), 0);
    EXPECT_THAT(pci.devices_, IsEmpty());
    // One cycle for the new connection and one for each of the three enumerations.
    EXPECT_EQ(support::TakePauses().size(), 12U);
}

TEST_F(PciInventory, FailsWhenThereIsNoConnectionToReplace) {
    AddSlots();
    Serve(host);
    Worker();
    support::FailNextNothrowNew();
    Pciinfo pci;
    EXPECT_EQ(Worker().GetPCIInfo(pci), 0);
    EXPECT_THAT(pci.devices_, IsEmpty());
    log.Clear();
    EXPECT_EQ(Worker().GetPCIInfo(pci), 1);
    EXPECT_THAT(log.Messages(),
                ElementsAre("4 kalvex_cim.cpp Calling KalvexCim::GetPCIInfo",
                            "4 kalvex_cim.cpp Init CimClient with namespace root/ibmsd failed!"));
    std::vector<PCIDevice> devices;
    EXPECT_EQ(Worker().GetPCIDevice(devices), 1);
}

TEST_F(PciInventory, ParseClassCodeReplacesKnownCodesOnly) {
    Serve(host);
    const std::pair<std::string, std::string> cases[] = {
        {"2", "Network"},       {"17", "Data Acquisition and Signal Processing"},
        {"18", "PCI Reserved"}, {"254", "PCI Reserved"},
        {"255", "Other"},       {"256", "256"},
        {"-1", "-1"},           {"", ""},
        {"bridge", "bridge"},
    };
    for (const auto& [code, word] : cases) {
        std::string text = code;
        Worker().ParseClassCode(text);
        EXPECT_EQ(text, word) << code;
    }
}

TEST_F(PciInventory, ParseClassCodeKeepsItsErrorsIn) {
    Serve(host);
    Worker();
    std::string code = "17";
    support::FailNextNewOfAtLeast(sizeof "Data Acquisition and Signal Processing");
    Worker().ParseClassCode(code);
    EXPECT_EQ(code, "17");
    EXPECT_THAT(log.Messages(),
                ElementsAre("3 kalvex_cim.cpp ParseClassCode Error:std::bad_alloc"));
}

class SystemSlots : public support::InventoryTest {
protected:
    SystemSlot ReadOne(const std::string& instance) {
        HostBuilder host;
        Serve(host.Class("root/cimv2", "IBMSG_SystemSlot",
                         R"({"Key": "string", "SlotDesignation": "string", "Tag": "string",
                             "ConnectorType": "uint16", "SlotLength": "uint16",
                             "MaxDataWidth": "uint16", "SupportsHotPlug": "boolean",
                             "CurrentUsage": "uint16", "OperationalStatus": "uint16[]",
                             "VccMixedVoltageSupport": "uint16"})",
                         "[" + instance + "]"));
        std::vector<SystemSlot> slots;
        EXPECT_EQ(Worker().GetSystemSlot(slots), 0);
        return slots.size() == 1 ? slots[0] : SystemSlot();
    }
};

TEST_F(SystemSlots, CarryWordsForTheirCodes) {
    const SystemSlot slot = ReadOne(R"({"Key": "k", "SlotDesignation": "PCIe Slot 1", "Tag": "t",
        "ConnectorType": 170, "SlotLength": 4, "MaxDataWidth": 12, "SupportsHotPlug": true,
        "CurrentUsage": 4, "OperationalStatus": [2], "VccMixedVoltageSupport": 2})");
    EXPECT_EQ(slot.slot_designation_, "PCIe Slot 1");
    EXPECT_EQ(slot.tag_, "t");
    EXPECT_EQ(slot.connector_type_, "PCI Express x16");
    EXPECT_EQ(slot.slot_length_, "Long");
    EXPECT_EQ(slot.max_data_width_, "12x or x12");
    EXPECT_EQ(slot.supports_hot_plug_, "TRUE");
    EXPECT_EQ(slot.current_usage_, "In use");
    EXPECT_EQ(slot.operational_status_, "OK");
    EXPECT_EQ(slot.vcc_mixed_voltage_support_, "3.3V");
}

TEST_F(SystemSlots, WithoutTagKeepTheOtherFields) {
    const SystemSlot slot = ReadOne(
        R"({"Key": "k", "SlotDesignation": "PCIe Slot 1", "ConnectorType": 6, "MaxDataWidth": 13})");
    EXPECT_EQ(slot.tag_, "");
    EXPECT_EQ(slot.slot_designation_, "PCIe Slot 1");
    EXPECT_EQ(slot.connector_type_, "PCI");
    EXPECT_EQ(slot.max_data_width_, "16x or x16");
}

TEST_F(SystemSlots, DecodeMissingCodesAsZero) {
    const SystemSlot slot = ReadOne(R"({"Key": "k"})");
    EXPECT_EQ(slot.connector_type_, "");
    EXPECT_EQ(slot.slot_length_, "Reserved");
    EXPECT_EQ(slot.max_data_width_, "");
    EXPECT_EQ(slot.current_usage_, "Reserved");
    EXPECT_EQ(slot.operational_status_, "");
    EXPECT_EQ(slot.vcc_mixed_voltage_support_, "Unknown");
}

TEST_F(SystemSlots, OfSeveralStatusesHaveNoStatusWord) {
    EXPECT_EQ(ReadOne(R"({"Key": "k", "OperationalStatus": [2, 3]})").operational_status_, "");
}

}  // namespace
