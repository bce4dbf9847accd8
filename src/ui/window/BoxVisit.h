#pragma once

#include <string>

#include "ui/form/Form.h"
#include "ui/window/ControlWindows.h"

namespace corvane {

class FormActions;

// The user's stay in a box to type in: what is typed goes to the form, and the box is checked when
// the user goes on to another control, or before anything else acts.
class BoxVisit {
public:
    // Posted to the window when a box may have been left; OnFocusSettled is for it.
    static constexpr UINT focusSettled = WM_APP + 1;

    // The controls are those of a window that has been, or will be, created.
    BoxVisit(Form& form, FormActions& actions, const ControlWindows& controls)
        : form_(form), actions_(actions), controls_(controls) {}
    BoxVisit(const BoxVisit&) = delete;
    BoxVisit& operator=(const BoxVisit&) = delete;

    // The code of an EN_ notification of that box.
    void OnNotification(TextBox& box, int notification);
    void OnFocusSettled();
    // Checks the box that the user is in; false keeps the focus there.
    [[nodiscard]] bool Leave();

    // The native box shows already what its control is being told.
    [[nodiscard]] bool TypesInto(const Control& control) const { return &control == typedInto_; }

private:
    void Enter(TextBox& box);
    void EnterFocused();

    Form& form_;
    FormActions& actions_;
    const ControlWindows& controls_;
    TextBox* entered_ = nullptr;  // the box the user is in, or whose check is still to be done
    std::wstring textOnEntry_;    // what it held then
    bool leaving_ = false;        // its check runs: the focus moves of its boxes are no leaving
    const TextBox* typedInto_ = nullptr;  // while what was typed goes to the form
};

}  // namespace corvane
