#include "seams/Clock.h"

#include <gtest/gtest.h>

#include "fakes/FakeClock.h"

namespace corvane::test {
namespace {

struct DatePair {
    LocalTimeMs time;
    double date;
};

void PrintTo(const DatePair& pair, std::ostream* out) {
    *out << pair.date;
}

class AutomationDateTest : public testing::TestWithParam<DatePair> {};

TEST_P(AutomationDateTest, CountsDaysSinceTheEpoch) {
    EXPECT_DOUBLE_EQ(AutomationDate(GetParam().time), GetParam().date);
}

TEST_P(AutomationDateTest, ComesBackAsTheSameCalendarTime) {
    const LocalTimeMs& expected = GetParam().time;

    const LocalTimeMs time = CalendarTime(GetParam().date);

    EXPECT_EQ(time.year, expected.year);
    EXPECT_EQ(time.month, expected.month);
    EXPECT_EQ(time.day, expected.day);
    EXPECT_EQ(time.hour, expected.hour);
    EXPECT_EQ(time.minute, expected.minute);
    EXPECT_EQ(time.second, expected.second);
    EXPECT_EQ(time.millisecond, 0);
}

INSTANTIATE_TEST_SUITE_P(
    KnownDates, AutomationDateTest,
    testing::Values(
        DatePair{{1899, 12, 30, 0, 0, 0, 0}, 0.0}, DatePair{{1899, 12, 31, 0, 0, 0, 0}, 1.0},
        DatePair{{1900, 1, 1, 0, 0, 0, 0}, 2.0}, DatePair{{1899, 12, 29, 12, 0, 0, 0}, -1.5},
        DatePair{{1970, 1, 1, 0, 0, 0, 0}, 25569.0}, DatePair{{2000, 2, 29, 18, 0, 0, 0}, 36585.75},
        DatePair{{2000, 3, 1, 6, 0, 0, 0}, 36586.25}, DatePair{{2024, 3, 11, 0, 0, 0, 0}, 45362.0},
        DatePair{{2024, 12, 31, 23, 59, 59, 0}, 45657.0 + 86399.0 / 86400.0}));

TEST(ClockTest, MillisecondsDoNotReachADate) {
    EXPECT_DOUBLE_EQ(AutomationDate({2024, 3, 11, 12, 0, 0, 999}), 45362.5);
}

TEST(ClockTest, EverySecondOfADaySurvivesTheWayThereAndBack) {
    for (int second = 0; second < 86400; ++second) {
        const LocalTimeMs time{2024, 2, 29, second / 3600, second / 60 % 60, second % 60, 0};
        const LocalTimeMs back = CalendarTime(AutomationDate(time));
        ASSERT_EQ(back.day, 29) << second;
        ASSERT_EQ(back.hour * 3600 + back.minute * 60 + back.second, second);
    }
}

TEST(ClockTest, TheTimerCountsSecondsSinceMidnightWithMilliseconds) {
    FakeClock clock;
    clock.millisecondOfDay = 3'723'004;

    EXPECT_DOUBLE_EQ(clock.Timer(), 3723.004);
}

TEST(ClockTest, NowIsTheLocalTimeAsADate) {
    FakeClock clock;
    clock.millisecondOfDay = 18 * 3'600'000;

    EXPECT_DOUBLE_EQ(clock.Now(), 45362.75);
}

}  // namespace
}  // namespace corvane::test
