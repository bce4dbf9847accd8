#pragma once

#include "platform/kit/ProgramWindow.h"
#include "seams/MessageBoxes.h"

namespace corvane {

// Another program starts it for a call or with a number to dial, a person without parameters.
enum class StartedBy { Hand, OtherProgram };

// The system's message box, before the program's window while that is shown. In a run that nobody
// started by hand it comes unasked for: it stands above all windows, and keys that the user typed
// before do not answer it.
class SystemMessageBoxes final : public MessageBoxes {
public:
    explicit SystemMessageBoxes(StartedBy startedBy, const ProgramWindow* window = nullptr)
        : startedBy_(startedBy), window_(window) {}
    BoxAnswer Show(std::wstring_view text, BoxButtons buttons, BoxIcon icon) override;

private:
    StartedBy startedBy_;
    const ProgramWindow* window_;
};

}  // namespace corvane
