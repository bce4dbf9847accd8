#include "platform/RunningProgram.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "platform/kit/Windows.h"

namespace corvane::test {
namespace {

TEST(RunningProgramTest, FolderAndNameAreThoseOfTheExecutable) {
    const ProgramInfo info = RunningProgramInfo(1, 2, 3);

    EXPECT_EQ(info.executableName, L"windows_tests");
    EXPECT_FALSE(info.folder.ends_with(L"\\"));
    EXPECT_TRUE(std::filesystem::exists(info.folder + L"\\windows_tests.exe"));
    EXPECT_EQ(info.ExecutablePath(), info.folder + L"\\windows_tests.exe");
    EXPECT_EQ(info.VersionText(), L"1.2.0.3");
}

TEST(RunningProgramTest, RawCommandLineIsWhatStandsBehindTheProgramsPath) {
    const std::wstring raw = RawCommandLine();
    const std::wstring whole = ::GetCommandLineW();

    EXPECT_TRUE(whole.ends_with(raw));
    const std::wstring path = whole.substr(0, whole.size() - raw.size());
    EXPECT_NE(path.find(L"windows_tests"), std::wstring::npos);
    EXPECT_EQ(raw.find(L"windows_tests.exe"), std::wstring::npos);
    EXPECT_TRUE(raw.empty() || raw.front() == L' ') << "the blank before the arguments is kept";
}

}  // namespace
}  // namespace corvane::test
