#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/kit/ComApartment.h"
#include "ui/form/Form.h"
#include "ui/form/FormActions.h"
#include "ui/window/MainWindow.h"

#include <commctrl.h>

namespace corvane::test {

class NoActions final : public FormActions {
public:
    void ButtonClicked(CommandButton&) override {}
    void CheckBoxClicked(CheckBox&) override {}
    void OptionClicked(OptionButton&) override {}
    bool MayLeave(TextBox&, bool) override { return true; }
    void Activated(bool) override {}
    bool MayClose() override { return true; }
};

[[nodiscard]] inline double Milliseconds(const std::function<void()>& work) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER begin;
    LARGE_INTEGER end;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&begin);
    work();
    QueryPerformanceCounter(&end);
    return static_cast<double>(end.QuadPart - begin.QuadPart) * 1000.0 /
           static_cast<double>(frequency.QuadPart);
}

inline void ServeWaitingMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

[[nodiscard]] inline const wchar_t* NativeClassOf(ControlKind kind) {
    switch (kind) {
        case ControlKind::Label:
        case ControlKind::Frame:
            return WC_STATICW;
        case ControlKind::TextBox:
            return WC_EDITW;
        case ControlKind::TabStrip:
            return WC_TABCONTROLW;
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::CommandButton:
            break;
    }
    return WC_BUTTONW;
}

// A window with a plain native control for each of the form's, all in the window itself.
class BareWindow {
public:
    BareWindow() {
        const HINSTANCE instance = GetModuleHandleW(nullptr);
        WNDCLASSEXW bare{};
        bare.cbSize = sizeof(bare);
        bare.lpfnWndProc = &DefWindowProcW;
        bare.hInstance = instance;
        bare.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        bare.lpszClassName = L"BareWindow";
        RegisterClassExW(&bare);
        window_ = CreateWindowExW(WS_EX_CONTROLPARENT, L"BareWindow", L"bare", WS_OVERLAPPEDWINDOW,
                                  0, 0, 900, 560, nullptr, nullptr, instance, nullptr);
        int top = 0;
        for (const ControlSpec& spec : controlCatalogue) {
            const std::wstring caption(spec.caption);
            CreateWindowExW(0, NativeClassOf(spec.kind), caption.c_str(), WS_CHILD | WS_VISIBLE, 0,
                            top, 400, 20, window_, nullptr, instance, nullptr);
            top += 5;
        }
        ShowWindow(window_, SW_SHOWNORMAL);
        UpdateWindow(window_);
        ServeWaitingMessages();
    }
    ~BareWindow() {
        DestroyWindow(window_);
        ServeWaitingMessages();
    }
    BareWindow(const BareWindow&) = delete;
    BareWindow& operator=(const BareWindow&) = delete;

private:
    HWND window_;
};

// The program's window, from the form's first showing until everything is painted.
class ShownWindow {
public:
    ShownWindow() {
        window->Attach(form, actions);
        form.setVisible(true);
        ServeWaitingMessages();
    }
    ~ShownWindow() {
        window.reset();
        ServeWaitingMessages();
    }
    ShownWindow(const ShownWindow&) = delete;
    ShownWindow& operator=(const ShownWindow&) = delete;

    ComWhenNeeded com;
    std::unique_ptr<MainWindow> window =
        std::make_unique<MainWindow>(GetModuleHandleW(nullptr), com);
    Form form{window.get()};
    NoActions actions;
};

}  // namespace corvane::test
