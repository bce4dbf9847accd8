#include "platform/SystemClock.h"

namespace corvane {

LocalTimeMs SystemClock::GetLocalTimeMs() const {
    SYSTEMTIME now;
    GetLocalTime(&now);
    LocalTimeMs time;
    time.year = now.wYear;
    time.month = now.wMonth;
    time.day = now.wDay;
    time.hour = now.wHour;
    time.minute = now.wMinute;
    time.second = now.wSecond;
    time.millisecond = now.wMilliseconds;
    return time;
}

void SystemClock::Sleep(std::uint32_t milliseconds) {
    ::Sleep(milliseconds);
}

void SystemClock::PumpEvents() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            // It is for the main loop, once the procedure in progress has ended.
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (window_ && window_->TranslateKey(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace corvane
