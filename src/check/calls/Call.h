#pragma once

#include <vector>

#include "check/calls/CallEvent.h"

namespace corvane {

// The events of one call, in the order of their times; never empty. A number to dial is one of its
// own.
struct Call {
    std::vector<CallEvent> events;

    [[nodiscard]] LogTime begin() const { return events.front().begin; }
    [[nodiscard]] CallOutcome Outcome() const;
    // The longest of its events.
    [[nodiscard]] milliseconds SlowestWait() const;
};

}  // namespace corvane
