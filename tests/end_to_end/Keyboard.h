#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

namespace end_to_end {

// Keys of the real keyboard: they go wherever the focus of the desktop's foreground window is.

// Brings the window to the foreground; a failure when it does not come.
void BringToForeground(HWND window);

// Presses these virtual keys together, in this order, and lets them go.
void Press(std::initializer_list<WORD> keys);

// Types letters and digits, which have to be capitals or figures.
void TypeKeys(const std::string& characters);

}  // namespace end_to_end
