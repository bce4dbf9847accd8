#include "platform/CrashHandler.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"
#include "support/windows/Process.h"
#include "support/windows/TemporaryFolder.h"

namespace corvane::test {
namespace {

constexpr DWORD fatalAppExit = 0x40000015;

class CrashHandlerTest : public testing::Test {
protected:
    CrashHandlerTest() {
        for (const wchar_t* level : {L"maker", L"maker\\program"})
            CreateDirectoryW(folder.file(level).c_str(), nullptr);
    }
    ~CrashHandlerTest() override { SetErrorMode(formerMode); }

    // The exit code: that of the exception, once Windows has taken over.
    DWORD Crash(const std::wstring& way) const {
        return test_support::RunToEnd(test_support::BuiltFile(L"tests\\windows_tests_crashing.exe"),
                                      L"\"" + way + L"\" \"" + log + L"\"");
    }
    [[nodiscard]] std::string Log() const {
        return test_support::ReadFileText(log).value_or("<none>");
    }
    // One line, whole, of the run.
    void ExpectLine(const std::string& message) const {
        EXPECT_TRUE(std::regex_match(
            Log(), std::regex(R"(17\t\d{8}\.\d{6}\.\d{3}\t\[00042\]:\tProgram crashed: )" +
                              message + R"(\.\r\n)")))
            << Log();
    }

    // The tests' program starts others, which take this over: no box of the system's comes.
    const UINT formerMode = SetErrorMode(SEM_NOGPFAULTERRORBOX);
    const test_support::TemporaryFolder folder;
    const std::wstring log = folder.file(L"maker\\program\\the.log");
};

const std::string inTheProgram = R"( in windows_tests_crashing\.exe at offset 0x[0-9A-F]{8})";

TEST_F(CrashHandlerTest, ACrashLeavesOneLineAndWindowsTakesOver) {
    EXPECT_EQ(Crash(L"no address"), EXCEPTION_ACCESS_VIOLATION);
    ExpectLine("exception 0xC0000005" + inTheProgram);
}

TEST_F(CrashHandlerTest, ACrashOfAnotherThreadDoesToo) {
    EXPECT_EQ(Crash(L"thread"), EXCEPTION_ACCESS_VIOLATION);
    ExpectLine("exception 0xC0000005" + inTheProgram);
}

// Wine ends a program whose stack is used up without asking it; Windows leaves it this much.
TEST_F(CrashHandlerTest, SomeStackIsLeftForTheLineOfOneThatIsUsedUp) {
    const CrashHandler handler;
    ULONG bytes = 0;
    ASSERT_TRUE(SetThreadStackGuarantee(&bytes));
    EXPECT_GE(bytes, 64u * 1024);
}

TEST_F(CrashHandlerTest, AnErrorThatNobodyMayThrowDoesToo) {
    EXPECT_EQ(Crash(L"terminate"), fatalAppExit);
    ExpectLine("exception 0x40000015" + inTheProgram);
}

TEST_F(CrashHandlerTest, AnErrorThatNobodyCatchesDoesToo) {
    EXPECT_EQ(Crash(L"uncaught"), fatalAppExit);
    ExpectLine("exception 0x40000015" + inTheProgram);
}

TEST_F(CrashHandlerTest, TheModuleIsWhoseCodeItIs) {
    EXPECT_EQ(Crash(L"own code"), 0xE0000042);
    ExpectLine("exception 0xE0000042 in kernel(base|32)\\.dll at offset 0x[0-9A-F]{8}");
}

TEST_F(CrashHandlerTest, AnErrorThatIsCaughtIsNoCrash) {
    EXPECT_EQ(Crash(L"caught"), 0u);
    EXPECT_EQ(Log(), "<none>");
}

TEST_F(CrashHandlerTest, TheFormerFilterIsAsked) {
    EXPECT_EQ(Crash(L"former filter"), 0xE0000042);
    EXPECT_EQ(test_support::ReadFileText(log + L".former"), "asked");
    ExpectLine("exception 0xE0000042 in .*");
}

TEST_F(CrashHandlerTest, WithoutTheHandlerThereIsNoLine) {
    EXPECT_EQ(Crash(L"handler gone"), EXCEPTION_ACCESS_VIOLATION);
    EXPECT_EQ(Log(), "<none>");
}

TEST_F(CrashHandlerTest, BeforeTheLogIsKnownThereIsNoLine) {
    EXPECT_EQ(Crash(L"too early"), 0xE0000042);
    EXPECT_EQ(Log(), "<none>");
}

TEST_F(CrashHandlerTest, TheLineIsAppendedToTheLog) {
    test_support::WriteFileText(log, "a line\r\n");
    Crash(L"own code");
    EXPECT_TRUE(Log().starts_with("a line\r\n17\t")) << Log();
}

TEST_F(CrashHandlerTest, ALogThatCannotBeWrittenKeepsNobodyFromEnding) {
    const test_support::KernelHandle held = test_support::HoldFileAlone(log);
    EXPECT_EQ(Crash(L"no address"), EXCEPTION_ACCESS_VIOLATION);
}

// The log's folder belongs to all users.
TEST_F(CrashHandlerTest, ALogThatLeadsElsewhereIsNotWrittenTo) {
    const std::wstring target = folder.Write(L"target.txt", "precious");
    ASSERT_TRUE(CreateHardLinkW(log.c_str(), target.c_str(), nullptr));
    EXPECT_EQ(Crash(L"no address"), EXCEPTION_ACCESS_VIOLATION);
    EXPECT_EQ(test_support::ReadFileText(target), "precious");
}

}  // namespace
}  // namespace corvane::test
