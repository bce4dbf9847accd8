#include "check/report/EndOfLog.h"

#include <algorithm>

#include "check/calls/LogLine.h"
#include "check/report/MaskedText.h"
#include "check/report/Masking.h"

namespace corvane {

namespace {

// What is masked needs no more.
std::string Ascii(std::wstring_view text) {
    std::string ascii;
    for (const wchar_t each : text)
        ascii += each >= L' ' && each < 0x7F ? static_cast<char>(each) : '?';
    return ascii;
}

}  // namespace

EndOfLog::EndOfLog(const LogFiles& files, const std::wstring& path, std::uint64_t most,
                   Masking* masking)
    : files_(files), masking_(masking), end_(files.OpenEnd(path, most)), reader_(*end_.source) {
    if (!end_.whole)
        static_cast<void>(reader_.Next());
}

std::size_t EndOfLog::Read(std::span<char> buffer) {
    if (pending_.empty()) {
        const auto line = reader_.Next();
        if (!line)
            return 0;
        pending_ = (masking_ ? Masked(*line) : std::string(*line)) + "\r\n";
    }
    const std::size_t count = std::min(buffer.size(), pending_.size());
    std::copy_n(pending_.begin(), count, buffer.begin());
    pending_.erase(0, count);
    return count;
}

// A line of another may stand behind it, where a write was cut off.
std::string EndOfLog::Masked(std::string_view line) const {
    std::string masked;
    for (bool first = true; !line.empty(); first = false) {
        const auto own = ParseLogLine(line);
        const std::string_view message = own ? own->message : line;
        const auto next = std::min(FindLineWithin(message), message.size());
        std::wstring text = files_.TextFromLog(message.substr(0, next));
        if (own) {
            constexpr std::string_view behindIdentifier = "]:\t";
            // Where a write was cut off, digits of its text stand before the run number.
            const std::size_t begin = first ? 0 : line.find('\t');
            const auto end = static_cast<std::size_t>(own->identifier.data() - line.data());
            masked += (first ? "" : "0");
            masked += line.substr(begin, end - begin);
            masked += Ascii(masking_->CallIdentifier(files_.TextFromLog(own->identifier)));
            masked += behindIdentifier;
            text = MaskedText(text, *masking_);
        } else {
            text = HiddenText(text);
        }
        masked += Ascii(text);
        line = message.substr(next);
    }
    return masked;
}

}  // namespace corvane
