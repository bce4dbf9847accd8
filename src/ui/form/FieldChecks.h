#pragma once

#include <string_view>

namespace corvane {

class Form;
class MessageBoxes;
class TextBox;
struct NumberCheck;

// Whether a box with that check takes the text.
[[nodiscard]] bool Passes(std::wstring_view text, const NumberCheck& check);

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
