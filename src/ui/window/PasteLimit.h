#pragma once

#include "platform/kit/Windows.h"

namespace corvane {

// A paste that does not fit into the text box as a whole is refused with a beep; by itself the box
// would keep the beginning. For boxes of one line with a limit.
void RefusePastesBeyondLimit(HWND textBox);

}  // namespace corvane
