#include "ui/LogBox.h"

#include <commctrl.h>

namespace corvane {

namespace {

constexpr UINT_PTR flushTimer = 0x4C42;
constexpr UINT flushMilliseconds = 50;
constexpr int linesShownAtOnce = 40;  // more than a call writes

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
    if (shownAtOnce_ < linesShownAtOnce || GetTickCount64() - lastFlush_ >= flushMilliseconds)
        Flush();
    if (++shownAtOnce_ == 1)
        SetTimer(native_, flushTimer, flushMilliseconds, nullptr);
}

void LogBox::Flush() {
    const std::wstring& text = model_.text();
    if (shown_ == text.size())
        return;
    busy_ = true;
    SendMessageW(native_, EM_SETSEL, shown_, static_cast<LPARAM>(shown_));
    SendMessageW(native_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str() + shown_));
    SendMessageW(native_, EM_SCROLLCARET, 0, 0);
    busy_ = false;
    shown_ = text.size();
    lastFlush_ = GetTickCount64();
}

LRESULT CALLBACK LogBox::Procedure(HWND native, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR id, DWORD_PTR self) {
    auto& box = *reinterpret_cast<LogBox*>(self);
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(native, &LogBox::Procedure, id);
    if (message == WM_TIMER && wParam == flushTimer) {
        KillTimer(native, flushTimer);
        box.shownAtOnce_ = 0;
        box.Flush();
        return 0;
    }
    if (!box.busy_ && LooksAtText(message))
        box.Flush();
    return DefSubclassProc(native, message, wParam, lParam);
}

}  // namespace corvane
