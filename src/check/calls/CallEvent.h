#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "check/calls/LogTime.h"

namespace corvane {

// What came of an event, and of a call: the first of these that any of its events came to.
enum class CallOutcome { trouble, popped, notFound, found, dialed, ignored };
inline constexpr std::size_t callOutcomes = 6;
[[nodiscard]] std::wstring_view OutcomeWord(CallOutcome outcome);

struct SlowCommand {
    milliseconds time{};
    std::wstring name;
};

// How long a message box may have stood: the silence between the line before it and the one after.
struct BoxGap {
    milliseconds time{};
    bool certain = true;  // false: something held the run up, and nothing says what
};

// One run of the program, as far as it handled an event: a call that rings, is answered or ends, or
// a number to dial.
struct CallEvent {
    std::uint32_t runNumber = 0;
    LogTime begin;
    LogTime end;
    std::wstring what;        // "ringing", "answered", "ended", "dial", "by hand"
    std::wstring direction;   // "in", "out", or nothing
    std::wstring identifier;  // 3CX's; empty for a number to dial
    std::wstring number;      // as it was received
    CallOutcome outcome = CallOutcome::ignored;
    std::vector<std::wstring> steps;  // what was done, in the order of the log
    std::optional<milliseconds> timeToPop;
    std::optional<SlowCommand> slowest;
    std::optional<BoxGap> box;
    std::wstring uncertain;  // why this may not be so; empty when the log leaves no doubt
};

}  // namespace corvane
