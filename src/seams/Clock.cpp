#include "seams/Clock.h"

#include <chrono>
#include <cmath>

namespace corvane {

namespace {

constexpr std::chrono::sys_days automationEpoch =
    std::chrono::year{1899} / std::chrono::December / 30;
constexpr double secondsPerDay = 86400.0;

int SecondOfDay(const LocalTimeMs& time) {
    return time.hour * 3600 + time.minute * 60 + time.second;
}

}  // namespace

double Clock::Timer() const {
    const LocalTimeMs now = GetLocalTimeMs();
    return SecondOfDay(now) + now.millisecond / 1000.0;
}

double Clock::Now() const {
    return AutomationDate(GetLocalTimeMs());
}

double AutomationDate(const LocalTimeMs& time) {
    const std::chrono::sys_days day = std::chrono::year{time.year} /
                                      std::chrono::month{static_cast<unsigned>(time.month)} /
                                      std::chrono::day{static_cast<unsigned>(time.day)};
    const auto days = static_cast<double>((day - automationEpoch).count());
    const double fraction = SecondOfDay(time) / secondsPerDay;
    // Before the epoch the fraction still counts away from zero: -1.5 is noon of 1899-12-29.
    return days < 0 ? days - fraction : days + fraction;
}

LocalTimeMs CalendarTime(double automationDate) {
    double days = std::trunc(automationDate);
    long seconds = std::lround(std::fabs(automationDate - days) * secondsPerDay);
    if (seconds == 86400) {
        seconds = 0;
        days += 1;
    }
    const std::chrono::year_month_day date{automationEpoch +
                                           std::chrono::days{static_cast<int>(days)}};
    LocalTimeMs time;
    time.year = static_cast<int>(date.year());
    time.month = static_cast<int>(static_cast<unsigned>(date.month()));
    time.day = static_cast<int>(static_cast<unsigned>(date.day()));
    time.hour = static_cast<int>(seconds / 3600);
    time.minute = static_cast<int>(seconds / 60 % 60);
    time.second = static_cast<int>(seconds % 60);
    return time;
}

}  // namespace corvane
