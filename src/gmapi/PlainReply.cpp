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

// The sign that a reference at the text's front stands for; taken off. A blank beside one is left
// to a reader, which may trim there.
std::optional<wchar_t> TakeReference(std::wstring_view& text) {
    struct Reference {
        std::wstring_view written;
        wchar_t sign;
    };
    static constexpr Reference references[] = {
        {L"&amp;", L'&'}, {L"&lt;", L'<'}, {L"&gt;", L'>'}, {L"&quot;", L'"'}, {L"&apos;", L'\''},
    };
    for (const Reference& reference : references) {
        if (Take(text, reference.written) && !text.starts_with(L' '))
            return reference.sign;
    }
    return std::nullopt;
}

// The text with its references resolved, if that is all there is to do.
std::optional<std::wstring> PlainText(std::wstring_view text) {
    if (text.starts_with(L' ') || text.ends_with(L' '))
        return std::nullopt;
    std::wstring plain;
    while (!text.empty()) {
        const wchar_t next = text.front();
        const bool afterBlank = plain.ends_with(L' ');
        if (next == L'&') {
            const auto sign = TakeReference(text);
            if (!sign || afterBlank)
                return std::nullopt;
            plain += *sign;
            continue;
        }
        if (next < L' ' || next >= 0x7F || next == L'<' || next == L'>' ||
            (next == L' ' && afterBlank)) {
            return std::nullopt;
        }
        plain += next;
        text.remove_prefix(1);
    }
    return plain;
}

}  // namespace

std::optional<std::wstring> PlainStatus(std::wstring_view reply) {
    constexpr std::wstring_view end = L"</status></GMAPI>";
    if (!Take(reply, L"<GMAPI call=\"") || !TakeWord(reply) ||
        !Take(reply, L"\"><status code=\"") || !TakeWord(reply) || !Take(reply, L"\">") ||
        !reply.ends_with(end)) {
        return std::nullopt;
    }
    reply.remove_suffix(end.size());
    return PlainText(reply);
}

}  // namespace corvane
