// How sections come out as text and as JSON.
#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/printer.h"

namespace {

using namespace command;
using testing::HasSubstr;
using testing::Not;
using Json = nlohmann::ordered_json;

Table ListOf(std::vector<std::vector<Cell>> rows) {
    return {
        {"records", "Things"}, {{"name_", "Name"}, {"count", "Count"}}, std::move(rows), false, {}};
}

Table RecordOf(std::vector<Cell> row) {
    return {{"record", "One thing", Shape::kOneRecord},
            {{"name_", "Name"}, {"model_", "Long model"}},
            {std::move(row)},
            false,
            {}};
}

using PrinterMaker = std::unique_ptr<Printer> (*)(std::ostream&);

std::string Printed(PrinterMaker make, const SectionContent& content) {
    std::ostringstream out;
    const auto printer = make(out);
    printer->Begin("h\x1B", 5989);
    printer->Print("things", content);
    printer->End();
    return out.str();
}

std::string Text(const Table& table) {
    const std::string text = Printed(MakeTextPrinter, {table.failed ? 1 : 0, {table}});
    return text.substr(text.find("\n\n") + 2);
}

std::string JsonText(const Table& table, int result = 0) {
    return Printed(MakeJsonPrinter, {result, {table}});
}

TEST(TextPrinter, NamesTheHostSafely) {
    EXPECT_THAT(Printed(MakeTextPrinter, {}),
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
    const Table two_texts{{"records", "T"}, {{"a", "A"}, {"b", "Bbbb"}}, {{"1", "2"}}, false, {}};
    EXPECT_THAT(Text(two_texts), Not(HasSubstr(" \n")));
}

TEST(TextPrinter, TellsAbsentEmptyAndFailedApart) {
    EXPECT_THAT(Text(RecordOf({"", "y"})), HasSubstr("Name        -\n"));
    EXPECT_THAT(Text(ListOf({})), HasSubstr("======\nThe host has none.\n"));
    Table failed = ListOf({});
    failed.failed = true;
    failed.failure = "it is on fire";
    EXPECT_EQ(Text(failed), "Things\n======\nCould not be read: it is on fire.\n");
}

TEST(TextPrinter, ShowsWhatWasReadBeforeAFailure) {
    Table failed = ListOf({{"first", std::uint64_t{1}}});
    failed.failed = true;
    failed.failure = "cut";
    EXPECT_THAT(Text(failed), testing::AllOf(HasSubstr("Could not be read: cut.\n"),
                                             HasSubstr("first      1\n")));
    Table record = RecordOf({"first", ""});
    record.failed = true;
    EXPECT_THAT(Text(record), HasSubstr("Name        first\n"));
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
              "  }\n"
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

}  // namespace
