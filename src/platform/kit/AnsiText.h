#pragma once

#include <string>
#include <string_view>

// The border to Windows' ANSI functions.
namespace corvane {

// Characters outside the system code page are replaced.
[[nodiscard]] std::string AnsiFromText(std::wstring_view text);
[[nodiscard]] std::wstring TextFromAnsi(std::string_view text);

}  // namespace corvane
