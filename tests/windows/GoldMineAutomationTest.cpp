#include "platform/goldmine/GoldMineAutomation.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/kit/ComApartment.h"
#include "platform/SystemClock.h"
#include "support/windows/Waiting.h"
#include "unit/TestErrors.h"
#include "util/RuntimeError.h"
#include "windows/AutomationServer.h"
#include "windows/RegistrySandbox.h"

namespace corvane::test {
namespace {

using test_support::PumpUntil;

using Answer = AutomationServer::Answer;

struct SeenEvent {
    std::wstring windowName;
    bool up = false;
    std::int32_t windowHandle = 0;
    bool operator==(const SeenEvent&) const = default;
};

// GoldMine's object on the other side of COM's proxies; the reply is "<command> done" unless the
// test says otherwise.
class GoldMineAutomationTest : public testing::Test, private WindowUpDownListener {
protected:
    GoldMineAutomationTest() { goldMine.setListener(this); }
    void moGMUI_WindowUpDown(const std::wstring& windowName, bool up,
                             std::int32_t windowHandle) noexcept override {
        events.push_back({windowName, up, windowHandle});
        if (onEvent)
            onEvent();
    }

    ComApartment apartment;
    ComWhenNeeded com;
    LibraryRegistration registration{LibraryFlavour::Complete};
    std::function<Answer(const std::wstring&)> answer = [](const std::wstring& command) {
        return Answer{.reply = command + L" done"};
    };
    AutomationServer server{[this](const std::wstring& command) { return answer(command); }};
    std::vector<SeenEvent> events;
    std::function<void()> onEvent;
    GoldMineAutomation goldMine{com};
};

TEST_F(GoldMineAutomationTest, CommandGoesToTheFirstMethodAndItsReplyComesBack) {
    EXPECT_FALSE(goldMine.connected());
    goldMine.Connect();
    EXPECT_TRUE(goldMine.connected());

    EXPECT_EQ(goldMine.Send(L"<GMAPI/>"), L"<GMAPI/> done");

    EXPECT_EQ(server.commands(), (std::vector<std::wstring>{L"<GMAPI/>"}));
}

TEST_F(GoldMineAutomationTest, TextsPassUnchanged) {
    goldMine.Connect();
    std::wstring text = L"J\x00FCrgen \x65E5\x672C \r\n<&>";
    text += std::wstring(100'000, L'x');
    EXPECT_EQ(goldMine.Send(text), text + L" done");
    EXPECT_EQ(goldMine.Send(L""), L" done");
}

TEST_F(GoldMineAutomationTest, EmptyReplyIsAnEmptyText) {
    answer = [](const std::wstring&) { return Answer{}; };
    goldMine.Connect();
    EXPECT_EQ(goldMine.Send(L"x"), L"");
}

TEST_F(GoldMineAutomationTest, SinkIsAdvisedAtOnceAndUnadvisedOnRelease) {
    goldMine.Connect();
    EXPECT_EQ(server.sinks(), 1);
    EXPECT_EQ(server.objects(), 1);

    goldMine.Release();

    EXPECT_FALSE(goldMine.connected());
    EXPECT_EQ(server.sinks(), 0);
    EXPECT_TRUE(PumpUntil([this] { return server.objects() == 0; }));
}

TEST_F(GoldMineAutomationTest, ReleasedObjectIsCreatedAfreshByTheNextConnection) {
    goldMine.Connect();
    goldMine.Release();
    goldMine.Connect();
    EXPECT_EQ(goldMine.Send(L"again"), L"again done");
    EXPECT_EQ(server.sinks(), 1);
}

TEST_F(GoldMineAutomationTest, ReleasingWithoutConnectionDoesNothing) {
    goldMine.Release();
    EXPECT_FALSE(goldMine.connected());
}

TEST_F(GoldMineAutomationTest, EventArrivesWhileTheProgramPumps) {
    goldMine.Connect();
    SystemClock clock;

    server.RaiseWhenIdle(windowUpDownEvent, L"DIALOGSCHEDULECOMPLETE", true, 0x12345);

    EXPECT_TRUE(PumpUntil([&] {
        clock.PumpEvents();
        return !events.empty();
    }));
    EXPECT_EQ(events, (std::vector<SeenEvent>{{L"DIALOGSCHEDULECOMPLETE", true, 0x12345}}));
}

TEST_F(GoldMineAutomationTest, EventArrivesInsideAnOutgoingCall) {
    goldMine.Connect();
    answer = [this](const std::wstring& command) {
        server.Raise(windowUpDownEvent, L"W", false, -7);
        return Answer{.reply = command};
    };

    EXPECT_EQ(goldMine.Send(L"menu"), L"menu");

    EXPECT_EQ(events, (std::vector<SeenEvent>{{L"W", false, -7}}));
    EXPECT_EQ(server.lastEventResult(), S_OK);
}

TEST_F(GoldMineAutomationTest, EventInsideACallMaySendCommandsItself) {
    goldMine.Connect();
    answer = [this](const std::wstring& command) {
        if (command == L"menu")
            server.Raise(windowUpDownEvent, L"W", true, 1);
        return Answer{.reply = command + L" done"};
    };
    std::wstring nested;
    onEvent = [&] { nested = goldMine.Send(L"nested"); };

    EXPECT_EQ(goldMine.Send(L"menu"), L"menu done");

    EXPECT_EQ(nested, L"nested done");
    EXPECT_EQ(server.commands(), (std::vector<std::wstring>{L"menu", L"nested"}));
}

TEST_F(GoldMineAutomationTest, EventMayLetTheObjectGoInsideACall) {
    goldMine.Connect();
    answer = [this](const std::wstring& command) {
        server.Raise(windowUpDownEvent, L"W", true, 1);
        return Answer{.reply = command + L" done"};
    };
    onEvent = [&] { goldMine.Release(); };

    EXPECT_EQ(goldMine.Send(L"menu"), L"menu done");

    EXPECT_FALSE(goldMine.connected());
}

TEST_F(GoldMineAutomationTest, OtherEventsAreIgnored) {
    goldMine.Connect();
    answer = [this](const std::wstring& command) {
        server.Raise(closingEvent, L"", false, 0);
        return Answer{.reply = command};
    };

    EXPECT_EQ(goldMine.Send(L"x"), L"x");

    EXPECT_TRUE(events.empty());
    EXPECT_EQ(server.lastEventResult(), S_OK);
}

TEST_F(GoldMineAutomationTest, NoEventArrivesAfterRelease) {
    goldMine.Connect();
    goldMine.Release();
    goldMine.Connect();
    answer = [this](const std::wstring& command) {
        server.Raise(windowUpDownEvent, L"W", true, 1);
        return Answer{.reply = command};
    };
    EXPECT_EQ(goldMine.Send(L"x"), L"x");
    EXPECT_EQ(events.size(), 1U) << "the first subscription is gone";
}

TEST_F(GoldMineAutomationTest, SinkThatTheServerKeepsIsOutOfReach) {
    goldMine.Connect();
    server.RefuseUnadvise();
    goldMine.Release();

    server.RaiseWhenIdle(windowUpDownEvent, L"W", true, 1);

    EXPECT_TRUE(PumpUntil([this] { return FAILED(server.lastEventResult()); }));
    EXPECT_TRUE(events.empty());
}

struct Failure {
    HRESULT result;
    std::int32_t number;
};

class GoldMineAutomationFailureTest : public GoldMineAutomationTest,
                                      public testing::WithParamInterface<Failure> {};

TEST_P(GoldMineAutomationFailureTest, HasItsNumberAndTheConnectionStays) {
    goldMine.Connect();
    answer = [](const std::wstring&) { return Answer{.result = GetParam().result}; };

    EXPECT_EQ(ErrorOf([&] { static_cast<void>(goldMine.Send(L"x")); }).number, GetParam().number);

    answer = [](const std::wstring&) { return Answer{.reply = L"well"}; };
    EXPECT_EQ(goldMine.Send(L"y"), L"well");
}

INSTANTIATE_TEST_SUITE_P(Results, GoldMineAutomationFailureTest,
                         testing::Values(Failure{E_ACCESSDENIED, 70},
                                         Failure{HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), 462},
                                         Failure{static_cast<HRESULT>(0x800706BE), -2147023170},
                                         Failure{RPC_E_DISCONNECTED, -2147417848},
                                         Failure{CO_E_OBJNOTCONNECTED, -2147220995},
                                         Failure{DISP_E_TYPEMISMATCH, 13},
                                         Failure{E_OUTOFMEMORY, 7},
                                         Failure{E_FAIL, static_cast<std::int32_t>(0x80004005)}));

TEST_F(GoldMineAutomationTest, ExceptionGivesItsNumberSourceAndDescription) {
    goldMine.Connect();
    answer = [](const std::wstring&) {
        return Answer{.result = DISP_E_EXCEPTION,
                      .code = 1004,
                      .source = L"GoldMine.UI",
                      .description = L"No such record."};
    };

    const RuntimeError error = ErrorOf([&] { static_cast<void>(goldMine.Send(L"x")); });

    EXPECT_EQ(error.number, 1004);
    EXPECT_EQ(error.source, L"GoldMine.UI");
    EXPECT_EQ(error.description, L"No such record.");
}

TEST_F(GoldMineAutomationTest, ExceptionWithAResultCodeGivesItsClassicNumber) {
    goldMine.Connect();
    answer = [](const std::wstring&) {
        return Answer{.result = DISP_E_EXCEPTION,
                      .scode = E_ACCESSDENIED,
                      .source = L"GoldMine.UI",
                      .description = L"Not logged in."};
    };

    const RuntimeError error = ErrorOf([&] { static_cast<void>(goldMine.Send(L"x")); });

    EXPECT_EQ(error.number, 70);
    EXPECT_EQ(error.source, L"GoldMine.UI");
    EXPECT_EQ(error.description, L"Not logged in.");
}

TEST_F(GoldMineAutomationTest, ExceptionWithAControlsResultCodeGivesTheNumberInIt) {
    goldMine.Connect();
    answer = [](const std::wstring&) {
        return Answer{.result = DISP_E_EXCEPTION, .scode = static_cast<HRESULT>(0x800A000D)};
    };

    const RuntimeError error = ErrorOf([&] { static_cast<void>(goldMine.Send(L"x")); });

    EXPECT_EQ(error.number, 13);
    EXPECT_EQ(error.description, L"Type mismatch");
}

class GoldMineAutomationBusyTest : public GoldMineAutomationTest,
                                   public testing::WithParamInterface<HRESULT> {};

TEST_P(GoldMineAutomationBusyTest, IsAskedAgainUntilItAnswers) {
    goldMine.Connect();
    int refusals = 2;
    answer = [&](const std::wstring&) {
        return refusals-- > 0 ? Answer{.result = GetParam()} : Answer{.reply = L"at last"};
    };
    const ULONGLONG begin = GetTickCount64();

    EXPECT_EQ(goldMine.Send(L"x"), L"at last");

    EXPECT_EQ(server.commands(), (std::vector<std::wstring>{L"x", L"x", L"x"}));
    // Twice a quarter of a second, as far as the tick counter can tell.
    EXPECT_GE(GetTickCount64() - begin, 450U);
}

TEST_P(GoldMineAutomationBusyTest, EventArrivesInTheMeantime) {
    goldMine.Connect();
    std::atomic<int> seen = 0;
    onEvent = [&] { ++seen; };
    bool raised = false;
    // Busy until the event has come: had it to wait for the call's end, the call would be given up.
    answer = [&](const std::wstring&) {
        if (!std::exchange(raised, true))
            server.RaiseWhenIdle(windowUpDownEvent, L"W", true, 1);
        return seen == 0 ? Answer{.result = GetParam()} : Answer{.reply = L"at last"};
    };

    EXPECT_EQ(goldMine.Send(L"x"), L"at last");

    EXPECT_EQ(seen, 1);
}

INSTANTIATE_TEST_SUITE_P(Results, GoldMineAutomationBusyTest,
                         testing::Values(RPC_E_SERVERCALL_RETRYLATER, RPC_E_CALL_REJECTED));

TEST_F(GoldMineAutomationTest, ServerThatStaysBusyIsGivenUpAfterTenSeconds) {
    goldMine.Connect();
    answer = [](const std::wstring&) { return Answer{.result = RPC_E_SERVERCALL_RETRYLATER}; };
    const ULONGLONG begin = GetTickCount64();

    const RuntimeError error = ErrorOf([&] { static_cast<void>(goldMine.Send(L"x")); });

    const ULONGLONG taken = GetTickCount64() - begin;
    EXPECT_EQ(error.number, RPC_E_SERVERCALL_RETRYLATER);
    EXPECT_GE(taken, 9'900U);
    EXPECT_LE(taken, 15'000U);
    EXPECT_LE(server.commands().size(), 41U) << "every quarter of a second";
}

TEST_F(GoldMineAutomationTest, SendingWithoutConnectionRaises) {
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(goldMine.Send(L"x")); }).number, 462);
}

TEST(GoldMineAutomationAloneTest, ClassThatNobodyServesCannotBeCreated) {
    const ComApartment apartment;
    ComWhenNeeded com;
    const LibraryRegistration registration(LibraryFlavour::Complete);
    GoldMineAutomation goldMine(com);

    const RuntimeError error = ErrorOf([&] { goldMine.Connect(); });

    EXPECT_EQ(error.number, 429);
    EXPECT_EQ(error.description, L"ActiveX component can't create object");
    EXPECT_FALSE(goldMine.connected());
}

TEST(GoldMineAutomationAloneTest, MissingRegistrationIsNoticedAndForgotten) {
    const ComApartment apartment;
    ComWhenNeeded com;
    GoldMineAutomation goldMine(com);
    {
        const RegistrySandbox empty(HKEY_CLASSES_ROOT);
        EXPECT_EQ(ErrorOf([&] { goldMine.Connect(); }).number, 429);
    }
    // Registered in the meantime: the next command finds it.
    const LibraryRegistration registration(LibraryFlavour::Complete);
    AutomationServer server([](const std::wstring&) { return Answer{.reply = L"here"}; });
    goldMine.Connect();
    EXPECT_EQ(goldMine.Send(L"x"), L"here");
    goldMine.Release();
}

TEST(GoldMineAutomationAloneTest, ObjectWithoutEventsTakesCommands) {
    const ComApartment apartment;
    ComWhenNeeded com;
    const LibraryRegistration registration(LibraryFlavour::WithoutEvents);
    AutomationServer server([](const std::wstring&) { return Answer{.reply = L"quiet"}; });
    GoldMineAutomation goldMine(com);

    goldMine.Connect();

    EXPECT_EQ(goldMine.Send(L"x"), L"quiet");
    EXPECT_EQ(server.sinks(), 0);
    goldMine.Release();
}

TEST(GoldMineAutomationAloneTest, DispatchInterfaceTakesCommandsAndIsListenedTo) {
    const ComApartment apartment;
    ComWhenNeeded com;
    const LibraryRegistration registration(LibraryFlavour::DispatchOnly);
    AutomationServer server([](const std::wstring&) { return Answer{.reply = L"here"}; });
    GoldMineAutomation goldMine(com);

    goldMine.Connect();

    EXPECT_EQ(goldMine.Send(L"x"), L"here");
    EXPECT_EQ(server.sinks(), 1);
    goldMine.Release();
}

TEST(GoldMineAutomationAloneTest, InterfaceWithoutProxyIsSpokenToByDispatch) {
    const ComApartment apartment;
    ComWhenNeeded com;
    const LibraryRegistration registration(LibraryFlavour::Complete, {.withProxy = false});
    AutomationServer server([](const std::wstring&) { return Answer{.reply = L"here"}; });
    GoldMineAutomation goldMine(com);

    goldMine.Connect();

    EXPECT_EQ(goldMine.Send(L"x"), L"here");
    EXPECT_EQ(server.sinks(), 1);
    goldMine.Release();
}

}  // namespace
}  // namespace corvane::test
