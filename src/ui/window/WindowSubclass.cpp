#include "ui/window/WindowSubclass.h"

#include "ui/window/CommonControls.h"

namespace corvane {

WindowSubclass::WindowSubclass(HWND window) : window_(window) {
    TheCommonControls().SetWindowSubclass(window, &Procedure, reinterpret_cast<UINT_PTR>(this), 0);
}

WindowSubclass::~WindowSubclass() {
    Remove();
}

// A second time finds nothing.
void WindowSubclass::Remove() const {
    TheCommonControls().RemoveWindowSubclass(window_, &Procedure, reinterpret_cast<UINT_PTR>(this));
}

LRESULT WindowSubclass::PassOn(UINT message, WPARAM wParam, LPARAM lParam) const {
    return TheCommonControls().DefSubclassProc(window_, message, wParam, lParam);
}

LRESULT CALLBACK WindowSubclass::Procedure(HWND, UINT message, WPARAM wParam, LPARAM lParam,
                                           UINT_PTR self, DWORD_PTR) {
    auto& subclass = *reinterpret_cast<WindowSubclass*>(self);
    if (message != WM_NCDESTROY)
        return subclass.OnMessage(message, wParam, lParam);
    subclass.Remove();
    return subclass.PassOn(message, wParam, lParam);
}

}  // namespace corvane
