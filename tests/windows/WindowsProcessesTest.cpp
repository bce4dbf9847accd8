#include "platform/WindowsProcesses.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "platform/kit/Handles.h"
#include "platform/RunningProgram.h"
#include "support/windows/BuiltFiles.h"
#include "support/windows/Files.h"
#include "support/windows/ReplacedImport.h"
#include "support/windows/TemporaryFolder.h"
#include "support/windows/Waiting.h"
#include "util/Text.h"

namespace corvane::test {
namespace {

using test_support::FileIsThere;
using test_support::OwnProgram;
using test_support::ReadFileText;
using test_support::TemporaryFolder;
using test_support::WaitUntil;

constexpr ProcessId noProcess = 0xFFFFFFF0;

// Lets a started program go, at the latest when the test ends.
class LetGo {
public:
    LetGo()
        : name_(L"corvane-let-go-" + std::to_wstring(GetCurrentProcessId())),
          event_(CreateEventW(nullptr, TRUE, FALSE, name_.c_str())) {}
    ~LetGo() { SetEvent(event_.get()); }
    LetGo(const LetGo&) = delete;
    LetGo& operator=(const LetGo&) = delete;
    [[nodiscard]] const std::wstring& name() const { return name_; }

private:
    std::wstring name_;
    UniqueHandle event_;
};

TEST(WindowsProcessesTest, OwnProcessIsInTheOwnSession) {
    const WindowsProcesses processes;
    DWORD session = 0;
    ASSERT_TRUE(ProcessIdToSessionId(GetCurrentProcessId(), &session));

    EXPECT_EQ(processes.OwnProcessId(), GetCurrentProcessId());
    const auto result = processes.SessionOf(processes.OwnProcessId());

    ASSERT_TRUE(result.value.has_value());
    EXPECT_EQ(*result.value, session);
    EXPECT_EQ(result.lastError, 0U);
}

DWORD askedAccess = 0;

HANDLE WINAPI KeepAskedAccess(DWORD access, WINBOOL, DWORD) {
    askedAccess = access;
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
}

// The limited right would be granted for an elevated GoldMine too, and hide that it is out of
// reach.
TEST(WindowsProcessesTest, AProcessIsOpenedWithTheRightThatAnElevatedOneRefuses) {
    const test_support::ReplacedImport replaced("OpenProcess", &KeepAskedAccess);
    const auto result = WindowsProcesses().OpenForQuery(1);
    EXPECT_EQ(askedAccess, DWORD{PROCESS_QUERY_INFORMATION});
    EXPECT_FALSE(result.value.has_value());
    EXPECT_EQ(result.lastError, DWORD{ERROR_ACCESS_DENIED});
}

TEST(WindowsProcessesTest, SessionOfNoProcessIsTheSystemsError) {
    const auto result = WindowsProcesses().SessionOf(noProcess);
    EXPECT_FALSE(result.value.has_value());
    EXPECT_NE(result.lastError, 0U);
}

TEST(WindowsProcessesTest, SnapshotHoldsTheOwnProgramInAFieldOf260Characters) {
    const auto entries = WindowsProcesses().Snapshot();

    const auto own = std::find_if(entries.begin(), entries.end(), [](const ProcessEntry& entry) {
        return entry.id == GetCurrentProcessId();
    });
    ASSERT_NE(own, entries.end());
    EXPECT_EQ(own->nameField.size(), 260U);
    const std::wstring path = OwnProgram();
    EXPECT_EQ(StripAtNull(own->nameField), path.substr(path.find_last_of(L'\\') + 1));
}

TEST(WindowsProcessesTest, EveryEntryOfTheSnapshotHasTheWholeField) {
    const auto entries = WindowsProcesses().Snapshot();
    ASSERT_GT(entries.size(), 1U);
    for (const ProcessEntry& entry : entries) {
        EXPECT_EQ(entry.nameField.size(), 260U);
        // A process that is just starting has no name yet, but its field ends like any other.
        EXPECT_NE(entry.nameField.find(L'\0'), std::wstring::npos);
    }
}

TEST(WindowsProcessesTest, OwnProcessTellsItsImagePath) {
    WindowsProcesses processes;

    const auto opened = processes.OpenForQuery(GetCurrentProcessId());

    ASSERT_TRUE(opened.value.has_value());
    EXPECT_EQ(opened.lastError, 0U);
    EXPECT_NE(*opened.value, 0);
    EXPECT_EQ(processes.ImagePath(*opened.value), OwnProgram());
}

TEST(WindowsProcessesTest, ProcessThatIsNotThereCannotBeOpened) {
    WindowsProcesses processes;
    const auto opened = processes.OpenForQuery(noProcess);
    EXPECT_FALSE(opened.value.has_value());
    EXPECT_EQ(opened.lastError, DWORD{ERROR_INVALID_PARAMETER});
}

TEST(WindowsProcessesTest, HandleThatIsNoneHasNoImagePath) {
    EXPECT_EQ(WindowsProcesses().ImagePath(0), std::nullopt);
}

TEST(WindowsProcessesTest, OpenedProcessStaysOpenUntilTheEnd) {
    auto processes = std::make_unique<WindowsProcesses>();
    const auto opened = processes->OpenForQuery(GetCurrentProcessId());
    ASSERT_TRUE(opened.value.has_value());
    const auto handle = reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(*opened.value));
    DWORD flags = 0;
    EXPECT_TRUE(GetHandleInformation(handle, &flags));

    processes.reset();

    EXPECT_FALSE(GetHandleInformation(handle, &flags));
}

TEST(WindowsProcessesTest, ProgramIsStartedHiddenAndNotWaitedFor) {
    WindowsProcesses processes;
    const TemporaryFolder folder;
    const LetGo letGo;
    const std::wstring answer = folder.file(L"started.txt");
    const std::wstring program =
        RunningProgramInfo(0, 0, 0).folder + L"\\windows_tests_started.exe";

    // It waits to be let go: a call that waits for its end would not come back.
    EXPECT_TRUE(processes.StartHidden(
        program, L"\"" + program + L"\" \"" + answer + L"\" " + letGo.name() + L" cmd:12345"));

    ASSERT_TRUE(WaitUntil([&] { return FileIsThere(answer); }));
    const std::string bytes = ReadFileText(answer).value_or("");
    const std::wstring text(reinterpret_cast<const wchar_t*>(bytes.data()),
                            bytes.size() / sizeof(wchar_t));
    EXPECT_EQ(text, L"0|no console|cmd:12345");
}

TEST(WindowsProcessesTest, MissingProgramIsNotStarted) {
    WindowsProcesses processes;
    EXPECT_FALSE(processes.StartHidden(L"C:\\no such folder\\no such program.exe",
                                       L"\"C:\\no such folder\\no such program.exe\" -cmd"));
    EXPECT_FALSE(processes.StartHidden(L"", L""));
}

// The command line alone would have the system look in its folders and on the PATH.
TEST(WindowsProcessesTest, NoOtherProgramIsLookedFor) {
    WindowsProcesses processes;
    EXPECT_FALSE(processes.StartHidden(L"windows_tests_started.exe", L"windows_tests_started.exe"));
    EXPECT_FALSE(processes.StartHidden(L"", L"\"windows_tests_started.exe\" -cmd"));
    EXPECT_FALSE(processes.StartHidden(L"C:\\no such folder\\cmd.exe", L"\"cmd.exe\" /c exit"));
}

}  // namespace
}  // namespace corvane::test
