#include "calls/HtmlNotes.h"

#include <algorithm>

#include "calls/RecordingLinkState.h"
#include "fakes/FakeHtmlDocument.h"
#include "gmapi/Envelope.h"
#include "GoldMineFixture.h"
#include "util/BuiltInHtmlDocument.h"

namespace corvane::test {
namespace {

std::wstring SetCommand(const std::wstring& id, const std::wstring& text) {
    return L"<GMAPI call=\"SetControlText\"><data name=\"hWndParent\">4711</data><data "
           L"name=\"ID\">" +
           id + L"</data><data name=\"Text\">" + text + L"</data></GMAPI>";
}

// Complete Call dialog 4711 with what stands in its Ref (1016) and Notes (1017).
class HtmlNotesTest : public GoldMineFixture {
protected:
    HtmlNotesTest() {
        link.RecordingPathOrReason = L"C:\\Rec\\a&b.wav";
        link.LinkHTML = L"<A>link</A>";
        goldMine.answerAll = [this](const std::wstring& command) {
            if (command == L"<GMAPI call=\"GetActiveWindowsList\"/>")
                return WindowsList();
            EXPECT_TRUE(command.starts_with(L"<GMAPI call=\"SetControlText\">"));
            written.push_back(command);
            return Reply(L"GMUI_SetControlText", writable ? L"1" : L"0", L"Success");
        };
    }
    [[nodiscard]] std::wstring WindowsList() const {
        return L"<GMAPI call=\"GetActiveWindowsList\"><status code=\"1\">Success</status>"
               L"<data name=\"WindowsList\"><data name=\"window\"><data name=\"hWnd\">4711</data>"
               L"<data name=\"Controls\">"
               L"<data name=\"C\"><data name=\"ID\">1016</data><data name=\"Text\">" +
               ref +
               L"</data></data>"
               L"<data name=\"C\"><data name=\"ID\">1017</data><data name=\"Text\">" +
               oldNotes + L"</data></data></data></data></data></GMAPI>";
    }
    void FillIn(const std::wstring& refText) {
        notes.AddRefAndNotesToOpenCallDialog(4711, refText, link);
    }
    std::unique_ptr<HtmlDocument> NewDocument() {
        if (builtIn)
            return std::make_unique<BuiltInHtmlDocument>();
        return std::make_unique<FakeHtmlDocument>(html);
    }

    std::wstring ref;       // as it stands in the reply
    std::wstring oldNotes;  // as it stands in the reply
    Lines written;
    bool writable = true;
    HtmlScript html;
    bool builtIn = false;
    RecordingLinkState link;
    HtmlNotes notes{form,           windows, status, clock, [this] { return NewDocument(); },
                    L"CorvaneTo3CX"};
};

struct Plain {
    std::wstring refText;
    std::wstring addition;
    std::wstring refInDialog;
    std::wstring notesInDialog;
    Lines written;
};

class PlainNotesTest : public HtmlNotesTest, public testing::WithParamInterface<Plain> {};

TEST_P(PlainNotesTest, TheAdditionStandsBeforeTheOldNotes) {
    link.RecordingPathOrReason = GetParam().addition;
    ref = GetParam().refInDialog;
    oldNotes = GetParam().notesInDialog;
    FillIn(GetParam().refText);
    EXPECT_EQ(written, GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(
    Dialogs, PlainNotesTest,
    testing::Values(
        // Nothing to fill in: neither field is touched.
        Plain{L"", L"", L"x", L"y", {}}, Plain{L"", L"", L"", L"", {}},
        // A free Ref field takes the Ref text, as it is.
        Plain{L"call & co", L"", L"", L"", {SetCommand(L"1016", L"call & co")}},
        Plain{L"call", L"", L"   ", L"old", {SetCommand(L"1016", L"call")}},
        Plain{L"call",
              L"C:\\a&b.wav",
              L"",
              L"",
              {SetCommand(L"1016", L"call"), SetCommand(L"1017", L"C:\\a&amp;b.wav")}},
        // A Ref field that is filled keeps its text, and the Ref text moves into the notes.
        Plain{L"call", L"", L"x", L"", {SetCommand(L"1017", L"call")}},
        Plain{L"call", L"a.wav", L"x", L"", {SetCommand(L"1017", L"call\r\na.wav")}},
        Plain{L"call", L"a.wav", L"x", L"old", {SetCommand(L"1017", L"call\r\na.wav\r\n\r\nold")}},
        // Only ordinary blanks count as nothing.
        Plain{L"call", L"", L"&#160;", L"", {SetCommand(L"1017", L"call")}},
        Plain{L"",
              L"a.wav",
              L"x",
              L"Called back",
              {SetCommand(L"1017", L"a.wav\r\n\r\nCalled back")}},
        Plain{L"", L"a.wav", L"x", L"  ", {SetCommand(L"1017", L"a.wav  ")}},
        Plain{L"", L"a.wav", L"", L"&#160;", {SetCommand(L"1017", L"a.wav\r\n\r\n\x00A0")}},
        Plain{L"", L"a.wav", L"", L"a &amp;lt; b", {SetCommand(L"1017", L"a.wav\r\n\r\na &lt; b")}},
        // The reason for a missing link is inserted like a path.
        Plain{L"",
              L"No files found \"x\".",
              L"",
              L"",
              {SetCommand(L"1017", L"No files found &quot;x&quot;.")}}));

TEST_F(HtmlNotesTest, AFieldThatCannotBeWrittenIsTold) {
    writable = false;
    FillIn(L"call");
    EXPECT_EQ(written,
              (Lines{SetCommand(L"1016", L"call"), SetCommand(L"1017", L"C:\\Rec\\a&amp;b.wav")}));
    EXPECT_EQ(status.lines, (Lines{L"Could not fill in Ref of Complete Call dialog.",
                                   L"Could not fill in Notes of Complete Call dialog."}));
}

TEST_F(HtmlNotesTest, FieldsThatAreWrittenNeedNoLine) {
    FillIn(L"call");
    ExpectNoLines();
}

// Five megabytes: what the dialog held comes back unchanged behind the link.
TEST_F(HtmlNotesTest, NotesOfAnyLengthAreKept) {
    const std::wstring piece = L"<p>Called back, left a message; asked for 5 catalogues.</p>";
    std::wstring text;
    while (text.size() < 5 * 1024 * 1024)
        text += piece;
    oldNotes = Escape(text);
    for (const bool asHtml : {false, true}) {
        written.clear();
        form.NotesAreHTML = asHtml;
        builtIn = asHtml;
        FillIn(L"");
        const std::wstring expected =
            asHtml ? L"<HTML><HEAD></HEAD>\r\n<BODY><P><FONT size=2 face='Segoe UI,Tahoma'>"
                     L"<A>link</A></FONT></P><br>" +
                         text + L"</BODY></HTML>"
                   : L"C:\\Rec\\a&b.wav\r\n\r\n" + text;
        ASSERT_EQ(written.size(), 1U);
        EXPECT_TRUE(written[0] == SetCommand(L"1017", Escape(expected))) << asHtml;
    }
}

TEST_F(HtmlNotesTest, TheHandleIsWrittenAsADecimalNumber) {
    goldMine.answerAll = nullptr;
    goldMine.answers[L"<GMAPI call=\"GetActiveWindowsList\"/>"] = L"<GMAPI/>";
    const std::wstring setRef =
        L"<GMAPI call=\"SetControlText\"><data name=\"hWndParent\">-12</data>"
        L"<data name=\"ID\">1016</data><data name=\"Text\">call</data></GMAPI>";
    goldMine.answers[setRef] = L"";
    link = {};
    notes.AddRefAndNotesToOpenCallDialog(-12, L"call", link);
    EXPECT_EQ(goldMine.commands.back(), setRef);
}

class HtmlModeTest : public HtmlNotesTest {
protected:
    HtmlModeTest() {
        form.NotesAreHTML = true;
        html.serialised = L"<new>";
    }
};

TEST_F(HtmlModeTest, EmptyNotesReceiveTheLinkWithoutALineBreak) {
    FillIn(L"");
    EXPECT_EQ(html.calls, (Lines{L"text of []",
                                 L"insert [<P><FONT size=2 face='Segoe UI,Tahoma'><A>link</A>"
                                 L"</FONT></P>] before []",
                                 L"serialise"}));
    EXPECT_EQ(written, Lines{SetCommand(L"1017", L"&lt;new&gt;")});
}

TEST_F(HtmlModeTest, OldNotesAreSetOffByALineBreak) {
    oldNotes = L"&lt;B&gt;Called back&lt;/B&gt;";
    html.visibleText = L"Called back";
    FillIn(L"");
    EXPECT_EQ(html.calls, (Lines{L"text of [<B>Called back</B>]",
                                 L"insert [<P><FONT size=2 face='Segoe UI,Tahoma'><A>link</A>"
                                 L"</FONT></P><br>] before [<B>Called back</B>]",
                                 L"serialise"}));
}

struct VisibleText {
    std::wstring text;
    bool lineBreak;
};

class VisibleTextTest : public HtmlModeTest, public testing::WithParamInterface<VisibleText> {};

TEST_P(VisibleTextTest, OnlyOrdinaryBlanksCountAsNoText) {
    html.visibleText = GetParam().text;
    FillIn(L"");
    EXPECT_EQ(html.calls[1].find(L"</P><br>]") != std::wstring::npos, GetParam().lineBreak);
}

INSTANTIATE_TEST_SUITE_P(Texts, VisibleTextTest,
                         testing::Values(VisibleText{L"", false}, VisibleText{L"   ", false},
                                         VisibleText{L"\x00A0", true}, VisibleText{L"\t", true},
                                         VisibleText{L" x ", true}));

TEST_F(HtmlModeTest, ARefTextThatFindsTheFieldFilledMovesBeforeTheLink) {
    ref = L"x";
    FillIn(L"incoming call from 555");
    EXPECT_EQ(html.calls[1],
              L"insert [<P><FONT size=2 face='Segoe UI,Tahoma'>incoming call from 555<br><A>link"
              L"</A></FONT></P>] before []");
    EXPECT_EQ(written, Lines{SetCommand(L"1017", L"&lt;new&gt;")});
}

TEST_F(HtmlModeTest, ARefTextWithoutALinkMovesAlone) {
    ref = L"x";
    link.LinkHTML.clear();
    FillIn(L"incoming call from 555");
    EXPECT_EQ(html.calls[1],
              L"insert [<P><FONT size=2 face='Segoe UI,Tahoma'>incoming call from 555</FONT></P>] "
              L"before []");
}

TEST_F(HtmlModeTest, TheReasonForAMissingLinkIsNotInserted) {
    link.LinkHTML.clear();
    FillIn(L"");
    EXPECT_EQ(goldMine.commands, Lines{});
    EXPECT_EQ(html.calls, Lines{});
}

TEST_F(HtmlModeTest, TheNewFragmentBeginsTheBody) {
    builtIn = true;
    oldNotes = L"&lt;html&gt;&lt;body&gt;old&lt;/body&gt;&lt;/html&gt;";
    FillIn(L"");
    EXPECT_EQ(written,
              Lines{SetCommand(L"1017",
                               L"&lt;html&gt;&lt;body&gt;&lt;P&gt;&lt;FONT size=2 "
                               L"face=&apos;Segoe UI,Tahoma&apos;&gt;&lt;A&gt;link&lt;/A&gt;"
                               L"&lt;/FONT&gt;&lt;/P&gt;&lt;br&gt;old&lt;/body&gt;&lt;/html&gt;")});
}

struct Waiting {
    int pollsUntilComplete;
    std::size_t waits;
};

class WaitingTest : public HtmlNotesTest, public testing::WithParamInterface<Waiting> {};

TEST_P(WaitingTest, ADocumentIsWaitedForSecondBySecond) {
    html.serialised = L"<done>";
    html.pollsUntilComplete = GetParam().pollsUntilComplete;
    EXPECT_EQ(notes.PrependHTMLToBody(L"old", L"new"), L"<done>");
    EXPECT_EQ(clock.sleeps, std::vector<std::uint32_t>(GetParam().waits, 1000));
    EXPECT_EQ(clock.pumps, static_cast<int>(GetParam().waits));
    ExpectNoLines();
}

INSTANTIATE_TEST_SUITE_P(Documents, WaitingTest,
                         testing::Values(Waiting{0, 0}, Waiting{1, 1}, Waiting{10, 10}));

const std::wstring timeOut =
    L"Timed out after 10 seconds trying to insert HTML string before existing HTML Body.";

// A document that completes with the eleventh wait is too late as well.
class TimeOutTest : public HtmlModeTest, public testing::WithParamInterface<int> {
protected:
    TimeOutTest() { html.pollsUntilComplete = GetParam(); }
    void ExpectTimeOut(const RuntimeError& error, const std::wstring& description) {
        EXPECT_EQ(error.number, 2147746306);
        EXPECT_EQ(error.source, L"CorvaneTo3CX.frmCorvaneTo3CX.PrependHTMLToBody");
        EXPECT_EQ(error.description, description);
        EXPECT_EQ(clock.sleeps, std::vector<std::uint32_t>(11, 1000));
        EXPECT_EQ(clock.pumps, 11);
        EXPECT_EQ(status.lines, Lines{timeOut});
        EXPECT_EQ(std::count(html.calls.begin(), html.calls.end(), L"serialise"), 0);
    }
};

TEST_P(TimeOutTest, IsAnErrorAfterElevenWaits) {
    ExpectTimeOut(ErrorOf([&] { static_cast<void>(notes.PrependHTMLToBody(L"old", L"new")); }),
                  L"PrependHTMLToBody: Timed out after 10 seconds trying to insert HTML string "
                  L"before existing HTML Body.");
}

TEST_P(TimeOutTest, LeavesTheNotesAndKeepsTheRefTextWritten) {
    ExpectTimeOut(ErrorOf([&] { FillIn(L"call"); }),
                  L"AddRefAndNotesToOpenCallDialog: PrependHTMLToBody: Timed out after 10 seconds "
                  L"trying to insert HTML string before existing HTML Body.");
    EXPECT_EQ(written, Lines{SetCommand(L"1016", L"call")});
}

INSTANTIATE_TEST_SUITE_P(Documents, TimeOutTest, testing::Values(-1, 11, 12));

TEST_F(HtmlNotesTest, AnErrorOfGoldMineCarriesTheProcedureBeforeItsDescription) {
    goldMine.sendError = CompleteError(-2147352567);
    const RuntimeError error = ErrorOf([&] { FillIn(L"call"); });
    EXPECT_EQ(error.number, -2147352567);
    EXPECT_EQ(error.source, L"GMUI_GetControlText: GMUI_Execute: GoldMine.UI");
    EXPECT_EQ(error.description, L"AddRefAndNotesToOpenCallDialog: something broke");
    EXPECT_EQ(error.helpFile, L"gm.hlp");
    EXPECT_EQ(error.helpContext, 1234);
}

TEST_F(HtmlNotesTest, AnErrorOfTheHtmlEngineCarriesTheProcedureBeforeItsDescription) {
    HtmlNotes broken(
        form, windows, status, clock,
        []() -> std::unique_ptr<HtmlDocument> { throw CompleteError(429); }, L"CorvaneTo3CX");
    const RuntimeError error =
        ErrorOf([&] { static_cast<void>(broken.PrependHTMLToBody(L"old", L"new")); });
    EXPECT_EQ(error.number, 429);
    EXPECT_EQ(error.source, L"GoldMine.UI");
    EXPECT_EQ(error.description, L"PrependHTMLToBody: something broke");
    EXPECT_EQ(error.helpContext, 1234);
}

TEST_F(HtmlModeTest, AnErrorWhileTheOldNotesAreReadCarriesTheProcedureOfTheDialogAlone) {
    HtmlNotes broken(
        form, windows, status, clock,
        []() -> std::unique_ptr<HtmlDocument> { throw CompleteError(429); }, L"CorvaneTo3CX");
    const RuntimeError error =
        ErrorOf([&] { broken.AddRefAndNotesToOpenCallDialog(4711, L"", link); });
    EXPECT_EQ(error.number, 429);
    EXPECT_EQ(error.source, L"GoldMine.UI");
    EXPECT_EQ(error.description, L"AddRefAndNotesToOpenCallDialog: something broke");
    EXPECT_EQ(written, Lines{});
}

TEST_F(HtmlNotesTest, TheVisibleTextIsTheEngines) {
    html.visibleText = L"seen";
    EXPECT_EQ(notes.HTMLToText(L"<b>seen</b>"), L"seen");
    EXPECT_EQ(html.calls, Lines{L"text of [<b>seen</b>]"});
}

}  // namespace
}  // namespace corvane::test
