#include "platform/WindowsShell.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/kit/Windows.h"
#include "platform/RunningProgram.h"
#include "support/windows/ReplacedImport.h"

#include <shellapi.h>

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
    EXPECT_EQ(shell.FolderPath(SpecialFolder::Desktop), Environment(L"USERPROFILE") + L"\\Desktop");
}

TEST(WindowsShellTest, FolderThatTheSystemDoesNotKnowIsEmpty) {
    EXPECT_EQ(WindowsShell().FolderPath(static_cast<SpecialFolder>(0xFE)), L"");
}

std::string askedFile;
std::string askedVerb;
int askedShow = 0;

HINSTANCE WINAPI KeepWhatIsAsked(HWND, LPCSTR verb, LPCSTR file, LPCSTR, LPCSTR, INT show) {
    askedVerb = verb;
    askedFile = file;
    askedShow = show;
    return nullptr;
}

TEST(WindowsShellTest, FilesAreOpenedInAShownWindow) {
    const test_support::ReplacedImport replaced("ShellExecuteA", &KeepWhatIsAsked);
    EXPECT_EQ(WindowsShell().OpenFile(L"C:\\GoldMine\\M\x00FCller.INI"), 0);
    EXPECT_EQ(askedVerb, "open");
    EXPECT_EQ(askedFile, "C:\\GoldMine\\M\xFCller.INI");
    EXPECT_EQ(askedShow, SW_SHOW);
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
