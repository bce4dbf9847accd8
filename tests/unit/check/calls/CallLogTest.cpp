#include "check/calls/CallLog.h"

#include <gtest/gtest.h>

#include "CallLogFixture.h"

namespace corvane {
namespace {

using Lines = std::vector<std::string>;

// The lines of a run whose contact is popped.
Lines Ringing(const std::string& number, const std::string& identifier = "00042",
              const std::string& caller = "5551234567") {
    const std::string with = " [" + identifier + "] ";
    return {number + " 01.000 [] --------------------------------------------------------------",
            number + " 01.010 [] Corvane 1.0.0.1 started with param(s): /N:S /C:" + caller +
                " /T:I /I:" + identifier + ".",
            number + " 01.100" + with + "GoldMine version 2014.1 detected.",
            number + " 01.110" + with + popPhase + "requested while inbound call is _ringing_.",
            number + " 01.111" + with + popPhase + "searching while incoming call is ringing.",
            number + " 01.400" + with + "Found " + caller + " in Phone1 of the current record.",
            number + " 01.410" + with + popPhase + "processing completed.",
            number + " 01.420" + with + "Call processing completed in 0.310 seconds.",
            number + " 01.430" + with + "Finished unloading form and closing program."};
}
const std::wstring poppedRow =
    L"00042 ringing in 5551234567 popped: popped in Phone1 of the current record";

Lines operator+(Lines one, const Lines& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

Rows RowsOf(const Lines& lines) {
    return corvane::RowsOf(ReadLog(LogOf(lines)));
}

TEST(CallLog, ARunIsARow) {
    const CallLog log = ReadLog(LogOf(Ringing("17")));
    EXPECT_EQ(corvane::RowsOf(log), Rows{poppedRow});
    const CallEvent& event = log.calls[0].events[0];
    EXPECT_EQ(event.timeToPop, milliseconds(400)) << "from the separator to the line";
    EXPECT_EQ(event.runNumber, 17U);
    EXPECT_EQ(event.uncertain, L"");
    EXPECT_FALSE(event.box);
    EXPECT_EQ(log.odd.foreign + log.odd.joined, 0U);
}

TEST(CallLog, EventsOfACallStandTogether) {
    const Lines ended = {
        "19 50.000 [] Corvane 1.0.0.1 started with param(s): /N:E /C:5551234567 /T:I /I:00042.",
        "19 50.100 [00042] " + popPhase + "requested while inbound call is _ringing_.",
        "19 50.100 [00042] " + popPhase + "call end event ignored.",
        "19 50.110 [00042] " + historyPhase + "requested at _end_ of call.",
        "19 50.120 [00042] Found (555)123-4567 in Phone1 of the current record.",
        "19 50.130 [00042] Creating history at end of call.",
        "19 50.140 [00042] Prepared link to \"\\\\pbx\\rec\\a (00042).wav\".",
        "19 50.150 [00042] Created incoming call history.",
        "19 50.160 [00042] Updated history Notes with link.",
        "19 50.170 [00042] Finished unloading form and closing program."};
    const CallLog log = ReadLog(LogOf(Ringing("17") + Ringing("18", "00043") + ended));
    ASSERT_EQ(log.calls.size(), 2U);
    EXPECT_EQ(
        corvane::RowsOf(log),
        (Rows{poppedRow,
              L"00042 ended in 5551234567 found: found in Phone1 of the current record; link "
              L"to a (00042).wav; history created",
              L"00043 ringing in 5551234567 popped: popped in Phone1 of the current record"}));
    EXPECT_EQ(log.calls[0].Outcome(), CallOutcome::popped);
    EXPECT_FALSE(log.calls[0].events[1].timeToPop) << "it was popped while it rang";
}

TEST(CallLog, RunsThatOverlapAreTakenApart) {
    const Lines one = Ringing("17");
    const Lines other = Ringing("18", "00043", "5550001111");
    Lines mixed;
    for (std::size_t at = 0; at < one.size(); ++at)
        mixed = mixed + Lines{one[at], other[at]};
    EXPECT_EQ(
        RowsOf(mixed),
        (Rows{poppedRow,
              L"00043 ringing in 5550001111 popped: popped in Phone1 of the current record"}));
}

TEST(CallLog, TheSameNumberOfTwoUsersIsToldApartByTheCall) {
    const Lines one = Ringing("17");
    const Lines other = Ringing("17", "00043");
    Lines mixed;
    for (std::size_t at = 0; at < one.size(); ++at)
        mixed = mixed + Lines{one[at], other[at]};
    const CallLog log = ReadLog(LogOf(mixed));
    ASSERT_EQ(log.calls.size(), 2U);
    EXPECT_EQ(log.calls[0].events[0].timeToPop, milliseconds(400));
    EXPECT_EQ(log.calls[1].events[0].timeToPop, milliseconds(400));
}

TEST(CallLog, WhatCannotBeToldApartIsUncertain) {
    const Lines run = Ringing("17");
    Lines mixed;
    for (const std::string& line : run)
        mixed = mixed + Lines{line, line};
    const CallLog log = ReadLog(LogOf(mixed));
    ASSERT_EQ(log.calls.size(), 1U);
    ASSERT_EQ(log.calls[0].events.size(), 2U);
    for (const CallEvent& event : log.calls[0].events)
        EXPECT_EQ(event.uncertain, L"another run had the same number at the same time");
    EXPECT_EQ(log.summary.uncertain(), 2U);
}

TEST(CallLog, AnEventThatACallHasTwiceIsUncertain) {
    const CallLog log = ReadLog(LogOf(Ringing("17") + Ringing("4021")));
    ASSERT_EQ(log.calls.size(), 1U);
    EXPECT_EQ(log.calls[0].events[0].uncertain, L"");
    EXPECT_EQ(log.calls[0].events[1].uncertain,
              L"the call has this event twice: another user's, or sent twice");
}

TEST(CallLog, AnIdentifierThatComesAgainIsAnotherCall) {
    const Lines ended = {
        "18 50.000 [] Corvane 1.0.0.1 started with param(s): /N:E /C:5551234567 /T:I /I:00042.",
        "18 50.170 [00042] Finished unloading form and closing program."};
    EXPECT_EQ(ReadLog(LogOf(Ringing("17") + ended + Ringing("19"))).calls.size(), 2U);
    EXPECT_EQ(ReadLog(LogOf(Ringing("17") + Ringing("18", "00042", "5550001111"))).calls.size(), 2U)
        << "the number is another";
    std::string nextDay = LogOf(Ringing("18"));
    for (std::size_t at = 0; (at = nextDay.find("20240311", at)) != std::string::npos;)
        nextDay.replace(at, 8, "20240312");
    EXPECT_EQ(ReadLog(LogOf(Ringing("17")) + nextDay).calls.size(), 2U);
}

TEST(CallLog, ARunWithoutItsFirstLinesIsUncertain) {
    Lines cut = Ringing("17");
    cut.erase(cut.begin(), cut.begin() + 5);
    const CallLog log = ReadLog(LogOf(cut));
    EXPECT_EQ(corvane::RowsOf(log),
              Rows{L"00042 start  5551234567 found: found in Phone1 of the current record"});
    EXPECT_EQ(log.calls[0].events[0].uncertain, L"its first lines are missing");
    EXPECT_EQ(RowsOf({"17 01.430 [00042] Finished unloading form and closing program."}), Rows{});
}

TEST(CallLog, ARunWithoutItsLastLineDidNotEnd) {
    Lines cut = Ringing("17");
    cut.resize(5);
    EXPECT_EQ(RowsOf(cut),
              Rows{L"00042 ringing in 5551234567 trouble: did not end: waits in a box or for "
                   L"GoldMine, or was ended from outside"});
}

TEST(CallLog, AnotherRunOfTheSameNumberGoesOnBesideOneThatDidNotEnd) {
    Lines cut = Ringing("17", "00041");
    cut.resize(5);
    const Rows rows = RowsOf(cut + Ringing("17"));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1], poppedRow);
}

TEST(CallLog, LinesWithoutAnEndBetweenThemAreTakenApart) {
    std::string bytes = LogOf(Ringing("17") + Ringing("18", "00043"));
    const auto cut = bytes.find("closing program.\r\n");
    bytes.erase(cut, std::string("closing program.\r\n").size());
    const CallLog log = ReadLog(bytes);
    EXPECT_EQ(corvane::RowsOf(log).size(), 2U);
    EXPECT_EQ(corvane::RowsOf(log)[0], poppedRow);
    EXPECT_EQ(log.odd.joined, 1U);
    EXPECT_EQ(log.odd.foreign, 0U);
}

TEST(CallLog, ForeignLinesAreCounted) {
    const CallLog log = ReadLog("\xFF\xFEwhatever\r\n\r\n" + LogOf(Ringing("17")) +
                                std::string("\0\0\0\r\n", 5) + "17\t20249999.142305.087\t[]:\tx");
    EXPECT_EQ(corvane::RowsOf(log), Rows{poppedRow});
    EXPECT_EQ(log.odd.foreign, 3U);
}

TEST(CallLog, LinesOfALongerMessageAreNotForeign) {
    const CallLog log =
        ReadLog(LogOf({"17 01.000 [] Corvane 1.0.0.1 started with param(s): /N:S /C:1 /T:I /I:7.",
                       "17 02.000 [7] Error calling DataStream Query function for this SQL query:",
                       "select AccountNo from ContSupp",
                       "Result:", "<GMAPI call=\"DataStream\"><status code=\"0\"/></GMAPI>",
                       "17 02.010 [7] Finished unloading form and closing program."}));
    EXPECT_EQ(corvane::RowsOf(log), Rows{L"7 ringing in 1 trouble: GoldMine refused a query"});
    EXPECT_EQ(log.odd.foreign, 0U);
}

TEST(CallLog, LinesThatBearNothingOfACallTellNone) {
    EXPECT_EQ(RowsOf({"17 01.000 [] -----------------------------------------------------------",
                      "17 01.010 [] Corvane 1.0.0.1 started without params.",
                      "17 01.100 [] GoldMine version 2014.1 detected.",
                      "17 01.110 [] Program was started without params. Process Call disabled.",
                      "17 09.000 [] Settings saved.",
                      "17 09.110 [] Finished unloading form and closing program."}),
              Rows{});
}

TEST(CallLog, OneCallAfterAnotherFromTheWindow) {
    const auto byHand = [](const std::string& second, const std::string& number) {
        return Lines{
            "17 " + second + ".000 [] " + popPhase + "requested while inbound call is _ringing_.",
            "17 " + second + ".001 [] " + popPhase + "searching while incoming call is ringing.",
            "17 " + second + ".200 [] Found " + number + " in Phone1 of the current record.",
            "17 " + second + ".210 [] " + popPhase + "processing completed.",
            "17 " + second + ".220 [] Call processing completed in 0.210 seconds."};
    };
    const CallLog log =
        ReadLog(LogOf(Lines{"17 01.010 [] Corvane 1.0.0.1 started without params."} +
                      byHand("20", "111") + byHand("40", "222")));
    EXPECT_EQ(corvane::RowsOf(log),
              (Rows{L" start  111 popped: popped in Phone1 of the current record",
                    L" by hand  222 popped: popped in Phone1 of the current record"}));
    EXPECT_EQ(log.calls[1].events[0].timeToPop, milliseconds(200));
}

TEST(CallLog, TheLastCallsAreKeptAndAllAreCounted) {
    Lines lines;
    for (const char* identifier : {"1", "2", "3", "4"})
        lines = lines + Ringing(identifier, identifier);
    const CallLog log = ReadLog(LogOf(lines), {}, 2);
    ASSERT_EQ(log.calls.size(), 2U);
    EXPECT_EQ(log.summary.calls(), 4U);
    EXPECT_EQ(ReadLog(LogOf(lines), {}, 0).calls.size(), 0U);
}

TEST(CallLog, ThousandsThatDoNotEndDoNotPileUp) {
    std::string bytes;
    for (int number = 1; number <= 20000; ++number) {
        const std::string text = std::to_string(number);
        bytes += LogOf({text +
                        " 01.000 [] Corvane 1.0.0.1 started with param(s): /N:S /C:5551234 "
                        "/T:I /I:" +
                        text + "."});
    }
    const CallLog log = ReadLog(bytes, {}, 5);
    EXPECT_EQ(log.summary.calls(), 20000U);
    EXPECT_EQ(log.calls.size(), 5U);
}

}  // namespace
}  // namespace corvane
