#include "windows/WindowList.h"

#include <utility>

#include "shared/Text.h"

namespace practice {
namespace {

// A listed window carries its name as a property.
constexpr const wchar_t* nameProperty = L"PracticeGoldMineName";

const wchar_t* ListedName(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId()
               ? static_cast<const wchar_t*>(GetPropW(window, nameProperty))
               : nullptr;
}

BOOL CALLBACK AddControl(HWND control, LPARAM list) {
    const int id = GetDlgCtrlID(control);
    if (id > 0)
        reinterpret_cast<std::vector<ListedControl>*>(list)->push_back({id, TextOf(control)});
    return TRUE;
}

BOOL CALLBACK AddWindow(HWND window, LPARAM list) {
    if (const wchar_t* name = ListedName(window)) {
        ListedWindow listed{HandleToLong(window), name, {}};
        EnumChildWindows(window, AddControl, reinterpret_cast<LPARAM>(&listed.controls));
        reinterpret_cast<std::vector<ListedWindow>*>(list)->push_back(std::move(listed));
    }
    return TRUE;
}

}  // namespace

void ListWindowAs(HWND window, const wchar_t* name) {
    SetPropW(window, nameProperty, const_cast<wchar_t*>(name));
}

std::vector<ListedWindow> ListWindows() {
    std::vector<ListedWindow> windows;
    EnumThreadWindows(GetCurrentThreadId(), AddWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

bool SetListedControlText(long windowHandle, long controlId, const std::wstring& text) {
    const HWND window = static_cast<HWND>(LongToHandle(windowHandle));
    if (controlId <= 0 || !IsWindow(window) || !ListedName(window))
        return false;
    const HWND control = GetDlgItem(window, static_cast<int>(controlId));
    return control && SetWindowTextW(control, WithControlLineEnds(text).c_str());
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

}  // namespace practice
