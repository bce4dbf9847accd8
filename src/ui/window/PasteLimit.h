#pragma once

#include "ui/window/WindowSubclass.h"

namespace corvane {

// A paste that does not fit into the text box as a whole is refused with a beep; by itself the box
// would keep the beginning. For boxes of one line with a limit.
class PasteLimit final : public WindowSubclass {
public:
    using WindowSubclass::WindowSubclass;

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
};

}  // namespace corvane
