// A document as JSON.
#include "outputs/json/json_output.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "schema/host_kinds.h"
#include "schema/network_kinds.h"
#include "support/documents.h"

namespace {

using inventory::Document;
using inventory::Status;
using support::DocumentOf;
using support::Section;
using Zentar::FailureKind;
using Json = nlohmann::ordered_json;

std::string JsonText(const Document& document,
                     outputs::JsonLayout layout = outputs::JsonLayout::kIndented) {
    std::ostringstream out;
    WriteJson(document, out, layout);
    return out.str();
}

TEST(JsonOutput, SaysWhatWasReadAndHow) {
    EXPECT_EQ(JsonText(DocumentOf(Section(schema::kOs, {{{"name", "VMware ESXi"}}}))),
              R"({
  "schema": "kalvex/1",
  "kalvex": "1.1.0",
  "host": "esx01",
  "port": 5989,
  "transport": "https",
  "started_at": "2026-11-22T05:00:15Z",
  "seconds": 1.5,
  "status": "ok",
  "sections": {
    "os": {
      "status": "ok",
      "record": {
        "name": "VMware ESXi",
        "version": null,
        "build_number": null,
        "manufacturer": null,
        "last_start": null
      }
    }
  },
  "failures": []
})");
}

TEST(JsonOutput, GivesEachValueItsType) {
    const Json port = Json::parse(JsonText(DocumentOf(
        Section(schema::kPorts, {{{"name", "vmnic0"},
                                  {"mac_addresses", "02:00:00:00:00:01 02:00:00:00:00:02"},
                                  {"speed_bps", "10000000000"},
                                  {"full_duplex", "TRUE"}}}))))["sections"]["ports"]["records"][0];
    EXPECT_EQ(port, Json::parse(R"({"name": "vmnic0", "mac_addresses":
        ["02:00:00:00:00:01", "02:00:00:00:00:02"], "speed_bps": 10000000000,
        "full_duplex": true})"));
    const Json event = Json::parse(JsonText(DocumentOf(
        Section(schema::kEvents,
                {{{"record_id", "7"},
                  {"time", "20260312081530.000000+060"}}}))))["sections"]["events"]["records"][0];
    EXPECT_EQ(event, Json::parse(R"({"record_id": 7, "time": "2026-03-12T08:15:30+01:00",
        "message": null})"));
}

TEST(JsonOutput, WritesAnEmptyListAsAnArray) {
    const Json json =
        Json::parse(JsonText(DocumentOf(Section(schema::kPackages, {}, Status::kFailed))));
    EXPECT_EQ(json["sections"]["packages"], Json::parse(R"({"status": "failed", "records": []})"));
    EXPECT_EQ(json["status"], "failed");
}

TEST(JsonOutput, ListsFailuresWithWhatToDo) {
    Document document = DocumentOf();
    document.failures = {{"", FailureKind::kUnreachable, 0, "", "no way"},
                         {"os", FailureKind::kCredentialsRefused, 401, "X", "refused \x1B"}};
    const Json failures = Json::parse(JsonText(document))["failures"];
    ASSERT_EQ(failures.size(), 2U);
    EXPECT_EQ(failures[0]["section"], nullptr);
    EXPECT_EQ(failures[0]["kind"], "unreachable");
    EXPECT_EQ(failures[0]["code"], nullptr);
    EXPECT_EQ(failures[0]["class"], nullptr);
    EXPECT_EQ(failures[0]["message"], "no way");
    EXPECT_EQ(failures[1], Json::parse(R"({"section": "os", "kind": "credentials_refused",
        "code": 401, "class": "X", "message": "refused \u001b", "advice": "check --user and the password"})"));
}

TEST(JsonOutput, CountsFailuresThatWereTooMany) {
    Document document = DocumentOf();
    EXPECT_FALSE(Json::parse(JsonText(document)).contains("dropped_failures"));
    document.dropped_failures = 12;
    EXPECT_EQ(Json::parse(JsonText(document))["dropped_failures"], 12);
}

TEST(JsonOutput, FitsOneLine) {
    const Document document = DocumentOf(Section(schema::kOs, {{{"name", "a\nb"}}}));
    const std::string line = JsonText(document, outputs::JsonLayout::kOneLine);
    EXPECT_EQ(line.find('\n'), std::string::npos);
    EXPECT_EQ(Json::parse(line), Json::parse(JsonText(document)));
}

}  // namespace
