#pragma once

#include <optional>
#include <string>

#include "check/calls/Call.h"

namespace corvane {

// Which calls are told: those that everything set here admits.
struct CallFilter {
    std::optional<LogTime> since{};
    std::wstring identifier{};  // 3CX's identifier; zeros in front do not matter
    std::wstring digits{};      // that the number holds
    std::optional<milliseconds> slow{};

    [[nodiscard]] bool Admits(const Call& call) const;
    // In words; empty when it admits all.
    [[nodiscard]] std::wstring Text() const;
};

}  // namespace corvane
