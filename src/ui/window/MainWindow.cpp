#include "ui/window/MainWindow.h"

#include <utility>

#include "platform/kit/ComApartment.h"
#include "resources/ResourceIds.h"
#include "ui/form/FormActions.h"
#include "ui/window/CommonControls.h"
#include "ui/window/Dpi.h"
#include "util/RuntimeError.h"

namespace corvane {

namespace {

constexpr wchar_t windowClass[] = L"frmCorvaneTo3CX";

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
    com_.Enter();
    controls_.emplace(*form_, instance_);
    visit_.emplace(*form_, *actions_, *controls_);
    keyboard_.emplace(*form_, *actions_, *controls_, *visit_);
    const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX),
                                       ICC_STANDARD_CLASSES | ICC_TAB_CLASSES};
    TheCommonControls().InitCommonControlsEx(&classes);
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

    dpi_ = DpiOfWindow(window_);
    controls_->Create(window_, dpi_);
    Size();
    CentreOnMonitor();
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
    if (!window_ || (aspect == ControlAspect::Text && visit_->TypesInto(control)))
        return;
    const HWND focused = GetFocus();
    controls_->Show(control, aspect);
    if (aspect == ControlAspect::Enabled || aspect == ControlAspect::Visible)
        keyboard_->KeepFocusUsable(control, focused);
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
    return window_ && keyboard_->Translate(message);
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
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
        controls_->ShowTipFor({window_, message, wParam, lParam, 0, {}});
    switch (message) {
        case ControlWindows::mouseOverFrame:
            controls_->ShowTipFor(*reinterpret_cast<const MSG*>(lParam));
            return 0;
        case WM_COMMAND:
            OnCommand(LOWORD(wParam), HIWORD(wParam));
            return 0;
        case WM_NOTIFY: {
            const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
            if (header.code == TCN_SELCHANGE)
                OnTabSelected(header.hwndFrom);
            return 0;
        }
        case BoxVisit::focusSettled:
            visit_->OnFocusSettled();
            return 0;
        case WM_ACTIVATEAPP:
            // With a box before the window it is the box that the user comes to.
            fromAnotherProgram_ = wParam && IsWindowEnabled(window_);
            break;
        case WM_ACTIVATE:
            OnActivate(LOWORD(wParam) != WA_INACTIVE);
            return 0;
        case DM_GETDEFID:
            return keyboard_->DefaultButton();
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
    if (!IsChild(window_, lastFocus_))
        lastFocus_ = GetNextDlgTabItem(window_, nullptr, FALSE);
    ::SetFocus(lastFocus_);
    const bool fromAnotherProgram = std::exchange(fromAnotherProgram_, false);
    if (!controls_->showing())
        actions_->Activated(fromAnotherProgram);
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
    if (control->spec().kind == ControlKind::TextBox)
        visit_->OnNotification(static_cast<TextBox&>(*control), notification);
    else if (notification == BN_CLICKED && !controls_->showing())
        OnClick(*control);
}

void MainWindow::OnClick(Control& control) {
    const bool closes = &control == &form_->cmdExit;
    // Where none is selected, going there by Tab selects nothing.
    if (control.spec().kind == ControlKind::OptionButton && controls_->focusArrives())
        return;
    // A mnemonic or a screen reader clicks before the focus has settled on the control.
    if (!closes && !visit_->Leave())
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

void MainWindow::OnTabSelected(HWND strip) {
    const auto tab = static_cast<int>(SendMessageW(strip, TCM_GETCURSEL, 0, 0));
    form_->SelectTab(static_cast<TabStrip&>(*controls_->ControlOf(strip)), tab);
}

}  // namespace corvane
