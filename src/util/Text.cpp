#include "util/Text.h"

#include <algorithm>
#include <cwctype>

namespace corvane {

std::wstring_view TrimTrailingBlanks(std::wstring_view text) {
    const auto last = text.find_last_not_of(L' ');
    return last == std::wstring_view::npos ? std::wstring_view() : text.substr(0, last + 1);
}

std::wstring_view TrimBlanks(std::wstring_view text) {
    const auto first = text.find_first_not_of(L' ');
    return first == std::wstring_view::npos ? std::wstring_view()
                                            : TrimTrailingBlanks(text.substr(first));
}

std::wstring ReplaceAll(std::wstring_view text, std::wstring_view what, std::wstring_view with) {
    std::wstring result;
    result.reserve(text.size());
    std::size_t begin = 0;
    while (!what.empty()) {
        const auto hit = text.find(what, begin);
        if (hit == std::wstring_view::npos)
            break;
        result.append(text.substr(begin, hit - begin)).append(with);
        begin = hit + what.size();
    }
    result.append(text.substr(begin));
    return result;
}

std::vector<std::wstring> Split(std::wstring_view text, wchar_t separator) {
    std::vector<std::wstring> pieces;
    if (text.empty())
        return pieces;
    for (std::size_t begin = 0;;) {
        const auto end = text.find(separator, begin);
        pieces.emplace_back(text.substr(begin, end - begin));
        if (end == std::wstring_view::npos)
            return pieces;
        begin = end + 1;
    }
}

std::wstring WithLineBreaks(std::wstring_view text) {
    std::wstring result;
    result.reserve(text.size() + text.size() / 32);
    for (const wchar_t character : text) {
        if (character == L'\n' && !result.ends_with(L'\r'))
            result += L'\r';
        result += character;
    }
    return result;
}

std::wstring UpperCase(std::wstring_view text) {
    std::wstring upper(text);
    for (wchar_t& character : upper)
        character = static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(character)));
    return upper;
}

std::wstring ZeroPadded(int value, std::size_t width) {
    std::wstring digits = std::to_wstring(value);
    if (digits.size() < width)
        digits.insert(0, width - digits.size(), L'0');
    return digits;
}

std::wstring Quoted(std::wstring_view text) {
    return Join(L"\"", text, L"\"");
}

std::wstring AddTrailingBackslash(std::wstring_view path) {
    std::wstring result(path);
    if (result.empty() || result.back() != L'\\')
        result += L'\\';
    return result;
}

std::wstring StripAtNull(std::wstring_view fixedLengthName) {
    const auto end = fixedLengthName.find(L'\0');
    return std::wstring(end == std::wstring_view::npos ? TrimBlanks(fixedLengthName)
                                                       : fixedLengthName.substr(0, end));
}

std::wstring_view ArgumentsOf(std::wstring_view wholeCommandLine, std::wstring_view ownPath) {
    // The starter may have left out the quotes that blanks in the path ask for, and the extension.
    for (const std::wstring_view path : {ownPath, ownPath.substr(0, ownPath.find_last_of(L'.'))}) {
        const std::wstring_view rest =
            wholeCommandLine.substr(std::min(path.size(), wholeCommandLine.size()));
        if (UpperCase(wholeCommandLine.substr(0, path.size())) == UpperCase(path) &&
            (rest.empty() || rest[0] == L' ' || rest[0] == L'\t')) {
            return rest;
        }
    }
    if (wholeCommandLine.starts_with(L'"')) {
        const auto closing = wholeCommandLine.find(L'"', 1);
        return closing == std::wstring_view::npos ? std::wstring_view()
                                                  : wholeCommandLine.substr(closing + 1);
    }
    const auto end = wholeCommandLine.find_first_of(L" \t");
    return end == std::wstring_view::npos ? std::wstring_view() : wholeCommandLine.substr(end);
}

}  // namespace corvane
