#include "gmapi/PlainReply.h"

#include <gtest/gtest.h>

#include "fakes/TestApartment.h"
#include "fakes/TestXPathReader.h"

namespace corvane::test {
namespace {

constexpr const wchar_t* notPlain = L"(not plain)";

std::wstring Plain(const std::wstring& reply) {
    return PlainStatus(reply).value_or(notPlain);
}

std::wstring MacroReply(const std::wstring& text) {
    return L"<GMAPI call=\"Macro\"><status code=\"1\">" + text + L"</status></GMAPI>";
}

struct Read {
    const wchar_t* written;
    const wchar_t* text;
};

class PlainReplyTest : public testing::TestWithParam<Read> {};

// Each is read as an XML reader reads it.
TEST_P(PlainReplyTest, TextWithoutMarkupIsFoundAndIsWhatAnXmlReaderSays) {
    [[maybe_unused]] const TestApartment apartment;
    const std::wstring reply = MacroReply(GetParam().written);

    EXPECT_EQ(Plain(reply), GetParam().text);
    EXPECT_EQ(TestXPathReader().SelectNode(reply, L"/GMAPI/status", NodeForm::Text,
                                           WhiteSpace::ReadersOwn),
              GetParam().text);
}

constexpr const wchar_t* ownSigns = L"O'Hara \"and\" Sons; 50% #1 = a/b";
constexpr const wchar_t* otherSigns = L"~!@$^*_+{}|[]?,.";

INSTANTIATE_TEST_SUITE_P(Texts, PlainReplyTest,
                         testing::Values(Read{L"", L""}, Read{L"2014.1", L"2014.1"},
                                         Read{L"Success", L"Success"},
                                         Read{L"C:\\Gold Mine\\", L"C:\\Gold Mine\\"},
                                         Read{L"(555)123-4567 x89", L"(555)123-4567 x89"},
                                         Read{ownSigns, ownSigns}, Read{L"]]", L"]]"},
                                         Read{otherSigns, otherSigns}));

INSTANTIATE_TEST_SUITE_P(References, PlainReplyTest,
                         testing::Values(Read{L"HK4Q$1&amp;amp;279GV375", L"HK4Q$1&amp;279GV375"},
                                         Read{L"&amp;", L"&"}, Read{L"&lt;&gt;", L"<>"},
                                         Read{L"a&quot;b&apos;c", L"a\"b'c"},
                                         Read{L"&amp;lt;x", L"&lt;x"}, Read{L"&amp;&amp;", L"&&"},
                                         Read{L"]]&gt;", L"]]>"}));

class NotPlainReplyTest : public testing::TestWithParam<std::wstring> {};

TEST_P(NotPlainReplyTest, IsLeftToAnXmlReader) {
    EXPECT_EQ(Plain(GetParam()), notPlain);
}

INSTANTIATE_TEST_SUITE_P(
    Replies, NotPlainReplyTest,
    testing::Values(L"", L"False", L"<GMAPI call=\"Macro\"/>",
                    L"<GMAPI call=\"Macro\"><status code=\"1\"/></GMAPI>",
                    L"<GMAPI call='Macro'><status code='1'>x</status></GMAPI>",
                    L"<GMAPI call=\"\"><status code=\"1\">x</status></GMAPI>",
                    L"<GMAPI call=\"a&b\"><status code=\"1\">x</status></GMAPI>",
                    L"<GMAPI call=\"Macro\"><status code=\"\">x</status></GMAPI>",
                    L"<GMAPI call=\"Macro\"><status code=\"-1\">x</status></GMAPI>",
                    L"<GMAPI call=\"Macro\"> <status code=\"1\">x</status></GMAPI>",
                    L"<GMAPI call=\"Macro\"><status code=\"1\">x</status></GMAPI>\r\n",
                    L"<GMAPI call=\"Macro\"><status code=\"1\">x</status><data>y</data></GMAPI>",
                    L"<gmapi call=\"Macro\"><status code=\"1\">x</status></gmapi>",
                    L"<GMAPI call=\"Macro\"><status code=\"1\">x</status>", MacroReply(L" x"),
                    MacroReply(L"x "), MacroReply(L"x  y"), MacroReply(L"x\ty"),
                    MacroReply(L"x\ny"), MacroReply(L"a&#38;b"), MacroReply(L"a&b"),
                    MacroReply(L"a &amp;b"), MacroReply(L"a&amp; b"), MacroReply(L"a&amp; "),
                    MacroReply(L"a&amp"), MacroReply(L"a&AMP;b"), MacroReply(L"a&nbsp;b"),
                    MacroReply(L"&"), MacroReply(L"a>b"), MacroReply(L"a<b/>"),
                    MacroReply(L"\x00FC"), MacroReply(std::wstring(L"\0", 1)),
                    MacroReply(L"\x0001"), MacroReply(L"\x007F")));

}  // namespace
}  // namespace corvane::test
