#include "platform/kit/Bstr.h"

#include <gtest/gtest.h>

#include "unit/TestErrors.h"

namespace corvane::test {
namespace {

TEST(BstrTest, TextIsKeptWithItsZeros) {
    EXPECT_EQ(Bstr(std::wstring_view(L"a\0b", 3)).text(), std::wstring(L"a\0b", 3));
    EXPECT_EQ(Bstr(L"").text(), L"");
}

// An empty text in its place would be sent as a command, or stored.
TEST(BstrTest, TextThatThereIsNoMemoryForRaises) {
    // Longer than any BSTR can be; the system refuses before it reads a character of it.
    const std::wstring_view tooLong(L"", 0x7FFFFFFE);
    EXPECT_EQ(ErrorOf([&] { const Bstr text(tooLong); }).number, 7);
    EXPECT_EQ(ErrorOf([&] { const Variant text(tooLong); }).number, 7);
}

}  // namespace
}  // namespace corvane::test
