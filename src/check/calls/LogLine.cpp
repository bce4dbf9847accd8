#include "check/calls/LogLine.h"

namespace corvane {

namespace {

constexpr std::size_t mostRunDigits = 7;  // the numbers go to a million
constexpr std::size_t stampLength = 19;
constexpr std::string_view behindStamp = "\t[";

bool IsAsciiDigit(char each) {
    return each >= '0' && each <= '9';
}

// Whether a tab stands there with a time stamp and a bracket behind it.
bool StampFollows(std::string_view text, std::size_t tab) {
    return text.substr(tab + 1 + stampLength).starts_with(behindStamp) &&
           LogTimeFromStamp(text.substr(tab + 1, stampLength));
}

}  // namespace

std::optional<LogLine> ParseLogLine(std::string_view text) {
    LogLine line;
    std::size_t at = 0;
    while (at < text.size() && at < mostRunDigits && IsAsciiDigit(text[at]))
        line.runNumber = line.runNumber * 10 + static_cast<std::uint32_t>(text[at++] - '0');
    if (at == 0 || text.size() < at + 1 + stampLength + behindStamp.size() || text[at] != '\t')
        return std::nullopt;
    const auto time = LogTimeFromStamp(text.substr(at + 1, stampLength));
    text.remove_prefix(at + 1 + stampLength);
    if (!time || !text.starts_with(behindStamp))
        return std::nullopt;
    text.remove_prefix(behindStamp.size());
    constexpr std::string_view behindIdentifier = "]:\t";
    const auto end = text.find(behindIdentifier);
    if (end == std::string_view::npos)
        return std::nullopt;
    line.time = *time;
    line.identifier = text.substr(0, end);
    line.message = text.substr(end + behindIdentifier.size());
    return line;
}

std::size_t FindLineWithin(std::string_view text) {
    for (auto tab = text.find('\t'); tab != std::string_view::npos;
         tab = text.find('\t', tab + 1)) {
        if (text.size() < tab + 1 + stampLength || !StampFollows(text, tab))
            continue;
        std::size_t begin = tab;
        while (begin > 0 && tab - begin < mostRunDigits && IsAsciiDigit(text[begin - 1]))
            --begin;
        if (begin > 0 && begin < tab)
            return begin;
    }
    return std::string_view::npos;
}

}  // namespace corvane
