#include "EndToEndTest.h"
#include "Files.h"

namespace end_to_end {
namespace {

const std::string cid = "(555)123-4567";
const std::string reference = "Ended incoming call from (555)123-4567";
const std::string ended = "/N:E /C:5551234567 /T:I /I:00042";
const std::string accountNo = gmapi::Macro("Contact1-&gt;AccountNo");
const Lines search = Joined({phoneCommands, {gmapi::CallerID(cid, "1", "1")}});

std::string EscapedMarkup(const std::string& text) {
    std::string result;
    for (const char each : text) {
        switch (each) {
            case '&':
                result += "&amp;";
                break;
            case '"':
                result += "&quot;";
                break;
            case '\'':
                result += "&apos;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += each;
        }
    }
    return result;
}

}  // namespace

// History is created at the end of an inbound call, directly, and opened afterwards.
class HistoryTest : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        SetAll({{"chkPopOnInboundCall", "0"},
                {"optProcessConnect", "False"},
                {"optProcessEnd", "True"},
                {"optOpenHistoryBeforeSaving", "False"},
                {"optOpenHistoryAfterSaving", "True"}});
    }

    // A run's log, of which these are the lines between found contact and finished history.
    static Lines Log(const Lines& messages, const std::string& commandLine = ended) {
        return RunLog(commandLine, "00042",
                      Joined({{versionDetected,
                               "Inbound call search for CallerID:  no searching requested on "
                               "inbound call.",
                               "History creation:  requested at _end_ of call.",
                               "Found (555)123-4567 in a primary contact record.",
                               "Creating history at end of call."},
                              messages,
                              {"Finishing creating history at end of call.",
                               "History creation:  processing completed.",
                               "Call processing completed in <seconds> seconds."}}));
    }

    static std::string NewestHistory(const PracticeGoldMine& goldMine, const std::string& columns) {
        const Lines rows =
            goldMine.Sql("select " + columns + " from ContHist order by rowid desc limit 1");
        return rows.empty() ? "" : rows[0];
    }
};

TEST_F(HistoryTest, TheNewItemIsOpenedByItsIdentifier) {
    PracticeGoldMine& goldMine = GoldMine();

    const Outcome run = Run(ended);

    const std::string recordId = NewestHistory(goldMine, "RecID");
    Check(run, {.log = Log({"Created incoming call history.", "Opening history item window.",
                            "Opened history item window."}),
                .commands = Joined({startUpCommands,
                                    search,
                                    {accountNo, gmapi::InsHist("A0002", "CI", reference),
                                     gmapi::PopCalHistItem(EscapedMarkup(recordId))}})});
    EXPECT_EQ(NewestHistory(goldMine, "UserID, AccountNo, RecType, Ref, Notes"),
              "MASTER\tA0002\tCI\t" + reference + "\t");
}

TEST_F(HistoryTest, ANumericIdentifierIsAskedForAgain) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("InsHist ids numeric\n");

    const Outcome run = Run(ended);

    const std::string recordId = NewestHistory(goldMine, "RecID");
    Check(run, {.log = Log({"Created incoming call history.", "Opening history item window.",
                            "Opened history item window."}),
                .commands = Joined(
                    {startUpCommands,
                     search,
                     {accountNo, gmapi::InsHist("A0002", "CI", reference),
                      gmapi::Macro("ContHist-&gt;RecID"), gmapi::PopCalHistItem(recordId)}})});
}

TEST_F(HistoryTest, AnItemThatCannotBeOpenedStays) {
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("PopCalHistItem status 0\n");

    const Outcome run = Run(ended);

    EXPECT_EQ(run.log, Log({"Created incoming call history.", "Opening history item window.",
                            "Could not open history item window."}));
    EXPECT_EQ(run.boxes, Boxes{});
    EXPECT_EQ(NewestHistory(goldMine, "Ref"), reference);
}

TEST_F(HistoryTest, AnIdentifierOfZeroIsAFailure) {
    GoldMine().SetFaults("InsHist value 0\n");

    const Outcome run = Run(ended);

    Check(
        run,
        {.log = Log({"Could not insert call history.", "Failed to create history at end of call"}),
         .commands = Joined(
             {startUpCommands, search, {accountNo, gmapi::InsHist("A0002", "CI", reference)}}),
         .boxes = {{"Failed to create history at end of call"}}});
}

TEST_F(HistoryTest, WithoutAnAccountNumberNoHistoryIsCreated) {
    GoldMine().SetFaults("Macro:Contact1->AccountNo status 0\n");

    const Outcome run = Run(ended);

    const std::string failure =
        "Could not retrieve GoldMine AccountNo for current record, so no history created.";
    Check(run, {.log = Log({failure, "Failed to create history at end of call"}),
                .commands = Joined({startUpCommands, search, {accountNo}}),
                .boxes = {{failure}, {"Failed to create history at end of call"}}});
}

TEST_F(HistoryTest, TheUserOfTheStartIsTheItemsUser) {
    WriteFileText(std::wstring(dataFolder) + L"O'NEIL&.INI",
                  "[Modem]\r\nDeviceID=0\r\nDDEDial=&Dial,," + std::string(programPath) +
                      " %s\r\nTAPITranslation=0\r\n");
    PracticeGoldMine& goldMine = GoldMine("\"/User:O'NEIL&\"");
    Set("chkAutoOpenHistory", "0");

    const Outcome run = Run(ended);

    Check(run, {.log = Log({"Created incoming call history."}),
                .commands = Joined(
                    {startUpCommands,
                     search,
                     {accountNo, gmapi::InsHist("A0002", "CI", reference, "O&apos;NEIL&amp;")}})});
    EXPECT_EQ(NewestHistory(goldMine, "UserID"), "O'NEIL&");
}

// With a link to a recording, and without the wait for it.
class RecordingTest : public HistoryTest {
protected:
    void SetUp() override {
        HistoryTest::SetUp();
        SetAll({{"chkCreateLink", "1"},
                {"chkDelayAddingLink", "0"},
                {"chkAutoOpenHistory", "0"},
                {"chkConfirmLinkCallIdentifier", "1"},
                {"txtLinkedItemPath", "C:\\corvane-e2e\\recordings"}});
    }

    static void Record(const std::string& name, long long secondsOld = 1) {
        const std::wstring file = recordingsFolder + Wide(name);
        WriteFileText(file, "sound");
        AgeFile(file, secondsOld);
    }

    static Lines Checked(int count, const std::string& newest) {
        return {"Checked " + std::to_string(count) +
                    " files in \"C:\\corvane-e2e\\recordings\" in <seconds> seconds.",
                "Most recent file is \"" + newest + "\", modified <date>."};
    }
};

TEST_F(RecordingTest, PlainNotesHoldThePath) {
    PracticeGoldMine& goldMine = GoldMine();
    Record("older(00042).wav", 9);
    Record("call(00042).wav");
    Record(".hidden(00042).wav", 0);
    const std::string path = "C:\\corvane-e2e\\recordings\\call(00042).wav";

    const Outcome run = Run(ended);

    const std::string recordId = NewestHistory(goldMine, "RecID");
    EXPECT_EQ(run.log,
              Log(Joined({Checked(2, "call(00042).wav"),
                          {"Prepared link to \"" + path + "\".", "Created incoming call history.",
                           "Updated history Notes with link."}})));
    EXPECT_EQ(run.boxes, Boxes{});
    EXPECT_EQ(NewestHistory(goldMine, "Notes"), path);
    ASSERT_EQ(run.commands.size(), 14u);
    EXPECT_EQ(run.commands[9], gmapi::Call("Open", gmapi::Data("Filename", "CONTHIST")));
    EXPECT_TRUE(run.commands[10].starts_with("<GMAPI call=\"Move\"><data name=\"Area\">"));
    EXPECT_NE(run.commands[11].find("<data name=\"Field\">Notes</data><data name=\"NewValue\">" +
                                    path + "</data><data name=\"Append\">0</data></GMAPI>"),
              std::string::npos)
        << run.commands[11];
    EXPECT_TRUE(run.commands[12].starts_with("<GMAPI call=\"Unlock\">"));
    EXPECT_TRUE(run.commands[13].starts_with("<GMAPI call=\"Close\">"));
}

TEST_F(RecordingTest, HtmlNotesHoldTheDocumentByteByByte) {
    CloseGoldMine();  // areas are counted anew
    PracticeGoldMine& goldMine = GoldMine();
    WriteFileText(std::wstring(dataFolder) + L"GM.INI", "[GoldMine]\r\nHTML_Cal_Notes=1\r\n");
    Record("call(00042).wav");

    const Outcome run = Run(ended);

    const std::string path = "C:\\corvane-e2e\\recordings\\call(00042).wav";
    const std::string document =
        "<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.0 Transitional//EN'>\r\n"
        "<HTML><HEAD>\r\n"
        "<STYLE type=text/css> P, UL, OL, DL, DIR, MENU, PRE { margin: 0 auto;}</STYLE>\r\n"
        "<META name=GENERATOR content='MSHTML 8.00.7601.17824'></HEAD>\r\n"
        "<BODY leftMargin=1 rightMargin=1 topMargin=1><FONT size=2 face='Segoe UI,Tahoma'>\r\n"
        "<DIV><A href='file://" +
        path + "'>" + path + "</A></A><BR></DIV></FONT></BODY></HTML>\r\n";
    Lines replacements;
    for (const std::string& command : run.commands) {
        if (command.starts_with("<GMAPI call=\"Replace\">")) {
            replacements.push_back(command);
        }
    }
    Lines expected;
    for (size_t begin = 0; begin < document.size(); begin += 200) {
        expected.push_back(gmapi::Call(
            "Replace", gmapi::Data("Area", "1") + gmapi::Data("Field", "Notes") +
                           gmapi::Data("NewValue", EscapedMarkup(document.substr(begin, 200))) +
                           gmapi::Data("Append", begin == 0 ? "0" : "1")));
    }
    EXPECT_EQ(replacements, expected);
    EXPECT_EQ(run.boxes, Boxes{});
    // An XML reader makes one LF of each line end.
    std::string stored = document;
    std::erase(stored, '\r');
    EXPECT_EQ(NewestHistory(goldMine, "Notes"), stored);
}

TEST_F(RecordingTest, AMissingFolderIsToldAndTheHistoryStaysWithoutLink) {
    PracticeGoldMine& goldMine = GoldMine();
    Set("txtLinkedItemPath", "C:\\corvane-e2e\\nowhere");

    const Outcome run = Run(ended);

    Check(run,
          {.log = Log({"Could not access recordings folder \"C:\\corvane-e2e\\nowhere\". Link "
                       "to recording not saved.",
                       "Created incoming call history."}),
           .commands = Joined(
               {startUpCommands, search, {accountNo, gmapi::InsHist("A0002", "CI", reference)}}),
           .boxes = {{"Could not access recordings folder:\r\n\r\nC:\\corvane-e2e\\nowhere"
                      "\r\n\r\nLink to recording will not be saved."}}});
    EXPECT_EQ(NewestHistory(goldMine, "Notes"), "");
}

TEST_F(RecordingTest, AnEmptyFolderHasNoRecording) {
    GoldMine();

    const Outcome run = Run(ended);

    EXPECT_EQ(run.log, Log({"Checked 0 files in \"C:\\corvane-e2e\\recordings\" in <seconds> "
                            "seconds.",
                            "No files found in recordings folder \"C:\\corvane-e2e\\recordings\". "
                            "Link to recording not saved.",
                            "Created incoming call history."}));
}

TEST_F(RecordingTest, AnOldRecordingIsNotLinked) {
    GoldMine();
    Record("call(00042).wav", 100);

    const Outcome run = Run(ended);

    ASSERT_EQ(run.log.size(), 15u);
    const std::string begin =
        "[00042]: The most recent file in the recordings folder, \"C:\\corvane-e2e\\recordings\\"
        "call(00042).wav\", was created 10";
    EXPECT_EQ(run.log[9].substr(0, begin.size()), begin);
    EXPECT_TRUE(
        run.log[9].ends_with(" seconds ago, which exceeds the specified maximum age of 20 "
                             "seconds. Link to recording not saved."));
}

TEST_F(RecordingTest, ARecordingOfAnotherCallIsNotLinked) {
    GoldMine();
    Record("call(00041).wav");

    const Outcome run = Run(ended);

    EXPECT_EQ(run.log,
              Log(Joined({Checked(1, "call(00041).wav"),
                          {"The most recent file in the recordings folder \"C:\\corvane-e2e\\"
                           "recordings\\call(00041).wav\" does not include the 3CX Call "
                           "Identifier \"00042\". Link not saved.",
                           "Created incoming call history."}})));
}

TEST_F(RecordingTest, OnlyTheIdentifierBeforeAColonCounts) {
    GoldMine();
    Record("call(00042).wav");
    const std::string commandLine = "/N:E /C:5551234567 /T:I /I:00042:2";

    const Outcome run = Run(commandLine);

    ASSERT_EQ(run.log.size(), 16u);
    EXPECT_EQ(run.log[9],
              "[00042:2]: Prepared link to \"C:\\corvane-e2e\\recordings\\call(00042).wav\".");
}

TEST_F(RecordingTest, TheDelayIsToldEvenWhenItIsEmpty) {
    GoldMine();
    Record("call(00042).wav");
    SetAll({{"chkDelayAddingLink", "1"}, {"txtDelayAddingLinkSeconds", "0"}});

    const Outcome run = Run(ended);

    ASSERT_EQ(run.log.size(), 17u);
    EXPECT_EQ(run.log[7], "[00042]: Delaying adding link for 0 seconds.");
}

TEST_F(RecordingTest, AFailedUpdateLeavesTheHistory) {
    PracticeGoldMine& goldMine = GoldMine();
    Record("call(00042).wav");
    goldMine.SetFaults("Move value 2\n");

    const Outcome run = Run(ended);

    ASSERT_EQ(run.log.size(), 16u);
    EXPECT_EQ(run.log[11], "[00042]: Could not update history Notes with link.");
    EXPECT_EQ(NewestHistory(goldMine, "Ref, Notes"), reference + "\t");
}

TEST_F(RecordingTest, AFailedInsertSaysThatThereWasALink) {
    GoldMine().SetFaults("InsHist status 0\n");
    Record("call(00042).wav");

    const Outcome run = Run(ended);

    EXPECT_EQ(run.boxes, (Boxes{{"Failed to create history with link at end of call"}}));
}

}  // namespace end_to_end
