#pragma once

#include "platform/kit/Windows.h"

namespace corvane {

// Sees the messages of a native window before the window does, for as long as both live.
class WindowSubclass {
public:
    // The window is one of this thread's.
    explicit WindowSubclass(HWND window);
    virtual ~WindowSubclass();
    WindowSubclass(const WindowSubclass&) = delete;
    WindowSubclass& operator=(const WindowSubclass&) = delete;

protected:
    [[nodiscard]] HWND window() const { return window_; }
    // What the window answers.
    virtual LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    // What it answers by itself.
    [[nodiscard]] LRESULT PassOn(UINT message, WPARAM wParam, LPARAM lParam) const;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR self, DWORD_PTR);
    void Remove() const;

    const HWND window_;
};

}  // namespace corvane
