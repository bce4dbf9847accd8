#include "check/calls/LogTime.h"

#include "seams/Clock.h"
#include "util/Text.h"

namespace corvane {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::local_days;
using std::chrono::minutes;
using std::chrono::seconds;
using std::chrono::year_month_day;

// The number that the digits of a fixed place make; -1 when one is no digit.
template <class Character>
int NumberAt(std::basic_string_view<Character> text, std::size_t begin, std::size_t count) {
    int number = 0;
    for (std::size_t at = begin; at < begin + count; ++at) {
        if (at >= text.size() || text[at] < '0' || text[at] > '9')
            return -1;
        number = number * 10 + static_cast<int>(text[at] - '0');
    }
    return number;
}

std::optional<local_days> Day(int year, int month, int day) {
    if (year < 0 || month < 0 || day < 0)
        return std::nullopt;
    const year_month_day date{std::chrono::year(year),
                              std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day))};
    return date.ok() ? std::optional(local_days(date)) : std::nullopt;
}

bool IsTimeOfDay(int hour, int minute, int second) {
    return hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
}

// "14:20"
std::optional<minutes> TimeOfDay(std::wstring_view text) {
    const int hour = NumberAt(text, 0, 2);
    const int minute = NumberAt(text, 3, 2);
    if (text.size() != 5 || text[2] != L':' || !IsTimeOfDay(hour, minute, 0))
        return std::nullopt;
    return hours(hour) + minutes(minute);
}

// "90m", "8h", "7d"
std::optional<minutes> LengthOfTime(std::wstring_view text) {
    constexpr std::size_t mostDigits = 5;
    if (text.size() < 2 || text.size() > mostDigits + 1)
        return std::nullopt;
    const int count = NumberAt(text, 0, text.size() - 1);
    if (count < 0)
        return std::nullopt;
    switch (text.back()) {
        case L'm':
            return minutes(count);
        case L'h':
            return hours(count);
        case L'd':
            return days(count);
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<LogTime> LogTimeFromStamp(std::string_view stamp) {
    constexpr std::string_view form = "yyyymmdd.HhNnSs.mmm";
    if (stamp.size() != form.size() || stamp[8] != '.' || stamp[15] != '.')
        return std::nullopt;
    const auto day = Day(NumberAt(stamp, 0, 4), NumberAt(stamp, 4, 2), NumberAt(stamp, 6, 2));
    const int hour = NumberAt(stamp, 9, 2);
    const int minute = NumberAt(stamp, 11, 2);
    const int second = NumberAt(stamp, 13, 2);
    const int millisecond = NumberAt(stamp, 16, 3);
    if (!day || !IsTimeOfDay(hour, minute, second) || millisecond < 0)
        return std::nullopt;
    return *day + hours(hour) + minutes(minute) + seconds(second) + milliseconds(millisecond);
}

LogTime LogTimeFrom(const LocalTimeMs& time) {
    return Day(time.year, time.month, time.day).value_or(local_days()) + hours(time.hour) +
           minutes(time.minute) + seconds(time.second) + milliseconds(time.millisecond);
}

std::optional<LogTime> LogTimeFromText(std::wstring_view text, LogTime now) {
    if (const auto ago = LengthOfTime(text))
        return now - *ago;
    if (const auto time = TimeOfDay(text))
        return std::chrono::floor<days>(now) + *time;
    constexpr std::size_t dateLength = 10;
    if (text.size() < dateLength || text[4] != L'-' || text[7] != L'-')
        return std::nullopt;
    const auto day = Day(NumberAt(text, 0, 4), NumberAt(text, 5, 2), NumberAt(text, 8, 2));
    if (!day || text.size() == dateLength)
        return day;
    const auto time = TimeOfDay(text.substr(dateLength + 1));
    if (!time || (text[dateLength] != L' ' && text[dateLength] != L'T'))
        return std::nullopt;
    return *day + *time;
}

std::wstring DateTimeText(LogTime time) {
    const auto day = std::chrono::floor<days>(time);
    const year_month_day date(day);
    const std::chrono::hh_mm_ss clock(std::chrono::floor<seconds>(time - day));
    const auto two = [](auto number) { return ZeroPadded(static_cast<int>(number), 2); };
    return Join(ZeroPadded(static_cast<int>(date.year()), 4), L"-",
                two(static_cast<unsigned>(date.month())), L"-",
                two(static_cast<unsigned>(date.day())), L" ", two(clock.hours().count()), L":",
                two(clock.minutes().count()), L":", two(clock.seconds().count()));
}

int HourOfDay(LogTime time) {
    return static_cast<int>(
        std::chrono::floor<hours>(time - std::chrono::floor<days>(time)).count());
}

std::wstring SecondsText(milliseconds time) {
    const auto count = time.count();
    return Join(std::to_wstring(count / 1000), L".", ZeroPadded(static_cast<int>(count % 1000), 3),
                L" s");
}

}  // namespace corvane
