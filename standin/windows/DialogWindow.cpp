#include "windows/DialogWindow.h"

#include "windows/Desk.h"

namespace practice {

DialogWindow::DialogWindow(Desk& desk) : desk_(desk) {}

DialogWindow::~DialogWindow() {
    if (window_) {
        SetWindowLongPtrW(window_, DWLP_USER, 0);
        DestroyWindow(window_);
    }
}

void DialogWindow::Create(int templateId, HWND owner) {
    window_ = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(templateId), owner,
                                 Procedure, 0);
    SetWindowLongPtrW(window_, DWLP_USER, reinterpret_cast<LONG_PTR>(this));
}

void DialogWindow::Show() {
    ShowWindow(window_, SW_SHOWNORMAL);
}

void DialogWindow::SetText(int controlId, const wchar_t* text) {
    SetDlgItemTextW(window_, controlId, text);
}

INT_PTR CALLBACK DialogWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM) {
    auto* dialog = reinterpret_cast<DialogWindow*>(GetWindowLongPtrW(window, DWLP_USER));
    if (!dialog)
        return message == WM_INITDIALOG;
    switch (message) {
        case WM_COMMAND:
            if (dialog->OnCommand(LOWORD(wParam), HIWORD(wParam)))
                return TRUE;
            if (LOWORD(wParam) == IDCANCEL) {
                DestroyWindow(window);
                return TRUE;
            }
            return FALSE;
        case WM_CLOSE:
            DestroyWindow(window);
            return TRUE;
        case WM_NCDESTROY:
            SetWindowLongPtrW(window, DWLP_USER, 0);
            dialog->OnClosed();
            dialog->window_ = nullptr;
            dialog->desk_.Closed(dialog);
            return FALSE;
        default:
            return FALSE;
    }
}

}  // namespace practice
