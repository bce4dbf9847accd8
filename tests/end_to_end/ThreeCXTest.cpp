#include <functional>

#include "EndToEndTest.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"

namespace end_to_end {
namespace {

const std::string call = "/N:E /I:7";

void SetMachine(const wchar_t* key, const std::string& name, const std::string& text) {
    SetRegistryText(HKEY_LOCAL_MACHINE, key, name, text);
}

Box PointsTo(const std::string& value) {
    return {"The 3CX CRM Call Notifier is pointing to:\r\n  \"" + value +
            "\"\r\ninstead of to the current instance of Corvane to 3CX:\r\n  "
            "\"C:\\corvane-e2e\\app\\CorvaneTo3CX.exe\"\r\nPlease re-install Corvane to 3CX."};
}

struct Case {
    const char* name;
    std::function<void()> wire;
    Boxes boxes;
};

}  // namespace

class ThreeCXTest : public EndToEndTest, public testing::WithParamInterface<Case> {};

TEST_P(ThreeCXTest, FindingsAreToldAndTheRunGoesOn) {
    const Case& each = GetParam();
    CloseGoldMine();
    each.wire();

    Check(Run(call), {.log = RunLog(call, "7",
                                    {"GoldMine not running, so version unknown.",
                                     "Parameters found but GoldMine not running. Exiting."}),
                      .boxes = each.boxes});
}

INSTANTIATE_TEST_SUITE_P(
    Wirings, ThreeCXTest,
    testing::Values(
        Case{"NothingInstalled",
             [] { RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\3CX"); },
             {{"Please install either 3CXPhone or, for 3CX 11, the 3CX MyPhone Desktop Components "
               "before running Corvane to 3CX."}}},
        Case{"NoCallNotifier",
             [] { RegDeleteTreeW(HKEY_LOCAL_MACHINE, crmKey); },
             {{"The 3CX CRM Call Notifier is missing or empty. Please re-install Corvane to "
               "3CX."}}},
        Case{"EmptyCallNotifier",
             [] { SetMachine(crmKey, "CallNotifierPath", ""); },
             {{"The 3CX CRM Call Notifier is missing or empty. Please re-install Corvane to "
               "3CX."}}},
        Case{"AnotherCopy",
             [] { SetMachine(crmKey, "CallNotifierPath", "D:\\old\\CorvaneTo3CX.exe"); },
             {PointsTo("D:\\old\\CorvaneTo3CX.exe")}},
        Case{"AnotherLetterCaseIsAnotherCopy",
             [] {
                 SetMachine(crmKey, "CallNotifierPath", "C:\\CORVANE-E2E\\APP\\CorvaneTo3CX.exe");
             },
             {PointsTo("C:\\CORVANE-E2E\\APP\\CorvaneTo3CX.exe")}},
        Case{"TheEchoScriptIsFine",
             [] { SetMachine(crmKey, "CallNotifierPath", "C:\\corvane-e2e\\app\\EchoParams.cmd"); },
             {}},
        Case{"NoPlugin",
             [] { DeleteFileW((std::wstring(appFolder) + L"CommandLineAPIPlugin.dll").c_str()); },
             {{"The 3CX Command Line API Plugin (C:\\corvane-e2e\\app\\CommandLineAPIPlugin.dll) "
               "could not be found. Please re-install Corvane to 3CX."}}},
        Case{"PathWithoutBackslash",
             [] { SetMachine(phoneKey, "Path", "C:\\corvane-e2e\\app"); },
             {{"The 3CX Command Line API Plugin (C:\\corvane-e2e\\appCommandLineAPIPlugin.dll) "
               "could not be found. Please re-install Corvane to 3CX."},
              {"The 3CXPhone Outbound Call Notifier program "
               "(C:\\corvane-e2e\\appCallTriggerCmd.exe) could not be found. Please re-install "
               "3CXPhone for Windows."}}},
        Case{"MyPhoneWins",
             [] { SetMachine(myPhoneKey, "CallNotifier", "C:\\myphone\\notifier.exe"); },
             {{"The 3CX MyPhone Outbound Call Notifier program (C:\\myphone\\notifier.exe) could "
               "not be found. Please re-install the 3CX MyPhone Desktop Components."}}},
        Case{"MyPhoneInPlace",
             [] {
                 SetMachine(myPhoneKey, "CallNotifier", "C:\\corvane-e2e\\app\\CallTriggerCmd.exe");
                 SetMachine(phoneKey, "Path", "C:\\nowhere\\");
             },
             {}}),
    NameOf);

class ProgramPlaceTest : public EndToEndTest {};

TEST_F(ProgramPlaceTest, AFolderWithBlanksIsTold) {
    CloseGoldMine();
    const std::wstring folder = L"C:\\corvane-e2e\\with blanks\\";
    MakeFolder(folder);
    CopyFileTo(BuiltFile("CorvaneTo3CX.exe"), folder + L"CorvaneTo3CX.exe");
    SetMachine(crmKey, "CallNotifierPath", "C:\\corvane-e2e\\with blanks\\CorvaneTo3CX.exe");

    ProgramRun run(folder + L"CorvaneTo3CX.exe", call);
    run.Finish();
    RemoveFolder(folder);

    EXPECT_EQ(run.boxes(),
              (Boxes{{"The path to this program:\r\n\r\nC:\\corvane-e2e\\with blanks\r\n\r\n"
                      "contains one or more spaces, which GoldMine does not support. Please move "
                      "'CorvaneTo3CX.exe' to a folder without spaces in the path."}}));
    EXPECT_TRUE(LogText().find("started with param(s): /N:E /I:7.\r\n") != std::string::npos)
        << LogText();
}

}  // namespace end_to_end
