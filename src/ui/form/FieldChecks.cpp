#include "ui/form/FieldChecks.h"

#include <optional>

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

bool IsWithin(const TextBox& field, std::int32_t lowest, std::int32_t highest) {
    const auto number = WholeNumber(field.text());
    return number && *number >= lowest && *number <= highest;
}

}  // namespace

bool FieldChecks::MayLeave(TextBox& field) {
    const bool isLength =
        &field == &form_.txtOutboundMaxLength || &field == &form_.txtCallerIDMinLength;
    const bool isSeconds = &field == &form_.txtDelayAddingLinkSeconds ||
                           &field == &form_.txtRecordingFileMaxAgeSeconds;
    const bool isComDuration = &field == &form_.txtCOMDurationSeconds;
    if (!isLength && !isSeconds && !isComDuration)
        return true;

    field.setText(std::wstring(TrimBlanks(field.text())));
    if (isLength)
        return CheckLength(field);
    if (isSeconds)
        return CheckSeconds(field);
    return CheckComDuration();
}

bool FieldChecks::CheckLength(const TextBox& field) {
    if (IsWithin(field, 1, 20))
        return true;
    boxes_.Notify(L"Please enter a numeric value from 1 to 20");
    return false;
}

bool FieldChecks::CheckSeconds(const TextBox& field) {
    if (!IsNumericText(field.text())) {
        boxes_.Notify(L"Please provide a numeric value in seconds");
        return false;
    }
    if (field.text() == L"0") {
        const bool isDelay = &field == &form_.txtDelayAddingLinkSeconds;
        CheckBox& box = isDelay ? static_cast<CheckBox&>(form_.chkDelayAddingLink)
                                : static_cast<CheckBox&>(form_.chkConfirmRecentRecordingFile);
        box.setChecked(false);
    }
    return true;
}

bool FieldChecks::CheckComDuration() {
    const TextBox& field = form_.txtCOMDurationSeconds;
    if (!IsWithin(field, 0, 99)) {
        boxes_.Notify(L"Please provide a numeric value between 0 and 99 seconds");
        return false;
    }
    if (LongFromText(field.text()) == 0) {
        boxes_.Notify(
            L"Setting this to 0 seconds will log every GoldMine interaction. The log file will "
            L"grow quickly.",
            BoxIcon::Exclamation);
    }
    return true;
}

}  // namespace corvane
