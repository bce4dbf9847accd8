#pragma once

#include <string>
#include <string_view>

// Text between the worlds: UTF-8 in files and in the database, UTF-16 everywhere else.
namespace practice {

std::wstring FromUtf8(std::string_view text);
std::string ToUtf8(std::wstring_view text);

bool EqualsIgnoringCase(std::wstring_view left, std::wstring_view right);
bool StartsWithIgnoringCase(std::wstring_view text, std::wstring_view start);
std::wstring Trim(std::wstring_view text);

// Text on one line: \\ \r \n \t, and \xNN for the other control characters.
std::wstring EscapeLine(std::wstring_view text);
// The reverse for \\ \r \n \t; any other backslash stands for itself.
std::wstring UnescapeLine(std::wstring_view text);

// The whole number that the text holds, or the fallback.
long ToNumber(std::wstring_view text, long fallback);

// A text field shows line ends only as CR LF: single LFs and CRs become that.
std::wstring WithControlLineEnds(std::wstring_view text);

}  // namespace practice
