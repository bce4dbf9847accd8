#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "check/calls/Call.h"

namespace corvane {

// Counts of any number of calls, in memory that does not grow with them.
class CallSummary {
public:
    using PerOutcome = std::array<std::uint64_t, callOutcomes>;
    // Pops that took longer count as this long.
    static constexpr milliseconds longestTime = std::chrono::minutes(10);

    void Add(const Call& call);

    [[nodiscard]] std::uint64_t calls() const { return calls_; }
    [[nodiscard]] std::uint64_t events() const { return events_; }
    [[nodiscard]] std::uint64_t uncertain() const { return uncertain_; }  // events
    [[nodiscard]] std::uint64_t pops() const { return pops_; }
    [[nodiscard]] std::uint64_t boxes() const { return boxes_; }
    [[nodiscard]] const PerOutcome& outcomes() const { return outcomes_; }
    // By the hour of the day in which the calls began.
    [[nodiscard]] const std::array<PerOutcome, 24>& hours() const { return hours_; }
    [[nodiscard]] std::optional<LogTime> first() const { return first_; }
    [[nodiscard]] std::optional<LogTime> last() const { return last_; }

    // The time within which so many of a hundred pops came; nothing without any pop.
    [[nodiscard]] std::optional<milliseconds> TimeToPop(int percent) const;
    // How many pops took at least the one time and less than the other.
    [[nodiscard]] std::uint64_t PopsBetween(milliseconds from, milliseconds to) const;

private:
    std::uint64_t calls_ = 0;
    std::uint64_t events_ = 0;
    std::uint64_t uncertain_ = 0;
    std::uint64_t pops_ = 0;
    std::uint64_t boxes_ = 0;
    PerOutcome outcomes_{};
    std::array<PerOutcome, 24> hours_{};
    std::optional<LogTime> first_;
    std::optional<LogTime> last_;
    std::vector<std::uint32_t> popTimes_;  // how many took so many milliseconds
};

}  // namespace corvane
