#include "windows/MainWindowTest.h"

#include "platform/SystemClock.h"
#include "ui/form/EnablingRules.h"
#include "ui/window/Dpi.h"

namespace corvane::test {
namespace {

TEST_F(MainWindowTest, ThereIsNoWindowUntilTheFormIsShown) {
    form.chkGlobalEnable.setChecked(true);
    form.setCaption(L"title");
    EXPECT_EQ(window->handle(), nullptr);

    Show();

    EXPECT_TRUE(IsWindowVisible(window->handle()));
    EXPECT_EQ(ClassOf(window->handle()), L"frmCorvaneTo3CX");
    EXPECT_EQ(TextOf(window->handle()), L"title");
}

TEST_F(MainWindowTest, EveryControlHasItsIdClassAndCaption) {
    Show();
    for (const Control* control : form.controls()) {
        SCOPED_TRACE(testing::PrintToString(control->name()));
        const HWND native = Native(*control);
        ASSERT_NE(native, nullptr);
        switch (control->spec().kind) {
            case ControlKind::Label:
                EXPECT_EQ(ClassOf(native), L"Static");
                EXPECT_EQ(TextOf(native), control->spec().caption);
                break;
            case ControlKind::TextBox:
                EXPECT_EQ(ClassOf(native), L"Edit");
                EXPECT_EQ(TextOf(native), L"");
                break;
            case ControlKind::CheckBox:
            case ControlKind::OptionButton:
            case ControlKind::CommandButton:
                EXPECT_EQ(ClassOf(native), L"Button");
                EXPECT_EQ(TextOf(native), control->spec().caption);
                break;
            case ControlKind::TabStrip:
                EXPECT_EQ(ClassOf(native), L"SysTabControl32");
                break;
            case ControlKind::Frame:
                EXPECT_EQ(TextOf(native), control->spec().caption);
                break;
        }
    }
}

TEST_F(MainWindowTest, ButtonsHaveTheKindOfTheirControls) {
    Show();
    const auto kind = [this](const Control& control) {
        return GetWindowLongPtrW(Native(control), GWL_STYLE) & BS_TYPEMASK;
    };
    EXPECT_EQ(kind(form.chkGlobalEnable), BS_3STATE);
    EXPECT_EQ(kind(form.cmdSaveSettings), BS_PUSHBUTTON);
    EXPECT_EQ(kind(form.cmdProcessCall), BS_DEFPUSHBUTTON);
}

TEST_F(MainWindowTest, TabsBearTheirNamesInOrder) {
    Show();
    const auto tabs = [this](const Control& strip) {
        std::vector<std::wstring> names;
        const auto count = SendMessageW(Native(strip), TCM_GETITEMCOUNT, 0, 0);
        for (WPARAM tab = 0; tab < static_cast<WPARAM>(count); ++tab) {
            wchar_t text[100] = {};
            TCITEMW item{};
            item.mask = TCIF_TEXT;
            item.pszText = text;
            item.cchTextMax = 100;
            SendMessageW(Native(strip), TCM_GETITEMW, tab, reinterpret_cast<LPARAM>(&item));
            names.emplace_back(item.pszText);
        }
        return names;
    };
    EXPECT_EQ(tabs(form.tabstripOptions),
              (std::vector<std::wstring>{L"General", L"CallerID Handling", L"GoldMine History",
                                         L"Advanced", L"Status", L"About"}));
    EXPECT_EQ(tabs(form.tabstripParams),
              (std::vector<std::wstring>{L"Params from GoldMine", L"Params from 3CX", L"Paths",
                                         L"Registry"}));
}

TEST_F(MainWindowTest, WindowShowsTheStateThatTheFormHadBefore) {
    form.chkGlobalEnable.setChecked(true);
    form.optPhone1Only.setSelected(true);
    form.txtCallerIDFormat.setText(L"(###)###-####");
    form.txtOutboundMaxLength.setEnabled(false);
    form.cmdChangeLogLevel.setCaption(L"changed");

    Show();

    EXPECT_EQ(CheckState(Native(form.chkGlobalEnable)), BST_CHECKED);
    EXPECT_EQ(CheckState(Native(form.optPhone1Only)), BST_CHECKED);
    EXPECT_EQ(TextOf(Native(form.txtCallerIDFormat)), L"(###)###-####");
    EXPECT_FALSE(IsWindowEnabled(Native(form.txtOutboundMaxLength)));
    EXPECT_EQ(TextOf(Native(form.cmdChangeLogLevel)), L"changed");
}

TEST_F(MainWindowTest, ChangesOfTheFormAreShown) {
    Show();

    form.chkFillInRef.setValue(2);
    form.optPhone123.setSelected(true);
    form.optPhone1Only.setSelected(true);
    form.txtCallerID.setText(L"5551234");
    form.txtCallerID.setEnabled(false);
    form.lblParam(13).setCaption(L"Path:");
    form.setCaption(L"new title");

    EXPECT_EQ(CheckState(Native(form.chkFillInRef)), BST_INDETERMINATE);
    EXPECT_EQ(CheckState(Native(form.optPhone123)), BST_UNCHECKED);
    EXPECT_EQ(CheckState(Native(form.optPhone1Only)), BST_CHECKED);
    EXPECT_EQ(TextOf(Native(form.txtCallerID)), L"5551234");
    EXPECT_FALSE(IsWindowEnabled(Native(form.txtCallerID)));
    EXPECT_EQ(TextOf(Native(form.lblParam(13))), L"Path:");
    EXPECT_EQ(TextOf(window->handle()), L"new title");
    EXPECT_TRUE(actions.told.empty()) << "what the program does is no input";
}

TEST_F(MainWindowTest, ClickingACheckBoxChangesFormAndWindow) {
    Show();
    Click(form.chkGlobalEnable);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"check chkGlobalEnable"}));
    EXPECT_TRUE(form.chkGlobalEnable.checked());
    EXPECT_EQ(CheckState(Native(form.chkGlobalEnable)), BST_CHECKED);
    Click(form.chkGlobalEnable);
    EXPECT_FALSE(form.chkGlobalEnable.checked());
    EXPECT_EQ(CheckState(Native(form.chkGlobalEnable)), BST_UNCHECKED);
}

TEST_F(MainWindowTest, EachOfTwoQuickClicksOnACheckBoxCounts) {
    Show();
    const HWND box = Native(form.chkGlobalEnable);
    for (const UINT press : {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
        SendMessageW(box, press, MK_LBUTTON, 0);
        SendMessageW(box, WM_LBUTTONUP, 0, 0);
    }
    EXPECT_EQ(actions.told,
              (std::vector<std::wstring>{L"check chkGlobalEnable", L"check chkGlobalEnable"}));
}

TEST_F(MainWindowTest, ClickingAnOptionSelectsItAndClearsItsGroup) {
    form.optPhone123.setSelected(true);
    form.optPopNewWindow.setSelected(true);
    form.SelectTab(form.tabstripOptions, 1);
    Show();

    Click(form.optPhone1Only);

    EXPECT_TRUE(form.optPhone1Only.selected());
    EXPECT_FALSE(form.optPhone123.selected());
    EXPECT_TRUE(form.optPopNewWindow.selected()) << "another group";
    EXPECT_EQ(CheckState(Native(form.optPhone1Only)), BST_CHECKED);
    EXPECT_EQ(CheckState(Native(form.optPhone123)), BST_UNCHECKED);
}

TEST_F(MainWindowTest, ClickingATabShowsItsFrameInPlaceOfTheFormer) {
    Show();
    EXPECT_TRUE(IsWindowVisible(Native(form.frameOptions(0))));

    ClickTab(form.tabstripOptions, 4);

    EXPECT_EQ(form.tabstripOptions.selectedTab(), 4);
    EXPECT_FALSE(IsWindowVisible(Native(form.frameOptions(0))));
    EXPECT_TRUE(IsWindowVisible(Native(form.frameOptions(4))));
    ClickTab(form.tabstripOptions, 4);
    EXPECT_TRUE(IsWindowVisible(Native(form.frameOptions(4)))) << "clicking it again";
}

TEST_F(MainWindowTest, ParamsButtonWidensAndNarrowsTheWindow) {
    Show();
    const UINT dpi = DpiOfWindow(window->handle());
    const auto width = [this] {
        RECT place{};
        GetWindowRect(window->handle(), &place);
        return place.right - place.left;
    };
    EXPECT_EQ(width(), PixelsFromTwips(7570, dpi));
    EXPECT_FALSE(IsWindowVisible(Native(form.tabstripParams)));

    Click(form.cmdParams);
    EXPECT_EQ(width(), PixelsFromTwips(13920, dpi));
    EXPECT_EQ(TextOf(Native(form.cmdParams)), L"<< &Params");
    EXPECT_TRUE(IsWindowVisible(Native(form.tabstripParams)));
    EXPECT_TRUE(IsWindowVisible(Native(form.frameParams(0))));
    EXPECT_FALSE(IsWindowVisible(Native(form.frameParams(1))));

    ClickTab(form.tabstripParams, 1);
    EXPECT_FALSE(IsWindowVisible(Native(form.frameParams(0))));
    EXPECT_TRUE(IsWindowVisible(Native(form.frameParams(1))));

    Click(form.cmdParams);
    EXPECT_EQ(width(), PixelsFromTwips(7800, dpi));
    EXPECT_EQ(TextOf(Native(form.cmdParams)), L"&Params >>");
    EXPECT_FALSE(IsWindowVisible(Native(form.tabstripParams)));
    EXPECT_FALSE(IsWindowVisible(Native(form.frameParams(1))));
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"button cmdParams", L"button cmdParams"}));
}

TEST_F(MainWindowTest, EveryButtonTellsItsClick) {
    Show();
    for (CommandButton* button : std::initializer_list<CommandButton*>{
             &form.cmdDefaults, &form.cmdSaveSettings, &form.cmdProcessCall, &form.cmdExit,
             &form.cmdOpenUserINI, &form.cmdOpenGMINI, &form.cmdOpenLog, &form.cmdChangeLogLevel,
             &form.cmdOpenPluginLog}) {
        actions.told.clear();
        SendMessageW(window->handle(), WM_COMMAND,
                     MAKEWPARAM(GetDlgCtrlID(Native(*button)), BN_CLICKED),
                     reinterpret_cast<LPARAM>(Native(*button)));
        EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"button " + button->name()}));
    }
}

TEST_F(MainWindowTest, TypingChangesTheFormAndMakesTheSettingsDirty) {
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

TEST_F(MainWindowTest, ReadOnlyBoxesTakeNoTypingAndCanBeSelected) {
    form.txtAppPath.setText(L"C:\\x.exe");
    Show();
    Type(form.txtAppPath, L"y");
    EXPECT_EQ(TextOf(Native(form.txtAppPath)), L"C:\\x.exe");
    SendMessageW(Native(form.txtAppPath), EM_SETSEL, 0, -1);
    DWORD begin = 0;
    DWORD end = 0;
    SendMessageW(Native(form.txtAppPath), EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                 reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(end, 8U);
}

// The colour of a control's inside, painted for a picture.
COLORREF ColourOf(HWND control) {
    RECT area{};
    GetClientRect(control, &area);
    const HDC screen = GetDC(control);
    const HDC picture = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, area.right, area.bottom);
    const HGDIOBJ before = SelectObject(picture, bitmap);
    SendMessageW(control, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(picture),
                 PRF_CLIENT | PRF_ERASEBKGND);
    const COLORREF colour = GetPixel(picture, area.right / 2, area.bottom / 2);
    SelectObject(picture, before);
    DeleteObject(bitmap);
    DeleteDC(picture);
    ReleaseDC(control, screen);
    return colour;
}

TEST_F(MainWindowTest, FolderBoxIsGreyedWhileItCannotBeUsed) {
    form.SelectTab(form.tabstripOptions, OptionsTab::history);
    Show();
    ASSERT_NE(GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_BTNFACE));
    form.txtLinkedItemPath.setEnabled(true);
    EXPECT_EQ(ColourOf(Native(form.txtLinkedItemPath)), GetSysColor(COLOR_WINDOW));
    form.txtLinkedItemPath.setEnabled(false);
    EXPECT_EQ(ColourOf(Native(form.txtLinkedItemPath)), GetSysColor(COLOR_BTNFACE));
    form.txtLinkedItemPath.setEnabled(true);
    EXPECT_EQ(ColourOf(Native(form.txtLinkedItemPath)), GetSysColor(COLOR_WINDOW));
}

TEST_F(MainWindowTest, StatusBoxTakesMoreThan64KiloAndAppendsAtItsEnd) {
    Show();
    const std::wstring line = std::wstring(98, L'x') + L"\r\n";
    std::wstring whole;
    for (int count = 0; count < 1000; ++count) {
        form.txtStatus.Append(line);
        whole += line;
    }
    form.txtStatus.Append(L"the last line");
    whole += L"the last line";

    EXPECT_EQ(TextOf(Native(form.txtStatus)), whole);
    DWORD begin = 0;
    DWORD end = 0;
    SendMessageW(Native(form.txtStatus), EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                 reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(end, whole.size()) << "the newest line is where the box stands";
    EXPECT_EQ(begin, end) << "and nothing is selected";
}

TEST_F(MainWindowTest, TextThatTheStatusBoxHadBeforeIsContinued) {
    form.txtStatus.Append(L"before\r\n");
    Show();
    form.txtStatus.Append(L"after\r\n");
    EXPECT_EQ(TextOf(Native(form.txtStatus)), L"before\r\nafter\r\n");
    form.txtStatus.setText(L"");
    form.txtStatus.Append(L"anew");
    EXPECT_EQ(TextOf(Native(form.txtStatus)), L"anew");
}

TEST_F(MainWindowTest, LeavingABoxAsksWithWhatWasTyped) {
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

TEST_F(MainWindowTest, BoxWhoseCheckFailsKeepsTheFocusUntilItPasses) {
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

TEST_F(MainWindowTest, TwoBoxesWhoseChecksFailDoNotFightForTheFocus) {
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

TEST_F(MainWindowTest, FromBoxToBoxEachIsLeftOnce) {
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

TEST_F(MainWindowTest, GoingToAnotherWindowIsNoLeaving) {
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

TEST_F(MainWindowTest, AButtonActsOnlyAfterTheCheckOfTheBoxThatTheUserIsIn) {
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

TEST_F(MainWindowTest, ABoxWhoseCheckFailsKeepsNobodyFromClosing) {
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtOutboundMaxLength));
    SendMessageW(window->handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{}));
    EXPECT_EQ(actions.closeQuestions, 1);
    EXPECT_EQ(window->handle(), nullptr);
}

TEST_F(MainWindowTest, WhatIsStillBeingTypedIsCheckedWhenItIsToBeUsed) {
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

TEST_F(MainWindowTest, LoggingOffClosesAsTheCloseBoxDoes) {
    Show();
    actions.mayClose = false;
    EXPECT_EQ(SendMessageW(window->handle(), WM_QUERYENDSESSION, 0, 0), FALSE);
    EXPECT_NE(window->handle(), nullptr);
    actions.mayClose = true;
    EXPECT_EQ(SendMessageW(window->handle(), WM_QUERYENDSESSION, 0, 0), TRUE);
    EXPECT_EQ(window->handle(), nullptr);
}

TEST_F(MainWindowTest, LoggingOffLeavesAMessageBoxStanding) {
    Show();
    EnableWindow(window->handle(), FALSE);
    EXPECT_EQ(SendMessageW(window->handle(), WM_QUERYENDSESSION, 0, 0), TRUE);
    EXPECT_EQ(actions.closeQuestions, 0);
    EXPECT_NE(window->handle(), nullptr);
    EnableWindow(window->handle(), TRUE);
}

TEST_F(MainWindowTest, LabelsAreWrittenInTheSystemsColour) {
    Show();
    const HWND label = Native(form.lblDelayAddingLinkSeconds);
    const HDC device = GetDC(label);
    SetTextColor(device, RGB(1, 2, 3));
    SendMessageW(GetParent(label), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(device),
                 reinterpret_cast<LPARAM>(label));
    EXPECT_EQ(GetTextColor(device), GetSysColor(COLOR_WINDOWTEXT));
    ReleaseDC(label, device);
}

// Enter presses the default button without leaving the box.
TEST_F(MainWindowTest, ABoxIsCheckedEachTimeThatAButtonIsPressedFromIt) {
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

TEST_F(MainWindowTest, ACheckBoxIsClickedOnlyAfterTheCheckOfTheBoxThatTheUserIsIn) {
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
TEST_F(MainWindowTest, ABoxIsLeftWhenItsPageIsTurned) {
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
TEST_F(MainWindowTest, ABoxIsLeftAlsoWhenTheFocusWasAwayInBetween) {
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

TEST_F(MainWindowTest, FocusGoesWhereTheFormWantsIt) {
    Show();
    form.SetFocus(form.cmdProcessCall);
    EXPECT_EQ(GetFocus(), Native(form.cmdProcessCall));
}

TEST_F(MainWindowTest, EscapeClosesByWayOfTheExitButton) {
    Show();
    actions.onButton = [this] { window->Close(); };

    PressInLoop(Native(form.chkGlobalEnable), VK_ESCAPE);

    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"button cmdExit"}));
    EXPECT_EQ(actions.closeQuestions, 1);
    EXPECT_EQ(window->handle(), nullptr);
}

TEST_F(MainWindowTest, EnterPressesTheDefaultButton) {
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

struct TabKey {
    const char* name;
    WPARAM key;
    bool shift;
    int from;
    int to;
};

class TabKeyTest : public MainWindowTest, public testing::WithParamInterface<TabKey> {};

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

TEST_F(MainWindowTest, TabKeysStepThroughTheStripThatHasTheFocus) {
    Show();
    Click(form.cmdParams);
    const HeldKeys held{VK_CONTROL};
    PostMessageW(Native(form.txtOutboundPhone), WM_KEYDOWN, VK_TAB, 1);
    window->Close();
    window->RunMessageLoop();
    EXPECT_EQ(form.tabstripParams.selectedTab(), 1);
    EXPECT_EQ(form.tabstripOptions.selectedTab(), 0);
}

TEST_F(MainWindowTest, CtrlASelectsAllOfAReadOnlyBox) {
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

TEST_F(MainWindowTest, AltGrWithALetterIsNoShortcut) {
    form.txtOutboundPhone.setText(L"12");
    Show();
    const HWND box = Native(form.txtOutboundPhone);
    SendMessageW(box, EM_SETSEL, 2, 2);
    MSG message{};
    message.hwnd = box;
    message.message = WM_KEYDOWN;
    message.wParam = 'A';
    {
        const HeldKeys held{VK_CONTROL, VK_MENU};
        window->TranslateKey(message);
    }
    EXPECT_EQ(SendMessageW(box, EM_GETSEL, 0, 0), MAKELRESULT(2, 2));
    {
        const HeldKeys held{VK_CONTROL};
        window->TranslateKey(message);
    }
    EXPECT_EQ(SendMessageW(box, EM_GETSEL, 0, 0), MAKELRESULT(0, 2));
}

// Where the key brings the focus within the group of the moments of history.
class ArrowTest : public MainWindowTest {
protected:
    void Press(WPARAM key) {
        actions.told.clear();
        MSG message{};
        message.hwnd = GetFocus();
        message.message = WM_KEYDOWN;
        message.wParam = key;
        EXPECT_TRUE(window->TranslateKey(message));
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

TEST_F(MainWindowTest, AGroupOfOptionsHasOneTabStop) {
    const auto stops = [this] {
        std::vector<std::wstring> names;
        for (const OptionButton* option : form.GroupOf(form.optProcessEnd)) {
            if (GetWindowLongPtrW(Native(*option), GWL_STYLE) & WS_TABSTOP)
                names.push_back(option->name());
        }
        return names;
    };
    using Names = std::vector<std::wstring>;
    Show();
    EXPECT_EQ(stops(), Names{L"optProcessStart"}) << "none is selected";
    form.optProcessEnd.setSelected(true);
    EXPECT_EQ(stops(), Names{L"optProcessEnd"});
    form.optProcessEnd.setEnabled(false);
    EXPECT_EQ(stops(), Names{L"optProcessStart"}) << "the selected one cannot be used";
    form.optProcessStart.setEnabled(false);
    EXPECT_EQ(stops(), Names{L"optProcessConnect"});
    form.optProcessConnect.setEnabled(false);
    EXPECT_EQ(stops(), Names{});
}

TEST_F(MainWindowTest, TheFocusAloneSelectsNoOption) {
    form.SelectTab(form.tabstripOptions, OptionsTab::history);
    Show();
    SetFocus(Native(form.optProcessStart));
    EXPECT_TRUE(actions.told.empty());
    EXPECT_EQ(CheckState(Native(form.optProcessStart)), BST_UNCHECKED);
    Click(form.optProcessStart);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"option optProcessStart"}));
}

TEST_F(MainWindowTest, EnterPressesTheButtonThatHasTheFocus) {
    Show();
    actions.onButton = [this] { window->Close(); };
    PressInLoop(Native(form.cmdSaveSettings), VK_RETURN);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"button cmdSaveSettings"}));
}

TEST_F(MainWindowTest, KeysMoveTheFocusAlsoWhileAProcedureWaits) {
    SystemClock clock(window.get());
    Show();
    SetFocus(Native(form.cmdDefaults));
    PostMessageW(Native(form.cmdDefaults), WM_KEYDOWN, VK_TAB, 1);
    clock.PumpEvents();
    EXPECT_EQ(GetFocus(), Native(form.cmdSaveSettings));
}

TEST_F(MainWindowTest, FocusLeavesAPageThatIsHidden) {
    Show();
    SetFocus(Native(form.chkGlobalEnable));
    form.SelectTab(form.tabstripOptions, OptionsTab::status);
    EXPECT_EQ(GetFocus(), Native(form.tabstripOptions));
}

TEST_F(MainWindowTest, FocusLeavesAControlThatIsDisabled) {
    Show();
    SetFocus(Native(form.cmdSaveSettings));
    form.cmdSaveSettings.setEnabled(false);
    EXPECT_EQ(GetFocus(), Native(form.cmdProcessCall));
}

TEST_F(MainWindowTest, BoxWhoseCheckFailsBringsItsPageBack) {
    Show();
    actions.mayLeave = false;
    SetFocus(Native(form.txtOutboundMaxLength));
    ClickTab(form.tabstripOptions, OptionsTab::about);

    ASSERT_TRUE(PumpUntil([this] { return !actions.told.empty(); }));
    EXPECT_EQ(form.tabstripOptions.selectedTab(), OptionsTab::general);
    EXPECT_EQ(GetFocus(), Native(form.txtOutboundMaxLength));
}

TEST_F(MainWindowTest, AnyFloodOfStatusLinesIsReadWhole) {
    Show();
    std::wstring whole;
    for (int line = 0; line < 500; ++line) {
        form.txtStatus.Append(L"line\r\n");
        whole += L"line\r\n";
        ASSERT_EQ(static_cast<std::size_t>(GetWindowTextLengthW(Native(form.txtStatus))),
                  whole.size());
    }
    for (int line = 0; line < 500; ++line) {
        form.txtStatus.Append(L"more\r\n");
        whole += L"more\r\n";
    }
    EXPECT_EQ(TextOf(Native(form.txtStatus)), whole);
}

TEST_F(MainWindowTest, ClosingWaitsForTheAnswerToAMessageBox) {
    Show();
    EnableWindow(window->handle(), FALSE);  // as a message box of the window's does
    window->Close();
    PumpWhatIsPending();
    EXPECT_EQ(actions.closeQuestions, 0);
    ASSERT_NE(window->handle(), nullptr);

    EnableWindow(window->handle(), TRUE);
    ASSERT_TRUE(PumpUntil([this] { return window->handle() == nullptr; }));
    EXPECT_EQ(actions.closeQuestions, 1);
}

TEST_F(MainWindowTest, ClosingIsAskedOnceWhileTheQuestionIsOpen) {
    Show();
    actions.mayClose = false;
    actions.onClose = [this] {
        EnableWindow(window->handle(), FALSE);
        window->Close();
        PumpWhatIsPending();
        EnableWindow(window->handle(), TRUE);
    };
    window->Close();
    ASSERT_TRUE(PumpUntil([this] { return actions.closeQuestions > 0; }));
    PumpWhatIsPending();
    EXPECT_EQ(actions.closeQuestions, 1);
    EXPECT_NE(window->handle(), nullptr);
}

TEST_F(MainWindowTest, TheMasterSwitchKeepsTheFocusWhenItDisablesTheRest) {
    Show();
    form.chkGlobalEnable.setChecked(true);
    SetFocus(Native(form.chkGlobalEnable));
    form.chkGlobalEnable.setChecked(false);
    EXPECT_EQ(GetFocus(), Native(form.chkGlobalEnable));
    RunEnablingRulesOnActivation(form);
    EXPECT_EQ(GetFocus(), Native(form.chkGlobalEnable));
}

TEST_F(MainWindowTest, WindowStaysWhenClosingIsCancelled) {
    Show();
    actions.mayClose = false;
    window->Close();
    ASSERT_TRUE(PumpUntil([this] { return actions.closeQuestions == 1; }));
    EXPECT_NE(window->handle(), nullptr);
    EXPECT_TRUE(IsWindowVisible(window->handle()));
}

TEST_F(MainWindowTest, FormMayChangeAfterTheWindowHasGone) {
    Show();
    window->Close();
    window->RunMessageLoop();
    EXPECT_EQ(window->handle(), nullptr);

    form.txtStatus.Append(L"still said");
    form.setCaption(L"still named");

    EXPECT_EQ(form.txtStatus.text(), L"still said");
    EXPECT_EQ(window->handle(), nullptr) << "the window stays gone";
}

}  // namespace
}  // namespace corvane::test
