#include "shared/Text.h"

#include <windows.h>

#include <cwchar>

namespace practice {

std::wstring FromUtf8(std::string_view text) {
    if (text.empty())
        return {};
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0);
    std::wstring result(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, result.data(), length);
    return result;
}

std::string ToUtf8(std::wstring_view text) {
    if (text.empty())
        return {};
    const int size = static_cast<int>(text.size());
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(), length, nullptr, nullptr);
    return result;
}

bool EqualsIgnoringCase(std::wstring_view left, std::wstring_view right) {
    return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

bool StartsWithIgnoringCase(std::wstring_view text, std::wstring_view start) {
    return text.size() >= start.size() && EqualsIgnoringCase(text.substr(0, start.size()), start);
}

std::wstring Trim(std::wstring_view text) {
    constexpr std::wstring_view blanks = L" \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::wstring_view::npos)
        return {};
    return std::wstring(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

std::wstring EscapeLine(std::wstring_view text) {
    constexpr std::wstring_view hexDigits = L"0123456789abcdef";
    std::wstring result;
    result.reserve(text.size());
    for (const wchar_t character : text) {
        switch (character) {
            case L'\\':
                result += L"\\\\";
                break;
            case L'\r':
                result += L"\\r";
                break;
            case L'\n':
                result += L"\\n";
                break;
            case L'\t':
                result += L"\\t";
                break;
            default:
                if (character < L' ') {
                    result += L"\\x";
                    result += hexDigits[static_cast<std::size_t>(character) >> 4];
                    result += hexDigits[static_cast<std::size_t>(character) & 15];
                } else {
                    result += character;
                }
        }
    }
    return result;
}

std::wstring UnescapeLine(std::wstring_view text) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        constexpr std::wstring_view letters = L"\\rnt";
        constexpr std::wstring_view meanings = L"\\\r\n\t";
        const std::size_t known = text[i] == L'\\' && i + 1 < text.size()
                                      ? letters.find(text[i + 1])
                                      : std::wstring_view::npos;
        if (known == std::wstring_view::npos) {
            result += text[i];
        } else {
            result += meanings[known];
            ++i;
        }
    }
    return result;
}

long ToNumber(std::wstring_view text, long fallback) {
    const std::wstring trimmed = Trim(text);
    wchar_t* end = nullptr;
    const long number = std::wcstol(trimmed.c_str(), &end, 10);
    return trimmed.empty() || *end != L'\0' ? fallback : number;
}

std::wstring WithControlLineEnds(std::wstring_view text) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'\r' || text[i] == L'\n') {
            if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n')
                ++i;
            result += L"\r\n";
        } else {
            result += text[i];
        }
    }
    return result;
}

}  // namespace practice
