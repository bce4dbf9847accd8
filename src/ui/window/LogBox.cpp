#include "ui/window/LogBox.h"

#include <algorithm>

#include <commctrl.h>

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

void LogBox::Attach(HWND native) {
    native_ = native;
    SetWindowSubclass(native, &LogBox::Procedure, 0, reinterpret_cast<DWORD_PTR>(this));
}

void LogBox::ShowText() {
    busy_ = true;
    SetWindowTextW(native_, model_.text().c_str());
    shown_ = model_.text().size();
    SendMessageW(native_, EM_SETSEL, shown_, static_cast<LPARAM>(shown_));
    SendMessageW(native_, EM_SCROLLCARET, 0, 0);
    busy_ = false;
}

void LogBox::ShowAppended() {
    if (Now() >= nextFlush_)
        Flush();
    else if (!timerRuns_)
        timerRuns_ = SetTimer(native_, flushTimer, flushMilliseconds, nullptr) != 0;
}

void LogBox::Flush() {
    const std::wstring& text = model_.text();
    if (shown_ == text.size())
        return;
    const LONGLONG begin = Now();
    busy_ = true;
    SendMessageW(native_, EM_SETSEL, shown_, static_cast<LPARAM>(shown_));
    SendMessageW(native_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str() + shown_));
    SendMessageW(native_, EM_SCROLLCARET, 0, 0);
    UpdateWindow(native_);
    busy_ = false;
    shown_ = text.size();
    const LONGLONG end = Now();
    // One showing that the machine held up must not keep the next lines back for long.
    nextFlush_ = end + std::min(restAfterShowing * (end - begin), OneSecond());
}

LRESULT CALLBACK LogBox::Procedure(HWND native, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR id, DWORD_PTR self) {
    auto& box = *reinterpret_cast<LogBox*>(self);
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(native, &LogBox::Procedure, id);
    if (message == WM_TIMER && wParam == flushTimer) {
        KillTimer(native, flushTimer);
        box.timerRuns_ = false;
        box.Flush();
        return 0;
    }
    if (!box.busy_ && LooksAtText(message))
        box.Flush();
    return DefSubclassProc(native, message, wParam, lParam);
}

}  // namespace corvane
