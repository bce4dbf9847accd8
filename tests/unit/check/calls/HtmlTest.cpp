#include "check/calls/Html.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(Html, WhatWouldActInAPageIsEscaped) {
    EXPECT_EQ(HtmlText(L"<a href=\"x\">&amp;</a>"),
              L"&lt;a href=&quot;x&quot;&gt;&amp;amp;&lt;/a&gt;");
    EXPECT_EQ(HtmlText(L"a\x202e\x0b\x7f"), L"a???");
}

TEST(Html, APageIsAscii) {
    EXPECT_EQ(AsciiPage(L"<p>Gr\xfc\xdf\x65 \x2713</p>\n"), "<p>Gr&#252;&#223;e &#10003;</p>\n");
}

TEST(Html, HalvesOfACharacterAreJoined) {
    // Both are the same text, as Windows and as others keep it.
    EXPECT_EQ(AsciiPage(std::wstring{wchar_t{0xD83D}, wchar_t{0xDE00}}), "&#128512;");
    EXPECT_EQ(AsciiPage(std::wstring{wchar_t{0xD83D}, L'x'}), "&#65533;x");
    EXPECT_EQ(AsciiPage(std::wstring{wchar_t{0xDE00}}), "&#65533;");
}

}  // namespace
}  // namespace corvane
