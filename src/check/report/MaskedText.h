#pragma once

#include <string>
#include <string_view>

namespace corvane {

class Masking;

// A text of CorvaneTo3CX's log, or one that this program says, with all masked that differs in it.
// It is known by its form: of any other only the length is told.
[[nodiscard]] std::wstring MaskedText(std::wstring_view text, Masking& masking);

// What a text that is not shown leaves behind.
[[nodiscard]] std::wstring HiddenText(std::wstring_view text);

}  // namespace corvane
