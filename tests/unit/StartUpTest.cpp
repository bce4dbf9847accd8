#include "app/StartUp.h"

#include <algorithm>
#include <new>

#include "ProgramFixture.h"
#include "StatusLines.h"

namespace corvane::test {
namespace {

using Strings = std::vector<std::wstring>;

const std::wstring ringing = L"/N:S /C:5551234 /T:I /I:7";
const std::wstring echo = L"Corvane 1.0.0.1 started with param(s): " + ringing + L".";
const std::wstring withoutParams = L"Corvane 1.0.0.1 started without params.";
const std::wstring notRunning = L"GoldMine not running, so version unknown.";
const std::wstring buttonDisabled =
    L"Program was started without params. Process Call button disabled.";
const std::wstring disabled =
    L"Corvane to 3CX disabled--the \"Master Switch\" is unchecked. No connection to GoldMine "
    L"attempted.";
const std::wstring detected = L"GoldMine version 2014.1 detected.";
const ShownBox configurationError{L"Error loading configuration. Exiting.", BoxButtons::Ok,
                                  BoxIcon::Critical};

// A call for which nothing is configured: three lines and no command.
const Strings processed = {
    L"Inbound call search for CallerID:  no searching requested on inbound call.",
    L"History creation:  no history creation requested.",
    L"Call processing completed in 0.000 seconds."};

Strings Joined(Strings first, const Strings& second, const Strings& third = {}) {
    first.insert(first.end(), second.begin(), second.end());
    first.insert(first.end(), third.begin(), third.end());
    return first;
}

class StartUpTest : public ProgramTest {
protected:
    StartUpTest() {
        around.InstallThreeCX();
        around.StoreOption(L"chkPopOnInboundCall", L"0");
        around.StoreOption(L"chkCreateHistory", L"0");
    }
    RunOutcome Run(const std::wstring& arguments) { return Make(arguments).Run(); }
    [[nodiscard]] Strings Lines() { return StatusLines(program().form); }
};

TEST_F(StartUpTest, AnEventRunProcessesTheCallAndEndsUnseen) {
    around.RunGoldMine();
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_FALSE(program().form.visible());
    EXPECT_EQ(Lines(), Joined({echo, detected}, processed, {programFinished}));
    EXPECT_EQ(program().form.caption(), L"Halvorn Corvane to 3CX");
}

TEST_F(StartUpTest, ASettingsRunShowsTheWindowWithProcessCallDisabled) {
    around.RunGoldMine();
    EXPECT_EQ(Run(L""), RunOutcome::WindowShown);
    EXPECT_TRUE(program().form.visible());
    EXPECT_FALSE(program().form.cmdProcessCall.enabled());
    EXPECT_EQ(Lines(), (Strings{withoutParams, detected, buttonDisabled}));
}

TEST_F(StartUpTest, ASettingsRunWithoutGoldMineBehavesAsForARecentOne) {
    EXPECT_EQ(Run(L""), RunOutcome::WindowShown);
    EXPECT_EQ(Lines(), (Strings{withoutParams, notRunning, buttonDisabled}));
    EXPECT_TRUE(program().form.GoldMineVersionOK);
    EXPECT_TRUE(program().form.optPhone123.enabled());
    EXPECT_FALSE(program().form.GoldMineRunning);
}

TEST_F(StartUpTest, TheFirstShowingLooksForAGoldMineThatWasNotThere) {
    around.view.onShow = [this] { around.processes.RunGoldMine(); };
    EXPECT_EQ(Run(L""), RunOutcome::WindowShown);
    EXPECT_EQ(Lines(), (Strings{withoutParams, notRunning, buttonDisabled}));
    EXPECT_TRUE(program().form.GoldMineRunning);
    EXPECT_EQ(program().form.txtGMInstallDir.text(), L"C:\\GoldMine\\gmw.exe");
    EXPECT_EQ(around.goldMine.connects, 0);
}

TEST_F(StartUpTest, WithTheMasterSwitchOffTheShowingLooksForNothing) {
    around.StoreOption(L"chkGlobalEnable", L"0");
    around.view.onShow = [this] { around.processes.RunGoldMine(); };
    EXPECT_EQ(Run(L""), RunOutcome::WindowShown);
    EXPECT_FALSE(program().form.GoldMineRunning);
}

TEST_F(StartUpTest, APathThatCouldNotBeReadIsSaidOnce) {
    around.RunGoldMine();
    around.processes.openError = 5;
    EXPECT_EQ(Run(L""), RunOutcome::WindowShown);
    EXPECT_EQ(around.boxes.Take().size(), 1u);
}

TEST_F(StartUpTest, AnEventWithoutGoldMineEndsWithTwoLines) {
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(Lines(),
              (Strings{echo, notRunning, L"Parameters found but GoldMine not running. Exiting.",
                       programFinished}));
}

TEST_F(StartUpTest, ARejectedCallerIdEndsWithoutLookingForGoldMine) {
    around.processes.sessions.clear();  // looking for it would raise
    EXPECT_EQ(Run(L"/N:S /C:x /T:I"), RunOutcome::End);
    EXPECT_EQ(Lines(), (Strings{L"Corvane 1.0.0.1 started with param(s): /N:S /C:x /T:I.",
                                L"Ignored non-numeric CallerID: x.", programFinished}));
}

TEST_F(StartUpTest, ARejectedCallerIdEndsWithoutAWindowEvenWhereTheFormIsAlwaysShown) {
    around.RunGoldMine();
    around.StoreOption(L"chkAlwaysShowForm", L"1");
    EXPECT_EQ(Run(L"/N:S /C:123 /T:I"), RunOutcome::End);
    EXPECT_FALSE(program().form.visible());
    EXPECT_EQ(Lines(), (Strings{L"Corvane 1.0.0.1 started with param(s): /N:S /C:123 /T:I.",
                                L"Ignored short CallerID: 123.", programFinished}));
}

TEST_F(StartUpTest, ARejectedCallerIdIsSaidBeforeTheMasterSwitchIsLookedAt) {
    around.StoreOption(L"chkGlobalEnable", L"0");
    EXPECT_EQ(Run(L"/N:S /C:x /T:I"), RunOutcome::End);
    EXPECT_EQ(Lines(), (Strings{L"Corvane 1.0.0.1 started with param(s): /N:S /C:x /T:I.",
                                L"Ignored non-numeric CallerID: x.", programFinished}));
}

TEST_F(StartUpTest, AGoldMineWhosePathCannotBeReadCountsAsNotRunning) {
    around.RunGoldMine();
    around.processes.openError = 5;
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(),
              (ShownBoxes{Notice(L"GoldMine is running but could not retrieve its path.\r\n"
                                 L"Do not run GoldMine as Administrator.\r\n"
                                 L"(Error 5 opening Process ID 77)",
                                 BoxIcon::Exclamation)}));
    EXPECT_EQ(
        Lines(),
        (Strings{echo,
                 L"GoldMine is running but could not retrieve its path. Do not run GoldMine as "
                 L"Administrator. (Error 5 opening Process ID 77)",
                 notRunning, L"Parameters found but GoldMine not running. Exiting.",
                 programFinished}));
    EXPECT_EQ(around.goldMine.connects, 0);
}

TEST_F(StartUpTest, ASessionThatCannotBeLookedUpEndsTheStartWithItsOwnError) {
    around.processes.sessions.clear();
    EXPECT_EQ(Run(L""), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(),
              (ShownBoxes{Notice(L"Run-time error '5':\r\n\r\nFindGoldMineExecutable: "
                                 L"IsProcessRunning.ProcessIdToSessionId\r\n"
                                 L"Could not determine Session ID for current Process ID 42.\r\n"
                                 L"LastError 87.",
                                 BoxIcon::Critical)}));
    EXPECT_EQ(Lines(), (Strings{withoutParams,
                                L"Run-time error '5':  FindGoldMineExecutable: "
                                L"IsProcessRunning.ProcessIdToSessionId Could not "
                                L"determine Session ID for current Process ID 42. LastError 87.",
                                programFinished}));
    EXPECT_FALSE(program().form.visible());
}

TEST_F(StartUpTest, RunningOutOfMemoryInTheGoldMineChecksIsAFailedConfigurationToo) {
    around.RunGoldMine();
    around.goldMine.onSend = [](const std::wstring&) { throw std::bad_alloc(); };
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(), ShownBoxes{configurationError});
    const std::wstring said = L"Run-time error '7':  Out of memory";
    EXPECT_EQ(Lines(), (Strings{echo, said, programFinished}));
    const std::wstring log =
        around.files.files[L"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log"];
    EXPECT_TRUE(log.ends_with(said + L"\r\n")) << "forced, with the log off";
    EXPECT_EQ(std::count(log.begin(), log.end(), L'\n'), 1) << "and nothing else";
}

TEST_F(StartUpTest, TheMasterSwitchDropsAnEvent) {
    around.RunGoldMine();
    around.StoreOption(L"chkGlobalEnable", L"0");
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(Lines(), (Strings{echo, disabled, programFinished}));
    EXPECT_EQ(around.goldMine.connects, 0);
}

TEST_F(StartUpTest, WithTheMasterSwitchOffTheWindowShowsTheParametersAndProcessesNothing) {
    around.RunGoldMine();
    around.StoreOption(L"chkGlobalEnable", L"0");
    around.StoreOption(L"chkAlwaysShowForm", L"1");
    EXPECT_EQ(Run(ringing), RunOutcome::WindowShown);
    EXPECT_TRUE(program().form.visible());
    EXPECT_FALSE(program().form.cmdProcessCall.enabled());
    EXPECT_EQ(program().form.txtCallerID.text(), L"5551234");
    EXPECT_EQ(Lines(), (Strings{echo, disabled}));
    EXPECT_TRUE(program().form.chkGlobalEnable.enabled());
    EXPECT_FALSE(program().form.chkTrimOutboundPrefix.enabled());
}

TEST_F(StartUpTest, WithTheMasterSwitchOffASettingsRunShowsTheWindow) {
    around.StoreOption(L"chkGlobalEnable", L"0");
    EXPECT_EQ(Run(L""), RunOutcome::WindowShown);
    EXPECT_EQ(Lines(), (Strings{withoutParams, disabled}));
}

TEST_F(StartUpTest, ATroubleshootingRunProcessesAtOnceAndStays) {
    around.RunGoldMine();
    around.StoreOption(L"chkAlwaysShowForm", L"1");
    EXPECT_EQ(Run(ringing), RunOutcome::WindowShown);
    EXPECT_TRUE(program().form.cmdProcessCall.enabled());
    EXPECT_EQ(Lines(), Joined({echo, detected}, processed));
    EXPECT_EQ(program().form.tabstripOptions.selectedTab(), OptionsTab::status);
}

TEST_F(StartUpTest, ATroubleshootingRunWithoutAutoProcessWaitsForTheButton) {
    around.RunGoldMine();
    around.StoreOption(L"chkAlwaysShowForm", L"1");
    around.StoreOption(L"chkAutoProcess", L"0");
    EXPECT_EQ(Run(ringing), RunOutcome::WindowShown);
    EXPECT_TRUE(program().form.cmdProcessCall.enabled());
    EXPECT_EQ(Lines(), (Strings{echo, detected}));
}

TEST_F(StartUpTest, AnErrorWhileProcessingLeavesAShownWindowOpen) {
    around.RunGoldMine();
    around.StoreOption(L"chkAlwaysShowForm", L"1");
    around.StoreOption(L"chkPopOnInboundCall", L"1");
    RuntimeError error;
    error.number = 91;
    error.description = L"broken";
    around.goldMine.onSend = [&](const std::wstring& command) {
        if (command.find(L"Phone1") != std::wstring::npos)
            around.goldMine.sendError = error;
    };
    EXPECT_EQ(Run(ringing), RunOutcome::WindowShown);
    EXPECT_EQ(around.boxes.Take(),
              (std::vector<ShownBox>{{L"Run-time error '91':\r\n\r\nProcessCall: broken",
                                      BoxButtons::Ok, BoxIcon::Critical}}));
    EXPECT_EQ(Lines().back(), L"Run-time error '91':  ProcessCall: broken");
}

TEST_F(StartUpTest, AnErrorWhileProcessingEndsAnEventRunThroughShutdown) {
    around.RunGoldMine();
    around.StoreOption(L"chkCreateHistory", L"1");
    around.StoreOption(L"optProcessConnect", L"False");
    around.StoreOption(L"optProcessStart", L"True");
    around.goldMine.onSend = [&](const std::wstring& command) {
        if (command.find(L"Phone1") != std::wstring::npos) {
            around.goldMine.sendError = RuntimeError{91, L"GM", L"broken", L"", 0};
        }
    };
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take().size(), 1u);
    const Strings lines = Lines();
    ASSERT_GE(lines.size(), 2u);
    EXPECT_EQ(lines[lines.size() - 2], L"Run-time error '91':  ProcessCall: broken");
    EXPECT_EQ(lines.back(), programFinished);
}

class BadSettingTest
    : public StartUpTest,
      public testing::WithParamInterface<std::pair<const wchar_t*, const wchar_t*>> {};

TEST_P(BadSettingTest, StopsTheStartAndResetsTheRunNumber) {
    around.StoreOption(L"LastVersionRun", L"1.0.0.1");
    around.StoreOption(L"PreviousStatus", L"17");
    around.StoreOption(GetParam().first, GetParam().second);
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(), std::vector<ShownBox>{configurationError});
    EXPECT_EQ(around.registry.Stored(FakeRegistry::ownKey, L"PreviousStatus"), L"0");
    const Strings lines = Lines();
    ASSERT_EQ(lines.size(), 2u);
    const std::wstring setting = GetParam().first;
    const bool isLogs = setting == L"chkWriteLog";
    const std::wstring named = (isLogs ? L"SetUpLog: " : L"LoadSettings: ") + setting + L": ";
    EXPECT_NE(lines[0].find(L"':  " + named), std::wstring::npos) << lines[0];
    EXPECT_EQ(lines[1], programFinished);
}

INSTANTIATE_TEST_SUITE_P(
    Settings, BadSettingTest,
    testing::Values(std::pair{L"chkGlobalEnable", L"yes"}, std::pair{L"chkGlobalEnable", L""},
                    std::pair{L"chkFormatCallerID", L"3"}, std::pair{L"chkCreateLink", L"70000"},
                    std::pair{L"optPhone123", L"maybe"}, std::pair{L"optPhone123", L""},
                    std::pair{L"chkWriteLog", L"on"}));

TEST_F(StartUpTest, ARegistryThatCannotBeOpenedStopsTheStartWithOneBox) {
    around.registry.failingKeys.insert(FakeRegistry::ownKey);
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(), std::vector<ShownBox>{configurationError});
    EXPECT_EQ(around.goldMine.commands, Strings{});
    const Strings lines = Lines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_TRUE(lines[0].starts_with(L"Run-time error '-2147191503'")) << "loading";
    EXPECT_TRUE(lines[1].starts_with(L"Run-time error '-2147191503'")) << "resetting the number";
    EXPECT_EQ(lines[2], programFinished);
}

TEST_F(StartUpTest, ARegistryThatCannotBeWrittenStopsTheStartWithOneBox) {
    around.registry.readOnlyKeys.insert(FakeRegistry::ownKey);
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(), std::vector<ShownBox>{configurationError});
    EXPECT_EQ(around.goldMine.commands, Strings{});
    const Strings lines = Lines();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_TRUE(lines[0].starts_with(L"Run-time error '-2147191503'")) << "counting the run";
    EXPECT_TRUE(lines[1].starts_with(L"Run-time error '-2147191503'")) << "resetting the number";
    EXPECT_EQ(lines[2], programFinished);
}

TEST_F(StartUpTest, ALogThatTakesNoLineChangesNothingElse) {
    around.RunGoldMine();
    around.StoreOption(L"chkWriteLog", L"1");
    around.files.appendError = MakeRuntimeError(ErrorNumber::PermissionDenied);
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(), std::vector<ShownBox>{});
    EXPECT_EQ(Lines(), Joined({echo, detected}, processed, {programFinished}));
}

TEST_F(StartUpTest, AMinimumLengthThatIsNoNumberIsARunTimeErrorOfTheCall) {
    around.RunGoldMine();
    around.StoreOption(L"chkIgnoreShortCallerID", L"1");
    around.StoreOption(L"txtCallerIDMinLength", L"ten");
    Run(ringing);
    EXPECT_EQ(around.boxes.Take(),
              (std::vector<ShownBox>{{L"Run-time error '13':\r\n\r\nParseCallParameters: "
                                      L"txtCallerIDMinLength: Type mismatch",
                                      BoxButtons::Ok, BoxIcon::Critical}}));
    EXPECT_EQ(around.goldMine.commands, Strings{});
    EXPECT_EQ(Lines().back(), programFinished);
}

TEST_F(StartUpTest, AVersionThatCannotBeReadEndsTheStart) {
    around.RunGoldMine();
    around.goldMine.answerAll = [](const std::wstring&) { return L"<GMAPI/>"; };
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(), (std::vector<ShownBox>{{L"Error retrieving GoldMine version.",
                                                           BoxButtons::Ok, BoxIcon::Exclamation},
                                                          configurationError}));
    EXPECT_EQ(Lines(), (Strings{echo, L"Error retrieving GoldMine version.", programFinished}));
}

TEST_F(StartUpTest, AnOldGoldMineEndsTheStartWithTwoBoxes) {
    around.RunGoldMine(L"6.5");
    EXPECT_EQ(Run(L""), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(),
              (std::vector<ShownBox>{{L"Corvane requires GoldMine 6.7 or later. Exiting.",
                                      BoxButtons::Ok, BoxIcon::None},
                                     configurationError}));
    EXPECT_EQ(Lines(),
              (Strings{withoutParams, L"GoldMine version 6.5 detected.",
                       L"Corvane requires GoldMine 6.7 or later. Exiting.", programFinished}));
    EXPECT_FALSE(program().form.visible());
}

TEST_F(StartUpTest, ADeclinedIniChangeEndsTheStart) {
    around.RunGoldMine();
    around.iniFiles.files[L"C:\\GM\\ANN.INI"][{L"Modem", L"DeviceID"}] = L"-1";
    around.boxes.answers = {BoxAnswer::No};
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    const auto shown = around.boxes.Take();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[1], configurationError);
    EXPECT_EQ(around.iniFiles.writes, Strings{});
    EXPECT_EQ(Lines(),
              (Strings{echo, detected,
                       L"Declined: Okay to define a dummy modem in your GoldMine <user>.INI "
                       L"file? This is required for outbound dialing via 3CX.",
                       programFinished}));
}

TEST_F(StartUpTest, AnErrorInTheGoldMineChecksIsAFailedConfigurationToo) {
    around.RunGoldMine();
    around.goldMine.sendError = RuntimeError{91, L"GM", L"broken", L"", 0};
    EXPECT_EQ(Run(ringing), RunOutcome::End);
    EXPECT_EQ(around.boxes.Take(), std::vector<ShownBox>{configurationError});
    EXPECT_EQ(Lines(), (Strings{echo, L"Run-time error '91':  CheckGoldMineVersion: broken",
                                programFinished}));
}

TEST_F(StartUpTest, TheAboutTextSaysWhatAndWhere) {
    Run(L"");
    const std::wstring& about = program().form.txtAbout.text();
    for (const wchar_t* part :
         {L"Halvorn Corvane to 3CX", L"1.0.0.1", L"C:\\Corvane\\CorvaneTo3CX.exe",
          L"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log",
          L"HKEY_CURRENT_USER\\SOFTWARE\\Halvorn Systems\\CorvaneTo3CX"}) {
        EXPECT_NE(about.find(part), std::wstring::npos) << part;
    }
}

}  // namespace
}  // namespace corvane::test
