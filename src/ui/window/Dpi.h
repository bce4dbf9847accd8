#pragma once

#include "platform/kit/Windows.h"

namespace corvane {

// The dots per inch of the monitor that shows the window; the system's where Windows does not
// tell per monitor.
[[nodiscard]] UINT DpiOfWindow(HWND window);

[[nodiscard]] int PixelsFromTwips(int twips, UINT dpi);

// The system's message font at that resolution. The caller owns it.
[[nodiscard]] HFONT CreateMessageFont(UINT dpi);

}  // namespace corvane
