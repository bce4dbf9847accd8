#include "CompleteCallTest.h"

#include <algorithm>

#include "support/windows/Files.h"
#include "support/windows/KernelHandle.h"

namespace end_to_end {

TEST_F(CompleteCallTest, ADialogReportedBeforeTheReplyIsFilledInAtOnce) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event before\n");

    const Outcome run = Run(connected);

    const HWND dialog = Dialog(goldMine);
    Check(run,
          {.log = Log({opening, opened}, {}),
           .commands = Joined(
               {CommandsUntilMenu(incoming), FillIn(dialog, reference), {gmapi::Register("0")}})});
    EXPECT_EQ(FieldOf(dialog, referenceId), reference);
    EXPECT_EQ(FieldOf(dialog, notesId), "");
}

// The command inside is lost, and the menu command with it.
TEST_F(CompleteCallTest, AGoldMineThatDiesWhileItsDialogIsFilledInIsToldOfOnce) {
    GoldMine().SetFaults("MenuCommand event before\nGetActiveWindowsList die\n");
    GoldMineIsSpoilt();

    const Outcome run = Run(connected);

    const std::string lost = "Lost connection to GoldMine's user interface. ";
    ASSERT_EQ(run.boxes.size(), 1u);
    EXPECT_TRUE(run.boxes[0].text.starts_with(lost)) << run.boxes[0].text;
    EXPECT_EQ(
        std::count_if(run.log.begin(), run.log.end(),
                      [&](const std::string& line) { return line.starts_with("[9]: " + lost); }),
        2);
}

TEST_F(CompleteCallTest, ADialogReportedAfterTheReplyIsWaitedFor) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event on end-to-end tests dialog\n");
    const KernelHandle opens(CreateEventW(nullptr, TRUE, FALSE, L"end-to-end tests dialog"));

    ProgramRun program = Start(connected);
    EXPECT_TRUE(
        WaitUntil([] { return LogText().find("Call processing completed") != std::string::npos; }));
    SetEvent(opens.get());
    Outcome run = Finish(program);

    const HWND dialog = Dialog(goldMine);
    EXPECT_LT(TakeWaits(run.log), 10) << "a dialog that comes ends the waiting";
    Check(run,
          {.log = Log({opening}, {opened}),
           .commands = Joined(
               {CommandsUntilMenu(incoming), FillIn(dialog, reference), {gmapi::Register("0")}})});
    EXPECT_EQ(FieldOf(dialog, referenceId), reference);
}

TEST_F(CompleteCallTest, ALateDialogIsWaitedForSomeSeconds) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event on end-to-end tests dialog\n");
    const KernelHandle opens(CreateEventW(nullptr, TRUE, FALSE, L"end-to-end tests dialog"));

    ProgramRun program = Start(connected);
    EXPECT_TRUE(WaitUntil([] {
        return LogText().find("Waiting for history Ref and Notes to be filled in: 2 second(s)") !=
               std::string::npos;
    }));
    SetEvent(opens.get());
    Outcome run = Finish(program);

    const int waits = TakeWaits(run.log);
    EXPECT_GE(waits, 2);
    EXPECT_LT(waits, 10) << "a dialog that comes ends the waiting";
    Check(run, {.log = Log({opening}, {opened}),
                .commands = Joined({CommandsUntilMenu(incoming),
                                    FillIn(Dialog(goldMine), reference),
                                    {gmapi::Register("0")}})});
}

TEST_F(CompleteCallTest, ADialogReportedTwiceIsFilledInOnce) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event twice\n");

    Outcome run = Run(connected);

    TakeWaits(run.log);
    Check(run, {.log = Log({opening}, {opened}),
                .commands = Joined({CommandsUntilMenu(incoming),
                                    FillIn(Dialog(goldMine), reference),
                                    {gmapi::Register("0")}})});
}

TEST_F(CompleteCallTest, ADialogThatIsNeverReportedIsWaitedForTenSeconds) {
    // Neither another window nor the closing of one is the dialog.
    GoldMine().SetFaults(
        "MenuCommand event never\nMenuCommand raise DIALOGOTHER 1 77\n"
        "MenuCommand raise DIALOGSCHEDULECOMPLETE 0 77\n");

    Outcome run = Run(connected);

    EXPECT_EQ(TakeWaits(run.log), 10);
    Check(run, {.log = Log({opening}, {}),
                .commands = Joined({CommandsUntilMenu(incoming), {gmapi::Register("0")}})});
}

TEST_F(CompleteCallTest, ARefusedMenuCommandIsNotWaitedFor) {
    GoldMine().SetFaults("MenuCommand status 0 Not now\n");

    const Outcome run = Run(connected);

    Check(run, {.log = Log({opening, "[9]: Could not open Complete Call dialog."}, {}),
                .commands = Joined({CommandsUntilMenu(incoming), {gmapi::Register("0")}})});
}

TEST_F(CompleteCallTest, PlainNotesGetThePathOfTheRecording) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event before\n");
    SetAll({{"chkCreateLink", "1"},
            {"chkDelayAddingLink", "0"},
            {"txtLinkedItemPath", "C:\\corvane-e2e\\recordings\\"}});
    WriteFileText(std::wstring(recordingsFolder) + L"R&D 'x'.wav", "sound");

    const Outcome run = Run(connected);

    EXPECT_EQ(run.boxes, Boxes{});
    const HWND dialog = Dialog(goldMine);
    EXPECT_EQ(FieldOf(dialog, referenceId), reference);
    EXPECT_EQ(FieldOf(dialog, notesId), "C:\\corvane-e2e\\recordings\\R&D 'x'.wav");
    ASSERT_GE(run.commands.size(), 2u);
    EXPECT_EQ(run.commands[run.commands.size() - 2],
              gmapi::SetControlText(HandleText(dialog), "1017",
                                    "C:\\corvane-e2e\\recordings\\R&amp;D &apos;x&apos;.wav"));
}

TEST_F(CompleteCallTest, PlainNotesGetTheReasonWhenThereIsNoLink) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event before\n");
    SetAll({{"chkCreateLink", "1"},
            {"chkDelayAddingLink", "0"},
            {"txtLinkedItemPath", "C:\\corvane-e2e\\recordings"}});

    const Outcome run = Run(connected);

    EXPECT_EQ(run.boxes, Boxes{});
    EXPECT_EQ(FieldOf(Dialog(goldMine), notesId),
              "No files found in recordings folder \"C:\\corvane-e2e\\recordings\". Link to "
              "recording not saved.");
}

TEST_F(CompleteCallTest, HtmlNotesGetTheLink) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event before\n");
    WriteFileText(std::wstring(dataFolder) + L"GM.INI", "[GoldMine]\r\n");
    SetAll({{"chkCreateLink", "1"},
            {"chkDelayAddingLink", "0"},
            {"txtLinkedItemPath", "C:\\corvane-e2e\\recordings"}});
    WriteFileText(std::wstring(recordingsFolder) + L"a b & c.wav", "sound");

    const Outcome run = Run(connected);

    EXPECT_EQ(run.boxes, Boxes{});
    const std::string path = "C:\\corvane-e2e\\recordings\\a b & c.wav";
    const std::string notes = FieldOf(Dialog(goldMine), notesId);
    EXPECT_NE(notes.find("<P><FONT size=2 face='Segoe UI,Tahoma'><A href='file://" + path + "'>" +
                         path + "</A></FONT></P>"),
              std::string::npos)
        << notes;
    EXPECT_EQ(notes.find("<br>"), std::string::npos) << notes;
}

struct MenuCase {
    const char* name;
    std::map<std::string, std::string> options;
    std::string callType;
    std::string menuCommand;
};

class MenuCommandTest : public CompleteCallTest, public testing::WithParamInterface<MenuCase> {};

TEST_P(MenuCommandTest, FollowsTheCallTypeAndTheOptions) {
    const MenuCase& each = GetParam();
    GoldMine().SetFaults("MenuCommand event before\n");
    SetAll(each.options);

    const Outcome run = Run("/N:C /C:5551234567 /I:9 /T:" + each.callType);

    const std::string menuCommand = gmapi::MenuCommand(each.menuCommand);
    EXPECT_EQ(std::count(run.commands.begin(), run.commands.end(), menuCommand), 1);
    EXPECT_EQ(run.boxes, Boxes{});
}

const std::map<std::string, std::string> alwaysScheduled = {{"optCompleteCallByType", "False"},
                                                            {"optCompleteScheduledCall", "True"}};
const std::map<std::string, std::string> alwaysUnscheduled = {
    {"optCompleteCallByType", "False"}, {"optCompleteUnscheduledCall", "True"}};

INSTANTIATE_TEST_SUITE_P(
    Calls, MenuCommandTest,
    testing::Values(
        MenuCase{"InboundByType", {}, "I", "CompleteUnscheduledIncomingCall"},
        MenuCase{"OutboundByType", {}, "O", "CompleteScheduledCall"},
        MenuCase{"InboundScheduled", alwaysScheduled, "I", "CompleteScheduledCall"},
        MenuCase{"OutboundScheduled", alwaysScheduled, "O", "CompleteScheduledCall"},
        MenuCase{"InboundUnscheduled", alwaysUnscheduled, "I", "CompleteUnscheduledIncomingCall"},
        MenuCase{"OutboundUnscheduled", alwaysUnscheduled, "O", "CompleteUnscheduledOutgoingCall"}),
    NameOf);

}  // namespace end_to_end
