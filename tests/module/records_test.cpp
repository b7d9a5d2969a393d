// The records' shape: callers copy and fill them field by field, in the order of declaration.
#include <gmock/gmock.h>

#include <tuple>
#include <type_traits>

#include "common/records/connection_info.h"
#include "common/records/host_records.h"
#include "common/records/network_records.h"
#include "common/records/pci_records.h"

namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using namespace Pciinventory;
using namespace ZentarAgentless;
using namespace ZTEXSI;

// Either spelling names the same records.
static_assert(std::is_same_v<Zentar::ZentarAgentless::PhysicalPort, ZentarAgentless::PhysicalPort>);
static_assert(std::is_same_v<Zentar::ZTEXSI::IPProtocolData, ZTEXSI::IPProtocolData>);
static_assert(std::is_same_v<Zentar::Pciinventory::Pciinfo, Pciinventory::Pciinfo>);
static_assert(
    std::is_same_v<Zentar::ZentarConnection::ConnectionInfo, ZentarConnection::ConnectionInfo>);

template <class Record>
using TextFields = std::vector<std::string Record::*>;

template <class Record>
std::vector<std::string> Texts(const Record& record, const TextFields<Record>& fields) {
    std::vector<std::string> texts;
    for (const auto field : fields) {
        texts.push_back(record.*field);
    }
    return texts;
}

/// The fields of a record of nine texts are these, in this order, and are empty at first.
template <class Record>
void ExpectNineTexts(const TextFields<Record>& fields) {
    const Record record{"1", "2", "3", "4", "5", "6", "7", "8", "9"};
    EXPECT_THAT(Texts(record, fields), ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9"));
    EXPECT_THAT(Texts(Record(), fields), Each(""));
}

TEST(HostRecords, KeepTheOrderOfTheirFields) {
    using C = ComputerSystem;
    EXPECT_THAT(Texts<C>({"1", "2", "3", "4", "5", "6", "7", "8"},
                         {&C::product_name_, &C::version_, &C::manufacturer_, &C::spare_1_,
                          &C::name, &C::serial_number_, &C::model_, &C::uuid_}),
                ElementsAre("1", "2", "3", "4", "5", "6", "7", "8"));
    using O = OperationSystem;
    EXPECT_THAT(Texts<O>({"1", "2", "3", "4", "5"}, {&O::version_string, &O::name, &O::manufacturer,
                                                     &O::build_number, &O::last_start_time}),
                ElementsAre("1", "2", "3", "4", "5"));
    using P = InstalledPackage;
    EXPECT_THAT(Texts<P>({"1", "2", "3", "4", "5", "6", "7"},
                         {&P::product_name_, &P::product_version_, &P::spare_1_, &P::summary_,
                          &P::spare_2_, &P::spare_3_, &P::product_install_date_}),
                ElementsAre("1", "2", "3", "4", "5", "6", "7"));
    using V = VMwarePrivilegeData;
    ExpectNineTexts<V>({&V::represents_authorization_rights, &V::privilege_granted, &V::instance_id,
                        &V::element_name, &V::description, &V::caption, &V::activities,
                        &V::activityQualifiers, &V::qualifier_formats});
}

TEST(HostRecords, NumberTheirEvents) {
    const IPMIEVENT event{18446744073709551615U, "2", "3", -1, "5", "6"};
    EXPECT_EQ(event.record_id, 18446744073709551615U);
    EXPECT_EQ(event.sev, -1);
    EXPECT_THAT(Texts<IPMIEVENT>(event, {&IPMIEVENT::time_stamp, &IPMIEVENT::message,
                                         &IPMIEVENT::spare_1_, &IPMIEVENT::spare_2_}),
                ElementsAre("2", "3", "5", "6"));
    EXPECT_EQ(IPMIEVENT().record_id, 0U);
    EXPECT_EQ(IPMIEVENT().sev, 0);
}

TEST(NetworkRecords, OfPortsHaveFortyTextsOfWhichFourAreOurs) {
    PhysicalPort port;
    auto& [t1, t2, t3, t4, t5, t6, t7, t8, t9, t10, t11, t12, t13, t14, t15, t16, t17, t18, t19,
           t20, t21, t22, t23, t24, t25, t26, t27, t28, t29, t30, t31, t32, t33, t34, t35, t36, t37,
           t38, t39, t40] = port;
    EXPECT_THAT((std::vector{t1,  t2,  t3,  t4,  t5,  t6,  t7,  t8,  t9,  t10, t11, t12, t13, t14,
                             t15, t16, t17, t18, t19, t20, t21, t22, t23, t24, t25, t26, t27, t28,
                             t29, t30, t31, t32, t33, t34, t35, t36, t37, t38, t39, t40}),
                Each(std::string()));
    EXPECT_EQ(&t2, &port.name_);
    EXPECT_EQ(&t6, &port.network_addresses_);
    EXPECT_EQ(&t18, &port.speed_);
    EXPECT_EQ(&t27, &port.speedduplex_);
}

TEST(NetworkRecords, OfEndpointsHaveNineTexts) {
    using I = IPProtocolData;
    ExpectNineTexts<I>({&I::name, &I::transitionin_to_state, &I::sub_net_mask, &I::requested_state,
                        &I::available_requested_states, &I::protocol_if_type, &I::enabled_state,
                        &I::IPv4_address, &I::IPv6_address});
}

TEST(PciRecords, KeepTheOrderOfTheirFields) {
    using D = PCIDevice;
    ExpectNineTexts<D>({&D::class_code_, &D::description_, &D::spare_1_, &D::slot_all_info_,
                        &D::pci_device_id_, &D::vendor_id_, &D::irq_, &D::io_address_,
                        &D::spare_2_});
    using B = PCIBridge;
    EXPECT_THAT(
        Texts<B>({"1", "2", "3", "4", "5"}, {&B::class_code_, &B::description_, &B::spare_1_,
                                             &B::slot_all_info_, &B::pci_device_id_}),
        ElementsAre("1", "2", "3", "4", "5"));
    using S = SystemSlot;
    ExpectNineTexts<S>({&S::slot_designation_, &S::tag_, &S::connector_type_, &S::slot_length_,
                        &S::max_data_width_, &S::supports_hot_plug_, &S::current_usage_,
                        &S::operational_status_, &S::vcc_mixed_voltage_support_});
    const Pciinfo pci{{D()}, {B(), B()}, {S(), S(), S()}};
    EXPECT_EQ(pci.devices_.size() * 100 + pci.bridges_.size() * 10 + pci.slots_.size(), 123U);
}

/// All fields, in the order of declaration.
auto Fields(const ZentarConnection::ConnectionInfo& info) {
    const auto& [host, port, user, password, reserved_1, reserved_2, type, connection_case,
                 reserved_3] = info;
    return std::tuple(host, port, user, password, reserved_1, reserved_2, type, connection_case,
                      reserved_3);
}

TEST(ConnectionInfo, HasTheDefaultsOfAConnectionNotYetDescribed) {
    EXPECT_EQ(Fields({}), std::tuple("", 0, "", "", 0, 3, 0, 0, 0));
}

TEST(ConnectionInfo, KeepsItsFieldsInACopy) {
    ZentarConnection::ConnectionInfo original{"host", 1, "user", "password", 2, 4, 5, 6, 7};
    EXPECT_EQ(original.connection_type, 5);
    EXPECT_EQ(original.connection_case, 6);
    const auto copy = original;
    original.host = "other";
    EXPECT_EQ(Fields(copy), std::tuple("host", 1, "user", "password", 2, 4, 5, 6, 7));
}

}  // namespace
