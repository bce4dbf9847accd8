#include "platform/kit/AnsiText.h"

#include <gtest/gtest.h>

#include "platform/kit/Windows.h"

namespace corvane::test {
namespace {

constexpr unsigned westEuropean = 1252;

// They have a meaning to whoever reads the text: in a path, an INI file, a command.
TEST(AnsiTextTest, ACharacterThatOnlyLooksLikeAnotherIsReplacedByAQuestionMark) {
    // Full-width backslash, slash, quotation mark, equals sign and letter; the division slash.
    EXPECT_EQ(AnsiFromText(L"\xFF3C\xFF0F\xFF02\xFF1D\xFF21\x2215", westEuropean), "??????");
    EXPECT_EQ(AnsiFromText(L"J\x00FCrgen \x20AC", westEuropean), "J\xFCrgen \x80");
}

TEST(AnsiTextTest, WhereTheCodePageIsUtf8EveryCharacterIsKept) {
    EXPECT_EQ(AnsiFromText(L"J\x00FCrgen \xFF3C", CP_UTF8), "J\xC3\xBCrgen \xEF\xBC\xBC");
    EXPECT_EQ(AnsiFromText(L"", CP_UTF8), "");
}

}  // namespace
}  // namespace corvane::test
