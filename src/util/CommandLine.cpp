#include "util/CommandLine.h"

#include "util/Text.h"

namespace corvane {

std::vector<std::wstring> CommandLineTokens(std::wstring_view text) {
    std::vector<std::wstring> tokens;
    if (text.find(L'/') == std::wstring_view::npos) {
        tokens.emplace_back(text);
        return tokens;
    }
    bool open = false;
    for (const wchar_t character : text) {
        if (character == L'"')
            continue;
        if (character == L' ') {
            open = false;
            continue;
        }
        if (!open)
            tokens.emplace_back();
        open = true;
        tokens.back() += character;
    }
    return tokens;
}

Switch SwitchIn(std::wstring_view token) {
    constexpr std::size_t valueBegin = 3;
    return {token.substr(0, 2), token.size() > valueBegin
                                    ? TrimTrailingBlanks(token.substr(valueBegin))
                                    : std::wstring_view()};
}

}  // namespace corvane
