#pragma once

#include "ui/form/Form.h"
#include "ui/window/ControlWindows.h"

namespace corvane {

class BoxVisit;
class FormActions;

// What the keyboard does in the window beyond what the system's dialog keyboard does, and where the
// focus goes when it cannot stay.
class Keyboard {
public:
    // The controls are those of a window that has been, or will be, created.
    Keyboard(Form& form, FormActions& actions, const ControlWindows& controls, BoxVisit& visit)
        : form_(form), actions_(actions), controls_(controls), visit_(visit) {}
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    // True when the message was a key and is done with.
    bool Translate(MSG& message);

    // The answer to DM_GETDEFID, the dialog keyboard's question for the button that Enter presses.
    [[nodiscard]] LRESULT DefaultButton() const;

    // Moves the focus on from the window that had it before the change, if it cannot have it now.
    void KeepFocusUsable(const Control& changed, HWND before) const;

private:
    // Keys that belong to the window as a whole; false leaves them to the dialog keyboard.
    bool OnKey(const MSG& message);
    bool OnControlKey(const MSG& message);
    bool OnArrow(const MSG& message);
    bool OnKeyInManyLines(const MSG& message);
    void StepThroughTabs(HWND focused, int step);
    [[nodiscard]] TabStrip& StripBeside(HWND native) const;

    Form& form_;
    FormActions& actions_;
    const ControlWindows& controls_;
    BoxVisit& visit_;
};

}  // namespace corvane
