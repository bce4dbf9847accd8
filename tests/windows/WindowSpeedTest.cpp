#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <string>

#include "support/windows/NativeWindow.h"
#include "ui/form/Form.h"
#include "ui/form/FormActions.h"
#include "ui/window/MainWindow.h"

#include <commctrl.h>

namespace corvane::test {
namespace {

using test_support::TextOf;

class NoActions final : public FormActions {
public:
    void ButtonClicked(CommandButton&) override {}
    void CheckBoxClicked(CheckBox&) override {}
    void OptionClicked(OptionButton&) override {}
    bool MayLeave(TextBox&, bool) override { return true; }
    void Activated(bool) override {}
    bool MayClose() override { return true; }
};

[[nodiscard]] double Milliseconds(const std::function<void()>& work) {
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

void ServeWaitingMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

[[nodiscard]] const wchar_t* NativeClassOf(ControlKind kind) {
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

    std::unique_ptr<MainWindow> window = std::make_unique<MainWindow>(GetModuleHandleW(nullptr));
    Form form{window.get()};
    NoActions actions;
};

// A busy machine slows a measurement down, never up: the best of several is what the work costs.
constexpr int measurements = 25;

TEST(WindowSpeedTest, WindowAppearsNearlyAsFastAsABareOneWithAsManyControls) {
    constexpr double allowedRatio = 1.5;
    constexpr int enough = 5;
    double bare = std::numeric_limits<double>::max();
    double shown = std::numeric_limits<double>::max();
    { const BareWindow warmUp; }
    { const ShownWindow warmUp; }

    for (int i = 0; i < enough || (i < measurements && shown > allowedRatio * bare); ++i) {
        std::unique_ptr<BareWindow> plain;
        bare = std::min(bare, Milliseconds([&] { plain = std::make_unique<BareWindow>(); }));
        plain.reset();
        std::unique_ptr<ShownWindow> full;
        shown = std::min(shown, Milliseconds([&] { full = std::make_unique<ShownWindow>(); }));
        ASSERT_TRUE(IsWindowVisible(full->window->handle()));
    }

    EXPECT_LE(shown, allowedRatio * bare) << "bare " << bare << " ms, shown " << shown << " ms";
}

// The status box on its tab, where every line is seen, and hidden on another.
class StatusSpeedTest : public testing::TestWithParam<int> {
protected:
    [[nodiscard]] HWND NativeStatus() const {
        const HWND frame = GetDlgItem(
            shown_.window->handle(), ControlId(shown_.form.frameOptions(OptionsTab::status).row()));
        return GetDlgItem(frame, ControlId(shown_.form.txtStatus.row()));
    }

    // Milliseconds until all lines are in the native box.
    [[nodiscard]] double TimeOfLines(int count) {
        return Milliseconds([&] {
            for (int line = 0; line < count; ++line) {
                const std::wstring text =
                    L"Inbound call search for CallerID:  searching, line " + std::to_wstring(line);
                shown_.form.txtStatus.Append(whole_.empty() ? text : L"\r\n" + text);
                whole_ += whole_.empty() ? text : L"\r\n" + text;
            }
            EXPECT_EQ(GetWindowTextLengthW(NativeStatus()), static_cast<int>(whole_.size()));
            ServeWaitingMessages();
        });
    }

    ShownWindow shown_;
    std::wstring whole_;
};

TEST_P(StatusSpeedTest, TheTenThousandthStatusLineCostsAsMuchAsTheFirst) {
    constexpr int lines = 1000;
    constexpr double allowedRatio = 2;
    constexpr int enough = 3;
    double first = std::numeric_limits<double>::max();
    double last = std::numeric_limits<double>::max();
    shown_.form.SelectTab(shown_.form.tabstripOptions, GetParam());
    ServeWaitingMessages();

    for (int i = 0; i < enough || (i < measurements && last > allowedRatio * first); ++i) {
        shown_.form.txtStatus.setText(L"");
        whole_.clear();
        first = std::min(first, TimeOfLines(lines));
        static_cast<void>(TimeOfLines(8 * lines));
        last = std::min(last, TimeOfLines(lines));
    }

    EXPECT_EQ(TextOf(NativeStatus()), whole_);
    EXPECT_LE(last, allowedRatio * first) << "first " << first << " ms, last " << last << " ms";
}

INSTANTIATE_TEST_SUITE_P(Tabs, StatusSpeedTest,
                         testing::Values(OptionsTab::general, OptionsTab::status));

}  // namespace
}  // namespace corvane::test
