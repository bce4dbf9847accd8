#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "check/calls/LogTime.h"

namespace corvane {

// One line of the log, its texts being the file's bytes.
struct LogLine {
    std::uint32_t runNumber = 0;
    LogTime time;
    std::string_view identifier;
    std::string_view message;
};

// Nothing when the text does not begin as a line of the log does.
[[nodiscard]] std::optional<LogLine> ParseLogLine(std::string_view text);

// Where a line begins that stands behind something else in the text: a line end may be missing,
// because a write was cut off. npos when there is none.
[[nodiscard]] std::size_t FindLineWithin(std::string_view text);

}  // namespace corvane
