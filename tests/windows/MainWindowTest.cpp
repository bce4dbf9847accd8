#include "windows/MainWindowTest.h"

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

TEST_F(MainWindowTest, FocusGoesWhereTheFormWantsIt) {
    Show();
    form.SetFocus(form.cmdProcessCall);
    EXPECT_EQ(GetFocus(), Native(form.cmdProcessCall));
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

// Windows tells the focus of an option button as a click. Wine does not, so for the life of this
// new buttons do.
class FocusClicks {
public:
    FocusClicks() { former_ = Replace(&Procedure); }
    ~FocusClicks() { Replace(former_); }
    FocusClicks(const FocusClicks&) = delete;
    FocusClicks& operator=(const FocusClicks&) = delete;

private:
    static WNDPROC Replace(WNDPROC procedure) {
        const HWND button = CreateWindowExW(0, WC_BUTTONW, L"", 0, 0, 0, 0, 0, HWND_MESSAGE,
                                            nullptr, nullptr, nullptr);
        const auto former =
            SetClassLongPtrW(button, GCLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
        DestroyWindow(button);
        return reinterpret_cast<WNDPROC>(former);
    }
    static LRESULT CALLBACK Procedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam) {
        const auto kind = GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK;
        if (message == WM_SETFOCUS && kind == BS_RADIOBUTTON) {
            SendMessageW(GetParent(button), WM_COMMAND,
                         MAKEWPARAM(GetDlgCtrlID(button), BN_CLICKED),
                         reinterpret_cast<LPARAM>(button));
        }
        return CallWindowProcW(former_, button, message, wParam, lParam);
    }

    static inline WNDPROC former_ = nullptr;
};

TEST_F(MainWindowTest, TheFocusThatIsToldAsAClickSelectsNoOption) {
    const FocusClicks clicks;
    form.SelectTab(form.tabstripOptions, OptionsTab::history);
    Show();
    SetFocus(Native(form.optProcessStart));
    EXPECT_TRUE(actions.told.empty());
    Click(form.optProcessStart);
    EXPECT_EQ(actions.told, (std::vector<std::wstring>{L"option optProcessStart"}));
}

// A message box before the window, from its opening to its end.
class BoxBefore {
public:
    explicit BoxBefore(HWND owner)
        : owner_(owner),
          box_(CreateWindowExW(0, WC_STATICW, L"box", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, owner,
                               nullptr, GetModuleHandleW(nullptr), nullptr)) {
        EnableWindow(owner_, FALSE);
        SetActiveWindow(box_);
    }
    ~BoxBefore() {
        EnableWindow(owner_, TRUE);
        DestroyWindow(box_);
    }
    BoxBefore(const BoxBefore&) = delete;
    BoxBefore& operator=(const BoxBefore&) = delete;

private:
    HWND owner_;
    HWND box_;
};

TEST_F(MainWindowTest, AnActivationTellsWhetherTheUserComesFromAnotherProgram) {
    Show();
    EXPECT_EQ(actions.arrivals, actions.activations) << "to the window as it opens";
    SetFocus(Native(form.cmdParams));
    const auto activate = [this](WPARAM how) {
        SendMessageW(window->handle(), WM_ACTIVATEAPP, how != WA_INACTIVE, 0);
        SendMessageW(window->handle(), WM_ACTIVATE, how, 0);
    };
    const auto count = [this](const std::function<void()>& step) {
        actions.activations = actions.arrivals = 0;
        step();
        return std::pair(actions.activations, actions.arrivals);
    };
    using Counted = std::pair<int, int>;

    EXPECT_EQ(count([&] { const BoxBefore box(window->handle()); }), Counted(1, 0));
    EXPECT_EQ(GetFocus(), Native(form.cmdParams));
    EXPECT_EQ(count([&] {
                  activate(WA_INACTIVE);
                  activate(WA_ACTIVE);
              }),
              Counted(1, 1));
    EXPECT_EQ(count([&] {
                  const BoxBefore box(window->handle());
                  SendMessageW(window->handle(), WM_ACTIVATEAPP, FALSE, 0);
                  SendMessageW(window->handle(), WM_ACTIVATEAPP, TRUE, 0);
              }),
              Counted(1, 0))
        << "the user came to the box";
    EXPECT_EQ(count([&] {
                  activate(WA_INACTIVE);
                  activate(WA_CLICKACTIVE);
              }),
              Counted(1, 1));
}

TEST_F(MainWindowTest, ClosingWaitsForTheAnswerToAMessageBox) {
    Show();
    EnableWindow(window->handle(), FALSE);  // as a message box of the window's does
    window->Close();
    PumpWhatIsPending();
    EXPECT_EQ(actions.closeQuestions, 0);
    ASSERT_NE(window->handle(), nullptr);

    EnableWindow(window->handle(), TRUE);
    ASSERT_TRUE(PumpUntil([this] { return !window->handle(); }));
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
