#include "platform/MsxmlXPathReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/kit/Bstr.h"
#include "platform/kit/ComApartment.h"
#include "platform/kit/XmlDocument.h"
#include "support/windows/TemporaryFolder.h"
#include "util/RuntimeError.h"

namespace corvane::test {
namespace {

class MsxmlXPathReaderTest : public testing::Test {
protected:
    std::wstring Text(const std::wstring& reply, const std::wstring& expression,
                      WhiteSpace space = WhiteSpace::Kept) const {
        return reader.SelectNode(reply, expression, NodeForm::Text, space).value_or(L"(not XML)");
    }
    std::wstring Xml(const std::wstring& reply, const std::wstring& expression) const {
        return reader.SelectNode(reply, expression, NodeForm::Xml, WhiteSpace::Kept)
            .value_or(L"(not XML)");
    }

    ComApartment apartment;
    MsxmlXPathReader reader;
};

struct Query {
    const wchar_t* reply;
    const wchar_t* expression;
    const wchar_t* text;
};

class MsxmlXPathReaderQueryTest : public MsxmlXPathReaderTest,
                                  public testing::WithParamInterface<Query> {};

TEST_P(MsxmlXPathReaderQueryTest, GivesTheNodesText) {
    EXPECT_EQ(Text(GetParam().reply, GetParam().expression), GetParam().text);
}

constexpr const wchar_t* fetched =
    L"<GMAPI call=\"DataStream\"><status code=\"1\">Success</status><data name=\"Return\">"
    L"<data name=\"Rows\"><data name=\"RawReturn\">3000-0001&#10;a&#13;b</data></data></data>"
    L"</GMAPI>";
constexpr const wchar_t* rawReturn =
    L"/GMAPI[@call=\"DataStream\"]/data[@name=\"Return\"]/data[@name=\"Rows\"]"
    L"/data[@name=\"RawReturn\"]";

// What GoldMine answers about its windows: two of them, the second with two controls.
constexpr const wchar_t* windowList =
    L"<GMAPI call=\"GetActiveWindowsList\"><status code=\"1\"/><data name=\"WindowsList\">"
    L"<data name=\"window\"><data name=\"hWnd\">77</data></data>"
    L"<data name=\"window\"><data name=\"hWnd\">778</data><data name=\"Controls\">"
    L"<data name=\"control\"><data name=\"ID\">1016</data><data name=\"Text\">ref</data></data>"
    L"<data name=\"control\"><data name=\"ID\">1017</data><data name=\"Text\">&lt;p&gt;</data>"
    L"</data></data></data></data></GMAPI>";

INSTANTIATE_TEST_SUITE_P(
    Replies, MsxmlXPathReaderQueryTest,
    testing::Values(
        Query{L"<GMAPI call=\"Macro\"><status code=\"1\">9.2.1.5</status></GMAPI>",
              L"/GMAPI/status", L"9.2.1.5"},
        Query{L"<GMAPI call=\"Macro\"><status code=\"1\"></status></GMAPI>", L"/GMAPI/status", L""},
        Query{L"<GMAPI call=\"Macro\"><status code=\"1\">Smith &amp; &lt;Sons&gt;</status></GMAPI>",
              L"/GMAPI/status", L"Smith & <Sons>"},
        Query{L"<GMAPI call=\"Macro\"><status code=\"1\">M\x00FCller \x20AC</status></GMAPI>",
              L"/GMAPI/status", L"M\x00FCller \x20AC"},
        Query{
            L"<GMAPI call=\"Macro\"><status code=\"1\"/><data name=\"System Information\">"
            L"<x><data name=\"SQLUser\">sa</data><data name=\"License\">G-1</data></x></data>"
            L"</GMAPI>",
            L"/GMAPI[@call=\"Macro\"]/data[@name=\"System Information\"]//data[@name=\"License\"]",
            L"G-1"},
        Query{L"<GMAPI call=\"Macro\"><status code=\"0\">no</status></GMAPI>",
              L"/GMAPI[@call=\"DataStream\"]/status", L""},
        Query{fetched, rawReturn, L"3000-0001\na\rb"}, Query{fetched, L"/GMAPI/status", L"Success"},
        Query{windowList, L"/GMAPI/status/@code", L"1"}));

TEST_F(MsxmlXPathReaderTest, BlanksAndLineBreaksAtTheEndsOfATextAreKeptWhereAskedFor) {
    const std::wstring reply =
        L"<GMAPI call=\"Read\">\r\n <status code=\"1\">  </status>"
        L"<data name=\"Notes\"> \n two lines &#13;\n\n </data></GMAPI>";
    EXPECT_EQ(Text(reply, L"/GMAPI/data"), L" \n two lines \r\n\n ");
    EXPECT_EQ(Text(reply, L"/GMAPI/status"), L"  ");
    EXPECT_EQ(Xml(reply, L"/GMAPI/status"), L"<status code=\"1\">  </status>");

    EXPECT_EQ(Text(reply, L"/GMAPI/data", WhiteSpace::ReadersOwn), L"two lines");
    EXPECT_EQ(Text(reply, L"/GMAPI/status", WhiteSpace::ReadersOwn), L"");
}

// Notes as GoldMine writes them into a reply: the reader makes LF of a raw CR LF, and leaves what
// was written as a reference.
TEST_F(MsxmlXPathReaderTest, ARawLineEndIsOneCharacterAndAReferenceIsWhatItSays) {
    EXPECT_EQ(Text(L"<GMAPI><data>a\r\nb</data></GMAPI>", L"/GMAPI/data"), L"a\nb");
    EXPECT_EQ(Text(L"<GMAPI><data>a&#13;&#10;b&#13;\nc</data></GMAPI>", L"/GMAPI/data"),
              L"a\r\nb\r\nc");
}

TEST_F(MsxmlXPathReaderTest, NodeIsFoundAsMarkup) {
    EXPECT_EQ(Xml(L"<GMAPI call=\"Read\"><status code=\"1\"/><data name=\"A\">x &amp; y</data>"
                  L"</GMAPI>",
                  L"/GMAPI/data"),
              L"<data name=\"A\">x &amp; y</data>");
}

TEST_F(MsxmlXPathReaderTest, ControlsTextIsReadOutOfItsWindowsMarkup) {
    const std::wstring window = Xml(
        windowList,
        L"(/GMAPI/data[@name='WindowsList']/data[@name='window']/data[@name='hWnd'][.=778])/..");

    EXPECT_TRUE(window.starts_with(L"<data name=\"window\">"));
    EXPECT_EQ(window.find(L">77<"), std::wstring::npos) << "the other window";
    EXPECT_EQ(Text(window,
                   L"/data[@name='window']/data[@name='Controls']/data"
                   L"/data[@name='ID'][.=1017]/../data[@name='Text']"),
              L"<p>");
    EXPECT_EQ(Text(window,
                   L"/data[@name='window']/data[@name='Controls']/data"
                   L"/data[@name='ID'][.=1018]/../data[@name='Text']"),
              L"");
}

TEST_F(MsxmlXPathReaderTest, WindowThatIsNotListedHasNoMarkup) {
    EXPECT_EQ(Xml(windowList,
                  L"(/GMAPI/data[@name='WindowsList']/data[@name='window']"
                  L"/data[@name='hWnd'][.=7])/.."),
              L"");
}

TEST_F(MsxmlXPathReaderTest, MissingNodeHasNoMarkup) {
    EXPECT_EQ(Xml(L"<GMAPI call=\"Read\"/>", L"/GMAPI/data"), L"");
}

TEST_F(MsxmlXPathReaderTest, LetterCaseOfNamesCounts) {
    EXPECT_EQ(Text(L"<GMAPI><Status>x</Status></GMAPI>", L"/GMAPI/status"), L"");
}

TEST_F(MsxmlXPathReaderTest, WhatIsNotXmlIsToldFromWhatHoldsNothing) {
    EXPECT_EQ(Text(L"False", L"/GMAPI/status"), L"(not XML)");
    EXPECT_EQ(Text(L"", L"/GMAPI/status"), L"(not XML)");
    EXPECT_EQ(Text(L"<GMAPI><status>x</GMAPI>", L"/GMAPI/status"), L"(not XML)");
    EXPECT_EQ(Text(L"<GMAPI/><GMAPI/>", L"/GMAPI"), L"(not XML)");
    EXPECT_EQ(Text(std::wstring(L"<GMAPI>\0</GMAPI>", 16), L"/GMAPI"), L"(not XML)");
    EXPECT_EQ(Xml(L"not at all", L"/GMAPI/status"), L"(not XML)");
}

TEST_F(MsxmlXPathReaderTest, NodeWithoutANamespaceIsNotTheOneThatHasOne) {
    EXPECT_EQ(Text(L"<GMAPI><status xmlns=\"urn:other\">theirs</status><status>ours</status>"
                   L"</GMAPI>",
                   L"/GMAPI/status"),
              L"ours");
}

TEST_F(MsxmlXPathReaderTest, ReplyOfAMegabyteIsRead) {
    const std::wstring text(1 << 20, L'x');
    EXPECT_EQ(Text(L"<GMAPI><data name=\"Notes\">" + text + L"</data></GMAPI>",
                   L"/GMAPI/data[@name=\"Notes\"]"),
              text);
}

// A reply that names a file is not to bring its content into the program.
TEST_F(MsxmlXPathReaderTest, NothingExternalIsRead) {
    const test_support::TemporaryFolder folder;
    const std::wstring secret = folder.Write(L"secret.txt", "secret");
    std::wstring address = L"file:///" + secret;
    std::replace(address.begin(), address.end(), L'\\', L'/');
    const std::wstring reply = L"<!DOCTYPE GMAPI [<!ENTITY there SYSTEM \"" + address +
                               L"\">]><GMAPI><status>&there;</status></GMAPI>";
    EXPECT_EQ(Text(reply, L"/GMAPI/status").find(L"secret"), std::wstring::npos);

    for (const CLSID& version : {xmlDocument3, xmlDocument6}) {
        const auto document = NewXmlDocument(version);
        VARIANT_BOOL loaded = VARIANT_FALSE;
        EXPECT_GE(document->loadXML(Bstr(reply).get(), &loaded), S_OK);
        Bstr xml;
        EXPECT_GE(document->get_xml(xml.put()), S_OK);
        EXPECT_EQ(xml.text().find(L">secret"), std::wstring::npos) << "read";
    }
}

// Not every system's MSXML fetches by itself; what does is told not to.
TEST_F(MsxmlXPathReaderTest, ADocumentThatWouldFetchIsToldNotTo) {
    for (const CLSID& version : {xmlDocument3, xmlDocument6}) {
        const auto document = NewXmlDocument(version);
        ASSERT_EQ(document->put_resolveExternals(VARIANT_TRUE), S_OK);
        ASSERT_EQ(document->put_validateOnParse(VARIANT_TRUE), S_OK);

        FetchNothing(*document.Get());

        VARIANT_BOOL resolves = VARIANT_TRUE;
        VARIANT_BOOL validates = VARIANT_TRUE;
        EXPECT_EQ(document->get_resolveExternals(&resolves), S_OK);
        EXPECT_EQ(document->get_validateOnParse(&validates), S_OK);
        EXPECT_EQ(resolves, VARIANT_FALSE);
        EXPECT_EQ(validates, VARIANT_FALSE);
    }
}

TEST_F(MsxmlXPathReaderTest, WrongExpressionRaises) {
    EXPECT_THROW(static_cast<void>(Text(L"<GMAPI/>", L"/GMAPI[")), RuntimeError);
}

TEST_F(MsxmlXPathReaderTest, ReplyOfOneCallIsForgottenAtTheNext) {
    EXPECT_EQ(Text(L"<GMAPI><status>1</status></GMAPI>", L"/GMAPI/status"), L"1");
    EXPECT_EQ(Text(L"<GMAPI/>", L"/GMAPI/status"), L"");
}

}  // namespace
}  // namespace corvane::test
