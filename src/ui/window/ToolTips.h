#pragma once

#include <string>

#include "platform/kit/Windows.h"

namespace corvane {

// The help that appears beside a control when the mouse rests upon it.
class ToolTips {
public:
    // The tips go with the window, which is one of this thread's.
    void Create(HWND window);
    void SetMaximumWidth(int pixels) const;
    // What the control has to say from now on.
    void Set(HWND control, const std::wstring& text) const;

    // Windows gives the mouse above a disabled control to the window beneath, which tells it here:
    // the control that is seen there, and the message that the window beneath received.
    void ShowOver(HWND disabled, const std::wstring& text, const MSG& received);

private:
    HWND tips_ = nullptr;
    HWND window_ = nullptr;
    HWND disabled_ = nullptr;  // has a place among the tips of beneath_
    HWND beneath_ = nullptr;
};

}  // namespace corvane
