#include "util/Text.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

TEST(TextTest, OnlyOrdinaryBlanksAreTrimmed) {
    EXPECT_EQ(TrimBlanks(L"  a b  "), L"a b");
    EXPECT_EQ(TrimBlanks(L"   "), L"");
    EXPECT_EQ(TrimBlanks(L"\t a \x00A0"), L"\t a \x00A0");
    EXPECT_EQ(TrimTrailingBlanks(L" a "), L" a");
}

TEST(TextTest, TextBehindTheFirstNulIsStripped) {
    EXPECT_EQ(StripAtNull(std::wstring(L"abc\0junk", 8)), L"abc");
    EXPECT_EQ(StripAtNull(L" abc "), L"abc");
    EXPECT_EQ(StripAtNull(std::wstring(L" abc \0", 6)), L" abc ");
}

TEST(TextTest, TrailingBackslashIsAddedOnce) {
    EXPECT_EQ(AddTrailingBackslash(L"C:\\"), L"C:\\");
    EXPECT_EQ(AddTrailingBackslash(L"C:\\Rec"), L"C:\\Rec\\");
    EXPECT_EQ(AddTrailingBackslash(L""), L"\\");
}

TEST(TextTest, ArgumentsStandBehindTheProgramsPathQuotedOrNot) {
    EXPECT_EQ(ArgumentsOf(L"\"C:\\Program Files\\x.exe\" /N:S"), L" /N:S");
    EXPECT_EQ(ArgumentsOf(L"C:\\x.exe 555"), L" 555");
    EXPECT_EQ(ArgumentsOf(L"C:\\x.exe"), L"");
    EXPECT_EQ(ArgumentsOf(L"\"C:\\x.exe\""), L"");
    EXPECT_EQ(ArgumentsOf(L"\"C:\\x.exe"), L"");
}

TEST(TextTest, AnEmptyTextSplitsIntoNothing) {
    EXPECT_TRUE(Split(L"", L',').empty());
    EXPECT_EQ(Split(L"a,,b,", L','), (std::vector<std::wstring>{L"a", L"", L"b", L""}));
}

TEST(TextTest, ReplacingDoesNotReplaceItsOwnReplacement) {
    EXPECT_EQ(ReplaceAll(L"aaa", L"a", L"aa"), L"aaaaaa");
    EXPECT_EQ(ReplaceAll(L"abc", L"", L"x"), L"abc");
}

}  // namespace
}  // namespace corvane::test
