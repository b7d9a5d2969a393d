// Every kind of reply, cut at every byte: the client fails as it should and goes on.
#include <functional>

#include "Pegasus/Client/CIMClient.h"
#include "fault/descriptors.h"
#include "support/client_view.h"
#include "support/inventory_test.h"

namespace {

using namespace Pegasus;
using support::OutcomeOf;
namespace Faults = simhost::Faults;

constexpr const char* kRecordedHost = KALVEX_TEST_DATA "/../simhost/data/recorded_host.json";
/// More than there is after the end of a reply's XML.
constexpr int kEnoughSuccesses = 150;

struct Query {
    const char* name;
    std::function<std::string(CIMClient&)> outcome;
};

Query Enumeration(const char* name_space, const char* class_name) {
    return {class_name, [=](CIMClient& client) {
                return OutcomeOf([&] { return client.enumerateInstances(name_space, class_name); });
            }};
}

Query Association(const char* source, const char* association, const char* result_class) {
    return {association, [=](CIMClient& client) {
                const CIMObjectPath path(String("IBMSG_PCIDevice.DeviceID=\"") + source + "\"");
                return OutcomeOf([&] {
                    return client.associators("root/ibmsd", path, association, result_class, "", "",
                                              true);
                });
            }};
}

const Query kQueries[] = {
    Enumeration("root/cimv2", "OMC_Chassis"),
    Enumeration("root/cimv2", "VMware_KernelIPv4ProtocolEndpoint"),
    Enumeration("root/cimv2", "VMware_Privilege"),
    Enumeration("root/ibmsd", "IBMSG_SystemSlot"),
    Association("pci0", "IBMSG_DeviceInSlot", "IBMSG_SystemSlot"),
    Association("pci1", "IBMSG_DeviceInSlot", "IBMSG_SystemSlot"),
    {"NoSuchClass",
     [](CIMClient& client) {
         return OutcomeOf([&] { return client.enumerateInstances("root/cimv2", "No_Class"); });
     }},
    {"NoSuchNamespace",
     [](CIMClient& client) {
         return OutcomeOf([&] { return client.enumerateInstances("root/none", "X"); });
     }},
};

std::string QueryName(const ::testing::TestParamInfo<Query>& info) {
    return std::to_string(info.index) + "_" + info.param.name;
}

class CutReply : public support::InventoryTest, public ::testing::WithParamInterface<Query> {
protected:
    void SetUp() override {
        Serve(simhost::HostDescription::FromFile(kRecordedHost), Http());
        client.connect("127.0.0.1", Server().port(), "root", "secret");
        sound = Ask();
    }

    std::string Ask() { return GetParam().outcome(client); }

    /// Whether the reply still says all when it ends after so many bytes.
    bool SurvivesCut(std::size_t bytes, bool reset) {
        simhost::Fault cut = Faults::Truncate(bytes, reset);
        Server().InjectFault(cut);
        const std::string outcome = Ask();
        Server().ClearFaults();
        Server().ForgetRequests();
        EXPECT_EQ(Ask(), sound) << "cut after " << bytes << " bytes";
        EXPECT_TRUE(outcome == sound || outcome.find("Exception") != std::string::npos)
            << outcome << " for " << bytes << " bytes";
        return outcome == sound;
    }

    /// Cuts at each byte, from the first to far past the end.
    void Sweep(bool reset) {
        int successes = 0;
        std::size_t first_success = 0;
        for (std::size_t bytes = 0; successes < kEnoughSuccesses; ++bytes) {
            if (SurvivesCut(bytes, reset)) {
                first_success = successes == 0 ? bytes : first_success;
                ++successes;
            } else {
                ASSERT_EQ(successes, 0) << "whole at " << first_success << ", not at " << bytes;
            }
        }
        EXPECT_GT(first_success, 300U);
    }

    const std::size_t descriptors = fault::OpenDescriptors();  // before anything is served
    CIMClient client;
    std::string sound;
};

TEST_P(CutReply, FailsAndTheNextOneIsSound) {
    Sweep(false);
    Sweep(true);
    client.disconnect();
    StopServing();
    EXPECT_EQ(fault::OpenDescriptors(), descriptors);
}

TEST_P(CutReply, ThatStallsEndsAtTheTimeLimit) {
    client.setTimeout(150);
    for (const std::size_t bytes :
         {std::size_t{1}, std::size_t{40}, std::size_t{200}, std::size_t{330}, std::size_t{400}}) {
        Server().InjectFault(Faults::SlowDrip(bytes, std::chrono::hours(1)));
        EXPECT_EQ(Ask(), "ConnectionTimeoutException [connection timed out]") << bytes;
        Server().ClearFaults();
        client.setTimeout(20000);
        EXPECT_EQ(Ask(), sound);
        client.setTimeout(150);
    }
}

INSTANTIATE_TEST_SUITE_P(Each, CutReply, ::testing::ValuesIn(kQueries), QueryName);

}  // namespace
