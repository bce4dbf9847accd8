// Places that refuse, where that can be staged for the whole program. The log, the INI file and the
// keys of 3CX and GoldMine that do stand with the tests of these.
#include <algorithm>

#include "WindowTest.h"

namespace end_to_end {
namespace {

const std::string finished = "[]: Finished unloading form and closing program.";

class OwnKeyTest : public WindowTest {
protected:
    // The line of an error that the registry answers with a refusal.
    static std::string Refusal(const std::string& procedure, const std::string& access) {
        const std::string words = SystemText(ERROR_ACCESS_DENIED);
        return "[]: Run-time error '-2147191503':  " + procedure + "RegCreateKeyEx requesting " +
               access + " access to 'HKEY_CURRENT_USER\\" + Utf8(ownKey) +
               "' System error 5: " + words + " ";
    }
};

TEST_F(OwnKeyTest, OneThatMayNotBeReadEndsTheRunWithABoxAndItsLine) {
    GoldMine();
    ExpectRunNumber("0");  // it is not known, nor is whether there is to be a log
    const auto before = OwnValues();
    Outcome run;
    {
        const DeniedAccess denied(HKEY_CURRENT_USER, ownKey, KEY_QUERY_VALUE);
        run = Run(ringingCall);
    }
    Check(run, {.log = {Refusal("SetUpLog: chkWriteLog: ", "READ")}, .boxes = {loadingFailed}});
    EXPECT_EQ(OwnValue("PreviousStatus"), "0");
    auto expected = before;
    expected["PreviousStatus"] = "0";
    EXPECT_EQ(OwnValues(), expected);
}

TEST_F(OwnKeyTest, OneThatMayNotBeWrittenEndsTheRunWithABoxAndItsLines) {
    GoldMine();
    const auto before = OwnValues();
    Outcome run;
    {
        const DeniedAccess denied(HKEY_CURRENT_USER, ownKey, KEY_SET_VALUE);
        run = Run(ringingCall);
    }
    Check(run, {.log = {Refusal("SetUpLog: ", "WRITE"), Refusal("", "WRITE"), finished},
                .boxes = {loadingFailed}});
    EXPECT_EQ(OwnValues(), before);
}

TEST_F(OwnKeyTest, ASaveThatIsRefusedIsToldAndLosesNothingThatWasTyped) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);
    Click(window, "chkCallerIDRemoveSpaces");
    const bool typed = Checked(window, "chkCallerIDRemoveSpaces");
    const auto before = OwnValues();
    {
        const DeniedAccess denied(HKEY_CURRENT_USER, ownKey, KEY_SET_VALUE);
        PressControl(window, "cmdSaveSettings");
        run.Answer("OK");
        EXPECT_TRUE(WaitUntil([&] { return IsWindowEnabled(window); }));
    }
    ASSERT_EQ(run.boxes().size(), 1u);
    EXPECT_TRUE(run.boxes()[0].text.starts_with("Run-time error '-2147191503':\r\n\r\n"))
        << run.boxes()[0].text;
    EXPECT_EQ(run.boxes()[0].icon, "critical");
    EXPECT_EQ(OwnValues(), before);
    EXPECT_EQ(Checked(window, "chkCallerIDRemoveSpaces"), typed);
    // What was not saved then can be saved now.
    PressControl(window, "cmdSaveSettings");
    EXPECT_TRUE(WaitUntil([] { return OwnValues().contains("chkCallerIDRemoveSpaces"); }));
    EXPECT_EQ(OwnValue("chkCallerIDRemoveSpaces"), typed ? "1" : "0");
    Close(run, window, run.boxes());
}

}  // namespace
}  // namespace end_to_end
