#include "check/calls/CallSummary.h"

#include <algorithm>
#include <numeric>

namespace corvane {

void CallSummary::Add(const Call& call) {
    ++calls_;
    const auto outcome = static_cast<std::size_t>(call.Outcome());
    ++outcomes_[outcome];
    ++hours_[static_cast<std::size_t>(HourOfDay(call.begin()))][outcome];
    first_ = std::min(first_.value_or(call.begin()), call.begin());
    for (const CallEvent& event : call.events) {
        ++events_;
        uncertain_ += event.uncertain.empty() ? 0 : 1;
        boxes_ += event.box && event.box->certain ? 1 : 0;
        last_ = std::max(last_.value_or(event.end), event.end);
        // A clock that was set back tells nothing.
        if (!event.timeToPop || *event.timeToPop < milliseconds(0))
            continue;
        const auto time = static_cast<std::size_t>(std::min(*event.timeToPop, longestTime).count());
        if (popTimes_.size() <= time)
            popTimes_.resize(time + 1);
        ++popTimes_[time];
        ++pops_;
    }
}

std::optional<milliseconds> CallSummary::TimeToPop(int percent) const {
    if (pops_ == 0)
        return std::nullopt;
    const std::uint64_t wanted = (pops_ * static_cast<std::uint64_t>(percent) + 99) / 100;
    std::uint64_t counted = 0;
    std::size_t time = 0;
    while ((counted += popTimes_[time]) < wanted)
        ++time;
    return milliseconds(time);
}

std::uint64_t CallSummary::PopsBetween(milliseconds from, milliseconds to) const {
    const auto at = [&](milliseconds time) {
        return popTimes_.begin() + static_cast<std::ptrdiff_t>(std::min(
                                       popTimes_.size(), static_cast<std::size_t>(time.count())));
    };
    return std::accumulate(at(from), at(to), std::uint64_t{0});
}

}  // namespace corvane
