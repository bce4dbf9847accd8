#pragma once

#include <string>
#include <string_view>

namespace test_support {

// The tests compare UTF-8 text; Windows takes and gives UTF-16.
std::string Utf8(std::wstring_view text);
std::wstring Wide(std::string_view text);
// Text in the system's ANSI code page, as log files hold it.
std::string Utf8FromAnsi(std::string_view text);

}  // namespace test_support
