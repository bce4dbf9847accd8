#include "check/report/Report.h"

#include <atomic>
#include <future>
#include <vector>

#include "check/Arguments.h"
#include "fakes/FakeLogFiles.h"
#include "fakes/FakeReportFiles.h"
#include "support/ZipReader.h"
#include "unit/check/CheckFixture.h"
#include "util/Text.h"

namespace corvane::test {
namespace {

using test_support::ZipReader;

constexpr const wchar_t* logPath =
    L"C:\\ProgramData\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log";
constexpr const wchar_t* usualPath =
    L"C:\\Users\\quincy\\Desktop\\CorvaneReport-2026-11-22-052333.zip";

// Wherever something of a person can stand, something does.
void QuincysMachine(CheckedMachine& machine) {
    machine.RunGoldMine();
    machine.AnswerMacro(L"UserName", L"QUINCY");
    machine.files.files[L"C:\\GM\\QUINCY.INI"];
    machine.iniFiles.files[L"C:\\GM\\QUINCY.INI"][{L"Modem", L"DDEDial"}] =
        L"&Dial,,C:\\Users\\quincy\\dial.exe 5551234567";
    machine.processes.paths.begin()->second = L"C:\\Users\\quincy\\gmw.exe";
    machine.StoreOption(L"chkWriteLog", L"1");
    machine.StoreOption(L"chkCreateLink", L"1");
    machine.StoreOption(L"txtLinkedItemPath", L"C:\\Users\\quincy\\Calls");
    machine.StoreOption(L"txtCallerIDFormat", L"Quincy 5551234567");
    machine.StoreOption(L"optPhone1Only", L"Quincy");
    machine.StoreOption(L"txtOutboundMaxLength", L"99");
    machine.files.folders.insert(L"C:\\Users\\quincy\\Calls");
    machine.files.newest = {L"Quincy 5551234567 (00042).wav", machine.clock.Now(), 12};
    machine.registry.Store(L"HKLM\\SOFTWARE\\3CX\\CRM", L"CallNotifierPath",
                           L"C:\\Users\\quincy\\x.exe 5551234567");
    machine.registry.Store(L"HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion", L"ProductName",
                           L"Windows 10 Pro");
    machine.registry.Store(L"HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion",
                           L"CurrentBuild", L"19045");
    machine.survey.whyNotAppend = L"Quincy holds it";
    machine.survey.versions[L"C:\\Corvane\\CorvaneTo3CX.exe"] = L"1.0.0.1";
    machine.survey.versions[L"C:\\Users\\quincy\\gmw.exe"] = L"9.2.1.1";
}

std::string Log() {
    std::string log;
    for (const char* message :
         {"Corvane 1.0.0.1 started with param(s): /N:S /C:5551234567 /T:I /I:00042.",
          "Inbound call search for CallerID:  searching while incoming call is ringing.",
          "Found (555)123-4567 in a primary contact record.",
          "Most recent file is \"Quincy 5551234567 (00042).wav\", modified 11/21/2026 7:27:45 AM.",
          "Prepared link to \"C:\\Users\\quincy\\Calls\\Quincy 5551234567 (00042).wav\".",
          "> COM command > 1 second(s) (2.500 seconds): '<GMAPI call=\"InsHist\">Quincy</GMAPI>'",
          "Run-time error '429': ProcessCall: Quincy", "Quincy 5551234567",
          "Finished unloading form and closing program."}) {
        log += std::string("17\t20261122.051142.000\t[00042]:\t") + message + "\r\n";
    }
    return log + "Quincy 5551234567 tells\r\n";
}

struct ReportTest : testing::Test {
    ReportTest() { logs.files[logPath] = Log(); }

    int Run(const std::vector<std::wstring>& arguments = {},
            const InSurroundings& machine = On(&QuincysMachine)) {
        return RunReport(arguments, output,
                         {.inSurroundings = machine,
                          .logs = logs,
                          .files = disk,
                          .logPath = logPath,
                          .usualFolder = L"C:\\Users\\quincy\\Desktop",
                          .versionText = L"1.0.0.1",
                          .now = *LogTimeFromStamp("20261122.052333.087"),
                          .linksTime = std::chrono::milliseconds(1500),
                          .partTime = std::chrono::milliseconds(1500)});
    }
    ZipReader::Files Files(const std::wstring& path = usualPath) {
        return ZipReader::Read(disk.files.at(path));
    }

    FakeLogFiles logs;
    FakeReportFiles disk;
    FakeOutput output;
};

std::vector<std::string> NamesOf(const ZipReader::Files& files) {
    std::vector<std::string> names;
    for (const auto& [name, bytes] : files)
        names.push_back(name);
    return names;
}

bool Holds(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

TEST_F(ReportTest, NothingOfAPersonStandsInIt) {
    EXPECT_EQ(Run({L"--number", L"Quincy (555)123-4567 x12"}), ExitCode::fine)
        << Join(output.errors);
    for (const auto& [name, bytes] : Files()) {
        for (const char* mark : {"quincy", "Quincy", "QUINCY", "5551234", "123-4567", "4567"})
            EXPECT_FALSE(Holds(bytes, mark)) << mark << " in " << name << ":\n" << bytes;
    }
}

TEST_F(ReportTest, UnmaskedAllOfItDoes) {
    EXPECT_EQ(Run({L"--unmasked", L"--number", L"(555)123-4567"}), ExitCode::fine);
    const auto files = Files();
    for (const auto& [name, mark] :
         std::map<std::string, std::string>{{"calls.txt", "5551234567"},
                                            {"contents.txt", "Not masked: "},
                                            {"log-tail.txt", "Quincy 5551234567 tells"},
                                            {"number.txt", "(555)123-4567"},
                                            {"settings.txt", "C:\\Users\\quincy\\Calls"},
                                            {"versions.txt", "C:\\Users\\quincy\\gmw.exe"},
                                            {"wiring.json", "Quincy 5551234567 (00042).wav"},
                                            {"wiring.txt", "Quincy 5551234567 (00042).wav"}}) {
        EXPECT_TRUE(Holds(files.at(name), mark)) << files.at(name);
    }
    EXPECT_EQ(files.size(), 8U);
    EXPECT_FALSE(Holds(files.at("log-tail.txt"), "hidden"));
}

TEST_F(ReportTest, SaysWhatIsInItAndWhereItIs) {
    EXPECT_EQ(Run(), ExitCode::fine);
    EXPECT_EQ(output.errors, L"");
    std::wstring sizes;
    for (const auto& [name, bytes] : Files())
        sizes += Join(std::to_wstring(bytes.size()), L" ");
    const auto lines = Split(output.written, L'\n');
    EXPECT_EQ(lines.at(0), Join(L"Wrote ", usualPath));
    EXPECT_EQ(lines.at(2), L"File          Bytes  What");
    EXPECT_TRUE(lines.at(3).starts_with(L"contents.txt  "));
    EXPECT_TRUE(lines.at(3).ends_with(L"  what this report is"));
    EXPECT_NE(lines.at(4).find(std::to_wstring(Files().at("calls.txt").size())),
              std::wstring::npos);
    EXPECT_TRUE(output.written.ends_with(
        L"\nMasked: in numbers all but the last digits are \"#\", names are \"name-1\" and so on.\n"
        L"Look at the files before you send them: masking cannot foresee everything.\n"));
    EXPECT_EQ(NamesOf(Files()),
              (std::vector<std::string>{"calls.txt", "contents.txt", "log-tail.txt", "settings.txt",
                                        "versions.txt", "wiring.json", "wiring.txt"}));
}

TEST_F(ReportTest, ItsTextsAreForAWindowsEditor) {
    EXPECT_EQ(Run(), ExitCode::fine);
    const auto files = Files();
    EXPECT_TRUE(files.at("contents.txt")
                    .starts_with("\xef\xbb\xbf"
                                 "A report on what links GoldMine with 3CX, for support.\r\n\r\n"
                                 "Made on 2026-11-22 05:23:33 by CorvaneCheck 1.0.0.1.\r\n"
                                 "Masked: "));
    EXPECT_TRUE(Holds(files.at("contents.txt"), "\r\nwiring.json   the same for programs\r\n"));
    EXPECT_TRUE(files.at("wiring.json").starts_with("{\n  \"result\": "));
}

TEST_F(ReportTest, CallsAndLinesCanStillBeToldApart) {
    EXPECT_EQ(Run(), ExitCode::fine);
    const auto files = Files();
    EXPECT_TRUE(
        Holds(files.at("calls.txt"),
              "2026-11-22 05:11:42  00042  ringing  in  ########67   0.000 s  trouble: popped "
              "in a primary contact record; link to name-1 ########67 (00042).wav; "))
        << files.at("calls.txt");
    EXPECT_TRUE(Holds(files.at("log-tail.txt"),
                      "[00042]:\tFound (###)###-##67 in a primary contact record.\r\n"));
    EXPECT_TRUE(Holds(files.at("wiring.txt"),
                      "C:\\Users\\name-1\\name-2: 12 files, the newest, "
                      "name-1 ########67 (00042).wav, less than a minute "
                      "ago"))
        << files.at("wiring.txt");
}

TEST_F(ReportTest, SettingsStandBesideTheirDefaults) {
    EXPECT_EQ(Run(), ExitCode::fine);
    const std::string settings = Files().at("settings.txt");
    for (const char* row :
         {"Setting                        Saved                   Default\r\n",
          "chkWriteLog                    1                       0\r\n",
          "txtOutboundMaxLength           99                      10             is out of "
          "range\r\n",
          "optPhone1Only                  name-1                  False          does not "
          "convert\r\n",
          "txtCallerIDFormat              name-1 ########67       (###)###-####\r\n",
          "txtLinkedItemPath              C:\\Users\\name-1\\name-2\r\n",
          "chkGlobalEnable                (missing)               1\r\n"}) {
        EXPECT_TRUE(Holds(settings, row)) << row << "\n" << settings;
    }
}

TEST_F(ReportTest, AnEmptyTextIsNotAMissingOne) {
    EXPECT_EQ(Run({}, On([](CheckedMachine& machine) {
                      machine.StoreOption(L"txtCallerIDFormat", L"");
                  })),
              ExitCode::fine);
    EXPECT_TRUE(Holds(Files().at("settings.txt"),
                      "txtCallerIDFormat                         (###)###-####\r\n"))
        << Files().at("settings.txt");
}

TEST_F(ReportTest, VersionsAreThoseOfTheFilesInUse) {
    EXPECT_EQ(Run(), ExitCode::fine);
    const std::string versions = Files().at("versions.txt");
    for (const char* row :
         {"CorvaneCheck      1.0.0.1\r\n", "CorvaneTo3CX      1.0.0.1  ",
          "GoldMine          9.2.1.1", "C:\\Users\\name-1\\gmw.exe\r\n",
          "Windows           Windows 10 Pro build 19045\r\n", "MSXML 6           unknown"}) {
        EXPECT_TRUE(Holds(versions, row)) << row << "\n" << versions;
    }
}

TEST_F(ReportTest, ANumberIsToldOnRequestOnly) {
    EXPECT_EQ(Run({L"C:\\a.zip", L"--number", L"+44 20 7946 0958 x12"}), ExitCode::fine);
    const std::string number = Files(L"C:\\a.zip").at("number.txt");
    EXPECT_TRUE(Holds(number, "  received     +## ## #### ##58 x##\r\n")) << number;
    EXPECT_TRUE(Holds(number, "Phone1 of the open record\r\n")) << number;
    EXPECT_FALSE(Holds(number, "7946")) << number;
}

TEST_F(ReportTest, TheLastLinesOfALongLogAreInIt) {
    std::string& log = logs.files[logPath];
    log.clear();
    const std::string line = "7\t20261122.051142.000\t[]:\tSettings saved.\r\n";
    for (int i = 0; i < 3000; ++i)
        log += line;
    log += "8\t20261122.051142.000\t[]:\tSettings saved.\r\n";
    EXPECT_EQ(Run(), ExitCode::fine);
    const std::string tail = Files().at("log-tail.txt");
    EXPECT_EQ(tail.size(), 3 + 2000 * line.size());
    EXPECT_TRUE(tail.ends_with("8\t20261122.051142.000\t[]:\tSettings saved.\r\n"));
}

TEST_F(ReportTest, WithoutALogTheOthersAreThere) {
    logs.files.clear();
    EXPECT_EQ(Run(), ExitCode::warnings);
    EXPECT_NE(output.written.find(L"what the log says about the last calls: Invalid procedure call "
                                  L"or argument\n"),
              std::wstring::npos)
        << Join(output.written);
    const auto files = Files();
    EXPECT_TRUE(
        files.at("calls.txt").ends_with("Not to be had: error 5, (hidden: 34 characters)\r\n"));
    EXPECT_TRUE(Holds(files.at("contents.txt"),
                      "log-tail.txt  the log's last lines: could not be had\r\n"));
    EXPECT_TRUE(Holds(files.at("wiring.txt"), "master switch"));
    EXPECT_TRUE(Holds(files.at("settings.txt"), "chkWriteLog"));
}

TEST_F(ReportTest, AHangingGoldMineKeepsNothingElseOut) {
    std::promise<void> wakeUp;
    std::promise<void> ended;
    const std::shared_future<void> woken(wakeUp.get_future());
    const InSurroundings machine = On([woken](CheckedMachine& m) {
        QuincysMachine(m);
        m.goldMine.onSend = [woken](const std::wstring&) { woken.wait(); };
    });
    std::atomic<int> left = 6;
    const InSurroundings watched = [&, machine](const auto& body) {
        machine(body);
        if (--left == 0)
            ended.set_value();
    };
    EXPECT_EQ(Run({}, watched), ExitCode::fine);
    wakeUp.set_value();
    EXPECT_TRUE(Holds(Files().at("wiring.txt"), "log-in                  does not answer\r\n"))
        << Files().at("wiring.txt");
    EXPECT_TRUE(Holds(Files().at("settings.txt"), "chkWriteLog"));
    ended.get_future().wait();  // nothing of this test outlives it
}

TEST_F(ReportTest, APartThatHangsOrFailsIsLeftOut) {
    std::promise<void> wakeUp;
    std::promise<void> ended;
    const std::shared_future<void> woken(wakeUp.get_future());
    std::atomic<int> calls = 0;
    const InSurroundings machine = [&, woken](const auto& body) {
        // The links take four of them, then come the settings and the versions.
        const int call = ++calls;
        if (call == 6)
            throw MakeRuntimeError(ErrorNumber::OutOfMemory);
        if (call == 5)
            woken.wait();
        On (&QuincysMachine)(body);
        if (call == 5)
            ended.set_value();
    };
    EXPECT_EQ(Run({}, machine), ExitCode::warnings);
    wakeUp.set_value();
    EXPECT_NE(output.written.find(L"this user's settings: does not answer\n"), std::wstring::npos);
    EXPECT_NE(output.written.find(L"programs and Windows: Out of memory\n"), std::wstring::npos);
    ended.get_future().wait();
}

TEST_F(ReportTest, GoesWhereItIsTold) {
    EXPECT_EQ(Run({L"my.zip"}), ExitCode::fine);
    EXPECT_TRUE(output.written.starts_with(L"Wrote C:\\here\\my.zip\n"));
    EXPECT_TRUE(disk.files.contains(L"C:\\here\\my.zip"));
}

TEST_F(ReportTest, NeverReplacesAFile) {
    disk.files[usualPath] = "mine";
    EXPECT_EQ(Run(), ExitCode::wrongUse);
    EXPECT_EQ(output.errors, Join(usualPath, L" is there already; nothing was written.\n"));
    EXPECT_EQ(output.written, L"");
    EXPECT_EQ(disk.files[usualPath], "mine");
}

TEST_F(ReportTest, SaysWhyItCannotBeWritten) {
    disk.writeError = MakeRuntimeError(ErrorNumber::PermissionDenied);
    EXPECT_EQ(Run(), ExitCode::wrongUse);
    EXPECT_EQ(output.errors, L"Permission denied\n");
    EXPECT_EQ(output.written, L"");
}

TEST_F(ReportTest, OneFileIsWritten) {
    EXPECT_THROW(Run({L"a.zip", L"b.zip"}), WrongUse);
    EXPECT_THROW(Run({L"--umasked"}), WrongUse);
    EXPECT_TRUE(disk.files.empty());
}

}  // namespace
}  // namespace corvane::test
