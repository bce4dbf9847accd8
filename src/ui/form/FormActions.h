#pragma once

namespace corvane {

class CheckBox;
class CommandButton;
class OptionButton;
class TextBox;

// What the user does in the shown window. The view calls, the program answers; the new state
// comes back through the form.
class FormActions {
public:
    virtual ~FormActions() = default;
    virtual void ButtonClicked(CommandButton& button) = 0;
    virtual void CheckBoxClicked(CheckBox& box) = 0;
    virtual void OptionClicked(OptionButton& option) = 0;
    // The box already holds what was typed. False keeps the focus in it.
    [[nodiscard]] virtual bool MayLeave(TextBox& box, bool changed) = 0;
    // The window became active: the user comes from another program, or a box of this one closed.
    virtual void Activated(bool fromAnotherProgram) = 0;
    // False keeps the window open.
    [[nodiscard]] virtual bool MayClose() = 0;
};

}  // namespace corvane
