#include "platform/kit/ComApartment.h"

#include "platform/kit/ComError.h"
#include "platform/kit/ComObject.h"

namespace corvane {

namespace {

using Microsoft::WRL::ComPtr;

constexpr DWORD retryAfterMilliseconds = 250;
constexpr DWORD giveUpAfterMilliseconds = 10000;
constexpr DWORD cancelCall = static_cast<DWORD>(-1);

class PoliteFilter final : public ComObject<IMessageFilter> {
public:
    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override {
        // GoldMine's event is welcome at any time.
        return SERVERCALL_ISHANDLED;
    }
    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD elapsedMilliseconds, DWORD) override {
        return elapsedMilliseconds < giveUpAfterMilliseconds ? retryAfterMilliseconds : cancelCall;
    }
    DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override {
        return PENDINGMSG_WAITDEFPROCESS;
    }
};

}  // namespace

ComApartment::ComApartment() {
    ThrowIfFailed(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    const auto filter = MakeComObject<PoliteFilter>();
    ComPtr<IMessageFilter> previous;
    CoRegisterMessageFilter(filter.Get(), previous.GetAddressOf());
}

ComApartment::~ComApartment() {
    ComPtr<IMessageFilter> ours;
    CoRegisterMessageFilter(nullptr, ours.GetAddressOf());
    ours.Reset();
    CoUninitialize();
}

}  // namespace corvane
