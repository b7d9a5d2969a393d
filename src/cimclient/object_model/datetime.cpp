#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>

#include "Pegasus/Common/CIMDateTime.h"
#include "ascii.h"

namespace Pegasus::kalvex {

namespace {

using cimclient::IsDigit;

constexpr std::string_view kZeroInterval = "00000000000000.000000:000";
constexpr Uint64 kMicrosPerSecond = 1000000;
constexpr Uint64 kSecondsPerDay = 86400;

/// A field of the 25-character form, and what its digits may be.
struct Field {
    std::size_t at;
    std::size_t length;
    unsigned lowest;
    unsigned highest;
    const char* name;  ///< in the message about a number out of range
};

constexpr Field kTimeStampFields[] = {
    {0, 4, 0, 9999, "year"},           {4, 2, 1, 12, "month number"},
    {6, 2, 1, 31, "day number"},       {8, 2, 0, 23, "hours number "},
    {10, 2, 0, 59, "minutes number "}, {12, 2, 0, 59, "seconds number "},
};

constexpr Field kIntervalFields[] = {
    {0, 8, 0, 99999999, "days number"},
    {8, 2, 0, 23, "hours number "},
    {10, 2, 0, 59, "minutes number "},
    {12, 2, 0, 59, "seconds number "},
};

/// The number in a field without wildcards; the field's lowest where there are some.
unsigned Number(std::string_view text, const Field& field) {
    unsigned number = 0;
    for (const char c : text.substr(field.at, field.length)) {
        if (c == '*') {
            return field.lowest;
        }
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    return number;
}

bool HasWildcard(std::string_view text, const Field& field) {
    return text.substr(field.at, field.length).find('*') != std::string_view::npos;
}

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

bool HasForm(std::string_view text) {
    if (text.size() != 25 || text[14] != '.') {
        return false;
    }
    const bool interval = text[21] == ':';
    if (interval) {
        if (text.substr(22) != "000") {
            return false;
        }
    } else if ((text[21] != '+' && text[21] != '-') || !IsDigit(text[22]) || !IsDigit(text[23]) ||
               !IsDigit(text[24])) {
        return false;
    }
    return HasDigitsThenWildcards(text, interval);
}

unsigned DaysInMonth(unsigned year, unsigned month) {
    static constexpr std::array<unsigned, 12> kDays = {31, 28, 31, 30, 31, 30,
                                                       31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
}

[[noreturn]] void ThrowIllegal(const char* field) {
    throw DateTimeOutOfRangeException(String::FromUtf8("illegal " + std::string(field)));
}

void CheckRanges(std::string_view text) {
    const auto check = [text](const Field& field) {
        const unsigned number = Number(text, field);
        if (!HasWildcard(text, field) && (number < field.lowest || number > field.highest)) {
            ThrowIllegal(field.name);
        }
    };
    if (text[21] == ':') {
        for (const Field& field : kIntervalFields) {
            check(field);
        }
        return;
    }
    for (const Field& field : kTimeStampFields) {
        check(field);
    }
    const Field& day = kTimeStampFields[2];
    if (!HasWildcard(text, day) &&
        Number(text, day) >
            DaysInMonth(Number(text, kTimeStampFields[0]), Number(text, kTimeStampFields[1]))) {
        ThrowIllegal(day.name);
    }
}

Uint64 DaysBeforeYear(unsigned year) {
    if (year == 0) {
        return 0;
    }
    const Uint64 before = year - 1;
    return 366 + before * 365 + before / 4 - before / 100 + before / 400;
}

Uint64 DaysOf(std::string_view text) {
    if (text[21] == ':') {
        return Number(text, kIntervalFields[0]);
    }
    const unsigned year = Number(text, kTimeStampFields[0]);
    const unsigned month = Number(text, kTimeStampFields[1]);
    Uint64 days = DaysBeforeYear(year) + Number(text, kTimeStampFields[2]) - 1;
    for (unsigned m = 1; m < month; ++m) {
        days += DaysInMonth(year, m);
    }
    return days;
}

Uint64 MicrosOf(std::string_view text) {
    Uint64 micros = 0;
    for (const char c : text.substr(15, 6)) {
        micros = micros * 10 + (c == '*' ? 0 : static_cast<Uint64>(c - '0'));
    }
    return micros;
}

std::string IntervalText(Uint64 micros) {
    const Uint64 seconds = micros / kMicrosPerSecond;
    const Uint64 days = seconds / kSecondsPerDay;
    if (days > 99999999) {
        ThrowIllegal("days number");
    }
    char text[64];
    std::snprintf(text, sizeof text, "%08llu%02llu%02llu%02llu.%06llu:000", days,
                  seconds / 3600 % 24, seconds / 60 % 60, seconds % 60, micros % kMicrosPerSecond);
    return text;
}

std::string TimeStampText(Uint64 micros) {
    Uint64 days = micros / kMicrosPerSecond / kSecondsPerDay;
    unsigned year = static_cast<unsigned>(days / 366);
    while (DaysBeforeYear(year + 1) <= days) {
        ++year;
    }
    if (year > 9999) {
        ThrowIllegal("year");
    }
    days -= DaysBeforeYear(year);
    unsigned month = 1;
    while (days >= DaysInMonth(year, month)) {
        days -= DaysInMonth(year, month++);
    }
    const Uint64 seconds = micros / kMicrosPerSecond;
    char text[64];
    std::snprintf(text, sizeof text, "%04u%02u%02llu%02llu%02llu%02llu.%06llu+000", year, month,
                  days + 1, seconds / 3600 % 24, seconds / 60 % 60, seconds % 60,
                  micros % kMicrosPerSecond);
    return text;
}

}  // namespace

CIMDateTime::CIMDateTime() = default;

CIMDateTime::CIMDateTime(const String& str) { set(str); }

CIMDateTime::CIMDateTime(Uint64 microSec, Boolean isInterval)
    : text_(String::FromUtf8(isInterval ? IntervalText(microSec) : TimeStampText(microSec))) {}

String CIMDateTime::toString() const {
    return text_.utf8().empty() ? String::FromUtf8(kZeroInterval) : text_;
}

void CIMDateTime::set(const String& str) {
    if (!HasForm(str.utf8())) {
        throw InvalidDateTimeFormatException();
    }
    CheckRanges(str.utf8());
    text_ = str;
}

void CIMDateTime::clear() { text_.clear(); }

CIMDateTime CIMDateTime::getCurrentDateTime() {
    const auto since_1970 = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::system_clock::now().time_since_epoch());
    const Uint64 epoch = DaysBeforeYear(1970) * kSecondsPerDay * kMicrosPerSecond;
    return CIMDateTime(epoch + static_cast<Uint64>(since_1970.count()), false);
}

Sint64 CIMDateTime::getDifference(CIMDateTime startTime, CIMDateTime finishTime) {
    if (startTime.isInterval() != finishTime.isInterval()) {
        throw InvalidDateTimeFormatException();
    }
    return static_cast<Sint64>(finishTime.toMicroSeconds() - startTime.toMicroSeconds());
}

Boolean CIMDateTime::isInterval() const { return text_.utf8().empty() || text_.utf8()[21] == ':'; }

Boolean CIMDateTime::isInterval() { return static_cast<const CIMDateTime&>(*this).isInterval(); }

Boolean CIMDateTime::isTimeStamp() const { return !isInterval(); }

Boolean CIMDateTime::equal(const CIMDateTime& x) const {
    return isInterval() == x.isInterval() && toMicroSeconds() == x.toMicroSeconds();
}

Uint64 CIMDateTime::toMicroSeconds() const {
    if (text_.utf8().empty()) {
        return 0;
    }
    const std::string_view text = text_.utf8();
    const bool interval = text[21] == ':';
    const Field* time = interval ? kIntervalFields + 1 : kTimeStampFields + 3;
    const Uint64 seconds = DaysOf(text) * kSecondsPerDay + Number(text, time[0]) * 3600ULL +
                           Number(text, time[1]) * 60ULL + Number(text, time[2]);
    const Uint64 micros = seconds * kMicrosPerSecond + MicrosOf(text);
    const Uint64 offset = Number(text, {22, 3, 0, 999, ""}) * 60 * kMicrosPerSecond;
    if (interval) {
        return micros;
    }
    return text[21] == '-' ? micros + offset : micros - std::min(offset, micros);
}

CIMDateTime CIMDateTime::operator+(const CIMDateTime& x) const {
    return CIMDateTime(toMicroSeconds() + x.toMicroSeconds(), isInterval());
}

CIMDateTime CIMDateTime::operator-(const CIMDateTime& x) const {
    const bool interval = isInterval() || !x.isInterval();
    return CIMDateTime(toMicroSeconds() - std::min(toMicroSeconds(), x.toMicroSeconds()), interval);
}

CIMDateTime CIMDateTime::operator*(Uint64 x) const {
    Uint64 product = 0;
    if (__builtin_mul_overflow(toMicroSeconds(), x, &product)) {
        ThrowIllegal("days number");
    }
    return CIMDateTime(product, true);
}

CIMDateTime CIMDateTime::operator/(Uint64 x) const {
    if (x == 0) {
        ThrowIllegal("divisor");
    }
    return CIMDateTime(toMicroSeconds() / x, true);
}

Boolean CIMDateTime::operator<(const CIMDateTime& x) const {
    return toMicroSeconds() < x.toMicroSeconds();
}
Boolean CIMDateTime::operator<=(const CIMDateTime& x) const {
    return toMicroSeconds() <= x.toMicroSeconds();
}
Boolean CIMDateTime::operator>(const CIMDateTime& x) const { return x < *this; }
Boolean CIMDateTime::operator>=(const CIMDateTime& x) const { return x <= *this; }
Boolean CIMDateTime::operator!=(const CIMDateTime& x) const { return !equal(x); }
Boolean operator==(const CIMDateTime& x, const CIMDateTime& y) { return x.equal(y); }

}  // namespace Pegasus::kalvex
