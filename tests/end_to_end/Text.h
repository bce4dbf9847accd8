#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace end_to_end {

// The tests compare UTF-8 text; Windows takes and gives UTF-16.
std::string Utf8(std::wstring_view text);
std::wstring Wide(std::string_view text);
// Text in the system's ANSI code page, as log files hold it.
std::string Utf8FromAnsi(std::string_view text);

using Lines = std::vector<std::string>;

// The lines of a text whose every line ends in this line end; what stands behind the last one is a
// line of its own.
Lines SplitLines(std::string_view text, std::string_view lineEnd);

// The practice programs write lines with backslash, CR, LF and tab as \\, \r, \n and \t.
std::string Unescaped(std::string_view line);

}  // namespace end_to_end
