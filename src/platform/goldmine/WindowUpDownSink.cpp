#include "platform/goldmine/WindowUpDownSink.h"

#include "platform/kit/Bstr.h"
#include "platform/kit/ComError.h"
#include "platform/kit/DispatchByNumber.h"

namespace corvane {

using Microsoft::WRL::ComPtr;

// The receiving end: decodes the event's arguments and tells the listener.
class WindowUpDownSink final : public DispatchByNumber<> {
public:
    WindowUpDownSink(const IID& eventInterface, DISPID windowUpDown, WindowUpDownListener& listener)
        : eventInterface_(eventInterface), windowUpDown_(windowUpDown), listener_(&listener) {}

    void ForgetListener() { listener_ = nullptr; }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                     VARIANT*, EXCEPINFO*, UINT*) override {
        if (member != windowUpDown_ || !listener_)
            return S_OK;
        constexpr UINT argumentCount = 3;
        if (!parameters || parameters->cArgs < argumentCount)
            return DISP_E_BADPARAMCOUNT;
        // The listener may end the subscription, and with it the last other reference.
        const ComPtr<IDispatch> alive(this);
        // No exception may cross the COM border.
        try {
            // Arguments arrive in reverse order.
            VARIANT* last = parameters->rgvarg + parameters->cArgs - 1;
            Variant name;
            Variant up;
            Variant handle;
            ThrowIfFailed(VariantChangeType(name.get(), last, 0, VT_BSTR));
            ThrowIfFailed(VariantChangeType(up.get(), last - 1, 0, VT_BOOL));
            // A handle has 32 significant bits, in whatever type it comes.
            ThrowIfFailed(VariantChangeType(handle.get(), last - 2, 0, VT_I8));
            listener_->moGMUI_WindowUpDown(Bstr::TextOf(name->bstrVal),
                                           up->boolVal != VARIANT_FALSE,
                                           static_cast<std::int32_t>(handle->llVal));
            return S_OK;
        } catch (const RuntimeError&) {
            return DISP_E_TYPEMISMATCH;
        } catch (...) {
            return E_FAIL;
        }
    }

private:
    [[nodiscard]] bool Answers(REFIID id) const override {
        return DispatchByNumber::Answers(id) || IsEqualIID(id, eventInterface_);
    }

    IID eventInterface_;
    DISPID windowUpDown_;
    WindowUpDownListener* listener_;
};

void CutOff::operator()(WindowUpDownSink* sink) const {
    sink->ForgetListener();
    // Proxies of other apartments lead nowhere from now on; who has the sink itself finds it deaf.
    CoDisconnectObject(sink, 0);
    sink->Release();
}

WindowUpDownSubscription::WindowUpDownSubscription(IUnknown& source, const IID& eventInterface,
                                                   DISPID windowUpDown,
                                                   WindowUpDownListener& listener) {
    ComPtr<IConnectionPointContainer> container;
    ThrowIfFailed(source.QueryInterface(__uuidof(IConnectionPointContainer),
                                        reinterpret_cast<void**>(container.GetAddressOf())));
    ThrowIfFailed(container->FindConnectionPoint(eventInterface, connectionPoint_.GetAddressOf()));
    sink_.reset(MakeComObject<WindowUpDownSink>(eventInterface, windowUpDown, listener).Detach());
    ThrowIfFailed(connectionPoint_->Advise(sink_.get(), &cookie_));
}

WindowUpDownSubscription::~WindowUpDownSubscription() {
    // The call lets events in, and the listener may be on its way out.
    sink_->ForgetListener();
    // A server that died cannot be told; nothing is lost by that.
    connectionPoint_->Unadvise(cookie_);
}

}  // namespace corvane
