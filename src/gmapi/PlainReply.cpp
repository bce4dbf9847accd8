#include "gmapi/PlainReply.h"

#include <algorithm>

namespace corvane {

namespace {

// Takes the piece off the text's front, if it is there.
bool Take(std::wstring_view& text, std::wstring_view piece) {
    if (!text.starts_with(piece))
        return false;
    text.remove_prefix(piece.size());
    return true;
}

// Takes letters and digits, at least one.
bool TakeWord(std::wstring_view& text) {
    const auto isPlain = [](wchar_t each) {
        return (each >= L'a' && each <= L'z') || (each >= L'A' && each <= L'Z') ||
               (each >= L'0' && each <= L'9');
    };
    const auto end = std::ranges::find_if_not(text, isPlain);
    const bool found = end != text.begin();
    text.remove_prefix(static_cast<std::size_t>(end - text.begin()));
    return found;
}

bool IsPlainText(std::wstring_view text) {
    const bool blanksInside = !text.starts_with(L' ') && !text.ends_with(L' ') &&
                              text.find(L"  ") == std::wstring_view::npos;
    return blanksInside && std::ranges::all_of(text, [](wchar_t each) {
               return each >= L' ' && each < 0x7F && each != L'<' && each != L'&' && each != L'>';
           });
}

}  // namespace

std::optional<std::wstring_view> PlainStatus(std::wstring_view reply) {
    constexpr std::wstring_view end = L"</status></GMAPI>";
    if (!Take(reply, L"<GMAPI call=\"") || !TakeWord(reply) ||
        !Take(reply, L"\"><status code=\"") || !TakeWord(reply) || !Take(reply, L"\">") ||
        !reply.ends_with(end)) {
        return std::nullopt;
    }
    reply.remove_suffix(end.size());
    if (!IsPlainText(reply))
        return std::nullopt;
    return reply;
}

}  // namespace corvane
