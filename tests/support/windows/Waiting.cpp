#include "support/windows/Waiting.h"

namespace test_support {
namespace {

bool Until(const std::function<bool()>& condition, void (*passTime)()) {
    const ULONGLONG deadline = GetTickCount64() + patience;
    while (!condition()) {
        if (GetTickCount64() > deadline)
            return false;
        passTime();
    }
    return true;
}

void SleepALittle() {
    Sleep(5);
}

void ServeMessages() {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

}  // namespace

bool WaitUntil(const std::function<bool()>& condition) {
    return Until(condition, SleepALittle);
}

bool PumpUntil(const std::function<bool()>& condition) {
    return Until(condition, ServeMessages);
}

}  // namespace test_support
