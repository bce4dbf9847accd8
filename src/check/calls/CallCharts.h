#pragma once

#include <string>

#include "check/calls/CallSummary.h"

// The pictures of a page, each with a table of its numbers behind it.
namespace corvane {

// The fills that the pictures and their key refer to; once in a page.
[[nodiscard]] std::wstring ChartPatterns();

// How many calls began in which hour of the day, and what came of them.
[[nodiscard]] std::wstring CallsByHour(const CallSummary& summary);

// How long it took until the contact was up.
[[nodiscard]] std::wstring TimesToPop(const CallSummary& summary);

// The name of an outcome in the page's style, "not-found".
[[nodiscard]] std::wstring OutcomeClass(CallOutcome outcome);

}  // namespace corvane
