#pragma once

#include <functional>
#include <vector>

#include "seams/Clock.h"

namespace corvane::test {

// A clock that the test owns: time passes only by Sleep and Advance.
class FakeClock final : public Clock {
public:
    [[nodiscard]] LocalTimeMs GetLocalTimeMs() const override {
        LocalTimeMs time = CalendarTime(day);
        auto rest = millisecondOfDay;
        time.millisecond = static_cast<int>(rest % 1000);
        rest /= 1000;
        time.second = static_cast<int>(rest % 60);
        time.minute = static_cast<int>(rest / 60 % 60);
        time.hour = static_cast<int>(rest / 3600);
        return time;
    }
    void Sleep(std::uint32_t milliseconds) override {
        sleeps.push_back(milliseconds);
        Advance(milliseconds);
    }
    void PumpEvents() override {
        ++pumps;
        if (onPump)
            onPump();
    }

    void Advance(std::int64_t milliseconds) { millisecondOfDay += milliseconds; }
    // Noon of 2024-03-11 unless the test says otherwise.
    void SetDay(int year, int month, int dayOfMonth) {
        LocalTimeMs time;
        time.year = year;
        time.month = month;
        time.day = dayOfMonth;
        day = AutomationDate(time);
    }

    double day = 45362;
    std::int64_t millisecondOfDay = 12 * 3600 * 1000;
    std::vector<std::uint32_t> sleeps;
    int pumps = 0;
    std::function<void()> onPump;
};

}  // namespace corvane::test
