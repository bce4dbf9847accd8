#include "check/calls/CallTable.h"

#include <gtest/gtest.h>

#include "CallLogFixture.h"

namespace corvane {
namespace {

const std::vector<std::string> twoCalls = {
    "17 01.000 [] Corvane 1.0.0.1 started with param(s): /N:S /C:5551234567 /T:I /I:00042.",
    "17 01.100 [00042] " + popPhase + "searching while incoming call is ringing.",
    "17 03.400 [00042] > COM command > 1 second(s) (2.300 seconds): '<GMAPI call=\"CallerID\"/>'",
    "17 03.401 [00042] Found (555)123-4567 in a primary contact record.",
    "17 03.500 [00042] Finished unloading form and closing program.",
    "18 04.000 [] Corvane 1.0.0.1 started with param(s): 5550001111.",
    "18 09.000 [] Number to dial \"x\" contains no digits. Call processing terminated.",
    "18 09.100 [] Finished unloading form and closing program.",
    "nothing of the program's"};

TEST(CallTable, HasARowForEachEventAndASummary) {
    EXPECT_EQ(
        CallTableText(ReadLog(LogOf(twoCalls))),
        L"Time                 Call   Event        Number      Up after  Outcome\n"
        L"2024-03-11 14:23:01  00042  ringing  in  5551234567   2.401 s  popped in a primary "
        L"contact record; slowest command: CallerID 2.300 s\n"
        L"2024-03-11 14:23:04         dial         5550001111            trouble: no digits to "
        L"dial; box: 5.000 s at most\n"
        L"\n"
        L"2 calls with 2 events, 2024-03-11 14:23:01 to 2024-03-11 14:23:09\n"
        L"  trouble  1  50.0 %\n"
        L"  popped   1  50.0 %\n"
        L"Time to pop: 50 % within 2.401 s, 95 % within 2.401 s, 99 % within 2.401 s\n"
        L"1 event stood in a message box\n"
        L"1 line of the log not the program's\n");
}

TEST(CallTable, SaysThatThereAreMore) {
    const std::wstring text = CallTableText(ReadLog(LogOf(twoCalls), {}, 1));
    EXPECT_NE(text.find(L"\nThe last 1 of 2 calls with 2 events, "), std::wstring::npos) << "text";
    EXPECT_EQ(text.find(L"00042"), std::wstring::npos);
}

TEST(CallTable, UncertainIsSaidInTheRow) {
    const std::wstring text = CallTableText(
        ReadLog(LogOf({"17 03.401 [7] Found (555)123-4567 in a primary contact record."})));
    EXPECT_NE(text.find(L"found in a primary contact record; uncertain: its first lines are "
                        L"missing\n"),
              std::wstring::npos);
    EXPECT_NE(text.find(L"\n1 event is uncertain\n"), std::wstring::npos);
}

TEST(CallTable, WithoutCallsItSaysSo) {
    EXPECT_EQ(CallTableText(ReadLog("")), L"no calls\n");
    EXPECT_EQ(CallTableText(ReadLog("x\ny\n")),
              L"no calls\n2 lines of the log not the program's\n");
}

}  // namespace
}  // namespace corvane
