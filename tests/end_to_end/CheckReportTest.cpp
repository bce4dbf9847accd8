// The file that CorvaneCheck makes for support, after real runs of the program.

#include <algorithm>

#include "CheckTest.h"
#include "support/windows/Files.h"
#include "support/ZipReader.h"

namespace end_to_end {
namespace {

const std::wstring reportFile = std::wstring(appFolder) + L"..\\report.zip";
const std::string reportName = "C:\\corvane-e2e\\report.zip";

bool Holds(const std::string& text, std::string_view part) {
    return text.find(part) != std::string::npos;
}

class CheckReportTest : public CheckTest {
protected:
    void SetUp() override {
        CheckTest::SetUp();
        DeleteFileW(reportFile.c_str());
    }
    void TearDown() override {
        DeleteFileW(reportFile.c_str());
        CheckTest::TearDown();
    }

    // A call with a recording, another that nobody knows, and a number that is dialed.
    void HandleCalls() {
        GoldMine();
        SetAll({{"chkPopOnInboundCall", "1"},
                {"chkCreateHistory", "1"},
                {"optOpenHistoryBeforeSaving", "False"},
                {"optOpenHistoryAfterSaving", "True"},
                {"chkCreateLink", "1"},
                {"chkDelayAddingLink", "0"},
                {"txtLinkedItemPath", Utf8(recordingsFolder)},
                {"chkLogCOMCalls", "1"},
                {"txtCOMDurationSeconds", "0"}});
        WriteFileText(std::wstring(recordingsFolder) + L"Quincy 5551234567 (00042).wav", "sound");
        std::string log;
        for (const char* commandLine :
             {"/N:S /C:5551234567 /T:I /I:00042", "/N:C /C:5551234567 /T:I /I:00042",
              "/N:S /C:5559876543 /T:I /I:00043", "(555) 987-6543"}) {
            Run(commandLine);
            log += LogText();
        }
        WriteFileText(logFile(), log + "Quincy tells 5551234567\r\n");
    }

    static ZipReader::Files Files() {
        return ZipReader::Read(ReadFileText(reportFile).value_or(""));
    }
};

TEST_F(CheckReportTest, NothingOfAPersonStandsInIt) {
    HandleCalls();

    const Checked checked = Check("report " + reportName + " --number \"+1 (555) 123-4567\"");

    EXPECT_EQ(checked.exitCode, 0u) << checked.text;
    EXPECT_TRUE(checked.text.starts_with("Wrote " + reportName + "\n\nFile ")) << checked.text;
    const auto files = Files();
    EXPECT_EQ(files.size(), 8u);
    for (const auto& [name, text] : files) {
        for (const char* mark :
             {"Quincy", "5551234567", "123-4567", "5559876543", "987-6543", "MASTER", "1234567"}) {
            EXPECT_FALSE(Holds(text, mark)) << mark << " in " << name << ":\n" << text;
        }
    }
    EXPECT_TRUE(Holds(files.at("calls.txt"), "00042  ringing   in  ########67"))
        << files.at("calls.txt");
    EXPECT_TRUE(Holds(files.at("calls.txt"), " ########67 (00042).wav; history created"));
    EXPECT_TRUE(Holds(files.at("calls.txt"), "00043  ringing   in  ########43"));
    EXPECT_TRUE(Holds(files.at("calls.txt"), "3 calls with 4 events"));
    EXPECT_TRUE(
        Holds(files.at("log-tail.txt"), "Did not find GoldMine contact for (###)###-##43."));
    EXPECT_TRUE(Holds(files.at("log-tail.txt"), "'<GMAPI call=\"CallerID\"(hidden: "));
    EXPECT_TRUE(files.at("log-tail.txt").ends_with("\r\n(hidden: 23 characters)\r\n"));
    EXPECT_TRUE(Holds(files.at("wiring.txt"), "GoldMine version 2014.1 detected.\r\n"));
    EXPECT_TRUE(Holds(files.at("wiring.txt"), " ########67 (00042).wav"));
    EXPECT_TRUE(Holds(files.at("settings.txt"), "txtCOMDurationSeconds          0"));
    EXPECT_TRUE(Holds(files.at("versions.txt"), "CorvaneTo3CX      1.0.0.1"));
    EXPECT_TRUE(Holds(files.at("versions.txt"), "\\gmw.exe\r\n")) << files.at("versions.txt");
    // Only what no form knows is hidden: what is sent to GoldMine, and the line of another.
    const Lines lines = SplitLines(files.at("log-tail.txt"), "\r\n");
    EXPECT_EQ(std::ranges::count_if(lines,
                                    [](const std::string& line) {
                                        return Holds(line, "(hidden") &&
                                               !Holds(line, "COM command");
                                    }),
              1);
}

TEST_F(CheckReportTest, UnmaskedAllOfItDoes) {
    HandleCalls();
    const Checked checked = Check("report " + reportName + " --unmasked");
    EXPECT_EQ(checked.exitCode, 0u);
    EXPECT_TRUE(Holds(checked.text, "\nNot masked: ")) << checked.text;
    const auto files = Files();
    EXPECT_TRUE(Holds(files.at("calls.txt"), "5559876543"));
    EXPECT_TRUE(Holds(files.at("log-tail.txt"), "Quincy tells 5551234567\r\n"));
    EXPECT_TRUE(Holds(files.at("wiring.txt"), "MASTER.INI"));
    EXPECT_TRUE(Holds(files.at("settings.txt"), "C:\\corvane-e2e\\recordings\\"));
}

TEST_F(CheckReportTest, NothingElseIsChanged) {
    HandleCalls();
    const Lines dialled = {"\"C:\\corvane-e2e\\app\\CallTriggerCmd.exe\" -cmd makecall:5559876543"};
    ASSERT_TRUE(WaitUntil([&] { return Dialled() == dialled; }));
    const Lines before = State();
    Check("report " + reportName + " --number 5551234567");
    EXPECT_TRUE(State() == before);
    EXPECT_EQ(Dialled(), dialled);
}

TEST_F(CheckReportTest, AFileIsNotReplaced) {
    WriteFileText(reportFile, "mine");
    const Checked checked = Check("report " + reportName);
    EXPECT_EQ(checked.exitCode, 3u);
    EXPECT_EQ(checked.text, reportName + " is there already; nothing was written.\n");
    EXPECT_EQ(ReadFileText(reportFile), "mine");
}

TEST_F(CheckReportTest, AFolderThatIsNotThereIsTold) {
    CloseGoldMine();
    const Checked checked = Check("report C:\\corvane-e2e\\none\\report.zip");
    EXPECT_EQ(checked.exitCode, 3u);
    EXPECT_TRUE(checked.text.starts_with("Could not write C:\\corvane-e2e\\none\\report.zip: "))
        << checked.text;
}

TEST_F(CheckReportTest, WithoutLogAndGoldMineItSaysSo) {
    CloseGoldMine();
    DeleteFileW(logFile().c_str());
    const Checked checked = Check("report " + reportName);
    EXPECT_EQ(checked.exitCode, 1u);
    EXPECT_TRUE(Holds(checked.text, "  the log's last lines: Could not open ")) << checked.text;
    const auto files = Files();
    EXPECT_TRUE(Holds(files.at("versions.txt"), "GoldMine          does not run here\r\n"));
    EXPECT_TRUE(Holds(files.at("wiring.txt"), "is not running in this session"));
}

TEST_F(CheckReportTest, ItEndsInTimeWhenGoldMineHangs) {
    GoldMine().SetFaults("Macro:&Version delay 12000\n");
    GoldMineIsSpoilt();
    const Checked checked = Check("report " + reportName);
    EXPECT_LT(checked.milliseconds, 15'000u);
    EXPECT_TRUE(Holds(Files().at("wiring.txt"), "BROKEN  log-in                  does not answer"))
        << Files().at("wiring.txt");
    EXPECT_TRUE(Holds(Files().at("settings.txt"), "chkWriteLog"));
}

TEST_F(CheckReportTest, WithoutANameItGoesToTheDesktop) {
    CloseGoldMine();
    const Checked checked = Check("report");
    const std::string first = SplitLines(checked.text, "\n").at(0);
    ASSERT_TRUE(first.starts_with("Wrote C:\\")) << checked.text;
    const std::wstring path = Wide(first.substr(6));
    EXPECT_TRUE(Holds(first, "\\Desktop\\CorvaneReport-20")) << first;
    EXPECT_EQ(ZipReader::Read(ReadFileText(path).value_or("")).size(), 7u);
    DeleteFileW(path.c_str());
}

}  // namespace
}  // namespace end_to_end
