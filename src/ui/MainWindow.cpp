#include "ui/MainWindow.h"

#include "resources/ResourceIds.h"
#include "ui/Dpi.h"
#include "ui/FormActions.h"
#include "util/RuntimeError.h"

#include <commctrl.h>

namespace corvane {

namespace {

constexpr wchar_t windowClass[] = L"frmCorvaneTo3CX";
constexpr wchar_t panelClass[] = L"CorvanePanel";
constexpr UINT leaveBox = WM_APP + 1;  // wParam: the row of the box that lost the focus

struct NativeKind {
    const wchar_t* className;
    DWORD style;
    DWORD extendedStyle;
};

NativeKind KindOf(const ControlSpec& spec) {
    const bool multiLine = spec.has(ControlTrait::multiLine);
    switch (spec.kind) {
        case ControlKind::Label:
            return {WC_STATICW, SS_LEFT, 0};
        case ControlKind::TextBox: {
            DWORD style = WS_TABSTOP;
            style |= multiLine ? DWORD{ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL}
                               : DWORD{ES_AUTOHSCROLL};
            if (spec.has(ControlTrait::readOnly))
                style |= ES_READONLY;
            return {WC_EDITW, style, WS_EX_CLIENTEDGE};
        }
        case ControlKind::CheckBox:
            return {WC_BUTTONW, WS_TABSTOP | BS_3STATE | BS_NOTIFY, 0};
        case ControlKind::OptionButton:
            return {
                WC_BUTTONW,
                DWORD{BS_RADIOBUTTON | BS_NOTIFY} | (multiLine ? DWORD{BS_MULTILINE | BS_TOP} : 0),
                0};
        case ControlKind::CommandButton:
            return {WC_BUTTONW,
                    WS_TABSTOP | (spec.has(ControlTrait::byDefault) ? DWORD{BS_DEFPUSHBUTTON}
                                                                    : DWORD{BS_PUSHBUTTON}),
                    0};
        case ControlKind::TabStrip:
            return {WC_TABCONTROLW, WS_TABSTOP | WS_CLIPSIBLINGS, 0};
        case ControlKind::Frame:
            break;
    }
    return {panelClass, 0, WS_EX_CONTROLPARENT};
}

std::wstring TextOf(HWND window) {
    const int length = GetWindowTextLengthW(window);
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    const int copied = GetWindowTextW(window, text.data(), length + 1);
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

bool HasBorder(const ControlSpec& spec) {
    return spec.kind == ControlKind::Frame && !spec.has(ControlTrait::plain);
}

}  // namespace

MainWindow::MainWindow(Form& form, FormActions& actions, HINSTANCE instance)
    : form_(form),
      actions_(actions),
      instance_(instance),
      windows_(controlCatalogue.size(), nullptr) {
    form_.setView(this);
}

MainWindow::~MainWindow() {
    form_.setView(nullptr);
    if (window_)
        DestroyWindow(window_);
}

void MainWindow::Create() {
    const INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX),
                                        ICC_STANDARD_CLASSES | ICC_TAB_CLASSES};
    InitCommonControlsEx(&controls);

    WNDCLASSEXW mainClass{};
    mainClass.cbSize = sizeof(mainClass);
    mainClass.lpfnWndProc = &MainWindow::WindowProcedure;
    mainClass.hInstance = instance_;
    mainClass.hIcon = LoadIconW(instance_, MAKEINTRESOURCEW(IDI_APPLICATION_ICON));
    mainClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    mainClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    mainClass.lpszClassName = windowClass;
    RegisterClassExW(&mainClass);

    WNDCLASSEXW panel = mainClass;
    panel.lpfnWndProc = &MainWindow::PanelProcedure;
    panel.hIcon = nullptr;
    panel.lpszClassName = panelClass;
    RegisterClassExW(&panel);

    constexpr DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
    window_ = CreateWindowExW(WS_EX_CONTROLPARENT, windowClass, form_.caption().c_str(), style,
                              CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, nullptr,
                              nullptr, instance_, this);
    if (!window_)
        throw MakeRuntimeError(ErrorNumber::OutOfMemory);
    tooltips_ =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                        WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, window_, nullptr, instance_, nullptr);
    constexpr LPARAM tipWidth = 400;
    SendMessageW(tooltips_, TTM_SETMAXTIPWIDTH, 0, tipWidth);

    showing_ = true;
    for (Control* control : form_.controls())
        CreateControl(*control);
    ApplyDpi();
    for (const Control* control : form_.controls())
        ShowState(*control);
    showing_ = false;
}

HWND MainWindow::ParentOf(const Control& control) const {
    const ControlSpec& spec = control.spec();
    if (spec.parent.empty())
        return window_;
    return windows_[FindControl(spec.parent, spec.parentIndex)];
}

void MainWindow::CreateControl(Control& control) {
    const ControlSpec& spec = control.spec();
    const NativeKind kind = KindOf(spec);
    const HWND parent = ParentOf(control);
    const auto id = reinterpret_cast<HMENU>(static_cast<INT_PTR>(ControlId(control.row())));
    const HWND window =
        CreateWindowExW(kind.extendedStyle, kind.className, control.caption().c_str(),
                        WS_CHILD | kind.style, 0, 0, 0, 0, parent, id, instance_, nullptr);
    windows_[control.row()] = window;
    if (HasBorder(spec)) {
        CreateWindowExW(0, WC_BUTTONW, control.caption().c_str(),
                        WS_CHILD | WS_VISIBLE | BS_GROUPBOX, 0, 0, 0, 0, window, nullptr, instance_,
                        nullptr);
    }
    if (spec.kind == ControlKind::TabStrip) {
        const bool isOptions = &control == &form_.tabstripOptions;
        const std::wstring_view frames = isOptions ? L"frameOptions" : L"frameParams";
        for (int tab = 0; FindControl(frames, tab) != noControl; ++tab) {
            std::wstring caption = form_.control(frames, tab).caption();
            TCITEMW item{};
            item.mask = TCIF_TEXT;
            item.pszText = caption.data();
            SendMessageW(window, TCM_INSERTITEMW, static_cast<WPARAM>(tab),
                         reinterpret_cast<LPARAM>(&item));
        }
    }
    // No limit of 32K for what the program shows; what is typed has no limit either.
    if (spec.kind == ControlKind::TextBox)
        SendMessageW(window, EM_SETLIMITTEXT, 0, 0);
    // Frames lie over their strip.
    if (spec.kind == ControlKind::Frame && spec.parent.empty()) {
        SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    AddTooltip(control);
}

void MainWindow::AddTooltip(const Control& control) {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
    tool.hwnd = window_;
    tool.uId = reinterpret_cast<UINT_PTR>(windowOf(control));
    std::wstring text = control.tooltip();
    tool.lpszText = text.data();
    SendMessageW(tooltips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void MainWindow::ApplyDpi() {
    dpi_ = DpiOfWindow(window_);
    font_.reset(CreateMessageFont(dpi_));
    for (const Control* control : form_.controls()) {
        SendMessageW(windowOf(*control), WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
        PlaceControl(*control);
    }
    SizeWindow();
    InvalidateRect(window_, nullptr, TRUE);
}

void MainWindow::PlaceControl(const Control& control) {
    const Place& place = control.spec().place;
    const int width = PixelsFromTwips(place.width, dpi_);
    const int height = PixelsFromTwips(place.height, dpi_);
    const HWND window = windowOf(control);
    SetWindowPos(window, nullptr, PixelsFromTwips(place.left, dpi_),
                 PixelsFromTwips(place.top, dpi_), width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    if (HasBorder(control.spec())) {
        const HWND border = GetWindow(window, GW_CHILD);
        SendMessageW(border, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
        SetWindowPos(border, HWND_BOTTOM, 0, 0, width, height, SWP_NOACTIVATE);
    }
}

void MainWindow::SizeWindow() {
    SetWindowPos(window_, nullptr, 0, 0, PixelsFromTwips(form_.width(), dpi_),
                 PixelsFromTwips(windowHeight, dpi_), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    const bool paramsShown = form_.width() == windowWideWidth;
    const auto show = paramsShown ? SW_SHOWNA : SW_HIDE;
    ShowWindow(windowOf(form_.tabstripParams), show);
    for (int tab = 0; FindControl(L"frameParams", tab) != noControl; ++tab) {
        const Control& frame = form_.frameParams(tab);
        ShowWindow(windowOf(frame), paramsShown && frame.visible() ? SW_SHOWNA : SW_HIDE);
    }
}

void MainWindow::ShowText(const Control& control) {
    const HWND window = windowOf(control);
    if (control.spec().kind == ControlKind::TextBox) {
        SetWindowTextW(window, static_cast<const TextBox&>(control).text().c_str());
    } else if (control.spec().kind != ControlKind::TabStrip) {
        SetWindowTextW(window, control.caption().c_str());
    }
}

void MainWindow::ShowState(const Control& control) {
    const HWND window = windowOf(control);
    ShowText(control);
    EnableWindow(window, control.enabled());
    if (control.spec().kind == ControlKind::CheckBox) {
        SendMessageW(window, BM_SETCHECK,
                     static_cast<WPARAM>(static_cast<const CheckBox&>(control).value()), 0);
    } else if (control.spec().kind == ControlKind::OptionButton) {
        const bool selected = static_cast<const OptionButton&>(control).selected();
        SendMessageW(window, BM_SETCHECK, selected ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    const bool inParams =
        &control == &form_.tabstripParams || control.spec().name == L"frameParams";
    if (!inParams)
        ShowWindow(window, control.visible() ? SW_SHOWNA : SW_HIDE);
}

void MainWindow::OnControlChanged(const Control& control, ControlAspect aspect) {
    if (!window_ || (&control == typedInto_ && aspect == ControlAspect::Text))
        return;
    const HWND window = windowOf(control);
    showing_ = true;
    switch (aspect) {
        case ControlAspect::Appended: {
            // Only the new end goes to the window: the cost does not grow with the text.
            const std::wstring& text = static_cast<const TextBox&>(control).text();
            const int shown = GetWindowTextLengthW(window);
            SendMessageW(window, EM_SETSEL, static_cast<WPARAM>(shown), shown);
            SendMessageW(window, EM_REPLACESEL, FALSE,
                         reinterpret_cast<LPARAM>(text.c_str() + shown));
            SendMessageW(window, EM_SCROLLCARET, 0, 0);
            break;
        }
        case ControlAspect::Tooltip: {
            TTTOOLINFOW tool{};
            tool.cbSize = sizeof(tool);
            tool.hwnd = window_;
            tool.uId = reinterpret_cast<UINT_PTR>(window);
            std::wstring text = control.tooltip();
            tool.lpszText = text.data();
            SendMessageW(tooltips_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
            break;
        }
        case ControlAspect::Text:
        case ControlAspect::Caption:
        case ControlAspect::Value:
        case ControlAspect::Enabled:
        case ControlAspect::Visible:
            ShowState(control);
            if (control.spec().name == L"frameParams")
                SizeWindow();
            break;
    }
    showing_ = false;
}

void MainWindow::OnWindowChanged() {
    if (form_.visible() && !window_) {
        Create();
        ShowWindow(window_, SW_SHOWNORMAL);
        UpdateWindow(window_);
    }
    if (!window_)
        return;
    SetWindowTextW(window_, form_.caption().c_str());
    SendMessageW(windowOf(form_.tabstripOptions), TCM_SETCURSEL,
                 static_cast<WPARAM>(form_.tabstripOptions.selectedTab()), 0);
    SendMessageW(windowOf(form_.tabstripParams), TCM_SETCURSEL,
                 static_cast<WPARAM>(form_.tabstripParams.selectedTab()), 0);
    SizeWindow();
    SetCursor(LoadCursorW(nullptr, form_.waiting() ? IDC_WAIT : IDC_ARROW));
}

void MainWindow::OnFocusRequested(const Control& control) {
    if (window_)
        ::SetFocus(windowOf(control));
}

void MainWindow::Close() {
    if (window_)
        PostMessageW(window_, WM_CLOSE, 0, 0);
}

void MainWindow::RunMessageLoop() {
    MSG message;
    while (window_ && GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (IsDialogMessageW(window_, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

Control* MainWindow::ControlOfId(int controlId) const {
    const auto row = static_cast<std::size_t>(controlId - firstControlId);
    return controlId >= firstControlId && row < form_.controls().size() ? form_.controls()[row]
                                                                        : nullptr;
}

LRESULT CALLBACK MainWindow::PanelProcedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
    // What a panel's controls tell goes on to the main window.
    if (message == WM_COMMAND || message == WM_NOTIFY) {
        return SendMessageW(GetAncestor(window, GA_ROOT), message, wParam, lParam);
    }
    return DefWindowProcW(window, message, wParam, lParam);
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
    return self->OnMessage(message, wParam, lParam);
}

LRESULT MainWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam), HIWORD(wParam));
        case WM_NOTIFY:
            return OnNotify(*reinterpret_cast<const NMHDR*>(lParam));
        case leaveBox:
            OnLeave(static_cast<TextBox&>(*form_.controls()[wParam]));
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(wParam) != WA_INACTIVE && !showing_)
                actions_.Activated();
            return 0;
        case WM_DPICHANGED:
            ApplyDpi();
            return 0;
        case WM_SETCURSOR:
            if (form_.waiting()) {
                SetCursor(LoadCursorW(nullptr, IDC_WAIT));
                return TRUE;
            }
            break;
        case WM_CLOSE:
            if (actions_.MayClose())
                DestroyWindow(window_);
            return 0;
        case WM_DESTROY: {
            const HWND destroyed = std::exchange(window_, nullptr);
            SetWindowLongPtrW(destroyed, GWLP_USERDATA, 0);
            PostQuitMessage(0);
            return 0;
        }
        default:
            break;
    }
    return DefWindowProcW(window_, message, wParam, lParam);
}

LRESULT MainWindow::OnCommand(int controlId, int notification) {
    if (controlId == IDCANCEL) {
        // Esc closes like the Exit button.
        actions_.ButtonClicked(form_.cmdExit);
        return 0;
    }
    Control* control = ControlOfId(controlId);
    if (!control || showing_)
        return 0;
    switch (control->spec().kind) {
        case ControlKind::CommandButton:
            if (notification == BN_CLICKED) {
                actions_.ButtonClicked(static_cast<CommandButton&>(*control));
            }
            break;
        case ControlKind::CheckBox:
            if (notification == BN_CLICKED) {
                actions_.CheckBoxClicked(static_cast<CheckBox&>(*control));
            }
            break;
        case ControlKind::OptionButton:
            if (notification == BN_CLICKED) {
                actions_.OptionClicked(static_cast<OptionButton&>(*control));
            }
            break;
        case ControlKind::TextBox: {
            auto& box = static_cast<TextBox&>(*control);
            if (box.spec().has(ControlTrait::readOnly))
                break;
            if (notification == EN_SETFOCUS) {
                textOnEntry_.try_emplace(box.row(), box.text());
            } else if (notification == EN_CHANGE) {
                typedInto_ = &box;  // the window shows it already
                box.setText(TextOf(windowOf(box)));
                typedInto_ = nullptr;
            } else if (notification == EN_KILLFOCUS) {
                // Checked when the focus has settled: a box may be shown then.
                PostMessageW(window_, leaveBox, box.row(), 0);
            }
            break;
        }
        default:
            break;
    }
    return 0;
}

void MainWindow::OnLeave(TextBox& box) {
    const auto entry = textOnEntry_.find(box.row());
    const bool changed = entry != textOnEntry_.end() && entry->second != box.text();
    if (actions_.MayLeave(box, changed)) {
        textOnEntry_.erase(box.row());
    } else {
        ::SetFocus(windowOf(box));
    }
}

LRESULT MainWindow::OnNotify(const NMHDR& header) {
    if (header.code != TCN_SELCHANGE)
        return 0;
    const auto tab = static_cast<int>(SendMessageW(header.hwndFrom, TCM_GETCURSEL, 0, 0));
    TabStrip& strip = header.hwndFrom == windowOf(form_.tabstripOptions)
                          ? static_cast<TabStrip&>(form_.tabstripOptions)
                          : static_cast<TabStrip&>(form_.tabstripParams);
    form_.SelectTab(strip, tab);
    return 0;
}

}  // namespace corvane
