#pragma once

#include <memory>
#include <optional>

#include "platform/goldmine/GoldMineTypeLibrary.h"
#include "platform/goldmine/WindowUpDownSink.h"
#include "seams/GoldMine.h"

#include <wrl/client.h>

namespace corvane {

// GoldMine's automation object in its own process. Needs the thread's apartment.
class GoldMineAutomation final : public GoldMine {
public:
    GoldMineAutomation() = default;
    ~GoldMineAutomation() override;
    GoldMineAutomation(const GoldMineAutomation&) = delete;
    GoldMineAutomation& operator=(const GoldMineAutomation&) = delete;

    [[nodiscard]] bool connected() const override { return object_ != nullptr; }
    void Connect() override;
    [[nodiscard]] std::wstring Send(const std::wstring& command) override;
    void Release() noexcept override;
    void setWindowUpDownHandler(WindowUpDownHandler handler) override {
        handler_ = std::move(handler);
    }

private:
    std::optional<GoldMineIdentifiers> identifiers_;  // read once per run
    Microsoft::WRL::ComPtr<IDispatch> object_;
    std::unique_ptr<WindowUpDownSubscription> subscription_;
    WindowUpDownHandler handler_;
};

}  // namespace corvane
