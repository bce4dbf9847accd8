#include "platform/SystemMessageBoxes.h"

#include <string>

#include "platform/kit/SystemLibraries.h"
#include "util/Text.h"

namespace corvane {

namespace {

UINT StyleOf(BoxButtons buttons) {
    switch (buttons) {
        case BoxButtons::YesNo:
            return MB_YESNO;
        case BoxButtons::YesNoCancel:
            return MB_YESNOCANCEL;
        default:
            return MB_OK;
    }
}

UINT StyleOf(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Critical:
            return MB_ICONSTOP;
        case BoxIcon::Exclamation:
            return MB_ICONEXCLAMATION;
        default:
            return 0;
    }
}

// What the user typed before the box was there is no answer to it.
void RemoveTypedKeys() {
    MSG key;
    while (PeekMessageW(&key, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE | PM_NOYIELD)) {
    }
}

}  // namespace

BoxAnswer SystemMessageBoxes::Show(std::wstring_view text, BoxButtons buttons, BoxIcon icon) {
    const HWND owner = window_ ? window_->handle() : nullptr;
    // The user may be in another program, on the phone: the box must not hide behind it. Windows
    // may refuse the foreground to a program that nobody started by hand; it cannot refuse the
    // topmost place.
    const bool byHand = startedBy_ == StartedBy::Hand;
    const UINT place = MB_SETFOREGROUND | (byHand ? 0U : MB_TOPMOST);
    LoadWhatControlsBind();
    if (!byHand)
        RemoveTypedKeys();
    const UINT style = StyleOf(buttons) | StyleOf(icon) | place;
    switch (
        MessageBoxW(owner, std::wstring(text).c_str(), std::wstring(productName).c_str(), style)) {
        case IDYES:
            return BoxAnswer::Yes;
        case IDNO:
            return BoxAnswer::No;
        case IDCANCEL:
            return BoxAnswer::Cancel;
        default:
            return BoxAnswer::Ok;
    }
}

}  // namespace corvane
