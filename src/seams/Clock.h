#pragma once

#include <cstdint>

namespace corvane {

struct LocalTimeMs {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;  // 0 to 999, of the same reading
};

// Time as the program sees it, and the two ways of letting time pass.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual LocalTimeMs GetLocalTimeMs() const = 0;
    virtual void Sleep(std::uint32_t milliseconds) = 0;
    // Lets pending window messages run once, GoldMine's window notification among them.
    virtual void PumpEvents() = 0;

    // Seconds since midnight, local time, with milliseconds. Wraps at midnight.
    [[nodiscard]] double Timer() const;
    // The local time as an automation date: days since 1899-12-30.
    [[nodiscard]] double Now() const;
};

// Days since 1899-12-30 for a calendar time of the Gregorian calendar; whole seconds only.
[[nodiscard]] double AutomationDate(const LocalTimeMs& time);
[[nodiscard]] LocalTimeMs CalendarTime(double automationDate);

}  // namespace corvane
