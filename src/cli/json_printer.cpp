#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string_view>

#include "cli/printer.h"
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

/// DEL and the C1 controls are legal in JSON, but drive a terminal that the text is shown on.
std::string WithoutTerminalControls(std::string_view json) {
    static constexpr char kHex[] = "0123456789abcdef";
    std::string out;
    out.reserve(json.size());
    for (std::size_t i = 0; i < json.size(); ++i) {
        const auto byte = static_cast<unsigned char>(json[i]);
        const auto next = i + 1 < json.size() ? static_cast<unsigned char>(json[i + 1]) : 0U;
        const bool is_c1 = byte == 0xC2 && next < 0xA0;
        if (byte != 0x7F && !is_c1) {
            out += json[i];
            continue;
        }
        const unsigned code = is_c1 ? next : byte;
        out += std::string("\\u00") + kHex[code >> 4U] + kHex[code & 0xFU];
        i += is_c1 ? 1 : 0;
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
        constexpr bool kEscapeNonAscii = false;
        inventory_["failures"] = std::move(failures_);
        out_ << WithoutTerminalControls(
                    inventory_.dump(kIndent, ' ', kEscapeNonAscii, Json::error_handler_t::replace))
             << std::endl;
    }

private:
    /// Each distinct one once.
    void Add(const Json& section, const std::vector<Failure>& failures) {
        const auto of_section = static_cast<std::ptrdiff_t>(failures_.size());
        for (const Failure& failure : failures) {
            Json entry = FailureOf(section, failure);
            if (std::find(failures_.begin() + of_section, failures_.end(), entry) ==
                failures_.end()) {
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
