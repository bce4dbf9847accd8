#include "RegistryKeys.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace end_to_end {
namespace {

constexpr wchar_t path[] = L"Software\\Halvorn test of the tests";

class ClearedKeyTest : public testing::Test {
protected:
    ClearedKeyTest() { Forget(); }
    ~ClearedKeyTest() override { Forget(); }

    // The key, and what this test itself may have left when it was killed.
    static void Forget() {
        RegDeleteTreeW(HKEY_CURRENT_USER, path);
        RegDeleteTreeW(HKEY_CURRENT_USER,
                       (std::wstring(L"Software\\Halvorn end-to-end tests\\") + path).c_str());
    }
    // A test that was killed while it had the key.
    static void LeaveAKilledTest() {
        static_cast<void>(std::make_unique<ClearedKey>(HKEY_CURRENT_USER, path).release());
        EXPECT_FALSE(RegistryKeyExists(HKEY_CURRENT_USER, path));
        SetRegistryText(HKEY_CURRENT_USER, path, "name", "of the killed test");
    }
};

TEST_F(ClearedKeyTest, WhatAKilledTestHadClearedComesBack) {
    SetRegistryText(HKEY_CURRENT_USER, path, "name", "the user's");
    SetRegistryText(HKEY_CURRENT_USER, std::wstring(path) + L"\\below", "name", "the user's too");
    LeaveAKilledTest();

    { const ClearedKey cleared(HKEY_CURRENT_USER, path); }

    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, path, "name"), "the user's");
    EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, std::wstring(path) + L"\\below", "name"),
              "the user's too");
}

TEST_F(ClearedKeyTest, WhatAKilledTestHadMadeGoes) {
    LeaveAKilledTest();

    { const ClearedKey cleared(HKEY_CURRENT_USER, path); }

    EXPECT_FALSE(RegistryKeyExists(HKEY_CURRENT_USER, path));
}

TEST_F(ClearedKeyTest, OutsideWineNothingIsCleared) {
    EXPECT_NO_THROW(RefuseOutsideWine());
    // A library that has no more of Wine than Windows' own ntdll has.
    EXPECT_THROW(RefuseOutsideWine(GetModuleHandleW(L"user32.dll")), std::runtime_error);
}

}  // namespace
}  // namespace end_to_end
