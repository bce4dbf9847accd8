#include "Keyboard.h"

#include <algorithm>

#include "support/windows/KernelHandle.h"
#include "WindowTest.h"

namespace end_to_end {
namespace {

using Names = std::vector<std::string>;

// Where Tab stops on each page while everything on it is usable: from top to bottom, in a line from
// left to right, once in a group of options.
const std::vector<Names> optionPages = {
    {"chkGlobalEnable", "chkTrimOutboundPrefix", "txtOutboundMaxLength"},
    {"optPhone123", "chkSearchInAddlContacts", "chkIgnoreShortCallerID", "txtCallerIDMinLength",
     "chkFormatCallerID", "txtCallerIDFormat", "chkCallerIDIgnoreLeading1",
     "chkCallerIDRemoveSpaces", "chkPopOnInboundCall", "optPopOnInboundCallStart",
     "optPopNewWindow"},
    {"chkCreateHistory", "optProcessConnect", "chkFillInRef", "chkAutoOpenHistory",
     "optOpenHistoryBeforeSaving", "optCompleteCallByType", "chkCreateLink", "txtLinkedItemPath",
     "chkDelayAddingLink", "txtDelayAddingLinkSeconds", "chkConfirmRecentRecordingFile",
     "txtRecordingFileMaxAgeSeconds", "chkConfirmLinkCallIdentifier"},
    {"chkAlwaysShowForm", "chkAutoProcess", "chkWriteLog", "chkLogCOMCalls",
     "txtCOMDurationSeconds"},
    {"txtStatus"},
    {"txtAbout"},
};
const std::vector<Names> paramPages = {
    {"txtOutboundPhone", "txtOutboundPhoneAsDialed"},
    {"txtNotifType", "txtCallerID", "txtCallType", "txtCallIdentifier", "txtCallerIDDigits",
     "txtCallerIDFormatted"},
    {"txtAppPath", "txtGMInstallDir", "txtGoldMineUserIniPath", "cmdOpenUserINI",
     "txtGoldMineGMIniPath", "cmdOpenGMINI", "txtLogPath", "cmdOpenLog",
     "txtCommandLineAPILogLevel", "cmdChangeLogLevel", "txtCommandLineAPILogPath",
     "cmdOpenPluginLog"},
    {"txt3CXCRMCallNotifierPath", "txt3CXOutboundCallNotifierPath",
     "txtCommandLineAPIPluginDLLPath"},
};

// Once round the window, beginning behind the strip of the options.
Names Round(const Names& optionPage, const Names& paramPage) {
    return Joined({optionPage,
                   {"cmdParams", "cmdDefaults", "cmdSaveSettings", "cmdExit", "tabstripParams"},
                   paramPage,
                   {"tabstripOptions"}});
}

class KeyboardTest : public WindowTest {
protected:
    // The window in the foreground, and the focus on one of its controls.
    HWND ShowAt(ProgramRun& run, const std::string& control) {
        const HWND window = Show(run);
        BringToForeground(window);
        Focus(window, control);
        EXPECT_TRUE(HasFocus(window, control));
        return window;
    }

    // Presses the keys until the focus is back where it was; the controls that it came to.
    static Names Walk(HWND window, std::initializer_list<WORD> keys) {
        constexpr size_t moreThanThereAre = 100;
        const std::string begin = FocusedControl(window);
        Names walked;
        std::string before = begin;
        do {
            Press(keys);
            std::string now;
            if (!WaitUntil([&] { return (now = FocusedControl(window)) != before; })) {
                ADD_FAILURE() << "the focus stays at " << before;
                break;
            }
            walked.push_back(now);
            before = now;
        } while (before != begin && walked.size() < moreThanThereAre);
        return walked;
    }
};

TEST_F(KeyboardTest, TabFollowsTheReadingOrderOnEveryPageForthAndBack) {
    CloseGoldMine();
    SetAll({{"chkAlwaysShowForm", "1"}, {"chkCreateLink", "1"}, {"txtLinkedItemPath", "C:\\"}});
    ProgramRun run = Start("");
    const HWND window = ShowAt(run, "tabstripOptions");
    Click(window, "cmdParams");

    for (size_t page = 0; page < optionPages.size(); ++page) {
        const Names& paramPage = paramPages[page % paramPages.size()];
        SelectTab(window, "tabstripOptions", static_cast<int>(page));
        SelectTab(window, "tabstripParams", static_cast<int>(page % paramPages.size()));
        Focus(window, "tabstripOptions");
        Names expected = Round(optionPages[page], paramPage);
        EXPECT_EQ(Walk(window, {VK_TAB}), expected) << "page " << page;
        expected.pop_back();
        std::reverse(expected.begin(), expected.end());
        expected.push_back("tabstripOptions");
        EXPECT_EQ(Walk(window, {VK_SHIFT, VK_TAB}), expected) << "page " << page;
    }
    Close(run, window);  // walking through the options changes none
}

TEST_F(KeyboardTest, TabLeavesOutWhatCannotBeUsed) {
    CloseGoldMine();
    Set("chkGlobalEnable", "0");
    ProgramRun run = Start("");
    const HWND window = ShowAt(run, "chkGlobalEnable");
    EXPECT_EQ(Walk(window, {VK_TAB}), (Names{"cmdSaveSettings", "cmdExit", "chkGlobalEnable"}));
    Close(run, window);
}

TEST_F(KeyboardTest, SwitchingTheLinkOffKeepsTheKeyboardAtTheSwitch) {
    CloseGoldMine();
    const HWND other = CreateWindowExW(0, L"Static", L"another window", WS_OVERLAPPED | WS_VISIBLE,
                                       0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    ProgramRun run = Start("");
    const HWND window = ShowAt(run, "chkGlobalEnable");

    Press({VK_SPACE});
    EXPECT_TRUE(WaitUntil([&] { return !ControlEnabled(window, "chkTrimOutboundPrefix"); }));
    EXPECT_TRUE(HasFocus(window, "chkGlobalEnable")) << FocusedControl(window);
    BringToForeground(other);
    EXPECT_TRUE(WaitUntil([&] { return FocusedControl(window).empty(); }));
    BringToForeground(window);
    EXPECT_TRUE(HasFocus(window, "chkGlobalEnable")) << FocusedControl(window);

    DestroyWindow(other);
    CloseAndDiscard(run, window);
}

TEST_F(KeyboardTest, AGroupWhoseSelectedOptionCannotBeUsedIsReachedAndStaysAsItIs) {
    CloseGoldMine();
    SetAll({{"optCompleteScheduledCall", "True"}, {"optOpenHistoryAfterSaving", "True"}});
    ProgramRun run = Start("");
    const HWND window = Show(run);
    SelectTab(window, "tabstripOptions", 2);
    BringToForeground(window);
    Focus(window, "chkAutoOpenHistory");

    Press({VK_TAB});
    EXPECT_TRUE(HasFocus(window, "optCompleteCallByType")) << FocusedControl(window);
    Press({VK_TAB});
    EXPECT_TRUE(HasFocus(window, "optOpenHistoryAfterSaving")) << FocusedControl(window);

    EXPECT_TRUE(Checked(window, "optCompleteScheduledCall"));
    Close(run, window);  // passing by is no change
}

struct ArrowCase {
    const char* name;
    int tab;
    Names members;  // of one group; the first is selected at start
};

class ArrowKeyTest : public KeyboardTest, public testing::WithParamInterface<ArrowCase> {};

TEST_P(ArrowKeyTest, SelectsTheNextOptionOfTheGroupAndNoOther) {
    const ArrowCase& each = GetParam();
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = Show(run);
    SelectTab(window, "tabstripOptions", each.tab);
    BringToForeground(window);
    Focus(window, each.members[0]);

    const size_t count = each.members.size();
    const auto goesTo = [&](WORD key, size_t member) {
        Press({key});
        EXPECT_TRUE(HasFocus(window, each.members[member]))
            << each.members[member] << " and not " << FocusedControl(window);
        for (size_t other = 0; other < count; ++other)
            EXPECT_EQ(Checked(window, each.members[other]), other == member) << each.members[other];
    };
    for (size_t step = 1; step <= count; ++step)
        goesTo(step % 2 == 0 ? VK_RIGHT : VK_DOWN, step % count);
    for (size_t step = 1; step <= count; ++step)
        goesTo(step % 2 == 0 ? VK_LEFT : VK_UP, count - step);
    CloseAndDiscard(run, window);
}

INSTANTIATE_TEST_SUITE_P(
    Groups, ArrowKeyTest,
    testing::Values(
        ArrowCase{"PhoneFields", 1, {"optPhone123", "optPhone1Only"}},
        ArrowCase{"PopMoment", 1, {"optPopOnInboundCallStart", "optPopOnInboundCallConnect"}},
        ArrowCase{"ContactWindow", 1, {"optPopNewWindow", "optPopCurrentWindow"}},
        ArrowCase{"HistoryMoment", 2, {"optProcessConnect", "optProcessEnd", "optProcessStart"}},
        ArrowCase{"Sequence", 2, {"optOpenHistoryBeforeSaving", "optOpenHistoryAfterSaving"}},
        ArrowCase{
            "Type",
            2,
            {"optCompleteCallByType", "optCompleteScheduledCall", "optCompleteUnscheduledCall"}}),
    NameOf);

TEST_F(KeyboardTest, ArrowsPassOverOptionsThatCannotBeUsed) {
    CloseGoldMine();
    Set("optOpenHistoryAfterSaving", "True");
    ProgramRun run = Start("");
    const HWND window = Show(run);
    SelectTab(window, "tabstripOptions", 2);
    BringToForeground(window);
    Focus(window, "optCompleteCallByType");
    // Its alternatives are of no use when the item is saved first.
    Press({VK_DOWN});
    Press({VK_TAB});
    EXPECT_TRUE(HasFocus(window, "optOpenHistoryAfterSaving")) << FocusedControl(window);
    EXPECT_TRUE(Checked(window, "optCompleteCallByType"));
    Close(run, window);
}

TEST_F(KeyboardTest, ControlTabAndControlPageKeysTurnThePages) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = ShowAt(run, "chkGlobalEnable");
    const auto shows = [&](const std::string& control) {
        return WaitUntil([&] { return IsWindowVisible(ControlNamed(window, control)) != FALSE; });
    };
    Press({VK_CONTROL, VK_TAB});
    EXPECT_TRUE(shows("optPhone123"));
    Press({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(shows("chkCreateHistory"));
    Press({VK_CONTROL, VK_SHIFT, VK_TAB});
    EXPECT_TRUE(shows("optPhone123"));
    Press({VK_CONTROL, VK_PRIOR});
    EXPECT_TRUE(shows("chkGlobalEnable"));
    Press({VK_CONTROL, VK_PRIOR});
    EXPECT_TRUE(shows("txtAbout"));

    Press({VK_MENU, 'P'});
    EXPECT_TRUE(shows("tabstripParams"));
    Focus(window, "txtOutboundPhone");
    Press({VK_CONTROL, VK_NEXT});
    EXPECT_TRUE(shows("txtCallerID"));
    EXPECT_TRUE(shows("txtAbout"));
    Close(run, window);
}

TEST_F(KeyboardTest, KeysChangeOptionsAndTheirLettersPressTheButtons) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = ShowAt(run, "chkTrimOutboundPrefix");

    Press({VK_SPACE});
    EXPECT_TRUE(WaitUntil([&] { return !Checked(window, "chkTrimOutboundPrefix"); }));
    Press({VK_SPACE});
    EXPECT_TRUE(WaitUntil([&] { return Checked(window, "chkTrimOutboundPrefix"); }));
    Press({VK_TAB});
    TypeKeys("12");
    EXPECT_TRUE(TextIs(window, "txtOutboundMaxLength", "12")) << "arriving selects all";
    Press({VK_MENU, 'S'});
    EXPECT_TRUE(WaitUntil([] { return OwnValue("txtOutboundMaxLength") == "12"; }));
    Press({VK_MENU, 'D'});
    EXPECT_TRUE(TextIs(window, "txtOutboundMaxLength", "10"));
    Press({VK_MENU, 'P'});
    EXPECT_TRUE(TextIs(window, "cmdParams", "<< &Params"));
    Press({VK_MENU, 'P'});
    EXPECT_TRUE(TextIs(window, "cmdParams", "&Params >>"));
    Press({VK_MENU, 'X'});
    EXPECT_EQ(Finish(run, {"No"}).boxes, Boxes{exitQuestion});
}

TEST_F(KeyboardTest, EscapeClosesLikeTheExitButton) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = ShowAt(run, "chkTrimOutboundPrefix");
    Press({VK_SPACE});
    EXPECT_TRUE(WaitUntil([&] { return !Checked(window, "chkTrimOutboundPrefix"); }));

    Press({VK_ESCAPE});
    run.Answer("Cancel");
    EXPECT_TRUE(HasFocus(window, "chkTrimOutboundPrefix")) << FocusedControl(window);
    SelectTab(window, "tabstripOptions", 4);
    Focus(window, "txtStatus");
    Press({VK_ESCAPE});
    EXPECT_EQ(Finish(run, {"No"}).boxes, (Boxes{exitQuestion, exitQuestion}))
        << "out of a box of many lines as well";
}

TEST_F(KeyboardTest,
       EscapeInABoxWithAWrongTextAsksFirstAndLeavesTheUserThereOnlyWhenItWouldBeSaved) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = ShowAt(run, "txtOutboundMaxLength");
    TypeKeys("99");
    EXPECT_TRUE(
        WaitUntil([&] { return ControlText(window, "txtOutboundMaxLength").find("99") == 0; }));

    Press({VK_ESCAPE});
    run.Answer("Yes");
    run.Answer("OK");

    EXPECT_TRUE(WaitUntil([&] { return HasFocus(window, "txtOutboundMaxLength"); }))
        << FocusedControl(window);
    EXPECT_EQ(OwnValues().count("txtOutboundMaxLength"), 0U);
    Press({VK_ESCAPE});
    EXPECT_EQ(Finish(run, {"No"}).boxes,
              (Boxes{exitQuestion, {"Please enter a numeric value from 1 to 20"}, exitQuestion}));
}

TEST_F(KeyboardTest, EnterPressesTheButtonThatHasTheFocusElseProcessCall) {
    GoldMine();
    SetAll({{"chkAlwaysShowForm", "1"}, {"chkAutoProcess", "0"}, {"chkCreateHistory", "0"}});
    ProgramRun run = Start(ringingCall);
    const HWND window = Show(run);
    BringToForeground(window);
    EXPECT_TRUE(HasFocus(window, "cmdProcessCall")) << FocusedControl(window);

    Focus(window, "cmdParams");
    Press({VK_RETURN});
    EXPECT_TRUE(TextIs(window, "cmdParams", "<< &Params"));
    EXPECT_EQ(Commands(), startUpCommands) << "no call yet";
    Focus(window, "txtCallIdentifier");
    Press({VK_RETURN});
    EXPECT_TRUE(WaitUntil([&] {
        return ControlText(window, "txtStatus").find("Call processing completed") !=
               std::string::npos;
    }));
    BringToForeground(window);  // GoldMine shows its contact
    Press({VK_MENU, 'C'});
    EXPECT_TRUE(WaitUntil([&] {
        const Lines commands = Commands();
        return std::count(commands.begin(), commands.end(), gmapi::Macro("&amp;Phone1")) == 2;
    })) << "its letter processes it again";
    BringToForeground(window);
    Focus(window, "cmdExit");
    Press({VK_RETURN});
    EXPECT_EQ(Finish(run).boxes, Boxes{});
}

TEST_F(KeyboardTest, ComingBackToTheWindowBringsTheFocusToProcessCallWhileItCanBePressed) {
    GoldMine();
    SetAll({{"chkAlwaysShowForm", "1"}, {"chkAutoProcess", "0"}, {"chkCreateHistory", "0"}});
    const HWND other = CreateWindowExW(0, L"Static", L"another window", WS_OVERLAPPED | WS_VISIBLE,
                                       0, 0, 100, 100, nullptr, nullptr, nullptr, nullptr);
    for (const bool withCall : {true, false}) {
        ProgramRun run = Start(withCall ? ringingCall : "");
        const HWND window = ShowAt(run, "cmdExit");
        BringToForeground(other);
        EXPECT_TRUE(WaitUntil([&] { return FocusedControl(window).empty(); }));

        BringToForeground(window);

        EXPECT_TRUE(HasFocus(window, withCall ? "cmdProcessCall" : "cmdExit"))
            << FocusedControl(window);
        Close(run, window);
    }
    DestroyWindow(other);
}

TEST_F(KeyboardTest, ABoxOfTheProgramLeavesTheFocusWhereItWas) {
    GoldMine();
    SetAll({{"chkAlwaysShowForm", "1"}, {"chkAutoProcess", "0"}, {"chkCreateHistory", "0"}});
    ProgramRun run = Start(ringingCall);
    const HWND window = Show(run);
    BringToForeground(window);
    Click(window, "cmdParams");
    SelectTab(window, "tabstripParams", 2);
    Focus(window, "cmdOpenPluginLog");
    Press({VK_SPACE});
    run.Answer("OK");
    EXPECT_TRUE(WaitUntil([&] { return HasFocus(window, "cmdOpenPluginLog"); }))
        << FocusedControl(window);
    Press({VK_SPACE});
    run.Answer("OK");
    const Box noLog{"3CX Command Line API Plugin log file does not exist."};
    Close(run, window, {noLog, noLog});
}

TEST_F(KeyboardTest, EnterDoesNothingWhileProcessCallCannotBePressed) {
    CloseGoldMine();
    ProgramRun run = Start("");
    const HWND window = ShowAt(run, "chkGlobalEnable");
    Press({VK_RETURN});
    Press({VK_TAB});
    EXPECT_TRUE(HasFocus(window, "chkTrimOutboundPrefix")) << FocusedControl(window);
    EXPECT_TRUE(Checked(window, "chkGlobalEnable"));
    Close(run, window);
}

TEST_F(KeyboardTest, KeysWorkWhileTheEndWaitsForGoldMinesDialog) {
    GoldMine().SetFaults("MenuCommand event on end-to-end tests dialog\n");
    const KernelHandle opens(CreateEventW(nullptr, TRUE, FALSE, L"end-to-end tests dialog"));
    SetAll({{"chkAlwaysShowForm", "1"}, {"chkAutoProcess", "0"}});
    ProgramRun run = Start("/N:C /C:5551234567 /T:I /I:7");
    const HWND window = Show(run);
    PressControl(window, "cmdProcessCall");
    EXPECT_TRUE(WaitUntil([&] {
        return ControlText(window, "txtStatus").find("Call processing completed") !=
               std::string::npos;
    }));
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitUntil([&] {
        return ControlText(window, "txtStatus").find("Waiting for history Ref and Notes") !=
               std::string::npos;
    }));
    BringToForeground(window);

    std::string before;
    EXPECT_TRUE(WaitUntil([&] { return !(before = FocusedControl(window)).empty(); }));
    Press({VK_TAB});

    EXPECT_TRUE(WaitUntil([&] { return FocusedControl(window) != before; }));
    EXPECT_TRUE(IsWindowVisible(window)) << "still waiting";
    SetEvent(opens.get());
    Finish(run);
}

}  // namespace
}  // namespace end_to_end
