#pragma once

#include "platform/kit/Windows.h"
#include "seams/GoldMine.h"

#include <ocidl.h>
#include <wrl/client.h>

namespace corvane {

// Listens to an automation object's event; unadvises when it is destroyed.
class WindowUpDownSubscription {
public:
    // Raises when the object does not offer the event interface. The listener outlives this.
    WindowUpDownSubscription(IUnknown& source, const IID& eventInterface, DISPID windowUpDown,
                             WindowUpDownListener& listener);
    ~WindowUpDownSubscription();
    WindowUpDownSubscription(const WindowUpDownSubscription&) = delete;
    WindowUpDownSubscription& operator=(const WindowUpDownSubscription&) = delete;

private:
    Microsoft::WRL::ComPtr<IConnectionPoint> connectionPoint_;
    DWORD cookie_ = 0;
};

}  // namespace corvane
