#include "gmapi/WindowCommands.h"

#include "DialogWatch.h"
#include "GoldMineFixture.h"

namespace corvane::test {
namespace {

class WindowCommandsTest : public GoldMineFixture {
protected:
    WindowCommandsTest() {
        goldMine.answers[watchDialog] = dialogWatched;
        goldMine.answers[unwatchDialog] = dialogWatched;
    }
};

struct CallerIDCase {
    ContactDisplay display;
    bool allPhones;
    std::wstring command;
};

class CallerIDCommandTest : public WindowCommandsTest,
                            public testing::WithParamInterface<CallerIDCase> {};

TEST_P(CallerIDCommandTest, IsFoundWhenTheReplyBeginsWithStatusOne) {
    goldMine.answers[GetParam().command] = L"<GMAPI call=\"CallerID\"><status code=\"1\">";
    EXPECT_TRUE(windows.CallerID(L"(555)123-4567 & co", GetParam().display, GetParam().allPhones));
    EXPECT_EQ(goldMine.commands, Lines{GetParam().command});
}

TEST_P(CallerIDCommandTest, IsNotFoundOtherwise) {
    for (const wchar_t* reply : {L"<GMAPI call=\"CallerID\"><status code=\"0\">0</status></GMAPI>",
                                 L"<GMAPI call=\"callerid\"><status code=\"1\">", L"False", L""}) {
        goldMine.answers[GetParam().command] = reply;
        EXPECT_FALSE(
            windows.CallerID(L"(555)123-4567 & co", GetParam().display, GetParam().allPhones))
            << reply;
    }
    ExpectNoLines();
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, CallerIDCommandTest,
    testing::Values(
        CallerIDCase{ContactDisplay::CurrentWindow, false,
                     L"<GMAPI call=\"CallerID\"><data name=\"Phone\">(555)123-4567 &amp; co"
                     L"</data><data name=\"Description\"></data>"
                     L"<data name=\"DisplayDialog\">2</data><data name=\"All\">0</data>"
                     L"<data name=\"UPhone\">0</data></GMAPI>"},
        CallerIDCase{ContactDisplay::CurrentWindow, true,
                     L"<GMAPI call=\"CallerID\"><data name=\"Phone\">(555)123-4567 &amp; co"
                     L"</data><data name=\"Description\"></data>"
                     L"<data name=\"DisplayDialog\">2</data><data name=\"All\">1</data>"
                     L"<data name=\"UPhone\">0</data></GMAPI>"},
        CallerIDCase{ContactDisplay::NewWindow, false,
                     L"<GMAPI call=\"CallerID\"><data name=\"Phone\">(555)123-4567 &amp; co"
                     L"</data><data name=\"Description\"></data>"
                     L"<data name=\"DisplayDialog\">1</data><data name=\"All\">0</data>"
                     L"<data name=\"UPhone\">0</data></GMAPI>"},
        CallerIDCase{ContactDisplay::NewWindow, true,
                     L"<GMAPI call=\"CallerID\"><data name=\"Phone\">(555)123-4567 &amp; co"
                     L"</data><data name=\"Description\"></data>"
                     L"<data name=\"DisplayDialog\">1</data><data name=\"All\">1</data>"
                     L"<data name=\"UPhone\">0</data></GMAPI>"}));

TEST_F(WindowCommandsTest, AStatusMessageCarriesItsDelay) {
    goldMine.answers
        [L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">a &lt; b</data>"
         L"<data name=\"Delay\">10</data></GMAPI>"] = Reply(L"StatusMsg", L"1", L"");
    EXPECT_EQ(windows.StatusMsg(L"a < b", 10), L"1");
    EXPECT_EQ(windows.StatusMsg(L"a < b", L"10"), L"1");
}

TEST_F(WindowCommandsTest, ABlankDelayIsNotSent) {
    goldMine.answers[L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">hello</data></GMAPI>"] =
        Reply(L"StatusMsg", L"1", L"");
    EXPECT_EQ(windows.StatusMsg(L"hello", L"   "), L"1");
    EXPECT_EQ(windows.StatusMsg(L"hello", L""), L"1");
}

TEST_F(WindowCommandsTest, ADelayWithBlanksAroundItIsSentAsItIs) {
    goldMine.answers
        [L"<GMAPI call=\"StatusMsg\"><data name=\"Message\">hello</data>"
         L"<data name=\"Delay\"> 5 </data></GMAPI>"] = Reply(L"StatusMsg", L"1", L"");
    EXPECT_EQ(windows.StatusMsg(L"hello", L" 5 "), L"1");
}

struct RecordObjCommand {
    std::wstring command;
    std::wstring argument;
    std::wstring text;
};

class RecordObjCommandTest : public WindowCommandsTest,
                             public testing::WithParamInterface<RecordObjCommand> {};

TEST_P(RecordObjCommandTest, SendsAnArgumentOnlyWhenThereIsOne) {
    goldMine.answers[GetParam().text] = Reply(L"RecordObj", L"1", L"");
    EXPECT_EQ(windows.RecordObj(GetParam().command, GetParam().argument), L"1");
    EXPECT_EQ(goldMine.commands, Lines{GetParam().text});
}

INSTANTIATE_TEST_SUITE_P(
    Commands, RecordObjCommandTest,
    testing::Values(
        RecordObjCommand{
            L"SetObject", L"",
            L"<GMAPI call=\"RecordObj\"><data name=\"Command\">SetObject</data></GMAPI>"},
        RecordObjCommand{
            L"SetObject", L"  ",
            L"<GMAPI call=\"RecordObj\"><data name=\"Command\">SetObject</data></GMAPI>"},
        RecordObjCommand{L"SetRecord", L"Primary",
                         L"<GMAPI call=\"RecordObj\"><data name=\"Command\">SetRecord</data>"
                         L"<data name=\"Argument\">Primary</data></GMAPI>"},
        RecordObjCommand{L"Seek", L"A'1 & <2>",
                         L"<GMAPI call=\"RecordObj\"><data name=\"Command\">Seek</data>"
                         L"<data name=\"Argument\">A&apos;1 &amp; &lt;2&gt;</data></GMAPI>"}));

struct Digit {
    std::wstring reply;
    std::wstring digit;
};

class StatusDigitTest : public WindowCommandsTest, public testing::WithParamInterface<Digit> {};

TEST_P(StatusDigitTest, IsTheCharacterAtPosition39) {
    goldMine.answerAll = [](const std::wstring&) { return GetParam().reply; };
    EXPECT_EQ(windows.StatusMsg(L"x", 10), GetParam().digit);
    EXPECT_EQ(windows.RecordObj(L"Seek", L"x"), GetParam().digit);
    ExpectNoLines();
}

INSTANTIATE_TEST_SUITE_P(
    Replies, StatusDigitTest,
    testing::Values(Digit{L"<GMAPI call=\"StatusMsg\"><status code=\"1\">x</status></GMAPI>", L"1"},
                    Digit{L"<GMAPI call=\"RecordObj\"><status code=\"0\">x</status></GMAPI>", L"0"},
                    Digit{L"<GMAPI call=\"RecordObj\"><status code=\"-1\">x</status></GMAPI>",
                          L"-"},
                    Digit{L"12345678901234567890123456789012345678X", L"X"},
                    Digit{L"12345678901234567890123456789012345678", L""}, Digit{L"False", L""},
                    Digit{L"", L""}));

TEST_F(WindowCommandsTest, RegisteringTurnsTheReportOnOrOff) {
    EXPECT_TRUE(windows.RegisterWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true));
    EXPECT_TRUE(windows.RegisterWindowUpDown(L"DIALOGSCHEDULECOMPLETE", false));
    EXPECT_EQ(goldMine.commands, (Lines{watchDialog, unwatchDialog}));
}

class RegistrationReplyTest : public WindowCommandsTest,
                              public testing::WithParamInterface<std::wstring> {};

TEST_P(RegistrationReplyTest, OnlyTheExactReplyIsASuccess) {
    goldMine.answers[watchDialog] = GetParam();
    EXPECT_FALSE(windows.RegisterWindowUpDown(L"DIALOGSCHEDULECOMPLETE", true));
}

INSTANTIATE_TEST_SUITE_P(
    Replies, RegistrationReplyTest,
    testing::Values(
        L"", L"False", L"<GMAPI call=\"RegisterWindowUpDown\"><status code=\"1\">",
        L"<GMAPI call=\"RegisterWindowUpDown\"><status code=\"1\">success</status></GMAPI>",
        L"<GMAPI call=\"RegisterWindowUpDown\"><status code=\"0\">Success</status></GMAPI>",
        L"<GMAPI call=\"RegisterWindowUpDown\"><status code=\"1\">Success</status></GMAPI> ",
        L"<GMAPI call=\"RegisterWindowUpDown\"><status code=\"1\">Success</status></GMAPI>\r\n"));

class GetControlTextTest : public WindowCommandsTest {
protected:
    GetControlTextTest() {
        goldMine.answers[L"<GMAPI call=\"GetActiveWindowsList\"/>"] =
            L"<GMAPI call=\"GetActiveWindowsList\"><status code=\"1\">Success</status>"
            L"<data name=\"WindowsList\">"
            L"<data name=\"window\"><data name=\"hWnd\">100</data><data name=\"Controls\">"
            L"<data name=\"Control\"><data name=\"ID\">1016</data>"
            L"<data name=\"Text\">other window</data></data></data></data>"
            L"<data name=\"window\"><data name=\"hWnd\">4711</data><data name=\"Controls\">"
            L"<data name=\"Control\"><data name=\"ID\">1016</data>"
            L"<data name=\"Text\">Ref &amp;amp; more</data></data>"
            L"<data name=\"Control\"><data name=\"ID\">1017</data>"
            L"<data name=\"Text\">line 1&#13;&#10;line 2</data></data>"
            L"<data name=\"Control\"><data name=\"ID\">1018</data>"
            L"<data name=\"Text\"></data></data>"
            L"</data></data></data></GMAPI>";
    }
};

TEST_F(GetControlTextTest, IsTheUnescapedTextOfTheControlInThatWindow) {
    EXPECT_EQ(windows.GetControlText(L"4711", L"1016"), L"Ref & more");
    EXPECT_EQ(windows.GetControlText(L"4711", L"1017"), L"line 1\r\nline 2");
    EXPECT_EQ(windows.GetControlText(L"100", L"1016"), L"other window");
    EXPECT_EQ(goldMine.commands[0], L"<GMAPI call=\"GetActiveWindowsList\"/>");
}

TEST_F(GetControlTextTest, IsEmptyWhenTheControlIsEmptyOrNotListed) {
    EXPECT_EQ(windows.GetControlText(L"4711", L"1018"), L"");
    EXPECT_EQ(windows.GetControlText(L"4711", L"1"), L"");
    EXPECT_EQ(windows.GetControlText(L"100", L"1017"), L"");
}

TEST_F(GetControlTextTest, IsEmptyWhenTheWindowIsNotListed) {
    EXPECT_EQ(windows.GetControlText(L"5", L"1016"), L"");
}

TEST_F(GetControlTextTest, IsEmptyWhenNoWindowIsListed) {
    for (const wchar_t* reply :
         {L"<GMAPI call=\"GetActiveWindowsList\"/>",
          L"<GMAPI call=\"GetActiveWindowsList\"><status code=\"1\">Success</status></GMAPI>"}) {
        goldMine.answers[L"<GMAPI call=\"GetActiveWindowsList\"/>"] = reply;
        EXPECT_EQ(windows.GetControlText(L"4711", L"1016"), L"") << reply;
    }
}

TEST_F(GetControlTextTest, AListThatCannotBeReadIsAnErrorAndNoEmptyText) {
    for (const wchar_t* reply :
         {L"", L"not a list", L"<GMAPI call=\"GetActiveWindowsList\">",
          L"<GMAPI call=\"GetActiveWindowsList\"><status code=\"0\">No</status></GMAPI>",
          L"<GMAPI call=\"Macro\"><status code=\"1\">ANN</status></GMAPI>",
          // A control character, in the text of any window, is no XML.
          L"<GMAPI call=\"GetActiveWindowsList\"><status code=\"1\">Success</status>"
          L"<data name=\"WindowsList\"><data name=\"window\">\x0001</data></data></GMAPI>"}) {
        goldMine.answers[L"<GMAPI call=\"GetActiveWindowsList\"/>"] = reply;
        const RuntimeError error =
            ErrorOf([&] { static_cast<void>(windows.GetControlText(L"4711", L"1016")); });
        EXPECT_EQ(error.number, 13) << reply;
        EXPECT_EQ(error.source, L"GMUI_GetControlText: ");
        EXPECT_EQ(error.description, L"GetActiveWindowsList returned no readable list.");
        EXPECT_FALSE(error.reported);
    }
}

TEST_F(GetControlTextTest, AnErrorThatWasReportedKeepsItsNumberAndText) {
    for (const std::int32_t number : {70, 462, -2147023170}) {
        goldMine.sendError = CompleteError(number);
        const RuntimeError error =
            ErrorOf([&] { static_cast<void>(windows.GetControlText(L"4711", L"1016")); });
        EXPECT_EQ(error.number, number);
        EXPECT_EQ(error.source, L"GMUI_GetControlText: GoldMine.UI");
        EXPECT_EQ(error.description, L"something broke");
        EXPECT_TRUE(error.reported);
        EXPECT_EQ(boxes.Take().size(), 1U) << "of the command";
    }
}

TEST_F(GetControlTextTest, AnObjectThatCannotBeHadIsSuchAnError) {
    goldMine.connectError = CompleteError(429);
    const RuntimeError error =
        ErrorOf([&] { static_cast<void>(windows.GetControlText(L"4711", L"1016")); });
    EXPECT_EQ(error.number, 429);
    EXPECT_TRUE(error.reported);
    EXPECT_EQ(boxes.Take().size(), 1U);
}

TEST_F(GetControlTextTest, AnErrorOfTheAutomationObjectCarriesBothProceduresInItsSource) {
    goldMine.sendError = CompleteError(-2147352567);
    const RuntimeError error =
        ErrorOf([&] { static_cast<void>(windows.GetControlText(L"4711", L"1016")); });
    EXPECT_EQ(error.number, -2147352567);
    EXPECT_EQ(error.source, L"GMUI_GetControlText: GMUI_Execute: GoldMine.UI");
    EXPECT_EQ(error.description, L"something broke");
    EXPECT_EQ(error.helpFile, L"gm.hlp");
    EXPECT_EQ(error.helpContext, 1234);
}

// Keeps the questions put to the reader of replies, and answers them as told.
class ScriptedReader final : public XPathReader {
public:
    [[nodiscard]] std::optional<std::wstring> SelectNode(const std::wstring& reply,
                                                         const std::wstring& expression,
                                                         NodeForm form,
                                                         WhiteSpace space) const override {
        EXPECT_EQ(space, WhiteSpace::Kept) << "a control's text is the user's";
        asked.push_back({reply, expression, form});
        if (error)
            throw *error;
        return asked.size() <= results.size() ? results[asked.size() - 1] : std::wstring();
    }

    struct Asked {
        std::wstring reply;
        std::wstring expression;
        NodeForm form;
    };
    mutable std::vector<Asked> asked;
    std::vector<std::wstring> results;
    std::optional<RuntimeError> error;
};

class ControlTextQueriesTest : public GoldMineFixture {
protected:
    ControlTextQueriesTest() {
        goldMine.answers[L"<GMAPI call=\"GetActiveWindowsList\"/>"] = L"<WindowsList/>";
    }
    ScriptedReader reader;
    GMUI scriptedGmui{goldMine, reader, form, status, boxes, clock};
    WindowCommands scriptedWindows{scriptedGmui};
};

TEST_F(ControlTextQueriesTest, TheWindowIsReadAsMarkupAndTheControlOutOfIt) {
    reader.results = {L"<window/>", L"x &lt; y"};

    EXPECT_EQ(scriptedWindows.GetControlText(L"4711", L"1016"), L"x < y");

    ASSERT_EQ(reader.asked.size(), 2U);
    EXPECT_EQ(reader.asked[0].reply, L"<WindowsList/>");
    EXPECT_EQ(reader.asked[0].expression,
              L"(/GMAPI/data[@name='WindowsList']/data[@name='window']/"
              L"data[@name='hWnd'][.=4711])/..");
    EXPECT_EQ(reader.asked[0].form, NodeForm::Xml);
    EXPECT_EQ(reader.asked[1].reply, L"<window/>");
    EXPECT_EQ(reader.asked[1].expression,
              L"/data[@name='window']/data[@name='Controls']/data/data[@name='ID'][.=1016]/../"
              L"data[@name='Text']");
    EXPECT_EQ(reader.asked[1].form, NodeForm::Text);
}

TEST_F(ControlTextQueriesTest, AWindowThatIsNotListedNeedsNoSecondQuery) {
    EXPECT_EQ(scriptedWindows.GetControlText(L"4711", L"1016"), L"");
    EXPECT_EQ(reader.asked.size(), 1U);
}

TEST_F(ControlTextQueriesTest, AnErrorOfTheReaderIsPassedOnWithTheProcedureBeforeItsSource) {
    reader.error = CompleteError(429);
    const RuntimeError error =
        ErrorOf([&] { static_cast<void>(scriptedWindows.GetControlText(L"4711", L"1016")); });
    EXPECT_EQ(error.number, 429);
    EXPECT_EQ(error.source, L"GMUI_GetControlText: GoldMine.UI");
    EXPECT_EQ(error.description, L"something broke");
    EXPECT_EQ(error.helpFile, L"gm.hlp");
    EXPECT_EQ(error.helpContext, 1234);
}

struct SetTextReply {
    std::wstring reply;
    bool success;
};

class SetControlTextTest : public WindowCommandsTest,
                           public testing::WithParamInterface<SetTextReply> {};

TEST_P(SetControlTextTest, SucceedsOnlyWithTheReplyUnderItsOtherName) {
    const std::wstring command =
        L"<GMAPI call=\"SetControlText\"><data name=\"hWndParent\">4711</data>"
        L"<data name=\"ID\">1017</data><data name=\"Text\">a &lt; b & c</data></GMAPI>";
    goldMine.answers[command] = GetParam().reply;
    // The caller has escaped what needs it: the text goes into the command as it is.
    EXPECT_EQ(windows.SetControlText(L"4711", L"1017", L"a &lt; b & c"), GetParam().success);
    EXPECT_EQ(goldMine.commands, Lines{command});
}

INSTANTIATE_TEST_SUITE_P(
    Replies, SetControlTextTest,
    testing::Values(
        SetTextReply{
            L"<GMAPI call=\"GMUI_SetControlText\"><status code=\"1\">Success</status></GMAPI>",
            true},
        SetTextReply{L"<GMAPI call=\"SetControlText\"><status code=\"1\">Success</status></GMAPI>",
                     false},
        SetTextReply{L"<GMAPI call=\"GMUI_SetControlText\"><status code=\"1\">", false},
        SetTextReply{
            L"<GMAPI call=\"GMUI_SetControlText\"><status code=\"0\">Success</status></GMAPI>",
            false},
        SetTextReply{
            L"<GMAPI call=\"GMUI_SetControlText\"><status code=\"1\">Success</status></GMAPI>\n",
            false},
        SetTextReply{L"False", false}, SetTextReply{L"", false}));

}  // namespace
}  // namespace corvane::test
