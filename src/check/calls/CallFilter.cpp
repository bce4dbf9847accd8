#include "check/calls/CallFilter.h"

#include <algorithm>

#include "util/Digits.h"
#include "util/Text.h"

namespace corvane {

namespace {

std::wstring_view WithoutZeros(std::wstring_view identifier) {
    const auto first = identifier.find_first_not_of(L'0');
    return first == std::wstring_view::npos ? std::wstring_view() : identifier.substr(first);
}

}  // namespace

bool CallFilter::Admits(const Call& call) const {
    const auto anyEvent = [&](auto admits) { return std::ranges::any_of(call.events, admits); };
    if (since && call.events.back().end < *since)
        return false;
    if (!identifier.empty() && !anyEvent([&](const CallEvent& event) {
            return !event.identifier.empty() &&
                   WithoutZeros(event.identifier) == WithoutZeros(identifier);
        })) {
        return false;
    }
    if (!digits.empty() && !anyEvent([&](const CallEvent& event) {
            return ExtractDigits(event.number, false, false).find(digits) != std::wstring::npos;
        })) {
        return false;
    }
    return !slow || call.SlowestWait() >= *slow;
}

std::wstring CallFilter::Text() const {
    std::wstring text;
    const auto add = [&](std::wstring_view what, std::wstring_view value) {
        text += Join(text.empty() ? L"" : L", ", what, value);
    };
    if (since)
        add(L"since ", DateTimeText(*since));
    if (!identifier.empty())
        add(L"call ", identifier);
    if (!digits.empty())
        add(L"number with ", digits);
    if (slow)
        add(L"slow: from ", SecondsText(*slow));
    return text;
}

}  // namespace corvane
