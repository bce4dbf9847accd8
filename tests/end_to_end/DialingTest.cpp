#include "EndToEndTest.h"
#include "Files.h"

namespace end_to_end {
namespace {

struct Case {
    const char* name;
    std::map<std::string, std::string> options;
    std::string phone;
    std::string dialled;
};

}  // namespace

class DialingTest : public EndToEndTest, public testing::WithParamInterface<Case> {};

TEST_P(DialingTest, AsksTheCallTriggerForTheDigits) {
    const Case& each = GetParam();
    GoldMine();
    SetAll(each.options);

    const Outcome run = Run(each.phone);

    Check(run, {.log = RunLog(each.phone, "",
                              {versionDetected, "Dialed " + each.dialled + " using 3CX.",
                               "Call processing completed in <seconds> seconds."}),
                .commands = startUpCommands});
    EXPECT_TRUE(WaitUntil([] { return !Dialled().empty(); }));
    EXPECT_EQ(Dialled(),
              Lines{"\"C:\\corvane-e2e\\app\\CallTriggerCmd.exe\" -cmd makecall:" + each.dialled});
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, DialingTest,
    testing::Values(
        Case{"Formatted", {{"chkTrimOutboundPrefix", "0"}}, "(555) 123-4567", "5551234567"},
        Case{"CountryCode", {{"chkTrimOutboundPrefix", "0"}}, "+1 555.123.4567", "15551234567"},
        Case{"Trimmed", {}, "915551234567", "5551234567"},
        Case{"TrimmedToAnotherLength", {{"txtOutboundMaxLength", "4"}}, "5551234567", "4567"},
        Case{"ShorterThanTheLength", {}, "5551234", "5551234"},
        Case{"DialCode", {}, "*67 555 1234", "*675551234"},
        Case{"Pound", {{"chkTrimOutboundPrefix", "0"}}, "#31#5551234", "#31#5551234"},
        Case{"TrimmingCountsEveryDialCharacter", {}, "#31#5551234", "31#5551234"},
        Case{"OneDigit", {}, "0", "0"},
        Case{"LettersAreDropped", {}, "call 555-1234 now", "5551234"},
        Case{"ShellCharactersAreDropped", {}, "555&1234|calc>x%PATH%\"", "5551234"},
        Case{"ASwitchAlone", {}, "/N:5", "5"}),
    NameOf);

class DialingFailureTest : public EndToEndTest {};

TEST_F(DialingFailureTest, ANumberWithoutDigitsIsTold) {
    GoldMine();

    const Outcome run = Run("CALLME");

    Check(run, {.log = RunLog("CALLME", "",
                              {versionDetected,
                               "Number to dial \"CALLME\" contains no digits. Call processing "
                               "terminated."}),
                .commands = startUpCommands,
                .boxes = {{"Number to dial \"CALLME\" contains no digits. For USA Format numbers, "
                           "GoldMine requires at least 7 digits for outbound dialing.\r\n"}}});
    EXPECT_EQ(Dialled(), Lines{});
}

TEST_F(DialingFailureTest, ACallTriggerThatCannotBeStartedIsTold) {
    GoldMine();
    SetRegistryText(HKEY_LOCAL_MACHINE, phoneKey, "Path", "C:\\corvane-e2e\\missing\\");

    const Outcome run = Run("5551234");

    const std::string command =
        "\"C:\\corvane-e2e\\missing\\CallTriggerCmd.exe\" -cmd makecall:5551234";
    Check(run,
          {.log = RunLog("5551234", "",
                         {versionDetected, "Call to number 5551234 failed. Command:  " + command}),
           .commands = startUpCommands,
           .boxes = {{"The 3CX Command Line API Plugin (C:\\corvane-e2e\\missing\\"
                      "CommandLineAPIPlugin.dll) could not be found. Please re-install "
                      "Corvane to 3CX."},
                     {"The 3CXPhone Outbound Call Notifier program (C:\\corvane-e2e\\missing\\"
                      "CallTriggerCmd.exe) could not be found. Please re-install 3CXPhone "
                      "for Windows."},
                     {"Call to number 5551234 failed.\r\nCommand: " + command}}});
}

TEST_F(DialingFailureTest, TheCallTriggersEndIsNotWaitedFor) {
    GoldMine();
    const std::wstring delay = std::wstring(appFolder) + L"CallTriggerCmd.delay";
    WriteFileText(delay, "3000");
    const ULONGLONG begin = GetTickCount64();

    const Outcome run = Run("5551234");

    const ULONGLONG taken = GetTickCount64() - begin;
    EXPECT_TRUE(WaitUntil([] { return !Dialled().empty(); }));
    DeleteFileW(delay.c_str());
    // Its file can be written again once it has ended.
    const std::wstring trigger = std::wstring(appFolder) + L"CallTriggerCmd.exe";
    EXPECT_TRUE(WaitUntil([&] { return HoldFileAlone(trigger).valid(); }));
    EXPECT_LT(taken, 3000u);
    EXPECT_EQ(run.boxes, Boxes{});
}

}  // namespace end_to_end
