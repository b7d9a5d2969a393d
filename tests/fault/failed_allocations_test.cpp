// Each allocation of each layer fails in turn: the failure reaches the caller, and nothing breaks.
#include <set>

#include "common/cimom/src/cimfunc.h"
#include "common/log/log_control.h"
#include "support/cim_replies.h"
#include "support/client_sockets.h"
#include "support/failing_memory.h"
#include "support/inventory_test.h"
#include "support/scripted_server.h"

namespace {

using support::FailEachAllocation;
using support::FailedAllocations;
using support::HostBuilder;
using support::SocketsConnectedTo;
using Zentar::CimConnection;
using Zentar::Agentless::Kalvex;
using Zentar::Agentless::KalvexCim;
using Zentar::ZentarAgentless::InstalledPackage;

/// Texts that are too long to lie within a string object.
constexpr const char* kLongName = "a package with a name of more than thirty characters";
constexpr const char* kLongVersion = "7.0.3-0.105.22348816-and-some-more-characters";

/// A host with a little of everything. Nothing is logged: what a message lacks is not thrown.
class FailedAllocation : public support::InventoryTest {
protected:
    FailedAllocation() {
        const std::string packages = std::string(R"({"ElementName": ")") + kLongName +
                                     R"(", "VersionString": ")" + kLongVersion +
                                     R"(", "InstanceID": )";
        host.Class(
                "root/cimv2", "VMware_ComponentSoftwareIdentity",
                R"({"InstanceID": "string", "ElementName": "string", "VersionString": "string"})",
                "[" + packages + R"("a"}, )" + packages + R"("b"}, )" + packages + R"("c"}])")
            .Class("root/cimv2", "OMC_Chassis",
                   R"({"Tag": "string", "Manufacturer": "string", "Version": "string"})",
                   R"([{"Tag": "1", "Manufacturer": "Contoso Systemtechnik Nuremberg"}])")
            .Class(
                "root/cimv2", "Slot",
                R"({"Tag": "string", "Title": "string", "Health": {"type": "uint16", "qualifiers":
                       {"ValueMap": ["2", "3"], "Values": ["OK", "Degraded to a long word"]}}})",
                R"([{"Tag": "s", "Title": "a slot with a long title", "Health": 3}])")
            .Association("root/cimv2", "PackageInSlot", kPackagePath, "Slot.Tag=\"s\"")
            .Class(support::kHardwareNamespace, "IBM_ComputerSystem",
                   R"({"Name": "string", "IdentifyingDescriptions": "string[]",
                       "OtherIdentifyingInfo": "string[]"})",
                   R"([{"Name": "imm", "IdentifyingDescriptions": ["CIM:GUID"],
                        "OtherIdentifyingInfo": ["7D4F1A90-52C3-11E9-A2B4-0025B5A1E0F0"]}])")
            .Class("root/ibmsd", "IBMSG_PCIDevice",
                   R"({"DeviceID": "string", "ClassCode": "uint8", "Description": "string"})",
                   R"([{"DeviceID": "pci0", "ClassCode": 1,
                        "Description": "a controller with a long description"}])")
            .Class("root/ibmsd", "IBMSG_SystemSlot",
                   R"({"Tag": "string", "SlotAllInfo": "string"})",
                   R"([{"Tag": "slot1", "SlotAllInfo": "Slot 1, in use, attached to CPU 1"}])")
            .Association("root/ibmsd", "IBMSG_DeviceInSlot", "IBMSG_PCIDevice.DeviceID=\"pci0\"",
                         "IBMSG_SystemSlot.Tag=\"slot1\"");
        Zentar::SetMinLogLevel(0);
    }

    std::unique_ptr<CimConnection> Connect() {
        return std::make_unique<CimConnection>(Pegasus::CIMNamespaceName("root/cimv2"), info);
    }
    int Enumerate(CimConnection& connection,
                  const char* class_name = "VMware_ComponentSoftwareIdentity") {
        return Zentar::GetCIMArrayFromEnumerateInstances(Pegasus::CIMName(class_name), connection,
                                                         instances, 300000);
    }
    int Associate(CimConnection& connection, const char* association = "PackageInSlot") {
        return Zentar::GetCIMArrayFromAssociators(
            Pegasus::CIMObjectPath(Pegasus::String(kPackagePath)), Pegasus::CIMName(association),
            Pegasus::CIMName("Slot"), connection, objects);
    }
    /// The connection can be used, and both requests give what they should.
    void ExpectUsable(CimConnection& connection) {
        EXPECT_EQ(Enumerate(connection), 0);
        EXPECT_EQ(instances.size(), 3U);
        EXPECT_EQ(Associate(connection), 0);
        EXPECT_EQ(objects.size(), 1U);
        instances = {};
        objects = {};
    }
    /// Each failed allocation of `action` is thrown, and leaves the connection usable and both
    /// results empty.
    template <class Action>
    void ExpectThrowsEachTime(CimConnection& connection, Action action) {
        const FailedAllocations all = FailEachAllocation(action, [&](bool threw) {
            if (threw) {
                EXPECT_EQ(instances.size(), 0U);
                EXPECT_EQ(objects.size(), 0U);
            }
            ExpectUsable(connection);
        });
        EXPECT_GT(all.failed, 10U);
        EXPECT_EQ(all.thrown, all.failed);
    }

    static constexpr const char* kPackagePath = "VMware_ComponentSoftwareIdentity.InstanceID=\"a\"";

    HostBuilder host;
    Pegasus::Array<Pegasus::CIMInstance> instances;
    Pegasus::Array<Pegasus::CIMObject> objects;
};

/// All of it by either transport.
class FailedAllocationOver : public FailedAllocation,
                             public ::testing::WithParamInterface<simhost::Transport> {
protected:
    void ServeHost() {
        simhost::ServerOptions options;
        options.transport = GetParam();
        options.user = "root";
        options.password = "a password of more than thirty characters";
        Serve(host.Build(), options);
    }
};

TEST_P(FailedAllocationOver, OfAConnectionPassesToTheCallerAndLeavesNoSocket) {
    ServeHost();
    const FailedAllocations all = FailEachAllocation(
        [this] { Connect(); }, [this](bool) { EXPECT_EQ(SocketsConnectedTo(info.port), 0U); });
    EXPECT_GT(all.failed, 10U);
    EXPECT_EQ(all.thrown, all.failed);
    EXPECT_EQ(support::TakePauses(), std::vector<std::uint32_t>());
}

TEST_P(FailedAllocationOver, OfAReconnectLeavesNoClientOrAConnectedOne) {
    ServeHost();
    const auto connection = Connect();
    const FailedAllocations all =
        FailEachAllocation([&] { Zentar::ReconnectCimServer(*connection); },
                           [&](bool threw) {
                               EXPECT_EQ(connection->client == nullptr, threw);
                               EXPECT_EQ(SocketsConnectedTo(info.port), threw ? 0U : 1U);
                               ExpectUsable(*connection);
                           });
    EXPECT_GT(all.failed, 10U);
    EXPECT_EQ(all.thrown, all.failed);
}

TEST_P(FailedAllocationOver, OfAnEnumerationPassesToTheCaller) {
    ServeHost();
    const auto connection = Connect();
    ExpectThrowsEachTime(*connection, [&] {
        Enumerate(*connection);
        instances = {};
    });
}

TEST_P(FailedAllocationOver, OfAnAssociationPassesToTheCaller) {
    ServeHost();
    const auto connection = Connect();
    ExpectThrowsEachTime(*connection, [&] {
        Associate(*connection);
        objects = {};
    });
}

TEST_P(FailedAllocationOver, OfARepairPassesToTheCaller) {
    ServeHost();
    const auto connection = Connect();
    ExpectThrowsEachTime(*connection, [&] {
        Enumerate(*connection, "NoSuchClass");
        Associate(*connection, "NoSuchAssociation");
    });
}

INSTANTIATE_TEST_SUITE_P(Transport, FailedAllocationOver,
                         ::testing::Values(simhost::Transport::kHttp, simhost::Transport::kHttps),
                         [](const auto& test) {
                             return test.param == simhost::Transport::kHttp ? "Http" : "Https";
                         });

TEST_F(FailedAllocation, InTheMiddleOfAReplyLeavesNothingOfItForTheNextRequest) {
    constexpr std::size_t kLongHeader = 20000;
    const std::string reply = support::Answer(support::BodyReturning(""),
                                              {"X-Padding: " + std::string(kLongHeader, 'x')});
    const std::size_t middle = reply.size() - 40;
    // The rest of the reply only comes after the next request.
    const support::ScriptedServer server(
        {{support::AwaitRequest(), support::Send(reply.substr(0, middle)), support::AwaitRequest(),
          support::Send(reply.substr(middle))},
         support::Replies({support::AnswerOf(2)})});
    info.port = server.port();
    const auto connection = Connect();
    support::FailNextNewOfAtLeast(kLongHeader);
    EXPECT_THROW(Enumerate(*connection), std::bad_alloc);
    EXPECT_EQ(Enumerate(*connection), 0);
    EXPECT_EQ(instances.size(), 2U);
}

TEST_F(FailedAllocation, OfPropertiesKeepsThoseReadBefore) {
    Serve(host);
    const auto connection = Connect();
    Associate(*connection);
    ASSERT_EQ(objects.size(), 1U);
    Zentar::PropertyMap properties;
    bool health_stayed = false;
    bool health_was_read = false;
    const FailedAllocations all = FailEachAllocation(
        [&] {
            properties = {{"Health", "before"}, {"Title", "before"}};
            Zentar::GetPropertiesFromObject(objects[0], properties);
        },
        [&](bool) {
            // In the order of the keys, so that the last text is never new before the first.
            if (properties.size() == 2) {
                const bool is_new = properties["Health"] == "Degraded to a long word";
                EXPECT_TRUE(is_new || properties["Health"] == "before");
                EXPECT_TRUE(is_new || properties["Title"] == "before");
                health_stayed = health_stayed || !is_new;
                health_was_read = health_was_read || is_new;
            }
        });
    EXPECT_EQ(all.thrown, all.failed);
    EXPECT_TRUE(health_stayed);
    EXPECT_TRUE(health_was_read);
}

/// Whole packages of the host, in its order.
void ExpectWhole(const std::vector<InstalledPackage>& packages) {
    for (const InstalledPackage& package : packages) {
        EXPECT_EQ(package.product_name_, kLongName);
        EXPECT_EQ(package.product_version_, kLongVersion);
    }
}

/// The facade and the worker, which throw alike.
template <class Inventory>
class FailedAllocationOf : public FailedAllocation {};

using Inventories = ::testing::Types<Kalvex, KalvexCim>;
TYPED_TEST_SUITE(FailedAllocationOf, Inventories);

TYPED_TEST(FailedAllocationOf, ConstructionLeavesNoSocket) {
    this->Serve(this->host);
    const FailedAllocations all =
        FailEachAllocation([this] { const TypeParam inventory(this->info); },
                           [this](bool) { EXPECT_EQ(SocketsConnectedTo(this->info.port), 0U); });
    EXPECT_GT(all.failed, 10U);
    EXPECT_EQ(all.thrown, all.failed);
}

TYPED_TEST(FailedAllocationOf, AListQueryKeepsWholeRecords) {
    this->Serve(this->host);
    TypeParam inventory(this->info);
    std::vector<InstalledPackage> packages;
    std::size_t most = 0;
    const FailedAllocations all = FailEachAllocation(
        [&] {
            packages.clear();
            packages.shrink_to_fit();
            inventory.GetInstalledPackages(packages);
        },
        [&](bool) {
            ExpectWhole(packages);
            most = std::max(most, packages.size());
            std::vector<InstalledPackage> again;
            EXPECT_EQ(inventory.GetInstalledPackages(again), 0);
            EXPECT_EQ(again.size(), 3U);
        });
    EXPECT_EQ(all.thrown, all.failed);
    EXPECT_EQ(most, 2U);  // of the three
}

TYPED_TEST(FailedAllocationOf, ASingleRecordCanBeReadAgain) {
    this->Serve(this->host);
    TypeParam inventory(this->info);
    const FailedAllocations all = FailEachAllocation(
        [&] {
            Zentar::ZentarAgentless::ComputerSystem record;
            inventory.GetComputerSystem(record);
        },
        [&](bool) {
            Zentar::ZentarAgentless::ComputerSystem record;
            EXPECT_EQ(inventory.GetComputerSystem(record), 0);
            EXPECT_EQ(record.manufacturer_, "Contoso Systemtechnik Nuremberg");
            EXPECT_EQ(record.uuid_, "7D4F1A90-52C3-11E9-A2B4-0025B5A1E0F0");
        });
    EXPECT_EQ(all.thrown, all.failed);
}

TYPED_TEST(FailedAllocationOf, ThePciInventoryLeavesWholeDevicesAndAConnectionOrNone) {
    this->Serve(this->host);
    std::unique_ptr<TypeParam> inventory;
    Zentar::Pciinventory::Pciinfo pci;
    std::set<int> later_results;
    const FailedAllocations all = FailEachAllocation(
        [&] {
            inventory = std::make_unique<TypeParam>(this->info);
            pci = {};
        },
        [&] { inventory->GetPCIInfo(pci); },
        [&](bool) {
            for (const auto& device : pci.devices_) {
                EXPECT_EQ(device.class_code_, "Mass Storage");
                EXPECT_EQ(device.slot_all_info_, "Slot 1, in use, attached to CPU 1");
            }
            pci = {};
            const int result = inventory->GetPCIInfo(pci);
            EXPECT_EQ(pci.devices_.size(), result == 0 ? 1U : 0U);
            later_results.insert(result);
        });
    EXPECT_EQ(all.thrown, all.failed);
    EXPECT_EQ(later_results, (std::set<int>{0, 1}));
}

template <class Record>
std::function<void(Kalvex&)> Reading(int (Kalvex::*operation)(Record&)) {
    return [operation](Kalvex& facade) {
        Record record;
        (facade.*operation)(record);
    };
}

std::function<void(Kalvex&)> ReadingEndpoints(int family) {
    return [family](Kalvex& facade) {
        std::vector<Zentar::ZTEXSI::IPProtocolData> endpoints;
        facade.GetIPProtocolInfo(endpoints, family);
    };
}

TEST_F(FailedAllocation, PassesThroughEachOperationOfTheFacade) {
    Serve(host);
    Kalvex facade(info);
    const std::pair<const char*, std::function<void(Kalvex&)>> operations[] = {
        {"GetComputerSystem", Reading(&Kalvex::GetComputerSystem)},
        {"GetEthernetPorts", Reading(&Kalvex::GetEthernetPorts)},
        {"GetIPProtocolInfo, IPv4", ReadingEndpoints(0)},
        {"GetIPProtocolInfo, IPv6", ReadingEndpoints(1)},
        {"GetInstalledPackages", Reading(&Kalvex::GetInstalledPackages)},
        {"GetIpmiRecord", Reading(&Kalvex::GetIpmiRecord)},
        {"GetOperationSystem", Reading(&Kalvex::GetOperationSystem)},
        {"GetVMwarePrivilege", Reading(&Kalvex::GetVMwarePrivilege)},
        {"IsUnSpportedEXSIVersion", [](Kalvex& kalvex) { kalvex.IsUnSpportedEXSIVersion(); }},
        {"GetPCIInfo", Reading(&Kalvex::GetPCIInfo)},
    };
    for (const auto& [name, operation] : operations) {
        support::FailNewAfter(0);
        EXPECT_THROW(operation(facade), std::bad_alloc) << name;
        EXPECT_TRUE(support::NewHasFailed()) << name;
    }
}

}  // namespace
