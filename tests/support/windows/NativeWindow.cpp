#include "support/windows/NativeWindow.h"

#include "support/windows/Waiting.h"

namespace test_support {
namespace {

BOOL CALLBACK VisitWindow(HWND window, LPARAM visit) {
    return (*reinterpret_cast<const std::function<bool(HWND)>*>(visit))(window);
}

}  // namespace

void ForEachWindow(DWORD processId, const std::function<bool(HWND)>& visit) {
    const std::function<bool(HWND)> visitIfItsOwn = [&](HWND window) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        return owner != processId || visit(window);
    };
    EnumWindows(VisitWindow, reinterpret_cast<LPARAM>(&visitIfItsOwn));
}

void ForEachChild(HWND parent, const std::function<bool(HWND)>& visit) {
    EnumChildWindows(parent, VisitWindow, reinterpret_cast<LPARAM>(&visit));
}

HWND ChildWithId(HWND parent, int id) {
    HWND found = nullptr;
    ForEachChild(parent, [&](HWND child) {
        if (GetDlgCtrlID(child) == id)
            found = child;
        return !found;
    });
    return found;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[256];
    return std::wstring(name, static_cast<size_t>(GetClassNameW(window, name, 256)));
}

std::wstring TextOf(HWND window) {
    DWORD_PTR length = 0;
    SendMessageTimeoutW(window, WM_GETTEXTLENGTH, 0, 0, SMTO_NORMAL, patience, &length);
    std::wstring text(length + 1, L'\0');
    DWORD_PTR copied = 0;
    SendMessageTimeoutW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()),
                        SMTO_NORMAL, patience, &copied);
    text.resize(copied);
    return text;
}

}  // namespace test_support
