// A document as text.
#include "outputs/text/text_output.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

#include "outputs/text/display_text.h"
#include "schema/host_kinds.h"
#include "schema/network_kinds.h"
#include "schema/pci_kinds.h"
#include "support/documents.h"

namespace {

using inventory::Document;
using inventory::SectionResult;
using inventory::Status;
using support::DocumentOf;
using support::RecordText;
using support::Section;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using Zentar::FailureKind;

constexpr std::size_t kWidths[] = {40, 60, 100, 200};

std::string Text(const Document& document, outputs::TextStyle style = {}) {
    std::ostringstream out;
    outputs::WriteText(document, style, out);
    return out.str();
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Without the lines about the host.
std::string SectionText(SectionResult section, std::size_t columns = 100) {
    std::string text = Text(DocumentOf(std::move(section)), {columns, false});
    text.erase(0, text.find("\n\n") + 2);
    return text.substr(0, text.rfind("\n\n") + 1);
}

/// The table or cards alone.
std::string RecordsText(SectionResult section, std::size_t columns = 100) {
    const std::string text = SectionText(std::move(section), columns);
    return text.substr(text.find("=\n") + 2);
}

SectionResult Marked(SectionResult section, Status status, FailureKind cause) {
    section.status = status;
    section.cause = cause;
    return section;
}

SectionResult Events(std::string_view message) {
    return Section(
        schema::kEvents,
        {{{"record_id", "7"}, {"time", "20260312081530.000000+060"}, {"message", message}}});
}

/// All that a host may say, too long for any terminal.
Document WideDocument() {
    const std::string text = "words of any length " + std::string(300, 'x') + " 日本語" +
                             std::string(50, '\x1B') + " end";
    const auto full = [&text](const schema::RecordKind& kind) {
        std::vector<RecordText> records(kind.shape == schema::Shape::kList ? 3 : 1);
        for (RecordText& record : records) {
            for (const schema::Field& field : kind.fields()) {
                record.emplace_back(field.name, text);
            }
        }
        return Section(kind, records);
    };
    return DocumentOf(
        full(schema::kSystem), full(schema::kOs), full(schema::kPackages), full(schema::kEvents),
        full(schema::kPrivileges), full(schema::kPorts), full(schema::kIPv4Endpoints),
        full(schema::kIPv6Endpoints), full(schema::kPciDevices), full(schema::kPciBridges),
        Marked(Section(schema::kPciSlots, {}), Status::kFailed, FailureKind::kCredentialsRefused));
}

TEST(TextOutput, BeginsWithWhatTheHostIs) {
    Document document = DocumentOf(
        Section(schema::kSystem, {{{"manufacturer", "Contoso"}, {"product_name", "CS2460 M5"}}}),
        Section(schema::kOs,
                {{{"name", "VMware ESXi"}, {"version", "6.7.0"}, {"build_number", "14320388"}}}));
    document.host = "esx01.example.com";
    EXPECT_THAT(Text(document), StartsWith("esx01.example.com:5989  Contoso CS2460 M5  "
                                           "VMware ESXi 6.7.0 build 14320388\n"));
}

TEST(TextOutput, NamesTheHostAsFarAsItIsKnown) {
    EXPECT_THAT(Text(DocumentOf(Section(schema::kPackages, {}))), StartsWith("esx01:5989\n"));
    Document document = DocumentOf(Section(
        schema::kSystem, {{{"manufacturer", "Contoso"}, {"product_name", "Contoso CS2460 M5"}}}));
    document.host = "::1";
    EXPECT_THAT(Text(document), StartsWith("[::1]:5989  Contoso CS2460 M5\n"));
}

TEST(TextOutput, EndsWithWhatWasRead) {
    EXPECT_THAT(Text(DocumentOf(Section(schema::kPackages, {}))),
                EndsWith("\n\nRead 1 section in 1.5 s.\n"));
    Document quick = DocumentOf(Section(schema::kPackages, {}));
    quick.duration = std::chrono::milliseconds(45);
    EXPECT_THAT(Text(quick), EndsWith("\n\nRead 1 section in 45 ms.\n"));
    const Document document = DocumentOf(
        Section(schema::kOs, {}), Section(schema::kPackages, {}),
        Marked(Section(schema::kPorts, {}), Status::kPartial, FailureKind::kValueUnreadable),
        Marked(Section(schema::kPciDevices, {}), Status::kUnavailable, FailureKind::kUnknownClass),
        Marked(Section(schema::kPciSlots, {}), Status::kUnavailable, FailureKind::kUnknownClass),
        Section(schema::kEvents, {}, Status::kFailed),
        Marked(Section(schema::kPrivileges, {}), Status::kSkipped, FailureKind::kCancelled));
    EXPECT_THAT(Text(document, {400, false}),
                EndsWith("\n\nRead 3 of 7 sections in 1.5 s; in part: ports (a value from the host "
                         "could not be read); not: pci_devices, pci_slots (the host does not have "
                         "this kind of inventory: the class is unknown); not: events; not asked "
                         "for: privileges (reading was interrupted).\n"));
}

TEST(TextOutput, FitsEveryTerminal) {
    const Document document = WideDocument();
    for (const std::size_t columns : kWidths) {
        for (const std::string& line : LinesOf(Text(document, {columns, false}))) {
            EXPECT_LE(outputs::DisplayWidth(line), columns) << line;
        }
    }
}

TEST(TextOutput, TreatsATerminalOfFewerThanFortyColumnsAsOneOfForty) {
    const Document document = WideDocument();
    EXPECT_EQ(Text(document, {1, false}), Text(document, {40, false}));
}

TEST(TextOutput, SizesColumnsToTheirContentWithNumbersToTheRight) {
    EXPECT_EQ(SectionText(Section(
                  schema::kPorts,
                  {{{"name", "vmnic0"}, {"speed_bps", "10000000000"}, {"full_duplex", "TRUE"}},
                   {{"name", "日本語ポート"}, {"speed_bps", "0"}, {"full_duplex", "FALSE"}}})),
              "Ethernet ports (2)\n"
              "==================\n"
              "Name          Speed (bit/s)  Full duplex\n"
              "------------  -------------  -----------\n"
              "vmnic0          10000000000  yes\n"
              "日本語ポート              0  no\n");
}

TEST(TextOutput, LeavesOutColumnsWithoutAnyValue) {
    EXPECT_EQ(RecordsText(
                  Section(schema::kPackages, {{{"name", "a"}, {"version", "1"}}, {{"name", "b"}}})),
              "Name  Version\n"
              "----  -------\n"
              "a     1\n"
              "b     -\n");
    EXPECT_EQ(RecordsText(Section(schema::kPackages, {{}, {}})), "Name\n----\n-\n-\n");
}

TEST(TextOutput, LeavesNoBlanksAtTheEndOfALine) {
    for (const std::size_t columns : kWidths) {
        EXPECT_THAT(Text(WideDocument(), {columns, false}), Not(HasSubstr(" \n")));
    }
}

TEST(TextOutput, BreaksHeadingsBeforeItShortensCells) {
    EXPECT_EQ(
        RecordsText(Section(schema::kPrivileges, {{{"instance_id", std::string(30, 'i')},
                                                   {"represents_authorization_rights", "TRUE"},
                                                   {"privilege_granted", "TRUE"}}}),
                    51),
        "                                Represents\n"
        "Instance                        rights      Granted\n"
        "------------------------------  ----------  -------\n"
        "iiiiiiiiiiiiiiiiiiiiiiiiiiiiii  yes         yes\n");
}

TEST(TextOutput, NarrowsTheWidestColumnsAndThoseThatIdentifyLast) {
    const auto package = [](std::size_t columns) {
        return RecordsText(
            Section(schema::kPackages, {{{"name", std::string(30, 'n')},
                                         {"version", std::string(20, 'v')},
                                         {"summary", std::string(40, 's')},
                                         {"installed_at", "20260312081530.000000+060"}}}),
            columns);
    };
    const auto rules = [](std::size_t name, std::size_t version, std::size_t summary) {
        return '\n' + std::string(name, '-') + "  " + std::string(version, '-') + "  " +
               std::string(summary, '-') + "  " + std::string(26, '-') + '\n';
    };
    EXPECT_THAT(package(200), HasSubstr(rules(30, 20, 40)));
    EXPECT_THAT(package(112), HasSubstr(rules(30, 20, 30)));
    EXPECT_THAT(package(86), HasSubstr(rules(30, 12, 12)));
    EXPECT_THAT(package(72), HasSubstr(rules(16, 12, 12)));
    EXPECT_THAT(package(71), Not(HasSubstr("---")));
}

TEST(TextOutput, ShortensTheFirstColumnAndGoesOnBelowTheOthers) {
    EXPECT_EQ(
        RecordsText(Section(schema::kPackages, {{{"name", "a driver of the vendor's own"},
                                                 {"version", "6.7.0-0.20.14320388"},
                                                 {"summary", "Driver for adapters"},
                                                 {"installed_at", "20260312081530.000000+060"}},
                                                {{"name", "b"}, {"summary", "Next"}}}),
                    72),
        "Name              Version       Summary       Installed\n"
        "----------------  ------------  ------------  --------------------------\n"
        "a driver of the…  6.7.0-0.20.   Driver for    2026-03-12 08:15:30 +01:00\n"
        "                  14320388      adapters\n"
        "b                 -             Next          -\n");
}

TEST(TextOutput, GoesOnWithEscapesAsTheyAre) {
    EXPECT_THAT(
        RecordsText(Events("Fan 1\n has failed \\ and was replaced"), 60),
        HasSubstr("  Fan 1\\n has failed \\\\\n" + std::string(36, ' ') + "and was replaced\n"));
}

TEST(TextOutput, GoesOnWithMessagesOverSomeLines) {
    EXPECT_EQ(RecordsText(Events("Fan 1 has failed and was replaced by Fan 2"), 60),
              "Record  Time                        Message\n"
              "------  --------------------------  ------------------------\n"
              "     7  2026-03-12 08:15:30 +01:00  Fan 1 has failed and was\n"
              "                                    replaced by Fan 2\n");
    EXPECT_THAT(RecordsText(Events(std::string(10'000, 'm')), 60),
                EndsWith('\n' + std::string(36, ' ') + std::string(23, 'm') + "…\n"));
}

TEST(TextOutput, LetsNoTextBeginALine) {
    const std::string words =
        "word Read 11 of 11 sections " + std::string(200, 'x') + " " + std::string(200, 'y');
    for (const std::size_t columns : kWidths) {
        for (const std::string& line :
             LinesOf(RecordsText(Section(schema::kPackages, {{{"summary", words}}}), columns))) {
            EXPECT_THAT(line, testing::AnyOf(StartsWith("Summary"), StartsWith("-----"),
                                             StartsWith("word"), StartsWith("   ")));
        }
    }
}

TEST(TextOutput, ShowsACardForEachRecordWhereATableDoesNotFit) {
    EXPECT_EQ(RecordsText(Section(schema::kEvents, {{{"record_id", "1"},
                                                     {"time", "20260312081530.000000+060"},
                                                     {"message", "Fan 1 has failed and was"}},
                                                    {{"record_id", "2"}, {"message", "Last"}}}),
                          40),
              "Record   1\n"
              "Time     2026-03-12 08:15:30 +01:00\n"
              "Message  Fan 1 has failed and was\n"
              "\n"
              "Record   2\n"
              "Time     -\n"
              "Message  Last\n");
}

TEST(TextOutput, NeverShortensNumbersAndDates) {
    for (const std::size_t columns : kWidths) {
        const std::string text = Text(DocumentOf(Events(std::string(1000, 'm'))), {columns, false});
        EXPECT_THAT(text, HasSubstr("2026-03-12 08:15:30 +01:00"));
    }
}

TEST(TextOutput, PadsNoRowToAHugeCell) {
    const std::string huge(1'000'000, 'h');
    std::vector<RecordText> rows(2000, {{"name", "name"}, {"version", "1"}, {"summary", "text"}});
    rows.push_back({{"name", huge}, {"version", huge}, {"summary", huge}});
    for (const std::size_t columns : {std::size_t{100}, std::size_t{1'000'000'000}}) {
        const std::string text =
            Text(DocumentOf(Section(schema::kPackages, rows)), {columns, false});
        EXPECT_LT(text.size(), 2000U * 250U);
        EXPECT_THAT(text, HasSubstr("hhh…"));
    }
}

TEST(TextOutput, ShowsOneRecordAsACardWithLongValuesOverLines) {
    EXPECT_EQ(SectionText(Section(schema::kOs, {{{"name", "VMware ESXi of many words and more"},
                                                 {"last_start", "20260312081530.000000+060"}}}),
                          42),
              "Hypervisor\n"
              "==========\n"
              "Name          VMware ESXi of many words\n"
              "              and more\n"
              "Version       -\n"
              "Build         -\n"
              "Manufacturer  -\n"
              "Last start    2026-03-12 08:15:30 +01:00\n");
    EXPECT_LT(
        Text(DocumentOf(Section(schema::kOs, {{{"version", std::string(1'000'000, 'v')}}}))).size(),
        6000U);
}

TEST(TextOutput, KeepsAbsentEmptyUnreadableAndUnaskedApart) {
    EXPECT_THAT(SectionText(Section(schema::kPackages, {})),
                EndsWith("==================\nThe host has none.\n"));
    EXPECT_EQ(
        SectionText(Marked(Section(schema::kPackages, {}), Status::kFailed, FailureKind::kBusy)),
        "Installed packages\n==================\nCould not be read: the host's CIM service is "
        "overloaded or starting.\n");
    EXPECT_THAT(SectionText(Section(schema::kPackages, {}, Status::kFailed)),
                EndsWith("\nCould not be read.\n"));
    const std::string text = Text(
        DocumentOf(Section(schema::kPackages, {}),
                   Marked(Section(schema::kOs, {}), Status::kSkipped, FailureKind::kCancelled)));
    EXPECT_THAT(text, HasSubstr("\nHypervisor\n==========\nNot asked for: reading was "
                                "interrupted.\n\nRead 1 of 2"));
}

TEST(TextOutput, WritesNothingOfAHostThatWasNotAsked) {
    EXPECT_EQ(Text(DocumentOf(Section(schema::kOs, {}, Status::kSkipped),
                              Section(schema::kPackages, {}, Status::kSkipped))),
              "");
}

TEST(TextOutput, ShowsWhatWasReadBesideAFailure) {
    EXPECT_THAT(
        SectionText(Marked(Section(schema::kPackages, {{{"name", "first"}}}), Status::kPartial,
                           FailureKind::kBadReply)),
        AllOf(HasSubstr("=\nRead in part: the host's reply is damaged"), EndsWith("\nfirst\n")));
    EXPECT_THAT(SectionText(Marked(Section(schema::kOs, {{{"version", "6.7"}}}), Status::kPartial,
                                   FailureKind::kUnknownNamespace)),
                HasSubstr("\nVersion       6.7\n"));
}

TEST(TextOutput, KeepsAValueOnItsLine) {
    const std::string hostile = "a\nForged\r\x1B[2J\u202E";
    const std::string shown = "a\\nForged\\r\\x1B[2J\\u{202E}";
    EXPECT_THAT(Text(DocumentOf(Section(schema::kOs, {{{"name", hostile}}}))),
                AllOf(StartsWith("esx01:5989  " + shown + "\n"), HasSubstr("  " + shown + "\n")));
    EXPECT_THAT(RecordsText(Events(hostile)), HasSubstr("  " + shown + "\n"));
    Document document = DocumentOf(Section(schema::kPackages, {}));
    document.host = hostile;
    EXPECT_THAT(Text(document), StartsWith(shown + ":5989\n"));
}

TEST(TextOutput, HasNoControlCharactersButLineBreaksAndColour) {
    for (const std::size_t columns : kWidths) {
        const std::string text = Text(WideDocument(), {columns, false});
        EXPECT_TRUE(std::ranges::none_of(
            text, [](char c) { return (c >= 0 && c < ' ' && c != '\n') || c == '\x7F'; }));
    }
}

TEST(TextOutput, HasHeadingsAndFailuresStandOutInColour) {
    const Document document =
        DocumentOf(Section(schema::kPackages, {{{"name", "a"}}}),
                   Marked(Section(schema::kOs, {}), Status::kFailed, FailureKind::kBusy));
    const std::string text = Text(document, {100, true});
    for (const char* bold :
         {"esx01:5989", "Installed packages (1)", "Name",
          "Could not be read: the host's CIM service is overloaded or starting."}) {
        EXPECT_THAT(text, HasSubstr(std::string("\x1B[1m") + bold + "\x1B[0m\n"));
    }
    EXPECT_THAT(text, HasSubstr("\na\n"));
}

TEST(TextOutput, IsTheSameTextInColour) {
    std::string coloured = Text(WideDocument(), {60, true});
    for (const std::string code : {"\x1B[0m", "\x1B[1m", "\x1B[2m"}) {
        for (std::size_t at; (at = coloured.find(code)) != std::string::npos;) {
            coloured.erase(at, code.size());
        }
    }
    EXPECT_EQ(coloured, Text(WideDocument(), {60, false}));
}

}  // namespace
