#include "EndToEndTest.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"
#include "support/windows/KernelHandle.h"

namespace end_to_end {
namespace {

const Lines notRunningLines = {"GoldMine not running, so version unknown.",
                               "Parameters found but GoldMine not running. Exiting."};

struct RunNumberCase {
    const char* name;
    std::string stored;
    std::string logged;
    std::string storedAfterwards;
};

class LogTest : public EndToEndTest {
protected:
    void SetUp() override {
        EndToEndTest::SetUp();
        CloseGoldMine();
    }
};

TEST_F(LogTest, LinesHaveFourFields) {
    Run("/N:S /I:00042");

    const std::vector<LogLine> lines = ParseLog(LogText());
    ASSERT_EQ(lines.size(), 5u);
    const std::string begin = "17\t" + lines[4].timeStamp + "\t[00042]:\t";
    EXPECT_TRUE(
        LogText().ends_with("\r\n" + begin + "Finished unloading form and closing program.\r\n"));
    EXPECT_TRUE(LogText().starts_with(
        "17\t" + lines[0].timeStamp +
        "\t[]:\t-------------------------------------------------------------------- "));
}

TEST_F(LogTest, ARunWithoutIdentifierShowsEmptyBrackets) {
    Check(Run("/N:S /T:I"), {.log = RunLog("/N:S /T:I", "", notRunningLines)});
}

TEST_F(LogTest, NothingIsLoggedWhenTheLogIsOff) {
    Set("chkWriteLog", "0");

    Check(Run("/N:S /I:1"), {});
    EXPECT_FALSE(FileIsThere(logFile()));
}

TEST_F(LogTest, LaterRunsAppend) {
    Run("/N:S /I:1");
    const std::string first = LogText();
    ProgramRun again(Wide(programPath), "/N:E /I:1");
    again.Finish();

    EXPECT_TRUE(LogText().starts_with(first));
    const std::vector<LogLine> lines = ParseLog(LogText());
    ASSERT_EQ(lines.size(), 10u);
    EXPECT_EQ(lines[4].runNumber, "17");
    EXPECT_EQ(lines[5].runNumber, "18");
    EXPECT_TRUE(lines[5].message.starts_with(std::string(68, '-') + " "));
}

TEST_F(LogTest, MissingFoldersAreMade) {
    EmptyFolder(L"C:\\ProgramData\\Halvorn Systems\\");
    RemoveDirectoryW(L"C:\\ProgramData\\Halvorn Systems");
    ASSERT_FALSE(FileIsThere(L"C:\\ProgramData\\Halvorn Systems"));

    Check(Run("/N:S /I:1"), {.log = RunLog("/N:S /I:1", "1", notRunningLines)});
}

TEST_F(LogTest, WhereItsFolderCannotBeMadeThereIsNoLogAndTheRunGoesOn) {
    const std::wstring maker = L"C:\\ProgramData\\Halvorn Systems";
    RemoveFolder(maker + L"\\");
    WriteFileText(maker, "in the way");

    ProgramRun run = Start("");
    const HWND window = run.WaitForWindow();
    EXPECT_EQ(ControlText(window, "txtLogPath"), "");
    PostMessageW(window, WM_CLOSE, 0, 0);

    Check(Finish(run), {.window = true});
    EXPECT_EQ(ReadFileText(maker), "in the way");
    EXPECT_TRUE(DeleteFileW(maker.c_str()));
}

TEST_F(LogTest, LinesOfALogWhoseFolderHasGoneAreLostAndTheRunGoesOn) {
    ProgramRun run = Start("");
    const HWND window = run.WaitForWindow();
    EXPECT_TRUE(WaitUntil([] { return LogText().ends_with("button disabled.\r\n"); }));
    RemoveFolder(L"C:\\ProgramData\\Halvorn Systems\\");
    PostMessageW(window, WM_CLOSE, 0, 0);

    Check(Finish(run), {.window = true});
    EXPECT_FALSE(FileIsThere(L"C:\\ProgramData\\Halvorn Systems"));
}

TEST_F(LogTest, ALockedLogLosesItsLinesButTheRunGoesOn) {
    GoldMine();
    MakeFolder(logFile());
    const KernelHandle held = HoldFileAlone(logFile());
    ASSERT_TRUE(held.valid());

    const Outcome run = Run("/N:S /C:5551234567 /T:I /I:3");

    Check(run, {.commands = Joined({startUpCommands,
                                    phoneCommands,
                                    {gmapi::CallerID("(555)123-4567", "1", "1"),
                                     gmapi::StatusMsg("Corvane found (555)123-4567 in a primary "
                                                      "contact record.")}})});
    EXPECT_EQ(OwnValue("PreviousStatus"), "18");
}

// The folder of the log belongs to all users.
TEST_F(LogTest, ALogThatIsALinkToAnotherFileIsNotWrittenToAndTheRunGoesOn) {
    const std::wstring target = std::wstring(dataFolder) + L"precious.txt";
    WriteFileText(target, "precious");
    MakeFolder(logFile());
    DeleteFileWhenFree(logFile());
    ASSERT_TRUE(CreateHardLinkW(logFile().c_str(), target.c_str(), nullptr));

    ProgramRun run(Wide(programPath), "/N:S /I:7");
    run.Finish();

    EXPECT_EQ(run.boxes(), Boxes());
    EXPECT_EQ(OwnValue("PreviousStatus"), "18");
    EXPECT_EQ(ReadFileText(target), "precious");
    DeleteFileWhenFree(logFile());
}

TEST_F(LogTest, SeveralRunsAtOnceWriteWholeLines) {
    constexpr int runs = 6;
    DeleteFileW(logFile().c_str());
    std::vector<ProgramRun> started;
    for (int i = 0; i < runs; ++i)
        started.emplace_back(Wide(programPath), "/N:S /I:call" + std::to_string(i));
    for (ProgramRun& run : started)
        run.Finish();

    const std::vector<LogLine> lines = ParseLog(LogText());
    EXPECT_EQ(lines.size(), 5u * runs);
    for (int i = 0; i < runs; ++i) {
        const std::string identifier = "call" + std::to_string(i);
        Lines ofRun;
        for (const LogLine& line : lines) {
            if (line.identifier == identifier)
                ofRun.push_back(line.message);
        }
        EXPECT_EQ(ofRun,
                  Joined({notRunningLines, {"Finished unloading form and closing program."}}));
    }
}

class RunNumberTest : public LogTest, public testing::WithParamInterface<RunNumberCase> {};

TEST_P(RunNumberTest, CountsTheRunsOfAVersion) {
    const RunNumberCase& each = GetParam();
    Set("PreviousStatus", each.stored);
    ExpectRunNumber(each.logged);

    Check(Run("/N:S /I:1"), {.log = RunLog("/N:S /I:1", "1", notRunningLines)});
    EXPECT_EQ(OwnValue("PreviousStatus"), each.storedAfterwards);
}

INSTANTIATE_TEST_SUITE_P(
    StoredNumbers, RunNumberTest,
    testing::Values(RunNumberCase{"Zero", "0", "0", "1"}, RunNumberCase{"Some", "41", "41", "42"},
                    RunNumberCase{"InBlanks", "  5 ", "5", "6"},
                    RunNumberCase{"TheGreatest", "1000000", "1000000", "1000001"},
                    RunNumberCase{"TooGreat", "1000001", "0", "1"},
                    RunNumberCase{"NoNumber", "many", "0", "1"},
                    RunNumberCase{"Empty", "", "0", "1"},
                    RunNumberCase{"BeyondALong", "99999999999", "0", "1"}),
    NameOf);

TEST_F(LogTest, AnUpgradeStartsTheNumbersAgain) {
    Set("LastVersionRun", "0.9.0.3");
    ExpectRunNumber("0");

    Check(Run("/N:S /I:1"), {.log = RunLog("/N:S /I:1", "1", notRunningLines)});
    EXPECT_EQ(OwnValue("LastVersionRun"), "1.0.0.1");
    EXPECT_EQ(OwnValue("PreviousStatus"), "0");

    Check(Run("/N:S /I:1"), {.log = RunLog("/N:S /I:1", "1", notRunningLines)});
    EXPECT_EQ(OwnValue("PreviousStatus"), "1");
}

}  // namespace
}  // namespace end_to_end
