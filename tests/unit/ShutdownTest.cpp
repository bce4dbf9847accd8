#include "app/Shutdown.h"

#include "DialogWatch.h"
#include "ProgramFixture.h"
#include "StatusLines.h"

namespace corvane::test {
namespace {

using Strings = std::vector<std::wstring>;

const ShownBox saveQuestion{L"Do you want to save configuration changes before exiting?",
                            BoxButtons::YesNoCancel, BoxIcon::None};

const std::wstring openDialogCommand =
    L"<GMAPI call=\"MenuCommand\">CompleteUnscheduledIncomingCall</GMAPI>";

class ShutdownTest : public ProgramTest {
protected:
    ShutdownTest() {
        around.goldMine.answers[watchDialog] = dialogWatched;
        around.goldMine.answers[openDialogCommand] =
            L"<GMAPI call=\"MenuCommand\"><status code=\"1\">The command was executed.</status>"
            L"</GMAPI>";
        around.goldMine.answers[unwatchDialog] = dialogWatched;
    }
    // A call has asked for GoldMine's dialog, which is to be filled in with nothing.
    void AwaitDialog() {
        program().dialog.OpenCompleteCallDialog(L"", {});
        around.goldMine.commands.clear();
        program().form.txtStatus.setText(L"");
    }
    Strings Lines() { return StatusLines(program().form); }
    static Strings Waiting(int seconds) {
        Strings lines;
        for (int second = 1; second <= seconds; ++second) {
            lines.push_back(L"Waiting for history Ref and Notes to be filled in: " +
                            std::to_wstring(second) + L" second(s)");
        }
        return lines;
    }
};

TEST_F(ShutdownTest, WithoutAWindowNothingIsAsked) {
    Program& made = Make();
    made.form.SettingsDirty = true;
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(Lines(), Strings{programFinished});
    EXPECT_EQ(around.goldMine.releases, 1);
}

TEST_F(ShutdownTest, GoldMineIsLetGoBeforeTheLastLine) {
    Program& made = Make();
    int releasesAtTheLine = -1;
    around.view.onChange = [&](const Control& changed) {
        if (&changed == &made.form.txtStatus)
            releasesAtTheLine = around.goldMine.releases;
    };
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(Lines(), Strings{programFinished});
    EXPECT_EQ(releasesAtTheLine, 1);
}

TEST_F(ShutdownTest, AShownWindowWithoutChangesAsksNothing) {
    Program& made = Make();
    made.form.setVisible(true);
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(Lines(), Strings{programFinished});
}

TEST_F(ShutdownTest, CancelKeepsTheWindowOpen) {
    Program& made = Make();
    made.form.setVisible(true);
    made.form.SettingsDirty = true;
    around.boxes.answers = {BoxAnswer::Cancel};
    EXPECT_FALSE(made.shutdown.Unload());
    EXPECT_EQ(around.boxes.Take(), std::vector<ShownBox>{saveQuestion});
    EXPECT_EQ(Lines(), Strings{});
    EXPECT_TRUE(made.form.SettingsDirty);
    EXPECT_EQ(around.registry.writes, Strings{});
}

TEST_F(ShutdownTest, NoClosesWithoutSaving) {
    Program& made = Make();
    made.form.setVisible(true);
    made.form.SettingsDirty = true;
    around.boxes.answers = {BoxAnswer::No};
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(around.boxes.Take(), std::vector<ShownBox>{saveQuestion});
    EXPECT_EQ(around.registry.writes, Strings{});
    EXPECT_EQ(Lines(), Strings{programFinished});
}

TEST_F(ShutdownTest, YesSavesAndCloses) {
    Program& made = Make();
    made.settings.LoadSettings();
    made.form.setVisible(true);
    made.form.chkCreateLink.setChecked(false);
    made.form.SettingsDirty = true;
    around.boxes.answers = {BoxAnswer::Yes};
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(around.boxes.Take(), std::vector<ShownBox>{saveQuestion});
    EXPECT_EQ(around.registry.Stored(FakeRegistry::ownKey, L"txtCallerIDMinLength"), L"6");
    EXPECT_EQ(Lines(), (Strings{L"Settings saved.", programFinished}));
}

TEST_F(ShutdownTest, ABoxThatTheUserIsStillInIsCheckedOnlyBeforeSaving) {
    Program& made = Make();
    around.view.entryFinishes = false;
    made.form.setVisible(true);
    made.form.SettingsDirty = true;
    around.boxes.answers = {BoxAnswer::Yes, BoxAnswer::No};
    EXPECT_FALSE(made.shutdown.Unload());
    EXPECT_TRUE(around.registry.writes.empty());
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_TRUE(around.registry.writes.empty());
    EXPECT_EQ(around.boxes.Take(), (std::vector<ShownBox>{saveQuestion, saveQuestion}));
}

TEST_F(ShutdownTest, ASaveThatFailsTheFolderCheckKeepsTheWindow) {
    Program& made = Make();
    made.settings.LoadSettings();
    made.form.setVisible(true);
    made.form.chkCreateLink.setChecked(true);
    around.boxes.answers = {BoxAnswer::Yes};
    EXPECT_FALSE(made.shutdown.Unload());
    EXPECT_EQ(around.boxes.Take().size(), 2u);
    EXPECT_TRUE(made.form.SettingsDirty);
}

TEST_F(ShutdownTest, ASaveThatFailsInTheRegistryIsToldAndKeepsTheWindow) {
    Program& made = Make();
    made.settings.LoadSettings();
    made.form.setVisible(true);
    made.form.SettingsDirty = true;
    around.registry.failingValues = {L"optPhone1Only"};
    around.boxes.answers = {BoxAnswer::Yes};
    EXPECT_FALSE(made.shutdown.Unload());
    const auto shown = around.boxes.Take();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_TRUE(shown[1].text.starts_with(L"Run-time error '-2147191503':\r\n\r\n"));
    EXPECT_EQ(around.registry.writes.size(), 3u) << "the entries before it stay written";
}

TEST_F(ShutdownTest, AFollowUpThatNeverComesIsWaitedForTenSecondsAndWithdrawn) {
    Program& made = Make();
    around.RunGoldMine();
    AwaitDialog();
    EXPECT_TRUE(made.shutdown.Unload());
    Strings expected = Waiting(10);
    expected.push_back(programFinished);
    EXPECT_EQ(Lines(), expected);
    EXPECT_EQ(around.clock.sleeps, std::vector<std::uint32_t>(10, 1000));
    EXPECT_EQ(around.clock.pumps, 11);
    EXPECT_EQ(around.goldMine.commands, Strings{unwatchDialog});
}

TEST_F(ShutdownTest, WaitingEndsWhenTheDialogHasBeenFilledIn) {
    Program& made = Make();
    around.RunGoldMine();
    AwaitDialog();
    around.clock.onPump = [&] {
        if (around.clock.pumps == 3)
            around.goldMine.RaiseWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 4711);
    };
    EXPECT_TRUE(made.shutdown.Unload());
    Strings expected = Waiting(3);
    expected.push_back(L"Finished opening Complete Call dialog before saving in history.");
    expected.push_back(programFinished);
    EXPECT_EQ(Lines(), expected);
    EXPECT_EQ(around.clock.sleeps.size(), 3u);
    EXPECT_EQ(around.goldMine.commands, Strings{unwatchDialog});
}

TEST_F(ShutdownTest, AHandledDialogIsNotWaitedForButItsReportIsWithdrawn) {
    Program& made = Make();
    around.RunGoldMine();
    AwaitDialog();
    around.goldMine.RaiseWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 4711);
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(around.clock.sleeps.size(), 0u);
    EXPECT_EQ(around.goldMine.commands, Strings{unwatchDialog});
}

TEST_F(ShutdownTest, ASecondCloseDuringTheWaitDoesNothing) {
    Program& made = Make();
    around.RunGoldMine();
    made.form.setVisible(true);
    made.form.SettingsDirty = true;
    around.boxes.answers = {BoxAnswer::No};
    AwaitDialog();
    around.clock.onPump = [&] { EXPECT_FALSE(made.actions.MayClose()); };
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(around.boxes.Take(), std::vector<ShownBox>{saveQuestion});
    EXPECT_EQ(Lines().size(), 11u);
    EXPECT_EQ(around.goldMine.commands, Strings{unwatchDialog});
}

TEST_F(ShutdownTest, NoCallBeginsDuringTheWait) {
    Program& made = Make();
    around.RunGoldMine();
    made.form.setVisible(true);
    made.form.txtOutboundPhone.setText(L"5551234");
    AwaitDialog();
    around.clock.onPump = [&] { made.actions.ButtonClicked(made.form.cmdProcessCall); };
    EXPECT_TRUE(made.shutdown.Unload());
    Strings expected = Waiting(10);
    expected.push_back(programFinished);
    EXPECT_EQ(Lines(), expected);
    EXPECT_TRUE(around.processes.started.empty());
}

TEST_F(ShutdownTest, AfterCancelTheWindowCanBeClosedAgain) {
    Program& made = Make();
    made.form.setVisible(true);
    made.form.SettingsDirty = true;
    around.boxes.answers = {BoxAnswer::Cancel, BoxAnswer::No};
    EXPECT_FALSE(made.shutdown.Unload());
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(around.boxes.Take().size(), 2u);
}

TEST_F(ShutdownTest, AWaitThatFailsIsToldAndTheReportIsWithdrawnAllTheSame) {
    Program& made = Make();
    around.RunGoldMine();
    AwaitDialog();
    around.clock.onPump = [] { throw MakeRuntimeError(ErrorNumber::OutOfMemory); };
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(around.boxes.Take().size(), 1u);
    EXPECT_EQ(around.goldMine.commands, Strings{unwatchDialog});
    EXPECT_EQ(Lines().back(), programFinished);
}

TEST_F(ShutdownTest, WhenGoldMineIsGoneNothingIsWithdrawn) {
    Program& made = Make();
    AwaitDialog();
    around.goldMine.RaiseWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 4711);
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(around.goldMine.commands, Strings{});
    EXPECT_EQ(Lines().back(), programFinished);
}

// Creating the object would start a GoldMine that the user has closed.
TEST_F(ShutdownTest, AGoldMineThatWasClosedIsNotStartedByTheProgramsEnd) {
    Program& made = Make();
    around.RunGoldMine();
    AwaitDialog();
    made.form.NotesAreHTML = false;
    around.clock.onPump = [&] {
        around.clock.onPump = nullptr;
        around.goldMine.Release();  // as after a connection that was lost
        around.processes.entries.clear();
        static_cast<void>(made.gmui.GMUI_Execute(L"<GMAPI/>"));
    };
    const int connects = around.goldMine.connects;
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(around.goldMine.connects, connects);
    EXPECT_EQ(around.goldMine.commands, Strings{});
}

TEST_F(ShutdownTest, AnErrorOfGoldMinesDoesNotKeepTheProgram) {
    Program& made = Make();
    around.RunGoldMine();
    AwaitDialog();
    around.goldMine.RaiseWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, 4711);
    made.form.txtStatus.setText(L"");
    around.goldMine.sendError = RuntimeError{91, L"GM", L"broken", L"", 0};
    EXPECT_TRUE(made.shutdown.Unload());
    EXPECT_EQ(around.boxes.Take().size(), 1u);
    EXPECT_EQ(Lines(), (Strings{L"Run-time error '91':  broken", programFinished}));
}

}  // namespace
}  // namespace corvane::test
