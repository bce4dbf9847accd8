#include "check/calls/Html.h"

#include <type_traits>

#include "check/Table.h"

namespace corvane {

namespace {

unsigned long CodeOf(wchar_t unit) {
    return static_cast<std::make_unsigned_t<wchar_t>>(unit);
}

}  // namespace

std::wstring HtmlText(std::wstring_view text) {
    std::wstring html;
    for (const wchar_t character : Printable(text)) {
        switch (character) {
            case L'&':
                html += L"&amp;";
                break;
            case L'<':
                html += L"&lt;";
                break;
            case L'>':
                html += L"&gt;";
                break;
            case L'"':
                html += L"&quot;";
                break;
            default:
                html += character;
        }
    }
    return html;
}

std::string AsciiPage(std::wstring_view page) {
    constexpr unsigned long replacement = 0xFFFD;
    const auto isSurrogate = [](unsigned long code, unsigned long first) {
        return code >= first && code < first + 0x400;
    };
    std::string ascii;
    ascii.reserve(page.size());
    for (std::size_t at = 0; at < page.size(); ++at) {
        auto code = CodeOf(page[at]);
        if (code < 0x80) {
            ascii += static_cast<char>(code);
            continue;
        }
        if (isSurrogate(code, 0xD800) && at + 1 < page.size() &&
            isSurrogate(CodeOf(page[at + 1]), 0xDC00)) {
            code = 0x10000 + ((code - 0xD800) << 10) + (CodeOf(page[++at]) - 0xDC00);
        } else if (isSurrogate(code, 0xD800) || isSurrogate(code, 0xDC00)) {
            code = replacement;
        }
        ascii += "&#" + std::to_string(code) + ";";
    }
    return ascii;
}

}  // namespace corvane
