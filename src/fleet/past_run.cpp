#include "fleet/past_run.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "fleet/host_list.h"

namespace fleet {

namespace {

/// Reads a document's first members and passes over the rest, without keeping any of it.
class DocumentHead : public nlohmann::json_sax<nlohmann::json> {
public:
    HostEntry entry;
    std::string schema;
    std::string status;

    bool null() override { return true; }
    bool boolean(bool /*value*/) override { return true; }
    bool number_integer(number_integer_t /*value*/) override { return true; }
    bool number_unsigned(number_unsigned_t value) override {
        if (IsAt("port")) {
            entry.port = static_cast<std::uint16_t>(value);
        }
        return true;
    }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return true; }
    bool binary(binary_t& /*value*/) override { return true; }
    bool string(string_t& value) override {
        if (IsAt("host")) {
            entry.host = value;
        } else if (IsAt("status")) {
            status = value;
        } else if (IsAt("schema")) {
            schema = value;
        }
        return true;
    }
    bool start_object(std::size_t /*count*/) override { return ++depth_ > 0; }
    bool end_object() override { return --depth_, true; }
    bool start_array(std::size_t /*count*/) override { return ++depth_ > 0; }
    bool end_array() override { return --depth_, true; }
    bool key(string_t& name) override {
        if (depth_ == 1) {
            key_ = name;
        }
        return true;
    }
    bool parse_error(std::size_t /*place*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return false;
    }

private:
    bool IsAt(const char* name) const { return depth_ == 1 && key_ == name; }

    int depth_ = 0;
    std::string key_;
};

std::optional<PastLine> LineOf(const std::string& text) {
    DocumentHead head;
    if (!nlohmann::json::sax_parse(text, &head) || head.schema != "kalvex/1" ||
        head.entry.host.empty() || head.status.empty()) {
        return std::nullopt;
    }
    PastLine line;
    line.host = HostKey(head.entry.Name());
    line.is_ok = head.status == "ok";
    return line;
}

std::system_error Failure(const std::string& what) { return {errno, std::system_category(), what}; }

/// The places of the lines that stay.
std::vector<PastLine> LinesThatStay(const PastRun& run) {
    std::unordered_map<std::string, std::size_t> best;
    for (std::size_t i = 0; i < run.lines.size(); ++i) {
        const auto [known, is_new] = best.try_emplace(run.lines[i].host, i);
        if (run.lines[i].is_ok || !run.lines[known->second].is_ok) {
            known->second = i;
        }
    }
    std::vector<PastLine> stay;
    for (std::size_t i = 0; i < run.lines.size(); ++i) {
        if (best.at(run.lines[i].host) == i) {
            stay.push_back(run.lines[i]);
        }
    }
    return stay;
}

void CopyLines(const std::string& from, const std::vector<PastLine>& lines, const std::string& to) {
    std::ifstream in(from, std::ios::binary);
    std::ofstream out(to, std::ios::binary | std::ios::trunc);
    std::string text;
    for (const PastLine& line : lines) {
        text.resize(line.size);
        in.seekg(static_cast<std::streamoff>(line.offset));
        in.read(text.data(), static_cast<std::streamsize>(line.size));
        out.write(text.data(), static_cast<std::streamsize>(line.size));
    }
    out.flush();
    if (!in || !out) {
        throw Failure("cannot write " + to);
    }
}

void Persist(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

}  // namespace

std::unordered_set<std::string> PastRun::Done() const {
    std::unordered_set<std::string> done;
    for (const PastLine& line : lines) {
        if (line.is_ok) {
            done.insert(line.host);
        }
    }
    return done;
}

std::string HostKey(const std::string& name) {
    std::string key = name;
    std::ranges::transform(key, key.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return key;
}

PastRun ReadPastRun(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot read " + path + ": " +
                                 std::system_category().message(errno));
    }
    PastRun run;
    std::string text;
    for (std::size_t number = 1; std::getline(in, text) && !in.eof(); ++number) {
        auto line = LineOf(text);
        if (!line) {
            throw std::runtime_error("line " + std::to_string(number) + " of " + path +
                                     " is not a document of kalvex");
        }
        line->offset = run.size;
        line->size = text.size() + 1;
        run.size += line->size;
        run.lines.push_back(std::move(*line));
    }
    return run;
}

void DropReplacedLines(const std::string& path) {
    const PastRun run = ReadPastRun(path);
    const std::vector<PastLine> stay = LinesThatStay(run);
    if (stay.size() == run.lines.size()) {
        return;
    }
    const std::string fresh = path + ".new";
    try {
        CopyLines(path, stay, fresh);
        Persist(fresh);
        if (rename(fresh.c_str(), path.c_str()) != 0) {
            throw Failure("cannot replace " + path);
        }
    } catch (...) {
        unlink(fresh.c_str());
        throw;
    }
}

}  // namespace fleet
