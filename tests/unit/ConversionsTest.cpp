#include "seams/Conversions.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>
#include <string>

#include "TestErrors.h"

namespace corvane::test {
namespace {

struct WholeCase {
    std::wstring text;
    std::int32_t value;
};

void PrintTo(const WholeCase& one, std::ostream* out) {
    *out << '"' << std::string(one.text.begin(), one.text.end()) << '"';
}

class WholeNumberTest : public testing::TestWithParam<WholeCase> {};

TEST_P(WholeNumberTest, BothSizesTakeIt) {
    EXPECT_EQ(LongFromText(GetParam().text), GetParam().value);
    EXPECT_EQ(IntegerFromText(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Texts, WholeNumberTest,
                         testing::Values(WholeCase{L"0", 0}, WholeCase{L"1", 1},
                                         WholeCase{L"-7", -7}, WholeCase{L"+7", 7},
                                         WholeCase{L" 5", 5}, WholeCase{L"5 ", 5},
                                         WholeCase{L"007", 7}, WholeCase{L"1e1", 10},
                                         WholeCase{L"1E2", 100}, WholeCase{L"1,000", 1000},
                                         WholeCase{L"32767", 32767}, WholeCase{L"-32768", -32768},
                                         WholeCase{L"1.4", 1}, WholeCase{L"1.6", 2},
                                         WholeCase{L".4", 0}));

INSTANTIATE_TEST_SUITE_P(HalvesGoToTheEvenNumber, WholeNumberTest,
                         testing::Values(WholeCase{L"0.5", 0}, WholeCase{L"1.5", 2},
                                         WholeCase{L"2.5", 2}, WholeCase{L"3.5", 4},
                                         WholeCase{L"-0.5", 0}, WholeCase{L"-1.5", -2},
                                         WholeCase{L"-2.5", -2}));

class NoNumberTest : public testing::TestWithParam<std::wstring> {};

TEST_P(NoNumberTest, DoesNotConvert) {
    const std::wstring text = GetParam();

    EXPECT_EQ(ErrorOf([&] { static_cast<void>(LongFromText(text)); }).number, 13);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(IntegerFromText(text)); }).number, 13);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(DoubleFromText(text)); }).number, 13);
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(BooleanFromText(text)); }).number, 13);
    EXPECT_FALSE(IsNumericText(text));
}

INSTANTIATE_TEST_SUITE_P(Texts, NoNumberTest,
                         testing::Values(L"", L" ", L"yes", L"abc", L"5x", L"x5", L"1.2.3", L"-",
                                         L"e", L"555 123 4567", L"#"));

TEST(ConversionsTest, WholeNumbersThatDoNotFitOverflow) {
    EXPECT_EQ(LongFromText(L"32768"), 32768);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(IntegerFromText(L"32768")); }).number, 6);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(IntegerFromText(L"-32769")); }).number, 6);
    EXPECT_EQ(LongFromText(L"2147483647"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(LongFromText(L"-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ErrorOf([] { static_cast<void>(LongFromText(L"2147483648")); }).number, 6);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(LongFromText(L"99999999999")); }).number, 6);
}

TEST(ConversionsTest, NumbersOfSixtyFourBitsFitWhereOthersDoNot) {
    EXPECT_EQ(LongLongFromText(L"99999999999"), 99999999999);
    EXPECT_EQ(LongLongFromText(L"-99999999999"), -99999999999);
    EXPECT_EQ(LongLongFromText(L" 2.5"), 2);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(LongLongFromText(L"1e30")); }).number, 6);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(LongLongFromText(L"soon")); }).number, 13);
}

TEST(ConversionsTest, DoublesComeBackInTheirShortestForm) {
    EXPECT_EQ(DoubleFromText(L"2.5"), 2.5);
    EXPECT_EQ(DoubleFromText(L"-1e-3"), -0.001);
    EXPECT_EQ(TextFromDouble(2.5), L"2.5");
    EXPECT_EQ(TextFromDouble(0.1), L"0.1");
    EXPECT_EQ(TextFromDouble(100), L"100");
    EXPECT_EQ(TextFromDouble(-3), L"-3");
}

TEST(ConversionsTest, BooleansAreWordsInAnyLetterCaseOrNumbers) {
    for (const wchar_t* text : {L"True", L"true", L"TRUE", L"tRuE", L"-1", L"1", L"2", L"0.5"})
        EXPECT_TRUE(BooleanFromText(text)) << std::wstring(text);
    for (const wchar_t* text : {L"False", L"false", L"FALSE", L"0", L"0.0"})
        EXPECT_FALSE(BooleanFromText(text)) << std::wstring(text);
}

TEST(ConversionsTest, BooleansAreWrittenAsWords) {
    EXPECT_EQ(TextFromBoolean(true), L"True");
    EXPECT_EQ(TextFromBoolean(false), L"False");
}

TEST(ConversionsTest, TheNumericTestIsGenerous) {
    for (const wchar_t* text : {L"1e1", L" 5", L"5 ", L"-3", L"0", L"2.5", L"99999999999"})
        EXPECT_TRUE(IsNumericText(text)) << std::wstring(text);
}

struct FormatCase {
    std::wstring text;
    std::wstring formatted;
};

void PrintTo(const FormatCase& one, std::ostream* out) {
    *out << '"' << std::string(one.text.begin(), one.text.end()) << '"';
}

class PhoneFormatTest : public testing::TestWithParam<FormatCase> {};

TEST_P(PhoneFormatTest, FillsThePlacesFromTheRight) {
    EXPECT_EQ(FormatNumericText(GetParam().text, L"(###)###-####"), GetParam().formatted);
}

INSTANTIATE_TEST_SUITE_P(CallerIDs, PhoneFormatTest,
                         testing::Values(FormatCase{L"5551234567", L"(555)123-4567"},
                                         FormatCase{L"5551234", L"()555-1234"},
                                         FormatCase{L"1234", L"()-1234"},
                                         FormatCase{L"123", L"()-123"},
                                         FormatCase{L"12345", L"()1-2345"},
                                         FormatCase{L"12345678", L"(1)234-5678"}));

INSTANTIATE_TEST_SUITE_P(ExtraDigitsGoBeforeTheFirstPlace, PhoneFormatTest,
                         testing::Values(FormatCase{L"15551234567", L"(1555)123-4567"},
                                         FormatCase{L"442079460000", L"(44207)946-0000"},
                                         FormatCase{L"123456789012345", L"(12345678)901-2345"}));

INSTANTIATE_TEST_SUITE_P(LeadingZerosAreLost, PhoneFormatTest,
                         testing::Values(FormatCase{L"0555123456", L"(55)512-3456"},
                                         FormatCase{L"0015551234", L"(1)555-1234"}));

INSTANTIATE_TEST_SUITE_P(NoNumbersStayAsTheyAre, PhoneFormatTest,
                         testing::Values(FormatCase{L"555 123 4567", L"555 123 4567"},
                                         FormatCase{L"", L""}, FormatCase{L"abc", L"abc"}));

INSTANTIATE_TEST_SUITE_P(DigitsBeyondADoublesAreKept, PhoneFormatTest,
                         testing::Values(FormatCase{L"1234567890123456", L"(123456789)012-3456"},
                                         FormatCase{L"12345678901234567", L"(1234567890)123-4567"},
                                         FormatCase{L" 12345678901234567", L"(1234567890)123-4567"},
                                         FormatCase{L"12345678901234567890",
                                                    L"(1234567890123)456-7890"}));

TEST(ConversionsTest, AnEmptyFormatChangesNothing) {
    EXPECT_EQ(FormatNumericText(L"5551234567", L""), L"5551234567");
    EXPECT_EQ(FormatNumericText(L"0555", L""), L"0555");
    EXPECT_EQ(FormatNumericText(L"abc", L""), L"abc");
}

TEST(ConversionsTest, OtherFormatsCopyTheirOtherCharacters) {
    EXPECT_EQ(FormatNumericText(L"5551234567", L"###-###-####"), L"555-123-4567");
    EXPECT_EQ(FormatNumericText(L"5551234567", L"##########"), L"5551234567");
}

TEST(ConversionsTest, SecondsHaveThreeDecimals) {
    EXPECT_EQ(FormatSeconds(0), L"0.000");
    EXPECT_EQ(FormatSeconds(0.25), L"0.250");
    EXPECT_EQ(FormatSeconds(1.5), L"1.500");
    EXPECT_EQ(FormatSeconds(12.3456), L"12.346");
    EXPECT_EQ(FormatSeconds(86399.999), L"86399.999");
}

TEST(ConversionsTest, ADateIsWrittenInTheGeneralForm) {
    EXPECT_EQ(GeneralDateText(45362.5), L"3/11/2024 12:00:00 PM");
    EXPECT_EQ(GeneralDateText(45362.0), L"3/11/2024") << "midnight is no time";
    EXPECT_EQ(GeneralDateText(45362.0 + 3661.0 / 86400.0), L"3/11/2024 1:01:01 AM");
}

}  // namespace
}  // namespace corvane::test
