#include <gtest/gtest.h>

#include "installer/FolderRights.h"
#include "installer/Places.h"
#include "support/windows/Files.h"
#include "support/windows/TemporaryFolder.h"

namespace corvane::installer {
namespace {

using test_support::TemporaryFolder;

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// A folder as a user makes it for everybody.
void MakeOpenFolder(std::wstring path) {
    ASSERT_TRUE(CreateDirectoryW(path.c_str(), nullptr));
    const Descriptor open(L"O:BAD:P(A;OICI;FA;;;WD)");
    ASSERT_EQ(SetNamedSecurityInfoW(path.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                    nullptr, open.rights(), nullptr),
              DWORD{ERROR_SUCCESS});
}

class PlacesTest : public testing::Test {
protected:
    TemporaryFolder temporary_;
    std::wstring folder_ = PathOnDisk(temporary_.path());
};

TEST_F(PlacesTest, APathTakesTheLettersOfTheDisk) {
    ASSERT_TRUE(CreateDirectoryW((folder_ + L"\\Made").c_str(), nullptr));
    std::wstring lower = folder_;
    CharLowerW(lower.data());

    EXPECT_EQ(PathOnDisk(lower + L"\\made\\New\\"), folder_ + L"\\Made\\New");
    EXPECT_EQ(PathOnDisk(lower + L"\\x\\..\\MADE"), folder_ + L"\\Made");
    EXPECT_EQ(PathOnDisk(L"c:\\"), L"C:\\");
}

TEST(CheckPathTest, RefusesWhatGoldMineOr3CXCouldNotStart) {
    for (const wchar_t* bad :
         {L"C:\\", L"C:\\My Folder", L"C:\\My Folder\\x", L"C:\\a,b", L"C:\\a%s",
          L"\\\\server\\share\\x", L"\\\\?\\C:\\x", L"x", L"", L"Q:\\x", L"C:\\a*"}) {
        EXPECT_EQ(CheckPath(bad), Verdict::Unsuitable) << testing::PrintToString(bad);
    }
    EXPECT_EQ(CheckPath(L"C:\\" + std::wstring(200, L'x')), Verdict::Unsuitable);
    EXPECT_EQ(CheckPath(L"C:\\CorvaneTo3CX"), Verdict::Good);
    EXPECT_EQ(CheckPath(L"C:\\Tools\\Corvane"), Verdict::Good);
}

TEST_F(PlacesTest, MakesTheFolderWithThoseAboveIt) {
    const std::wstring path = folder_ + L"\\a\\b";

    EXPECT_EQ(MakeProgramFolder(path, false), Verdict::Good);
    EXPECT_TRUE(Exists(path));
    // A second set-up, which knows nothing of the first one, finds it empty.
    EXPECT_EQ(MakeProgramFolder(path, false), Verdict::Good);
}

TEST_F(PlacesTest, KeepsAFolderWithSomethingInItOnlyWhenTheSetupMadeIt) {
    const std::wstring path = folder_ + L"\\a";
    ASSERT_EQ(MakeProgramFolder(path, false), Verdict::Good);
    ASSERT_TRUE(CreateDirectoryW((path + L"\\inside").c_str(), nullptr));

    EXPECT_EQ(MakeProgramFolder(path, false), Verdict::NotTrusted);
    EXPECT_EQ(MakeProgramFolder(path, true), Verdict::Good);
    EXPECT_TRUE(Exists(path + L"\\inside"));
}

TEST_F(PlacesTest, AFolderThatOthersMayWriteToIsNotTheSetupsOwnAnyMore) {
    const std::wstring path = folder_ + L"\\a";
    MakeOpenFolder(path);

    EXPECT_EQ(MakeProgramFolder(path, true), Verdict::NotTrusted);
    EXPECT_EQ(MakeProgramFolder(path + L"\\below", false), Verdict::NotTrusted);
    EXPECT_FALSE(Exists(path + L"\\below"));
}

TEST_F(PlacesTest, AFileInTheFoldersPlaceIsRefused) {
    const std::wstring path = folder_ + L"\\a";
    test_support::WriteFileText(path, "x");

    EXPECT_EQ(MakeProgramFolder(path, false), Verdict::NotTrusted);
    EXPECT_EQ(MakeProgramFolder(path, true), Verdict::NotTrusted);
}

TEST_F(PlacesTest, TheLogIsMadeOnceAndKept) {
    const std::wstring log = folder_ + L"\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log";
    std::wstring movedTo;

    ASSERT_EQ(MakeLog(folder_, movedTo), Verdict::Good);
    test_support::WriteFileText(log, "line");
    ASSERT_EQ(MakeLog(folder_, movedTo), Verdict::Good);

    EXPECT_EQ(test_support::ReadFileText(log), "line");
    EXPECT_EQ(movedTo, L"");
}

TEST_F(PlacesTest, ALogThatHasASecondNameIsMovedAside) {
    std::wstring movedTo;
    ASSERT_EQ(MakeLog(folder_, movedTo), Verdict::Good);
    const std::wstring log = folder_ + L"\\Halvorn Systems\\CorvaneTo3CX\\CorvaneTo3CX.log";
    ASSERT_TRUE(CreateHardLinkW((folder_ + L"\\theirs").c_str(), log.c_str(), nullptr));

    EXPECT_EQ(MakeLog(folder_, movedTo), Verdict::Good);

    EXPECT_EQ(movedTo, log + L".before-setup-1");
    EXPECT_TRUE(Exists(log));
}

TEST_F(PlacesTest, AFolderOfTheLogThatOthersMayWriteToIsMovedAside) {
    const std::wstring maker = folder_ + L"\\Halvorn Systems";
    ASSERT_TRUE(CreateDirectoryW((maker + L".before-setup-1").c_str(), nullptr));
    MakeOpenFolder(maker);
    std::wstring movedTo;

    EXPECT_EQ(MakeLog(folder_, movedTo), Verdict::Good);

    EXPECT_EQ(movedTo, maker + L".before-setup-2");
    EXPECT_TRUE(Exists(maker + L"\\CorvaneTo3CX\\CorvaneTo3CX.log"));
}

}  // namespace
}  // namespace corvane::installer
