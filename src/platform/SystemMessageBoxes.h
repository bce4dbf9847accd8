#pragma once

#include "platform/kit/ProgramWindow.h"
#include "seams/MessageBoxes.h"

namespace corvane {

// The system's message box, before the program's window while that is shown.
class SystemMessageBoxes final : public MessageBoxes {
public:
    explicit SystemMessageBoxes(const ProgramWindow* window = nullptr) : window_(window) {}
    BoxAnswer Show(std::wstring_view text, BoxButtons buttons, BoxIcon icon) override;

private:
    const ProgramWindow* window_;
};

}  // namespace corvane
