#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

struct LocalTimeMs;

using std::chrono::milliseconds;

// The local time of a log line. The log names no zone: where clocks go back, it goes back with
// them.
using LogTime = std::chrono::local_time<milliseconds>;

// "20240311.142305.087"; nothing when it is no time.
[[nodiscard]] std::optional<LogTime> LogTimeFromStamp(std::string_view stamp);

[[nodiscard]] LogTime LogTimeFrom(const LocalTimeMs& time);

// What a person types: "2024-03-11", "2024-03-11 14:20", "14:20" of today, or how long ago: "90m",
// "8h", "7d". Nothing when it is none of these.
[[nodiscard]] std::optional<LogTime> LogTimeFromText(std::wstring_view text, LogTime now);

[[nodiscard]] std::wstring DateTimeText(LogTime time);  // "2024-03-11 14:23:05"
[[nodiscard]] int HourOfDay(LogTime time);

[[nodiscard]] std::wstring SecondsText(milliseconds time);  // "0.812 s"

}  // namespace corvane
