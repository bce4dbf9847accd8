#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

inline constexpr std::wstring_view productName = L"Halvorn Corvane to 3CX";
inline constexpr std::wstring_view lineBreak = L"\r\n";

// Only ordinary blanks are trimmed: a no-break space or a tab is text.
[[nodiscard]] std::wstring_view TrimBlanks(std::wstring_view text);
[[nodiscard]] std::wstring_view TrimTrailingBlanks(std::wstring_view text);

[[nodiscard]] std::wstring ReplaceAll(std::wstring_view text, std::wstring_view what,
                                      std::wstring_view with);

// The pieces between separators; an empty text has no pieces.
[[nodiscard]] std::vector<std::wstring> Split(std::wstring_view text, wchar_t separator);

// The text with CR LF at the end of each line that ended in LF alone.
[[nodiscard]] std::wstring WithLineBreaks(std::wstring_view text);

[[nodiscard]] std::wstring UpperCase(std::wstring_view text);

// Decimal, padded with leading zeros to the width.
[[nodiscard]] std::wstring ZeroPadded(int value, std::size_t width);

// Text between double quotes.
[[nodiscard]] std::wstring Quoted(std::wstring_view text);

// The path unchanged when it ends in a backslash, else with one; an empty path yields "\".
[[nodiscard]] std::wstring AddTrailingBackslash(std::wstring_view path);

// What stands before the first NUL; a text without one comes back trimmed of blanks.
[[nodiscard]] std::wstring StripAtNull(std::wstring_view fixedLengthName);

// The text behind the program's own path in a whole command line, the path being quoted or not. A
// path that is not quoted and not the program's full one ends at the first blank.
[[nodiscard]] std::wstring_view ArgumentsOf(std::wstring_view wholeCommandLine,
                                            std::wstring_view ownPath);

// Joins any number of texts into one string with a single allocation.
template <class... Pieces>
[[nodiscard]] std::wstring Join(const Pieces&... pieces) {
    std::wstring joined;
    joined.reserve((std::wstring_view(pieces).size() + ... + 0));
    (joined.append(std::wstring_view(pieces)), ...);
    return joined;
}

}  // namespace corvane
