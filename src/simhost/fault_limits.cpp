#include "simhost/fault_limits.h"

#include <charconv>
#include <cstddef>

#include "simhost/fault_acts.h"

namespace simhost {

namespace {

constexpr const char* kForms =
    "write NAME@LIMIT,LIMIT with CLASS, operation:NAME, after:COUNT or times:COUNT for a LIMIT";

bool ReadName(std::string_view value, std::string& name) {
    name = value;
    return !value.empty() && value.find(':') == std::string_view::npos;
}

bool ReadCount(std::string_view value, std::size_t least, std::size_t& count) {
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), count);
    return error == std::errc() && end == value.data() + value.size() && count >= least;
}

struct Limit {
    std::string_view prefix;
    bool is_of_requests;  ///< says nothing about connections
    bool (*read)(std::string_view value, Fault& fault);
};

/// The last has no prefix, and so fits what no other does.
constexpr Limit kLimits[] = {
    {"operation:", true,
     [](std::string_view value, Fault& m) { return ReadName(value, m.only_operation); }},
    {"after:", false,
     [](std::string_view value, Fault& m) { return ReadCount(value, 0, m.after); }},
    {"times:", false,
     [](std::string_view value, Fault& m) { return ReadCount(value, 1, m.times); }},
    {"", true, [](std::string_view value, Fault& m) { return ReadName(value, m.only_class); }},
};

const Limit& LimitOf(std::string_view text) {
    const Limit* limit = kLimits;
    while (!text.starts_with(limit->prefix)) {
        ++limit;
    }
    return *limit;
}

}  // namespace

std::string ReadLimits(std::string_view text, Fault& fault) {
    while (true) {
        const auto comma = text.find(',');
        const std::string_view written = text.substr(0, comma);
        const Limit& limit = LimitOf(written);
        if (!limit.read(written.substr(limit.prefix.size()), fault)) {
            return kForms;
        }
        if (limit.is_of_requests && ActsOnConnect(fault.kind)) {
            return "it comes before any request, so leave out classes and operations";
        }
        if (comma == std::string_view::npos) {
            return "";
        }
        text.remove_prefix(comma + 1);
    }
}

}  // namespace simhost
