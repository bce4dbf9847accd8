#include "ui/window/PasteLimit.h"

#include <algorithm>
#include <string_view>

#include "platform/kit/Handles.h"

namespace corvane {

namespace {

// Characters of the clipboard's first line, which is what a box of one line takes.
std::size_t PastedLength(HWND textBox) {
    const UniqueClipboard clipboard(OpenClipboard(textBox) ? textBox : nullptr);
    const HANDLE data = clipboard ? GetClipboardData(CF_UNICODETEXT) : nullptr;
    const auto* text = data ? static_cast<const wchar_t*>(GlobalLock(data)) : nullptr;
    if (!text)
        return 0;
    const UniqueGlobalLock lock(data);
    // Another program wrote it: its end may be missing.
    const std::wstring_view all(text, GlobalSize(data) / sizeof(wchar_t));
    return std::min(all.size(), all.find_first_of(std::wstring_view(L"\r\n\0", 3)));
}

bool Fits(HWND textBox) {
    DWORD begin = 0;
    DWORD end = 0;
    SendMessageW(textBox, EM_GETSEL, reinterpret_cast<WPARAM>(&begin),
                 reinterpret_cast<LPARAM>(&end));
    const auto limit = static_cast<std::size_t>(SendMessageW(textBox, EM_GETLIMITTEXT, 0, 0));
    const auto held = static_cast<std::size_t>(GetWindowTextLengthW(textBox));
    return held - (end - begin) + PastedLength(textBox) <= limit;
}

}  // namespace

LRESULT PasteLimit::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PASTE || Fits(window()))
        return PassOn(message, wParam, lParam);
    MessageBeep(MB_OK);
    return 0;
}

}  // namespace corvane
