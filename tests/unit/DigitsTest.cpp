#include "util/Digits.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace corvane::test {
namespace {

struct DigitsCase {
    std::wstring text;
    bool dialCharacters;
    bool keepBlanks;
    std::wstring digits;
};

void PrintTo(const DigitsCase& one, std::ostream* out) {
    *out << '"' << std::string(one.text.begin(), one.text.end()) << '"';
}

class ExtractDigitsTest : public testing::TestWithParam<DigitsCase> {};

TEST_P(ExtractDigitsTest, KeepsWhatIsAllowedInOrder) {
    const DigitsCase& one = GetParam();

    EXPECT_EQ(ExtractDigits(one.text, one.dialCharacters, one.keepBlanks), one.digits);
}

INSTANTIATE_TEST_SUITE_P(Texts, ExtractDigitsTest,
                         testing::Values(DigitsCase{L"(555) 123-4567", false, false, L"5551234567"},
                                         DigitsCase{L"(555) 123-4567", false, true, L"555 1234567"},
                                         DigitsCase{L" 1  2 ", false, true, L" 1  2 "},
                                         DigitsCase{L"*72#5", false, false, L"725"},
                                         DigitsCase{L"*72#5", true, false, L"*72#5"},
                                         DigitsCase{L"* 7 #", true, true, L"* 7 #"},
                                         DigitsCase{L"0123456789", false, false, L"0123456789"},
                                         DigitsCase{L"1.5e3,2+-", false, false, L"1532"},
                                         DigitsCase{L"Anonymous", true, false, L""},
                                         DigitsCase{L"", true, true, L""},
                                         DigitsCase{L"1\t2\x00A0"
                                                    L"3",
                                                    false, true, L"123"},
                                         // Digits of other scripts are not the digits 0 to 9.
                                         DigitsCase{L"\x0661\x00B2\xFF11"
                                                    L"7",
                                                    true, true, L"7"}));

}  // namespace
}  // namespace corvane::test
