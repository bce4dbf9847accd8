#include "gmapi/Envelope.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

struct Escaping {
    std::wstring plain;
    std::wstring escaped;
};

class EscapeTest : public testing::TestWithParam<Escaping> {};

TEST_P(EscapeTest, EveryMarkupCharacterBecomesItsEntity) {
    EXPECT_EQ(Escape(GetParam().plain), GetParam().escaped);
}

TEST_P(EscapeTest, UnescapingGivesTheTextBack) {
    EXPECT_EQ(Unescape(GetParam().escaped), GetParam().plain);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, EscapeTest,
    testing::Values(Escaping{L"", L""}, Escaping{L"plain text", L"plain text"},
                    Escaping{L"a&<b>", L"a&amp;&lt;b&gt;"}, Escaping{L"\"", L"&quot;"},
                    Escaping{L"'", L"&apos;"}, Escaping{L"&", L"&amp;"}, Escaping{L"<", L"&lt;"},
                    Escaping{L">", L"&gt;"}, Escaping{L"&&", L"&amp;&amp;"},
                    Escaping{L"&lt;", L"&amp;lt;"}, Escaping{L"&amp;", L"&amp;amp;"},
                    Escaping{L"O'Hara & \"Sons\"", L"O&apos;Hara &amp; &quot;Sons&quot;"},
                    Escaping{L"\r\n\t\x00FC\x20AC", L"\r\n\t\x00FC\x20AC"}));

TEST(UnescapeTest, AnEscapedEntityComesBackAsTheEntity) {
    EXPECT_EQ(Unescape(L"&amp;lt;"), L"&lt;");
    EXPECT_EQ(Unescape(L"&amp;gt;"), L"&gt;");
    EXPECT_EQ(Unescape(L"&amp;quot;"), L"&quot;");
    EXPECT_EQ(Unescape(L"&amp;apos;"), L"&apos;");
    EXPECT_EQ(Unescape(L"&amp;amp;"), L"&amp;");
}

TEST(UnescapeTest, LetterCaseCounts) {
    EXPECT_EQ(Unescape(L"&LT;&Amp;"), L"&LT;&Amp;");
}

TEST(UnescapeTest, WhatIsNoEntityStays) {
    EXPECT_EQ(Unescape(L"a & b &nbsp; &lt &#65;"), L"a & b &nbsp; &lt &#65;");
}

TEST(CommandTest, DataElementsStandInTheOrderGivenWithoutBlanksBetween) {
    EXPECT_EQ(Command(L"Move").Data(L"Area", L"3").Data(L"Command", L"A&B").Text(),
              L"<GMAPI call=\"Move\"><data name=\"Area\">3</data>"
              L"<data name=\"Command\">A&amp;B</data></GMAPI>");
}

TEST(CommandTest, RawDataIsNotEscaped) {
    EXPECT_EQ(Command(L"X").RawData(L"Text", L"&lt;").Text(),
              L"<GMAPI call=\"X\"><data name=\"Text\">&lt;</data></GMAPI>");
}

TEST(CommandTest, ACommandWithoutArgumentsIsAnEmptyElement) {
    EXPECT_EQ(EmptyCommand(L"GetActiveWindowsList"), L"<GMAPI call=\"GetActiveWindowsList\"/>");
}

TEST(CommandTest, APlainCommandHoldsItsTextItself) {
    EXPECT_EQ(PlainCommand(L"MenuCommand", L"CompleteScheduledCall"),
              L"<GMAPI call=\"MenuCommand\">CompleteScheduledCall</GMAPI>");
}

TEST(CommandTest, AFixedSuccessReplyIsSpelledOut) {
    EXPECT_EQ(SuccessReply(L"PopCalHistItem", L"Success"),
              L"<GMAPI call=\"PopCalHistItem\"><status code=\"1\">Success</status></GMAPI>");
}

struct Prefix {
    std::wstring call;
    std::wstring text;
    std::size_t length;
};

class SuccessPrefixTest : public testing::TestWithParam<Prefix> {};

TEST_P(SuccessPrefixTest, HasTheLengthStated) {
    EXPECT_EQ(GetParam().text.size(), GetParam().length);
}

TEST_P(SuccessPrefixTest, AloneOrWithAnythingBehindItIsSuccess) {
    EXPECT_TRUE(Succeeded(GetParam().text, GetParam().call));
    EXPECT_TRUE(Succeeded(GetParam().text + L"value</status></GMAPI>", GetParam().call));
    EXPECT_TRUE(Succeeded(GetParam().text + L" no XML at all", GetParam().call));
}

TEST_P(SuccessPrefixTest, OneCharacterLessIsFailure) {
    EXPECT_FALSE(Succeeded(GetParam().text.substr(0, GetParam().length - 1), GetParam().call));
}

TEST_P(SuccessPrefixTest, ABlankBeforeItIsFailure) {
    EXPECT_FALSE(Succeeded(L" " + GetParam().text, GetParam().call));
}

INSTANTIATE_TEST_SUITE_P(
    Calls, SuccessPrefixTest,
    testing::Values(Prefix{L"Macro", L"<GMAPI call=\"Macro\"><status code=\"1\">", 37},
                    Prefix{L"DataStream", L"<GMAPI call=\"DataStream\"><status code=\"1\">", 42},
                    Prefix{L"Open", L"<GMAPI call=\"Open\"><status code=\"1\">", 36},
                    Prefix{L"Move", L"<GMAPI call=\"Move\"><status code=\"1\">", 36},
                    Prefix{L"Read", L"<GMAPI call=\"Read\"><status code=\"1\">", 36},
                    Prefix{L"Replace", L"<GMAPI call=\"Replace\"><status code=\"1\">", 39},
                    Prefix{L"Unlock", L"<GMAPI call=\"Unlock\"><status code=\"1\">", 38},
                    Prefix{L"Close", L"<GMAPI call=\"Close\"><status code=\"1\">", 37},
                    Prefix{L"InsHist", L"<GMAPI call=\"InsHist\"><status code=\"1\">", 39},
                    Prefix{L"CallerID", L"<GMAPI call=\"CallerID\"><status code=\"1\">", 40}));

class NoSuccessTest : public testing::TestWithParam<std::wstring> {};

TEST_P(NoSuccessTest, EveryOtherReplyIsFailure) {
    EXPECT_FALSE(Succeeded(GetParam(), L"Macro"));
}

INSTANTIATE_TEST_SUITE_P(Replies, NoSuccessTest,
                         testing::Values(L"", L"False", L"1",
                                         L"<GMAPI call=\"Macro\"><status code=\"0\">",
                                         L"<GMAPI call=\"Macro\"><status code=\"10\">",
                                         L"<GMAPI call=\"Macro\"><status code=\"2\">",
                                         L"<GMAPI call=\"macro\"><status code=\"1\">",
                                         L"<GMAPI call=\"MACRO\"><status code=\"1\">",
                                         L"<gmapi call=\"Macro\"><status code=\"1\">",
                                         L"<GMAPI call=\"Macros\"><status code=\"1\">",
                                         L"<GMAPI call='Macro'><status code='1'>",
                                         L"<GMAPI call=\"Macro\"> <status code=\"1\">"));

}  // namespace
}  // namespace corvane::test
