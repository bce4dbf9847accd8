// Registration, the two flavours, starting, and the tool switches.
#include "PracticeGoldMineTest.h"

namespace standin_tests {
namespace {

using Microsoft::WRL::ComPtr;

const std::wstring interfaceKey = L"Interface\\{75B14699-B5F4-47F6-98DC-2E7B98F7E46D}";

// The default or a named value, "<none>" when it is not there.
std::wstring Value(HKEY root, const std::wstring& key, const wchar_t* name = nullptr) {
    wchar_t text[512];
    DWORD size = sizeof text;
    return RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size) ==
                   ERROR_SUCCESS
               ? text
               : L"<none>";
}

std::wstring ClassValue(const std::wstring& key, const wchar_t* name = nullptr) {
    return Value(HKEY_CLASSES_ROOT, key, name);
}

std::wstring UserClassValue(const std::wstring& key) {
    return Value(HKEY_CURRENT_USER, L"Software\\Classes\\" + key);
}

void SetClassValue(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, text.c_str(),
                              static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

// Every key below, and every value with its type and bytes.
std::vector<std::wstring> AllBelow(HKEY root, const std::wstring& path) {
    std::vector<std::wstring> all;
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return all;
    all.push_back(path);
    wchar_t name[256];
    DWORD length = 256;
    wchar_t data[512];
    DWORD size = sizeof data;
    DWORD type = 0;
    for (DWORD i = 0; RegEnumValueW(key, i, name, &length, nullptr, &type,
                                    reinterpret_cast<BYTE*>(data), &size) == ERROR_SUCCESS;
         ++i, length = 256, size = sizeof data) {
        all.push_back(path + L" " + name + L"=" + std::to_wstring(type) + L":" +
                      std::wstring(data, size / sizeof(wchar_t)));
    }
    for (DWORD i = 0; RegEnumKeyW(key, i, name, 256) == ERROR_SUCCESS; ++i) {
        for (const std::wstring& each : AllBelow(root, path + L"\\" + name))
            all.push_back(each);
    }
    RegCloseKey(key);
    return all;
}

class ServerTest : public PracticeGoldMineTest, public testing::WithParamInterface<const Flavour*> {
protected:
    // Each test registers for itself.
    static void SetUpTestSuite() {}
    static void TearDownTestSuite() {}
    void SetUp() override { RegisterGoldMine(GetParam()->program); }
    void TearDown() override {
        PracticeGoldMineTest::TearDown();
        UnregisterGoldMine(GetParam()->program);
    }
};

TEST_P(ServerTest, RegistrationIsCompleteAndUndone) {
    const Flavour& flavour = *GetParam();
    const std::wstring classId = ClassValue(std::wstring(flavour.programId) + L"\\CLSID");
    const std::wstring classKey = L"CLSID\\" + classId;
    const std::wstring libraryKey =
        std::wstring(L"TypeLib\\") + flavour.libraryId + L"\\" + flavour.libraryVersion;

    EXPECT_EQ(ClassValue(classKey + L"\\LocalServer32"),
              L"\"" + StandinFile(flavour.program) + L"\"");
    EXPECT_EQ(ClassValue(classKey + L"\\ProgID"), flavour.programId);
    EXPECT_EQ(ClassValue(classKey + L"\\TypeLib"), flavour.libraryId);
    EXPECT_EQ(ClassValue(interfaceKey + L"\\TypeLib"), flavour.libraryId);
    EXPECT_EQ(ClassValue(interfaceKey + L"\\TypeLib", L"Version"), flavour.libraryVersion);
    EXPECT_EQ(ClassValue(interfaceKey + L"\\ProxyStubClsid32"),
              L"{00020424-0000-0000-C000-000000000046}");
    EXPECT_NE(ClassValue(libraryKey), L"<none>");

    ASSERT_EQ(RunToEnd(StandinFile(flavour.program), L"-unregserver"), 0u);
    for (const std::wstring& key :
         {classKey, std::wstring(flavour.programId), interfaceKey, interfaceKey + L"\\TypeLib",
          libraryKey, std::wstring(L"TypeLib\\") + flavour.libraryId}) {
        HKEY opened = nullptr;
        EXPECT_EQ(RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, &opened),
                  ERROR_FILE_NOT_FOUND)
            << Utf8(key);
        if (opened)
            RegCloseKey(opened);
    }
}

TEST_P(ServerTest, TheUsersOwnClassesAreAfterwardsAsTheyWereBefore) {
    const std::string program = GetParam()->program;
    UnregisterGoldMine(program);
    const std::vector<std::wstring> before = AllBelow(HKEY_CURRENT_USER, L"Software\\Classes");

    RegisterGoldMine(program);
    EXPECT_EQ(UserClassValue(std::wstring(GetParam()->programId) + L"\\CLSID"),
              ClassValue(std::wstring(GetParam()->programId) + L"\\CLSID"));
    EXPECT_EQ(UserClassValue(interfaceKey + L"\\TypeLib"), GetParam()->libraryId);
    UnregisterGoldMine(program);

    EXPECT_EQ(AllBelow(HKEY_CURRENT_USER, L"Software\\Classes"), before);
}

TEST_P(ServerTest, ARealGoldMineKeepsItsInterface) {
    const std::string program = GetParam()->program;
    UnregisterGoldMine(program);
    const std::wstring library = L"{0DDBA115-0000-4000-8000-000000000001}";
    SetClassValue(interfaceKey + L"\\TypeLib", nullptr, library);
    SetClassValue(interfaceKey + L"\\TypeLib", L"Version", L"1.0");
    SetClassValue(L"TypeLib\\" + library + L"\\1.0", nullptr, L"GoldMine");
    const std::vector<std::wstring> before = AllBelow(HKEY_CLASSES_ROOT, interfaceKey);

    EXPECT_EQ(RunToEnd(StandinFile(program), L"/Hidden /RegServer"), 1u);
    EXPECT_EQ(ClassValue(std::wstring(GetParam()->programId) + L"\\CLSID"), L"<none>");
    UnregisterGoldMine(program);

    EXPECT_EQ(AllBelow(HKEY_CLASSES_ROOT, interfaceKey), before);
    EXPECT_EQ(RegDeleteTreeW(HKEY_CLASSES_ROOT, interfaceKey.c_str()), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteTreeW(HKEY_CLASSES_ROOT, (L"TypeLib\\" + library).c_str()), ERROR_SUCCESS);
}

TEST_P(ServerTest, ClientsConnectSendAndHearEvents) {
    const Flavour& flavour = *GetParam();
    Start("", flavour);
    Client client(flavour);
    ASSERT_TRUE(client.connected());
    client.Watch(true);

    client.Send(gmapi::MenuCommand(L"CompleteScheduledCall"));

    EXPECT_EQ(client.Macro(L"&Version"), L"2014.1");
    EXPECT_TRUE(PumpUntil([&] { return client.events().size() == 1; }));
    EXPECT_EQ(client.recorder().others, 0);
}

TEST_P(ServerTest, CommandMethodIsTheFirstAfterTheDispatchMethods) {
    Start("", *GetParam());
    Client client(*GetParam());
    void* direct = nullptr;
    ASSERT_EQ(client.object()->QueryInterface(userInterfaceId, &direct), S_OK);
    auto* object = static_cast<ByLayout*>(direct);
    const BSTR command = SysAllocString(gmapi::Macro(L"&amp;UserName").c_str());
    BSTR reply = nullptr;

    EXPECT_EQ(object->First(command, &reply), S_OK);

    EXPECT_STREQ(reply, L"<GMAPI call=\"Macro\"><status code=\"1\">MASTER</status></GMAPI>");
    data_.SetFaults("Macro access-denied");
    BSTR none = nullptr;
    EXPECT_EQ(object->First(command, &none), E_ACCESSDENIED);
    data_.SetFaults("Macro exception 91 GoldMine|not set");
    EXPECT_EQ(object->First(command, &none), static_cast<HRESULT>(0x800A005B));
    SysFreeString(none);
    SysFreeString(reply);
    SysFreeString(command);
    object->Release();
}

TEST_P(ServerTest, ObjectTellsItsClassAndEventInterface) {
    const Flavour& flavour = *GetParam();
    Start("", flavour);
    Client client(flavour);
    ComPtr<IProvideClassInfo2> provider;
    ASSERT_EQ(client.object()->QueryInterface(IID_IProvideClassInfo2,
                                              reinterpret_cast<void**>(provider.GetAddressOf())),
              S_OK);
    IID expected{};
    IID events{};
    IIDFromString(flavour.eventsId, &expected);

    EXPECT_EQ(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);

    EXPECT_TRUE(IsEqualGUID(events, expected));
}

TEST_P(ServerTest, ComStartsItWhenItIsNotRunning) {
    const Flavour& flavour = *GetParam();
    Client client(flavour);

    ASSERT_TRUE(client.connected());
    EXPECT_EQ(client.Macro(L"&UserName"), L"MASTER");

    // It is closed by the fault that ends it, found beside it like all of its data.
    const std::wstring program = StandinFile(flavour.program);
    const std::wstring folder = program.substr(0, program.rfind(L'\\') + 1);
    WriteFileText(folder + L"faults.txt", "Macro die\n");
    EXPECT_TRUE(FAILED(client.TrySend(L"<GMAPI call=\"Macro\"/>").result));
    for (const wchar_t* name : {L"faults.txt", L"journal.txt", L"gmw.sqlite"}) {
        EXPECT_TRUE(PumpUntil([&] { return DeleteFileW((folder + name).c_str()) != 0; }))
            << Utf8(name);
    }
}

INSTANTIATE_TEST_SUITE_P(Flavours, ServerTest, testing::Values(&ordinary, &other),
                         [](const auto& flavour) {
                             return std::string(flavour.index == 0 ? "Ordinary" : "Other");
                         });

using StartTest = PracticeGoldMineTest;

TEST_F(StartTest, FreshStartWritesIniFilesAndBeginsTheJournal) {
    WriteFileText(data_.file(L"journal.txt"), "old\n");
    WriteFileText(data_.file(L"gmw.sqlite"), "");
    WriteFileText(data_.file(L"ANNA.INI"), "[Modem]\r\nDeviceID=7\r\n");

    Start("/User:ANNA");

    const std::vector<std::string> expected = {"# gmw started", "# clients can connect"};
    EXPECT_EQ(data_.Journal(), expected);
    EXPECT_EQ(ReadFileText(data_.file(L"GM.INI")), "[GoldMine]\r\nHTML_Cal_Notes=0\r\n");
    EXPECT_EQ(ReadFileText(data_.file(L"ANNA.INI")), "[Modem]\r\nDeviceID=7\r\n");
}

TEST_F(StartTest, NoIniLeavesIniFilesOut) {
    Start("/NoIni");

    EXPECT_EQ(ReadFileText(data_.file(L"GM.INI")).value_or(""), "");
    EXPECT_EQ(ReadFileText(data_.file(L"MASTER.INI")).value_or(""), "");
}

TEST_F(StartTest, JournalHoldsCommandsAndRepliesOnOneLineEach) {
    Start();
    Client client;

    client.Send(L"<GMAPI call=\"Macro\">\r\n\t<data name=\"Macro\">&amp;UserName</data>\\</GMAPI>");

    const std::vector<std::string> expected = {
        "# gmw started",
        "# clients can connect",
        "> <GMAPI call=\"Macro\">\\r\\n\\t<data name=\"Macro\">&amp;UserName</data>\\\\</GMAPI>",
        "< <GMAPI call=\"Macro\"><status code=\"1\">MASTER</status></GMAPI>",
    };
    EXPECT_EQ(data_.Journal(), expected);
}

TEST_F(StartTest, HiddenMeansNoVisibleMainWindow) {
    Start();

    EXPECT_FALSE(IsWindowVisible(goldMine().MainWindow()));
}

TEST_F(StartTest, UnknownOptionEndsWithAnErrorCode) {
    EXPECT_EQ(RunToEnd(StandinFile(ordinaryGoldMine), L"/Hidden /Frsh"), 2u);
}

TEST_F(StartTest, DumpWritesTheHistoryAsLines) {
    Start();
    Close();
    const std::wstring out = data_.file(L"dump.txt");

    EXPECT_EQ(RunToEnd(StandinFile(ordinaryGoldMine),
                       L"/Dump " + data_.option() + L" /Out:\"" + out + L"\""),
              0u);

    const std::string dump = ReadFileText(out).value_or("");
    EXPECT_EQ(dump.rfind("UserID=MASTER\nAccountNo=A0001\nRecType=CI\n", 0), 0u) << dump;
    EXPECT_NE(dump.find("\nNotes=Delivery in week 13.\\r\\nPays by transfer.\n"),
              std::string::npos);
    EXPECT_NE(dump.find("\nRecID=HN8K$2&0000001H\n\nUserID="), std::string::npos);
}

TEST_F(StartTest, SqlSwitchReportsErrorsInItsFile) {
    Start();
    const std::wstring out = data_.file(L"out.txt");

    EXPECT_EQ(RunToEnd(StandinFile(ordinaryGoldMine),
                       data_.option() + L" /Sql:\"selec 1\" /Out:\"" + out + L"\""),
              1u);

    EXPECT_EQ(ReadFileText(out), "error: near \"selec\": syntax error\n");
}

}  // namespace
}  // namespace standin_tests
