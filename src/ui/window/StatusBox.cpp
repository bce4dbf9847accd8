#include "ui/window/StatusBox.h"

#include <algorithm>
#include <string>

namespace corvane {

namespace {

constexpr UINT_PTR flushTimer = 0x4C42;
constexpr UINT flushMilliseconds = 50;
constexpr LONGLONG restAfterShowing = 19;  // times what the showing took: a share of 5 percent

LONGLONG Now() {
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    return counter.QuadPart;
}

LONGLONG OneSecond() {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return frequency.QuadPart;
}

// Whether the answer to the message depends on the text.
bool LooksAtText(UINT message) {
    return message == WM_GETTEXT || message == WM_GETTEXTLENGTH || message == WM_COPY ||
           (message >= EM_GETSEL && message <= EM_GETIMESTATUS) ||
           (message >= WM_KEYFIRST && message <= WM_KEYLAST) || message == WM_LBUTTONDOWN;
}

}  // namespace

void StatusBox::ShowText() {
    busy_ = true;
    SetWindowTextW(window(), model_.text().c_str());
    shown_ = model_.text().size();
    SendMessageW(window(), EM_SETSEL, shown_, static_cast<LPARAM>(shown_));
    SendMessageW(window(), EM_SCROLLCARET, 0, 0);
    busy_ = false;
}

void StatusBox::ShowAppended() {
    if (Now() >= nextFlush_)
        Flush();
    else if (!timerRuns_)
        timerRuns_ = SetTimer(window(), flushTimer, flushMilliseconds, nullptr) != 0;
}

void StatusBox::Flush() {
    const std::wstring& text = model_.text();
    if (shown_ == text.size())
        return;
    const LONGLONG begin = Now();
    busy_ = true;
    SendMessageW(window(), EM_SETSEL, shown_, static_cast<LPARAM>(shown_));
    SendMessageW(window(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str() + shown_));
    SendMessageW(window(), EM_SCROLLCARET, 0, 0);
    UpdateWindow(window());
    busy_ = false;
    shown_ = text.size();
    const LONGLONG end = Now();
    // One showing that the machine held up must not keep the next lines back for long.
    nextFlush_ = end + std::min(restAfterShowing * (end - begin), OneSecond());
}

LRESULT StatusBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER && wParam == flushTimer) {
        KillTimer(window(), flushTimer);
        timerRuns_ = false;
        Flush();
        return 0;
    }
    if (!busy_ && LooksAtText(message))
        Flush();
    return PassOn(message, wParam, lParam);
}

}  // namespace corvane
