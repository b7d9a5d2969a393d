// From a facade's result and failures to the statuses of tables and sections.
#include "inventory/table_status.h"

#include <gmock/gmock.h>

namespace {

using namespace inventory;
using testing::ElementsAre;
using Zentar::Failure;
using Zentar::FailureKind;

Failure Request(FailureKind kind, const char* class_name) {
    Failure failure;
    failure.kind = kind;
    failure.operation = "EnumerateInstances";
    failure.class_name = class_name;
    return failure;
}

Failure NotAsked(FailureKind kind, const char* class_name) {
    Failure failure = Request(kind, class_name);
    failure.was_asked = false;
    return failure;
}

Failure Association(FailureKind kind) {
    Failure failure = Request(kind, "IBMSG_SystemSlot");
    failure.operation = "Associators";
    failure.association = "IBMSG_DeviceInSlot";
    return failure;
}

Failure Connecting(FailureKind kind) {
    Failure failure = Request(kind, "");
    failure.operation = "connect";
    return failure;
}

Failure Value(const char* class_name) { return Request(FailureKind::kValueUnreadable, class_name); }

Table Record() { return {{"record", "One", Shape::kOneRecord}, {{"a", "A"}}, {{"x"}}}; }

Table PciList(const char* class_name, std::vector<std::string> slots) {
    Table table{{"list", "Many", Shape::kList, class_name, "slot"}, {{"slot", "Slot"}}, {}};
    for (std::string& slot : slots) {
        table.rows.push_back({std::move(slot)});
    }
    return table;
}

Status OneRecord(int result, const std::vector<Failure>& failures) {
    SectionContent content{result, {Record()}};
    JudgeTables(content, failures);
    return StatusOf(content.tables);
}

TEST(SectionStatus, IsOkWithoutFailures) { EXPECT_EQ(OneRecord(0, {}), Status::kOk); }

TEST(SectionStatus, IsPartialWhenSomethingBesideTheResultFailed) {
    EXPECT_EQ(OneRecord(0, {Request(FailureKind::kUnknownNamespace, "IBM_ComputerSystem")}),
              Status::kPartial);
    EXPECT_EQ(OneRecord(0, {Value("Derived")}), Status::kPartial);
}

TEST(SectionStatus, IsOkWhenOnlyConnectingForTheNextRequestFailed) {
    EXPECT_EQ(OneRecord(0, {Connecting(FailureKind::kUnreachable)}), Status::kOk);
}

TEST(SectionStatus, IsUnavailableWhenTheHostSaysThatItHasNone) {
    const Failure no_class = Request(FailureKind::kUnknownClass, "X");
    EXPECT_EQ(OneRecord(1, {no_class}), Status::kUnavailable);
    EXPECT_EQ(OneRecord(1, {no_class, Request(FailureKind::kUnknownNamespace, "Y")}),
              Status::kUnavailable);
    EXPECT_EQ(OneRecord(1, {no_class, Connecting(FailureKind::kUnreachable)}),
              Status::kUnavailable);
    EXPECT_EQ(OneRecord(1, {no_class, Request(FailureKind::kTimedOut, "Y")}), Status::kFailed);
}

TEST(SectionStatus, IsSkippedWhenNothingWasAsked) {
    const Failure not_asked = NotAsked(FailureKind::kTimedOut, "X");
    EXPECT_EQ(OneRecord(1, {not_asked}), Status::kSkipped);
    EXPECT_EQ(OneRecord(1, {NotAsked(FailureKind::kUnreachable, ""), not_asked}), Status::kSkipped);
    EXPECT_EQ(OneRecord(1, {Request(FailureKind::kTimedOut, "Y"), not_asked}), Status::kFailed);
    EXPECT_EQ(OneRecord(1, {Connecting(FailureKind::kUnreachable), not_asked}), Status::kFailed);
}

TEST(SectionStatus, IsFailedWithoutAReason) { EXPECT_EQ(OneRecord(1, {}), Status::kFailed); }

std::vector<Status> Pci(const std::vector<Failure>& failures, std::vector<Table> tables) {
    SectionContent content{0, std::move(tables)};
    JudgeTables(content, failures);
    std::vector<Status> statuses{StatusOf(content.tables)};
    for (const Table& table : content.tables) {
        statuses.push_back(table.status);
    }
    return statuses;
}

std::vector<Table> ThreeLists() {
    return {PciList("IBMSG_PCIDevice", {"1", ""}), PciList("IBMSG_PCIBridge", {"1"}),
            PciList("IBMSG_SystemSlot", {})};
}

TEST(PciStatus, FollowsEachListsOwnClass) {
    EXPECT_THAT(Pci({Request(FailureKind::kUnknownClass, "IBMSG_SystemSlot")}, ThreeLists()),
                ElementsAre(Status::kPartial, Status::kOk, Status::kOk, Status::kUnavailable));
}

TEST(PciStatus, AnAssociationMakesListsPartialThatLackASlot) {
    EXPECT_THAT(Pci({Association(FailureKind::kBadReply)}, ThreeLists()),
                ElementsAre(Status::kPartial, Status::kPartial, Status::kOk, Status::kOk));
}

TEST(PciStatus, AnUnreadableValueMakesItsListPartial) {
    EXPECT_THAT(Pci({Value("IBMSG_PCIBridge")},
                    {PciList("IBMSG_PCIDevice", {"1"}), PciList("IBMSG_PCIBridge", {"1"})}),
                ElementsAre(Status::kPartial, Status::kOk, Status::kPartial));
}

TEST(PciStatus, IsFailedUnlessAllListsAreAlike) {
    const auto no_rows = [] {
        return std::vector<Table>{PciList("A", {}), PciList("B", {}), PciList("C", {})};
    };
    EXPECT_THAT(
        Pci({Request(FailureKind::kUnknownClass, "A"), Request(FailureKind::kTimedOut, "B"),
             NotAsked(FailureKind::kTimedOut, "C")},
            no_rows()),
        ElementsAre(Status::kFailed, Status::kUnavailable, Status::kFailed, Status::kSkipped));
    EXPECT_EQ(Pci({NotAsked(FailureKind::kTimedOut, "A"), NotAsked(FailureKind::kTimedOut, "B"),
                   NotAsked(FailureKind::kTimedOut, "C")},
                  no_rows())
                  .front(),
              Status::kSkipped);
}

}  // namespace
