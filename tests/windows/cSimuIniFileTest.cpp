#include "settings/cSimuIniFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/cRegistry.h"
#include "support/windows/SystemWords.h"
#include "unit/TestErrors.h"
#include "util/RuntimeError.h"
#include "windows/RegistrySandbox.h"

namespace corvane::test {
namespace {

using test_support::SystemWords;

constexpr std::int32_t typeMismatch = 13;
constexpr std::int32_t registryError = -2147191503;

// The profile store over the real registry; its key is Software\CorvaneStore\Section.
class cSimuIniFileTest : public testing::Test {
protected:
    cSimuIniFileTest() {
        store.Scope = 1;
        store.Subkey = L"Software\\CorvaneStore";
        store.RootSpec = L"Section";
    }

    void Store(const std::wstring& name, DWORD type, const std::vector<BYTE>& bytes) {
        const RegistryKey key(HKEY_CURRENT_USER, L"Software\\CorvaneStore\\Section");
        ASSERT_EQ(RegSetValueExW(key.get(), name.c_str(), 0, type, bytes.data(),
                                 static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }
    void StoreText(const std::wstring& name, const std::wstring& text) {
        const auto* begin = reinterpret_cast<const BYTE*>(text.c_str());
        Store(name, REG_SZ, {begin, begin + (text.size() + 1) * sizeof(wchar_t)});
    }
    // Type and bytes as they are stored; a missing value has the type -1.
    struct Stored {
        int type = -1;
        std::wstring text;
        bool operator==(const Stored&) const = default;
    };
    static Stored Load(const std::wstring& name) {
        const RegistryKey key(HKEY_CURRENT_USER, L"Software\\CorvaneStore\\Section");
        wchar_t buffer[200];
        DWORD bytes = sizeof(buffer);
        DWORD type = 0;
        if (RegQueryValueExW(key.get(), name.c_str(), nullptr, &type,
                             reinterpret_cast<BYTE*>(buffer), &bytes) != ERROR_SUCCESS) {
            return {};
        }
        return {static_cast<int>(type), {buffer, bytes / sizeof(wchar_t)}};
    }
    static bool KeyExists(const std::wstring& path) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
            return false;
        RegCloseKey(key);
        return true;
    }

    RegistrySandbox sandbox;
    cRegistry registry;
    cSimuIniFile store{registry};
};

TEST_F(cSimuIniFileTest, ReadingFromAMissingPathGivesTheDefaultAndLeavesAnEmptyKey) {
    ASSERT_FALSE(KeyExists(L"Software\\CorvaneStore\\Section"));

    EXPECT_EQ(store.ReadProfileString(L"X", L"the default"), L"the default");

    EXPECT_TRUE(KeyExists(L"Software\\CorvaneStore\\Section"));
    EXPECT_EQ(Load(L"X"), Stored{});
}

TEST_F(cSimuIniFileTest, WrittenTextIsStoredWithItsTerminatorAndThePreviousTextComesBack) {
    EXPECT_EQ(store.WriteProfileString(L"X", L"abc"), L"");
    EXPECT_EQ(Load(L"X"), (Stored{REG_SZ, std::wstring(L"abc\0", 4)}));

    EXPECT_EQ(store.WriteProfileString(L"X", L"defg"), L"abc");
    EXPECT_EQ(Load(L"X"), (Stored{REG_SZ, std::wstring(L"defg\0", 5)}));
}

TEST_F(cSimuIniFileTest, WrittenTextReadsBackWithNothingBehindIt) {
    store.WriteProfileString(L"X", L"abc");
    EXPECT_EQ(store.ReadProfileString(L"X", L"other"), L"abc");

    store.WriteProfileString(L"X", L" J\x00FCrgen  ");
    EXPECT_EQ(store.ReadProfileString(L"X", L"other"), L" J\x00FCrgen  ");
}

TEST_F(cSimuIniFileTest, EmptyTextIsAValueAndNotTheDefault) {
    store.WriteProfileString(L"X", L"");

    EXPECT_EQ(Load(L"X"), (Stored{REG_SZ, std::wstring(1, L'\0')}));
    EXPECT_EQ(store.ReadProfileString(L"X", L"the default"), L"");
}

TEST_F(cSimuIniFileTest, LongTextIsReadWhole) {
    const std::wstring text(5000, L'x');
    store.WriteProfileString(L"X", text);
    EXPECT_EQ(store.ReadProfileString(L"X", L""), text);
}

struct Payload {
    const char* name;
    DWORD type;
    std::vector<BYTE> bytes;
    std::wstring expected;
};

class cSimuIniFilePayloadTest : public cSimuIniFileTest,
                                public testing::WithParamInterface<Payload> {};

TEST_P(cSimuIniFilePayloadTest, IsReadAsText) {
    Store(L"X", GetParam().type, GetParam().bytes);

    EXPECT_EQ(store.ReadProfileString(L"X", L"the default"), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Payloads, cSimuIniFilePayloadTest,
    testing::Values(
        Payload{"Terminated", REG_SZ, {'a', 0, 'b', 0, 0, 0}, L"ab"},
        Payload{"NoTerminator", REG_SZ, {'a', 0, 'b', 0}, L"ab"},
        Payload{"TwoTerminators", REG_SZ, {'a', 0, 0, 0, 0, 0}, std::wstring(L"a\0", 2)},
        Payload{"EmbeddedNul", REG_SZ, {'a', 0, 0, 0, 'b', 0, 0, 0}, std::wstring(L"a\0b", 3)},
        Payload{"OnlyATerminator", REG_SZ, {0, 0}, L""},
        Payload{"SizeZero", REG_SZ, {}, L"the default"},
        Payload{"ExpandableText", REG_EXPAND_SZ, {'%', 0, 'a', 0, '%', 0, 0, 0}, L"%a%"},
        Payload{"Number", REG_DWORD, {'1', '2', '3', '4'}, L"1234"},
        Payload{"NumberEndingInAZeroByte", REG_DWORD, {'1', '2', '3', 0}, L"123"},
        Payload{"Binary", REG_BINARY, {'x', 'y'}, L"xy"},
        Payload{"BinaryOfOneZero", REG_BINARY, {0}, L""},
        Payload{"BinaryOfSizeZero", REG_BINARY, {}, L"the default"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(cSimuIniFileTest, TextOfAnOddNumberOfBytesIsReadWithoutItsLastByte) {
    // Half a character stands behind the text.
    Store(L"X", REG_SZ, {'a', 0, 'b', 0, 'c'});

    EXPECT_EQ(store.ReadProfileString(L"X", L"the default"), L"ab");
}

TEST_F(cSimuIniFileTest, MissingEntryIsNoFailure) {
    store.WriteProfileString(L"Other", L"1");
    EXPECT_EQ(store.ReadProfileString(L"X", L""), L"");
    EXPECT_EQ(store.ReadProfileString(L"X", L"d"), L"d");
}

TEST_F(cSimuIniFileTest, BooleansAreStoredAsTheirNames) {
    store.WriteProfileString(L"X", L"False");

    EXPECT_FALSE(store.WriteProfileBoolean(L"X", true));
    EXPECT_EQ(Load(L"X").text, std::wstring(L"True\0", 5));
    EXPECT_TRUE(store.WriteProfileBoolean(L"X", false));
    EXPECT_EQ(Load(L"X").text, std::wstring(L"False\0", 6));
}

TEST_F(cSimuIniFileTest, TypedWriteOfANewEntryFailsAfterTheValueWasWritten) {
    EXPECT_EQ(ErrorOf([&] { store.WriteProfileBoolean(L"B", true); }).number, typeMismatch);
    EXPECT_EQ(Load(L"B").text, std::wstring(L"True\0", 5));

    EXPECT_EQ(ErrorOf([&] { store.WriteProfileInteger(L"I", -12); }).number, typeMismatch);
    EXPECT_EQ(Load(L"I").text, std::wstring(L"-12\0", 4));

    EXPECT_EQ(ErrorOf([&] { store.WriteProfileFloat(L"F", 25); }).number, typeMismatch);
    EXPECT_EQ(Load(L"F").text, std::wstring(L"25\0", 3));
}

TEST_F(cSimuIniFileTest, TypedWritersGiveThePreviousValue) {
    store.WriteProfileString(L"I", L"32767");
    EXPECT_EQ(store.WriteProfileInteger(L"I", -32768), 32767);
    EXPECT_EQ(store.ReadProfileInteger(L"I", 1), -32768);

    store.WriteProfileString(L"F", L"12");
    EXPECT_EQ(store.WriteProfileFloat(L"F", 2.5), 12.0);
    EXPECT_EQ(store.ReadProfileFloat(L"F", 1), 2.5);
}

TEST_F(cSimuIniFileTest, TypedReadersGiveTheirDefaults) {
    EXPECT_TRUE(store.ReadProfileBoolean(L"X", true));
    EXPECT_FALSE(store.ReadProfileBoolean(L"X", false));
    EXPECT_EQ(store.ReadProfileInteger(L"X", -7), -7);
    EXPECT_EQ(store.ReadProfileFloat(L"X", 0.25), 0.25);
}

struct BooleanText {
    const wchar_t* text;
    bool value;
};

class cSimuIniFileBooleanTest : public cSimuIniFileTest,
                                public testing::WithParamInterface<BooleanText> {};

TEST_P(cSimuIniFileBooleanTest, IsRead) {
    StoreText(L"X", GetParam().text);
    EXPECT_EQ(store.ReadProfileBoolean(L"X", !GetParam().value), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Texts, cSimuIniFileBooleanTest,
                         testing::Values(BooleanText{L"True", true}, BooleanText{L"TRUE", true},
                                         BooleanText{L"true", true}, BooleanText{L"False", false},
                                         BooleanText{L"fALSE", false}, BooleanText{L"0", false},
                                         BooleanText{L"1", true}, BooleanText{L"-1", true},
                                         BooleanText{L"42", true}));

TEST_F(cSimuIniFileTest, TextThatIsNoBooleanDoesNotConvert) {
    StoreText(L"X", L"yes please");
    EXPECT_EQ(ErrorOf([&] { store.ReadProfileBoolean(L"X", true); }).number, typeMismatch);
}

TEST_F(cSimuIniFileTest, UnsetScopeMakesEveryAccessFailInCreateKey) {
    cSimuIniFile unset(registry);
    unset.Subkey = L"SOFTWARE";
    unset.RootSpec = L"X";

    const RuntimeError reading = ErrorOf([&] { unset.ReadProfileString(L"a", L""); });
    EXPECT_EQ(reading.number, registryError);
    EXPECT_EQ(reading.description,
              L"RegCreateKeyEx requesting READ access to 'SOFTWARE\\X'\r\nSystem error 6: " +
                  SystemWords(6));

    const RuntimeError writing = ErrorOf([&] { unset.WriteProfileString(L"a", L"b"); });
    EXPECT_EQ(writing.number, registryError);
    EXPECT_EQ(writing.description,
              L"RegCreateKeyEx requesting WRITE access to 'SOFTWARE\\X'\r\nSystem error 6: " +
                  SystemWords(6));
}

class cSimuIniFileScopeTest : public testing::TestWithParam<std::pair<std::int32_t, HKEY>> {};

TEST_P(cSimuIniFileScopeTest, NamesTheRoot) {
    const auto [scope, root] = GetParam();
    const RegistrySandbox sandbox(root);
    cRegistry registry;
    cSimuIniFile store(registry);
    store.Scope = scope;
    store.Subkey = L"Sub";
    store.RootSpec = L"Root";

    store.WriteProfileString(L"X", L"found");

    wchar_t text[20] = {};
    DWORD bytes = sizeof(text);
    EXPECT_EQ(RegGetValueW(root, L"Sub\\Root", L"X", RRF_RT_REG_SZ, nullptr, text, &bytes),
              ERROR_SUCCESS);
    EXPECT_STREQ(text, L"found");
}

INSTANTIATE_TEST_SUITE_P(Scopes, cSimuIniFileScopeTest,
                         testing::Values(std::pair(1, HKEY_CURRENT_USER),
                                         std::pair(2, HKEY_LOCAL_MACHINE),
                                         std::pair(3, HKEY_CLASSES_ROOT)));

TEST_F(cSimuIniFileTest, OwnSettingsStandUnderTheProgramsKey) {
    cSimuIniFile own = OwnSettingsStore(registry);

    own.WriteProfileString(L"X", L"mine");

    wchar_t text[20] = {};
    DWORD bytes = sizeof(text);
    EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"SOFTWARE\\Halvorn Systems\\CorvaneTo3CX", L"X",
                           RRF_RT_REG_SZ, nullptr, text, &bytes),
              ERROR_SUCCESS);
    EXPECT_STREQ(text, L"mine");
}

}  // namespace
}  // namespace corvane::test
