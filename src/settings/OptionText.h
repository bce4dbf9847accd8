#pragma once

#include <string>
#include <string_view>

namespace corvane {

class Control;

// The stored text of an option's control: "0"/"1" of a check box, "True"/"False" of an option
// button, a text box's text as it stands.
[[nodiscard]] std::wstring OptionText(const Control& control);

// Sets the control from a stored text, trimmed. A text that does not convert raises error 13,
// a check box state that does not exist error 380.
void SetOptionFromText(Control& control, std::wstring_view stored);

}  // namespace corvane
