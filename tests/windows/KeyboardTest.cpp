#include "windows/MainWindowTest.h"

#include "platform/SystemClock.h"
#include "ui/form/EnablingRules.h"

namespace corvane::test {
namespace {

class KeyboardTest : public MainWindowTest {
protected:
    // True when the window or its dialog keyboard made use of it.
    bool Press(HWND focused, WPARAM key) const {
        MSG message{};
        message.hwnd = focused;
        message.message = WM_KEYDOWN;
        message.wParam = key;
        return window->TranslateKey(message);
    }
};

TEST_F(KeyboardTest, EscapeClosesByWayOfTheExitButton) {
    Show();
    actions.onButton = [this] { window->Close(); };

    PressInLoop(Native(form.chkGlobalEnable), VK_ESCAPE);

    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"button cmdExit"}));
    EXPECT_EQ(actions.closeQuestions, 1);
    EXPECT_EQ(window->handle(), nullptr);
}

TEST_F(KeyboardTest, EnterPressesTheDefaultButton) {
    Show();
    actions.onButton = [this] { window->Close(); };

    PressInLoop(Native(form.chkGlobalEnable), VK_RETURN);

    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"button cmdProcessCall"}));
}

// The state of the keyboard for as long as it lives: these keys are down, no other.
class HeldKeys {
public:
    explicit HeldKeys(std::initializer_list<int> keys) {
        BYTE state[256] = {};
        for (const int key : keys)
            state[key] = 0x80;
        SetKeyboardState(state);
    }
    ~HeldKeys() {
        BYTE state[256] = {};
        SetKeyboardState(state);
    }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;
};

class ManyLinesTest : public KeyboardTest {
protected:
    ManyLinesTest() { form.SelectTab(form.tabstripOptions, OptionsTab::about); }
};

TEST_F(ManyLinesTest, EscapeClosesByWayOfTheExitButton) {
    Show();
    EXPECT_TRUE(Press(Native(form.txtAbout), VK_ESCAPE));
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"button cmdExit"}));
}

TEST_F(ManyLinesTest, TabLeavesTheBoxForthAndBack) {
    Show();
    SetFocus(Native(form.txtAbout));
    {
        const HeldKeys none{};
        EXPECT_TRUE(Press(GetFocus(), VK_TAB));
    }
    EXPECT_EQ(GetFocus(), Native(form.cmdParams));
    SetFocus(Native(form.txtAbout));
    {
        const HeldKeys held{VK_SHIFT};
        EXPECT_TRUE(Press(GetFocus(), VK_TAB));
    }
    EXPECT_EQ(GetFocus(), Native(form.tabstripOptions));
}

struct TabKey {
    const char* name;
    WPARAM key;
    bool shift;
    int from;
    int to;
};

class TabKeyTest : public KeyboardTest, public testing::WithParamInterface<TabKey> {};

TEST_P(TabKeyTest, StepsThroughTheTabs) {
    const TabKey& each = GetParam();
    form.SelectTab(form.tabstripOptions, each.from);
    Show();
    const HeldKeys held = each.shift ? HeldKeys{VK_CONTROL, VK_SHIFT} : HeldKeys{VK_CONTROL};
    PostMessageW(Native(form.cmdExit), WM_KEYDOWN, each.key, 1);
    window->Close();
    window->RunMessageLoop();
    EXPECT_EQ(form.tabstripOptions.selectedTab(), each.to);
    EXPECT_EQ(form.tabstripParams.selectedTab(), 0);
}

INSTANTIATE_TEST_SUITE_P(Keys, TabKeyTest,
                         testing::Values(TabKey{"CtrlTab", VK_TAB, false, 1, 2},
                                         TabKey{"CtrlTabAtTheEnd", VK_TAB, false, 5, 0},
                                         TabKey{"CtrlShiftTab", VK_TAB, true, 1, 0},
                                         TabKey{"CtrlShiftTabAtTheBegin", VK_TAB, true, 0, 5},
                                         TabKey{"CtrlPageDown", VK_NEXT, false, 2, 3},
                                         TabKey{"CtrlPageUp", VK_PRIOR, false, 2, 1}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(KeyboardTest, TabKeysLeaveAStripThatCannotBeUsed) {
    Show();
    form.tabstripOptions.setEnabled(false);
    const HeldKeys held{VK_CONTROL};
    EXPECT_TRUE(Press(Native(form.cmdExit), VK_TAB));
    EXPECT_EQ(form.tabstripOptions.selectedTab(), 0);
}

TEST_F(KeyboardTest, TabKeysStepThroughTheStripThatHasTheFocus) {
    Show();
    Click(form.cmdParams);
    const HeldKeys held{VK_CONTROL};
    PostMessageW(Native(form.txtOutboundPhone), WM_KEYDOWN, VK_TAB, 1);
    window->Close();
    window->RunMessageLoop();
    EXPECT_EQ(form.tabstripParams.selectedTab(), 1);
    EXPECT_EQ(form.tabstripOptions.selectedTab(), 0);
}

TEST_F(KeyboardTest, CtrlASelectsAllOfAReadOnlyBox) {
    form.txtAbout.setText(L"one\r\ntwo");
    form.SelectTab(form.tabstripOptions, OptionsTab::about);
    Show();
    const HeldKeys held{VK_CONTROL};
    DWORD begin = 9;
    DWORD end = 0;
    const HWND box = Native(form.txtAbout);
    PostMessageW(box, WM_KEYDOWN, 'A', 1);
    // Read while the loop still serves messages: the window's end takes the box with it.
    actions.onClose = [&] {
        SendMessageW(box, EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                     reinterpret_cast<LPARAM>(&end));
    };
    window->Close();
    window->RunMessageLoop();
    EXPECT_EQ(begin, 0U);
    EXPECT_EQ(end, 8U);
}

TEST_F(KeyboardTest, AltGrWithALetterIsNoShortcut) {
    form.txtOutboundPhone.setText(L"12");
    Show();
    const HWND box = Native(form.txtOutboundPhone);
    SendMessageW(box, EM_SETSEL, 2, 2);
    {
        const HeldKeys held{VK_CONTROL, VK_MENU};
        Press(box, 'A');
    }
    EXPECT_EQ(SendMessageW(box, EM_GETSEL, 0, 0), MAKELRESULT(2, 2));
    {
        const HeldKeys held{VK_CONTROL};
        Press(box, 'A');
    }
    EXPECT_EQ(SendMessageW(box, EM_GETSEL, 0, 0), MAKELRESULT(0, 2));
}

// Where the key brings the focus within the group of the moments of history.
class ArrowTest : public KeyboardTest {
protected:
    void Press(WPARAM key) {
        actions.told.clear();
        EXPECT_TRUE(KeyboardTest::Press(GetFocus(), key));
    }
};

TEST_F(ArrowTest, PassesOverADisabledOption) {
    form.optProcessStart.setSelected(true);
    form.optProcessConnect.setEnabled(false);
    form.SelectTab(form.tabstripOptions, OptionsTab::history);
    Show();
    SetFocus(Native(form.optProcessStart));

    Press(VK_DOWN);
    EXPECT_EQ(GetFocus(), Native(form.optProcessEnd));
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"option optProcessEnd"}));
    Press(VK_UP);
    EXPECT_EQ(GetFocus(), Native(form.optProcessStart));
}

TEST_F(ArrowTest, StaysAtTheOnlyUsableOption) {
    form.optProcessStart.setSelected(true);
    form.optProcessConnect.setEnabled(false);
    form.optProcessEnd.setEnabled(false);
    form.SelectTab(form.tabstripOptions, OptionsTab::history);
    Show();
    SetFocus(Native(form.optProcessStart));
    Press(VK_RIGHT);
    EXPECT_EQ(GetFocus(), Native(form.optProcessStart));
    EXPECT_TRUE(actions.told.empty());
}

TEST_F(ArrowTest, TheBoxThatTheUserIsInIsCheckedBefore) {
    form.SelectTab(form.tabstripOptions, OptionsTab::history);
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtLinkedItemPath));
    SetFocus(Native(form.optProcessStart));
    Press(VK_DOWN);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtLinkedItemPath unchanged"}));
    EXPECT_EQ(GetFocus(), Native(form.txtLinkedItemPath));
}

TEST_F(KeyboardTest, EnterPressesNoButtonThatCannotBePressed) {
    Show();
    form.cmdProcessCall.setEnabled(false);
    SetFocus(Native(form.chkGlobalEnable));
    EXPECT_EQ(SendMessageW(window->handle(), DM_GETDEFID, 0, 0), 0);
    form.cmdProcessCall.setEnabled(true);
    EXPECT_EQ(LOWORD(SendMessageW(window->handle(), DM_GETDEFID, 0, 0)),
              ControlId(form.cmdProcessCall.row()));
}

TEST_F(KeyboardTest, EnterPressesTheButtonThatHasTheFocus) {
    Show();
    actions.onButton = [this] { window->Close(); };
    PressInLoop(Native(form.cmdSaveSettings), VK_RETURN);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"button cmdSaveSettings"}));
}

TEST_F(KeyboardTest, KeysMoveTheFocusAlsoWhileAProcedureWaits) {
    SystemClock clock(window.get());
    Show();
    SetFocus(Native(form.cmdDefaults));
    PostMessageW(Native(form.cmdDefaults), WM_KEYDOWN, VK_TAB, 1);
    clock.PumpEvents();
    EXPECT_EQ(GetFocus(), Native(form.cmdSaveSettings));
}

TEST_F(KeyboardTest, FocusLeavesAPageThatIsHidden) {
    Show();
    SetFocus(Native(form.chkGlobalEnable));
    form.SelectTab(form.tabstripOptions, OptionsTab::status);
    EXPECT_EQ(GetFocus(), Native(form.tabstripOptions));
}

TEST_F(KeyboardTest, FocusLeavesAControlThatIsDisabled) {
    Show();
    SetFocus(Native(form.cmdSaveSettings));
    form.cmdSaveSettings.setEnabled(false);
    EXPECT_EQ(GetFocus(), Native(form.cmdProcessCall));
}

TEST_F(KeyboardTest, TheMasterSwitchKeepsTheFocusWhenItDisablesTheRest) {
    Show();
    form.chkGlobalEnable.setChecked(true);
    SetFocus(Native(form.chkGlobalEnable));
    form.chkGlobalEnable.setChecked(false);
    EXPECT_EQ(GetFocus(), Native(form.chkGlobalEnable));
    RunEnablingRulesOnActivation(form);
    EXPECT_EQ(GetFocus(), Native(form.chkGlobalEnable));
}

}  // namespace
}  // namespace corvane::test
