#include "check/Arguments.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

Arguments Parse(const std::vector<std::wstring>& given) {
    return {given, {{L"--json"}, {L"--last", true}}};
}

std::wstring WhyNot(const std::vector<std::wstring>& given) {
    try {
        const Arguments arguments = Parse(given);
        static_cast<void>(arguments.NumberOf(L"--last"));
        arguments.RefuseOthers();
    } catch (const WrongUse& wrong) {
        return wrong.text;
    }
    return L"understood";
}

TEST(Arguments, OptionsStandAnywhere) {
    const Arguments arguments = Parse({L"one", L"--json", L"two"});
    EXPECT_TRUE(arguments.Has(L"--json"));
    EXPECT_FALSE(arguments.Has(L"--last"));
    EXPECT_EQ(arguments.ValueOf(L"--last"), std::nullopt);
    EXPECT_EQ(arguments.others(), (std::vector<std::wstring>{L"one", L"two"}));
}

TEST(Arguments, AValueStandsBehindItsOptionOrInIt) {
    EXPECT_EQ(Parse({L"--last", L"12"}).NumberOf(L"--last"), 12);
    EXPECT_EQ(Parse({L"--last=7"}).NumberOf(L"--last"), 7);
    EXPECT_EQ(Parse({L"--last=7", L"--last", L"8"}).ValueOf(L"--last"), L"8");
    EXPECT_EQ(Parse({L"--last="}).ValueOf(L"--last"), L"");
    EXPECT_EQ(Parse({L"--last", L"--json"}).ValueOf(L"--last"), L"--json");
}

TEST(Arguments, BehindTwoDashesNothingIsAnOption) {
    const Arguments arguments = Parse({L"--", L"--json", L"--"});
    EXPECT_FALSE(arguments.Has(L"--json"));
    EXPECT_EQ(arguments.others(), (std::vector<std::wstring>{L"--json", L"--"}));
}

TEST(Arguments, OneDashIsNoOption) {
    EXPECT_EQ(Parse({L"-5551234567"}).others(), (std::vector<std::wstring>{L"-5551234567"}));
}

TEST(Arguments, WhatIsNotUnderstoodIsSaid) {
    EXPECT_EQ(WhyNot({L"--jsn"}), L"There is no option --jsn.");
    EXPECT_EQ(WhyNot({L"--json=yes"}), L"--json takes no value.");
    EXPECT_EQ(WhyNot({L"--last"}), L"--last takes a value.");
    EXPECT_EQ(WhyNot({L"--last", L"-1"}), L"--last takes a whole number, not \"-1\".");
    EXPECT_EQ(WhyNot({L"--last="}), L"--last takes a whole number, not \"\".");
    EXPECT_EQ(WhyNot({L"--last=1234567890"}), L"--last takes a whole number, not \"1234567890\".");
    EXPECT_EQ(WhyNot({L"x"}), L"Not understood: \"x\".");
    EXPECT_EQ(WhyNot({L"--last=999999999"}), L"understood");
}

}  // namespace
}  // namespace corvane
