#include "check/platform/WindowsReportFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/windows/Files.h"
#include "support/windows/TemporaryFolder.h"
#include "util/RuntimeError.h"

namespace corvane {
namespace {

using test_support::ReadFileText;
using test_support::TemporaryFolder;

class WindowsReportFilesTest : public testing::Test {
protected:
    std::wstring WhyNotWritten(const std::wstring& path) {
        try {
            files.WriteNew(path, "new");
        } catch (const RuntimeError& error) {
            return error.description;
        }
        return L"written";
    }
    std::ptrdiff_t FilesInFolder() {
        return std::distance(std::filesystem::directory_iterator(folder.path()), {});
    }

    TemporaryFolder folder;
    WindowsReportFiles files;
};

TEST_F(WindowsReportFilesTest, TheFileIsAllThatIsLeft) {
    const std::string bytes = std::string("PK\0\xff\r\n", 6) + std::string(3'000'000, 'x');
    const std::wstring path = folder.file(L"\x4e2d.zip");
    EXPECT_FALSE(files.Exists(path));
    files.WriteNew(path, bytes);
    EXPECT_TRUE(files.Exists(path));
    EXPECT_TRUE(ReadFileText(path) == bytes);
    EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(WindowsReportFilesTest, NoFileIsReplaced) {
    const std::wstring path = folder.Write(L"a.zip", "mine");
    EXPECT_TRUE(WhyNotWritten(path).starts_with(L"Could not write " + path + L": "));
    EXPECT_EQ(ReadFileText(path), "mine");
    EXPECT_EQ(FilesInFolder(), 1) << "what was written before is gone";
}

TEST_F(WindowsReportFilesTest, AFolderThatIsNotThereIsTold) {
    const std::wstring path = folder.file(L"none\\a.zip");
    EXPECT_TRUE(WhyNotWritten(path).starts_with(L"Could not write " + path + L": "));
    EXPECT_EQ(FilesInFolder(), 0);
    EXPECT_TRUE(WhyNotWritten(folder.path()).starts_with(L"Could not write "))
        << "nor is a folder a file";
}

TEST_F(WindowsReportFilesTest, APathGetsAllThatItLacks) {
    EXPECT_EQ(files.FullPath(L"C:\\a\\..\\b.zip"), L"C:\\b.zip");
    const std::wstring here = std::filesystem::current_path().wstring();
    EXPECT_EQ(files.FullPath(L"b.zip"), (std::filesystem::path(here) / L"b.zip").wstring());
    EXPECT_EQ(files.FullPath(L""), L"");
}

TEST_F(WindowsReportFilesTest, TextsAreUtf8) {
    EXPECT_EQ(files.Utf8(L"a\xe4\x4e2d"), "a\xc3\xa4\xe4\xb8\xad");
    EXPECT_EQ(files.Utf8(L""), "");
}

}  // namespace
}  // namespace corvane
