#pragma once

#include <string>
#include <string_view>

namespace corvane {

class Form;
class StatusWriter;

// Keeps the digits 0 to 9 in order, with "#" and "*" when dial characters are allowed and blanks
// when they are to be kept; everything else is dropped.
[[nodiscard]] std::wstring ExtractDigits(std::wstring_view text, bool allowDialCharacters,
                                         bool keepBlanks);

// Reduces txtCallerID to txtCallerIDDigits and lays it into the configured format as
// txtCallerIDFormatted. False, with a status line, when the caller ID holds no digits or is too
// short; the run ends then.
[[nodiscard]] bool NormalizeCallerID(Form& form, StatusWriter& status);

}  // namespace corvane
