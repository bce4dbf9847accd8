#include "gmapi/GMUI.h"

#include "GoldMineFixture.h"

namespace corvane::test {
namespace {

const std::wstring listCommand = L"<GMAPI call=\"GetActiveWindowsList\"/>";

class GMUITest : public GoldMineFixture {
protected:
    GMUITest() { goldMine.answers[listCommand] = L"<GMAPI/>"; }
    void TakeMilliseconds(std::int64_t duration) {
        goldMine.onSend = [this, duration](const std::wstring&) { clock.Advance(duration); };
    }
    void LogCommandsFrom(const std::wstring& seconds) {
        form.chkLogCOMCalls.setChecked(true);
        form.txtCOMDurationSeconds.setText(seconds);
    }
};

struct ErrorNumberCase {
    std::int32_t number;
    std::wstring numberText;
};

TEST_F(GMUITest, TheCommandReachesGoldMineAndTheReplyComesBack) {
    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"<GMAPI/>");
    EXPECT_EQ(goldMine.commands, Lines{listCommand});
    ExpectNoLines();
}

TEST_F(GMUITest, TheObjectIsCreatedOnFirstUseAndKept) {
    EXPECT_EQ(goldMine.connects, 0);
    static_cast<void>(gmui.GMUI_Execute(listCommand));
    static_cast<void>(gmui.GMUI_Execute(listCommand));
    EXPECT_EQ(goldMine.connects, 1);
}

TEST_F(GMUITest, WithoutTheObjectTheReplyIsFalseAndTheUserLearnsHowToRegisterIt) {
    RuntimeError error;
    error.number = 429;
    error.description = L"ActiveX component can't create object";
    goldMine.connectError = error;
    form.GoldMineExePath = L"C:\\Program Files\\GoldMine\\gmw.exe";
    LogCommandsFrom(L"0");

    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"False");

    EXPECT_EQ(goldMine.commands, Lines{});
    EXPECT_EQ(
        boxes.Take(),
        (ShownBoxes{Notice(
            L"Could not connect to GoldMine's user interface.\r\n"
            L"Error number:  429\r\n"
            L"Error message:  ActiveX component can't create object\r\n"
            L"\r\n"
            L"GoldMine should be installed locally. If it already is, this error can usually be "
            L"resolved by running the following command from a command prompt (opened with "
            L"\"Run as administrator\"):\r\n"
            L"\r\n"
            L"\"C:\\Program Files\\GoldMine\\gmw.exe\" /RegServer",
            BoxIcon::Critical)}));
    EXPECT_EQ(
        status.lines,
        Lines{L"Could not connect to GoldMine's user interface. Error number:  429 Error message:  "
              L"ActiveX component can't create object GoldMine should be installed locally. If it "
              L"already is, this error can usually be resolved by running the following command "
              L"from a command prompt (opened with \"Run as administrator\"):"
              L"\"C:\\Program Files\\GoldMine\\gmw.exe\" /RegServer"});
}

class FailedCreationTest : public GMUITest, public testing::WithParamInterface<ErrorNumberCase> {};

// The numbers that have a meaning of their own when a command fails have none here.
TEST_P(FailedCreationTest, IsACouldNotConnectWhateverItsNumber) {
    RuntimeError error;
    error.number = GetParam().number;
    error.description = L"no";
    goldMine.connectError = error;
    form.GoldMineExePath = L"C:\\gmw.exe";

    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"False");

    EXPECT_EQ(
        boxes.Take(),
        (ShownBoxes{Notice(
            L"Could not connect to GoldMine's user interface.\r\n"
            L"Error number:  " +
                GetParam().numberText +
                L"\r\n"
                L"Error message:  no\r\n"
                L"\r\n"
                L"GoldMine should be installed locally. If it already is, this error can usually "
                L"be resolved by running the following command from a command prompt (opened with "
                L"\"Run as administrator\"):\r\n"
                L"\r\n"
                L"\"C:\\gmw.exe\" /RegServer",
            BoxIcon::Critical)}));
    ASSERT_EQ(status.lines.size(), 1U);
    EXPECT_TRUE(status.lines[0].starts_with(
        L"Could not connect to GoldMine's user interface. Error number:  " + GetParam().numberText +
        L" Error message:  no GoldMine should be installed locally."));
}

INSTANTIATE_TEST_SUITE_P(Errors, FailedCreationTest,
                         testing::Values(ErrorNumberCase{70, L"70"}, ErrorNumberCase{462, L"462"},
                                         ErrorNumberCase{-2147023170, L"-2147023170"}));

TEST_F(GMUITest, CreatingTheObjectIsTriedAgainWithTheNextCommand) {
    goldMine.connectError = CompleteError(429);
    static_cast<void>(gmui.GMUI_Execute(listCommand));
    static_cast<void>(boxes.Take());
    goldMine.connectError.reset();

    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"<GMAPI/>");
    EXPECT_EQ(goldMine.connects, 2);
}

TEST_F(GMUITest, PermissionDeniedMeansNotLoggedIn) {
    RuntimeError error;
    error.number = 70;
    error.description = L"Permission denied";
    goldMine.sendError = error;

    const std::wstring reply = gmui.GMUI_Execute(listCommand);

    EXPECT_FALSE(reply.starts_with(L"<GMAPI"));
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"GoldMine may be running but you are not logged in.\r\n"
                                L"Log in to GoldMine and re-try the operation.\r\n"
                                L"\r\n"
                                L"Error number:  70\r\n"
                                L"Error message:  Permission denied")});
    EXPECT_EQ(status.lines,
              Lines{L"GoldMine may be running but you are not logged in. Log in to GoldMine and "
                    L"re-try the operation. Error number:  70 Error message:  Permission denied"});
}

class LostConnectionTest : public GMUITest, public testing::WithParamInterface<ErrorNumberCase> {};

TEST_P(LostConnectionTest, IsToldInABoxAndALine) {
    RuntimeError error;
    error.number = GetParam().number;
    error.description = L"The server is gone";
    goldMine.sendError = error;

    const std::wstring reply = gmui.GMUI_Execute(listCommand);

    EXPECT_FALSE(reply.starts_with(L"<GMAPI"));
    EXPECT_EQ(boxes.Take(),
              ShownBoxes{Notice(L"Lost connection to GoldMine's user interface. \r\n"
                                L"If you closed GoldMine before closing Corvane, you can ignore "
                                L"this error.\r\n"
                                L"\r\n"
                                L"Error number:  " +
                                GetParam().numberText +
                                L"\r\n"
                                L"Error message:  The server is gone")});
    EXPECT_EQ(status.lines,
              Lines{L"Lost connection to GoldMine's user interface. If you closed GoldMine before "
                    L"closing Corvane, you can ignore this error. Error number:  " +
                    GetParam().numberText + L" Error message:  The server is gone"});
}

INSTANTIATE_TEST_SUITE_P(Errors, LostConnectionTest,
                         testing::Values(ErrorNumberCase{462, L"462"},
                                         ErrorNumberCase{-2147023170, L"-2147023170"},
                                         ErrorNumberCase{-2147417848, L"-2147417848"},
                                         ErrorNumberCase{-2147220995, L"-2147220995"}));

TEST_P(LostConnectionTest, IsToldInOneBoxWhenACommandAndOneInsideItAreLostTogether) {
    RuntimeError error;
    error.number = GetParam().number;
    goldMine.onSend = [&](const std::wstring& sent) {
        if (sent == listCommand)
            static_cast<void>(gmui.GMUI_Execute(L"<GMAPI call=\"Inner\"/>"));
    };
    goldMine.answerAll = [&](const std::wstring&) -> std::wstring { throw error; };

    static_cast<void>(gmui.GMUI_Execute(listCommand));
    EXPECT_EQ(boxes.Take().size(), 1u);
    EXPECT_EQ(status.lines.size(), 2u);

    static_cast<void>(gmui.GMUI_Execute(L"<GMAPI call=\"Later\"/>"));
    EXPECT_EQ(boxes.Take().size(), 1u) << "another loss";
}

class FailedCallTest : public GMUITest, public testing::WithParamInterface<std::int32_t> {};

TEST_P(FailedCallTest, TheNextCommandCreatesTheObjectAfresh) {
    goldMine.sendError = CompleteError(GetParam());
    static_cast<void>(gmui.GMUI_Execute(listCommand));
    static_cast<void>(boxes.Take());

    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"<GMAPI/>");
    EXPECT_EQ(goldMine.connects, 2);
}

TEST_P(FailedCallTest, TheObjectIsLetGoBeforeTheBoxWhichComesBeforeTheLine) {
    goldMine.sendError = CompleteError(GetParam());
    boxes.onShow = [this] {
        EXPECT_FALSE(goldMine.connected());
        EXPECT_EQ(status.lines, Lines{});
    };
    static_cast<void>(gmui.GMUI_Execute(listCommand));
    EXPECT_EQ(boxes.Take().size(), 1U);
    EXPECT_EQ(status.lines.size(), 1U);
}

TEST_P(FailedCallTest, IsNotTimed) {
    LogCommandsFrom(L"0");
    goldMine.sendError = CompleteError(GetParam());
    static_cast<void>(gmui.GMUI_Execute(listCommand));
    static_cast<void>(boxes.Take());
    ASSERT_EQ(status.lines.size(), 1U);
    EXPECT_FALSE(status.lines[0].starts_with(L"> COM"));
}

INSTANTIATE_TEST_SUITE_P(Errors, FailedCallTest,
                         testing::Values(70, 462, -2147023170, -2147417848, -2147220995));

TEST_F(GMUITest, AnyOtherErrorIsPassedOnWithTheProcedureBeforeItsSource) {
    goldMine.sendError = CompleteError(-2147352567);

    const RuntimeError error = ErrorOf([&] { static_cast<void>(gmui.GMUI_Execute(listCommand)); });

    EXPECT_EQ(error.number, -2147352567);
    EXPECT_EQ(error.source, L"GMUI_Execute: GoldMine.UI");
    EXPECT_EQ(error.description, L"something broke");
    EXPECT_FALSE(goldMine.connected()) << "the next command creates the object afresh";
    EXPECT_EQ(error.helpFile, L"gm.hlp");
    EXPECT_EQ(error.helpContext, 1234);
    ExpectNoLines();
}

struct Timing {
    std::wstring threshold;
    std::int64_t milliseconds;
    std::wstring line;  // empty: not logged
};

class CommandTimingTest : public GMUITest, public testing::WithParamInterface<Timing> {};

TEST_P(CommandTimingTest, CommandsAtOrAboveTheThresholdAreLogged) {
    LogCommandsFrom(GetParam().threshold);
    TakeMilliseconds(GetParam().milliseconds);

    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"<GMAPI/>");

    EXPECT_EQ(status.lines, GetParam().line.empty() ? Lines{} : Lines{GetParam().line});
}

INSTANTIATE_TEST_SUITE_P(
    Durations, CommandTimingTest,
    testing::Values(Timing{L"0", 0,
                           L"> COM command > 0 second(s) (0.000 seconds): '<GMAPI "
                           L"call=\"GetActiveWindowsList\"/>'"},
                    Timing{L"0", 1,
                           L"> COM command > 0 second(s) (0.001 seconds): '<GMAPI "
                           L"call=\"GetActiveWindowsList\"/>'"},
                    Timing{L"2", 0, L""}, Timing{L"2", 1999, L""},
                    Timing{L"2", 2000,
                           L"> COM command > 2 second(s) (2.000 seconds): '<GMAPI "
                           L"call=\"GetActiveWindowsList\"/>'"},
                    Timing{L"2", 61234,
                           L"> COM command > 2 second(s) (61.234 seconds): '<GMAPI "
                           L"call=\"GetActiveWindowsList\"/>'"},
                    // The threshold is a whole number, and stands in the line as it was typed.
                    Timing{L"1.6", 1999, L""},
                    Timing{L"1.6", 2000,
                           L"> COM command > 1.6 second(s) (2.000 seconds): '<GMAPI "
                           L"call=\"GetActiveWindowsList\"/>'"}));

// The timer's fractions are no exact binary numbers, and lose a digit where a power of two is
// passed: 65536 seconds after midnight 2 seconds must stay 2 seconds.
TEST_F(GMUITest, ADurationThatEqualsTheThresholdIsLoggedWhereTheTimerLosesDigits) {
    LogCommandsFrom(L"2");
    TakeMilliseconds(2000);
    for (std::int64_t start = 0; start < 1000; ++start) {
        clock.millisecondOfDay = 65534500 + start;
        static_cast<void>(gmui.GMUI_Execute(listCommand));
    }
    EXPECT_EQ(status.lines.size(), 1000U);
}

TEST_F(GMUITest, CommandsAreNotLoggedUnlessAskedFor) {
    form.chkLogCOMCalls.setChecked(false);
    form.txtCOMDurationSeconds.setText(L"not a number");
    TakeMilliseconds(5000);
    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"<GMAPI/>");
    ExpectNoLines();
}

TEST_F(GMUITest, AThresholdThatIsNoNumberIsATypeMismatch) {
    LogCommandsFrom(L"soon");
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(gmui.GMUI_Execute(listCommand)); }).number, 13);
}

TEST_F(GMUITest, ACommandThatSpansMidnightCountsAsFast) {
    LogCommandsFrom(L"0");
    clock.millisecondOfDay = 24 * 3600 * 1000 - 500;
    goldMine.onSend = [this](const std::wstring&) { clock.millisecondOfDay = 500; };
    static_cast<void>(gmui.GMUI_Execute(listCommand));
    ExpectNoLines();
}

TEST_F(GMUITest, NoObjectIsCreatedWhereNoClientRunsAndNobodyIsAsked) {
    bool runs = false;
    gmui.ConnectOnlyWhile([&runs] { return runs; });
    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"False");
    EXPECT_EQ(goldMine.connects, 0);
    ExpectNoLines();
    ASSERT_TRUE(gmui.reportedError());
    EXPECT_EQ(gmui.reportedError()->number, 462);
    runs = true;
    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"<GMAPI/>");
}

TEST_F(GMUITest, ANodeIsReadAsTextOrAsMarkup) {
    const std::wstring reply =
        L"<GMAPI call=\"X\"><a n=\"1\"><b>one</b></a><a n=\"2\">two</a></GMAPI>";
    EXPECT_EQ(gmui.SelectNode(reply, L"/GMAPI/a"), L"one");
    EXPECT_EQ(gmui.SelectNodeAsItStands(reply, L"/GMAPI/a[@n=\"1\"]/b", NodeForm::Xml),
              L"<b>one</b>");
    EXPECT_EQ(gmui.SelectNode(reply, L"/GMAPI/a[@n=\"2\"]"), L"two");
}

TEST_F(GMUITest, ANodeThatIsNotThereIsEmpty) {
    EXPECT_EQ(gmui.SelectNode(L"<GMAPI/>", L"/GMAPI/status"), L"");
    EXPECT_EQ(gmui.SelectNodeAsItStands(L"<GMAPI/>", L"/GMAPI/status", NodeForm::Xml), L"");
}

TEST_F(GMUITest, AReplyThatIsNotXmlHasNoNodes) {
    for (const wchar_t* reply : {L"", L"False", L"<GMAPI", L"<GMAPI><status></GMAPI>"})
        EXPECT_EQ(gmui.SelectNode(reply, L"/GMAPI/status"), L"") << reply;
    EXPECT_EQ(gmui.SelectNodeAsItStands(L"False", L"/GMAPI", NodeForm::Xml), std::nullopt);
}

TEST_F(GMUITest, OnlyATextThatIsReadAsItStandsKeepsTheWhiteSpaceAtItsEnds) {
    const std::wstring reply =
        L"<GMAPI call=\"Macro\"><status code=\"1\"> \n(555)123-4567 \n</status></GMAPI>";
    EXPECT_EQ(gmui.StatusValue(reply), L"(555)123-4567");
    EXPECT_EQ(gmui.SelectNodeAsItStands(reply, L"/GMAPI/status", NodeForm::Text),
              L" \n(555)123-4567 \n");
}

TEST_F(GMUITest, OnlyTheErrorOfTheLastCommandIsKept) {
    goldMine.sendError = CompleteError(70);
    static_cast<void>(gmui.GMUI_Execute(listCommand));
    ASSERT_TRUE(gmui.reportedError());
    EXPECT_EQ(gmui.reportedError()->number, 70);
    EXPECT_EQ(boxes.Take().size(), 1U);

    // The command inside fails; the one that it arrived in does not.
    goldMine.onSend = [this](const std::wstring& sent) {
        if (sent == listCommand) {
            goldMine.sendError = CompleteError(70);
            static_cast<void>(gmui.GMUI_Execute(L"<inside/>"));
        }
    };
    EXPECT_EQ(gmui.GMUI_Execute(listCommand), L"<GMAPI/>");
    EXPECT_FALSE(gmui.reportedError());
    EXPECT_EQ(boxes.Take().size(), 1U);
}

TEST_F(GMUITest, TheStatusValueIsUnescaped) {
    EXPECT_EQ(gmui.StatusValue(Reply(L"Macro", L"1", L"A &amp;amp; B&amp;apos;s")), L"A & B's");
    // The same when no XML reader is needed.
    EXPECT_EQ(gmui.StatusValue(Reply(L"Macro", L"1", L"HK4Q$1&amp;amp;279")), L"HK4Q$1&279");
}

}  // namespace
}  // namespace corvane::test
