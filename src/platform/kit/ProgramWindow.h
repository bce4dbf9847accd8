#pragma once

#include "platform/kit/Windows.h"

namespace corvane {

// The program's window, for what stands below it: boxes stand before it, waits serve its keyboard.
class ProgramWindow {
public:
    virtual ~ProgramWindow() = default;
    // Nothing until it is shown, and again after it was closed.
    [[nodiscard]] virtual HWND handle() const = 0;
    // What the keyboard does in the window as a whole; true when the message is done with. Every
    // loop that serves the window's messages asks it first.
    virtual bool TranslateKey(MSG& message) = 0;
};

}  // namespace corvane
