#include "check/Json.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Json, TextsAreQuotedAndAscii) {
    EXPECT_EQ(JsonText(L""), L"\"\"");
    EXPECT_EQ(JsonText(L"a \"b\" C:\\d"), L"\"a \\\"b\\\" C:\\\\d\"");
    EXPECT_EQ(JsonText(L"\r\n\x7f\xe4\x20ac"), L"\"\\u000d\\u000a\\u007f\\u00e4\\u20ac\"");
}

TEST(Json, WhatUtf16WritesInTwoStaysTwo) {
    EXPECT_EQ(JsonText(L"\U0001F4DE"), L"\"\\ud83d\\udcde\"");
}

}  // namespace
}  // namespace corvane
