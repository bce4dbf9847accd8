#include "platform/kit/ComError.h"

#include <gtest/gtest.h>

#include <oleauto.h>

#include <string>

#include "support/windows/SystemWords.h"

namespace corvane::test {
namespace {

struct ClassicError {
    std::uint32_t result;
    std::int32_t number;
    const wchar_t* description;
};

class ComErrorTest : public testing::TestWithParam<ClassicError> {};

TEST_P(ComErrorTest, HasItsClassicNumberAndText) {
    const RuntimeError error = ErrorFromHResult(static_cast<HRESULT>(GetParam().result));

    EXPECT_EQ(error.number, GetParam().number) << std::hex << GetParam().result;
    EXPECT_EQ(error.description, GetParam().description);
    EXPECT_EQ(error.source, L"");
    EXPECT_EQ(error.helpFile, L"");
    EXPECT_EQ(error.helpContext, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Classic, ComErrorTest,
    testing::Values(
        ClassicError{0x80070057, 5, L"Invalid procedure call or argument"},  // E_INVALIDARG
        ClassicError{0x8002000A, 6, L"Overflow"},                            // DISP_E_OVERFLOW
        ClassicError{0x8007000E, 7, L"Out of memory"},                       // E_OUTOFMEMORY
        ClassicError{0x80020005, 13, L"Type mismatch"},                      // DISP_E_TYPEMISMATCH
        ClassicError{0x80030002, 53, L"File not found"},                     // STG_E_FILENOTFOUND
        ClassicError{0x80070002, 53, L"File not found"},
        ClassicError{0x80070005, 70, L"Permission denied"},  // E_ACCESSDENIED
        ClassicError{0x80030005, 70, L"Permission denied"},  // STG_E_ACCESSDENIED
        ClassicError{0x80030003, 76, L"Path not found"},     // STG_E_PATHNOTFOUND
        ClassicError{0x80070003, 76, L"Path not found"},
        // REGDB_E_CLASSNOTREG, CO_E_CLASSSTRING, CO_E_SERVER_EXEC_FAILURE, CO_E_APPNOTFOUND
        ClassicError{0x80040154, 429, L"ActiveX component can't create object"},
        ClassicError{0x800401F3, 429, L"ActiveX component can't create object"},
        ClassicError{0x80080005, 429, L"ActiveX component can't create object"},
        ClassicError{0x800401F5, 429, L"ActiveX component can't create object"},
        ClassicError{0x800706BA, 462,
                     L"The remote server machine does not exist or is unavailable"},
        // A control's code is a classic number itself, whether we have words for it or not.
        ClassicError{0x800A000D, 13, L"Type mismatch"},
        ClassicError{0x800A01CE, 462,
                     L"The remote server machine does not exist or is unavailable"},
        ClassicError{0x800A03EC, 1004, L"Application-defined or object-defined error"}));

class ComErrorAsItIsTest : public testing::TestWithParam<std::uint32_t> {};

TEST_P(ComErrorAsItIsTest, KeepsItsSignedNumberAndTheSystemsText) {
    const auto result = static_cast<HRESULT>(GetParam());
    std::wstring expected = test_support::SystemWords(GetParam());
    while (expected.ends_with(L'\n') || expected.ends_with(L'\r'))
        expected.pop_back();
    ASSERT_NE(expected, L"");

    const RuntimeError error = ErrorFromHResult(result);

    EXPECT_EQ(error.number, static_cast<std::int32_t>(GetParam()));
    EXPECT_EQ(error.description, expected);
}

// The server died; a sharing violation; a full disk.
INSTANTIATE_TEST_SUITE_P(Others, ComErrorAsItIsTest,
                         testing::Values(0x800706BEU, 0x80070020U, 0x80070070U));

TEST(ComErrorNumberTest, LostServerHasTheNumberThatSupportKnows) {
    EXPECT_EQ(ErrorFromHResult(static_cast<HRESULT>(0x800706BE)).number, -2147023170);
    EXPECT_EQ(ErrorFromHResult(RPC_E_DISCONNECTED).number, ErrorNumber::ObjectDisconnected);
    EXPECT_EQ(ErrorFromHResult(CO_E_OBJNOTCONNECTED).number, ErrorNumber::ObjectNotConnected);
}

TEST(ComErrorNumberTest, ControlErrorWithoutNumberIsShownAsItIs) {
    EXPECT_EQ(ErrorFromHResult(static_cast<HRESULT>(0x800A0000)).number,
              static_cast<std::int32_t>(0x800A0000));
}

TEST(ComErrorNumberTest, NumberWithoutWordsHasTheCommonDescription) {
    const RuntimeError error = ErrorFromHResult(static_cast<HRESULT>(0x8ABCDEF0));
    EXPECT_EQ(error.number, static_cast<std::int32_t>(0x8ABCDEF0));
    EXPECT_EQ(error.description, L"Application-defined or object-defined error");
}

TEST(ComErrorNumberTest, SuccessRaisesNothing) {
    EXPECT_NO_THROW(ThrowIfFailed(S_OK));
    EXPECT_NO_THROW(ThrowIfFailed(S_FALSE));
    EXPECT_THROW(ThrowIfFailed(E_FAIL), RuntimeError);
}

}  // namespace
}  // namespace corvane::test
