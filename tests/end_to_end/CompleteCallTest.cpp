#include <algorithm>

#include "EndToEndTest.h"
#include "Files.h"

namespace end_to_end {
namespace {

const std::string connected = "/N:C /C:5551234567 /T:I /I:9";
const std::string reference = "Connected incoming call from (555)123-4567";
const std::string opening = "[9]: Opening Complete Call dialog before saving in history.";
const std::string opened = "[9]: Finished opening Complete Call dialog before saving in history.";
const std::string waiting = "[9]: Waiting for history Ref and Notes to be filled in: ";
constexpr int referenceId = 1016;
constexpr int notesId = 1017;

}  // namespace

// The default: an answered call opens GoldMine's dialog.
class CompleteCallTest : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        Set("chkPopOnInboundCall", "0");
    }

    // The handle of the dialog, as GoldMine reported it.
    static HWND Dialog(const PracticeGoldMine& goldMine) {
        const std::string mark = "! WindowUpDown DIALOGSCHEDULECOMPLETE 1 ";
        HWND dialog = nullptr;
        for (const std::string& line : goldMine.Journal()) {
            if (line.starts_with(mark)) {
                dialog = reinterpret_cast<HWND>(
                    static_cast<INT_PTR>(std::atol(line.c_str() + mark.size())));
            }
        }
        return dialog;
    }
    static std::string HandleText(HWND window) {
        return std::to_string(static_cast<long>(reinterpret_cast<INT_PTR>(window)));
    }
    static std::string FieldOf(HWND dialog, int id) {
        return Utf8(WindowTextOf(GetDlgItem(dialog, id)));
    }

    // Up to the search, and the lines before and behind what the dialog does.
    static Lines Log(const Lines& atOpening, const Lines& atTheEnd) {
        Lines log = RunLog(connected, "9",
                           {versionDetected,
                            "Inbound call search for CallerID:  no searching requested on inbound "
                            "call.",
                            "History creation:  requested at _connection_ of call.",
                            "Found (555)123-4567 in a primary contact record.",
                            "Creating history at connection of call."});
        const std::string last = log.back();
        log.pop_back();
        return Joined({log,
                       atOpening,
                       {"[9]: Finishing creating history at connection of call.",
                        "[9]: History creation:  processing completed.",
                        "[9]: Call processing completed in <seconds> seconds."},
                       atTheEnd,
                       {last}});
    }
    static Lines CommandsUntilMenu(const std::string& menuCommand) {
        return Joined({startUpCommands,
                       phoneCommands,
                       {gmapi::CallerID("(555)123-4567", "1", "1"), gmapi::Register("1"),
                        gmapi::MenuCommand(menuCommand)}});
    }
    static Lines FillIn(HWND dialog, const std::string& text) {
        return {gmapi::WindowsList(), gmapi::SetControlText(HandleText(dialog), "1016", text)};
    }
    // Takes the waiting lines out of a log and answers how many there were, counted rightly.
    static int TakeWaits(Lines& log) {
        int count = 0;
        std::erase_if(log, [&](const std::string& line) {
            if (!line.starts_with(waiting)) {
                return false;
            }
            EXPECT_EQ(line, waiting + std::to_string(++count) + " second(s)");
            return true;
        });
        return count;
    }

    static inline const std::string incoming = "CompleteUnscheduledIncomingCall";
};

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

TEST_F(CompleteCallTest, ADialogReportedAfterTheReplyIsWaitedFor) {
    PracticeGoldMine& goldMine = GoldMine();

    Outcome run = Run(connected);

    const HWND dialog = Dialog(goldMine);
    EXPECT_LE(TakeWaits(run.log), 2);
    Check(run,
          {.log = Log({opening}, {opened}),
           .commands = Joined(
               {CommandsUntilMenu(incoming), FillIn(dialog, reference), {gmapi::Register("0")}})});
    EXPECT_EQ(FieldOf(dialog, referenceId), reference);
}

TEST_F(CompleteCallTest, ALateDialogIsWaitedForSomeSeconds) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event late 1500\n");

    Outcome run = Run(connected);

    const int waits = TakeWaits(run.log);
    EXPECT_GE(waits, 2);
    EXPECT_LE(waits, 4);
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
