#pragma once

#include <string>
#include <string_view>

namespace corvane {

// The text as JSON has it, with its quotes; ASCII, so that no code page spoils it on its way.
[[nodiscard]] std::wstring JsonText(std::wstring_view text);

}  // namespace corvane
