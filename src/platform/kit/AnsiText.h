#pragma once

#include <string>
#include <string_view>

// The border to Windows' ANSI functions.
namespace corvane {

// Characters outside the code page, which is the system's by itself, are replaced by a "?".
[[nodiscard]] std::string AnsiFromText(std::wstring_view text, unsigned codePage = 0);
[[nodiscard]] std::wstring TextFromAnsi(std::string_view text);

}  // namespace corvane
