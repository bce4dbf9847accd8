#include "check/platform/ReadOnlyRegistry.h"

#include <gtest/gtest.h>

#include <functional>

#include "platform/cRegistry.h"
#include "settings/cSimuIniFile.h"
#include "util/RuntimeError.h"
#include "windows/RegistrySandbox.h"

namespace corvane::test {
namespace {

bool KeyExists(const std::wstring& path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

class ReadOnlyRegistryTest : public testing::Test {
protected:
    RegistrySandbox sandbox;
    cRegistry writable;
    ReadOnlyRegistry registry{ReadOnlyRegistry::View::Own};
};

TEST_F(ReadOnlyRegistryTest, AMissingKeyReadsAsDefaultsAndIsNotMade) {
    cSimuIniFile store = OwnSettingsStore(registry);
    EXPECT_EQ(store.ReadProfileString(L"txtCallerIDFormat", L"default"), L"default");
    EXPECT_FALSE(KeyExists(L"SOFTWARE\\Halvorn Systems"));
}

TEST_F(ReadOnlyRegistryTest, WhatIsThereIsRead) {
    OwnSettingsStore(writable).WriteProfileString(L"txtCallerIDFormat", L"###");
    cSimuIniFile store = OwnSettingsStore(registry);
    EXPECT_EQ(store.ReadProfileString(L"txtCallerIDFormat", L"default"), L"###");
    EXPECT_EQ(store.ReadProfileString(L"another", L"default"), L"default");
}

TEST_F(ReadOnlyRegistryTest, WhatWouldChangeSomethingIsRefused) {
    OwnSettingsStore(writable).WriteProfileString(L"name", L"before");
    cSimuIniFile store = OwnSettingsStore(registry);
    const std::function<void()> changes[] = {
        [&] { store.WriteProfileString(L"name", L"after"); },
        [&] { registry.DeleteKey(RegistryRoot::currentUser, L"SOFTWARE\\Halvorn Systems"); },
        [&] { registry.DeleteValue(RegistryRoot::currentUser, L"name"); },
    };
    for (const auto& change : changes) {
        try {
            change();
            ADD_FAILURE() << "it was not refused";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number, registryErrorNumber);
        }
    }
    EXPECT_EQ(OwnSettingsStore(writable).ReadProfileString(L"name", L""), L"before");
}

TEST_F(ReadOnlyRegistryTest, AKeyOpenedForWritingIsOpenForReadingOnly) {
    OwnSettingsStore(writable).WriteProfileString(L"name", L"before");
    RegistryHandle key = RegistryRoot::none;
    registry.Openkey(RegistryRoot::currentUser, L"SOFTWARE\\Halvorn Systems\\CorvaneTo3CX", 0,
                     RegistryAccess::allAccess, key);
    EXPECT_THROW(writable.SetValue(key, L"name", 0, registryText, L"after", 6), RuntimeError);
    EXPECT_EQ(registry.Closekey(key), 0);
}

TEST_F(ReadOnlyRegistryTest, AKeyThatCannotBeOpenedIsAnError) {
    RegistryHandle key = RegistryRoot::none;
    std::uint32_t disposition = 0;
    EXPECT_THROW(registry.CreateKey(RegistryRoot::none, L"SOFTWARE", 0, L"", 0,
                                    RegistryAccess::read, key, disposition),
                 RuntimeError);
}

TEST(ReadOnlyRegistryView, TheOtherWordLengthHasItsOwnValues) {
    constexpr const wchar_t* path = L"SOFTWARE\\CorvaneTests";
    constexpr REGSAM other = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
    const auto store = [&](REGSAM view, const wchar_t* text, DWORD bytes) {
        const RegistryKey key(HKEY_LOCAL_MACHINE, path, KEY_ALL_ACCESS | view);
        EXPECT_EQ(RegSetValueExW(key.get(), L"view", 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                                 bytes),
                  ERROR_SUCCESS);
    };
    const auto read = [&](ReadOnlyRegistry::View view) {
        ReadOnlyRegistry registry(view);
        cSimuIniFile key(registry);
        key.Scope = 2;
        key.Subkey = L"SOFTWARE";
        key.RootSpec = L"CorvaneTests";
        return key.ReadProfileString(L"view", L"");
    };
    store(other, L"other", 12);
    // A system of 32 bits has one view only.
    BOOL wow64 = FALSE;
    IsWow64Process(GetCurrentProcess(), &wow64);
    const bool twoViews = sizeof(void*) == 8 || wow64;
    if (twoViews)
        store(0, L"own", 8);
    EXPECT_EQ(read(ReadOnlyRegistry::View::OtherWordLength), L"other");
    EXPECT_EQ(read(ReadOnlyRegistry::View::Own), twoViews ? L"own" : L"other");

    for (const REGSAM view : {REGSAM{0}, other})
        RegDeleteKeyExW(HKEY_LOCAL_MACHINE, path, view, 0);
}

}  // namespace
}  // namespace corvane::test
