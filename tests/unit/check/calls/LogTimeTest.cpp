#include "check/calls/LogTime.h"

#include <gtest/gtest.h>

#include "seams/Clock.h"

namespace corvane {
namespace {

std::wstring FromStamp(std::string_view stamp) {
    const auto time = LogTimeFromStamp(stamp);
    return time ? DateTimeText(*time) : L"none";
}

TEST(LogTime, IsReadToTheMillisecond) {
    const auto time = LogTimeFromStamp("20240311.142305.087");
    ASSERT_TRUE(time);
    EXPECT_EQ(DateTimeText(*time), L"2024-03-11 14:23:05");
    EXPECT_EQ(HourOfDay(*time), 14);
    EXPECT_EQ((*LogTimeFromStamp("20240312.000000.000") - *time).count(),
              ((9 * 60 + 36) * 60 + 54) * 1000 + 913);
}

TEST(LogTime, IsThatOfTheClock) {
    EXPECT_EQ(LogTimeFrom({2024, 3, 11, 14, 23, 5, 87}), LogTimeFromStamp("20240311.142305.087"));
}

TEST(LogTime, WhatIsNoTimeIsNone) {
    for (const char* stamp :
         {"", "20240311.142305.08", "20240311.142305.0877", "20240311 142305.087",
          "20240311.142305,087", "2024031a.142305.087", "20240230.142305.087",
          "20241311.142305.087", "20240311.242305.087", "20240311.146005.087",
          "20240311.142360.087", "-0240311.142305.087"}) {
        EXPECT_EQ(FromStamp(stamp), L"none") << stamp;
    }
    EXPECT_EQ(FromStamp("20240229.235959.999"), L"2024-02-29 23:59:59");
}

TEST(LogTime, APersonTypesItInSeveralWays) {
    const LogTime now = *LogTimeFromStamp("20240311.142305.087");
    const auto read = [&](std::wstring_view text) {
        const auto time = LogTimeFromText(text, now);
        return time ? DateTimeText(*time) : L"none";
    };
    EXPECT_EQ(read(L"2024-03-09"), L"2024-03-09 00:00:00");
    EXPECT_EQ(read(L"2024-03-09 08:05"), L"2024-03-09 08:05:00");
    EXPECT_EQ(read(L"2024-03-09T08:05"), L"2024-03-09 08:05:00");
    EXPECT_EQ(read(L"08:05"), L"2024-03-11 08:05:00");
    EXPECT_EQ(read(L"90m"), L"2024-03-11 12:53:05");
    EXPECT_EQ(read(L"15h"), L"2024-03-10 23:23:05");
    EXPECT_EQ(read(L"7d"), L"2024-03-04 14:23:05");
    for (const wchar_t* text :
         {L"", L"d", L"7", L"7w", L"-7d", L"1000000d", L"8:05", L"08-05", L"24:00", L"2024/03/09",
          L"2024-02-30", L"2024-03-09 ", L"2024-03-09x08:05", L"yesterday"}) {
        EXPECT_EQ(read(text), L"none") << text;
    }
}

TEST(LogTime, SecondsHaveThreeDecimals) {
    EXPECT_EQ(SecondsText(milliseconds(7)), L"0.007 s");
    EXPECT_EQ(SecondsText(milliseconds(61234)), L"61.234 s");
}

}  // namespace
}  // namespace corvane
