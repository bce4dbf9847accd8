#pragma once

#include "platform/kit/ProgramWindow.h"
#include "seams/Clock.h"

namespace corvane {

class SystemClock final : public Clock {
public:
    // Waits serve the keyboard of the window as its own loop does.
    explicit SystemClock(ProgramWindow* window = nullptr) : window_(window) {}

    [[nodiscard]] LocalTimeMs GetLocalTimeMs() const override;
    void Sleep(std::uint32_t milliseconds) override;
    void PumpEvents() override;

private:
    ProgramWindow* window_;
};

}  // namespace corvane
