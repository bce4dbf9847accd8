#include "check/calls/LogLine.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

TEST(LogLine, HasFourFields) {
    const auto line = ParseLogLine("17\t20240311.142305.087\t[00042]:\tFound\t]:\tme");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->runNumber, 17U);
    EXPECT_EQ(DateTimeText(line->time), L"2024-03-11 14:23:05");
    EXPECT_EQ(line->identifier, "00042");
    EXPECT_EQ(line->message, "Found\t]:\tme");
}

TEST(LogLine, IdentifierAndMessageMayBeEmpty) {
    const auto line = ParseLogLine("0\t20240311.142305.087\t[]:\t");
    ASSERT_TRUE(line);
    EXPECT_EQ(line->identifier, "");
    EXPECT_EQ(line->message, "");
}

TEST(LogLine, WhatHasAnotherFormIsNone) {
    for (const char* text :
         {"", "17", "17\t", "17\t20240311.142305.087", "17\t20240311.142305.087\t",
          "17\t20240311.142305.087\t[00042]: no tab", "17\t20240311.142305.087\t[00042",
          "17\t20240311.992305.087\t[]:\tx", "x17\t20240311.142305.087\t[]:\tx",
          "-1\t20240311.142305.087\t[]:\tx", "12345678\t20240311.142305.087\t[]:\tx",
          " 17\t20240311.142305.087\t[]:\tx", "17 20240311.142305.087\t[]:\tx"}) {
        EXPECT_FALSE(ParseLogLine(text)) << text;
    }
}

TEST(LogLine, OneThatBeginsWithinATextIsFound) {
    const std::string next = "18\t20240311.142305.087\t[1]:\tx";
    const auto within = [](const std::string& text) { return FindLineWithin(text); };
    EXPECT_EQ(within("Finished unl" + next), 12U);
    EXPECT_EQ(within(std::string("\0\0", 2) + next), 2U);
    EXPECT_EQ(within("a\tb\t" + next), 4U);
    EXPECT_EQ(within(next), std::string::npos) << "that is the line itself";
    EXPECT_EQ(within("x\t20240311.142305.087\t[1]:\tx"), std::string::npos) << "no number";
    EXPECT_EQ(within("x18\t20240311.142305.087"), std::string::npos) << "cut off";
    EXPECT_EQ(within("plain"), std::string::npos);
}

}  // namespace
}  // namespace corvane
