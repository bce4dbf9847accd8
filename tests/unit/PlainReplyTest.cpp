#include "gmapi/PlainReply.h"

#include <gtest/gtest.h>

#include "fakes/TestApartment.h"
#include "fakes/TestXPathReader.h"

namespace corvane::test {
namespace {

constexpr const wchar_t* notPlain = L"(not plain)";

std::wstring Plain(const std::wstring& reply) {
    return std::wstring(PlainStatus(reply).value_or(notPlain));
}

std::wstring Reply(const std::wstring& text) {
    return L"<GMAPI call=\"Macro\"><status code=\"1\">" + text + L"</status></GMAPI>";
}

class PlainReplyTest : public testing::TestWithParam<const wchar_t*> {};

// Each is read as an XML reader reads it.
TEST_P(PlainReplyTest, TextWithoutMarkupIsFoundAndIsWhatAnXmlReaderSays) {
    [[maybe_unused]] const TestApartment apartment;
    const std::wstring reply = Reply(GetParam());

    EXPECT_EQ(Plain(reply), GetParam());
    EXPECT_EQ(TestXPathReader().SelectNode(reply, L"/GMAPI/status", NodeForm::Text,
                                           WhiteSpace::ReadersOwn),
              GetParam());
}

INSTANTIATE_TEST_SUITE_P(Texts, PlainReplyTest,
                         testing::Values(L"", L"2014.1", L"Success", L"C:\\Gold Mine\\",
                                         L"(555)123-4567 x89", L"O'Hara \"and\" Sons; 50% #1 = a/b",
                                         L"]]", L"~!@$^*_+{}|[]?,."));

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
                    L"<GMAPI call=\"Macro\"><status code=\"1\">x</status>", Reply(L" x"),
                    Reply(L"x "), Reply(L"x  y"), Reply(L"x\ty"), Reply(L"x\ny"), Reply(L"a&amp;b"),
                    Reply(L"a&b"), Reply(L"a>b"), Reply(L"a<b/>"), Reply(L"\x00FC"),
                    Reply(std::wstring(L"\0", 1)), Reply(L"\x0001"), Reply(L"\x007F")));

}  // namespace
}  // namespace corvane::test
