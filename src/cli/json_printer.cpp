#include <nlohmann/json.hpp>
#include <ostream>
#include <string_view>

#include "cli/printer.h"

namespace command {

namespace {

using Json = nlohmann::ordered_json;

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

    void Begin(const std::string& host, std::uint16_t port) override {
        inventory_["host"] = host;
        inventory_["port"] = port;
        inventory_["sections"] = Json::object();
    }

    void Print(const char* section, const SectionContent& content) override {
        Json& entry = inventory_["sections"][section];
        entry["result"] = content.result;
        for (const Table& table : content.tables) {
            entry[table.head.key] = ContentOf(table);
        }
    }

    void End() override {
        constexpr int kIndent = 2;
        constexpr bool kEscapeNonAscii = false;
        out_ << WithoutTerminalControls(
                    inventory_.dump(kIndent, ' ', kEscapeNonAscii, Json::error_handler_t::replace))
             << std::endl;
    }

private:
    std::ostream& out_;
    Json inventory_;
};

}  // namespace

std::unique_ptr<Printer> MakeJsonPrinter(std::ostream& out) {
    return std::make_unique<JsonPrinter>(out);
}

}  // namespace command
