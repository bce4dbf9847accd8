#pragma once

#include "platform/kit/Windows.h"

#include <commctrl.h>

namespace corvane {

// What the window uses of comctl32.dll.
struct CommonControls {
    decltype(&::InitCommonControlsEx) InitCommonControlsEx;
    decltype(&::SetWindowSubclass) SetWindowSubclass;
    decltype(&::RemoveWindowSubclass) RemoveWindowSubclass;
    decltype(&::DefSubclassProc) DefSubclassProc;
};

// Bound at its first use. To bind it at every start, as an import is, takes longer than an event
// that shows nothing. Raises when Windows does not hand it out.
[[nodiscard]] const CommonControls& TheCommonControls();

}  // namespace corvane
