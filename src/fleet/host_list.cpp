#include "fleet/host_list.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <istream>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

#include "fleet/csv_line.h"

namespace fleet {

namespace {

/// What is wrong with a line.
class LineError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

void SetPort(HostEntry& entry, const std::string& text) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, entry.port);
    if (error != std::errc() || stop != end || entry.port == 0) {
        throw LineError("\"" + text + "\" is not a port from 1 to 65535");
    }
}

void SetTransport(HostEntry& entry, const std::string& text) {
    if (text != "http" && text != "https") {
        throw LineError("\"" + text + "\" is not a transport; write https or http");
    }
    entry.has_tls = text == "https";
}

/// "name", "name:port", "[::1]", "[::1]:5989" or "::1".
void SetHost(HostEntry& entry, const std::string& text) {
    const bool is_bracketed = text.starts_with('[');
    const std::size_t end = is_bracketed ? text.find(']') : text.find(':');
    if (is_bracketed && end == std::string::npos) {
        throw LineError("\"" + text + "\" lacks its closing bracket");
    }
    const bool is_bare_ip_v6 = !is_bracketed && std::ranges::count(text, ':') > 1;
    if (is_bare_ip_v6 || end == std::string::npos) {
        entry.host = text;
        return;
    }
    entry.host = is_bracketed ? text.substr(1, end - 1) : text.substr(0, end);
    const std::string rest = is_bracketed ? text.substr(end + 1) : text.substr(end);
    if (rest.empty()) {
        return;
    }
    if (!rest.starts_with(':')) {
        throw LineError("\"" + text + "\" has more after its closing bracket");
    }
    SetPort(entry, rest.substr(1));
}

using Setter = void (*)(HostEntry& entry, const std::string& text);

/// The columns that a list may have.
constexpr std::pair<std::string_view, Setter> kColumns[] = {
    {"host", SetHost},
    {"port", SetPort},
    {"transport", SetTransport},
    {"user", [](HostEntry& entry, const std::string& text) { entry.user = text; }},
    {"password_file",
     [](HostEntry& entry, const std::string& text) { entry.password_file = text; }},
    {"ca_file", [](HostEntry& entry, const std::string& text) { entry.ca_file = text; }},
    {"fingerprint", [](HostEntry& entry, const std::string& text) { entry.fingerprints = {text}; }},
};

std::string ColumnNames() {
    std::string names;
    for (const auto& [name, setter] : kColumns) {
        names.append(names.empty() ? "" : ", ").append(name);
    }
    return names;
}

void CheckName(const std::string& host) {
    if (host.empty()) {
        throw LineError("the host is missing");
    }
    if (host.find_first_of("/@ \t") != std::string::npos) {
        throw LineError("\"" + host +
                        "\" is not a name or an address alone, such as esx01 or [::1]");
    }
}

std::string LowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return text;
}

class ListReader {
public:
    explicit ListReader(const HostDefaults& defaults) : defaults_(defaults) {}

    HostList Read(std::istream& in) {
        std::string line;
        for (number_ = 1; std::getline(in, line); ++number_) {
            if (number_ == 1 && line.starts_with("\xEF\xBB\xBF")) {
                line.erase(0, 3);  // the byte order mark of some spreadsheets
            }
            if (line.ends_with('\r')) {
                line.pop_back();
            }
            const std::size_t start = line.find_first_not_of(" \t");
            if (start != std::string::npos && line[start] != '#') {
                ReadLine(line);
            }
        }
        return std::move(list_);
    }

private:
    void ReadLine(const std::string& line) {
        try {
            const auto cells = CellsOf(line);
            if (!cells) {
                throw LineError("a quoted cell does not end as it should");
            }
            if (!is_begun_ && Begin(*cells)) {
                return;
            }
            Add(EntryOf(*cells));
        } catch (const LineError& error) {
            list_.problems.push_back({number_, error.what()});
        }
    }

    /// Whether the line was a header.
    bool Begin(const std::vector<std::string>& cells) {
        is_begun_ = true;
        columns_ = {&kColumns[0].second};
        if (std::ranges::find(cells, "host") == cells.end()) {
            if (cells.size() > 1) {
                throw LineError(
                    "a list with commas needs a header line, such as \"host,port,user\"");
            }
            return false;
        }
        columns_.clear();
        for (const std::string& cell : cells) {
            columns_.push_back(ColumnOf(cell));
        }
        return true;
    }

    static const Setter* ColumnOf(const std::string& name) {
        const auto* const found = std::ranges::find(kColumns, std::string_view(name),
                                                    [](const auto& known) { return known.first; });
        if (found == std::end(kColumns)) {
            throw LineError("\"" + name + "\" is not a column; choose among " + ColumnNames());
        }
        return &found->second;
    }

    HostEntry EntryOf(const std::vector<std::string>& cells) const {
        if (cells.size() > columns_.size()) {
            throw LineError("there are " + std::to_string(cells.size()) + " cells, but " +
                            std::to_string(columns_.size()) + " columns");
        }
        HostEntry entry{"",
                        defaults_.port,
                        defaults_.has_tls,
                        defaults_.user,
                        defaults_.password_file,
                        defaults_.ca_file,
                        defaults_.fingerprints,
                        number_};
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (!cells[i].empty()) {
                (*columns_[i])(entry, cells[i]);
            }
        }
        CheckName(entry.host);
        if (entry.port == 0) {
            entry.port = entry.has_tls ? 5989 : 5988;
        }
        return entry;
    }

    void Add(HostEntry entry) {
        const auto [known, is_new] = lines_.try_emplace(LowerCase(entry.Name()), number_);
        if (!is_new) {
            throw LineError(entry.Name() + " stands in line " + std::to_string(known->second) +
                            " already; name it once");
        }
        list_.hosts.push_back(std::move(entry));
    }

    const HostDefaults& defaults_;
    HostList list_;
    std::vector<const Setter*> columns_;
    std::unordered_map<std::string, std::size_t> lines_;  ///< of each host
    std::size_t number_ = 0;
    bool is_begun_ = false;
};

}  // namespace

std::string HostEntry::Name() const {
    const bool is_ip_v6 = host.find(':') != std::string::npos;
    return (is_ip_v6 ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

HostList ReadHostList(std::istream& in, const HostDefaults& defaults) {
    return ListReader(defaults).Read(in);
}

std::vector<HostEntry> ShardOf(const std::vector<HostEntry>& hosts, std::size_t index,
                               std::size_t count) {
    std::vector<HostEntry> shard;
    for (std::size_t i = index - 1; i < hosts.size(); i += count) {
        shard.push_back(hosts[i]);
    }
    return shard;
}

}  // namespace fleet
