#include <gtest/gtest.h>

#include <string>

#include "platform/cRegistry.h"
#include "settings/cSimuIniFile.h"
#include "windows/RegistrySandbox.h"

namespace corvane::test {
namespace {

// Runs by itself, in a locale whose code page has characters of two bytes.
class DoubleByteTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(GetACP(), 932U) << "Japanese"; }

    static std::wstring StoredText(const wchar_t* value) {
        wchar_t text[100] = {};
        DWORD size = sizeof(text);
        EXPECT_EQ(RegGetValueW(HKEY_CURRENT_USER, L"Software\\Recordings", value, RRF_RT_REG_SZ,
                               nullptr, text, &size),
                  ERROR_SUCCESS);
        return text;
    }

    RegistrySandbox sandbox;
    cRegistry registry;
    const std::wstring folder = L"C:\\\x9332\x97F3\\\x5C71\x7530 2026";  // "Recording", a name
};

TEST_F(DoubleByteTest, ARegistryTextIsStoredWhole) {
    RegistryHandle key = 0;
    std::uint32_t disposition = 0;
    registry.CreateKey(RegistryRoot::currentUser, L"Software\\Recordings", 0, L"", 0, 63, key,
                       disposition);
    registry.SetValue(key, L"Folder", 0, registryText, folder,
                      static_cast<std::uint32_t>(folder.size()));
    registry.SetValue(key, L"Shorter", 0, registryText, folder, 3);
    registry.Closekey(key);
    EXPECT_EQ(StoredText(L"Folder"), folder);
    EXPECT_EQ(StoredText(L"Shorter"), L"C:\\") << "who names a size gets it";
}

TEST_F(DoubleByteTest, ASettingIsReadAsItWasSaved) {
    cSimuIniFile settings(registry);
    settings.Scope = 1;
    settings.Subkey = L"Software";
    settings.RootSpec = L"Recordings";
    settings.WriteProfileString(L"txtLinkedItemPath", folder);
    EXPECT_EQ(settings.ReadProfileString(L"txtLinkedItemPath", L""), folder);
    EXPECT_EQ(StoredText(L"txtLinkedItemPath"), folder);
}

}  // namespace
}  // namespace corvane::test
