#include "ui/window/WindowSubclass.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace corvane::test {
namespace {

constexpr UINT probe = WM_APP + 1;
constexpr LRESULT windowsOwn = 5;

// Answers a probe with its own number, and asks itself once more at its very end.
class ProbedWindow {
public:
    ProbedWindow() {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &ProbedWindow::Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"CorvaneProbed";
        RegisterClassW(&windowClass);
        handle_ = CreateWindowExW(0, L"CorvaneProbed", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  windowClass.hInstance, nullptr);
        EXPECT_NE(handle_, nullptr);
    }
    ~ProbedWindow() { End(); }
    ProbedWindow(const ProbedWindow&) = delete;
    ProbedWindow& operator=(const ProbedWindow&) = delete;

    [[nodiscard]] HWND handle() const { return handle_; }
    [[nodiscard]] LRESULT Probe() const { return SendMessageW(handle_, probe, 0, 0); }
    void End() const { DestroyWindow(handle_); }

    static inline LRESULT answerAtTheEnd = 0;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == probe)
            return windowsOwn;
        if (message == WM_NCDESTROY)
            answerAtTheEnd = SendMessageW(window, probe, 0, 0);
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND handle_ = nullptr;
};

// Adds to the answer to a probe.
class Adding final : public WindowSubclass {
public:
    Adding(HWND window, LRESULT more) : WindowSubclass(window), more_(more) {}

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        const LRESULT answer = PassOn(message, wParam, lParam);
        return message == probe ? answer + more_ : answer;
    }

    LRESULT more_;
};

TEST(WindowSubclassTest, SeesTheMessagesAndPassesThemOn) {
    const ProbedWindow window;
    EXPECT_EQ(window.Probe(), windowsOwn);
    const Adding subclass(window.handle(), 10);
    EXPECT_EQ(window.Probe(), windowsOwn + 10);
}

TEST(WindowSubclassTest, ThatEndsFirstLeavesTheWindowToItself) {
    const ProbedWindow window;
    auto subclass = std::make_unique<Adding>(window.handle(), 10);
    ASSERT_EQ(window.Probe(), windowsOwn + 10);
    subclass.reset();
    EXPECT_EQ(window.Probe(), windowsOwn);
}

TEST(WindowSubclassTest, IsGoneBeforeTheWindowHasEnded) {
    const ProbedWindow window;
    auto subclass = std::make_unique<Adding>(window.handle(), 10);
    window.End();
    EXPECT_EQ(ProbedWindow::answerAtTheEnd, windowsOwn);
    EXPECT_FALSE(IsWindow(window.handle()));
    subclass.reset();  // finds no window any more
}

TEST(WindowSubclassTest, SeveralOfOneWindowEndInAnyOrder) {
    const ProbedWindow window;
    auto first = std::make_unique<Adding>(window.handle(), 10);
    const Adding second(window.handle(), 100);
    auto third = std::make_unique<Adding>(window.handle(), 1000);
    EXPECT_EQ(window.Probe(), windowsOwn + 1110);
    first.reset();
    EXPECT_EQ(window.Probe(), windowsOwn + 1100);
    third.reset();
    EXPECT_EQ(window.Probe(), windowsOwn + 100);
}

}  // namespace
}  // namespace corvane::test
