#include "object_model/datetime.h"

#include <algorithm>
#include <span>

#include "common/text/ascii.h"
#include "common/text/number.h"

namespace Pegasus::kalvex::detail {

namespace {

/// What the digits of a field may be.
struct Field {
    std::size_t length;
    unsigned lowest;
    unsigned highest;
};

constexpr Field kTimeStamp[] = {{4, 0, 9999}, {2, 1, 12}, {2, 1, 31},
                                {2, 0, 23},   {2, 0, 59}, {2, 0, 59}};
constexpr Field kInterval[] = {{8, 0, 99999999}, {2, 0, 23}, {2, 0, 59}, {2, 0, 59}};

bool IsDigits(std::string_view text) { return std::ranges::all_of(text, Zentar::IsDigit); }

bool IsWild(std::string_view field) {
    return field.find_first_not_of('*') == std::string_view::npos;
}

bool IsInRange(std::string_view text, const Field& field) {
    const auto number = Zentar::NumberOf<unsigned>(text);
    return IsDigits(text) && number && *number >= field.lowest && *number <= field.highest;
}

/// Digits, then wildcards to the end: whole fields, but single digits of the microseconds.
bool HasFields(std::string_view text, std::span<const Field> fields) {
    bool wild = false;
    for (const Field& field : fields) {
        const std::string_view part = text.substr(0, field.length);
        wild = wild || IsWild(part);
        if (wild ? !IsWild(part) : !IsInRange(part, field)) {
            return false;
        }
        text.remove_prefix(field.length);
    }
    const std::string_view microseconds = text.substr(1, 6);
    const std::string_view digits = microseconds.substr(0, microseconds.find('*'));
    return text[0] == '.' && IsDigits(digits) && IsWild(microseconds.substr(digits.size())) &&
           (!wild || digits.empty());
}

unsigned DaysInMonth(unsigned year, unsigned month) {
    static constexpr unsigned kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
}

/// Of a time stamp whose fields are in their ranges. A day with wildcards is any.
bool HasSuchADay(std::string_view text) {
    const auto day = Zentar::NumberOf<unsigned>(text.substr(6, 2));
    return !day || *day <= DaysInMonth(*Zentar::NumberOf<unsigned>(text.substr(0, 4)),
                                       *Zentar::NumberOf<unsigned>(text.substr(4, 2)));
}

}  // namespace

bool IsDateTime(std::string_view text) {
    if (text.size() != 25) {
        return false;
    }
    const std::string_view offset = text.substr(22);
    if (text[21] == ':') {
        return offset == "000" && HasFields(text, kInterval);
    }
    return (text[21] == '+' || text[21] == '-') && IsDigits(offset) && !IsWild(text.substr(0, 4)) &&
           HasFields(text, kTimeStamp) && HasSuchADay(text);
}

}  // namespace Pegasus::kalvex::detail
