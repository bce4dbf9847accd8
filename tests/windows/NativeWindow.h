#pragma once

#include <string>

#include "platform/kit/Windows.h"

namespace corvane::test {

[[nodiscard]] inline std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

[[nodiscard]] inline std::wstring ClassOf(HWND window) {
    wchar_t name[100] = {};
    return {name, static_cast<std::size_t>(GetClassNameW(window, name, 100))};
}

}  // namespace corvane::test
