// What faults.txt can make the practice GoldMine do.
#include "PracticeGoldMineTest.h"

namespace standin_tests {
namespace {

const std::wstring askForVersion = gmapi::Macro(L"&amp;Version");
const std::wstring version = gmapi::Reply(L"Macro", L"1", L"2014.1");
const std::wstring completeCall = gmapi::MenuCommand(L"CompleteScheduledCall");

class FaultTest : public PracticeGoldMineTest {
protected:
    void SetUp() override { Start(); }
};

TEST_F(FaultTest, RepliesCanBeReplaced) {
    struct Case {
        const char* fault;
        std::wstring reply;
    };
    const Case cases[] = {
        {"Macro status 0 not now", gmapi::Reply(L"Macro", L"0", L"not now")},
        {"Macro:&Version status 5", gmapi::Reply(L"Macro", L"5", L"")},
        {"Macro:&UserName status 0", version},
        {"* value a\\r\\n<b>", gmapi::Reply(L"Macro", L"1", L"a&#13;\n&amp;lt;b&amp;gt;")},
        {"Macro reply no XML\\tat all", L"no XML\tat all"},
        {"Macro reply", L""},
        {"# Macro status 0", version},
        {"CallerID status 0", version},
        {"Macro@2 status 0", version},
    };
    Client client;

    for (const Case& entry : cases) {
        data_.SetFaults(std::string(entry.fault) + "\r\n");
        EXPECT_EQ(client.Send(askForVersion), entry.reply) << entry.fault;
    }
}

TEST_F(FaultTest, FaultCanHitOneOfSeveralCommands) {
    data_.SetFaults("Macro@2 status 0 second\n");
    Client client;

    EXPECT_EQ(client.Send(askForVersion), version);
    EXPECT_EQ(client.Send(askForVersion), gmapi::Reply(L"Macro", L"0", L"second"));
    EXPECT_EQ(client.Send(askForVersion), version);
}

TEST_F(FaultTest, CallsCanFailAsCalls) {
    struct Case {
        const char* fault;
        HRESULT result;
        const char* journalLine;
    };
    const Case cases[] = {
        {"Macro access-denied", E_ACCESSDENIED, "< HRESULT 0x80070005"},
        {"Macro hresult 0x800706BE", static_cast<HRESULT>(0x800706BE), "< HRESULT 0x800706BE"},
        {"* hresult 0x80004005", E_FAIL, "< HRESULT 0x80004005"},
    };
    Client client;

    for (const Case& entry : cases) {
        data_.SetFaults(entry.fault);
        EXPECT_EQ(client.TrySend(askForVersion).result, entry.result) << entry.fault;
        EXPECT_EQ(data_.Journal().back(), entry.journalLine);
    }
}

TEST_F(FaultTest, ExceptionCarriesNumberSourceAndDescription) {
    Client client;
    data_.SetFaults("Macro exception 91 GoldMine.UI|Object variable|not set");

    const Reply small = client.TrySend(askForVersion);

    EXPECT_EQ(small.result, DISP_E_EXCEPTION);
    EXPECT_EQ(small.exception.wCode, 91);
    EXPECT_EQ(small.exception.scode, 0);
    EXPECT_EQ(small.source, L"GoldMine.UI");
    EXPECT_EQ(small.description, L"Object variable|not set");

    data_.SetFaults("Macro exception -2147220990 GoldMine|Out of luck");
    const Reply large = client.TrySend(askForVersion);
    EXPECT_EQ(large.exception.wCode, 0);
    EXPECT_EQ(large.exception.scode, -2147220990);
}

TEST_F(FaultTest, BusyRejectsTheFirstTries) {
    data_.SetFaults("Macro busy 2\n");
    Client client;

    EXPECT_EQ(client.TrySend(askForVersion).result, RPC_E_SERVERCALL_RETRYLATER);
    EXPECT_EQ(client.TrySend(askForVersion).result, RPC_E_SERVERCALL_RETRYLATER);
    EXPECT_EQ(client.Send(askForVersion), version);
}

TEST_F(FaultTest, DelayedCommandIsAnsweredLater) {
    data_.SetFaults("Macro delay 700\n");
    Client client;
    const ULONGLONG start = GetTickCount64();

    EXPECT_EQ(client.Send(askForVersion), version);

    EXPECT_GE(GetTickCount64() - start, 650u);
}

TEST_F(FaultTest, DyingEndsTheProcessInMidCall) {
    data_.SetFaults("Macro die\n");
    Client client;

    EXPECT_TRUE(FAILED(client.TrySend(askForVersion).result));

    WaitForItsEnd();
    EXPECT_EQ(data_.Journal().back(), "> " + Utf8(askForVersion));
}

TEST_F(FaultTest, DyingMayWaitUntilTheCommandIsCarriedOut) {
    for (const std::string death : {"die", "die done"}) {
        data_.SetFaults("InsHist " + death + "\n");
        Client client;
        const std::string countItems = "select count(*) from ContHist where Ref = '" + death + "'";

        EXPECT_TRUE(FAILED(client.TrySend(gmapi::InsHist(L"A0002", L"CI", Wide(death))).result));

        WaitForItsEnd();
        EXPECT_EQ(Sql(countItems), death == "die" ? "0\n" : "1\n");
        Start();
    }
}

TEST_F(FaultTest, RealRepliesCanBeAltered) {
    Client client;

    data_.SetFaults("CallerID call Caller\nMacro call mACRO\n");
    EXPECT_EQ(client.Send(askForVersion), gmapi::Reply(L"mACRO", L"1", L"2014.1"));
    EXPECT_EQ(client.Send(gmapi::CallerID(L"1", L"0", L"0")),
              gmapi::Reply(L"Caller", L"0", L"Not found"));

    data_.SetFaults("Macro padded 500000\n");
    EXPECT_EQ(client.Send(askForVersion),
              gmapi::Reply(L"Macro", L"1", L"2014.1" + std::wstring(500'000, L'x')));
}

// Commands are none of it, nor is it one of them.
TEST_F(FaultTest, ListeningCanBeRefused) {
    Client client;

    data_.SetFaults("* access-denied\n");
    EXPECT_EQ(client.ListenAgain(), S_OK);

    data_.SetFaults("Advise hresult 0x80004005\n");
    EXPECT_EQ(client.ListenAgain(), E_FAIL);
    EXPECT_EQ(client.Send(askForVersion), version);
}

TEST_F(FaultTest, AnotherOneCanBeStartedAfterDying) {
    data_.SetFaults("Macro die\n");
    Client before;
    before.TrySend(askForVersion);
    WaitForItsEnd();
    data_.SetFaults("");

    Start();
    Client after;

    EXPECT_EQ(after.Send(askForVersion), version);
}

TEST_F(FaultTest, EventComesWhenTheFaultSays) {
    struct Case {
        const char* fault;
        size_t insideTheCall;
        size_t afterwards;
    };
    const Case cases[] = {
        {"MenuCommand event before", 1, 1},
        {"MenuCommand event after", 0, 1},
        {"MenuCommand event twice", 0, 2},
        {"MenuCommand event never", 0, 0},
    };
    for (const Case& entry : cases) {
        data_.SetFaults(entry.fault);
        Client client;
        client.Watch(true);

        client.Send(completeCall);

        EXPECT_EQ(client.events().size(), entry.insideTheCall) << entry.fault;
        EXPECT_TRUE(PumpUntil([&] { return client.events().size() >= entry.afterwards; }))
            << entry.fault;
        // Closing the dialog raises the next event; what came before it is all there was.
        const HWND window = goldMine().WindowTitled("Complete Call");
        PostMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(
            PumpUntil([&] { return !client.events().empty() && !client.events().back().up; }));
        EXPECT_EQ(client.events().size(), entry.afterwards + 1) << entry.fault;
    }
}

TEST_F(FaultTest, EventWaitsForASignal) {
    const KernelHandle signal(CreateEventW(nullptr, TRUE, FALSE, L"standin tests signal"));
    data_.SetFaults("MenuCommand event on standin tests signal");
    Client client;
    client.Watch(true);

    client.Send(completeCall);
    client.Send(askForVersion);
    EXPECT_EQ(client.events().size(), 0u);
    SetEvent(signal.get());

    EXPECT_TRUE(PumpUntil([&] { return !client.events().empty(); }));
    EXPECT_TRUE(client.events()[0].up);
}

TEST_F(FaultTest, AnyEventCanBeRaisedBeforeAReply) {
    data_.SetFaults("Macro raise SOMEWINDOW 1 4711\nMacro raise OTHER 0 -3\n");
    Client client;

    EXPECT_EQ(client.Send(askForVersion), version);

    ASSERT_EQ(client.events().size(), 2u);
    EXPECT_EQ(client.events()[0].windowName, L"SOMEWINDOW");
    EXPECT_TRUE(client.events()[0].up);
    EXPECT_EQ(client.events()[0].windowHandle, 4711);
    EXPECT_FALSE(client.events()[1].up);
    EXPECT_EQ(client.events()[1].windowHandle, -3);
    EXPECT_EQ(data_.Journal()[data_.Journal().size() - 2], "! WindowUpDown OTHER 0 -3");
}

TEST_F(FaultTest, RecordIdsCanBeNumeric) {
    data_.SetFaults("InsHist ids numeric\n");
    Client client;

    const std::wstring id = client.Value(L"InsHist", {{L"AccNo", L"A0002"}});

    EXPECT_EQ(id.size(), 15u);
    EXPECT_EQ(id.find_first_not_of(L"0123456789"), std::wstring::npos);
    EXPECT_EQ(client.Macro(L"ContHist->RecID"), id);
}

TEST_F(FaultTest, LineThatMakesNoSenseIsReportedInTheJournal) {
    data_.SetFaults(
        "Macro explode\nMacro delay soon\nMacro@0 die\nMacro busy\nMacro hresult 0\n"
        "Macro die soon\nMacro call\nMacro padded\n");
    Client client;

    EXPECT_EQ(client.Send(askForVersion), version);

    int reported = 0;
    for (const std::string& line : data_.Journal())
        reported += line.rfind("# fault not understood: ", 0) == 0 ? 1 : 0;
    EXPECT_EQ(reported, 8);
}

}  // namespace
}  // namespace standin_tests
