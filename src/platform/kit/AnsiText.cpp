#include "platform/kit/AnsiText.h"

#include "platform/kit/Windows.h"

namespace corvane {

std::string AnsiFromText(std::wstring_view text, unsigned codePage) {
    const int length = static_cast<int>(text.size());
    // A character that only looks alike is another one: a full-width backslash is none in a path.
    DWORD how = WC_NO_BEST_FIT_CHARS;
    const auto convert = [&](char* ansi, int size) {
        return WideCharToMultiByte(codePage, how, text.data(), length, ansi, size, nullptr,
                                   nullptr);
    };
    int size = convert(nullptr, 0);
    if (size == 0 && GetLastError() == ERROR_INVALID_FLAGS) {
        how = 0;  // UTF-8 has every character
        size = convert(nullptr, 0);
    }
    std::string ansi(static_cast<std::size_t>(size), '\0');
    convert(ansi.data(), size);
    return ansi;
}

std::wstring TextFromAnsi(std::string_view text) {
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_ACP, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text.data(), length, wide.data(), size);
    return wide;
}

}  // namespace corvane
