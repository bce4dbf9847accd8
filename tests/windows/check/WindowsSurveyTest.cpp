#include "check/platform/WindowsSurvey.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "support/windows/Files.h"
#include "support/windows/TemporaryFolder.h"
#include "support/windows/Waiting.h"
#include "util/RuntimeError.h"
#include "windows/RegistrySandbox.h"

namespace corvane::test {
namespace {

using namespace test_support;

// What shows that a file or folder was changed.
std::uint64_t LastWriteTime(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    EXPECT_TRUE(GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data));
    return ULARGE_INTEGER{{data.ftLastWriteTime.dwLowDateTime, data.ftLastWriteTime.dwHighDateTime}}
        .QuadPart;
}

class WindowsSurveyTest : public testing::Test {
protected:
    WindowsSurvey survey;
    TemporaryFolder folder;
};

TEST_F(WindowsSurveyTest, RightsOfOwnProcessAreKnown) {
    EXPECT_TRUE(survey.Elevated(GetCurrentProcessId()).has_value());
    EXPECT_FALSE(survey.Elevated(0xFFFFFFF0).has_value());
}

TEST_F(WindowsSurveyTest, AFolderIsAskedWithoutBeingChanged) {
    const std::uint64_t before = LastWriteTime(folder.path());
    EXPECT_TRUE(survey.MayAddTo(folder.path()));
    EXPECT_TRUE(survey.MayList(folder.path()));
    EXPECT_TRUE(survey.MayList(folder.pathWithBackslash()));
    EXPECT_FALSE(survey.MayAddTo(folder.file(L"none")));
    EXPECT_FALSE(survey.MayList(folder.file(L"none")));
    EXPECT_EQ(LastWriteTime(folder.path()), before);
}

TEST_F(WindowsSurveyTest, AFileIsAskedWithoutBeingChanged) {
    const std::wstring file = folder.Write(L"a.log", "line");
    AgeFile(file, 100);
    const std::uint64_t before = LastWriteTime(file);
    EXPECT_EQ(survey.WhyNotAppendTo(file), L"");
    EXPECT_EQ(LastWriteTime(file), before);
    EXPECT_EQ(ReadFileText(file), "line");
}

TEST_F(WindowsSurveyTest, AFileThatIsNotThereIsNotMade) {
    EXPECT_EQ(survey.WhyNotAppendTo(folder.file(L"a.log")), L"");
    EXPECT_EQ(survey.WhyNotAppendTo(folder.file(L"one\\two\\a.log")), L"");
    EXPECT_FALSE(FileIsThere(folder.file(L"a.log")));
    EXPECT_EQ(GetFileAttributesW(folder.file(L"one").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(WindowsSurveyTest, AFileThatMayNotBeWrittenSaysWhy) {
    const std::wstring file = folder.Write(L"a.log", "line");
    {
        const KernelHandle held = HoldFileAgainstWriting(file);
        EXPECT_EQ(survey.WhyNotAppendTo(file), L"Permission denied");
    }
    EXPECT_EQ(survey.WhyNotAppendTo(file), L"");
    EXPECT_NE(survey.WhyNotAppendTo(L"Q:\\none\\two\\a.log"), L"");
}

TEST_F(WindowsSurveyTest, BoxesAreReadAndLeftAlone) {
    EXPECT_TRUE(survey.BoxesOf(GetCurrentProcessId()).empty());
    std::thread asker([] { MessageBoxW(nullptr, L"Okay to go?", L"of the survey's test", MB_OK); });
    std::vector<std::wstring> boxes;
    EXPECT_TRUE(WaitUntil([&] {
        boxes = survey.BoxesOf(GetCurrentProcessId());
        return !boxes.empty() && !boxes.front().empty();
    }));
    EXPECT_EQ(boxes, std::vector<std::wstring>{L"Okay to go?"});
    EXPECT_TRUE(survey.BoxesOf(0xFFFFFFF0).empty());
    const HWND box = FindWindowW(nullptr, L"of the survey's test");
    EXPECT_NE(box, nullptr) << "the box is gone";
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    asker.join();
}

TEST_F(WindowsSurveyTest, AMissingAutomationClassIsError429) {
    const RegistrySandbox empty(HKEY_CLASSES_ROOT);
    try {
        survey.ReadAutomationClass();
        ADD_FAILURE() << "there is a class";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number, ErrorNumber::CannotCreateObject);
    }
}

// As Windows' own functions for it tell.
std::wstring VersionBySystem(const wchar_t* file) {
    std::vector<char> bytes(GetFileVersionInfoSizeW(file, nullptr));
    void* found = nullptr;
    UINT size = 0;
    EXPECT_TRUE(GetFileVersionInfoW(file, 0, static_cast<DWORD>(bytes.size()), bytes.data()));
    EXPECT_TRUE(VerQueryValueW(bytes.data(), L"\\", &found, &size));
    const auto* const info = static_cast<const VS_FIXEDFILEINFO*>(found);
    return std::to_wstring(HIWORD(info->dwFileVersionMS)) + L"." +
           std::to_wstring(LOWORD(info->dwFileVersionMS)) + L"." +
           std::to_wstring(HIWORD(info->dwFileVersionLS)) + L"." +
           std::to_wstring(LOWORD(info->dwFileVersionLS));
}

TEST_F(WindowsSurveyTest, TheVersionOfAFileIsRead) {
    const std::wstring version = VersionBySystem(L"C:\\windows\\system32\\oleaut32.dll");
    EXPECT_GT(version.size(), 6u);
    EXPECT_EQ(survey.FileVersion(L"oleaut32.dll"), version);
    EXPECT_EQ(survey.FileVersion(L"C:\\windows\\system32\\oleaut32.dll"), version);
}

TEST_F(WindowsSurveyTest, AFileWithoutAVersionHasNone) {
    EXPECT_EQ(survey.FileVersion(folder.file(L"none.exe")), L"");
    EXPECT_EQ(survey.FileVersion(folder.Write(L"text.exe", "text")), L"");
    EXPECT_EQ(survey.FileVersion(folder.path()), L"");
    EXPECT_EQ(survey.FileVersion(L"corvane-none.dll"), L"");
}

}  // namespace
}  // namespace corvane::test
