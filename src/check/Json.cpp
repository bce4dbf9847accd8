#include "check/Json.h"

#include <cstdint>

namespace corvane {

namespace {

std::wstring Escape(std::uint32_t unit) {
    constexpr std::wstring_view digits = L"0123456789abcdef";
    std::wstring escape = L"\\u";
    for (const unsigned shift : {12U, 8U, 4U, 0U})
        escape += digits[(unit >> shift) & 0xFU];
    return escape;
}

}  // namespace

std::wstring JsonText(std::wstring_view text) {
    std::wstring json = L"\"";
    for (const wchar_t character : text) {
        const std::uint32_t code = std::char_traits<wchar_t>::to_int_type(character);
        if (character == L'"' || character == L'\\') {
            json += L'\\';
            json += character;
        } else if (code >= 0x20 && code < 0x7F) {
            json += character;
        } else if (code < 0x10000) {
            json += Escape(code);
        } else {
            json += Escape(0xD800 + ((code - 0x10000) >> 10U)) + Escape(0xDC00 + (code & 0x3FFU));
        }
    }
    return json + L"\"";
}

}  // namespace corvane
