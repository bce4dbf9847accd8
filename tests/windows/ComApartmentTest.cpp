#include "platform/kit/ComApartment.h"

#include <gtest/gtest.h>

#include <wrl/client.h>

namespace corvane::test {
namespace {

using Microsoft::WRL::ComPtr;

constexpr DWORD giveUp = static_cast<DWORD>(-1);

// The filter that the apartment registered, taken out for questions and put back.
class RegisteredFilter {
public:
    RegisteredFilter() { CoRegisterMessageFilter(nullptr, filter_.GetAddressOf()); }
    ~RegisteredFilter() {
        ComPtr<IMessageFilter> none;
        CoRegisterMessageFilter(filter_.Get(), none.GetAddressOf());
    }
    RegisteredFilter(const RegisteredFilter&) = delete;
    RegisteredFilter& operator=(const RegisteredFilter&) = delete;
    IMessageFilter* operator->() const { return filter_.Get(); }
    explicit operator bool() const { return filter_ != nullptr; }

private:
    ComPtr<IMessageFilter> filter_;
};

TEST(ComApartmentTest, ThreadIsASingleThreadedApartmentForTheApartmentsLife) {
    {
        const ComApartment apartment;
        APTTYPE type{};
        APTTYPEQUALIFIER qualifier{};
        ASSERT_EQ(CoGetApartmentType(&type, &qualifier), S_OK);
        EXPECT_TRUE(type == APTTYPE_STA || type == APTTYPE_MAINSTA);
    }
    APTTYPE type{};
    APTTYPEQUALIFIER qualifier{};
    EXPECT_EQ(CoGetApartmentType(&type, &qualifier), CO_E_NOTINITIALIZED);
}

class BusyServerTest : public testing::TestWithParam<DWORD> {};

TEST_P(BusyServerTest, IsTriedAgainEvery250MillisecondsForTenSeconds) {
    const ComApartment apartment;
    const RegisteredFilter filter;
    ASSERT_TRUE(filter);
    for (const DWORD elapsed : {0UL, 250UL, 9'999UL})
        EXPECT_EQ(filter->RetryRejectedCall(nullptr, elapsed, GetParam()), 250U) << elapsed;
    for (const DWORD elapsed : {10'000UL, 60'000UL})
        EXPECT_EQ(filter->RetryRejectedCall(nullptr, elapsed, GetParam()), giveUp) << elapsed;
}

INSTANTIATE_TEST_SUITE_P(Rejections, BusyServerTest,
                         testing::Values(DWORD{SERVERCALL_RETRYLATER}, DWORD{SERVERCALL_REJECTED}));

TEST(ComApartmentTest, IncomingEventsAreTakenAtAnyTime) {
    const ComApartment apartment;
    const RegisteredFilter filter;
    ASSERT_TRUE(filter);
    for (const DWORD kind :
         {DWORD{CALLTYPE_TOPLEVEL}, DWORD{CALLTYPE_NESTED}, DWORD{CALLTYPE_ASYNC},
          DWORD{CALLTYPE_TOPLEVEL_CALLPENDING}, DWORD{CALLTYPE_ASYNC_CALLPENDING}}) {
        EXPECT_EQ(filter->HandleInComingCall(kind, nullptr, 0, nullptr),
                  DWORD{SERVERCALL_ISHANDLED});
    }
}

TEST(ComApartmentTest, WindowMessagesAreServedWhileACallIsOut) {
    const ComApartment apartment;
    const RegisteredFilter filter;
    ASSERT_TRUE(filter);
    EXPECT_EQ(filter->MessagePending(nullptr, 1000, PENDINGTYPE_TOPLEVEL),
              DWORD{PENDINGMSG_WAITDEFPROCESS});
}

}  // namespace
}  // namespace corvane::test
