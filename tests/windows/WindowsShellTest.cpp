#include "platform/WindowsShell.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/kit/Windows.h"
#include "platform/RunningProgram.h"

namespace corvane::test {
namespace {

std::wstring Environment(const wchar_t* name) {
    wchar_t value[MAX_PATH] = {};
    const DWORD length = GetEnvironmentVariableW(name, value, MAX_PATH);
    return {value, length};
}

TEST(WindowsShellTest, SpecialFoldersAreTheUsersAndTheComputersApplicationData) {
    const WindowsShell shell;
    ASSERT_NE(Environment(L"ProgramData"), L"");
    ASSERT_NE(Environment(L"APPDATA"), L"");
    EXPECT_EQ(shell.FolderPath(SpecialFolder::CommonAppData), Environment(L"ProgramData"));
    EXPECT_EQ(shell.FolderPath(SpecialFolder::RoamingAppData), Environment(L"APPDATA"));
}

TEST(WindowsShellTest, FolderThatTheSystemDoesNotKnowIsEmpty) {
    EXPECT_EQ(WindowsShell().FolderPath(static_cast<SpecialFolder>(0xFE)), L"");
}

TEST(WindowsShellTest, FileThatWindowsKnowsHowToOpenIsOpened) {
    // Without arguments this program ends at once.
    const std::wstring program =
        RunningProgramInfo(0, 0, 0).folder + L"\\windows_tests_started.exe";
    constexpr int greatestError = 32;
    EXPECT_GT(WindowsShell().OpenFile(program), greatestError);
}

TEST(WindowsShellTest, MissingFileCannotBeOpened) {
    constexpr int fileNotFound = 2;  // SE_ERR_FNF
    EXPECT_EQ(WindowsShell().OpenFile(L"C:\\no such folder\\no such file.txt"), fileNotFound);
}

}  // namespace
}  // namespace corvane::test
