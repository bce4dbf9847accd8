#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/goldmine/GoldMineTypeLibrary.h"
#include "platform/goldmine/WindowUpDownSink.h"
#include "seams/GoldMine.h"

#include <wrl/client.h>

namespace corvane {

class ComWhenNeeded;

// GoldMine's automation object in its own process. To connect enters COM.
class GoldMineAutomation final : public GoldMine, private WindowUpDownListener {
public:
    explicit GoldMineAutomation(ComWhenNeeded& com) : com_(com) {}
    ~GoldMineAutomation() override;
    GoldMineAutomation(const GoldMineAutomation&) = delete;
    GoldMineAutomation& operator=(const GoldMineAutomation&) = delete;

    [[nodiscard]] bool connected() const override { return object_ != nullptr; }
    void Connect() override;
    [[nodiscard]] std::wstring Send(const std::wstring& command) override;
    void Release() noexcept override;
    void setListener(WindowUpDownListener* listener) override { listener_ = listener; }

private:
    void moGMUI_WindowUpDown(const std::wstring& windowName, bool up,
                             std::int32_t windowHandle) noexcept override {
        if (listener_)
            listener_->moGMUI_WindowUpDown(windowName, up, windowHandle);
    }

    ComWhenNeeded& com_;
    std::optional<GoldMineIdentifiers> identifiers_;  // read once per run
    Microsoft::WRL::ComPtr<IDispatch> object_;
    std::unique_ptr<WindowUpDownSubscription> subscription_;
    WindowUpDownListener* listener_ = nullptr;
};

}  // namespace corvane
