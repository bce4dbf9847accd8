#include "platform/goldmine/WindowUpDownSink.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>

#include "platform/kit/Bstr.h"
#include "platform/kit/ComApartment.h"
#include "platform/kit/ComObject.h"
#include "unit/TestErrors.h"
#include "windows/AutomationServer.h"

namespace corvane::test {
namespace {

using Microsoft::WRL::ComPtr;

// A source of events on the same thread that never gives a sink back.
class ClingingSource final : public ComObject<IConnectionPointContainer, IConnectionPoint> {
public:
    HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
        EXPECT_TRUE(IsEqualIID(id, askEvents));
        return QueryInterface(__uuidof(IConnectionPoint), reinterpret_cast<void**>(point));
    }
    HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* cookie) override {
        EXPECT_EQ(sink->QueryInterface(askEvents, reinterpret_cast<void**>(kept_.GetAddressOf())),
                  S_OK);
        *cookie = 1;
        return adviseResult;
    }
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD) override {
        duringUnadvise = Raise();
        return E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }

    HRESULT Raise() {
        Variant name(L"W");
        Variant up;
        up->vt = VT_BOOL;
        Variant handle;
        handle->vt = VT_I4;
        std::array reversed{*handle.get(), *up.get(), *name.get()};
        DISPPARAMS parameters{};
        parameters.rgvarg = reversed.data();
        parameters.cArgs = static_cast<UINT>(reversed.size());
        return kept_->Invoke(windowUpDownEvent, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                             &parameters, nullptr, nullptr, nullptr);
    }
    // How many others still hold the sink.
    ULONG LetGo() { return kept_.Reset(); }

    HRESULT adviseResult = S_OK;
    std::optional<HRESULT> duringUnadvise;

private:
    ComPtr<IDispatch> kept_;
};

class WindowUpDownSinkTest : public testing::Test, protected WindowUpDownListener {
protected:
    void moGMUI_WindowUpDown(const std::wstring&, bool, std::int32_t) noexcept override {
        ++events;
    }
    [[nodiscard]] IUnknown& Container() const {
        return *static_cast<IConnectionPointContainer*>(source.Get());
    }

    ComApartment apartment;
    ComPtr<ClingingSource> source = MakeComObject<ClingingSource>();
    int events = 0;
};

TEST_F(WindowUpDownSinkTest, EventsAreHeardWhileTheSubscriptionLives) {
    const WindowUpDownSubscription subscription(Container(), askEvents, windowUpDownEvent, *this);
    EXPECT_EQ(source->Raise(), S_OK);
    EXPECT_EQ(events, 1);
}

TEST_F(WindowUpDownSinkTest, LateEventFindsNobodyThoughUnadviseFailed) {
    {
        const WindowUpDownSubscription subscription(Container(), askEvents, windowUpDownEvent,
                                                    *this);
    }
    EXPECT_EQ(source->duringUnadvise, S_OK);
    EXPECT_EQ(source->Raise(), S_OK);
    EXPECT_EQ(events, 0);
    EXPECT_EQ(source->LetGo(), 0U);
}

TEST_F(WindowUpDownSinkTest, EventFindsNobodyWhereAdviseFailed) {
    source->adviseResult = E_ACCESSDENIED;

    EXPECT_EQ(ErrorOf([&] {
                  const WindowUpDownSubscription subscription(Container(), askEvents,
                                                              windowUpDownEvent, *this);
              }).number,
              70);

    EXPECT_EQ(source->Raise(), S_OK);
    EXPECT_EQ(events, 0);
    EXPECT_EQ(source->duringUnadvise, std::nullopt);
    EXPECT_EQ(source->LetGo(), 0U);
}

}  // namespace
}  // namespace corvane::test
