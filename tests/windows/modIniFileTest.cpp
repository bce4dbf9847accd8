#include "platform/modIniFile.h"

#include <gtest/gtest.h>

#include <string>

#include "support/windows/Files.h"
#include "support/windows/TemporaryFolder.h"

namespace corvane::test {
namespace {

using test_support::FileIsThere;
using test_support::HoldFileAgainstWriting;
using test_support::KernelHandle;
using test_support::ReadFileText;
using test_support::TemporaryFolder;

class modIniFileTest : public testing::Test {
protected:
    TemporaryFolder folder;
    modIniFile iniFiles;
};

TEST_F(modIniFileTest, WrittenValueIsReadBack) {
    const std::wstring path = folder.file(L"user.ini");

    EXPECT_TRUE(iniFiles.WriteIniValue(L"Modem", L"DialCmd", L"C:\\x.exe ", path));

    EXPECT_EQ(ReadFileText(path), "[Modem]\r\nDialCmd=C:\\x.exe \r\n");
}

TEST_F(modIniFileTest, OtherEntriesStayWhenOneIsReplaced) {
    const std::wstring path =
        folder.Write(L"user.ini", "[Modem]\r\na=1\r\nb=2\r\n[Other]\r\nb=3\r\n");

    EXPECT_TRUE(iniFiles.WriteIniValue(L"Modem", L"b", L"new", path));

    EXPECT_EQ(iniFiles.ReadIniValue(L"Modem", L"a", path), L"1");
    EXPECT_EQ(iniFiles.ReadIniValue(L"Modem", L"b", path), L"new");
    EXPECT_EQ(iniFiles.ReadIniValue(L"Other", L"b", path), L"3");
}

TEST_F(modIniFileTest, LetterCaseOfSectionAndKeyDoesNotMatterButTheValuesDoes) {
    const std::wstring path = folder.Write(L"user.ini", "[MODEM]\r\ndialcmd=AbC\r\n");
    EXPECT_EQ(iniFiles.ReadIniValue(L"Modem", L"DialCmd", path), L"AbC");
}

TEST_F(modIniFileTest, ValueOf300CharactersIsCutAt254) {
    const std::wstring path = folder.Write(
        L"user.ini", "[S]\r\nk=" + std::string(253, 'x') + "yz" + std::string(45, 'z') + "\r\n");
    EXPECT_EQ(iniFiles.ReadIniValue(L"S", L"k", path), std::wstring(253, L'x') + L"y");
}

TEST_F(modIniFileTest, ValueOf254CharactersIsWhole) {
    const std::wstring path =
        folder.Write(L"user.ini", "[S]\r\nk=" + std::string(254, 'x') + "\r\n");
    EXPECT_EQ(iniFiles.ReadIniValue(L"S", L"k", path), std::wstring(254, L'x'));
}

TEST_F(modIniFileTest, WhatIsMissingReadsAsEmpty) {
    const std::wstring path = folder.Write(L"user.ini", "[S]\r\nk=v\r\n");
    EXPECT_EQ(iniFiles.ReadIniValue(L"S", L"absent", path), L"");
    EXPECT_EQ(iniFiles.ReadIniValue(L"Absent", L"k", path), L"");
    EXPECT_EQ(iniFiles.ReadIniValue(L"S", L"k", folder.file(L"absent.ini")), L"");
    EXPECT_EQ(iniFiles.ReadIniValue(L"S", L"k", folder.file(L"absent\\absent.ini")), L"");
}

TEST_F(modIniFileTest, RefusedWriteStillReportsSuccess) {
    const std::wstring path = folder.Write(L"user.ini", "[S]\r\nk=v\r\n");
    {
        const KernelHandle reader = HoldFileAgainstWriting(path);
        EXPECT_TRUE(iniFiles.WriteIniValue(L"S", L"k", L"new", path));
    }
    EXPECT_TRUE(iniFiles.WriteIniValue(L"S", L"k", L"new", folder.file(L"absent\\user.ini")));

    EXPECT_EQ(ReadFileText(path), "[S]\r\nk=v\r\n");
    EXPECT_FALSE(FileIsThere(folder.file(L"absent\\user.ini")));
}

TEST_F(modIniFileTest, TextIsStoredInTheSystemCodePage) {
    const std::wstring path = folder.file(L"user.ini");
    iniFiles.WriteIniValue(L"S", L"k", L"J\x00FCrgen", path);
    EXPECT_EQ(iniFiles.ReadIniValue(L"S", L"k", path), L"J\x00FCrgen");
    EXPECT_EQ(ReadFileText(path), "[S]\r\nk=J\xFCrgen\r\n");
}

}  // namespace
}  // namespace corvane::test
