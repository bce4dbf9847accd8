#include "windows/MainWindowTest.h"

namespace corvane::test {
namespace {

class BoxVisitTest : public MainWindowTest {};

TEST_F(BoxVisitTest, TypingChangesTheFormAndMakesTheSettingsDirty) {
    form.txtOutboundMaxLength.setText(L"1");
    Show();
    form.SettingsDirty = false;
    const HWND box = Native(form.txtOutboundMaxLength);
    SendMessageW(box, EM_SETSEL, 1, 1);

    Type(form.txtOutboundMaxLength, L"23");

    EXPECT_EQ(form.txtOutboundMaxLength.text(), L"123");
    EXPECT_EQ(TextOf(box), L"123");
    EXPECT_TRUE(form.SettingsDirty);
}

// A native box cannot hold each text: what it answers after being told one may be another.
TEST_F(BoxVisitTest, WhatTheFormShowsIsNoTyping) {
    const std::wstring before(L"1\0x", 3);
    const std::wstring after(L"2\0x", 3);
    form.txtCallerID.setText(before);
    Show();
    EXPECT_EQ(form.txtCallerID.text(), before);
    form.txtCallerID.setText(after);
    EXPECT_EQ(TextOf(Native(form.txtCallerID)), L"2");
    EXPECT_EQ(form.txtCallerID.text(), after);
}

TEST_F(BoxVisitTest, LeavingABoxAsksWithWhatWasTyped) {
    Show();
    SetFocus(Native(form.txtOutboundMaxLength));
    Type(form.txtOutboundMaxLength, L"7");
    SetFocus(Native(form.chkGlobalEnable));

    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength changed"}));
    EXPECT_EQ(GetFocus(), Native(form.chkGlobalEnable));

    actions.told.clear();
    SetFocus(Native(form.txtOutboundMaxLength));
    SetFocus(Native(form.chkGlobalEnable));
    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength unchanged"}));
}

TEST_F(BoxVisitTest, BoxWhoseCheckFailsKeepsTheFocusUntilItPasses) {
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtOutboundMaxLength));
    Type(form.txtOutboundMaxLength, L"x");
    SetFocus(Native(form.chkGlobalEnable));

    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    EXPECT_EQ(GetFocus(), Native(form.txtOutboundMaxLength));

    actions.mayLeave = true;
    actions.told.clear();
    SetFocus(Native(form.chkGlobalEnable));
    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength changed"}))
        << "compared with the text that passed last";
    EXPECT_EQ(GetFocus(), Native(form.chkGlobalEnable));
}

TEST_F(BoxVisitTest, TwoBoxesWhoseChecksFailDoNotFightForTheFocus) {
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtOutboundMaxLength));
    Type(form.txtOutboundMaxLength, L"x");
    SetFocus(Native(form.txtCallerIDFormat));

    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    PumpWhatIsPending();

    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength changed"}));
    EXPECT_EQ(GetFocus(), Native(form.txtOutboundMaxLength));
}

TEST_F(BoxVisitTest, FromBoxToBoxEachIsLeftOnce) {
    Show();
    SetFocus(Native(form.txtOutboundMaxLength));
    SetFocus(Native(form.txtCallerIDFormat));
    ASSERT_TRUE(PumpUntil([this] { return actions.told.size() == 1; }));
    Type(form.txtCallerIDFormat, L"#");
    SetFocus(Native(form.cmdExit));
    ASSERT_TRUE(PumpUntil([this] { return actions.told.size() == 2; }));
    PumpWhatIsPending();
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength unchanged",
                                                       L"leave txtCallerIDFormat changed"}));
}

TEST_F(BoxVisitTest, GoingToAnotherWindowIsNoLeaving) {
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtOutboundMaxLength));
    Type(form.txtOutboundMaxLength, L"x");
    SetFocus(nullptr);
    PumpWhatIsPending();
    EXPECT_TRUE(actions.told.empty());
    SetFocus(Native(form.txtOutboundMaxLength));
    actions.mayLeave = true;
    SetFocus(Native(form.cmdExit));
    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength changed"}));
}

TEST_F(BoxVisitTest, AButtonActsOnlyAfterTheCheckOfTheBoxThatTheUserIsIn) {
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtOutboundMaxLength));
    Type(form.txtOutboundMaxLength, L"x");
    SendMessageW(window->handle(), WM_COMMAND,
                 MAKEWPARAM(ControlId(form.cmdSaveSettings.row()), BN_CLICKED), 0);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength changed"}));

    actions.mayLeave = true;
    SendMessageW(window->handle(), WM_COMMAND,
                 MAKEWPARAM(ControlId(form.cmdSaveSettings.row()), BN_CLICKED), 0);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength changed",
                                                       L"leave txtOutboundMaxLength changed",
                                                       L"button cmdSaveSettings"}));
}

TEST_F(BoxVisitTest, ABoxWhoseCheckFailsKeepsNobodyFromClosing) {
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtOutboundMaxLength));
    SendMessageW(window->handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{}));
    EXPECT_EQ(actions.closeQuestions, 1);
    EXPECT_EQ(window->handle(), nullptr);
}

TEST_F(BoxVisitTest, WhatIsStillBeingTypedIsCheckedWhenItIsToBeUsed) {
    Show();
    SetFocus(Native(form.txtOutboundMaxLength));
    Type(form.txtOutboundMaxLength, L"x");
    actions.mayLeave = false;
    EXPECT_FALSE(form.FinishEntry());
    EXPECT_EQ(GetFocus(), Native(form.txtOutboundMaxLength));
    actions.mayLeave = true;
    EXPECT_TRUE(form.FinishEntry());
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength changed",
                                                       L"leave txtOutboundMaxLength changed"}));
}

TEST_F(BoxVisitTest, ABoxThatOnlyInformsIsNotChecked) {
    Show();
    SetFocus(Native(form.txtAppPath));
    SetFocus(Native(form.cmdExit));
    PumpWhatIsPending();
    EXPECT_TRUE(actions.told.empty());
}

// The check may show a message box, and that serves messages.
TEST_F(BoxVisitTest, NothingActsWhileTheCheckRuns) {
    Show();
    SetFocus(Native(form.txtOutboundMaxLength));
    bool asked = false;
    actions.onLeave = [&] {
        if (std::exchange(asked, true))
            return;
        Click(form.chkGlobalEnable);
        EXPECT_FALSE(form.FinishEntry());
        SetFocus(Native(form.txtCallerIDFormat));
        PumpWhatIsPending();
    };
    Click(form.cmdSaveSettings);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength unchanged",
                                                       L"button cmdSaveSettings"}));
}

// Enter presses the default button without leaving the box.
TEST_F(BoxVisitTest, ABoxIsCheckedEachTimeThatAButtonIsPressedFromIt) {
    Show();
    const auto press = [this] {
        SendMessageW(window->handle(), WM_COMMAND,
                     MAKEWPARAM(ControlId(form.cmdProcessCall.row()), BN_CLICKED), 0);
    };
    SetFocus(Native(form.txtCallerIDFormat));
    Type(form.txtCallerIDFormat, L"1");
    press();
    press();
    Type(form.txtCallerIDFormat, L"2");
    press();
    const std::wstring pressed = L"button cmdProcessCall";
    EXPECT_EQ(actions.told,
              (std::vector<std::wstring>{L"leave txtCallerIDFormat changed", pressed,
                                         L"leave txtCallerIDFormat unchanged", pressed,
                                         L"leave txtCallerIDFormat changed", pressed}));
}

TEST_F(BoxVisitTest, ACheckBoxIsClickedOnlyAfterTheCheckOfTheBoxThatTheUserIsIn) {
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtOutboundMaxLength));
    Type(form.txtOutboundMaxLength, L"x");
    const auto click = [this] {
        SendMessageW(GetParent(Native(form.chkGlobalEnable)), WM_COMMAND,
                     MAKEWPARAM(ControlId(form.chkGlobalEnable.row()), BN_CLICKED), 0);
    };
    click();
    actions.mayLeave = true;
    click();
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength changed",
                                                       L"leave txtOutboundMaxLength changed",
                                                       L"check chkGlobalEnable"}));
}

// Changing the page takes the focus away while the page is being hidden.
TEST_F(BoxVisitTest, ABoxIsLeftWhenItsPageIsTurned) {
    form.SelectTab(form.tabstripOptions, OptionsTab::callerID);
    Show();
    SetFocus(Native(form.txtCallerIDFormat));
    Type(form.txtCallerIDFormat, L"#");

    form.SelectTab(form.tabstripOptions, OptionsTab::advanced);
    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    SetFocus(Native(form.txtCOMDurationSeconds));
    Type(form.txtCOMDurationSeconds, L"1");
    SetFocus(Native(form.cmdExit));
    ASSERT_TRUE(PumpUntil([this] { return actions.told.size() == 2; }));

    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtCallerIDFormat changed",
                                                       L"leave txtCOMDurationSeconds changed"}));
}

// The next box is entered while another program has the keyboard.
TEST_F(BoxVisitTest, ABoxIsLeftAlsoWhenTheFocusWasAwayInBetween) {
    Show();
    SetFocus(Native(form.txtOutboundMaxLength));
    Type(form.txtOutboundMaxLength, L"1");
    SetFocus(nullptr);
    PumpWhatIsPending();
    ASSERT_TRUE(actions.told.empty());
    SetFocus(Native(form.txtCallerIDFormat));
    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"leave txtOutboundMaxLength changed"}));
}

TEST_F(BoxVisitTest, BoxWhoseCheckFailsBringsItsPageBack) {
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtOutboundMaxLength));
    ClickTab(form.tabstripOptions, OptionsTab::about);

    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    EXPECT_EQ(form.tabstripOptions.selectedTab(), OptionsTab::general);
    EXPECT_EQ(GetFocus(), Native(form.txtOutboundMaxLength));
}

}  // namespace
}  // namespace corvane::test
