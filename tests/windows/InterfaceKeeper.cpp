#include "windows/InterfaceKeeper.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <future>
#include <thread>

#include "platform/goldmine/GoldMineTypeLibrary.h"
#include "platform/kit/ComObject.h"
#include "windows/AutomationServer.h"

#include <objidl.h>

namespace corvane::test {

namespace {

using Microsoft::WRL::ComPtr;

constexpr UINT keepMessage = WM_APP + 1;  // wParam: a std::promise<void> of the sender

constexpr std::array kept = {&goldMineInterface, &askEvents, &IID_IDispatch,
                             &IID_IConnectionPointContainer, &IID_IConnectionPoint};

class KeptObject final : public ComObject<IUnknown> {
    [[nodiscard]] bool Answers(REFIID id) const override {
        return std::any_of(kept.begin(), kept.end(),
                           [&](const IID* each) { return IsEqualIID(id, *each); });
    }
};

bool Marshal(const IID& id, IUnknown* object) {
    ComPtr<IStream> stream;
    return SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, stream.GetAddressOf())) &&
           SUCCEEDED(CoMarshalInterface(stream.Get(), id, object, MSHCTX_LOCAL, nullptr,
                                        MSHLFLAGS_TABLESTRONG));
}

// The thread and its apartment live as long as the process.
void Keep(std::promise<DWORD> started) {
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // makes the thread's message queue
    EXPECT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    const auto object = MakeComObject<KeptObject>();
    std::array<bool, kept.size()> marshalled{};
    started.set_value(GetCurrentThreadId());
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.hwnd || message.message != keepMessage) {
            DispatchMessageW(&message);
            continue;
        }
        for (size_t i = 0; i < kept.size(); ++i) {
            // An interface whose type library a test has not registered is kept by a later call.
            marshalled[i] = marshalled[i] || Marshal(*kept[i], object.Get());
        }
        reinterpret_cast<std::promise<void>*>(message.wParam)->set_value();
    }
}

DWORD StartKeeper() {
    std::promise<DWORD> started;
    std::future<DWORD> id = started.get_future();
    std::thread(Keep, std::move(started)).detach();
    return id.get();
}

}  // namespace

void KeepInterfaces() {
    static const DWORD keeper = StartKeeper();
    std::promise<void> done;
    ASSERT_TRUE(PostThreadMessageW(keeper, keepMessage, reinterpret_cast<WPARAM>(&done), 0));
    done.get_future().wait();
}

}  // namespace corvane::test
