#pragma once

#include "platform/kit/Windows.h"

namespace corvane::test {

inline constexpr DWORD patience = 20'000;  // milliseconds until a test gives up

// Serves window messages and COM calls until the condition holds; false when it does not in time.
template <class Condition>
[[nodiscard]] bool PumpUntil(Condition&& condition, DWORD milliseconds = patience) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (!condition()) {
        if (GetTickCount64() >= end)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return true;
}

// The same without serving messages, for threads that have none.
template <class Condition>
[[nodiscard]] bool WaitUntil(Condition&& condition, DWORD milliseconds = patience) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (!condition()) {
        if (GetTickCount64() >= end)
            return false;
        Sleep(5);
    }
    return true;
}

}  // namespace corvane::test
