// Notes of any text: a link is put before them and can be read, all that could be read before can
// still be read, and nothing of the old text is changed.
//
// The input is the notes.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "calls/HtmlNotes.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeStatusWriter.h"
#include "fuzz/Input.h"
#include "util/BuiltInHtmlDocument.h"
#include "util/Text.h"

namespace {

using namespace corvane;
using namespace corvane::test;

constexpr auto npos = std::wstring::npos;
// In letters that no input has, so that it is found again.
const std::wstring linkText = L"\U0010FFFD\U0010FFFC";
const std::wstring newLink = L"<P><A href='file://x'>" + linkText + L"</A></P>";

// White space is laid out anew where something is put before it.
std::wstring Letters(const std::wstring& text) {
    std::wstring letters;
    for (const wchar_t each : text) {
        if (each != L' ' && each != L'\r' && each != L'\n' && each != L'\t' && each != L'\f')
            letters += each;
    }
    return letters;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring old = Input(data, size).Rest();
    if (old.find_first_of(linkText) != npos)
        return 0;
    FakeStatusWriter status;
    FakeClock clock;
    HtmlNotes notes(
        status, clock, [] { return std::make_unique<BuiltInHtmlDocument>(); }, L"CorvaneTo3CX");

    const std::wstring before = notes.HTMLToText(old);
    const std::wstring document = notes.PrependHTMLToBody(old, newLink);

    // The old text stands whole around the link: as a document, or as a part of a new one.
    const std::size_t place = document.find(newLink);
    EXPECT_NE(place, npos);
    std::wstring without = document;
    without.erase(place, newLink.size());
    EXPECT_TRUE(without == old || document.find(newLink + old) == place);

    const std::wstring after = notes.HTMLToText(document);
    std::wstring letters = Letters(after);
    const std::size_t seen = letters.find(linkText);
    EXPECT_NE(seen, npos);
    letters.erase(seen, linkText.size());
    EXPECT_EQ(letters, Letters(before));

    // A second link comes before the first, and the text of a text is the text.
    const std::wstring twice = notes.PrependHTMLToBody(document, L"<b>second</b>");
    EXPECT_LT(twice.find(L"<b>second</b>" + newLink), npos);
    if (before.find_first_of(L"<&") == npos) {
        EXPECT_EQ(Letters(notes.HTMLToText(before)), Letters(before));
    }
    EXPECT_TRUE(status.lines.empty());
    return 0;
}
