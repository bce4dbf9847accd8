#include "check/calls/CallEvent.h"

#include <array>

namespace corvane {

std::wstring_view OutcomeWord(CallOutcome outcome) {
    constexpr std::array<std::wstring_view, callOutcomes> words = {
        L"trouble", L"popped", L"not found", L"found", L"dialed", L"ignored"};
    return words[static_cast<std::size_t>(outcome)];
}

}  // namespace corvane
