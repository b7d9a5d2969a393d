#include <cstdio>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string_view>
#include <unordered_set>

#include "cli/printer.h"
#include "common/text/visible_text.h"
#include "inventory/failure_meanings.h"

namespace command {

namespace {

using Json = nlohmann::ordered_json;
using inventory::Cell;
using inventory::Shape;
using inventory::Table;
using Zentar::Failure;

Json RecordOf(const Table& table, const std::vector<Cell>& row) {
    Json record = Json::object();
    for (std::size_t i = 0; i < row.size(); ++i) {
        std::visit([&](const auto& value) { record[table.columns[i].key] = value; }, row[i]);
    }
    return record;
}

Json ContentOf(const Table& table) {
    if (table.head.shape == Shape::kOneRecord) {
        return RecordOf(table, table.rows.at(0));
    }
    Json records = Json::array();
    for (const auto& row : table.rows) {
        records.push_back(RecordOf(table, row));
    }
    return records;
}

Json FailureOf(const Json& section, const Failure& failure) {
    return {{"section", section},
            {"kind", WordOf(failure.kind)},
            {"code", failure.code != 0 ? Json(failure.code) : Json()},
            {"class", failure.class_name.empty() ? Json() : Json(failure.class_name)},
            {"message", inventory::DescribeFailure(failure)},
            {"advice", inventory::MeaningOf(failure.kind).advice}};
}

/// With U+FFFD for bytes that are not UTF-8.
std::string Dumped(const Json& json, int indent = -1) {
    constexpr bool kEscapeNonAscii = false;
    return json.dump(indent, ' ', kEscapeNonAscii, Json::error_handler_t::replace);
}

std::string Utf16Escape(unsigned unit) {
    char text[8];
    std::snprintf(text, sizeof text, "\\u%04x", unit);
    return text;
}

/// JSON's own escape, which is two beyond the Basic Multilingual Plane.
std::string JsonEscape(std::int32_t code) {
    constexpr unsigned kFirstPair = 0x10000;
    const auto character = static_cast<unsigned>(code);
    if (character < kFirstPair) {
        return Utf16Escape(character);
    }
    const unsigned rest = character - kFirstPair;
    return Utf16Escape(0xD800 + (rest >> 10U)) + Utf16Escape(0xDC00 + (rest & 0x3FFU));
}

/// Hidden characters from U+007F on are legal within JSON's strings, but drive a terminal that
/// the text is shown on, or are invisible there. Below only the line breaks between strings are
/// left.
std::string WithoutHidden(std::string_view json) {
    std::string out;
    out.reserve(json.size());
    while (!json.empty()) {
        const Zentar::TextUnit unit = Zentar::FirstUnit(json);
        if (unit.code >= 0x7F && Zentar::IsHidden(unit.code)) {
            out += JsonEscape(unit.code);
        } else {
            out += unit.bytes;
        }
        json.remove_prefix(unit.bytes.size());
    }
    return out;
}

class JsonPrinter : public Printer {
public:
    explicit JsonPrinter(std::ostream& out) : out_(out) {}

    void Begin(const std::string& host, std::uint16_t port,
               const std::vector<Failure>& failures) override {
        inventory_["host"] = host;
        inventory_["port"] = port;
        inventory_["sections"] = Json::object();
        Add(nullptr, failures);
    }

    void Print(const inventory::SectionReading& reading) override {
        Json& entry = inventory_["sections"][reading.name];
        entry["result"] = reading.content.result;
        for (const Table& table : reading.content.tables) {
            entry[table.head.key] = ContentOf(table);
        }
        Add(reading.name, reading.failures);
    }

    void End() override {
        constexpr int kIndent = 2;
        inventory_["failures"] = std::move(failures_);
        out_ << WithoutHidden(Dumped(inventory_, kIndent)) << std::endl;
    }

private:
    /// Each distinct one once.
    void Add(const Json& section, const std::vector<Failure>& failures) {
        std::unordered_set<std::string> known;
        for (const Failure& failure : failures) {
            Json entry = FailureOf(section, failure);
            if (known.insert(Dumped(entry)).second) {
                failures_.push_back(std::move(entry));
            }
        }
    }

    std::ostream& out_;
    Json inventory_;
    Json failures_ = Json::array();
};

}  // namespace

std::unique_ptr<Printer> MakeJsonPrinter(std::ostream& out) {
    return std::make_unique<JsonPrinter>(out);
}

}  // namespace command
