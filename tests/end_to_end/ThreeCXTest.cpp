#include <functional>

#include "EndToEndTest.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"

namespace end_to_end {
namespace {

const std::string endOfCall = "/N:E /I:7";

Box PointsTo(const std::string& value) {
    return {"The 3CX CRM Call Notifier is pointing to:\r\n  \"" + value +
            "\"\r\ninstead of to the current instance of Corvane to 3CX:\r\n  "
            "\"C:\\corvane-e2e\\app\\CorvaneTo3CX.exe\"\r\nPlease re-install Corvane to 3CX."};
}

struct ThreeCXCase {
    const char* name;
    std::function<void()> wire;
    Boxes boxes;
};

class ThreeCXTest : public EndToEndTest, public testing::WithParamInterface<ThreeCXCase> {};

TEST_P(ThreeCXTest, FindingsAreToldAndTheRunGoesOn) {
    const ThreeCXCase& each = GetParam();
    CloseGoldMine();
    each.wire();

    Check(Run(endOfCall), {.log = RunLog(endOfCall, "7",
                                         {"GoldMine not running, so version unknown.",
                                          "Parameters found but GoldMine not running. Exiting."}),
                           .boxes = each.boxes});
}

INSTANTIATE_TEST_SUITE_P(
    Wirings, ThreeCXTest,
    testing::Values(
        ThreeCXCase{
            "NothingInstalled",
            [] { RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\3CX"); },
            {{"Please install either 3CXPhone or, for 3CX 11, the 3CX MyPhone Desktop Components "
              "before running Corvane to 3CX."}}},
        ThreeCXCase{"NoCallNotifier",
                    [] { RegDeleteTreeW(HKEY_LOCAL_MACHINE, crmKey); },
                    {{"The 3CX CRM Call Notifier is missing or empty. Please re-install Corvane to "
                      "3CX."}}},
        ThreeCXCase{"EmptyCallNotifier",
                    [] { SetMachine(crmKey, "CallNotifierPath", ""); },
                    {{"The 3CX CRM Call Notifier is missing or empty. Please re-install Corvane to "
                      "3CX."}}},
        ThreeCXCase{"AnotherCopy",
                    [] { SetMachine(crmKey, "CallNotifierPath", "D:\\old\\CorvaneTo3CX.exe"); },
                    {PointsTo("D:\\old\\CorvaneTo3CX.exe")}},
        ThreeCXCase{"AnotherLetterCaseIsAnotherCopy",
                    [] {
                        SetMachine(crmKey, "CallNotifierPath",
                                   "C:\\CORVANE-E2E\\APP\\CorvaneTo3CX.exe");
                    },
                    {PointsTo("C:\\CORVANE-E2E\\APP\\CorvaneTo3CX.exe")}},
        ThreeCXCase{
            "TheEchoScriptIsFine",
            [] { SetMachine(crmKey, "CallNotifierPath", "C:\\corvane-e2e\\app\\EchoParams.cmd"); },
            {}},
        ThreeCXCase{
            "NoPlugin",
            [] { DeleteFileW((std::wstring(appFolder) + L"CommandLineAPIPlugin.dll").c_str()); },
            {{"The 3CX Command Line API Plugin (C:\\corvane-e2e\\app\\CommandLineAPIPlugin.dll) "
              "could not be found. Please re-install Corvane to 3CX."}}},
        ThreeCXCase{
            "PathWithoutBackslash",
            [] { SetMachine(phoneKey, "Path", "C:\\corvane-e2e\\app"); },
            {{"The 3CX Command Line API Plugin (C:\\corvane-e2e\\appCommandLineAPIPlugin.dll) "
              "could not be found. Please re-install Corvane to 3CX."},
             {"The 3CXPhone Outbound Call Notifier program "
              "(C:\\corvane-e2e\\appCallTriggerCmd.exe) could not be found. Please re-install "
              "3CXPhone for Windows."}}},
        ThreeCXCase{
            "MyPhoneWins",
            [] { SetMachine(myPhoneKey, "CallNotifier", "C:\\myphone\\notifier.exe"); },
            {{"The 3CX MyPhone Outbound Call Notifier program (C:\\myphone\\notifier.exe) could "
              "not be found. Please re-install the 3CX MyPhone Desktop Components."}}},
        ThreeCXCase{"MyPhoneInPlace",
                    [] {
                        SetMachine(myPhoneKey, "CallNotifier",
                                   "C:\\corvane-e2e\\app\\CallTriggerCmd.exe");
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

    ProgramRun run(folder + L"CorvaneTo3CX.exe", endOfCall);
    run.Finish();
    RemoveFolder(folder);

    EXPECT_EQ(run.boxes(),
              (Boxes{{"The path to this program:\r\n\r\nC:\\corvane-e2e\\with blanks\r\n\r\n"
                      "contains one or more spaces, which GoldMine does not support. Please move "
                      "'CorvaneTo3CX.exe' to a folder without spaces in the path."}}));
    EXPECT_TRUE(LogText().find("started with param(s): /N:E /I:7.\r\n") != std::string::npos)
        << LogText();
}

}  // namespace
}  // namespace end_to_end
