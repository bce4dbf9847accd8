#include "check/wiring/Wiring.h"

#include <atomic>
#include <future>
#include <mutex>

#include "check/Arguments.h"
#include "CheckFixture.h"
#include "Maskable.h"
#include "util/Text.h"

namespace corvane::test {
namespace {

constexpr const wchar_t* crm = L"HKLM\\SOFTWARE\\3CX\\CRM";
constexpr const wchar_t* toOwn =
    L"-> As administrator: set CallNotifierPath below HKEY_LOCAL_MACHINE\\SOFTWARE\\3CX\\CRM of "
    L"the "
    L"32-bit view to C:\\Corvane\\CorvaneTo3CX.exe, without quotes.";
constexpr const wchar_t* answerYes =
    L"-> Start CorvaneTo3CX.exe without parameters while GoldMine runs, and answer Yes; then "
    L"restart "
    L"GoldMine.";

void LinkRecordings(CheckedMachine& machine) {
    machine.StoreOption(L"chkCreateLink", L"1");
    machine.StoreOption(L"txtLinkedItemPath", L"C:\\Recordings");
    machine.files.folders.insert(L"C:\\Recordings");
    machine.files.newest = {L"555 (00042).wav", machine.clock.Now() - 3.5 / 24, 12};
}

void AllIsWell(CheckedMachine& machine) {
    machine.RunGoldMine();
    machine.StoreOption(L"chkWriteLog", L"1");
    LinkRecordings(machine);
}

struct Printed {
    int exitCode;
    std::wstring text;
};

Printed Wiring(const std::function<void(CheckedMachine&)>& setUp,
               const std::vector<std::wstring>& arguments = {}) {
    FakeOutput output;
    const int exitCode = RunWiring(arguments, output, On(setUp));
    EXPECT_EQ(output.errors, L"");
    for (const auto& [link, finding] : LookAtLinks(On(setUp))) {
        ExpectMaskable(finding.text);
        ExpectMaskable(finding.fix);
    }
    return {exitCode, output.written};
}

TEST(Wiring, AllIsWell) {
    const Printed run = Wiring(&AllIsWell);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.text,
              L"ok  program                 C:\\Corvane\\CorvaneTo3CX.exe\n"
              L"ok  3CX                     3CXPhone for Windows, so 3CX 14 or later\n"
              L"ok  call notifier           C:\\Corvane\\CorvaneTo3CX.exe\n"
              L"ok  call trigger            C:\\3CX\\CallTriggerCmd.exe\n"
              L"ok  plug-in                 C:\\3CX\\CommandLineAPIPlugin.dll\n"
              L"ok  plug-in log level       ImportantEvents\n"
              L"ok  GoldMine                C:\\GoldMine\\gmw.exe\n"
              L"ok  automation class        registered\n"
              L"ok  log-in                  GoldMine answers\n"
              L"ok  version                 GoldMine version 2014.1 detected.\n"
              L"ok  INI files               C:\\GM\\ANN.INI\n"
              L"ok  modem: DeviceID         there is one\n"
              L"ok  modem: DDEDial          &Dial,,C:\\Corvane\\CorvaneTo3CX.exe %s\n"
              L"ok  modem: TAPITranslation  numbers are dialed as entered\n"
              L"ok  notes                   plain text\n"
              L"ok  recordings folder       C:\\Recordings: 12 files, the newest, 555 (00042).wav, "
              L"3 hours "
              L"ago\n"
              L"ok  settings                all convert\n"
              L"ok  master switch           on\n"
              L"ok  log                     C:\\ProgramData\\Halvorn "
              L"Systems\\CorvaneTo3CX\\CorvaneTo3CX.log\n"
              L"ok  waiting boxes           none; the program is not running\n"
              L"\n"
              L"All is well.\n");
}

struct BrokenLink {
    const char* name;
    std::function<void(CheckedMachine&)> breakIt;
    const wchar_t* link;
    const wchar_t* line;  // the state and the finding
    const wchar_t* fix;   // its line
};

class WiringLinkTest : public testing::TestWithParam<BrokenLink> {};

// The lines about a link, without the blanks between the columns.
std::wstring LinesAbout(const std::wstring& text, const std::wstring& link) {
    std::wstring about;
    bool inLink = false;
    for (const std::wstring& line : Split(text, L'\n')) {
        const auto fix = line.find(L"-> ");
        const bool isFix = fix != std::wstring::npos && TrimBlanks(line).starts_with(L"-> ");
        const std::wstring cell = L"  " + link + L"  ";
        if (!isFix)
            inLink = line.find(cell) != std::wstring::npos && line.find(cell) < 10;
        if (!inLink)
            continue;
        if (isFix) {
            about += line.substr(fix) + L"\n";
        } else {
            const auto state = line.substr(0, line.find(L' '));
            const auto rest = line.substr(line.find(cell) + cell.size());
            about += state + L" " + std::wstring(TrimBlanks(rest)) + L"\n";
        }
    }
    return about;
}

TEST_P(WiringLinkTest, IsToldWithItsFix) {
    const BrokenLink& each = GetParam();
    const Printed run = Wiring([&](CheckedMachine& machine) {
        AllIsWell(machine);
        each.breakIt(machine);
    });
    const std::wstring fix = each.fix;
    EXPECT_EQ(LinesAbout(run.text, each.link),
              std::wstring(each.line) + L"\n" + fix + (fix.empty() ? L"" : L"\n"));
    const std::wstring_view line = each.line;
    if (!line.starts_with(L"ok")) {
        EXPECT_EQ(run.exitCode, line.starts_with(L"BROKEN") ? 2 : 1);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Wiring, WiringLinkTest,
    testing::Values(
        BrokenLink{"NoProgram",
                   [](CheckedMachine& m) { m.files.files.erase(m.info.ExecutablePath()); },
                   L"program", L"BROKEN C:\\Corvane\\CorvaneTo3CX.exe is not there",
                   L"-> Put CorvaneCheck.exe into the folder of CorvaneTo3CX.exe."},
        BrokenLink{"BlanksInPath",
                   [](CheckedMachine& m) {
                       m.info.folder = L"C:\\Corvane to 3CX";
                       m.files.files[m.info.ExecutablePath()];
                   },
                   L"program",
                   L"BROKEN C:\\Corvane to 3CX\\CorvaneTo3CX.exe: GoldMine cannot dial through a "
                   L"path with blanks",
                   L"-> Move both programs to a folder without blanks in its path, such as "
                   L"C:\\CorvaneTo3CX."},
        BrokenLink{
            "FolderForAll", [](CheckedMachine& m) { m.survey.mayAdd = true; }, L"program",
            L"warning C:\\Corvane\\CorvaneTo3CX.exe: whoever is no administrator may "
            L"exchange it, too",
            L"-> As administrator: icacls C:\\Corvane /inheritance:d, then icacls C:\\Corvane "
            L"/remove:g *S-1-5-11"},
        BrokenLink{"FolderForAdministrators",
                   [](CheckedMachine& m) {
                       m.survey.mayAdd = true;
                       m.survey.elevated[m.processes.own] = true;
                       m.survey.elevated[77] = true;
                   },
                   L"program", L"ok C:\\Corvane\\CorvaneTo3CX.exe", L""},
        BrokenLink{"No3CX", [](CheckedMachine& m) { m.registry.keys.clear(); }, L"3CX",
                   L"BROKEN neither 3CXPhone nor 3CX MyPhone is installed",
                   L"-> Install 3CXPhone for Windows or, for 3CX 11, the 3CX MyPhone Desktop "
                   L"Components."},
        BrokenLink{"MyPhone",
                   [](CheckedMachine& m) {
                       m.registry.Store(L"HKLM\\SOFTWARE\\3CX\\MyPhone", L"CallNotifier",
                                        L"C:\\MyPhone\\notify.exe");
                   },
                   L"call trigger",
                   L"BROKEN C:\\MyPhone\\notify.exe is not there: nothing can be "
                   L"dialed",
                   L"-> Install the 3CX MyPhone Desktop Components again."},
        BrokenLink{"MyPhoneNeedsNoPlugin",
                   [](CheckedMachine& m) {
                       m.registry.Store(L"HKLM\\SOFTWARE\\3CX\\MyPhone", L"CallNotifier",
                                        L"C:\\3CX\\CallTriggerCmd.exe");
                   },
                   L"plug-in", L"ok none: it belongs to 3CX 14 and later", L""},
        BrokenLink{"NoNotifier", [](CheckedMachine& m) { m.registry.keys.erase(crm); },
                   L"call notifier", L"BROKEN CallNotifierPath is missing: 3CX calls nobody",
                   toOwn},
        BrokenLink{"NotifierOfOtherViewOnly",
                   [](CheckedMachine& m) {
                       m.registry.keys.erase(crm);
                       m.otherRegistry.Store(crm, L"CallNotifierPath", L"C:\\a.exe");
                   },
                   L"call notifier",
                   L"BROKEN CallNotifierPath stands in the other registry view only: C:\\a.exe",
                   toOwn},
        BrokenLink{"NotifierOfOtherViewDiffers",
                   [](CheckedMachine& m) {
                       m.otherRegistry.Store(crm, L"CallNotifierPath", L"C:\\a.exe");
                   },
                   L"call notifier",
                   L"warning C:\\Corvane\\CorvaneTo3CX.exe; the other registry view says C:\\a.exe",
                   L"-> Remove the value of the other view, or set it to the same."},
        BrokenLink{"NotifierOfOtherViewIsTheSame",
                   [](CheckedMachine& m) {
                       m.otherRegistry.Store(crm, L"CallNotifierPath", m.info.ExecutablePath());
                   },
                   L"call notifier", L"ok C:\\Corvane\\CorvaneTo3CX.exe", L""},
        BrokenLink{"NotifierIsAnother",
                   [](CheckedMachine& m) {
                       m.registry.Store(crm, L"CallNotifierPath", L"D:\\old\\CorvaneTo3CX.exe");
                   },
                   L"call notifier", L"BROKEN 3CX calls another program: D:\\old\\CorvaneTo3CX.exe",
                   toOwn},
        BrokenLink{"NotifierInCapitals",
                   [](CheckedMachine& m) {
                       m.registry.Store(crm, L"CallNotifierPath", L"C:\\CORVANE\\CorvaneTo3CX.exe");
                   },
                   L"call notifier",
                   L"warning C:\\CORVANE\\CorvaneTo3CX.exe has another letter case; the program "
                   L"says so in a box at every call",
                   toOwn},
        BrokenLink{
            "NotifierInQuotes",
            [](CheckedMachine& m) {
                m.registry.Store(crm, L"CallNotifierPath", Quoted(m.info.ExecutablePath()));
            },
            L"call notifier",
            L"warning \"C:\\Corvane\\CorvaneTo3CX.exe\" has quotes; the program says so in a "
            L"box at every call",
            toOwn},
        BrokenLink{"EchoScript",
                   [](CheckedMachine& m) {
                       m.registry.Store(crm, L"CallNotifierPath", L"C:\\Corvane\\EchoParams.cmd");
                   },
                   L"call notifier",
                   L"warning C:\\Corvane\\EchoParams.cmd only shows what 3CX passes", toOwn},
        BrokenLink{"NoTrigger",
                   [](CheckedMachine& m) { m.files.files.erase(L"C:\\3CX\\CallTriggerCmd.exe"); },
                   L"call trigger",
                   L"BROKEN C:\\3CX\\CallTriggerCmd.exe is not there: nothing can be dialed",
                   L"-> Install 3CXPhone for Windows again; the Path in its registry key ends in "
                   L"\"\\\"."},
        BrokenLink{
            "NoPlugin",
            [](CheckedMachine& m) { m.files.files.erase(L"C:\\3CX\\CommandLineAPIPlugin.dll"); },
            L"plug-in", L"BROKEN C:\\3CX\\CommandLineAPIPlugin.dll is not there: 3CX calls nobody",
            L"-> Put 3CX's Command Line API plug-in into the folder of 3CXPhone for Windows."},
        BrokenLink{"LogsAllEvents",
                   [](CheckedMachine& m) {
                       m.registry.Store(crm, L"CommandLineAPILogLevel", L"AllEvents");
                   },
                   L"plug-in log level",
                   L"warning AllEvents: the plug-in's log grows with every call",
                   L"-> Press \"Set to log only ImportantEvents\" on the program's Paths page."},
        BrokenLink{
            "UnknownLogLevel",
            [](CheckedMachine& m) { m.registry.Store(crm, L"CommandLineAPILogLevel", L"Some"); },
            L"plug-in log level", L"warning \"Some\" is no log level",
            L"-> Press \"Set to log only ImportantEvents\" on the program's Paths page."},
        BrokenLink{"GoldMineIsNotRunning", [](CheckedMachine& m) { m.processes.entries.clear(); },
                   L"GoldMine", L"warning is not running in this session: calls are not handled",
                   L"-> Start GoldMine and log in."},
        BrokenLink{"GoldMineOfAnotherSession",
                   [](CheckedMachine& m) { m.processes.sessions[77] = 2; }, L"GoldMine",
                   L"warning is not running in this session: calls are not handled",
                   L"-> Start GoldMine and log in."},
        BrokenLink{
            "GoldMineCannotBeOpened", [](CheckedMachine& m) { m.processes.openError = 5; },
            L"GoldMine",
            L"BROKEN GoldMine is running but could not retrieve its path. Do not run GoldMine "
            L"as Administrator. (Error 5 opening Process ID 77)",
            L"-> Close GoldMine and start it without \"Run as administrator\"."},
        BrokenLink{"GoldMineAsAdministrator",
                   [](CheckedMachine& m) { m.survey.elevated[77] = true; }, L"GoldMine",
                   L"warning C:\\GoldMine\\gmw.exe runs as administrator",
                   L"-> Close GoldMine and start it without \"Run as administrator\"."},
        BrokenLink{"BothAsAdministrator",
                   [](CheckedMachine& m) {
                       m.survey.elevated[77] = true;
                       m.survey.elevated[m.processes.own] = true;
                   },
                   L"GoldMine", L"ok C:\\GoldMine\\gmw.exe, as administrator like CorvaneCheck",
                   L""},
        BrokenLink{"CheckAsAdministrator",
                   [](CheckedMachine& m) { m.survey.elevated[m.processes.own] = true; },
                   L"GoldMine",
                   L"warning C:\\GoldMine\\gmw.exe; CorvaneCheck runs as administrator, and would "
                   L"start another GoldMine",
                   L"-> Start CorvaneCheck as the user who runs GoldMine."},
        BrokenLink{"NotRegistered",
                   [](CheckedMachine& m) {
                       m.survey.automationError = MakeRuntimeError(ErrorNumber::CannotCreateObject);
                   },
                   L"automation class",
                   L"BROKEN is not registered: ActiveX component can't create object",
                   L"-> As administrator: \"C:\\GoldMine\\gmw.exe\" /RegServer"},
        BrokenLink{"NotLoggedIn",
                   [](CheckedMachine& m) {
                       m.goldMine.sendError = MakeRuntimeError(ErrorNumber::PermissionDenied);
                   },
                   L"log-in", L"BROKEN nobody is logged in to GoldMine", L"-> Log in to GoldMine."},
        BrokenLink{"CannotConnect",
                   [](CheckedMachine& m) {
                       m.goldMine.connectError = MakeRuntimeError(ErrorNumber::CannotCreateObject);
                   },
                   L"log-in", L"BROKEN cannot connect: ActiveX component can't create object",
                   L"-> Close and restart GoldMine; if that does not help, register it as the "
                   L"installation page says."},
        BrokenLink{"UnexpectedError",
                   [](CheckedMachine& m) {
                       m.goldMine.sendError = MakeRuntimeError(ErrorNumber::OutOfMemory);
                   },
                   L"log-in", L"BROKEN error 7: CheckGoldMineVersion: Out of memory", L""},
        BrokenLink{"OldVersion", [](CheckedMachine& m) { m.AnswerMacro(L"Version", L"6.6"); },
                   L"version", L"BROKEN GoldMine version 6.6 detected.",
                   L"-> Use GoldMine 6.7 or later."},
        BrokenLink{
            "NoVersion", [](CheckedMachine& m) { m.AnswerMacro(L"Version", L"new"); }, L"version",
            L"BROKEN Error parsing GoldMine version new",
            L"-> See whether GoldMine waits in a box or is busy; else close and restart it."},
        BrokenLink{"NoIniFile", [](CheckedMachine& m) { m.files.files.erase(L"C:\\GM\\ANN.INI"); },
                   L"INI files", L"BROKEN Could not find GoldMine <user>.INI file C:\\GM\\ANN.INI",
                   L"-> Log in to GoldMine once as this user: it makes the file then."},
        BrokenLink{"NoModem",
                   [](CheckedMachine& m) {
                       m.iniFiles.files[L"C:\\GM\\ANN.INI"][{L"Modem", L"DeviceID"}] = L"-1";
                   },
                   L"modem: DeviceID", L"BROKEN GoldMine knows no modem, so it does not dial",
                   answerYes},
        BrokenLink{"NoInstruction",
                   [](CheckedMachine& m) {
                       m.iniFiles.files[L"C:\\GM\\ANN.INI"].erase({L"Modem", L"DDEDial"});
                   },
                   L"modem: DDEDial", L"BROKEN there is no dialing instruction", answerYes},
        BrokenLink{"OtherInstruction",
                   [](CheckedMachine& m) {
                       m.iniFiles.files[L"C:\\GM\\ANN.INI"][{L"Modem", L"DDEDial"}] =
                           L"&Dial,,C:\\other.exe %s";
                   },
                   L"modem: DDEDial",
                   L"BROKEN &Dial,,C:\\other.exe %s dials through something else", answerYes},
        BrokenLink{"Translated",
                   [](CheckedMachine& m) {
                       m.iniFiles.files[L"C:\\GM\\ANN.INI"][{L"Modem", L"TAPITranslation"}] = L"1";
                   },
                   L"modem: TAPITranslation",
                   L"BROKEN numbers are formatted before they are dialed", answerYes},
        BrokenLink{"HtmlNotes",
                   [](CheckedMachine& m) {
                       m.iniFiles.files[L"C:\\GM\\GM.INI"][{L"GoldMine", L"HTML_Cal_Notes"}] = L"1";
                   },
                   L"notes", L"ok HTML", L""},
        BrokenLink{"NoGmIni", [](CheckedMachine& m) { m.files.files.erase(L"C:\\GM\\GM.INI"); },
                   L"notes",
                   L"warning C:\\GM\\GM.INI is not there, so notes are written as plain text",
                   L"-> See whether GoldMine's folder is complete."},
        BrokenLink{"NoLinks", [](CheckedMachine& m) { m.StoreOption(L"chkCreateLink", L"0"); },
                   L"recordings folder", L"ok recordings are not linked", L""},
        BrokenLink{
            "NoFolderGiven", [](CheckedMachine& m) { m.StoreOption(L"txtLinkedItemPath", L""); },
            L"recordings folder", L"BROKEN none is given, though recordings are to be linked",
            L"-> Give one on the page GoldMine History."},
        BrokenLink{"NoFolder", [](CheckedMachine& m) { m.files.folders.clear(); },
                   L"recordings folder", L"BROKEN C:\\Recordings cannot be reached",
                   L"-> See whether it is there for this user; name it as "
                   L"\\\\Server\\Share\\Folder."},
        BrokenLink{"FolderNotListed", [](CheckedMachine& m) { m.survey.mayList = false; },
                   L"recordings folder", L"BROKEN C:\\Recordings may not be listed",
                   L"-> Give this user the permissions Read and List Folder Contents."},
        BrokenLink{"FolderBreaksOff", [](CheckedMachine& m) { m.files.newest.complete = false; },
                   L"recordings folder", L"BROKEN C:\\Recordings could not be read to its end",
                   L"-> See whether its server stays connected."},
        BrokenLink{"EmptyFolder", [](CheckedMachine& m) { m.files.newest = {}; },
                   L"recordings folder", L"warning C:\\Recordings holds no recording yet",
                   L"-> See whether 3CX records calls there."},
        BrokenLink{"OldRecordings",
                   [](CheckedMachine& m) { m.files.newest.modified = m.clock.Now() - 31; },
                   L"recordings folder",
                   L"warning C:\\Recordings: 12 files, the newest, 555 (00042).wav, 31 days ago",
                   L"-> See whether 3CX still records calls there."},
        BrokenLink{
            "NameWithoutIdentifier",
            [](CheckedMachine& m) {
                m.files.newest = {L"555 ().wav", m.clock.Now(), 1};
                m.StoreOption(L"chkConfirmLinkCallIdentifier", L"1");
            },
            L"recordings folder",
            L"warning C:\\Recordings: 1 file, the newest, 555 ().wav, less than a minute ago, "
            L"bears no call identifier in round brackets",
            L"-> Let 3CX name recordings so, or uncheck \"Only add link if file name includes "
            L"the 3CX Call Identifier no.\"."},
        BrokenLink{"NameWithIdentifier",
                   [](CheckedMachine& m) { m.StoreOption(L"chkConfirmLinkCallIdentifier", L"1"); },
                   L"recordings folder",
                   L"ok C:\\Recordings: 12 files, the newest, 555 (00042).wav, 3 hours ago", L""},
        BrokenLink{
            "SettingsDoNotConvert",
            [](CheckedMachine& m) {
                m.StoreOption(L"optPhone1Only", L"perhaps");
                m.StoreOption(L"txtCallerIDMinLength", L"six");
                m.StoreOption(L"txtOutboundMaxLength", L"99");
            },
            L"settings",
            L"BROKEN txtOutboundMaxLength \"99\" is out of range; optPhone1Only \"perhaps\" "
            L"does not convert; txtCallerIDMinLength \"six\" does not convert",
            L"-> Correct them in the program's window and save them; else delete the values in "
            L"the registry: missing ones count as their defaults."},
        BrokenLink{
            "SettingOutOfRange",
            [](CheckedMachine& m) { m.StoreOption(L"txtOutboundMaxLength", L"99"); }, L"settings",
            L"warning txtOutboundMaxLength \"99\" is out of range",
            L"-> Correct them in the program's window and save them; else delete the values in "
            L"the registry: missing ones count as their defaults."},
        BrokenLink{"SettingsCannotBeRead",
                   [](CheckedMachine& m) { m.registry.failingKeys.insert(FakeRegistry::ownKey); },
                   L"settings",
                   L"BROKEN error -2147191503: RegCreateKeyEx of HKCU\\SOFTWARE\\Halvorn "
                   L"Systems\\CorvaneTo3CX System error 5: Access denied.",
                   L""},
        BrokenLink{"SwitchedOff",
                   [](CheckedMachine& m) { m.StoreOption(L"chkGlobalEnable", L"0"); },
                   L"master switch", L"BROKEN off: no call is handled",
                   L"-> Check \"Enable link between GoldMine and 3CX\" in the program's window."},
        BrokenLink{
            "LogCannotBeWritten",
            [](CheckedMachine& m) { m.survey.whyNotAppend = L"Permission denied"; }, L"log",
            L"BROKEN C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log cannot "
            L"be written: Permission denied",
            L"-> As administrator: icacls \"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\" "
            L"/grant *S-1-5-32-545:(OI)(CI)M"},
        BrokenLink{
            "LogIsOff",
            [](CheckedMachine& m) {
                m.survey.whyNotAppend = L"Permission denied";
                m.StoreOption(L"chkWriteLog", L"0");
            },
            L"log",
            L"warning C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log cannot "
            L"be written: Permission denied",
            L"-> As administrator: icacls \"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\" "
            L"/grant *S-1-5-32-545:(OI)(CI)M"},
        BrokenLink{"BoxWaits",
                   [](CheckedMachine& m) {
                       m.processes.Add(90, L"CorvaneTo3CX.exe", 1, L"");
                       m.processes.Add(91, L"CorvaneTo3CX.exe", 1, L"");
                       m.processes.Add(92, L"CorvaneTo3CX.exe", 2, L"");
                       m.survey.boxes[91] = {L"Okay\r\nto go?"};
                       m.survey.boxes[92] = {L"another session's"};
                   },
                   L"waiting boxes", L"warning process 91 says: Okay to go?",
                   L"-> Answer the box: that call waits for it."},
        BrokenLink{"NoBoxWaits",
                   [](CheckedMachine& m) { m.processes.Add(90, L"CorvaneTo3CX.exe", 1, L""); },
                   L"waiting boxes", L"ok none; instances that run: 1", L""}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(Wiring, GoldMineOfNobodyIsConnectedTo) {
    int connects = 0;
    FakeOutput output;
    const InSurroundings machine = On([](CheckedMachine& m) {
        AllIsWell(m);
        m.processes.entries.clear();
    });
    const InSurroundings watched = [&](const auto& body) {
        machine([&](const CheckSurroundings& around) {
            body(around);
            connects += around.goldMine.connected() ? 1 : 0;
        });
    };
    EXPECT_EQ(RunWiring({}, output, watched), 1);
    EXPECT_EQ(connects, 0);
}

TEST(Wiring, GoldMineIsAskedForMacrosOnly) {
    std::mutex mutex;
    std::vector<std::wstring> asked;
    FakeOutput output;
    static_cast<void>(RunWiring({}, output, On([&](CheckedMachine& machine) {
                                    AllIsWell(machine);
                                    machine.goldMine.onSend = [&](const std::wstring& command) {
                                        const std::scoped_lock lock(mutex);
                                        asked.push_back(command);
                                    };
                                })));
    EXPECT_EQ(asked.size(), 3u);
    for (const std::wstring& command : asked)
        EXPECT_TRUE(command.starts_with(L"<GMAPI call=\"Macro\">"));
}

TEST(Wiring, AGoldMineThatHangsKeepsTheOthersFromNothing) {
    std::promise<void> wakeUp;
    std::promise<void> ended;
    const std::shared_future<void> woken(wakeUp.get_future());
    const InSurroundings machine = On([woken](CheckedMachine& m) {
        AllIsWell(m);
        m.goldMine.onSend = [woken](const std::wstring&) { woken.wait(); };
    });
    std::atomic<int> left = 4;
    const InSurroundings watched = [&, machine](const auto& body) {
        machine(body);
        if (--left == 0)
            ended.set_value();
    };
    FakeOutput output;
    EXPECT_EQ(RunWiring({}, output, watched, std::chrono::milliseconds(1500)), 2);
    wakeUp.set_value();

    EXPECT_EQ(LinesAbout(output.written, L"log-in"),
              L"BROKEN does not answer\n"
              L"-> See whether GoldMine waits in a box or is busy; else close and restart it.\n");
    EXPECT_EQ(LinesAbout(output.written, L"version"), L"- the link \"log-in\" does not answer\n");
    EXPECT_EQ(LinesAbout(output.written, L"settings"), L"ok all convert\n");
    EXPECT_NE(output.written.find(L"\n1 broken, 0 warnings.\n"), std::wstring::npos);
    ended.get_future().wait();  // nothing of this test outlives it
}

TEST(Wiring, JsonSaysTheSame) {
    const Printed run = Wiring(
        [](CheckedMachine& machine) {
            AllIsWell(machine);
            machine.StoreOption(L"txtLinkedItemPath", L"C:\\\x4e2d\"x");
        },
        {L"--json"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(
        run.text.starts_with(L"{\n  \"result\": \"broken\",\n  \"links\": [\n"
                             L"    {\"link\": \"program\", \"state\": \"ok\", \"text\": "
                             L"\"C:\\\\Corvane\\\\CorvaneTo3CX.exe\", \"fix\": \"\"},\n"));
    EXPECT_NE(run.text.find(L"{\"link\": \"recordings folder\", \"state\": \"broken\", \"text\": "
                            L"\"C:\\\\\\u4e2d\\\"x cannot be reached\", \"fix\": "),
              std::wstring::npos);
    EXPECT_TRUE(run.text.ends_with(L"}\n  ]\n}\n"));
}

TEST(Wiring, BehindAnErrorNothingIsLookedAt) {
    const Printed run = Wiring([](CheckedMachine& machine) {
        AllIsWell(machine);
        machine.goldMine.sendError = MakeRuntimeError(ErrorNumber::OutOfMemory);
    });
    EXPECT_EQ(LinesAbout(run.text, L"notes"), L"- the link before it ended in an error\n");
    EXPECT_EQ(LinesAbout(run.text, L"settings"), L"ok all convert\n");
}

TEST(Wiring, NothingElseIsTaken) {
    FakeOutput output;
    EXPECT_THROW(
        static_cast<void>(RunWiring(std::vector<std::wstring>{L"x"}, output, On(&AllIsWell))),
        WrongUse);
}

}  // namespace
}  // namespace corvane::test
