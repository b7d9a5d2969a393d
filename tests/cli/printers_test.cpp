// How sections come out as text and as JSON.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/printer.h"

namespace {

using namespace command;
using inventory::Cell;
using inventory::SectionContent;
using inventory::SectionReading;
using inventory::Shape;
using inventory::Status;
using inventory::Table;
using testing::HasSubstr;
using testing::Not;
using Zentar::Failure;
using Zentar::FailureKind;
using Json = nlohmann::ordered_json;

Table ListOf(std::vector<std::vector<Cell>> rows) {
    return {{"records", "Things"}, {{"name_", "Name"}, {"count", "Count"}}, std::move(rows)};
}

Table RecordOf(std::vector<Cell> row) {
    return {{"record", "One thing", Shape::kOneRecord},
            {{"name_", "Name"}, {"model_", "Long model"}},
            {std::move(row)}};
}

using PrinterMaker = std::unique_ptr<Printer> (*)(std::ostream&);

std::string Printed(PrinterMaker make, const SectionReading& reading,
                    const std::vector<Failure>& connecting = {}) {
    std::ostringstream out;
    const auto printer = make(out);
    printer->Begin("h\x1B", 5989, connecting);
    printer->Print(reading);
    printer->End();
    return out.str();
}

SectionReading ReadingOf(const Table& table, int result = 0, std::vector<Failure> failures = {}) {
    return {"things", {result, {table}}, std::move(failures), 0, table.status};
}

std::string Text(const Table& table) {
    const std::string text = Printed(MakeTextPrinter, ReadingOf(table));
    return text.substr(text.find("\n\n") + 2);
}

std::string JsonText(const Table& table, int result = 0) {
    return Printed(MakeJsonPrinter, ReadingOf(table, result));
}

Table Marked(Table table, Status status, FailureKind cause) {
    table.status = status;
    table.cause = cause;
    return table;
}

TEST(TextPrinter, NamesTheHostSafely) {
    EXPECT_THAT(Printed(MakeTextPrinter, ReadingOf(ListOf({}))),
                testing::StartsWith("Inventory of h\\x1B, port 5989\n"));
}

TEST(TextPrinter, SizesColumnsToTheirContentWithNumbersToTheRight) {
    EXPECT_EQ(Text(ListOf({{"short", std::uint64_t{7}},
                           {"rather long", std::uint64_t{18446744073709551615U}},
                           {"日本語", std::int32_t{-1}}})),
              "Things (3)\n"
              "==========\n"
              "Name                        Count\n"
              "-----------  --------------------\n"
              "short                           7\n"
              "rather long  18446744073709551615\n"
              "日本語                         -1\n");
}

TEST(TextPrinter, LeavesNoBlanksAtTheEndOfALine) {
    EXPECT_EQ(Text(RecordOf({"x", "y"})), "One thing\n=========\nName        x\nLong model  y\n");
    const Table two_texts{{"records", "T"}, {{"a", "A"}, {"b", "Bbbb"}}, {{"1", "2"}}};
    EXPECT_THAT(Text(two_texts), Not(HasSubstr(" \n")));
}

TEST(TextPrinter, ShortensWhatIsWiderThanItsColumn) {
    const std::string wide(1000, 'w');
    const std::string text = Text({{"records", "T"}, {{"a", "A"}, {"b", "B"}}, {{wide, wide}}});
    EXPECT_THAT(text,
                HasSubstr('\n' + std::string(79, 'w') + "…  " + std::string(399, 'w') + "…\n"));
    EXPECT_THAT(Text(RecordOf({std::string(4096, 'w'), std::string(4097, 'x')})),
                testing::AllOf(HasSubstr("  " + std::string(4096, 'w') + '\n'),
                               HasSubstr("  " + std::string(4095, 'x') + "…\n")));
}

TEST(TextPrinter, PadsNoRowToAHugeCell) {
    const std::string huge(1'000'000, 'h');
    std::vector<std::vector<Cell>> rows(5000, {"name", "text", "last"});
    rows.push_back({huge, huge, huge});
    const std::string text =
        Text({{"records", "T"}, {{"a", "A"}, {"b", "B"}, {"c", "C"}}, std::move(rows)});
    EXPECT_LT(text.size(), 5000U * 200U);
}

TEST(TextPrinter, KeepsAbsentEmptyUnreadableAndUnaskedApart) {
    EXPECT_THAT(Text(RecordOf({"", "y"})), HasSubstr("Name        -\n"));
    EXPECT_THAT(Text(ListOf({})), HasSubstr("======\nThe host has none.\n"));
    const Table failed = Marked(ListOf({}), Status::kFailed, FailureKind::kBusy);
    EXPECT_EQ(Text(failed),
              "Things\n======\nCould not be read: the host's CIM service is overloaded or "
              "starting.\n");
    std::ostringstream out;
    const auto printer = MakeTextPrinter(out);
    printer->Begin("h", 5989, {});
    printer->Print(ReadingOf(failed, 1));
    printer->Print(ReadingOf(Marked(ListOf({}), Status::kSkipped, FailureKind::kCancelled), 1));
    printer->End();
    EXPECT_THAT(out.str(),
                HasSubstr("\nThings\n======\nNot asked for: reading was interrupted.\n"));
}

TEST(TextPrinter, WritesNothingOfAHostThatWasNotAsked) {
    const Table skipped = Marked(ListOf({}), Status::kSkipped, FailureKind::kUnreachable);
    EXPECT_EQ(Printed(MakeTextPrinter, ReadingOf(skipped, 1)), "");
}

TEST(TextPrinter, ShowsWhatWasReadBesideAFailure) {
    EXPECT_THAT(Text(Marked(ListOf({{"first", std::uint64_t{1}}}), Status::kPartial,
                            FailureKind::kBadReply)),
                testing::AllOf(HasSubstr("Read in part: the host's reply is damaged"),
                               HasSubstr("first      1\n")));
    EXPECT_THAT(
        Text(Marked(RecordOf({"first", ""}), Status::kPartial, FailureKind::kUnknownNamespace)),
        HasSubstr("Name        first\n"));
}

TEST(TextPrinter, KeepsAValueOnItsLine) {
    const std::string text = Text(RecordOf({"a\nForged  value\x1B[2J", ""}));
    EXPECT_THAT(text, HasSubstr("Name        a\\nForged  value\\x1B[2J\n"));
}

TEST(JsonPrinter, KeepsKeysAndOrder) {
    EXPECT_EQ(JsonText(RecordOf({"x", ""})),
              "{\n"
              "  \"host\": \"h\\u001b\",\n"
              "  \"port\": 5989,\n"
              "  \"sections\": {\n"
              "    \"things\": {\n"
              "      \"result\": 0,\n"
              "      \"record\": {\n"
              "        \"name_\": \"x\",\n"
              "        \"model_\": \"\"\n"
              "      }\n"
              "    }\n"
              "  },\n"
              "  \"failures\": []\n"
              "}\n");
}

TEST(JsonPrinter, WritesNumbersAsNumbers) {
    const Json json = Json::parse(
        JsonText(ListOf({{"a", std::uint64_t{18446744073709551615U}}, {"b", std::int32_t{-3}}})));
    const Json& records = json.at("sections").at("things").at("records");
    EXPECT_EQ(records.at(0).at("count"), 18446744073709551615U);
    EXPECT_EQ(records.at(1).at("count"), -3);
}

TEST(JsonPrinter, WritesAnEmptyListAsAnArray) {
    const Json json = Json::parse(JsonText(ListOf({}), 1));
    EXPECT_EQ(json.at("sections").at("things"), Json::parse(R"({"result": 1, "records": []})"));
}

TEST(JsonPrinter, ReplacesBytesThatAreNotUtf8) {
    const Json json = Json::parse(JsonText(RecordOf({"caf\xE9 x", "\xED\xA0\x80"})));
    const Json& record = json.at("sections").at("things").at("record");
    EXPECT_EQ(record.at("name_"), "caf\uFFFD x");
    EXPECT_THAT(record.at("model_").get<std::string>(), HasSubstr("\uFFFD"));
}

TEST(JsonPrinter, EscapesEveryControlCharacter) {
    const std::string text = JsonText(RecordOf({"\x1B\n\x7F\u009B\u00A0", ""}));
    EXPECT_THAT(text, HasSubstr("\\u001b\\n\\u007f\\u009b\u00A0"));
    const Json record = Json::parse(text).at("sections").at("things").at("record");
    EXPECT_EQ(record.at("name_"), "\x1B\n\x7F\u009B\u00A0");
}

TEST(JsonPrinter, EscapesInvisibleCharactersAndDecodesToTheHostsText) {
    const std::string hostile = "a\u202Etxt\u200D\uFEFF\u2028\U000E0041\\u202e";
    const std::string text = JsonText(RecordOf({hostile, ""}));
    EXPECT_THAT(text, HasSubstr("\"a\\u202etxt\\u200d\\ufeff\\u2028\\udb40\\udc41\\\\u202e\""));
    const Json record = Json::parse(text).at("sections").at("things").at("record");
    EXPECT_EQ(record.at("name_"), hostile);
}

TEST(JsonPrinter, ListsEachFailureOnceWithItsSection) {
    Failure connecting;
    connecting.kind = FailureKind::kUnreachable;
    connecting.text = "Connection refused";
    Failure refused;
    refused.kind = FailureKind::kCredentialsRefused;
    refused.code = 401;
    refused.class_name = "OMC_Chassis";
    refused.text = "a\x1B";
    const Json json = Json::parse(Printed(
        MakeJsonPrinter, ReadingOf(ListOf({}), 1, {refused, refused}), {connecting, connecting}));
    const Json& failures = json.at("failures");
    ASSERT_EQ(failures.size(), 2U);
    EXPECT_EQ(failures[0].at("section"), nullptr);
    EXPECT_EQ(failures[0].at("kind"), "unreachable");
    EXPECT_EQ(failures[0].at("code"), nullptr);
    EXPECT_EQ(failures[0].at("class"), nullptr);
    EXPECT_THAT(failures[0].at("message").get<std::string>(), HasSubstr("(Connection refused)"));
    EXPECT_EQ(failures[1].at("section"), "things");
    EXPECT_EQ(failures[1].at("kind"), "credentials_refused");
    EXPECT_EQ(failures[1].at("code"), 401);
    EXPECT_EQ(failures[1].at("class"), "OMC_Chassis");
    EXPECT_THAT(failures[1].at("message").get<std::string>(), HasSubstr("(a\x1B)"));
    EXPECT_EQ(failures[1].at("advice"), "check --user and the password");
}

TEST(JsonPrinter, ListsEveryDifferentFailure) {
    std::vector<Failure> failures(4000);
    for (std::size_t i = 0; i < failures.size(); ++i) {
        failures[i].kind = FailureKind::kCimError;
        failures[i].text = std::string(1000, 'x') + std::to_string(i);
    }
    const std::vector<Failure> once = failures;
    failures.insert(failures.end(), once.begin(), once.end());
    const Json json =
        Json::parse(Printed(MakeJsonPrinter, ReadingOf(ListOf({}), 1, failures), once));
    EXPECT_EQ(json.at("failures").size(), 8000U);
}

}  // namespace
