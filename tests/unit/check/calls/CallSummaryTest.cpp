#include "check/calls/CallSummary.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

Call CallAt(std::string_view stamp, CallOutcome outcome,
            std::optional<milliseconds> timeToPop = std::nullopt) {
    CallEvent event;
    event.begin = *LogTimeFromStamp(stamp);
    event.end = event.begin;
    event.outcome = outcome;
    event.timeToPop = timeToPop;
    return {{event}};
}

CallSummary WithTimes(std::initializer_list<int> times) {
    CallSummary summary;
    for (const int time : times) {
        summary.Add(CallAt("20240311.142305.087", CallOutcome::popped, milliseconds(time)));
    }
    return summary;
}

TEST(CallSummary, CountsByOutcomeAndHour) {
    CallSummary summary;
    summary.Add(CallAt("20240311.142305.087", CallOutcome::popped));
    summary.Add(CallAt("20240312.145959.999", CallOutcome::popped));
    summary.Add(CallAt("20240310.000000.000", CallOutcome::trouble));
    EXPECT_EQ(summary.calls(), 3U);
    EXPECT_EQ(summary.outcomes()[static_cast<std::size_t>(CallOutcome::popped)], 2U);
    EXPECT_EQ(summary.hours()[14][static_cast<std::size_t>(CallOutcome::popped)], 2U);
    EXPECT_EQ(summary.hours()[0][static_cast<std::size_t>(CallOutcome::trouble)], 1U);
    EXPECT_EQ(DateTimeText(*summary.first()), L"2024-03-10 00:00:00");
    EXPECT_EQ(DateTimeText(*summary.last()), L"2024-03-12 14:59:59");
}

TEST(CallSummary, ACallCountsByTheFirstOutcomeThatAnEventCameTo) {
    Call call = CallAt("20240311.142305.087", CallOutcome::ignored);
    call.events.push_back(call.events[0]);
    call.events[1].outcome = CallOutcome::popped;
    EXPECT_EQ(call.Outcome(), CallOutcome::popped);
    call.events.push_back(call.events[0]);
    call.events[2].outcome = CallOutcome::trouble;
    EXPECT_EQ(call.Outcome(), CallOutcome::trouble);
}

TEST(CallSummary, APercentileIsTheTimeOfAPop) {
    EXPECT_FALSE(CallSummary().TimeToPop(50));
    EXPECT_EQ(WithTimes({700}).TimeToPop(50), milliseconds(700));
    EXPECT_EQ(WithTimes({700}).TimeToPop(99), milliseconds(700));
    const CallSummary four = WithTimes({400, 100, 300, 200});
    EXPECT_EQ(four.TimeToPop(50), milliseconds(200));
    EXPECT_EQ(four.TimeToPop(75), milliseconds(300));
    EXPECT_EQ(four.TimeToPop(76), milliseconds(400));
    CallSummary hundred;
    for (int time = 1; time <= 100; ++time) {
        hundred.Add(CallAt("20240311.142305.087", CallOutcome::popped, milliseconds(time)));
    }
    EXPECT_EQ(hundred.TimeToPop(50), milliseconds(50));
    EXPECT_EQ(hundred.TimeToPop(95), milliseconds(95));
    EXPECT_EQ(hundred.TimeToPop(99), milliseconds(99));
}

TEST(CallSummary, TimesBeyondAllMeasureAreNoTrouble) {
    const CallSummary summary = WithTimes({-5, 2'000'000'000});
    EXPECT_EQ(summary.pops(), 1U) << "a clock that was set back tells nothing";
    EXPECT_EQ(summary.TimeToPop(50), CallSummary::longestTime);
}

TEST(CallSummary, PopsBetweenCountsFromTheOneTimeToBeforeTheOther) {
    const CallSummary summary = WithTimes({99, 100, 150, 199, 200});
    EXPECT_EQ(summary.PopsBetween(milliseconds(100), milliseconds(200)), 3U);
    EXPECT_EQ(summary.PopsBetween(milliseconds(200), milliseconds(9000)), 1U);
    EXPECT_EQ(summary.PopsBetween(milliseconds(5000), milliseconds(9000)), 0U);
}

}  // namespace
}  // namespace corvane
