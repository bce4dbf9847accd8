#include <algorithm>
#include <functional>

#include "CheckTest.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"

namespace end_to_end {
namespace {

const std::string recordingName = "5551234567 (00042).wav";

void WriteUserIni(const std::string& modem) {
    WriteFileText(std::wstring(dataFolder) + L"MASTER.INI",
                  "[GoldMine]\r\n\r\n[Modem]\r\n" + modem);
}

const std::string toOwn =
    "-> As administrator: set CallNotifierPath below HKEY_LOCAL_MACHINE\\SOFTWARE\\3CX\\CRM of the "
    "32-bit view to C:\\corvane-e2e\\app\\CorvaneTo3CX.exe, without quotes.";
const std::string answerYes =
    "-> Start CorvaneTo3CX.exe without parameters while GoldMine runs, and answer Yes; then "
    "restart "
    "GoldMine.";
const std::string seeGoldMine =
    "-> See whether GoldMine waits in a box or is busy; else close and restart it.";
const std::string correctThem =
    "-> Correct them in the program's window and save them; else delete the values in the "
    "registry: "
    "missing ones count as their defaults.";

// One blank between columns, and none at the ends.
std::string WithoutColumns(std::string line) {
    for (auto at = line.find("  "); at != std::string::npos; at = line.find("  "))
        line.erase(at, 1);
    return line.starts_with(' ') ? line.substr(1) : line;
}

// The lines of a check so.
Lines LinesOf(const Checked& checked) {
    Lines lines;
    for (const std::string& line : SplitLines(checked.text, "\n"))
        lines.push_back(WithoutColumns(line));
    return lines;
}

class CheckWiringTest : public CheckTest {
protected:
    void SetUp() override {
        CheckTest::SetUp();
        SetAll({{"chkCreateLink", "1"}, {"txtLinkedItemPath", Utf8(recordingsFolder)}});
        WriteFileText(recordingsFolder + Wide(recordingName), "practice");
    }
    // The log is there, as after the first run.
    static void WriteLog() {
        MakeFolder(logFile().substr(0, logFile().find_last_of(L'\\') + 1));
        WriteFileText(logFile(), "17\t<date>\t[]:\tline\r\n");
    }

    static Lines Healthy() {
        const std::string goldMine = Utf8(StandinFile("gmw.exe"));
        return {"ok  program                 C:\\corvane-e2e\\app\\CorvaneTo3CX.exe",
                "ok  3CX                     3CXPhone for Windows, so 3CX 14 or later",
                "ok  call notifier           C:\\corvane-e2e\\app\\CorvaneTo3CX.exe",
                "ok  call trigger            C:\\corvane-e2e\\app\\CallTriggerCmd.exe",
                "ok  plug-in                 C:\\corvane-e2e\\app\\CommandLineAPIPlugin.dll",
                "ok  plug-in log level       ImportantEvents",
                "ok  GoldMine                " + goldMine,
                "ok  automation class        registered",
                "ok  log-in                  GoldMine answers",
                "ok  version                 GoldMine version 2014.1 detected.",
                "ok  INI files               C:\\corvane-e2e\\goldmine\\MASTER.INI",
                "ok  modem: DeviceID         there is one",
                "ok  modem: DDEDial          &Dial,,C:\\corvane-e2e\\app\\CorvaneTo3CX.exe %s",
                "ok  modem: TAPITranslation  numbers are dialed as entered",
                "ok  notes                   plain text",
                "ok  recordings folder       C:\\corvane-e2e\\recordings\\: 1 file, the newest, " +
                    recordingName + ", less than a minute ago",
                "ok  settings                all convert",
                "ok  master switch           on",
                "ok  log                     " + Utf8(logFile()),
                "ok  waiting boxes           none; the program is not running",
                "",
                "All is well."};
    }
};

TEST_F(CheckWiringTest, AllIsWell) {
    GoldMine();
    WriteLog();

    const Checked checked = Check("wiring");

    // Whether GoldMine and the check have an administrator's rights is Wine's business.
    std::string text = checked.text;
    constexpr std::string_view rights = ", as administrator like CorvaneCheck";
    if (const auto at = text.find(rights); at != std::string::npos)
        text.erase(at, rights.size());
    EXPECT_EQ(SplitLines(text, "\n"), Healthy());
    EXPECT_EQ(checked.exitCode, 0u);
    EXPECT_LT(checked.milliseconds, 10'000u);
}

TEST_F(CheckWiringTest, NothingIsChanged) {
    GoldMine();
    WriteLog();
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, crmKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, ownKey);
    const Lines before = State();
    Check("wiring");
    Check("wiring --json");
    EXPECT_EQ(State(), before);
    EXPECT_FALSE(RegistryKeyExists(HKEY_CURRENT_USER, ownKey));
}

TEST_F(CheckWiringTest, NoGoldMineIsStarted) {
    CloseGoldMine();
    const Checked checked = Check("wiring");
    EXPECT_TRUE(checked.text.find("\nwarning  GoldMine                is not running in this "
                                  "session: calls are not handled\n") != std::string::npos)
        << checked.text;
    EXPECT_TRUE(
        checked.text.find("\n-        log-in                  GoldMine cannot be asked\n") !=
        std::string::npos)
        << checked.text;
    EXPECT_EQ(checked.exitCode, 1u);
    EXPECT_FALSE(FileIsThere(std::wstring(dataFolder) + L"gmw.sqlite-journal"));
    EXPECT_EQ(FindWindowW(nullptr, L"GoldMine"), nullptr);
}

TEST_F(CheckWiringTest, ItEndsInTimeWhenGoldMineHangs) {
    GoldMine().SetFaults("Macro:&Version delay 12000\n");
    GoldMineIsSpoilt();
    WriteLog();

    const Checked checked = Check("wiring");

    EXPECT_LT(checked.milliseconds, 10'000u);
    EXPECT_EQ(checked.exitCode, 2u);
    const Lines lines = LinesOf(checked);
    const Lines hangs = {"BROKEN log-in does not answer", seeGoldMine,
                         "- version the link \"log-in\" does not answer"};
    EXPECT_NE(std::ranges::search(lines, hangs).begin(), lines.end()) << checked.text;
    EXPECT_NE(std::ranges::find(lines, "ok settings all convert"), lines.end()) << checked.text;
}

TEST_F(CheckWiringTest, JsonSaysTheSame) {
    GoldMine();
    const Checked checked = Check("wiring --json");
    EXPECT_TRUE(checked.text.starts_with(
        "{\n  \"result\": \"ok\",\n  \"links\": [\n    {\"link\": \"program\", \"state\": \"ok\", "
        "\"text\": \"C:\\\\corvane-e2e\\\\app\\\\CorvaneTo3CX.exe\", \"fix\": \"\"},\n"))
        << checked.text;
    EXPECT_EQ(checked.exitCode, 0u);
}

TEST_F(CheckWiringTest, AWrongUseIsToldBesideTheResult) {
    const Checked checked = Check("wiring --jsn");
    EXPECT_EQ(checked.text,
              "There is no option --jsn. CorvaneCheck wiring --help says what there is.\n");
    EXPECT_EQ(checked.exitCode, 3u);
    EXPECT_TRUE(Check("wiring --help").text.starts_with("CorvaneCheck wiring [--json]\n"));
}

TEST_F(CheckWiringTest, ABoxThatWaitsIsTold) {
    CloseGoldMine();
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, crmKey);
    ProgramRun run = Start("/N:E /I:7");
    std::string text;
    EXPECT_TRUE(WaitUntil([&] { return FindBox(run.processId()) != nullptr; }));
    const Checked checked = Check("wiring");
    EXPECT_NE(checked.text.find("warning  waiting boxes           process " +
                                std::to_string(run.processId()) +
                                " says: The 3CX CRM Call Notifier is missing or empty. Please "
                                "re-install Corvane to 3CX.\n                                 -> "
                                "Answer the box: that call waits for it.\n"),
              std::string::npos)
        << checked.text;
    EXPECT_NE(FindBox(run.processId()), nullptr) << "the box is gone";
    Finish(run);
}

struct BrokenLink {
    const char* name;
    std::function<void(CheckTest&)> breakIt;
    Lines lines;  // about the link, without the blanks between the columns
    DWORD exitCode;
};

class CheckBrokenLinkTest : public CheckWiringTest, public testing::WithParamInterface<BrokenLink> {
public:
    // For the table.
    void SetFaults(const std::string& faults) {
        GoldMine().SetFaults(faults);
        GoldMineIsSpoilt();
    }
    void StartGoldMine(const std::string& options) { GoldMine(options); }
    void HoldLog() { held_ = HoldFileAgainstWriting(logFile()); }
    void SetOption(const std::string& name, const std::string& text) { Set(name, text); }

private:
    KernelHandle held_;
};

CheckBrokenLinkTest& Desk(CheckTest& test) {
    return static_cast<CheckBrokenLinkTest&>(test);
}

TEST_P(CheckBrokenLinkTest, IsToldWithItsFix) {
    GoldMine();
    WriteLog();
    GetParam().breakIt(*this);
    const Lines before = State();

    const Checked checked = Check("wiring");

    const Lines lines = LinesOf(checked);
    EXPECT_NE(std::ranges::search(lines, GetParam().lines).begin(), lines.end()) << checked.text;
    EXPECT_EQ(checked.exitCode, GetParam().exitCode) << checked.text;
    EXPECT_EQ(State(), before);
    RegisterGoldMine(ordinaryGoldMine);
}

INSTANTIATE_TEST_SUITE_P(
    Links, CheckBrokenLinkTest,
    testing::Values(
        BrokenLink{"No3CX",
                   [](CheckTest&) { RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\3CX"); },
                   {"BROKEN 3CX neither 3CXPhone nor 3CX MyPhone is installed",
                    "-> Install 3CXPhone for Windows or, for 3CX 11, the 3CX MyPhone Desktop "
                    "Components.",
                    "BROKEN call notifier CallNotifierPath is missing: 3CX calls nobody", toOwn,
                    "- call trigger 3CX is not installed", "- plug-in 3CX is not installed",
                    "- plug-in log level 3CX is not installed"},
                   2},
        BrokenLink{
            "AnotherCopy",
            [](CheckTest&) { SetMachine(crmKey, "CallNotifierPath", "D:\\old\\CorvaneTo3CX.exe"); },
            {"BROKEN call notifier 3CX calls another program: D:\\old\\CorvaneTo3CX.exe", toOwn},
            2},
        BrokenLink{"AnotherLetterCase",
                   [](CheckTest&) {
                       SetMachine(crmKey, "CallNotifierPath",
                                  "C:\\CORVANE-E2E\\APP\\CorvaneTo3CX.exe");
                   },
                   {"warning call notifier C:\\CORVANE-E2E\\APP\\CorvaneTo3CX.exe has another "
                    "letter case; the program says so in a box at every call",
                    toOwn},
                   1},
        BrokenLink{"InQuotes",
                   [](CheckTest&) {
                       SetMachine(crmKey, "CallNotifierPath",
                                  "\"" + std::string(programPath) + "\"");
                   },
                   {"warning call notifier \"C:\\corvane-e2e\\app\\CorvaneTo3CX.exe\" has quotes; "
                    "the program says so in a box at every call",
                    toOwn},
                   1},
        BrokenLink{"NoCallTrigger",
                   [](CheckTest&) { SetMachine(phoneKey, "Path", "C:\\nowhere\\"); },
                   {"BROKEN call trigger C:\\nowhere\\CallTriggerCmd.exe is not there: nothing can "
                    "be dialed",
                    "-> Install 3CXPhone for Windows again; the Path in its registry key ends in "
                    "\"\\\".",
                    "BROKEN plug-in C:\\nowhere\\CommandLineAPIPlugin.dll is not there: 3CX calls "
                    "nobody",
                    "-> Put 3CX's Command Line API plug-in into the folder of 3CXPhone for "
                    "Windows."},
                   2},
        BrokenLink{"NoPlugin",
                   [](CheckTest&) {
                       DeleteFileW((std::wstring(appFolder) + L"CommandLineAPIPlugin.dll").c_str());
                   },
                   {"BROKEN plug-in C:\\corvane-e2e\\app\\CommandLineAPIPlugin.dll is not there: "
                    "3CX calls nobody",
                    "-> Put 3CX's Command Line API plug-in into the folder of 3CXPhone for "
                    "Windows."},
                   2},
        BrokenLink{"LogsAllEvents",
                   [](CheckTest&) { SetMachine(crmKey, "CommandLineAPILogLevel", "AllEvents"); },
                   {"warning plug-in log level AllEvents: the plug-in's log grows with every call",
                    "-> Press \"Set to log only ImportantEvents\" on the program's Paths page."},
                   1},
        BrokenLink{"NotRegistered",
                   [](CheckTest&) { UnregisterGoldMine(ordinaryGoldMine); },
                   {"BROKEN automation class is not registered: ActiveX component can't create "
                    "object",
                    "-> As administrator: \"" + Utf8(StandinFile("gmw.exe")) + "\" /RegServer",
                    "- log-in GoldMine cannot be asked"},
                   2},
        BrokenLink{"NotLoggedIn",
                   [](CheckTest& test) { Desk(test).SetFaults("* access-denied\n"); },
                   {"BROKEN log-in nobody is logged in to GoldMine", "-> Log in to GoldMine.",
                    "- version GoldMine cannot be asked"},
                   2},
        BrokenLink{"OldVersion",
                   [](CheckTest& test) { Desk(test).StartGoldMine("/Version:6.6"); },
                   {"BROKEN version GoldMine version 6.6 detected.",
                    "-> Use GoldMine 6.7 or later.", "- INI files GoldMine cannot be asked"},
                   2},
        BrokenLink{
            "NoIniFile",
            [](CheckTest&) { DeleteFileW((std::wstring(dataFolder) + L"MASTER.INI").c_str()); },
            {"BROKEN INI files Could not find GoldMine <user>.INI file "
             "C:\\corvane-e2e\\goldmine\\MASTER.INI",
             "-> Log in to GoldMine once as this user: it makes the file then.",
             "- modem: DeviceID there is no INI file"},
            2},
        BrokenLink{"NoModemEntries",
                   [](CheckTest&) { WriteUserIni(""); },
                   {"BROKEN modem: DeviceID GoldMine knows no modem, so it does not dial",
                    answerYes, "BROKEN modem: DDEDial there is no dialing instruction", answerYes,
                    "BROKEN modem: TAPITranslation numbers are formatted before they are dialed",
                    answerYes},
                   2},
        BrokenLink{"DialsThroughAnother",
                   [](CheckTest&) {
                       WriteUserIni(
                           "DeviceID=0\r\nDDEDial=&Dial,,C:\\other.exe %s\r\n"
                           "TAPITranslation=0\r\n");
                   },
                   {"ok modem: DeviceID there is one",
                    "BROKEN modem: DDEDial &Dial,,C:\\other.exe %s dials through something else",
                    answerYes, "ok modem: TAPITranslation numbers are dialed as entered"},
                   2},
        BrokenLink{"NoGmIni",
                   [](CheckTest&) { DeleteFileW((std::wstring(dataFolder) + L"GM.INI").c_str()); },
                   {"warning notes C:\\corvane-e2e\\goldmine\\GM.INI is not there, so notes are "
                    "written as plain text",
                    "-> See whether GoldMine's folder is complete."},
                   1},
        BrokenLink{"NoRecordingsFolder",
                   [](CheckTest& test) {
                       Desk(test).SetOption("txtLinkedItemPath", "\\\\nowhere\\recordings");
                   },
                   {"BROKEN recordings folder \\\\nowhere\\recordings cannot be reached",
                    "-> See whether it is there for this user; name it as "
                    "\\\\Server\\Share\\Folder."},
                   2},
        BrokenLink{
            "NoRecordings",
            [](CheckTest&) { EmptyFolder(recordingsFolder); },
            {"warning recordings folder C:\\corvane-e2e\\recordings\\ holds no recording yet",
             "-> See whether 3CX records calls there."},
            1},
        BrokenLink{
            "OldRecordings",
            [](CheckTest&) {
                AgeFile(recordingsFolder + Wide(recordingName), 40LL * 86400 + 3600);
            },
            {"warning recordings folder C:\\corvane-e2e\\recordings\\: 1 file, the newest, " +
                 recordingName + ", 40 days ago",
             "-> See whether 3CX still records calls there."},
            1},
        BrokenLink{
            "RecordingWithoutIdentifier",
            [](CheckTest& test) {
                Desk(test).SetOption("chkConfirmLinkCallIdentifier", "1");
                EmptyFolder(recordingsFolder);
                WriteFileText(std::wstring(recordingsFolder) + L"555.wav", "practice");
            },
            {"warning recordings folder C:\\corvane-e2e\\recordings\\: 1 file, the newest, "
             "555.wav, less than a minute ago, bears no call identifier in round brackets",
             "-> Let 3CX name recordings so, or uncheck \"Only add link if file name includes "
             "the 3CX Call Identifier no.\"."},
            1},
        BrokenLink{"SettingsDoNotConvert",
                   [](CheckTest& test) {
                       Desk(test).SetOption("optPhone1Only", "perhaps");
                       Desk(test).SetOption("txtOutboundMaxLength", "99");
                   },
                   {"BROKEN settings txtOutboundMaxLength \"99\" is out of range; optPhone1Only "
                    "\"perhaps\" does not convert",
                    correctThem},
                   2},
        BrokenLink{"SwitchedOff",
                   [](CheckTest& test) { Desk(test).SetOption("chkGlobalEnable", "0"); },
                   {"BROKEN master switch off: no call is handled",
                    "-> Check \"Enable link between GoldMine and 3CX\" in the program's window."},
                   2},
        BrokenLink{
            "LogIsHeld",
            [](CheckTest& test) { Desk(test).HoldLog(); },
            {"BROKEN log C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log "
             "cannot be written: Permission denied",
             "-> As administrator: icacls \"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\" "
             "/grant *S-1-5-32-545:(OI)(CI)M"},
            2}),
    NameOf);

class CheckPlaceTest : public CheckTest {};

TEST_F(CheckPlaceTest, AFolderWithBlanksIsTold) {
    CloseGoldMine();
    const std::wstring folder = L"C:\\corvane-e2e\\with blanks\\";
    MakeFolder(folder);
    CopyFileTo(BuiltFile("CorvaneCheck.exe"), folder + L"CorvaneCheck.exe");
    const std::wstring output = folder + L"checked.txt";
    const auto lines = [&] {
        {
            const Process process(folder + L"CorvaneCheck.exe", L"wiring", output);
            EXPECT_TRUE(process.WaitForEnd());
        }
        return SplitLines(ReadFileText(output).value_or(""), "\r\n");
    };
    EXPECT_EQ(lines().at(0),
              "BROKEN   program                 C:\\corvane-e2e\\with blanks\\CorvaneTo3CX.exe is "
              "not there");
    CopyFileTo(BuiltFile("CorvaneTo3CX.exe"), folder + L"CorvaneTo3CX.exe");
    EXPECT_EQ(lines().at(0),
              "BROKEN   program                 C:\\corvane-e2e\\with blanks\\CorvaneTo3CX.exe: "
              "GoldMine cannot dial through a path with blanks");
    RemoveFolder(folder);
}

}  // namespace
}  // namespace end_to_end
