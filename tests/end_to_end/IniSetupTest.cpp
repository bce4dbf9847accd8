#include "EndToEndTest.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"
#include "support/windows/KernelHandle.h"

namespace end_to_end {
namespace {

const std::string endedCall = "/N:E /I:7";
const std::wstring userIni = std::wstring(dataFolder) + L"MASTER.INI";
const std::string dial = "&Dial,,C:\\corvane-e2e\\app\\CorvaneTo3CX.exe %s";
const Box askModem{
    "Okay to define a dummy modem in your GoldMine <user>.INI file? This is required for outbound "
    "dialing via 3CX.",
    "Yes No"};
const Box askDial{
    "Okay to add a DDEDial instruction to your GoldMine <user>.INI file? This is required for "
    "outbound dialing via 3CX.",
    "Yes No"};
const Box askTapi{
    "Okay to set GoldMine to \"Dial numbers as entered\" instead of formatting using TAPI? This "
    "is required for outbound dialing via 3CX.",
    "Yes No"};
const Box askRestart{"Please close and restart GoldMine to load the updated <user>.INI file."};

Box AskToChangeDial(const std::string& current) {
    return {"Your GoldMine <user>.INI file already has this DDEDial instruction:\r\n\r\n" +
                current +
                "\r\n\r\nOkay to change that to point to Corvane to 3CX? The new instruction will "
                "be:\r\n\r\n" +
                dial,
            "Yes No"};
}

struct IniSetupCase {
    const char* name;
    std::string modem;  // the lines of the section
    std::vector<std::string> answers;
    Boxes boxes;
    std::string modemAfterwards;  // DeviceID, DDEDial and TAPITranslation, with bars between
};

// A text of several lines as it stands in a status line.
std::string OnOneLine(std::string text) {
    for (auto at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n"))
        text.replace(at, 2, " ");
    return text;
}

// The line about the question that was refused, the last one before the box that ends the start.
std::string Declined(const Boxes& boxes) {
    return "Declined: " + OnOneLine(boxes.at(boxes.size() - 2).text);
}

std::string ModemValue(const wchar_t* key) {
    wchar_t text[512];
    const DWORD length = GetPrivateProfileStringW(L"Modem", key, L"", text, 512, userIni.c_str());
    return Utf8({text, length});
}

const Boxes allQuestions = {askModem, askDial, askTapi, askRestart};
const std::vector<std::string> allAgreed = {"Yes", "Yes", "Yes", "OK"};
const std::string allSet = "DeviceID=0\r\nDDEDial=" + dial + "\r\nTAPITranslation=0\r\n";
const std::string rightDial = "DDEDial=" + dial + "\r\n";
const Lines processed = {versionDetected, "History creation:  requested at _connection_ of call.",
                         "History creation:  call end event ignored.",
                         "History creation:  processing completed.",
                         "Call processing completed in <seconds> seconds."};

class IniSetupTest : public EndToEndTest {};

class ModemSectionTest : public IniSetupTest, public testing::WithParamInterface<IniSetupCase> {};

TEST_P(ModemSectionTest, IsCompletedAsTheUserAgrees) {
    const IniSetupCase& each = GetParam();
    GoldMine();
    WriteFileText(userIni, "[GoldMine]\r\nA=1\r\n[Modem]\r\n" + each.modem);
    const bool refused = !each.boxes.empty() && each.boxes.back() == loadingFailed;

    const Outcome run = Run(endedCall, each.answers);

    Check(run, {.log = RunLog(endedCall, "7",
                              refused ? Lines{versionDetected, Declined(each.boxes)} : processed),
                .commands = startUpCommands,
                .boxes = each.boxes});
    EXPECT_EQ(ModemValue(L"DeviceID") + "|" + ModemValue(L"DDEDial") + "|" +
                  ModemValue(L"TAPITranslation"),
              each.modemAfterwards);

    EXPECT_EQ(OwnValue("PreviousStatus"), "18");

    // What was set is not asked again.
    if (!refused && !each.boxes.empty()) {
        EXPECT_EQ(Run(endedCall).boxes, Boxes{});
    }
}

INSTANTIATE_TEST_SUITE_P(
    Sections, ModemSectionTest,
    testing::Values(
        IniSetupCase{"EmptyAndAllAgreed", "", allAgreed, allQuestions, "0|" + dial + "|0"},
        IniSetupCase{"KeysWithoutValues", "DeviceID=\r\nDDEDial=\r\nTAPITranslation=\r\n",
                     allAgreed, allQuestions, "0|" + dial + "|0"},
        IniSetupCase{"AllRightIsLeftAlone", allSet, {}, {}, "0|" + dial + "|0"},
        IniSetupCase{"LetterCaseOfTheKeysDoesNotMatter",
                     "deviceid=5\r\nDDEDIAL=" + dial + "\r\ntapitranslation=2\r\n",
                     {},
                     {},
                     "5|" + dial + "|2"},
        IniSetupCase{"LongValuesAreAccepted",
                     "DeviceID=" + std::string(300, '5') + "\r\n" + rightDial +
                         "TAPITranslation=" + std::string(300, '1') + "\r\n",
                     {},
                     {},
                     std::string(300, '5') + "|" + dial + "|" + std::string(300, '1')},
        IniSetupCase{"ALongInstructionIsShownUpTo254Characters",
                     "DeviceID=0\r\nDDEDial=" + std::string(253, 'x') + "yz" +
                         std::string(45, 'z') + "\r\nTAPITranslation=0\r\n",
                     {"Yes", "OK"},
                     {AskToChangeDial(std::string(253, 'x') + "y"), askRestart},
                     "0|" + dial + "|0"},
        IniSetupCase{"AnInstructionWithMoreBehindItIsAnother",
                     "DeviceID=0\r\nDDEDial=" + dial + " %s\r\nTAPITranslation=0\r\n",
                     {"No", "OK"},
                     {AskToChangeDial(dial + " %s"), loadingFailed},
                     "0|" + dial + " %s|0"},
        IniSetupCase{"RefusedTelephonyKeepsWhatWasWritten",
                     "TAPITranslation=1\r\n",
                     {"Yes", "Yes", "No", "OK"},
                     {askModem, askDial, askTapi, loadingFailed},
                     "0|" + dial + "|1"},
        IniSetupCase{"NoModem",
                     "DeviceID=-1\r\n" + rightDial + "TAPITranslation=0\r\n",
                     {"Yes", "OK"},
                     {askModem, askRestart},
                     "0|" + dial + "|0"},
        IniSetupCase{"AnotherModemIsAccepted",
                     "DeviceID=5\r\n" + rightDial + "TAPITranslation=2\r\n",
                     {},
                     {},
                     "5|" + dial + "|2"},
        IniSetupCase{"RefusedModemStopsAll",
                     "TAPITranslation=1\r\n",
                     {"No", "OK"},
                     {askModem, loadingFailed},
                     "||1"},
        IniSetupCase{
            "AnotherInstruction",
            "DeviceID=0\r\nDDEDial=&Dial,,C:\\other\\dialer.exe %s\r\nTAPITranslation=0\r\n",
            {"Yes", "OK"},
            {AskToChangeDial("&Dial,,C:\\other\\dialer.exe %s"), askRestart},
            "0|" + dial + "|0"},
        IniSetupCase{
            "AnInstructionInOtherLetterCaseIsAnother",
            "DeviceID=0\r\nDDEDial=&Dial,,c:\\corvane-e2e\\app\\corvaneto3cx.exe %s\r\n"
            "TAPITranslation=0\r\n",
            {"No", "OK"},
            {AskToChangeDial("&Dial,,c:\\corvane-e2e\\app\\corvaneto3cx.exe %s"), loadingFailed},
            "0|&Dial,,c:\\corvane-e2e\\app\\corvaneto3cx.exe %s|0"},
        IniSetupCase{"RefusedInstructionKeepsTheModemWritten",
                     "TAPITranslation=1\r\n",
                     {"Yes", "No", "OK"},
                     {askModem, askDial, loadingFailed},
                     "0||1"},
        IniSetupCase{"Telephony",
                     "DeviceID=0\r\n" + rightDial + "TAPITranslation=1\r\n",
                     {"Yes", "OK"},
                     {askTapi, askRestart},
                     "0|" + dial + "|0"},
        IniSetupCase{"RefusedTelephony",
                     "DeviceID=0\r\n" + rightDial,
                     {"No", "OK"},
                     {askTapi, loadingFailed},
                     "0|" + dial + "|"}),
    NameOf);

TEST_F(IniSetupTest, WithoutAFolderTheRunEnds) {
    GoldMine().SetFaults("Macro:&ProgramDataDir status 0\nMacro:&SysDir status 0\n");

    Check(Run(endedCall),
          {.log = RunLog(endedCall, "7",
                         {versionDetected, "Could not retrieve ProgramDataDir or SysDir"}),
           .commands = {gmapi::Macro("&amp;Version"), gmapi::Macro("&amp;ProgramDataDir"),
                        gmapi::Macro("&amp;SysDir")},
           .boxes = {{"Could not retrieve ProgramDataDir or SysDir", "OK", "exclamation"},
                     loadingFailed}});
}

TEST_F(IniSetupTest, TheSystemFolderServesWithoutADataFolder) {
    GoldMine().SetFaults("Macro:&ProgramDataDir status 0\n");

    Check(Run(endedCall),
          {.log = RunLog(endedCall, "7", processed),
           .commands = {gmapi::Macro("&amp;Version"), gmapi::Macro("&amp;ProgramDataDir"),
                        gmapi::Macro("&amp;SysDir"), gmapi::Macro("&amp;UserName")}});
}

TEST_F(IniSetupTest, WithoutAUserTheRunEnds) {
    GoldMine().SetFaults("Macro:&UserName status 0\n");

    Check(Run(endedCall),
          {.log = RunLog(endedCall, "7", {versionDetected, "Could not retrieve UserName"}),
           .commands = startUpCommands,
           .boxes = {{"Could not retrieve UserName", "OK", "exclamation"}, loadingFailed}});
}

TEST_F(IniSetupTest, WithoutTheUsersFileTheRunEnds) {
    GoldMine();
    DeleteFileW(userIni.c_str());

    Check(Run(endedCall), {.log = RunLog(endedCall, "7",
                                         {versionDetected,
                                          "Could not find GoldMine <user>.INI file "
                                          "C:\\corvane-e2e\\goldmine\\MASTER.INI"}),
                           .commands = startUpCommands,
                           .boxes = {{"Could not find GoldMine <user>.INI file\r\n"
                                      "C:\\corvane-e2e\\goldmine\\MASTER.INI",
                                      "OK", "exclamation"},
                                     loadingFailed}});
}

TEST_F(IniSetupTest, WithoutGoldMinesFileTheRunGoesOn) {
    GoldMine();
    DeleteFileW((std::wstring(dataFolder) + L"GM.INI").c_str());

    Check(Run(endedCall), {.log = RunLog(endedCall, "7", processed),
                           .commands = startUpCommands,
                           .boxes = {{"Could not find GoldMine GM.INI file\r\n"
                                      "C:\\corvane-e2e\\goldmine\\GM.INI",
                                      "OK", "exclamation"}}});
}

TEST_F(IniSetupTest, AFileWithoutTheSectionGetsItAndKeepsTheRest) {
    GoldMine();
    const std::string others = "; the user's own\r\n[GoldMine]\r\nDeviceID=7\r\n";
    WriteFileText(userIni, others);

    Check(Run(endedCall, allAgreed), {.log = RunLog(endedCall, "7", processed),
                                      .commands = startUpCommands,
                                      .boxes = allQuestions});

    EXPECT_EQ(ReadFileText(userIni), others + "[Modem]\r\n" + allSet);
    EXPECT_EQ(ReadFileText(userIni + L".bak-CorvaneTo3CX"), others);
}

TEST_F(IniSetupTest, ARefusedQuestionEndsASettingsRunBeforeItsWindow) {
    GoldMine();
    WriteFileText(userIni, "[Modem]\r\n");

    const Outcome run = Run("", {"No", "OK"});

    Check(run, {.log = RunLog("", "", {versionDetected, "Declined: " + askModem.text}),
                .commands = startUpCommands,
                .boxes = {askModem, loadingFailed},
                .window = false});
    EXPECT_EQ(ReadFileText(userIni), "[Modem]\r\n");
}

TEST_F(IniSetupTest, AFileThatTakesNoWritingCountsAsWrittenAndIsAskedForAgain) {
    GoldMine();
    WriteFileText(userIni, "[Modem]\r\n");
    const KernelHandle held = HoldFileAgainstWriting(userIni);

    for (int run = 0; run < 2; ++run) {
        Check(Run(endedCall, allAgreed), {.log = RunLog(endedCall, "7", processed),
                                          .commands = startUpCommands,
                                          .boxes = allQuestions});
    }
    EXPECT_EQ(ReadFileText(userIni), "[Modem]\r\n");
}

TEST_F(IniSetupTest, AFolderInPlaceOfTheUsersFileIsNoFile) {
    GoldMine();
    DeleteFileW(userIni.c_str());
    EmptyFolder(userIni + L"\\");

    const Boxes boxes = Run(endedCall).boxes;
    RemoveFolder(userIni + L"\\");

    EXPECT_EQ(boxes, (Boxes{{"Could not find GoldMine <user>.INI file\r\n"
                             "C:\\corvane-e2e\\goldmine\\MASTER.INI",
                             "OK", "exclamation"},
                            loadingFailed}));
}

struct Name {
    const char* name;
    std::string folder;  // below the tests' own
    std::string user;
    bool inCodePage = true;
};

class IniNamesTest : public IniSetupTest, public testing::WithParamInterface<Name> {
protected:
    void SetUp() override {
        IniSetupTest::SetUp();
        EmptyFolder(folder());
        WriteFileText(folder() + L"GM.INI", "[GoldMine]\r\nHTML_Cal_Notes=0\r\n");
        WriteFileText(file(), "[Modem]\r\n");
        CloseGoldMine();
        GoldMine("\"/Data:C:\\corvane-e2e\\" + GetParam().folder + "\" \"/User:" + GetParam().user +
                 "\"");
    }
    void TearDown() override {
        CloseGoldMine();
        RemoveFolder(folder());
    }

    static std::wstring folder() { return Wide("C:\\corvane-e2e\\" + GetParam().folder + "\\"); }
    static std::wstring file() { return folder() + Wide(GetParam().user) + L".INI"; }
};

TEST_P(IniNamesTest, AreReadAndWrittenInTheSystemsCodePage) {
    EXPECT_EQ(Run(endedCall, allAgreed).boxes, allQuestions);

    const Boxes second = Run(endedCall, allAgreed).boxes;
    if (GetParam().inCodePage) {
        EXPECT_EQ(ReadFileText(file()), "[Modem]\r\n" + allSet);
        EXPECT_EQ(second, Boxes{});
    } else {
        // INI files are read and written in the system's code page, which has no such name.
        EXPECT_EQ(ReadFileText(file()), "[Modem]\r\n");
        EXPECT_EQ(second, allQuestions);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Names, IniNamesTest,
    testing::Values(Name{"BlanksAccentsAndSigns", "Gr\u00f6\u00dfe [a;b] \u00e9t\u00e9",
                         "J\u00fcrgen x=y;[z]"},
                    Name{"UserInAnotherScript", "GoldMine data", "\u0410\u043d\u043d\u0430", false},
                    Name{"FolderInAnotherScript", "\u30c7\u30fc\u30bf", "ANN", false}),
    NameOf);

}  // namespace
}  // namespace end_to_end
