#include "object_model/datetime.h"

#include <algorithm>
#include <array>
#include <string>

#include "ascii.h"

namespace Pegasus::kalvex::detail {

namespace {

using cimclient::IsDigit;

/// A field of the form, and what its digits may be.
struct Field {
    std::size_t at;
    std::size_t length;
    unsigned lowest;
    unsigned highest;
};

constexpr Field kYear = {0, 4, 0, 9999};
constexpr Field kMonth = {4, 2, 1, 12};
constexpr Field kDay = {6, 2, 1, 31};
constexpr Field kTime[] = {{8, 2, 0, 23}, {10, 2, 0, 59}, {12, 2, 0, 59}};

/// Digits, then wildcards to the end: whole fields, but single digits of the microseconds.
bool HasDigitsThenWildcards(std::string_view text, bool interval) {
    const std::string digits = std::string(text.substr(0, 14)) + std::string(text.substr(15, 6));
    const std::size_t wild = digits.find('*');
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i < wild ? !IsDigit(digits[i]) : digits[i] != '*') {
            return false;
        }
    }
    if (wild >= 14) {
        return true;
    }
    return interval ? wild == 0 || (wild >= 8 && wild % 2 == 0) : wild >= 4 && wild % 2 == 0;
}

bool IsInterval(std::string_view text) { return text[21] == ':'; }

bool HasForm(std::string_view text) {
    if (text.size() != 25 || text[14] != '.') {
        return false;
    }
    const std::string_view offset = text.substr(22);
    if (IsInterval(text)) {
        return offset == "000" && HasDigitsThenWildcards(text, true);
    }
    return (text[21] == '+' || text[21] == '-') &&
           std::all_of(offset.begin(), offset.end(), IsDigit) &&
           HasDigitsThenWildcards(text, false);
}

bool HasWildcard(std::string_view text, const Field& field) {
    return text.substr(field.at, field.length).find('*') != std::string_view::npos;
}

/// Of a field without wildcards.
unsigned Number(std::string_view text, const Field& field) {
    unsigned number = 0;
    for (const char c : text.substr(field.at, field.length)) {
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    return number;
}

bool IsInRange(std::string_view text, const Field& field) {
    return HasWildcard(text, field) ||
           (Number(text, field) >= field.lowest && Number(text, field) <= field.highest);
}

unsigned DaysInMonth(unsigned year, unsigned month) {
    static constexpr std::array<unsigned, 12> kDays = {31, 28, 31, 30, 31, 30,
                                                       31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
}

bool IsDate(std::string_view text) {
    if (!IsInRange(text, kMonth) || !IsInRange(text, kDay)) {
        return false;
    }
    // Where the day has no wildcards, nothing before it has.
    return HasWildcard(text, kDay) ||
           Number(text, kDay) <= DaysInMonth(Number(text, kYear), Number(text, kMonth));
}

}  // namespace

bool IsDateTime(std::string_view text) {
    return HasForm(text) && (IsInterval(text) || IsDate(text)) &&
           std::all_of(std::begin(kTime), std::end(kTime),
                       [text](const Field& field) { return IsInRange(text, field); });
}

}  // namespace Pegasus::kalvex::detail
