#include "ui/window/MainWindow.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "resources/ResourceIds.h"
#include "ui/form/FormActions.h"
#include "ui/window/Dpi.h"
#include "util/RuntimeError.h"

#include <commctrl.h>

namespace corvane {

namespace {

constexpr wchar_t windowClass[] = L"frmCorvaneTo3CX";
constexpr UINT focusSettled = WM_APP + 1;  // after a box lost the focus

}  // namespace

MainWindow::~MainWindow() {
    Detach();
}

void MainWindow::Attach(Form& form, FormActions& actions) {
    form_ = &form;
    actions_ = &actions;
}

void MainWindow::Detach() {
    if (window_)
        DestroyWindow(window_);
    form_ = nullptr;
}

void MainWindow::Create() {
    controls_ = std::make_unique<ControlWindows>(*form_, instance_);
    const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX),
                                       ICC_STANDARD_CLASSES | ICC_TAB_CLASSES};
    InitCommonControlsEx(&classes);
    WNDCLASSEXW mainClass{};
    mainClass.cbSize = sizeof(mainClass);
    mainClass.lpfnWndProc = &MainWindow::WindowProcedure;
    mainClass.hInstance = instance_;
    mainClass.hIcon = LoadIconW(instance_, MAKEINTRESOURCEW(IDI_APPLICATION_ICON));
    mainClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    mainClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    mainClass.lpszClassName = windowClass;
    RegisterClassExW(&mainClass);

    constexpr DWORD style =
        WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
    CreateWindowExW(WS_EX_CONTROLPARENT, windowClass, form_->caption().c_str(), style,
                    CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr,
                    instance_, this);
    if (!window_)
        throw MakeRuntimeError(ErrorNumber::OutOfMemory);

    showing_ = true;
    dpi_ = DpiOfWindow(window_);
    controls_->Create(window_, dpi_);
    Size();
    CentreOnMonitor();
    showing_ = false;
}

void MainWindow::Size() {
    SetWindowPos(window_, nullptr, 0, 0, PixelsFromTwips(form_->width(), dpi_),
                 PixelsFromTwips(windowHeight, dpi_), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    controls_->ShowParams(form_->width() == windowWideWidth);
}

void MainWindow::CentreOnMonitor() {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    GetMonitorInfoW(MonitorFromWindow(window_, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    // Where the opened parameter panel has room as well, if the monitor has it.
    const int width = PixelsFromTwips(windowWideWidth, dpi_);
    const int height = PixelsFromTwips(windowHeight, dpi_);
    const LONG left = work.left + (work.right - work.left - width) / 2;
    const LONG top = work.top + (work.bottom - work.top - height) / 2;
    SetWindowPos(window_, nullptr, left > work.left ? left : work.left,
                 top > work.top ? top : work.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void MainWindow::OnControlChanged(const Control& control, ControlAspect aspect) {
    if (!window_ || (&control == typedInto_ && aspect == ControlAspect::Text))
        return;
    const bool wasShowing = std::exchange(showing_, true);
    const HWND focused = GetFocus();
    controls_->Show(control, aspect);
    if (aspect == ControlAspect::Enabled || aspect == ControlAspect::Visible)
        KeepFocusUsable(control, focused);
    showing_ = wasShowing;
}

// A hidden or disabled control cannot be left by the keyboard.
void MainWindow::KeepFocusUsable(const Control& changed, HWND before) {
    if (!IsChild(window_, before) || (IsWindowVisible(before) && IsWindowEnabled(before)))
        return;
    const bool isPage = changed.spec().kind == ControlKind::Frame;
    ::SetFocus(isPage ? controls_->of(StripBeside(before))
                      : GetNextDlgTabItem(window_, before, FALSE));
}

// The strip whose pages hold the control, or that it is itself.
TabStrip& MainWindow::StripBeside(HWND native) const {
    for (; native && native != window_; native = GetParent(native)) {
        const Control* control = controls_->FindById(GetDlgCtrlID(native));
        if (control == &form_->tabstripParams ||
            (control && control->spec().name == Form::FramesOf(form_->tabstripParams)))
            return form_->tabstripParams;
    }
    return form_->tabstripOptions;
}

void MainWindow::OnWindowChanged() {
    if (form_->visible() && !window_) {
        Create();
        ShowWindow(window_, SW_SHOWNORMAL);
        UpdateWindow(window_);
    }
    if (!window_)
        return;
    SetWindowTextW(window_, form_->caption().c_str());
    controls_->Show(form_->tabstripOptions, ControlAspect::Value);
    controls_->Show(form_->tabstripParams, ControlAspect::Value);
    Size();
    SetCursor(LoadCursorW(nullptr, form_->waiting() ? IDC_WAIT : IDC_ARROW));
}

void MainWindow::OnFocusRequested(const Control& control) {
    if (window_)
        ::SetFocus(controls_->of(control));
}

void MainWindow::Close() {
    if (window_)
        PostMessageW(window_, WM_CLOSE, 0, 0);
}

void MainWindow::RunMessageLoop() {
    MSG message;
    while (window_ && GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (TranslateKey(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool MainWindow::TranslateKey(MSG& message) {
    return window_ && (OnKey(message) || IsDialogMessageW(window_, &message));
}

bool MainWindow::OnKey(const MSG& message) {
    if (message.message != WM_KEYDOWN)
        return false;
    // With Alt it is the AltGr key, which types a character.
    if (GetKeyState(VK_CONTROL) < 0)
        return GetKeyState(VK_MENU) >= 0 && OnControlKey(message);
    return OnArrow(message) || OnKeyInManyLines(message);
}

// Round the usable members of the group, which need not stand side by side in the window.
bool MainWindow::OnArrow(const MSG& message) {
    const bool back = message.wParam == VK_LEFT || message.wParam == VK_UP;
    if (!back && message.wParam != VK_RIGHT && message.wParam != VK_DOWN)
        return false;
    const Control* from = controls_->FindById(GetDlgCtrlID(message.hwnd));
    if (!from || from->spec().kind != ControlKind::OptionButton)
        return false;
    std::vector<OptionButton*> members = form_->GroupOf(static_cast<const OptionButton&>(*from));
    if (back)
        std::reverse(members.begin(), members.end());
    std::rotate(members.begin(), std::find(members.begin(), members.end(), from), members.end());
    const auto next = std::find_if(members.begin() + 1, members.end(),
                                   [](const OptionButton* member) { return member->enabled(); });
    if (next == members.end() || !LeaveBox())
        return true;
    actions_->OptionClicked(**next);
    ::SetFocus(controls_->of(**next));
    return true;
}

// A box of many lines would keep these keys for itself.
bool MainWindow::OnKeyInManyLines(const MSG& message) {
    const Control* control = controls_->FindById(GetDlgCtrlID(message.hwnd));
    if (!control || control->spec().kind != ControlKind::TextBox ||
        !control->spec().has(ControlTrait::multiLine))
        return false;
    if (message.wParam == VK_TAB) {
        const BOOL backwards = GetKeyState(VK_SHIFT) < 0;
        ::SetFocus(GetNextDlgTabItem(window_, message.hwnd, backwards));
        return true;
    }
    if (message.wParam == VK_ESCAPE) {
        OnCommand(IDCANCEL, 0);
        return true;
    }
    return false;
}

bool MainWindow::OnControlKey(const MSG& message) {
    switch (message.wParam) {
        case VK_TAB:
            StepThroughTabs(message.hwnd, GetKeyState(VK_SHIFT) < 0 ? -1 : 1);
            return true;
        case VK_PRIOR:
            StepThroughTabs(message.hwnd, -1);
            return true;
        case VK_NEXT:
            StepThroughTabs(message.hwnd, 1);
            return true;
        case 'A': {
            const Control* control = controls_->FindById(GetDlgCtrlID(message.hwnd));
            if (!control || control->spec().kind != ControlKind::TextBox)
                return false;
            SendMessageW(message.hwnd, EM_SETSEL, 0, -1);
            return true;
        }
        default:
            return false;
    }
}

// From the last tab to the first and back.
void MainWindow::StepThroughTabs(HWND focused, int step) {
    TabStrip& strip = StripBeside(focused);
    if (!strip.enabled())
        return;
    const auto count = static_cast<int>(SendMessageW(controls_->of(strip), TCM_GETITEMCOUNT, 0, 0));
    form_->SelectTab(strip, (strip.selectedTab() + step + count) % count);
}

LRESULT CALLBACK MainWindow::WindowProcedure(HWND window, UINT message, WPARAM wParam,
                                             LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* created = static_cast<MainWindow*>(creation->lpCreateParams);
        created->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* self = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self)
        return DefWindowProcW(window, message, wParam, lParam);
    try {
        return self->OnMessage(message, wParam, lParam);
    } catch (...) {
        // Actions report their own errors; what is left here is want of memory for a text.
        return 0;
    }
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_NOTIFY: {
            const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
            if (header.code == TCN_SELCHANGE)
                OnTabSelected(header.hwndFrom);
            return 0;
        }
        case focusSettled:
            OnFocusSettled();
            return 0;
        case WM_ACTIVATE:
            OnActivate(LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case DM_GETDEFID:
            return DefaultButton();
        case WM_DPICHANGED:
            OnDpiChanged(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_SETCURSOR:
            if (form_->waiting()) {
                SetCursor(LoadCursorW(nullptr, IDC_WAIT));
                return TRUE;
            }
            break;
        case WM_CLOSE:
            // A message box of this window's would go with it unread.
            if (!IsWindowEnabled(window_)) {
                closeWaits_ = !askedToClose_;
                return 0;
            }
            // A box whose check fails must not keep the user who wants to discard it; saving
            // checks it (FinishEntry).
            CloseIfAllowed();
            return 0;
        case WM_ENABLE:
            if (wParam && std::exchange(closeWaits_, false))
                Close();
            break;
        case WM_QUERYENDSESSION:
            // Logging off ends the program as its close box does, with the same question. While a
            // message box stands before it, it leaves its end to the system.
            return !IsWindowEnabled(window_) || CloseIfAllowed() ? TRUE : FALSE;
        case WM_DESTROY: {
            const HWND destroyed = std::exchange(window_, nullptr);
            SetWindowLongPtrW(destroyed, GWLP_USERDATA, 0);
            form_->setVisible(false);
            PostQuitMessage(0);
            return 0;
        }
        default:
            break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

bool MainWindow::CloseIfAllowed() {
    const bool asked = std::exchange(askedToClose_, true);
    const bool allowed = actions_->MayClose();
    askedToClose_ = asked;
    if (!allowed)
        return false;
    DestroyWindow(window_);
    return true;
}

void MainWindow::OnActivate(bool active) {
    if (!active) {
        lastFocus_ = GetFocus();
        return;
    }
    if (!IsChild(window_, lastFocus_)) {
        lastFocus_ = GetNextDlgTabItem(window_, nullptr, FALSE);
    }
    ::SetFocus(lastFocus_);
    if (!showing_) {
        actions_->Activated();
    }
}

// Enter presses the button that has the focus, else the default button while it can be pressed.
LRESULT MainWindow::DefaultButton() const {
    const Control* button = controls_->FindById(GetDlgCtrlID(GetFocus()));
    if (!button || button->spec().kind != ControlKind::CommandButton)
        button = &form_->cmdProcessCall;
    return button->enabled() ? MAKELRESULT(ControlId(button->row()), DC_HASDEFID) : 0;
}

void MainWindow::OnDpiChanged(UINT dpi, const RECT& suggested) {
    dpi_ = dpi;
    controls_->Layout(dpi_);
    SetWindowPos(window_, nullptr, suggested.left, suggested.top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    Size();
    InvalidateRect(window_, nullptr, TRUE);
}

void MainWindow::OnCommand(int controlId, int notification) {
    if (controlId == IDCANCEL) {
        // Esc closes like the Exit button.
        actions_->ButtonClicked(form_->cmdExit);
        return;
    }
    Control* control = controls_->FindById(controlId);
    if (!control)
        return;
    if (control->spec().kind == ControlKind::TextBox) {
        OnTextBox(static_cast<TextBox&>(*control), notification);
        return;
    }
    if (notification == BN_CLICKED && !showing_)
        OnClick(*control);
}

void MainWindow::OnClick(Control& control) {
    const bool closes = &control == &form_->cmdExit;
    // Where none is selected, going there by Tab selects nothing.
    if (control.spec().kind == ControlKind::OptionButton && controls_->focusArrives())
        return;
    // A mnemonic or a screen reader clicks before the focus has settled on the control.
    if (!closes && !LeaveBox())
        return;
    switch (control.spec().kind) {
        case ControlKind::CommandButton:
            actions_->ButtonClicked(static_cast<CommandButton&>(control));
            break;
        case ControlKind::CheckBox:
            actions_->CheckBoxClicked(static_cast<CheckBox&>(control));
            break;
        case ControlKind::OptionButton:
            actions_->OptionClicked(static_cast<OptionButton&>(control));
            break;
        default:
            break;
    }
}

void MainWindow::OnTextBox(TextBox& box, int notification) {
    if (box.spec().has(ControlTrait::readOnly))
        return;
    switch (notification) {
        case EN_SETFOCUS:
            if (!entered_)
                Enter(box);
            else if (&box != entered_ && !leaving_)
                PostMessageW(window_, focusSettled, 0, 0);
            break;
        case EN_CHANGE:
            if (showing_)
                return;
            typedInto_ = &box;  // the window shows it already
            box.setText(ControlWindows::TextOf(controls_->of(box)));
            typedInto_ = nullptr;
            break;
        case EN_KILLFOCUS:
            // Decided when the focus has settled, and not for the focus moves of a check.
            if (&box == entered_ && !leaving_)
                PostMessageW(window_, focusSettled, 0, 0);
            break;
        default:
            break;
    }
}

void MainWindow::Enter(TextBox& box) {
    entered_ = &box;
    textOnEntry_ = box.text();
}

// A box that is still to be left keeps the visit until its check is done.
void MainWindow::EnterFocused() {
    Control* control = controls_->FindById(GetDlgCtrlID(GetFocus()));
    if (control && control->spec().kind == ControlKind::TextBox &&
        !control->spec().has(ControlTrait::readOnly))
        Enter(static_cast<TextBox&>(*control));
}

// The user went on to another control. Another program's window is no leaving: the check would
// pull the user back with a message box.
void MainWindow::OnFocusSettled() {
    const HWND focus = GetFocus();
    if (entered_ && focus != controls_->of(*entered_) && IsChild(window_, focus))
        static_cast<void>(LeaveBox());
}

// Checks the box that the user is in; false keeps the focus there.
bool MainWindow::LeaveBox() {
    if (!entered_)
        return true;
    if (leaving_)
        return false;
    leaving_ = true;
    TextBox& box = *entered_;
    const bool left = actions_->MayLeave(box, textOnEntry_ != box.text());
    entered_ = left ? nullptr : &box;
    if (left)
        EnterFocused();  // the same box, where Enter pressed the default button
    else
        form_->SetFocus(box);
    leaving_ = false;
    return left;
}

void MainWindow::OnTabSelected(HWND strip) {
    const auto tab = static_cast<int>(SendMessageW(strip, TCM_GETCURSEL, 0, 0));
    const bool isOptions = strip == controls_->of(form_->tabstripOptions);
    form_->SelectTab(isOptions ? static_cast<TabStrip&>(form_->tabstripOptions)
                               : static_cast<TabStrip&>(form_->tabstripParams),
                     tab);
}

}  // namespace corvane
