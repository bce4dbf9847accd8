// The programs beside the practice GoldMine.
#include "PracticeGoldMineTest.h"

namespace standin_tests {
namespace {

// Copies of the programs in a folder of their own, so that the log is theirs alone.
class CompanionTest : public testing::Test {
protected:
    void SetUp() override {
        for (const wchar_t* name : {L"CallTriggerCmd.exe", L"ring.exe"}) {
            ASSERT_TRUE(
                CopyFileW(StandinFile(name).c_str(), (folder_.path() + name).c_str(), TRUE));
        }
    }
    std::wstring File(const std::wstring& name) const { return folder_.path() + name; }
    DWORD Run(const std::wstring& program, const std::wstring& arguments) {
        Process process(File(program), arguments);
        EXPECT_TRUE(process.started());
        EXPECT_TRUE(process.WaitForEnd());
        return process.exitCode();
    }

    TemporaryFolder folder_;
};

TEST_F(CompanionTest, CallTriggerRecordsItsWholeCommandLine) {
    const std::string program = "\"" + Utf8(File(L"CallTriggerCmd.exe")) + "\" ";
    std::string escaped;
    for (const char character : program) {
        escaped += character == '\\' ? "\\\\" : std::string(1, character);
    }

    EXPECT_EQ(Run(L"CallTriggerCmd.exe", L"-cmd makecall:5551234567"), 0u);
    EXPECT_EQ(Run(L"CallTriggerCmd.exe", L"\u017c \"two words\""), 0u);

    EXPECT_EQ(ReadFileText(File(L"CallTriggerCmd.log")),
              escaped + "-cmd makecall:5551234567\n" + escaped + "\xC5\xBC \"two words\"\n");
}

TEST_F(CompanionTest, CallTriggerTakesItsTimeWhenAsked) {
    WriteFileText(File(L"CallTriggerCmd.delay"), "600\r\n");
    const ULONGLONG start = GetTickCount64();

    EXPECT_EQ(Run(L"CallTriggerCmd.exe", L""), 0u);

    EXPECT_GE(GetTickCount64() - start, 550u);
}

TEST_F(CompanionTest, RingSendsTheEventsOfACallInTurn) {
    struct Case {
        const wchar_t* arguments;
        std::vector<std::string> lines;
    };
    const Case cases[] = {
        {L"S 5551234567", {" /N:S /C:5551234567 /T:I /I:1001"}},
        {L"E 5551234567 /T:O /I:77", {" /N:E /C:5551234567 /T:O /I:77"}},
        {L"call 12 /CallerIdOnSOnly",
         {" /N:S /C:12 /T:I /I:1001", " /N:C /T:I /I:1001", " /N:E /T:I /I:1001"}},
    };
    for (const Case& entry : cases) {
        DeleteFileW(File(L"CallTriggerCmd.log").c_str());

        EXPECT_EQ(Run(L"ring.exe", L"\"" + File(L"CallTriggerCmd.exe") + L"\" " + entry.arguments),
                  0u);

        std::string log = ReadFileText(File(L"CallTriggerCmd.log"));
        for (const std::string& line : entry.lines) {
            const size_t end = log.find('\n');
            ASSERT_NE(end, std::string::npos);
            const size_t quote = log.rfind('"', end);
            EXPECT_EQ(log.substr(quote + 1, end - quote - 1), line);
            log.erase(0, end + 1);
        }
        EXPECT_EQ(log, "");
    }
}

TEST_F(CompanionTest, RingReportsMisuseAndMissingPrograms) {
    EXPECT_EQ(Run(L"ring.exe", L""), 2u);
    EXPECT_EQ(Run(L"ring.exe", L"x.exe Q 1"), 2u);
    EXPECT_EQ(Run(L"ring.exe", L"x.exe S 1 /X"), 2u);
    EXPECT_EQ(Run(L"ring.exe", L"missing.exe S 1"), 1u);
}

}  // namespace
}  // namespace standin_tests
