#include "calls/CompleteCallDialog.h"

#include <memory>
#include <optional>
#include <tuple>

#include "calls/HtmlNotes.h"
#include "DialogWatch.h"
#include "fakes/FakeFormView.h"
#include "fakes/FakeHtmlDocument.h"
#include "gmapi/Envelope.h"
#include "GoldMineFixture.h"
#include "util/BuiltInHtmlDocument.h"
#include "util/ErrorReport.h"

namespace corvane::test {
namespace {

const std::wstring executed =
    L"<GMAPI call=\"MenuCommand\"><status code=\"1\">The command was executed.</status></GMAPI>";
const std::wstring dialogOpened =
    L"Finished opening Complete Call dialog before saving in history.";

std::wstring SetCommand(const std::wstring& id, const std::wstring& text) {
    return L"<GMAPI call=\"SetControlText\"><data name=\"hWndParent\">4711</data><data "
           L"name=\"ID\">" +
           id + L"</data><data name=\"Text\">" + text + L"</data></GMAPI>";
}

class CompleteCallDialogTest : public GoldMineFixture {
protected:
    CompleteCallDialogTest() {
        goldMine.answers[watchDialog] = dialogWatched;
        goldMine.answers[unwatchDialog] = dialogWatched;
        form.txtCallType.setText(L"I");
    }
    void RaiseEvent(std::int32_t windowHandle) {
        dialog.moGMUI_WindowUpDown(L"DIALOGSCHEDULECOMPLETE", true, windowHandle);
    }
    // GoldMine was asked for the report; shutdown waits for a dialog that is awaited, and for no
    // other.
    void ExpectAwaited(bool awaited) {
        clock.sleeps.clear();
        EXPECT_TRUE(dialog.WaitUntilFilledIn());
        EXPECT_EQ(clock.sleeps.size(), awaited ? 10U : 0U);
    }
    std::unique_ptr<HtmlDocument> NewDocument() {
        if (engineError)
            throw *engineError;
        if (builtIn)
            return std::make_unique<BuiltInHtmlDocument>();
        return std::make_unique<FakeHtmlDocument>(html);
    }

    HtmlScript html;
    bool builtIn = false;
    std::optional<RuntimeError> engineError;
    ErrorReport errors{status, boxes};
    CallInProgress call{form};
    HtmlNotes notes{status, clock, [this] { return NewDocument(); }, L"CorvaneTo3CX"};
    CompleteCallDialog dialog{{form, gmui, windows, notes, call, status, errors, clock}};
};

struct CompleteCall {
    enum Option { byType, scheduled, unscheduled } option;
    std::wstring callType;
    std::wstring command;
};

class CommandTest : public CompleteCallDialogTest,
                    public testing::WithParamInterface<CompleteCall> {
protected:
    CommandTest() {
        OptionButton* const options[] = {&form.optCompleteCallByType,
                                         &form.optCompleteScheduledCall,
                                         &form.optCompleteUnscheduledCall};
        options[GetParam().option]->setSelected(true);
        form.txtCallType.setText(GetParam().callType);
    }
};

TEST_P(CommandTest, OpensTheDialogConfigured) {
    goldMine.answers[GetParam().command] = executed;

    dialog.OpenCompleteCallDialog(L"", {});

    EXPECT_EQ(goldMine.commands, (Lines{watchDialog, GetParam().command}));
    EXPECT_EQ(status.lines, Lines{L"Opening Complete Call dialog before saving in history."});
    ExpectAwaited(true);
}

INSTANTIATE_TEST_SUITE_P(
    Settings, CommandTest,
    testing::Values(
        CompleteCall{CompleteCall::byType, L"I",
                     L"<GMAPI call=\"MenuCommand\">CompleteUnscheduledIncomingCall</GMAPI>"},
        CompleteCall{CompleteCall::byType, L"O",
                     L"<GMAPI call=\"MenuCommand\">CompleteScheduledCall</GMAPI>"},
        CompleteCall{CompleteCall::scheduled, L"I",
                     L"<GMAPI call=\"MenuCommand\">CompleteScheduledCall</GMAPI>"},
        CompleteCall{CompleteCall::scheduled, L"O",
                     L"<GMAPI call=\"MenuCommand\">CompleteScheduledCall</GMAPI>"},
        CompleteCall{CompleteCall::unscheduled, L"I",
                     L"<GMAPI call=\"MenuCommand\">CompleteUnscheduledIncomingCall</GMAPI>"},
        CompleteCall{CompleteCall::unscheduled, L"O",
                     L"<GMAPI call=\"MenuCommand\">CompleteUnscheduledOutgoingCall</GMAPI>"}));

TEST_F(CompleteCallDialogTest, ARefusedRegistrationIsToldAndTheDialogOpenedAllTheSame) {
    form.optCompleteScheduledCall.setSelected(true);
    const std::wstring command = L"<GMAPI call=\"MenuCommand\">CompleteScheduledCall</GMAPI>";
    goldMine.answers[command] = executed;
    goldMine.answers[watchDialog] =
        L"<GMAPI call=\"RegisterWindowUpDown\"><status code=\"0\">Failure</status></GMAPI>";
    dialog.OpenCompleteCallDialog(L"", {});
    EXPECT_EQ(goldMine.commands, (Lines{watchDialog, command}));
    EXPECT_EQ(status.lines,
              (Lines{L"Could not watch for Complete Call dialog, so its Ref and Notes may stay "
                     L"empty.",
                     L"Opening Complete Call dialog before saving in history."}));
}

// 3CX says I or O; a letter typed by hand may be any other.
TEST_F(CompleteCallDialogTest, ACallOfAnotherTypeOpensTheIncomingDialog) {
    form.optCompleteCallByType.setSelected(true);
    const std::wstring command =
        L"<GMAPI call=\"MenuCommand\">CompleteUnscheduledIncomingCall</GMAPI>";
    goldMine.answers[command] = executed;
    for (const wchar_t* type : {L"", L"X", L"o"}) {
        form.txtCallType.setText(type);
        dialog.OpenCompleteCallDialog(L"", {});
        EXPECT_EQ(goldMine.commands.back(), command);
    }
}

TEST_F(CompleteCallDialogTest, TheLineIsWrittenBetweenTheRegistrationAndTheMenuCommand) {
    form.optCompleteScheduledCall.setSelected(true);
    goldMine.answers[L"<GMAPI call=\"MenuCommand\">CompleteScheduledCall</GMAPI>"] = executed;
    std::vector<std::size_t> linesBefore;
    goldMine.onSend = [&](const std::wstring&) { linesBefore.push_back(status.lines.size()); };
    dialog.OpenCompleteCallDialog(L"", {});
    EXPECT_EQ(linesBefore, (std::vector<std::size_t>{0, 1}));
}

TEST_F(CompleteCallDialogTest, TheDialogMayComeUpBeforeTheMenuCommandIsAnswered) {
    form.optCompleteScheduledCall.setSelected(true);
    const std::wstring command = L"<GMAPI call=\"MenuCommand\">CompleteScheduledCall</GMAPI>";
    goldMine.answers[command] = executed;
    goldMine.onSend = [&](const std::wstring& sent) {
        if (sent == command)
            RaiseEvent(4711);
    };

    dialog.OpenCompleteCallDialog(L"", {});

    EXPECT_EQ(status.lines,
              (Lines{L"Opening Complete Call dialog before saving in history.",
                     L"Finished opening Complete Call dialog before saving in history."}));
    ExpectAwaited(false);
}

class RefusedMenuCommandTest : public CompleteCallDialogTest,
                               public testing::WithParamInterface<std::wstring> {};

TEST_P(RefusedMenuCommandTest, IsReportedAndNothingIsWaitedFor) {
    form.optCompleteScheduledCall.setSelected(true);
    goldMine.answers[L"<GMAPI call=\"MenuCommand\">CompleteScheduledCall</GMAPI>"] = GetParam();
    dialog.OpenCompleteCallDialog(L"", {});
    EXPECT_EQ(status.lines, (Lines{L"Opening Complete Call dialog before saving in history.",
                                   L"Could not open Complete Call dialog."}));
    ExpectAwaited(false);
}

INSTANTIATE_TEST_SUITE_P(
    Replies, RefusedMenuCommandTest,
    testing::Values(
        L"", L"False", L"<GMAPI call=\"MenuCommand\"><status code=\"1\">",
        L"<GMAPI call=\"MenuCommand\"><status code=\"0\">The command was executed.</status>"
        L"</GMAPI>",
        L"<GMAPI call=\"MenuCommand\"><status code=\"1\">The command was executed</status>"
        L"</GMAPI>"));

TEST_F(CompleteCallDialogTest, AMenuCommandThatRaisesIsNotWaitedForEither) {
    form.optCompleteScheduledCall.setSelected(true);
    goldMine.onSend = [&](const std::wstring& sent) {
        if (sent.find(L"MenuCommand") != std::wstring::npos)
            goldMine.sendError = CompleteError(91);
    };
    EXPECT_EQ(ErrorOf([&] { dialog.OpenCompleteCallDialog(L"", {}); }).number, 91);
    ExpectAwaited(false);
}

TEST_F(CompleteCallDialogTest, ARegistrationThatRaisesIsNotWaitedForEither) {
    goldMine.onSend = [&](const std::wstring& sent) {
        if (sent.find(L"RegisterWindowUpDown") != std::wstring::npos)
            goldMine.sendError = CompleteError(91);
    };
    EXPECT_EQ(ErrorOf([&] { dialog.OpenCompleteCallDialog(L"", {}); }).number, 91);
    EXPECT_EQ(status.lines, Lines{});
    ExpectAwaited(false);
}

TEST_F(CompleteCallDialogTest, ADialogThatThereWasNoMemoryForIsNotWaitedFor) {
    goldMine.onSend = [](const std::wstring&) { throw std::bad_alloc(); };
    EXPECT_THROW(dialog.OpenCompleteCallDialog(L"", {}), std::bad_alloc);
    ExpectAwaited(false);
}

// Complete Call dialog 4711 with what stands in its Ref (1016) and Notes (1017).
class FillInTest : public CompleteCallDialogTest {
protected:
    FillInTest() {
        link.RecordingPathOrReason = L"C:\\Rec\\a&b.wav";
        link.LinkHTML = L"<A>link</A>";
        goldMine.answerAll = [this](const std::wstring& command) -> std::wstring {
            if (command.starts_with(L"<GMAPI call=\"RegisterWindowUpDown\">"))
                return dialogWatched;
            if (command.starts_with(L"<GMAPI call=\"MenuCommand\">"))
                return executed;
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
    // The dialog is asked for, with what it is to be filled in with.
    void Await(const std::wstring& refText) {
        dialog.OpenCompleteCallDialog(refText, link);
        goldMine.commands.clear();
        status.lines.clear();
    }
    void FillIn(const std::wstring& refText) {
        Await(refText);
        dialog.AddRefAndNotesToOpenCallDialog(4711);
    }

    std::wstring ref;       // as it stands in the reply
    std::wstring oldNotes;  // as it stands in the reply
    Lines written;
    bool writable = true;
    RecordingLinkState link;
};

// What the awaited dialog is filled in with is its Reference alone, so that one command writes.
class EventTest : public FillInTest {
protected:
    EventTest() { link = {}; }
};

TEST_F(EventTest, TheAwaitedDialogIsHandledOnce) {
    Await(L"call");
    RaiseEvent(4711);
    RaiseEvent(4711);
    EXPECT_EQ(written, Lines{SetCommand(L"1016", L"call")});
    EXPECT_EQ(status.lines, Lines{dialogOpened});
    ExpectAwaited(false);
}

TEST_F(EventTest, TheDialogIsAwaitedAndTheLineUnwrittenUntilItWasFilledIn) {
    Lines linesInside = {L"not called"};
    bool busyInside = false;
    Await(L"call");
    goldMine.onSend = [&](const std::wstring&) {
        linesInside = status.lines;
        busyInside = call.busy();
    };
    RaiseEvent(4711);
    EXPECT_EQ(linesInside, Lines{});
    EXPECT_TRUE(busyInside);
    EXPECT_FALSE(call.busy());
}

TEST_F(EventTest, AnEventWhileTheDialogIsFilledInDoesNotFillItTwice) {
    Await(L"call");
    goldMine.onSend = [this](const std::wstring&) {
        if (goldMine.commands.size() < 5)
            RaiseEvent(4711);
    };
    RaiseEvent(4711);
    EXPECT_EQ(written, Lines{SetCommand(L"1016", L"call")});
    EXPECT_EQ(status.lines, Lines{dialogOpened});
}

TEST_F(EventTest, AnErrorWhileTheDialogIsFilledInIsShownOnceAndEndsTheWait) {
    Await(L"call");
    goldMine.sendError = CompleteError(13);
    RaiseEvent(4711);
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Run-time error '13':\r\n\r\nAddRefAndNotesToOpenCallDialog: "
                                L"something broke",
                                BoxIcon::Critical)});
    EXPECT_EQ(status.lines,
              Lines{L"Run-time error '13':  AddRefAndNotesToOpenCallDialog: something broke"});
    EXPECT_FALSE(call.busy());
    ExpectAwaited(false);
}

TEST_F(EventTest, AskingAgainAwaitsTheNextDialog) {
    Await(L"call");
    RaiseEvent(4711);
    Await(L"next");
    RaiseEvent(4711);
    EXPECT_EQ(written, (Lines{SetCommand(L"1016", L"call"), SetCommand(L"1016", L"next")}));
}

TEST_F(EventTest, NothingIsKeptOfTheDialogBefore) {
    link.RecordingPathOrReason = L"a.wav";
    Await(L"call");
    link = {};
    Await(L"");
    RaiseEvent(4711);
    EXPECT_EQ(goldMine.commands, Lines{}) << "neither a Reference nor a link: no field is touched";
}

struct Event {
    bool awaited;
    std::wstring window;
    bool up;
};

class IgnoredEventTest : public EventTest, public testing::WithParamInterface<Event> {};

TEST_P(IgnoredEventTest, DoesNothing) {
    if (GetParam().awaited)
        Await(L"call");
    dialog.moGMUI_WindowUpDown(GetParam().window, GetParam().up, 4711);
    EXPECT_EQ(goldMine.commands, Lines{});
    ExpectNoLines();
    if (GetParam().awaited)
        ExpectAwaited(true);
}

INSTANTIATE_TEST_SUITE_P(Events, IgnoredEventTest,
                         testing::Values(Event{true, L"DIALOGSCHEDULECOMPLETE", false},
                                         Event{false, L"DIALOGSCHEDULECOMPLETE", true},
                                         Event{false, L"DIALOGSCHEDULECOMPLETE", false},
                                         Event{true, L"DialogScheduleComplete", true},
                                         Event{true, L"DIALOGSCHEDULECOMPLETE ", true},
                                         Event{true, L"DIALOGSCHEDULE", true},
                                         Event{true, L"", true}));

TEST_F(EventTest, AWithdrawnReportAwaitsNothing) {
    Await(L"call");
    dialog.Withdraw();
    EXPECT_EQ(goldMine.commands, Lines{unwatchDialog});
    RaiseEvent(4711);
    EXPECT_EQ(goldMine.commands, Lines{unwatchDialog});
    EXPECT_FALSE(dialog.WaitUntilFilledIn());
}

TEST_F(EventTest, WithoutAReportNothingIsWaitedFor) {
    EXPECT_FALSE(dialog.WaitUntilFilledIn());
    EXPECT_EQ(clock.pumps, 0);
    EXPECT_EQ(clock.sleeps, std::vector<std::uint32_t>{});
}

TEST_F(EventTest, TheWaitEndsWhenTheDialogHasBeenFilledIn) {
    Await(L"call");
    clock.onPump = [this] {
        if (clock.pumps == 3)
            RaiseEvent(4711);
    };
    EXPECT_TRUE(dialog.WaitUntilFilledIn());
    EXPECT_EQ(clock.sleeps.size(), 3U);
    EXPECT_EQ(clock.pumps, 4);
    EXPECT_EQ(
        status.lines,
        (Lines{L"Waiting for history Ref and Notes to be filled in: 1 second(s)",
               L"Waiting for history Ref and Notes to be filled in: 2 second(s)",
               L"Waiting for history Ref and Notes to be filled in: 3 second(s)", dialogOpened}));
}

TEST_F(EventTest, AWindowAskedToCloseWhileTheDialogIsFilledInClosesAfterIt) {
    FakeFormView view;
    Form shown(&view);
    CallInProgress busy(shown);
    {
        const CallInProgress::Part processing(busy);
        {
            const CallInProgress::Part fillingIn(busy);
            busy.CloseAfterwards();
        }
        EXPECT_TRUE(busy.busy());
        EXPECT_EQ(view.closeRequests, 0);
    }
    EXPECT_EQ(view.closeRequests, 1);
    { const CallInProgress::Part next(busy); }
    EXPECT_EQ(view.closeRequests, 1) << "asked once";
}

struct PlainNotes {
    std::wstring refText;
    std::wstring addition;
    std::wstring refInDialog;
    std::wstring notesInDialog;
    Lines written;
};

class PlainNotesTest : public FillInTest, public testing::WithParamInterface<PlainNotes> {};

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
        PlainNotes{L"", L"", L"x", L"y", {}}, PlainNotes{L"", L"", L"", L"", {}},
        // A free Ref field takes the Ref text, as it is.
        PlainNotes{L"call & co", L"", L"", L"", {SetCommand(L"1016", L"call & co")}},
        PlainNotes{L"call", L"", L"   ", L"old", {SetCommand(L"1016", L"call")}},
        PlainNotes{L"call",
                   L"C:\\a&b.wav",
                   L"",
                   L"",
                   {SetCommand(L"1016", L"call"), SetCommand(L"1017", L"C:\\a&amp;b.wav")}},
        // A Ref field that is filled keeps its text, and the Ref text moves into the notes.
        PlainNotes{L"call", L"", L"x", L"", {SetCommand(L"1017", L"call")}},
        PlainNotes{L"call", L"a.wav", L"x", L"", {SetCommand(L"1017", L"call\r\na.wav")}},
        PlainNotes{
            L"call", L"a.wav", L"x", L"old", {SetCommand(L"1017", L"call\r\na.wav\r\n\r\nold")}},
        // Only ordinary blanks count as nothing.
        PlainNotes{L"call", L"", L"&#160;", L"", {SetCommand(L"1017", L"call")}},
        PlainNotes{L"",
                   L"a.wav",
                   L"x",
                   L"Called back",
                   {SetCommand(L"1017", L"a.wav\r\n\r\nCalled back")}},
        PlainNotes{L"", L"a.wav", L"x", L"  ", {SetCommand(L"1017", L"a.wav  ")}},
        PlainNotes{L"", L"a.wav", L"", L"&#160;", {SetCommand(L"1017", L"a.wav\r\n\r\n\x00A0")}},
        PlainNotes{
            L"", L"a.wav", L"", L"a &amp;lt; b", {SetCommand(L"1017", L"a.wav\r\n\r\na &lt; b")}},
        // The reason for a missing link is inserted like a path.
        PlainNotes{L"",
                   L"No files found \"x\".",
                   L"",
                   L"",
                   {SetCommand(L"1017", L"No files found &quot;x&quot;.")}}));

// A raw CR LF reaches the program as LF, a reference as it was written.
TEST_F(FillInTest, PlainNotesKeepTheirLineEnds) {
    for (const wchar_t* written_ : {L"one\r\n\r\ntwo\r\n", L"one&#13;\n&#13;\ntwo&#13;\n",
                                    L"one&#13;&#10;&#13;&#10;two&#13;&#10;"}) {
        oldNotes = written_;
        written.clear();
        FillIn(L"");
        EXPECT_EQ(written, Lines{SetCommand(L"1017",
                                            L"C:\\Rec\\a&amp;b.wav\r\n\r\n"
                                            L"one\r\n\r\ntwo\r\n")})
            << oldNotes;
    }
}

struct Unreadable {
    std::wstring reply;
    std::int32_t sendError;  // 0: the reply comes
    std::wstring line;
};

// Both fields hold what the user typed; whether Ref or Notes are read first, nothing is written.
class UnreadableListTest
    : public FillInTest,
      public testing::WithParamInterface<std::tuple<Unreadable, bool, std::wstring>> {
protected:
    UnreadableListTest() {
        ref = L"typed";
        oldNotes = L"typed too";
        form.NotesAreHTML = std::get<bool>(GetParam());
        html.serialised = L"<new>";
    }
};

TEST_P(UnreadableListTest, LeavesWhatTheUserTyped) {
    const Unreadable& fault = std::get<Unreadable>(GetParam());
    Await(std::get<std::wstring>(GetParam()));
    const auto answer = goldMine.answerAll;
    goldMine.onSend = [&](const std::wstring&) {
        if (fault.sendError != 0)
            goldMine.sendError = CompleteError(fault.sendError);
    };
    goldMine.answerAll = [&](const std::wstring& command) {
        return command == L"<GMAPI call=\"GetActiveWindowsList\"/>" ? fault.reply : answer(command);
    };
    RaiseEvent(4711);

    EXPECT_EQ(written, Lines{});
    EXPECT_EQ(goldMine.commands, Lines{L"<GMAPI call=\"GetActiveWindowsList\"/>"});
    ASSERT_FALSE(status.lines.empty());
    EXPECT_EQ(status.lines.back(), fault.line);
    EXPECT_EQ(boxes.Take().size(), 1U) << "the command's own, or that of the error";
    ExpectAwaited(false);
}

constexpr const wchar_t* noList =
    L"Run-time error '13':  AddRefAndNotesToOpenCallDialog: GetActiveWindowsList returned no "
    L"readable list.";

INSTANTIATE_TEST_SUITE_P(
    Faults, UnreadableListTest,
    testing::Combine(
        testing::Values(
            Unreadable{L"", 70,
                       L"Run-time error '70':  AddRefAndNotesToOpenCallDialog: something broke"},
            Unreadable{L"", 462,
                       L"Run-time error '462':  AddRefAndNotesToOpenCallDialog: something broke"},
            Unreadable{L"", 0, noList}, Unreadable{L"<GMAPI call=\"GetActive", 0, noList},
            Unreadable{L"<GMAPI call=\"GetActiveWindowsList\"><status code=\"0\">No</status>"
                       L"</GMAPI>",
                       0, noList},
            Unreadable{L"<GMAPI call=\"Macro\"><status code=\"1\">ANN</status></GMAPI>", 0, noList},
            Unreadable{L"<GMAPI call=\"GetActiveWindowsList\"><status code=\"1\">Success</status>"
                       L"<data name=\"WindowsList\"><data name=\"window\"><data name=\"hWnd\">1"
                       L"</data><data name=\"Text\">\x0002</data></data></data></GMAPI>",
                       0, noList}),
        testing::Bool(), testing::Values(L"", L"call")));

TEST_F(FillInTest, AFieldThatCannotBeWrittenIsTold) {
    writable = false;
    FillIn(L"call");
    EXPECT_EQ(written,
              (Lines{SetCommand(L"1016", L"call"), SetCommand(L"1017", L"C:\\Rec\\a&amp;b.wav")}));
    EXPECT_EQ(status.lines, (Lines{L"Could not fill in Ref of Complete Call dialog.",
                                   L"Could not fill in Notes of Complete Call dialog."}));
}

TEST_F(FillInTest, FieldsThatAreWrittenNeedNoLine) {
    FillIn(L"call");
    ExpectNoLines();
}

// Five megabytes: what the dialog held comes back unchanged behind the link.
TEST_F(FillInTest, NotesOfAnyLengthAreKept) {
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

TEST_F(FillInTest, TheHandleIsWrittenAsADecimalNumber) {
    link = {};
    Await(L"call");
    goldMine.answerAll = nullptr;
    goldMine.answers[L"<GMAPI call=\"GetActiveWindowsList\"/>"] =
        L"<GMAPI call=\"GetActiveWindowsList\"/>";
    const std::wstring setRef =
        L"<GMAPI call=\"SetControlText\"><data name=\"hWndParent\">-12</data>"
        L"<data name=\"ID\">1016</data><data name=\"Text\">call</data></GMAPI>";
    goldMine.answers[setRef] = L"";
    dialog.AddRefAndNotesToOpenCallDialog(-12);
    EXPECT_EQ(goldMine.commands.back(), setRef);
}

class HtmlModeTest : public FillInTest {
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

TEST_F(HtmlModeTest, ATimeOutLeavesTheNotesAndKeepsTheRefTextWritten) {
    html.pollsUntilComplete = -1;
    const RuntimeError error = ErrorOf([&] { FillIn(L"call"); });
    EXPECT_EQ(error.number, 2147746306);
    EXPECT_EQ(error.description,
              L"AddRefAndNotesToOpenCallDialog: PrependHTMLToBody: Timed out after 10 seconds "
              L"trying to insert HTML string before existing HTML Body.");
    EXPECT_EQ(written, Lines{SetCommand(L"1016", L"call")});
}

TEST_F(FillInTest, AnErrorOfGoldMineCarriesTheProcedureBeforeItsDescription) {
    Await(L"call");
    goldMine.sendError = CompleteError(-2147352567);
    const RuntimeError error = ErrorOf([&] { dialog.AddRefAndNotesToOpenCallDialog(4711); });
    EXPECT_EQ(error.number, -2147352567);
    EXPECT_EQ(error.source, L"GMUI_GetControlText: GMUI_Execute: GoldMine.UI");
    EXPECT_EQ(error.description, L"AddRefAndNotesToOpenCallDialog: something broke");
    EXPECT_EQ(error.helpFile, L"gm.hlp");
    EXPECT_EQ(error.helpContext, 1234);
}

TEST_F(HtmlModeTest, AnErrorWhileTheOldNotesAreReadCarriesBothProcedures) {
    engineError = CompleteError(429);
    const RuntimeError error = ErrorOf([&] { FillIn(L""); });
    EXPECT_EQ(error.number, 429);
    EXPECT_EQ(error.source, L"GoldMine.UI");
    EXPECT_EQ(error.description, L"AddRefAndNotesToOpenCallDialog: HTMLToText: something broke");
    EXPECT_EQ(written, Lines{});
}

}  // namespace
}  // namespace corvane::test
