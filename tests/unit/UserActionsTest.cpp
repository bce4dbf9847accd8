#include "app/UserActions.h"

#include <algorithm>

#include "ProgramFixture.h"
#include "StatusLines.h"

namespace corvane::test {
namespace {

using Strings = std::vector<std::wstring>;

class UserActionsTest : public ProgramTest {
protected:
    UserActionsTest() {
        around.InstallThreeCX();
        around.StoreOption(L"chkPopOnInboundCall", L"0");
        around.StoreOption(L"chkCreateHistory", L"0");
    }
    // The window of a settings run beside a running GoldMine.
    Program& Shown() {
        around.RunGoldMine();
        Program& made = Make();
        EXPECT_EQ(made.Run(), RunOutcome::WindowShown);
        return made;
    }
};

TEST_F(UserActionsTest, ProcessCallClearsTheStatusAndProcessesWhatTheBoxesHold) {
    Program& made = Shown();
    made.form.txtOutboundPhone.setText(L"555-0100");
    made.form.cmdProcessCall.setEnabled(true);
    made.actions.ButtonClicked(made.form.cmdProcessCall);
    EXPECT_EQ(StatusLines(made.form), (Strings{L"Dialed 5550100 using 3CX.",
                                               L"Call processing completed in 0.000 seconds."}));
    EXPECT_EQ(around.processes.started,
              Strings{L"\"C:\\3CX\\CallTriggerCmd.exe\" -cmd makecall:5550100"});
}

TEST_F(UserActionsTest, ProcessCallAsksForGoldMineWhenItDoesNotRun) {
    Program& made = Shown();
    around.processes.entries.clear();
    made.form.txtOutboundPhone.setText(L"555-0100");
    made.form.cmdProcessCall.setEnabled(true);
    const Strings before = StatusLines(made.form);
    made.actions.ButtonClicked(made.form.cmdProcessCall);
    EXPECT_EQ(around.boxes.Take(),
              (std::vector<ShownBox>{{L"Please start GoldMine before processing a call.",
                                      BoxButtons::Ok, BoxIcon::None}}));
    EXPECT_EQ(StatusLines(made.form), before);
    EXPECT_EQ(around.goldMine.releases, 1);
    EXPECT_EQ(around.processes.started, Strings{});
    EXPECT_FALSE(made.form.GoldMineRunning);
}

TEST_F(UserActionsTest, ProcessCallHandlesNothingForARejectedCallerID) {
    Program& made = Shown();
    made.form.txtCallType.setText(L"I");
    made.form.txtNotifType.setText(L"S");
    made.form.txtCallerID.setText(L"123");
    EXPECT_TRUE(made.actions.MayLeave(made.form.txtCallerID, true));
    around.goldMine.commands.clear();
    made.actions.ButtonClicked(made.form.cmdProcessCall);
    EXPECT_EQ(StatusLines(made.form), Strings{L"Ignored short CallerID: 123."});
    EXPECT_EQ(around.goldMine.commands, Strings{});
}

TEST_F(UserActionsTest, TheFirstCallMeetsAGoldMineThatWasStartedAfterTheWindow) {
    Program& made = Make();
    ASSERT_EQ(made.Run(), RunOutcome::WindowShown);
    made.form.txtOutboundPhone.setText(L"555-0100");
    made.form.cmdProcessCall.setEnabled(true);
    around.RunGoldMine(L"abc");
    made.actions.ButtonClicked(made.form.cmdProcessCall);
    EXPECT_EQ(around.boxes.Take(),
              ShownBoxes{Notice(L"Error parsing GoldMine version abc", BoxIcon::Exclamation)});
    EXPECT_EQ(StatusLines(made.form), Strings{L"Error parsing GoldMine version abc"});
    EXPECT_EQ(around.processes.started, Strings{});

    around.RunGoldMine();
    made.actions.ButtonClicked(made.form.cmdProcessCall);
    EXPECT_EQ(StatusLines(made.form),
              (Strings{L"GoldMine version 2014.1 detected.", L"Dialed 5550100 using 3CX.",
                       L"Call processing completed in 0.000 seconds."}));
    EXPECT_EQ(made.form.GoldMineUserName, L"ANN");

    made.actions.ButtonClicked(made.form.cmdProcessCall);
    EXPECT_EQ(StatusLines(made.form), (Strings{L"Dialed 5550100 using 3CX.",
                                               L"Call processing completed in 0.000 seconds."}));
}

// GoldMine's answer is waited for, and the user reaches the window meanwhile.
TEST_F(UserActionsTest, WhileAGoldMineIsMetNoOtherCallBegins) {
    Program& made = Make();
    ASSERT_EQ(made.Run(), RunOutcome::WindowShown);
    made.form.txtOutboundPhone.setText(L"555-0100");
    made.form.cmdProcessCall.setEnabled(true);
    around.RunGoldMine();
    int asked = 0;
    around.goldMine.onSend = [&](const std::wstring&) {
        if (++asked == 1)
            made.actions.ButtonClicked(made.form.cmdProcessCall);
    };
    made.actions.ButtonClicked(made.form.cmdProcessCall);
    EXPECT_EQ(around.processes.started.size(), 1u);
    const Strings lines = StatusLines(made.form);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), L"GoldMine version 2014.1 detected."), 1);
}

TEST_F(UserActionsTest, ADisabledButtonDoesNothing) {
    Program& made = Shown();
    made.form.txtOutboundPhone.setText(L"555-0100");
    ASSERT_FALSE(made.form.cmdProcessCall.enabled());
    made.actions.ButtonClicked(made.form.cmdProcessCall);
    EXPECT_EQ(around.processes.started, Strings{});
}

TEST_F(UserActionsTest, ExitClosesTheWindowByItsShutdown) {
    Program& made = Shown();
    made.actions.ButtonClicked(made.form.cmdExit);
    EXPECT_EQ(around.view.closeRequests, 1);
    EXPECT_TRUE(around.view.closed);
    EXPECT_EQ(StatusLines(made.form).back(), L"Finished unloading form and closing program.");
}

TEST_F(UserActionsTest, ParamsOpensAndClosesThePanel) {
    Program& made = Shown();
    made.actions.ButtonClicked(made.form.cmdParams);
    EXPECT_EQ(made.form.width(), 13920);
    EXPECT_EQ(made.form.cmdParams.caption(), L"<< &Params");
    made.actions.ButtonClicked(made.form.cmdParams);
    EXPECT_EQ(made.form.width(), 7800);
    EXPECT_EQ(made.form.cmdParams.caption(), L"&Params >>");
}

TEST_F(UserActionsTest, SaveAndRestoreButtonsDoWhatTheySay) {
    Program& made = Shown();
    made.form.txtCallerIDMinLength.setText(L"9");
    made.actions.ButtonClicked(made.form.cmdSaveSettings);
    EXPECT_EQ(around.registry.Stored(FakeRegistry::ownKey, L"txtCallerIDMinLength"), L"9");
    EXPECT_EQ(around.registry.Stored(FakeRegistry::ownKey, L"chkWriteLog"), L"0");
    made.actions.ButtonClicked(made.form.cmdDefaults);
    EXPECT_EQ(made.form.txtCallerIDMinLength.text(), L"6");
    EXPECT_EQ(around.registry.Stored(FakeRegistry::ownKey, L"txtCallerIDMinLength"), L"9");
    EXPECT_TRUE(made.form.SettingsDirty);
}

TEST_F(UserActionsTest, AnErrorBehindAButtonIsShownOnceAndTheWindowStays) {
    Program& made = Shown();
    around.registry.failingValues = {L"chkGlobalEnable"};
    made.actions.ButtonClicked(made.form.cmdSaveSettings);
    const auto shown = around.boxes.Take();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].icon, BoxIcon::Critical);
    EXPECT_TRUE(shown[0].text.starts_with(L"Run-time error '-2147191503':\r\n\r\n"));
    EXPECT_FALSE(around.view.closed);
}

TEST_F(UserActionsTest, CheckBoxesToggleAndOptionsSelect) {
    Program& made = Shown();
    made.actions.CheckBoxClicked(made.form.chkTrimOutboundPrefix);
    EXPECT_FALSE(made.form.chkTrimOutboundPrefix.checked());
    EXPECT_FALSE(made.form.txtOutboundMaxLength.enabled());
    EXPECT_TRUE(made.form.SettingsDirty);
    made.actions.OptionClicked(made.form.optPhone1Only);
    EXPECT_TRUE(made.form.optPhone1Only.selected());
    EXPECT_FALSE(made.form.optPhone123.selected());
}

TEST_F(UserActionsTest, OnlyAClickAsksAboutAdditionalContacts) {
    Program& made = Shown();
    around.boxes.answers = {BoxAnswer::No};
    made.actions.CheckBoxClicked(made.form.chkSearchInAddlContacts);
    EXPECT_EQ(around.boxes.Take().size(), 1u);
    EXPECT_FALSE(made.form.chkSearchInAddlContacts.checked());
    EXPECT_FALSE(made.form.SettingsDirty);
}

TEST_F(UserActionsTest, TheMasterSwitchCheckedAgainSavesAndCloses) {
    Program& made = Shown();
    made.actions.CheckBoxClicked(made.form.chkGlobalEnable);
    EXPECT_FALSE(made.form.chkTrimOutboundPrefix.enabled());
    around.boxes.answers = {BoxAnswer::Yes};
    made.actions.CheckBoxClicked(made.form.chkGlobalEnable);
    EXPECT_EQ(around.boxes.Take().size(), 1u);
    EXPECT_EQ(around.registry.Stored(FakeRegistry::ownKey, L"chkGlobalEnable"), L"1");
    EXPECT_TRUE(around.view.closed);
}

TEST_F(UserActionsTest, LeavingABoxRunsItsCheck) {
    Program& made = Shown();
    made.form.txtOutboundMaxLength.setText(L"21");
    EXPECT_FALSE(made.actions.MayLeave(made.form.txtOutboundMaxLength, true));
    made.form.txtOutboundMaxLength.setText(L"20");
    EXPECT_TRUE(made.actions.MayLeave(made.form.txtOutboundMaxLength, true));
    made.form.txtLinkedItemPath.setText(L"C:\\nowhere");
    EXPECT_FALSE(made.actions.MayLeave(made.form.txtLinkedItemPath, true));
    EXPECT_EQ(around.boxes.Take().size(), 2u);
    made.form.txtCallType.setText(L"i");
    EXPECT_TRUE(made.actions.MayLeave(made.form.txtCallType, true));
    EXPECT_EQ(made.form.txtCallType.text(), L"I");
    EXPECT_TRUE(made.form.cmdProcessCall.enabled());
}

TEST_F(UserActionsTest, AnErrorWhileTheFolderIsLookedThroughIsShownAndTheBoxMayBeLeft) {
    Program& made = Shown();
    made.form.txtLinkedItemPath.setText(L"C:\\Rec");
    around.files.folders = {L"C:\\Rec"};
    around.files.searchError = RuntimeError{52, L"files", L"Bad file name", L"", 0};

    EXPECT_TRUE(made.actions.MayLeave(made.form.txtLinkedItemPath, true));

    EXPECT_EQ(around.boxes.Take(),
              (ShownBoxes{Notice(L"Run-time error '52':\r\n\r\nGetFileLink: Bad file name",
                                 BoxIcon::Critical)}));
    EXPECT_EQ(StatusLines(made.form).back(), L"Run-time error '52':  GetFileLink: Bad file name");
}

TEST_F(UserActionsTest, ClickingTheLogsOptionMakesTheSettingsDirty) {
    Program& made = Shown();
    ASSERT_FALSE(made.form.SettingsDirty);
    made.actions.CheckBoxClicked(made.form.chkWriteLog);
    EXPECT_TRUE(made.form.chkWriteLog.checked());
    EXPECT_TRUE(made.form.SettingsDirty);
}

// A box that is neither checked nor unchecked, as a foreign hand may store it.
TEST_F(UserActionsTest, AGreyedMasterSwitchCountsAsOnAndAClickAsksAsForCheckingIt) {
    around.StoreOption(L"chkGlobalEnable", L"2");
    Program& made = Shown();
    ASSERT_EQ(made.form.chkGlobalEnable.value(), 2);
    EXPECT_TRUE(made.form.chkTrimOutboundPrefix.enabled());
    around.boxes.answers = {BoxAnswer::No};

    made.actions.CheckBoxClicked(made.form.chkGlobalEnable);

    EXPECT_EQ(around.boxes.Take(),
              (ShownBoxes{Question(L"The program must be reloaded to re-enable the link between "
                                   L"GoldMine and 3CX. Okay to save your settings and exit? You "
                                   L"can then re-start the program.")}));
    EXPECT_EQ(made.form.chkGlobalEnable.value(), 0);
    EXPECT_FALSE(made.form.SettingsDirty);
    EXPECT_FALSE(around.view.closed);
}

TEST_F(UserActionsTest, AClickOnAGreyedSearchOfAdditionalContactsAsksAsForCheckingIt) {
    around.StoreOption(L"chkSearchInAddlContacts", L"2");
    Program& made = Shown();
    ASSERT_EQ(made.form.chkSearchInAddlContacts.value(), 2);
    around.boxes.answers = {BoxAnswer::Yes};

    made.actions.CheckBoxClicked(made.form.chkSearchInAddlContacts);

    EXPECT_EQ(around.boxes.Take(),
              (ShownBoxes{Question(L"Has your system administrator added database indexes on the "
                                   L"ContSupp.Phone and ContSupp.Fax fields? This is required in "
                                   L"order for this function to work efficiently.")}));
    EXPECT_TRUE(made.form.chkSearchInAddlContacts.checked());
    EXPECT_TRUE(made.form.SettingsDirty);
}

// As a person does who tries the settings.
void TypeAnsweredCall(Form& form) {
    form.txtNotifType.setText(L"C");
    form.txtCallType.setText(L"I");
    form.txtCallerIDFormatted.setText(L"(555)123-4567");
    form.cmdProcessCall.setEnabled(true);
}

TEST_F(UserActionsTest, WhileACallIsProcessedNoOtherBeginsAndTheWindowClosesAfterIt) {
    around.RunGoldMine();
    around.AnswerMacro(L"Phone1", L"(555)123-4567");
    around.StoreOption(L"chkCreateHistory", L"1");
    around.StoreOption(L"chkAutoOpenHistory", L"0");
    around.StoreOption(L"chkCreateLink", L"1");
    around.StoreOption(L"txtLinkedItemPath", L"C:\\Rec");
    around.files.folders = {L"C:\\Rec"};
    Program& made = Make();
    ASSERT_EQ(made.Run(), RunOutcome::WindowShown);
    around.goldMine.answerAll = [](const std::wstring& command) {
        const bool insert = command.find(L"InsHist") != std::wstring::npos;
        const std::wstring call = insert ? L"InsHist" : L"Macro";
        return L"<GMAPI call=\"" + call + L"\"><status code=\"1\">(555)123-4567</status></GMAPI>";
    };
    TypeAnsweredCall(made.form);
    // The delay before the recording link lets the user reach the window.
    around.clock.onPump = [&] {
        around.clock.onPump = nullptr;
        made.actions.ButtonClicked(made.form.cmdProcessCall);
        made.actions.ButtonClicked(made.form.cmdExit);
        EXPECT_FALSE(around.view.closed);
    };
    made.actions.ButtonClicked(made.form.cmdProcessCall);

    EXPECT_TRUE(around.view.closed);
    const Strings lines = StatusLines(made.form);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), L"Creating history at connection of call."),
              1);
    EXPECT_EQ(lines.back(), L"Finished unloading form and closing program.");
}

// GoldMine may report its dialog when the call is long over, and the HTML engine may keep the
// filling-in waiting.
TEST_F(UserActionsTest, WhileTheDialogIsFilledInNoCallBeginsAndTheWindowClosesAfterIt) {
    around.RunGoldMine();
    around.StoreOption(L"chkCreateHistory", L"1");
    around.StoreOption(L"chkAutoOpenHistory", L"1");
    around.StoreOption(L"optOpenHistoryBeforeSaving", L"True");
    Program& made = Make();
    ASSERT_EQ(made.Run(), RunOutcome::WindowShown);
    around.goldMine.answerAll = [](const std::wstring& command) -> std::wstring {
        if (command.find(L"RegisterWindowUpDown") != std::wstring::npos)
            return L"<GMAPI call=\"RegisterWindowUpDown\"><status "
                   L"code=\"1\">Success</status></GMAPI>";
        if (command.find(L"MenuCommand") != std::wstring::npos)
            return L"<GMAPI call=\"MenuCommand\"><status code=\"1\">The command was "
                   L"executed.</status></GMAPI>";
        if (command.find(L"SetControlText") != std::wstring::npos)
            return L"<GMAPI call=\"GMUI_SetControlText\"><status "
                   L"code=\"1\">Success</status></GMAPI>";
        if (command.find(L"GetActiveWindowsList") != std::wstring::npos)
            return L"<GMAPI call=\"GetActiveWindowsList\"/>";
        return L"<GMAPI call=\"Macro\"><status code=\"1\">(555)123-4567</status></GMAPI>";
    };
    made.form.NotesAreHTML = true;
    around.html.pollsUntilComplete = 2;
    TypeAnsweredCall(made.form);
    made.form.chkFillInRef.setChecked(true);
    made.form.chkCreateLink.setChecked(true);
    made.form.chkDelayAddingLink.setChecked(false);
    made.form.chkConfirmRecentRecordingFile.setChecked(false);
    made.form.txtLinkedItemPath.setText(L"C:\\Rec");
    around.files.folders = {L"C:\\Rec"};
    around.files.newest.name = L"a.wav";
    made.form.SettingsDirty = false;
    made.actions.ButtonClicked(made.form.cmdProcessCall);
    Strings expected = StatusLines(made.form);
    around.view.Detach();  // the window comes to its closing later

    int pumps = 0;
    around.clock.onPump = [&] {
        ++pumps;
        made.actions.ButtonClicked(made.form.cmdProcessCall);
        EXPECT_FALSE(made.actions.MayClose());
        EXPECT_EQ(around.view.closeRequests, 0);
    };
    around.goldMine.RaiseWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 4711);

    EXPECT_EQ(pumps, 2);
    EXPECT_EQ(around.view.closeRequests, 1);
    expected.push_back(L"Finished opening Complete Call dialog before saving in history.");
    EXPECT_EQ(StatusLines(made.form), expected);
}

TEST_F(UserActionsTest, ActivationBringsTheFocusToAnEnabledProcessCall) {
    Program& made = Shown();
    made.actions.Activated(true);
    EXPECT_EQ(made.form.focused(), nullptr);
    made.form.cmdProcessCall.setEnabled(true);
    made.form.chkAutoProcess.setEnabled(true);
    made.actions.Activated(true);
    EXPECT_EQ(made.form.focused(), &made.form.cmdProcessCall);
    EXPECT_FALSE(made.form.chkAutoProcess.enabled()) << "Always show form is unchecked";
}

TEST_F(UserActionsTest, WhenABoxOfTheProgramClosesTheFocusStays) {
    Program& made = Shown();
    made.form.cmdProcessCall.setEnabled(true);
    made.form.chkAutoProcess.setEnabled(true);
    made.form.SetFocus(made.form.txtCommandLineAPILogLevel);
    made.actions.Activated(false);
    EXPECT_EQ(made.form.focused(), &made.form.txtCommandLineAPILogLevel);
    EXPECT_FALSE(made.form.chkAutoProcess.enabled()) << "the rules run as on every activation";
}

}  // namespace
}  // namespace corvane::test
