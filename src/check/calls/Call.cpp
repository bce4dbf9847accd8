#include "check/calls/Call.h"

#include <algorithm>

namespace corvane {

CallOutcome Call::Outcome() const {
    return std::ranges::min(events, {}, &CallEvent::outcome).outcome;
}

milliseconds Call::SlowestWait() const {
    milliseconds longest{};
    for (const CallEvent& event : events) {
        longest = std::max(longest, event.timeToPop.value_or(milliseconds(0)));
        if (event.slowest)
            longest = std::max(longest, event.slowest->time);
    }
    return longest;
}

}  // namespace corvane
