#include "ui/window/PasteLimit.h"

#include <algorithm>
#include <string_view>

#include <commctrl.h>

namespace corvane {

namespace {

// Characters of the clipboard's first line, which is what a box of one line takes.
std::size_t PastedLength(HWND textBox) {
    std::size_t length = 0;
    if (!OpenClipboard(textBox))
        return length;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        if (const auto* text = static_cast<const wchar_t*>(GlobalLock(data))) {
            // Another program wrote it: its end may be missing.
            const std::wstring_view all(text, GlobalSize(data) / sizeof(wchar_t));
            length = std::min(all.size(), all.find_first_of(std::wstring_view(L"\r\n\0", 3)));
            GlobalUnlock(data);
        }
    }
    CloseClipboard();
    return length;
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

LRESULT CALLBACK Procedure(HWND textBox, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                           DWORD_PTR) {
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(textBox, &Procedure, id);
    if (message == WM_PASTE && !Fits(textBox)) {
        MessageBeep(MB_OK);
        return 0;
    }
    return DefSubclassProc(textBox, message, wParam, lParam);
}

}  // namespace

void RefusePastesBeyondLimit(HWND textBox) {
    SetWindowSubclass(textBox, &Procedure, 1, 0);
}

}  // namespace corvane
