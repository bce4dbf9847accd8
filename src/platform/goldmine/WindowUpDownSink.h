#pragma once

#include <memory>

#include "platform/kit/Windows.h"
#include "seams/GoldMine.h"

#include <ocidl.h>
#include <wrl/client.h>

namespace corvane {

class WindowUpDownSink;

// Nobody reaches the listener through the sink any more, not even a server that keeps it.
struct CutOff {
    void operator()(WindowUpDownSink* sink) const;
};

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
    std::unique_ptr<WindowUpDownSink, CutOff> sink_;
    DWORD cookie_ = 0;
};

}  // namespace corvane
