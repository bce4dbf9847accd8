#include "calls/CallerID.h"

#include <string>

#include "seams/Conversions.h"
#include "seams/StatusWriter.h"
#include "ui/form/Form.h"
#include "ui/form/NumberIn.h"
#include "util/Digits.h"
#include "util/Text.h"

namespace corvane {

bool NormalizeCallerID(Form& form, StatusWriter& status) {
    const bool keepBlanks = form.chkCallerIDRemoveSpaces.value() == CheckBox::unchecked;
    const std::wstring digits = ExtractDigits(form.txtCallerID.text(), false, keepBlanks);
    form.txtCallerIDDigits.setText(digits);
    if (digits.empty()) {
        status.WriteStatus(Join(L"Ignored non-numeric CallerID: ", form.txtCallerID.text(), L"."));
        return false;
    }
    if (form.chkIgnoreShortCallerID.checked() &&
        LongIn(form.txtCallerIDMinLength) > static_cast<std::int64_t>(digits.size())) {
        status.WriteStatus(Join(L"Ignored short CallerID: ", digits, L"."));
        return false;
    }

    std::wstring formatted = digits;
    constexpr std::size_t lengthWithCountryCode = 11;
    if (form.chkCallerIDIgnoreLeading1.checked() && formatted.size() == lengthWithCountryCode &&
        formatted.front() == L'1') {
        formatted.erase(0, 1);
    }
    if (form.chkFormatCallerID.checked())
        formatted = FormatNumericText(formatted, form.txtCallerIDFormat.text());
    form.txtCallerIDFormatted.setText(formatted);
    return true;
}

}  // namespace corvane
