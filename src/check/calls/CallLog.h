#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "check/calls/Call.h"
#include "check/calls/CallFilter.h"
#include "check/calls/CallSummary.h"

namespace corvane {

class LogFiles;
class LogSource;

// Lines that are not as the program writes them.
struct OddLines {
    std::uint64_t foreign = 0;  // nothing of the program's
    std::uint64_t joined = 0;   // that began in the middle of another
};

// What the log says about calls.
struct CallLog {
    std::vector<Call> calls;  // the last ones of those that the filter admits
    CallSummary summary;      // of all that it admits
    OddLines odd;
};

[[nodiscard]] CallLog ReadCallLog(const LogFiles& files, LogSource& source,
                                  const CallFilter& filter, std::size_t last);

}  // namespace corvane
