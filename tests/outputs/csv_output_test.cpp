// A document as CSV.
#include "outputs/csv/csv_output.h"

#include <gmock/gmock.h>

#include <sstream>

#include "outputs/csv/csv_cell.h"
#include "schema/host_kinds.h"
#include "schema/network_kinds.h"
#include "support/documents.h"

namespace {

using inventory::Document;
using inventory::Status;
using support::DocumentOf;
using support::Section;

std::string Rows(const Document& document, const schema::RecordKind& kind) {
    std::ostringstream out;
    outputs::AppendCsv(document, kind, out);
    return out.str();
}

std::string Cell(std::string_view text) {
    std::string cell;
    outputs::AppendCsvCell(cell, text);
    return cell;
}

TEST(CsvOutput, HeaderIsTheHostAndThePublicNames) {
    EXPECT_EQ(outputs::CsvHeader(schema::kPorts),
              "host,name,mac_addresses,speed_bps,full_duplex\r\n");
}

TEST(CsvOutput, EachRecordIsALineWithTheHostFirst) {
    EXPECT_EQ(Rows(DocumentOf(Section(schema::kPorts, {{{"name", "vmnic0"},
                                                        {"mac_addresses", "a b "},
                                                        {"speed_bps", "10000000000"},
                                                        {"full_duplex", "TRUE"}},
                                                       {{"name", "vmnic1"}}})),
                   schema::kPorts),
              "esx01,vmnic0,a b,10000000000,true\r\n"
              "esx01,vmnic1,,,\r\n");
}

TEST(CsvOutput, DatesAreIso8601) {
    EXPECT_EQ(
        Rows(DocumentOf(Section(schema::kOs, {{{"last_start", "20260312081530.000000+060"}}})),
             schema::kOs),
        "esx01,,,,,2026-03-12T08:15:30+01:00\r\n");
}

TEST(CsvOutput, ASingleRecordThatCouldNotBeReadIsNoLine) {
    EXPECT_EQ(Rows(DocumentOf(Section(schema::kOs, {}, Status::kFailed)), schema::kOs), "");
    EXPECT_EQ(Rows(DocumentOf(Section(schema::kOs, {})), schema::kOs), "esx01,,,,,\r\n");
}

TEST(CsvOutput, AKindThatWasNotChosenHasNoLine) {
    EXPECT_EQ(Rows(DocumentOf(Section(schema::kOs, {})), schema::kPorts), "");
}

TEST(CsvOutput, FailuresAreATableOfTheirOwn) {
    Document document = DocumentOf(Section(schema::kOs, {}, Status::kFailed));
    document.failures = {{"os", Zentar::FailureKind::kCimError, 1, "X", "out of luck, \"again\""},
                         {"", Zentar::FailureKind::kUnreachable, 0, "", "closed"}};
    std::ostringstream out;
    outputs::AppendCsvFailures(document, out);
    EXPECT_EQ(outputs::CsvFailuresHeader(), "host,section,kind,code,class,message\r\n");
    EXPECT_EQ(out.str(),
              "esx01,os,cim_error,1,X,\"out of luck, \"\"again\"\"\"\r\n"
              "esx01,,unreachable,,,closed\r\n");
}

TEST(CsvCell, IsQuotedWhereRfc4180WantsIt) {
    EXPECT_EQ(Cell("plain text"), "plain text");
    EXPECT_EQ(Cell("a,b"), "\"a,b\"");
    EXPECT_EQ(Cell("a\"b"), "\"a\"\"b\"");
    EXPECT_EQ(Cell("a\r\nb"), "\"a\r\nb\"");
    EXPECT_EQ(Cell(""), "");
}

TEST(CsvCell, AFormulaIsMadeHarmless) {
    EXPECT_EQ(Cell("=1+1"), "'=1+1");
    EXPECT_EQ(Cell("+1"), "'+1");
    EXPECT_EQ(Cell("-1+1"), "'-1+1");
    EXPECT_EQ(Cell("-"), "'-");
    EXPECT_EQ(Cell("@SUM(A1)"), "'@SUM(A1)");
    EXPECT_EQ(Cell("\t=1"), "'\t=1");
    EXPECT_EQ(Cell("\r=1"), "\"'\r=1\"");
    EXPECT_EQ(Cell("=\"a\""), "\"'=\"\"a\"\"\"");
}

TEST(CsvCell, ANegativeIntegerStaysAsItIs) { EXPECT_EQ(Cell("-12"), "-12"); }

TEST(CsvCell, HoldsTheValueItself) {
    EXPECT_EQ(Cell("a\\b\x1B\u202E\u20AC"), "a\\b\x1B\u202E\u20AC");
    EXPECT_EQ(Cell("a\xFF\xC3"), "a\uFFFD\uFFFD");
}

}  // namespace
