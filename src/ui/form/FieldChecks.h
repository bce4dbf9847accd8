#pragma once

namespace corvane {

class Form;
class MessageBoxes;
class TextBox;

// What happens when the user leaves one of the numeric option fields: its text is trimmed and
// checked as its row says.
class FieldChecks {
public:
    FieldChecks(Form& form, MessageBoxes& boxes) : form_(form), boxes_(boxes) {}

    // False when the check failed and the focus must stay in the field. Fields without a check
    // may always be left.
    [[nodiscard]] bool MayLeave(TextBox& field);

private:
    Form& form_;
    MessageBoxes& boxes_;
};

}  // namespace corvane
