#include "platform/SystemClock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <vector>

#include "platform/kit/Windows.h"

#include <oleauto.h>

namespace corvane::test {
namespace {

constexpr UINT probeMessage = WM_APP + 7;

// Calls back for each probe message that is dispatched to it.
class ProbeWindow {
public:
    explicit ProbeWindow(std::function<void(WPARAM)> onProbe) : onProbe_(std::move(onProbe)) {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = &ProbeWindow::Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"CorvaneProbe";
        RegisterClassW(&windowClass);
        window_ = CreateWindowExW(0, L"CorvaneProbe", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  windowClass.hInstance, this);
    }
    ~ProbeWindow() { DestroyWindow(window_); }
    ProbeWindow(const ProbeWindow&) = delete;
    ProbeWindow& operator=(const ProbeWindow&) = delete;

    void Post(WPARAM value) const { PostMessageW(window_, probeMessage, value, 0); }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_NCCREATE) {
            const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
            SetWindowLongPtrW(window, GWLP_USERDATA,
                              reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
        } else if (message == probeMessage) {
            reinterpret_cast<ProbeWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA))
                ->onProbe_(wParam);
            return 0;
        }
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND window_ = nullptr;
    std::function<void(WPARAM)> onProbe_;
};

double DateOf(const SYSTEMTIME& time) {
    double date = 0;
    EXPECT_TRUE(SystemTimeToVariantTime(const_cast<SYSTEMTIME*>(&time), &date));
    return date + time.wMilliseconds / 86'400'000.0;
}

TEST(SystemClockTest, LocalTimeLiesBetweenTwoReadingsOfTheSystems) {
    const SystemClock clock;
    SYSTEMTIME before;
    SYSTEMTIME after;

    GetLocalTime(&before);
    const LocalTimeMs time = clock.GetLocalTimeMs();
    GetLocalTime(&after);

    SYSTEMTIME read{};
    read.wYear = static_cast<WORD>(time.year);
    read.wMonth = static_cast<WORD>(time.month);
    read.wDay = static_cast<WORD>(time.day);
    read.wHour = static_cast<WORD>(time.hour);
    read.wMinute = static_cast<WORD>(time.minute);
    read.wSecond = static_cast<WORD>(time.second);
    read.wMilliseconds = static_cast<WORD>(time.millisecond);
    EXPECT_LE(DateOf(before), DateOf(read));
    EXPECT_LE(DateOf(read), DateOf(after));
}

TEST(SystemClockTest, MillisecondsMove) {
    const SystemClock clock;
    const ULONGLONG end = GetTickCount64() + 1000;
    const int first = clock.GetLocalTimeMs().millisecond;
    int other = first;
    do {
        other = clock.GetLocalTimeMs().millisecond;
    } while (other == first && GetTickCount64() < end);
    EXPECT_NE(other, first);
}

TEST(SystemClockTest, SleepTakesItsTime) {
    SystemClock clock;
    const auto begin = std::chrono::steady_clock::now();
    clock.Sleep(50);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(49));
}

TEST(SystemClockTest, PumpingDispatchesAllPostedMessagesInOrder) {
    SystemClock clock;
    std::vector<WPARAM> seen;
    const ProbeWindow window([&](WPARAM value) { seen.push_back(value); });
    window.Post(1);
    window.Post(2);

    clock.PumpEvents();

    EXPECT_EQ(seen, (std::vector<WPARAM>{1, 2}));
}

TEST(SystemClockTest, PumpingWithNothingPendingReturns) {
    SystemClock clock;
    clock.PumpEvents();
    int probes = 0;
    const ProbeWindow window([&](WPARAM) { ++probes; });
    clock.PumpEvents();
    EXPECT_EQ(probes, 0);
}

TEST(SystemClockTest, MessageThatPumpsAgainIsServed) {
    SystemClock clock;
    std::vector<WPARAM> seen;
    const ProbeWindow* self = nullptr;
    const ProbeWindow window([&](WPARAM value) {
        if (value == 1) {
            self->Post(2);
            clock.PumpEvents();
        }
        seen.push_back(value);
    });
    self = &window;
    window.Post(1);

    clock.PumpEvents();

    EXPECT_EQ(seen, (std::vector<WPARAM>{2, 1}));
}

TEST(SystemClockTest, QuitIsKeptForTheMainLoop) {
    SystemClock clock;
    PostQuitMessage(5);

    clock.PumpEvents();
    clock.PumpEvents();

    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5U);
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
}

}  // namespace
}  // namespace corvane::test
