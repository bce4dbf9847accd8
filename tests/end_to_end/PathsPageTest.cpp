#include <functional>

#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"
#include "WindowTest.h"

namespace end_to_end {
namespace {

constexpr wchar_t goldMinesKey[] = L"SOFTWARE\\FrontRange Solutions\\GoldMine";
const std::string unknown = "Unknown - probably not running or not installed locally";
const std::string ofLater3CX = "(the plugin belongs to 3CX 14 and later)";
const Box restart3CX{
    "Please exit and re-start 3CXPhone to complete changing the 3CX Command Line API Plugin log "
    "level."};

// The texts that controls of the window must show.
using Texts = std::map<std::string, std::string>;

struct Wiring {
    const char* name;
    std::function<void()> wire;
    Boxes findings;
    Texts shown;
};

class PathsPageTest : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        CloseGoldMine();
    }

    // The pages with paths and registry entries are in front; findings at the start are answered.
    HWND ShowPaths(ProgramRun& run, size_t findings = 0) {
        for (size_t finding = 0; finding < findings; ++finding)
            run.Answer("OK");
        const HWND window = Show(run);
        Click(window, "cmdParams");
        SelectTab(window, "tabstripParams", 2);
        return window;
    }

    static void ExpectShown(HWND window, const Texts& texts) {
        for (const auto& [control, text] : texts)
            EXPECT_EQ(ControlText(window, control), text) << control;
    }
};

class WiringTest : public PathsPageTest, public testing::WithParamInterface<Wiring> {};

TEST_P(WiringTest, IsShown) {
    const Wiring& each = GetParam();
    each.wire();
    ProgramRun run = Start("");

    const HWND window = ShowPaths(run, each.findings.size());

    ExpectShown(window, each.shown);
    Close(run, window, each.findings);
}

INSTANTIATE_TEST_SUITE_P(
    Wirings, WiringTest,
    testing::Values(
        Wiring{
            "Phone14",
            [] {
                SetRegistryText(HKEY_LOCAL_MACHINE, crmKey, "CommandLineAPILogLevel",
                                " AllEvents ");
                SetRegistryText(HKEY_LOCAL_MACHINE, crmKey, "CommandLineAPILogPath",
                                " C:\\the logs ");
            },
            {},
            {{"txtAppPath", "C:\\corvane-e2e\\app\\CorvaneTo3CX.exe"},
             {"txtGMInstallDir", "C:\\corvane-e2e\\goldmine\\"},
             {"txtLogPath", "C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log"},
             {"lbl3CXInfo", "3CXPhone defined in registry. Assuming 3CX 14 or later."},
             {"lblParam(17)",
              "3CX calls this program to handle inbound and outbound call events:\r\n"
              "HKLM\\Software\\3CX\\CRM\\CallNotifierPath"},
             {"txt3CXCRMCallNotifierPath", "C:\\corvane-e2e\\app\\CorvaneTo3CX.exe"},
             {"lblParam(19)",
              "CorvaneTo3CX calls this program to dial out via 3CX:\r\n"
              "HKLM\\Software\\3CX\\3CXPhone for Windows\\Path + CallTriggerCmd.exe"},
             {"txt3CXOutboundCallNotifierPath", "C:\\corvane-e2e\\app\\CallTriggerCmd.exe"},
             {"lblParam(30)",
              "3CX uses this plugin to call CorvaneTo3CX.exe:\r\n"
              "HKLM\\Software\\3CX\\3CXPhone for Windows\\Path + CommandLineAPIPlugin.dll"},
             {"txtCommandLineAPIPluginDLLPath", "C:\\corvane-e2e\\app\\CommandLineAPIPlugin.dll"},
             {"lblParam(32)",
              "3CX Command Line API Plugin log level:\r\n"
              "HKLM\\Software\\3CX\\CRM\\CommandLineAPILogLevel"},
             {"txtCommandLineAPILogLevel", "AllEvents"},
             {"cmdChangeLogLevel", "Set to log only ImportantEvents"},
             {"lblParam(33)",
              "Path to 3CX Command Line API Plugin log file:\r\n"
              "HKLM\\Software\\3CX\\CRM\\CommandLineAPILogPath"},
             {"txtCommandLineAPILogPath", "C:\\the logs\\3CXCommandLineAPIPlugin.log"}}},
        Wiring{"MyPhone10Or11",
               [] {
                   SetRegistryText(HKEY_LOCAL_MACHINE, myPhoneKey, "CallNotifier",
                                   "C:\\corvane-e2e\\app\\CallTriggerCmd.exe");
                   SetRegistryText(HKEY_LOCAL_MACHINE, crmKey, "CommandLineAPILogLevel",
                                   "AllEvents");
               },
               {},
               {{"lbl3CXInfo", "3CX MyPhone defined in registry. Assuming 3CX 10 or 11."},
                {"lblParam(17)",
                 "3CX calls this program to handle inbound and outbound call events:\r\n"
                 "HKLM\\Software\\3CX\\CRM\\CallNotifierPath"},
                {"txt3CXCRMCallNotifierPath", "C:\\corvane-e2e\\app\\CorvaneTo3CX.exe"},
                {"lblParam(19)",
                 "CorvaneTo3CX calls this program to dial out via 3CX:\r\n"
                 "HKLM\\Software\\3CX\\MyPhone\\CallNotifier"},
                {"txt3CXOutboundCallNotifierPath", "C:\\corvane-e2e\\app\\CallTriggerCmd.exe"},
                {"lblParam(30)", "3CX uses this plugin to call CorvaneTo3CX.exe:\r\n" + ofLater3CX},
                {"txtCommandLineAPIPluginDLLPath", ""},
                {"lblParam(32)", "3CX Command Line API Plugin log level:\r\n" + ofLater3CX},
                {"txtCommandLineAPILogLevel", ""},
                {"lblParam(33)", "Path to 3CX Command Line API Plugin log file:\r\n" + ofLater3CX},
                {"txtCommandLineAPILogPath", ""}}},
        Wiring{"NothingInstalled",
               [] {
                   RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\3CX");
                   RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\FrontRange Solutions");
               },
               {{"Please install either 3CXPhone or, for 3CX 11, the 3CX MyPhone Desktop "
                 "Components before running Corvane to 3CX."}},
               {{"txtGMInstallDir", unknown},
                {"lbl3CXInfo", ""},
                {"txt3CXCRMCallNotifierPath", ""},
                {"txt3CXOutboundCallNotifierPath", ""},
                {"txtCommandLineAPIPluginDLLPath", ""},
                {"txtCommandLineAPILogLevel", ""},
                {"txtCommandLineAPILogPath", ""}}}),
    NameOf);

TEST_F(PathsPageTest, TheRunningGoldMineAndItsIniFilesAreShown) {
    GoldMine();
    ProgramRun run = Start("");

    const HWND window = ShowPaths(run);

    ExpectShown(window, {{"lblParam(13)", "Path to GoldMine executable:"},
                         {"txtGMInstallDir", Utf8(StandinFile(ordinaryGoldMine))},
                         {"txtGoldMineUserIniPath", "C:\\corvane-e2e\\goldmine\\MASTER.INI"},
                         {"txtGoldMineGMIniPath", "C:\\corvane-e2e\\goldmine\\GM.INI"}});
    Close(run, window);
}

TEST_F(PathsPageTest, WithoutALogFolderThePluginsUsualOneIsShown) {
    SetRegistryText(HKEY_LOCAL_MACHINE, crmKey, "CommandLineAPILogPath", "");
    wchar_t roaming[MAX_PATH];
    const std::wstring folder(roaming, GetEnvironmentVariableW(L"APPDATA", roaming, MAX_PATH));
    ProgramRun run = Start("");

    const HWND window = ShowPaths(run);

    ExpectShown(window,
                {{"txtCommandLineAPILogLevel", "ImportantEvents"},
                 {"cmdChangeLogLevel", "Set to log AllEvents"},
                 {"txtCommandLineAPILogPath", Utf8(folder) + "\\3CXCommandLineAPIPlugin\\Logs\\"
                                                             "3CXCommandLineAPIPlugin.log"}});
    Close(run, window);
}

// What stands in the registry as GoldMine's folder, and how it is read.
struct StoredFolder {
    const char* name;
    DWORD type;
    std::string bytes;
    std::string shown;
};

class StoredFolderTest : public PathsPageTest, public testing::WithParamInterface<StoredFolder> {};

TEST_P(StoredFolderTest, IsShownAsAText) {
    const StoredFolder& each = GetParam();
    SetRegistryBytes(HKEY_LOCAL_MACHINE, goldMinesKey, "InstallDir", each.type, each.bytes);
    ProgramRun run = Start("");

    const HWND window = ShowPaths(run);

    ExpectShown(window, {{"txtGMInstallDir", each.shown}});
    Close(run, window);
}

INSTANTIATE_TEST_SUITE_P(
    Values, StoredFolderTest,
    testing::Values(StoredFolder{"Empty", REG_SZ, std::string(2, '\0'), unknown},
                    StoredFolder{"NoBytes", REG_SZ, "", unknown},
                    StoredFolder{"NoTerminator", REG_SZ, std::string("C\0:\0", 4), "C:"},
                    StoredFolder{"Expandable", REG_EXPAND_SZ, std::string("%\0g\0m\0%\0\0\0", 10),
                                 "%gm%"},
                    StoredFolder{"Number", REG_DWORD, "1234", "1234"},
                    StoredFolder{"OddBytes", REG_BINARY, "C:\\", "C:\\"}),
    NameOf);

TEST_F(PathsPageTest, KeysThatMayNotBeReadAreTakenAsMissing) {
    const DeniedAccess noCallNotifier(HKEY_LOCAL_MACHINE, crmKey, KEY_READ);
    const DeniedAccess noGoldMine(HKEY_LOCAL_MACHINE, goldMinesKey, KEY_READ);
    ProgramRun run = Start("");

    const HWND window = ShowPaths(run, 1);

    ExpectShown(window, {{"txtGMInstallDir", unknown},
                         {"txt3CXCRMCallNotifierPath", ""},
                         {"txtCommandLineAPILogLevel", "ImportantEvents"}});
    Close(run, window,
          {{"The 3CX CRM Call Notifier is missing or empty. Please re-install Corvane to 3CX."}});
}

// A press of the button where the registry refuses the new level.
struct RefusedLevel {
    const char* name;
    std::string stored;
    std::string shown;
    std::string button;
    std::string readBack;
};

class RefusedLevelTest : public PathsPageTest, public testing::WithParamInterface<RefusedLevel> {};

TEST_P(RefusedLevelTest, ShowsWhatIsReadBack) {
    const RefusedLevel& each = GetParam();
    if (!each.stored.empty())
        SetRegistryText(HKEY_LOCAL_MACHINE, crmKey, "CommandLineAPILogLevel", each.stored);
    const std::map<std::string, std::string> before = RegistryValues(HKEY_LOCAL_MACHINE, crmKey);
    const DeniedAccess noValues(HKEY_LOCAL_MACHINE, crmKey, KEY_SET_VALUE);
    ProgramRun run = Start("");
    const HWND window = ShowPaths(run);
    ExpectShown(window, {{"txtCommandLineAPILogLevel", each.shown}});

    PressControl(window, "cmdChangeLogLevel");
    run.Answer("OK");

    EXPECT_TRUE(HasFocus(window, "txtCommandLineAPILogLevel"));
    ExpectShown(window,
                {{"txtCommandLineAPILogLevel", each.readBack}, {"cmdChangeLogLevel", each.button}});
    EXPECT_EQ(RegistryValues(HKEY_LOCAL_MACHINE, crmKey), before);
    Close(run, window, {restart3CX});
}

INSTANTIATE_TEST_SUITE_P(Levels, RefusedLevelTest,
                         testing::Values(RefusedLevel{"Stored", "AllEvents", "AllEvents",
                                                      "Set to log AllEvents", "AllEvents"},
                                         RefusedLevel{"NeverStored", "", "ImportantEvents",
                                                      "Set to log only ImportantEvents", ""}),
                         NameOf);

// The files behind the four open buttons, all there, and what opens files of their kinds.
class OpenButtonsTest : public PathsPageTest {
protected:
    struct Button {
        std::string name;
        std::string path;
        std::string what;     // in the message when Windows cannot open it
        std::string missing;  // the message when it is not there
    };
    const std::vector<Button> buttons = {
        {"cmdOpenUserINI", "C:\\corvane-e2e\\goldmine\\MASTER.INI", "<user>.INI file",
         "<user>.INI file does not exist"},
        {"cmdOpenGMINI", "C:\\corvane-e2e\\goldmine\\GM.INI", "GM.INI file",
         "GM.INI file does not exist"},
        {"cmdOpenLog", "C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log",
         "log file", "Log file does not exist."},
        {"cmdOpenPluginLog", "C:\\corvane-e2e\\plugin log\\3CXCommandLineAPIPlugin.log", "log file",
         "3CX Command Line API Plugin log file does not exist."}};

    void SetUp() override {
        PathsPageTest::SetUp();
        GoldMine();
        SetRegistryText(HKEY_LOCAL_MACHINE, crmKey, "CommandLineAPILogPath",
                        "C:\\corvane-e2e\\plugin log");
        EmptyFolder(L"C:\\corvane-e2e\\plugin log\\");
        WriteFileText(Wide(buttons.back().path), "");
    }
    void TearDown() override {
        RemoveFolder(L"C:\\corvane-e2e\\plugin log\\");
        PathsPageTest::TearDown();
    }

    // Files of these kinds are opened with a program that writes down how it was started.
    static void Associate() {
        SetRegistryText(HKEY_CLASSES_ROOT, L".ini", "", "end-to-end tests");
        SetRegistryText(HKEY_CLASSES_ROOT, L".log", "", "end-to-end tests");
        SetRegistryText(HKEY_CLASSES_ROOT, L"end-to-end tests\\shell\\open\\command", "",
                        "\"" + Utf8(appFolder) + "CallTriggerCmd.exe\" \"%1\"");
    }
    // Presses each button, after its preparation, and expects its box.
    void ExpectBoxes(const std::function<void(const Button&)>& prepare,
                     const std::function<std::string(const Button&)>& text) {
        ProgramRun run = Start("");
        const HWND window = ShowPaths(run);
        Boxes expected;
        for (const Button& button : buttons) {
            prepare(button);
            PressControl(window, button.name);
            run.Answer("OK");
            expected.push_back(Box{text(button)});
        }
        Close(run, window, expected);
    }

private:
    const ClearedKey ini_{HKEY_CLASSES_ROOT, L".ini"};
    const ClearedKey log_{HKEY_CLASSES_ROOT, L".log"};
    const ClearedKey class_{HKEY_CLASSES_ROOT, L"end-to-end tests"};
};

TEST_F(OpenButtonsTest, OpenTheirFilesWithTheAssociatedProgram) {
    Associate();
    ProgramRun run = Start("");
    const HWND window = ShowPaths(run);

    Lines expected;
    for (const Button& button : buttons) {
        Click(window, button.name);
        expected.push_back("\"C:\\corvane-e2e\\app\\CallTriggerCmd.exe\" \"" + button.path + "\"");
        EXPECT_TRUE(WaitUntil([&] { return Dialled().size() == expected.size(); }));
    }

    EXPECT_EQ(Dialled(), expected);
    Close(run, window);
}

TEST_F(OpenButtonsTest, TellThatWindowsHasNoProgramForTheirFiles) {
    ExpectBoxes([](const Button&) {},
                [](const Button& button) {
                    return "Error 31 opening " + button.what + ":\r\n" + button.path;
                });
}

TEST_F(OpenButtonsTest, TellThatTheirFilesHaveGone) {
    Associate();
    ExpectBoxes(
        [](const Button& button) {
            EXPECT_TRUE(DeleteFileW(Wide(button.path).c_str())) << button.path;
        },
        [](const Button& button) { return button.missing; });
    EXPECT_EQ(Dialled(), Lines{});
}

}  // namespace
}  // namespace end_to_end
