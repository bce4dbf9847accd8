#pragma once

#include "util/Clock.h"

namespace corvane {

class SystemClock final : public Clock {
public:
    [[nodiscard]] LocalTimeMs GetLocalTimeMs() const override;
    void Sleep(std::uint32_t milliseconds) override;
    void PumpEvents() override;
};

}  // namespace corvane
