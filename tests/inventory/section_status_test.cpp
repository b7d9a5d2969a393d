// From a facade's result and failures to the statuses of tables and sections.
#include "inventory/section_status.h"

#include <gmock/gmock.h>

#include "schema/host_kinds.h"
#include "schema/pci_kinds.h"

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

Failure Association(FailureKind kind, const char* source_class = "IBMSG_PCIDevice") {
    Failure failure = Request(kind, "IBMSG_SystemSlot");
    failure.operation = "Associators";
    failure.association = "IBMSG_DeviceInSlot";
    failure.source_class = source_class;
    return failure;
}

Failure Connecting(FailureKind kind) {
    Failure failure = Request(kind, "");
    failure.operation = "connect";
    return failure;
}

Failure Value(const char* class_name) { return Request(FailureKind::kValueUnreadable, class_name); }

using Sections = std::vector<SectionResult>;

SectionResult ResultOf(const schema::RecordKind& kind) { return {kind.MakeRecords()}; }

/// Of a section that is one record.
SectionResult Judged(int result, const std::vector<Failure>& failures) {
    Sections sections;
    sections.push_back(ResultOf(schema::kSystem));
    JudgeSections(result, failures, sections);
    return std::move(sections.front());
}

Status OneRecord(int result, const std::vector<Failure>& failures) {
    return Judged(result, failures).status;
}

TEST(SectionStatus, IsOkWithoutFailures) { EXPECT_EQ(OneRecord(0, {}), Status::kOk); }

TEST(SectionStatus, IsPartialWhenSomethingBesideTheResultFailed) {
    EXPECT_EQ(OneRecord(0, {Request(FailureKind::kUnknownNamespace, "IBM_ComputerSystem")}),
              Status::kPartial);
    EXPECT_EQ(OneRecord(0, {Value("Derived")}), Status::kPartial);
}

TEST(SectionStatus, KnowsWhetherOnlyThatIsMissingWhichTheHostDoesNotHave) {
    const Failure no_namespace = Request(FailureKind::kUnknownNamespace, "IBM_ComputerSystem");
    EXPECT_TRUE(Judged(0, {no_namespace}).lacks_only_unavailable);
    EXPECT_FALSE(Judged(0, {no_namespace, Value("OMC_Chassis")}).lacks_only_unavailable);
    EXPECT_FALSE(Judged(1, {}).lacks_only_unavailable);
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

/// A list of the PCI inventory, of records that sit in these slots.
SectionResult PciList(const schema::RecordKind& kind, const std::vector<std::string_view>& slots) {
    SectionResult result = ResultOf(kind);
    for (const std::string_view slot : slots) {
        result.records->Append();
        result.records->Set(result.records->size() - 1, PlaceOf(kind, "slot"), slot);
    }
    return result;
}

Sections PciLists(const std::vector<std::string_view>& device_slots) {
    Sections sections;
    sections.push_back(PciList(schema::kPciDevices, device_slots));
    sections.push_back(PciList(schema::kPciBridges, {"1"}));
    sections.push_back(ResultOf(schema::kPciSlots));
    return sections;
}

Sections NoPciRecords() {
    Sections sections;
    sections.push_back(ResultOf(schema::kPciDevices));
    sections.push_back(ResultOf(schema::kPciBridges));
    sections.push_back(ResultOf(schema::kPciSlots));
    return sections;
}

std::vector<Status> Pci(const std::vector<Failure>& failures, Sections sections) {
    JudgeSections(0, failures, sections);
    std::vector<Status> statuses;
    for (const SectionResult& section : sections) {
        statuses.push_back(section.status);
    }
    return statuses;
}

TEST(PciStatus, FollowsEachListsOwnClass) {
    EXPECT_THAT(Pci({Request(FailureKind::kUnknownClass, "IBMSG_SystemSlot")}, PciLists({"1"})),
                ElementsAre(Status::kOk, Status::kOk, Status::kUnavailable));
    EXPECT_THAT(Pci({Request(FailureKind::kUnknownClass, "IBMSG_PCIDevice"),
                     Request(FailureKind::kTimedOut, "IBMSG_PCIBridge"),
                     NotAsked(FailureKind::kTimedOut, "IBMSG_SystemSlot")},
                    NoPciRecords()),
                ElementsAre(Status::kUnavailable, Status::kFailed, Status::kSkipped));
}

TEST(PciStatus, AnAssociationMakesItsSourcesListPartial) {
    EXPECT_THAT(Pci({Association(FailureKind::kBadReply)}, PciLists({"1", ""})),
                ElementsAre(Status::kPartial, Status::kOk, Status::kOk));
    Sections slotless = NoPciRecords();
    slotless[0] = PciList(schema::kPciDevices, {""});
    slotless[1] = PciList(schema::kPciBridges, {""});
    EXPECT_THAT(Pci({Association(FailureKind::kBadReply, "IBMSG_PCIBridge")}, std::move(slotless)),
                ElementsAre(Status::kOk, Status::kPartial, Status::kOk));
}

TEST(PciStatus, AnUnreadableValueMakesItsListPartial) {
    EXPECT_THAT(Pci({Value("IBMSG_PCIBridge")}, PciLists({"1"})),
                ElementsAre(Status::kOk, Status::kPartial, Status::kOk));
}

TEST(PciStatus, FailuresAreAboutTheListOfTheirClass) {
    const Sections sections = PciLists({});
    EXPECT_EQ(SectionOf(Request(FailureKind::kBusy, "IBMSG_SystemSlot"), sections), "pci_slots");
    EXPECT_EQ(SectionOf(Association(FailureKind::kBusy, "IBMSG_PCIBridge"), sections),
              "pci_bridges");
    EXPECT_EQ(SectionOf(Connecting(FailureKind::kBusy), sections), "pci_devices");
}

SectionResult Marked(Status status, bool lacks_only_unavailable = false) {
    SectionResult section = ResultOf(schema::kPackages);
    section.status = status;
    section.lacks_only_unavailable = lacks_only_unavailable;
    return section;
}

template <class... Results>
std::vector<Status> Whole(Results... results) {
    Sections sections;
    (sections.push_back(std::move(results)), ...);
    return {StatusOfWhole(sections, false), StatusOfWhole(sections, true)};
}

TEST(StatusOfWhole, IsOkWhereTheHostOnlyLacksSomething) {
    EXPECT_THAT(Whole(Marked(Status::kOk)), ElementsAre(Status::kOk, Status::kOk));
    EXPECT_THAT(Whole(Marked(Status::kPartial, true), Marked(Status::kUnavailable)),
                ElementsAre(Status::kOk, Status::kPartial));
    EXPECT_THAT(Whole(Marked(Status::kUnavailable)), ElementsAre(Status::kOk, Status::kFailed));
}

TEST(StatusOfWhole, IsFailedWhereNothingWasReadAndSomethingFailed) {
    EXPECT_THAT(Whole(Marked(Status::kUnavailable), Marked(Status::kFailed)),
                ElementsAre(Status::kFailed, Status::kFailed));
    EXPECT_THAT(Whole(Marked(Status::kSkipped)), ElementsAre(Status::kFailed, Status::kFailed));
    EXPECT_THAT(Whole(Marked(Status::kPartial), Marked(Status::kFailed)),
                ElementsAre(Status::kPartial, Status::kPartial));
    EXPECT_THAT(Whole(Marked(Status::kOk), Marked(Status::kSkipped)),
                ElementsAre(Status::kPartial, Status::kPartial));
}

}  // namespace
