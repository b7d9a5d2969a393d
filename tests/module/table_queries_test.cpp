// What all list queries have in common, each against its own class.
#include <functional>

#include "support/inventory_test.h"

namespace {

using support::EnumerationCallLog;
using support::EnumerationLog;
using support::HostBuilder;
using support::Joined;
using ::testing::Contains;
using ::testing::ElementsAreArray;
using Zentar::Agentless::KalvexCim;

/// A list query, its class, and how many records it has appended.
struct ListQuery {
    const char* operation;
    const char* class_name;
    const char* failure;
    /// Runs the query twice into one list; gives both results and the list's size after each.
    std::function<std::array<int, 4>(KalvexCim&)> run_twice;
};

template <class Record>
ListQuery Query(const char* operation, const char* class_name, const char* failure,
                int (KalvexCim::*query)(std::vector<Record>&)) {
    return {operation, class_name, failure, [query](KalvexCim& worker) {
                std::vector<Record> records;
                const int first = (worker.*query)(records);
                const int first_size = static_cast<int>(records.size());
                const int second = (worker.*query)(records);
                return std::array{first, first_size, second, static_cast<int>(records.size())};
            }};
}

const ListQuery kQueries[] = {
    Query("GetInstalledPackages", "VMware_ComponentSoftwareIdentity",
          "EnumerateInstances VMware_ComponentSoftwareIdentity Failed!",
          &KalvexCim::GetInstalledPackages),
    Query("GetIpmiRecord", "OMC_IpmiLogRecord", "EnumerateInstances OMC_IpmiLogRecord Failed!",
          &KalvexCim::GetIpmiRecord),
    Query("GetVMwarePrivilege", "VMware_Privilege", "EnumerateInstances VMwarePrivilegeCim Failed!",
          &KalvexCim::GetVMwarePrivilege),
    Query("GetEthernetPorts", "VMware_EthernetPort",
          "EnumerateInstances VMware_EthernetPort Failed!", &KalvexCim::GetEthernetPorts),
    Query("GetIPv4ProtocolInfo", "VMware_KernelIPv4ProtocolEndpoint",
          "EnumerateInstances VMware_KernelIPv4ProtocolEndpoint Failed!",
          &KalvexCim::GetIPv4ProtocolInfo),
    Query("GetIPv6ProtocolInfo", "VMware_KernelIPv6ProtocolEndpoint",
          "EnumerateInstances VMware_KernelIPv6ProtocolEndpoint Failed!",
          &KalvexCim::GetIPv6ProtocolInfo),
    Query("GetPCIDevice", "IBMSG_PCIDevice", "EnumerateInstances IBMSG_PCIDevice Failed!",
          &KalvexCim::GetPCIDevice),
    Query("GetPCIBridge", "IBMSG_PCIBridge", "EnumerateInstances IBMSG_PCIBridge Failed!",
          &KalvexCim::GetPCIBridge),
    Query("GetSystemSlot", "IBMSG_SystemSlot", "EnumerateInstances IBMSG_SystemSlot Failed!",
          &KalvexCim::GetSystemSlot),
};

class EveryListQuery : public support::InventoryTest,
                       public ::testing::WithParamInterface<ListQuery> {
protected:
    void ServeInstances(const std::string& instances) {
        HostBuilder host;
        Serve(host.Class("root/cimv2", GetParam().class_name, R"({"Id": "string"})", instances));
    }
};

TEST_P(EveryListQuery, SucceedsWithoutRecordsWhenTheClassIsEmpty) {
    ServeInstances("[]");
    EXPECT_EQ(GetParam().run_twice(Worker()), (std::array{0, 0, 0, 0}));
    const std::string class_name = GetParam().class_name;
    const auto one_run =
        Joined({{"4 kalvex_cim.cpp Calling KalvexCim::" + std::string(GetParam().operation)},
                EnumerationLog(class_name, 0),
                {"4 kalvex_cim.cpp " + class_name + " instances :0"}});
    EXPECT_THAT(log.Messages(), ElementsAreArray(Joined({one_run, one_run})));
}

TEST_P(EveryListQuery, AppendsOneRecordPerInstanceAndNeverClears) {
    ServeInstances(R"([{"Id": "a"}, {"Id": "b"}])");
    EXPECT_EQ(GetParam().run_twice(Worker()), (std::array{0, 2, 0, 4}));
    EXPECT_THAT(log.Texts(4), Contains(std::string(GetParam().class_name) + " instances :2"));
}

TEST_P(EveryListQuery, FailsAndAppendsNothingWhenTheClassIsMissing) {
    Serve(HostBuilder());
    EXPECT_EQ(GetParam().run_twice(Worker()), (std::array{1, 0, 1, 0}));
    const std::string class_name = GetParam().class_name;
    const auto one_run =
        Joined({{"4 kalvex_cim.cpp Calling KalvexCim::" + std::string(GetParam().operation)},
                EnumerationCallLog(class_name),
                {"1 cimfunc.cpp Enumerate instances failed with the reason: "
                 "CIM_ERR_INVALID_CLASS: " +
                 class_name},
                ConnectionLog(),
                {"4 kalvex_cim.cpp " + std::string(GetParam().failure)}});
    EXPECT_THAT(log.Messages(), ElementsAreArray(Joined({one_run, one_run})));
}

INSTANTIATE_TEST_SUITE_P(Worker, EveryListQuery, ::testing::ValuesIn(kQueries),
                         [](const auto& test) { return std::string(test.param.operation); });

}  // namespace
