#include "schema/date_time.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace schema {

namespace {

constexpr std::uint32_t kMicrosecondsPerSecond = 1'000'000;
constexpr std::int32_t kMinutesPerHour = 60;

/// Takes a text apart from its beginning; what does not fit makes the whole of it unfit.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    template <class Number>
    void Digits(std::size_t count, Number& number) {
        const std::string_view digits = rest_.substr(0, count);
        const bool fits = digits.size() == count && std::ranges::all_of(digits, IsDigit);
        is_fit_ = is_fit_ && fits;
        if (fits) {
            std::from_chars(digits.data(), digits.data() + count, number);
            rest_.remove_prefix(count);
        }
    }

    bool Take(char character) {
        const bool is_there = rest_.starts_with(character);
        rest_.remove_prefix(is_there ? 1 : 0);
        return is_there;
    }

    void Expect(char character) { is_fit_ = Take(character) && is_fit_; }

    /// +1 or -1.
    std::int32_t Sign() {
        if (Take('-')) {
            return -1;
        }
        Expect('+');
        return 1;
    }

    /// As many digits as there are; the first six say microseconds.
    std::uint32_t Fraction() {
        std::uint32_t microseconds = 0;
        std::uint32_t place = kMicrosecondsPerSecond / 10;
        is_fit_ = is_fit_ && !rest_.empty() && IsDigit(rest_.front());
        for (; !rest_.empty() && IsDigit(rest_.front()); rest_.remove_prefix(1), place /= 10) {
            microseconds += place * static_cast<std::uint32_t>(rest_.front() - '0');
        }
        return microseconds;
    }

    bool IsWhole() const { return is_fit_ && rest_.empty(); }

private:
    static bool IsDigit(char character) { return character >= '0' && character <= '9'; }

    std::string_view rest_;
    bool is_fit_ = true;
};

std::chrono::year_month_day DayOf(const DateTime& time) {
    return {std::chrono::year(time.year), std::chrono::month(time.month),
            std::chrono::day(time.day)};
}

bool Exists(const DateTime& time) {
    return DayOf(time).ok() && time.hour < 24 && time.minute < 60 && time.second < 60;
}

/// Exactly so many digits, the last ones. Much faster than std::snprintf: an event log holds a date
/// a record.
void AppendDigits(std::string& text, std::uint32_t number, std::size_t count) {
    const std::size_t end = text.size() + count;
    text.append(count, '0');
    for (std::size_t i = 1; i <= count; ++i, number /= 10) {
        text[end - i] = static_cast<char>('0' + number % 10);
    }
}

/// "+01:00"
void AppendOffset(std::string& text, std::int32_t minutes) {
    const auto size = static_cast<std::uint32_t>(std::abs(minutes));
    text += minutes < 0 ? '-' : '+';
    AppendDigits(text, size / kMinutesPerHour, 2);
    text += ':';
    AppendDigits(text, size % kMinutesPerHour, 2);
}

std::string Text(const DateTime& time, char between, const char* before_offset) {
    std::string text;
    text.reserve(sizeof "2026-03-12T08:15:30.000000 +01:00");
    AppendDigits(text, static_cast<std::uint32_t>(time.year), 4);
    text += '-';
    AppendDigits(text, time.month, 2);
    text += '-';
    AppendDigits(text, time.day, 2);
    text += between;
    AppendDigits(text, time.hour, 2);
    text += ':';
    AppendDigits(text, time.minute, 2);
    text += ':';
    AppendDigits(text, time.second, 2);
    if (time.microsecond != 0) {
        text += '.';
        AppendDigits(text, time.microsecond, 6);
    }
    text += before_offset;
    AppendOffset(text, time.offset);
    return text;
}

}  // namespace

std::optional<DateTime> DateTimeOfCim(std::string_view text) {
    DateTime time;
    Scanner scanner(text);
    scanner.Digits(4, time.year);
    scanner.Digits(2, time.month);
    scanner.Digits(2, time.day);
    scanner.Digits(2, time.hour);
    scanner.Digits(2, time.minute);
    scanner.Digits(2, time.second);
    scanner.Expect('.');
    scanner.Digits(6, time.microsecond);
    const std::int32_t sign = scanner.Sign();
    scanner.Digits(3, time.offset);
    time.offset *= sign;
    return scanner.IsWhole() && Exists(time) ? std::optional(time) : std::nullopt;
}

std::string CimTextOf(const DateTime& time) {
    char text[64];
    std::snprintf(text, sizeof text, "%04d%02u%02u%02u%02u%02u.%06u%c%03d", time.year, time.month,
                  time.day, time.hour, time.minute, time.second, time.microsecond,
                  time.offset < 0 ? '-' : '+', std::abs(time.offset));
    return text;
}

std::string Iso8601Of(const DateTime& time) { return Text(time, 'T', ""); }

std::optional<DateTime> DateTimeOfIso8601(std::string_view text) {
    DateTime time;
    Scanner scanner(text);
    scanner.Digits(4, time.year);
    scanner.Expect('-');
    scanner.Digits(2, time.month);
    scanner.Expect('-');
    scanner.Digits(2, time.day);
    scanner.Expect('T');
    scanner.Digits(2, time.hour);
    scanner.Expect(':');
    scanner.Digits(2, time.minute);
    scanner.Expect(':');
    scanner.Digits(2, time.second);
    if (scanner.Take('.')) {
        time.microsecond = scanner.Fraction();
    }
    if (!scanner.Take('Z')) {
        const std::int32_t sign = scanner.Sign();
        std::int32_t hours = 0;
        std::int32_t minutes = 0;
        scanner.Digits(2, hours);
        scanner.Expect(':');
        scanner.Digits(2, minutes);
        time.offset = sign * (hours * kMinutesPerHour + minutes);
    }
    return scanner.IsWhole() && Exists(time) ? std::optional(time) : std::nullopt;
}

std::string ReadableTextOf(const DateTime& time) { return Text(time, ' ', " "); }

std::int64_t MicrosecondsUtcOf(const DateTime& time) {
    using namespace std::chrono;
    const auto point = sys_days(DayOf(time)) + hours(time.hour) +
                       minutes(time.minute - time.offset) + seconds(time.second) +
                       microseconds(time.microsecond);
    return duration_cast<microseconds>(point.time_since_epoch()).count();
}

}  // namespace schema
