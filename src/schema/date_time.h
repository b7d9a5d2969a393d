// Dates with time and offset: from the text that CIM gives them (DSP0004), to ISO 8601, and back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace schema {

/// A point in time as a host's clock showed it.
struct DateTime {
    std::int32_t year = 0;
    std::uint8_t month = 1;
    std::uint8_t day = 1;
    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;
    std::uint32_t microsecond = 0;
    std::int32_t offset = 0;  ///< of the host's clock from UTC, in minutes

    friend bool operator==(const DateTime&, const DateTime&) = default;
};

/// From "yyyymmddhhmmss.mmmmmmsutc". Nothing for an interval, for one with unknown digits, and for
/// a date that there is not.
std::optional<DateTime> DateTimeOfCim(std::string_view text);

/// The inverse.
std::string CimTextOf(const DateTime& time);

/// "2026-03-12T08:15:30+01:00", with microseconds only when there are any.
std::string Iso8601Of(const DateTime& time);

/// From that form, with any number of decimals, of which six count, and with "Z" too.
std::optional<DateTime> DateTimeOfIso8601(std::string_view text);

/// "2026-03-12 08:15:30 +01:00", for people.
std::string ReadableTextOf(const DateTime& time);

/// Microseconds since 1970 in UTC, to compare points in time of different offsets.
std::int64_t MicrosecondsUtcOf(const DateTime& time);

}  // namespace schema
