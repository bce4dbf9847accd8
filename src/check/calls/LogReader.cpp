#include "check/calls/LogReader.h"

#include <algorithm>
#include <span>

#include "check/calls/LogFiles.h"

namespace corvane {

std::optional<std::string_view> LogReader::Next() {
    std::size_t searched = 0;
    while (true) {
        const std::string_view rest = Rest();
        const auto lineEnd = rest.find('\n', searched);
        if (lineEnd == std::string_view::npos && (searched = rest.size(), Fill()))
            continue;
        if (rest.empty())
            return std::nullopt;
        std::string_view line = rest.substr(0, lineEnd);
        const bool ends = lineEnd != std::string_view::npos;
        begin_ += ends ? lineEnd + 1 : rest.size();
        const bool tail = inLongLine_;
        inLongLine_ = !ends;
        if (tail) {
            searched = 0;
            continue;
        }
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        return line;
    }
}

bool LogReader::Fill() {
    if (begin_ > 0) {
        std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_),
                  buffer_.begin() + static_cast<std::ptrdiff_t>(end_), buffer_.begin());
        end_ -= begin_;
        begin_ = 0;
    }
    const std::size_t count =
        end_ == buffer_.size() ? 0 : source_.Read(std::span(buffer_).subspan(end_));
    end_ += count;
    return count > 0;
}

}  // namespace corvane
