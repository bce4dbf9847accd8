#include "util/BuiltInHtmlDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <limits>

namespace corvane::test {
namespace {

std::wstring WithFragment(const std::wstring& existing) {
    BuiltInHtmlDocument document;
    document.InsertAtStartOfBody(existing, L"<P>new</P>");
    EXPECT_TRUE(document.Complete());
    return document.Serialise();
}

struct Insertion {
    std::wstring before;  // of the old document, in front of the new fragment
    std::wstring behind;
};

class InsertionTest : public testing::TestWithParam<Insertion> {};

TEST_P(InsertionTest, TheFragmentBeginsTheBodyAndTheRestIsKeptAsItIs) {
    EXPECT_EQ(WithFragment(GetParam().before + GetParam().behind),
              GetParam().before + L"<P>new</P>" + GetParam().behind);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, InsertionTest,
    testing::Values(Insertion{L"<html><body>", L"old</body></html>"},
                    Insertion{L"<HTML><HEAD></HEAD>\r\n<BODY>", L"old\r\n</BODY></HTML>\r\n"},
                    Insertion{L"<Body leftMargin=1 bgcolor='#fff'>", L"old"},
                    Insertion{L"<body title='a > b' onload=\"x('>')\">", L"old"},
                    Insertion{L"<html><body title=it's>", L"old</body></html>"},
                    Insertion{L"<body title = 'a > b' it's>", L"old"},
                    Insertion{L"<body\r\n class=x >", L"old"}, Insertion{L"<body/>", L"old"},
                    Insertion{L"<!-- <body> --><body>", L"old"},
                    Insertion{L"<!DOCTYPE html><html><body>", L"old"},
                    Insertion{L"<script>var s = '<body>';</script><body>", L"old"},
                    Insertion{L"<STYLE>/* <body> */</style ><body>", L"old"},
                    Insertion{L"<head><title>t</title></head>", L"old without a body"},
                    Insertion{L"<html>", L"old without head and body"},
                    Insertion{L"<html><head></head>", L"<bodyguard>old</bodyguard>"},
                    Insertion{L"<body>", L"<b>unclosed <i x='<body>"},
                    Insertion{L"<body>", L"a & b &nbsp; \x00FC \x20AC <!-- open"},
                    Insertion{L"<body>", L"first<body>second"}, Insertion{L"<body>", L""}));

class FragmentTest : public testing::TestWithParam<std::wstring> {};

TEST_P(FragmentTest, IsWrappedIntoADocumentBehindTheNewFragment) {
    const std::wstring document = WithFragment(GetParam());
    const auto body = document.find(L"<BODY>");
    ASSERT_NE(body, std::wstring::npos);
    EXPECT_EQ(document.substr(body), L"<BODY><P>new</P>" + GetParam() + L"</BODY></HTML>");
    EXPECT_TRUE(document.starts_with(L"<HTML>"));
}

INSTANTIATE_TEST_SUITE_P(Texts, FragmentTest,
                         testing::Values(L"", L"plain text", L"<b>bold</b>", L"<!-- <body> -->",
                                         L"a < b > c", L"<bodyguard>", L"</body>", L"<", L"<!",
                                         L"text<head><html>no end of the head", L"&amp; \x00FC"));

struct Visible {
    std::wstring html;
    std::wstring text;
};

class VisibleHtmlTest : public testing::TestWithParam<Visible> {};

TEST_P(VisibleHtmlTest, IsWhatAReaderSees) {
    EXPECT_EQ(BuiltInHtmlDocument().VisibleText(GetParam().html), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, VisibleHtmlTest,
    testing::Values(
        Visible{L"", L""}, Visible{L"plain", L"plain"}, Visible{L"<b>bo</b>ld", L"bold"},
        Visible{L"<html><head><title>T</title></head><body>x</body></html>", L"x"},
        Visible{L"<HEAD><META name=x></HEAD><BODY>x</BODY>", L"x"},
        Visible{L"<head><title>never closed<body>x", L"x"},
        Visible{L"a<!-- hidden <b>too</b> -->b", L"ab"}, Visible{L"a<!-- never closed", L"a"},
        Visible{L"a<script>if (1 < 2) alert('</b>');</script>b", L"ab"},
        Visible{L"a<SCRIPT>x</Script>b", L"ab"}, Visible{L"a<style>p { }</style>b", L"ab"},
        Visible{L"a<script>never closed", L"a"}, Visible{L"<!DOCTYPE html><?xml?>x", L"x"},
        Visible{L"a<br>b<BR/>c", L"a\r\nb\r\nc"}, Visible{L"a<p>b</p><div>c</div>", L"a\r\nb\r\nc"},
        Visible{L"&lt;&gt;&amp;&quot;&apos;", L"<>&\"'"},
        Visible{L"a&nbsp;b",
                L"a\x00A0"
                L"b"},
        Visible{L"&nbsp;", L"\x00A0"}, Visible{L"&#65;&#x42;&#X63;", L"ABc"},
        Visible{L"&amp;lt;", L"&lt;"},
        Visible{L"&unknown; &lt & &#; &#xzz;", L"&unknown; &lt & &#; &#xzz;"},
        Visible{L"&#9999999999999;", L"&#9999999999999;"},
        Visible{L"1 < 2 and 3 > 2", L"1 < 2 and 3 > 2"}, Visible{L"a <", L"a <"},
        Visible{L"x<b title='never closed", L"x"}, Visible{L"<a title='a > b'>x</a>", L"x"},
        Visible{L"<a href=x'y>text</a> more", L"text more"}, Visible{L"a \r\n\t b", L"a b"},
        Visible{L"<p></p><div> </div><br>", L""}, Visible{L"  a  ", L"a"}));

TEST(BuiltInHtmlDocumentTest, CharactersBeyondTheFirstPlaneAreResolved) {
    EXPECT_EQ(BuiltInHtmlDocument().VisibleText(L"&#x1F600;"), L"\U0001F600");
}

// Of this process: a busy machine adds little to it.
double ProcessorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// Seconds that inserting into so many megabytes of that piece and reading them takes.
double SecondsFor(size_t megabytes, const std::wstring& piece) {
    std::wstring html;
    while (html.size() < megabytes * 1024 * 1024)
        html += piece;

    const double begin = ProcessorSeconds();
    BuiltInHtmlDocument document;
    document.InsertAtStartOfBody(html, L"<P>new</P>");
    EXPECT_GE(document.Serialise().size(), html.size());
    static_cast<void>(document.VisibleText(html));
    return ProcessorSeconds() - begin;
}

TEST(LargeHtmlTest, FiveMegabytesOfNotesTakeLessThanASecond) {
    double best = std::numeric_limits<double>::max();
    for (int i = 0; i < 10 && best >= 1; ++i)
        best = std::min(best, SecondsFor(5, L"<p>Called back &amp; left a message.</p>\r\n"));
    EXPECT_LT(best, 1.0);
}

// An hour, if each piece looked through all that follows it. Sanitizers cost seconds here.
TEST(LargeHtmlTest, HostileTextsTakeTimeInProportionToTheirLength) {
    for (const wchar_t* piece : {L"x", L" ", L"&", L"<", L"<!", L"<!--", L"<a '", L"<a x='",
                                 L"<script>", L"<script></", L"&nbsp;", L"<br>"}) {
        EXPECT_LT(SecondsFor(1, piece), 4.0) << testing::PrintToString(piece);
    }
}

}  // namespace
}  // namespace corvane::test
