#include "RegistryKeys.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace end_to_end {
namespace {

constexpr wchar_t testKey[] = L"Software\\Halvorn test of the tests";

class ClearedKeyTest : public testing::Test {
protected:
    ClearedKeyTest() { Forget(); }
    ~ClearedKeyTest() override { Forget(); }

    // The key, and what this test itself may have left when it was killed.
    static void Forget() {
        RegDeleteTreeW(HKEY_CURRENT_USER, testKey);
        RegDeleteTreeW(HKEY_CURRENT_USER,
                       (std::wstring(L"Software\\Halvorn end-to-end tests\\") + testKey).c_str());
    }
    // A test that was killed while it had the key.
    static void LeaveAKilledTest() {
        static_cast<void>(std::make_unique<ClearedKey>(HKEY_CURRENT_USER, testKey).release());
        EXPECT_FALSE(RegistryKeyExists(HKEY_CURRENT_USER, testKey));
        SetRegistryText(HKEY_CURRENT_USER, testKey, "name", "of the killed test");
    }
};

TEST_F(ClearedKeyTest, WhatAKilledTestHadClearedComesBack) {
    SetRegistryText(HKEY_CURRENT_USER, testKey, "name", "the user's");
    SetRegistryText(HKEY_CURRENT_USER, std::wstring(testKey) + L"\\below", "name",
                    "the user's too");
    LeaveAKilledTest();

    { const ClearedKey cleared(HKEY_CURRENT_USER, testKey); }

    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, testKey, "name"), "the user's");
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, std::wstring(testKey) + L"\\below", "name"),
              "the user's too");
}

TEST_F(ClearedKeyTest, WhatAKilledTestHadMadeGoes) {
    LeaveAKilledTest();

    { const ClearedKey cleared(HKEY_CURRENT_USER, testKey); }

    EXPECT_FALSE(RegistryKeyExists(HKEY_CURRENT_USER, testKey));
}

TEST_F(ClearedKeyTest, OutsideWineNothingIsCleared) {
    EXPECT_NO_THROW(RefuseOutsideWine());
    // A library that has no more of Wine than Windows' own ntdll has.
    EXPECT_THROW(RefuseOutsideWine(GetModuleHandleW(L"user32.dll")), std::runtime_error);
}

}  // namespace
}  // namespace end_to_end
