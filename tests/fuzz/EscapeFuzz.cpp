// Any text as an argument of a command: it comes back whole, and nothing of it gets out of its
// place in the XML.
//
// The input is the text.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "fakes/TestXPathReader.h"
#include "fuzz/Input.h"
#include "gmapi/Envelope.h"

namespace {

using namespace corvane;
using namespace corvane::test;

bool AllEntitiesKnown(std::wstring_view escaped) {
    constexpr auto entities =
        std::to_array<std::wstring_view>({L"&amp;", L"&quot;", L"&apos;", L"&lt;", L"&gt;"});
    for (std::size_t at = 0; (at = escaped.find(L'&', at)) != std::wstring_view::npos; ++at) {
        const std::wstring_view rest = escaped.substr(at);
        if (std::none_of(entities.begin(), entities.end(),
                         [rest](std::wstring_view each) { return rest.starts_with(each); })) {
            return false;
        }
    }
    return true;
}

// What XML can hold; a reader makes LF of a raw CR.
bool FitsXml(wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    return code == '\t' || code == '\n' || (code >= 0x20 && code < 0xD800) ||
           (code >= 0xE000 && code < 0xFFFE) || (code >= 0x10000 && code <= 0x10FFFF);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = Input(data, size).Rest();

    const std::wstring escaped = Escape(text);
    EXPECT_EQ(escaped.find_first_of(L"<>\"'"), std::wstring::npos);
    EXPECT_TRUE(AllEntitiesKnown(escaped));
    EXPECT_EQ(Unescape(escaped), text);
    EXPECT_EQ(Unescape(Unescape(Escape(escaped))), text);
    EXPECT_LE(Unescape(text).size(), text.size());

    const std::wstring command = Command(L"X").Data(L"A", text).Data(L"B", L"b").Text();
    if (std::all_of(text.begin(), text.end(), &FitsXml)) {
        const std::wstring path = L"/GMAPI[@call='X'][count(*)=2]/data[@name='A'][not(*)]";
        EXPECT_EQ(TestXPathReader().SelectNode(command, path, NodeForm::Text, WhiteSpace::Kept),
                  text);
    }
    EXPECT_FALSE(Succeeded(text, L"X") && Refused(text, L"X"));
    EXPECT_TRUE(Succeeded(SuccessReply(L"X", text), L"X"));
    return 0;
}
