#include "support/windows/Encoding.h"

#include <windows.h>

namespace test_support {
namespace {

std::wstring FromCodePage(UINT codePage, std::string_view text) {
    const int size = static_cast<int>(text.size());
    std::wstring result(
        static_cast<size_t>(MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0)),
        L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), size, result.data(),
                        static_cast<int>(result.size()));
    return result;
}

}  // namespace

std::string Utf8(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    const int needed =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(), needed, nullptr, nullptr);
    return result;
}

std::wstring Wide(std::string_view text) {
    return FromCodePage(CP_UTF8, text);
}

std::string Utf8FromAnsi(std::string_view text) {
    return Utf8(FromCodePage(CP_ACP, text));
}

}  // namespace test_support
