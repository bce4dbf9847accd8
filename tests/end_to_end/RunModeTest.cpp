#include "EndToEndTest.h"

namespace end_to_end {
namespace {

const std::string notRunning = "GoldMine not running, so version unknown.";
const std::string noParams = "Program was started without params. Process Call button disabled.";
const std::string echo = "Corvane 1.0.0.1 started with param(s): " + ringingCall + ".";

// The lines and commands of this call's search, which finds a contact in a new window.
const Lines searchLines = {
    "Inbound call search for CallerID:  requested while inbound call is _ringing_.",
    "Inbound call search for CallerID:  searching while incoming call is ringing.",
    "Found (555)123-4567 in a primary contact record.",
    "Inbound call search for CallerID:  processing completed.",
    "History creation:  no history creation requested.",
    "Call processing completed in <seconds> seconds."};
const Lines toldSearchCommands =
    Joined({phoneCommands,
            {gmapi::CallerID("(555)123-4567", "1", "1"),
             gmapi::StatusMsg("Corvane found (555)123-4567 in a primary contact record.")}});

class RunModeTest : public EndToEndTest {
protected:
    static bool StatusIs(HWND window, const Lines& messages) {
        return WaitUntil([&] { return NormalisedStatus(window) == messages; });
    }
    static Lines NormalisedStatus(HWND window) {
        Lines lines = SplitLines(ControlText(window, "txtStatus"), "\r\n");
        for (std::string& line : lines)
            line = Normalised(line);
        return lines;
    }
};

TEST_F(RunModeTest, AnEventWithoutGoldMineEndsWithTwoLines) {
    CloseGoldMine();

    const Outcome run = Run(ringingCall);

    Check(run,
          {.log = RunLog(ringingCall, "7",
                         {notRunning, "Parameters found but GoldMine not running. Exiting."})});
}

TEST_F(RunModeTest, AnEventWithoutGoldMineEndsEvenWhenTheFormIsAlwaysShown) {
    CloseGoldMine();
    Set("chkAlwaysShowForm", "1");

    const Outcome run = Run(ringingCall);

    Check(run,
          {.log = RunLog(ringingCall, "7",
                         {notRunning, "Parameters found but GoldMine not running. Exiting."})});
}

TEST_F(RunModeTest, WithoutParametersTheWindowIsShownEvenWithoutGoldMine) {
    CloseGoldMine();

    ProgramRun run = Start("");
    const HWND window = run.WaitForWindow();

    EXPECT_EQ(Utf8(TextOf(window)), "Halvorn Corvane to 3CX");
    EXPECT_FALSE(ControlEnabled(window, "cmdProcessCall"));
    EXPECT_EQ(ControlText(window, "txtStatus"),
              StatusText({"Corvane 1.0.0.1 started without params.", notRunning, noParams}));
    PostMessageW(window, WM_CLOSE, 0, 0);
    Check(Finish(run), {.log = RunLog("", "", {notRunning, noParams}), .window = true});
}

TEST_F(RunModeTest, WithoutParametersGoldMineIsAskedForItsVersionAndFolders) {
    GoldMine();

    ProgramRun run = Start("");
    const HWND window = run.WaitForWindow();
    EXPECT_FALSE(ControlEnabled(window, "cmdProcessCall"));
    PressControl(window, "cmdExit");

    Check(Finish(run), {.log = RunLog("", "", {versionDetected, noParams}),
                        .commands = startUpCommands,
                        .window = true});
}

TEST_F(RunModeTest, MasterSwitchOffDropsAnEvent) {
    GoldMine();
    Set("chkGlobalEnable", "0");

    const Outcome run = Run(ringingCall);

    Check(run, {.log = RunLog(ringingCall, "7", {disabledLine})});
}

TEST_F(RunModeTest, MasterSwitchOffShowsTheWindowToAnEventIfItIsAlwaysShown) {
    GoldMine();
    SetAll({{"chkGlobalEnable", "0"}, {"chkAlwaysShowForm", "1"}});

    ProgramRun run = Start(ringingCall);
    const HWND window = run.WaitForWindow();
    EXPECT_EQ(ControlText(window, "txtCallerID"), "5551234567");
    EXPECT_EQ(ControlText(window, "txtStatus"), StatusText({echo, disabledLine}));
    EXPECT_FALSE(ControlEnabled(window, "cmdProcessCall"));
    EXPECT_TRUE(ControlEnabled(window, "chkGlobalEnable"));
    EXPECT_TRUE(ControlEnabled(window, "cmdSaveSettings"));
    EXPECT_FALSE(ControlEnabled(window, "chkCreateHistory"));
    PressControl(window, "cmdExit");

    Check(Finish(run), {.log = RunLog(ringingCall, "7", {disabledLine}), .window = true});
}

TEST_F(RunModeTest, MasterSwitchOffShowsTheWindowWithoutParameters) {
    GoldMine();
    Set("chkGlobalEnable", "0");

    ProgramRun run = Start("");
    PostMessageW(run.WaitForWindow(), WM_CLOSE, 0, 0);

    Check(Finish(run), {.log = RunLog("", "", {disabledLine}), .window = true});
}

TEST_F(RunModeTest, UnreadableVersionEndsTheRun) {
    GoldMine().SetFaults("Macro:&Version status 0 Not now\n");

    const Outcome run = Run(ringingCall);

    Check(run,
          {.log = RunLog(ringingCall, "7", {"Error retrieving GoldMine version."}),
           .commands = {gmapi::Macro("&amp;Version")},
           .boxes = {{"Error retrieving GoldMine version.", "OK", "exclamation"}, loadingFailed}});
    EXPECT_EQ(OwnValue("PreviousStatus"), "18");
}

TEST_F(RunModeTest, AVersionWithoutAPointEndsTheRun) {
    GoldMine().SetFaults("Macro:&Version value 65\n");

    const Outcome run = Run(ringingCall);

    Check(run,
          {.log = RunLog(ringingCall, "7", {"Error parsing GoldMine version 65"}),
           .commands = {gmapi::Macro("&amp;Version")},
           .boxes = {{"Error parsing GoldMine version 65", "OK", "exclamation"}, loadingFailed}});
}

class OldVersionTest : public EndToEndTest, public testing::WithParamInterface<const char*> {};

TEST_P(OldVersionTest, EndsTheRun) {
    const std::string version = GetParam();
    GoldMine().SetFaults("Macro:&Version value " + version + "\n");

    const Outcome run = Run(ringingCall);

    Check(run, {.log = RunLog(ringingCall, "7",
                              {"GoldMine version " + version + " detected.",
                               "Corvane requires GoldMine 6.7 or later. Exiting."}),
                .commands = {gmapi::Macro("&amp;Version")},
                .boxes = {{"Corvane requires GoldMine 6.7 or later. Exiting."}, loadingFailed}});
}

INSTANTIATE_TEST_SUITE_P(Versions, OldVersionTest, testing::Values("6.5", "6.10", "5.9", "0.1"));

class NewEnoughVersionTest : public EndToEndTest,
                             public testing::WithParamInterface<const char*> {};

TEST_P(NewEnoughVersionTest, IsAccepted) {
    const std::string version = GetParam();
    GoldMine().SetFaults("Macro:&Version value " + version + "\n");

    const Outcome run = Run("/N:E /I:7");

    Check(run, {.log = RunLog("/N:E /I:7", "7",
                              {"GoldMine version " + version + " detected.",
                               "History creation:  requested at _connection_ of call.",
                               "History creation:  call end event ignored.",
                               "History creation:  processing completed.",
                               "Call processing completed in <seconds> seconds."}),
                .commands = startUpCommands});
}

INSTANTIATE_TEST_SUITE_P(Versions, NewEnoughVersionTest,
                         testing::Values("2014.1", "7.0", "6.7.1", "6.7", "6.9"));

TEST_F(RunModeTest, TroubleshootingWaitsForTheButton) {
    GoldMine();
    SetAll({{"chkAlwaysShowForm", "1"}, {"chkAutoProcess", "0"}, {"chkCreateHistory", "0"}});

    ProgramRun run = Start(ringingCall);
    const HWND window = run.WaitForWindow();
    EXPECT_TRUE(StatusIs(window, {echo, versionDetected}));
    EXPECT_EQ(Commands(), startUpCommands);
    EXPECT_TRUE(ControlEnabled(window, "cmdProcessCall"));
    PressControl(window, "cmdProcessCall");
    EXPECT_TRUE(StatusIs(window, searchLines)) << testing::PrintToString(NormalisedStatus(window));
    PostMessageW(window, WM_CLOSE, 0, 0);

    Check(Finish(run), {.log = RunLog(ringingCall, "7", Joined({{versionDetected}, searchLines})),
                        .commands = Joined({startUpCommands, toldSearchCommands}),
                        .window = true});
}

TEST_F(RunModeTest, TroubleshootingProcessesAtOnceWhenAsked) {
    GoldMine();
    SetAll({{"chkAlwaysShowForm", "1"}, {"chkAutoProcess", "1"}, {"chkCreateHistory", "0"}});

    ProgramRun run = Start(ringingCall);
    const HWND window = run.WaitForWindow();
    EXPECT_TRUE(StatusIs(window, Joined({{echo, versionDetected}, searchLines})));
    PostMessageW(window, WM_CLOSE, 0, 0);

    Check(Finish(run), {.log = RunLog(ringingCall, "7", Joined({{versionDetected}, searchLines})),
                        .commands = Joined({startUpCommands, toldSearchCommands}),
                        .window = true});
}

TEST_F(RunModeTest, TheButtonAsksToStartGoldMineWhenItWasClosed) {
    GoldMine();
    SetAll({{"chkAlwaysShowForm", "1"}, {"chkAutoProcess", "0"}});

    ProgramRun run = Start(ringingCall);
    const HWND window = run.WaitForWindow();
    EXPECT_TRUE(StatusIs(window, {echo, versionDetected}));
    CloseGoldMine();
    PressControl(window, "cmdProcessCall");
    run.Answer("OK");
    PostMessageW(window, WM_CLOSE, 0, 0);

    Check(Finish(run), {.log = RunLog(ringingCall, "7", {versionDetected}),
                        .boxes = {{"Please start GoldMine before processing a call."}},
                        .window = true});
}

class ExitPromptTest : public RunModeTest {
protected:
    // Shows the window and changes one option.
    HWND ChangeAnOption(ProgramRun& run) {
        const HWND window = run.WaitForWindow();
        PressControl(window, "chkCallerIDRemoveSpaces");
        const HWND box = ControlNamed(window, "chkCallerIDRemoveSpaces");
        EXPECT_TRUE(
            WaitUntil([&] { return SendMessageW(box, BM_GETCHECK, 0, 0) == BST_UNCHECKED; }));
        return window;
    }

    const Box question{"Do you want to save configuration changes before exiting?",
                       "Yes No Cancel"};
};

TEST_F(ExitPromptTest, CancelKeepsTheWindowAndNoEndsWithoutSaving) {
    CloseGoldMine();
    const std::map<std::string, std::string> before = OwnValues();

    ProgramRun run = Start("");
    const HWND window = ChangeAnOption(run);
    PostMessageW(window, WM_CLOSE, 0, 0);
    run.Answer("Cancel");
    EXPECT_TRUE(IsWindowVisible(window));
    PressControl(window, "cmdExit");
    const Outcome outcome = Finish(run, {"No"});

    Check(outcome, {.log = RunLog("", "", {notRunning, noParams}),
                    .boxes = {question, question},
                    .window = true});
    std::map<std::string, std::string> expected = before;
    expected["PreviousStatus"] = "18";
    EXPECT_EQ(OwnValues(), expected);
}

TEST_F(ExitPromptTest, YesSavesAllOptions) {
    CloseGoldMine();

    ProgramRun run = Start("");
    PostMessageW(ChangeAnOption(run), WM_CLOSE, 0, 0);
    const Outcome outcome = Finish(run, {"Yes"});

    Check(outcome, {.log = RunLog("", "", {notRunning, noParams, "Settings saved."}),
                    .boxes = {question},
                    .window = true});
    const std::map<std::string, std::string> expected = {{"LastVersionRun", "1.0.0.1"},
                                                         {"PreviousStatus", "18"},
                                                         {"chkGlobalEnable", "1"},
                                                         {"chkTrimOutboundPrefix", "1"},
                                                         {"txtOutboundMaxLength", "10"},
                                                         {"optPhone1Only", "False"},
                                                         {"optPhone123", "True"},
                                                         {"chkSearchInAddlContacts", "0"},
                                                         {"chkIgnoreShortCallerID", "1"},
                                                         {"txtCallerIDMinLength", "6"},
                                                         {"chkFormatCallerID", "1"},
                                                         {"txtCallerIDFormat", "(###)###-####"},
                                                         {"chkCallerIDIgnoreLeading1", "1"},
                                                         {"chkCallerIDRemoveSpaces", "0"},
                                                         {"chkPopOnInboundCall", "1"},
                                                         {"optPopOnInboundCallStart", "True"},
                                                         {"optPopOnInboundCallConnect", "False"},
                                                         {"optPopCurrentWindow", "False"},
                                                         {"optPopNewWindow", "True"},
                                                         {"optProcessStart", "False"},
                                                         {"optProcessConnect", "True"},
                                                         {"optProcessEnd", "False"},
                                                         {"chkCreateHistory", "1"},
                                                         {"chkCreateLink", "0"},
                                                         {"txtLinkedItemPath", ""},
                                                         {"chkDelayAddingLink", "1"},
                                                         {"txtDelayAddingLinkSeconds", "3"},
                                                         {"chkConfirmRecentRecordingFile", "1"},
                                                         {"txtRecordingFileMaxAgeSeconds", "20"},
                                                         {"chkConfirmLinkCallIdentifier", "0"},
                                                         {"chkFillInRef", "1"},
                                                         {"chkAutoOpenHistory", "1"},
                                                         {"optOpenHistoryBeforeSaving", "True"},
                                                         {"optOpenHistoryAfterSaving", "False"},
                                                         {"optCompleteCallByType", "True"},
                                                         {"optCompleteScheduledCall", "False"},
                                                         {"optCompleteUnscheduledCall", "False"},
                                                         {"chkAlwaysShowForm", "0"},
                                                         {"chkAutoProcess", "1"},
                                                         {"chkLogCOMCalls", "1"},
                                                         {"txtCOMDurationSeconds", "99"},
                                                         {"chkWriteLog", "1"}};
    EXPECT_EQ(OwnValues(), expected);
}

TEST_F(ExitPromptTest, AFailedSaveKeepsTheWindow) {
    CloseGoldMine();
    SetAll({{"chkCreateLink", "1"}, {"txtLinkedItemPath", ""}});

    ProgramRun run = Start("");
    const HWND window = ChangeAnOption(run);
    PostMessageW(window, WM_CLOSE, 0, 0);
    run.Answer("Yes");
    run.Answer("OK");
    EXPECT_TRUE(IsWindowVisible(window));
    PressControl(window, "cmdExit");
    const Outcome outcome = Finish(run, {"No"});

    Check(outcome,
          {.log = RunLog("", "", {notRunning, noParams}),
           .boxes = {question, {"Please specify a folder or uncheck \"add link\""}, question},
           .window = true});
}

}  // namespace
}  // namespace end_to_end
