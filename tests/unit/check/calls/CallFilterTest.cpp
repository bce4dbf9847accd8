#include "check/calls/CallFilter.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

Call ACall() {
    CallEvent event;
    event.begin = *LogTimeFromStamp("20240311.142305.000");
    event.end = *LogTimeFromStamp("20240311.142306.000");
    event.identifier = L"00042";
    event.number = L"(555)123-4567";
    event.timeToPop = milliseconds(1500);
    event.slowest = SlowCommand{milliseconds(2500), L"CallerID"};
    return {{event}};
}

TEST(CallFilter, AdmitsAllByItself) {
    EXPECT_TRUE(CallFilter().Admits(ACall()));
    EXPECT_EQ(CallFilter().Text(), L"");
}

TEST(CallFilter, SinceLooksAtTheEndOfTheCall) {
    const Call call = ACall();
    EXPECT_TRUE((CallFilter{.since = LogTimeFromStamp("20240311.142306.000")}).Admits(call));
    EXPECT_FALSE((CallFilter{.since = LogTimeFromStamp("20240311.142306.001")}).Admits(call));
}

TEST(CallFilter, AnIdentifierNeedsNoZerosInFront) {
    const auto admits = [](const wchar_t* identifier) {
        return CallFilter{.identifier = identifier}.Admits(ACall());
    };
    EXPECT_TRUE(admits(L"00042"));
    EXPECT_TRUE(admits(L"42"));
    EXPECT_FALSE(admits(L"4"));
    EXPECT_FALSE(admits(L"420"));
    Call dial = ACall();
    dial.events[0].identifier.clear();
    EXPECT_FALSE(CallFilter{.identifier = L"0"}.Admits(dial));
}

TEST(CallFilter, ANumberIsFoundByDigitsInIt) {
    EXPECT_TRUE(CallFilter{.digits = L"5551234567"}.Admits(ACall()));
    EXPECT_TRUE(CallFilter{.digits = L"4567"}.Admits(ACall()));
    EXPECT_FALSE(CallFilter{.digits = L"4568"}.Admits(ACall()));
}

TEST(CallFilter, SlowIsAContactOrACommandThatTookAsLong) {
    const auto admits = [](Call call, int time) {
        return CallFilter{.slow = milliseconds(time)}.Admits(call);
    };
    EXPECT_TRUE(admits(ACall(), 2500));
    EXPECT_FALSE(admits(ACall(), 2501));
    Call call = ACall();
    call.events[0].slowest.reset();
    EXPECT_TRUE(admits(call, 1500));
    EXPECT_FALSE(admits(call, 1501));
}

TEST(CallFilter, AllOfItMustAdmit) {
    const CallFilter filter{.since = LogTimeFromStamp("20240311.000000.000"),
                            .identifier = L"42",
                            .digits = L"555",
                            .slow = milliseconds(1000)};
    EXPECT_TRUE(filter.Admits(ACall()));
    EXPECT_EQ(filter.Text(),
              L"since 2024-03-11 00:00:00, call 42, number with 555, slow: from 1.000 s");
}

}  // namespace
}  // namespace corvane
