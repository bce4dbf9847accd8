#pragma once

#include "platform/kit/Handles.h"

namespace corvane {

// The dots per inch of the monitor that shows the window; the system's where Windows does not
// tell per monitor.
[[nodiscard]] UINT DpiOfWindow(HWND window);

// The resolution is in dots per inch.
[[nodiscard]] int PixelsFromTwips(int twips, UINT dpi);

// The system's message font at that resolution, in dots per inch.
[[nodiscard]] UniqueFont CreateMessageFont(UINT dpi);

}  // namespace corvane
