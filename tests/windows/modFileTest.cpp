#include "platform/modFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include "platform/kit/Windows.h"
#include "platform/RunningProgram.h"
#include "seams/Clock.h"
#include "support/windows/Files.h"
#include "support/windows/Folders.h"
#include "support/windows/ReplacedImport.h"
#include "support/windows/SystemWords.h"
#include "support/windows/TemporaryFolder.h"
#include "unit/TestErrors.h"

#include <oleauto.h>

namespace corvane::test {
namespace {

using test_support::HoldFileAlone;
using test_support::KernelHandle;
using test_support::LinkedFolder;
using test_support::OpenExisting;
using test_support::ReadFileText;
using test_support::ReplacedImport;
using test_support::TemporaryFolder;

constexpr std::uint32_t callersMask = 167;

SYSTEMTIME Utc(WORD year, WORD month, WORD day, WORD hour, WORD minute = 0) {
    SYSTEMTIME time{};
    time.wYear = year;
    time.wMonth = month;
    time.wDay = day;
    time.wHour = hour;
    time.wMinute = minute;
    return time;
}

void SetLastWriteTime(const std::wstring& path, const SYSTEMTIME& utc) {
    FILETIME time{};
    ASSERT_TRUE(SystemTimeToFileTime(&utc, &time));
    const KernelHandle file =
        OpenExisting(path, FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE);
    ASSERT_TRUE(SetFileTime(file.get(), nullptr, nullptr, &time));
}

// The function itself, whatever stands in its place in this program.
template <class Function>
Function InKernel(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

class modFileTest : public testing::Test {
protected:
    std::wstring Make(std::wstring_view name, const SYSTEMTIME& utc) {
        const std::wstring path = folder.Write(name, "x");
        SetLastWriteTime(path, utc);
        return path;
    }
    NewestFile Search() const {
        return files.GetNewestFileInFolder(folder.path(), L"*.*", callersMask);
    }
    void MakeFolder(std::wstring_view name) const {
        ASSERT_TRUE(CreateDirectoryW(folder.file(name).c_str(), nullptr));
    }

    TemporaryFolder folder;
    modFile files;
};

TEST_F(modFileTest, FileExistsIsTrueForFilesOnly) {
    const std::wstring path = folder.Write(L"a file.txt", "");
    EXPECT_TRUE(files.FileExists(path));
    EXPECT_FALSE(files.FileExists(folder.file(L"absent.txt")));
    EXPECT_FALSE(files.FileExists(folder.path()));
    EXPECT_FALSE(files.FileExists(L""));
}

TEST_F(modFileTest, FolderExistsIsTrueForFoldersOnly) {
    const std::wstring path = folder.Write(L"a file.txt", "");
    EXPECT_TRUE(files.FolderExists(folder.path()));
    EXPECT_TRUE(files.FolderExists(folder.path() + L"\\"));
    EXPECT_FALSE(files.FolderExists(path));
    EXPECT_FALSE(files.FolderExists(folder.file(L"absent")));
    EXPECT_FALSE(files.FolderExists(L""));
}

TEST_F(modFileTest, PathsAreNeitherTrimmedNorExpanded) {
    folder.Write(L"a.txt", "");
    EXPECT_FALSE(files.FileExists(L" " + folder.file(L"a.txt")));
    EXPECT_FALSE(files.FolderExists(L"%TEMP%"));
}

TEST_F(modFileTest, AppendingCreatesTheFileAndAddsNoSeparator) {
    const std::wstring path = folder.file(L"log.txt");
    files.AppendToFile(path, L"a");
    files.AppendToFile(path, L"b");
    EXPECT_EQ(ReadFileText(path), "ab");
}

TEST_F(modFileTest, AppendedTextIsWrittenExactlyAsGiven) {
    const std::wstring path = folder.Write(L"log.txt", "old\r\n");
    files.AppendToFile(path, L"one\r\ntwo\n ");
    EXPECT_EQ(ReadFileText(path), "old\r\none\r\ntwo\n ");
}

TEST_F(modFileTest, TextIsAppendedInTheSystemCodePageAndTheRestIsReplaced) {
    const std::wstring path = folder.file(L"log.txt");
    files.AppendToFile(path, L"J\x00FCrgen \x20AC \x65E5\x672C");
    EXPECT_EQ(ReadFileText(path), "J\xFCrgen \x80 ??");
}

TEST_F(modFileTest, TwoWritersAtTheSameTimeKeepTheirLinesWhole) {
    constexpr int lines = 300;
    const std::wstring path = folder.file(L"log.txt");
    const auto write = [&](wchar_t letter) {
        for (int line = 0; line < lines; ++line)
            files.AppendToFile(path, std::wstring(60, letter) + L"\r\n");
    };

    std::thread other([&] { write(L'b'); });
    write(L'a');
    other.join();

    int whole = 0;
    std::ifstream stream{std::filesystem::path(path), std::ios::binary};
    for (std::string line; std::getline(stream, line); ++whole) {
        EXPECT_TRUE(line == std::string(60, 'a') + "\r" || line == std::string(60, 'b') + "\r")
            << line;
    }
    EXPECT_EQ(whole, 2 * lines);
}

TEST_F(modFileTest, AnotherInstanceMayHaveTheFileOpenForAppending) {
    const std::wstring path = folder.Write(L"log.txt", "");
    const KernelHandle other =
        OpenExisting(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE);
    DWORD written = 0;

    files.AppendToFile(path, L"mine\r\n");
    ASSERT_TRUE(WriteFile(other.get(), "other\r\n", 7, &written, nullptr));
    files.AppendToFile(path, L"mine\r\n");

    EXPECT_EQ(ReadFileText(path), "mine\r\nother\r\nmine\r\n");
}

TEST_F(modFileTest, FileThatIsBeingReadCanBeAppendedTo) {
    const std::wstring path = folder.Write(L"log.txt", "");
    const KernelHandle reader =
        OpenExisting(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    files.AppendToFile(path, L"x");
    EXPECT_EQ(ReadFileText(path), "x");
}

// Appending asks for no right to read: the log may be one that users can only add to.
TEST_F(modFileTest, FileThatMayNotBeReadCanBeAppendedTo) {
    const std::wstring path = folder.Write(L"log.txt", "");
    {
        const KernelHandle other = OpenExisting(path, FILE_APPEND_DATA, FILE_SHARE_WRITE);
        files.AppendToFile(path, L"mine\r\n");
    }
    EXPECT_EQ(ReadFileText(path), "mine\r\n");
}

TEST_F(modFileTest, AppendingToALockedFileIsPermissionDenied) {
    const std::wstring path = folder.Write(L"log.txt", "");
    const KernelHandle lock = HoldFileAlone(path);

    const RuntimeError error = ErrorOf([&] { files.AppendToFile(path, L"x"); });

    EXPECT_EQ(error.number, 70);
    EXPECT_EQ(error.description, L"Permission denied");
}

// Wine lets root write to a read-only file; to a folder it denies access as Windows does.
TEST_F(modFileTest, AppendingToAFolderIsPermissionDenied) {
    EXPECT_EQ(ErrorOf([&] { files.AppendToFile(folder.path(), L"x"); }).number, 70);
}

TEST_F(modFileTest, AppendingInAMissingFolderIsPathNotFound) {
    const RuntimeError error =
        ErrorOf([&] { files.AppendToFile(folder.file(L"absent\\log.txt"), L"x"); });

    EXPECT_EQ(error.number, 76);
    EXPECT_EQ(error.description, L"Path not found");
}

// What the system may answer where nothing of it can be staged: a folder in which root may write,
// too, and a full disk.
class RefusedAppendTest : public modFileTest {
protected:
    RuntimeError Append() {
        return ErrorOf([&] { files.AppendToFile(folder.file(L"log.txt"), L"a line\r\n"); });
    }
    std::string Written() { return ReadFileText(folder.file(L"log.txt")).value_or("<none>"); }

    static HANDLE WINAPI RefuseToOpen(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD,
                                      HANDLE) {
        SetLastError(code);
        return INVALID_HANDLE_VALUE;
    }
    static BOOL WINAPI RefuseToWrite(HANDLE, LPCVOID, DWORD, LPDWORD written, LPOVERLAPPED) {
        *written = 0;
        SetLastError(code);
        return FALSE;
    }
    // As much of a text as there is room for; no more is no error by itself.
    static BOOL WINAPI WriteLess(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written,
                                 LPOVERLAPPED) {
        constexpr DWORD most = 3;
        const DWORD taken = std::min({size, most, room});
        room -= taken;
        return InKernel<decltype(&WriteFile)>("WriteFile")(file, bytes, taken, written, nullptr);
    }

    static inline DWORD code = ERROR_SUCCESS;
    static inline DWORD room = 0;
};

TEST_F(RefusedAppendTest, AFolderThatMayNotBeWrittenToIsPermissionDenied) {
    const ReplacedImport refused("CreateFileW", &RefuseToOpen);
    code = ERROR_ACCESS_DENIED;
    EXPECT_EQ(Append().number, 70);
}

TEST_F(RefusedAppendTest, OtherRefusalsCarryTheSystemsNumberAndWords) {
    for (const DWORD each : {ERROR_WRITE_PROTECT, ERROR_DISK_FULL, ERROR_BAD_NETPATH}) {
        code = each;
        RuntimeError error;
        {
            const ReplacedImport refused("CreateFileW", &RefuseToOpen);
            error = Append();
        }
        EXPECT_EQ(error.number, HRESULT_FROM_WIN32(each));
        EXPECT_TRUE(test_support::SystemWords(each).starts_with(error.description));
    }
}

TEST_F(RefusedAppendTest, AFullDiskIsTold) {
    const ReplacedImport refused("WriteFile", &RefuseToWrite);
    code = ERROR_DISK_FULL;
    EXPECT_EQ(Append().number, HRESULT_FROM_WIN32(ERROR_DISK_FULL));
}

TEST_F(RefusedAppendTest, ATextThatIsTakenInPartsIsWrittenToItsEnd) {
    const ReplacedImport less("WriteFile", &WriteLess);
    room = 100;
    files.AppendToFile(folder.file(L"log.txt"), L"a line\r\n");
    EXPECT_EQ(Written(), "a line\r\n");
}

TEST_F(RefusedAppendTest, ATextOfWhichOnlyAPartIsTakenIsTold) {
    const ReplacedImport less("WriteFile", &WriteLess);
    room = 4;
    EXPECT_EQ(Append().number, HRESULT_FROM_WIN32(ERROR_DISK_FULL));
    EXPECT_EQ(Written(), "a li");
}

// The log's folder belongs to all users: each may make something else of it than the program would.
class StrangeLogTest : public modFileTest {
protected:
    static constexpr const wchar_t* log = L"maker\\program\\the.log";

    void ExpectRefused() {
        const RuntimeError error = ErrorOf([&] { files.AppendToFile(folder.file(log), L"line"); });
        EXPECT_EQ(error.number, 70);
        EXPECT_EQ(error.description, L"Permission denied (it leads to another place)");
    }
};

TEST_F(StrangeLogTest, AHardLinkToAnotherFileIsNotWrittenTo) {
    MakeFolder(L"maker");
    MakeFolder(L"maker\\program");
    const std::wstring target = folder.Write(L"target.txt", "precious");
    ASSERT_TRUE(CreateHardLinkW(folder.file(log).c_str(), target.c_str(), nullptr));
    ExpectRefused();
    ExpectRefused();
    EXPECT_EQ(ReadFileText(target), "precious");
}

TEST_F(StrangeLogTest, AFolderThatLeadsElsewhereGetsNoLog) {
    MakeFolder(L"target");
    MakeFolder(L"target\\program");
    {
        const LinkedFolder maker(folder.file(L"maker"), folder.file(L"target"));
        ExpectRefused();
    }
    EXPECT_FALSE(files.FileExists(folder.file(L"target\\program\\the.log")));

    MakeFolder(L"maker");
    const LinkedFolder program(folder.file(L"maker\\program"), folder.file(L"target"));
    ExpectRefused();
    EXPECT_FALSE(files.FileExists(folder.file(L"target\\the.log")));
}

TEST_F(StrangeLogTest, AFolderAboveMayHaveBeenMoved) {
    MakeFolder(L"moved");
    MakeFolder(L"moved\\maker");
    MakeFolder(L"moved\\maker\\program");
    const LinkedFolder data(folder.file(L"data"), folder.file(L"moved"));
    files.AppendToFile(folder.file(L"data\\maker\\PROGRAM\\the.log"), L"line");
    EXPECT_EQ(ReadFileText(folder.file(L"moved\\maker\\program\\the.log")), "line");
}

TEST_F(modFileTest, AFileIsCopiedToWhereNothingStands) {
    const std::wstring from = folder.Write(L"a.ini", "old");
    const std::wstring copy = folder.file(L"a.ini.bak");
    EXPECT_TRUE(files.CopyToNew(from, copy));
    folder.Write(L"a.ini", "new");
    EXPECT_TRUE(files.CopyToNew(from, copy));
    EXPECT_EQ(ReadFileText(copy), "old");
    EXPECT_FALSE(files.CopyToNew(from, folder.file(L"absent\\a.ini.bak")));
    EXPECT_FALSE(files.CopyToNew(folder.file(L"absent.ini"), folder.file(L"b.ini.bak")));
}

TEST_F(modFileTest, EmptyFolderHasNoNewestFile) {
    const NewestFile newest = Search();
    EXPECT_EQ(newest.name, L"");
    EXPECT_EQ(newest.filesSeen, 0);
}

TEST_F(modFileTest, WithoutAFileTheTimeIsTheBeginningOfFileTimes) {
    // 1601-01-01 00:00 UTC in the zone's own time.
    SYSTEMTIME utc = Utc(1601, 1, 1, 0);
    SYSTEMTIME local{};
    TIME_ZONE_INFORMATION zone{};
    double expected = 0;
    GetTimeZoneInformation(&zone);
    ASSERT_TRUE(SystemTimeToTzSpecificLocalTime(&zone, &utc, &local));
    ASSERT_TRUE(SystemTimeToVariantTime(&local, &expected));

    EXPECT_EQ(Search().modified, expected);
}

TEST_F(modFileTest, MissingFolderHasNoNewestFile) {
    const NewestFile newest =
        files.GetNewestFileInFolder(folder.file(L"absent"), L"*.*", callersMask);
    EXPECT_EQ(newest.name, L"");
    EXPECT_EQ(newest.filesSeen, 0);
}

TEST_F(modFileTest, FileInPlaceOfTheFolderHasNoNewestFile) {
    const std::wstring path = folder.Write(L"a.wav", "");
    EXPECT_EQ(files.GetNewestFileInFolder(path, L"*.*", callersMask).filesSeen, 0);
}

TEST_F(modFileTest, OneFileIsTheNewest) {
    Make(L"only (1).wav", Utc(2024, 3, 11, 10));
    const NewestFile newest = Search();
    EXPECT_EQ(newest.name, L"only (1).wav");
    EXPECT_EQ(newest.filesSeen, 1);
}

TEST_F(modFileTest, LatestLastWriteTimeWinsWhereverItStands) {
    Make(L"a.wav", Utc(2024, 3, 11, 10));
    Make(L"b.wav", Utc(2024, 3, 11, 12));
    Make(L"c.wav", Utc(2024, 3, 11, 11));
    const NewestFile newest = Search();
    EXPECT_EQ(newest.name, L"b.wav");
    EXPECT_EQ(newest.filesSeen, 3);
}

TEST_F(modFileTest, FilesWithoutAnExtensionCount) {
    Make(L"recording", Utc(2024, 3, 11, 10));
    EXPECT_EQ(Search().name, L"recording");
}

TEST_F(modFileTest, OfEqualTimesTheFirstEnumeratedIsTheResult) {
    for (const wchar_t* name : {L"c.wav", L"a.wav", L"b.wav"})
        Make(name, Utc(2024, 3, 11, 10));
    WIN32_FIND_DATAW first{};
    const HANDLE search = FindFirstFileW(folder.file(L"*.wav").c_str(), &first);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    FindClose(search);

    EXPECT_EQ(Search().name, first.cFileName);
}

TEST_F(modFileTest, NamesThatBeginWithADotAreLeftOut) {
    Make(L".profile", Utc(2024, 3, 11, 12));
    EXPECT_EQ(Search().name, L"");
    EXPECT_EQ(Search().filesSeen, 0);
    Make(L"a.wav", Utc(2024, 3, 11, 10));
    const NewestFile newest = Search();
    EXPECT_EQ(newest.name, L"a.wav");
    EXPECT_EQ(newest.filesSeen, 1);
}

class AttributeTest : public modFileTest, public testing::WithParamInterface<DWORD> {};

TEST_P(AttributeTest, FileCountsForTheAttributeThatItHas) {
    const std::wstring path = folder.Write(L"a.wav", "");
    const auto found = [&](DWORD mask) {
        return files.GetNewestFileInFolder(folder.path(), L"*.*", mask).name;
    };
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(found(callersMask), L"a.wav");
    EXPECT_EQ(found(GetParam()), L"");

    ASSERT_TRUE(SetFileAttributesW(path.c_str(), GetParam()));

    EXPECT_EQ(GetFileAttributesW(path.c_str()) & GetParam(), GetParam());
    EXPECT_EQ(found(callersMask), L"a.wav");
    EXPECT_EQ(found(GetParam()), L"a.wav");
    EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
}

// Wine keeps these three; to it every file is one to be archived.
INSTANTIATE_TEST_SUITE_P(Attributes, AttributeTest,
                         testing::Values(DWORD{FILE_ATTRIBUTE_HIDDEN},
                                         DWORD{FILE_ATTRIBUTE_READONLY},
                                         DWORD{FILE_ATTRIBUTE_SYSTEM}));

TEST_F(modFileTest, FileWithoutAnAttributeOfTheMaskIsLeftOut) {
    Make(L"a.wav", Utc(2024, 3, 11, 10));
    constexpr std::uint32_t temporaryOnly = 0x100;
    const NewestFile newest = files.GetNewestFileInFolder(folder.path(), L"*.*", temporaryOnly);
    EXPECT_EQ(newest.name, L"");
    EXPECT_EQ(newest.filesSeen, 0);
}

TEST_F(modFileTest, FoldersAreLeftOut) {
    MakeFolder(L"one");
    MakeFolder(L"two.wav");
    const NewestFile newest = Search();
    EXPECT_EQ(newest.name, L"");
    EXPECT_EQ(newest.filesSeen, 0);
}

// The form of a share's path, which needs no server here.
TEST_F(modFileTest, PathsThatBeginWithTwoBackslashesAreSearched) {
    Make(L"a.wav", Utc(2024, 3, 11, 10));
    Make(L"b.wav", Utc(2024, 3, 11, 12));
    const std::wstring share = L"\\\\?\\" + folder.path();
    EXPECT_TRUE(files.FolderExists(share));
    EXPECT_TRUE(files.FileExists(share + L"\\a.wav"));
    for (const wchar_t* end : {L"", L"\\"}) {
        const NewestFile newest = files.GetNewestFileInFolder(share + end, L"*.*", callersMask);
        EXPECT_EQ(newest.name, L"b.wav");
        EXPECT_EQ(newest.filesSeen, 2);
    }
}

TEST_F(modFileTest, AShareThatIsNotThereHasNoNewestFile) {
    const std::wstring share = L"\\\\no-server.invalid\\recordings";
    EXPECT_FALSE(files.FolderExists(share));
    const NewestFile newest = files.GetNewestFileInFolder(share, L"*.*", callersMask);
    EXPECT_EQ(newest.name, L"");
    EXPECT_EQ(newest.filesSeen, 0);
}

TEST_F(modFileTest, AFolderThatVanishesBeforeItIsSearchedHasNoNewestFile) {
    MakeFolder(L"recordings");
    Make(L"recordings\\a.wav", Utc(2024, 3, 11, 10));
    const std::wstring recordings = folder.file(L"recordings");
    ASSERT_TRUE(files.FolderExists(recordings));
    ASSERT_TRUE(DeleteFileW((recordings + L"\\a.wav").c_str()));
    ASSERT_TRUE(RemoveDirectoryW(recordings.c_str()));

    const NewestFile newest = files.GetNewestFileInFolder(recordings, L"*.*", callersMask);

    EXPECT_EQ(newest.name, L"");
    EXPECT_EQ(newest.filesSeen, 0);
}

// A share that goes away while it is read.
class BrokenSearchTest : public modFileTest {
protected:
    static BOOL WINAPI FindNextBroken(HANDLE search, LPWIN32_FIND_DATAW entry) {
        if (entriesLeft-- > 0)
            return InKernel<decltype(&FindNextFileW)>("FindNextFileW")(search, entry);
        SetLastError(code);
        return FALSE;
    }

    static inline int entriesLeft = 0;
    static inline DWORD code = ERROR_NETNAME_DELETED;
};

TEST_F(BrokenSearchTest, IsNotComplete) {
    for (const wchar_t* name : {L"a.wav", L"b.wav", L"c.wav"})
        Make(name, Utc(2024, 3, 11, 10));
    EXPECT_TRUE(Search().complete);
    const ReplacedImport broken("FindNextFileW", &FindNextBroken);
    for (const int entries : {0, 2, 3}) {
        entriesLeft = entries;
        EXPECT_FALSE(Search().complete) << entries;
    }
    // That is how it ends by itself.
    entriesLeft = 3;
    code = ERROR_NO_MORE_FILES;
    const NewestFile newest = Search();
    EXPECT_TRUE(newest.complete);
    EXPECT_EQ(newest.filesSeen, 2) << "behind the folder and the one above it";
}

TEST_F(modFileTest, TheLongestNameIsWhole) {
    const std::wstring name = std::wstring(251, L'x') + L".wav";
    const std::wstring path = L"\\\\?\\" + folder.file(name);
    std::ofstream{std::filesystem::path(path)} << "x";
    EXPECT_EQ(Search().name, name);
    EXPECT_TRUE(DeleteFileW(path.c_str()));
}

TEST_F(modFileTest, SubFoldersAreNotSearched) {
    MakeFolder(L"sub");
    Make(L"sub\\newer.wav", Utc(2024, 3, 11, 12));
    Make(L"older.wav", Utc(2024, 3, 11, 10));
    const NewestFile newest = Search();
    EXPECT_EQ(newest.name, L"older.wav");
    EXPECT_EQ(newest.filesSeen, 1);
}

TEST_F(modFileTest, TrailingBackslashMakesNoDifference) {
    Make(L"a.wav", Utc(2024, 3, 11, 10));
    Make(L"b.wav", Utc(2024, 3, 11, 12));
    const NewestFile newest =
        files.GetNewestFileInFolder(folder.path() + L"\\", L"*.*", callersMask);
    EXPECT_EQ(newest.name, L"b.wav");
    EXPECT_EQ(newest.filesSeen, 2);
    EXPECT_EQ(newest.modified, Search().modified);
}

TEST_F(modFileTest, PatternChoosesTheFiles) {
    Make(L"a.wav", Utc(2024, 3, 11, 10));
    Make(L"b.txt", Utc(2024, 3, 11, 12));
    const NewestFile newest = files.GetNewestFileInFolder(folder.path(), L"*.wav", callersMask);
    EXPECT_EQ(newest.name, L"a.wav");
    EXPECT_EQ(newest.filesSeen, 1);
}

TEST_F(modFileTest, NameOutsideTheCodePageIsKept) {
    Make(L"\x65E5\x672C.wav", Utc(2024, 3, 11, 10));
    EXPECT_EQ(Search().name, L"\x65E5\x672C.wav");
}

// In whichever season the search runs.
class modFileDateTest : public modFileTest {
protected:
    void SetUp() override {
        GetTimeZoneInformation(&zone);
        ASSERT_NE(zone.DaylightDate.wMonth, zone.StandardDate.wMonth)
            << "these tests need a zone with a summer time; ctest sets one by TZ";
        ASSERT_NE(zone.DaylightBias, zone.StandardBias);
    }
    // 12:30 UTC of the 15th, moved by that many minutes: biases lead from local time to UTC.
    static double Expected(int month, LONG bias) {
        LocalTimeMs time;
        time.year = 2024;
        time.month = month;
        time.day = 15;
        time.hour = 12;
        time.minute = 30;
        return AutomationDate(time) - bias / 1440.0;
    }
    [[nodiscard]] bool IsNorthern() const {
        return zone.DaylightDate.wMonth < zone.StandardDate.wMonth;
    }

    TIME_ZONE_INFORMATION zone{};
};

TEST_F(modFileDateTest, AFileOfJanuaryIsShownInTheTimeOfItsSeason) {
    Make(L"a.wav", Utc(2024, 1, 15, 12, 30));
    const LONG bias = zone.Bias + (IsNorthern() ? zone.StandardBias : zone.DaylightBias);
    EXPECT_NEAR(Search().modified, Expected(1, bias), 1.0 / 86400);
}

TEST_F(modFileDateTest, AFileOfJulyIsShownInTheTimeOfItsSeason) {
    Make(L"a.wav", Utc(2024, 7, 15, 12, 30));
    const LONG bias = zone.Bias + (IsNorthern() ? zone.DaylightBias : zone.StandardBias);
    EXPECT_NEAR(Search().modified, Expected(7, bias), 1.0 / 86400);
}

TEST_F(modFileTest, AHundredThousandFilesAreSearchedInOnePass) {
    // Made by the build.
    const std::wstring recordings = RunningProgramInfo(0, 0, 0).folder + L"\\" RECORDINGS_FOLDER;
    SetLastWriteTime(recordings + L"\\call 77777.wav", Utc(2100, 1, 1, 0));

    const ULONGLONG begin = GetTickCount64();
    const NewestFile newest = files.GetNewestFileInFolder(recordings, L"*.*", callersMask);
    const ULONGLONG taken = GetTickCount64() - begin;

    EXPECT_EQ(newest.name, L"call 77777.wav");
    EXPECT_EQ(newest.filesSeen, 100'000);
    // Looking through all of them for each of them would take hours.
    EXPECT_LT(taken, 120'000U) << "milliseconds";
}

TEST_F(modFileTest, MakingAFolderThatIsThereSucceedsAndOneWithoutParentDoesNot) {
    EXPECT_TRUE(files.MakeFolder(folder.file(L"new")));
    EXPECT_TRUE(files.FolderExists(folder.file(L"new")));
    EXPECT_TRUE(files.MakeFolder(folder.file(L"new")));
    EXPECT_FALSE(files.MakeFolder(folder.file(L"absent\\new")));
    folder.Write(L"a file", "");
    EXPECT_FALSE(files.MakeFolder(folder.file(L"a file")));
}

}  // namespace
}  // namespace corvane::test
