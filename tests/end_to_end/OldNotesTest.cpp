#include "CompleteCallTest.h"

#include <algorithm>
#include <utility>
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"

namespace end_to_end {
namespace {

const std::string recordingPath = "C:\\corvane-e2e\\recordings\\a b & c.wav";
const std::string recordingLink =
    "<A href='file://" + recordingPath + "'>" + recordingPath + "</A>";
const std::string fragmentBegin = "<P><FONT size=2 face='Segoe UI,Tahoma'>";
const std::string fragmentEnd = "</FONT></P>";

// UTF-16 units of a UTF-8 text.
size_t LengthOf(const std::string& text) {
    return Wide(text).size();
}

// So many UTF-16 units: markup, line ends, letters of all planes.
std::string LongNotes(size_t length) {
    const std::string line =
        "Zeile 1 &amp; \"2\" \xC3\xA4\xE6\x97\xA5 \xF0\x9F\x98\x80 <b>x</b>\r\n";
    std::string notes;
    size_t written = 0;
    for (; written + LengthOf(line) <= length; written += LengthOf(line))
        notes += line;
    return notes + std::string(length - written, 'x');
}

// Somebody has written into the Complete Call dialog before the program gets to it.
class OldNotesTest : public CompleteCallTest {
protected:
    void SetUp() override {
        CompleteCallTest::SetUp();
        SetAll({{"chkCreateLink", "1"},
                {"chkDelayAddingLink", "0"},
                {"txtLinkedItemPath", "C:\\corvane-e2e\\recordings"}});
        WriteFileText(std::wstring(recordingsFolder) + L"a b & c.wav", "sound");
    }

    static void DialogHolds(const std::string& ref, const std::string& notes) {
        WriteFileText(std::wstring(dataFolder) + L"complete-call.txt", ref + "\n" + notes);
    }
    static void NotesAreHtml() {
        WriteFileText(std::wstring(dataFolder) + L"GM.INI", "[GoldMine]\r\nHTML_Cal_Notes=1\r\n");
    }

    // The call's run, whose dialog then holds these texts; so does the history once the user has
    // pressed Complete.
    void RunAndComplete(const std::string& expectedRef, const std::string& expectedNotes) {
        PracticeGoldMine& goldMine = GoldMine();
        goldMine.SetFaults("MenuCommand event before\n");

        const Outcome run = Run(connected);

        EXPECT_EQ(run.boxes, Boxes{});
        ASSERT_GE(run.log.size(), 4u);
        EXPECT_EQ(run.log[run.log.size() - 5], opened);
        const HWND dialog = Dialog(goldMine);
        EXPECT_EQ(FieldOf(dialog, referenceId), expectedRef);
        EXPECT_EQ(FieldOf(dialog, notesId), expectedNotes);
        PostMessageW(dialog, WM_COMMAND, IDOK, 0);
        EXPECT_TRUE(WaitUntil([&] { return !IsWindow(dialog); }));
        EXPECT_EQ(goldMine.NewestHistory("AccountNo, RecType, Ref, Notes"),
                  "A0002\tCI\t" + expectedRef + "\t" + expectedNotes);
    }
};

struct PlainNotes {
    const char* name;
    std::string oldRef;
    std::string oldNotes;
    std::string addition;  // to the notes
};

class OldPlainNotesTest : public OldNotesTest, public testing::WithParamInterface<PlainNotes> {};

TEST_P(OldPlainNotesTest, StandBehindTheLink) {
    const PlainNotes& each = GetParam();
    DialogHolds(each.oldRef, each.oldNotes);

    RunAndComplete(each.oldRef.empty() ? reference : each.oldRef, each.addition + each.oldNotes);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, OldPlainNotesTest,
    testing::Values(
        PlainNotes{"BehindTheRefTextThatFoundItsFieldFilled", "asked for <Ann> & Bob",
                   "Called back",
                   "Connected incoming call from (555)123-4567\r\n" + recordingPath + "\r\n\r\n"},
        PlainNotes{"SeventyThousandCharacters", "",
                   "\r\n a < b & c &amp; \"d\" 'e' </data>\t\r\n\r\n" + LongNotes(70'000) + "\r\n",
                   recordingPath + "\r\n\r\n"}),
    NameOf);

struct HtmlNotesCase {
    const char* name;
    std::string oldRef;
    std::string oldBegin;  // of the notes, in front of the body's content
    std::string content;   // and the rest
    std::string newBegin;
    std::string newEnd;  // added at the end
    std::string fragment;
};

class OldHtmlNotesTest : public OldNotesTest, public testing::WithParamInterface<HtmlNotesCase> {};

TEST_P(OldHtmlNotesTest, AreKeptBehindTheLink) {
    const HtmlNotesCase& each = GetParam();
    NotesAreHtml();
    DialogHolds(each.oldRef, each.oldBegin + each.content);

    RunAndComplete(each.oldRef.empty() ? reference : each.oldRef,
                   each.newBegin + fragmentBegin + each.fragment + each.content + each.newEnd);
}

const std::string upperCaseBegin =
    "<!-- <body> --><!DOCTYPE HTML PUBLIC '-//W3C//DTD HTML 4.0 Transitional//EN'>\r\n"
    "<HTML><HEAD>\r\n<STYLE type=text/css> P { margin: 0 auto;} /* <body> */</STYLE>\r\n"
    "<SCRIPT>var s = '<body>';</SCRIPT></HEAD>\r\n"
    "<BODY leftMargin=1\r\n title='a > b'>";
const std::string hostileContent =
    "a &amp; b &lt;i&gt; &nbsp; &#8364; \xE2\x82\xAC &unknown; & &amp;lt; <!-- c > --> "
    "<script>if (1 < 2) t(\"</b>\");</script><B>bold<i x='<body>'>unclosed <u y=\"";

INSTANTIATE_TEST_SUITE_P(
    Texts, OldHtmlNotesTest,
    testing::Values(HtmlNotesCase{"OfSeventyThousandCharactersWithAllKindsOfMarkup", "",
                                  upperCaseBegin, LongNotes(70'000) + hostileContent,
                                  upperCaseBegin, "", recordingLink + fragmentEnd + "<br>"},
                    HtmlNotesCase{"WithoutABody", "", "", "old <B>notes</B> </body>",
                                  "<HTML><HEAD></HEAD>\r\n<BODY>", "</BODY></HTML>",
                                  recordingLink + fragmentEnd + "<br>"},
                    HtmlNotesCase{"WithoutVisibleTextAndBehindTheRefText", "x", "<html><body>",
                                  "<p> </p></body></html>", "<html><body>", "",
                                  "Connected incoming call from (555)123-4567<br>" + recordingLink +
                                      fragmentEnd}),
    NameOf);

TEST_F(OldNotesTest, AnEngineThatNeverGetsReadyLeavesTheNotesAsTheyAre) {
    const std::wstring engineClass =
        L"SOFTWARE\\Classes\\CLSID\\{25336920-03F9-11CF-8FD0-00AA00686F13}";
    const ClearedKey systemEngine(HKEY_LOCAL_MACHINE, engineClass);
    SetRegistryText(HKEY_LOCAL_MACHINE, engineClass + L"\\InprocServer32", "",
                    Utf8(BuiltFile("tests\\unready_html_engine.dll")));
    SetRegistryText(HKEY_LOCAL_MACHINE, engineClass + L"\\InprocServer32", "ThreadingModel",
                    "Apartment");
    NotesAreHtml();
    DialogHolds("", "<b>old</b>");
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event before\n");
    const ULONGLONG begin = GetTickCount64();

    const Outcome run = Run(connected);

    const ULONGLONG elevenSeconds = 11'000;
    EXPECT_GE(GetTickCount64() - begin, elevenSeconds);
    const std::string timedOut =
        "Timed out after 10 seconds trying to insert HTML string before existing HTML Body.";
    const std::string chain = "AddRefAndNotesToOpenCallDialog: PrependHTMLToBody: " + timedOut;
    const Lines recording = {
        "[9]: Checked 1 files in \"C:\\corvane-e2e\\recordings\" in <seconds> seconds.",
        "[9]: Most recent file is \"a b & c.wav\", modified <date>.",
        "[9]: Prepared link to \"" + recordingPath + "\"."};
    const HWND dialog = Dialog(goldMine);
    Check(run, {.log = Log(Joined({recording,
                                   {opening, "[9]: " + timedOut,
                                    "[9]: Run-time error '2147746306':  " + chain}}),
                           {}),
                .commands = Joined({CommandsUntilMenu(incoming),
                                    FillIn(dialog, reference),
                                    {gmapi::WindowsList(), gmapi::Register("0")}}),
                .boxes = {{"Run-time error '2147746306':\r\n\r\n" + chain, "OK", "critical"}}});
    EXPECT_EQ(FieldOf(dialog, referenceId), reference);
    EXPECT_EQ(FieldOf(dialog, notesId), "<b>old</b>");
}

TEST_F(OldNotesTest, AFieldThatCannotBeWrittenIsToldAndKeepsItsText) {
    DialogHolds("", "Called back");
    PracticeGoldMine& goldMine = GoldMine();
    goldMine.SetFaults("MenuCommand event before\nSetControlText status 0\n");

    const Outcome run = Run(connected);

    const HWND dialog = Dialog(goldMine);
    EXPECT_EQ(FieldOf(dialog, referenceId), "");
    EXPECT_EQ(FieldOf(dialog, notesId), "Called back");
    EXPECT_EQ(run.boxes, Boxes{});
    ASSERT_GE(run.log.size(), 7u);
    EXPECT_EQ(Lines(run.log.end() - 7, run.log.end() - 4),
              (Lines{"[9]: Could not fill in Ref of Complete Call dialog.",
                     "[9]: Could not fill in Notes of Complete Call dialog.", opened}));
}

struct UnreadableList {
    const char* name;
    std::string fault;  // of GetActiveWindowsList
    std::string told;   // by the command itself; empty: nothing
    std::string error;  // number and description
};

class UnreadableListTest : public OldNotesTest,
                           public testing::WithParamInterface<UnreadableList> {};

// What the user typed is not overwritten because it could not be read.
TEST_P(UnreadableListTest, LeavesWhatTheUserTyped) {
    for (const bool html : {false, true}) {
        CloseGoldMine();
        if (html)
            NotesAreHtml();
        DialogHolds("typed", "typed too");
        PracticeGoldMine& goldMine = GoldMine();
        goldMine.SetFaults("MenuCommand event before\nGetActiveWindowsList " + GetParam().fault +
                           "\n");

        const Outcome run = Run(connected);

        const HWND dialog = Dialog(goldMine);
        EXPECT_EQ(FieldOf(dialog, referenceId), "typed");
        EXPECT_EQ(FieldOf(dialog, notesId), "typed too");
        ASSERT_EQ(run.boxes.size(), 1u) << "the command's own, or that of the error";
        const auto [number, description] = [] {
            const std::size_t bar = GetParam().error.find('|');
            return std::pair(GetParam().error.substr(0, bar), GetParam().error.substr(bar + 1));
        }();
        const std::string chain = "AddRefAndNotesToOpenCallDialog: " + description;
        if (GetParam().told.empty())
            EXPECT_EQ(run.boxes[0].text, "Run-time error '" + number + "':\r\n\r\n" + chain);
        else
            EXPECT_TRUE(run.boxes[0].text.starts_with(GetParam().told)) << run.boxes[0].text;
        EXPECT_EQ(std::count(run.log.begin(), run.log.end(),
                             "[9]: Run-time error '" + number + "':  " + chain),
                  1);
        EXPECT_EQ(std::count(run.log.begin(), run.log.end(), opened), 0);
    }
}

const std::string noList = "13|GetActiveWindowsList returned no readable list.";

INSTANTIATE_TEST_SUITE_P(
    Faults, UnreadableListTest,
    testing::Values(
        UnreadableList{"AccessDenied", "access-denied",
                       "GoldMine may be running but you are not logged in.",
                       "70|Permission denied"},
        UnreadableList{"Empty", "reply ", "", noList},
        UnreadableList{"BrokenXml", "reply <GMAPI call=\"GetActiveWindowsList\"><data", "", noList},
        UnreadableList{"Refused", "status 0 No", "", noList},
        UnreadableList{"AnotherCommands",
                       "reply <GMAPI call=\"Macro\"><status code=\"1\">ANN</status></GMAPI>", "",
                       noList},
        UnreadableList{"ControlCharacter",
                       "reply <GMAPI call=\"GetActiveWindowsList\"><status "
                       "code=\"1\">Success</status><data name=\"WindowsList\"><data "
                       "name=\"window\">\x01</data></data></GMAPI>",
                       "", noList}),
    NameOf);

}  // namespace
}  // namespace end_to_end
