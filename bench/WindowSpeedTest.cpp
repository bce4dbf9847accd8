#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/Form.h"
#include "ui/FormActions.h"
#include "ui/MainWindow.h"
#include "windows/NativeWindow.h"
#include "windows/PumpUntil.h"

#include <commctrl.h>

namespace corvane::test {
namespace {

class NoActions final : public FormActions {
public:
    void ButtonClicked(CommandButton&) override {}
    void CheckBoxClicked(CheckBox&) override {}
    void OptionClicked(OptionButton&) override {}
    bool MayLeave(TextBox&, bool) override { return true; }
    void Activated() override {}
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
        form.setVisible(true);
        ServeWaitingMessages();
    }
    ~ShownWindow() {
        window.reset();
        ServeWaitingMessages();
    }
    ShownWindow(const ShownWindow&) = delete;
    ShownWindow& operator=(const ShownWindow&) = delete;

    Form form;
    NoActions actions;
    std::unique_ptr<MainWindow> window =
        std::make_unique<MainWindow>(form, actions, GetModuleHandleW(nullptr));
};

template <std::size_t count>
[[nodiscard]] double Median(std::array<double, count> values) {
    std::sort(values.begin(), values.end());
    return values[count / 2];
}

TEST(WindowSpeedTest, WindowAppearsNearlyAsFastAsABareOneWithAsManyControls) {
    constexpr double allowedRatio = 1.5;
    constexpr std::size_t rounds = 9;
    std::array<double, rounds> bare{};
    std::array<double, rounds> shown{};
    { const BareWindow warmUp; }
    { const ShownWindow warmUp; }

    for (std::size_t round = 0; round < rounds; ++round) {
        std::unique_ptr<BareWindow> plain;
        bare[round] = Milliseconds([&] { plain = std::make_unique<BareWindow>(); });
        plain.reset();
        std::unique_ptr<ShownWindow> full;
        shown[round] = Milliseconds([&] { full = std::make_unique<ShownWindow>(); });
        ASSERT_TRUE(IsWindowVisible(full->window->handle()));
    }

    RecordProperty("bare_ms", std::to_string(Median(bare)));
    RecordProperty("shown_ms", std::to_string(Median(shown)));
    EXPECT_LE(Median(shown), allowedRatio * Median(bare))
        << "bare " << Median(bare) << " ms, shown " << Median(shown) << " ms";
}

// The status box on its tab, where every line is seen, and hidden on another.
class StatusSpeedTest : public testing::TestWithParam<int> {};

TEST_P(StatusSpeedTest, TheTenThousandthStatusLineCostsAsMuchAsTheFirst) {
    constexpr int thousands = 10;
    constexpr double allowedRatio = 2;
    constexpr double floorMilliseconds = 100;  // a tenth of a millisecond a line is fast
    ShownWindow shown;
    shown.form.SelectTab(shown.form.tabstripOptions, GetParam());
    ServeWaitingMessages();
    std::array<double, thousands> times{};
    std::wstring whole;

    for (double& time : times) {
        time = Milliseconds([&] {
            for (int line = 0; line < 1000; ++line) {
                const std::wstring text =
                    L"Inbound call search for CallerID:  searching, line " + std::to_wstring(line);
                shown.form.txtStatus.Append(whole.empty() ? text : L"\r\n" + text);
                whole += whole.empty() ? text : L"\r\n" + text;
            }
            ServeWaitingMessages();
        });
    }

    const int id = ControlId(shown.form.txtStatus.row());
    const HWND frame = GetDlgItem(shown.window->handle(),
                                  ControlId(shown.form.frameOptions(OptionsTab::status).row()));
    EXPECT_EQ(TextOf(GetDlgItem(frame, id)), whole);
    EXPECT_LE(times.back(), allowedRatio * std::max(times.front(), floorMilliseconds))
        << testing::PrintToString(times);
}

INSTANTIATE_TEST_SUITE_P(Tabs, StatusSpeedTest,
                         testing::Values(OptionsTab::general, OptionsTab::status));

}  // namespace
}  // namespace corvane::test
