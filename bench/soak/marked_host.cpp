#include "soak/marked_host.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string_view>

namespace soak {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kMarked[] = {"ElementName", "Description", "Caption", "Name",
                                        "Manufacturer"};

void MarkText(const std::string& property, const std::string& mark, Json& value) {
    if (value.is_string() && std::ranges::find(kMarked, property) != std::end(kMarked)) {
        value = value.get<std::string>() + mark;
    }
}

void MarkInstances(const std::string& mark, Json& instances) {
    for (Json& instance : instances) {
        for (auto& [property, value] : instance.items()) {
            MarkText(property, mark, value);
        }
    }
}

void MarkRows(const std::string& mark, const Json& columns, Json& rows) {
    for (Json& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            MarkText(columns[i], mark, row[i]);
        }
    }
}

void MarkClass(const std::string& mark, Json& described) {
    if (described.contains("instances")) {
        MarkInstances(mark, described["instances"]);
    }
    if (described.contains("rows")) {
        MarkRows(mark, described["columns"], described["rows"]);
    }
}

}  // namespace

simhost::HostDescription MarkedHost(const std::string& mark) {
    Json host = Json::parse(simhost::BuiltinHostText());
    for (Json& name_space : host["namespaces"]) {
        for (Json& described : name_space["classes"]) {
            MarkClass(mark, described);
        }
    }
    return simhost::HostDescription::FromJson(host.dump(), "marked host");
}

}  // namespace soak
