#pragma once

#include <string>
#include <string_view>

namespace corvane {

// Keeps the digits 0 to 9 in order, with "#" and "*" when dial characters are allowed and blanks
// when they are to be kept; everything else is dropped.
[[nodiscard]] std::wstring ExtractDigits(std::wstring_view text, bool allowDialCharacters,
                                         bool keepBlanks);

}  // namespace corvane
