#include <algorithm>

#include "HistoryTest.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"

namespace end_to_end {
namespace {

// What HTML notes get, with one link in it.
std::string DocumentWithLinkTo(const std::string& path) {
    return "<!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.0 Transitional//EN'>\r\n"
           "<HTML><HEAD>\r\n"
           "<STYLE type=text/css> P, UL, OL, DL, DIR, MENU, PRE { margin: 0 auto;}</STYLE>\r\n"
           "<META name=GENERATOR content='MSHTML 8.00.7601.17824'></HEAD>\r\n"
           "<BODY leftMargin=1 rightMargin=1 topMargin=1><FONT size=2 face='Segoe UI,Tahoma'>\r\n"
           "<DIV><A href='file://" +
           path + "'>" + path + "</A></A><BR></DIV></FONT></BODY></HTML>\r\n";
}

// An XML reader makes one LF of each line end.
std::string Stored(std::string notes) {
    std::erase(notes, '\r');
    return notes;
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

    static void NotesAreHtml() {
        WriteFileText(std::wstring(dataFolder) + L"GM.INI", "[GoldMine]\r\nHTML_Cal_Notes=1\r\n");
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

    const std::string recordId = goldMine.NewestHistory("RecID");
    EXPECT_EQ(run.log,
              Log(Joined({Checked(2, "call(00042).wav"),
                          {"Prepared link to \"" + path + "\".", "Created incoming call history.",
                           "Updated history Notes with link."}})));
    EXPECT_EQ(run.boxes, Boxes{});
    EXPECT_EQ(goldMine.NewestHistory("Notes"), path);
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
    NotesAreHtml();
    Record("call(00042).wav");

    const Outcome run = Run(ended);

    const std::string path = "C:\\corvane-e2e\\recordings\\call(00042).wav";
    const std::string document = DocumentWithLinkTo(path);
    Lines replacements;
    for (const std::string& command : run.commands) {
        if (command.starts_with("<GMAPI call=\"Replace\">"))
            replacements.push_back(command);
    }
    Lines expected;
    for (size_t begin = 0; begin < document.size(); begin += 200) {
        expected.push_back(gmapi::Call(
            "Replace", gmapi::Data("Area", "1") + gmapi::Data("Field", "Notes") +
                           gmapi::Data("NewValue", gmapi::Escaped(document.substr(begin, 200))) +
                           gmapi::Data("Append", begin == 0 ? "0" : "1")));
    }
    EXPECT_EQ(replacements, expected);
    EXPECT_EQ(run.boxes, Boxes{});
    EXPECT_EQ(goldMine.NewestHistory("Notes"), Stored(document));
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
    EXPECT_EQ(goldMine.NewestHistory("Notes"), "");
}

TEST_F(RecordingTest, AShareThatHasGoneIsToldAndTheHistoryStaysWithoutLink) {
    PracticeGoldMine& goldMine = GoldMine();
    Set("txtLinkedItemPath", "\\\\no-server.invalid\\recordings");

    const Outcome run = Run(ended);

    Check(run,
          {.log = Log({"Could not access recordings folder \"\\\\no-server.invalid\\recordings\". "
                       "Link to recording not saved.",
                       "Created incoming call history."}),
           .commands = Joined(
               {startUpCommands, search, {accountNo, gmapi::InsHist("A0002", "CI", reference)}}),
           .boxes = {{"Could not access recordings folder:\r\n\r\n"
                      "\\\\no-server.invalid\\recordings"
                      "\r\n\r\nLink to recording will not be saved."}}});
    EXPECT_EQ(goldMine.NewestHistory("Notes"), "");
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
    EXPECT_EQ(goldMine.NewestHistory("Ref, Notes"), reference + "\t");
}

TEST_F(RecordingTest, AFailedInsertSaysThatThereWasALink) {
    GoldMine().SetFaults("InsHist status 0\n");
    Record("call(00042).wav");

    const Outcome run = Run(ended);

    EXPECT_EQ(run.boxes, (Boxes{{"Failed to create history with link at end of call"}}));
}

TEST_F(RecordingTest, AFolderThatVanishesAfterTheSearchLeavesTheLink) {
    PracticeGoldMine& goldMine = GoldMine();
    Record("call(00042).wav");
    goldMine.SetFaults("InsHist delay 500\n");
    const std::string insertion = gmapi::InsHist("A0002", "CI", reference);

    ProgramRun run = Start(ended);
    EXPECT_TRUE(WaitUntil([&] {
        const Lines commands = Commands();
        return std::find(commands.begin(), commands.end(), insertion) != commands.end();
    }));
    EmptyFolder(recordingsFolder);
    EXPECT_TRUE(RemoveDirectoryW(recordingsFolder));
    const Outcome outcome = Finish(run);

    EXPECT_EQ(outcome.boxes, Boxes{});
    ASSERT_GE(outcome.log.size(), 5u);
    EXPECT_EQ(outcome.log[outcome.log.size() - 5], "[00042]: Updated history Notes with link.");
    EXPECT_EQ(goldMine.NewestHistory("Notes"), "C:\\corvane-e2e\\recordings\\call(00042).wav");
}

struct RecordingName {
    const char* name;
    std::string file;
    bool html = false;
};

class RecordingNameTest : public RecordingTest,
                          public testing::WithParamInterface<RecordingName> {};

TEST_P(RecordingNameTest, StandsInTheNotesAsItIs) {
    const RecordingName& each = GetParam();
    PracticeGoldMine& goldMine = GoldMine();
    if (each.html)
        NotesAreHtml();
    Record(each.file);

    const Outcome run = Run(ended);

    const std::string path = "C:\\corvane-e2e\\recordings\\" + each.file;
    EXPECT_EQ(run.boxes, Boxes{});
    ASSERT_GE(run.log.size(), 5u);
    EXPECT_EQ(run.log[run.log.size() - 5], "[00042]: Updated history Notes with link.");
    EXPECT_EQ(goldMine.NewestHistory("Ref, Notes"),
              reference + "\t" + (each.html ? Stored(DocumentWithLinkTo(path)) : path));
}

const std::string face = "\xF0\x9F\x98\x80";  // two UTF-16 units

// Notes are written in pieces of 200 UTF-16 units; the folder takes 26 of the first piece.
INSTANTIATE_TEST_SUITE_P(
    Files, RecordingNameTest,
    testing::Values(
        RecordingName{"TheLongest", "(00042)" + std::string(244, 'x') + ".wav"},
        RecordingName{"WithSignsAndLettersOutsideTheCodePage",
                      "R&D 100% #5 'x' ;=+~`^! {a} [b] \xE6\x97\xA5\xE6\x9C\xAC \xC3\x9C "
                      "(00042)" +
                          std::string(129, 'x') + face + std::string(66, 'y') + ".wav"},
        RecordingName{"InHtmlWithTheLastLineEndAtAPiecesEnd",
                      "R&D 100% #5 'x' (00042)" + std::string(63, 'x') + ".wav", true},
        RecordingName{"InHtmlWithTheLastLineEndAsAPiece",
                      "(00042)" + std::string(41, 'x') + face + std::string(37, 'x') + ".wav",
                      true}),
    NameOf);

struct RecordFault {
    const char* name;
    std::string faults;
    size_t notesLength;  // of what is in the history afterwards, 200 to a piece
};

class RecordFaultTest : public RecordingTest, public testing::WithParamInterface<RecordFault> {};

TEST_P(RecordFaultTest, IsToldWhateverOfTheNotesIsWritten) {
    PracticeGoldMine& goldMine = GoldMine();
    NotesAreHtml();
    Record("call(00042).wav");
    goldMine.SetFaults(GetParam().faults);

    const Outcome run = Run(ended);

    EXPECT_EQ(run.boxes, Boxes{});
    ASSERT_EQ(run.log.size(), 16u);
    EXPECT_EQ(run.log[10], "[00042]: Created incoming call history.");
    EXPECT_EQ(run.log[11], "[00042]: Could not update history Notes with link.");
    const std::string document = DocumentWithLinkTo("C:\\corvane-e2e\\recordings\\call(00042).wav");
    EXPECT_EQ(goldMine.NewestHistory("Ref, Notes"),
              reference + "\t" + Stored(document.substr(0, GetParam().notesLength)));
}

INSTANTIATE_TEST_SUITE_P(
    Replies, RecordFaultTest,
    testing::Values(
        RecordFault{"BrokenXmlToMove", "Move reply <GMAPI call=\"Move\"><status code=\"1\">1\n", 0},
        RecordFault{"ARefusalInTheMiddleOfTheNotes", "Replace:Notes@3 status 0 Refused\n", 400}),
    NameOf);

TEST_F(RecordingTest, AnInsertionThatIsAnsweredWithoutAnIdentifierGetsNoNotes) {
    PracticeGoldMine& goldMine = GoldMine();
    Record("call(00042).wav");
    goldMine.SetFaults("InsHist reply <GMAPI call=\"InsHist\"><status code=\"1\">\n");
    const std::string before = goldMine.NewestHistory("RecID, Notes");

    const Outcome run = Run(ended);

    ASSERT_EQ(run.log.size(), 16u);
    EXPECT_EQ(run.log[10], "[00042]: Created incoming call history.");
    EXPECT_EQ(run.log[11], "[00042]: Could not update history Notes with link.");
    EXPECT_EQ(goldMine.NewestHistory("RecID, Notes"), before);
}

}  // namespace
}  // namespace end_to_end
