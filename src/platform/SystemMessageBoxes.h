#pragma once

#include <functional>

#include "platform/kit/Windows.h"
#include "seams/MessageBoxes.h"

namespace corvane {

// The system's message box.
class SystemMessageBoxes final : public MessageBoxes {
public:
    // The main window while it is shown, else nothing.
    void setOwner(std::function<HWND()> owner) { owner_ = std::move(owner); }
    BoxAnswer Show(std::wstring_view text, BoxButtons buttons, BoxIcon icon) override;

private:
    std::function<HWND()> owner_;
};

}  // namespace corvane
