#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "check/calls/CallLog.h"

// The words of what was found, for the table and for the page.
namespace corvane {

[[nodiscard]] std::wstring JoinedSteps(const CallEvent& event);
[[nodiscard]] std::wstring BoxText(const BoxGap& box);                // "14.200 s at most"
[[nodiscard]] std::wstring SlowCommandText(const SlowCommand& slow);  // "CallerID 1.234 s"

// "1 call", "12 calls", "no calls".
[[nodiscard]] std::wstring Counted(std::uint64_t count, std::wstring_view one,
                                   std::wstring_view many);
[[nodiscard]] std::wstring PercentText(std::uint64_t part, std::uint64_t whole);  // "59.6 %"

// Where the lines are that are not as they should be; empty when there are none.
[[nodiscard]] std::wstring OddLinesText(const OddLines& odd);

}  // namespace corvane
