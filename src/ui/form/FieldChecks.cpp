#include "ui/form/FieldChecks.h"

#include <optional>
#include <string>

#include "seams/Conversions.h"
#include "seams/MessageBoxes.h"
#include "ui/form/Form.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// Nothing for a text that is no number, or one too large for a whole number.
std::optional<std::int32_t> WholeNumber(std::wstring_view text) {
    try {
        return LongFromText(text);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

}  // namespace

bool Passes(std::wstring_view text, const NumberCheck& check) {
    if (check.anyNumber)
        return IsNumericText(text);
    const auto number = WholeNumber(text);
    return number && *number >= check.lowest && *number <= check.highest;
}

bool FieldChecks::MayLeave(TextBox& field) {
    if (!field.spec().number)
        return true;
    const NumberCheck& check = *field.spec().number;
    field.setText(std::wstring(TrimBlanks(field.text())));
    if (!Passes(field.text(), check)) {
        boxes_.Notify(check.refusal);
        return false;
    }
    if (check.zeroSwitchesOff && field.text() == L"0")
        static_cast<CheckBox&>(form_.control(field.spec().enabledBy)).setChecked(false);
    if (!check.zeroWarning.empty() && WholeNumber(field.text()) == 0)
        boxes_.Notify(check.zeroWarning, BoxIcon::Exclamation);
    return true;
}

}  // namespace corvane
