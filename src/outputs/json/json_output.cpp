#include "outputs/json/json_output.h"

#include "inventory/failure_meanings.h"
#include "outputs/utc_time.h"

namespace outputs {

namespace {

using inventory::Document;
using inventory::DocumentFailure;
using inventory::SectionResult;
using schema::Cell;

/// Writes each kind of value.
struct CellWriter {
    JsonWriter& json;

    void operator()(std::monostate /*null*/) const { json.Null(); }
    void operator()(std::string_view text) const { json.Value(text); }
    void operator()(std::int64_t number) const { json.Value(number); }
    void operator()(bool value) const { json.Value(value); }
    void operator()(const schema::DateTime& time) const { json.Value(schema::Iso8601Of(time)); }

    template <class Element>
    void operator()(const std::vector<Element>& elements) const {
        json.OpenArray();
        for (const Element& element : elements) {
            json.Value(element);
        }
        json.CloseArray();
    }
};

void WriteRecord(const schema::Records& records, std::size_t place, JsonWriter& json) {
    json.OpenObject();
    const auto fields = records.kind().fields();
    for (std::size_t i = 0; i < fields.size(); ++i) {
        json.Key(fields[i].name);
        std::visit(CellWriter{json}, records.At(place, i));
    }
    json.CloseObject();
}

void WriteSection(const SectionResult& section, JsonWriter& json) {
    json.Key(section.kind().name);
    json.OpenObject();
    json.Member("status", inventory::WordOf(section.status));
    if (section.kind().shape == schema::Shape::kOneRecord) {
        json.Key("record");
        WriteRecord(*section.records, 0, json);
    } else {
        json.Key("records");
        json.OpenArray();
        for (std::size_t i = 0; i < section.records->size(); ++i) {
            WriteRecord(*section.records, i, json);
        }
        json.CloseArray();
    }
    json.CloseObject();
}

void WriteTextOrNull(std::string_view key, const std::string& text, JsonWriter& json) {
    json.Key(key);
    if (text.empty()) {
        json.Null();
    } else {
        json.Value(text);
    }
}

void WriteFailure(const DocumentFailure& failure, JsonWriter& json) {
    json.OpenObject();
    WriteTextOrNull("section", failure.section, json);
    json.Member("kind", WordOf(failure.kind));
    json.Key("code");
    if (failure.code == 0) {
        json.Null();
    } else {
        json.Value(std::int64_t{failure.code});
    }
    WriteTextOrNull("class", failure.class_name, json);
    json.Member("message", failure.message);
    json.Member("advice", inventory::MeaningOf(failure.kind).advice);
    json.CloseObject();
}

void WriteFailures(const Document& document, JsonWriter& json) {
    json.Key("failures");
    json.OpenArray();
    for (const DocumentFailure& failure : document.failures) {
        WriteFailure(failure, json);
    }
    json.CloseArray();
    if (document.dropped_failures > 0) {
        json.Member("dropped_failures", static_cast<std::int64_t>(document.dropped_failures));
    }
}

}  // namespace

void WriteJson(const Document& document, std::ostream& out, JsonLayout layout) {
    JsonWriter json(out, layout);
    json.OpenObject();
    json.Member("schema", kJsonSchemaName);
    json.Member("kalvex", KALVEX_VERSION);
    json.Member("host", document.host);
    json.Member("port", std::int64_t{document.port});
    json.Member("transport", document.transport);
    json.Member("started_at", UtcText(document.started_at));
    json.Member("seconds", std::chrono::duration<double>(document.duration).count());
    json.Member("status", inventory::WordOf(document.status));
    json.Key("sections");
    json.OpenObject();
    for (const SectionResult& section : document.sections) {
        WriteSection(section, json);
    }
    json.CloseObject();
    WriteFailures(document, json);
    json.CloseObject();
}

}  // namespace outputs
