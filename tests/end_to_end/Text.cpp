#include "Text.h"

#include <windows.h>

namespace end_to_end {
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

Lines SplitLines(std::string_view text, std::string_view lineEnd) {
    Lines lines;
    while (!text.empty()) {
        const size_t end = text.find(lineEnd);
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + lineEnd.size());
    }
    return lines;
}

std::string Unescaped(std::string_view line) {
    std::string text;
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] != '\\' || i + 1 == line.size()) {
            text += line[i];
            continue;
        }
        const char escaped = line[++i];
        text += escaped == 'r' ? '\r' : escaped == 'n' ? '\n' : escaped == 't' ? '\t' : escaped;
    }
    return text;
}

}  // namespace end_to_end
