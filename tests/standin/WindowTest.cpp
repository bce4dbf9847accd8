// Commands that show something, the Complete Call dialog, and its events.
#include "PracticeGoldMineTest.h"

#include <commctrl.h>

namespace standin_tests {
namespace {

constexpr int referenceControl = 1016;
constexpr int notesControl = 1017;
constexpr int historyList = 1321;
const std::wstring executed = gmapi::Reply(L"MenuCommand", L"1", L"The command was executed.");

// What a list of another process shows; that process has the same bits.
std::wstring ListText(HWND list, int row, int column) {
    struct Asked {
        LVITEMW item;
        wchar_t text[200];
    };
    DWORD processId = 0;
    GetWindowThreadProcessId(list, &processId);
    const KernelHandle process(
        OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, processId));
    void* const there = VirtualAllocEx(process.get(), nullptr, sizeof(Asked),
                                       MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    EXPECT_NE(there, nullptr);
    Asked asked{};
    asked.item.iSubItem = column;
    asked.item.cchTextMax = ARRAYSIZE(asked.text);
    asked.item.pszText = static_cast<Asked*>(there)->text;
    EXPECT_TRUE(WriteProcessMemory(process.get(), there, &asked, sizeof(asked), nullptr));
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(there));
    EXPECT_TRUE(ReadProcessMemory(process.get(), there, &asked, sizeof(asked), nullptr));
    VirtualFreeEx(process.get(), there, 0, MEM_RELEASE);
    return asked.text;
}

class WindowTest : public PracticeGoldMineTest {
protected:
    // Opens Complete Call and answers its window as the event gave it.
    HWND OpenCompleteCall(Client& client, const std::wstring& command) {
        client.Watch(true);
        EXPECT_EQ(client.Send(gmapi::MenuCommand(command)), executed);
        // An event about an earlier window may still come.
        const auto opened = [&] { return !client.events().empty() && client.events().back().up; };
        EXPECT_TRUE(PumpUntil(opened));
        return opened() ? static_cast<HWND>(LongToHandle(client.events().back().windowHandle))
                        : nullptr;
    }
    std::wstring SetText(Client& client, HWND window, int control, const std::wstring& text) {
        return client.Send(gmapi::SetControlText(std::to_wstring(HandleToLong(window)),
                                                 std::to_wstring(control), gmapi::Escaped(text)));
    }
    void PressAndWaitUntilGone(HWND window, int button) {
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
        EXPECT_TRUE(PumpUntil([&] { return !IsWindow(window); }));
    }
};

TEST_F(WindowTest, CallerIDShowsTheContactInTheCurrentWindow) {
    Start();
    Client client;

    EXPECT_EQ(client.Send(gmapi::CallerID(L"(555)123-4567", L"2", L"0")),
              gmapi::Reply(L"CallerID", L"1", L"Success"));

    EXPECT_EQ(client.Macro(L"Contact1->AccountNo"), L"A0002");
    EXPECT_EQ(goldMine().WindowTitled("Brightwater Ceramics"), goldMine().MainWindow());
}

TEST_F(WindowTest, CallerIDShowsTheContactInANewWindowWhichIsThenTheCurrentOne) {
    Start();
    Client client;

    EXPECT_EQ(client.Send(gmapi::CallerID(L"(555)123-4567", L"1", L"0")),
              gmapi::Reply(L"CallerID", L"1", L"Success"));

    EXPECT_EQ(client.Macro(L"Contact1->AccountNo"), L"A0002");
    const HWND window = goldMine().WindowTitled("Brightwater Ceramics");
    EXPECT_NE(window, nullptr);
    EXPECT_NE(window, goldMine().MainWindow());
    PostMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(PumpUntil([&] { return !IsWindow(window); }));
    EXPECT_EQ(client.Macro(L"Contact1->AccountNo"), L"A0001");
}

TEST_F(WindowTest, CallerIDSearchesTheFieldsAskedForByExactText) {
    struct Case {
        const wchar_t* phone;
        const wchar_t* all;
        wchar_t status;
    };
    const Case cases[] = {
        {L"(206)555-0102", L"0", L'0'},  // stands in Phone2
        {L"(206)555-0102", L"1", L'1'},
        {L"(206)555-0103", L"0", L'0'},  // stands in Phone3
        {L"(206)555-0103", L"1", L'1'},
        {L"5551234567", L"1", L'0'},
        {L"(206)555-0158", L"1", L'0'},  // of an additional contact only
        {L"", L"1", L'0'},
    };
    Start();
    Client client;

    for (const Case& entry : cases) {
        EXPECT_EQ(client.Send(gmapi::CallerID(entry.phone, L"2", entry.all)).at(37), entry.status)
            << Utf8(entry.phone) << " " << Utf8(entry.all);
    }
}

TEST_F(WindowTest, WithoutAnOpenRecordContactMacrosAndMenuCommandsFail) {
    Start("/NoRecord");
    Client client;

    EXPECT_EQ(client.Ask(L"Macro", {{L"Macro", L"&Phone1"}}),
              gmapi::Reply(L"Macro", L"0", L"No contact record is open."));
    EXPECT_EQ(client.Ask(L"Macro", {{L"Macro", L"Contact1->AccountNo"}}).at(34), L'0');
    EXPECT_EQ(client.Send(gmapi::MenuCommand(L"CompleteScheduledCall")),
              gmapi::Reply(L"MenuCommand", L"0", L"No contact record is open."));
}

TEST_F(WindowTest, RecordOptionOpensThatContact) {
    Start("\"/Record:A0018 & Co\" /User:ANNA /Version:6.7");
    Client client;

    EXPECT_EQ(client.Macro(L"Contact1->AccountNo"), L"A0018 & Co");
    EXPECT_EQ(client.Macro(L"&UserName"), L"ANNA");
    EXPECT_EQ(client.Macro(L"&Version"), L"6.7");
}

TEST_F(WindowTest, StatusMessageStandsInTheStatusBarUntilItsDelayIsOver) {
    Start();
    Client client;
    const auto statusText = [&] {
        const std::wstring list = client.Ask(L"GetActiveWindowsList");
        return Between(list, L"<data name=\"ID\">1322</data><data name=\"Text\">", L"</data>");
    };

    client.Ask(L"StatusMsg", {{L"Message", L"Caller <found> & shown"}, {L"Delay", L"600"}});
    EXPECT_EQ(statusText(), L"Caller <found> & shown");

    client.Ask(L"StatusMsg", {{L"Message", L"Caller <found> & shown"}, {L"Delay", L"1"}});
    EXPECT_TRUE(PumpUntil([&] { return statusText().empty(); }));
}

TEST_F(WindowTest, CompleteCallRaisesTheEventAfterTheReply) {
    Start();
    Client client;

    const HWND window = OpenCompleteCall(client, L"CompleteUnscheduledIncomingCall");

    ASSERT_TRUE(IsWindow(window));
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(client.events().front().windowName, L"DIALOGSCHEDULECOMPLETE");
    EXPECT_TRUE(client.events().front().up);
    const std::vector<std::string> journal = data_.Journal();
    EXPECT_EQ(journal.back(),
              "! WindowUpDown DIALOGSCHEDULECOMPLETE 1 " + std::to_string(HandleToLong(window)));
    EXPECT_EQ(journal[journal.size() - 2], "< " + Utf8(executed));

    PressAndWaitUntilGone(window, IDCANCEL);
    EXPECT_TRUE(PumpUntil([&] { return client.events().size() == 2; }));
    EXPECT_FALSE(client.events().back().up);
    EXPECT_EQ(client.events().back().windowHandle, HandleToLong(window));
}

TEST_F(WindowTest, NobodyWatchingMeansNoEvent) {
    Start();
    Client client;
    client.Watch(true);
    client.Watch(false);

    client.Send(gmapi::MenuCommand(L"CompleteScheduledCall"));
    const HWND unwatched = goldMine().WindowTitled("Complete Call");
    PressAndWaitUntilGone(unwatched, IDCANCEL);

    // An event comes 200 ms after the reply; who watches by then would get it.
    Sleep(500);
    const HWND watched = OpenCompleteCall(client, L"CompleteScheduledCall");
    EXPECT_NE(watched, nullptr);
    for (const Event& event : client.events())
        EXPECT_TRUE(!event.up || event.windowHandle == HandleToLong(watched));
}

TEST_F(WindowTest, EventsGoToTheClientThatWatches) {
    Start();
    Client watching;
    Client idle;

    OpenCompleteCall(watching, L"CompleteScheduledCall");
    idle.Macro(L"&UserName");

    EXPECT_EQ(watching.events().size(), 1u);
    EXPECT_TRUE(idle.events().empty());
}

TEST_F(WindowTest, UnknownMenuCommandFails) {
    Start();
    Client client;

    EXPECT_EQ(client.Send(gmapi::MenuCommand(L"FileExit")),
              gmapi::Reply(L"MenuCommand", L"0", L"Unknown menu command."));
}

TEST_F(WindowTest, ControlsCanBeReadAndSetAndCompletingStoresThem) {
    struct Case {
        const wchar_t* command;
        const char* recordType;
    };
    const Case cases[] = {
        {L"CompleteUnscheduledIncomingCall", "CI"},
        {L"CompleteUnscheduledOutgoingCall", "CO"},
        {L"CompleteScheduledCall", "CO"},
    };
    Start();
    for (const Case& entry : cases) {
        Client client;
        const HWND window = OpenCompleteCall(client, entry.command);

        EXPECT_EQ(SetText(client, window, referenceControl, L"Call from <A> & B"),
                  gmapi::Reply(L"GMUI_SetControlText", L"1", L"Success"));
        SetText(client, window, notesControl, L"one\r\ntwo &lt; three");
        const std::wstring list = client.Ask(L"GetActiveWindowsList");
        const std::wstring mine = list.substr(list.find(
            L"<data name=\"window\"><data name=\"hWnd\">" + std::to_wstring(HandleToLong(window)) +
            L"</data><data name=\"Name\">DIALOGSCHEDULECOMPLETE</data><data name=\"Controls\">"));
        const std::wstring control = L"<data name=\"control\"><data name=\"ID\">";
        const std::wstring text = L"</data><data name=\"Text\">";
        EXPECT_EQ(Between(mine, control + L"1016" + text, L"</data></data>"), L"Call from <A> & B");
        EXPECT_EQ(Between(mine, control + L"1017" + text, L"</data></data>"),
                  L"one\r\ntwo &lt; three");
        PressAndWaitUntilGone(window, IDOK);

        EXPECT_EQ(Sql("select AccountNo, RecType, Ref, Notes, UserID from ContHist "
                      "order by rowid desc limit 1"),
                  std::string("A0001\t") + entry.recordType +
                      "\tCall from <A> & B\tone\\r\\ntwo &lt; three\tMASTER\n");
    }
}

TEST_F(WindowTest, CompleteCallOpensWithTheTextsOfItsFile) {
    struct Case {
        const char* file;
        const char* row;  // what completing stores
    };
    const Case cases[] = {
        {"asked for <Ann> & Bob\r\nfirst \xF0\x9F\x98\x80 line\nsecond\r\n\r\n",
         "asked for <Ann> & Bob\tfirst \xF0\x9F\x98\x80 line\\r\\nsecond\\r\\n\\r\\n\n"},
        {"only Ref", "only Ref\t\n"},
    };
    Start();
    for (const Case& entry : cases) {
        WriteFileText(data_.file(L"complete-call.txt"), entry.file);
        Client client;
        PressAndWaitUntilGone(OpenCompleteCall(client, L"CompleteScheduledCall"), IDOK);

        EXPECT_EQ(Sql("select Ref, Notes from ContHist order by rowid desc limit 1"), entry.row);
    }
}

TEST_F(WindowTest, SettingTheTextOfWhatIsNotThereFails) {
    Start();
    Client client;
    const HWND window = OpenCompleteCall(client, L"CompleteScheduledCall");
    const std::wstring failure =
        gmapi::Reply(L"GMUI_SetControlText", L"0", L"There is no such control.");

    EXPECT_EQ(SetText(client, window, 4711, L"x"), failure);
    EXPECT_EQ(SetText(client, nullptr, referenceControl, L"x"), failure);
    EXPECT_EQ(SetText(client, GetDesktopWindow(), 1, L"x"), failure);
}

TEST_F(WindowTest, CommandsWorkInsideAnEvent) {
    Start();
    data_.SetFaults("MenuCommand event before\n");
    Client client;
    client.Watch(true);
    std::wstring nested;
    client.recorder().onEvent = [&](const Event& event) {
        const HWND window = static_cast<HWND>(LongToHandle(event.windowHandle));
        nested = SetText(client, window, referenceControl, L"set inside the event");
    };

    EXPECT_EQ(client.Send(gmapi::MenuCommand(L"CompleteScheduledCall")), executed);

    EXPECT_EQ(nested.substr(0, 51), L"<GMAPI call=\"GMUI_SetControlText\"><status code=\"1\">");
    EXPECT_EQ(client.events().size(), 1u);
    client.recorder().onEvent = nullptr;
}

TEST_F(WindowTest, HistoryItemOpensInAWindow) {
    Start();
    Client client;

    EXPECT_EQ(client.Send(gmapi::PopCalHistItem(L"HN8K$2&amp;0000001H")),
              gmapi::Reply(L"PopCalHistItem", L"1", L"Success"));

    EXPECT_TRUE(IsWindowVisible(goldMine().WindowTitled("History Item")));
    EXPECT_EQ(client.Macro(L"ContHist->RecID"), L"HN8K$2&0000001H");
    EXPECT_EQ(client.Ask(L"PopCalHistItem", {{L"recID", L"nothing"}}),
              gmapi::Reply(L"PopCalHistItem", L"0", L"There is no such history item."));
}

TEST_F(WindowTest, HistoryIsListedWithTheNewestFirstAndEachItemOnOneLine) {
    Start();
    Client client;
    const HWND list = GetDlgItem(goldMine().MainWindow(), historyList);

    EXPECT_EQ(ListText(list, 0, 0), L"2024-03-18");
    EXPECT_EQ(ListText(list, 0, 2), L"ANNA");
    EXPECT_EQ(ListText(list, 1, 4), L"Called back about delivery");
    EXPECT_EQ(ListText(list, 1, 5), L"Delivery in week 13. Pays by transfer.");
    EXPECT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 3);

    client.Send(gmapi::InsHist(L"A0001", L"CI", L"Just now"));
    EXPECT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 4);
    EXPECT_EQ(ListText(list, 0, 4), L"Just now");
}

TEST_F(WindowTest, ClosingTheMainWindowDisconnectsClients) {
    Start();
    Client client;

    Close();

    EXPECT_TRUE(FAILED(client.TrySend(L"<GMAPI call=\"Macro\"/>").result));
}

}  // namespace
}  // namespace standin_tests
