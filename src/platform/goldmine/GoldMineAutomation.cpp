#include "platform/goldmine/GoldMineAutomation.h"

#include <utility>

#include "platform/kit/Bstr.h"
#include "platform/kit/ComApartment.h"
#include "platform/kit/ComError.h"
#include "platform/kit/Dispatch.h"
#include "platform/kit/Handles.h"

namespace corvane {

namespace {

constexpr DWORD busyRetryMilliseconds = 250;
constexpr ULONGLONG busyGiveUpMilliseconds = 10000;

bool MeansBusy(const RuntimeError& error) {
    return error.number == RPC_E_SERVERCALL_RETRYLATER || error.number == RPC_E_CALL_REJECTED;
}

// Serves calls and windows meanwhile, as an outgoing call does.
void WaitPolitely(DWORD milliseconds) {
    const UniqueHandle never(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    HANDLE handles[] = {never.get()};
    DWORD signalled = 0;
    CoWaitForMultipleHandles(0, milliseconds, 1, handles, &signalled);
}

using Microsoft::WRL::ComPtr;

HRESULT CreateObject(const CLSID& automationClass, const IID& id, ComPtr<IDispatch>& object) {
    return CoCreateInstance(automationClass, nullptr, CLSCTX_LOCAL_SERVER, id,
                            reinterpret_cast<void**>(object.ReleaseAndGetAddressOf()));
}

}  // namespace

GoldMineAutomation::~GoldMineAutomation() {
    Release();
}

void GoldMineAutomation::Connect() {
    com_.Enter();
    if (!identifiers_)
        identifiers_ = ReadGoldMineTypeLibrary();
    ComPtr<IDispatch> object;
    HRESULT created = CreateObject(identifiers_->automationClass, goldMineInterface, object);
    // Without a registered proxy no pointer of that interface comes here; IDispatch's always does.
    if (created == E_NOINTERFACE || created == REGDB_E_IIDNOTREG)
        created = CreateObject(identifiers_->automationClass, __uuidof(IDispatch), object);
    ThrowIfFailed(created);
    // Set before listening begins: an event may come at once and send commands of its own.
    object_ = std::move(object);
    if (identifiers_->windowUpDown == DISPID_UNKNOWN)
        return;
    try {
        subscription_ = std::make_unique<WindowUpDownSubscription>(
            *object_.Get(), identifiers_->eventInterface, identifiers_->windowUpDown,
            static_cast<WindowUpDownListener&>(*this));
    } catch (...) {
        Release();
        throw;
    }
}

std::wstring GoldMineAutomation::Send(const std::wstring& command) {
    // The command may let GoldMine's event in, and the event's handler may let the object go.
    const ComPtr<IDispatch> object = object_;
    if (!object)
        throw MakeRuntimeError(ErrorNumber::RemoteServerUnavailable);
    Variant argument(command);
    Variant reply;
    // Where the message filter could not have the call made again, it is made again here.
    const ULONGLONG giveUpAt = GetTickCount64() + busyGiveUpMilliseconds;
    for (bool answered = false; !answered;) {
        try {
            InvokeOrThrow(*object.Get(), identifiers_->commandMethod, DISPATCH_METHOD,
                          {argument.get(), 1}, reply.get());
            answered = true;
        } catch (const RuntimeError& error) {
            if (!MeansBusy(error) || GetTickCount64() >= giveUpAt)
                throw;
            WaitPolitely(busyRetryMilliseconds);
        }
    }
    ThrowIfFailed(VariantChangeType(reply.get(), reply.get(), 0, VT_BSTR));
    return Bstr::TextOf(reply->bstrVal);
}

void GoldMineAutomation::Release() noexcept {
    // Letting go lets others in, who may connect anew meanwhile.
    std::unique_ptr<WindowUpDownSubscription> subscription = std::move(subscription_);
    const ComPtr<IDispatch> object = std::move(object_);
    // Unadvise first: no event may arrive for an object that is gone.
    subscription.reset();
}

}  // namespace corvane
