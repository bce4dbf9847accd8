#include "calls/CallHistory.h"

#include "calls/RecordingLinkState.h"
#include "GoldMineFixture.h"

namespace corvane::test {
namespace {

const std::wstring insertIncoming =
    L"<GMAPI call=\"InsHist\"><data name=\"AccNo\">A&amp;1</data><data name=\"Activity\"></data>"
    L"<data name=\"Duration\"></data><data name=\"OpRecID\"></data>"
    L"<data name=\"RecType\">CI</data><data name=\"Ref\">Ended &lt;call&gt;</data>"
    L"<data name=\"ResultCode\"></data><data name=\"Notes\"></data><data name=\"User\">ANN</data>"
    L"<data name=\"Private\"></data></GMAPI>";
const std::wstring insertOutgoing =
    L"<GMAPI call=\"InsHist\"><data name=\"AccNo\">A&amp;1</data><data name=\"Activity\"></data>"
    L"<data name=\"Duration\"></data><data name=\"OpRecID\"></data>"
    L"<data name=\"RecType\">CO</data><data name=\"Ref\">Ended &lt;call&gt;</data>"
    L"<data name=\"ResultCode\"></data><data name=\"Notes\"></data><data name=\"User\">ANN</data>"
    L"<data name=\"Private\"></data></GMAPI>";

const std::wstring open = L"<GMAPI call=\"Open\"><data name=\"Filename\">CONTHIST</data></GMAPI>";
const std::wstring move =
    L"<GMAPI call=\"Move\"><data name=\"Area\">3</data><data name=\"Command\">GOTO</data>"
    L"<data name=\"Parameter\">HR1</data></GMAPI>";
const std::wstring unlock = L"<GMAPI call=\"Unlock\"><data name=\"Area\">3</data></GMAPI>";
const std::wstring closeCommand = L"<GMAPI call=\"Close\"><data name=\"Area\">3</data></GMAPI>";

std::wstring ReplaceCommand(const std::wstring& text, const std::wstring& append) {
    return L"<GMAPI call=\"Replace\"><data name=\"Area\">3</data><data name=\"Field\">Notes</data>"
           L"<data name=\"NewValue\">" +
           text + L"</data><data name=\"Append\">" + append + L"</data></GMAPI>";
}

std::wstring PopCommand(const std::wstring& identifier) {
    return L"<GMAPI call=\"PopCalHistItem\"><data name=\"recID\">" + identifier +
           L"</data></GMAPI>";
}

class CallHistoryTest : public GoldMineFixture {
protected:
    CallHistoryTest() {
        form.txtCallType.setText(L"I");
        form.GoldMineUserName = L"ANN";
        AnswerMacro(L"Contact1-&gt;AccountNo", L"A&amp;1");
        goldMine.answers[insertIncoming] = Reply(L"InsHist", L"1", L"HR1");
        goldMine.answers[insertOutgoing] = Reply(L"InsHist", L"1", L"HR1");
        goldMine.answers[open] = Reply(L"Open", L"1", L"3");
        goldMine.answers[move] = Reply(L"Move", L"1", L"1");
        goldMine.answers[unlock] = Reply(L"Unlock", L"1", L"1");
        goldMine.answers[closeCommand] = Reply(L"Close", L"1", L"1");
        link.RecordingPathOrReason = L"C:\\Rec\\a.wav";
        link.LinkHTML = L"<A>";
        link.LinkDocumentHTML = L"<HTML>";
    }
    void Save() { history.SaveHistory(L"Ended <call>", L"end", link); }

    RecordingLinkState link;
    CallHistory history{form, gmui, macro, records, status, boxes};
};

struct Direction {
    std::wstring callType;
    std::wstring command;
    std::wstring line;
};

class InsertTest : public CallHistoryTest, public testing::WithParamInterface<Direction> {};

TEST_P(InsertTest, TheItemIsInsertedForTheContactOfTheOpenRecord) {
    form.txtCallType.setText(GetParam().callType);
    Save();
    EXPECT_EQ(goldMine.commands,
              (Lines{MacroCommand(L"Contact1-&gt;AccountNo"), GetParam().command}));
    EXPECT_EQ(status.lines, Lines{GetParam().line});
}

INSTANTIATE_TEST_SUITE_P(
    CallTypes, InsertTest,
    testing::Values(Direction{L"I", insertIncoming, L"Created incoming call history."},
                    Direction{L"O", insertOutgoing, L"Created outgoing call history."}));

struct FailureText {
    bool createLink;
    std::wstring stage;
    std::wstring text;
};

class SaveFailureTest : public CallHistoryTest, public testing::WithParamInterface<FailureText> {};

TEST_P(SaveFailureTest, WithoutAnAccountNumberNothingIsInserted) {
    FailMacro(L"Contact1-&gt;AccountNo");
    form.chkCreateLink.setChecked(GetParam().createLink);
    form.chkAutoOpenHistory.setChecked(true);

    history.SaveHistory(L"Ended <call>", GetParam().stage, link);

    const std::wstring noAccount =
        L"Could not retrieve GoldMine AccountNo for current record, so no history created.";
    EXPECT_EQ(boxes.Take(), (ShownBoxes{Notice(noAccount), Notice(GetParam().text)}));
    EXPECT_EQ(status.lines, (Lines{noAccount, GetParam().text}));
    EXPECT_EQ(goldMine.commands, Lines{MacroCommand(L"Contact1-&gt;AccountNo")});

    // An account number that is empty is none.
    AnswerMacro(L"Contact1-&gt;AccountNo", L"");
    status.lines.clear();
    history.SaveHistory(L"Ended <call>", GetParam().stage, link);
    EXPECT_EQ(boxes.Take(), (ShownBoxes{Notice(noAccount), Notice(GetParam().text)}));
    EXPECT_EQ(status.lines, (Lines{noAccount, GetParam().text}));
    EXPECT_EQ(goldMine.commands, Lines(2, MacroCommand(L"Contact1-&gt;AccountNo")));
}

TEST_P(SaveFailureTest, AFailedInsertionIsReported) {
    goldMine.answers[insertIncoming] = Reply(L"InsHist", L"0", L"HR1");
    form.chkCreateLink.setChecked(GetParam().createLink);
    form.chkAutoOpenHistory.setChecked(true);

    history.SaveHistory(L"Ended <call>", GetParam().stage, link);

    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(GetParam().text)});
    EXPECT_EQ(status.lines, (Lines{L"Could not insert call history.", GetParam().text}));
    EXPECT_EQ(goldMine.commands.back(), insertIncoming);
}

TEST_P(SaveFailureTest, AnIdentifierOfZeroIsAFailedInsertion) {
    goldMine.answers[insertIncoming] = Reply(L"InsHist", L"1", L"0");
    form.chkCreateLink.setChecked(GetParam().createLink);
    history.SaveHistory(L"Ended <call>", GetParam().stage, link);
    EXPECT_EQ(boxes.Take(), ShownBoxes{Notice(GetParam().text)});
    EXPECT_EQ(status.lines, (Lines{L"Could not insert call history.", GetParam().text}));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SaveFailureTest,
    testing::Values(
        FailureText{false, L"start", L"Failed to create history at start of call"},
        FailureText{false, L"connection", L"Failed to create history at connection of call"},
        FailureText{true, L"end", L"Failed to create history with link at end of call"},
        FailureText{true, L"start", L"Failed to create history with link at start of call"}));

class NotesTest : public CallHistoryTest {
protected:
    NotesTest() { form.chkCreateLink.setChecked(true); }
    // Accepts every Replace and keeps the pieces.
    void CollectPieces() {
        goldMine.answerAll = [this](const std::wstring& command) {
            const std::wstring begin =
                L"<GMAPI call=\"Replace\"><data name=\"Area\">3</data>"
                L"<data name=\"Field\">Notes</data><data name=\"NewValue\">";
            if (!command.starts_with(begin))
                return goldMine.answers.at(command);
            const std::wstring firstEnd = L"</data><data name=\"Append\">0</data></GMAPI>";
            const std::wstring laterEnd = L"</data><data name=\"Append\">1</data></GMAPI>";
            EXPECT_TRUE(command.ends_with(pieces.empty() ? firstEnd : laterEnd));
            pieces.push_back(
                command.substr(begin.size(), command.size() - begin.size() - firstEnd.size()));
            return Reply(L"Replace", L"1", L"1");
        };
    }
    Lines pieces;
};

TEST_F(NotesTest, TheRecordsNotesAreReplacedByTheLink) {
    goldMine.answers[ReplaceCommand(L"C:\\Rec\\a.wav", L"0")] = Reply(L"Replace", L"1", L"1");
    Save();
    EXPECT_EQ(goldMine.commands,
              (Lines{MacroCommand(L"Contact1-&gt;AccountNo"), insertIncoming, open, move,
                     ReplaceCommand(L"C:\\Rec\\a.wav", L"0"), unlock, closeCommand}));
    EXPECT_EQ(status.lines,
              (Lines{L"Created incoming call history.", L"Updated history Notes with link."}));
}

TEST_F(NotesTest, HtmlNotesReceiveTheWholeDocument) {
    form.NotesAreHTML = true;
    goldMine.answers[ReplaceCommand(L"&lt;HTML&gt;", L"0")] = Reply(L"Replace", L"1", L"1");
    Save();
    EXPECT_EQ(status.lines,
              (Lines{L"Created incoming call history.", L"Updated history Notes with link."}));
}

TEST_F(NotesTest, NothingIsWrittenUnlessALinkIsWanted) {
    form.chkCreateLink.setChecked(false);
    Save();
    EXPECT_EQ(goldMine.commands.back(), insertIncoming);
    EXPECT_EQ(status.lines, Lines{L"Created incoming call history."});
}

TEST_F(NotesTest, TheReasonForAMissingLinkIsNotWritten) {
    link = {};
    link.RecordingPathOrReason = L"No files found";
    Save();
    EXPECT_EQ(goldMine.commands.back(), insertIncoming);
    EXPECT_EQ(status.lines, Lines{L"Created incoming call history."});
}

struct NotesLength {
    std::size_t length;
    std::vector<std::size_t> pieces;
};

class NotesPiecesTest : public NotesTest, public testing::WithParamInterface<NotesLength> {};

TEST_P(NotesPiecesTest, NotesAreWrittenInPiecesOf200Characters) {
    std::wstring notes;
    for (std::size_t at = 0; at < GetParam().length; ++at)
        notes += static_cast<wchar_t>(L'a' + at % 23);
    link.RecordingPathOrReason = notes;
    CollectPieces();

    Save();

    std::vector<std::size_t> lengths;
    std::wstring whole;
    for (const std::wstring& piece : pieces) {
        lengths.push_back(piece.size());
        whole += piece;
    }
    EXPECT_EQ(lengths, GetParam().pieces);
    EXPECT_EQ(whole, notes);
    EXPECT_EQ(status.lines.back(), L"Updated history Notes with link.");
}

std::vector<std::size_t> Times(std::size_t count, std::size_t length) {
    return std::vector<std::size_t>(count, length);
}

INSTANTIATE_TEST_SUITE_P(Lengths, NotesPiecesTest,
                         testing::Values(NotesLength{0, {0}}, NotesLength{1, {1}},
                                         NotesLength{199, {199}}, NotesLength{200, {200}},
                                         NotesLength{201, {200, 1}}, NotesLength{400, {200, 200}},
                                         NotesLength{401, {200, 200, 1}},
                                         NotesLength{70000, Times(350, 200)}));

TEST_F(NotesTest, PiecesAreCutBeforeTheyAreEscaped) {
    link.RecordingPathOrReason = std::wstring(199, L'x') + L"&<";
    CollectPieces();
    Save();
    EXPECT_EQ(pieces, (Lines{std::wstring(199, L'x') + L"&amp;", L"&lt;"}));
}

// The border of two pieces may lie within a line end or a character.
TEST_F(NotesTest, PiecesJoinToTheNotesWhateverStandsAtTheirBorder) {
    const std::wstring ends[] = {L"\r\n", L"\n", std::wstring{wchar_t{0xD83D}, wchar_t{0xDE00}}};
    for (const std::wstring& end : ends) {
        for (const std::size_t before : {198U, 199U, 200U}) {
            const std::wstring notes = std::wstring(before, L'x') + end + std::wstring(250, L'y');
            link.RecordingPathOrReason = notes;
            pieces.clear();
            CollectPieces();

            Save();

            ASSERT_EQ(pieces.size(), 3U);
            EXPECT_EQ(pieces[0], notes.substr(0, 200));
            EXPECT_EQ(pieces[0] + pieces[1] + pieces[2], notes);
        }
    }
}

struct FailingStep {
    std::wstring command;
    std::wstring reply;
    std::wstring lastCommand;
};

class NotesFailureTest : public NotesTest, public testing::WithParamInterface<FailingStep> {};

TEST_P(NotesFailureTest, StopsThereAndLeavesTheItem) {
    link.RecordingPathOrReason = std::wstring(200, L'x') + L"y";
    goldMine.answers[ReplaceCommand(std::wstring(200, L'x'), L"0")] = Reply(L"Replace", L"1", L"1");
    goldMine.answers[ReplaceCommand(L"y", L"1")] = Reply(L"Replace", L"1", L"1");
    goldMine.answers[GetParam().command] = GetParam().reply;

    Save();

    EXPECT_EQ(goldMine.commands.back(), GetParam().lastCommand);
    EXPECT_EQ(status.lines, (Lines{L"Created incoming call history.",
                                   L"Could not update history Notes with link."}));
}

const std::wstring firstPiece = ReplaceCommand(std::wstring(200, L'x'), L"0");
const std::wstring secondPiece = ReplaceCommand(L"y", L"1");

INSTANTIATE_TEST_SUITE_P(
    Steps, NotesFailureTest,
    testing::Values(FailingStep{open, Reply(L"Open", L"0", L"3"), open},
                    FailingStep{open, Reply(L"Open", L"1", L"0"), open},
                    FailingStep{move, Reply(L"Move", L"0", L"1"), move},
                    FailingStep{move, Reply(L"Move", L"1", L"0"), move},
                    FailingStep{move, Reply(L"Move", L"1", L"2"), move},
                    FailingStep{firstPiece, Reply(L"Replace", L"0", L""), firstPiece},
                    FailingStep{secondPiece, Reply(L"Replace", L"0", L""), secondPiece},
                    FailingStep{unlock, Reply(L"Unlock", L"0", L""), closeCommand},
                    FailingStep{closeCommand, Reply(L"Close", L"0", L""), closeCommand}));

class OpenItemTest : public CallHistoryTest {
protected:
    OpenItemTest() { form.chkAutoOpenHistory.setChecked(true); }
    void InsertAs(const std::wstring& identifier) {
        goldMine.answers[insertIncoming] = Reply(L"InsHist", L"1", identifier);
    }
    void AnswerPop(const std::wstring& identifier) {
        goldMine.answers[PopCommand(identifier)] =
            L"<GMAPI call=\"PopCalHistItem\"><status code=\"1\">Success</status></GMAPI>";
    }
};

TEST_F(OpenItemTest, TheNewItemIsOpened) {
    AnswerPop(L"HR1");
    Save();
    EXPECT_EQ(goldMine.commands.back(), PopCommand(L"HR1"));
    EXPECT_EQ(status.lines,
              (Lines{L"Created incoming call history.", L"Opening history item window.",
                     L"Opened history item window."}));
}

TEST_F(OpenItemTest, TheFirstLineIsWrittenBeforeTheItemIsOpened) {
    AnswerPop(L"HR1");
    Lines before;
    goldMine.onSend = [&](const std::wstring& command) {
        if (command == PopCommand(L"HR1"))
            before = status.lines;
    };
    Save();
    EXPECT_EQ(before, (Lines{L"Created incoming call history.", L"Opening history item window."}));
}

TEST_F(OpenItemTest, TheItemIsOpenedAfterItsNotesWereWrittenEvenWhenThatFailed) {
    form.chkCreateLink.setChecked(true);
    goldMine.answers[open] = Reply(L"Open", L"0", L"");
    AnswerPop(L"HR1");
    Save();
    EXPECT_EQ(
        status.lines,
        (Lines{L"Created incoming call history.", L"Could not update history Notes with link.",
               L"Opening history item window.", L"Opened history item window."}));
}

TEST_F(OpenItemTest, TheIdentifierIsEscaped) {
    InsertAs(L"H&amp;R");
    AnswerPop(L"H&amp;R");
    Save();
    EXPECT_EQ(status.lines.back(), L"Opened history item window.");
}

class NumericIdentifierTest : public OpenItemTest,
                              public testing::WithParamInterface<std::wstring> {};

TEST_P(NumericIdentifierTest, IsReplacedByThatOfTheCurrentHistoryRecord) {
    InsertAs(GetParam());
    AnswerMacro(L"ContHist-&gt;RecID", L"REC9");
    AnswerPop(L"REC9");
    Save();
    EXPECT_EQ(Lines(goldMine.commands.end() - 2, goldMine.commands.end()),
              (Lines{MacroCommand(L"ContHist-&gt;RecID"), PopCommand(L"REC9")}));
    EXPECT_EQ(status.lines.back(), L"Opened history item window.");
}

TEST_P(NumericIdentifierTest, TheItemIsNotOpenedWhenThatFails) {
    InsertAs(GetParam());
    FailMacro(L"ContHist-&gt;RecID");
    Save();
    EXPECT_EQ(goldMine.commands.back(), MacroCommand(L"ContHist-&gt;RecID"));
    EXPECT_EQ(status.lines,
              (Lines{L"Created incoming call history.", L"Opening history item window.",
                     L"Could not open history item window."}));
}

INSTANTIATE_TEST_SUITE_P(Identifiers, NumericIdentifierTest,
                         testing::Values(L"1", L"12345", L"-3", L"1.5", L"1E3"));

class PopReplyTest : public OpenItemTest, public testing::WithParamInterface<std::wstring> {};

TEST_P(PopReplyTest, OnlyTheExactReplyIsASuccess) {
    goldMine.answers[PopCommand(L"HR1")] = GetParam();
    Save();
    EXPECT_EQ(status.lines.back(), L"Could not open history item window.");
}

INSTANTIATE_TEST_SUITE_P(
    Replies, PopReplyTest,
    testing::Values(L"", L"False", L"<GMAPI call=\"PopCalHistItem\"><status code=\"1\">",
                    L"<GMAPI call=\"PopCalHistItem\"><status code=\"0\">Success</status></GMAPI>",
                    L"<GMAPI call=\"PopCalHistItem\"><status code=\"1\">Done</status></GMAPI>"));

TEST_F(CallHistoryTest, TheItemIsNotOpenedUnlessConfigured) {
    form.chkAutoOpenHistory.setChecked(false);
    Save();
    EXPECT_EQ(status.lines, Lines{L"Created incoming call history."});
}

}  // namespace
}  // namespace corvane::test
