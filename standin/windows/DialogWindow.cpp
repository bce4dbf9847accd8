#include "windows/DialogWindow.h"

#include "windows/Desk.h"

namespace practice {

DialogWindow::DialogWindow(Desk& desk) : desk_(desk) {}

void DialogWindow::Create(int templateId, HWND owner) {
    window_.reset(CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(templateId), owner,
                                     Procedure, 0));
    SetWindowLongPtrW(handle(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void DialogWindow::Show() {
    ShowWindow(handle(), SW_SHOWNORMAL);
}

void DialogWindow::SetText(int controlId, const wchar_t* text) {
    SetDlgItemTextW(handle(), controlId, text);
}

INT_PTR CALLBACK DialogWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM) {
    auto* dialog = reinterpret_cast<DialogWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
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
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            dialog->OnClosed();
            dialog->window_.release();
            dialog->desk_.Closed(dialog);
            return FALSE;
        default:
            return FALSE;
    }
}

}  // namespace practice
