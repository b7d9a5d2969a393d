#include "schema/decoders/leading_number.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace schema {

std::optional<std::int32_t> LeadingNumber(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-")) {
        text.remove_prefix(1);
    }
    std::int32_t number = 0;
    const std::errc error = std::from_chars(text.data(), text.data() + text.size(), number).ec;
    if (error == std::errc::invalid_argument) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        using Limits = std::numeric_limits<std::int32_t>;
        return text.starts_with('-') ? Limits::min() : Limits::max();
    }
    return number;
}

}  // namespace schema
