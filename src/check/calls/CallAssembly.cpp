#include "check/calls/CallAssembly.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace corvane {

namespace {

constexpr milliseconds longestCall = std::chrono::hours(12);
constexpr milliseconds betweenCallSweeps = std::chrono::hours(1);
constexpr std::size_t mostOpenCalls = 2048;
constexpr std::size_t mostEvents = 64;  // a log that holds more of one call is no phone's

LogTime LastHeard(const Call& call) {
    return call.events.back().end;
}

bool Happened(const Call& call, std::wstring_view what) {
    return std::ranges::any_of(call.events,
                               [&](const CallEvent& event) { return event.what == what; });
}

}  // namespace

void CallAssembly::Take(CallEvent event) {
    if (event.end - lastSweep_ >= betweenCallSweeps || event.end < lastSweep_ ||
        open_.size() >= mostOpenCalls) {
        Sweep(event.end);
    }
    if (event.identifier.empty()) {
        Emit({{std::move(event)}});
        return;
    }
    auto call = CallOf(event);
    if (call != open_.end()) {
        const bool again = event.what == L"ringing" && Happened(call->second, L"ended");
        if (again || event.begin - LastHeard(call->second) > longestCall ||
            call->second.events.size() >= mostEvents) {
            Emit(std::move(open_.extract(call).mapped()));
            call = open_.end();
        }
    }
    if (call == open_.end())
        call = open_.try_emplace({event.identifier, event.number}).first;
    else if (Happened(call->second, event.what) && event.uncertain.empty())
        event.uncertain = L"the call has this event twice: another user's, or sent twice";
    call->second.events.push_back(std::move(event));
}

CallAssembly::Calls::iterator CallAssembly::CallOf(const CallEvent& event) {
    if (!event.number.empty())
        return open_.find({event.identifier, event.number});
    // An event whose beginning is missing does not tell its number.
    const auto first = open_.lower_bound({event.identifier, {}});
    return first != open_.end() && first->first.first == event.identifier ? first : open_.end();
}

void CallAssembly::Emit(Call call) {
    std::ranges::stable_sort(call.events, {}, &CallEvent::begin);
    sink_(std::move(call));
}

void CallAssembly::Sweep(LogTime now) {
    lastSweep_ = now;
    EndCallsBefore(now - longestCall);
    if (open_.size() < mostOpenCalls)
        return;
    std::vector<LogTime> times;
    for (const auto& [key, call] : open_)
        times.push_back(LastHeard(call));
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::ranges::nth_element(times, middle);
    EndCallsBefore(*middle + milliseconds(1));
}

void CallAssembly::EndCallsBefore(LogTime time) {
    for (auto call = open_.begin(); call != open_.end();) {
        if (LastHeard(call->second) < time) {
            Emit(std::move(call->second));
            call = open_.erase(call);
        } else {
            ++call;
        }
    }
}

void CallAssembly::Finish() {
    EndCallsBefore(LogTime::max());
}

}  // namespace corvane
