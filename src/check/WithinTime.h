#pragma once

#include <chrono>
#include <functional>
#include <vector>

namespace corvane {

// Runs works side by side, each on a thread of its own, until all have ended or the time is over.
// False when some have not: they are left behind and may go on for ever, so a work owns what it
// uses. No error may leave a work.
[[nodiscard]] bool RunWithin(std::chrono::milliseconds limit,
                             std::vector<std::function<void()>> works);

}  // namespace corvane
