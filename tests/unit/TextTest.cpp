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
    constexpr std::wstring_view own = L"C:\\Program Files\\x.exe";
    EXPECT_EQ(ArgumentsOf(L"\"C:\\Program Files\\x.exe\" /N:S", own), L" /N:S");
    EXPECT_EQ(ArgumentsOf(L"C:\\x.exe 555", own), L" 555");
    EXPECT_EQ(ArgumentsOf(L"C:\\x.exe", own), L"");
    EXPECT_EQ(ArgumentsOf(L"\"C:\\x.exe\"", own), L"");
    EXPECT_EQ(ArgumentsOf(L"\"C:\\x.exe", own), L"");
    EXPECT_EQ(ArgumentsOf(L"", own), L"");
}

// "Files\3CX\x.exe 5551234" must not be dialled.
TEST(TextTest, BlanksInTheProgramsUnquotedPathAreNoArguments) {
    constexpr std::wstring_view own = L"C:\\Program Files\\3CX\\x.exe";
    EXPECT_EQ(ArgumentsOf(L"C:\\Program Files\\3CX\\x.exe 5551234", own), L" 5551234");
    EXPECT_EQ(ArgumentsOf(L"c:\\program files\\3cx\\X.EXE\t/N:S /T:I", own), L"\t/N:S /T:I");
    EXPECT_EQ(ArgumentsOf(L"C:\\Program Files\\3CX\\x.exe", own), L"");
    EXPECT_EQ(ArgumentsOf(L"C:\\Program Files\\3CX\\x 5551234", own), L" 5551234");
    EXPECT_EQ(ArgumentsOf(L"C:\\Program Files\\3CX\\x.exefoo 5", own), L" Files\\3CX\\x.exefoo 5");
}

TEST(TextTest, EveryLineEndsInBothCharacters) {
    EXPECT_EQ(WithLineBreaks(L"a\nb\r\nc\n\nd\r"), L"a\r\nb\r\nc\r\n\r\nd\r");
    EXPECT_EQ(WithLineBreaks(L"\n"), L"\r\n");
    EXPECT_EQ(WithLineBreaks(L""), L"");
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
