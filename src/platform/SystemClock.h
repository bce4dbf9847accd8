#pragma once

#include <functional>

#include "platform/kit/Windows.h"
#include "seams/Clock.h"

namespace corvane {

class SystemClock final : public Clock {
public:
    [[nodiscard]] LocalTimeMs GetLocalTimeMs() const override;
    void Sleep(std::uint32_t milliseconds) override;
    void PumpEvents() override;

    // Asked before a pending message is dispatched; true when it is done with. So a window's
    // keyboard works during waits as in its own loop.
    void setTranslator(std::function<bool(MSG&)> translator) {
        translator_ = std::move(translator);
    }

private:
    std::function<bool(MSG&)> translator_;
};

}  // namespace corvane
