#include "check/Table.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Table, ColumnsAreAsWideAsTheirWidestText) {
    Table table({{L"Call"}, {L"Seconds", Table::Side::Right}, {L"Outcome"}});
    table.Add({L"00042", L"0.4", L"found"});
    table.Add({L"7", L"12345.6", L"not found"});

    EXPECT_EQ(table.Text(),
              L"Call   Seconds  Outcome\n"
              L"00042      0.4  found\n"
              L"7      12345.6  not found\n");
}

TEST(Table, WithoutHeadsThereAreRowsOnly) {
    Table table({{}, {}});
    table.Add({L"a", L"b"});
    EXPECT_EQ(table.Text(), L"a  b\n");
}

TEST(Table, NothingStandsBehindTheLastCharacter) {
    Table table({{L"First"}, {L"Second"}});
    table.Add({L"only"});
    table.Add({L"", L"both"});
    EXPECT_EQ(table.Text(),
              L"First  Second\n"
              L"only\n"
              L"       both\n");
}

TEST(Table, WithoutRowsItIsEmpty) {
    Table table({Table::Column{}});
    EXPECT_TRUE(table.empty());
    EXPECT_EQ(table.Text(), L"");
}

TEST(Table, WhatWouldActOnTheScreenIsAQuestionMark) {
    Table table({{}, {}});
    table.Add({L"\x1b[31mred", L"a\nb\tc"});
    EXPECT_EQ(table.Text(), L"?[31mred  a?b?c\n");
    EXPECT_EQ(Printable(L"\x7f\x9b\x202e\x2066\xfeff\x200f|\xe4\x4e2d"), L"??????|\xe4\x4e2d");
}

}  // namespace
}  // namespace corvane
