#include "platform/cRegistry.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "support/windows/SystemWords.h"
#include "unit/TestErrors.h"
#include "util/RuntimeError.h"
#include "windows/RegistrySandbox.h"

namespace corvane::test {

// Windows has words for nearly every code that its registry answers, so the code without words is
// handed in directly. An explicit instantiation may name a private member.
std::wstring CallSystemErrorText(RegistryStatus status);
template <auto function>
struct SystemErrorTextOf {
    friend std::wstring CallSystemErrorText(RegistryStatus status) { return function(status); }
};
template struct SystemErrorTextOf<&cRegistry::SystemErrorText>;

namespace {

using test_support::SystemWords;

constexpr std::int32_t classError = -2147191503;
const std::wstring crLf = L"\r\n";

class cRegistryTest : public testing::Test {
protected:
    RegistryHandle Created(const std::wstring& path, std::uint32_t access = 63) {
        RegistryHandle key = 0;
        std::uint32_t disposition = 0;
        registry.CreateKey(RegistryRoot::currentUser, path, 0, L"", 0, access, key, disposition);
        return key;
    }
    RuntimeError CreateFailure(RegistryHandle root, const std::wstring& path,
                               std::uint32_t access) {
        RegistryHandle key = 0;
        std::uint32_t disposition = 0;
        return ErrorOf(
            [&] { registry.CreateKey(root, path, 0, L"", 0, access, key, disposition); });
    }
    RuntimeError OpenFailure(RegistryHandle root, const std::wstring& path, std::uint32_t access) {
        RegistryHandle key = 0;
        return ErrorOf([&] { registry.Openkey(root, path, 0, access, key); });
    }

    RegistrySandbox sandbox;
    cRegistry registry;
};

TEST_F(cRegistryTest, CreatedKeyIsReportedAsCreatedThenAsOpened) {
    RegistryHandle key = 0;
    std::uint32_t disposition = 0;

    EXPECT_EQ(registry.CreateKey(static_cast<RegistryHandle>(0x80000001), L"Software\\A\\B", 0, L"",
                                 0, 6, key, disposition),
              0);
    EXPECT_NE(key, 0);
    EXPECT_EQ(disposition, DWORD{REG_CREATED_NEW_KEY});
    EXPECT_EQ(registry.Closekey(key), 0);

    EXPECT_EQ(registry.CreateKey(static_cast<RegistryHandle>(0x80000001), L"Software\\A\\B", 0, L"",
                                 0, 25, key, disposition),
              0);
    EXPECT_EQ(disposition, DWORD{REG_OPENED_EXISTING_KEY});
    EXPECT_EQ(registry.Closekey(key), 0);
}

TEST_F(cRegistryTest, OpenedKeyIsTheOneNamedWithTheAccessAskedFor) {
    const RegistryHandle created = Created(L"Software\\A");
    registry.SetValue(created, L"v", 0, 1, std::wstring(L"abc\0", 4), 4);
    registry.Closekey(created);
    RegistryHandle key = 0;

    EXPECT_EQ(registry.Openkey(RegistryRoot::currentUser, L"Software\\A", 0, 1, key), 0);

    std::uint32_t type = 0;
    std::wstring data(4, L' ');
    std::uint32_t size = 4;
    EXPECT_EQ(registry.QueryValue(key, L"v", 0, type, data, size), 0);
    EXPECT_EQ(data, std::wstring(L"abc\0", 4));
    EXPECT_EQ(
        ErrorOf([&] { registry.SetValue(key, L"v", 0, 1, std::wstring(1, L'\0'), 1); }).number,
        classError)
        << "only reading was asked for";
    EXPECT_EQ(registry.Closekey(key), 0);
}

TEST_F(cRegistryTest, ClassAndOptionsOfACreatedKeyReachTheRegistry) {
    RegistryHandle key = 0;
    std::uint32_t disposition = 0;
    constexpr std::uint32_t forThisSessionOnly = 1;

    EXPECT_EQ(registry.CreateKey(RegistryRoot::currentUser, L"Software\\A", 0, L"a class",
                                 forThisSessionOnly, 63, key, disposition),
              0);

    wchar_t name[20] = {};
    DWORD length = 20;
    const auto native = reinterpret_cast<HKEY>(static_cast<LONG_PTR>(key));
    EXPECT_EQ(RegQueryInfoKeyW(native, name, &length, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_STREQ(name, L"a class");
    // A key that stays may not stand in one that goes.
    const RuntimeError error = CreateFailure(key, L"B", 63);
    EXPECT_EQ(error.description, L"RegCreateKeyEx requesting ALL_ACCESS access to 'B'" + crLf +
                                     L"System error 1021: " + SystemWords(1021));
    EXPECT_EQ(registry.Closekey(key), 0);
}

TEST_F(cRegistryTest, EveryFailureRaisesTheOneErrorWithSourceAndNoHelp) {
    const RuntimeError error = OpenFailure(RegistryRoot::currentUser, L"Software\\Absent", 25);

    EXPECT_EQ(error.number, classError);
    EXPECT_EQ(error.source, L"CorvanneTo3CX");
    EXPECT_EQ(error.helpFile, L"");
    EXPECT_EQ(error.helpContext, 0);
}

TEST_F(cRegistryTest, SystemsTrailingLineBreakIsKept) {
    const RuntimeError error = OpenFailure(RegistryRoot::currentUser, L"Software\\Absent", 25);

    EXPECT_TRUE(error.description.ends_with(L"\r\n")) << "the system's text ends in a line break";
    EXPECT_EQ(error.description,
              L"RegOpenKeyEx requesting READ access to 'HKEY_CURRENT_USER\\Software\\Absent'" +
                  crLf + L"System error 2: " + SystemWords(2));
}

struct NamedRoot {
    std::uint32_t handle;
    const wchar_t* text;
};

class cRegistryRootTest : public cRegistryTest, public testing::WithParamInterface<NamedRoot> {};

TEST_P(cRegistryRootTest, RootIsNamedInTheMessageOfOpening) {
    const RuntimeError error =
        OpenFailure(static_cast<RegistryHandle>(GetParam().handle), L"Absent\\Key", 1);

    const std::wstring begin = L"RegOpenKeyEx requesting QUERY_VALUE access to '" +
                               std::wstring(GetParam().text) + L"Absent\\Key'" + crLf +
                               L"System error ";
    EXPECT_EQ(error.description.substr(0, begin.size()), begin);
}

TEST_P(cRegistryRootTest, RootIsNamedInTheMessageOfCreating) {
    // No key name may be that long.
    const std::wstring path(300, L'x');
    const RuntimeError error =
        CreateFailure(static_cast<RegistryHandle>(GetParam().handle), path, 6);

    const std::wstring begin = L"RegCreateKeyEx requesting WRITE access to '" +
                               std::wstring(GetParam().text) + path + L"'" + crLf +
                               L"System error ";
    EXPECT_EQ(error.description.substr(0, begin.size()), begin);
}

INSTANTIATE_TEST_SUITE_P(Roots, cRegistryRootTest,
                         testing::Values(NamedRoot{0x80000000, L"HKEY_CLASSES_ROOT\\"},
                                         NamedRoot{0x80000001, L"HKEY_CURRENT_USER\\"},
                                         NamedRoot{0x80000002, L"HKEY_LOCAL_MACHINE\\"},
                                         NamedRoot{0x80000003, L"HKEY_USERS\\"},
                                         // any other handle has no name
                                         NamedRoot{0, L""}, NamedRoot{0x80000005, L""}));

TEST_F(cRegistryTest, KeyOpenedBeforeIsNoNamedRoot) {
    const RegistryHandle key = Created(L"Software");

    const RuntimeError error = OpenFailure(key, L"X", 25);

    EXPECT_EQ(error.description, L"RegOpenKeyEx requesting READ access to 'X'" + crLf +
                                     L"System error 2: " + SystemWords(2));
    registry.Closekey(key);
}

struct NamedAccess {
    std::uint32_t mask;
    const wchar_t* text;
};

class cRegistryAccessTest : public cRegistryTest,
                            public testing::WithParamInterface<NamedAccess> {};

TEST_P(cRegistryAccessTest, AccessIsNamedInTheMessages) {
    const std::wstring name = GetParam().text;

    EXPECT_EQ(OpenFailure(RegistryRoot::currentUser, L"Software\\X", GetParam().mask).description,
              L"RegOpenKeyEx requesting " + name + L" access to 'HKEY_CURRENT_USER\\Software\\X'" +
                  crLf + L"System error 2: " + SystemWords(2));
    EXPECT_EQ(CreateFailure(RegistryRoot::none, L"Software\\X", GetParam().mask).description,
              L"RegCreateKeyEx requesting " + name + L" access to 'Software\\X'" + crLf +
                  L"System error 6: " + SystemWords(6));
}

INSTANTIATE_TEST_SUITE_P(
    Masks, cRegistryAccessTest,
    testing::Values(NamedAccess{1, L"QUERY_VALUE"}, NamedAccess{2, L"SET_VALUE"},
                    NamedAccess{4, L"CREATE_SUB_KEY"}, NamedAccess{6, L"WRITE"},
                    NamedAccess{8, L"ENUMERATE_SUB_KEYS"}, NamedAccess{16, L"NOTIFY"},
                    NamedAccess{25, L"READ"}, NamedAccess{32, L"CREATE_LINK"},
                    NamedAccess{63, L"ALL_ACCESS"}, NamedAccess{3, L""},
                    // the platform's own read mask is not this program's
                    NamedAccess{0x20019, L""}));

TEST_F(cRegistryTest, UnknownMaskLeavesTwoBlanksInTheMessage) {
    const RuntimeError error = CreateFailure(RegistryRoot::none, L"Software\\X", 5);

    EXPECT_EQ(error.description, L"RegCreateKeyEx requesting  access to 'Software\\X'" + crLf +
                                     L"System error 6: " + SystemWords(6));
}

TEST_F(cRegistryTest, FailingCreationLeavesHandleAndDispositionAlone) {
    RegistryHandle key = 4711;
    std::uint32_t disposition = 4712;

    EXPECT_THROW(registry.CreateKey(RegistryRoot::none, L"X", 0, L"", 0, 6, key, disposition),
                 RuntimeError);

    EXPECT_EQ(key, 4711);
    EXPECT_EQ(disposition, 4712U);
}

TEST_F(cRegistryTest, ClosingNoKeyRaises) {
    const RuntimeError error = ErrorOf([&] { registry.Closekey(0); });

    EXPECT_EQ(error.number, classError);
    EXPECT_EQ(error.description, L"RegCloseKey" + crLf + L"System error 6: " + SystemWords(6));
}

TEST_F(cRegistryTest, KeyIsDeleted) {
    const RegistryHandle key = Created(L"Software");
    registry.Closekey(Created(L"Software\\Gone"));

    EXPECT_EQ(registry.DeleteKey(key, L"Gone"), 0);

    EXPECT_EQ(OpenFailure(key, L"Gone", 25).number, classError);
    registry.Closekey(key);
}

TEST_F(cRegistryTest, DeletingAMissingKeyRaises) {
    const RegistryHandle key = Created(L"Software");

    const RuntimeError error = ErrorOf([&] { registry.DeleteKey(key, L"Absent"); });

    EXPECT_EQ(error.number, classError);
    EXPECT_EQ(error.description,
              L"RegDeleteKey of subkey 'Absent'" + crLf + L"System error 2: " + SystemWords(2));
    registry.Closekey(key);
}

TEST_F(cRegistryTest, ValueIsDeleted) {
    const RegistryHandle key = Created(L"Software");
    registry.SetValue(key, L"v", 0, 1, std::wstring(L"abc\0", 4), 4);

    EXPECT_EQ(registry.DeleteValue(key, L"v"), 0);

    const RuntimeError error = ErrorOf([&] { registry.DeleteValue(key, L"v"); });
    EXPECT_EQ(error.number, classError);
    EXPECT_EQ(error.description,
              L"RegDeleteValue of ValueName 'v'" + crLf + L"System error 2: " + SystemWords(2));
    registry.Closekey(key);
}

TEST_F(cRegistryTest, QueryFillsTheBufferTypeAndSize) {
    const RegistryHandle key = Created(L"Software");
    registry.SetValue(key, L"v", 0, 1, std::wstring(L"abc\0", 4), 4);
    std::uint32_t type = 0;
    std::wstring data = L"          ";
    std::uint32_t size = 10;

    EXPECT_EQ(registry.QueryValue(key, L"v", 0, type, data, size), 0);

    EXPECT_EQ(type, 1U);
    EXPECT_EQ(size, 4U);
    EXPECT_EQ(data, std::wstring(L"abc\0      ", 10));
    registry.Closekey(key);
}

TEST_F(cRegistryTest, ValueLargerThanTheBufferAnswersItsSizeAndNoError) {
    const RegistryHandle key = Created(L"Software");
    registry.SetValue(key, L"v", 0, 1, std::wstring(L"abcdef\0", 7), 7);
    std::uint32_t type = 1;
    std::wstring data = L"0";
    std::uint32_t size = 0;

    EXPECT_EQ(registry.QueryValue(key, L"v", 0, type, data, size), 0);

    EXPECT_EQ(size, 7U);
    EXPECT_EQ(type, 1U);
    registry.Closekey(key);
}

TEST_F(cRegistryTest, MissingValueRaisesWithTheSystemsTextForAMissingFile) {
    const RegistryHandle key = Created(L"Software");
    std::uint32_t type = 1;
    std::wstring data = L"0";
    std::uint32_t size = 0;

    const RuntimeError error =
        ErrorOf([&] { registry.QueryValue(key, L"Absent", 0, type, data, size); });

    EXPECT_EQ(error.number, classError);
    EXPECT_EQ(error.description, L"RegQueryValueEx of ValueName 'Absent'" + crLf +
                                     L"System error 2: " + SystemWords(2));
    registry.Closekey(key);
}

TEST_F(cRegistryTest, AnsiBytesAreStoredAndReadBackAsText) {
    const RegistryHandle key = Created(L"Software");
    const std::wstring text(L"J\x00FCrgen\0", 7);
    registry.SetValue(key, L"\x00FC", 0, 1, text, 7);

    wchar_t stored[20] = {};
    DWORD bytes = sizeof(stored);
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software", L"\x00FC", RRF_RT_REG_SZ, nullptr,
                           stored, &bytes),
              ERROR_SUCCESS);
    EXPECT_STREQ(stored, L"J\x00FCrgen");
    EXPECT_EQ(bytes, 7 * sizeof(wchar_t));

    std::uint32_t type = 1;
    std::wstring data(7, L' ');
    std::uint32_t size = 7;
    registry.QueryValue(key, L"\x00FC", 0, type, data, size);
    EXPECT_EQ(data, text);
    registry.Closekey(key);
}

TEST_F(cRegistryTest, TypeGoesThroughUntouched) {
    const RegistryHandle key = Created(L"Software");
    registry.SetValue(key, L"v", 0, 2, std::wstring(L"%x%\0", 4), 4);
    std::uint32_t type = 1;
    std::wstring data(4, L' ');
    std::uint32_t size = 4;

    registry.QueryValue(key, L"v", 0, type, data, size);

    EXPECT_EQ(type, DWORD{REG_EXPAND_SZ});
    registry.Closekey(key);
}

TEST_F(cRegistryTest, RefusedWriteQuotesTheDataWithItsTerminator) {
    const RegistryHandle key = Created(L"Software", 1);

    const RuntimeError error =
        ErrorOf([&] { registry.SetValue(key, L"v", 0, 1, std::wstring(L"abc\0", 4), 4); });

    EXPECT_EQ(error.number, classError);
    EXPECT_EQ(error.description, L"RegSetValueEx of ValueName 'v' to value 'abc" +
                                     std::wstring(1, L'\0') + L"'" + crLf + L"System error 5: " +
                                     SystemWords(5));
    registry.Closekey(key);
}

TEST(cRegistrySystemErrorTextTest, CodeWithoutWordsShowsTwoBlanksBeforeTheNumber) {
    ASSERT_EQ(SystemWords(54321), L"");
    EXPECT_EQ(CallSystemErrorText(54321), L"System error 54321: System error code:  54321");
}

TEST(cRegistrySystemErrorTextTest, NegativeCodeShowsItsSignInPlaceOfTheSecondBlank) {
    ASSERT_EQ(SystemWords(static_cast<DWORD>(-54321)), L"");
    EXPECT_EQ(CallSystemErrorText(-54321), L"System error -54321: System error code: -54321");
}

TEST(cRegistrySystemErrorTextTest, CodeZeroHasNoWords) {
    EXPECT_EQ(CallSystemErrorText(0), L"System error 0: ");
}

TEST(cRegistrySystemErrorTextTest, KnownCodeTakesTheSystemsWords) {
    EXPECT_EQ(CallSystemErrorText(5), L"System error 5: " + SystemWords(5));
}

}  // namespace
}  // namespace corvane::test
