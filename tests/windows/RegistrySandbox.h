#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <string>

#include "platform/kit/Windows.h"

namespace corvane::test {

// Owns an open key.
class RegistryKey {
public:
    RegistryKey(HKEY root, const std::wstring& path, REGSAM access = KEY_ALL_ACCESS) {
        EXPECT_EQ(
            RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, access, nullptr, &key_, nullptr),
            ERROR_SUCCESS);
    }
    ~RegistryKey() { RegCloseKey(key_); }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    [[nodiscard]] HKEY get() const { return key_; }

private:
    HKEY key_ = nullptr;
};

// Redirects a predefined root to an empty key of its own for its life. COM finds no class
// meanwhile.
class RegistrySandbox {
public:
    explicit RegistrySandbox(HKEY root = HKEY_CURRENT_USER) : root_(root) {
        static std::atomic<int> count = 0;
        path_ = L"Software\\CorvaneTests\\" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                std::to_wstring(++count);
        const RegistryKey target(HKEY_CURRENT_USER, path_);
        EXPECT_EQ(RegOverridePredefKey(root_, target.get()), ERROR_SUCCESS);
    }
    ~RegistrySandbox() {
        EXPECT_EQ(RegOverridePredefKey(root_, nullptr), ERROR_SUCCESS);
        EXPECT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str()), ERROR_SUCCESS);
    }
    RegistrySandbox(const RegistrySandbox&) = delete;
    RegistrySandbox& operator=(const RegistrySandbox&) = delete;

private:
    HKEY root_;
    std::wstring path_;
};

}  // namespace corvane::test
