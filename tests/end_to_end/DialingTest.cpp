#include <functional>

#include "EndToEndTest.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"
#include "support/windows/Process.h"

namespace end_to_end {
namespace {

struct DialledNumber {
    const char* name;
    std::map<std::string, std::string> options;
    std::string phone;
    std::string dialled;
};

const std::map<std::string, std::string> untrimmed = {{"chkTrimOutboundPrefix", "0"}};

// So many characters, over and over those of the pattern.
std::string Repeated(const std::string& pattern, size_t length) {
    std::string text;
    while (text.size() < length)
        text += pattern[text.size() % pattern.size()];
    return text;
}

Lines DialledLog(const std::string& phone, const std::string& dialled) {
    return RunLog(phone, "",
                  {versionDetected, "Dialed " + dialled + " using 3CX.",
                   "Call processing completed in <seconds> seconds."});
}

class DialingTest : public EndToEndTest, public testing::WithParamInterface<DialledNumber> {};

TEST_P(DialingTest, AsksTheCallTriggerForTheDigits) {
    const DialledNumber& each = GetParam();
    GoldMine();
    SetAll(each.options);

    const Outcome run = Run(each.phone);

    Check(run, {.log = DialledLog(each.phone, each.dialled), .commands = startUpCommands});
    EXPECT_TRUE(WaitUntil([] { return !Dialled().empty(); }));
    EXPECT_EQ(Dialled(),
              Lines{"\"C:\\corvane-e2e\\app\\CallTriggerCmd.exe\" -cmd makecall:" + each.dialled});
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, DialingTest,
    testing::Values(
        DialledNumber{"Formatted", untrimmed, "(555) 123-4567", "5551234567"},
        DialledNumber{"CountryCode", untrimmed, "+1 555.123.4567", "15551234567"},
        DialledNumber{"Trimmed", {}, "915551234567", "5551234567"},
        DialledNumber{
            "TrimmedToAnotherLength", {{"txtOutboundMaxLength", "4"}}, "5551234567", "4567"},
        DialledNumber{"ShorterThanTheLength", {}, "5551234", "5551234"},
        DialledNumber{"DialCode", {}, "*67 555 1234", "*675551234"},
        DialledNumber{"Pound", untrimmed, "#31#5551234", "#31#5551234"},
        DialledNumber{"TrimmingCountsEveryDialCharacter", {}, "#31#5551234", "31#5551234"},
        DialledNumber{"OneDigit", {}, "0", "0"},
        DialledNumber{"LettersAreDropped", {}, "call 555-1234 now", "5551234"},
        DialledNumber{"ShellCharactersAreDropped", {}, "555&1234|calc>x%PATH%\"", "5551234"},
        DialledNumber{"ShellCharactersAloneAreDropped", untrimmed,
                      "5^5;5'5`5$(5){5}[5]<5!5~5@5=5\\5", "55555555555555"},
        DialledNumber{"PercentSignsAreDropped", untrimmed, "%COMSPEC%%1%n%s5%%5%20x", "15520"},
        DialledNumber{"TabsAreDropped", untrimmed, "555\t12\t34", "5551234"},
        DialledNumber{"AWholeCommandIsOneNumber", untrimmed, "5551234\" -cmd \"makecall:999",
                      "5551234999"},
        DialledNumber{"RaisedFiguresAreDropped", untrimmed, "5\u00b25\u00b35\u00b9", "555"},
        DialledNumber{"ThreeHundredDigits", untrimmed, Repeated("0123456789", 300),
                      Repeated("0123456789", 300)},
        DialledNumber{"ThreeHundredCharacters", untrimmed, Repeated("(1*)-2 #x3", 300),
                      Repeated("1*2#3", 150)},
        DialledNumber{"TheLastOfThreeHundred", {}, Repeated("0123456789", 300), "0123456789"},
        DialledNumber{"TheLengthMayBeLongerThanTheBoxTakes",
                      {{"txtOutboundMaxLength", "299"}},
                      Repeated("0123456789", 300),
                      Repeated("1234567890", 299)},
        DialledNumber{"StarAlone", {}, "*", "*"}, DialledNumber{"ASwitchAlone", {}, "/N:5", "5"}),
    NameOf);

class DialingRunTest : public EndToEndTest {};

TEST_F(DialingRunTest, ACallTriggerBelowAFolderWithBlanksIsStarted) {
    GoldMine();
    const std::wstring folder = L"C:\\corvane-e2e\\3CX Phone for Windows\\";
    EmptyFolder(folder);
    CopyFileTo(StandinFile("CallTriggerCmd.exe"), folder + L"CallTriggerCmd.exe");
    WriteFileText(folder + L"CommandLineAPIPlugin.dll", "");
    SetRegistryText(HKEY_LOCAL_MACHINE, phoneKey, "Path", Utf8(folder));

    const Outcome run = Run("5551234");

    EXPECT_TRUE(WaitUntil([&] { return !Dialled(folder).empty(); }));
    EXPECT_EQ(Dialled(folder), Lines{"\"C:\\corvane-e2e\\3CX Phone for Windows\\CallTriggerCmd.exe"
                                     "\" -cmd makecall:5551234"});
    Check(run, {.log = DialledLog("5551234", "5551234"), .commands = startUpCommands});
    EXPECT_TRUE(WaitUntil([&] { return HoldFileAlone(folder + L"CallTriggerCmd.exe").valid(); }));
    RemoveFolder(folder);
}

TEST_F(DialingRunTest, TheCallTriggersEndIsNotWaitedFor) {
    GoldMine();
    const std::wstring delay = std::wstring(appFolder) + L"CallTriggerCmd.delay";
    WriteFileText(delay, "600000");  // longer than any wait of these tests

    ProgramRun run = Start("5551234");
    const Outcome outcome = Finish(run);

    Process trigger = Process::ChildOf(run.processId(), L"CallTriggerCmd.exe");
    EXPECT_TRUE(trigger.running());
    EXPECT_TRUE(WaitUntil([] { return !Dialled().empty(); }));
    EXPECT_TRUE(trigger.running());
    trigger.Terminate();
    DeleteFileW(delay.c_str());
    Check(outcome, {.log = DialledLog("5551234", "5551234"), .commands = startUpCommands});
}

TEST_F(DialingRunTest, GoldMineDialsByTheInstructionThatTheProgramWrote) {
    GoldMine();
    WriteFileText(std::wstring(dataFolder) + L"MASTER.INI", "[Modem]\r\n");
    ProgramRun settings = Start("");
    for (const char* answer : {"Yes", "Yes", "Yes", "OK"})
        settings.Answer(answer);
    PostMessageW(settings.WaitForWindow(), WM_CLOSE, 0, 0);
    Finish(settings);

    EXPECT_EQ(RunToEnd(StandinFile(ordinaryGoldMine),
                       L"/Data:" + std::wstring(dataFolder) + L" \"/Dial:(555)123-4567\""),
              0u);

    EXPECT_TRUE(WaitUntil([] { return !Dialled().empty(); }));
    EXPECT_EQ(Dialled(), Lines{"\"C:\\corvane-e2e\\app\\CallTriggerCmd.exe\" "
                               "-cmd makecall:5551234567"});
    EXPECT_TRUE(WaitUntil([] { return HoldFileAlone(Wide(programPath)).valid(); }));
    EXPECT_NE(LogText().find("started with param(s): (555)123-4567.\r\n"), std::string::npos)
        << LogText();
}

class NoDigitsTest : public EndToEndTest, public testing::WithParamInterface<DialledNumber> {};

TEST_P(NoDigitsTest, NothingIsStarted) {
    const DialledNumber& each = GetParam();
    GoldMine();
    SetAll(each.options);

    const Outcome run = Run(each.phone);

    const std::string message = "Number to dial \"" + each.phone + "\" contains no digits.";
    Check(
        run,
        {.log = RunLog(each.phone, "", {versionDetected, message + " Call processing terminated."}),
         .commands = startUpCommands,
         .boxes = {{message + " For USA Format numbers, GoldMine requires at least 7 digits for "
                              "outbound dialing.\r\n"}}});
    EXPECT_EQ(Dialled(), Lines{});
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, NoDigitsTest,
    testing::Values(DialledNumber{"Letters", {}, "CALLME", ""},
                    DialledNumber{"SignsOnly", {}, "+-() .%&\"", ""},
                    DialledNumber{
                        "TrimmedToNothing", {{"txtOutboundMaxLength", "0"}}, "555-1234", ""}),
    NameOf);

TEST_F(DialingRunTest, FiguresOfOtherScriptsAreNoDigits) {
    GoldMine();

    const Outcome run = Run("\u0665\u096b\u0be7");

    // The log's code page lacks them, the box does not.
    Check(run, {.log = RunLog("???", "",
                              {versionDetected,
                               "Number to dial \"???\" contains no digits. Call processing "
                               "terminated."}),
                .commands = startUpCommands,
                .boxes = {{"Number to dial \"\u0665\u096b\u0be7\" contains no digits. For USA "
                           "Format numbers, GoldMine requires at least 7 digits for outbound "
                           "dialing.\r\n"}}});
}

// A place in which no call trigger can be started, and what is said of it when it is looked for.
struct Place {
    const char* name;
    std::string path;
    std::function<void()> prepare;
    Boxes findings;
};

Box CallNotifierNotFound(const std::string& path) {
    return {"The 3CX MyPhone Outbound Call Notifier program (" + path +
            ") could not be found. Please re-install the 3CX MyPhone Desktop Components."};
}

class DialingFailureTest : public EndToEndTest, public testing::WithParamInterface<Place> {};

TEST_P(DialingFailureTest, IsTold) {
    const Place& each = GetParam();
    GoldMine();
    EmptyFolder(L"C:\\corvane-e2e\\3cx\\");
    SetRegistryText(HKEY_LOCAL_MACHINE, myPhoneKey, "CallNotifier", each.path);
    each.prepare();

    const Outcome run = Run("555-1234");

    const std::string command = "\"" + each.path + "\" -cmd makecall:5551234";
    Boxes boxes = each.findings;
    boxes.push_back({"Call to number 5551234 failed.\r\nCommand: " + command});
    Check(run,
          {.log = RunLog("555-1234", "",
                         {versionDetected, "Call to number 5551234 failed. Command:  " + command}),
           .commands = startUpCommands,
           .boxes = boxes});
    RemoveFolder(L"C:\\corvane-e2e\\3cx\\");
}

INSTANTIATE_TEST_SUITE_P(
    Places, DialingFailureTest,
    testing::Values(
        Place{"Nothing",
              "C:\\corvane-e2e\\3cx\\CallTriggerCmd.exe",
              [] {},
              {CallNotifierNotFound("C:\\corvane-e2e\\3cx\\CallTriggerCmd.exe")}},
        Place{"AFolder",
              "C:\\corvane-e2e\\3cx\\CallTriggerCmd.exe",
              [] { EmptyFolder(L"C:\\corvane-e2e\\3cx\\CallTriggerCmd.exe\\"); },
              {CallNotifierNotFound("C:\\corvane-e2e\\3cx\\CallTriggerCmd.exe")}},
        Place{"AFileThatIsNoProgram",
              "C:\\corvane-e2e\\3cx\\CallTriggerCmd.exe",
              [] { WriteFileText(L"C:\\corvane-e2e\\3cx\\CallTriggerCmd.exe", "no program"); },
              {}},
        Place{"AnotherProgramWhereTheBlankCutsThePath",
              "C:\\corvane-e2e\\3cx\\Call Trigger\\CallTriggerCmd.exe",
              [] {
                  CopyFileTo(StandinFile("CallTriggerCmd.exe"), L"C:\\corvane-e2e\\3cx\\Call.exe");
              },
              {CallNotifierNotFound("C:\\corvane-e2e\\3cx\\Call Trigger\\CallTriggerCmd.exe")}},
        Place{"No3CX",
              "",
              [] { RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\3CX"); },
              {{"Please install either 3CXPhone or, for 3CX 11, the 3CX MyPhone Desktop "
                "Components before running Corvane to 3CX."}}}),
    NameOf);

TEST_F(DialingRunTest, AMissingCallTriggerOf3CXPhoneIsTold) {
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

}  // namespace
}  // namespace end_to_end
