#include "gmapi/Envelope.h"

#include "util/Text.h"

namespace corvane {

namespace {

std::wstring Opening(std::wstring_view call) {
    return Join(L"<GMAPI call=\"", call, L"\">");
}

std::wstring SuccessPrefix(std::wstring_view call) {
    return Join(Opening(call), L"<status code=\"1\">");
}

constexpr std::wstring_view closing = L"</GMAPI>";

}  // namespace

std::wstring Escape(std::wstring_view text) {
    // One pass does what replacing the ampersand first and the others after it would do.
    std::wstring escaped;
    escaped.reserve(text.size() + text.size() / 8);
    for (const wchar_t character : text) {
        switch (character) {
            case L'&':
                escaped += L"&amp;";
                break;
            case L'"':
                escaped += L"&quot;";
                break;
            case L'\'':
                escaped += L"&apos;";
                break;
            case L'<':
                escaped += L"&lt;";
                break;
            case L'>':
                escaped += L"&gt;";
                break;
            default:
                escaped += character;
        }
    }
    return escaped;
}

std::wstring Unescape(std::wstring_view text) {
    if (text.find(L'&') == std::wstring_view::npos)
        return std::wstring(text);
    std::wstring plain = ReplaceAll(text, L"&quot;", L"\"");
    plain = ReplaceAll(plain, L"&apos;", L"'");
    plain = ReplaceAll(plain, L"&lt;", L"<");
    plain = ReplaceAll(plain, L"&gt;", L">");
    // Last, so that an escaped entity comes back as the entity.
    return ReplaceAll(plain, L"&amp;", L"&");
}

Command::Command(std::wstring_view call) : text_(Opening(call)) {}

Command& Command::Data(std::wstring_view name, std::wstring_view value) {
    return RawData(name, Escape(value));
}

Command& Command::RawData(std::wstring_view name, std::wstring_view value) {
    text_ += Join(L"<data name=\"", name, L"\">", value, L"</data>");
    return *this;
}

std::wstring Command::Text() const {
    return Join(text_, closing);
}

std::wstring EmptyCommand(std::wstring_view call) {
    return Join(L"<GMAPI call=\"", call, L"\"/>");
}

std::wstring PlainCommand(std::wstring_view call, std::wstring_view content) {
    return Join(Opening(call), content, closing);
}

bool Succeeded(std::wstring_view reply, std::wstring_view call) {
    return reply.starts_with(SuccessPrefix(call));
}

bool Refused(std::wstring_view reply, std::wstring_view call) {
    return reply.starts_with(Opening(call) + L"<status code=\"") && !Succeeded(reply, call);
}

std::wstring SuccessReply(std::wstring_view call, std::wstring_view value) {
    return Join(SuccessPrefix(call), value, L"</status>", closing);
}

}  // namespace corvane
