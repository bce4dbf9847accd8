#pragma once

namespace corvane {

class Form;
class StatusWriter;

// Reduces txtCallerID to txtCallerIDDigits and lays it into the configured format as
// txtCallerIDFormatted. False, with a status line, when the caller ID holds no digits or is too
// short; the run ends then.
[[nodiscard]] bool NormalizeCallerID(Form& form, StatusWriter& status);

}  // namespace corvane
