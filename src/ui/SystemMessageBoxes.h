#pragma once

#include <functional>

#include "ui/MessageBoxes.h"
#include "util/Windows.h"

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
