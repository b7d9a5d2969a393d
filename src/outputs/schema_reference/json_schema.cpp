#include "outputs/schema_reference/json_schema.h"

#include <initializer_list>
#include <string>

#include "common/records/failure.h"
#include "inventory/document.h"
#include "inventory/sections.h"
#include "outputs/json/json_output.h"
#include "outputs/json/json_writer.h"

namespace outputs {

namespace {

using inventory::Status;
using schema::Field;
using schema::RecordKind;
using schema::Type;
using Words = std::initializer_list<const char*>;

constexpr const char* kDateTimePattern = "^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z$";

/// Writes the schema, the document first and then what it refers to.
class SchemaWriter {
public:
    explicit SchemaWriter(std::ostream& out) : json_(out, JsonLayout::kIndented) {}

    void Write() {
        json_.OpenObject();
        json_.Member("$schema", "https://json-schema.org/draft/2020-12/schema");
        json_.Member("$id", std::string("urn:") + kJsonSchemaName);
        json_.Member("title", "Inventory of one host, as kalvex reads it");
        OpenProperties();
        Head();
        Sections();
        Failures();
        json_.CloseObject();
        List("required", {"schema", "kalvex", "host", "port", "transport", "started_at", "seconds",
                          "status", "sections", "failures"});
        Definitions();
        json_.CloseObject();
    }

private:
    /// Of an object without further keys.
    void OpenProperties() {
        json_.Member("type", "object");
        json_.Member("additionalProperties", false);
        json_.Key("properties");
        json_.OpenObject();
    }

    void List(const char* key, Words words) {
        json_.Key(key);
        json_.OpenArray();
        for (const char* word : words) {
            json_.Value(word);
        }
        json_.CloseArray();
    }

    /// The caller closes it.
    void OpenNamed(const char* name, const char* description) {
        json_.Key(name);
        json_.OpenObject();
        json_.Member("description", description);
    }

    void Simple(const char* name, Words types, const char* description) {
        OpenNamed(name, description);
        List("type", types);
        json_.CloseObject();
    }

    void OneOf(const char* name, Words words, const char* description) {
        OpenNamed(name, description);
        List("enum", words);
        json_.CloseObject();
    }

    void Number(const char* name, std::int64_t least, const char* type, const char* description) {
        OpenNamed(name, description);
        json_.Member("type", type);
        json_.Member("minimum", least);
        json_.CloseObject();
    }

    void Reference(const std::string& definition) {
        json_.OpenObject();
        json_.Member("$ref", "#/$defs/" + definition);
        json_.CloseObject();
    }

    void Head() {
        OpenNamed("schema", "Name and version of this form.");
        json_.Member("const", kJsonSchemaName);
        json_.CloseObject();
        Simple("kalvex", {"string"}, "Version of the program.");
        Simple("host", {"string"}, "Name or address, as it was given.");
        Number("port", 0, "integer", "TCP port.");
        OneOf("transport", {"http", "https"}, "What CIM-XML went over.");
        OpenNamed("started_at", "When reading began, by the clock of the reading machine.");
        json_.Member("type", "string");
        json_.Member("format", "date-time");
        json_.Member("pattern", kDateTimePattern);
        json_.CloseObject();
        Number("seconds", 0, "number", "How long it took.");
        OneOf("status", {WordOf(Status::kOk), WordOf(Status::kPartial), WordOf(Status::kFailed)},
              "How reading went: failed when no section was read, not even in part.");
    }

    void Sections() {
        OpenNamed("sections", "Those that were chosen.");
        OpenProperties();
        for (const RecordKind* kind : inventory::AllKinds()) {
            json_.Key(kind->name);
            Reference(kind->name);
        }
        json_.CloseObject();
        json_.CloseObject();
    }

    void Failures() {
        OpenNamed("failures", "What could not be read, and why.");
        json_.Member("type", "array");
        json_.Key("items");
        Reference("failure");
        json_.CloseObject();
        Number("dropped_failures", 1, "integer",
               "Older failures that were too many to be kept; absent without any.");
    }

    void Definitions() {
        json_.Key("$defs");
        json_.OpenObject();
        SectionStatus();
        Failure();
        for (const RecordKind* kind : inventory::AllKinds()) {
            Section(*kind);
        }
        json_.CloseObject();
    }

    void SectionStatus() {
        OneOf("section_status",
              {WordOf(Status::kOk), WordOf(Status::kPartial), WordOf(Status::kUnavailable),
               WordOf(Status::kFailed), WordOf(Status::kSkipped)},
              "unavailable: the host answered that it has no such namespace or class. skipped: it "
              "was not asked.");
    }

    void Failure() {
        json_.Key("failure");
        json_.OpenObject();
        OpenProperties();
        Simple("section", {"string", "null"}, "What it struck; null for connecting.");
        OpenNamed("kind", "What went wrong, for programs.");
        json_.Key("enum");
        json_.OpenArray();
        for (const Zentar::FailureKindName& kind : Zentar::kFailureKinds) {
            json_.Value(kind.word);
        }
        json_.CloseArray();
        json_.CloseObject();
        Simple("code", {"integer", "null"}, "Status of CIM or HTTP.");
        Simple("class", {"string", "null"}, "CIM class that was asked for.");
        Simple("message", {"string"}, "What happened, in part in the host's words.");
        Simple("advice", {"string"}, "What to try.");
        json_.CloseObject();
        List("required", {"section", "kind", "code", "class", "message", "advice"});
        json_.CloseObject();
    }

    void Section(const RecordKind& kind) {
        json_.Key(kind.name);
        json_.OpenObject();
        json_.Member("title", kind.title);
        OpenProperties();
        json_.Key("status");
        Reference("section_status");
        const bool is_list = kind.shape == schema::Shape::kList;
        json_.Key(is_list ? "records" : "record");
        json_.OpenObject();
        if (is_list) {
            json_.Member("type", "array");
            json_.Key("items");
            json_.OpenObject();
        }
        Record(kind);
        if (is_list) {
            json_.CloseObject();
        }
        json_.CloseObject();
        json_.CloseObject();
        List("required", {"status", is_list ? "records" : "record"});
        json_.CloseObject();
    }

    /// Within an open object.
    void Record(const RecordKind& kind) {
        OpenProperties();
        for (const Field& field : kind.fields()) {
            const std::string unit = field.unit;
            OpenNamed(field.name,
                      (field.meaning + (unit.empty() ? "" : " Unit: " + unit + ".")).c_str());
            Value(field.type);
            json_.CloseObject();
        }
        json_.CloseObject();
        json_.Key("required");
        json_.OpenArray();
        for (const Field& field : kind.fields()) {
            json_.Value(field.name);
        }
        json_.CloseArray();
    }

    /// Null when the host did not say, and a text where its value does not fit the type.
    void Value(Type type) {
        switch (type) {
            case Type::kText:
                List("type", {"string", "null"});
                return;
            case Type::kInteger:
                List("type", {"integer", "string", "null"});
                return;
            case Type::kBoolean:
                List("type", {"boolean", "string", "null"});
                return;
            case Type::kDateTime:
                DateTimeOrText();
                return;
            case Type::kTextList:
                List("type", {"array", "null"});
                Items("string");
                return;
            case Type::kIntegerList:
                List("type", {"array", "string", "null"});
                Items("integer");
                return;
        }
    }

    void DateTimeOrText() {
        json_.Key("anyOf");
        json_.OpenArray();
        json_.OpenObject();
        json_.Member("type", "string");
        json_.Member("format", "date-time");
        json_.CloseObject();
        json_.OpenObject();
        List("type", {"string", "null"});
        json_.CloseObject();
        json_.CloseArray();
    }

    void Items(const char* type) {
        json_.Key("items");
        json_.OpenObject();
        json_.Member("type", type);
        json_.CloseObject();
    }

    JsonWriter json_;
};

}  // namespace

void WriteJsonSchema(std::ostream& out) { SchemaWriter(out).Write(); }

}  // namespace outputs
