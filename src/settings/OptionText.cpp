#include "settings/OptionText.h"

#include "seams/Conversions.h"
#include "ui/form/Form.h"
#include "util/Text.h"

namespace corvane {

std::wstring OptionText(const Control& control) {
    switch (control.spec().kind) {
        case ControlKind::CheckBox:
            return std::to_wstring(static_cast<const CheckBox&>(control).value());
        case ControlKind::OptionButton:
            return std::wstring(
                TextFromBoolean(static_cast<const OptionButton&>(control).selected()));
        case ControlKind::TextBox:
            return static_cast<const TextBox&>(control).text();
        default:
            return {};
    }
}

void SetOptionFromText(Control& control, std::wstring_view stored) {
    const std::wstring_view text = TrimBlanks(stored);
    switch (control.spec().kind) {
        case ControlKind::CheckBox:
            static_cast<CheckBox&>(control).setValue(IntegerFromText(text));
            break;
        case ControlKind::OptionButton:
            static_cast<OptionButton&>(control).setSelected(BooleanFromText(text));
            break;
        case ControlKind::TextBox:
            static_cast<TextBox&>(control).setText(text);
            break;
        default:
            break;
    }
}

}  // namespace corvane
