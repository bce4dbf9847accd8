// What faults.txt can make the practice GoldMine do.
#include "PracticeGoldMineTest.h"

namespace standin_tests {
namespace {

const std::wstring askForVersion =
    L"<GMAPI call=\"Macro\"><data name=\"Macro\">&amp;Version</data></GMAPI>";
const std::wstring version = StatusReply(L"Macro", L'1', L"2014.1");
const std::wstring completeCall = L"<GMAPI call=\"MenuCommand\">CompleteScheduledCall</GMAPI>";

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
        {"Macro status 0 not now", StatusReply(L"Macro", L'0', L"not now")},
        {"Macro:&Version status 5", StatusReply(L"Macro", L'5', L"")},
        {"Macro:&UserName status 0", version},
        {"* value a\\r\\n<b>", StatusReply(L"Macro", L'1', L"a&#13;\n&amp;lt;b&amp;gt;")},
        {"Macro reply no XML\\tat all", L"no XML\tat all"},
        {"Macro reply", L""},
        {"# Macro status 0", version},
        {"CallerID status 0", version},
        {"Macro@2 status 0", version},
    };
    Client client;

    for (const Case& entry : cases) {
        WriteFaults(std::string(entry.fault) + "\r\n");
        EXPECT_EQ(client.Send(askForVersion), entry.reply) << entry.fault;
    }
}

TEST_F(FaultTest, FaultCanHitOneOfSeveralCommands) {
    WriteFaults("Macro@2 status 0 second\n");
    Client client;

    EXPECT_EQ(client.Send(askForVersion), version);
    EXPECT_EQ(client.Send(askForVersion), StatusReply(L"Macro", L'0', L"second"));
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
        WriteFaults(entry.fault);
        EXPECT_EQ(client.TrySend(askForVersion).result, entry.result) << entry.fault;
        EXPECT_EQ(Journal().back(), entry.journalLine);
    }
}

TEST_F(FaultTest, ExceptionCarriesNumberSourceAndDescription) {
    Client client;
    WriteFaults("Macro exception 91 GoldMine.UI|Object variable|not set");

    const Reply small = client.TrySend(askForVersion);

    EXPECT_EQ(small.result, DISP_E_EXCEPTION);
    EXPECT_EQ(small.exception.wCode, 91);
    EXPECT_EQ(small.exception.scode, 0);
    EXPECT_EQ(small.source, L"GoldMine.UI");
    EXPECT_EQ(small.description, L"Object variable|not set");

    WriteFaults("Macro exception -2147220990 GoldMine|Out of luck");
    const Reply large = client.TrySend(askForVersion);
    EXPECT_EQ(large.exception.wCode, 0);
    EXPECT_EQ(large.exception.scode, -2147220990);
}

TEST_F(FaultTest, BusyRejectsTheFirstTries) {
    WriteFaults("Macro busy 2\n");
    Client client;

    EXPECT_EQ(client.TrySend(askForVersion).result, RPC_E_SERVERCALL_RETRYLATER);
    EXPECT_EQ(client.TrySend(askForVersion).result, RPC_E_SERVERCALL_RETRYLATER);
    EXPECT_EQ(client.Send(askForVersion), version);
}

TEST_F(FaultTest, DelayedCommandIsAnsweredLater) {
    WriteFaults("Macro delay 700\n");
    Client client;
    const ULONGLONG start = GetTickCount64();

    EXPECT_EQ(client.Send(askForVersion), version);

    EXPECT_GE(GetTickCount64() - start, 650u);
}

TEST_F(FaultTest, DyingEndsTheProcessInMidCall) {
    WriteFaults("Macro die\n");
    Client client;

    EXPECT_TRUE(FAILED(client.TrySend(askForVersion).result));

    EXPECT_TRUE(process_.WaitForEnd());
    EXPECT_EQ(Journal().back(), "> " + Utf8(askForVersion));
    process_ = Process();
}

TEST_F(FaultTest, AnotherOneCanBeStartedAfterDying) {
    WriteFaults("Macro die\n");
    Client before;
    before.TrySend(askForVersion);
    EXPECT_TRUE(process_.WaitForEnd());
    WriteFaults("");

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
        WriteFaults(entry.fault);
        Client client;
        client.Watch(true);

        client.Send(completeCall);

        EXPECT_EQ(client.events().size(), entry.insideTheCall) << entry.fault;
        EXPECT_TRUE(PumpUntil([&] { return client.events().size() >= entry.afterwards; }))
            << entry.fault;
        // Closing the dialog raises the next event; what came before it is all there was.
        const HWND window = WindowTitled(L"Complete Call");
        PostMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(
            PumpUntil([&] { return !client.events().empty() && !client.events().back().up; }));
        EXPECT_EQ(client.events().size(), entry.afterwards + 1) << entry.fault;
    }
}

TEST_F(FaultTest, EventWaitsForASignal) {
    const std::unique_ptr<void, decltype(&CloseHandle)> signal(
        CreateEventW(nullptr, TRUE, FALSE, L"standin tests signal"), &CloseHandle);
    WriteFaults("MenuCommand event on standin tests signal");
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
    WriteFaults("Macro raise SOMEWINDOW 1 4711\nMacro raise OTHER 0 -3\n");
    Client client;

    EXPECT_EQ(client.Send(askForVersion), version);

    ASSERT_EQ(client.events().size(), 2u);
    EXPECT_EQ(client.events()[0].windowName, L"SOMEWINDOW");
    EXPECT_TRUE(client.events()[0].up);
    EXPECT_EQ(client.events()[0].windowHandle, 4711);
    EXPECT_FALSE(client.events()[1].up);
    EXPECT_EQ(client.events()[1].windowHandle, -3);
    EXPECT_EQ(Journal()[Journal().size() - 2], "! WindowUpDown OTHER 0 -3");
}

TEST_F(FaultTest, RecordIdsCanBeNumeric) {
    WriteFaults("InsHist ids numeric\n");
    Client client;

    const std::wstring id = client.Value(L"InsHist", {{L"AccNo", L"A0002"}});

    EXPECT_EQ(id.size(), 15u);
    EXPECT_EQ(id.find_first_not_of(L"0123456789"), std::wstring::npos);
    EXPECT_EQ(client.Macro(L"ContHist->RecID"), id);
}

TEST_F(FaultTest, LineThatMakesNoSenseIsReportedInTheJournal) {
    WriteFaults("Macro explode\nMacro delay soon\nMacro@0 die\nMacro busy\nMacro hresult 0\n");
    Client client;

    EXPECT_EQ(client.Send(askForVersion), version);

    int reported = 0;
    for (const std::string& line : Journal()) {
        reported += line.rfind("# fault not understood: ", 0) == 0 ? 1 : 0;
    }
    EXPECT_EQ(reported, 5);
}

}  // namespace
}  // namespace standin_tests
