#pragma once

#include <windows.h>

#include "shared/Handles.h"

namespace practice {

class Desk;

// A modeless dialog of the desk, made from a dialog template.
class DialogWindow {
public:
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;
    virtual ~DialogWindow() = default;

    [[nodiscard]] HWND handle() const { return window_.get(); }

protected:
    explicit DialogWindow(Desk& desk);

    // Makes the window; derived constructors fill its controls and then show it.
    void Create(int templateId, HWND owner);
    void Show();
    void SetText(int controlId, const wchar_t* text);

    // A control's notification; true when it was handled. IDCANCEL closes the dialog by itself.
    virtual bool OnCommand(int controlId, int notification) = 0;
    // The window is going.
    virtual void OnClosed() {}

    Desk& desk_;

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    Owned<HWND> window_;
};

}  // namespace practice
