// The hosts of a fleet before they are on the network.
#include "simhost/fleet_identity.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "simhost/fleet_fault.h"
#include "simhost/fleet_variation.h"
#include "simhost/host_description.h"

namespace simhost_test {
namespace {

using simhost::FleetFault;
using simhost::FleetFaultOf;
using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::Le;
using testing::MatchesRegex;

class FleetIdentity : public testing::Test {
protected:
    static simhost::HostVariant Variant(std::uint32_t number) {
        static const simhost::HostDescription builtin = simhost::HostDescription::Builtin();
        return simhost::NumberedVariant(builtin.host(), number);
    }
    /// The instances of a class as this host has them.
    static std::vector<simhost::Instance> Instances(std::uint32_t number, const std::string& name) {
        const simhost::HostVariant variant = Variant(number);
        std::vector<simhost::Instance> instances;
        for (const simhost::Namespace& name_space : variant.described().namespaces) {
            const simhost::Class* const found = name_space.FindClass(name);
            if (found == nullptr) {
                continue;
            }
            for (const simhost::Instance& described : found->instances) {
                if (const simhost::Instance* const shown = variant.Shown(described)) {
                    instances.push_back(*shown);
                }
            }
        }
        return instances;
    }
    /// One property of all instances, as XML.
    static std::vector<std::string> Values(std::uint32_t number, const std::string& class_name,
                                           const std::string& property) {
        std::vector<std::string> values;
        for (const simhost::Instance& instance : Instances(number, class_name)) {
            for (const simhost::PropertyValue& value : instance.values) {
                if (value.property->name == property) {
                    values.push_back(value.xml);
                }
            }
        }
        return values;
    }
    /// All that the host answers, property by property.
    static std::vector<std::string> Everything(std::uint32_t number) {
        std::vector<std::string> everything{Variant(number).name()};
        for (const simhost::Namespace& name_space : Variant(number).described().namespaces) {
            for (const simhost::Class& its_class : name_space.classes) {
                for (const simhost::Instance& instance : Instances(number, its_class.name)) {
                    everything.push_back(instance.path.Text());
                    for (const simhost::PropertyValue& value : instance.values) {
                        everything.push_back(value.xml);
                    }
                }
            }
        }
        return everything;
    }
};

struct Identifier {
    const char* class_name;
    const char* property;
};

constexpr Identifier kIdentifiers[] = {
    {"OMC_Chassis", "SerialNumber"},
    {"IBM_ComputerSystem", "Name"},
    {"IBM_ComputerSystem", "OtherIdentifyingInfo"},
    {"VMware_EthernetPort", "SystemName"},
    {"VMware_EthernetPort", "PermanentAddress"},
    {"VMware_EthernetPort", "NetworkAddresses"},
    {"VMware_KernelIPv4ProtocolEndpoint", "IPv4Address"},
    {"VMware_KernelIPv6ProtocolEndpoint", "IPv6Address"},
};

TEST_F(FleetIdentity, ANumberIsTheSameHostEveryTime) {
    EXPECT_EQ(Everything(7), Everything(7));
    // On every machine, too.
    EXPECT_EQ(simhost::NumberedName("esx01", 7), "esx00007");
    EXPECT_EQ(simhost::SerialNumberOf(7), "06PXL8Q");
    EXPECT_EQ(simhost::UuidOf(7), "C8936C7F-5915-43F7-962E-818D4FB2BFB2");
    EXPECT_EQ(simhost::MacAddressOf(7, 1, 0), "020100000007");
    EXPECT_EQ(simhost::Ipv4AddressOf(7, 1), "192.0.2.16");
    EXPECT_EQ(simhost::Ipv6AddressOf(70000, 1), "2001:db8:1:1170::2");
}

TEST_F(FleetIdentity, TwoNumbersDifferInAllIdentifiers) {
    for (const auto& [class_name, property] : kIdentifiers) {
        const auto first = Values(1, class_name, property);
        const auto second = Values(2, class_name, property);
        ASSERT_FALSE(first.empty()) << class_name << "." << property;
        ASSERT_EQ(first.size(), second.size());
        for (std::size_t i = 0; i < first.size(); ++i) {
            EXPECT_NE(first[i], second[i]) << class_name << "." << property;
        }
    }
    EXPECT_NE(Variant(1).name(), Variant(2).name());
}

TEST_F(FleetIdentity, IdentifiersAreUniqueAmongManyHosts) {
    constexpr std::uint32_t kHosts = 10'000;
    std::set<std::string> serials;
    std::set<std::string> uuids;
    for (std::uint32_t number = 1; number <= kHosts; ++number) {
        serials.insert(simhost::SerialNumberOf(number));
        uuids.insert(simhost::UuidOf(number));
    }
    EXPECT_EQ(serials.size(), kHosts);
    EXPECT_EQ(uuids.size(), kHosts);
    EXPECT_THAT(serials, Each(MatchesRegex("06[0-9A-HJ-NP-TV-Y]{5}")));
    EXPECT_THAT(uuids, Each(MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-"
                                         "[0-9A-F]{12}")));
}

TEST_F(FleetIdentity, AddressesAreThoseForDocumentation) {
    for (const std::uint32_t number : {1U, 126U, 127U, 381U, 382U, 65536U, 10'000'000U}) {
        EXPECT_THAT(Values(number, "VMware_KernelIPv4ProtocolEndpoint", "IPv4Address"),
                    Each(MatchesRegex("<VALUE>(192\\.0\\.2|198\\.51\\.100|203\\.0\\.113)"
                                      "\\.[1-9][0-9]*</VALUE>\n")));
        EXPECT_THAT(Values(number, "VMware_KernelIPv6ProtocolEndpoint", "IPv6Address"),
                    Each(MatchesRegex("<VALUE>2001:db8:[0-9a-f]+:[0-9a-f]+::[12]</VALUE>\n")));
        EXPECT_THAT(Values(number, "VMware_EthernetPort", "PermanentAddress"),
                    Each(MatchesRegex("<VALUE>02[0-9a-f]{10}</VALUE>\n")));
    }
}

TEST_F(FleetIdentity, SerialNumberIsTheSameWhereverItStands) {
    const std::string serial = simhost::SerialNumberOf(3);
    EXPECT_THAT(Values(3, "OMC_Chassis", "SerialNumber"), Each(testing::HasSubstr(serial)));
    EXPECT_THAT(Values(3, "IBM_ComputerSystem", "Name"), Each(testing::HasSubstr("-" + serial)));
    EXPECT_THAT(Values(3, "IBM_ComputerSystem", "OtherIdentifyingInfo"),
                Each(testing::HasSubstr(":" + serial + "</VALUE>")));
}

TEST_F(FleetIdentity, KeysAreThoseOfTheProperties) {
    for (const simhost::Instance& port : Instances(9, "VMware_EthernetPort")) {
        EXPECT_THAT(port.path.Text(), testing::HasSubstr("SystemName=\"esx00009\""));
    }
    for (const simhost::Instance& package : Instances(9, "VMware_ComponentSoftwareIdentity")) {
        const std::string& id = package.path.keys.front().value;
        EXPECT_THAT(package.values.front().xml, testing::HasSubstr(id.substr(id.rfind('_'))));
    }
}

TEST_F(FleetIdentity, SomePackagesAndTheEventLogsLengthDiffer) {
    const auto first = Values(1, "VMware_ComponentSoftwareIdentity", "VersionString");
    const auto second = Values(2, "VMware_ComponentSoftwareIdentity", "VersionString");
    ASSERT_EQ(first.size(), second.size());
    std::size_t differing = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        differing += first[i] != second[i] ? 1U : 0U;
    }
    EXPECT_THAT(differing, AllOf(Ge(first.size() / 20), Le(first.size() / 2)));
    std::set<std::size_t> lengths;
    for (std::uint32_t number = 1; number <= 50; ++number) {
        lengths.insert(Instances(number, "OMC_IpmiLogRecord").size());
    }
    EXPECT_GT(lengths.size(), 5U);
    EXPECT_THAT(lengths, Each(AllOf(Ge(285U), Le(300U))));
}

TEST_F(FleetIdentity, HypervisorsAndProductsAreAFew) {
    std::set<std::string> builds;
    std::set<std::string> models;
    for (std::uint32_t number = 1; number <= 50; ++number) {
        builds.insert(Values(number, "VMware_HypervisorSoftwareIdentity", "LargeBuildNumber")[0]);
        models.insert(Values(number, "OMC_Chassis", "Model")[0]);
    }
    EXPECT_THAT(builds.size(), AllOf(Ge(3U), Le(10U)));
    EXPECT_THAT(models.size(), AllOf(Ge(3U), Le(10U)));
}

class FleetFaults : public testing::TestWithParam<unsigned> {};

constexpr std::uint32_t kHostsOfFleet = 1000;

TEST_P(FleetFaults, ShareOfFailingHostsIsThePercentage) {
    std::map<FleetFault, std::size_t> hosts;
    for (std::uint32_t number = 1; number <= kHostsOfFleet; ++number) {
        ++hosts[FleetFaultOf(number, GetParam())];
    }
    const std::size_t failing = kHostsOfFleet - hosts[FleetFault::kNone];
    const std::size_t expected = kHostsOfFleet * GetParam() / 100;
    EXPECT_THAT(failing, AllOf(Ge(expected < 3 ? 0 : expected - 3), Le(expected + 3)));
}

TEST_P(FleetFaults, LargerPercentageIncludesTheSmallersFailures) {
    for (std::uint32_t number = 1; number <= kHostsOfFleet; ++number) {
        const FleetFault fault = FleetFaultOf(number, GetParam());
        for (unsigned percent = GetParam(); percent <= 100 && fault != FleetFault::kNone;
             ++percent) {
            ASSERT_EQ(FleetFaultOf(number, percent), fault) << number << " at " << percent;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Percentages, FleetFaults, testing::Values(0U, 1U, 10U, 50U, 100U));

TEST(FleetFaultsOfAll, EveryKindOfFaultOccurs) {
    std::map<FleetFault, std::size_t> hosts;
    for (std::uint32_t number = 1; number <= kHostsOfFleet; ++number) {
        ++hosts[FleetFaultOf(number, 20)];
    }
    for (const FleetFault fault : {FleetFault::kDead, FleetFault::kStalling, FleetFault::kTrickling,
                                   FleetFault::kRefusing, FleetFault::kBroken}) {
        EXPECT_GE(hosts[fault], 20U) << simhost::NameOf(fault);
    }
}

}  // namespace
}  // namespace simhost_test
