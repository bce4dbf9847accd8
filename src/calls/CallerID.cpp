#include "calls/CallerID.h"

#include "ui/Form.h"
#include "util/Conversions.h"
#include "util/StatusWriter.h"
#include "util/Text.h"

namespace corvane {

std::wstring ExtractDigits(std::wstring_view text, bool allowDialCharacters, bool keepBlanks) {
    std::wstring kept;
    for (const wchar_t character : text) {
        const bool isDigit = character >= L'0' && character <= L'9';
        const bool isDialCharacter = character == L'#' || character == L'*';
        if (isDigit || (allowDialCharacters && isDialCharacter) ||
            (keepBlanks && character == L' ')) {
            kept += character;
        }
    }
    return kept;
}

bool NormalizeCallerID(Form& form, StatusWriter& status) {
    const bool keepBlanks = form.chkCallerIDRemoveSpaces.value() == CheckBox::unchecked;
    const std::wstring digits = ExtractDigits(form.txtCallerID.text(), false, keepBlanks);
    form.txtCallerIDDigits.setText(digits);
    if (digits.empty()) {
        status.WriteStatus(Join(L"Ignored non-numeric CallerID: ", form.txtCallerID.text(), L"."));
        return false;
    }
    if (form.chkIgnoreShortCallerID.checked() &&
        LongFromText(form.txtCallerIDMinLength.text()) > static_cast<std::int64_t>(digits.size())) {
        status.WriteStatus(Join(L"Ignored short CallerID: ", digits, L"."));
        return false;
    }

    std::wstring formatted = digits;
    constexpr std::size_t lengthWithCountryCode = 11;
    if (form.chkCallerIDIgnoreLeading1.checked() && formatted.size() == lengthWithCountryCode &&
        formatted.front() == L'1') {
        formatted.erase(0, 1);
    }
    if (form.chkFormatCallerID.checked()) {
        formatted = FormatNumericText(formatted, form.txtCallerIDFormat.text());
    }
    form.txtCallerIDFormatted.setText(formatted);
    return true;
}

}  // namespace corvane
