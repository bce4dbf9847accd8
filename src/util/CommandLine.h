#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

// The pieces of the program's trimmed command line. One without a slash is a number, in whatever
// form the user typed it; else blanks part the pieces, and quotes neither end a piece nor protect
// blanks.
[[nodiscard]] std::vector<std::wstring> CommandLineTokens(std::wstring_view text);

// A piece as a switch: "/N", one separator, whatever it is, and the value.
struct Switch {
    std::wstring_view name;
    std::wstring_view value;
};
[[nodiscard]] Switch SwitchIn(std::wstring_view token);

}  // namespace corvane
