#include "RegistryKeys.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <utility>

#include "support/windows/Encoding.h"
#include "support/windows/Wine.h"

namespace end_to_end {

using namespace test_support;

namespace {

constexpr char keyExisted[] = "the key existed";
constexpr size_t longestValue = 40'000;  // characters that any test stores

// Closes a key.
class OpenKey {
public:
    OpenKey(HKEY root, const std::wstring& path, bool create) {
        const REGSAM access = create ? KEY_ALL_ACCESS : KEY_READ;
        if (create)
            RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, access, nullptr, &key_, nullptr);
        else if (RegOpenKeyExW(root, path.c_str(), 0, access, &key_) != ERROR_SUCCESS)
            key_ = nullptr;
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey() {
        if (key_)
            RegCloseKey(key_);
    }

    explicit operator bool() const { return key_ != nullptr; }
    HKEY get() const { return key_; }

private:
    HKEY key_ = nullptr;
};

std::string ValueText(DWORD type, std::wstring text) {
    if (type != REG_SZ)
        return "<type " + std::to_string(type) + ">";
    if (!text.empty() && text.back() == L'\0')
        text.pop_back();
    return Utf8(text);
}

void CopyKey(HKEY fromRoot, const std::wstring& from, HKEY toRoot, const std::wstring& to) {
    const OpenKey target(toRoot, to, true);
    const OpenKey source(fromRoot, from, false);
    EXPECT_EQ(RegCopyTreeW(source.get(), nullptr, target.get()), ERROR_SUCCESS) << Utf8(from);
}

// Everybody may do everything to the key but what is denied.
void SetAccess(HKEY root, const std::wstring& path, REGSAM denied) {
    std::array<BYTE, SECURITY_MAX_SID_SIZE> everybody{};
    DWORD size = static_cast<DWORD>(everybody.size());
    ASSERT_TRUE(CreateWellKnownSid(WinWorldSid, nullptr, everybody.data(), &size));
    alignas(ACL) std::array<BYTE, 256> space{};
    const auto list = reinterpret_cast<ACL*>(space.data());
    ASSERT_TRUE(InitializeAcl(list, static_cast<DWORD>(space.size()), ACL_REVISION));
    if (denied != 0) {
        ASSERT_TRUE(AddAccessDeniedAce(list, ACL_REVISION, denied, everybody.data()));
    }
    ASSERT_TRUE(AddAccessAllowedAce(list, ACL_REVISION, KEY_ALL_ACCESS, everybody.data()));
    SECURITY_DESCRIPTOR descriptor{};
    ASSERT_TRUE(InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION));
    ASSERT_TRUE(SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE));

    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(root, path.c_str(), 0, WRITE_DAC, &key), ERROR_SUCCESS) << Utf8(path);
    EXPECT_EQ(RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &descriptor), ERROR_SUCCESS);
    RegCloseKey(key);
}

}  // namespace

void RefuseOutsideWine(HMODULE ntdll) {
    if (!InWine(ntdll))
        throw std::runtime_error("these tests clear registry keys, so they run in Wine only");
}

ClearedKey::ClearedKey(HKEY root, std::wstring path)
    : root_(root),
      path_(std::move(path)),
      backup_(L"Software\\Halvorn end-to-end tests\\" + path_) {
    RefuseOutsideWine();
    Restore();
    BackUp();
    Clear();
}

ClearedKey::~ClearedKey() {
    Restore();
}

void ClearedKey::BackUp() const {
    RegDeleteTreeW(HKEY_CURRENT_USER, backup_.c_str());
    const bool exists = RegistryKeyExists(root_, path_);
    if (exists)
        CopyKey(root_, path_, HKEY_CURRENT_USER, backup_ + L"\\content");
    // The last step: a backup without it was not finished, and the key is as it was.
    SetRegistryText(HKEY_CURRENT_USER, backup_, keyExisted, exists ? "yes" : "no");
}

void ClearedKey::Restore() {
    const auto existed = RegistryText(HKEY_CURRENT_USER, backup_, keyExisted);
    if (!existed)
        return;
    Clear();
    if (existed == "yes")
        CopyKey(HKEY_CURRENT_USER, backup_ + L"\\content", root_, path_);
    RegDeleteTreeW(HKEY_CURRENT_USER, backup_.c_str());
}

void ClearedKey::Clear() {
    RegDeleteTreeW(root_, path_.c_str());
    EXPECT_FALSE(RegistryKeyExists(root_, path_)) << Utf8(path_);
}

DeniedAccess::DeniedAccess(HKEY root, std::wstring path, REGSAM access)
    : root_(root), path_(std::move(path)) {
    SetAccess(root_, path_, access);
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(root_, path_.c_str(), 0, access, &key), ERROR_ACCESS_DENIED);
}

DeniedAccess::~DeniedAccess() {
    SetAccess(root_, path_, 0);
}

void SetRegistryBytes(HKEY root, const std::wstring& path, const std::string& name, DWORD type,
                      const std::string& bytes) {
    const OpenKey key(root, path, true);
    ASSERT_EQ(RegSetValueExW(key.get(), Wide(name).c_str(), 0, type,
                             reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(bytes.size())),
              ERROR_SUCCESS)
        << Utf8(path) << ": " << name;
}

void SetRegistryText(HKEY root, const std::wstring& path, const std::string& name,
                     const std::string& text) {
    const std::wstring data = Wide(text);
    SetRegistryBytes(
        root, path, name, REG_SZ,
        {reinterpret_cast<const char*>(data.c_str()), (data.size() + 1) * sizeof(wchar_t)});
}

void SetMachine(const std::wstring& path, const std::string& name, const std::string& text) {
    SetRegistryText(HKEY_LOCAL_MACHINE, path, name, text);
}

std::optional<std::string> RegistryText(HKEY root, const std::wstring& path,
                                        const std::string& name) {
    const std::map<std::string, std::string> values = RegistryValues(root, path);
    const auto found = values.find(name);
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

bool RegistryKeyExists(HKEY root, const std::wstring& path) {
    return static_cast<bool>(OpenKey(root, path, false));
}

std::map<std::string, std::string> RegistryValues(HKEY root, const std::wstring& path) {
    std::map<std::string, std::string> values;
    const OpenKey key(root, path, false);
    for (DWORD index = 0; key; ++index) {
        wchar_t name[256];
        DWORD nameSize = 256;
        std::wstring data(longestValue, L'\0');
        DWORD size = static_cast<DWORD>(data.size() * sizeof(wchar_t));
        DWORD type = 0;
        if (RegEnumValueW(key.get(), index, name, &nameSize, nullptr, &type,
                          reinterpret_cast<BYTE*>(data.data()), &size) != ERROR_SUCCESS) {
            break;
        }
        data.resize(size / sizeof(wchar_t));
        values[Utf8({name, nameSize})] = ValueText(type, data);
    }
    return values;
}

}  // namespace end_to_end
